#pragma once

#include <cstdarg>

namespace QzXmlLib16::detail {

// Walks a format with its arguments and asserts what messages may not hold: "nWidth >= 0",
// "nPrecision >= 0" for widths and precisions that are arguments, "0" for a conversion that is not
// one of d i o u x X p c C s S e f g G n. Does nothing in a build without assertions.
void CheckFormat(const char* format, std::va_list arguments);

}  // namespace QzXmlLib16::detail
