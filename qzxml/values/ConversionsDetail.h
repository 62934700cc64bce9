#pragma once

#include <charconv>
#include <cstddef>
#include <string>
#include <string_view>

// What CConversions is made of, for those inside the library who write into a text that they keep.
namespace QzXmlLib16 {
namespace detail {

// Appends the decimal digits, with a minus where there is one.
template <typename Integer>
void AppendInteger(Integer value, std::string& out) {
  char buffer[24];
  const std::to_chars_result result = std::to_chars(buffer, buffer + sizeof buffer, value);
  out.append(buffer, static_cast<std::size_t>(result.ptr - buffer));
}

// Append what r4ToString and r8ToString return for the value and the format.
void AppendR4(float value, std::string_view format, std::string& out);
void AppendR8(double value, std::string_view format, std::string& out);

// Append what yearToString, monthToString and dayToString return.
void AppendYear(unsigned short value, std::string& out);
void AppendMonth(unsigned char value, std::string& out);
void AppendDay(unsigned char value, std::string& out);

// Raise the two failures of a number, with the text and the kind.
[[noreturn]] void ThrowNotConvertible(std::string_view text, const char* kind);
[[noreturn]] void ThrowTooLarge(std::string_view text, const char* kind);

// Behind the white space that strtol and strtod skip in the "C" locale.
inline const char* SkipLeadingSpace(const char* at, const char* end) {
  while (at != end && (*at == ' ' || (*at >= '\t' && *at <= '\r'))) ++at;
  return at;
}

}  // namespace detail
}  // namespace QzXmlLib16
