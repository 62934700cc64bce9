#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <string_view>
#include <vector>

#include "qzxml/xml/Arena.h"
#include "qzxml/xml/NameTable.h"
#include "qzxml/xml/XmlAttribute.h"
#include "qzxml/xml/XmlElement.h"

namespace QzXmlLib16 {

class CSerializationContext;

namespace detail {

// Null is taken as the empty text.
inline std::string_view ViewOf(const char* text) {
  return text != nullptr ? std::string_view(text) : std::string_view();
}

// The classes that the nodes count under.
extern CInstanceClass g_elementClass;
extern CInstanceClass g_attributeClass;

// What holds the tree of one document: the memory of its nodes, its names, and the bounds of the
// load that is running. Every node is made and destroyed here; destroying is a loop, whatever the
// depth.
class CXmlNodes {
 public:
  explicit CXmlNodes(const CXmlDocument* document) : m_names(document) {}
  CXmlNodes(const CXmlNodes&) = delete;
  CXmlNodes& operator=(const CXmlNodes&) = delete;

  CNameTable& GetNames() { return m_names; }

  // An element outside the tree.
  CXmlElement* MakeElement(const CXmlElement* parent, const XmlName* name) {
    return new (m_elements.Take()) CXmlElement(parent, name);
  }

  // Makes it the last child of its parent.
  static void Append(CXmlElement* parent, CXmlElement* child) {
    if (parent->m_pLastChild != nullptr) {
      parent->m_pLastChild->m_pNextSibling = child;
    } else {
      parent->m_pFirstChild = child;
    }
    parent->m_pLastChild = child;
  }

  // Room for attributes that are about to be added, no more than that.
  void ReserveAttributes(CXmlElement* element, std::size_t count);
  void AddAttribute(CXmlElement* element, const XmlName* name, const char* value,
                    std::size_t length);

  // Frees an element that no list holds, with all below it; its memory is used again.
  void Destroy(CXmlElement* element);

  // Frees the tree of this root, all names and all memory. The root may be null.
  void Clear(CXmlElement* root);

  // --- Bounds of a load; none while no load runs.

  void SetBounds(const CSerializationContext& context);
  void ClearBounds();

  // Tells how much input there is to compare the growth with.
  void SetInputOctets(std::uint64_t octets);

  // Throws CQzException "The document exceeds the depth limit of %d elements".
  void CheckDepth(std::size_t depth) const {
    if (depth > m_maxDepth) ThrowDepth();
  }

  // Counts octets that are put into the tree.
  // Throws CQzException "The document grows past %d times its size".
  void CountOctets(std::uint64_t octets) {
    m_octets += octets;
    if (m_octets > m_maxOctets) ThrowGrowth();
  }

 private:
  static constexpr std::uint64_t kNone = std::numeric_limits<std::uint64_t>::max();

  [[noreturn]] void ThrowDepth() const;
  [[noreturn]] void ThrowGrowth() const;
  CXmlElement::Attributes& GetAttributeList(CXmlElement* element);
  template <bool keepMemory>
  void DestroyTree(CXmlElement* root);

  CArena<CXmlElement> m_elements;
  CArena<CXmlAttribute> m_attributes;
  CArena<CXmlElement::Attributes> m_attributeLists;
  CNameTable m_names;
  std::uint64_t m_maxDepth = kNone;
  std::uint64_t m_octets = 0;
  std::uint64_t m_maxOctets = kNone;
  std::uint32_t m_maxAmplification = 0;
};

}  // namespace detail

inline CXmlElement::CXmlElement(const CXmlElement* parent, const detail::XmlName* name)
    : CInstanceMonitor(detail::g_elementClass), m_pParent(parent), m_pName(name) {}

inline CXmlAttribute::CXmlAttribute(const CXmlElement* parent, const detail::XmlName* name,
                                    const char* value, std::size_t length)
    : CInstanceMonitor(detail::g_attributeClass),
      m_pParent(parent),
      m_pName(name),
      m_strValue(value, length) {}

}  // namespace QzXmlLib16
