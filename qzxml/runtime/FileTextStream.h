#pragma once

#include <memory>
#include <string>

#include "qzxml/platform/Export.h"
#include "qzxml/runtime/TextStream.h"
#include "qzxml/runtime/XmlTypes.h"

namespace QzXmlLib16 {

namespace detail {
class IOutputFile;
}  // namespace detail

// Writes text into a file while the document grows: each flush converts what is pending and hands
// it to the system, which writes it out behind the caller's back. Memory holds one chunk, however
// large the document gets.
//
//   CFileTextStream stream("orders.xml", XmlEncoding_UTF8);
//   CXmlTextWriter writer(&stream);      // StartDocument opens the file, EndDocument closes it
//
// Every failure closes the file and leaves it on disk as far as it got. So does the destructor of a
// stream that was not ended.
class QZXML_API CFileTextStream : public CTextStream {
 public:
  // The file is opened by Start. Null is taken as the empty name.
  CFileTextStream(const char* fileName, XmlEncoding encoding);
  ~CFileTextStream() override;

  // Makes the file, or empties the one that is there; UTF-16 begins with the byte-order mark FF FE.
  // Throws CQzException "Failed to write data to the file [%s] error [0x%08X]" with the name and
  // the error number of the system.
  void Start() override;

  // Writes what is pending. Throws CQzException "Failed to write data to the file. Error [0x%08X]",
  // with EBADF for a stream that was not started; and what GetEncodedData throws.
  void Flush() override;

  // Calls Flush, the one of a derived class too, and closes the file. Throws as Flush.
  void End() override;

 private:
  void Fail(int error);

  std::string m_strFileName;
  std::unique_ptr<detail::IOutputFile> m_file;  // null when closed
};

}  // namespace QzXmlLib16
