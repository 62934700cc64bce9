#include <atomic>
#include <chrono>
#include <cstdint>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "qzxml/runtime/Encoder.h"
#include "qzxml/serialization/PrimitiveRestrictions.h"
#include "qzxml/values/QzVariant.h"
#include "tests/serialization/Facets.h"
#include "tests/support/CommaLocale.h"
#include "tests/support/QzTest.h"

using qztest::Check;
using qztest::Facets;
using qztest::Length;
using qztest::MakeValue;
using qztest::MaxExclusive;
using qztest::MaxInclusive;
using qztest::MaxLength;
using qztest::MinExclusive;
using qztest::MinInclusive;
using qztest::MinLength;
using qztest::Pattern;
using qztest::TotalDigits;
using QzXmlLib16::CBinaryData;
using QzXmlLib16::CheckPrimitiveRestriction;
using QzXmlLib16::CPrimitiveRestrictions;
using QzXmlLib16::CQzException;
using QzXmlLib16::CQzInvalidValueException;
using QzXmlLib16::CWhitespaceUtils;
using QzXmlLib16::ItemType;
using QzXmlLib16::MatchesRegularExpression;
using QzXmlLib16::QzVariant;

namespace {

std::string CheckText(const std::string& text, const Facets& facets) {
  return Check(QzXmlLib16::ItemType_string, text, facets);
}

struct NumberKind {
  ItemType type;
  bool isLarge;  // the message has the value's text and a full stop
};

const NumberKind kIntegers[] = {
    {QzXmlLib16::ItemType_i1, false},  {QzXmlLib16::ItemType_i2, false},
    {QzXmlLib16::ItemType_i4, false},  {QzXmlLib16::ItemType_i8, true},
    {QzXmlLib16::ItemType_ui1, false}, {QzXmlLib16::ItemType_ui2, false},
    {QzXmlLib16::ItemType_ui4, false}, {QzXmlLib16::ItemType_ui8, true},
};

std::string InvalidInteger(const NumberKind& kind, const std::string& text) {
  return "Invalid Value for name [" + text + (kind.isLarge ? "]." : "]");
}

bool Matches(const std::string& pattern, const std::string& value) {
  return MatchesRegularExpression(pattern, value);
}

double MeasureMilliseconds(const std::string& pattern, const std::string& value) {
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_FALSE(Matches(pattern, value)) << pattern;
  const auto end = std::chrono::steady_clock::now();
  return std::chrono::duration<double, std::milli>(end - begin).count();
}

}  // namespace

// --- The facets themselves ---

TEST(PrimitiveRestrictions, HasNoFacetAtFirst) {
  const CPrimitiveRestrictions restrictions;
  EXPECT_EQ("", restrictions.GetPattern());
  EXPECT_EQ(-1, restrictions.GetMinLength());
  EXPECT_EQ(-1, restrictions.GetMaxLength());
  EXPECT_EQ("", restrictions.GetMinInclusive());
  EXPECT_EQ("", restrictions.GetMaxInclusive());
  EXPECT_EQ("", restrictions.GetMinExclusive());
  EXPECT_EQ("", restrictions.GetMaxExclusive());
  EXPECT_EQ(-1, restrictions.GetLength());
  EXPECT_EQ(-1, restrictions.GetTotalDigits());
  EXPECT_EQ(-1, restrictions.GetFractionDigits());

  QzVariant empty;
  empty.SetString("");
  CheckPrimitiveRestriction("name", empty, QzXmlLib16::ItemType_string, restrictions);
}

TEST(PrimitiveRestrictions, TakesItsFacetsInTheOrderOfGeneratedCode) {
  const CPrimitiveRestrictions restrictions("p", 1, 2, "a", "b", "c", "d", 3, 4, 5);
  CPrimitiveRestrictions assigned;
  assigned = restrictions;
  for (const CPrimitiveRestrictions& r :
       {restrictions, CPrimitiveRestrictions(restrictions), assigned}) {
    EXPECT_EQ("p", r.GetPattern());
    EXPECT_EQ(1, r.GetMinLength());
    EXPECT_EQ(2, r.GetMaxLength());
    EXPECT_EQ("a", r.GetMinInclusive());
    EXPECT_EQ("b", r.GetMaxInclusive());
    EXPECT_EQ("c", r.GetMinExclusive());
    EXPECT_EQ("d", r.GetMaxExclusive());
    EXPECT_EQ(3, r.GetLength());
    EXPECT_EQ(4, r.GetTotalDigits());
    EXPECT_EQ(5, r.GetFractionDigits());
  }
}

TEST(PrimitiveRestrictions, TakesNullForAnAbsentText) {
  const CPrimitiveRestrictions restrictions(nullptr, -1, -1, nullptr, nullptr, nullptr, nullptr, -1,
                                            -1, -1);
  EXPECT_EQ("", restrictions.GetPattern());
  CheckPrimitiveRestriction("name", MakeValue(QzXmlLib16::ItemType_i4, "1"),
                            QzXmlLib16::ItemType_i4, restrictions);
}

TEST(PrimitiveRestrictions, ACopyMatchesItsOwnPattern) {
  CPrimitiveRestrictions digits = Pattern("[0-9]+").Make();
  EXPECT_TRUE(digits.MatchesPattern("12"));
  CPrimitiveRestrictions copy(digits);
  EXPECT_TRUE(copy.MatchesPattern("12"));
  EXPECT_FALSE(copy.MatchesPattern("ab"));

  const CPrimitiveRestrictions letters = Pattern("[a-z]+").Make();
  EXPECT_TRUE(letters.MatchesPattern("ab"));
  copy = letters;
  EXPECT_TRUE(copy.MatchesPattern("ab"));
  EXPECT_FALSE(copy.MatchesPattern("12"));
  copy = Pattern("x").Make();
  EXPECT_TRUE(copy.MatchesPattern("x"));
  EXPECT_FALSE(copy.MatchesPattern("ab"));
  copy = CPrimitiveRestrictions();
  EXPECT_TRUE(copy.MatchesPattern("anything"));
  const CPrimitiveRestrictions& same = digits;
  digits = same;
  EXPECT_TRUE(digits.MatchesPattern("12"));
}

// --- Kinds ---

TEST(PrimitiveRestrictions, AKindWithoutACheckThrows) {
  const CPrimitiveRestrictions none;
  QzVariant value;
  value.SetChar('x');
  EXPECT_QZ_THROW(CQzInvalidValueException, "Unknown type [char].",
                  CheckPrimitiveRestriction("name", value, QzXmlLib16::ItemType_char, none));
  value.SetString("x");
  for (const int type : {0, 27, 28, 29, -1}) {
    EXPECT_QZ_THROW(CQzInvalidValueException, "Unknown type [string].",
                    CheckPrimitiveRestriction("name", value, static_cast<ItemType>(type), none));
  }
}

TEST(PrimitiveRestrictions, AKindWithoutANameThrowsTheVariantsFailure) {
  const CPrimitiveRestrictions none;
  QzVariant value;
  EXPECT_QZ_THROW(CQzException, "Invalid Type 0",
                  CheckPrimitiveRestriction("name", value, QzXmlLib16::ItemType_None, none));
  value.SetXmlObject(nullptr);
  EXPECT_QZ_THROW(
      CQzException, "Invalid Type 27",
      CheckPrimitiveRestriction("name", value, QzXmlLib16::ItemType_XmlObjectBase, none));
  value.SetXmlCollection(nullptr);
  EXPECT_QZ_THROW(
      CQzException, "Invalid Type 28",
      CheckPrimitiveRestriction("name", value, QzXmlLib16::ItemType_XmlCollection, none));
}

TEST(PrimitiveRestrictions, ABooleanAlwaysPasses) {
  Facets facets = Pattern("x");
  facets.minLength = 100;
  facets.minInclusive = "no number";
  facets.totalDigits = 0;
  EXPECT_EQ("", Check(QzXmlLib16::ItemType_boolean, "true", facets));
}

TEST(PrimitiveRestrictions, TheVariantHoldsTheKindThatIsChecked) {
  QzVariant value;
  value.SetString("x");
  EXPECT_QZ_ASSERT(
      "m_type == ItemType_i4",
      CheckPrimitiveRestriction("name", value, QzXmlLib16::ItemType_i4, CPrimitiveRestrictions()));
}

// --- Bounds ---

TEST(PrimitiveRestrictions, IntegersKeepTheirBounds) {
  for (const NumberKind& kind : kIntegers) {
    EXPECT_EQ("", Check(kind.type, "10", MinInclusive("10")));
    EXPECT_EQ("", Check(kind.type, "11", MinInclusive("10")));
    EXPECT_EQ(InvalidInteger(kind, "9"), Check(kind.type, "9", MinInclusive("10")));

    EXPECT_EQ("", Check(kind.type, "10", MaxInclusive("10")));
    EXPECT_EQ("", Check(kind.type, "9", MaxInclusive("10")));
    EXPECT_EQ(InvalidInteger(kind, "11"), Check(kind.type, "11", MaxInclusive("10")));

    EXPECT_EQ("", Check(kind.type, "11", MinExclusive("10")));
    EXPECT_EQ(InvalidInteger(kind, "10"), Check(kind.type, "10", MinExclusive("10")));
    EXPECT_EQ(InvalidInteger(kind, "9"), Check(kind.type, "9", MinExclusive("10")));

    EXPECT_EQ("", Check(kind.type, "9", MaxExclusive("10")));
    EXPECT_EQ(InvalidInteger(kind, "10"), Check(kind.type, "10", MaxExclusive("10")));
    EXPECT_EQ(InvalidInteger(kind, "11"), Check(kind.type, "11", MaxExclusive("10")));
  }
}

TEST(PrimitiveRestrictions, BoundsAreComparedWithTheSignOfTheKind) {
  EXPECT_EQ("", Check(QzXmlLib16::ItemType_i1, "-128", MaxInclusive("-1")));
  EXPECT_EQ("Invalid Value for name [-128]",
            Check(QzXmlLib16::ItemType_i1, "-128", MinInclusive("0")));
  EXPECT_EQ("", Check(QzXmlLib16::ItemType_i1, "127", MinExclusive("-128")));
  EXPECT_EQ("", Check(QzXmlLib16::ItemType_ui1, "200", MinInclusive("127")));
  EXPECT_EQ("", Check(QzXmlLib16::ItemType_ui4, "4294967295", MinInclusive("2147483648")));
  EXPECT_EQ("", Check(QzXmlLib16::ItemType_ui8, "18446744073709551615",
                      MinExclusive("18446744073709551614")));
  EXPECT_EQ("Invalid Value for name [-9223372036854775808].",
            Check(QzXmlLib16::ItemType_i8, "-9223372036854775808", MinInclusive("0")));
}

TEST(PrimitiveRestrictions, AnUnsignedNumberIsShownAsASignedOne) {
  EXPECT_EQ("Invalid Value for name [-1]",
            Check(QzXmlLib16::ItemType_ui4, "4294967295", MaxInclusive("1")));
  EXPECT_EQ("Invalid Value for name [65535]",
            Check(QzXmlLib16::ItemType_ui2, "65535", MaxInclusive("1")));
  EXPECT_EQ("Invalid Value for name [255]",
            Check(QzXmlLib16::ItemType_ui1, "255", MaxInclusive("1")));
  EXPECT_EQ("Invalid Value for name [18446744073709551615].",
            Check(QzXmlLib16::ItemType_ui8, "18446744073709551615", MaxInclusive("1")));
}

TEST(PrimitiveRestrictions, AFailedFacetIsAPlainException) {
  const QzVariant value = MakeValue(QzXmlLib16::ItemType_i4, "9");
  EXPECT_QZ_THROW(
      CQzException, "Invalid Value for name [9]",
      CheckPrimitiveRestriction("name", value, QzXmlLib16::ItemType_i4, MinInclusive("10").Make()));
  EXPECT_QZ_THROW(CQzException, "Invalid Value for other [9]",
                  CheckPrimitiveRestriction("other", value, QzXmlLib16::ItemType_i4,
                                            MinInclusive("10").Make()));
}

TEST(PrimitiveRestrictions, AFacetIsCollapsedBeforeItIsRead) {
  EXPECT_EQ("", Check(QzXmlLib16::ItemType_i4, "10", MinInclusive(" 10 ")));
  EXPECT_EQ("Invalid Value for name [9]",
            Check(QzXmlLib16::ItemType_i4, "9", MinInclusive("\n\t10\r\n")));
  EXPECT_EQ("", Check(QzXmlLib16::ItemType_r8, "10", MaxInclusive(" 10.0 ")));
}

TEST(PrimitiveRestrictions, AFacetThatDoesNotParseFailsAsItsConversionDoes) {
  const Facets bounds[] = {MinInclusive("x"), MaxInclusive("x"), MinExclusive("x"),
                           MaxExclusive("x")};
  for (const Facets& facets : bounds) {
    const QzVariant value = MakeValue(QzXmlLib16::ItemType_i4, "1");
    EXPECT_QZ_THROW(
        CQzInvalidValueException, "The value [x] can not be converted to a i4",
        CheckPrimitiveRestriction("name", value, QzXmlLib16::ItemType_i4, facets.Make()));
  }
  EXPECT_EQ("The value [128] is to large to fit in a i1",
            Check(QzXmlLib16::ItemType_i1, "1", MaxInclusive("128")));
  EXPECT_EQ("The value [] can not be converted to a ui8",
            Check(QzXmlLib16::ItemType_ui8, "1", MaxInclusive(" ")));
  EXPECT_EQ("The value [1,5] can not be converted to a r4",
            Check(QzXmlLib16::ItemType_r4, "1", MaxInclusive("1,5")));
}

TEST(PrimitiveRestrictions, FacetsAreReadAndTestedOneAfterTheOther) {
  Facets facets = MinInclusive("10");
  facets.maxInclusive = "x";
  EXPECT_EQ("Invalid Value for name [9]", Check(QzXmlLib16::ItemType_i4, "9", facets));
  EXPECT_EQ("The value [x] can not be converted to a i4",
            Check(QzXmlLib16::ItemType_i4, "10", facets));

  facets = MaxInclusive("10");
  facets.minExclusive = "y";
  EXPECT_EQ("Invalid Value for name [11]", Check(QzXmlLib16::ItemType_i4, "11", facets));
  EXPECT_EQ("The value [y] can not be converted to a i4",
            Check(QzXmlLib16::ItemType_i4, "10", facets));

  facets = MinExclusive("10");
  facets.maxExclusive = "z";
  EXPECT_EQ("Invalid Value for name [10]", Check(QzXmlLib16::ItemType_i4, "10", facets));
  EXPECT_EQ("The value [z] can not be converted to a i4",
            Check(QzXmlLib16::ItemType_i4, "11", facets));

  facets = MaxExclusive("x");
  facets.totalDigits = 1;
  EXPECT_EQ("The value [x] can not be converted to a i4",
            Check(QzXmlLib16::ItemType_i4, "100", facets));
}

TEST(PrimitiveRestrictions, RealsKeepTheirBounds) {
  for (const ItemType type : {QzXmlLib16::ItemType_r4, QzXmlLib16::ItemType_r8}) {
    EXPECT_EQ("", Check(type, "0.5", MinInclusive("0.5")));
    EXPECT_EQ("Invalid Value for name [0.250000]", Check(type, "0.25", MinInclusive("0.5")));
    EXPECT_EQ("", Check(type, "0.5", MaxInclusive("0.5")));
    EXPECT_EQ("Invalid Value for name [0.750000]", Check(type, "0.75", MaxInclusive("0.5")));
    EXPECT_EQ("Invalid Value for name [0.500000]", Check(type, "0.5", MinExclusive("0.5")));
    EXPECT_EQ("Invalid Value for name [-0.500000]", Check(type, "-0.5", MaxExclusive("-0.5")));
    EXPECT_EQ("", Check(type, "INF", MinInclusive("0")));
    EXPECT_EQ("Invalid Value for name [inf]", Check(type, "INF", MaxExclusive("INF")));
    EXPECT_EQ("Invalid Value for name [-inf]", Check(type, "-INF", MinInclusive("0")));
    EXPECT_EQ("", Check(type, "1.123456789", TotalDigits(1)));
  }
  EXPECT_EQ("Invalid Value for name [100000000000000000000.000000]",
            Check(QzXmlLib16::ItemType_r8, "1e20", MaxInclusive("0")));
}

TEST(PrimitiveRestrictions, NoNumberFailsEveryBoundThatIsPresent) {
  for (const ItemType type : {QzXmlLib16::ItemType_r4, QzXmlLib16::ItemType_r8}) {
    EXPECT_EQ("", Check(type, "NaN", Facets()));
    for (const Facets& facets :
         {MinInclusive("0"), MaxInclusive("0"), MinExclusive("0"), MaxExclusive("0")}) {
      EXPECT_EQ("Invalid Value for name [nan]", Check(type, "NaN", facets));
    }
    EXPECT_EQ("Invalid Value for name [1.000000]", Check(type, "1", MinInclusive("NaN")));
  }
}

TEST(PrimitiveRestrictions, AnR4IsComparedAsAFloat) {
  EXPECT_EQ("", Check(QzXmlLib16::ItemType_r4, "0.1", MinInclusive("0.1")));
  EXPECT_EQ("", Check(QzXmlLib16::ItemType_r4, "0.1", MaxInclusive("0.1")));
  EXPECT_EQ("", Check(QzXmlLib16::ItemType_r4, "0.1", MinInclusive("0.10000000000001")));
}

TEST(PrimitiveRestrictions, ChecksAreTheSameInEveryLocale) {
  const qztest::CommaLocale locale;
  if (!locale.Works()) GTEST_SKIP() << "localedef ended with " << locale.GetStatus();
  EXPECT_EQ("", Check(QzXmlLib16::ItemType_r8, "0.75", MinInclusive("0.5")));
  EXPECT_EQ("Invalid Value for name [0.250000]",
            Check(QzXmlLib16::ItemType_r8, "0.25", MinInclusive("0.5")));
  EXPECT_EQ("Invalid Value for name [0.250000]",
            Check(QzXmlLib16::ItemType_r4, "0.25", MinInclusive("0.5")));
}

// --- Digits ---

TEST(PrimitiveRestrictions, TheSignOfANumberCountsAsADigit) {
  EXPECT_EQ("", Check(QzXmlLib16::ItemType_i4, "99", TotalDigits(2)));
  EXPECT_EQ("Invalid Value for name [-10]", Check(QzXmlLib16::ItemType_i4, "-10", TotalDigits(2)));
  EXPECT_EQ("Invalid Value for name [-99]", Check(QzXmlLib16::ItemType_i4, "-99", TotalDigits(2)));
  EXPECT_EQ("", Check(QzXmlLib16::ItemType_i4, "-9", TotalDigits(2)));
}

TEST(PrimitiveRestrictions, IntegersKeepTheirTotalDigits) {
  for (const NumberKind& kind : kIntegers) {
    EXPECT_EQ("", Check(kind.type, "99", TotalDigits(2)));
    EXPECT_EQ("", Check(kind.type, "0099", TotalDigits(2)));
    EXPECT_EQ(InvalidInteger(kind, "100"), Check(kind.type, "100", TotalDigits(2)));
    EXPECT_EQ(InvalidInteger(kind, "1"), Check(kind.type, "1", TotalDigits(0)));
  }
  EXPECT_EQ("", Check(QzXmlLib16::ItemType_ui8, "18446744073709551615", TotalDigits(20)));
  EXPECT_EQ("Invalid Value for name [18446744073709551615].",
            Check(QzXmlLib16::ItemType_ui8, "18446744073709551615", TotalDigits(19)));
}

// --- Lengths ---

TEST(PrimitiveRestrictions, TextsKeepTheirLengths) {
  EXPECT_EQ("", CheckText("abc", MinLength(3)));
  EXPECT_EQ("Invalid Value for name [ab].", CheckText("ab", MinLength(3)));
  EXPECT_EQ("", CheckText("abc", MaxLength(3)));
  EXPECT_EQ("Invalid Value for name [abcd].", CheckText("abcd", MaxLength(3)));
  EXPECT_EQ("", CheckText("abc", Length(3)));
  EXPECT_EQ("Invalid Value for name [ab].", CheckText("ab", Length(3)));
  EXPECT_EQ("Invalid Value for name [abcd].", CheckText("abcd", Length(3)));
  EXPECT_EQ("", CheckText("", MinLength(0)));
  EXPECT_EQ("Invalid Value for name [a].", CheckText("a", MaxLength(0)));
  EXPECT_EQ("Invalid Value for name [].", CheckText("", Length(1)));
}

TEST(PrimitiveRestrictions, TheLengthOfATextIsItsBytes) {
  EXPECT_EQ("", CheckText("\xC3\xA4", Length(2)));
  EXPECT_EQ("Invalid Value for name [\xC3\xA4].", CheckText("\xC3\xA4", Length(1)));
}

TEST(PrimitiveRestrictions, BinaryDataKeepsItsLengths) {
  EXPECT_EQ("", Check(QzXmlLib16::ItemType_hexBinary, "4D616E", Length(3)));
  EXPECT_EQ("Invalid Value for name [4D616E].",
            Check(QzXmlLib16::ItemType_hexBinary, "4d616e", Length(6)));
  EXPECT_EQ("Invalid Value for name [4D616E].",
            Check(QzXmlLib16::ItemType_hexBinary, "4d616e", MaxLength(2)));
  EXPECT_EQ("Invalid Value for name [4D616E].",
            Check(QzXmlLib16::ItemType_hexBinary, "4d616e", MinLength(4)));
  EXPECT_EQ("", Check(QzXmlLib16::ItemType_base64Binary, "TWFu", Length(3)));
  EXPECT_EQ("Invalid Value for name [TWFu].",
            Check(QzXmlLib16::ItemType_base64Binary, "TW Fu", Length(4)));
  EXPECT_EQ("Invalid Value for name [TWE=].",
            Check(QzXmlLib16::ItemType_base64Binary, "TWE=", MinLength(3)));
  EXPECT_EQ("Invalid Value for name [].", Check(QzXmlLib16::ItemType_hexBinary, "", MinLength(1)));
}

TEST(PrimitiveRestrictions, LengthsAreTestedAheadOfThePattern) {
  Facets facets = Pattern("(");
  facets.minLength = 2;
  EXPECT_EQ("Invalid Value for name [a].", CheckText("a", facets));
}

// --- Patterns ---

TEST(PrimitiveRestrictions, TextsKeepTheirPattern) {
  EXPECT_EQ("", CheckText("abc", Pattern("abc")));
  EXPECT_EQ("Invalid Value for name [xabcx].", CheckText("xabcx", Pattern("abc")));
  EXPECT_EQ("", CheckText("anything", Pattern("")));
  EXPECT_EQ("Invalid Value for name [].", CheckText("", Pattern("a")));
  EXPECT_EQ("", CheckText("", Pattern("a?")));
}

TEST(PrimitiveRestrictions, AnInvalidPatternNamesTheValueTwice) {
  QzVariant value;
  value.SetString("some value");
  EXPECT_QZ_THROW(
      CQzException,
      "Invalid Regular Expression: some value Error: 'missing closing parenthesis'\n"
      "Invalid Value for name [some value].",
      CheckPrimitiveRestriction("name", value, QzXmlLib16::ItemType_string, Pattern("(").Make()));
  EXPECT_QZ_THROW(CQzException,
                  "Invalid Regular Expression: some value Error: 'missing closing parenthesis'",
                  MatchesRegularExpression("(", "some value"));
  EXPECT_QZ_THROW(CQzException,
                  "Invalid Regular Expression: x Error: 'quantifier does not follow a repeatable "
                  "item'",
                  MatchesRegularExpression("*", "x"));
}

TEST(PrimitiveRestrictions, AnInvalidPatternStaysInvalid) {
  const CPrimitiveRestrictions restrictions = Pattern("[").Make();
  for (int i = 0; i < 3; ++i) {
    EXPECT_QZ_THROW(CQzException,
                    "Invalid Regular Expression: v Error: 'missing terminating ] for character "
                    "class'",
                    restrictions.MatchesPattern("v"));
  }
}

struct PatternCase {
  const char* pattern;
  const char* value;
  bool matches;
};

TEST(PrimitiveRestrictions, MatchesWholeValues) {
  const PatternCase cases[] = {
      {"abc", "abc", true},
      {"abc", "xabc", false},
      {"abc", "abcx", false},
      {"abc", "abc\n", false},
      {"abc\\n", "abc\n", true},
      {"abc\\s", "abc\n", true},
      {"", "", true},
      {"", "\n", false},
      {"a|ab", "ab", true},
      {"a|a\\n", "a\n", false},  // the first branch ends ahead of the last line feed
      {"a\\n|a", "a\n", true},
      {"^a$", "a", true},  // anchors, where XSD has plain characters
      {"a|b", "b", true},
      {"a|b", "ab", false},
      {"(a)(b)(c)", "abc", true},
      {"a{2,3}", "aa", true},
      {"a{2,3}", "aaaa", false},
      {"[a-c]+", "abcabc", true},
      {"\\d{3}-[A-Z]{2}", "123-AB", true},
      {"\\d{3}-[A-Z]{2}", "123-Ab", false},
      {".", "\xC3\xA4", true},
      {".", "\xE2\x82\xAC", true},
      {"..", "\xC3\xA4", false},
      {"\xC3\xA4+", "\xC3\xA4\xC3\xA4", true},
      {"\\p{Lu}", "\xC3\x84", true},
      {"\\p{Lu}", "\xC3\xA4", false},
  };
  for (const PatternCase& c : cases) {
    EXPECT_EQ(c.matches, Matches(c.pattern, c.value)) << c.pattern << " on " << c.value;
  }
}

TEST(PrimitiveRestrictions, TranslatesTheEscapesOfNames) {
  const PatternCase cases[] = {
      {"\\i\\c*", "a1:b", true},
      {"\\i\\c*", "1a", false},
      {"\\i\\c*", ":a", true},
      {"\\i\\c*", "_a.b-c:d", true},
      {"\\i\\c*", "", false},
      {"\\i\\c*", "a b", false},
      {"\\i", "_", true},
      {"\\i", "-", false},
      {"\\I", "1", true},
      {"\\I", "-", true},
      {"\\I", "a", false},
      {"\\I", ":", true},  // the translation does not take it out
      {"\\c", ".", true},
      {"\\c", "-", true},
      {"\\c", ":", true},
      {"\\c", "1", true},
      {"\\c", "/", false},
      {"\\C", "/", true},
      {"\\C", "a", false},
      {"\\C", ".", false},
      {"\\C", "-", false},
      {"\\C", ":", false},
      // Letters and digits are those of ASCII.
      {"\\i", "\xC3\xA4", false},
      {"\\I", "\xC3\xA4", true},
      {"\\c", "\xC3\xA4", false},
      {"\\C", "\xC3\xA4", true},
      {"\\w", "\xC3\xA4", false},
      {"\\d", "\xD9\xA1", false},
  };
  for (const PatternCase& c : cases) {
    EXPECT_EQ(c.matches, Matches(c.pattern, c.value)) << c.pattern << " on " << c.value;
  }
}

TEST(PrimitiveRestrictions, TranslatesFourBlocks) {
  const PatternCase cases[] = {
      {"\\p{IsBasicLatin}*", "az09~\x7F", true},
      {"\\p{IsBasicLatin}", "\xC2\x80", false},
      {"\\p{IsLatin-1Supplement}", "\xC2\x80", true},
      {"\\p{IsLatin-1Supplement}", "\xC3\xBF", true},
      {"\\p{IsLatin-1Supplement}", "\x7F", false},
      {"\\p{IsLatin-1Supplement}", "\xC4\x80", false},
      {"\\p{IsLatinExtended-A}", "\xC4\x80", true},
      {"\\p{IsLatinExtended-A}", "\xC5\xBF", true},
      {"\\p{IsLatinExtended-A}", "\xC6\x80", false},
      {"\\p{IsLatinExtended-A}", "\xC3\xBF", false},
      {"\\p{IsBasicLatin}\\p{IsLatinExtended-A}", "a\xC4\x80", true},
      // Inside a class the translation opens a class in the class, which ends early.
      {"[\\p{IsBasicLatin}]", "a]", true},
      {"[\\p{IsBasicLatin}]", "a", false},
  };
  for (const PatternCase& c : cases) {
    EXPECT_EQ(c.matches, Matches(c.pattern, c.value)) << c.pattern << " on " << c.value;
  }
}

TEST(PrimitiveRestrictions, TheBlockOfLatinExtendedBIsRefused) {
  EXPECT_QZ_THROW(CQzException,
                  "Invalid Regular Expression: x Error: 'range out of order in character class'",
                  MatchesRegularExpression("\\p{IsLatinExtended-B}", "x"));
}

TEST(PrimitiveRestrictions, OtherBlocksReachTheEngineAsTheyStand) {
  EXPECT_QZ_THROW(CQzException,
                  "Invalid Regular Expression: x Error: 'unknown property after \\P or \\p'",
                  MatchesRegularExpression("\\p{IsGreek}", "x"));
}

TEST(PrimitiveRestrictions, AnEscapedBackslashKeepsWhatFollowsFromBeingAnEscape) {
  const PatternCase cases[] = {
      {"a\\\\c", "a\\c", true},
      {"a\\\\c", "a\\b", false},
      {"a\\\\c", "abc", false},
      {"a\\\\\\c", "a\\b", true},
      {"a\\\\\\c", "a\\:", true},
      {"a\\\\\\\\c", "a\\\\c", true},
      {"\\\\i", "\\i", true},
      {"\\\\p{IsBasicLatin}", "x", false},
      {"[\\\\]", "\\", true},
      {"a\x01"
       "b",
       "a\\b", true},  // the mark of the translation itself
  };
  for (const PatternCase& c : cases) {
    EXPECT_EQ(c.matches, Matches(c.pattern, c.value)) << c.pattern << " on " << c.value;
  }
}

TEST(PrimitiveRestrictions, AValueEndsAtItsFirstZeroByteForThePattern) {
  EXPECT_TRUE(Matches("ab", std::string("ab\0c", 4)));
  EXPECT_TRUE(Matches("", std::string(1, '\0')));
  QzVariant value;
  value.SetString(std::string("ab\0c", 4));
  Facets facets = Pattern("ab");
  facets.length = 4;
  CheckPrimitiveRestriction("name", value, QzXmlLib16::ItemType_string, facets.Make());
}

TEST(PrimitiveRestrictions, AValueThatIsNotUtf8DoesNotMatch) {
  for (const char* const value :
       {"\xFF", "a\xC3", "\xED\xA0\x80", "\xC0\x80", "\xF8\x88\x80\x80\x80"}) {
    EXPECT_FALSE(Matches(".*", value));
    EXPECT_EQ(std::string("Invalid Value for name [") + value + "].",
              CheckText(value, Pattern(".*")));
  }
}

TEST(PrimitiveRestrictions, APatternThatIsNotUtf8IsRefused) {
  EXPECT_QZ_THROW(CQzException,
                  "Invalid Regular Expression: x Error: 'UTF-8 error: illegal byte (0xfe or "
                  "0xff)'",
                  MatchesRegularExpression("\xFF", "x"));
}

TEST(PrimitiveRestrictions, PatternAndValueComeInTheLocalEncoding) {
  QzXmlLib16::SetLocalCharEncoding(28591);  // ISO 8859-1
  const CPrimitiveRestrictions umlauts = Pattern("\xE4+").Make();
  const bool matches = umlauts.MatchesPattern("\xE4\xE4");
  const bool matchesOther = umlauts.MatchesPattern("\xE5");
  const bool matchesOne = Matches(".", "\xE4");
  const bool matchesEmpty = Matches("x*", "");
  QzXmlLib16::SetLocalCharEncoding(65001);
  EXPECT_TRUE(matches);
  EXPECT_FALSE(matchesOther);
  EXPECT_TRUE(matchesOne);
  EXPECT_TRUE(matchesEmpty);
  const CPrimitiveRestrictions utf8 = Pattern("\xC3\xA4+").Make();
  EXPECT_TRUE(utf8.MatchesPattern("\xC3\xA4\xC3\xA4"));
  QzXmlLib16::SetLocalCharEncoding(3);
}

TEST(PrimitiveRestrictions, ACatastrophicPatternFailsAtOnceAsAnOrdinaryMismatch) {
  const std::string many(30, 'a');
  const PatternCase cases[] = {
      {"(a+)+", "", false},       {"(a|aa)+", "", false},  {"(a*)*b?", "", false},
      {"([a-z]+)*", "", false},   {"(.*)*\\d", "", false}, {"((a{1,9}){1,9}){1,9}", "", false},
      {"(x?x?x?a?)*", "", false},
  };
  for (const PatternCase& c : cases) {
    EXPECT_LT(MeasureMilliseconds(c.pattern, many + "!"), 1000.0) << c.pattern;
  }
  EXPECT_LT(MeasureMilliseconds("(a+)+", std::string(5000, 'a') + "!"), 1000.0);
  EXPECT_EQ("Invalid Value for name [" + many + "!].", CheckText(many + "!", Pattern("(a+)+")));
}

TEST(PrimitiveRestrictions, ALongValueMatchesAPlainPattern) {
  std::string name = "a";
  for (int i = 0; i < 100000; ++i) name += "b.c-d";
  EXPECT_TRUE(Matches("\\i\\c*", name));
  EXPECT_FALSE(Matches("\\i\\c*", name + " "));
  std::string numbers;
  for (int i = 0; i < 100000; ++i) numbers += "123,";
  EXPECT_TRUE(Matches("(\\d{1,3},)*\\d", numbers + "1"));
  EXPECT_FALSE(Matches("(\\d{1,3},)*\\d", numbers));
}

TEST(PrimitiveRestrictions, ManyPatternsFindTheirOwn) {
  for (int round = 0; round < 2; ++round) {
    for (int i = 0; i < 3000; ++i) {
      const std::string text = "p" + std::to_string(i);
      ASSERT_TRUE(Matches(text, text));
      ASSERT_FALSE(Matches(text, text + "x"));
    }
  }
}

TEST(PrimitiveRestrictions, ThreadsShareOneSetOfFacets) {
  Facets facets = Pattern("[a-z]+[0-9]*");
  facets.maxLength = 100;
  const CPrimitiveRestrictions restrictions = facets.Make();
  std::atomic<int> failures{0};
  const auto work = [&](int seed) {
    for (int i = 0; i < 500; ++i) {
      const CPrimitiveRestrictions copy(restrictions);
      const std::string text = "ab" + std::to_string(i + seed);
      if (!restrictions.MatchesPattern(text) || restrictions.MatchesPattern("1" + text)) ++failures;
      if (!copy.MatchesPattern(text) ||
          !Matches("p" + std::to_string(i % 7), "p" + std::to_string(i % 7))) {
        ++failures;
      }
    }
  };
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) threads.emplace_back(work, i * 1000);
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(0, failures.load());
}
