#pragma once

#include "tools/generator/model/ClassRegistry.h"

namespace qzxml::generator {

// A class that requires an object that requires an object of the class, and so on, has no end: no
// document is one, and an object that makes what it requires would never be made. One member of
// each such circle becomes optional, with a warning.
void BreakMandatoryCycles(Model& model, const CClassRegistry& classes);

}  // namespace qzxml::generator
