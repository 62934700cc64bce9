#pragma once

#include "qzxml/runtime/XmlTypes.h"

namespace QzXmlLib16::detail {

// Throws CQzException "ZLIB Compression only available for To Stream methods.".
void RequireFileCompression(CompressionType compression);

// How the entries that write a text into a file go about it: true to write it while it grows, false
// to have the bytes in memory first. Throws as RequireFileCompression.
bool IsFileWrittenInPieces(CompressionType compression);

}  // namespace QzXmlLib16::detail
