#include "qzxml/runtime/QzZip.h"

#include <zlib.h>

#include <atomic>
#include <limits>
#include <memory>
#include <utility>

#include "qzxml/platform/Assert.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/values/BinaryData.h"

namespace QzXmlLib16 {
namespace {

constexpr int kLevel = Z_BEST_SPEED;
constexpr int kMemoryLevel = 8;
constexpr int kGZipWindow = 15 + 16;       // the widest window, with the frame of gzip
constexpr int kDetectingWindow = 15 + 32;  // either frame, as the first bytes say
constexpr std::uint32_t kChunk = 0x10000;

std::atomic<std::uint32_t> g_maxDecompressedSize{std::uint32_t{1} << 30};

// A zlib stream that is ended on every way out. One that failed to begin has no state, with which
// every call answers Z_STREAM_ERROR.
class CStream {
 public:
  using End = int (*)(z_stream*);

  explicit CStream(End end) : m_end(end) {}
  CStream(const CStream&) = delete;
  CStream& operator=(const CStream&) = delete;
  ~CStream() { m_end(&m_stream); }

  z_stream* operator->() { return &m_stream; }
  z_stream* Get() { return &m_stream; }

 private:
  z_stream m_stream = {};
  End m_end;
};

// zlib reads through a pointer to what it does not change.
Bytef* InputOf(const unsigned char* data) { return const_cast<Bytef*>(data); }

bool BeginDeflate(z_stream* stream, CompressionType type) {
  switch (type) {
    case CompressionType_GZip:
      deflateInit2(stream, kLevel, Z_DEFLATED, kGZipWindow, kMemoryLevel, Z_DEFAULT_STRATEGY);
      return true;
    case CompressionType_ZLib:
      deflateInit(stream, kLevel);
      return true;
    default:
      return false;
  }
}

// The compressed bytes, never more than there were; null where nothing is to be compressed.
std::unique_ptr<unsigned char[]> Deflate(const unsigned char* data, std::uint32_t length,
                                         CompressionType type, std::uint32_t& compressedLength) {
  CStream c_stream(deflateEnd);
  if (!BeginDeflate(c_stream.Get(), type)) return nullptr;
  std::unique_ptr<unsigned char[]> compressed(new unsigned char[length]);
  c_stream->next_in = InputOf(data);
  c_stream->avail_in = length;
  c_stream->next_out = compressed.get();
  c_stream->avail_out = length;
  deflate(c_stream.Get(), Z_NO_FLUSH);
  const int status = deflate(c_stream.Get(), Z_FINISH);
  if (status != Z_STREAM_END) {
    throw CQzException(FormatString("Failed to compress data. [Error Code: %d]", status));
  }
  // Not before: what does not get smaller leaves input behind, and is no mistake of the caller's.
  QZ_ASSERT_TEXT(c_stream->avail_in == 0, "c_stream.avail_in == 0");
  compressedLength = static_cast<std::uint32_t>(c_stream->total_out);
  return compressed;
}

// Whether inflate would get past the first two bytes: those of gzip (RFC 1952, 2.3.1), or a zlib
// header (RFC 1950, 2.2) of method 8, a window of 32 KiB at most, and a good check. Plain data is
// told here without the cost of a stream.
bool CanBeCompressed(const unsigned char* data, std::uint32_t length) {
  if (length < 2) return false;
  const unsigned int first = data[0];
  const unsigned int second = data[1];
  if (first == 0x1F && second == 0x8B) return true;
  return (first & 0x0F) == Z_DEFLATED && (first >> 4) <= 7 && (first * 256 + second) % 31 == 0;
}

}  // namespace

CQzZip::CQzZip() : CInstanceMonitor("CQzZip") {}

void CQzZip::Compress(unsigned char*& data, std::uint32_t& length, CompressionType type) {
  std::uint32_t compressedLength = 0;
  auto compressed = Deflate(data, length, type, compressedLength);
  if (compressed == nullptr) return;
  delete[] data;
  data = compressed.release();
  length = compressedLength;
}

void CQzZip::Compress(CBinaryData& data, CompressionType type) {
  const std::uint32_t length = data.GetLength();
  if (length == 0) return;
  std::uint32_t compressedLength = 0;
  auto compressed = Deflate(data.GetData(), length, type, compressedLength);
  if (compressed == nullptr) return;
  data = CBinaryData(compressed.release(), compressedLength, true);
}

void CQzZip::Decompress(unsigned char*& data, std::uint32_t& length) {
  CBinaryData expanded;
  if (!Decompress(data, length, expanded)) return;
  const std::uint32_t expandedLength = expanded.GetLength();
  delete[] data;
  data = expanded.ReleaseData();
  length = expandedLength;
}

bool CQzZip::Decompress(const unsigned char* data, std::uint32_t length, CBinaryData& expanded) {
  if (!CanBeCompressed(data, length)) return false;
  const std::uint32_t limit = GetMaxDecompressedSize();
  const std::unique_ptr<unsigned char[]> chunk(new unsigned char[kChunk]);
  CBinaryData bdDecompressed;
  CStream d_stream(inflateEnd);
  d_stream->next_in = InputOf(data);
  d_stream->avail_in = length;
  int status = inflateInit2(d_stream.Get(), kDetectingWindow);
  while (status == Z_OK) {
    d_stream->next_out = chunk.get();
    d_stream->avail_out = kChunk;
    status = inflate(d_stream.Get(), Z_NO_FLUSH);
    if (status != Z_OK && status != Z_STREAM_END) break;
    if (d_stream->total_out > limit) {
      throw CQzException(
          FormatString("The decompressed data exceeds the limit of %u bytes", limit));
    }
    bdDecompressed.Append(chunk.get(), kChunk - d_stream->avail_out);
  }
  if (status != Z_STREAM_END) return false;
  QZ_ASSERT_TEXT(bdDecompressed.GetLength() == d_stream->total_out,
                 "bdDecompressed.GetLength() == d_stream.total_out");
  expanded = std::move(bdDecompressed);
  return true;
}

std::uint32_t CQzZip::GetMaxDecompressedSize() {
  return g_maxDecompressedSize.load(std::memory_order_relaxed);
}

void CQzZip::SetMaxDecompressedSize(std::uint32_t size) {
  g_maxDecompressedSize.store(size != 0 ? size : std::numeric_limits<std::uint32_t>::max(),
                              std::memory_order_relaxed);
}

}  // namespace QzXmlLib16
