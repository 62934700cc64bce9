#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "tools/generator/emit/OutputFolder.h"
#include "tools/generator/schema/SchemaNames.h"

// From schema files to sources in a folder: what the command generate does.
namespace qzxml::generator {

struct GenerateOptions {
  std::vector<std::string> schemas;                  // files
  std::string output;                                // folder
  std::string cppNamespace;                          // of the schemas' target namespace; may be ""
  std::map<std::string, std::string> cppNamespaces;  // target namespace -> C++ namespace
  std::vector<std::string> catalogs;
  std::string depfile;     // to be written for make and ninja; "" for none
  std::int32_t parts = 0;  // as EmitOptions
  std::string partStem;    // as EmitOptions; "" for its default
  bool isDry = false;      // nothing is written
  // Told what is done from now on, "reading order.xsd"; may be empty.
  std::function<void(const std::string& work)> progress;
};

struct GenerateResult {
  std::vector<Diagnostic> diagnostics;  // of the schemas and of their binding, in this order
  bool hasErrors = false;               // nothing was written then, and what follows is empty
  std::vector<std::string> inputs;      // every file that was read
  std::vector<std::string> outputs;     // every file, relative to the folder, in their order
  OutputChanges changes;
};

// Throws COutputError.
GenerateResult Generate(const GenerateOptions& options);

// The text of a file that tells make or ninja that target is made of the files.
std::string WriteDepfile(const std::string& target, const std::vector<std::string>& files);

}  // namespace qzxml::generator
