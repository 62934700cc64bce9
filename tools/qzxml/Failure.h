#pragma once

#include <stdexcept>
#include <string>

#include "tools/qzxml/Console.h"

// How a run of the program ends, and what ends it early.
namespace qztool {

// What the program answers to the shell; docs/tool.md and the man page list them.
enum ExitCode : int {
  ExitCode_Done = 0,
  ExitCode_Document = 1,  // a document is damaged, or can not be had in that format
  ExitCode_Usage = 2,     // the command line is wrong
  ExitCode_File = 3,      // a file can not be read or written
  ExitCode_NotKept = 4,   // with --strict: the format would not keep everything
};

// Ends a command. The text is a whole message, "file: path: message", without a line end, and is
// made printable, as parts of it may come from a document.
class CFailure : public std::runtime_error {
 public:
  CFailure(ExitCode code, const std::string& message)
      : std::runtime_error(Printable(message)), m_code(code) {}
  ExitCode GetCode() const { return m_code; }

 private:
  ExitCode m_code;
};

// What a document fails with; the command puts the name of its file in front. The path is that of
// the element in the manner of an XPath, or "" where there is none.
class CDocumentFailure : public std::runtime_error {
 public:
  CDocumentFailure(const std::string& path, const std::string& message)
      : std::runtime_error(Printable(path.empty() ? message : path + ": " + message)) {}
};

}  // namespace qztool
