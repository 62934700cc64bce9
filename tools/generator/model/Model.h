#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tools/generator/schema/SchemaSet.h"

// What is generated for a schema: C++ namespaces with classes, enumerations and simple types, every
// name decided and every construct of the schema brought into a form that qzxml/binding knows. The
// emitter only writes down what stands here.
//
// How content becomes members:
// - An element particle becomes a member: once, optional, or a collection.
// - A sequence in a sequence, or a choice in a choice, that stands once and adds nothing is
//   dissolved into the one around it, and so is a group around a single member. Every other nested
//   group, and one that is repeated, becomes a class without a tag (isGroup) and a member of form
//   Group. A repeated choice is thus a collection of objects each of which has one member selected,
//   so that the order survives.
// - A reference to the head of a substitution group that has substitutes becomes such a choice
//   between the head, unless it is abstract, and all substitutes.
// - What a derived class adds stands behind what its base class has; where the base's content is a
//   choice or an all and is extended by elements, the base has that content as a group member.
// - A restriction keeps the base's members; those that it tightens stand in restricted. Where its
//   structure cannot be laid over the base's, the base's content is taken as it is and a warning
//   says so.
// - Simple types that no kind of the library holds exactly are bound as text with rules.
namespace qzxml::generator {

struct BoundClass;
struct BoundNamespace;

// The step from the base of a type to it, as the sets of block name it.
inline Derivation GetStep(const ComplexType& type) {
  return type.method == DerivationMethod_Extension ? Derivation_Extension : Derivation_Restriction;
}

// An enumeration of C++: a simple type that is a restriction of a text type by enumeration.
struct BoundEnum {
  struct Enumerator {
    std::string name;  // whole: "Unit_kg"
    std::string text;  // in the document
    std::string documentation;
  };

  const BoundNamespace* where = nullptr;
  std::string name;  // "Unit"
  std::string documentation;
  const SimpleType* type = nullptr;
  std::string whitespace;  // "WhitespaceRule_Collapse"
  std::vector<Enumerator> enumerators;
};

// A simple type as C++ has it.
struct BoundSimpleType {
  const BoundNamespace* where = nullptr;  // null for a built-in type: the library's constant
  std::string constant;                   // of CSimpleTypeInfo: "kLatitudeType"
  const SimpleType* type = nullptr;
  const BoundEnum* enumeration = nullptr;  // null unless bound as one
  std::string kind;                        // "ItemType_decimal"; of text with rules ItemType_string
  std::string cppType;                     // "CDecimal", "std::string", "std::int32_t"; or the enum
  bool isPassedByValue = false;            // small: numbers, bool, enumerations
  std::string whitespace;                  // "WhitespaceRule_Collapse"
  std::string documentation;
  // Facets that CSimpleTypeInfo::CFacets keeps exactly, in the order of their calls: name of the
  // function ("MinInclusive") and argument as C++ text.
  std::vector<std::pair<std::string, std::string>> facets;
  // Everything else: the type's rules have to be written down (CTextRules), from type. A built-in
  // type that is bound in another kind than its own, as a restriction may need it, has where set.
  bool needsRules = false;
};

// The types that an xsi:type may name in an element of simple type: its own, those that are validly
// derived from it, and the built-in members of a union. What XML Schema itself derives from
// built-in types is left out, as the library knows it.
struct BoundSimpleFamily {
  struct Named {
    QName name;
    const BoundSimpleType* type = nullptr;
  };

  const BoundNamespace* where = nullptr;
  const BoundSimpleType* declared = nullptr;
  std::string types;         // of CSimpleTypeFamily: "kSku_Types"
  std::string named;         // the array of CNamedSimpleType: "kSku_Named"
  std::vector<Named> names;  // its own first, if it has one there
};

enum class BoundForm {
  Attribute,
  AnyAttribute,
  Text,
  Value,     // an element with a simple type
  Object,    // an element with a class
  Group,     // an object of a class without a tag
  Untyped,   // an element with xs:anyType
  Wildcard,  // xs:any
};

struct BoundMember {
  BoundForm form = BoundForm::Value;
  std::string name;          // C++ stem, unique in the class and its bases: "ShipTo", "Items"
  std::string variable;      // "m_shipTo"
  std::string xmlName;       // of an element or attribute; of a group its name for messages
  std::string xmlNamespace;  // of a wildcard, the target namespace
  // A member of a choice that is no collection has 0 and 1. 0 and 0, in a restriction only: the
  // base's member may not stand in this class.
  std::int32_t minOccurs = 1;
  std::int32_t maxOccurs = 1;                 // -1 unbounded
  std::optional<bool> declaredAsCollection;   // in a restriction: what the base's property is
  const BoundSimpleType* simple = nullptr;    // of Attribute, Text, Value
  const BoundSimpleFamily* family = nullptr;  // of Text, Value: null where no name is to be known
  bool isOwnTypeOnly = false;                 // xsi:type may name no type that is derived from it
  const BoundClass* objectClass = nullptr;    // of Object and Group
  bool isByType = false;                      // Object: xsi:type may name a derived class
  unsigned blocked = Derivation_None;         // by which steps it may not derive, with isByType
  std::optional<std::string> defaultValue;
  bool isFixed = false;  // defaultValue is the fixed value
  bool isNillable = false;
  bool requiresContent = false;  // Group
  std::string wildcard;          // of AnyAttribute and Wildcard: the namespace attribute's text
  std::string documentation;
  const ElementDecl* element = nullptr;
  const AttributeUse* attribute = nullptr;

  bool IsCollection() const {
    if (declaredAsCollection) return *declaredAsCollection;
    return form == BoundForm::AnyAttribute || form == BoundForm::Wildcard ||
           (form != BoundForm::Attribute && form != BoundForm::Text && maxOccurs != 1);
  }
  bool IsMandatory() const { return minOccurs > 0; }
  bool IsProhibited() const { return maxOccurs == 0; }
};

// A member of a base class as a class derived from it has it.
struct BoundRestriction {
  std::int32_t propertyIndex = 0;
  const BoundClass* owner = nullptr;  // the base class that has the property
  // The property as it is declared there; its C++ types, those of a collection too, are these.
  const BoundMember* declared = nullptr;
  BoundMember member;  // as this class has it: name and property are those of declared
};

enum class BoundGroupType { Sequence, Choice, All };

struct BoundClass {
  const BoundNamespace* where = nullptr;
  const BoundClass* outer = nullptr;  // a group of a type's content is nested in the type's class
  std::string name;                   // "CPurchaseOrder"; of a nested one "CItems"
  std::string fileStem;  // "PurchaseOrder": the header that declares it, with its nested ones
  std::string documentation;
  const Type* type = nullptr;  // a complex type; a simple one for an element of simple type that is
                               // a root or nillable; null for a group
  std::string typeName;        // CClassTraits
  std::string elementName;     // the tag of a new object
  bool isGroup = false;
  BoundGroupType groupType = BoundGroupType::Sequence;
  bool isAbstract = false;
  bool isMixed = false;
  bool isNillable = false;  // some element of this type is
  bool isDerived = false;   // takes part in derivation: derived, or derived from
  bool requiresContent = false;
  const BoundClass* base = nullptr;
  std::int32_t basePropertyCount = 0;
  std::vector<BoundMember> members;  // attributes first, then children in their order, then text
  std::vector<BoundRestriction> restricted;
  std::vector<const BoundClass*> nested;   // groups, those in another ahead of it
  std::vector<const BoundClass*> derived;  // every class derived from this one, at any depth;
                                           // those of anonymous types have no typeName

  // Those of derived that are derived by none of the blocked steps, on the whole way.
  std::vector<const BoundClass*> GetDerived(unsigned blocked) const;

  // "orders::CPurchaseOrder", "orders::CPurchaseOrder::CItems"
  std::string GetQualifiedName() const;
};

// A global element that may be the root of a document.
struct BoundRoot {
  std::string name;
  std::string namespaceUri;
  const BoundClass* objectClass = nullptr;
  bool isByType = false;
  std::string documentation;
  unsigned blocked = Derivation_None;  // as in BoundMember
};

// What goes into one C++ namespace: one target namespace of the schemas.
struct BoundNamespace {
  std::string cppName;  // "orders", "acme::orders"
  std::string uri;
  std::string fileStem;  // "orders": of the headers for the whole namespace, and its folder
  std::string constant = "kNamespace";
  std::vector<std::unique_ptr<BoundEnum>> enums;
  std::vector<std::unique_ptr<BoundSimpleType>> simpleTypes;
  std::vector<std::unique_ptr<BoundSimpleFamily>> families;
  // Bases in front of derived ones; groups too, nested ones behind their outer class.
  std::vector<std::unique_ptr<BoundClass>> classes;
  std::vector<BoundRoot> roots;
};

struct Model {
  std::vector<std::unique_ptr<BoundNamespace>> namespaces;
  std::vector<std::unique_ptr<BoundSimpleType>> builtIns;  // those in use
  std::vector<Diagnostic> diagnostics;                     // warnings of the binding

  bool HasErrors() const;
};

struct ModelOptions {
  std::string cppNamespace;                          // of the given schemas' target namespace
  std::map<std::string, std::string> cppNamespaces;  // target namespace -> C++ namespace
};

// Binds every type and root of the set. The set has no errors and outlives the model.
// Deterministic: the same schemas give the same model, and a schema that grows at its end keeps the
// names that it had. What docs/binding.md says of names is decided here.
//
// The names of accessors (Get, Set, IsSet and the like before the name of a member) meet no public
// or virtual operation of CBoundClass and its bases. They may meet its protected helpers (SetValue,
// GetObject), which generated code therefore calls with the class's name in front.
std::unique_ptr<Model> BindSchemas(const CSchemaSet& schemas, const ModelOptions& options);

}  // namespace qzxml::generator
