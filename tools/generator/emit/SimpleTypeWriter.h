#pragma once

#include "tools/generator/emit/CodeWriter.h"
#include "tools/generator/emit/Names.h"

namespace qzxml::generator {

// Appends to Enumerations.h: the enumeration and the declarations of its functions.
void WriteEnumDeclaration(const BoundEnum& boundEnum, CCodeWriter& writer);

// Appends to a source, within the namespace: the texts and the functions.
void WriteEnumSource(CScope& scope, const BoundEnum& boundEnum, CCodeWriter& writer);

// Appends to a source: the rules, if the type needs some, and the constant.
// Of the types that an xsi:type may name: what the header has, and the array behind it.
void WriteFamilyDeclaration(const CScope& scope, const BoundSimpleFamily& family,
                            CCodeWriter& writer);
void WriteFamilySource(const CScope& scope, const BoundSimpleFamily& family, CCodeWriter& writer);
void WriteSimpleTypeSource(CScope& scope, const BoundSimpleType& type, CCodeWriter& writer);

}  // namespace qzxml::generator
