#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

// Names, prefixes and namespaces are short: copying and comparing them costs less in place than by
// a call.
namespace QzXmlLib16::detail {

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

// Copies bytes, without a call where there are at most 32; answers the place behind them. Words of
// the largest size that fits are copied from both ends, and may overlap.
inline char* CopyShort(char* out, const char* in, std::size_t size) {
  if (size > 32) {
    std::memcpy(out, in, size);
  } else if (size >= 8) {
    const auto first = LoadWord<std::uint64_t>(in);
    const auto last = LoadWord<std::uint64_t>(in + size - 8);
    if (size > 16) {
      const auto second = LoadWord<std::uint64_t>(in + 8);
      const auto third = LoadWord<std::uint64_t>(in + size - 16);
      StoreWord(out + 8, second);
      StoreWord(out + size - 16, third);
    }
    StoreWord(out, first);
    StoreWord(out + size - 8, last);
  } else if (size >= 4) {
    const auto first = LoadWord<std::uint32_t>(in);
    const auto last = LoadWord<std::uint32_t>(in + size - 4);
    StoreWord(out, first);
    StoreWord(out + size - 4, last);
  } else if (size > 0) {
    out[0] = in[0];
    out[size / 2] = in[size / 2];
    out[size - 1] = in[size - 1];
  }
  return out + size;
}

// Whether so many bytes are the same. As above, words may overlap; only more than 32 take a loop.
inline bool AreEqual(const char* a, const char* b, std::size_t size) {
  const auto differ = [a, b](std::size_t at) {
    return LoadWord<std::uint64_t>(a + at) ^ LoadWord<std::uint64_t>(b + at);
  };
  if (size < 4) {
    return size == 0 || (a[0] == b[0] && a[size / 2] == b[size / 2] && a[size - 1] == b[size - 1]);
  }
  if (size < 8) {
    return LoadWord<std::uint32_t>(a) == LoadWord<std::uint32_t>(b) &&
           LoadWord<std::uint32_t>(a + size - 4) == LoadWord<std::uint32_t>(b + size - 4);
  }
  for (std::size_t i = 0; size - i > 32; i += 16) {
    if ((differ(i) | differ(i + 8)) != 0) return false;
  }
  const std::uint64_t ends = differ(0) | differ(size - 8);
  if (size <= 16) return ends == 0;
  const std::size_t last = size > 32 ? size - 32 : 0;
  return (ends | differ(last) | differ(last + 8) | differ(size - 16)) == 0;
}

inline bool AreEqual(const std::string& a, const std::string& b) {
  return a.size() == b.size() && AreEqual(a.data(), b.data(), a.size());
}

// Sixteen bytes in a vector (of the compilers' own, so of any processor).
#if defined(__GNUC__)
using Sixteen __attribute__((vector_size(16))) = unsigned char;
using SignedSixteen __attribute__((vector_size(16))) = char;
using TwoWords __attribute__((vector_size(16))) = std::uint64_t;

// Whether a comparison holds for one of them.
template <typename Compared>
inline bool IsAny(Compared compared) {
#if defined(__SSE2__)
  return __builtin_ia32_pmovmskb128(reinterpret_cast<SignedSixteen>(compared)) != 0;
#else
  const auto words = reinterpret_cast<TwoWords>(compared);
  return (words[0] | words[1]) != 0;
#endif
}
#endif

// Copies as CopyShort does, unless one of the bytes is zero: null then, and what stands at out has
// no meaning. Not for fewer than eight bytes.
inline char* CopyWithoutZero(char* out, const char* in, std::size_t size) {
#if defined(__GNUC__)
  if (size >= 16) {
    auto found = Sixteen{} != Sixteen{};
    const auto copy = [out, in, &found](std::size_t at) {
      const auto bytes = LoadWord<Sixteen>(in + at);
      found |= bytes == 0;
      StoreWord(out + at, bytes);
    };
    const std::size_t last = size - 16;
    for (std::size_t at = 0; at < last; at += 16) copy(at);
    copy(last);
    return IsAny(found) ? nullptr : out + size;
  }
#endif
  std::uint64_t found = 0;
  const auto copy = [out, in, &found](std::size_t at) {
    const auto word = LoadWord<std::uint64_t>(in + at);
    found |= (word - 0x0101010101010101) & ~word;
    StoreWord(out + at, word);
  };
  for (std::size_t at = 0; at + 8 < size; at += 8) copy(at);
  copy(size - 8);
  return (found & 0x8080808080808080) == 0 ? out + size : nullptr;
}

// Whether a byte below 14 may be among them, as are the zero byte and the carriage return: yes for
// each text that has one, and for few others. Only more than 32 bytes take a loop.
inline bool MayHoldControl(std::string_view text) {
  const char* const bytes = text.data();
  const std::size_t size = text.size();
  const auto below = [bytes](std::size_t at) {
    const auto word = LoadWord<std::uint64_t>(bytes + at);
    return (word - 0x0E0E0E0E0E0E0E0E) & ~word;
  };
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  if (size >= 8) {
    std::uint64_t found = below(0) | below(size - 8);
    for (std::size_t at = 8; at + 8 < size; at += 8) found |= below(at);
    return (found & kHighBits) != 0;
  }
  for (std::size_t i = 0; i < size; ++i) {
    if (static_cast<unsigned char>(bytes[i]) < 14) return true;
  }
  return false;
}

// A text that keeps its memory when it is assigned anew.
class ShortText {
 public:
  void Assign(const char* text, std::size_t size) {
    if (size > m_capacity) Grow(size);
    CopyShort(m_data.get(), text, size);
    m_size = size;
  }
  std::string_view View() const { return {m_data.get(), m_size}; }
  std::size_t GetCapacity() const { return m_capacity; }

 private:
  void Grow(std::size_t size) {
    const std::size_t capacity = size < 32 ? 32 : size * 2;
    m_data.reset(new char[capacity]);
    m_capacity = capacity;
  }

  std::unique_ptr<char[]> m_data;
  std::size_t m_size = 0;
  std::size_t m_capacity = 0;
};

}  // namespace QzXmlLib16::detail
