#pragma once

#include "qzxml/platform/Export.h"

// Assertions on callers' mistakes. They are compiled in when QZXML_ASSERTIONS is defined (the
// exported CMake target carries the definition, so that headers and library agree); without it the
// condition is not evaluated. No input document reaches an assertion as its only guard.
//
//   QZ_ASSERT(p != 0);                          reports the condition's own text
//   QZ_ASSERT_TEXT(count == 1, "count == 1");   reports the given text

namespace QzXmlLib16 {

// Called with the text of a failed condition and the place in the source. A handler may return, and
// then the program goes on behind the assertion; it may also throw where no destructor asserts.
using AssertionHandler = void (*)(const char* condition, const char* file, int line);

// Installs a handler for the whole process; null puts the default back, which sends the text to the
// debug channel and to standard error and aborts.
QZXML_API void SetAssertionHandler(AssertionHandler handler);

namespace detail {
QZXML_API void ReportAssertion(const char* condition, const char* file, int line);
}  // namespace detail

}  // namespace QzXmlLib16

#if defined(QZXML_ASSERTIONS)
#define QZ_ASSERT_TEXT(condition, text) \
  ((condition) ? void(0) : ::QzXmlLib16::detail::ReportAssertion((text), __FILE__, __LINE__))
#else
#define QZ_ASSERT_TEXT(condition, text) void(sizeof((condition) ? 1 : 0))
#endif
#define QZ_ASSERT(condition) QZ_ASSERT_TEXT(condition, #condition)
