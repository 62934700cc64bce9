#pragma once

#include <string>

#include "qzxml/runtime/QzException.h"

namespace qztest {

// "" for a document that read() takes, else the innermost failure without its path.
template <typename Read>
std::string RefusalOf(Read read) {
  try {
    read();
    return "";
  } catch (const QzXmlLib16::CQzException& e) {
    const QzXmlLib16::CQzException* inner = &e;
    while (inner->GetInnerException() != nullptr) inner = inner->GetInnerException();
    const std::string message = inner->GetMessage();
    return message.substr(0, message.find("\nPath: "));
  }
}

}  // namespace qztest
