#include "qzxml/runtime/TextStream.h"

namespace QzXmlLib16 {

namespace {

CInstanceClass s_class("CTextStream");

}  // namespace

CTextStream::CTextStream(XmlEncoding encoding) : CTextStream(s_class, encoding) {}

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

}  // namespace QzXmlLib16
