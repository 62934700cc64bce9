#pragma once

#include "tools/generator/emit/CodeWriter.h"
#include "tools/generator/emit/Names.h"

namespace qzxml::generator {

// Appends to Enumerations.h: the enumeration and the declarations of its functions.
void WriteEnumDeclaration(const BoundEnum& boundEnum, CCodeWriter& writer);

// Appends to a source, within the namespace: the texts and the functions.
void WriteEnumSource(CScope& scope, const BoundEnum& boundEnum, CCodeWriter& writer);

// Appends to a source: the rules, if the type needs some, and the constant.
void WriteSimpleTypeSource(CScope& scope, const BoundSimpleType& type, CCodeWriter& writer);

}  // namespace qzxml::generator
