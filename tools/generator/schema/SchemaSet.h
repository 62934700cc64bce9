#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "qzxml/xml/XmlDocument.h"
#include "tools/generator/schema/Components.h"

namespace qzxml::generator {

class CSchemaBuilder;
struct SchemaStorage;

// One schema file in one target namespace: a file that is included by schemas of two namespaces,
// having none itself, is there twice. Lists are in the order of the file.
struct SchemaDocument {
  std::string file;             // as opened; "" for what is built in
  std::string targetNamespace;  // "" for none
  bool isGiven = false;         // named by the caller, not only included or imported
  std::vector<const SimpleType*> simpleTypes;
  std::vector<const ComplexType*> complexTypes;
  std::vector<const ElementDecl*> elements;
  std::vector<const AttributeDecl*> attributes;
  std::vector<const GroupDefinition*> groups;
  std::vector<const AttributeGroup*> attributeGroups;
  std::vector<const Notation*> notations;
  std::vector<const Type*> types;  // both kinds, in the order of the file
  std::string documentation;       // of the schema as a whole
  const QzXmlLib16::CXmlElement* root = nullptr;
};

struct TargetNamespace {
  std::string uri;
  std::string
      prefix;  // the first one that its own schemas, else those of others, bind it to; or ""
};

// The components of all schemas that were read together, resolved. Made by ReadSchemas; owns
// everything that it answers. Nothing changes it any more, so threads may share it.
//
// With errors it is for its diagnostics only: references may be null then.
class CSchemaSet {
 public:
  CSchemaSet();
  CSchemaSet(const CSchemaSet&) = delete;
  CSchemaSet& operator=(const CSchemaSet&) = delete;
  ~CSchemaSet();

  // In reading order: a document stands behind those that it includes and imports, but for circles.
  // What is built in is not among them.
  const std::vector<const SchemaDocument*>& GetDocuments() const { return m_documents; }
  // In the order of the first document of each.
  const std::vector<TargetNamespace>& GetTargetNamespaces() const { return m_targetNamespaces; }
  // Every file that was opened, the catalog's included, once each, as opened.
  const std::vector<std::string>& GetFiles() const { return m_files; }

  // ---- Global components; null when there is none of that name ----

  const Type* FindType(const QName& name) const;  // built-in ones too
  const ElementDecl* FindElement(const QName& name) const;
  const AttributeDecl* FindAttribute(const QName& name) const;
  const GroupDefinition* FindGroup(const QName& name) const;
  const AttributeGroup* FindAttributeGroup(const QName& name) const;
  const Notation* FindNotation(const QName& name) const;

  const SimpleType* GetBuiltIn(BuiltIn type) const;  // not of None
  const ComplexType* GetAnyType() const { return m_pAnyType; }

  // Every complex and simple type that schemas define, anonymous ones too, in reading order: a type
  // that holds another stands ahead of it.
  const std::vector<const Type*>& GetAllTypes() const { return m_allTypes; }

  // ---- What was found ----

  // In the order of the documents, as far as it goes.
  const std::vector<Diagnostic>& GetDiagnostics() const { return m_diagnostics; }
  bool HasErrors() const;

 private:
  friend class CSchemaBuilder;

  std::unique_ptr<SchemaStorage> m_pStorage;
  std::vector<const SchemaDocument*> m_documents;
  std::vector<TargetNamespace> m_targetNamespaces;
  std::vector<std::string> m_files;
  std::vector<const Type*> m_allTypes;
  std::map<QName, const Type*> m_types;
  std::map<QName, const ElementDecl*> m_elements;
  std::map<QName, const AttributeDecl*> m_attributes;
  std::map<QName, const GroupDefinition*> m_groups;
  std::map<QName, const AttributeGroup*> m_attributeGroups;
  std::map<QName, const Notation*> m_notations;
  const ComplexType* m_pAnyType = nullptr;
  std::vector<Diagnostic> m_diagnostics;
};

struct ReadOptions {
  std::vector<std::string> catalogs;  // OASIS XML catalogs, asked in their order
  // Told of each file, "reading order.xsd", before it is read; may be empty.
  std::function<void(const std::string& work)> progress;
};

// Reads schema files, with all that they include, import and redefine, and resolves them. No
// network is ever asked: a location is a file, or is mapped to one by a catalog.
// What is wrong is told by the diagnostics; nothing is thrown for it but std::bad_alloc.
std::unique_ptr<CSchemaSet> ReadSchemas(const std::vector<std::string>& files,
                                        const ReadOptions& options = {});

}  // namespace qzxml::generator
