#include "tools/generator/emit/Files.h"

namespace qzxml::generator {

void WriteIncludes(const std::set<std::string>& standard, const std::set<std::string>& local,
                   CCodeWriter& writer) {
  for (const std::string& header : standard) writer.Line("#include " + header);
  writer.Gap();
  for (const std::string& header : local) writer.Line("#include \"" + header + "\"");
  writer.Gap();
}

void BeginHeader(const std::string& firstLine, const std::set<std::string>& standard,
                 const std::set<std::string>& local, CCodeWriter& writer) {
  writer.Line(firstLine);
  writer.Line("#pragma once");
  writer.Gap();
  WriteIncludes(standard, local, writer);
}

}  // namespace qzxml::generator
