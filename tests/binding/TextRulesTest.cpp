#include <thread>

#include "qzxml/binding/TextRules.h"
#include "qzxml/runtime/Encoder.h"
#include "tests/support/QzTest.h"

using namespace QzXmlLib16;

namespace {

struct TypeCase {
  XsdType type;
  std::vector<std::string> accepted;
  std::vector<std::string> refused;
};

void ExpectAccepted(const CTextRules& rules, const std::vector<std::string>& accepted,
                    const std::vector<std::string>& refused) {
  for (const std::string& text : accepted) EXPECT_TRUE(rules.Accepts(text)) << text;
  for (const std::string& text : refused) EXPECT_FALSE(rules.Accepts(text)) << text;
}

template <std::size_t Count>
void ExpectTypes(const TypeCase (&cases)[Count]) {
  for (const TypeCase& c : cases) {
    SCOPED_TRACE(c.type);
    ExpectAccepted(CTextRules(c.type), c.accepted, c.refused);
  }
}

}  // namespace

// --- Lexical spaces.

TEST(TextRules, KnowsTheTextTypes) {
  const TypeCase cases[] = {
      {XsdType_anySimpleType, {"", " a  b ", "\n"}, {std::string("a\0b", 3)}},
      {XsdType_string, {"", " a  b\t\n "}, {std::string("\0", 1)}},
      {XsdType_normalizedString, {"", " a\tb "}, {}},
      {XsdType_token, {"", " a\tb "}, {}},
      {XsdType_language,
       {"en", "en-US", "i-klingon", "x-12345678", " de "},
       {"", "123", "abcdefghi", "en_US", "en-", "-en", "en--US", "en-123456789", "e1"}},
      {XsdType_Name,
       {"a", "_a", ":a:b", "a-1.b", "\xC3\xA9", " a "},
       {"", "1a", "-a", "a b", "a\xC3\x97", "\xFF"}},
      {XsdType_NCName, {"a", "_a.b-1"}, {"", "a:b", ":a", "1a"}},
      {XsdType_ID, {"a1"}, {"1a", "a:b", ""}},
      {XsdType_IDREF, {"a1"}, {"1a", "a:b", ""}},
      {XsdType_ENTITY, {"a1"}, {"1a", "a:b", ""}},
      {XsdType_NMTOKEN, {"a", "1a", "-", ":", "\xC2\xB7"}, {"", "a b", "a,b", "a/"}},
      {XsdType_QName, {"a", "a:b"}, {"", ":a", "a:", "a:b:c", "1:a", "a b"}},
      {XsdType_NOTATION, {"a", "a:b"}, {"", "a:"}},
      {XsdType_anyURI,
       {"", "http://a.b/c?d#e", "a b", "../a", "#a", "urn:a:b", "a%20b", "/a:b", "\xC3\xA9"},
       {"%", "a%2", "%zz", "a#b#c", ":a", "1a:b", "a b:c"}},
  };
  ExpectTypes(cases);
}

TEST(TextRules, KnowsTheBuiltInLists) {
  for (const XsdType type : {XsdType_NMTOKENS, XsdType_IDREFS, XsdType_ENTITIES}) {
    ExpectAccepted(CTextRules(type), {"a", "a b", " a\n b\tc "}, {"", " ", "a ,", "a b/"});
  }
  EXPECT_TRUE(CTextRules(XsdType_NMTOKENS).Accepts("1 -a"));
  EXPECT_FALSE(CTextRules(XsdType_IDREFS).Accepts("a 1"));
}

TEST(TextRules, KnowsTheNumbers) {
  const std::string large(1000, '9');
  const TypeCase cases[] = {
      {XsdType_boolean, {"true", "false", "1", "0", " 1 "}, {"", "TRUE", "2", "yes"}},
      {XsdType_decimal,
       {"0", "-1.5", "+1.5", ".5", "5.", "007.00", large + "." + large, " 1 "},
       {"", ".", "+", "1e5", "1,5", "1 2", "--1", "+-1", "INF", "1.2.3"}},
      {XsdType_integer, {"0", "-0", "+7", "007", large}, {"", "1.0", "1.", "-", "a", "1 2"}},
      {XsdType_nonPositiveInteger, {"0", "-0", "+0", "-1", "-" + large}, {"1", "+1"}},
      {XsdType_negativeInteger, {"-1", "-" + large}, {"0", "-0", "1"}},
      {XsdType_nonNegativeInteger, {"0", "-0", "1", large}, {"-1"}},
      {XsdType_positiveInteger, {"1", "+1", "001", large}, {"0", "-0", "-1"}},
      {XsdType_long,
       {"9223372036854775807", "-9223372036854775808", "+0009223372036854775807"},
       {"9223372036854775808", "-9223372036854775809"}},
      {XsdType_int, {"2147483647", "-2147483648"}, {"2147483648", "-2147483649", "1.0"}},
      {XsdType_short, {"32767", "-32768"}, {"32768", "-32769"}},
      {XsdType_byte, {"127", "-128", "+1", "-0"}, {"128", "-129"}},
      {XsdType_unsignedLong, {"0", "-0", "18446744073709551615"}, {"-1", "18446744073709551616"}},
      {XsdType_unsignedInt, {"0", "4294967295", "+1"}, {"-1", "4294967296"}},
      {XsdType_unsignedShort, {"65535"}, {"-1", "65536"}},
      {XsdType_unsignedByte, {"255"}, {"-1", "256"}},
      {XsdType_float,
       {"0", "-0", "1.5E-3", "1e400", "+.5e+2", "INF", "-INF", "NaN", "12."},
       {"", "+INF", "inf", "nan", "1e", "1e1.5", "e5", "0x10", "1 e5", "."}},
      {XsdType_double, {"1e-400", "INF", "NaN"}, {"-NaN", "Infinity", "1.#INF"}},
  };
  ExpectTypes(cases);
}

TEST(TextRules, KnowsBinaryData) {
  const TypeCase cases[] = {
      {XsdType_hexBinary, {"", "0aF9", " 00 "}, {"0", "0g", "00 00", "0x00"}},
      {XsdType_base64Binary,
       {"", "YWJj", "YW Jj", "YQ==", "YW I=", " Y Q = = ", "YWJjYQ=="},
       {"YWJ", "YQ=", "YQ===", "YR==", "YWJ=a", "YWK=YWJj", "YW=j", "=", "Y!Jj", "YWB="}},
  };
  ExpectTypes(cases);
}

// --- Facets.

TEST(TextRules, WhiteSpaceComesFirst) {
  static const CPatternStep kLetters[] = {"a b"};
  EXPECT_FALSE(CTextRules(XsdType_string).Patterns(kLetters).Accepts("a\nb"));
  EXPECT_TRUE(CTextRules(XsdType_normalizedString).Patterns(kLetters).Accepts("a\nb"));
  EXPECT_FALSE(CTextRules(XsdType_normalizedString).Patterns(kLetters).Accepts(" a b"));
  EXPECT_TRUE(CTextRules(XsdType_token).Patterns(kLetters).Accepts("\ta \r\n b "));
  const CTextRules replaced = CTextRules(XsdType_string)
                                  .Patterns(kLetters)
                                  .Whitespace(CWhitespaceUtils::WhitespaceRule_Replace);
  EXPECT_TRUE(replaced.Accepts("a\tb"));
  const CTextRules collapsed = CTextRules(XsdType_string)
                                   .Patterns(kLetters)
                                   .Whitespace(CWhitespaceUtils::WhitespaceRule_Collapse);
  EXPECT_TRUE(collapsed.Accepts(" a  b "));
}

TEST(TextRules, ReplacesEachWhiteSpaceByOneSpace) {
  EXPECT_TRUE(CTextRules(XsdType_normalizedString).Length(4).Accepts("a\r\nb"));
  EXPECT_TRUE(CTextRules(XsdType_string).Length(4).Accepts("a\r\nb"));
}

TEST(TextRules, AllPatternsHaveToMatch) {
  static const CPatternStep kSteps[] = {"[a-z]*", "a.*|b"};
  ExpectAccepted(CTextRules(XsdType_string).Patterns(kSteps), {"a", "abc", "b"},
                 {"", "bc", "a1", "xa"});
}

TEST(TextRules, LengthsCountCharactersAndOctets) {
  const std::string e = "\xC3\xA9";
  const std::string digit = "\xF0\x9D\x9F\x8E";
  ExpectAccepted(CTextRules(XsdType_string).Length(2), {"ab", e + digit, "  "},
                 {"", "a", "abc", e, e + digit + "a"});
  ExpectAccepted(CTextRules(XsdType_token).MinLength(2), {"ab", " ab "}, {"a", "  a  ", e});
  ExpectAccepted(CTextRules(XsdType_anyURI).MaxLength(2), {"", "ab", e + e}, {"abc"});
  ExpectAccepted(CTextRules(XsdType_hexBinary).Length(2), {"0011"}, {"00", "001122", ""});
  ExpectAccepted(CTextRules(XsdType_base64Binary).MinLength(2).MaxLength(3),
                 {"YWI=", "YW I =", "YWJj"}, {"YQ==", "", "YWJjYQ=="});
  ExpectAccepted(CTextRules(XsdType_string).MaxLength(0), {""}, {"a"});
  ExpectAccepted(CTextRules(XsdType_string).MinLength(3).MaxLength(2), {}, {"", "ab", "abc"});
  ExpectAccepted(CTextRules(XsdType_QName).Length(2), {"a", "a:b"}, {});
  ExpectAccepted(CTextRules(XsdType_NOTATION).MaxLength(1), {"a:b"}, {});
}

TEST(TextRules, LengthsOfListsCountItems) {
  static const CTextRules kItem(XsdType_string);
  ExpectAccepted(CTextRules::ListOf(kItem).Length(2), {"a b", " abc\n\tdef "}, {"", "a", "a b c"});
  ExpectAccepted(CTextRules::ListOf(kItem), {"", " ", "a"}, {});
  ExpectAccepted(CTextRules(XsdType_NMTOKENS).MaxLength(1), {"abc"}, {"a b", ""});
  ExpectAccepted(CTextRules(XsdType_NMTOKENS).MinLength(2), {"a b"}, {"abc"});
}

TEST(TextRules, DigitsAreThoseOfTheValue) {
  ExpectAccepted(CTextRules(XsdType_decimal).TotalDigits(3),
                 {"123", "-123", "+0123", "1.23", "12.30", "0.012", "123.000", ".5", "0"},
                 {"1234", "12.34", "1000", "0.0012", "-1234"});
  ExpectAccepted(CTextRules(XsdType_integer).TotalDigits(2), {"-99", "0099"}, {"100", "-100"});
  ExpectAccepted(CTextRules(XsdType_decimal).FractionDigits(2), {"1.23", "1.2300", "1", "1."},
                 {"1.234", ".001"});
  ExpectAccepted(CTextRules(XsdType_decimal).FractionDigits(0), {"1.0", "1"}, {"1.1"});
  ExpectAccepted(CTextRules(XsdType_decimal).TotalDigits(4).FractionDigits(1), {"123.4"},
                 {"12.34", "1234.5"});
}

TEST(TextRules, BoundsOfNumbersAreExact) {
  const CTextRules decimal(XsdType_decimal);
  ExpectAccepted(
      decimal.MinInclusive("10").MaxInclusive("20.5"),
      {"10", "10.0", "20.50", "+15", "20.4999999999999999999999999999999999999999999999"},
      {"9.999", "20.51", "-15", "100"});
  ExpectAccepted(decimal.MinExclusive("-1").MaxExclusive("1"), {"0", "-0.5", ".999"},
                 {"1", "-1.0", "2", "-2"});
  const std::string large(500, '9');
  ExpectAccepted(CTextRules(XsdType_integer).MaxExclusive(large.c_str()),
                 {"-" + large, large.substr(1)}, {large, "1" + large});
  ExpectAccepted(CTextRules(XsdType_float).MinInclusive("0.1").MaxExclusive("INF"),
                 {"0.1", "0.10000000149011612", "3E38"}, {"0.09", "INF", "NaN", "-INF", "1e39"});
  ExpectAccepted(CTextRules(XsdType_double).MinExclusive("-INF").MaxInclusive(" 1e2 "),
                 {"-1e308", "100", "99.99"}, {"-INF", "NaN", "100.1", "INF"});
  ExpectAccepted(decimal.MinInclusive("a"), {}, {"1", "0"});
}

TEST(TextRules, EnumerationsCompareValues) {
  static const char* const kNumbers[] = {"1.0", "2", "bad"};
  ExpectAccepted(CTextRules(XsdType_decimal).Enumeration(kNumbers), {"1", "+1.00", "02", "2."},
                 {"3", "-1", "bad", "1.01"});
  static const char* const kReals[] = {"1e2", "NaN", "-INF"};
  ExpectAccepted(CTextRules(XsdType_double).Enumeration(kReals), {"100", "NaN", "-INF", "1.0E+2"},
                 {"INF", "101"});
  static const char* const kFloats[] = {"0.1"};
  ExpectAccepted(CTextRules(XsdType_float).Enumeration(kFloats), {"0.1", "0.10000000149011612"},
                 {"0.1001"});
  static const char* const kBooleans[] = {"true"};
  ExpectAccepted(CTextRules(XsdType_boolean).Enumeration(kBooleans), {"true", "1"}, {"false", "0"});
  static const char* const kTexts[] = {"a b", " c "};
  ExpectAccepted(CTextRules(XsdType_string).Enumeration(kTexts), {"a b", " c "}, {"a  b", "c"});
  ExpectAccepted(CTextRules(XsdType_token).Enumeration(kTexts), {"a  b", "c", " c"}, {"ab"});
  static const char* const kMany[] = {"a\tb", "a  b", "abc", "\n d"};
  ExpectAccepted(CTextRules(XsdType_token).Enumeration(kMany), {"a b", "abc", "d", " a\nb"},
                 {"ab", "a", "abcd", "abd"});
  ExpectAccepted(CTextRules(XsdType_normalizedString).Enumeration(kMany),
                 {"a b", "a  b", "abc", "  d", "a\tb"}, {"d", " d", "a   b"});
  ExpectAccepted(CTextRules(XsdType_string).Enumeration(kMany), {"a\tb", "\n d"}, {"a b", "d"});
  static const char* const kHex[] = {"0AfF"};
  ExpectAccepted(CTextRules(XsdType_hexBinary).Enumeration(kHex), {"0aFF", "0AfF"}, {"0aF0"});
  static const char* const kBase64[] = {"YW I="};
  ExpectAccepted(CTextRules(XsdType_base64Binary).Enumeration(kBase64), {"YWI="}, {"YWJj"});
  static const char* const kNames[] = {"a:b"};
  ExpectAccepted(CTextRules(XsdType_QName).Enumeration(kNames), {"a:b", " a:b"}, {"b", "c:b"});
}

// --- Lists and unions.

TEST(TextRules, ListsHoldItemsOfTheirType) {
  static const char* const kSizes[] = {"S", "M"};
  static const CTextRules kSize = CTextRules(XsdType_token).Enumeration(kSizes);
  ExpectAccepted(CTextRules::ListOf(kSize), {"", "S", "S M S", "\nM\tM "}, {"L", "S L", "S,M"});

  static const CTextRules kDecimal(XsdType_decimal);
  static const char* const kPairs[] = {"1 2", "3.0"};
  static const CPatternStep kShort[] = {".{1,5}"};
  const CTextRules list = CTextRules::ListOf(kDecimal);
  ExpectAccepted(list.Enumeration(kPairs), {"1 2", "1.0  2.00", "3"}, {"2 1", "1 2 3", "", "3 3"});
  ExpectAccepted(list.Patterns(kShort), {"1 2 3", " 1  2 "}, {"1 2 3 4", ""});
  static const char* const kTokens[] = {"a b"};
  ExpectAccepted(CTextRules(XsdType_NMTOKENS).Enumeration(kTokens), {"a b", "a\n b"},
                 {"b a", "a", "a b c"});
}

TEST(TextRules, UnionsTakeTheFirstMemberThatAccepts) {
  static const CTextRules kInt = CTextRules(XsdType_int).MaxInclusive("100");
  static const char* const kWords[] = {"unbounded", "many words"};
  static const CTextRules kWord = CTextRules(XsdType_string).Enumeration(kWords);
  static const CTextRules* const kMembers[] = {&kInt, &kWord};
  const CTextRules either = CTextRules::UnionOf(kMembers);
  ExpectAccepted(either, {"7", " 7 ", "unbounded", "many words"},
                 {"101", "", " unbounded", "many  words", "7 7"});

  static const char* const kSome[] = {"7.0", "07", "unbounded"};
  ExpectAccepted(either.Enumeration(kSome), {"7", "+7", "unbounded"}, {"8", "many words", "7.0"});

  static const CPatternStep kShort[] = {".{1,2}"};
  ExpectAccepted(either.Patterns(kShort), {"7", " 42 "}, {"100", "unbounded"});
}

TEST(TextRules, ValuesOfDifferentPrimitiveTypesDiffer) {
  static const CTextRules kByte(XsdType_byte);
  static const CTextRules kDecimal(XsdType_decimal);
  static const CTextRules kString(XsdType_string);
  static const CTextRules* const kMembers[] = {&kByte, &kDecimal, &kString};
  static const char* const kOne[] = {"1"};
  ExpectAccepted(CTextRules::UnionOf(kMembers).Enumeration(kOne), {"1", "01", "1.0"},
                 {"2", "one", "1e0"});
  static const char* const kWord[] = {"one"};
  ExpectAccepted(CTextRules::UnionOf(kMembers).Enumeration(kWord), {"one"}, {"1", " one"});
}

TEST(TextRules, UnionsOfListsAndListsOfUnionsNest) {
  static const CTextRules kDecimal(XsdType_decimal);
  static const CTextRules kName(XsdType_NCName);
  static const CTextRules* const kEither[] = {&kDecimal, &kName};
  static const CTextRules kItem = CTextRules::UnionOf(kEither);
  static const CTextRules kItems = CTextRules::ListOf(kItem).MaxLength(3);
  static const CTextRules kFlag(XsdType_boolean);
  static const CTextRules* const kMembers[] = {&kFlag, &kItems};
  const CTextRules rules = CTextRules::UnionOf(kMembers);
  ExpectAccepted(rules, {"true", "1.5 a", "", "a b 3"}, {"a b c d", "a ?"});
  static const char* const kSome[] = {"1 a", "1"};
  ExpectAccepted(rules.Enumeration(kSome), {"1.0 a", "true", "1"}, {"a 1", "1.0", "a", "1 a a"});
}

// --- The rest.

TEST(TextRules, CheckTellsTheMemberAndTheText) {
  const CTextRules rules = CTextRules(XsdType_token).MaxLength(2);
  rules.Check("Size", "XL");
  EXPECT_QZ_THROW(CQzException, "Invalid Value for Size [XXL].", rules.Check("Size", "XXL"));
}

TEST(TextRules, APatternThatIsNoneFailsWithTheValue) {
  static const CPatternStep kBroken[] = {"("};
  const CTextRules rules = CTextRules(XsdType_string).Patterns(kBroken);
  EXPECT_QZ_THROW(CQzException,
                  "Invalid Regular Expression: a Error: 'missing closing parenthesis'",
                  rules.Accepts("a"));
  EXPECT_QZ_THROW(CQzException,
                  "Invalid Regular Expression: a Error: 'missing closing parenthesis'\n"
                  "Invalid Value for Size [a].",
                  rules.Check("Size", "a"));
}

TEST(TextRules, CountsTheCharactersOfOtherEncodings) {
  SetLocalCharEncoding(1252);
  static const char* const kNames[] = {"\xC3\xA9t\xC3\xA9"};
  static const CPatternStep kPattern[] = {"\\x{E9}t\\x{E9}"};
  const CTextRules token(XsdType_token);
  EXPECT_TRUE(token.Length(3).Accepts("\xE9t\xE9"));
  EXPECT_TRUE(token.Enumeration(kNames).Accepts("\xE9t\xE9"));
  EXPECT_TRUE(token.Patterns(kPattern).Accepts("\xE9t\xE9"));
  EXPECT_TRUE(CTextRules(XsdType_Name).Accepts("\xE9t\xE9"));
  EXPECT_FALSE(CTextRules(XsdType_Name).Accepts("\xD7"));
  SetLocalCharEncoding(3);
}

TEST(TextRules, ManyThreadsMayBeTheFirstToAskAPattern) {
  static const CPatternStep s_steps[] = {"[a-f]+shared"};
  std::vector<std::thread> threads;
  std::vector<int> accepted(4);
  for (std::size_t i = 0; i < accepted.size(); ++i) {
    threads.emplace_back([&accepted, i] {
      accepted[i] = CTextRules(XsdType_string).Patterns(s_steps).Accepts("abcshared") ? 1 : 0;
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(std::vector<int>(4, 1), accepted);
}

TEST(TextRules, AreMadeWhenTheProgramIsCompiled) {
  static constexpr CPatternStep kSteps[] = {"a"};
  static constexpr CTextRules kRules = CTextRules(XsdType_token).Patterns(kSteps).MinLength(1);
  static constexpr CTextRules kList = CTextRules::ListOf(kRules).MaxLength(2);
  static constexpr const CTextRules* kMembers[] = {&kRules, &kList};
  static constexpr CTextRules kUnion = CTextRules::UnionOf(kMembers);
  ExpectAccepted(kUnion, {"a", "a a", ""}, {"a a a", "b"});
  EXPECT_STREQ("a", kSteps[0].GetText());
}
