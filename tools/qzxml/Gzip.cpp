#include <zlib.h>

#include <algorithm>
#include <new>

#include "tools/qzxml/Output.h"

namespace qztool {

std::string Gzip(const std::string& octets) {
  constexpr int kGzipWindow = 15 + 16;
  constexpr int kMemoryLevel = 8;
  z_stream stream = {};
  if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, kGzipWindow, kMemoryLevel,
                   Z_DEFAULT_STRATEGY) != Z_OK) {
    throw std::bad_alloc();
  }
  // The input is below 4 GiB, and the bound of the output is taken in 64 bits.
  std::string result(deflateBound(&stream, static_cast<uLong>(octets.size())), '\0');
  std::string input(octets);
  std::size_t in = 0;
  std::size_t out = 0;
  int status = Z_OK;
  while (status == Z_OK) {
    constexpr std::size_t kStep = std::size_t{1} << 30;
    const std::size_t inStep = std::min(kStep, input.size() - in);
    const std::size_t outStep = std::min(kStep, result.size() - out);
    stream.next_in = reinterpret_cast<Bytef*>(input.data() + in);
    stream.avail_in = static_cast<uInt>(inStep);
    stream.next_out = reinterpret_cast<Bytef*>(result.data() + out);
    stream.avail_out = static_cast<uInt>(outStep);
    status = deflate(&stream, in + inStep == input.size() ? Z_FINISH : Z_NO_FLUSH);
    in += inStep - stream.avail_in;
    out += outStep - stream.avail_out;
  }
  deflateEnd(&stream);
  result.resize(out);
  return result;
}

}  // namespace qztool
