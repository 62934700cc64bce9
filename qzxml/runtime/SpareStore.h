#pragma once

#include <cstddef>

#include "qzxml/runtime/CriticalSection.h"

namespace QzXmlLib16::detail {

// An AddressSanitizer sees the use of what is gone only where it goes back to the heap.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool kKeepsSpares = false;
#else
inline constexpr bool kKeepsSpares = true;
#endif

// Things of one kind that wait to be used again. Any thread may take and give. A store is never
// destroyed: static objects may give something back at the very end.
template <typename T, std::size_t kMost>
class CSpareStore {
 public:
  // Null for none.
  T* Take() {
    if (!kKeepsSpares) return nullptr;
    const CriticalSectionGuard guard(m_lock);
    return m_count != 0 ? m_spares[--m_count] : nullptr;
  }

  // False, and it stays with the caller, where enough are waiting.
  bool Give(T* spare) {
    if (!kKeepsSpares) return false;
    const CriticalSectionGuard guard(m_lock);
    if (m_count == kMost) return false;
    m_spares[m_count++] = spare;
    return true;
  }

 private:
  CQZCriticalSection m_lock;
  T* m_spares[kMost] = {};
  std::size_t m_count = 0;
};

}  // namespace QzXmlLib16::detail
