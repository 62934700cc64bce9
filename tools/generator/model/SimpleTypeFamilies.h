#pragma once

#include "tools/generator/model/SimpleTypeBinder.h"

namespace qzxml::generator {

// Gives each element of simple type the names that its xsi:type may have. Last of all, when every
// class has its members. A block of the element that keeps nothing out is taken away.
// Source: XML Schema 1.0 part 1, section 3.14.6, Type Derivation OK (Simple).
void AddSimpleTypeFamilies(Model& model, const CSchemaSet& schemas, CSimpleTypeBinder& simpleTypes);

}  // namespace qzxml::generator
