#include "qzxml/xml/XmlDocumentNodes.h"

#include <algorithm>
#include <memory>

#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/SerializationContext.h"

namespace QzXmlLib16::detail {
namespace {

// A tree of so many octets is no danger, however small its input is.
constexpr std::uint64_t kOctetsWithoutBound = 8 * 1024 * 1024;

}  // namespace

CXmlElement::Attributes& CXmlNodes::GetAttributeList(CXmlElement* element) {
  if (element->m_pAttributes == nullptr) {
    element->m_pAttributes = new (m_attributeLists.Take()) CXmlElement::Attributes();
  }
  return *element->m_pAttributes;
}

void CXmlNodes::ReserveAttributes(CXmlElement* element, std::size_t count) {
  GetAttributeList(element).reserve(count);
}

void CXmlNodes::AddAttribute(CXmlElement* element, const XmlName* name, const char* value,
                             std::size_t length) {
  CXmlElement::Attributes& attributes = GetAttributeList(element);
  attributes.push_back(nullptr);
  try {
    attributes.back() = new (m_attributes.Take()) CXmlAttribute(element, name, value, length);
  } catch (...) {
    attributes.pop_back();
    throw;
  }
}

// Goes down along first children, taking each off its parent's list, and frees an element when it
// has none left; then on from its parent.
template <bool keepMemory>
void CXmlNodes::DestroyTree(CXmlElement* root) {
  CXmlElement* element = root;
  for (;;) {
    if (CXmlElement* child = element->m_pFirstChild) {
      element->m_pFirstChild = child->m_pNextSibling;
      element = child;
      continue;
    }
    if (CXmlElement::Attributes* attributes = element->m_pAttributes) {
      for (auto i = attributes->rbegin(); i != attributes->rend(); ++i) {
        CXmlAttribute* attribute = *i;
        attribute->~CXmlAttribute();
        if (keepMemory) m_attributes.Give(attribute);
      }
      std::destroy_at(attributes);
      if (keepMemory) m_attributeLists.Give(attributes);
    }
    CXmlElement* parent = const_cast<CXmlElement*>(element->m_pParent);
    const bool isLast = element == root;
    element->~CXmlElement();
    if (keepMemory) m_elements.Give(element);
    if (isLast) return;
    element = parent;
  }
}

void CXmlNodes::Destroy(CXmlElement* element) { DestroyTree<true>(element); }

void CXmlNodes::Clear(CXmlElement* root) {
  if (root != nullptr) DestroyTree<false>(root);
  m_elements.Clear();
  m_attributes.Clear();
  m_attributeLists.Clear();
  m_names.Clear();
}

void CXmlNodes::SetBounds(const CSerializationContext& context) {
  m_maxDepth = context.GetMaxDepth() != 0 ? context.GetMaxDepth() : kNone;
  m_maxAmplification = context.GetMaxAmplification();
  m_octets = 0;
  SetInputOctets(0);
}

void CXmlNodes::ClearBounds() { m_maxDepth = m_maxOctets = kNone; }

void CXmlNodes::SetInputOctets(std::uint64_t octets) {
  m_maxOctets =
      m_maxAmplification != 0 ? std::max(kOctetsWithoutBound, octets * m_maxAmplification) : kNone;
}

void CXmlNodes::ThrowDepth() const {
  throw CQzException(FormatString("The document exceeds the depth limit of %d elements",
                                  static_cast<int>(m_maxDepth)));
}

void CXmlNodes::ThrowGrowth() const {
  throw CQzException(FormatString("The document grows past %d times its size",
                                  static_cast<int>(m_maxAmplification)));
}

}  // namespace QzXmlLib16::detail
