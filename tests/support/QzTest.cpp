#include "tests/support/QzTest.h"

namespace qztest {

using testing::AssertionFailure;
using testing::AssertionResult;
using testing::AssertionSuccess;

AssertionResult Throws(const std::type_info& expected, const char* statementText,
                       const std::string& text, bool full, const char* path,
                       const CStatement& statement) {
  try {
    statement();
  } catch (const QzXmlLib16::CQzException& e) {
    if (typeid(e) != expected) {
      return AssertionFailure() << statementText << "\n  threw " << typeid(e).name()
                                << " instead of " << expected.name()
                                << "\n  with: " << e.GetFullMessage();
    }
    const std::string actual = full ? e.GetFullMessage() : e.GetMessage();
    if (actual != text) {
      return AssertionFailure() << statementText << "\n  actual text:   " << actual
                                << "\n  expected text: " << text;
    }
    if (path != nullptr && e.GetPath() != path) {
      return AssertionFailure() << statementText << "\n  actual path:   " << e.GetPath()
                                << "\n  expected path: " << path;
    }
    return AssertionSuccess();
  } catch (const AssertionFailed& e) {
    return AssertionFailure() << statementText << "\n  asserted: " << e.condition;
  }
  return AssertionFailure() << statementText << "\n  threw nothing";
}

AssertionResult Asserts([[maybe_unused]] const char* statementText,
                        [[maybe_unused]] const std::string& condition,
                        [[maybe_unused]] const CStatement& statement) {
#if defined(QZXML_ASSERTIONS)
  std::string asserted = "(nothing)";
  try {
    statement();
  } catch (const AssertionFailed& e) {
    asserted = e.condition;
  }
  if (asserted != condition) {
    return AssertionFailure() << statementText << "\n  asserted: " << asserted
                              << "\n  expected: " << condition;
  }
#endif
  return AssertionSuccess();
}

}  // namespace qztest
