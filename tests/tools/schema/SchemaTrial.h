#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tools/generator/schema/SchemaSet.h"

namespace qztest {

// Files in a folder of their own, which goes with this, and what comes of reading them.
class SchemaTrial {
 public:
  SchemaTrial();
  SchemaTrial(const SchemaTrial&) = delete;
  SchemaTrial& operator=(const SchemaTrial&) = delete;
  ~SchemaTrial();

  // A path like "a.xsd" or "sub/b.xsd".
  SchemaTrial& File(const std::string& path, const std::string& content);
  SchemaTrial& Catalog(const std::string& path);

  // Reads the files; a later call begins anew.
  const qzxml::generator::CSchemaSet& Read(const std::vector<std::string>& files);
  // Reads one schema, "t.xsd": the text within xs:schema with the target namespace "urn:t", which
  // is the default namespace and t: too, and with qualified elements.
  const qzxml::generator::CSchemaSet& ReadBody(const std::string& body);

  // What was told, a line for each, with "warning: " ahead of warnings and without the folder.
  std::string GetDiagnostics() const;
  std::string GetErrors() const;
  // The path as it was given to File.
  std::string GetShortPath(const std::string& path) const;

  const qzxml::generator::ComplexType& GetComplex(const std::string& localName) const;
  const qzxml::generator::SimpleType& GetSimple(const std::string& localName) const;
  const qzxml::generator::ElementDecl& GetElement(const std::string& localName) const;

 private:
  std::string Tell(bool withWarnings) const;

  std::string m_folder;
  qzxml::generator::ReadOptions m_options;
  std::unique_ptr<qzxml::generator::CSchemaSet> m_set;
};

// "(a?, b{2,*}, ##other)" for sequences, "|" for choices and "&" for all.
std::string ToText(const qzxml::generator::Particle* particle);
// "a b! c=1": optional, required, with a default value; "c:=1" with a fixed one; "d-" prohibited.
std::string ToText(const std::vector<qzxml::generator::AttributeUse>& uses);

}  // namespace qztest
