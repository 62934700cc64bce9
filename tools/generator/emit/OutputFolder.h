#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "tools/generator/emit/Emit.h"

namespace qzxml::generator {

// "<file>: can not be written: <what the system says>", or read or removed.
class COutputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The list of the files of a run, in its output folder: a path a line, in their order. It is
// written by every run, so that its time is that of the last one.
inline constexpr char kManifestName[] = "qzxml-files.txt";

struct OutputChanges {
  std::size_t written = 0;
  std::size_t unchanged = 0;
  std::size_t removed = 0;
};

// Makes the folder hold these files. One that holds its text already is left alone, so that nothing
// is compiled that need not be; one of the run before that is not among them is removed, if it
// still begins as generated files do. Other files are none of ours. Throws COutputError; files are
// written by then, or not, but each whole.
OutputChanges UpdateFolder(const std::string& folder, const std::vector<SourceFile>& files);

// Writes one file, whole or not at all, with the folders that it needs. Throws COutputError.
void WriteTextFile(const std::string& path, const std::string& text);

}  // namespace qzxml::generator
