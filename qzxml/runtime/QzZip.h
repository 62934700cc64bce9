#pragma once

#include <cstdint>

#include "qzxml/platform/Export.h"
#include "qzxml/runtime/MemoryLeakHelp.h"
#include "qzxml/runtime/XmlTypes.h"

namespace QzXmlLib16 {

class CBinaryData;

// Whole documents into gzip (RFC 1952) or zlib (RFC 1950) streams, and back. Nothing is added to
// such a stream: what was compressed here any other program expands, and the other way round.
//
// All of it is static; any number of threads may use it.
class QZXML_API CQzZip : private CInstanceMonitor {
 public:
  CQzZip();

  // Replaces an array made by array new, and its length, by the compressed one; zlib's fastest
  // level. CompressionType_None and unknown values leave both alone. Meant: what would not get
  // smaller is not stored as it is; it throws CQzException "Failed to compress data. [Error Code:
  // %d]" with zlib's number, and the array stays.
  static void Compress(unsigned char*& data, std::uint32_t& length, CompressionType type);
  // The same; empty data stays empty.
  static void Compress(CBinaryData& data, CompressionType type);

  // Replaces an array made by array new, and its length, by what it was before a gzip or zlib
  // compression; what stands behind the end of the stream is dropped. Anything that is not one
  // complete stream is taken for plain data and stays as it is. Throws CQzException "The
  // decompressed data exceeds the limit of %u bytes", and the array stays.
  static void Decompress(unsigned char*& data, std::uint32_t& length);
  // The same for bytes that stay where they are: true when they were compressed, with the result in
  // expanded; else false, and expanded is as it was.
  static bool Decompress(const unsigned char* data, std::uint32_t length, CBinaryData& expanded);

  // The most bytes that Decompress makes of its input, 1 GiB unless it is set; 0 is no limit but
  // that of lengths, 4294967295. For the whole process.
  static std::uint32_t GetMaxDecompressedSize();
  static void SetMaxDecompressedSize(std::uint32_t size);
};

}  // namespace QzXmlLib16
