#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tools/generator/model/Model.h"

// A model as text, to be compared whole, and schemas that stand in the test.
namespace qzxml::generator::tests {

// A line for each thing, in their order. Of a namespace "== cppName <uri> fileStem". Of an
// enumeration "enum Unit Collapse: Unit_kg=kg, Unit_g=g"; of a simple type "simple kSku: string
// Collapse rules"; of a class "class CItem <Item> item: sequence" with what else holds for it, and
// its members further in: "Price: value price decimal [1]". Occurrences are [1], [?] for none or
// one, [*], [+], [2-5]; a collection has "col" with them where it cannot be seen.
std::string Describe(const Model& model);
// The class alone, by its name ("COrder", "COrder::CKeyAndValue"); "" without one.
std::string DescribeClass(const Model& model, const std::string& name);
// The warnings and errors, a line each, "warning: path: message".
std::string DescribeDiagnostics(const Model& model);

const BoundClass* FindClass(const Model& model, const std::string& name);

// Schema files of one test, in a folder of their own that goes with the object.
class CSchemaTrial {
 public:
  CSchemaTrial();
  CSchemaTrial(const CSchemaTrial&) = delete;
  CSchemaTrial& operator=(const CSchemaTrial&) = delete;
  ~CSchemaTrial();

  // A file; the first one is the schema that is given.
  void Add(const std::string& name, const std::string& text);
  // What stands in xs:schema, of the target namespace "urn:t" with the prefix t, qualified
  // elements.
  void AddSchema(const std::string& content);
  // Reads and binds. A schema with errors fails the test that calls.
  const Model& Bind(const ModelOptions& options = {"t", {}});

 private:
  std::string m_folder;
  std::vector<std::string> m_files;
  std::unique_ptr<CSchemaSet> m_schemas;
  std::unique_ptr<Model> m_model;
};

// A schema with that content, read and bound.
std::string DescribeSchema(const std::string& content);
std::string DescribeClassOf(const std::string& content, const std::string& name);

}  // namespace qzxml::generator::tests
