#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "qzxml/platform/Export.h"
#include "qzxml/runtime/MemoryLeakHelp.h"
#include "qzxml/runtime/StringBuffer.h"
#include "qzxml/runtime/XmlTypes.h"

namespace QzXmlLib16 {

class CBinaryData;

// Where the text writers put a document: holds local text in memory. Derived streams pass it on in
// Flush. Belongs to one thread.
class QZXML_API CTextStream : private ::CInstanceMonitor {
 public:
  explicit CTextStream(XmlEncoding encoding = XmlEncoding_Default);
  // With blocks of that size, as CStringBuffer tells: for a caller who expects much text.
  CTextStream(XmlEncoding encoding, std::uint32_t blockSize);
  CTextStream(const CTextStream&) = delete;
  CTextStream& operator=(const CTextStream&) = delete;
  ~CTextStream() override;

  // Forgets the text; called by StartDocument of the writer.
  virtual void Start();
  // Called by EndDocument of the writer; nothing to do in memory.
  virtual void End();
  // Called by the writer when enough text is pending; nothing to do in memory.
  virtual void Flush();

  void Put(char c) { m_buffer.Append(c); }
  void Put(const char* text) { m_buffer.Append(text); }
  void Put(const std::string& text) { m_buffer.Append(text); }
  void Put(const char* text, std::size_t length) { m_buffer.Append(text, length); }

  // Writing in place, as CStringBuffer tells: null when `length` bytes have no room in one piece.
  char* Reserve(std::uint32_t length) { return m_buffer.Reserve(length); }
  std::uint32_t GetFree() const { return m_buffer.GetFree(); }
  void Commit(std::uint32_t length) { m_buffer.Commit(length); }

  // Bytes pending.
  std::uint32_t GetLength() const { return m_buffer.GetLength(); }
  XmlEncoding GetEncoding() const { return m_encoding; }

  // The pending text as one zero-terminated array, owned by the stream.
  const char* GetBuffer() { return m_buffer.GetBuffer(); }

  // The pending text as a string, each byte copied once. The stream is empty afterwards.
  std::string TakeText();
  void AppendTo(std::string& out) const { m_buffer.AppendTo(out); }

  // The pending text in the stream's encoding, without a byte-order mark; it stays pending. A text
  // ends at its first zero byte. Throws CQzException "Unknown Encoding, select UTF-8 (contact our
  // support team)" for XmlEncoding_Default and unknown values.
  void GetEncodedData(CBinaryData& out);

 protected:
  // For derived classes, which count under their own name.
  CTextStream(const char* className, XmlEncoding encoding);
  CTextStream(::CInstanceClass& instanceClass, XmlEncoding encoding);

  CStringBuffer m_buffer;

 private:
  XmlEncoding m_encoding;
};

}  // namespace QzXmlLib16
