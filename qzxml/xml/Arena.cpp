#include "qzxml/xml/Arena.h"

#include <algorithm>

#include "qzxml/runtime/CriticalSection.h"

namespace QzXmlLib16::detail {
namespace {

// With the heap's own header a block of the largest size is just within 64 KiB.
constexpr std::size_t kSmallestBlock = 2 * 1024 - 32;
constexpr std::size_t kLargestBlock = 64 * 1024 - 32;

// A few blocks of the largest size that wait for the next document. Memory that comes new from the
// system costs a good part of what parsing costs, and the heap gives the system back what a
// document frees.
class CSpareBlocks {
 public:
  void* Take() {
    const CriticalSectionGuard guard(m_lock);
    return m_count != 0 ? m_blocks[--m_count] : nullptr;
  }

  bool Give(void* block) {
    const CriticalSectionGuard guard(m_lock);
    if (m_count == kMost) return false;
    m_blocks[m_count++] = block;
    return true;
  }

  // Outlives every static document.
  static CSpareBlocks& Get() {
    static auto* const blocks = new CSpareBlocks();
    return *blocks;
  }

 private:
  static constexpr std::size_t kMost = 64;  // 4 MiB

  CQZCriticalSection m_lock;
  void* m_blocks[kMost] = {};
  std::size_t m_count = 0;
};

// An AddressSanitizer sees the use of memory behind its end only where it goes back to the heap.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kKeepsSpareBlocks = false;
#else
constexpr bool kKeepsSpareBlocks = true;
#endif

}  // namespace

void CBlocks::AddBlock(std::size_t atLeast) {
  const std::size_t grown = std::clamp(m_total, kSmallestBlock, kLargestBlock);
  const std::size_t size = std::max(grown, atLeast + sizeof(Block));
  void* memory = nullptr;
  if (kKeepsSpareBlocks && size == kLargestBlock) memory = CSpareBlocks::Get().Take();
  if (memory == nullptr) memory = ::operator new(size);
  m_last = new (memory) Block{m_last, size};
  m_next = reinterpret_cast<char*>(m_last + 1);
  m_left = size - sizeof(Block);
  m_total += size;
}

void CBlocks::Clear() {
  while (m_last != nullptr) {
    Block* const block = std::exchange(m_last, m_last->before);
    const bool isLarge = block->size == kLargestBlock;
    if (kKeepsSpareBlocks && isLarge && CSpareBlocks::Get().Give(block)) continue;
    ::operator delete(block);
  }
  m_left = m_total = 0;
}

}  // namespace QzXmlLib16::detail
