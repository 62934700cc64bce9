#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "qzxml/xml/ShortText.h"

// The inner loops of the text writer: copying bytes up to the next one that has to be escaped,
// eight or sixteen at a time.
namespace QzXmlLib16::detail {

// The bytes that do not pass through: 1 in element text, 2 in an attribute's value.
inline constexpr std::array<unsigned char, 256> kEscapedIn = [] {
  std::array<unsigned char, 256> table{};
  for (const char c : {'\0', '\n', '\r', '&', '<', '>'}) table[static_cast<unsigned char>(c)] = 3;
  table[static_cast<unsigned char>('"')] = 2;
  return table;
}();

template <bool inAttribute>
inline bool IsEscaped(char c) {
  return (kEscapedIn[static_cast<unsigned char>(c)] & (inAttribute ? 2 : 1)) != 0;
}

// Whether one of eight bytes may have to be escaped. Takes every control character below 14 for
// one, which makes zero, line feed and carriage return a single test; the others differ in one bit
// each: 3C and 3E, 22 and 26.
template <bool inAttribute>
inline bool MayHoldEscaped(std::uint64_t bytes) {
  constexpr std::uint64_t kOnes = 0x0101010101010101;
  const std::uint64_t angle = (bytes | kOnes * 0x02) ^ kOnes * 0x3E;
  const std::uint64_t other = (inAttribute ? bytes | kOnes * 0x04 : bytes) ^ kOnes * 0x26;
  const std::uint64_t found =
      ((bytes - kOnes * 14) & ~bytes) | ((angle - kOnes) & ~angle) | ((other - kOnes) & ~other);
  return (found & kOnes * 0x80) != 0;
}

#if defined(__GNUC__)
// The same for sixteen.
template <bool inAttribute>
inline bool MayHoldEscaped(Sixteen bytes) {
  return IsAny((bytes < 14) | ((bytes | 0x02) == 0x3E) |
               ((inAttribute ? bytes | 0x04 : bytes) == 0x26));
}

template <bool inAttribute>
inline bool MayHoldEscaped(std::uint64_t first, std::uint64_t second) {
  return MayHoldEscaped<inAttribute>(reinterpret_cast<Sixteen>(TwoWords{first, second}));
}
#else
template <bool inAttribute>
inline bool MayHoldEscaped(std::uint64_t first, std::uint64_t second) {
  return MayHoldEscaped<inAttribute>(first) || MayHoldEscaped<inAttribute>(second);
}
#endif

// Copies bytes up to the first one that has to be escaped; answers how many.
template <bool inAttribute>
[[gnu::noinline]] std::size_t CopyBytewise(const char* in, std::size_t size, char* out) {
  std::size_t i = 0;
  for (; i < size && !IsEscaped<inAttribute>(in[i]); ++i) out[i] = in[i];
  return i;
}

// Copy so many bytes, unless one of them may have to be escaped. Those of the first two come in two
// words or in three single ones, which overlap.
template <bool inAttribute>
inline bool CopyEightOrMore(const char* in, std::size_t size, char* out) {
  const auto first = LoadWord<std::uint64_t>(in);
  const auto last = LoadWord<std::uint64_t>(in + size - 8);
  if (MayHoldEscaped<inAttribute>(first, last)) return false;
  StoreWord(out, first);
  StoreWord(out + size - 8, last);
  return true;
}

template <bool inAttribute>
inline bool CopyFourOrMore(const char* in, std::size_t size, char* out) {
  const auto first = LoadWord<std::uint32_t>(in);
  const auto last = LoadWord<std::uint32_t>(in + size - 4);
  const std::uint64_t both = std::uint64_t{last} << 32 | first;
  if (MayHoldEscaped<inAttribute>(both, both)) return false;
  StoreWord(out, first);
  StoreWord(out + size - 4, last);
  return true;
}

template <bool inAttribute>
inline bool CopyUpToThree(const char* in, std::size_t size, char* out) {
  const char first = in[0];
  const char middle = in[size / 2];
  const char last = in[size - 1];
  if (((kEscapedIn[static_cast<unsigned char>(first)] |
        kEscapedIn[static_cast<unsigned char>(middle)] |
        kEscapedIn[static_cast<unsigned char>(last)]) &
       (inAttribute ? 2 : 1)) != 0) {
    return false;
  }
  out[0] = first;
  out[size / 2] = middle;
  out[size - 1] = last;
  return true;
}

template <bool inAttribute>
inline bool CopySixteen(const char* in, char* out) {
#if defined(__GNUC__)
  const auto bytes = LoadWord<Sixteen>(in);
  if (MayHoldEscaped<inAttribute>(bytes)) return false;
  StoreWord(out, bytes);
  return true;
#else
  return CopyEightOrMore<inAttribute>(in, 16, out);
#endif
}

// Copies at most sixteen.
template <bool inAttribute>
inline bool CopyIfClean(const char* in, std::size_t size, char* out) {
  if (size >= 8) return CopyEightOrMore<inAttribute>(in, size, out);
  if (size >= 4) return CopyFourOrMore<inAttribute>(in, size, out);
  return size == 0 || CopyUpToThree<inAttribute>(in, size, out);
}

// As CopyBytewise. The room behind out is at least size.
template <bool inAttribute>
inline std::size_t CopyClean(const char* in, std::size_t size, char* out) {
  if (size <= 16) {
    if (CopyIfClean<inAttribute>(in, size, out)) return size;
    return CopyBytewise<inAttribute>(in, size, out);
  }
  // The last sixteen may begin among those that are copied already.
  const std::size_t last = size - 16;
  for (std::size_t i = 0;; i = i + 16 < last ? i + 16 : last) {
    if (!CopySixteen<inAttribute>(in + i, out + i)) {
      const std::size_t clean = CopyBytewise<inAttribute>(in + i, 16, out + i);
      if (clean < 16) return i + clean;
    }
    if (i == last) return size;
  }
}

}  // namespace QzXmlLib16::detail
