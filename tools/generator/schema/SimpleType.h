#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/generator/schema/Component.h"

namespace qzxml::generator {

// The types that XML Schema 1.0 part 2 has built in, in the order of its hierarchy.
enum BuiltIn {
  BuiltIn_None,  // a type that a schema defines
  BuiltIn_anySimpleType,
  // Primitive.
  BuiltIn_string,
  BuiltIn_boolean,
  BuiltIn_decimal,
  BuiltIn_float,
  BuiltIn_double,
  BuiltIn_duration,
  BuiltIn_dateTime,
  BuiltIn_time,
  BuiltIn_date,
  BuiltIn_gYearMonth,
  BuiltIn_gYear,
  BuiltIn_gMonthDay,
  BuiltIn_gDay,
  BuiltIn_gMonth,
  BuiltIn_hexBinary,
  BuiltIn_base64Binary,
  BuiltIn_anyURI,
  BuiltIn_QName,
  BuiltIn_NOTATION,
  // Derived from string.
  BuiltIn_normalizedString,
  BuiltIn_token,
  BuiltIn_language,
  BuiltIn_NMTOKEN,
  BuiltIn_NMTOKENS,  // a list
  BuiltIn_Name,
  BuiltIn_NCName,
  BuiltIn_ID,
  BuiltIn_IDREF,
  BuiltIn_IDREFS,  // a list
  BuiltIn_ENTITY,
  BuiltIn_ENTITIES,  // a list
  // Derived from decimal.
  BuiltIn_integer,
  BuiltIn_nonPositiveInteger,
  BuiltIn_negativeInteger,
  BuiltIn_long,
  BuiltIn_int,
  BuiltIn_short,
  BuiltIn_byte,
  BuiltIn_nonNegativeInteger,
  BuiltIn_unsignedLong,
  BuiltIn_unsignedInt,
  BuiltIn_unsignedShort,
  BuiltIn_unsignedByte,
  BuiltIn_positiveInteger,
  BuiltIn_Count
};

// The local name of a built-in type, "decimal"; "" for None.
const char* GetBuiltInName(BuiltIn type);
// BuiltIn_None for a name that is none of them.
BuiltIn FindBuiltIn(std::string_view localName);

enum Variety {
  Variety_Absent,  // of anySimpleType only
  Variety_Atomic,
  Variety_List,
  Variety_Union
};

// Facets with one value for each step; patterns and enumerations are lists of their own.
enum FacetKind {
  FacetKind_length,
  FacetKind_minLength,
  FacetKind_maxLength,
  FacetKind_whiteSpace,
  FacetKind_minInclusive,
  FacetKind_minExclusive,
  FacetKind_maxInclusive,
  FacetKind_maxExclusive,
  FacetKind_totalDigits,
  FacetKind_fractionDigits,
  FacetKind_Count
};

const char* GetFacetName(FacetKind kind);  // "minLength"

enum WhiteSpace { WhiteSpace_Preserve, WhiteSpace_Replace, WhiteSpace_Collapse };

struct Facet {
  std::string value;  // white space at its ends is gone
  bool isFixed = false;
  std::string documentation;
  Location location;
};

struct Pattern {
  std::string text;  // an XSD regular expression, as written
  std::string documentation;
  Location location;
};

struct Enumeration {
  std::string text;  // behind the white space rule of the type
  std::string documentation;
  NamespaceBindings namespaces;  // of values of QName and NOTATION, else empty
  Location location;
};

// The facets of one derivation step.
struct FacetStep {
  std::vector<Pattern> patterns;  // alternatives
  std::vector<Enumeration> enumerations;
  std::array<std::optional<Facet>, FacetKind_Count> single;

  const Facet* Find(FacetKind kind) const { return single[kind] ? &*single[kind] : nullptr; }
  bool IsEmpty() const;
};

// A simple type definition. Source: XML Schema 1.0 part 1, section 3.14, and part 2, section 4.
//
// A type that a schema defines is one step: a restriction of base by the facets, or a list of
// itemType, or a union of memberTypes, both of which have anySimpleType as base and no facets. The
// restriction of a list or union has its base's variety, and answers its item type and members.
// The Get... functions see the whole chain down to the built-in type.
struct SimpleType : Type {
  SimpleType() : Type(ComponentKind_SimpleType) {}

  BuiltIn builtIn = BuiltIn_None;  // what this very type is
  Variety variety = Variety_Atomic;
  const SimpleType* base = nullptr;            // null for anySimpleType only
  const SimpleType* itemType = nullptr;        // of every list, restricted ones too
  std::vector<const SimpleType*> memberTypes;  // of every union, in their order; may be unions
  FacetStep facets;                            // of this step; built-in types have theirs here too

  // The nearest built-in type of the chain, this one included: BuiltIn_int for a restriction of a
  // restriction of xs:int, BuiltIn_IDREFS for one of xs:IDREFS; BuiltIn_anySimpleType for lists
  // and unions that a schema defines.
  BuiltIn GetNearestBuiltIn() const;
  // The primitive type of an atomic one, BuiltIn_decimal for xs:int; else BuiltIn_None.
  BuiltIn GetPrimitive() const;
  // Whether this is the other type or restricts it in any number of steps.
  bool IsDerivedFrom(const SimpleType* other) const;

  // ---- Facets in force ----

  // The nearest step that has the facet; by the rules of restriction it is the tightest one. Null
  // for none.
  const Facet* FindFacet(FacetKind kind) const;
  // The nearest lower and upper bound, inclusive or exclusive; null for none.
  struct Bound {
    const Facet* facet = nullptr;
    bool isExclusive = false;
  };
  Bound FindLowerBound() const;
  Bound FindUpperBound() const;
  // The patterns of each step that has some, from the built-in type on: a value matches one of
  // each.
  std::vector<const std::vector<Pattern>*> GetPatternSteps() const;
  // The values of the nearest step that has some; null for no such facet.
  const std::vector<Enumeration>* FindEnumerations() const;
  // Lists collapse, anySimpleType preserves. In a union the rule of the member that takes the text
  // holds: it collapses when all of them do, and otherwise preserves until the member is known.
  WhiteSpace GetWhiteSpace() const;
};

}  // namespace qzxml::generator
