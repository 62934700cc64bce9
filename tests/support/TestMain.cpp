#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "tests/support/CommaLocale.h"
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

// With QZXML_TEST_COMMA_LOCALE in the environment all tests run in a locale whose decimal separator
// is a comma; 77, for ctest to skip, where there is none to be had.
int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  QzXmlLib16::SetAssertionHandler(&qztest::Throw);
  std::unique_ptr<qztest::CommaLocale> locale;
  if (std::getenv("QZXML_TEST_COMMA_LOCALE") != nullptr) {
    locale = std::make_unique<qztest::CommaLocale>();
    if (!locale->Works()) {
      std::printf("no locale with a comma: localedef ended with %d\n", locale->GetStatus());
      return 77;
    }
  }
  return RUN_ALL_TESTS();
}
