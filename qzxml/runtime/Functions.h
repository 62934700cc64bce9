#pragma once

#include <string>

#include "qzxml/platform/Export.h"
#include "qzxml/runtime/XmlTypes.h"

// Checks the arguments of printf-like functions against the format, which is argument n.
#if defined(__GNUC__)
#define QZXML_PRINTF(n) __attribute__((format(printf, n, (n) + 1)))
#else
#define QZXML_PRINTF(n)
#endif

namespace QzXmlLib16 {

// printf into a string of any length, the same in every process locale. The result ends at its
// first zero byte; a null text shows as "(null)". Asserts "nWidth >= 0" and "nPrecision >= 0" for a
// width or precision out of the arguments, and "0" for conversions that messages have no use for:
// 'E', 'a', 'A' and the prefix "I64".
QZXML_API std::string FormatString(const char* format, ...) QZXML_PRINTF(1);

// Replaces `what` by `with`, leftmost first, starting anew from the beginning after each
// replacement. When `with` holds `what`, what was put in is not searched; an empty `what` changes
// nothing. A `with` longer than `what` that keeps bringing about new places is put in at most
// 1024 + 64 * text.size() times.
QZXML_API void ReplaceAll(std::string& text, const std::string& what, const std::string& with);
QZXML_API void ReplaceAll(std::wstring& text, const std::wstring& what, const std::wstring& with);
QZXML_API void ReplaceAll(std::u16string& text, const std::u16string& what,
                          const std::u16string& with);

// The value in decimal, padded with zeros to the width, as by "%0<width>d". Widths above 255 count
// as 255.
QZXML_API std::string FormatPaddedInt(int value, int width);

// The text without zeros at its end; the first character always stays.
QZXML_API std::string TrimTrailingZeros(const std::string& text);

// Sends a text to the debug channel, in pieces of 128 bytes; does nothing while nobody listens.
// Asserts "nBuf < 1024*32" on the length; longer text is cut there.
QZXML_API void DebugTrace(const char* format, ...) QZXML_PRINTF(1);

}  // namespace QzXmlLib16
