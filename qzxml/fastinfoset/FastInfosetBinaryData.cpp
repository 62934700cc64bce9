#include "qzxml/fastinfoset/FastInfosetBinaryData.h"

#include <cstring>

#include "qzxml/fastinfoset/Messages.h"
#include "qzxml/runtime/Encoder.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/TextOrEmpty.h"
#include "qzxml/values/Conversions.h"

namespace QzXmlLib16 {
namespace {

constexpr std::uint32_t kUuidSize = 16;

// A number of size octets, high octet first.
void SetNumber(CBinaryData& data, std::uint64_t number, std::uint32_t size) {
  unsigned char octets[8];
  for (std::uint32_t i = 0; i < size; ++i) {
    octets[i] = static_cast<unsigned char>(number >> (8 * (size - 1 - i)));
  }
  data.SetBuffer(octets, size);
}

std::uint64_t GetNumber(const unsigned char* octets, std::uint32_t size) {
  std::uint64_t number = 0;
  for (std::uint32_t i = 0; i < size; ++i) number = number << 8 | octets[i];
  return number;
}

template <typename Real, typename Bits>
Real RealOf(std::uint64_t number) {
  const Bits bits = static_cast<Bits>(number);
  Real value;
  static_assert(sizeof(value) == sizeof(bits));
  std::memcpy(&value, &bits, sizeof(value));
  return value;
}

template <typename Bits, typename Real>
Bits BitsOf(Real value) {
  Bits bits;
  static_assert(sizeof(value) == sizeof(bits));
  std::memcpy(&bits, &value, sizeof(value));
  return bits;
}

// The texts of values of size octets each, a blank between them.
template <typename ToText>
std::string JoinValues(const CBinaryData& data, std::uint32_t size, const char* failure,
                       ToText toText) {
  const std::uint32_t length = data.GetLength();
  if (length % size != 0) throw CQzException(failure);
  const unsigned char* const octets = data.GetData();
  std::string text;
  for (std::uint32_t at = 0; at < length; at += size) {
    if (at != 0) text += ' ';
    text += toText(octets + at);
  }
  return text;
}

// The first octet has the number of spare bits at the end of the last octet, then four bits.
std::string JoinBooleans(const CBinaryData& data) {
  const unsigned char* const octets = data.GetData();
  const std::uint32_t length = data.GetLength();
  const int spare = octets[0] >> 4;
  std::string text;
  for (std::uint32_t at = 0; at < length; ++at) {
    if (at != 0) text += ' ';
    const int last = at + 1 == length ? spare : 0;
    for (int bit = at == 0 ? 3 : 7; bit >= last; --bit) {
      text += CConversions::booleanToString((octets[at] >> bit & 1) != 0);
    }
  }
  return text;
}

}  // namespace

CFastInfosetBinaryData::CFastInfosetBinaryData() = default;

CFastInfosetBinaryData::CFastInfosetBinaryData(const CBinaryData& other) : CBinaryData(other) {}

CFastInfosetBinaryData::CFastInfosetBinaryData(unsigned char* data, std::uint32_t length,
                                               bool takeOwnership)
    : CBinaryData(data, length, takeOwnership) {}

CFastInfosetBinaryData::CFastInfosetBinaryData(const char* text) : CBinaryData(text) {}

CFastInfosetBinaryData::~CFastInfosetBinaryData() = default;

void CFastInfosetBinaryData::SetAsEncodedString(std::uint32_t number, const char* text) {
  constexpr CWhitespaceUtils::WhitespaceRule kRule = CWhitespaceUtils::WhitespaceRule_Collapse;
  Clear();
  const std::string value = detail::TextOrEmpty(text);
  switch (number) {
    case 1:
    case 9:
      SetAsHexString(value.c_str());
      break;
    case 2:
      SetAsBase64(value.c_str());
      break;
    case 3:
      SetNumber(*this, static_cast<std::uint16_t>(CConversions::i2FromString(value, kRule)), 2);
      break;
    case 4:
      SetNumber(*this, static_cast<std::uint32_t>(CConversions::i4FromString(value, kRule)), 4);
      break;
    case 5:
      SetNumber(*this, static_cast<std::uint64_t>(CConversions::i8FromString(value, kRule)), 8);
      break;
    case 6:
      Append(
          static_cast<unsigned char>(CConversions::booleanFromString(value, kRule) ? 0x38 : 0x30));
      break;
    case 7:
      SetNumber(*this, BitsOf<std::uint32_t>(CConversions::r4FromString(value, kRule)), 4);
      break;
    case 8:
      SetNumber(*this, BitsOf<std::uint64_t>(CConversions::r8FromString(value, kRule)), 8);
      break;
    case 10:
      Append(LocalToUtf8(value.c_str()));
      break;
    default:
      throw CQzException(Messages::kFIUnknownByteEncoding);
  }
}

std::string CFastInfosetBinaryData::GetAsString(std::uint32_t number) const {
  if (GetLength() == 0) return std::string();
  switch (number) {
    case 1:
      return GetAsHexString();
    case 2:
      return GetAsBase64();
    case 3:
      return JoinValues(*this, 2, "Invalid value for SHORT byte encoding.", [](const auto* octets) {
        return CConversions::i2ToString(static_cast<std::int16_t>(GetNumber(octets, 2)));
      });
    case 4:
      return JoinValues(*this, 4, "Invalid value for INT byte encoding.", [](const auto* octets) {
        return CConversions::i4ToString(static_cast<std::int32_t>(GetNumber(octets, 4)));
      });
    case 5:
      return JoinValues(*this, 8, "Invalid value for LONG byte encoding.", [](const auto* octets) {
        return CConversions::i8ToString(static_cast<std::int64_t>(GetNumber(octets, 8)));
      });
    case 6:
      return JoinBooleans(*this);
    case 7:
      return JoinValues(*this, 4, "Invalid value for FLOAT byte encoding.", [](const auto* octets) {
        return CConversions::r4ToString(RealOf<float, std::uint32_t>(GetNumber(octets, 4)));
      });
    case 8:
      return JoinValues(
          *this, 8, "Invalid value for DOUBLE byte encoding.", [](const auto* octets) {
            return CConversions::r8ToString(RealOf<double, std::uint64_t>(GetNumber(octets, 8)));
          });
    case 9:
      return JoinValues(
          *this, kUuidSize, "Invalid value for UUID byte encoding.",
          [](const auto* octets) { return CBinaryData::GetAsHexString(octets, kUuidSize); });
    default:
      throw CQzException(Messages::kFIUnknownByteEncoding);
  }
}

}  // namespace QzXmlLib16
