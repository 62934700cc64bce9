#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tools/generator/schema/SchemaSet.h"
#include "tools/generator/schema/SchemaTree.h"
#include "tools/generator/schema/XmlCatalog.h"

namespace qzxml::generator {

class CDiagnostics;

// An xs:redefine and the schema that it changes.
struct Redefinition {
  const SchemaNode* node = nullptr;
  SchemaSource* redefined = nullptr;
};

// Finds and reads all the files of a set of schemas.
//
// A file is read once for each target namespace that it serves: its own, or, if it has none, that
// of each schema that includes it. Circles end there. Files that no location leads to are told of
// as warnings: what is missed from them is an error of the reference to it.
// Source: XML Schema 1.0 part 1, sections 4.2 and 4.3.
class CSchemaLoader {
 public:
  // What is read goes to documents and sources, which must outlive this.
  CSchemaLoader(std::deque<SchemaDocument>& documents, std::deque<SchemaSource>& sources,
                CDiagnostics& diagnostics);
  CSchemaLoader(const CSchemaLoader&) = delete;
  CSchemaLoader& operator=(const CSchemaLoader&) = delete;

  void Load(const std::vector<std::string>& files, const ReadOptions& options);

  // Sound ones, each behind those that it brought in.
  const std::vector<SchemaSource*>& GetSources() const { return m_ordered; }
  const std::vector<Redefinition>& GetRedefinitions() const { return m_redefinitions; }
  // Catalogs and schemas that were opened.
  const std::vector<std::string>& GetFiles() const { return m_files; }

 private:
  enum Role { Role_Given, Role_Include, Role_Redefine, Role_Import };

  // The namespace that is wanted: of the one who includes, or that is imported.
  SchemaSource* LoadFile(const std::string& file, Role role, const std::string& wanted,
                         const SchemaNode* from);
  bool CheckRoot(const SchemaSource& source, Role role, const std::string& wanted,
                 const SchemaNode* from);
  void LoadReferences(SchemaSource& source);
  void LoadInclude(SchemaSource& source, const SchemaNode& node);
  void LoadImport(SchemaSource& source, const SchemaNode& node);
  // The file of a location, or of a namespace, or an empty text.
  std::string Locate(const SchemaSource& source, const SchemaNode& node,
                     const std::string& namespaceUri) const;
  void AddXmlNamespace();

  std::deque<SchemaDocument>& m_documents;
  std::deque<SchemaSource>& m_sources;
  CDiagnostics& m_diagnostics;
  CXmlCatalog m_catalog;
  std::function<void(const std::string& work)> m_progress;
  std::vector<SchemaSource*> m_ordered;
  std::vector<Redefinition> m_redefinitions;
  std::vector<std::string> m_files;
  // By canonical path and target namespace; null for a file that is no schema for it.
  std::map<std::pair<std::string, std::string>, SchemaSource*> m_loaded;
  int m_depth = 0;
};

}  // namespace qzxml::generator
