#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "tools/generator/schema/SchemaNames.h"

namespace qzxml::generator {

struct SchemaNode;

// What is told of the schemas while they are read. The same thing of the same place is told once;
// behind a thousand errors no further ones are kept.
class CDiagnostics {
 public:
  CDiagnostics() = default;
  CDiagnostics(const CDiagnostics&) = delete;
  CDiagnostics& operator=(const CDiagnostics&) = delete;

  void Error(const Location& location, std::string message);
  void Error(const SchemaNode& node, std::string message);
  void Error(const std::string& file, std::string message);
  void Warning(const Location& location, std::string message);
  void Warning(const SchemaNode& node, std::string message);

  bool HasErrors() const { return m_errorCount != 0; }
  const std::vector<Diagnostic>& GetAll() const { return m_all; }

 private:
  void Add(Diagnostic diagnostic);

  std::size_t m_errorCount = 0;
  std::vector<Diagnostic> m_all;
  std::set<std::string> m_told;
};

}  // namespace qzxml::generator
