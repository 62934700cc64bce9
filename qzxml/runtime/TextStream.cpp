#include "qzxml/runtime/TextStream.h"

#include <cstring>
#include <memory>

#include "qzxml/platform/Memory.h"
#include "qzxml/runtime/Encoder.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/values/BinaryData.h"

namespace QzXmlLib16 {

namespace {

CInstanceClass s_class("CTextStream");

// The text up to its first zero byte, each byte copied once.
CBinaryData CopyBytes(const CStringBuffer& text) {
  const std::uint32_t length = text.GetLength();
  std::unique_ptr<unsigned char[]> bytes(new unsigned char[length]);
  detail::ExpectToFill(bytes.get(), length);
  text.CopyTo(reinterpret_cast<char*>(bytes.get()));
  const void* const end = length != 0 ? std::memchr(bytes.get(), '\0', length) : nullptr;
  const std::uint32_t size =
      end != nullptr
          ? static_cast<std::uint32_t>(static_cast<const unsigned char*>(end) - bytes.get())
          : length;
  if (size == 0) return CBinaryData();
  return CBinaryData(bytes.release(), size, true);
}

}  // namespace

CTextStream::CTextStream(XmlEncoding encoding) : CTextStream(s_class, encoding) {}

CTextStream::CTextStream(XmlEncoding encoding, std::uint32_t blockSize)
    : CInstanceMonitor(s_class), m_buffer(blockSize), m_encoding(encoding) {}

CTextStream::CTextStream(const char* className, XmlEncoding encoding)
    : CInstanceMonitor(className), m_encoding(encoding) {}

CTextStream::CTextStream(::CInstanceClass& instanceClass, XmlEncoding encoding)
    : CInstanceMonitor(instanceClass), m_encoding(encoding) {}

CTextStream::~CTextStream() = default;

void CTextStream::Start() { m_buffer.Reset(); }

void CTextStream::End() {}

void CTextStream::Flush() {}

std::string CTextStream::TakeText() {
  std::string text;
  m_buffer.AppendTo(text);
  m_buffer.Clear();
  return text;
}

void CTextStream::GetEncodedData(CBinaryData& out) {
  switch (m_encoding) {
    case XmlEncoding_UTF8:
      if (detail::IsLocalUtf8()) {
        out = CopyBytes(m_buffer);
      } else {
        out = LocalToUtf8(m_buffer.GetBuffer());
      }
      break;
    case XmlEncoding_UTF16:
    case XmlEncoding_UTF16NoDecl:
      out = LocalToUtf16(m_buffer.GetBuffer());
      break;
    default:
      throw CQzException("Unknown Encoding, select UTF-8 (contact our support team)");
  }
}

}  // namespace QzXmlLib16
