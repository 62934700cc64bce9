#pragma once

#include <cstddef>

namespace QzXmlLib16::detail {

// Memory for what comes in great numbers and goes again at once: the trees of documents and the
// objects that are read from them. Memory that comes new from the system costs a good part of what
// parsing costs, and a heap keeps lists of what is free all over it. So blocks of one size are cut
// from pieces of 2 MiB. From the third piece on, with 4 MiB in use, each is a large page, which the
// system gives in one step. Pieces that nobody uses stay for the next document: as many as are in
// use, and 256 MiB in any case, of which the system may have all but 4 MiB back when it wants them.
// Any thread may take and give.
class CBlockPool {
 public:
  static constexpr std::size_t kBlockSize = 64 * 1024 - 16;

  // Aligned for every type. Throws std::bad_alloc.
  static void* Take();
  static void Give(void* block) noexcept;

  // Memory of any size, of which the pool makes pieces when it comes back. Throws std::bad_alloc.
  static void* TakeRun(std::size_t size);
  static void GiveRun(void* run, std::size_t size) noexcept;
};

}  // namespace QzXmlLib16::detail
