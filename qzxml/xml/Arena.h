#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <vector>

namespace QzXmlLib16::detail {

// Memory for objects of one type, in blocks that grow to 64 KiB. A slot that is given back is the
// next one taken. Makes and destroys no objects: who takes a slot constructs in it, and destroys
// what is there before the slot goes back or the blocks are freed.
template <class T>
class CArena {
 public:
  CArena() = default;
  CArena(const CArena&) = delete;
  CArena& operator=(const CArena&) = delete;

  void* Take() {
    if (m_free != nullptr) {
      Slot* slot = m_free;
      m_free = slot->nextFree;
      return slot->memory;
    }
    if (m_next == m_end) AddBlock();
    return (m_next++)->memory;
  }

  void Give(void* memory) { m_free = new (memory) Slot{m_free}; }

  // Frees all blocks.
  void Clear() {
    m_blocks.clear();
    m_free = m_next = m_end = nullptr;
    m_blockSlots = kFirstBlockSlots;
  }

 private:
  union Slot {
    Slot* nextFree;
    alignas(T) unsigned char memory[sizeof(T)];
  };

  static constexpr std::size_t kFirstBlockSlots = 8;
  static constexpr std::size_t kMaxBlockSlots = (64 * 1024 - 64) / sizeof(Slot);

  void AddBlock() {
    m_blocks.emplace_back(new Slot[m_blockSlots]);
    m_next = m_blocks.back().get();
    m_end = m_next + m_blockSlots;
    m_blockSlots = std::min(m_blockSlots * 2, kMaxBlockSlots);
  }

  std::vector<std::unique_ptr<Slot[]>> m_blocks;
  Slot* m_free = nullptr;
  Slot* m_next = nullptr;  // the first slot that was never taken
  Slot* m_end = nullptr;   // of the last block
  std::size_t m_blockSlots = kFirstBlockSlots;
};

}  // namespace QzXmlLib16::detail
