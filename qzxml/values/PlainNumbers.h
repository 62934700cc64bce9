#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <type_traits>

// Numbers as most documents write them. Not for others than the library.
namespace QzXmlLib16::detail {

// As many digits as the numbers of 64 bits surely take.
inline constexpr std::ptrdiff_t kMostPlainDigits = 18;

// Reads a text that is nothing but a number in range, without zeros beyond what a number of 64 bits
// takes; false for any other.
template <typename Integer>
bool ParsePlainInteger(std::string_view text, Integer& value) {
  using Limits = std::numeric_limits<Integer>;
  const char* at = text.data();
  const char* const end = at + text.size();
  const bool negative = std::is_signed_v<Integer> && at != end && *at == '-';
  if (negative) ++at;
  if (at == end || end - at > kMostPlainDigits) return false;
  std::uint64_t magnitude = 0;
  for (; at != end; ++at) {
    const unsigned digit = static_cast<unsigned char>(*at) - unsigned{'0'};
    if (digit > 9) return false;
    magnitude = magnitude * 10 + digit;
  }
  if (magnitude > static_cast<std::uint64_t>(Limits::max()) + (negative ? 1 : 0)) return false;
  value = static_cast<Integer>(negative ? 0 - magnitude : magnitude);
  return true;
}

}  // namespace QzXmlLib16::detail
