#include <gtest/gtest.h>

#include <string>

#include "qzxml/platform/Assert.h"
#include "qzxml/platform/DebugChannel.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

TEST(Assert, EvaluatesAndReportsOnlyWhereAssertionsAreCompiledIn) {
  int evaluated = 0;
  const qztest::AssertionRecorder recorder;
  QZ_ASSERT_TEXT(++evaluated == 2, "evaluated == 2");
#if defined(QZXML_ASSERTIONS)
  EXPECT_EQ(1, evaluated);
  EXPECT_EQ(std::vector<std::string>{"evaluated == 2"}, recorder.conditions());
#else
  EXPECT_EQ(0, evaluated);
  EXPECT_TRUE(recorder.conditions().empty());
#endif
}

TEST(Assert, ReportsTheTextOfTheCondition) {
  [[maybe_unused]] const int count = 1;
  EXPECT_QZ_ASSERT("count == 2", QZ_ASSERT(count == 2));
  EXPECT_QZ_ASSERT("(nothing)", QZ_ASSERT(count == 1));
}

TEST(Assert, HandlerGetsConditionFileAndLine) {
  static std::string seen;
  seen.clear();
  SetAssertionHandler([](const char* condition, const char* file, int line) {
    seen = std::string(condition) + "|" + file + "|" + std::to_string(line);
  });
  detail::ReportAssertion("p != 0", "some.cpp", 12);
  const qztest::AssertionRecorder restoresTheTestHandler;
  EXPECT_EQ("p != 0|some.cpp|12", seen);
}

TEST(AssertDeathTest, DefaultHandlerWritesToChannelAndStandardErrorAndAborts) {
  EXPECT_DEATH(
      {
        SetDebugChannel([](const char* text) { fprintf(stderr, "channel: %s", text); });
        SetAssertionHandler(nullptr);
        detail::ReportAssertion("p != 0", "some.cpp", 12);
      },
      "channel: Assertion failed: p != 0, file some.cpp, line 12\n"
      "Assertion failed: p != 0, file some.cpp, line 12\n");
}

}  // namespace
}  // namespace QzXmlLib16
