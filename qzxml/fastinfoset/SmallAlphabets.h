#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "qzxml/platform/Export.h"
#include "qzxml/xml/ShortText.h"

namespace QzXmlLib16::detail {

// The alphabets. The first differs from the standard's in its lower-case e, which is the one that
// lexical forms of reals have here. A blank ends each.
inline constexpr std::string_view kNumericAlphabet = "0123456789-+.e ";
inline constexpr std::string_view kDateAndTimeAlphabet = "0123456789-:TZ ";

// Eight characters, each a digit or a certain other one.
class EightCharacters {
 public:
  // As the text is, with 0 for any digit.
  constexpr explicit EightCharacters(std::string_view form) {
    for (std::size_t i = 0; i < 8; ++i) {
      const bool isDigit = form[i] == '0';
      const std::size_t position = isDigit ? 0 : kDateAndTimeAlphabet.find(form[i]);
      m_zeros |= std::uint64_t{static_cast<unsigned char>(form[i])} << 8 * i;
      m_beyond |= std::uint64_t{isDigit ? 0x76u : 0x7Fu} << 8 * i;
      m_others |= std::uint64_t{position} << 8 * i;
    }
  }

  // Their positions in the alphabet of dates, two to an octet. False, and nothing is written, for
  // characters of another form.
  bool Write(char* out, const char* text) const {
    const std::uint64_t digits = LoadWord<std::uint64_t>(text) ^ m_zeros;
    if (((digits | (digits + m_beyond)) & 0x8080808080808080) != 0) return false;
    const std::uint64_t positions = digits | m_others;
    // Each first one of two goes in front of the second; then the octets come together.
    std::uint64_t octets = (positions << 4 | positions >> 8) & 0x00FF00FF00FF00FF;
    octets = (octets | octets >> 8) & 0x0000FFFF0000FFFF;
    StoreWord(out, static_cast<std::uint32_t>(octets | octets >> 16));
    return true;
  }

 private:
  std::uint64_t m_zeros = 0;   // the characters, with zeros for digits
  std::uint64_t m_beyond = 0;  // what makes 80 or more of a byte that is too much
  std::uint64_t m_others = 0;  // the positions of those that are no digits
};

// The restricted alphabets of every vocabulary (CFIVocabulary), with the position of each
// character.
class QZXML_API SmallAlphabet {
 public:
  // 1 for numbers, 2 for dates and times.
  static const SmallAlphabet& Get(std::uint32_t index);

  // Two characters to an octet, to a place with room for half as many octets as characters and one.
  // Null for a character that is not in the alphabet.
  char* Write(char* out, std::string_view text) const {
    unsigned outside = 0;
    std::size_t i = this == &kAlphabets[1] ? WriteDateAndTime(out, text) : 0;
    out += i / 2;
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

  // A date, and what follows of a time, in their usual forms, eight characters at once, as far as
  // that goes. Answers how many characters it was.
  static std::size_t WriteDateAndTime(char* out, std::string_view text) {
    constexpr EightCharacters kDate("0000-00-");
    constexpr EightCharacters kTime("00T00:00");
    if (text.size() < 8 || !kDate.Write(out, text.data())) return 0;
    if (text.size() < 16 || !kTime.Write(out + 4, text.data() + 8)) return 8;
    return 16;
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
