#pragma once

#include <string>

#include "tools/generator/emit/CodeWriter.h"
#include "tools/generator/emit/Names.h"

namespace qzxml::generator {

// Roots.h of a namespace, and what it declares: NewRoot for a document that is read, and a function
// for each element that an object may be made for.
std::string WriteRootsHeader(const CNames& names, const BoundNamespace& where,
                             const std::string& firstLine);
void WriteRootsSource(CScope& scope, const BoundNamespace& where, CCodeWriter& writer);

}  // namespace qzxml::generator
