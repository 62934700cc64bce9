#include "tests/tools/schema/SchemaTrial.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>

namespace qztest {

using namespace qzxml::generator;

namespace {

std::string MakeFolder() {
  std::random_device random;
  const std::filesystem::path folder =
      std::filesystem::temp_directory_path() /
      ("qzxml-schemas-" + std::to_string(random()) + "-" + std::to_string(random()));
  std::filesystem::create_directories(folder);
  return folder.string();
}

std::string ToText(std::int64_t min, std::int64_t max) {
  if (min == 1 && max == 1) return {};
  if (min == 0 && max == 1) return "?";
  return "{" + std::to_string(min) + "," + (max == kUnbounded ? "*" : std::to_string(max)) + "}";
}

}  // namespace

SchemaTrial::SchemaTrial() : m_folder(MakeFolder()) {}
SchemaTrial::~SchemaTrial() { std::filesystem::remove_all(m_folder); }

SchemaTrial& SchemaTrial::File(const std::string& path, const std::string& content) {
  const std::filesystem::path file = std::filesystem::path(m_folder) / path;
  std::filesystem::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << content;
  return *this;
}

SchemaTrial& SchemaTrial::Catalog(const std::string& path) {
  m_options.catalogs.push_back(m_folder + "/" + path);
  return *this;
}

const CSchemaSet& SchemaTrial::Read(const std::vector<std::string>& files) {
  std::vector<std::string> paths;
  for (const std::string& file : files) paths.push_back(m_folder + "/" + file);
  m_set = ReadSchemas(paths, m_options);
  return *m_set;
}

const CSchemaSet& SchemaTrial::ReadBody(const std::string& body) {
  File("t.xsd",
       "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' xmlns='urn:t' xmlns:t='urn:t' "
       "targetNamespace='urn:t' elementFormDefault='qualified'>" +
           body + "</xs:schema>");
  return Read({"t.xsd"});
}

std::string SchemaTrial::Tell(bool withWarnings) const {
  std::string all;
  for (const Diagnostic& diagnostic : m_set->GetDiagnostics()) {
    const bool isWarning = diagnostic.severity == Severity_Warning;
    if (isWarning && !withWarnings) continue;
    std::string text = diagnostic.ToString();
    const std::string folder = m_folder + "/";
    for (std::size_t at = text.find(folder); at != std::string::npos; at = text.find(folder)) {
      text.erase(at, folder.size());
    }
    if (!all.empty()) all += '\n';
    all += (isWarning ? "warning: " : "") + text;
  }
  return all;
}

std::string SchemaTrial::GetDiagnostics() const { return Tell(true); }
std::string SchemaTrial::GetErrors() const { return Tell(false); }

std::string SchemaTrial::GetShortPath(const std::string& path) const {
  return path.substr(0, m_folder.size() + 1) == m_folder + "/" ? path.substr(m_folder.size() + 1)
                                                               : path;
}

const ComplexType& SchemaTrial::GetComplex(const std::string& localName) const {
  const Type* const type = m_set->FindType({"urn:t", localName});
  if (type == nullptr || type->IsSimple()) throw std::runtime_error("no type " + localName);
  return *type->AsComplex();
}

const SimpleType& SchemaTrial::GetSimple(const std::string& localName) const {
  const Type* const type = m_set->FindType({"urn:t", localName});
  if (type == nullptr || !type->IsSimple()) throw std::runtime_error("no type " + localName);
  return *type->AsSimple();
}

const ElementDecl& SchemaTrial::GetElement(const std::string& localName) const {
  const ElementDecl* const element = m_set->FindElement({"urn:t", localName});
  if (element == nullptr) throw std::runtime_error("no element " + localName);
  return *element;
}

std::string ToText(const Particle* particle) {
  if (particle == nullptr) return "-";
  std::string text;
  if (particle->element != nullptr) text = particle->element->name.localName;
  if (particle->wildcard != nullptr) text = particle->wildcard->namespaceText;
  if (particle->group != nullptr) {
    const Compositor compositor = particle->group->compositor;
    const char* const separator = compositor == Compositor_Sequence ? ", "
                                  : compositor == Compositor_Choice ? " | "
                                                                    : " & ";
    for (const Particle* const p : particle->group->particles) {
      text += (text.empty() ? "" : separator) + ToText(p);
    }
    text = "(" + text + ")";
  }
  return text + ToText(particle->minOccurs, particle->maxOccurs);
}

std::string ToText(const std::vector<AttributeUse>& uses) {
  std::string text;
  for (const AttributeUse& use : uses) {
    if (!text.empty()) text += ' ';
    text += use.attribute->name.localName;
    if (use.use == UseKind_Required) text += '!';
    if (use.use == UseKind_Prohibited) text += '-';
    if (use.value.defaultValue) text += "=" + *use.value.defaultValue;
    if (use.value.fixedValue) text += ":=" + *use.value.fixedValue;
  }
  return text;
}

}  // namespace qztest
