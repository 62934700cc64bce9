#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>

#include "qzxml/platform/Export.h"

// Text inside the library is a byte string in one process-wide local encoding; it is converted only
// where bytes come in or go out. With UTF-8 as the local encoding, the default, every conversion
// between local text and UTF-8 is a copy.
//
// The conversions have no error path: what the platform can not convert shows as U+FFFD or '?', and
// an encoding that the platform does not know gives empty results.
//
// The two settings are to be made before work starts.

namespace QzXmlLib16 {

class CBinaryData;

// ---- Settings ----

// True promises that all text is plain ASCII: Utf8ToLocal and LocalToUtf8 become plain copies.
// Default: false.
QZXML_API void ASCIIOnly(bool asciiOnly);

// The local encoding, as the number of a code page: 0 and 3 are the system's own, which is UTF-8;
// 65001 is UTF-8. Default: 3. Throws CQzInvalidParamException "The code page %u can not be the
// local encoding" for UTF-16 and UTF-32 (1200, 1201, 12000, 12001), whose text holds zero bytes.
QZXML_API void SetLocalCharEncoding(std::uint32_t codePage);

// ---- Conversions ----

// UTF-16 up to its terminator. Stops at the first broken surrogate with what it has, and asserts
// "dwActualLen != 0" when that is nothing.
QZXML_API CBinaryData Utf16ToUtf8(const char16_t* text);

// Ends at the first zero byte, unless ASCIIOnly(true) was called. The scratch areas are used when
// they hold length + 1 units; they spare allocations where the local encoding is not UTF-8.
QZXML_API std::string Utf8ToLocal(const char* bytes, std::uint32_t length,
                                  char16_t* wideScratch = nullptr, std::uint32_t wideCapacity = 0,
                                  char* byteScratch = nullptr, std::uint32_t byteCapacity = 0);

// Local text up to its terminator.
QZXML_API CBinaryData LocalToUtf8(const char* text);

// UTF-16, little endian, without byte-order mark and terminator.
// Meant: ASCIIOnly changes nothing here, for streams of UTF-16 that hold more after all.
QZXML_API CBinaryData LocalToUtf16(const char* text);

QZXML_API std::string Utf16ToLocal(const char16_t* text, std::uint32_t length);

// The platform's wide text as UTF-16; what is above U+10FFFF becomes U+FFFD.
QZXML_API std::u16string WideToUtf16(const wchar_t* text);

namespace detail {

extern QZXML_API std::atomic<bool> g_localIsUtf8;

// True when UTF-8 and local text are the same bytes (the local encoding is UTF-8, or all text is
// promised to be ASCII), so that a caller can spare the conversion. One relaxed load.
inline bool IsLocalUtf8() { return g_localIsUtf8.load(std::memory_order_relaxed); }

// True when no byte is above 127. Reads eight at a time.
QZXML_API bool IsAscii(const char* bytes, std::size_t length);

}  // namespace detail

}  // namespace QzXmlLib16
