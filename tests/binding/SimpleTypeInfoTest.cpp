#include <functional>
#include <thread>

#include "qzxml/binding/EnumerationInfo.h"
#include "qzxml/binding/SimpleTypeInfo.h"
#include "qzxml/values/QzVariant.h"
#include "tests/support/QzTest.h"

using namespace QzXmlLib16;

namespace {

constexpr auto kCollapse = CWhitespaceUtils::WhitespaceRule_Collapse;
constexpr auto kPreserve = CWhitespaceUtils::WhitespaceRule_Preserve;
using Facets = CSimpleTypeInfo::CFacets;

const char* const kFixTexts[] = {"none", "2d", "3d"};
const CEnumerationInfo kFix(kFixTexts, kCollapse);
const char* FixToString(int value) { return kFix.ToText(value); }
int StringToFix(const char* text) { return kFix.FromText(text); }

const CSimpleTypeInfo kPlain(ItemType_i4, kCollapse);
const CSimpleTypeInfo kQuantity(ItemType_ui4, kCollapse,
                                Facets().MinInclusive("1").MaxExclusive("100"));
const CTextRules kShort = CTextRules(XsdType_string).MaxLength(2);
const CSimpleTypeInfo kSize(ItemType_string, kPreserve, kShort);
const CTextRules kTwoDigits = CTextRules(XsdType_int).TotalDigits(2);
const CSimpleTypeInfo kSigned(ItemType_i4, kCollapse, Facets().MaxInclusive("50"), kTwoDigits);
const CSimpleTypeInfo kFixType(&FixToString, &StringToFix);

QzVariant Read(const CSimpleTypeInfo& type, const char* text) {
  QzVariant value;
  value.FromString(text, type.GetKind(), type.GetWhitespaceRule());
  return value;
}

}  // namespace

TEST(SimpleTypeInfo, TellsWhatItWasMadeOf) {
  EXPECT_EQ(ItemType_ui4, kQuantity.GetKind());
  EXPECT_EQ(kCollapse, kQuantity.GetWhitespaceRule());
  EXPECT_EQ(nullptr, kQuantity.GetRules());
  EXPECT_FALSE(kQuantity.IsEnumeration());
  EXPECT_EQ(&kTwoDigits, kSigned.GetRules());
  EXPECT_TRUE(kFixType.IsEnumeration());
  EXPECT_EQ(ItemType_i4, kFixType.GetKind());
  EXPECT_EQ(&FixToString, kFixType.GetEnumToString());
  EXPECT_EQ(&StringToFix, kFixType.GetStringToEnum());
}

TEST(SimpleTypeInfo, HandsItsFacetsToTheTables) {
  static const CSimpleTypeInfo s_all(ItemType_decimal, kCollapse,
                                     Facets()
                                         .Pattern("p")
                                         .MinLength(1)
                                         .MaxLength(2)
                                         .MinInclusive("3")
                                         .MaxInclusive("4")
                                         .MinExclusive("5")
                                         .MaxExclusive("6")
                                         .Length(7)
                                         .TotalDigits(8)
                                         .FractionDigits(9));
  const CPrimitiveRestrictions& all = s_all.GetRestrictions();
  EXPECT_EQ(&all, &s_all.GetRestrictions());
  EXPECT_EQ("p", all.GetPattern());
  EXPECT_EQ(1, all.GetMinLength());
  EXPECT_EQ(2, all.GetMaxLength());
  EXPECT_EQ("3", all.GetMinInclusive());
  EXPECT_EQ("4", all.GetMaxInclusive());
  EXPECT_EQ("5", all.GetMinExclusive());
  EXPECT_EQ("6", all.GetMaxExclusive());
  EXPECT_EQ(7, all.GetLength());
  EXPECT_EQ(8, all.GetTotalDigits());
  EXPECT_EQ(9, all.GetFractionDigits());
  EXPECT_FALSE(kPlain.GetRestrictions().HasFacets());
  EXPECT_FALSE(kSize.GetRestrictions().HasFacets());
}

TEST(SimpleTypeInfo, ManyThreadsMayBeTheFirstToAskForTheFacets) {
  static const CSimpleTypeInfo s_shared(ItemType_i4, kCollapse, Facets().MinInclusive("1"));
  std::vector<std::thread> threads;
  std::vector<const CPrimitiveRestrictions*> found(4);
  for (std::size_t i = 0; i < found.size(); ++i) {
    threads.emplace_back([&found, i] { found[i] = &s_shared.GetRestrictions(); });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(std::vector<const CPrimitiveRestrictions*>(4, &s_shared.GetRestrictions()), found);
}

TEST(SimpleTypeInfo, ChecksFacets) {
  kQuantity.Check("quantity", Read(kQuantity, "1"));
  kQuantity.Check("quantity", Read(kQuantity, "99"));
  EXPECT_QZ_THROW(CQzException, "Invalid Value for quantity [100]",
                  kQuantity.Check("quantity", Read(kQuantity, "100")));
  EXPECT_QZ_THROW(CQzException, "Invalid Value for quantity [0]",
                  kQuantity.Check("quantity", Read(kQuantity, "0")));
  kPlain.Check("number", Read(kPlain, "-5"));
}

TEST(SimpleTypeInfo, ChecksRulesOnTextsByTheirCharacters) {
  kSize.Check("size", Read(kSize, "\xC3\xA9\xC3\xA9"));
  EXPECT_QZ_THROW(CQzException, "Invalid Value for size [XXL].",
                  kSize.Check("size", Read(kSize, "XXL")));
}

TEST(SimpleTypeInfo, ChecksFacetsAndThenRules) {
  kSigned.Check("number", Read(kSigned, "-99"));
  EXPECT_QZ_THROW(CQzException, "Invalid Value for number [51]",
                  kSigned.Check("number", Read(kSigned, "51")));
  EXPECT_QZ_THROW(CQzException, "Invalid Value for number [-100]",
                  kSigned.Check("number", Read(kSigned, "-100")));
}

TEST(SimpleTypeInfo, WhatRulesRefuseFailsAsTheFacetTestOfTheKindDoes) {
  static const char* const kNothing[] = {"---"};
  static const CTextRules s_none = CTextRules(XsdType_anySimpleType).Enumeration(kNothing);
  const struct {
    ItemType kind;
    const char* text;
    const char* message;
  } cases[] = {
      {ItemType_i1, "-5", "Invalid Value for m [-5]"},
      {ItemType_i2, "-300", "Invalid Value for m [-300]"},
      {ItemType_i4, "70000", "Invalid Value for m [70000]"},
      {ItemType_i8, "-5", "Invalid Value for m [-5]."},
      {ItemType_ui1, "200", "Invalid Value for m [200]"},
      {ItemType_ui2, "65535", "Invalid Value for m [65535]"},
      {ItemType_ui4, "4294967295", "Invalid Value for m [-1]"},
      {ItemType_ui8, "5", "Invalid Value for m [5]."},
      {ItemType_r4, "1.5", "Invalid Value for m [1.500000]"},
      {ItemType_r8, "-0.25", "Invalid Value for m [-0.250000]"},
      {ItemType_year, "1999", "Invalid Value for m [1999]"},
      {ItemType_month, "--05", "Invalid Value for m [5]"},
      {ItemType_day, "---09", "Invalid Value for m [9]"},
      {ItemType_date, "2000-01-02Z", "Invalid Value for m [2000-01-02Z]."},
      {ItemType_duration, "P1D", "Invalid Value for m [P1D]."},
      {ItemType_string, "a b", "Invalid Value for m [a b]."},
      {ItemType_decimal, "1.50", "Invalid Value for m [1.5]."},
      {ItemType_integer, "-7", "Invalid Value for m [-7]."},
      {ItemType_boolean, "1", "Invalid Value for m [true]."},
      {ItemType_hexBinary, "0aff", "Invalid Value for m [0AFF]."},
  };
  for (const auto& c : cases) {
    const CSimpleTypeInfo type(c.kind, kCollapse, s_none);
    EXPECT_QZ_THROW(CQzException, c.message, type.Check("m", Read(type, c.text)));
  }
}

TEST(SimpleTypeInfo, BoundsOfDatesInRulesAreThoseOfXmlSchema) {
  static const CTextRules s_before =
      CTextRules(XsdType_dateTime).MaxExclusive("2000-01-01T00:00:00Z");
  static const CSimpleTypeInfo s_type(ItemType_datetime, kCollapse, s_before);
  s_type.Check("when", Read(s_type, "1999-12-31T23:59:59Z"));
  for (const char* text : {"2000-01-01T00:00:00Z", "1999-12-31T23:59:59"}) {
    EXPECT_QZ_THROW(CQzException, "Invalid Value for when [" + std::string(text) + "].",
                    s_type.Check("when", Read(s_type, text)));
  }
}

TEST(SimpleTypeInfo, ADateHasTheFormOfItsKind) {
  const struct {
    ItemType kind;
    const char* form;
    std::vector<std::string> others;
  } cases[] = {
      {ItemType_date, "2004-05-06Z", {"2004-05", "2004", "--05-06", "---06"}},
      {ItemType_yearMonth, "2004-05", {"2004-05-06", "--05"}},
      {ItemType_monthDay, "--05-06", {"2004-05-06", "---06"}},
      {ItemType_datetime, "2004-05-06T07:08:09", {}},
      {ItemType_time, "07:08:09", {}},
  };
  for (const auto& c : cases) {
    const CSimpleTypeInfo type(c.kind, kCollapse);
    type.Check("when", Read(type, c.form));
    for (const std::string& other : c.others) {
      EXPECT_QZ_THROW(CQzException, "Invalid Value for when [" + other + "].",
                      type.Check("when", Read(type, other.c_str())));
    }
  }
  const CSimpleTypeInfo date(ItemType_date, kCollapse);
  QzVariant unset;
  unset.SetDate(CDateTime());
  EXPECT_QZ_THROW(CQzException, "Invalid Value for when [Error: Date Not Set].",
                  date.Check("when", unset));
}

TEST(SimpleTypeInfo, RefusesWhatABase64TextThatIsNoneLeft) {
  static const CTextRules s_some = CTextRules(XsdType_base64Binary).MaxLength(3);
  static const CSimpleTypeInfo s_type(ItemType_base64Binary, kCollapse,
                                      Facets().MinLength(0).MaxLength(3), s_some);
  s_type.Check("data", Read(s_type, "YWJj"));
  s_type.Check("data", Read(s_type, ""));
  EXPECT_QZ_THROW(CQzException, "Invalid Value for data [].",
                  s_type.Check("data", Read(s_type, "Y!Jj")));
}

TEST(SimpleTypeInfo, NoTimeAtAllIsADurationForRules) {
  static const CTextRules s_short = CTextRules(XsdType_duration).MaxExclusive("P1D");
  static const CSimpleTypeInfo s_type(ItemType_duration, kCollapse, s_short);
  s_type.Check("time", Read(s_type, "PT0S"));
  s_type.Check("time", Read(s_type, "-PT0S"));
  s_type.Check("time", Read(s_type, "PT23H"));
  EXPECT_QZ_THROW(CQzException, "Invalid Value for time [PT24H].",
                  s_type.Check("time", Read(s_type, "PT24H")));
}

TEST(SimpleTypeInfo, PassesWhatIsNilOrNotSet) {
  QzVariant nil;
  nil.SetString("XXL");
  nil.SetNil();
  kSize.Check("size", nil);
  kSize.Check("size", QzVariant());
}

TEST(SimpleTypeInfo, ChecksThatAnEnumeratorHasAText) {
  QzVariant value;
  value.SetI4(2);
  kFixType.Check("fix", value);
  value.SetI4(3);
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [3] is not one of none, 2d, 3d",
                  kFixType.Check("fix", value));
}

TEST(SimpleTypeInfo, AssertsTheKind) {
  QzVariant value;
  value.SetBoolean(true);
  EXPECT_QZ_ASSERT("value.GetTypeAsEnum() == m_kind", kQuantity.Check("number", value));
}

TEST(SimpleTypeInfo, AcceptsWhatADocumentMayHave) {
  const struct {
    const CSimpleTypeInfo& type;
    std::vector<std::string> accepted;
    std::vector<std::string> refused;
  } cases[] = {
      {kPlain, {"1", " -5 "}, {"", "a", "2147483648"}},
      {kQuantity, {"1", "+99"}, {"0", "100", "x"}},
      {kSize, {"", "XL", "\xC3\xA9\xC3\xA9"}, {"XXL"}},
      {kSigned, {"-99", "50"}, {"-100", "51"}},
      {kFixType, {"none", " 3d "}, {"4d", ""}},
  };
  for (const auto& c : cases) {
    for (const std::string& text : c.accepted) EXPECT_TRUE(c.type.Accepts(text)) << text;
    for (const std::string& text : c.refused) EXPECT_FALSE(c.type.Accepts(text)) << text;
  }
}
