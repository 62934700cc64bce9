#include <gtest/gtest.h>

#include <thread>
#include <type_traits>
#include <vector>

#include "qzxml/runtime/CriticalSection.h"

namespace {

TEST(CriticalSection, LetsItsOwnerInAgain) {
  CQZCriticalSection section;
  section.Enter();
  section.Enter();
  section.Leave();
  section.Leave();
  static_assert(std::has_virtual_destructor_v<CQZCriticalSection>);
}

TEST(CriticalSection, KeepsOthersOut) {
  CQZCriticalSection section;
  int counter = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 5000; ++i) {
        const QzXmlLib16::detail::CriticalSectionGuard outer(section);
        const QzXmlLib16::detail::CriticalSectionGuard inner(section);
        ++counter;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(20000, counter);
}

}  // namespace
