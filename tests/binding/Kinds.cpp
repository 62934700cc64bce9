#include "tests/binding/Kinds.h"

#include "qzxml/binding/BuiltInTypes.h"
#include "qzxml/binding/EnumerationInfo.h"
#include "qzxml/binding/ObjectCol.h"
#include "qzxml/binding/ObjectFactory.h"
#include "qzxml/binding/ValueCol.h"

namespace kinds {

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;

namespace {

constexpr char kNamespace[] = "urn:kinds";
constexpr auto kCollapse = CWhitespaceUtils::WhitespaceRule_Collapse;
using Facets = CSimpleTypeInfo::CFacets;

const char* const kCurrencyTexts[] = {"EUR", "CHF", "USD"};
const CEnumerationInfo kCurrencies(kCurrencyTexts, kCollapse);
const char* CurrencyToString(int value) { return kCurrencies.ToText(value); }
int StringToCurrency(const char* text) { return kCurrencies.FromText(text); }
const CSimpleTypeInfo kCurrency(&CurrencyToString, &StringToCurrency);

const CPatternStep kCodePatterns[] = {"[A-Z]{2,3}-[0-9]{1,4}"};
const CTextRules kCodeRules = CTextRules(XsdType_token).Patterns(kCodePatterns).MaxLength(7);
const CSimpleTypeInfo kCode(ItemType_string, kCollapse, kCodeRules);
const CSimpleTypeInfo kPatterned(ItemType_string, CWhitespaceUtils::WhitespaceRule_Replace,
                                 Facets().Pattern("(ab|cd)* ?x"));
const CSimpleTypeInfo kBounded(ItemType_i4, kCollapse,
                               Facets().MinInclusive("1").MaxInclusive("9"));
const CSimpleTypeInfo kOpen(ItemType_i4, kCollapse, Facets().MinExclusive("-1").MaxExclusive("10"));
const CSimpleTypeInfo kLarge(ItemType_ui8, kCollapse,
                             Facets().MinInclusive("3").MaxInclusive("18446744073709551614"));
const CTextRules kShortCodeRules = CTextRules(XsdType_token).Patterns(kCodePatterns).MaxLength(5);
const CSimpleTypeInfo kShortCode(ItemType_string, kCollapse, kShortCodeRules);
const CSimpleTypeInfo kFew(ItemType_i4, kCollapse, Facets().MinInclusive("1").MaxInclusive("3"));
const CNamedSimpleType kCode_Named[] = {
    {kNamespace, "Code", &kCode}, {kNamespace, "ShortCode", &kShortCode}, {}};
const CNamedSimpleType kBounded_Named[] = {
    {kNamespace, "Bounded", &kBounded}, {kNamespace, "Few", &kFew}, {}};
constexpr CSimpleTypeFamily kCode_Types{kCode, kCode_Named};
constexpr CSimpleTypeFamily kBounded_Types{kBounded, kBounded_Named};
const CTextRules kDigitRules = CTextRules(XsdType_int).TotalDigits(2);
const CSimpleTypeInfo kDigits(ItemType_i4, kCollapse, kDigitRules);
const CSimpleTypeInfo kPrice(ItemType_decimal, kCollapse,
                             Facets().MinInclusive("0").TotalDigits(5).FractionDigits(2));
const CTextRules kRecentRules = CTextRules(XsdType_date).MinInclusive("2000-01-01");
const CSimpleTypeInfo kRecent(ItemType_date, kCollapse, kRecentRules);

}  // namespace

// CAmount

const CMember CAmount::s_members[] = {
    RequiredAttribute("currency", "", &CAmount::m_currency, kCurrency),
    Text(&CAmount::m_value, kPrice),
};

CClassBinding CAmount::s_binding({"Amount", kNamespace, "amount", &NewObject<CAmount>}, s_members);

CAmount::CAmount() : CBoundClass(s_binding) {}

// CRemark

const CMember CRemark::s_members[] = {
    OptionalAttribute("lang", "urn:lang", &CRemark::m_lang, kXsdLanguage),
    ValueElement("bold", kNamespace, Optional, &CRemark::m_bold, kXsdBoolean),
    ObjectElement("amount", kNamespace, Once, &CRemark::m_amount, &NewObject<CAmount>),
    Text(&CRemark::m_text, kXsdString),
};

CClassBinding CRemark::s_binding(
    CClassTraits{"Remark", kNamespace, "remark", &NewObject<CRemark>}.AsAll().Mixed(), s_members);

CRemark::CRemark() : CBoundClass(s_binding) {}

// CKinds

const CMember CKinds::s_members[] = {
    RequiredAttribute("text", "", &CKinds::m_aString, kXsdString),
    RequiredAttribute("count", "", &CKinds::m_aInt, kBounded),
    OptionalAttribute("currency", "urn:lang", &CKinds::m_aCurrency, kCurrency).WithDefault("EUR"),
    OptionalAttribute("price", "", &CKinds::m_aPrice, kPrice),
    OptionalAttribute("date", "", &CKinds::m_aDate, kXsdDate),
    OptionalAttribute("flag", "", &CKinds::m_aFlag, kXsdBoolean).WithFixed("true"),
    ValueElement("string", kNamespace, Optional, &CKinds::m_string, kXsdString),
    ValueElement("token", kNamespace, Once, &CKinds::m_token, kXsdToken),
    ValueElement("coded", kNamespace, Optional, &CKinds::m_coded, kCode_Types),
    ValueElement("patterned", kNamespace, Optional, &CKinds::m_patterned, kPatterned),
    ValueElement("year", kNamespace, Optional, &CKinds::m_year, kXsdGYear),
    ValueElement("boolean", kNamespace, Optional, &CKinds::m_boolean, kXsdBoolean),
    ValueElement("byte", kNamespace, Optional, &CKinds::m_byte, kXsdByte),
    ValueElement("short", kNamespace, Optional, &CKinds::m_short, kXsdShort),
    ValueElement("int", kNamespace, Once, &CKinds::m_int, kXsdInt),
    ValueElement("long", kNamespace, Optional, &CKinds::m_long, kXsdLong),
    ValueElement("unsignedByte", kNamespace, Optional, &CKinds::m_unsignedByte, kXsdUnsignedByte),
    ValueElement("unsignedShort", kNamespace, Optional, &CKinds::m_unsignedShort,
                 kXsdUnsignedShort),
    ValueElement("unsignedInt", kNamespace, Optional, &CKinds::m_unsignedInt, kXsdUnsignedInt),
    ValueElement("unsignedLong", kNamespace, Optional, &CKinds::m_unsignedLong, kXsdUnsignedLong),
    ValueElement("bounded", kNamespace, Optional, &CKinds::m_bounded, kBounded_Types),
    ValueElement("open", kNamespace, Optional, &CKinds::m_open, kOpen),
    ValueElement("large", kNamespace, Optional, &CKinds::m_large, kLarge),
    ValueElement("digits", kNamespace, Optional, &CKinds::m_digits, kDigits),
    ValueElement("float", kNamespace, Optional, &CKinds::m_float, kXsdFloat),
    ValueElement("double", kNamespace, Optional, &CKinds::m_double, kXsdDouble),
    ValueElement("decimal", kNamespace, Optional, &CKinds::m_decimal, kXsdDecimal),
    ValueElement("price", kNamespace, Optional, &CKinds::m_price, kPrice),
    ValueElement("integer", kNamespace, Optional, &CKinds::m_integer, kXsdInteger),
    ValueElement("positive", kNamespace, Optional, &CKinds::m_positive, kXsdPositiveInteger),
    ValueElement("date", kNamespace, Optional, &CKinds::m_date, kXsdDate),
    ValueElement("recent", kNamespace, Optional, &CKinds::m_recent, kRecent),
    ValueElement("dateTime", kNamespace, Optional, &CKinds::m_dateTime, kXsdDateTime),
    ValueElement("time", kNamespace, Optional, &CKinds::m_time, kXsdTime),
    ValueElement("yearMonth", kNamespace, Optional, &CKinds::m_yearMonth, kXsdGYearMonth),
    ValueElement("monthDay", kNamespace, Optional, &CKinds::m_monthDay, kXsdGMonthDay),
    ValueElement("duration", kNamespace, Optional, &CKinds::m_duration, kXsdDuration),
    ValueElement("hex", kNamespace, Optional, &CKinds::m_hex, kXsdHexBinary),
    ValueElement("base64", kNamespace, Optional, &CKinds::m_base64, kXsdBase64Binary),
    ValueElement("currency", kNamespace, Once, &CKinds::m_currency, kCurrency),
    ValueElement("fixed", kNamespace, Optional, &CKinds::m_fixed, kXsdToken).WithFixed("1.0"),
    ValueElement("defaulted", kNamespace, Optional, &CKinds::m_defaulted, kXsdInt).WithDefault("5"),
    ValueElement("nillable", kNamespace, Once, &CKinds::m_nillable, kXsdInt).Nillable(),
    ObjectElement("amount", kNamespace, Once, &CKinds::m_amount, &NewObject<CAmount>),
    ObjectElement("fee", kNamespace, Optional, &CKinds::m_fee, &NewObject<CAmount>),
    ObjectElement("remark", kNamespace, Optional, &CKinds::m_remark, &NewObject<CRemark>),
    ObjectElement("part", kNamespace, Repeated(0, 2), &CKinds::m_amounts, &NewObject<CAmount>,
                  &NewObjectCol<CAmount>),
    ValueElement("number", kNamespace, Repeated(1), &CKinds::m_numbers, kBounded_Types,
                 &NewValueCol<ItemType_i4>),
    ValueElement("day", kNamespace, Repeated(), &CKinds::m_dates, kXsdDate,
                 &NewValueCol<ItemType_date>),
    UntypedElement("free", kNamespace, Optional, &CKinds::m_open1),
};

CClassBinding CKinds::s_binding({"Kinds", kNamespace, "kinds", &NewObject<CKinds>}, s_members);

CKinds::CKinds() : CBoundClass(s_binding) {}

}  // namespace kinds
