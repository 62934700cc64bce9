#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace QzXmlLib16::detail {

// The alphabets. The first differs from the standard's in its lower-case e, which is the one that
// lexical forms of reals have here. A blank ends each.
inline constexpr std::string_view kNumericAlphabet = "0123456789-+.e ";
inline constexpr std::string_view kDateAndTimeAlphabet = "0123456789-:TZ ";

// The restricted alphabets of every vocabulary (CFIVocabulary), with the position of each
// character.
class SmallAlphabet {
 public:
  // 1 for numbers, 2 for dates and times.
  static const SmallAlphabet& Get(std::uint32_t index);

  // Two characters to an octet, as WriteSmallAlphabetString. Null for a character that is not in
  // the alphabet.
  char* Write(char* out, std::string_view text) const {
    unsigned outside = 0;
    std::size_t i = 0;
    for (; i + 1 < text.size(); i += 2) {
      const unsigned high = PositionOf(text[i]);
      const unsigned low = PositionOf(text[i + 1]);
      outside |= high | low;
      *out++ = static_cast<char>((high << 4 | low) & 0xFF);
    }
    if (i < text.size()) {
      const unsigned high = PositionOf(text[i]);
      outside |= high;
      *out++ = static_cast<char>((high << 4 | 0x0F) & 0xFF);
    }
    return (outside & 0xF0) == 0 ? out : nullptr;
  }

 private:
  constexpr explicit SmallAlphabet(std::string_view characters) : m_positions() {
    for (unsigned char& position : m_positions) position = kOutside;
    for (std::size_t i = 0; i < characters.size(); ++i) {
      m_positions[static_cast<unsigned char>(characters[i])] = static_cast<unsigned char>(i);
    }
  }
  unsigned PositionOf(char c) const { return m_positions[static_cast<unsigned char>(c)]; }

  static constexpr unsigned char kOutside = 0xFF;
  static const SmallAlphabet kAlphabets[2];

  unsigned char m_positions[256];
};

inline const SmallAlphabet& SmallAlphabet::Get(std::uint32_t index) {
  return kAlphabets[index - 1];
}

}  // namespace QzXmlLib16::detail
