#include "qzxml/platform/Memory.h"

#include <sys/mman.h>

#include <cstdint>
#include <new>

namespace QzXmlLib16::detail {
namespace {

// Asks for large pages. It is an advice: where it is not taken, pages come as they always do.
void AdviseLargePages([[maybe_unused]] void* begin, [[maybe_unused]] std::size_t size) {
#if defined(MADV_HUGEPAGE)
  static_cast<void>(madvise(begin, size, MADV_HUGEPAGE));
#endif
}

}  // namespace

void ExpectToFill(void* begin, std::size_t size) {
  if (size < kLargePiece) return;
  // Whole large pages, so that nothing of others is in them.
  const auto first = reinterpret_cast<std::uintptr_t>(begin);
  const std::uintptr_t aligned = (first + kLargePage - 1) / kLargePage * kLargePage;
  const std::uintptr_t length = (first + size - aligned) / kLargePage * kLargePage;
  AdviseLargePages(static_cast<char*>(begin) + (aligned - first), length);
}

// The system aligns to small pages only: so one more is asked for, and what is too much goes back.
void* MapLargePages(std::size_t count, bool willBeFilled) {
  const std::size_t size = count * kLargePage;
  void* const mapped =
      mmap(nullptr, size + kLargePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (mapped == MAP_FAILED) throw std::bad_alloc();
  char* const begin = static_cast<char*>(mapped);
  const std::size_t before = -reinterpret_cast<std::uintptr_t>(begin) % kLargePage;
  char* const first = begin + before;
  if (before != 0) munmap(begin, before);
  munmap(first + size, kLargePage - before);
  if (willBeFilled) AdviseLargePages(first, size);
  return first;
}

void UnmapLargePage(void* page) noexcept { munmap(page, kLargePage); }

void OfferLargePage([[maybe_unused]] void* page) noexcept {
#if defined(MADV_FREE)
  static_cast<void>(madvise(page, kLargePage, MADV_FREE));
#endif
}

}  // namespace QzXmlLib16::detail
