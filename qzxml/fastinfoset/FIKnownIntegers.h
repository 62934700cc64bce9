#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "qzxml/fastinfoset/FastInfosetWriterForms.h"
#include "qzxml/fastinfoset/FastInfosetWriterNames.h"

namespace QzXmlLib16::detail {

// The octets for integers whose text a table of values has, found without that text: line numbers
// and counts come again and again. Each number has one place that it shares with others: what came
// last stands there. To forget all is to change the mark that is part of every key.
class CFIKnownIntegers {
 public:
  struct Known {
    std::uint64_t key = 0;
    CFIKnownOctets octets;
  };

  template <typename Form>
  Known& Of(std::int32_t number) {
    return Table<Form>()[static_cast<std::uint32_t>(number) % kPlaces];
  }
  std::uint64_t KeyOf(std::int32_t number) const {
    return m_mark | static_cast<std::uint32_t>(number);
  }

  // Behind this no number is known.
  void Forget() {
    m_mark += kMark;
    if (m_mark != 0) return;
    m_attributes = {};
    m_chunks = {};
    m_mark = kMark;
  }

 private:
  static constexpr std::size_t kPlaces = 128;
  static constexpr std::uint64_t kMark = std::uint64_t{1} << 32;

  using CTable = std::array<Known, kPlaces>;
  template <typename Form>
  CTable& Table();

  std::uint64_t m_mark = kMark;
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
