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
  std::size_t size = std::max(grown, atLeast + sizeof(Block));
  void* memory = nullptr;
  if (m_spare != nullptr && m_spare->size >= size) {
    size = m_spare->size;
    memory = std::exchange(m_spare, nullptr);
  } else {
    memory = size == kLargestBlock ? CSpareBlocks::Take() : ::operator new(size);
  }
  m_last = new (memory) Block{m_last, size};
  m_next = reinterpret_cast<char*>(m_last + 1);
  m_left = size - sizeof(Block);
  m_total += size;
}

void CBlocks::Free(Block* block) {
  if (block->size == kLargestBlock) {
    CSpareBlocks::Give(block);
  } else {
    ::operator delete(block);
  }
}

// What is taken next will mostly need one of them again.
void CBlocks::GiveBlocksBack(const Block* last) {
  while (m_last != last) {
    Block* block = std::exchange(m_last, m_last->before);
    if (m_spare == nullptr || m_spare->size < block->size) std::swap(m_spare, block);
    if (block != nullptr) Free(block);
  }
}

void CBlocks::Clear() {
  while (m_last != nullptr) Free(std::exchange(m_last, m_last->before));
  if (m_spare != nullptr) Free(std::exchange(m_spare, nullptr));
  m_left = m_total = 0;
}

}  // namespace QzXmlLib16::detail
