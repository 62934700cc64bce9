#include "tools/qzxml/Gzip.h"

#include <zlib.h>

#include <algorithm>
#include <new>
#include <string_view>

#include "tools/qzxml/Failure.h"

namespace qztool {
namespace {

constexpr int kZlibWindow = 15;
constexpr int kGzipWindow = kZlibWindow + 16;  // with the frame of gzip
constexpr std::size_t kChunk = std::size_t{1} << 16;

bool IsGzip(std::string_view octets) { return octets.substr(0, 2) == "\x1F\x8B"; }

// RFC 1950, 2.2: method 8, a window of 32 KiB at most, and a good check.
bool CanBeZlib(std::string_view octets) {
  if (octets.size() < 2) return false;
  const auto first = static_cast<unsigned char>(octets[0]);
  const auto second = static_cast<unsigned char>(octets[1]);
  return (first & 0x0F) == Z_DEFLATED && first >> 4 <= 7 && (first * 256 + second) % 31 == 0;
}

// A window of 32 KiB and no dictionary, of any of the four levels: with "x\x01" and its like, but
// for "x^", no text begins.
bool IsSurelyZlib(std::string_view octets) {
  const std::string_view begin = octets.substr(0, 2);
  return begin == "x\x01" || begin == "x\x9C" || begin == "x\xDA";
}

class CInflation {
 public:
  explicit CInflation(bool isGzip) : m_isGzip(isGzip) {
    if (inflateInit2(&m_stream, isGzip ? kGzipWindow : kZlibWindow) != Z_OK) throw std::bad_alloc();
  }
  CInflation(const CInflation&) = delete;
  CInflation& operator=(const CInflation&) = delete;
  ~CInflation() { inflateEnd(&m_stream); }

  // Hands all over that the octets hold, in pieces; false when they are damaged or cut off. What
  // stands behind the last member is no part of it.
  template <typename Take>
  bool Run(std::string& octets, CProgress& progress, Take take) {
    std::string chunk(kChunk, '\0');
    m_stream.next_in = reinterpret_cast<Bytef*>(octets.data());
    m_stream.avail_in = static_cast<uInt>(octets.size());
    for (;;) {
      m_stream.next_out = reinterpret_cast<Bytef*>(chunk.data());
      m_stream.avail_out = kChunk;
      const int status = inflate(&m_stream, Z_NO_FLUSH);
      if (status != Z_OK && status != Z_STREAM_END) return false;
      take(std::string_view(chunk).substr(0, kChunk - m_stream.avail_out));
      progress.Tell(octets.size() - m_stream.avail_in, octets.size());
      if (status == Z_STREAM_END && !BeginMember(octets)) return true;
    }
  }

 private:
  bool BeginMember(const std::string& octets) {
    const std::string_view rest =
        std::string_view(octets).substr(octets.size() - m_stream.avail_in);
    return m_isGzip && IsGzip(rest) && inflateReset(&m_stream) == Z_OK;
  }

  z_stream m_stream = {};
  bool m_isGzip;
};

}  // namespace

std::string Gzip(const std::string& octets, CProgress& progress) {
  constexpr int kMemoryLevel = 8;
  z_stream stream = {};
  if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, kGzipWindow, kMemoryLevel,
                   Z_DEFAULT_STRATEGY) != Z_OK) {
    throw std::bad_alloc();
  }
  // The input is below 4 GiB, and the bound of the output is taken in 64 bits.
  std::string result(deflateBound(&stream, static_cast<uLong>(octets.size())), '\0');
  std::size_t in = 0;
  std::size_t out = 0;
  int status = Z_OK;
  while (status == Z_OK) {
    constexpr std::size_t kInStep = std::size_t{1} << 20;
    constexpr std::size_t kOutStep = std::size_t{1} << 30;
    const std::size_t inStep = std::min(kInStep, octets.size() - in);
    const std::size_t outStep = std::min(kOutStep, result.size() - out);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(octets.data())) + in;
    stream.avail_in = static_cast<uInt>(inStep);
    stream.next_out = reinterpret_cast<Bytef*>(result.data()) + out;
    stream.avail_out = static_cast<uInt>(outStep);
    status = deflate(&stream, in + inStep == octets.size() ? Z_FINISH : Z_NO_FLUSH);
    in += inStep - stream.avail_in;
    out += outStep - stream.avail_out;
    progress.Tell(in, octets.size());
  }
  deflateEnd(&stream);
  result.resize(out);
  return result;
}

std::string Expand(std::string& octets, std::uint64_t limit, CProgress& progress) {
  const bool isGzip = IsGzip(octets);
  if (!isGzip && !CanBeZlib(octets)) return "";
  const std::string name = isGzip ? "gzip" : "zlib";
  std::uint64_t size = 0;
  const bool isWhole = CInflation(isGzip).Run(octets, progress, [&](std::string_view piece) {
    size += piece.size();
    if (size <= limit) return;
    throw CDocumentFailure(
        "", "The decompressed data exceeds the limit of " + std::to_string(limit) + " bytes");
  });
  if (!isWhole) {
    if (!isGzip && !IsSurelyZlib(octets)) return "";
    throw CDocumentFailure("", "the " + name + " stream is damaged or cut off");
  }
  std::string expanded;
  expanded.reserve(size);
  CInflation(isGzip).Run(octets, progress, [&](std::string_view piece) { expanded += piece; });
  octets = std::move(expanded);
  return name;
}

}  // namespace qztool
