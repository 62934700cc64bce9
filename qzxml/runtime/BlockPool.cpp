#include "qzxml/runtime/BlockPool.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <utility>

#include "qzxml/platform/Memory.h"
#include "qzxml/runtime/CriticalSection.h"

namespace QzXmlLib16::detail {
namespace {

// An AddressSanitizer sees the use of memory behind its end only where it goes back to the heap.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kCutsPieces = false;
#else
constexpr bool kCutsPieces = true;
#endif

// What a piece is known by; not in its memory, which is the system's while nobody uses it.
struct Piece {
  explicit Piece(char* itsMemory) : memory(itsMemory) {}

  char* memory;
  std::uint32_t free = kAllFree;  // a bit for each block
  Piece* before = nullptr;        // in one of the lists, or in none
  Piece* after = nullptr;

  static constexpr std::uint32_t kAllFree = 0xFFFFFFFF;
};

// In front of a block.
struct alignas(16) Header {
  Piece* piece;
  unsigned index;
};

constexpr std::size_t kStride = sizeof(Header) + CBlockPool::kBlockSize;
static_assert(kStride * 32 == kLargePage);

class CPieceList {
 public:
  Piece* GetFirst() const { return m_first; }  // null for none

  void Add(Piece* piece) {
    piece->before = nullptr;
    piece->after = m_first;
    if (m_first != nullptr) m_first->before = piece;
    m_first = piece;
  }

  void Remove(Piece* piece) {
    (piece->before != nullptr ? piece->before->after : m_first) = piece->after;
    if (piece->after != nullptr) piece->after->before = piece->before;
  }

 private:
  Piece* m_first = nullptr;
};

class CPieces {
 public:
  void* Take() {
    const CriticalSectionGuard guard(m_lock);
    Piece* piece = m_open.GetFirst();
    if (piece == nullptr) {
      piece = TakeUnused();
      m_open.Add(piece);
    }
    unsigned index = 0;
    while ((piece->free >> index & 1U) == 0) ++index;
    piece->free &= ~(std::uint32_t{1} << index);
    if (piece->free == 0) m_open.Remove(piece);
    return new (piece->memory + index * kStride) Header{piece, index} + 1;
  }

  void Give(void* block) noexcept {
    const CriticalSectionGuard guard(m_lock);
    const Header header = static_cast<Header*>(block)[-1];
    Piece* const piece = header.piece;
    if (piece->free == 0) m_open.Add(piece);
    piece->free |= std::uint32_t{1} << header.index;
    if (piece->free != Piece::kAllFree) return;
    m_open.Remove(piece);
    --m_usedCount;
    AddUnused(piece);
  }

  void GiveRun(char* run, std::size_t count) noexcept {
    const CriticalSectionGuard guard(m_lock);
    for (std::size_t i = 0; i < count; ++i, run += kLargePage) {
      if (auto* const piece = new (std::nothrow) Piece(run)) {
        AddUnused(piece);
      } else {
        UnmapLargePage(run);
      }
    }
  }

  // Outlives every static document.
  static CPieces& Get() {
    static auto* const pieces = new CPieces();
    return *pieces;
  }

 private:
  static constexpr std::size_t kSmallCount = 2;     // 4 MiB
  static constexpr std::size_t kUnusedCount = 128;  // 256 MiB

  Piece* TakeUnused() {
    Piece* piece = m_unused.GetFirst();
    if (piece != nullptr) {
      m_unused.Remove(piece);
      --m_unusedCount;
    } else {
      void* const memory = MapLargePages(1, m_usedCount >= kSmallCount);
      piece = new (std::nothrow) Piece(static_cast<char*>(memory));
      if (piece == nullptr) {
        UnmapLargePage(memory);
        throw std::bad_alloc();
      }
    }
    ++m_usedCount;
    return piece;
  }

  void AddUnused(Piece* piece) noexcept {
    if (m_unusedCount >= kSmallCount) OfferLargePage(piece->memory);
    m_unused.Add(piece);
    ++m_unusedCount;
    while (m_unusedCount > std::max(kUnusedCount, m_usedCount)) {
      Piece* const first = m_unused.GetFirst();
      m_unused.Remove(first);
      --m_unusedCount;
      UnmapLargePage(first->memory);
      delete first;
    }
  }

  CQZCriticalSection m_lock;
  CPieceList m_open;            // with some blocks in use and some free
  CPieceList m_unused;          // with no block in use
  std::size_t m_usedCount = 0;  // of pieces with blocks in use
  std::size_t m_unusedCount = 0;
};

constexpr std::size_t CountOf(std::size_t size) { return (size + kLargePage - 1) / kLargePage; }

}  // namespace

void* CBlockPool::Take() {
  return kCutsPieces ? CPieces::Get().Take() : ::operator new(kBlockSize);
}

void CBlockPool::Give(void* block) noexcept {
  if (kCutsPieces) {
    CPieces::Get().Give(block);
  } else {
    ::operator delete(block);
  }
}

void* CBlockPool::TakeRun(std::size_t size) {
  return kCutsPieces ? MapLargePages(CountOf(size), true) : ::operator new(size);
}

void CBlockPool::GiveRun(void* run, std::size_t size) noexcept {
  if (kCutsPieces) {
    CPieces::Get().GiveRun(static_cast<char*>(run), CountOf(size));
  } else {
    ::operator delete(run);
  }
}

}  // namespace QzXmlLib16::detail
