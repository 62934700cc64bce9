#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "qzxml/fastinfoset/FastInfosetWriterForms.h"
#include "qzxml/fastinfoset/FastInfosetWriterNames.h"

namespace QzXmlLib16::detail {

// The octets for small integers whose text a table of values has, found without that text: line
// numbers and counts come again and again. To forget all is to change the mark of those known.
class CFIKnownIntegers {
 public:
  struct Known {
    std::uint64_t mark = 0;
    CFIKnownOctets octets;
  };

  static bool IsSmall(std::int32_t number) { return static_cast<std::uint32_t>(number) < kPlaces; }

  // Of a small number.
  template <typename Form>
  Known& Of(std::int32_t number) {
    return Table<Form>()[static_cast<std::uint32_t>(number)];
  }
  bool Is(const Known& known) const { return known.mark == m_mark; }
  void Keep(Known& known, const CFIKnownOctets& octets) const { known = {m_mark, octets}; }

  // Behind this no number is known.
  void Forget() { ++m_mark; }

 private:
  static constexpr std::size_t kPlaces = 128;

  using CTable = std::array<Known, kPlaces>;
  template <typename Form>
  CTable& Table();

  std::uint64_t m_mark = 1;
  CTable m_attributes = {};
  CTable m_chunks = {};
};

template <>
inline CFIKnownIntegers::CTable& CFIKnownIntegers::Table<CFIAttributeForm>() {
  return m_attributes;
}
template <>
inline CFIKnownIntegers::CTable& CFIKnownIntegers::Table<CFIChunkForm>() {
  return m_chunks;
}

}  // namespace QzXmlLib16::detail
