#include "qzxml/runtime/BinaryStream.h"

#include "qzxml/platform/File.h"
#include "qzxml/runtime/ByteOrderMark.h"
#include "qzxml/runtime/FileMessages.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"

namespace QzXmlLib16 {
namespace {

constexpr char kClassName[] = "CBinaryStream";

}  // namespace

CBinaryStream::CBinaryStream() : CBinaryStream(kClassName) {}

CBinaryStream::CBinaryStream(const CBinaryData& data) : CBinaryStream(kClassName, data) {}

CBinaryStream::CBinaryStream(const char* className) : CInstanceMonitor(className) {}

CBinaryStream::CBinaryStream(const char* className, const CBinaryData& data)
    : CInstanceMonitor(className), m_bdData(data) {}

CBinaryStream::~CBinaryStream() = default;

// What comes first is shared until more comes.
void CBinaryStream::Put(const CBinaryData& data) {
  if (m_bdData.GetLength() == 0) {
    m_bdData = data;
  } else {
    m_bdData.Append(data);
  }
}

void CBinaryStream::Put(const void* data, std::uint32_t length) {
  m_bdData.Append(static_cast<const unsigned char*>(data), length);
}

// Meant: counted among the plain streams, as its users find it in the dumps.
CFileBinaryStream::CFileBinaryStream(const char* fileName, XmlEncoding encoding)
    : CFileBinaryStream(fileName, encoding, CBinaryData()) {}

CFileBinaryStream::CFileBinaryStream(const char* fileName, XmlEncoding encoding,
                                     const CBinaryData& data)
    : CBinaryStream(data),
      m_strFileName(fileName != nullptr ? fileName : ""),
      m_encoding(encoding) {}

CFileBinaryStream::~CFileBinaryStream() = default;

void CFileBinaryStream::Write() {
  int error = 0;
  const auto file = detail::CreateOutputFile(m_strFileName.c_str(), error);
  if (file != nullptr) {
    error = detail::WriteByteOrderMark(*file, m_encoding);
    if (error == 0) error = file->Write(m_bdData.GetData(), m_bdData.GetLength());
    if (error == 0) error = file->Close();
  }
  if (error != 0) {
    throw CQzException(FormatString(Messages::kFileNotWritten, m_strFileName.c_str(),
                                    static_cast<unsigned int>(error)));
  }
}

}  // namespace QzXmlLib16
