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

// A statement on trial, called where it stands: it must outlive this. Of each statement nothing
// else is compiled than this call, as there are many of them.
class CStatement {
 public:
  template <typename Callable>
  explicit CStatement(const Callable& callable)
      : m_callable(&callable),
        m_call([](const void* it) { (*static_cast<const Callable*>(it))(); }) {}
  void operator()() const { m_call(m_callable); }

 private:
  const void* m_callable;
  void (*m_call)(const void* callable);
};

// Success where a statement throws this very class with this text (its full message or its own),
// and at this path unless that is null; otherwise what it did instead.
::testing::AssertionResult Throws(const std::type_info& expected, const char* statementText,
                                  const std::string& text, bool full, const char* path,
                                  const CStatement& statement);

template <typename Expected, typename Statement>
::testing::AssertionResult Throws(const char* statementText, const std::string& text, bool full,
                                  const char* path, const Statement& statement) {
  return Throws(typeid(Expected), statementText, text, full, path, CStatement(statement));
}

// The condition that a statement is expected to assert, or "(nothing)". In a build without
// assertions the statement is compiled but does not run.
::testing::AssertionResult Asserts(const char* statementText, const std::string& condition,
                                   const CStatement& statement);

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
  EXPECT_TRUE((::qztest::Asserts(#__VA_ARGS__, text, ::qztest::CStatement([&] { __VA_ARGS__; }))))
