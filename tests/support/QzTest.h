#pragma once

#include <gtest/gtest.h>

#include <string>
#include <typeinfo>
#include <vector>

#include "qzxml/platform/Assert.h"
#include "qzxml/runtime/QzException.h"

// Checks of failures, on the dynamic class and on the whole text.
//
//   EXPECT_QZ_THROW(CQzException, "An Element has not been closed.", writer.EndDocument());
//   EXPECT_QZ_THROW_FULL(CQzValidationException, "outer\nPath: /a\ninner", "/a",
//   object.FromXml(t)); EXPECT_QZ_ASSERT("p != 0", *handle);     compiled in, but empty in a build
//   without assertions

namespace qztest {

// What the handler of the test programs throws for a failed assertion.
struct AssertionFailed {
  std::string condition;
};

// What ran on while a statement was expected to fail, or the failure that it gave.
template <typename Expected, typename Statement>
::testing::AssertionResult Throws(const char* statementText, const std::string& text, bool full,
                                  const char* path, Statement statement) {
  try {
    statement();
  } catch (const QzXmlLib16::CQzException& e) {
    if (typeid(e) != typeid(Expected)) {
      return ::testing::AssertionFailure()
             << statementText << "\n  threw " << typeid(e).name() << " instead of "
             << typeid(Expected).name() << "\n  with: " << e.GetFullMessage();
    }
    const std::string actual = full ? e.GetFullMessage() : e.GetMessage();
    if (actual != text) {
      return ::testing::AssertionFailure()
             << statementText << "\n  actual text:   " << actual << "\n  expected text: " << text;
    }
    if (path != nullptr && e.GetPath() != path) {
      return ::testing::AssertionFailure() << statementText << "\n  actual path:   " << e.GetPath()
                                           << "\n  expected path: " << path;
    }
    return ::testing::AssertionSuccess();
  } catch (const AssertionFailed& e) {
    return ::testing::AssertionFailure() << statementText << "\n  asserted: " << e.condition;
  }
  return ::testing::AssertionFailure() << statementText << "\n  threw nothing";
}

// The condition that a statement is expected to assert, or "(nothing)". In a build without
// assertions the statement is compiled but does not run.
template <typename Statement>
::testing::AssertionResult Asserts([[maybe_unused]] const char* statementText,
                                   [[maybe_unused]] const std::string& condition,
                                   [[maybe_unused]] Statement statement) {
#if defined(QZXML_ASSERTIONS)
  std::string asserted = "(nothing)";
  try {
    statement();
  } catch (const AssertionFailed& e) {
    asserted = e.condition;
  }
  if (asserted != condition) {
    return ::testing::AssertionFailure()
           << statementText << "\n  asserted: " << asserted << "\n  expected: " << condition;
  }
#endif
  return ::testing::AssertionSuccess();
}

// While one lives, failed assertions are kept instead of thrown; for code that asserts in a
// destructor, where nothing may be thrown.
class AssertionRecorder {
 public:
  AssertionRecorder();
  ~AssertionRecorder();
  AssertionRecorder(const AssertionRecorder&) = delete;
  AssertionRecorder& operator=(const AssertionRecorder&) = delete;
  std::vector<std::string> conditions() const;
};

}  // namespace qztest

#define EXPECT_QZ_THROW(expected, text, ...) \
  EXPECT_TRUE(                               \
      (::qztest::Throws<expected>(#__VA_ARGS__, text, false, nullptr, [&] { __VA_ARGS__; })))
#define EXPECT_QZ_THROW_FULL(expected, text, path, ...) \
  EXPECT_TRUE((::qztest::Throws<expected>(#__VA_ARGS__, text, true, path, [&] { __VA_ARGS__; })))

#define EXPECT_QZ_ASSERT(text, ...) \
  EXPECT_TRUE((::qztest::Asserts(#__VA_ARGS__, text, [&] { __VA_ARGS__; })))
