#include "qzxml/binding/BuiltInTypes.h"
#include "tests/support/QzTest.h"

using namespace QzXmlLib16;

namespace {

// Texts are separated by '|'. Those that only the lexical form forbids are refused where a kind's
// reader refuses them too; the readers of numbers are lenient.
struct BuiltInCase {
  const char* name;
  const CSimpleTypeInfo& type;
  ItemType kind;
  CWhitespaceUtils::WhitespaceRule rule;
  const char* accepted;
  const char* refused;
};

constexpr auto kNone = CWhitespaceUtils::WhitespaceRule_None;
constexpr auto kReplace = CWhitespaceUtils::WhitespaceRule_Replace;
constexpr auto kCollapse = CWhitespaceUtils::WhitespaceRule_Collapse;

const BuiltInCase kCases[] = {
    {"anySimpleType", kXsdAnySimpleType, ItemType_string, kNone, "| a ", ""},
    {"string", kXsdString, ItemType_string, kNone, "| a ", ""},
    {"normalizedString", kXsdNormalizedString, ItemType_string, kReplace, "|a b", ""},
    {"token", kXsdToken, ItemType_string, kCollapse, "|a b", ""},
    {"language", kXsdLanguage, ItemType_string, kCollapse, "de|en-GB| de ", "d_e|german9long"},
    {"Name", kXsdName, ItemType_string, kCollapse, "a|x:y|_1", "1|a b|-a"},
    {"NCName", kXsdNCName, ItemType_string, kCollapse, "a|_1", "x:y|1a"},
    {"NMTOKEN", kXsdNMTOKEN, ItemType_string, kCollapse, "1|-a|x:y", "a b|a,b"},
    {"NMTOKENS", kXsdNMTOKENS, ItemType_string, kCollapse, "1|1 2", " |a ,"},
    {"ID", kXsdID, ItemType_string, kCollapse, "a", "1|a b"},
    {"IDREF", kXsdIDREF, ItemType_string, kCollapse, "a", "1|a b"},
    {"IDREFS", kXsdIDREFS, ItemType_string, kCollapse, "a|a b", " |1"},
    {"ENTITY", kXsdENTITY, ItemType_string, kCollapse, "a", "1|a b"},
    {"ENTITIES", kXsdENTITIES, ItemType_string, kCollapse, "a|a b", " |1"},
    {"QName", kXsdQName, ItemType_string, kCollapse, "a|x:a", ":a|a:|1|a:b:c"},
    {"NOTATION", kXsdNOTATION, ItemType_string, kCollapse, "a|x:a", ":a|1"},
    {"anyURI", kXsdAnyURI, ItemType_string, kCollapse, "|http://example.org/a#b|../a", ""},
    {"boolean", kXsdBoolean, ItemType_boolean, kCollapse, "true|false|1|0| 1 ", "yes"},
    {"decimal", kXsdDecimal, ItemType_decimal, kCollapse, "1|-1.50|+0.1", "a"},
    {"integer", kXsdInteger, ItemType_integer, kCollapse, "0|-99999999999999999999", "a"},
    {"nonPositiveInteger", kXsdNonPositiveInteger, ItemType_integer, kCollapse, "0|-1", "1"},
    {"negativeInteger", kXsdNegativeInteger, ItemType_integer, kCollapse, "-1", "0|1"},
    {"long", kXsdLong, ItemType_i8, kCollapse, "9223372036854775807|-9223372036854775808", ""},
    {"int", kXsdInt, ItemType_i4, kCollapse, "2147483647|-2147483648", "a"},
    {"short", kXsdShort, ItemType_i2, kCollapse, "32767|-32768", "a"},
    {"byte", kXsdByte, ItemType_i1, kCollapse, "127|-128", "a"},
    {"nonNegativeInteger", kXsdNonNegativeInteger, ItemType_integer, kCollapse, "0|1", "-1"},
    {"unsignedLong", kXsdUnsignedLong, ItemType_ui8, kCollapse, "18446744073709551615", "a"},
    {"unsignedInt", kXsdUnsignedInt, ItemType_ui4, kCollapse, "4294967295", "a"},
    {"unsignedShort", kXsdUnsignedShort, ItemType_ui2, kCollapse, "65535", "a"},
    {"unsignedByte", kXsdUnsignedByte, ItemType_ui1, kCollapse, "255", "a"},
    {"positiveInteger", kXsdPositiveInteger, ItemType_integer, kCollapse, "1", "0|-1"},
    {"float", kXsdFloat, ItemType_r4, kCollapse, "1|-1.5e3|INF|NaN", "a"},
    {"double", kXsdDouble, ItemType_r8, kCollapse, "1|-1.5e3|INF|NaN", "a"},
    {"duration", kXsdDuration, ItemType_duration, kCollapse, "P1Y|-PT1.5S", "1Y"},
    {"dateTime", kXsdDateTime, ItemType_datetime, kCollapse, "2026-11-21T17:00:00Z", "2026-11-21"},
    {"time", kXsdTime, ItemType_time, kCollapse, "17:00:00|17:00:00+01:00", "17"},
    {"date", kXsdDate, ItemType_date, kCollapse, "2026-11-21|2026-11-21Z", "2026-13-01"},
    {"gYearMonth", kXsdGYearMonth, ItemType_yearMonth, kCollapse, "2026-11|2026-11Z", "2026-13"},
    {"gYear", kXsdGYear, ItemType_string, kCollapse, "2026|-0044|2026Z", "26|a"},
    {"gMonthDay", kXsdGMonthDay, ItemType_monthDay, kCollapse, "--11-21|--11-21Z", "11-21"},
    {"gDay", kXsdGDay, ItemType_string, kCollapse, "---21|---21Z", "21|---32"},
    {"gMonth", kXsdGMonth, ItemType_string, kCollapse, "--11|--11Z", "11|--13"},
    {"hexBinary", kXsdHexBinary, ItemType_hexBinary, kCollapse, "|00FFaa", "0G"},
    {"base64Binary", kXsdBase64Binary, ItemType_base64Binary, kCollapse, "|QUJD", ""},
};

std::vector<std::string> Split(const std::string& texts) {
  std::vector<std::string> split(1);
  for (const char c : texts) {
    if (c == '|') {
      split.emplace_back();
    } else {
      split.back() += c;
    }
  }
  return split;
}

}  // namespace

TEST(BuiltInTypes, HaveTheKindAndTheWhiteSpaceOfTheirValues) {
  EXPECT_EQ(45u, std::size(kCases));
  for (const BuiltInCase& c : kCases) {
    EXPECT_EQ(c.kind, c.type.GetKind()) << c.name;
    EXPECT_EQ(c.rule, c.type.GetWhitespaceRule()) << c.name;
    EXPECT_FALSE(c.type.IsEnumeration()) << c.name;
  }
}

TEST(BuiltInTypes, TakeTheirValuesAndNoOthers) {
  for (const BuiltInCase& c : kCases) {
    for (const std::string& text : Split(c.accepted)) {
      EXPECT_TRUE(c.type.Accepts(text)) << c.name << " [" << text << "]";
    }
    if (*c.refused == '\0') continue;
    for (const std::string& text : Split(c.refused)) {
      EXPECT_FALSE(c.type.Accepts(text)) << c.name << " [" << text << "]";
    }
  }
}
