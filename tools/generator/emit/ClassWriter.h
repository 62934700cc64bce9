#pragma once

#include <string>

#include "tools/generator/emit/CodeWriter.h"
#include "tools/generator/emit/Names.h"

namespace qzxml::generator {

// The header of a class that is not nested, with its nested ones. firstLine is the comment that
// every file begins with.
std::string WriteClassHeader(const CNames& names, const BoundClass& boundClass,
                             const std::string& firstLine);

// Appends the definitions of a class to a source, within the namespace. Nested ones follow.
void WriteClassSource(CScope& scope, const BoundClass& boundClass, CCodeWriter& writer);

}  // namespace qzxml::generator
