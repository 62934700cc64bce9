#pragma once

#include <cstdlib>

#include "qzxml/platform/Assert.h"

namespace QzXmlLib16::detail {

// For a place that nothing comes to, whatever the input, which the compiler takes for granted.
[[noreturn]] inline void Unreachable() {
  QZ_ASSERT_TEXT(false, "unreachable");
#if defined(__GNUC__)
  __builtin_unreachable();
#else
  std::abort();
#endif
}

}  // namespace QzXmlLib16::detail
