#pragma once

#include <cctype>
#include <functional>
#include <string>

#include "qzxml/fastinfoset/FastInfosetContext.h"
#include "qzxml/fastinfoset/FastInfosetWriter.h"
#include "qzxml/runtime/BinaryStream.h"

namespace qztest {

// Hexadecimal digits without the blanks that part them.
inline std::string Digits(const std::string& hex) {
  std::string text;
  for (const char c : hex) {
    if (c != ' ') text += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  }
  return text;
}

// A text as hexadecimal digits.
inline std::string HexOf(const std::string& text) {
  return QzXmlLib16::CBinaryData::GetAsHexString(
      reinterpret_cast<const unsigned char*>(text.data()), static_cast<std::uint32_t>(text.size()));
}

using Calls = std::function<void(QzXmlLib16::CFastInfosetWriter&)>;

// The octets of a document, in hexadecimal digits.
inline std::string Written(QzXmlLib16::CFastInfosetContext& context, const Calls& calls,
                           QzXmlLib16::FInfoDecl declaration = QzXmlLib16::FInfoDecl_None) {
  QzXmlLib16::CBinaryStream stream;
  QzXmlLib16::CFastInfosetWriter writer(&context, &stream);
  writer.StartDocument();
  writer.WriteHeader(declaration);
  calls(writer);
  writer.WriteDocumentEnd();
  writer.EndDocument();
  return stream.GetData().GetAsHexString();
}

inline std::string Written(const Calls& calls) {
  QzXmlLib16::CFastInfosetContext context;
  return Written(context, calls);
}

}  // namespace qztest
