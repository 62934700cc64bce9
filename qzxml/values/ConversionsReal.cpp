#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <system_error>

#include "qzxml/platform/Assert.h"
#include "qzxml/platform/Format.h"
#include "qzxml/values/Conversions.h"
#include "qzxml/values/ConversionsDetail.h"

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

// Where the two-digit exponent begins that ends the text, or npos.
std::size_t FindShortExponent(std::string_view text) {
  if (text.size() < 5) return std::string_view::npos;
  const char mark = text[text.size() - 4];
  return mark == 'e' || mark == 'E' ? text.size() - 2 : std::string_view::npos;
}

void AppendWithWideExponent(std::string_view text, std::string& out) {
  const std::size_t exponent = FindShortExponent(text);
  if (exponent == std::string_view::npos) {
    out.append(text);
  } else {
    out.append(text.substr(0, exponent)).append(1, '0').append(text.substr(exponent));
  }
}

void AppendGeneral(double value, int digits, std::string& out) {
  char buffer[32];  // sign, 16 digits, point and exponent are 23
  const std::to_chars_result result =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, digits);
  const std::size_t length = static_cast<std::size_t>(result.ptr - buffer);
  AppendWithWideExponent(std::string_view(buffer, length), out);
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
  char buffer[64];
  const int length = detail::FormatReal(buffer, sizeof buffer, core.c_str(), value);
  if (length < 0) return std::string();
  if (static_cast<std::size_t>(length) < sizeof buffer) return buffer;
  std::string text(static_cast<std::size_t>(length) + 1, '\0');
  detail::FormatReal(text.data(), text.size(), core.c_str(), value);
  text.pop_back();
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
  if (!format.core.empty()) {
    const std::string narrow = FormatCore(format.core, value);
    std::string number;
    const bool hexadecimal = format.core.back() == 'a' || format.core.back() == 'A';
    if (hexadecimal) {
      number = narrow;
    } else {
      AppendWithWideExponent(narrow, number);
    }
    AppendFilled(number, format, out);
  }
  AppendLiteral(format.behind, out);
}

void AppendFinite(double value, std::string_view format, int digits, std::string& out) {
  RealFormat pieces;
  if (format.empty()) {
    AppendGeneral(value, digits, out);
  } else if (TakeApart(format, pieces)) {
    AppendFormatted(value, pieces, out);
  } else {
    QZ_ASSERT_TEXT(false, "format takes one double");
    AppendGeneral(value, digits, out);
  }
}

void AppendReal(double value, std::string_view format, int digits, std::string& out) {
  if (std::isnan(value)) {
    out.append("NaN");
  } else if (std::isinf(value)) {
    out.append(value < 0 ? "-INF" : "INF");
  } else {
    AppendFinite(value, format, digits, out);
  }
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

double RealFromString(const std::string& value, Rule rule, const char* kind) {
  std::string scratch;
  return ParseNumber(detail::ApplyRule(rule, value, scratch), kind);
}

}  // namespace

namespace detail {

void AppendR4(float value, std::string_view format, std::string& out) {
  AppendReal(static_cast<double>(value), format, kR4Digits, out);
}

void AppendR8(double value, std::string_view format, std::string& out) {
  AppendReal(value, format, kR8Digits, out);
}

}  // namespace detail

std::string CConversions::r4ToString(float value) { return r4ToString(value, std::string()); }

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

std::string CConversions::r8ToString(double value) { return r8ToString(value, std::string()); }

std::string CConversions::r8ToString(double value, const std::string& format) {
  std::string text;
  detail::AppendR8(value, format, text);
  return text;
}

double CConversions::r8FromString(const std::string& value, WhitespaceRule rule) {
  return RealFromString(value, rule, "r8");
}

}  // namespace QzXmlLib16
