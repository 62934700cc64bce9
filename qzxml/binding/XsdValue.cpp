#include "qzxml/binding/XsdValue.h"

#include <algorithm>
#include <cmath>

#include "qzxml/binding/NameCharacters.h"
#include "qzxml/values/Conversions.h"

namespace QzXmlLib16 {
namespace detail {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool IsHexDigit(char c) { return IsDigit(c) || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f'); }

ValueOrder Reverse(ValueOrder order) {
  if (order == ValueOrder::kLess) return ValueOrder::kGreater;
  return order == ValueOrder::kGreater ? ValueOrder::kLess : order;
}

ValueOrder EqualIf(bool isEqual) {
  return isEqual ? ValueOrder::kEqual : ValueOrder::kIndeterminate;
}

ValueOrder FromSign(int sign) {
  if (sign == 0) return ValueOrder::kEqual;
  return sign < 0 ? ValueOrder::kLess : ValueOrder::kGreater;
}

// --- Names. ---

// The character that begins at the position, which is moved behind it; what is not UTF-8 is no
// character of any set here.
std::uint32_t NextCode(std::string_view text, std::size_t& at) {
  const auto lead = static_cast<unsigned char>(text[at++]);
  if (lead < 0x80) return lead;
  const int following = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
  std::uint32_t code = lead & (0x3Fu >> following);
  for (int i = 0; i < following; ++i, ++at) {
    if (at == text.size() || (text[at] & 0xC0) != 0x80) return 0xFFFFFFFF;
    code = code << 6 | (static_cast<unsigned char>(text[at]) & 0x3F);
  }
  return code;
}

template <std::size_t Count>
constexpr bool IsIn(const CodeRange (&ranges)[Count], std::uint32_t code) {
  for (const CodeRange& range : ranges) {
    if (range.first <= code && code <= range.last) return true;
  }
  return false;
}

// The characters of names that are one octet long.
class CAsciiNames {
 public:
  constexpr CAsciiNames() {
    for (std::uint32_t code = 0; code < 0x80; ++code) {
      m_isIn[code] = IsIn(kNameStarts, code) || IsIn(kNameContinuations, code);
    }
  }
  constexpr bool Has(unsigned char octet) const { return octet < 0x80 && m_isIn[octet]; }

 private:
  bool m_isIn[0x80] = {};
};

constexpr CAsciiNames kAsciiNames;

bool IsNmtoken(std::string_view text) {
  if (text.empty()) return false;
  for (std::size_t at = 0; at < text.size();) {
    if (kAsciiNames.Has(static_cast<unsigned char>(text[at]))) {
      ++at;
      continue;
    }
    const std::uint32_t code = NextCode(text, at);
    if (!IsIn(kNameStarts, code) && !IsIn(kNameContinuations, code)) return false;
  }
  return true;
}

bool IsName(std::string_view text) {
  std::size_t at = 0;
  return IsNmtoken(text) && IsIn(kNameStarts, NextCode(text, at));
}

bool IsNcName(std::string_view text) {
  return IsName(text) && text.find(':') == std::string_view::npos;
}

bool IsQName(std::string_view text) {
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos) return IsNcName(text);
  return IsNcName(text.substr(0, colon)) && IsNcName(text.substr(colon + 1));
}

// Parts of one to eight letters, behind the first also digits.
bool IsLanguage(std::string_view text) {
  for (bool isFirst = true;; isFirst = false) {
    const std::string_view part = text.substr(0, text.find('-'));
    const auto isAllowed = [isFirst](char c) { return IsLetter(c) || (!isFirst && IsDigit(c)); };
    if (part.empty() || part.size() > 8 || !std::all_of(part.begin(), part.end(), isAllowed)) {
      return false;
    }
    if (part.size() == text.size()) return true;
    text.remove_prefix(part.size() + 1);
  }
}

// Nearly everything can be made a reference by escaping; not so a broken escape, a second fragment,
// and what begins like a scheme and is none.
bool IsAnyUri(std::string_view text) {
  for (std::size_t at = text.find('%'); at != std::string_view::npos; at = text.find('%', at + 1)) {
    if (at + 2 >= text.size() || !IsHexDigit(text[at + 1]) || !IsHexDigit(text[at + 2])) {
      return false;
    }
  }
  const std::size_t fragment = text.find('#');
  if (fragment != std::string_view::npos &&
      text.find('#', fragment + 1) != std::string_view::npos) {
    return false;
  }
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos || text.find_first_of("/?#") < colon) return true;
  const std::string_view scheme = text.substr(0, colon);
  return !scheme.empty() && IsLetter(scheme[0]) &&
         std::all_of(scheme.begin(), scheme.end(), [](char c) {
           return IsLetter(c) || IsDigit(c) || c == '+' || c == '-' || c == '.';
         });
}

// --- Numbers. ---

// A decimal without the zeros that its value does not need.
struct DecimalParts {
  bool isNegative = false;  // never of zero
  std::string_view whole;
  std::string_view fraction;
};

bool TakeSign(std::string_view& text) {
  const bool isNegative = !text.empty() && text[0] == '-';
  if (isNegative || (!text.empty() && text[0] == '+')) text.remove_prefix(1);
  return isNegative;
}

bool AreDigits(std::string_view text) { return std::all_of(text.begin(), text.end(), IsDigit); }

bool IsInteger(std::string_view text) {
  TakeSign(text);
  return !text.empty() && AreDigits(text);
}

bool IsDecimal(std::string_view text) {
  TakeSign(text);
  const std::size_t point = std::min(text.find('.'), text.size());
  const std::string_view whole = text.substr(0, point);
  const std::string_view fraction = text.substr(std::min(point + 1, text.size()));
  return whole.size() + fraction.size() > 0 && AreDigits(whole) && AreDigits(fraction);
}

DecimalParts SplitDecimal(std::string_view text) {
  DecimalParts parts;
  parts.isNegative = TakeSign(text);
  const std::size_t point = std::min(text.find('.'), text.size());
  parts.whole = text.substr(0, point);
  parts.whole.remove_prefix(std::min(parts.whole.find_first_not_of('0'), parts.whole.size()));
  parts.fraction = text.substr(std::min(point + 1, text.size()));
  parts.fraction = parts.fraction.substr(0, parts.fraction.find_last_not_of('0') + 1);
  if (parts.whole.empty() && parts.fraction.empty()) parts.isNegative = false;
  return parts;
}

ValueOrder CompareDecimals(std::string_view a, std::string_view b) {
  const DecimalParts left = SplitDecimal(a);
  const DecimalParts right = SplitDecimal(b);
  if (left.isNegative != right.isNegative) {
    return left.isNegative ? ValueOrder::kLess : ValueOrder::kGreater;
  }
  ValueOrder order = FromSign(left.fraction.compare(right.fraction));
  if (left.whole != right.whole) {
    const bool hasSameSize = left.whole.size() == right.whole.size();
    const bool isLess =
        hasSameSize ? left.whole < right.whole : left.whole.size() < right.whole.size();
    order = isLess ? ValueOrder::kLess : ValueOrder::kGreater;
  }
  return left.isNegative ? Reverse(order) : order;
}

bool IsReal(std::string_view text) {
  if (text == "NaN" || text == "INF" || text == "-INF") return true;
  const std::size_t exponent = text.find_first_of("eE");
  return IsDecimal(text.substr(0, exponent)) &&
         (exponent == std::string_view::npos || IsInteger(text.substr(exponent + 1)));
}

template <typename T>
ValueOrder CompareReals(T a, T b) {
  if (std::isnan(a) || std::isnan(b)) return EqualIf(std::isnan(a) && std::isnan(b));
  if (a < b) return ValueOrder::kLess;
  return a > b ? ValueOrder::kGreater : ValueOrder::kEqual;
}

ValueOrder CompareRealTexts(XsdType primitive, std::string_view a, std::string_view b) {
  constexpr auto kNone = CWhitespaceUtils::WhitespaceRule_None;
  const std::string left(a);
  const std::string right(b);
  if (primitive == XsdType_float) {
    return CompareReals(CConversions::r4FromString(left, kNone),
                        CConversions::r4FromString(right, kNone));
  }
  return CompareReals(CConversions::r8FromString(left, kNone),
                      CConversions::r8FromString(right, kNone));
}

// An integer type with its ends; null where it has none.
struct IntegerRange {
  XsdType type;
  const char* least;
  const char* most;
};

constexpr IntegerRange kIntegerRanges[] = {
    {XsdType_integer, nullptr, nullptr},
    {XsdType_nonPositiveInteger, nullptr, "0"},
    {XsdType_negativeInteger, nullptr, "-1"},
    {XsdType_long, "-9223372036854775808", "9223372036854775807"},
    {XsdType_int, "-2147483648", "2147483647"},
    {XsdType_short, "-32768", "32767"},
    {XsdType_byte, "-128", "127"},
    {XsdType_nonNegativeInteger, "0", nullptr},
    {XsdType_unsignedLong, "0", "18446744073709551615"},
    {XsdType_unsignedInt, "0", "4294967295"},
    {XsdType_unsignedShort, "0", "65535"},
    {XsdType_unsignedByte, "0", "255"},
    {XsdType_positiveInteger, "1", nullptr},
};

bool IsIntegerOf(XsdType type, std::string_view text) {
  if (!IsInteger(text)) return false;
  const auto* range = std::find_if(std::begin(kIntegerRanges), std::end(kIntegerRanges),
                                   [type](const IntegerRange& r) { return r.type == type; });
  return range != std::end(kIntegerRanges) &&
         (range->least == nullptr || CompareDecimals(text, range->least) != ValueOrder::kLess) &&
         (range->most == nullptr || CompareDecimals(text, range->most) != ValueOrder::kGreater);
}

// --- Binary data. ---

bool IsHexBinary(std::string_view text) {
  return text.size() % 2 == 0 && std::all_of(text.begin(), text.end(), IsHexDigit);
}

std::string WithoutSpaces(std::string_view text) {
  std::string dense(text);
  dense.erase(std::remove(dense.begin(), dense.end(), ' '), dense.end());
  return dense;
}

// The bits of the last character that no octet takes have to be zero.
bool IsBase64Binary(std::string_view text) {
  const std::string dense = WithoutSpaces(text);
  if (dense.size() % 4 != 0) return false;
  const std::size_t end = dense.find_last_not_of('=') + 1;
  const std::size_t padding = dense.size() - end;
  const auto isBase64 = [](char c) { return IsLetter(c) || IsDigit(c) || c == '+' || c == '/'; };
  const std::string_view data = std::string_view(dense).substr(0, end);
  if (padding > 2 || !std::all_of(data.begin(), data.end(), isBase64)) return false;
  constexpr std::string_view kLast[] = {"", "AEIMQUYcgkosw048", "AQgw"};
  return padding == 0 || kLast[padding].find(data.back()) != std::string_view::npos;
}

bool IsEqualHex(std::string_view a, std::string_view b) {
  const auto isSame = [](char left, char right) {
    return left == right || (IsLetter(left) && (left ^ 0x20) == right);
  };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), isSame);
}

bool IsBoolean(std::string_view text) {
  return text == "true" || text == "false" || text == "1" || text == "0";
}

bool IsTrue(std::string_view boolean) { return boolean == "true" || boolean == "1"; }

}  // namespace

XsdType GetPrimitive(XsdType type) {
  if (type >= XsdType_string && type <= XsdType_ENTITY && type == GetBuiltInItem(type)) {
    return XsdType_string;
  }
  return type >= XsdType_decimal && type <= XsdType_positiveInteger ? XsdType_decimal : type;
}

XsdType GetBuiltInItem(XsdType type) {
  switch (type) {
    case XsdType_NMTOKENS:
      return XsdType_NMTOKEN;
    case XsdType_IDREFS:
      return XsdType_IDREF;
    case XsdType_ENTITIES:
      return XsdType_ENTITY;
    default:
      return type;
  }
}

CWhitespaceUtils::WhitespaceRule GetWhitespaceRule(XsdType type) {
  if (type == XsdType_anySimpleType || type == XsdType_string) {
    return CWhitespaceUtils::WhitespaceRule_Preserve;
  }
  return type == XsdType_normalizedString ? CWhitespaceUtils::WhitespaceRule_Replace
                                          : CWhitespaceUtils::WhitespaceRule_Collapse;
}

bool IsValueOf(XsdType type, std::string_view text) {
  switch (type) {
    case XsdType_language:
      return IsLanguage(text);
    case XsdType_Name:
      return IsName(text);
    case XsdType_NMTOKEN:
      return IsNmtoken(text);
    case XsdType_NCName:
    case XsdType_ID:
    case XsdType_IDREF:
    case XsdType_ENTITY:
      return IsNcName(text);
    case XsdType_QName:
    case XsdType_NOTATION:
      return IsQName(text);
    case XsdType_anyURI:
      return IsAnyUri(text);
    case XsdType_boolean:
      return IsBoolean(text);
    case XsdType_decimal:
      return IsDecimal(text);
    case XsdType_float:
    case XsdType_double:
      return IsReal(text);
    case XsdType_duration:
      return IsDurationValue(text);
    case XsdType_hexBinary:
      return IsHexBinary(text);
    case XsdType_base64Binary:
      return IsBase64Binary(text);
    default:
      if (type >= XsdType_dateTime && type <= XsdType_gMonth) return IsDateValue(type, text);
      if (type >= XsdType_integer && type <= XsdType_positiveInteger) {
        return IsIntegerOf(type, text);
      }
      return true;  // texts, whose white space is all that is ruled
  }
}

ValueOrder CompareValues(XsdType primitive, std::string_view a, std::string_view b) {
  if (!IsValueOf(primitive, b)) return ValueOrder::kIndeterminate;
  switch (primitive) {
    case XsdType_boolean:
      return EqualIf(IsTrue(a) == IsTrue(b));
    case XsdType_decimal:
      return CompareDecimals(a, b);
    case XsdType_float:
    case XsdType_double:
      return CompareRealTexts(primitive, a, b);
    case XsdType_duration:
      return CompareDurations(a, b);
    case XsdType_hexBinary:
      return EqualIf(IsEqualHex(a, b));
    case XsdType_base64Binary:
      return EqualIf(WithoutSpaces(a) == WithoutSpaces(b));
    default:
      if (primitive >= XsdType_dateTime && primitive <= XsdType_gMonth) {
        return CompareDates(primitive, a, b);
      }
      return EqualIf(a == b);
  }
}

std::size_t GetValueLength(XsdType primitive, std::string_view text) {
  if (primitive == XsdType_hexBinary) return text.size() / 2;
  if (primitive == XsdType_base64Binary) {
    const std::string dense = WithoutSpaces(text);
    return dense.size() / 4 * 3 - (dense.size() - (dense.find_last_not_of('=') + 1));
  }
  const auto beginsCharacter = [](char c) { return (c & 0xC0) != 0x80; };
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), beginsCharacter));
}

DigitCounts CountDigits(std::string_view decimal) {
  const DecimalParts parts = SplitDecimal(decimal);
  return {parts.whole.size() + parts.fraction.size(), parts.fraction.size()};
}

}  // namespace detail
}  // namespace QzXmlLib16
