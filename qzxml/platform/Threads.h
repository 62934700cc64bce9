#pragma once

#include <atomic>
#include <cstdint>

#if defined(__has_include)
#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#define QZXML_KNOWS_SINGLE_THREADED 1
#endif
#endif

// Counters that cost no locked instruction while the process has one thread only.

namespace QzXmlLib16::detail {

// True when the process certainly has one thread; false when it has more, or nobody knows.
inline bool IsSingleThreaded() {
#if defined(QZXML_KNOWS_SINGLE_THREADED)
  return __libc_single_threaded != 0;
#else
  return false;
#endif
}

// Adds to a counter that any thread may change and answers its value before, as fetch_add does.
template <typename T>
inline T AddToCounter(std::atomic<T>& counter, T amount, std::memory_order order) {
  if (IsSingleThreaded()) {
    const T before = counter.load(std::memory_order_relaxed);
    counter.store(static_cast<T>(before + amount), std::memory_order_relaxed);
    return before;
  }
  return counter.fetch_add(amount, order);
}

}  // namespace QzXmlLib16::detail
