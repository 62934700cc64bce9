#pragma once

#include <string>

#include "tools/generator/schema/SchemaSet.h"
#include "tools/generator/schema/SchemaTree.h"

namespace qzxml::generator {

class CDiagnostics;

// Reads an XML file and makes its tree in the source, whose document has to have the file's name.
// A file that can not be read, and one that is not well-formed, is an error and answers false.
bool LoadSchemaFile(const std::string& file, SchemaSource& source, CDiagnostics& diagnostics);

// The same for a text that is well-formed.
void LoadSchemaText(const char* text, SchemaSource& source, CDiagnostics& diagnostics);

}  // namespace qzxml::generator
