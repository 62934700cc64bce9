#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/generator/schema/SchemaNames.h"

namespace qzxml::generator {

enum ProcessContents { ProcessContents_Strict, ProcessContents_Lax, ProcessContents_Skip };

// A set of namespaces. Source: XML Schema 1.0 part 1, section 3.10.
struct NamespaceConstraint {
  enum Kind {
    Kind_Any,
    Kind_Not,  // every one but namespaces[0], and but no namespace
    Kind_List  // the ones of namespaces
  };

  Kind kind = Kind_Any;
  std::vector<std::string> namespaces;  // "" is no namespace; no duplicates

  bool Allows(const std::string& namespaceUri) const;
  bool IsSubsetOf(const NamespaceConstraint& other) const;
  // By the rules of section 3.10.6; none where these say that it can not be expressed.
  static std::optional<NamespaceConstraint> Unite(const NamespaceConstraint& a,
                                                  const NamespaceConstraint& b);
  static std::optional<NamespaceConstraint> Intersect(const NamespaceConstraint& a,
                                                      const NamespaceConstraint& b);
  // As the namespace attribute writes it within a schema of that target namespace: "##any",
  // "##other", or names and "##local", "##targetNamespace" with blanks between. A Not of another
  // namespace than the target one, which no attribute can write, is "##other" too.
  std::string ToText(const std::string& targetNamespace) const;
};

// xs:any or xs:anyAttribute.
struct Wildcard {
  NamespaceConstraint constraint;
  ProcessContents processContents = ProcessContents_Strict;
  std::string namespaceText;  // as written, "##any" where nothing is; of a merged one, as by ToText
  std::string targetNamespace;  // of the schema that it stands in
  std::string documentation;
  Location location;
};

}  // namespace qzxml::generator
