#include <gtest/gtest.h>

#include "tests/support/QzTest.h"

namespace qztest {
namespace {

std::vector<std::string> g_recorded;

void Throw(const char* condition, const char*, int) { throw AssertionFailed{condition}; }
void Record(const char* condition, const char*, int) { g_recorded.emplace_back(condition); }

}  // namespace

AssertionRecorder::AssertionRecorder() {
  g_recorded.clear();
  QzXmlLib16::SetAssertionHandler(&Record);
}

AssertionRecorder::~AssertionRecorder() { QzXmlLib16::SetAssertionHandler(&Throw); }

std::vector<std::string> AssertionRecorder::conditions() const { return g_recorded; }

}  // namespace qztest

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  QzXmlLib16::SetAssertionHandler(&qztest::Throw);
  return RUN_ALL_TESTS();
}
