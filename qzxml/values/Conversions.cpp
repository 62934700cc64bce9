#include "qzxml/values/Conversions.h"

#include <cstring>
#include <limits>
#include <system_error>
#include <type_traits>

#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/values/ConversionsDetail.h"
#include "qzxml/values/Messages.h"
#include "qzxml/values/PlainNumbers.h"

// Binary data, integers, text and booleans; reals are in ConversionsReal.cpp, dates, durations and
// numbers of any size in ConversionsObjects.cpp. A FromString applies the rule to a view of the
// text, which copies nothing as a rule, and reads that view.
namespace QzXmlLib16 {
namespace detail {

void ThrowNotConvertible(std::string_view text, const char* kind) {
  throw CQzInvalidValueException(
      FormatString(Messages::kNotConvertible, std::string(text).c_str(), kind));
}

void ThrowTooLarge(std::string_view text, const char* kind) {
  throw CQzInvalidValueException(
      FormatString(Messages::kTooLarge, std::string(text).c_str(), kind));
}

std::string IntegerToString(std::uint64_t magnitude, bool isNegative) {
  char buffer[kNumberSize];
  char* const end = buffer + kNumberSize;
  char* at = end;
  while (magnitude >= 100) {
    at -= 2;
    std::memcpy(at, kDigitPairs + magnitude % 100 * 2, 2);
    magnitude /= 100;
  }
  if (magnitude >= 10) {
    at -= 2;
    std::memcpy(at, kDigitPairs + magnitude * 2, 2);
  } else {
    *--at = static_cast<char>('0' + magnitude);
  }
  if (isNegative) *--at = '-';
  return std::string(at, end);
}

const char* RuledText(const std::string& value, CWhitespaceUtils::WhitespaceRule rule,
                      std::string& scratch) {
  const std::string_view text = ApplyRule(rule, value, scratch);
  if (text.data() + text.size() == value.data() + value.size()) return text.data();
  if (text.data() != scratch.data()) {
    scratch.assign(text);
  } else {
    scratch.resize(text.size());
  }
  return scratch.c_str();
}

}  // namespace detail

namespace {

using Rule = CWhitespaceUtils::WhitespaceRule;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Reads as strtol and its relatives do in base 10: white space, one sign, digits. A minus in front
// of an unsigned number wraps it. A number out of range is told as such also where more stands
// behind it.
template <typename Integer>
Integer ParseInteger(std::string_view text, const char* kind) {
  const char* const end = text.data() + text.size();
  const char* at = detail::SkipLeadingSpace(text.data(), end);
  const bool negative = at != end && *at == '-';
  if (at != end && (*at == '-' || *at == '+')) ++at;
  if (at == end || !IsDigit(*at)) detail::ThrowNotConvertible(text, kind);
  if (negative && std::is_signed_v<Integer>) --at;

  Integer value = 0;
  const std::from_chars_result result = std::from_chars(at, end, value);
  if (result.ec == std::errc::result_out_of_range) detail::ThrowTooLarge(text, kind);
  if (result.ptr != end) detail::ThrowNotConvertible(text, kind);
  return negative && std::is_unsigned_v<Integer> ? static_cast<Integer>(Integer{0} - value) : value;
}

template <typename Integer>
[[gnu::noinline]] Integer IntegerFromRuledText(const std::string& value, Rule rule,
                                               const char* kind) {
  std::string scratch;
  return ParseInteger<Integer>(detail::ApplyRule(rule, value, scratch), kind);
}

// A text that is nothing but a number has no white space, so no rule changes it.
template <typename Integer>
Integer IntegerFromString(const std::string& value, Rule rule, const char* kind) {
  Integer number = 0;
  if (detail::ParsePlainInteger(value, number) && detail::IsKnownRule(rule)) return number;
  return IntegerFromRuledText<Integer>(value, rule, kind);
}

// The test of the kinds that are read as a wider one.
template <typename Narrow, typename Wide>
Narrow NarrowTo(Wide wide, const std::string& value, const char* kind) {
  if (wide < std::numeric_limits<Narrow>::min() || wide > std::numeric_limits<Narrow>::max()) {
    detail::ThrowTooLarge(value, kind);
  }
  return static_cast<Narrow>(wide);
}

char ToLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool EqualsIgnoringCase(std::string_view text, std::string_view lower) {
  if (text.size() != lower.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (ToLower(text[i]) != lower[i]) return false;
  }
  return true;
}

bool ParseBoolean(std::string_view text, bool& value) {
  value = text == "1" || text == "true";
  if (value || text == "0" || text == "false") return true;
  value = EqualsIgnoringCase(text, "true");
  return value || EqualsIgnoringCase(text, "false");
}

}  // namespace

// --- Binary data. ---

std::string CConversions::hexBinaryToString(const CBinaryData& value) {
  return value.GetAsHexString();
}

CBinaryData CConversions::hexBinaryFromString(const std::string& value, WhitespaceRule rule) {
  std::string scratch;
  CBinaryData data;
  data.SetAsHexString(detail::RuledText(value, rule, scratch));
  return data;
}

std::string CConversions::base64BinaryToString(const CBinaryData& value) {
  return value.GetAsBase64();
}

CBinaryData CConversions::base64BinaryFromString(const std::string& value, WhitespaceRule rule) {
  // The decoder passes over white space wherever it stands, so that a rule matters in two cases
  // only: an unknown one is refused, and one that leaves nothing at all makes the value empty.
  std::string scratch;
  detail::ApplyRule(rule, std::string_view(), scratch);
  const char* text = value.c_str();
  if (rule == CWhitespaceUtils::WhitespaceRule_Collapse) {
    while (CWhitespaceUtils::IsWhiteSpace(*text)) ++text;
  }
  CBinaryData data;
  data.SetAsBase64(text);
  return data;
}

// --- Integers. ---

std::string CConversions::i1ToString(char value) {
  return detail::IntegerToString(static_cast<signed char>(value));
}

char CConversions::i1FromString(const std::string& value, WhitespaceRule rule) {
  return static_cast<char>(NarrowTo<signed char>(i4FromString(value, rule), value, "i1"));
}

std::string CConversions::i2ToString(short value) { return detail::IntegerToString(value); }

short CConversions::i2FromString(const std::string& value, WhitespaceRule rule) {
  return NarrowTo<std::int16_t>(i4FromString(value, rule), value, "i2");
}

std::string CConversions::i4ToString(std::int32_t value) { return detail::IntegerToString(value); }

std::int32_t CConversions::i4FromString(const std::string& value, WhitespaceRule rule) {
  return IntegerFromString<std::int32_t>(value, rule, "i4");
}

std::string CConversions::i8ToString(std::int64_t value) { return detail::IntegerToString(value); }

std::int64_t CConversions::i8FromString(const std::string& value, WhitespaceRule rule) {
  return IntegerFromString<std::int64_t>(value, rule, "i8");
}

std::string CConversions::ui1ToString(unsigned char value) {
  return detail::IntegerToString(value);
}

unsigned char CConversions::ui1FromString(const std::string& value, WhitespaceRule rule) {
  return NarrowTo<unsigned char>(ui4FromString(value, rule), value, "ui1");
}

std::string CConversions::ui2ToString(unsigned short value) {
  return detail::IntegerToString(value);
}

unsigned short CConversions::ui2FromString(const std::string& value, WhitespaceRule rule) {
  return NarrowTo<std::uint16_t>(ui4FromString(value, rule), value, "ui2");
}

std::string CConversions::ui4ToString(std::uint32_t value) {
  return detail::IntegerToString(value);
}

std::uint32_t CConversions::ui4FromString(const std::string& value, WhitespaceRule rule) {
  return IntegerFromString<std::uint32_t>(value, rule, "ui4");
}

std::string CConversions::ui8ToString(std::uint64_t value) {
  return detail::IntegerToString(value);
}

std::uint64_t CConversions::ui8FromString(const std::string& value, WhitespaceRule rule) {
  return IntegerFromString<std::uint64_t>(value, rule, "ui8");
}

// --- Text. ---

std::string CConversions::charToString(char value) { return std::string(1, value); }

char CConversions::charFromString(const std::string& value, WhitespaceRule rule) {
  std::string scratch;
  const std::string_view text = detail::ApplyRule(rule, value, scratch);
  if (text.size() != 1) {
    throw CQzInvalidValueException(FormatString(
        "The value [%s] can not be a char as it is either empty of greater than 1 char long",
        std::string(text).c_str()));
  }
  return text.front();
}

std::string CConversions::stringToString(const std::string& value) { return value; }

std::string CConversions::stringFromString(const std::string& value, WhitespaceRule rule) {
  return CWhitespaceUtils::ApplyRule(rule, value);
}

std::string CConversions::booleanToString(bool value) { return value ? "true" : "false"; }

bool CConversions::booleanFromString(const std::string& value, WhitespaceRule rule) {
  // None of the words has white space, so that a rule changes nothing in them.
  bool result = false;
  if (detail::IsKnownRule(rule) && ParseBoolean(value, result)) return result;
  std::string scratch;
  if (ParseBoolean(detail::ApplyRule(rule, value, scratch), result)) return result;
  throw CQzInvalidValueException(
      FormatString("A Boolean Value read from an XML document was invalid [%s]. Valid values are "
                   "'true', 'false', '1', or '0'",
                   value.c_str()));
}

}  // namespace QzXmlLib16
