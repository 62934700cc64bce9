#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <system_error>

#include "qzxml/platform/Assert.h"
#include "qzxml/platform/Format.h"
#include "qzxml/values/Conversions.h"
#include "qzxml/values/ConversionsDetail.h"
#include "qzxml/values/OrdinaryFraction.h"

// Reals. Writing without a format is std::to_chars, which is "%.7g" and "%.16g" by definition, with
// the exponent widened to three digits. A caller's printf format is taken apart first: the flags
// that shape the digits, the precision and the conversion go to the C library, and the width is
// filled here, once the exponent has its three digits.
//
// Reading is std::from_chars behind a fence: it would take "inf" and "nan" in several spellings, so
// what follows the sign has to be a digit or a point.
namespace QzXmlLib16 {
namespace {

using Rule = CWhitespaceUtils::WhitespaceRule;

constexpr int kR4Digits = 7;
constexpr int kR8Digits = 16;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// --- Writing. ---

// Gives a two-digit exponent at the end of a text a third digit; the text has room for it.
char* WidenExponent(char* begin, char* end) {
  if (end - begin < 5 || (end[-4] != 'e' && end[-4] != 'E')) return end;
  end[0] = end[-1];
  end[-1] = end[-2];
  end[-2] = '0';
  return end + 1;
}

char* WriteReal(char* buffer, double value, int digits, double* readBack = nullptr) {
  if (!std::isfinite(value)) {
    return detail::WriteText(buffer, std::isnan(value) ? "NaN" : value < 0 ? "-INF" : "INF");
  }
  // A whole number of no more digits is written as such: the general form has no point there.
  const double most = digits == kR8Digits ? 1e16 : 1e7;
  if (std::abs(value) < most && value == std::trunc(value) && value != 0) {
    if (readBack != nullptr) *readBack = value;
    return detail::WriteInteger(buffer, static_cast<std::int64_t>(value));
  }
  if (readBack != nullptr && value == 0) *readBack = value;
#if defined(QZXML_WRITES_ORDINARY_FRACTIONS)
  if (char* const behind = detail::WriteOrdinaryFraction(buffer, value, digits, readBack)) {
    return behind;
  }
#endif
  char* const end = buffer + detail::kNumberSize - 1;
  return WidenExponent(buffer,
                       std::to_chars(buffer, end, value, std::chars_format::general, digits).ptr);
}

// A printf format that takes one double, in its pieces.
struct RealFormat {
  std::string_view before;  // literal text, with "%%" for a percent sign
  std::string_view behind;
  std::string core;       // the conversion without its width: "%+.2f"; empty when there is none
  std::size_t width = 0;  // at least so many chars, filled up as these two say
  bool left = false;
  bool zeros = false;
};

// Where the next conversion begins, or the end.
std::size_t FindConversion(std::string_view format, std::size_t from) {
  for (std::size_t at = from; at < format.size(); ++at) {
    if (format[at] != '%') continue;
    if (at + 1 == format.size() || format[at + 1] != '%') return at;
    ++at;
  }
  return format.size();
}

bool IsRealConversion(char c) {
  return std::string_view("aAeEfFgG").find(c) != std::string_view::npos;
}

// Takes the digits from at on; false if they are more than any text needs.
bool TakeNumber(std::string_view format, std::size_t& at, std::size_t& number) {
  const std::size_t first = at;
  for (; at < format.size() && IsDigit(format[at]); ++at) {
    number = number * 10 + static_cast<std::size_t>(format[at] - '0');
    if (at - first >= 6) return false;
  }
  return true;
}

void TakeFlags(std::string_view format, std::size_t& at, RealFormat& pieces) {
  for (; at < format.size(); ++at) {
    switch (format[at]) {
      case '-':
        pieces.left = true;
        break;
      case '0':
        pieces.zeros = true;
        break;
      case '+':
      case ' ':
      case '#':
        pieces.core.push_back(format[at]);
        break;
      case '\'':  // groups of digits, which the "C" locale does not have
        break;
      default:
        return;
    }
  }
}

// Takes the format apart; false if it is none that takes one double.
bool TakeApart(std::string_view format, RealFormat& pieces) {
  std::size_t at = FindConversion(format, 0);
  pieces.before = format.substr(0, at);
  if (at == format.size()) return true;

  pieces.core = "%";
  TakeFlags(format, ++at, pieces);
  if (!TakeNumber(format, at, pieces.width)) return false;
  if (at < format.size() && format[at] == '.') {
    const std::size_t point = at++;
    std::size_t precision = 0;
    if (!TakeNumber(format, at, precision)) return false;
    pieces.core.append(format.substr(point, at - point));
  }
  if (at < format.size() && format[at] == 'l') ++at;  // says nothing about a double
  if (at == format.size() || !IsRealConversion(format[at])) return false;
  pieces.core.push_back(format[at]);

  pieces.behind = format.substr(at + 1);
  return FindConversion(format, at + 1) == format.size();
}

void AppendLiteral(std::string_view literal, std::string& out) {
  for (std::size_t i = 0; i < literal.size(); ++i) {
    out.push_back(literal[i]);
    if (literal[i] == '%') ++i;
  }
}

// The number without its width.
std::string FormatCore(const std::string& core, double value) {
  std::string text(64, '\0');
  const int length = detail::FormatReal(text.data(), text.size(), core.c_str(), value);
  if (length < 0) return std::string();
  const std::size_t size = static_cast<std::size_t>(length);
  if (size + 1 >= text.size()) {
    text.resize(size + 2);  // the zero byte, and a third digit of the exponent
    detail::FormatReal(text.data(), text.size(), core.c_str(), value);
  }
  const bool isHexadecimal = core.back() == 'a' || core.back() == 'A';
  char* const end = text.data() + size;
  text.resize(static_cast<std::size_t>((isHexadecimal ? end : WidenExponent(text.data(), end)) -
                                       text.data()));
  return text;
}

// How much of the number stands ahead of filling zeros: its sign and the mark of a hexadecimal one.
std::size_t PrefixLength(std::string_view number) {
  const std::size_t sign = number.find_first_of("+- ") == 0 ? 1 : 0;
  const std::string_view mark = number.substr(sign, 2);
  return mark == "0x" || mark == "0X" ? sign + 2 : sign;
}

void AppendFilled(std::string_view number, const RealFormat& format, std::string& out) {
  const std::size_t fill = number.size() < format.width ? format.width - number.size() : 0;
  if (format.left) {
    out.append(number).append(fill, ' ');
  } else if (format.zeros) {
    const std::size_t prefix = PrefixLength(number);
    out.append(number.substr(0, prefix)).append(fill, '0').append(number.substr(prefix));
  } else {
    out.append(fill, ' ').append(number);
  }
}

void AppendFormatted(double value, const RealFormat& format, std::string& out) {
  AppendLiteral(format.before, out);
  if (!format.core.empty()) AppendFilled(FormatCore(format.core, value), format, out);
  AppendLiteral(format.behind, out);
}

void AppendReal(double value, std::string_view format, int digits, std::string& out) {
  if (!format.empty() && std::isfinite(value)) {
    RealFormat pieces;
    if (TakeApart(format, pieces)) return AppendFormatted(value, pieces, out);
    QZ_ASSERT_TEXT(false, "format takes one double");
  }
  char buffer[detail::kNumberSize];
  const char* const end = WriteReal(buffer, value, digits);
  out.append(buffer, static_cast<std::size_t>(end - buffer));
}

// --- Reading. ---

bool ParseSpecial(std::string_view text, double& value) {
  if (text == "NaN" || text == "1.#QNAN" || text == "-NAN") {
    value = std::numeric_limits<double>::quiet_NaN();
  } else if (text == "INF") {
    value = std::numeric_limits<double>::infinity();
  } else if (text == "-INF") {
    value = -std::numeric_limits<double>::infinity();
  } else {
    return false;
  }
  return true;
}

// How many places the first digit that is not zero stands ahead of the point (1 for "5", 0 for
// "0.5"), for a number without its sign and its exponent.
std::ptrdiff_t FindLeadingPlace(std::string_view digits) {
  const std::size_t point = std::min(digits.find('.'), digits.size());
  const std::size_t first = std::min(digits.find_first_of("123456789"), digits.size());
  const std::ptrdiff_t distance =
      static_cast<std::ptrdiff_t>(point) - static_cast<std::ptrdiff_t>(first);
  return distance > 0 ? distance : distance + 1;
}

// The digits of an exponent behind its sign, or a number that outweighs any text.
std::ptrdiff_t ParseExponent(std::string_view digits) {
  std::ptrdiff_t value = 0;
  const std::from_chars_result result =
      std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return result.ec == std::errc() ? value : std::numeric_limits<std::ptrdiff_t>::max() / 2;
}

// What a well-formed number beyond the range of a double is read as, without its sign.
double ParseBeyondRange(std::string_view number) {
  const std::size_t mark = std::min(number.find_first_of("eE"), number.size());
  std::ptrdiff_t place = FindLeadingPlace(number.substr(0, mark));
  if (mark < number.size()) {
    const bool negative = number[mark + 1] == '-';
    const bool hasSign = negative || number[mark + 1] == '+';
    const std::ptrdiff_t exponent = ParseExponent(number.substr(mark + (hasSign ? 2 : 1)));
    place += negative ? -exponent : exponent;
  }
  return place > 0 ? std::numeric_limits<double>::infinity() : 0.0;
}

double ParseNumber(std::string_view text, const char* kind) {
  const char* const end = text.data() + text.size();
  const char* at = detail::SkipLeadingSpace(text.data(), end);
  const bool negative = at != end && *at == '-';
  if (at != end && (*at == '-' || *at == '+')) ++at;
  double value = 0;
  if (at == end || !(IsDigit(*at) || *at == '.')) {
    if (ParseSpecial(text, value)) return value;
    detail::ThrowNotConvertible(text, kind);
  }

  const std::from_chars_result result = std::from_chars(at, end, value);
  if (result.ptr != end) {
    if (ParseSpecial(text, value)) return value;
    detail::ThrowNotConvertible(text, kind);
  }
  if (result.ec == std::errc::result_out_of_range) {
    value = ParseBeyondRange(std::string_view(at, static_cast<std::size_t>(end - at)));
  }
  return negative ? -value : value;
}

[[gnu::noinline]] double RealFromRuledText(const std::string& value, Rule rule, const char* kind) {
  std::string scratch;
  return ParseNumber(detail::ApplyRule(rule, value, scratch), kind);
}

// The powers of ten that a double holds exactly, as far as the digits below need them.
constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8, 1e9,
                                   1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18};
constexpr std::ptrdiff_t kMostPlainDigits = 18;  // a number of 64 bits surely takes them
constexpr std::uint64_t kMostExactMantissa = std::uint64_t{1} << 53;

// Takes the digits from at on into the mantissa and moves at behind them.
void TakeDigits(const char*& at, const char* end, std::uint64_t& mantissa) {
  for (; at != end && IsDigit(*at); ++at) {
    mantissa = mantissa * 10 + static_cast<std::uint64_t>(*at - '0');
  }
}

// Reads a text that is nothing but digits, with a minus and a point inside at most, and few enough
// of them: where mantissa and power of ten are exact, one division rounds as it should (Clinger,
// "How to read floating point numbers accurately", 1990). False for any other text.
bool ParsePlainReal(const std::string& text, double& value) {
  const char* at = text.data();
  const char* const end = at + text.size();
  const bool negative = *at == '-';  // at a zero byte, if need be
  if (negative) ++at;
  if (end - at > kMostPlainDigits || at == end || !IsDigit(*at) || !IsDigit(end[-1])) return false;
  std::uint64_t mantissa = 0;
  TakeDigits(at, end, mantissa);
  std::ptrdiff_t places = 0;
  if (at != end && *at == '.') {
    const char* const first = ++at;
    TakeDigits(at, end, mantissa);
    places = at - first;
  }
  if (at != end || mantissa > kMostExactMantissa) return false;
  const double number = static_cast<double>(mantissa) / kPowersOfTen[places];
  value = negative ? -number : number;
  return true;
}

// A text that is nothing but a number has no white space, so no rule changes it.
double RealFromString(const std::string& value, Rule rule, const char* kind) {
  if (!detail::IsKnownRule(rule)) return RealFromRuledText(value, rule, kind);
  double number = 0;
  // One rounding only: arithmetic wider than a double would make it two.
  if (FLT_EVAL_METHOD == 0 && ParsePlainReal(value, number)) return number;
  const char* const begin = value.data();
  const char* const end = begin + value.size();
  const char first = *begin == '-' ? begin[1] : *begin;  // the zero byte at the end, if need be
  if (IsDigit(first) || first == '.') {
    const std::from_chars_result result = std::from_chars(begin, end, number);
    if (result.ec == std::errc() && result.ptr == end) return number;
  }
  return RealFromRuledText(value, rule, kind);
}

}  // namespace

namespace detail {

char* WriteR4(char* buffer, float value) {
  return WriteReal(buffer, static_cast<double>(value), kR4Digits);
}

char* WriteR8(char* buffer, double value) {
  if (char* const end = WriteShortFraction(buffer, value)) return end;
  return WriteReal(buffer, value, kR8Digits);
}

char* WriteR8(char* buffer, double value, double& readBack) {
  if (char* const end = WriteShortFraction(buffer, value)) {
    readBack = value;
    return end;
  }
  return WriteReal(buffer, value, kR8Digits, &readBack);
}

char* WriteExactR8(char* buffer, double value) {
  if (char* const end = WriteShortFraction(buffer, value)) return end;
  double readBack = std::numeric_limits<double>::quiet_NaN();
  char* const end = WriteReal(buffer, value, kR8Digits, &readBack);
  return readBack == value ? end : nullptr;
}

char* WriteR4(char* buffer, float value, double& readBack) {
  return WriteReal(buffer, static_cast<double>(value), kR4Digits, &readBack);
}

void AppendR4(float value, std::string_view format, std::string& out) {
  AppendReal(static_cast<double>(value), format, kR4Digits, out);
}

void AppendR8(double value, std::string_view format, std::string& out) {
  AppendReal(value, format, kR8Digits, out);
}

}  // namespace detail

std::string CConversions::r4ToString(float value) {
  char buffer[detail::kNumberSize];
  return std::string(buffer, detail::WriteR4(buffer, value));
}

std::string CConversions::r4ToString(float value, const std::string& format) {
  std::string text;
  detail::AppendR4(value, format, text);
  return text;
}

float CConversions::r4FromString(const std::string& value, WhitespaceRule rule) {
  // Meant: read as a double and narrowed, so that what is too large for a float is infinity.
  static_assert(std::numeric_limits<float>::is_iec559, "a float is an IEC 60559 single");
  return static_cast<float>(RealFromString(value, rule, "r4"));
}

std::string CConversions::r8ToString(double value) {
  char buffer[detail::kNumberSize];
  return std::string(buffer, detail::WriteR8(buffer, value));
}

std::string CConversions::r8ToString(double value, const std::string& format) {
  std::string text;
  detail::AppendR8(value, format, text);
  return text;
}

double CConversions::r8FromString(const std::string& value, WhitespaceRule rule) {
  return RealFromString(value, rule, "r8");
}

}  // namespace QzXmlLib16
