#pragma once

#include "qzxml/binding/XsdType.h"
#include "tools/generator/schema/SchemaStorage.h"

namespace qzxml::generator {

// Makes anyType, anySimpleType and all built-in simple types.
// Source: XML Schema 1.0 part 2, section 3; part 1, section 3.4.7.
void MakeBuiltIns(SchemaStorage& storage);

// What the library calls a built-in type; anySimpleType for BuiltIn_None.
QzXmlLib16::XsdType GetXsdType(BuiltIn type);

}  // namespace qzxml::generator
