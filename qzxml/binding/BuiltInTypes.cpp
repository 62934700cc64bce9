#include "qzxml/binding/BuiltInTypes.h"

#include "qzxml/xml/XmlNamespaces.h"

namespace QzXmlLib16 {
namespace {

constexpr auto kNone = CWhitespaceUtils::WhitespaceRule_None;
constexpr auto kReplace = CWhitespaceUtils::WhitespaceRule_Replace;
constexpr auto kCollapse = CWhitespaceUtils::WhitespaceRule_Collapse;
using Facets = CSimpleTypeInfo::CFacets;

const CTextRules kLanguageRules(XsdType_language);
const CTextRules kNameRules(XsdType_Name);
const CTextRules kNCNameRules(XsdType_NCName);
const CTextRules kNMTOKENRules(XsdType_NMTOKEN);
const CTextRules kNMTOKENSRules(XsdType_NMTOKENS);
const CTextRules kIDRules(XsdType_ID);
const CTextRules kIDREFRules(XsdType_IDREF);
const CTextRules kIDREFSRules(XsdType_IDREFS);
const CTextRules kENTITYRules(XsdType_ENTITY);
const CTextRules kENTITIESRules(XsdType_ENTITIES);
const CTextRules kQNameRules(XsdType_QName);
const CTextRules kNOTATIONRules(XsdType_NOTATION);
const CTextRules kAnyURIRules(XsdType_anyURI);
const CTextRules kGYearRules(XsdType_gYear);
const CTextRules kGDayRules(XsdType_gDay);
const CTextRules kGMonthRules(XsdType_gMonth);

}  // namespace

const CSimpleTypeInfo kXsdAnySimpleType(ItemType_string, kNone);
const CSimpleTypeInfo kXsdString(ItemType_string, kNone);
const CSimpleTypeInfo kXsdNormalizedString(ItemType_string, kReplace);
const CSimpleTypeInfo kXsdToken(ItemType_string, kCollapse);
const CSimpleTypeInfo kXsdLanguage(ItemType_string, kCollapse, kLanguageRules);
const CSimpleTypeInfo kXsdName(ItemType_string, kCollapse, kNameRules);
const CSimpleTypeInfo kXsdNCName(ItemType_string, kCollapse, kNCNameRules);
const CSimpleTypeInfo kXsdNMTOKEN(ItemType_string, kCollapse, kNMTOKENRules);
const CSimpleTypeInfo kXsdNMTOKENS(ItemType_string, kCollapse, kNMTOKENSRules);
const CSimpleTypeInfo kXsdID(ItemType_string, kCollapse, kIDRules);
const CSimpleTypeInfo kXsdIDREF(ItemType_string, kCollapse, kIDREFRules);
const CSimpleTypeInfo kXsdIDREFS(ItemType_string, kCollapse, kIDREFSRules);
const CSimpleTypeInfo kXsdENTITY(ItemType_string, kCollapse, kENTITYRules);
const CSimpleTypeInfo kXsdENTITIES(ItemType_string, kCollapse, kENTITIESRules);
const CSimpleTypeInfo kXsdQName(ItemType_string, kCollapse, kQNameRules);
const CSimpleTypeInfo kXsdNOTATION(ItemType_string, kCollapse, kNOTATIONRules);
const CSimpleTypeInfo kXsdAnyURI(ItemType_string, kCollapse, kAnyURIRules);
const CSimpleTypeInfo kXsdBoolean(ItemType_boolean, kCollapse);
const CSimpleTypeInfo kXsdDecimal(ItemType_decimal, kCollapse);
const CSimpleTypeInfo kXsdInteger(ItemType_integer, kCollapse);
const CSimpleTypeInfo kXsdNonPositiveInteger(ItemType_integer, kCollapse,
                                             Facets().MaxInclusive("0"));
const CSimpleTypeInfo kXsdNegativeInteger(ItemType_integer, kCollapse, Facets().MaxInclusive("-1"));
const CSimpleTypeInfo kXsdLong(ItemType_i8, kCollapse);
const CSimpleTypeInfo kXsdInt(ItemType_i4, kCollapse);
const CSimpleTypeInfo kXsdShort(ItemType_i2, kCollapse);
const CSimpleTypeInfo kXsdByte(ItemType_i1, kCollapse);
const CSimpleTypeInfo kXsdNonNegativeInteger(ItemType_integer, kCollapse,
                                             Facets().MinInclusive("0"));
const CSimpleTypeInfo kXsdUnsignedLong(ItemType_ui8, kCollapse);
const CSimpleTypeInfo kXsdUnsignedInt(ItemType_ui4, kCollapse);
const CSimpleTypeInfo kXsdUnsignedShort(ItemType_ui2, kCollapse);
const CSimpleTypeInfo kXsdUnsignedByte(ItemType_ui1, kCollapse);
const CSimpleTypeInfo kXsdPositiveInteger(ItemType_integer, kCollapse, Facets().MinInclusive("1"));
const CSimpleTypeInfo kXsdFloat(ItemType_r4, kCollapse);
const CSimpleTypeInfo kXsdDouble(ItemType_r8, kCollapse);
const CSimpleTypeInfo kXsdDuration(ItemType_duration, kCollapse);
const CSimpleTypeInfo kXsdDateTime(ItemType_datetime, kCollapse);
const CSimpleTypeInfo kXsdTime(ItemType_time, kCollapse);
const CSimpleTypeInfo kXsdDate(ItemType_date, kCollapse);
const CSimpleTypeInfo kXsdGYearMonth(ItemType_yearMonth, kCollapse);
const CSimpleTypeInfo kXsdGYear(ItemType_string, kCollapse, kGYearRules);
const CSimpleTypeInfo kXsdGMonthDay(ItemType_monthDay, kCollapse);
const CSimpleTypeInfo kXsdGDay(ItemType_string, kCollapse, kGDayRules);
const CSimpleTypeInfo kXsdGMonth(ItemType_string, kCollapse, kGMonthRules);
const CSimpleTypeInfo kXsdHexBinary(ItemType_hexBinary, kCollapse);
const CSimpleTypeInfo kXsdBase64Binary(ItemType_base64Binary, kCollapse);

namespace detail {
namespace {

struct BuiltInRow {
  std::string_view name;
  const CSimpleTypeInfo* type;
  const CSimpleTypeInfo* base;
};

constexpr BuiltInRow kBuiltIns[] = {
    {"anySimpleType", &kXsdAnySimpleType, nullptr},
    {"string", &kXsdString, &kXsdAnySimpleType},
    {"normalizedString", &kXsdNormalizedString, &kXsdString},
    {"token", &kXsdToken, &kXsdNormalizedString},
    {"language", &kXsdLanguage, &kXsdToken},
    {"Name", &kXsdName, &kXsdToken},
    {"NCName", &kXsdNCName, &kXsdName},
    {"NMTOKEN", &kXsdNMTOKEN, &kXsdToken},
    {"NMTOKENS", &kXsdNMTOKENS, &kXsdAnySimpleType},
    {"ID", &kXsdID, &kXsdNCName},
    {"IDREF", &kXsdIDREF, &kXsdNCName},
    {"IDREFS", &kXsdIDREFS, &kXsdAnySimpleType},
    {"ENTITY", &kXsdENTITY, &kXsdNCName},
    {"ENTITIES", &kXsdENTITIES, &kXsdAnySimpleType},
    {"QName", &kXsdQName, &kXsdAnySimpleType},
    {"NOTATION", &kXsdNOTATION, &kXsdAnySimpleType},
    {"anyURI", &kXsdAnyURI, &kXsdAnySimpleType},
    {"boolean", &kXsdBoolean, &kXsdAnySimpleType},
    {"decimal", &kXsdDecimal, &kXsdAnySimpleType},
    {"integer", &kXsdInteger, &kXsdDecimal},
    {"nonPositiveInteger", &kXsdNonPositiveInteger, &kXsdInteger},
    {"negativeInteger", &kXsdNegativeInteger, &kXsdNonPositiveInteger},
    {"long", &kXsdLong, &kXsdInteger},
    {"int", &kXsdInt, &kXsdLong},
    {"short", &kXsdShort, &kXsdInt},
    {"byte", &kXsdByte, &kXsdShort},
    {"nonNegativeInteger", &kXsdNonNegativeInteger, &kXsdInteger},
    {"unsignedLong", &kXsdUnsignedLong, &kXsdNonNegativeInteger},
    {"unsignedInt", &kXsdUnsignedInt, &kXsdUnsignedLong},
    {"unsignedShort", &kXsdUnsignedShort, &kXsdUnsignedInt},
    {"unsignedByte", &kXsdUnsignedByte, &kXsdUnsignedShort},
    {"positiveInteger", &kXsdPositiveInteger, &kXsdNonNegativeInteger},
    {"float", &kXsdFloat, &kXsdAnySimpleType},
    {"double", &kXsdDouble, &kXsdAnySimpleType},
    {"duration", &kXsdDuration, &kXsdAnySimpleType},
    {"dateTime", &kXsdDateTime, &kXsdAnySimpleType},
    {"time", &kXsdTime, &kXsdAnySimpleType},
    {"date", &kXsdDate, &kXsdAnySimpleType},
    {"gYearMonth", &kXsdGYearMonth, &kXsdAnySimpleType},
    {"gYear", &kXsdGYear, &kXsdAnySimpleType},
    {"gMonthDay", &kXsdGMonthDay, &kXsdAnySimpleType},
    {"gDay", &kXsdGDay, &kXsdAnySimpleType},
    {"gMonth", &kXsdGMonth, &kXsdAnySimpleType},
    {"hexBinary", &kXsdHexBinary, &kXsdAnySimpleType},
    {"base64Binary", &kXsdBase64Binary, &kXsdAnySimpleType},
};

}  // namespace

const CSimpleTypeInfo* FindBuiltInType(std::string_view namespaceUri, std::string_view localName) {
  if (namespaceUri != kXmlSchemaNamespace) return nullptr;
  for (const BuiltInRow& row : kBuiltIns) {
    if (row.name == localName) return row.type;
  }
  return nullptr;
}

bool IsBuiltInDerived(const CSimpleTypeInfo& builtIn, const CSimpleTypeInfo& base) {
  const CSimpleTypeInfo* type = &builtIn;
  while (type != nullptr && type != &base) {
    const CSimpleTypeInfo* next = nullptr;
    for (const BuiltInRow& row : kBuiltIns) {
      if (row.type == type) next = row.base;
    }
    type = next;
  }
  return type != nullptr;
}

}  // namespace detail
}  // namespace QzXmlLib16
