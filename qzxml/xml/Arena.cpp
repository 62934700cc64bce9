#include "qzxml/xml/Arena.h"

#include <algorithm>

#include "qzxml/runtime/SpareBlocks.h"

namespace QzXmlLib16::detail {
namespace {

constexpr std::size_t kSmallestBlock = 2 * 1024 - 32;
constexpr std::size_t kLargestBlock = CSpareBlocks::kSize;

}  // namespace

void CBlocks::AddBlock(std::size_t atLeast) {
  const std::size_t grown = std::clamp(m_total, kSmallestBlock, kLargestBlock);
  const std::size_t size = std::max(grown, atLeast + sizeof(Block));
  void* const memory = size == kLargestBlock ? CSpareBlocks::Take() : ::operator new(size);
  m_last = new (memory) Block{m_last, size};
  m_next = reinterpret_cast<char*>(m_last + 1);
  m_left = size - sizeof(Block);
  m_total += size;
}

void CBlocks::Clear() {
  while (m_last != nullptr) {
    Block* const block = std::exchange(m_last, m_last->before);
    if (block->size == kLargestBlock) {
      CSpareBlocks::Give(block);
    } else {
      ::operator delete(block);
    }
  }
  m_left = m_total = 0;
}

}  // namespace QzXmlLib16::detail
