// Reads sets of schemas and says what was found, for scripts/check_schema_suite.py.
//
//   qzxml_read_schemas [catalog...] < sets
//
// Each line of the input is a set: paths with tabs between them. Each line of the output belongs to
// one of them: the numbers of errors and warnings, and the first error, with tabs between them.

#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "tools/generator/schema/SchemaSet.h"

using namespace qzxml::generator;

int main(int argc, char** argv) {
  ReadOptions options;
  options.catalogs.assign(argv + 1, argv + argc);
  for (std::string line; std::getline(std::cin, line);) {
    std::vector<std::string> files;
    std::istringstream words(line);
    for (std::string file; std::getline(words, file, '\t');) files.push_back(file);
    const std::unique_ptr<CSchemaSet> set = ReadSchemas(files, options);
    std::size_t errors = 0;
    std::string first;
    for (const Diagnostic& diagnostic : set->GetDiagnostics()) {
      if (diagnostic.severity != Severity_Error) continue;
      if (errors++ == 0) first = diagnostic.ToString();
    }
    for (char& c : first) {
      if (c == '\n' || c == '\t') c = ' ';
    }
    std::cout << errors << '\t' << set->GetDiagnostics().size() - errors << '\t' << first
              << std::endl;
  }
}
