#include "tools/generator/schema/Diagnostics.h"

#include <utility>

#include "tools/generator/schema/SchemaTree.h"

namespace qzxml::generator {

namespace {

// More than anybody reads; the place of each is looked up.
constexpr std::size_t kMaxErrors = 1000;

}  // namespace

void CDiagnostics::Error(const Location& location, std::string message) {
  if (m_errorCount >= kMaxErrors) return;
  Add({Severity_Error, location.GetFile(), location.GetPath(), std::move(message)});
}

void CDiagnostics::Error(const SchemaNode& node, std::string message) {
  Error(node.GetLocation(), std::move(message));
}

void CDiagnostics::Error(const std::string& file, std::string message) {
  Add({Severity_Error, file, {}, std::move(message)});
}

void CDiagnostics::Warning(const Location& location, std::string message) {
  Add({Severity_Warning, location.GetFile(), location.GetPath(), std::move(message)});
}

void CDiagnostics::Warning(const SchemaNode& node, std::string message) {
  Warning(node.GetLocation(), std::move(message));
}

void CDiagnostics::Add(Diagnostic diagnostic) {
  if (!m_told.insert(diagnostic.ToString()).second) return;
  if (diagnostic.severity == Severity_Error) ++m_errorCount;
  m_all.push_back(std::move(diagnostic));
}

}  // namespace qzxml::generator
