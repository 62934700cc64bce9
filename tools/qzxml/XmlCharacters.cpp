#include "tools/qzxml/XmlCharacters.h"

#include <iterator>

namespace qztool {
namespace {

struct Range {
  std::uint32_t first;
  std::uint32_t last;
};

// What a name may begin with, without the colon.
constexpr Range kNameStart[] = {
    {'A', 'Z'},       {'_', '_'},       {'a', 'z'},       {0xC0, 0xD6},     {0xD8, 0xF6},
    {0xF8, 0x2FF},    {0x370, 0x37D},   {0x37F, 0x1FFF},  {0x200C, 0x200D}, {0x2070, 0x218F},
    {0x2C00, 0x2FEF}, {0x3001, 0xD7FF}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF},
};
// What else it may hold.
constexpr Range kNameOther[] = {
    {'-', '.'}, {'0', '9'}, {0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040},
};

template <std::size_t count>
bool IsIn(const Range (&ranges)[count], std::uint32_t character) {
  for (const Range& range : ranges) {
    if (character >= range.first && character <= range.last) return true;
  }
  return false;
}

unsigned OctetAt(const std::string& text, std::size_t at) {
  return static_cast<unsigned char>(text[at]);
}

}  // namespace

std::size_t GetCharacterLength(const std::string& text, std::size_t at) {
  const unsigned first = OctetAt(text, at);
  if (first < 0x80) return 1;
  const std::size_t length = first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  if (length == 0 || first > 0xF4 || text.size() - at < length) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((OctetAt(text, at + i) & 0xC0) != 0x80) return 0;
  }
  const unsigned second = OctetAt(text, at + 1);
  if ((first == 0xE0 && second < 0xA0) || (first == 0xED && second > 0x9F) ||
      (first == 0xF0 && second < 0x90) || (first == 0xF4 && second > 0x8F)) {
    return 0;  // too long a form, a surrogate, or behind the last character
  }
  return length;
}

std::uint32_t GetCharacter(const std::string& text, std::size_t at, std::size_t length) {
  constexpr unsigned kFirstBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
  std::uint32_t character = OctetAt(text, at) & kFirstBits[length];
  for (std::size_t i = 1; i < length; ++i)
    character = character << 6 | (OctetAt(text, at + i) & 0x3F);
  return character;
}

void AppendCharacter(std::string& text, std::uint32_t character) {
  const auto put = [&text](std::uint32_t octet) { text += static_cast<char>(octet); };
  if (character < 0x80) return put(character);
  if (character < 0x800) {
    put(0xC0 | character >> 6);
  } else if (character < 0x10000) {
    put(0xE0 | character >> 12);
    put(0x80 | (character >> 6 & 0x3F));
  } else {
    put(0xF0 | character >> 18);
    put(0x80 | (character >> 12 & 0x3F));
    put(0x80 | (character >> 6 & 0x3F));
  }
  put(0x80 | (character & 0x3F));
}

std::size_t FindNoXmlCharacter(const std::string& text) {
  for (std::size_t at = 0; at < text.size();) {
    const unsigned first = OctetAt(text, at);
    if (first < 0x20 && first != '\t' && first != '\n' && first != '\r') return at;
    const std::size_t length = GetCharacterLength(text, at);
    if (length == 0) return at;
    if (length == 3) {
      const std::uint32_t character = GetCharacter(text, at, length);
      if (character == 0xFFFE || character == 0xFFFF) return at;
    }
    at += length;
  }
  return std::string::npos;
}

bool IsNCName(const std::string& name) {
  for (std::size_t at = 0; at < name.size();) {
    const std::size_t length = GetCharacterLength(name, at);
    if (length == 0) return false;
    const std::uint32_t character = GetCharacter(name, at, length);
    if (!IsIn(kNameStart, character) && (at == 0 || !IsIn(kNameOther, character))) return false;
    at += length;
  }
  return !name.empty();
}

bool IsWhiteSpace(const std::string& text) {
  return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

}  // namespace qztool
