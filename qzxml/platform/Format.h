#pragma once

#include <cstdarg>
#include <cstddef>

namespace QzXmlLib16::detail {

// vsnprintf with the decimal point of the C locale, whatever the process has set.
#if defined(__GNUC__)
__attribute__((format(printf, 3, 0)))
#endif
int FormatNeutral(char* text, std::size_t size, const char* format, std::va_list arguments);

// snprintf of one double in the C locale. The format is no literal, so whoever passes it has made
// sure that it takes exactly that.
int FormatReal(char* text, std::size_t size, const char* format, double value);

}  // namespace QzXmlLib16::detail
