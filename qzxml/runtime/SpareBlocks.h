#pragma once

#include <cstddef>

namespace QzXmlLib16::detail {

// Blocks of one size for what comes in great numbers and goes again at once: the trees of documents
// and the objects that are read from them. Memory that comes new from the system costs a good part
// of what parsing costs, and the heap gives the system back what a document frees; so some blocks
// wait for the next document. All else is the heap's. Any thread may take and give.
class CSpareBlocks {
 public:
  // With the heap's own header a block is just within 64 KiB.
  static constexpr std::size_t kSize = 64 * 1024 - 32;

  // Aligned for every type that does not ask for more. Throws std::bad_alloc.
  static void* Take();
  static void Give(void* block) noexcept;
};

}  // namespace QzXmlLib16::detail
