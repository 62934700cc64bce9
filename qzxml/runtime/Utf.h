#pragma once

#include <cstddef>

// The library's own conversions between UTF-8 and UTF-16, each into an area that the caller has
// measured: with `out` null they only measure. The result is the number of units.

namespace QzXmlLib16::detail {

// Stops at the first broken surrogate.
std::size_t Utf16ToUtf8Units(const char16_t* text, std::size_t length, char* out);

// Puts U+FFFD for a broken surrogate and goes on.
std::size_t Utf16ToUtf8UnitsLenient(const char16_t* text, std::size_t length, char* out);

// Puts U+FFFD for each part that is not UTF-8, which is a maximal subpart as the Unicode standard
// recommends (version 15, section 3.9, table 3-8).
std::size_t Utf8ToUtf16Units(const char* bytes, std::size_t length, char16_t* out);

}  // namespace QzXmlLib16::detail
