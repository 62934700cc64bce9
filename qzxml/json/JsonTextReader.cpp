#include "qzxml/json/JsonTextReader.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <utility>

#include "qzxml/json/JsonReaderDefaultHandler.h"
#include "qzxml/json/Messages.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/TextOrEmpty.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/values/WhitespaceUtils.h"

// A recursive descent with one byte of lookahead: m_current is the byte taken last, and each of the
// operations below begins with the first byte of what it reads in m_current and ends with the byte
// behind it there, or with m_bEndOfFile. At the end of the text m_current keeps its last byte, so
// m_bEndOfFile is asked first.
//
// Bytes are taken by ReadNext, which drops line feeds and counts lines and columns, and by
// ReadBlock, which does neither. White space and comments are skipped behind a token, not in front
// of one.

namespace QzXmlLib16 {
namespace {

CInstanceClass g_readerClass("CJsonTextReader");

constexpr std::uint32_t kDepthLimit = 100;

// Whether a byte of a text ends there, begins an escape, or is dropped.
bool IsSpecialInString(char c) { return c == '"' || c == '\\' || c == '\n'; }

}  // namespace

CJsonTextReader::CJsonTextReader(const std::string& text)
    : CInstanceMonitor(g_readerClass),
      m_pHandler(std::make_unique<CJsonReaderDefaultHandler>()),
      m_text(text) {}

CJsonTextReader::~CJsonTextReader() = default;

void CJsonTextReader::SetHandler(IJsonReaderHandler* handler) { m_pHandler->SetHandler(handler); }

IErrorPathProvider* CJsonTextReader::GetErrorPathProvider() { return m_pHandler.get(); }

void CJsonTextReader::SetRootElementName(const char* name) {
  m_strRootElementName = detail::TextOrEmpty(name);
}

void CJsonTextReader::Parse() {
  if (m_text.size() > std::numeric_limits<std::uint32_t>::max()) {
    throw CQzException(Messages::kJsonTooLong);
  }
  m_dwPosition = 0;
  m_bEndOfFile = false;
  m_dwLine = 1;
  m_dwColumn = 0;
  m_pHandler->StartDocument();
  if (!m_strRootElementName.empty()) {
    m_pHandler->StartObject();
    m_pHandler->Name(m_strRootElementName);
  }
  if (ReadNext(true)) ReadValue(0);
  if (!m_strRootElementName.empty()) m_pHandler->EndObject();
  m_pHandler->EndDocument();
}

// ---- Failures

void CJsonTextReader::Throw(std::string message) {
  throw CQzValidationException(std::move(message), m_pHandler->GetErrorPath());
}

// ---- Bytes

// Takes the next byte that counts. False, and m_bEndOfFile, when there is none.
bool CJsonTextReader::ReadNext(bool skipWhitespace) {
  while (m_dwPosition < m_text.size()) {
    const char c = m_text[m_dwPosition];
    ++m_dwPosition;
    ++m_dwColumn;
    if (c == '\n') {
      ++m_dwLine;
      m_dwColumn = 0;
      continue;
    }
    if (skipWhitespace && CWhitespaceUtils::IsWhiteSpace(c)) continue;
    m_current = c;
    if (c != '/' || !skipWhitespace || !m_bAllowComments) return true;
    if (!SkipComment()) return !m_bEndOfFile;
  }
  m_bEndOfFile = true;
  return false;
}

// Behind a "/". True when a comment was skipped whole; false when none begins here, and when the
// text has ended in it.
bool CJsonTextReader::SkipComment() {
  if (m_dwPosition >= m_text.size()) return false;
  switch (m_text[m_dwPosition]) {
    case '/':
      return SkipLineComment();
    case '*':
      return SkipBlockComment();
    default:
      return false;
  }
}

bool CJsonTextReader::SkipLineComment() {
  const std::size_t end = m_text.find('\n', m_dwPosition);
  if (end == std::string::npos) {
    m_dwPosition = static_cast<std::uint32_t>(m_text.size());
    m_bEndOfFile = true;
    return false;
  }
  m_dwPosition = static_cast<std::uint32_t>(end) + 1;
  ++m_dwLine;
  m_dwColumn = 0;
  return true;
}

bool CJsonTextReader::SkipBlockComment() {
  ++m_dwPosition;  // the "*", which no column is counted for
  do {
    if (!ReadNext(false)) return false;
  } while (m_current != '*' || m_dwPosition >= m_text.size() || m_text[m_dwPosition] != '/');
  ++m_dwPosition;
  ++m_dwColumn;
  return true;
}

// Takes bytes as they are, line feeds too. False, and m_bEndOfFile, when there are fewer.
bool CJsonTextReader::ReadBlock(char* buffer, std::uint32_t count) {
  const std::size_t copied = m_text.copy(buffer, count, m_dwPosition);
  m_dwPosition += static_cast<std::uint32_t>(copied);
  m_dwColumn += static_cast<std::uint32_t>(copied);
  if (copied < count) {
    m_bEndOfFile = true;
    return false;
  }
  m_current = buffer[count - 1];
  return true;
}

// ---- Values

// Takes the depth of what is around the value.
void CJsonTextReader::ReadValue(std::uint32_t depth) {
  ++depth;
  if (depth > kDepthLimit) {
    Throw(FormatString("JSON exceeded depth limit at line %d, position %d.", Line(), Column()));
  }
  switch (m_current) {
    case '{':
      m_pHandler->StartObject();
      ReadObject(depth);
      return m_pHandler->EndObject();
    case '[':
      m_pHandler->StartArray();
      ReadArray(depth);
      return m_pHandler->EndArray();
    case '"':
      ReadString();
      return m_pHandler->String(m_token);
    case 'n':
      ReadNull();
      return m_pHandler->Null();
    case 't':
      ReadTrue();
      return m_pHandler->Bool(true);
    case 'f':
      ReadFalse();
      return m_pHandler->Bool(false);
    default:
      if (m_current != '-' && !IsDigit()) {
        Throw(FormatString(
            "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found '%c' at "
            "line %d, position %d.",
            m_current, Line(), Column()));
      }
      ReadNumber();
      return m_pHandler->Number(m_token);
  }
}

void CJsonTextReader::ReadArray(std::uint32_t depth) {
  if (!ReadNext(true)) Throw(FormatString(Messages::kJsonUnclosedArray, Line(), Column()));
  if (m_current != ']') ReadItems(depth);
  ReadNext(true);
}

// A comma behind the last value leads to ReadValue, which takes no "]".
void CJsonTextReader::ReadItems(std::uint32_t depth) {
  for (;;) {
    ReadValue(depth);
    if (m_bEndOfFile) Throw(FormatString(Messages::kJsonUnclosedArray, Line(), Column()));
    if (m_current == ']') return;
    if (m_current != ',') {
      Throw(FormatString(
          "Expected Array separator character ',', found '%c' at line %d, position %d.", m_current,
          Line(), Column()));
    }
    if (!ReadNext(true)) Throw(FormatString(Messages::kJsonUnclosedArray, Line(), Column()));
  }
}

void CJsonTextReader::ReadObject(std::uint32_t depth) {
  if (!ReadNext(true)) {
    // Meant: the brace is doubled; callers compare the text.
    Throw(FormatString(
        "Unexpected End of File. Expected Object terminator character '}}' at line %d, position "
        "%d.",
        Line(), Column()));
  }
  if (m_current != '}') ReadMembers(depth);
  ReadNext(true);
}

void CJsonTextReader::ReadMembers(std::uint32_t depth) {
  while (m_current == '"') {
    ReadMember(depth);
    if (m_bEndOfFile) Throw(FormatString(Messages::kJsonUnclosedObject, Line(), Column()));
    if (m_current == '}') return;
    if (m_current != ',') {
      Throw(FormatString(
          "Expected Object separator character ',', found '%c' at line %d, position %d.", m_current,
          Line(), Column()));
    }
    if (!ReadNext(true)) Throw(FormatString(Messages::kJsonUnclosedObject, Line(), Column()));
  }
  Throw(FormatString(
      "Expected quotation mark character '\"' before Name, found '%c' at line %d, position %d.",
      m_current, Line(), Column()));
}

void CJsonTextReader::ReadMember(std::uint32_t depth) {
  ReadString();
  m_pHandler->Name(m_token);
  if (m_bEndOfFile) {
    Throw(FormatString(
        "Unexpected End of File. Expected Object Name/Value separator character ':' at line %d, "
        "position %d.",
        Line(), Column()));
  }
  if (m_current != ':') {
    Throw(FormatString(
        "Expected Object Name/Value separator character ':', found '%c' at line %d, position %d.",
        m_current, Line(), Column()));
  }
  if (!ReadNext(true)) {
    Throw(FormatString("Unexpected End of File. Expected Object Value at line %d, position %d.",
                       Line(), Column()));
  }
  ReadValue(depth);
}

// The words, whose first letter was taken.

void CJsonTextReader::ReadNull() {
  char rest[3];
  if (!ReadBlock(rest, sizeof rest)) {
    Throw(FormatString("Unexpected End of File. Expected value 'NULL' at line %d, position %d.",
                       Line(), Column()));
  }
  if (std::string_view(rest, sizeof rest) != "ull") {
    Throw(FormatString("Expected 'NULL' at line %d, position %d.", Line(), Column()));
  }
  ReadNext(true);
}

void CJsonTextReader::ReadTrue() {
  char rest[3];
  if (!ReadBlock(rest, sizeof rest)) {
    Throw(FormatString("Unexpected End of File. Expected value 'true' at line %d, position %d.",
                       Line(), Column()));
  }
  if (std::string_view(rest, sizeof rest) != "rue") {
    Throw(FormatString("Expected 'true' at line %d, position %d.", Line(), Column()));
  }
  ReadNext(true);
}

void CJsonTextReader::ReadFalse() {
  char rest[4];
  if (!ReadBlock(rest, sizeof rest)) {
    Throw(FormatString("Unexpected End of File. Expected value 'false' at line %d, position %d.",
                       Line(), Column()));
  }
  if (std::string_view(rest, sizeof rest) != "alse") {
    Throw(FormatString("Expected 'false' at line %d, position %d.", Line(), Column()));
  }
  ReadNext(true);
}

// ---- Texts

void CJsonTextReader::ReadString() {
  m_token.clear();
  for (;;) {
    AppendPlain();
    if (!ReadNext(false)) Throw(FormatString(Messages::kJsonUnclosedString, Line(), Column()));
    if (m_current == '"') break;
    if (m_current == '\\') {
      if (!ReadNext(false)) Throw(FormatString(Messages::kJsonUnclosedString, Line(), Column()));
      AppendEscape();
    } else {
      m_token += m_current;
    }
  }
  ReadNext(true);
}

// Takes all bytes at once that stand for themselves.
void CJsonTextReader::AppendPlain() {
  const char* const begin = m_text.data() + m_dwPosition;
  const char* const end = std::find_if(begin, m_text.data() + m_text.size(), &IsSpecialInString);
  const auto count = static_cast<std::uint32_t>(end - begin);
  m_token.append(begin, count);
  m_dwPosition += count;
  m_dwColumn += count;
}

void CJsonTextReader::AppendEscape() {
  switch (m_current) {
    case '"':
    case '\\':
    case '/':
      m_token += m_current;
      break;
    case 'b':
      m_token += '\b';
      break;
    case 'f':
      m_token += '\f';
      break;
    case 'n':
      m_token += '\n';
      break;
    case 'r':
      m_token += '\r';
      break;
    case 't':
      m_token += '\t';
      break;
    case 'u':
      AppendCode();
      break;
    default:
      Throw(FormatString("Invalid Escape Character '%c' at line %d, position %d.", m_current,
                         Line(), Column()));
  }
}

// Meant: one byte comes of the four, the high digit of the code of the first; callers rely on it,
// and no code point is read here.
void CJsonTextReader::AppendCode() {
  unsigned char digits[4];
  if (!ReadBlock(reinterpret_cast<char*>(digits), sizeof digits)) {
    Throw(FormatString(
        "Unexpected End of File. Expected 4 hexadecimal digits'\\uxxxx' at line %d, position %d.",
        Line(), Column()));
  }
  m_token += CBinaryData::GetAsHexString(digits, 1)[0];
}

// ---- Numbers

// Behind the number a comment is taken for one only where white space stands in between.
void CJsonTextReader::ReadNumber() {
  m_token.clear();
  if (m_current == '-') {
    m_token += m_current;
    if (!ReadNext(false)) Throw(FormatString(Messages::kJsonUnendedNumber, Line(), Column()));
  }
  if (!IsDigit()) Throw(FormatString(Messages::kJsonNoDigit, m_current, Line(), Column()));
  if (m_current == '0') {
    m_token += m_current;
    ReadNext(false);
  } else {
    AppendDigits();
  }
  if (!m_bEndOfFile && m_current == '.') AppendFraction();
  if (!m_bEndOfFile && (m_current == 'e' || m_current == 'E')) AppendExponent();
  if (!m_bEndOfFile && CWhitespaceUtils::IsWhiteSpace(m_current)) ReadNext(true);
}

// One digit, which is there, and all that follow.
void CJsonTextReader::AppendDigits() {
  do {
    m_token += m_current;
  } while (ReadNext(false) && IsDigit());
}

void CJsonTextReader::AppendFraction() {
  m_token += m_current;
  if (!ReadNext(false)) Throw(FormatString(Messages::kJsonUnendedFraction, Line(), Column()));
  if (!IsDigit()) Throw(FormatString(Messages::kJsonNoDigit, m_current, Line(), Column()));
  AppendDigits();
}

void CJsonTextReader::AppendExponent() {
  m_token += m_current;
  if (!ReadNext(false)) {
    Throw(FormatString(
        "Unexpected End of File. Expected '+', '-' or a number at line %d, position %d.", Line(),
        Column()));
  }
  if (m_current == '+' || m_current == '-') {
    m_token += m_current;
    if (!ReadNext(false)) Throw(FormatString(Messages::kJsonUnendedNumber, Line(), Column()));
  }
  if (!IsDigit()) Throw(FormatString(Messages::kJsonUnendedFraction, Line(), Column()));
  AppendDigits();
}

}  // namespace QzXmlLib16
