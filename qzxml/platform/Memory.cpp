#include "qzxml/platform/Memory.h"

#include <cstdint>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace QzXmlLib16::detail {

void ExpectToFill([[maybe_unused]] void* begin, [[maybe_unused]] std::size_t size) {
#if defined(__linux__) && defined(MADV_HUGEPAGE)
  if (size < kLargePiece) return;
  // Whole large pages, so that nothing of others is in them.
  constexpr std::uintptr_t kPage = std::uintptr_t{2} << 20;
  const auto first = reinterpret_cast<std::uintptr_t>(begin);
  const std::uintptr_t aligned = (first + kPage - 1) / kPage * kPage;
  const std::uintptr_t length = (first + size - aligned) / kPage * kPage;
  char* const at = static_cast<char*>(begin) + (aligned - first);
  // It is an advice: where it is not taken, pages come as they always do.
  static_cast<void>(madvise(at, length, MADV_HUGEPAGE));
#endif
}

}  // namespace QzXmlLib16::detail
