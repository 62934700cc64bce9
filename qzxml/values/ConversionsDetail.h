#pragma once

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>

#include "qzxml/values/WhitespaceUtils.h"

// What CConversions is made of, for those inside the library who write into a text that they keep.
namespace QzXmlLib16 {
namespace detail {

// Room for any number without a format: a double takes 24 chars, an integer 20. What writes into it
// returns the end of what it has written.
inline constexpr std::size_t kNumberSize = 40;

inline char* WriteText(char* buffer, std::string_view text) {
  return buffer + text.copy(buffer, text.size());
}

// The numbers from 00 to 99.
inline constexpr char kDigitPairs[] =
    "0001020304050607080910111213141516171819202122232425262728293031323334353637383940414243444546"
    "4748495051525354555657585960616263646566676869707172737475767778798081828384858687888990919293"
    "949596979899";

// One or two digits.
inline char* WriteUpTo99(char* buffer, unsigned value) {
  if (value < 10) {
    *buffer = static_cast<char>('0' + value);
    return buffer + 1;
  }
  std::memcpy(buffer, kDigitPairs + std::size_t{2} * value, 2);
  return buffer + 2;
}

// The decimal digits, with a minus where there is one. Most numbers have four digits at most.
template <typename Integer>
char* WriteInteger(char* buffer, Integer value) {
  if (value < Integer{0} || static_cast<std::uint64_t>(value) > 9999) {
    return std::to_chars(buffer, buffer + kNumberSize, value).ptr;
  }
  const auto small = static_cast<unsigned>(value);
  if (small < 100) return WriteUpTo99(buffer, small);
  buffer = WriteUpTo99(buffer, small / 100);
  std::memcpy(buffer, kDigitPairs + std::size_t{2} * (small % 100), 2);
  return buffer + 2;
}

// The same as a string. The digits are written from the last to the first, two at a time, so that
// nobody has to know beforehand how many they are.
std::string IntegerToString(std::uint64_t magnitude, bool isNegative);
template <typename Integer>
std::string IntegerToString(Integer value) {
  const auto bits = static_cast<std::uint64_t>(value);
  const bool isNegative = std::is_signed_v<Integer> && value < 0;
  return IntegerToString(isNegative ? 0 - bits : bits, isNegative);
}

// What yearToString, monthToString and dayToString return.
inline char* WriteYear(char* buffer, unsigned short value) { return WriteInteger(buffer, value); }
inline char* WriteMonth(char* buffer, unsigned char value) {
  *buffer++ = '-';
  *buffer++ = '-';
  if (value < 10) *buffer++ = '0';
  return WriteInteger(buffer, static_cast<unsigned>(value));
}
inline char* WriteDay(char* buffer, unsigned char value) {
  *buffer++ = '-';
  return WriteMonth(buffer, value);
}

// What r4ToString and r8ToString return without a format.
char* WriteR4(char* buffer, float value);
char* WriteR8(char* buffer, double value);
// readBack becomes what r8FromString makes of the text, if that is easily told, and else stays.
char* WriteR4(char* buffer, float value, double& readBack);
char* WriteR8(char* buffer, double value, double& readBack);
// What WriteR8 writes; null where it is not easily told that r8FromString makes the value of it.
QZXML_API char* WriteExactR8(char* buffer, double value);

// Append what r4ToString and r8ToString return for the format.
void AppendR4(float value, std::string_view format, std::string& out);
void AppendR8(double value, std::string_view format, std::string& out);

// Raise the two failures of a number, with the text and the kind.
[[noreturn]] void ThrowNotConvertible(std::string_view text, const char* kind);
[[noreturn]] void ThrowTooLarge(std::string_view text, const char* kind);

// Whether ApplyRule takes the rule.
inline bool IsKnownRule(CWhitespaceUtils::WhitespaceRule rule) {
  return rule >= CWhitespaceUtils::WhitespaceRule_None &&
         rule <= CWhitespaceUtils::WhitespaceRule_Collapse;
}

// What the rule makes of value, zero-terminated: value itself where there is nothing to change.
const char* RuledText(const std::string& value, CWhitespaceUtils::WhitespaceRule rule,
                      std::string& scratch);

// Behind the white space that strtol and strtod skip in the "C" locale.
inline const char* SkipLeadingSpace(const char* at, const char* end) {
  while (at != end && (*at == ' ' || (*at >= '\t' && *at <= '\r'))) ++at;
  return at;
}

}  // namespace detail
}  // namespace QzXmlLib16
