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

void CXmlElement::Deleter::operator()(CXmlElement* element) const {
  // Without a list this owner was made from a bare pointer, of an element that is there still.
  detail::CTakenElements* const list =
      taken != nullptr ? taken.get() : element->GetNodes().GetTaken();
  if (list != nullptr && list->Remove(element)) element->GetNodes().Destroy(element);
}

detail::CXmlNodes& CXmlElement::GetNodes() const { return *m_pName->document->m_pNodes; }

const std::string& CXmlElement::FetchText() const { return GetNodes().FetchString(m_text); }

const std::vector<CXmlAttribute*>& CXmlElement::FetchAttributes() const {
  return GetNodes().FetchList(m_attributes);
}

const std::string& CXmlElement::GetAttribute(const std::string& localName,
                                             const std::string& uri) const {
  for (const CXmlAttribute* attribute : GetAttributeRange()) {
    if (attribute->GetLocalName() == localName && attribute->GetNamespaceURI() == uri) {
      return attribute->GetValue();
    }
  }
  return detail::NoText();
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
  std::string& own = GetNodes().OwnString(m_text);
  const std::size_t needed = own.size() + text.size();
  if (own.empty() || needed <= own.capacity()) {
    own.append(text);
    return;
  }
  std::string grown;  // what is appended may be a part of what is there
  grown.reserve(std::max(own.capacity() * 2, needed));
  grown.append(own).append(text);
  own = std::move(grown);
}

CXmlElement* CXmlElement::CreateNewChildElement() {
  detail::CXmlNodes& nodes = GetNodes();
  CXmlElement* child = nodes.MakeElement(this, nodes.GetNames().Find("", ""));
  detail::CXmlNodes::Append(this, child);
  return child;
}

CXmlElement::Owner CXmlElement::RemoveLastChildElement() {
  if (m_pLastChild == nullptr) return nullptr;
  if (!const_cast<CXmlDocument*>(GetDocument())->Forget(m_pLastChild)) return nullptr;
  CXmlElement* before = m_pLastChild;
  while (before->m_pNextSibling != m_pLastChild) {
    before = before->m_pNextSibling;
  }
  Owner owner = GetNodes().Take(m_pLastChild);
  UnlinkLastChild(before);
  return owner;
}

// The last child's predecessor in the ring is known.
CXmlElement* CXmlElement::UnlinkLastChild(CXmlElement* before) {
  CXmlElement* const last = m_pLastChild;
  before->m_pNextSibling = last->m_pNextSibling;
  m_pLastChild = before != last ? before : nullptr;
  last->m_pNextSibling = nullptr;
  last->m_pParent = nullptr;
  return last;
}

void CXmlElement::AddAttribute(const std::string& localName, const std::string& value,
                               const std::string& uri) {
  detail::CXmlNodes& nodes = GetNodes();
  nodes.CountOctets(localName.size() + value.size());
  nodes.AddAttribute(this, nodes.GetNames().Find(uri, localName), value);
}

void CXmlElement::SetElementName(const char* localName) {
  m_pName = GetNodes().GetNames().Find(*m_pName->uri, detail::ViewOf(localName));
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
  for (const CXmlElement* e = m_pParent->GetFirstElement(); e != nullptr;
       e = e->GetNextSiblingElement()) {
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
