#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>

namespace qztest {

// How many objects of each monitored class are alive; classes without any are left out.
std::map<std::string, std::int32_t> LiveCounts();

// A fixture whose tests leave no monitored object behind. The members of a derived fixture are gone
// when it looks. Not for tests that copy monitored objects, whose counts run low by design.
//
//   using OrderTest = qztest::NothingLeftBehind;
//   TEST_F(OrderTest, FreesItsItems) { ... }
class NothingLeftBehind : public ::testing::Test {
 protected:
  NothingLeftBehind() : m_before(LiveCounts()) {}
  ~NothingLeftBehind() override { EXPECT_EQ(m_before, LiveCounts()); }

 private:
  std::map<std::string, std::int32_t> m_before;
};

}  // namespace qztest
