#pragma once

#include <cstddef>
#include <cstdint>

// Text in a code page of the platform, by its number, to and from UTF-16. UTF-8 is not among them:
// the library converts it itself.
//
// Both functions answer how many units the whole result has and write as many of them as fit; with
// `out` null they only measure. The answer is 0 when the platform does not know the code page.

namespace QzXmlLib16::detail {

// What the code page has no character for becomes U+FFFD.
std::size_t CodePageToUtf16(std::uint32_t codePage, const char* bytes, std::size_t length,
                            char16_t* out, std::size_t capacity);

// What the code page can not express, and broken surrogates, become '?'.
std::size_t Utf16ToCodePage(std::uint32_t codePage, const char16_t* units, std::size_t length,
                            char* out, std::size_t capacity);

}  // namespace QzXmlLib16::detail
