#include "qzxml/xml/XmlDocument.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <string_view>
#include <utility>

#include "qzxml/platform/Assert.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/xml/ItemWatch.h"
#include "qzxml/xml/Messages.h"
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
  m_bWatched = callback != nullptr;
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
  m_elderSiblings.clear();
  m_aliasOfUri.clear();
  m_namespaces.clear();
  m_scopedAliases.Clear();
  m_pNodes->Clear(std::exchange(m_pDocElement, nullptr));
}

const std::string& CXmlDocument::LookupNamespaceFromAlias(const char* alias) const {
  if (m_pItemWatch != nullptr) m_pItemWatch->TellOfLookup();
  const auto found = m_namespaces.find(detail::ViewOf(alias));
  return found != m_namespaces.end() ? found->second : detail::NoText();
}

const std::string& CXmlDocument::LookupNamespaceOfType(const CXmlElement& element,
                                                       const char* alias) const {
  const std::string* const scoped = m_scopedAliases.Find(element, detail::ViewOf(alias));
  if (scoped == nullptr) return LookupNamespaceFromAlias(alias);
  if (m_pItemWatch != nullptr) m_pItemWatch->TellOfLookup();
  return *scoped;
}

const std::string& CXmlDocument::LookupAliasFromNamespace(const char* uri) const {
  if (m_pItemWatch != nullptr) m_pItemWatch->TellOfLookup();
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
  const auto known = m_namespaces.find(alias);
  if (known != m_namespaces.end() && known->second == uri) return;
  if (m_pItemWatch != nullptr) m_pItemWatch->ChangeNamespaces();
  m_aliasOfUri.clear();
  m_namespaces[std::move(alias)] = std::move(uri);
}

CXmlElement* CXmlDocument::AddDocElement(const char* uri, const char* localName) {
  if (m_bInCallback) throw CQzInvalidStateException(Messages::kLoadFromCallback);
  // The texts may be those of the tree that goes.
  const detail::XmlName* const name =
      m_pNodes->GetNames().Find(detail::ViewOf(uri), detail::ViewOf(localName));
  m_pElementStack.clear();
  if (m_pDocElement != nullptr) m_pNodes->Destroy(std::exchange(m_pDocElement, nullptr));
  return OpenElement(name);
}

CXmlElement* CXmlDocument::AddChildElement(const char* uri, const char* localName) {
  if (m_pElementStack.empty()) throw CQzException("The document has no open element.");
  return OpenElement(m_pNodes->GetNames().Find(detail::ViewOf(uri), detail::ViewOf(localName)));
}

CXmlElement* CXmlDocument::OpenWatchedElement(const detail::XmlName* name) {
  if (m_pItemWatch != nullptr) return m_pItemWatch->Open(name);
  m_elderSiblings.resize(m_pElementStack.size());
  m_elderSiblings.push_back(m_pElementStack.empty() ? nullptr
                                                    : m_pElementStack.back()->m_pLastChild);
  return PutElement(name);
}

void CXmlDocument::CloseWatchedElement(CXmlElement* element) {
  if (m_pItemWatch != nullptr) {
    m_pItemWatch->Close();
  } else {
    OfferElement(element);
  }
}

void CXmlDocument::EndElement() {
  if (m_pElementStack.size() > m_heldOpen) CloseElement();
}

// One call of the element callback. What is open stays open for it, and what it opens is closed
// behind it, however it ends.
class CXmlDocument::COffer {
 public:
  explicit COffer(CXmlDocument& document)
      : m_document(document),
        m_outerHeldOpen(std::exchange(document.m_heldOpen, document.m_pElementStack.size())),
        m_outerInCallback(std::exchange(document.m_bInCallback, true)) {}
  COffer(const COffer&) = delete;
  COffer& operator=(const COffer&) = delete;
  ~COffer() {
    std::vector<CXmlElement*>& open = m_document.m_pElementStack;
    if (open.size() > m_document.m_heldOpen) open.resize(m_document.m_heldOpen);
    m_document.m_heldOpen = m_outerHeldOpen;
    m_document.m_bInCallback = m_outerInCallback;
  }

 private:
  CXmlDocument& m_document;
  const std::size_t m_outerHeldOpen;
  const bool m_outerInCallback;
};

// Asks the callback about an element that ended, and takes it away if told so.
void CXmlDocument::OfferElement(CXmlElement* element) {
  {
    const COffer offer(*this);
    if (!m_pElementCallback(element)) return;
  }
  if (m_pElementStack.empty()) return;  // the document element stays, whatever the answer
  CXmlElement* const parent = m_pElementStack.back();
  CXmlElement* const elder = m_elderSiblings[m_pElementStack.size()];
  if (elder != nullptr && elder->m_pNextSibling == parent->m_pLastChild) {
    m_pNodes->Destroy(parent->UnlinkLastChild(elder));
  } else {
    parent->RemoveLastChildElement();
  }
}

// An element is about to leave the tree: it is no longer open, nor is what is below it. False when
// it has to stay, as it is open around the element that the callback has.
bool CXmlDocument::Forget(const CXmlElement* element) {
  const auto open = std::find(m_pElementStack.begin(), m_pElementStack.end(), element);
  if (open - m_pElementStack.begin() < static_cast<std::ptrdiff_t>(m_heldOpen)) return false;
  m_pElementStack.erase(open, m_pElementStack.end());
  std::replace(m_elderSiblings.begin(), m_elderSiblings.end(), const_cast<CXmlElement*>(element),
               static_cast<CXmlElement*>(nullptr));
  return true;
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
