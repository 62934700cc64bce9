#pragma once

#include <string>

#include "qzxml/runtime/Functions.h"

namespace QzXmlLib16::detail {

// Sends a line to the debug channel, cut to what that takes: a long name or value of a document is
// no mistake of the caller.
inline void TraceCut(std::string line) {
  constexpr std::size_t kLongest = 1024 * 32 - 1;
  if (line.size() > kLongest) line.resize(kLongest);
  DebugTrace("%s", line.c_str());
}

}  // namespace QzXmlLib16::detail
