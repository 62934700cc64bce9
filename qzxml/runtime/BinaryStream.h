#pragma once

#include <cstdint>
#include <string>

#include "qzxml/platform/Export.h"
#include "qzxml/runtime/MemoryLeakHelp.h"
#include "qzxml/runtime/XmlTypes.h"
#include "qzxml/values/BinaryData.h"

namespace QzXmlLib16 {

// Bytes that grow in memory. Belongs to one thread. Lengths are those of CBinaryData, whose failure
// passes to the caller of Put.
class QZXML_API CBinaryStream : private ::CInstanceMonitor {
 public:
  CBinaryStream();
  explicit CBinaryStream(const CBinaryData& data);  // begins with a copy
  CBinaryStream(const CBinaryStream&) = delete;
  CBinaryStream& operator=(const CBinaryStream&) = delete;
  ~CBinaryStream() override;

  void Put(std::uint8_t byte) { m_bdData.Append(byte); }
  void Put(const CBinaryData& data);
  void Put(const void* data, std::uint32_t length);

  // A copy, which shares its store with the stream until the next Put.
  CBinaryData GetData() const { return m_bdData; }

 protected:
  // For derived classes, which count under their own name.
  explicit CBinaryStream(const char* className);
  CBinaryStream(const char* className, const CBinaryData& data);

  CBinaryData m_bdData;
};

// Bytes that go into a file in one go.
class QZXML_API CFileBinaryStream : public CBinaryStream {
 public:
  // Null is taken as the empty name. The encoding is that of the bytes.
  CFileBinaryStream(const char* fileName, XmlEncoding encoding);
  CFileBinaryStream(const char* fileName, XmlEncoding encoding, const CBinaryData& data);
  ~CFileBinaryStream() override;

  // Makes the file, or empties the one that is there, and writes the mark FF FE of UTF-16, then the
  // bytes. Meant: the mark stands in front of whatever the bytes are, compressed ones included, as
  // readers of these files expect. Throws CQzException "Failed to write data to the file [%s] error
  // [0x%08X]" with the name and the error number of the system; the file stays as far as it got.
  void Write();

 private:
  std::string m_strFileName;
  XmlEncoding m_encoding;
};

}  // namespace QzXmlLib16
