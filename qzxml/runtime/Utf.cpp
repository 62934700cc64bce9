#include "qzxml/runtime/Utf.h"

#include <cstdint>

namespace QzXmlLib16::detail {

namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

bool IsHighSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xD800; }
bool IsLowSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }

// Counts units and writes them where there is a place for them.
template <typename Unit>
class Output {
 public:
  explicit Output(Unit* out) : m_out(out) {}
  void Put(std::uint32_t unit) {
    if (m_out != nullptr) m_out[m_size] = static_cast<Unit>(unit);
    ++m_size;
  }
  std::size_t size() const { return m_size; }

 private:
  Unit* m_out;
  std::size_t m_size = 0;
};

void PutUtf8(Output<char>& out, std::uint32_t c) {
  if (c < 0x80) {
    out.Put(c);
    return;
  }
  if (c < 0x800) {
    out.Put(0xC0 | c >> 6);
  } else {
    if (c < 0x10000) {
      out.Put(0xE0 | c >> 12);
    } else {
      out.Put(0xF0 | c >> 18);
      out.Put(0x80 | (c >> 12 & 0x3F));
    }
    out.Put(0x80 | (c >> 6 & 0x3F));
  }
  out.Put(0x80 | (c & 0x3F));
}

void PutUtf16(Output<char16_t>& out, std::uint32_t c) {
  if (c < 0x10000) {
    out.Put(c);
  } else {
    out.Put(0xD800 + ((c - 0x10000) >> 10));
    out.Put(0xDC00 + ((c - 0x10000) & 0x3FF));
  }
}

std::size_t FromUtf16(const char16_t* text, std::size_t length, char* bytes, bool lenient) {
  Output<char> out(bytes);
  for (std::size_t i = 0; i < length; ++i) {
    const char16_t unit = text[i];
    if (!IsHighSurrogate(unit) && !IsLowSurrogate(unit)) {
      PutUtf8(out, unit);
    } else if (IsHighSurrogate(unit) && i + 1 < length && IsLowSurrogate(text[i + 1])) {
      const auto high = static_cast<std::uint32_t>(unit - 0xD800);
      const auto low = static_cast<std::uint32_t>(text[++i] - 0xDC00);
      PutUtf8(out, 0x10000 + (high << 10) + low);
    } else if (lenient) {
      PutUtf8(out, kReplacement);
    } else {
      break;
    }
  }
  return out.size();
}

// Reads the character at `at` and moves behind it, or behind the part that is broken.
std::uint32_t ReadUtf8(const unsigned char*& at, const unsigned char* end) {
  const unsigned char lead = *at++;
  if (lead < 0x80) return lead;
  if (lead < 0xC2 || lead > 0xF4) return kReplacement;
  const int rest = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
  // The second byte has a narrower range behind these leads: no overlong forms, no surrogates and
  // nothing above U+10FFFF.
  unsigned char low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  unsigned char high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  std::uint32_t c = lead & (0x3FU >> rest);
  for (int i = 0; i < rest; ++i) {
    if (at == end || *at < low || *at > high) return kReplacement;
    c = c << 6 | (*at++ & 0x3FU);
    low = 0x80;
    high = 0xBF;
  }
  return c;
}

}  // namespace

std::size_t Utf16ToUtf8Units(const char16_t* text, std::size_t length, char* out) {
  return FromUtf16(text, length, out, false);
}

std::size_t Utf16ToUtf8UnitsLenient(const char16_t* text, std::size_t length, char* out) {
  return FromUtf16(text, length, out, true);
}

std::size_t Utf8ToUtf16Units(const char* bytes, std::size_t length, char16_t* units) {
  Output<char16_t> out(units);
  const auto* at = reinterpret_cast<const unsigned char*>(bytes);
  const unsigned char* const end = at + length;
  while (at != end) PutUtf16(out, ReadUtf8(at, end));
  return out.size();
}

}  // namespace QzXmlLib16::detail
