#include "tools/qzxml/FastInfosetOctets.h"

#include <utility>

#include "qzxml/fastinfoset/FastInfosetBinaryData.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "tools/qzxml/Console.h"
#include "tools/qzxml/XmlCharacters.h"

namespace qztool {
namespace {

using QzXmlLib16::FormatString;

constexpr std::size_t kBuiltInAlphabets = 2;
constexpr std::uint32_t kFirstOwn = 33;  // index of what a document adds itself

constexpr const char* kAlgorithmNames[] = {"hexadecimal", "base64", "short",  "int",  "long",
                                           "boolean",     "float",  "double", "uuid", "CDATA"};
constexpr std::uint32_t kBoolean = 6;
constexpr std::uint32_t kUuid = 9;
constexpr std::uint32_t kCData = 10;

std::string ToHex(std::string_view octets) {
  std::string text;
  for (const char c : octets) {
    text += FormatString("%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
  }
  return text;
}

// Four bits tell how many at the end are spare; then a bit for each value.
std::string FromBooleans(std::string_view octets) {
  std::string text;
  const std::size_t spare = static_cast<unsigned char>(octets[0]) >> 4;
  const std::size_t all = octets.size() * 8;
  const std::size_t end = spare < all ? all - spare : 0;
  for (std::size_t bit = 4; bit < end; ++bit) {
    const unsigned octet = static_cast<unsigned char>(octets[bit / 8]);
    if (!text.empty()) text += ' ';
    text += (octet >> (7 - bit % 8) & 1U) != 0 ? "true" : "false";
  }
  return text;
}

// With the dashes of the canonical form.
std::string FromUuids(std::string_view octets) {
  std::string text;
  for (std::size_t at = 0; at < octets.size(); at += 16) {
    if (at > 0) text += ' ';
    for (std::size_t i = 0; i < 16; ++i) {
      if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
      text +=
          FormatString("%02x", static_cast<unsigned>(static_cast<unsigned char>(octets[at + i])));
    }
  }
  return text;
}

std::vector<std::string> SplitCharacters(const std::string& text) {
  std::vector<std::string> characters;
  for (std::size_t at = 0; at < text.size();) {
    std::size_t length = GetCharacterLength(text, at);
    if (length == 0) length = 1;
    characters.push_back(text.substr(at, length));
    at += length;
  }
  return characters;
}

}  // namespace

CFastInfosetOctets::CFastInfosetOctets(const std::string& octets, const OctetRows& rows,
                                       Failure failure)
    : m_octets(octets), m_rows(rows), m_failure(std::move(failure)) {
  m_alphabets.push_back(SplitCharacters("0123456789-+.e "));
  m_alphabets.push_back(SplitCharacters("0123456789-:TZ "));
}

void CFastInfosetOctets::Say(std::string_view meaning, std::string_view value) {
  if (m_rows) {
    m_rows(m_said, std::string_view(m_octets).substr(m_said, m_at - m_said), std::string(meaning),
           std::string(value));
  }
  m_said = m_at;
}

void CFastInfosetOctets::Fail(const std::string& message) const {
  m_failure(message);
  throw QzXmlLib16::CQzException(message);  // a failure that returns is none
}

std::uint32_t CFastInfosetOctets::Take() { return TakeNumber(1); }

std::uint32_t CFastInfosetOctets::TakeNumber(unsigned octets) {
  std::uint32_t number = 0;
  for (const char c : TakeOctets(octets)) number = number << 8 | static_cast<unsigned char>(c);
  return number;
}

std::string_view CFastInfosetOctets::TakeOctets(std::size_t count) {
  if (m_octets.size() - m_at < count) {
    Fail("the document ends too early: octets are missing behind the one");
  }
  const std::string_view octets = std::string_view(m_octets).substr(m_at, count);
  m_at += count;
  return octets;
}

// ---- Integers and lengths ----

std::uint32_t CFastInfosetOctets::TakeIndexOnSecondBit(std::uint32_t first) {
  if ((first & 0x40) == 0) return (first & 0x3F) + 1;
  if ((first & 0x60) == 0x40) return ((first & 0x1F) << 8 | Take()) + 65;
  if ((first & 0x70) == 0x60) return ((first & 0x0F) << 16 | TakeNumber(2)) + 8257;
  Fail("no index has this form:");
}

std::uint32_t CFastInfosetOctets::TakeIndexOnThirdBit(std::uint32_t first) {
  if ((first & 0x20) == 0) return (first & 0x1F) + 1;
  if ((first & 0x38) == 0x20) return ((first & 0x07) << 8 | Take()) + 33;
  if ((first & 0x38) == 0x28) return ((first & 0x07) << 16 | TakeNumber(2)) + 2081;
  if ((first & 0x3F) == 0x30) return (TakeNumber(3) & 0xFFFFF) + 526369;
  Fail("no index has this form:");
}

std::uint32_t CFastInfosetOctets::TakeIndexOnFourthBit(std::uint32_t first) {
  if ((first & 0x10) == 0) return (first & 0x0F) + 1;
  if ((first & 0x1C) == 0x10) return ((first & 0x03) << 8 | Take()) + 17;
  if ((first & 0x1C) == 0x14) return ((first & 0x03) << 16 | TakeNumber(2)) + 1041;
  if ((first & 0x1F) == 0x18) return (TakeNumber(3) & 0xFFFFF) + 263185;
  Fail("no index has this form:");
}

std::uint32_t CFastInfosetOctets::TakeLengthOnSecondBit(std::uint32_t first) {
  if ((first & 0x40) == 0) return (first & 0x3F) + 1;
  if ((first & 0x7F) == 0x40) return Take() + 65;
  if ((first & 0x7F) == 0x60) return TakeNumber(4) + 321;
  Fail("no length has this form:");
}

std::uint32_t CFastInfosetOctets::TakeLengthOnFifthBit(std::uint32_t first) {
  if ((first & 0x08) == 0) return (first & 0x07) + 1;
  if ((first & 0x0F) == 0x08) return Take() + 9;
  if ((first & 0x0F) == 0x0C) return TakeNumber(4) + 265;
  Fail("no length has this form:");
}

std::uint32_t CFastInfosetOctets::TakeLengthOnSeventhBit(std::uint32_t first) {
  if ((first & 0x02) == 0) return (first & 0x01) + 1;
  return (first & 0x01) == 0 ? Take() + 3 : TakeNumber(4) + 259;
}

std::uint32_t CFastInfosetOctets::TakeSequenceLength() {
  const std::uint32_t first = Take();
  if ((first & 0x80) == 0) return first + 1;
  if ((first & 0xF0) == 0x80) return ((first & 0x0F) << 16 | TakeNumber(2)) + 129;
  Fail("no number of items has this form:");
}

// ---- Texts ----

void CFastInfosetOctets::AddAlphabet(const std::string& characters) {
  m_alphabets.push_back(SplitCharacters(characters));
}

std::string CFastInfosetOctets::TakeUtf8(std::uint32_t length, std::string_view what) {
  if (IsTold()) Say(std::string(what) + ", " + CountOctets(length));
  return std::string(TakeOctets(length));
}

CFastInfosetText CFastInfosetOctets::TakeTextOnThirdBit(std::uint32_t first,
                                                        std::string_view what) {
  const unsigned kind = first >> 4 & 3U;
  std::uint32_t index = 0;
  if (kind >= 2) {
    const std::uint32_t second = Take();
    index = ((first & 0x0F) << 4 | second >> 4) + 1;
    first = second;
  }
  return TakeText(kind, index, TakeLengthOnFifthBit(first), what);
}

CFastInfosetText CFastInfosetOctets::TakeTextOnFifthBit(std::uint32_t first,
                                                        std::string_view what) {
  const unsigned kind = first >> 2 & 3U;
  std::uint32_t index = 0;
  if (kind >= 2) {
    const std::uint32_t second = Take();
    index = ((first & 0x03) << 6 | second >> 2) + 1;
    first = second;
  }
  return TakeText(kind, index, TakeLengthOnSeventhBit(first), what);
}

CFastInfosetText CFastInfosetOctets::TakeText(unsigned kind, std::uint32_t index,
                                              std::uint32_t length, std::string_view what) {
  if (IsTold()) Say(Describe(kind, index, length, what));
  const std::string_view octets = TakeOctets(length);
  CFastInfosetText text;
  switch (kind) {
    case 0:
      text.text = octets;
      break;
    case 1:
      text.text = FromUtf16(octets);
      break;
    case 2:
      text.text = FromAlphabet(index, octets);
      break;
    default:
      text = FromAlgorithm(index, octets);
      break;
  }
  return text;
}

std::string CFastInfosetOctets::Describe(unsigned kind, std::uint32_t index, std::uint32_t length,
                                         std::string_view what) const {
  std::string encoding;
  switch (kind) {
    case 0:
      encoding = "UTF-8";
      break;
    case 1:
      encoding = "UTF-16BE";
      break;
    case 2:
      encoding = index == 1   ? "the numeric alphabet"
                 : index == 2 ? "the alphabet of dates and times"
                              : "alphabet " + std::to_string(index);
      break;
    default:
      encoding = index <= kCData ? "algorithm " + std::string(kAlgorithmNames[index - 1])
                                 : "algorithm " + std::to_string(index);
      break;
  }
  return std::string(what) + " in " + encoding + ", " + CountOctets(length);
}

std::string CFastInfosetOctets::FromUtf16(std::string_view octets) const {
  if (octets.size() % 2 != 0) Fail("half a character of UTF-16 ends");
  const auto unitAt = [&octets](std::size_t at) {
    return static_cast<std::uint32_t>(static_cast<unsigned char>(octets[at]) << 8 |
                                      static_cast<unsigned char>(octets[at + 1]));
  };
  std::string text;
  for (std::size_t at = 0; at < octets.size(); at += 2) {
    std::uint32_t character = unitAt(at);
    if (character >= 0xD800 && character <= 0xDFFF) {
      const std::uint32_t low = at + 2 < octets.size() ? unitAt(at + 2) : 0;
      if (character > 0xDBFF || low < 0xDC00 || low > 0xDFFF)
        Fail("half a character of UTF-16 ends");
      character = 0x10000 + ((character - 0xD800) << 10 | (low - 0xDC00));
      at += 2;
    }
    AppendCharacter(text, character);
  }
  return text;
}

const std::vector<std::string>& CFastInfosetOctets::GetAlphabet(std::uint32_t index) const {
  const bool isBuiltIn = index <= kBuiltInAlphabets;
  const std::size_t place = isBuiltIn            ? index - 1
                            : index >= kFirstOwn ? index - kFirstOwn + kBuiltInAlphabets
                                                 : m_alphabets.size();
  if (place >= m_alphabets.size()) Fail(FormatString("there is no alphabet %u", index));
  return m_alphabets[place];
}

// Each character is its place in the alphabet, in as many bits as take the number of characters;
// all ones end the text early.
std::string CFastInfosetOctets::FromAlphabet(std::uint32_t index, std::string_view octets) const {
  const std::vector<std::string>& alphabet = GetAlphabet(index);
  if (alphabet.size() < 2) Fail("an alphabet has less than two characters");
  unsigned width = 1;
  while ((std::size_t{1} << width) <= alphabet.size()) ++width;
  const std::uint32_t ones = (1U << width) - 1;
  std::string text;
  std::uint64_t store = 0;
  unsigned bits = 0;
  for (const char c : octets) {
    store = store << 8 | static_cast<unsigned char>(c);
    bits += 8;
    while (bits >= width) {
      bits -= width;
      const std::uint32_t place = static_cast<std::uint32_t>(store >> bits) & ones;
      if (place == ones) return text;
      if (place >= alphabet.size()) Fail("a character is not in its alphabet");
      text += alphabet[place];
    }
  }
  return text;
}

CFastInfosetText CFastInfosetOctets::FromAlgorithm(std::uint32_t number,
                                                   std::string_view octets) const {
  CFastInfosetText text;
  if (number > kCData) {
    const bool isOwn = number >= kFirstOwn && number - kFirstOwn < m_algorithms.size();
    text.unknownAlgorithm = isOwn ? m_algorithms[number - kFirstOwn] : std::to_string(number);
    text.text = ToHex(octets);
  } else if (number == kCData) {
    text.text = octets;
    text.isCData = true;
  } else if (number == kBoolean) {
    text.text = FromBooleans(octets);
  } else if (number == kUuid && octets.size() % 16 == 0) {
    text.text = FromUuids(octets);
  } else {
    QzXmlLib16::CFastInfosetBinaryData data(
        QzXmlLib16::CBinaryData(reinterpret_cast<const unsigned char*>(octets.data()),
                                static_cast<std::uint32_t>(octets.size())));
    try {
      text.text = data.GetAsString(number);
    } catch (const QzXmlLib16::CQzException& e) {
      Fail(e.GetMessage());
    }
  }
  return text;
}

}  // namespace qztool
