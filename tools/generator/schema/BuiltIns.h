#pragma once

#include "tools/generator/schema/SchemaStorage.h"

namespace qzxml::generator {

// Makes anyType, anySimpleType and all built-in simple types.
// Source: XML Schema 1.0 part 2, section 3; part 1, section 3.4.7.
void MakeBuiltIns(SchemaStorage& storage);

}  // namespace qzxml::generator
