#include "tools/generator/schema/BuiltIns.h"

#include <iterator>

namespace qzxml::generator {

namespace {

struct Row {
  BuiltIn type;
  QzXmlLib16::XsdType xsdType;
  const char* name;
  BuiltIn base;
  BuiltIn item = BuiltIn_None;  // of a list
  const char* whiteSpace = "";  // where it differs from the base's
  const char* minInclusive = "";
  const char* maxInclusive = "";
};

// In the order of BuiltIn. Patterns that the types have are not here: what a value of the type is
// decides the type itself.
#define QZXML_BUILT_IN(name) BuiltIn_##name, QzXmlLib16::XsdType_##name, #name
constexpr Row kRows[] = {
    {BuiltIn_None, QzXmlLib16::XsdType_anySimpleType, "", BuiltIn_None},
    {QZXML_BUILT_IN(anySimpleType), BuiltIn_None},
    {QZXML_BUILT_IN(string), BuiltIn_anySimpleType, BuiltIn_None, "preserve"},
    {QZXML_BUILT_IN(boolean), BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {QZXML_BUILT_IN(decimal), BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {QZXML_BUILT_IN(float), BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {QZXML_BUILT_IN(double), BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {QZXML_BUILT_IN(duration), BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {QZXML_BUILT_IN(dateTime), BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {QZXML_BUILT_IN(time), BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {QZXML_BUILT_IN(date), BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {QZXML_BUILT_IN(gYearMonth), BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {QZXML_BUILT_IN(gYear), BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {QZXML_BUILT_IN(gMonthDay), BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {QZXML_BUILT_IN(gDay), BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {QZXML_BUILT_IN(gMonth), BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {QZXML_BUILT_IN(hexBinary), BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {QZXML_BUILT_IN(base64Binary), BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {QZXML_BUILT_IN(anyURI), BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {QZXML_BUILT_IN(QName), BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {QZXML_BUILT_IN(NOTATION), BuiltIn_anySimpleType, BuiltIn_None, "collapse"},
    {QZXML_BUILT_IN(normalizedString), BuiltIn_string, BuiltIn_None, "replace"},
    {QZXML_BUILT_IN(token), BuiltIn_normalizedString, BuiltIn_None, "collapse"},
    {QZXML_BUILT_IN(language), BuiltIn_token},
    {QZXML_BUILT_IN(NMTOKEN), BuiltIn_token},
    {QZXML_BUILT_IN(NMTOKENS), BuiltIn_anySimpleType, BuiltIn_NMTOKEN, "collapse"},
    {QZXML_BUILT_IN(Name), BuiltIn_token},
    {QZXML_BUILT_IN(NCName), BuiltIn_Name},
    {QZXML_BUILT_IN(ID), BuiltIn_NCName},
    {QZXML_BUILT_IN(IDREF), BuiltIn_NCName},
    {QZXML_BUILT_IN(IDREFS), BuiltIn_anySimpleType, BuiltIn_IDREF, "collapse"},
    {QZXML_BUILT_IN(ENTITY), BuiltIn_NCName},
    {QZXML_BUILT_IN(ENTITIES), BuiltIn_anySimpleType, BuiltIn_ENTITY, "collapse"},
    {QZXML_BUILT_IN(integer), BuiltIn_decimal},
    {QZXML_BUILT_IN(nonPositiveInteger), BuiltIn_integer, BuiltIn_None, "", "", "0"},
    {QZXML_BUILT_IN(negativeInteger), BuiltIn_nonPositiveInteger, BuiltIn_None, "", "", "-1"},
    {QZXML_BUILT_IN(long), BuiltIn_integer, BuiltIn_None, "", "-9223372036854775808",
     "9223372036854775807"},
    {QZXML_BUILT_IN(int), BuiltIn_long, BuiltIn_None, "", "-2147483648", "2147483647"},
    {QZXML_BUILT_IN(short), BuiltIn_int, BuiltIn_None, "", "-32768", "32767"},
    {QZXML_BUILT_IN(byte), BuiltIn_short, BuiltIn_None, "", "-128", "127"},
    {QZXML_BUILT_IN(nonNegativeInteger), BuiltIn_integer, BuiltIn_None, "", "0", ""},
    {QZXML_BUILT_IN(unsignedLong), BuiltIn_nonNegativeInteger, BuiltIn_None, "", "",
     "18446744073709551615"},
    {QZXML_BUILT_IN(unsignedInt), BuiltIn_unsignedLong, BuiltIn_None, "", "", "4294967295"},
    {QZXML_BUILT_IN(unsignedShort), BuiltIn_unsignedInt, BuiltIn_None, "", "", "65535"},
    {QZXML_BUILT_IN(unsignedByte), BuiltIn_unsignedShort, BuiltIn_None, "", "", "255"},
    {QZXML_BUILT_IN(positiveInteger), BuiltIn_nonNegativeInteger, BuiltIn_None, "", "1", ""},
};
#undef QZXML_BUILT_IN
static_assert(std::size(kRows) == BuiltIn_Count, "a row for each built-in type");

constexpr bool AreRowsInOrder() {
  for (int i = 0; i < BuiltIn_Count; ++i) {
    if (kRows[i].type != i) return false;
  }
  return true;
}
static_assert(AreRowsInOrder(), "each row stands at the place of its type");

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

QzXmlLib16::XsdType GetXsdType(BuiltIn type) { return kRows[type].xsdType; }

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
