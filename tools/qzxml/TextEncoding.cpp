#include "tools/qzxml/TextEncoding.h"

#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <string_view>

#include "tools/qzxml/Failure.h"

namespace qztool {
namespace {

constexpr std::size_t kDeclarationRoom = 1024;  // where a declaration is looked for

struct Mark {
  std::string_view octets;
  const char* encoding;
  std::size_t drop;  // octets of a byte-order mark
};

using namespace std::string_view_literals;

// By their first octets; longer ones stand in front of those that begin like them.
constexpr Mark kMarks[] = {
    {"\x00\x00\xFE\xFF"sv, "UTF-32BE", 4}, {"\xFF\xFE\x00\x00"sv, "UTF-32LE", 4},
    {"\xFE\xFF"sv, "UTF-16BE", 2},         {"\xFF\xFE"sv, "UTF-16LE", 2},
    {"\xEF\xBB\xBF"sv, "UTF-8", 3},        {"\x00\x00\x00\x3C"sv, "UTF-32BE", 0},
    {"\x3C\x00\x00\x00"sv, "UTF-32LE", 0}, {"\x00\x3C"sv, "UTF-16BE", 0},
    {"\x3C\x00"sv, "UTF-16LE", 0},         {"\x00\x7B"sv, "UTF-16BE", 0},
    {"\x7B\x00"sv, "UTF-16LE", 0},         {"\x00\x5B"sv, "UTF-16BE", 0},
    {"\x5B\x00"sv, "UTF-16LE", 0},         {"\x4C\x6F\xA7\x94"sv, "IBM037", 0},
};

class CConverter {
 public:
  explicit CConverter(const std::string& encoding)
      : m_handle(iconv_open("UTF-8", encoding.c_str())) {}
  CConverter(const CConverter&) = delete;
  CConverter& operator=(const CConverter&) = delete;
  ~CConverter() {
    if (IsOpen()) iconv_close(m_handle);
  }
  bool IsOpen() const { return m_handle != reinterpret_cast<iconv_t>(-1); }

  // False at octets that are no text, or that end in the middle of a character; text has what came
  // before, and at is where they stand.
  bool Convert(const std::string& octets, std::string& text, std::size_t& at) {
    std::string input(octets);
    char* in = input.data();
    std::size_t inLeft = input.size();
    char buffer[4096];
    while (inLeft > 0) {
      char* out = buffer;
      std::size_t outLeft = sizeof(buffer);
      const std::size_t result = iconv(m_handle, &in, &inLeft, &out, &outLeft);
      const int error = errno;
      text.append(buffer, sizeof(buffer) - outLeft);
      if (result == static_cast<std::size_t>(-1) && error != E2BIG) {
        at = input.size() - inLeft;
        return false;
      }
    }
    char* out = buffer;
    std::size_t outLeft = sizeof(buffer);
    iconv(m_handle, nullptr, nullptr, &out, &outLeft);
    text.append(buffer, sizeof(buffer) - outLeft);
    return true;
  }

 private:
  iconv_t m_handle;
};

bool IsPlainName(const std::string& name) {
  const auto isPlain = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' ||
           c == '_' || c == '-';
  };
  return !name.empty() && std::all_of(name.begin(), name.end(), isPlain);
}

std::string ToUpper(std::string text) {
  for (char& c : text) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return text;
}

// The encoding that a declaration of XML names, in capitals; "" where there is none.
std::string GetDeclared(const std::string& text) {
  if (text.compare(0, 5, "<?xml") != 0) return "";
  const std::size_t end = text.substr(0, kDeclarationRoom).find("?>");
  if (end == std::string::npos) return "";
  const std::string declaration = text.substr(0, end);
  const std::size_t word = declaration.find("encoding");
  if (word == std::string::npos) return "";
  const std::size_t open = declaration.find_first_of("\"'", word);
  if (open == std::string::npos) return "";
  const std::size_t close = declaration.find(declaration[open], open + 1);
  if (close == std::string::npos) return "";
  return ToUpper(declaration.substr(open + 1, close - open - 1));
}

std::string ConvertAll(const std::string& octets, const std::string& encoding) {
  CConverter converter(encoding);
  if (!IsPlainName(encoding) || !converter.IsOpen()) {
    throw CDocumentFailure("", "the encoding \"" + encoding + "\" is not known");
  }
  std::string text;
  std::size_t at = 0;
  if (!converter.Convert(octets, text, at)) {
    throw CDocumentFailure(
        "", "the octets at offset " + std::to_string(at) + " are no text in " + encoding);
  }
  return text;
}

// Whether a declaration may name an encoding that the octets themselves show.
bool Agrees(const std::string& declared, const std::string& encoding) {
  if (declared.empty() || declared == encoding) return true;
  if (encoding.compare(0, 6, "UTF-16") == 0) {
    return declared == "UTF-16" || declared == "ISO-10646-UCS-2";
  }
  if (encoding.compare(0, 6, "UTF-32") == 0) {
    return declared == "UTF-32" || declared == "ISO-10646-UCS-4";
  }
  return false;
}

CTextEncoding ConvertShown(std::string& octets, const Mark& mark) {
  CTextEncoding encoding;
  encoding.name = mark.encoding;
  encoding.hasByteOrderMark = mark.drop > 0;
  octets.erase(0, mark.drop);
  if (encoding.name == "IBM037") {
    // All of that family have the letters of a declaration where this one has them.
    std::string head;
    std::size_t at = 0;
    CConverter(encoding.name).Convert(octets.substr(0, kDeclarationRoom), head, at);
    encoding.declared = GetDeclared(head);
    if (!encoding.declared.empty()) encoding.name = encoding.declared;
    octets = ConvertAll(octets, encoding.name);
    return encoding;
  }
  if (encoding.name != "UTF-8") octets = ConvertAll(octets, encoding.name);
  encoding.declared = GetDeclared(octets);
  if (!Agrees(encoding.declared, encoding.name)) {
    throw CDocumentFailure(
        "", "the document is in " + encoding.name + ", but declares \"" + encoding.declared + "\"");
  }
  return encoding;
}

}  // namespace

CTextEncoding TurnIntoUtf8(std::string& octets) {
  for (const Mark& mark : kMarks) {
    if (octets.compare(0, mark.octets.size(), mark.octets) == 0) return ConvertShown(octets, mark);
  }
  CTextEncoding encoding;
  encoding.declared = GetDeclared(octets);
  encoding.name = encoding.declared.empty() ? "UTF-8" : encoding.declared;
  if (encoding.name == "UTF-8") return encoding;
  if (Agrees(encoding.name, "UTF-16") || Agrees(encoding.name, "UTF-32") ||
      encoding.name.compare(0, 4, "UTF-") == 0) {
    throw CDocumentFailure("", "the document is in UTF-8, but declares \"" + encoding.name + "\"");
  }
  octets = ConvertAll(octets, encoding.name);
  return encoding;
}

}  // namespace qztool
