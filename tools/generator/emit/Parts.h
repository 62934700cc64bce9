#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "tools/generator/emit/Emit.h"
#include "tools/generator/emit/Names.h"

namespace qzxml::generator {

// Definitions that stay together in one source.
struct SourcePiece {
  const BoundNamespace* where = nullptr;
  std::string name;  // decides where sources are cut
  std::set<std::string> includes;
  std::string text;
  std::int32_t lines = 0;
};

// All definitions of a namespace in the order of the schema: enumerations, simple types, classes,
// roots.
std::vector<SourcePiece> MakePieces(const CNames& names, const BoundNamespace& where);

// Bundles the pieces of the whole model to sources.
//
// A source is cut where it would grow past kPartLines, and before that, once it has a third of
// them, behind a piece whose name says so by its hash. So the cuts stay where they are while a
// schema changes: a class that grows or is added moves the one or two cuts behind it, not all to
// the end, and little is compiled anew.
std::vector<SourceFile> BundlePieces(const std::vector<SourcePiece>& pieces,
                                     const EmitOptions& options, const std::string& firstLine);

}  // namespace qzxml::generator
