#include "qzxml/runtime/FileTextStream.h"

#include <cerrno>

#include "qzxml/platform/File.h"
#include "qzxml/runtime/ByteOrderMark.h"
#include "qzxml/runtime/FileMessages.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/values/BinaryData.h"

namespace QzXmlLib16 {

// Meant: counted among the plain streams, as its users find it in the dumps.
CFileTextStream::CFileTextStream(const char* fileName, XmlEncoding encoding)
    : CTextStream(encoding), m_strFileName(fileName != nullptr ? fileName : "") {}

CFileTextStream::~CFileTextStream() = default;

void CFileTextStream::Start() {
  CTextStream::Start();
  int error = 0;
  m_file = detail::CreateOutputFile(m_strFileName.c_str(), error);
  if (m_file != nullptr) error = detail::WriteByteOrderMark(*m_file, GetEncoding());
  if (error == 0) return;
  m_file.reset();
  throw CQzException(FormatString(Messages::kFileNotWritten, m_strFileName.c_str(),
                                  static_cast<unsigned int>(error)));
}

void CFileTextStream::Flush() {
  if (GetLength() == 0) return;
  if (m_file == nullptr) Fail(EBADF);
  CBinaryData bytes;
  GetEncodedData(bytes);
  const int error = m_file->Write(bytes.GetData(), bytes.GetLength());
  if (error != 0) Fail(error);
  m_buffer.Reset();
}

void CFileTextStream::End() {
  Flush();
  if (m_file != nullptr) {
    const int error = m_file->Close();
    if (error != 0) Fail(error);
    m_file.reset();
  }
  CTextStream::End();
}

void CFileTextStream::Fail(int error) {
  m_file.reset();
  throw CQzException(FormatString(Messages::kChunkNotWritten, static_cast<unsigned int>(error)));
}

}  // namespace QzXmlLib16
