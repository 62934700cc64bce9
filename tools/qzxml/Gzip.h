#pragma once

#include <cstdint>
#include <string>

#include "tools/qzxml/Progress.h"

namespace qztool {

// The octets as a gzip stream; unlike CQzZip also where that does not make them fewer.
std::string Gzip(const std::string& octets, CProgress& progress);

// Expands octets that are gzip, all members of it (RFC 1952, 2.2; CQzZip reads the first one, as
// its callers know it), or a zlib stream, and answers "gzip" or "zlib"; any others stay as they
// are, and the answer is "". The size is found out before any memory is taken for it. Throws
// CDocumentFailure "The decompressed data exceeds the limit of %llu bytes", and for damage "the
// gzip stream is damaged or cut off", which is told of zlib where the octets can be nothing else.
std::string Expand(std::string& octets, std::uint64_t limit, CProgress& progress);

}  // namespace qztool
