#include "qzxml/xml/XmlWriterContext.h"

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
  QZ_ASSERT(parent != nullptr);
  if (parent != nullptr) {
    OpenNested(name, uri, parent);
  } else {
    OpenRoot(name, uri, std::string(), NamespaceMap(), nullptr);
  }
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
  SetOwnNamespace(uri);
  Open(name, parent);
}

void CXmlWriter::CXmlWriterContext::SetOwnNamespace(const std::string& uri) {
  m_strNamespace = uri;
  m_pNamespace = &m_strNamespace;
  m_pPrefix = nullptr;
  m_prefixState = 0;
}

// The first change to what is inherited gives the context a scope of its own.
void CXmlWriter::CXmlWriterContext::BeginScope() {
  if (m_pScope == this) return;
  m_outer = m_pNamespaces->GetMark();
  m_strDefaultNamespace = m_pScope->m_strDefaultNamespace;
  m_pScope = this;
}

// The root's scope ends with the chain.
void CXmlWriter::CXmlWriterContext::EndScope() {
  if (m_pNamespaces != m_rootNamespaces.get()) m_pNamespaces->PutBack(m_outer);
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
