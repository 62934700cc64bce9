#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/generator/schema/Component.h"
#include "tools/generator/schema/SimpleType.h"
#include "tools/generator/schema/Wildcard.h"

// The components of XML Schema 1.0 part 1 but for simple types: what a schema says, resolved.

namespace qzxml::generator {

struct ComplexType;
struct IdentityConstraint;
struct ModelGroup;

// The default or fixed value of an element or attribute; at most one of them.
struct ValueConstraint {
  std::optional<std::string> defaultValue;  // behind the white space rule of the type
  std::optional<std::string> fixedValue;
  NamespaceBindings namespaces;  // for values of QName and NOTATION, else empty

  bool IsEmpty() const { return !defaultValue && !fixedValue; }
};

struct Notation : Component {
  Notation() : Component(ComponentKind_Notation) {}

  std::string publicId;
  std::string systemId;
};

// ---- Attributes ----

struct AttributeDecl : Component {
  AttributeDecl() : Component(ComponentKind_Attribute) {}

  // name.namespaceUri has form and attributeFormDefault regarded.
  const SimpleType* type = nullptr;  // never null; anySimpleType where none is named
  ValueConstraint value;             // of a global one; a local one has it at its use
};

enum UseKind { UseKind_Optional, UseKind_Required, UseKind_Prohibited };

// An attribute in a complex type or in an attribute group.
struct AttributeUse {
  UseKind use = UseKind_Optional;
  const AttributeDecl* attribute = nullptr;
  bool isReference = false;   // written with ref
  ValueConstraint value;      // its own, else that of the global declaration
  std::string documentation;  // its own, else that of the declaration
  Location location;
};

// A named attribute group. Complex types have its content merged into theirs.
struct AttributeGroup : Component {
  AttributeGroup() : Component(ComponentKind_AttributeGroup) {}

  std::vector<AttributeUse> uses;      // those of groups that it names included; no prohibited ones
  const Wildcard* wildcard = nullptr;  // the intersection, as for complex types; null for none
};

// ---- Elements ----

struct ElementDecl : Component {
  ElementDecl() : Component(ComponentKind_Element) {}

  // name.namespaceUri has form and elementFormDefault regarded.
  const Type* type = nullptr;   // never null; anyType, or that of the head, where none is named
  bool hasNoNamedType = false;  // neither a type attribute nor a type of its own
  bool isNillable = false;
  bool isAbstract = false;
  ValueConstraint value;
  unsigned blockSet = Derivation_None;  // with blockDefault regarded; Substitution is of elements
  unsigned finalSet = Derivation_None;
  const ElementDecl* head = nullptr;  // of the substitution group that it names
  // Of a global one: all others that may stand in its place, abstract ones left out; what is
  // blocked by this one or by its type is regarded. In reading order.
  std::vector<const ElementDecl*> substitutes;
  std::vector<const IdentityConstraint*> identityConstraints;
};

// ---- Content ----

inline constexpr std::int64_t kUnbounded = -1;

// Exactly one of element, group and wildcard is set.
struct Particle {
  std::int64_t minOccurs = 1;            // numbers beyond 10^18 are 10^18
  std::int64_t maxOccurs = 1;            // or kUnbounded
  const ElementDecl* element = nullptr;  // local, or global by ref
  const ModelGroup* group = nullptr;     // in place, or that of a named group by ref
  const Wildcard* wildcard = nullptr;
  bool isReference = false;  // written with ref
  std::string documentation;
  Location location;

  bool IsRepeated() const { return maxOccurs == kUnbounded || maxOccurs > 1; }
};

// A named group.
struct GroupDefinition : Component {
  GroupDefinition() : Component(ComponentKind_Group) {}

  const ModelGroup* group = nullptr;
};

enum Compositor { Compositor_Sequence, Compositor_Choice, Compositor_All };

struct ModelGroup {
  Compositor compositor = Compositor_Sequence;
  std::vector<const Particle*> particles;       // none with maxOccurs 0
  const GroupDefinition* definition = nullptr;  // the named group whose content this is; or null
  std::string documentation;
  Location location;
};

// ---- Complex types ----

enum ContentKind {
  ContentKind_Empty,
  ContentKind_Simple,
  ContentKind_ElementOnly,
  ContentKind_Mixed
};

enum DerivationMethod { DerivationMethod_Restriction, DerivationMethod_Extension };

struct ComplexType : Type {
  ComplexType() : Type(ComponentKind_ComplexType) {}

  // anyType where none is named; null for anyType itself.
  const Type* base = nullptr;
  DerivationMethod method = DerivationMethod_Restriction;
  bool isAbstract = false;
  unsigned blockSet = Derivation_None;  // with blockDefault regarded

  ContentKind content = ContentKind_Empty;
  // Of Simple content. With facets or a type in the restriction it is an anonymous type of its own.
  const SimpleType* simpleContent = nullptr;
  // What the type itself writes: behind the base's content in an extension, all of it in a
  // restriction. Null for nothing.
  const Particle* ownParticle = nullptr;
  // The whole content: for an extension a sequence of the base's and the own one, where both have
  // some. Null unless ElementOnly or Mixed; may be null for Mixed, which then is text alone.
  const Particle* particle = nullptr;

  // What the type itself writes, groups resolved, prohibited ones included, in their order.
  std::vector<AttributeUse> ownAttributes;
  // The whole: inherited ones first in the base's order, those replaced by a restriction in their
  // places, prohibited ones left out.
  std::vector<AttributeUse> attributes;
  const Wildcard* attributeWildcard = nullptr;  // the whole: intersected and united; null for none

  std::vector<const ComplexType*> derivedTypes;  // directly from this one, in reading order

  bool IsAnyType() const { return base == nullptr; }
};

// Whether type is other or derives from it, by steps of any kind that are none of blockedSet.
bool IsDerivedFrom(const Type* type, const Type* other, unsigned blockedSet = Derivation_None);

// ---- Identity constraints: kept to be told of ----

enum IdentityKind { IdentityKind_Unique, IdentityKind_Key, IdentityKind_Keyref };

struct IdentityConstraint : Component {
  IdentityConstraint() : Component(ComponentKind_IdentityConstraint) {}

  IdentityKind identityKind = IdentityKind_Unique;
  std::string selector;
  std::vector<std::string> fields;
  const IdentityConstraint* refer = nullptr;  // of a keyref
};

}  // namespace qzxml::generator
