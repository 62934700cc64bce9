#pragma once

#include "qzxml/platform/File.h"
#include "qzxml/runtime/XmlTypes.h"

namespace QzXmlLib16::detail {

// What a file begins with: FF FE for UTF-16, nothing for UTF-8. Answers 0, or the error number of
// the system.
inline int WriteByteOrderMark(IOutputFile& file, XmlEncoding encoding) {
  if (encoding != XmlEncoding_UTF16 && encoding != XmlEncoding_UTF16NoDecl) return 0;
  constexpr unsigned char mark[] = {0xFF, 0xFE};
  return file.Write(mark, sizeof(mark));
}

}  // namespace QzXmlLib16::detail
