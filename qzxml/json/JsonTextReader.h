#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "qzxml/json/JsonReaderHandler.h"
#include "qzxml/platform/Export.h"
#include "qzxml/runtime/MemoryLeakHelp.h"

namespace QzXmlLib16 {

class CJsonReaderDefaultHandler;

// Reads a JSON text in one pass and calls a handler for each name, value and container.
//
//   CJsonTextReader reader(text);
//   reader.SetHandler(new CPrices);     // an IJsonReaderHandler
//   reader.Parse();
//
// The grammar is that of RFC 8259, but for these, which callers know:
// - nothing behind the end of the first value is looked at, and a text without a value is none too
//   few: it gives no event;
// - a line feed is dropped wherever it stands, in texts and between the digits of a number as well;
//   all other control characters may stand in texts as they are;
// - \u and four bytes of any kind give one byte, the high hexadecimal digit, in upper case, of the
//   first of the four: \u0041 is "3";
// - values nest 100 deep at most, the outermost counting 1.
// Bytes are taken as they are: the reader has no notion of encoding, nor of the range of a number.
//
// A failure is a CQzValidationException with the line, from 1, and the position in the line, also
// from 1, of the byte taken last, and with the path of IErrorPathProvider; docs/errors.md has the
// texts. Nothing is read on behind it. A reader serves one Parse and belongs to one thread.
class QZXML_API CJsonTextReader : public CInstanceMonitor {
 public:
  // The text is not copied and must outlive the reader.
  explicit CJsonTextReader(const std::string& text);
  explicit CJsonTextReader(const std::string&& text) = delete;
  CJsonTextReader(const CJsonTextReader&) = delete;
  CJsonTextReader& operator=(const CJsonTextReader&) = delete;
  ~CJsonTextReader() override;

  // Where the events go. Takes ownership; one that was set before is deleted. While none is set, or
  // null, the text is checked alone.
  void SetHandler(IJsonReaderHandler* handler);

  // The place in the text, for a handler that fails. Belongs to the reader.
  IErrorPathProvider* GetErrorPathProvider();

  // Whether "//" to the end of the line and "/*" to "*/" are skipped where white space may stand
  // (but not straight behind a number). False. The last comment of a text need not end.
  void SetAllowComments(bool allow) { m_bAllowComments = allow; }

  // When not empty, the whole text is read as the value of one member of this name, of an object
  // around it. "". Null is taken as the empty text.
  void SetRootElementName(const char* name);

  // Throws CQzException "A JSON text of 4 GiB or more is not supported.", and as told above.
  void Parse();

 private:
  bool ReadNext(bool skipWhitespace);
  bool SkipComment();
  bool SkipLineComment();
  bool SkipBlockComment();
  bool ReadBlock(char* buffer, std::uint32_t count);
  void ReadValue(std::uint32_t depth);
  void ReadObject(std::uint32_t depth);
  void ReadMembers(std::uint32_t depth);
  void ReadArray(std::uint32_t depth);
  void ReadItems(std::uint32_t depth);
  void ReadMember(std::uint32_t depth);
  void ReadNull();
  void ReadTrue();
  void ReadFalse();
  void ReadString();
  void AppendPlain();
  void AppendEscape();
  void AppendCode();
  void ReadNumber();
  void AppendDigits();
  void AppendFraction();
  void AppendExponent();
  bool IsDigit() const { return m_current >= '0' && m_current <= '9'; }
  int Line() const { return static_cast<int>(m_dwLine); }
  int Column() const { return static_cast<int>(m_dwColumn); }
  [[noreturn]] void Throw(std::string message);

  const std::unique_ptr<CJsonReaderDefaultHandler> m_pHandler;
  bool m_bAllowComments = false;
  bool m_bEndOfFile = false;  // a read ran out of text
  char m_current = 0;         // the byte taken last
  std::string m_strRootElementName;
  const std::string& m_text;       // not owned
  std::uint32_t m_dwPosition = 0;  // of the next byte
  std::uint32_t m_dwLine = 1;
  std::uint32_t m_dwColumn = 0;
  std::string m_token;  // the name, text or number that is being read
};

}  // namespace QzXmlLib16
