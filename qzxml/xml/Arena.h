#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <string_view>
#include <utility>

#include "qzxml/xml/NodeText.h"
#include "qzxml/xml/ShortText.h"

namespace QzXmlLib16::detail {

// Blocks of memory that are freed together. They grow from 2 to 64 KiB, so that a small document
// stays small and a large one asks for few.
class CBlocks {
 public:
  CBlocks() = default;
  CBlocks(const CBlocks&) = delete;
  CBlocks& operator=(const CBlocks&) = delete;
  ~CBlocks() { Clear(); }

  // Memory for an object or a short text, aligned for pointers.
  void* Take(std::size_t size) {
    size = (size + kAlignment - 1) / kAlignment * kAlignment;
    if (m_left < size) AddBlock(size);
    m_left -= size;
    return std::exchange(m_next, m_next + size);
  }

  // A copy of a text, of less than 4 GiB.
  const StoredText* AddText(std::string_view text) {
    void* const place = Take(sizeof(StoredText) + text.size() + 1);
    auto* const stored = new (place) StoredText{static_cast<std::uint32_t>(text.size())};
    char* const bytes = reinterpret_cast<char*>(stored + 1);
    *CopyShort(bytes, text.data(), text.size()) = '\0';
    return stored;
  }

  // How much memory the blocks had to hold so far what is in them.
  std::size_t GetUsed() const { return m_total - m_left; }

  void Clear();

 private:
  struct Block {
    Block* before;
    std::size_t size;  // with this header
  };

 public:
  // A place between what was taken so far and what comes.
  struct Mark {
    Block* last;
    char* next;
    std::size_t left;
    std::size_t total;
  };
  Mark SetMark() const { return {m_last, m_next, m_left, m_total}; }
  // Gives back all that was taken since, so that it is taken again. Marks that were set since are
  // none any more.
  void Rewind(const Mark& mark) {
    if (m_last != mark.last) GiveBlocksBack(mark.last);
    m_next = mark.next;
    m_left = mark.left;
    m_total = mark.total;
#if defined(__SANITIZE_ADDRESS__)
    std::memset(m_next, 0xDD, m_left);  // what is used too late is to be seen
#endif
  }

 private:
  static constexpr std::size_t kAlignment = alignof(void*);

  void AddBlock(std::size_t atLeast);
  void GiveBlocksBack(const Block* last);
  static void Free(Block* block);

  Block* m_last = nullptr;
  Block* m_spare = nullptr;  // that was given back and is the next one, if it is large enough
  char* m_next = nullptr;
  std::size_t m_left = 0;   // of the last block
  std::size_t m_total = 0;  // of all blocks
};

// Memory for objects of one type out of blocks. A place that is given back is the next one taken.
// Makes and destroys no objects: who takes a place constructs in it, and destroys what is there
// before the place goes back or the blocks are freed.
template <class T>
class CArena {
 public:
  explicit CArena(CBlocks& blocks) : m_blocks(blocks) {}
  CArena(const CArena&) = delete;
  CArena& operator=(const CArena&) = delete;

  void* Take() {
    if (m_free == nullptr) return m_blocks.Take(sizeof(T));
    return std::exchange(m_free, m_free->next);
  }

  void Give(void* place) { m_free = new (place) Free{m_free}; }

  // Whether no place that was given back waits to be taken.
  bool IsWithoutGaps() const { return m_free == nullptr; }

  // Forgets what was given back, before its blocks are freed.
  void Clear() { m_free = nullptr; }

 private:
  struct Free {
    Free* next;
  };
  static_assert(sizeof(T) >= sizeof(Free) && alignof(T) <= alignof(void*));

  CBlocks& m_blocks;
  Free* m_free = nullptr;
};

// Objects out of blocks that own memory beyond their places; so it knows them all.
template <class T>
class COwners {
 public:
  explicit COwners(CBlocks& blocks) : m_places(blocks) {}
  COwners(const COwners&) = delete;
  COwners& operator=(const COwners&) = delete;

  T* Make(T value) {
    Held* const held = new (m_places.Take()) Held(std::move(value));
    held->after = m_first;
    if (m_first != nullptr) m_first->before = held;
    return m_first = held;
  }

  // Of one that was made here.
  void Destroy(T* object) {
    Held* const held = static_cast<Held*>(object);
    (held->before != nullptr ? held->before->after : m_first) = held->after;
    if (held->after != nullptr) held->after->before = held->before;
    held->~Held();
    m_places.Give(held);
  }

  // The one that was made last of those that are there; null for none.
  const T* GetNewest() const { return m_first; }
  // Destroys what was made after that one, but for one.
  void DestroyNewerThan(const T* object, const T* kept) {
    for (Held* held = m_first; held != object;) {
      Held* const next = held->after;
      if (held != kept) Destroy(held);
      held = next;
    }
  }

  // To be called before the blocks are freed.
  void Clear() {
    while (m_first != nullptr) std::exchange(m_first, m_first->after)->~Held();
    m_places.Clear();
  }

 private:
  struct Held : T {
    explicit Held(T&& value) : T(std::move(value)) {}
    Held* before = nullptr;
    Held* after = nullptr;
  };

  CArena<Held> m_places;
  Held* m_first = nullptr;
};

}  // namespace QzXmlLib16::detail
