#include "tools/qzxml/JsonValue.h"

#include <cstdint>
#include <string_view>

#include "qzxml/runtime/Functions.h"
#include "tools/qzxml/Failure.h"
#include "tools/qzxml/XmlCharacters.h"

namespace qztool {
namespace {

constexpr std::size_t kMaxDepth = 1024;

class CJsonParser {
 public:
  CJsonParser(const std::string& text, CJsonCounts& counts, CProgress& progress)
      : m_text(text), m_counts(counts), m_progress(progress) {}

  CJsonValue Run() {
    SkipSpace();
    CJsonValue value = ReadValue(1);
    SkipSpace();
    if (m_at < m_text.size()) Fail("text stands behind the end of the document");
    return value;
  }

 private:
  [[noreturn]] void Fail(const std::string& message) const { Fail(message, m_at); }
  [[noreturn]] void Fail(const std::string& message, std::size_t at) const {
    const std::size_t lineEnd = at == 0 ? std::string::npos : m_text.rfind('\n', at - 1);
    const std::size_t column = lineEnd == std::string::npos ? at + 1 : at - lineEnd;
    throw CDocumentFailure(
        "", QzXmlLib16::FormatString("%s at line %d, column %d", message.c_str(),
                                     static_cast<int>(LineOf(at)), static_cast<int>(column)));
  }

  std::size_t LineOf(std::size_t at) const {
    std::size_t line = 1;
    for (std::size_t i = 0; i < at; ++i) line += m_text[i] == '\n' ? 1U : 0U;
    return line;
  }

  char Peek() const { return m_at < m_text.size() ? m_text[m_at] : '\0'; }
  bool IsEnd() const { return m_at >= m_text.size(); }
  bool IsAt(std::string_view word) const { return m_text.compare(m_at, word.size(), word) == 0; }
  bool IsDigit() const { return Peek() >= '0' && Peek() <= '9'; }

  void SkipSpace() {
    for (;;) {
      while (Peek() == ' ' || Peek() == '\t' || Peek() == '\n' || Peek() == '\r') ++m_at;
      if (IsAt("//")) {
        SkipComment("\n", false);
      } else if (IsAt("/*")) {
        SkipComment("*/", true);
      } else {
        return;
      }
    }
  }

  void SkipComment(std::string_view end, bool mustEnd) {
    for (; m_counted < m_at; ++m_counted) m_line += m_text[m_counted] == '\n' ? 1U : 0U;
    m_counts.comments.push_back(m_line);
    const std::size_t found = m_text.find(end, m_at + 2);
    if (found == std::string::npos && mustEnd) Fail("a comment does not end");
    m_at = found == std::string::npos ? m_text.size() : found + end.size();
  }

  CJsonValue ReadValue(std::size_t depth) {
    if (depth > kMaxDepth) {
      Fail(QzXmlLib16::FormatString("values stand more than %d deep inside each other,",
                                    static_cast<int>(kMaxDepth)));
    }
    if (depth > m_counts.depth) m_counts.depth = depth;
    m_progress.Tell(m_at, m_text.size());
    CJsonValue value;
    switch (Peek()) {
      case '{':
        value.kind = JsonKind::Object;
        ReadObject(value, depth);
        break;
      case '[':
        value.kind = JsonKind::Array;
        ReadArray(value, depth);
        break;
      case '"':
        value.kind = JsonKind::String;
        ++m_counts.strings;
        value.text = ReadString();
        break;
      default:
        ReadWord(value);
        break;
    }
    return value;
  }

  void ReadObject(CJsonValue& value, std::size_t depth) {
    ++m_counts.objects;
    ++m_at;
    SkipSpace();
    if (Peek() == '}') {
      ++m_at;
      return;
    }
    for (;;) {
      if (Peek() != '"') Fail("a name in quotes is missing");
      value.names.push_back(ReadString());
      ++m_counts.members;
      SkipSpace();
      if (Peek() != ':') Fail("\":\" is missing");
      ++m_at;
      SkipSpace();
      value.values.push_back(ReadValue(depth + 1));
      if (IsLast('}', "\",\" or \"}\" is missing")) return;
    }
  }

  void ReadArray(CJsonValue& value, std::size_t depth) {
    ++m_counts.arrays;
    ++m_at;
    SkipSpace();
    if (Peek() == ']') {
      ++m_at;
      return;
    }
    do {
      value.values.push_back(ReadValue(depth + 1));
    } while (!IsLast(']', "\",\" or \"]\" is missing"));
  }

  // Behind a value in a container: whether the container ends here.
  bool IsLast(char end, const char* missing) {
    SkipSpace();
    const char c = Peek();
    if (c != ',' && c != end) Fail(missing);
    ++m_at;
    SkipSpace();
    return c == end;
  }

  void ReadWord(CJsonValue& value) {
    if (IsAt("true") || IsAt("false")) {
      value.kind = JsonKind::Boolean;
      value.text = IsAt("true") ? "true" : "false";
      ++m_counts.booleans;
      m_at += value.text.size();
    } else if (IsAt("null")) {
      ++m_counts.nulls;
      m_at += 4;
    } else if (Peek() == '-' || IsDigit()) {
      value.kind = JsonKind::Number;
      ++m_counts.numbers;
      const std::size_t begin = m_at;
      SkipNumber();
      value.text = m_text.substr(begin, m_at - begin);
    } else {
      Fail(IsEnd() ? "the text ends where a value has to be" : "this is no value");
    }
  }

  void SkipDigits() {
    if (!IsDigit()) Fail("a digit is missing");
    while (IsDigit()) ++m_at;
  }

  void SkipNumber() {
    if (Peek() == '-') ++m_at;
    if (Peek() == '0') {
      ++m_at;
    } else {
      SkipDigits();
    }
    if (Peek() == '.') {
      ++m_at;
      SkipDigits();
    }
    if (Peek() == 'e' || Peek() == 'E') {
      ++m_at;
      if (Peek() == '+' || Peek() == '-') ++m_at;
      SkipDigits();
    }
  }

  std::string ReadString() {
    const std::size_t begin = m_at++;
    std::string result;
    for (;;) {
      const std::size_t end = m_text.find_first_of("\"\\", m_at);
      if (end == std::string::npos) Fail("a string does not end, which begins", begin);
      result.append(m_text, m_at, end - m_at);
      m_at = end + 1;
      if (m_text[end] == '"') return result;
      ReadEscape(result);
    }
  }

  void ReadEscape(std::string& result) {
    static constexpr std::string_view kLetters = "\"\\/bfnrt";
    static constexpr std::string_view kMeanings = "\"\\/\b\f\n\r\t";
    const char c = Peek();
    if (c == 'u') {
      --m_at;
      return AppendCharacter(result, ReadCode());
    }
    const std::size_t index = IsEnd() ? std::string_view::npos : kLetters.find(c);
    if (index == std::string_view::npos) Fail("there is no such escape", m_at - 1);
    result += kMeanings[index];
    ++m_at;
  }

  // Of one or, for a pair of surrogates, two escapes.
  std::uint32_t ReadCode() {
    const std::size_t begin = m_at;
    const std::uint32_t first = ReadUnit();
    if (first < 0xD800 || first > 0xDFFF) return first;
    if (first < 0xDC00 && IsAt("\\u")) {
      const std::uint32_t second = ReadUnit();
      if (second >= 0xDC00 && second <= 0xDFFF) {
        return 0x10000 + ((first - 0xD800) << 10 | (second - 0xDC00));
      }
    }
    Fail("an escape stands for half a character", begin);
  }

  std::uint32_t ReadUnit() {
    std::uint32_t unit = 0;
    for (std::size_t i = 2; i < 6; ++i) {
      const char c = m_at + i < m_text.size() ? m_text[m_at + i] : '\0';
      const std::uint32_t digit = c >= '0' && c <= '9'   ? static_cast<std::uint32_t>(c - '0')
                                  : c >= 'a' && c <= 'f' ? static_cast<std::uint32_t>(c - 'a' + 10)
                                  : c >= 'A' && c <= 'F' ? static_cast<std::uint32_t>(c - 'A' + 10)
                                                         : 16;
      if (digit == 16) Fail("there is no such escape");
      unit = unit << 4 | digit;
    }
    m_at += 6;
    return unit;
  }

  const std::string& m_text;
  CJsonCounts& m_counts;
  CProgress& m_progress;
  std::size_t m_at = 0;
  std::size_t m_counted = 0;  // up to where line ends are counted
  std::size_t m_line = 1;     // there
};

}  // namespace

CJsonValue ParseJson(const std::string& text, CJsonCounts& counts, CProgress& progress) {
  return CJsonParser(text, counts, progress).Run();
}

}  // namespace qztool
