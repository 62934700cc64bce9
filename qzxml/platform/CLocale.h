#pragma once

#include <cstddef>

// The two C functions on reals whose standard twins are not enough, in the "C" locale whatever the
// process has set: a printf conversion that the caller chose, and strtod's answer out of range.
// Any thread may call them at any time; the locale of the process is not touched.
namespace QzXmlLib16 {
namespace detail {

// As snprintf(buffer, size, format, value). The format takes exactly one double; whoever passes a
// format that is not a literal has made sure of it.
int FormatReal(char* buffer, std::size_t size, const char* format, double value);

// As strtod(text, nullptr).
double ParseReal(const char* text);

}  // namespace detail
}  // namespace QzXmlLib16
