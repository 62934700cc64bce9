#include "qzxml/runtime/Encoder.h"

#include <cstring>
#include <limits>
#include <memory>

#include "qzxml/platform/Assert.h"
#include "qzxml/platform/CodePage.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/runtime/Utf.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/values/Messages.h"

namespace QzXmlLib16 {

namespace {

constexpr std::uint32_t kSystemCodePage = 0;
constexpr std::uint32_t kThreadCodePage = 3;
constexpr std::uint32_t kUtf8CodePage = 65001;

std::atomic<std::uint32_t> g_codePage{kThreadCodePage};
std::atomic<bool> g_asciiOnly{false};

std::uint32_t CodePage() { return g_codePage.load(std::memory_order_relaxed); }

bool IsUtf8(std::uint32_t codePage) {
  return codePage == kSystemCodePage || codePage == kThreadCodePage || codePage == kUtf8CodePage;
}

// UTF-16 and UTF-32 in both byte orders.
bool HoldsZeroBytes(std::uint32_t codePage) {
  return codePage == 1200 || codePage == 1201 || codePage == 12000 || codePage == 12001;
}

void UpdateLocalIsUtf8() {
  detail::g_localIsUtf8.store(g_asciiOnly.load() || IsUtf8(g_codePage.load()));
}

void CheckLength(std::size_t length) {
  if (length > std::numeric_limits<std::uint32_t>::max()) {
    throw CQzException(Messages::kBinaryDataTooLong);
  }
}

// Binary data of `length` bytes that `fill` writes, without a copy.
template <typename Fill>
CBinaryData MakeBinary(std::size_t length, Fill fill) {
  if (length == 0) return CBinaryData();
  CheckLength(length);
  std::unique_ptr<unsigned char[]> bytes(new unsigned char[length]);
  fill(bytes.get());
  return CBinaryData(bytes.release(), static_cast<std::uint32_t>(length), true);
}

CBinaryData Utf16RangeToUtf8(const char16_t* text, std::size_t length) {
  if (length == 0) return CBinaryData();
  const std::size_t dwUtf8Len = detail::Utf16ToUtf8Units(text, length, nullptr);
  std::size_t dwActualLen = 0;
  CBinaryData result = MakeBinary(dwUtf8Len, [&](unsigned char* out) {
    dwActualLen = detail::Utf16ToUtf8Units(text, length, reinterpret_cast<char*>(out));
  });
  QZ_ASSERT(dwActualLen != 0);
  QZ_ASSERT(dwActualLen == dwUtf8Len);
  return result;
}

std::u16string CodePageText(const char* text, std::size_t length) {
  std::u16string wide(detail::CodePageToUtf16(CodePage(), text, length, nullptr, 0), u'\0');
  detail::CodePageToUtf16(CodePage(), text, length, wide.data(), wide.size());
  return wide;
}

// Puts the units in little-endian order, whatever the machine's is.
CBinaryData LittleEndianBytes(const std::u16string& wide) {
  return MakeBinary(wide.size() * 2, [&](unsigned char* out) {
    for (const char16_t unit : wide) {
      *out++ = static_cast<unsigned char>(unit & 0xFF);
      *out++ = static_cast<unsigned char>(unit >> 8);
    }
  });
}

// The caller's area when it is large enough, else one of its own.
template <typename Unit>
class Scratch {
 public:
  Scratch(Unit* area, std::size_t capacity, std::size_t needed) : m_area(area) {
    if (area == nullptr || capacity < needed) {
      m_own.reset(new Unit[needed]);
      m_area = m_own.get();
    }
  }
  Unit* get() const { return m_area; }

 private:
  std::unique_ptr<Unit[]> m_own;
  Unit* m_area;
};

std::size_t WidenUtf8(const char* bytes, std::size_t length, char16_t* wide) {
  if (!detail::IsAscii(bytes, length)) return detail::Utf8ToUtf16Units(bytes, length, wide);
  for (std::size_t i = 0; i < length; ++i) wide[i] = static_cast<unsigned char>(bytes[i]);
  return length;
}

}  // namespace

namespace detail {

std::atomic<bool> g_localIsUtf8{true};

bool IsAscii(const char* bytes, std::size_t length) {
  constexpr std::uint64_t kTopBits = 0x8080808080808080U;
  std::size_t i = 0;
  for (; i + sizeof(std::uint64_t) <= length; i += sizeof(std::uint64_t)) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes + i, sizeof word);
    if ((word & kTopBits) != 0) return false;
  }
  for (; i < length; ++i) {
    if (static_cast<unsigned char>(bytes[i]) > 127) return false;
  }
  return true;
}

}  // namespace detail

void ASCIIOnly(bool asciiOnly) {
  g_asciiOnly.store(asciiOnly);
  UpdateLocalIsUtf8();
}

void SetLocalCharEncoding(std::uint32_t codePage) {
  if (HoldsZeroBytes(codePage)) {
    throw CQzInvalidParamException(
        FormatString("The code page %u can not be the local encoding", codePage));
  }
  g_codePage.store(codePage);
  UpdateLocalIsUtf8();
}

CBinaryData Utf16ToUtf8(const char16_t* text) {
  return Utf16RangeToUtf8(text, std::char_traits<char16_t>::length(text));
}

std::string Utf8ToLocal(const char* bytes, std::uint32_t length, char16_t* wideScratch,
                        std::uint32_t wideCapacity, char* byteScratch, std::uint32_t byteCapacity) {
  if (g_asciiOnly.load(std::memory_order_relaxed)) return std::string(bytes, length);
  if (length == 0) return std::string();
  if (detail::IsLocalUtf8()) {
    const auto* const zero = static_cast<const char*>(std::memchr(bytes, 0, length));
    return std::string(bytes, zero == nullptr ? bytes + length : zero);
  }

  const std::uint32_t codePage = CodePage();
  const Scratch<char16_t> wide(wideScratch, wideCapacity, std::size_t{length} + 1);
  const std::size_t wideLength = WidenUtf8(bytes, length, wide.get());
  const std::size_t size = detail::Utf16ToCodePage(codePage, wide.get(), wideLength, nullptr, 0);
  const Scratch<char> local(byteScratch, byteCapacity, size + 1);
  detail::Utf16ToCodePage(codePage, wide.get(), wideLength, local.get(), size);
  local.get()[size] = '\0';
  return std::string(local.get());
}

CBinaryData LocalToUtf8(const char* text) {
  const std::size_t length = std::strlen(text);
  if (detail::IsLocalUtf8()) {
    return MakeBinary(length, [&](unsigned char* out) { std::memcpy(out, text, length); });
  }
  const std::u16string wide = CodePageText(text, length);
  return Utf16RangeToUtf8(wide.data(), wide.size());
}

CBinaryData LocalToUtf16(const char* text) {
  const std::size_t length = std::strlen(text);
  if (!IsUtf8(CodePage())) return LittleEndianBytes(CodePageText(text, length));
  const std::size_t units = detail::Utf8ToUtf16Units(text, length, nullptr);
  CheckLength(units * 2);
  std::u16string wide(units, u'\0');
  detail::Utf8ToUtf16Units(text, length, wide.data());
  return LittleEndianBytes(wide);
}

std::string Utf16ToLocal(const char16_t* text, std::uint32_t length) {
  if (length == 0) return std::string();
  if (IsUtf8(CodePage())) {
    std::string local(detail::Utf16ToUtf8UnitsLenient(text, length, nullptr), '\0');
    detail::Utf16ToUtf8UnitsLenient(text, length, local.data());
    return local;
  }
  std::string local(detail::Utf16ToCodePage(CodePage(), text, length, nullptr, 0), '\0');
  detail::Utf16ToCodePage(CodePage(), text, length, local.data(), local.size());
  return local;
}

std::u16string WideToUtf16(const wchar_t* text) {
  std::u16string units;
  for (; *text != L'\0'; ++text) {
    const auto c = static_cast<std::uint32_t>(*text);
    if (c < 0x10000) {
      units += static_cast<char16_t>(c);
    } else if (c < 0x110000) {
      units += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
      units += static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
    } else {
      units += u'\uFFFD';
    }
  }
  return units;
}

}  // namespace QzXmlLib16
