#pragma once

#include <set>
#include <string>

#include "tools/generator/emit/CodeWriter.h"

namespace qzxml::generator {

// How every generated file begins.
inline constexpr char kFirstWords[] = "// Made by qzxml generate";

// "#include" lines in two blocks, each followed by an empty line.
void WriteIncludes(const std::set<std::string>& standard, const std::set<std::string>& local,
                   CCodeWriter& writer);

// The first lines of a header.
void BeginHeader(const std::string& firstLine, const std::set<std::string>& standard,
                 const std::set<std::string>& local, CCodeWriter& writer);

}  // namespace qzxml::generator
