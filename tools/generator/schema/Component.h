#pragma once

#include <string>

#include "tools/generator/schema/SchemaNames.h"

namespace qzxml::generator {

enum ComponentKind {
  ComponentKind_SimpleType,
  ComponentKind_ComplexType,
  ComponentKind_Element,
  ComponentKind_Attribute,
  ComponentKind_Group,           // xs:group with a name
  ComponentKind_AttributeGroup,  // xs:attributeGroup with a name
  ComponentKind_Notation,
  ComponentKind_IdentityConstraint
};

// What all components of a schema have. A CSchemaSet owns them all; pointers among them are never
// owned, are resolved when reading has ended without an error, and live as long as the set.
struct Component {
  explicit Component(ComponentKind componentKind) : kind(componentKind) {}
  Component(const Component&) = delete;
  Component& operator=(const Component&) = delete;
  virtual ~Component() = default;

  const ComponentKind kind;
  QName name;                // of an anonymous type: empty but for the namespace of its schema
  bool isGlobal = false;     // a child of xs:schema or xs:redefine, or built in
  bool isRedefined = false;  // xs:redefine put another in its place, whose base or part it may be
  const Component* context = nullptr;  // the component that a local one stands in; else null
  std::string documentation;  // the texts of xs:documentation: trimmed, one empty line between two
  Location location;
};

// Derivations, for the sets of block and final.
enum Derivation : unsigned {
  Derivation_None = 0,
  Derivation_Extension = 1,
  Derivation_Restriction = 2,
  Derivation_Substitution = 4,
  Derivation_List = 8,
  Derivation_Union = 16
};

struct ComplexType;
struct SimpleType;

// A SimpleType or a ComplexType.
struct Type : Component {
  using Component::Component;

  unsigned finalSet = Derivation_None;  // of Derivation, with finalDefault regarded

  bool IsSimple() const { return kind == ComponentKind_SimpleType; }
  const SimpleType* AsSimple() const;    // null for a complex one
  const ComplexType* AsComplex() const;  // null for a simple one
};

}  // namespace qzxml::generator
