#include <gtest/gtest.h>

#include <cstdint>
#include <thread>
#include <vector>

#include "qzxml/platform/Threads.h"

namespace QzXmlLib16::detail {
namespace {

TEST(Threads, CounterLosesNothingBetweenThreads) {
  std::atomic<std::int64_t> counter{0};
  EXPECT_EQ(0, AddToCounter(counter, std::int64_t{5}, std::memory_order_relaxed));
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 20000; ++i) {
        AddToCounter(counter, std::int64_t{3}, std::memory_order_relaxed);
        AddToCounter(counter, std::int64_t{-2}, std::memory_order_relaxed);
      }
    });
  }
  EXPECT_FALSE(IsSingleThreaded());
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(80005, AddToCounter(counter, std::int64_t{1}, std::memory_order_relaxed));
  EXPECT_EQ(80006, counter.load());
}

}  // namespace
}  // namespace QzXmlLib16::detail
