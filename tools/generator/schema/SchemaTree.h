#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "qzxml/xml/XmlDocument.h"
#include "tools/generator/schema/Component.h"

namespace qzxml::generator {

class CDiagnostics;
struct ModelGroup;
struct Particle;
struct SchemaSource;

// An element of a schema file with its names resolved, and with room for what is made of it.
//
// The tree of CXmlDocument keeps prefixes once for a document; but the values of schema attributes
// hold prefixes whose meaning depends on where they stand. So files are read without namespaces,
// and this tree resolves them, scope by scope.
struct SchemaNode {
  struct Attribute {
    QName name;
    std::string value;
  };

  QName name;
  std::vector<Attribute> attributes;  // declarations of namespaces left out
  std::vector<std::unique_ptr<SchemaNode>> children;
  std::shared_ptr<const NamespaceBindings> scope;
  std::string text;  // its own, white space included
  const SchemaNode* parent = nullptr;
  const QzXmlLib16::CXmlElement* element = nullptr;
  SchemaSource* source = nullptr;

  Component* component = nullptr;    // what was made of it, if anything; not owned
  ModelGroup* modelGroup = nullptr;  // likewise
  Particle* particle = nullptr;

  // Whether it is the element of XML Schema of that name.
  bool Is(std::string_view localName) const {
    return name.localName == localName && name.namespaceUri == kSchemaNamespace;
  }
  // The value of an attribute without namespace, or null.
  const std::string* Find(std::string_view attribute) const;
  // The same without white space at its ends; empty for none.
  std::string Get(std::string_view attribute) const;
  // "true" or "1".
  bool IsTrue(std::string_view attribute) const;
  // The first child of XML Schema of that name, or null.
  SchemaNode* FindChild(std::string_view localName) const;
  Location GetLocation() const;
};

// One file as it was read for one target namespace.
struct SchemaSource {
  SchemaDocument* document = nullptr;  // what comes of it
  std::unique_ptr<QzXmlLib16::CXmlDocument> xml;
  std::unique_ptr<SchemaNode> root;
  bool isChameleon = false;             // no target namespace of its own, taken into another one
  bool isSound = true;                  // false for one with faults of form: nothing is made of it
  std::vector<std::string> imported;    // namespaces; "" for none
  std::vector<SchemaSource*> included;  // by xs:include and xs:redefine
};

// The tree of the document's elements. Prefixes that are not declared are told of as errors, and
// their names are left without namespace.
std::unique_ptr<SchemaNode> MakeSchemaTree(SchemaSource* source, CDiagnostics& diagnostics);

// The texts of the xs:documentation of its xs:annotation: lines trimmed at their ends and indented
// as far as the least, one empty line between two texts.
std::string GetDocumentation(const SchemaNode& node);

// Without white space at either end.
std::string Trim(std::string_view text);
// The words between white space.
std::vector<std::string> SplitWords(std::string_view text);

}  // namespace qzxml::generator
