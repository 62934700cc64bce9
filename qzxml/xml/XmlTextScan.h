#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

// The inner loops of the text writer: copying bytes up to the next one that has to be escaped,
// eight at a time in an ordinary register.
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

template <typename Word>
inline Word LoadWord(const char* from) {
  Word word;
  std::memcpy(&word, from, sizeof(Word));
  return word;
}

template <typename Word>
inline void StoreWord(char* to, Word word) {
  std::memcpy(to, &word, sizeof(Word));
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

// Copies bytes up to the first one that has to be escaped; answers how many.
template <bool inAttribute>
inline std::size_t CopyBytewise(const char* in, std::size_t size, char* out) {
  std::size_t i = 0;
  for (; i < size && !IsEscaped<inAttribute>(in[i]); ++i) out[i] = in[i];
  return i;
}

// As CopyBytewise. The room behind out is at least size.
template <bool inAttribute>
inline std::size_t CopyClean(const char* in, std::size_t size, char* out) {
  std::size_t i = 0;
  for (; size - i >= 8; i += 8) {
    const auto bytes = LoadWord<std::uint64_t>(in + i);
    if (!MayHoldEscaped<inAttribute>(bytes)) {
      StoreWord(out + i, bytes);
    } else if (const std::size_t clean = CopyBytewise<inAttribute>(in + i, 8, out + i); clean < 8) {
      return i + clean;
    }
  }
  if (i == size) return size;
  if (size >= 8) {  // the last eight bytes once more
    const auto bytes = LoadWord<std::uint64_t>(in + size - 8);
    if (!MayHoldEscaped<inAttribute>(bytes)) {
      StoreWord(out + size - 8, bytes);
      return size;
    }
  } else if (size >= 4) {  // two words of four bytes that overlap
    const auto first = LoadWord<std::uint32_t>(in);
    const auto last = LoadWord<std::uint32_t>(in + size - 4);
    if (!MayHoldEscaped<inAttribute>(std::uint64_t{last} << 32 | first)) {
      StoreWord(out, first);
      StoreWord(out + size - 4, last);
      return size;
    }
  }
  return i + CopyBytewise<inAttribute>(in + i, size - i, out + i);
}

// Copies a few bytes, without a call where there are at most 16; answers the place behind them.
inline char* CopyShort(char* out, const char* in, std::size_t size) {
  if (size > 16) {
    std::memcpy(out, in, size);
  } else if (size >= 8) {
    const auto first = LoadWord<std::uint64_t>(in);
    const auto last = LoadWord<std::uint64_t>(in + size - 8);
    StoreWord(out, first);
    StoreWord(out + size - 8, last);
  } else if (size >= 4) {
    const auto first = LoadWord<std::uint32_t>(in);
    const auto last = LoadWord<std::uint32_t>(in + size - 4);
    StoreWord(out, first);
    StoreWord(out + size - 4, last);
  } else {
    for (std::size_t i = 0; i < size; ++i) out[i] = in[i];
  }
  return out + size;
}

}  // namespace QzXmlLib16::detail
