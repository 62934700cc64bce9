#include "qzxml/platform/CodePage.h"

#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

namespace QzXmlLib16::detail {

namespace {

const iconv_t kNoConverter = reinterpret_cast<iconv_t>(-1);
constexpr std::size_t kFailed = static_cast<std::size_t>(-1);

const char* Utf16Name() {
  const std::uint16_t probe = 1;
  unsigned char first = 0;
  std::memcpy(&first, &probe, 1);
  return first == 1 ? "UTF-16LE" : "UTF-16BE";
}

// Code pages whose name is not "CP" and the number.
std::string CodePageName(std::uint32_t codePage) {
  static const struct {
    std::uint32_t number;
    const char* name;
  } kNames[] = {
      {950, "BIG5"},          {1361, "JOHAB"},        {10000, "MACINTOSH"}, {20127, "US-ASCII"},
      {20866, "KOI8-R"},      {20932, "EUC-JP"},      {20936, "GB2312"},    {21866, "KOI8-U"},
      {50220, "ISO-2022-JP"}, {50225, "ISO-2022-KR"}, {51932, "EUC-JP"},    {51936, "GB2312"},
      {51949, "EUC-KR"},      {54936, "GB18030"},     {65000, "UTF-7"},
  };
  for (const auto& entry : kNames) {
    if (entry.number == codePage) return entry.name;
  }
  const bool isIso8859 = codePage > 28590 && codePage < 28606;
  return isIso8859 ? "ISO-8859-" + std::to_string(codePage - 28590)
                   : "CP" + std::to_string(codePage);
}

// One converter of the calling thread, opened anew when another code page is asked for.
class Converter {
 public:
  Converter() = default;
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  ~Converter() { Close(); }

  // The converter in its initial state, or kNoConverter.
  iconv_t Open(std::uint32_t codePage, bool toUtf16) {
    if (m_handle != kNoConverter && m_codePage == codePage) {
      iconv(m_handle, nullptr, nullptr, nullptr, nullptr);
      return m_handle;
    }
    Close();
    const std::string name = CodePageName(codePage);
    m_handle =
        toUtf16 ? iconv_open(Utf16Name(), name.c_str()) : iconv_open(name.c_str(), Utf16Name());
    m_codePage = codePage;
    return m_handle;
  }

 private:
  void Close() {
    if (m_handle != kNoConverter) iconv_close(m_handle);
    m_handle = kNoConverter;
  }

  iconv_t m_handle = kNoConverter;
  std::uint32_t m_codePage = 0;
};

// Where results go: the caller's area as far as it reaches, and a count of all of them.
class Output {
 public:
  Output(char* out, std::size_t capacity) : m_out(out), m_free(out == nullptr ? 0 : capacity) {}

  // Runs one step of a converter; without input it writes what ends a text.
  std::size_t Convert(iconv_t handle, char** in, std::size_t* inLeft) {
    char piece[1024];
    std::size_t result = 0;
    int error = 0;
    do {
      char* end = piece;
      std::size_t left = sizeof piece;
      result = iconv(handle, in, inLeft, &end, &left);
      error = result == kFailed ? errno : 0;
      Add(piece, sizeof piece - left);
    } while (error == E2BIG);
    errno = error;
    return result;
  }

  void Add(const char* bytes, std::size_t size) {
    const std::size_t fits = std::min(size, m_free);
    if (fits > 0) std::memcpy(m_out, bytes, fits);
    if (fits > 0) m_out += fits;
    m_free -= fits;
    m_size += size;
  }

  std::size_t size() const { return m_size; }

 private:
  char* m_out;
  std::size_t m_free;
  std::size_t m_size = 0;
};

// Converts all the input and puts `substitute` for each unit of `unitSize` bytes that can not be.
void ConvertAll(iconv_t handle, char* in, std::size_t inLeft, const char* substitute,
                std::size_t substituteSize, std::size_t (*unitSize)(const char*, std::size_t),
                Output& output) {
  while (inLeft > 0) {
    if (output.Convert(handle, &in, &inLeft) != kFailed) break;
    if (inLeft == 0) break;
    output.Add(substitute, substituteSize);
    const std::size_t skipped = std::min(unitSize(in, inLeft), inLeft);
    in += skipped;
    inLeft -= skipped;
  }
  output.Convert(handle, nullptr, nullptr);
}

std::size_t OneByte(const char*, std::size_t) { return 1; }

// A surrogate pair is one character; anything else one unit.
std::size_t OneUtf16Character(const char* in, std::size_t left) {
  char16_t units[2] = {0, 0};
  std::memcpy(units, in, std::min(left, sizeof units));
  const bool isPair =
      (units[0] & 0xFC00) == 0xD800 && (units[1] & 0xFC00) == 0xDC00 && left >= sizeof units;
  return isPair ? sizeof units : sizeof(char16_t);
}

// iconv takes its input by a pointer to char that it does not write through.
char* InputOf(const void* data) { return static_cast<char*>(const_cast<void*>(data)); }

}  // namespace

std::size_t CodePageToUtf16(std::uint32_t codePage, const char* bytes, std::size_t length,
                            char16_t* out, std::size_t capacity) {
  thread_local Converter converter;
  const iconv_t handle = converter.Open(codePage, true);
  if (handle == kNoConverter) return 0;
  static const char16_t kReplacement = 0xFFFD;
  Output output(reinterpret_cast<char*>(out), capacity * sizeof(char16_t));
  ConvertAll(handle, InputOf(bytes), length, reinterpret_cast<const char*>(&kReplacement),
             sizeof kReplacement, &OneByte, output);
  return output.size() / sizeof(char16_t);
}

std::size_t Utf16ToCodePage(std::uint32_t codePage, const char16_t* units, std::size_t length,
                            char* out, std::size_t capacity) {
  thread_local Converter converter;
  const iconv_t handle = converter.Open(codePage, false);
  if (handle == kNoConverter) return 0;
  Output output(out, capacity);
  ConvertAll(handle, InputOf(units), length * sizeof(char16_t), "?", 1, &OneUtf16Character, output);
  return output.size();
}

}  // namespace QzXmlLib16::detail
