#include "qzxml/xml/XmlElement.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

#include "qzxml/xml/XmlAttribute.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlDocumentNodes.h"

namespace QzXmlLib16 {
namespace {

// Whether one of two texts ends with the other.
bool OneEndsWithOther(std::string_view a, std::string_view b) {
  if (a.size() > b.size()) std::swap(a, b);
  return b.substr(b.size() - a.size()) == a;
}

}  // namespace

CInstanceClass detail::g_elementClass("CXmlElement");

CXmlElement::~CXmlElement() = default;

void CXmlElement::Deleter::operator()(CXmlElement* element) const {
  element->GetNodes().Destroy(element);
}

detail::CXmlNodes& CXmlElement::GetNodes() const { return *m_pName->document->m_pNodes; }

const CXmlElement::Attributes& CXmlElement::NoAttributes() {
  static const auto* const none = new Attributes();  // outlives every static that may ask for it
  return *none;
}

const std::string& CXmlElement::GetAttribute(const std::string& localName,
                                             const std::string& uri) const {
  for (const CXmlAttribute* attribute : GetAttributes()) {
    if (attribute->GetLocalName() == localName && attribute->GetNamespaceURI() == uri) {
      return attribute->GetValue();
    }
  }
  static const auto* const none = new std::string();
  return *none;
}

void CXmlElement::AppendText(const char* text) {
  if (text != nullptr) AppendText(std::string_view(text));
}

void CXmlElement::AppendText(const char* text, int length) {
  if (text != nullptr && length > 0) {
    AppendText(std::string_view(text, static_cast<std::size_t>(length)));
  }
}

void CXmlElement::AppendText(std::string_view text) {
  GetNodes().CountOctets(text.size());
  AppendCountedText(text);
}

void CXmlElement::AppendCountedText(std::string_view text) {
  const std::size_t needed = m_strText.size() + text.size();
  if (!m_strText.empty() && needed > m_strText.capacity()) {
    m_strText.reserve(std::max(m_strText.capacity() * 2, needed));
  }
  m_strText.append(text);
}

CXmlElement* CXmlElement::CreateNewChildElement() {
  detail::CXmlNodes& nodes = GetNodes();
  CXmlElement* child = nodes.MakeElement(this, nodes.GetNames().Find("", ""));
  detail::CXmlNodes::Append(this, child);
  return child;
}

CXmlElement::Owner CXmlElement::RemoveLastChildElement() {
  return RemoveLastChildElement(m_pFirstChild);
}

// The last child's predecessor is searched from an earlier child on.
CXmlElement::Owner CXmlElement::RemoveLastChildElement(CXmlElement* startOfSearch) {
  CXmlElement* const last = m_pLastChild;
  if (last == nullptr) return nullptr;
  CXmlElement* before = nullptr;
  for (CXmlElement* e = startOfSearch; e != last; e = e->m_pNextSibling) before = e;
  m_pLastChild = before;
  (before != nullptr ? before->m_pNextSibling : m_pFirstChild) = nullptr;
  last->m_pParent = nullptr;
  return Owner(last);
}

void CXmlElement::AddAttribute(const std::string& localName, const std::string& value,
                               const std::string& uri) {
  detail::CXmlNodes& nodes = GetNodes();
  nodes.CountOctets(localName.size() + value.size());
  nodes.AddAttribute(this, nodes.GetNames().Find(uri, localName), value.data(), value.size());
}

void CXmlElement::SetElementName(const char* localName) {
  m_pName = GetNodes().GetNames().Find(m_pName->uri, detail::ViewOf(localName));
}

void CXmlElement::SetNamespace(const char* uri) {
  m_pName = GetNodes().GetNames().Find(detail::ViewOf(uri), m_pName->localName);
}

std::string CXmlElement::GetQName() const {
  if (GetNamespaceURI().empty()) return GetLocalName();
  const std::string& alias = GetDocument()->LookupAliasFromNamespace(GetNamespaceURI().c_str());
  return alias.empty() ? GetLocalName() : alias + ":" + GetLocalName();
}

// Equal qualified names end with the same text, so that hardly ever one has to be built.
bool CXmlElement::HasSameQName(const CXmlElement& other) const {
  if (m_pName == other.m_pName) return true;
  if (!OneEndsWithOther(GetLocalName(), other.GetLocalName())) return false;
  return GetQName() == other.GetQName();
}

std::string CXmlElement::GetNameWithPredicate() const {
  std::string name = GetQName();
  if (m_pParent == nullptr) return name;
  std::size_t number = 1;
  bool isFirst = true;
  bool isFound = false;
  for (const CXmlElement* e = m_pParent->m_pFirstChild; e != nullptr; e = e->m_pNextSibling) {
    if (!HasSameQName(*e)) continue;
    if (e != this) {
      if (isFound) return name + "[1]";
      isFirst = false;
      ++number;
    } else {
      if (!isFirst) return name + "[" + std::to_string(number) + "]";
      isFound = true;
    }
  }
  return name;
}

std::string CXmlElement::GetXPath() const {
  std::vector<const CXmlElement*> steps;
  for (const CXmlElement* e = this; e != nullptr; e = e->m_pParent) steps.push_back(e);
  std::string path;
  for (auto i = steps.rbegin(); i != steps.rend(); ++i) {
    path += '/';
    path += (*i)->GetNameWithPredicate();
  }
  return path;
}

}  // namespace QzXmlLib16
