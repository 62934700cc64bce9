#include "qzxml/xml/XmlDocumentNodes.h"

#include <algorithm>
#include <memory>
#include <random>

#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/SerializationContext.h"

namespace QzXmlLib16::detail {

std::uint64_t GetHashSalt() {
  static const std::uint64_t salt = [] {
    std::random_device device;
    return (std::uint64_t{device()} << 32) ^ device();
  }();
  return salt;
}

const std::string& NoText() {
  static const auto* const none = new std::string();
  return *none;
}

// In such an order that nothing is lost where memory ends.
void CXmlNodes::AddAttribute(CXmlElement* element, const XmlName* name, std::string_view value) {
  CNodeAttributes& attributes = element->m_attributes;
  CNodeAttributes::List* const list = attributes.GetList();
  CXmlAttribute* const last = attributes.GetLast();
  void* const place = m_attributes.Take();
  if (list != nullptr) list->all.push_back(static_cast<CXmlAttribute*>(place));
  auto* const attribute = new (place) CXmlAttribute(element, name);
  m_liveAttributes.Add(attribute->GetRecord());
  attribute->m_pNext = last != nullptr ? std::exchange(last->m_pNext, attribute) : attribute;
  if (list != nullptr) {
    list->last = attribute;
  } else {
    attributes = CNodeAttributes(attribute);
  }
  if (!value.empty()) attribute->m_value = MakeText(value);
}

const std::string& CXmlNodes::FetchString(CNodeText& text) {
  return text.IsNone() ? NoText() : OwnString(text);
}

std::string& CXmlNodes::OwnString(CNodeText& text) {
  std::string* string = text.GetString();
  if (string == nullptr) {
    string = m_strings.Make(std::string(text.View()));
    text = CNodeText(string);
  }
  return *string;
}

const std::vector<CXmlAttribute*>& CXmlNodes::FetchList(CNodeAttributes& attributes) {
  static const auto* const none = new std::vector<CXmlAttribute*>();
  CXmlAttribute* const last = attributes.GetLast();
  if (last == nullptr) return *none;
  std::size_t count = 0;
  for ([[maybe_unused]] const CXmlAttribute* attribute : CXmlAttributeRange(last)) ++count;
  std::vector<CXmlAttribute*> all;
  all.reserve(count);
  for (CXmlAttribute* attribute : CXmlAttributeRange(last)) all.push_back(attribute);
  auto* const list = m_attributeLists.Make(CNodeAttributes::List{last, std::move(all)});
  attributes = CNodeAttributes(list);
  return list->all;
}

void CXmlNodes::DestroyText(const CNodeText& text) {
  if (std::string* const string = text.GetString()) {
    m_strings.Destroy(string);
  }
}

void CXmlNodes::DestroyAttributes(const CNodeAttributes& attributes) {
  CXmlAttribute* const last = attributes.GetLast();
  if (last == nullptr) return;
  for (CXmlAttribute* attribute = last->m_pNext;;) {
    CXmlAttribute* const next = attribute->m_pNext;
    const bool isLast = attribute == last;
    DestroyText(attribute->m_value);
    attribute->~CXmlAttribute();
    m_liveAttributes.Remove();
    m_attributes.Give(attribute);
    if (isLast) break;
    attribute = next;
  }
  if (CNodeAttributes::List* const list = attributes.GetList()) {
    m_attributeLists.Destroy(list);
  }
}

// Goes down along first children, taking each out of its ring, and frees an element when it has
// none left; then on from its parent.
void CXmlNodes::DestroyTree(CXmlElement* root) {
  CXmlElement* element = root;
  for (;;) {
    if (CXmlElement* const last = element->m_pLastChild) {
      CXmlElement* const first = last->m_pNextSibling;
      last->m_pNextSibling = first->m_pNextSibling;
      if (first == last) element->m_pLastChild = nullptr;
      element = first;
      continue;
    }
    CXmlElement* const parent = const_cast<CXmlElement*>(element->m_pParent);
    const bool isLast = element == root;
    DestroyText(element->m_text);
    DestroyAttributes(element->m_attributes);
    element->~CXmlElement();
    m_liveElements.Remove();
    m_elements.Give(element);
    if (isLast) return;
    element = parent;
  }
}

void CXmlNodes::Destroy(CXmlElement* element) { DestroyTree(element); }

CXmlElement::Owner CXmlNodes::Take(CXmlElement* element) {
  if (m_taken == nullptr) m_taken = std::make_shared<CTakenElements>();
  m_taken->Add(element);
  return CXmlElement::Owner(element, CXmlElement::Deleter{m_taken});
}

// Nodes need no destructor but for their count, and nobody has to walk to them; false when some are
// counted elsewhere.
bool CXmlNodes::CountAllOut() {
  if (m_liveElements.isMixed || m_liveAttributes.isMixed) return false;
  for (CLiveNodes* nodes : {&m_liveElements, &m_liveAttributes}) {
    if (nodes->count != 0) nodes->record->CountOut(nodes->count);
  }
  return true;
}

CXmlNodes::Mark CXmlNodes::SetMark() const {
  return {m_blocks.SetMark(),
          m_blocks.GetUsed(),
          m_liveElements.count,
          m_liveAttributes.count,
          m_strings.GetNewest(),
          m_attributeLists.GetNewest(),
          m_elements.IsWithoutGaps() && m_attributes.IsWithoutGaps()};
}

// It can not where some are counted elsewhere, were taken out of the tree, or lie in places that
// others have left.
bool CXmlNodes::Rewind(const Mark& mark, const std::string* kept) {
  if (!mark.isRewindable || !m_elements.IsWithoutGaps() || !m_attributes.IsWithoutGaps() ||
      m_liveElements.isMixed || m_liveAttributes.isMixed || m_taken != nullptr) {
    return false;
  }
  const auto countOut = [](CLiveNodes& nodes, std::uint32_t before) {
    if (nodes.count == before) return;
    nodes.record->CountOut(nodes.count - before);
    nodes.count = before;
  };
  countOut(m_liveElements, mark.elements);
  countOut(m_liveAttributes, mark.attributes);
  m_strings.DestroyNewerThan(mark.string, kept);
  m_attributeLists.DestroyNewerThan(mark.attributeList, nullptr);
  m_blocks.Rewind(mark.blocks);
  return true;
}

void CXmlNodes::Empty(CXmlElement* element) {
  while (CXmlElement* const last = element->m_pLastChild) {
    CXmlElement* const first = last->m_pNextSibling;
    last->m_pNextSibling = first->m_pNextSibling;
    if (first == last) element->m_pLastChild = nullptr;
    DestroyTree(first);
  }
  DestroyText(std::exchange(element->m_text, CNodeText()));
  DestroyAttributes(std::exchange(element->m_attributes, CNodeAttributes()));
}

void CXmlNodes::Clear(CXmlElement* root) {
  if (m_taken != nullptr || !CountAllOut()) {
    if (root != nullptr) DestroyTree(root);
    if (m_taken != nullptr) {
      for (CXmlElement* element : m_taken->RemoveAll()) DestroyTree(element);
      m_taken = nullptr;
    }
  }
  m_liveElements = CLiveNodes();
  m_liveAttributes = CLiveNodes();
  m_elements.Clear();
  m_attributes.Clear();
  m_attributeLists.Clear();
  m_strings.Clear();
  m_names.Clear();
  m_blocks.Clear();
  m_keptBlocks.Clear();
  m_sharesTexts = m_storesTexts;
}

void CXmlNodes::SetBounds(const CSerializationContext& context) {
  m_maxDepth = context.GetMaxDepth() != 0 ? context.GetMaxDepth() : kNone;
  m_growth.Begin(context.GetMaxAmplification());
}

void CXmlNodes::ClearBounds() {
  m_maxDepth = kNone;
  m_growth.End();
}

void CXmlNodes::ThrowDepth() const {
  throw CQzException(FormatString("The document exceeds the depth limit of %d elements",
                                  static_cast<int>(m_maxDepth)));
}

}  // namespace QzXmlLib16::detail
