#include "qzxml/runtime/SpareBlocks.h"

#include <new>

#include "qzxml/runtime/CriticalSection.h"

namespace QzXmlLib16::detail {
namespace {

// An AddressSanitizer sees the use of memory behind its end only where it goes back to the heap.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kKeepsBlocks = false;
#else
constexpr bool kKeepsBlocks = true;
#endif

class CStore {
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
  static CStore& Get() {
    static auto* const store = new CStore();
    return *store;
  }

 private:
  static constexpr std::size_t kMost = 128;  // 8 MiB

  CQZCriticalSection m_lock;
  void* m_blocks[kMost] = {};
  std::size_t m_count = 0;
};

}  // namespace

void* CSpareBlocks::Take() {
  void* const spare = kKeepsBlocks ? CStore::Get().Take() : nullptr;
  return spare != nullptr ? spare : ::operator new(kSize);
}

void CSpareBlocks::Give(void* block) noexcept {
  if (!kKeepsBlocks || !CStore::Get().Give(block)) ::operator delete(block);
}

}  // namespace QzXmlLib16::detail
