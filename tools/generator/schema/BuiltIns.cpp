#include "tools/generator/schema/BuiltIns.h"

#include <iterator>

namespace qzxml::generator {

namespace {

struct Row {
  const char* name;
  BuiltIn base;
  BuiltIn item = BuiltIn_None;  // of a list
  const char* whiteSpace = "";  // where it differs from the base's
  const char* minInclusive = "";
  const char* maxInclusive = "";
};

// In the order of BuiltIn. Patterns that the types have are not here: what a value of the type is
// decides the type itself.
const Row kRows[] = {
    {"", BuiltIn_None},
    {"anySimpleType", BuiltIn_None},
    {"string", BuiltIn_anySimpleType, BuiltIn_None, "preserve"},
    {"boolean", BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {"decimal", BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {"float", BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {"double", BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {"duration", BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {"dateTime", BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {"time", BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {"date", BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {"gYearMonth", BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {"gYear", BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {"gMonthDay", BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {"gDay", BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {"gMonth", BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {"hexBinary", BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {"base64Binary", BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {"anyURI", BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {"QName", BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {"NOTATION", BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {"normalizedString", BuiltIn_string, BuiltIn_None, "replace"},
    {"token", BuiltIn_normalizedString, BuiltIn_None, "collapse"},
    {"language", BuiltIn_token},
    {"NMTOKEN", BuiltIn_token},
    {"NMTOKENS", BuiltIn_anySimpleType, BuiltIn_NMTOKEN, "collapse"},
    {"Name", BuiltIn_token},
    {"NCName", BuiltIn_Name},
    {"ID", BuiltIn_NCName},
    {"IDREF", BuiltIn_NCName},
    {"IDREFS", BuiltIn_anySimpleType, BuiltIn_IDREF, "collapse"},
    {"ENTITY", BuiltIn_NCName},
    {"ENTITIES", BuiltIn_anySimpleType, BuiltIn_ENTITY, "collapse"},
    {"integer", BuiltIn_decimal},
    {"nonPositiveInteger", BuiltIn_integer, BuiltIn_None, "", "", "0"},
    {"negativeInteger", BuiltIn_nonPositiveInteger, BuiltIn_None, "", "", "-1"},
    {"long", BuiltIn_integer, BuiltIn_None, "", "-9223372036854775808", "9223372036854775807"},
    {"int", BuiltIn_long, BuiltIn_None, "", "-2147483648", "2147483647"},
    {"short", BuiltIn_int, BuiltIn_None, "", "-32768", "32767"},
    {"byte", BuiltIn_short, BuiltIn_None, "", "-128", "127"},
    {"nonNegativeInteger", BuiltIn_integer, BuiltIn_None, "", "0", ""},
    {"unsignedLong", BuiltIn_nonNegativeInteger, BuiltIn_None, "", "", "18446744073709551615"},
    {"unsignedInt", BuiltIn_unsignedLong, BuiltIn_None, "", "", "4294967295"},
    {"unsignedShort", BuiltIn_unsignedInt, BuiltIn_None, "", "", "65535"},
    {"unsignedByte", BuiltIn_unsignedShort, BuiltIn_None, "", "", "255"},
    {"positiveInteger", BuiltIn_nonNegativeInteger, BuiltIn_None, "", "1", ""},
};
static_assert(std::size(kRows) == BuiltIn_Count, "a row for each built-in type");

void AddFacet(SimpleType& type, FacetKind kind, const char* value, bool isFixed) {
  if (*value == '\0') return;
  Facet& facet = type.facets.single[kind].emplace();
  facet.value = value;
  facet.isFixed = isFixed;
}

void FillSimpleType(SchemaStorage& storage, BuiltIn builtIn) {
  const Row& row = kRows[builtIn];
  SimpleType& type = storage.simpleTypes.emplace_back();
  storage.builtIns[builtIn] = &type;
  type.builtIn = builtIn;
  type.name = {kSchemaNamespace, row.name};
  type.isGlobal = true;
  if (row.base == BuiltIn_None) {
    type.variety = Variety_Absent;
    return;
  }
  type.base = storage.builtIns[row.base];
  if (row.item != BuiltIn_None) {
    type.variety = Variety_List;
    type.itemType = storage.builtIns[row.item];
    AddFacet(type, FacetKind_minLength, "1", false);
  }
  const bool isText = builtIn == BuiltIn_string || type.base->GetPrimitive() == BuiltIn_string;
  AddFacet(type, FacetKind_whiteSpace, row.whiteSpace, !isText);
  AddFacet(type, FacetKind_minInclusive, row.minInclusive, false);
  AddFacet(type, FacetKind_maxInclusive, row.maxInclusive, false);
  if (builtIn == BuiltIn_integer) AddFacet(type, FacetKind_fractionDigits, "0", true);
}

// Any elements around any text, and any attributes; processed as far as they are known.
void MakeAnyType(SchemaStorage& storage) {
  Wildcard& wildcard = storage.wildcards.emplace_back();
  wildcard.processContents = ProcessContents_Lax;
  wildcard.namespaceText = "##any";
  Particle& any = storage.particles.emplace_back();
  any.minOccurs = 0;
  any.maxOccurs = kUnbounded;
  any.wildcard = &wildcard;
  ModelGroup& group = storage.modelGroups.emplace_back();
  group.particles.push_back(&any);
  Particle& particle = storage.particles.emplace_back();
  particle.group = &group;

  ComplexType& type = storage.complexTypes.emplace_back();
  type.name = {kSchemaNamespace, "anyType"};
  type.isGlobal = true;
  type.content = ContentKind_Mixed;
  type.ownParticle = &particle;
  type.particle = &particle;
  type.attributeWildcard = &wildcard;
  storage.anyType = &type;
}

}  // namespace

const char* GetBuiltInName(BuiltIn type) { return kRows[type].name; }

BuiltIn FindBuiltIn(std::string_view localName) {
  for (int i = BuiltIn_anySimpleType; i < BuiltIn_Count; ++i) {
    if (localName == kRows[i].name) return static_cast<BuiltIn>(i);
  }
  return BuiltIn_None;
}

void MakeBuiltIns(SchemaStorage& storage) {
  // The base and the item of a row stand above it.
  for (int i = BuiltIn_anySimpleType; i < BuiltIn_Count; ++i) {
    FillSimpleType(storage, static_cast<BuiltIn>(i));
  }
  MakeAnyType(storage);
}

}  // namespace qzxml::generator
