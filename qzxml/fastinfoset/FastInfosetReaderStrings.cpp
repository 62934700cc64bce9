#include "qzxml/fastinfoset/FastInfosetReaderStrings.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "qzxml/fastinfoset/FastInfosetBinaryData.h"
#include "qzxml/fastinfoset/Messages.h"
#include "qzxml/runtime/Encoder.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"

namespace QzXmlLib16::detail {
namespace {

constexpr std::size_t kMaxAlphabet = 0x100000;
constexpr std::uint32_t kCdata = 10;

// Indexes are counted from 1 in the text of the failure.
[[noreturn]] void ThrowOutside(std::uint64_t index, std::size_t size) {
  throw CQzException(FormatString(Messages::kFIIndexOutsideTable, static_cast<unsigned int>(index),
                                  static_cast<unsigned int>(size)));
}

void AppendCharacter(std::string& text, const std::string& alphabet, std::uint32_t place) {
  if (place >= alphabet.size()) ThrowOutside(std::uint64_t{place} + 1, alphabet.size());
  text += alphabet[place];
}

std::uint32_t BitWidth(std::size_t characters) {
  std::uint32_t width = 2;
  while (std::size_t{1} << width <= characters) ++width;
  return width;
}

// Two characters an octet, the high half first; a low half of F is filler.
void AppendHalves(std::string& text, const std::string& alphabet, std::string_view octets) {
  for (const char c : octets) {
    const auto octet = static_cast<unsigned char>(c);
    AppendCharacter(text, alphabet, octet >> 4);
    if ((octet & 0x0F) == 0x0F) return;
    AppendCharacter(text, alphabet, octet & 0x0F);
  }
}

// Characters of any width, the high bit first.
void AppendBits(std::string& text, const std::string& alphabet, std::string_view octets,
                std::uint32_t width) {
  const std::uint32_t allOnes = (std::uint32_t{1} << width) - 1;
  std::uint32_t store = 0;  // at most 28 bits in use
  std::uint32_t bits = 0;
  for (const char c : octets) {
    store = store << 8 | static_cast<unsigned char>(c);
    for (bits += 8; bits >= width; bits -= width) {
      const std::uint32_t place = store >> (bits - width) & allOnes;
      if (place == allOnes) return;
      AppendCharacter(text, alphabet, place);
    }
  }
}

std::uint64_t ReadBits(std::string_view octets) {
  std::uint64_t bits = 0;
  for (const char c : octets) bits = bits << 8 | static_cast<unsigned char>(c);
  return bits;
}

template <typename Real, typename Bits>
Real RealOf(Bits bits) {
  Real real;
  static_assert(sizeof real == sizeof bits);
  std::memcpy(&real, &bits, sizeof real);
  return real;
}

// The text of octets that are one number or one boolean, as CFastInfosetBinaryData::GetAsString
// gives it, in a buffer of kNumberSize; null for any other octets.
const char* WriteOneValue(std::uint32_t algorithm, std::string_view octets, char* buffer) {
  constexpr std::size_t kSizes[] = {0, 0, 0, 2, 4, 8, 1, 4, 8};  // by the algorithm
  if (algorithm < 3 || algorithm > 8 || octets.size() != kSizes[algorithm]) return nullptr;
  const std::uint64_t bits = ReadBits(octets);
  switch (algorithm) {
    case 3:
      return WriteInteger(buffer, static_cast<std::int16_t>(bits));
    case 4:
      return WriteInteger(buffer, static_cast<std::int32_t>(bits));
    case 5:
      return WriteInteger(buffer, static_cast<std::int64_t>(bits));
    case 6:  // three spare bits behind the one
      return bits >> 4 == 3 ? WriteText(buffer, (bits & 8) != 0 ? "true" : "false") : nullptr;
    case 7:
      return WriteR4(buffer, RealOf<float>(static_cast<std::uint32_t>(bits)));
    default:
      return WriteR8(buffer, RealOf<double>(bits));
  }
}

// As AppendHalves, of few octets in an alphabet of 4 bits, into a buffer of kNumberSize; null where
// it is another case or a character is not there.
const char* WriteHalves(const std::string& alphabet, std::string_view octets, char* buffer) {
  if (alphabet.size() < 8 || alphabet.size() > 15 || octets.size() > kNumberSize / 2)
    return nullptr;
  const std::size_t size = alphabet.size();
  for (const char c : octets) {
    const std::size_t high = static_cast<unsigned char>(c) >> 4;
    const std::size_t low = static_cast<unsigned char>(c) & 0x0F;
    if (high >= size) return nullptr;
    *buffer++ = alphabet[high];
    if (low == 0x0F) return buffer;
    if (low >= size) return nullptr;
    *buffer++ = alphabet[low];
  }
  return buffer;
}

}  // namespace

std::string DecodeRestrictedAlphabet(const std::string& alphabet, std::string_view octets) {
  if (alphabet.size() < 2 || alphabet.size() > kMaxAlphabet) {
    throw CQzException(
        "Failed to parse FastInfoset. Invalid Encoding of Restricted Alphabet. Alphabet must "
        "contain between 2 and 2^20 characters.");
  }
  std::string text;
  const std::uint32_t width = BitWidth(alphabet.size());
  if (width == 8) {
    for (const char c : octets) AppendCharacter(text, alphabet, static_cast<unsigned char>(c));
  } else if (width == 4) {
    AppendHalves(text, alphabet, octets);
  } else {
    AppendBits(text, alphabet, octets, width);
  }
  return text;
}

CFIStrings::CFIStrings(const std::vector<std::string>& alphabets)
    : m_alphabets(alphabets), m_isLocalUtf8(IsLocalUtf8()) {}

std::string_view CFIStrings::FromAnyUtf8(std::string_view octets) {
  const std::string_view text = octets.substr(0, octets.find('\0'));
  if (m_isLocalUtf8) return text;
  m_strValue = Utf8ToLocal(text.data(), static_cast<std::uint32_t>(text.size()), m_wideScratch,
                           sizeof m_wideScratch / sizeof *m_wideScratch, m_byteScratch,
                           sizeof m_byteScratch);
  return m_strValue;
}

std::string_view CFIStrings::Decode(const FIEncodedString& string) {
  switch (string.form) {
    case FIEncodedString::Form_Utf16:
      return FromUtf16(string.octets);
    case FIEncodedString::Form_Alphabet:
      return FromAlphabet(string);
    case FIEncodedString::Form_Algorithm:
      return FromAlgorithm(string);
    case FIEncodedString::Form_Utf8:
      break;
  }
  return FromUtf8(string.octets);
}

// As UTF-8: a unit of zero ends the text.
std::string_view CFIStrings::FromUtf16(std::string_view octets) {
  if (octets.size() % 2 != 0) {
    throw CQzException(
        "Failed to parse FastInfoset. A text in UTF-16BE has an odd number of octets.");
  }
  std::u16string units;
  units.reserve(octets.size() / 2);
  for (std::size_t i = 0; i < octets.size(); i += 2) {
    const auto high = static_cast<unsigned char>(octets[i]);
    const auto low = static_cast<unsigned char>(octets[i + 1]);
    const auto unit = static_cast<char16_t>(high << 8 | low);
    if (unit == 0) break;
    units += unit;
  }
  m_strValue = Utf16ToLocal(units.data(), static_cast<std::uint32_t>(units.size()));
  return m_strValue;
}

std::string_view CFIStrings::FromAlphabet(const FIEncodedString& string) {
  if (string.index > m_alphabets.size()) ThrowOutside(string.index, m_alphabets.size());
  const std::string& alphabet = m_alphabets[string.index - 1];
  if (const char* const end = WriteHalves(alphabet, string.octets, m_number)) {
    return {m_number, static_cast<std::size_t>(end - m_number)};
  }
  m_strValue = DecodeRestrictedAlphabet(alphabet, string.octets);
  return m_strValue;
}

std::string_view CFIStrings::FromAlgorithm(const FIEncodedString& string) {
  if (string.index == kCdata) return FromUtf8(string.octets);
  if (const char* const end = WriteOneValue(string.index, string.octets, m_number)) {
    return {m_number, static_cast<std::size_t>(end - m_number)};
  }
  CFastInfosetBinaryData data;
  data.SetBuffer(reinterpret_cast<const unsigned char*>(string.octets.data()),
                 static_cast<std::uint32_t>(string.octets.size()));
  m_strValue = data.GetAsString(string.index);
  return m_strValue;
}

}  // namespace QzXmlLib16::detail
