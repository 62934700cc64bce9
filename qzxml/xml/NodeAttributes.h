#pragma once

#include <cstdint>
#include <vector>

namespace QzXmlLib16 {

class CXmlAttribute;

namespace detail {

// The attributes of an element, in the size of one pointer: a ring of which it holds the last. When
// somebody asks for a vector of them, one is made and kept beside the ring.
// Owns nothing: CXmlNodes makes and destroys what it points at.
class CNodeAttributes {
 public:
  struct List {
    CXmlAttribute* last;  // of the ring
    std::vector<CXmlAttribute*> all;
  };

  CNodeAttributes() = default;
  explicit CNodeAttributes(CXmlAttribute* last) : m_bits(reinterpret_cast<std::uintptr_t>(last)) {}
  explicit CNodeAttributes(List* list) : m_bits(reinterpret_cast<std::uintptr_t>(list) | kIsList) {}

  // Null for none.
  CXmlAttribute* GetLast() const {
    return (m_bits & kIsList) != 0 ? reinterpret_cast<List*>(m_bits & ~kIsList)->last
                                   : reinterpret_cast<CXmlAttribute*>(m_bits);
  }
  // Null while nobody asked for it.
  List* GetList() const {
    return (m_bits & kIsList) != 0 ? reinterpret_cast<List*>(m_bits & ~kIsList) : nullptr;
  }

 private:
  // The lowest bit of the address, which is zero in every address.
  static constexpr std::uintptr_t kIsList = 1;

  std::uintptr_t m_bits = 0;
};

}  // namespace detail
}  // namespace QzXmlLib16
