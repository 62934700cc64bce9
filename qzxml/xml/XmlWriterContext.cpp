#include "qzxml/xml/XmlWriterContext.h"

#include "qzxml/platform/Assert.h"

namespace QzXmlLib16 {
namespace {

CInstanceClass s_contextClass("CXmlWriterContext");

}  // namespace

CXmlWriter::CXmlWriterContext::CXmlWriterContext(const std::string& name, const std::string& uri,
                                                 const std::string& defaultNamespace,
                                                 const NamespaceMap& namespaces,
                                                 CXmlWriterContext* parent)
    : CInstanceMonitor(s_contextClass) {
  OpenRoot(name, uri, defaultNamespace, namespaces, parent);
}

CXmlWriter::CXmlWriterContext::CXmlWriterContext(const std::string& name, const std::string& uri,
                                                 CXmlWriterContext* parent)
    : CInstanceMonitor(s_contextClass) {
  OpenNested(name, uri, parent);
}

CXmlWriter::CXmlWriterContext::~CXmlWriterContext() {
  CXmlWriterContext* parent = m_pParent;
  while (parent != nullptr) {
    CXmlWriterContext* const outer = parent->m_pParent;
    parent->m_pParent = nullptr;
    delete parent;
    parent = outer;
  }
}

CXmlWriter::CXmlWriterContext* CXmlWriter::CXmlWriterContext::DetachParent() {
  CXmlWriterContext* const parent = m_pParent;
  if (m_pScope == this && m_rootNamespaces.get() != m_pNamespaces) m_pNamespaces->PutBack(m_outer);
  m_pParent = nullptr;
  return parent;
}

void CXmlWriter::CXmlWriterContext::SetDefaultNamespace(const std::string& uri) {
  BeginScope();
  m_strDefaultNamespace = uri;
  m_pNamespaces->SetChanged();
}

const CXmlWriter::NamespaceMap& CXmlWriter::CXmlWriterContext::GetNamespaceMap() const {
  return m_pNamespaces->InForce();
}

void CXmlWriter::CXmlWriterContext::AddNamespaceMapValue(const std::string& uri,
                                                         const std::string& alias) {
  BeginScope();
  m_pNamespaces->Add(uri, alias);
}

const std::string& CXmlWriter::CXmlWriterContext::GetNamespaceMapValue(const std::string& uri) {
  return m_pNamespaces->Value(uri);
}

const std::string* CXmlWriter::CXmlWriterContext::FindAlias(const std::string& uri) const {
  return m_pNamespaces->Find(uri);
}

std::string CXmlWriter::CXmlWriterContext::GenerateAlias() const {
  return m_pNamespaces->GenerateAlias();
}

void CXmlWriter::CXmlWriterContext::OpenRoot(const std::string& name, const std::string& uri,
                                             const std::string& defaultNamespace,
                                             const NamespaceMap& namespaces,
                                             CXmlWriterContext* parent) {
  if (m_rootNamespaces == nullptr) m_rootNamespaces.reset(new detail::XmlWriterScopes);
  m_rootNamespaces->Reset(namespaces);
  m_pNamespaces = m_rootNamespaces.get();
  m_strDefaultNamespace = defaultNamespace;
  m_pScope = this;
  m_strNamespace = uri;
  m_pNamespace = &m_strNamespace;
  m_prefixState = 0;
  Open(name, parent);
}

void CXmlWriter::CXmlWriterContext::OpenNested(const std::string& name, const std::string& uri,
                                               CXmlWriterContext* parent) {
  QZ_ASSERT(parent != nullptr);
  if (parent == nullptr) {
    OpenRoot(name, uri, std::string(), NamespaceMap(), nullptr);
    return;
  }
  m_pNamespaces = parent->m_pNamespaces;
  m_pScope = parent->m_pScope;
  if (uri == *parent->m_pNamespace) {
    m_pNamespace = parent->m_pNamespace;
    m_pPrefix = parent->m_pPrefix;
    m_prefixState = parent->m_prefixState;
  } else {
    m_strNamespace = uri;
    m_pNamespace = &m_strNamespace;
    m_prefixState = 0;
  }
  Open(name, parent);
}

// What is the same for every element. The parent comes last: until then the context stands where it
// stood, whatever fails.
void CXmlWriter::CXmlWriterContext::Open(const std::string& name, CXmlWriterContext* parent) {
  m_strName = name;
  m_dwChildCount = 0;
  m_bStartTagOpen = true;
  m_dwDepth = parent != nullptr ? parent->m_dwDepth + 1 : 0;
  m_bHasAttributes = false;
  m_dwCollectionState = 0;
  m_pParent = parent;
}

// The first change to what is inherited gives the context a scope of its own.
void CXmlWriter::CXmlWriterContext::BeginScope() {
  if (m_pScope == this) return;
  m_outer = m_pNamespaces->GetMark();
  m_strDefaultNamespace = m_pScope->m_strDefaultNamespace;
  m_pScope = this;
}

bool CXmlWriter::CXmlWriterContext::ResolvePrefix() {
  const std::string* prefix = nullptr;
  if (!m_pNamespace->empty() && *m_pNamespace != GetDefaultNamespace()) {
    prefix = m_pNamespaces->Find(*m_pNamespace);
    if (prefix == nullptr) return false;
  }
  m_pPrefix = prefix;
  m_prefixState = m_pNamespaces->GetState();
  return true;
}

}  // namespace QzXmlLib16
