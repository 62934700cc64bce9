#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tools/generator/model/Model.h"

// Writes a model down as C++17.
//
// For each namespace a folder <stem> with
//   <stem>.h           includes all the others; what programs include
//   <Class>.h          one for each class that is not nested; names other classes without including
//                      them, but for its base
//   Enumerations.h     enumerations and their functions, where there are some
//   SimpleTypes.h      the simple types, where there are some
//   Namespace.h        the namespace's name
//   Roots.h            functions for the elements that documents begin with, where there are some
//   <stem>_1.cpp ...   the definitions, in the order of the schema
// Includes are written from the output folder. Equal models give equal texts.
namespace qzxml::generator {

struct SourceFile {
  std::string path;  // relative to the output folder, with '/'
  std::string text;

  bool IsHeader() const { return path.size() > 2 && path.compare(path.size() - 2, 2, ".h") == 0; }
};

struct EmitOptions {
  std::vector<std::string> schemaNames;  // file names without folder, for the first line of each

  // How many sources: 0 splits each namespace where a source would grow past kPartLines; another
  // number makes that many, <partStem>_1.cpp and so on in the output folder itself, for all
  // namespaces together, whatever the schema holds. For a build system that has to know them before
  // the generator runs.
  std::int32_t parts = 0;
  std::string partStem = "generated";
};

// Lines of a source. What one class needs stays together, so that a class with a great many members
// may have more.
inline constexpr std::int32_t kPartLines = 1500;

// The model has no errors. In the order of their paths.
std::vector<SourceFile> WriteSources(const Model& model, const EmitOptions& options);

}  // namespace qzxml::generator
