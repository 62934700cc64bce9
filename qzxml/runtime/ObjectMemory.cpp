#include "qzxml/runtime/ObjectMemory.h"

#include <algorithm>
#include <atomic>

#include "qzxml/platform/Threads.h"
#include "qzxml/runtime/SpareBlocks.h"

// In front of each object stands a header, which says where the piece begins that it lies in.

namespace QzXmlLib16::detail {
namespace {

constexpr std::size_t kAlignment = 16;
constexpr std::size_t kSmallestPiece = 1024;
static_assert(__STDCPP_DEFAULT_NEW_ALIGNMENT__ <= kAlignment);

// An AddressSanitizer sees the use of an object behind its end only where it goes back to the heap.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kPutsTogether = false;
#else
constexpr bool kPutsTogether = true;
#endif

struct Header {
  std::uint32_t offset;  // of the object in its piece; 0 for one alone
  std::uint32_t unused;
};
static_assert(sizeof(Header) == kAlignment / 2);

Header& HeaderOf(void* object) { return static_cast<Header*>(object)[-1]; }

thread_local CObjectsTogether* t_together = nullptr;

}  // namespace

// Behind it come the first header and the first object, whose address is aligned.
struct CObjectsTogether::Piece {
  // The objects in it. As long as objects are put into it, it is kMany more than there will be when
  // the last one goes, less those made: so making one costs no counting that other threads see.
  std::atomic<std::uint32_t> count;
  std::uint32_t size;

  static constexpr std::uint32_t kMany = 0x80000000;
};

CObjectsTogether::CObjectsTogether() : m_isOuter(kPutsTogether && t_together == nullptr) {
  if (m_isOuter) t_together = this;
}

CObjectsTogether::~CObjectsTogether() {
  if (!m_isOuter) return;
  t_together = nullptr;
  LeavePiece();
}

// Null for an object that is to lie alone.
inline void* CObjectsTogether::Take(std::size_t size) {
  size = (size + sizeof(Header) + kAlignment - 1) / kAlignment * kAlignment;
  if (m_left < size && !AddPiece(size)) return nullptr;
  Header* const header = new (m_next) Header;
  const char* const begin = reinterpret_cast<const char*>(m_piece);
  header->offset = static_cast<std::uint32_t>(reinterpret_cast<char*>(header + 1) - begin);
  m_next += size;
  m_left -= size;
  ++m_made;
  return header + 1;
}

// A piece has half the size of all before it, so that no document holds much more than it needs:
// the first objects lie alone, and those that would fill much of a piece.
bool CObjectsTogether::AddPiece(std::size_t objectSize) {
  const std::size_t size = std::min(m_total / 2, CSpareBlocks::kSize);
  if (size < kSmallestPiece || objectSize > size / 4) {
    m_total += objectSize;
    return false;
  }
  LeavePiece();
  void* const memory = size == CSpareBlocks::kSize ? CSpareBlocks::Take() : ::operator new(size);
  m_piece = new (memory) Piece{{Piece::kMany}, static_cast<std::uint32_t>(size)};
  static_assert(sizeof(Piece) % kAlignment == kAlignment / 2);
  m_next = reinterpret_cast<char*>(m_piece + 1);
  m_left = size - sizeof(Piece);
  m_total += size;
  return true;
}

// From here on the piece goes with the last of its objects, which may have gone already.
void CObjectsTogether::LeavePiece() noexcept {
  if (m_piece == nullptr) return;
  const std::uint32_t surplus = Piece::kMany - m_made;
  const std::uint32_t before = AddToCounter(m_piece->count, 0 - surplus, std::memory_order_acq_rel);
  if (before == surplus) FreePiece(m_piece);
  m_piece = nullptr;
  m_left = 0;
  m_made = 0;
}

void CObjectsTogether::FreePiece(Piece* piece) noexcept {
  if (piece->size == CSpareBlocks::kSize) {
    CSpareBlocks::Give(piece);
  } else {
    ::operator delete(piece);
  }
}

void* TakeObjectMemory(std::size_t size) {
  CObjectsTogether* const together = t_together;
  if (together != nullptr) {
    if (void* const object = together->Take(size)) return object;
  }
  // The header stands in the second half of what comes in front.
  Header* const header = static_cast<Header*>(::operator new(size + kAlignment)) + 1;
  header->offset = 0;
  return header + 1;
}

void GiveObjectMemory(void* object) noexcept {
  if (object == nullptr) return;
  const std::uint32_t offset = HeaderOf(object).offset;
  if (offset == 0) {
    ::operator delete(static_cast<char*>(object) - kAlignment);
    return;
  }
  auto* const piece =
      reinterpret_cast<CObjectsTogether::Piece*>(static_cast<char*>(object) - offset);
  if (AddToCounter(piece->count, ~std::uint32_t{0}, std::memory_order_acq_rel) == 1) {
    CObjectsTogether::FreePiece(piece);
  }
}

}  // namespace QzXmlLib16::detail
