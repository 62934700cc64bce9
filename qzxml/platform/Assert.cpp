#include "qzxml/platform/Assert.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>

#include "qzxml/platform/DebugChannel.h"

namespace QzXmlLib16 {

namespace {

void AbortWithText(const char* condition, const char* file, int line) {
  char text[1024];
  std::snprintf(text, sizeof text, "Assertion failed: %s, file %s, line %d\n", condition, file,
                line);
  if (const DebugChannel channel = detail::GetDebugChannel()) channel(text);
  std::fputs(text, stderr);
  std::abort();
}

std::atomic<AssertionHandler> g_handler{&AbortWithText};

}  // namespace

void SetAssertionHandler(AssertionHandler handler) {
  g_handler.store(handler != nullptr ? handler : &AbortWithText);
}

namespace detail {

void ReportAssertion(const char* condition, const char* file, int line) {
  g_handler.load()(condition, file, line);
}

}  // namespace detail

}  // namespace QzXmlLib16
