#include "qzxml/xml/XmlDocument.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <string_view>
#include <utility>

#include "qzxml/platform/Assert.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/xml/XmlDocumentNodes.h"
#include "qzxml/xml/XmlElement.h"

namespace QzXmlLib16 {
namespace {

CInstanceClass g_documentClass("CXmlDocument");

// From so many aliases on a namespace is looked up in a map made for it, instead of searched.
constexpr std::size_t kManyAliases = 8;

}  // namespace

CXmlDocument::CXmlDocument() : CXmlDocument(nullptr, CSerializationContext::GetDefaultContext()) {}

CXmlDocument::CXmlDocument(const CSerializationContext& context) : CXmlDocument(nullptr, context) {}

CXmlDocument::CXmlDocument(ElementCallback callback)
    : CXmlDocument(callback, CSerializationContext::GetDefaultContext()) {}

CXmlDocument::CXmlDocument(ElementCallback callback, const CSerializationContext& context)
    : CInstanceMonitor(g_documentClass),
      m_pNodes(std::make_unique<detail::CXmlNodes>(this)),
      m_pElementCallback(callback),
      m_pContext(&context) {
  m_pNodes->SetStoresTexts(callback == nullptr);
  Init();
}

CXmlDocument::~CXmlDocument() { CXmlDocument::Cleanup(); }

void CXmlDocument::Init() {
  CXmlDocument::Cleanup();
  m_schemaType = m_pContext->GetSchemaType();
}

void CXmlDocument::Cleanup() {
  QZ_ASSERT(!m_bLoading);
  if (m_bLoading) return;
  m_pElementStack.clear();
  m_aliasOfUri.clear();
  m_namespaces.clear();
  m_pNodes->Clear(std::exchange(m_pDocElement, nullptr));
}

const std::string& CXmlDocument::LookupNamespaceFromAlias(const char* alias) const {
  const auto found = m_namespaces.find(detail::ViewOf(alias));
  return found != m_namespaces.end() ? found->second : detail::NoText();
}

const std::string& CXmlDocument::LookupAliasFromNamespace(const char* uri) const {
  const std::string_view wanted = detail::ViewOf(uri);
  if (m_namespaces.size() < kManyAliases) {
    for (const auto& [alias, namespaceUri] : m_namespaces) {
      if (namespaceUri == wanted) return alias;
    }
    return detail::NoText();
  }
  if (m_aliasOfUri.empty()) {
    for (const auto& [alias, namespaceUri] : m_namespaces) {
      m_aliasOfUri.emplace(namespaceUri, &alias);
    }
  }
  const auto found = m_aliasOfUri.find(wanted);
  return found != m_aliasOfUri.end() ? *found->second : detail::NoText();
}

void CXmlDocument::SetNamespaceMapping(std::string alias, std::string uri) {
  m_aliasOfUri.clear();
  m_namespaces[std::move(alias)] = std::move(uri);
}

CXmlElement* CXmlDocument::AddDocElement(const char* uri, const char* localName) {
  m_pElementStack.clear();
  if (m_pDocElement != nullptr) m_pNodes->Destroy(std::exchange(m_pDocElement, nullptr));
  return OpenElement(m_pNodes->GetNames().Find(detail::ViewOf(uri), detail::ViewOf(localName)));
}

CXmlElement* CXmlDocument::AddChildElement(const char* uri, const char* localName) {
  if (m_pElementStack.empty()) throw CQzException("The document has no open element.");
  return OpenElement(m_pNodes->GetNames().Find(detail::ViewOf(uri), detail::ViewOf(localName)));
}

void CXmlDocument::EndElement() {
  if (!m_pElementStack.empty()) CloseElement();
}

// Asks the callback about an element that ended, and takes it away if told so.
void CXmlDocument::OfferElement(CXmlElement* element) {
  if (!m_pElementCallback(element)) return;
  if (m_pElementStack.empty()) return;  // the document element stays, whatever the answer
  CXmlElement* const parent = m_pElementStack.back();
  CXmlElement* const elder = m_elderSiblings[m_pElementStack.size()];
  if (elder != nullptr && elder->m_pNextSibling == parent->m_pLastChild) {
    parent->RemoveLastChildElement(elder);
  } else {
    parent->RemoveLastChildElement();
  }
}

void CXmlDocument::AddElementAttribute(CXmlElement* element, const std::string& localName,
                                       const std::string& value, const std::string& uri) {
  element->AddAttribute(localName, value, uri);
}

void CXmlDocument::AppendTextExcludingCR(CXmlElement* element, const char* text) {
  AppendTextExcludingCR(element, text, std::numeric_limits<std::uint32_t>::max());
}

void CXmlDocument::AppendTextExcludingCR(CXmlElement* element, const char* text,
                                         std::uint32_t length) {
  if (text == nullptr) return;
  std::string_view left(text, strnlen(text, length));
  while (!left.empty()) {
    const std::string_view run = left.substr(0, left.find('\r'));
    element->AppendText(run);
    left.remove_prefix(std::min(left.size(), run.size() + 1));
  }
}

}  // namespace QzXmlLib16
