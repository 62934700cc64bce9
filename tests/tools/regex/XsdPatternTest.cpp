#include <algorithm>

#include "qzxml/serialization/PrimitiveRestrictions.h"
#include "tests/support/QzTest.h"
#include "tools/generator/regex/XsdPattern.h"

using namespace qzxml::generator;
using QzXmlLib16::MatchesRegularExpression;

namespace {

bool Matches(const std::string& xsdPattern, const std::string& value) {
  return MatchesRegularExpression(TranslateXsdPattern(xsdPattern), value);
}

struct MatchCase {
  const char* pattern;
  std::vector<std::string> matching;
  std::vector<std::string> others;
};

template <std::size_t Count>
void ExpectMatches(const MatchCase (&cases)[Count]) {
  for (const MatchCase& c : cases) {
    const std::string translated = TranslateXsdPattern(c.pattern);
    for (const std::string& value : c.matching) {
      EXPECT_TRUE(MatchesRegularExpression(translated, value))
          << c.pattern << " as " << translated << ": " << value;
    }
    for (const std::string& value : c.others) {
      EXPECT_FALSE(MatchesRegularExpression(translated, value))
          << c.pattern << " as " << translated << ": " << value;
    }
  }
}

}  // namespace

TEST(XsdPattern, WritesWhatAPersonWouldWriteForPcre2) {
  const struct {
    const char* xsd;
    const char* pcre2;
  } cases[] = {
      {"[A-Z]{3}", "[A-Z]{3}"},
      {"[0-9]{1,3}(\\.[0-9]+)?", "[0-9]{1,3}(?:\\.[0-9]+)?"},
      {"a|b", "a|b"},
      {"\\d+", "\\p{Nd}+"},
      {"\\D", "(?:\\P{Nd})\\z"},
      {"\\w*", "[^\\p{P}\\p{Z}\\p{C}]*"},
      {"\\W", "(?:[\\p{P}\\p{Z}\\p{C}])\\z"},
      {".*", "[^\\n\\r]*"},
      {"\\s", "(?:[\\t\\n\\r ])\\z"},
      {"\\S", "[^\\t\\n\\r ]"},
      {"^a$", "\\^a\\$"},
      {"a{2,}", "a{2,}"},
      {"a{0,1}", "a?"},
      {"a{1,1}", "a"},
      {"a{0}", "a{0}"},
      {"\\p{Lu}\\P{Lu}?", "(?:\\p{Lu}\\P{Lu}?)\\z"},
      {"\\p{IsBasicLatin}", "(?:[\\x{0}-\\x{7F}])\\z"},
      {"\\p{IsThai}", "[\\x{E00}-\\x{E7F}]"},
      {"[a-z-[aeiou]]", "[b-df-hj-np-tv-z]"},
      {"[\\p{L}-[\\p{Lu}]]", "(?:(?!\\p{Lu})\\p{L})"},
      {"[\\w.-]", "[\\-.\\p{L}\\p{M}\\p{N}\\p{S}]"},
      {"\\\\\\.\\-\\^\\?\\*\\+\\{\\}\\(\\)\\[\\]\\|", "\\\\\\.-\\^\\?\\*\\+\\{\\}\\(\\)\\[\\]\\|"},
      {"\xC3\xA9\xF0\x9D\x9F\x8E", "\\x{E9}\\x{1D7CE}"},
      {"", "(?:)"},
      {"|", "|"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.pcre2, TranslateXsdPattern(c.xsd)) << c.xsd;
}

TEST(XsdPattern, MatchesWholeValues) {
  const MatchCase cases[] = {
      {"abc", {"abc"}, {"", "xabc", "abcx", "abc\n", "ABC"}},
      {"a|bc|", {"a", "bc", ""}, {"ac", "abc"}},
      {"(a|b)+c?", {"a", "abbac"}, {"", "c", "acc"}},
      {"()", {""}, {"a"}},
      {"(a*)*", {"", "aaa"}, {"b"}},
      {"a{2}", {"aa"}, {"a", "aaa"}},
      {"a{2,3}", {"aa", "aaa"}, {"a", "aaaa"}},
      {"a{2,}", {"aa", "aaaaa"}, {"a"}},
      {"a{0,0}b", {"b"}, {"ab"}},
      {"a{007}", {"aaaaaaa"}, {"aaaaaa"}},
      {"^a$", {"^a$"}, {"a"}},
      {"a.c",
       {"abc",
        "a\xC3\xA9"
        "c",
        "a\xF0\x9D\x9F\x8E"
        "c",
        "a\tc"},
       {"ac", "a\nc", "a\rc"}},
  };
  ExpectMatches(cases);
}

TEST(XsdPattern, TakesLineFeedsAtTheEndOfAValueForWhatTheyAre) {
  const MatchCase cases[] = {
      {"a|a\n", {"a", "a\n"}, {"a\n\n", "\n"}},
      {"(a|a\\s)", {"a", "a\n", "a "}, {"a\n\n"}},
      {"a[^b]?", {"a", "a\n", "ac"}, {"ab", "a\n\n"}},
      {"a(\\s*)", {"a", "a\n", "a\n\n \n"}, {"a\nb"}},
      {"a.?", {"a", "ab"}, {"a\n"}},
      {"a\\p{Cc}?", {"a", "a\n"}, {"a\n\n"}},
      {"[a-[\\n]]", {"a"}, {"a\n"}},
  };
  ExpectMatches(cases);
}

TEST(XsdPattern, KnowsTheEscapesForOneCharacter) {
  const MatchCase cases[] = {
      {"\\n\\r\\t", {"\n\r\t"}, {"nrt"}},
      {"\\\\\\|\\.\\-\\^\\?\\*\\+\\{\\}\\(\\)\\[\\]", {"\\|.-^?*+{}()[]"}, {"\\"}},
      {"\\\\c\\\\i", {"\\c\\i"}, {"\\aa", "ab"}},
      {"\\\\C\\\\I\\\\p{3}", {"\\C\\I\\ppp"}, {""}},
      {"\\\\\\\\n", {"\\\\n"}, {"\\n", "\n"}},
      {"#[ x]", {"# ", "#x"}, {"#", "x"}},
  };
  ExpectMatches(cases);
}

TEST(XsdPattern, KnowsTheEscapesForManyCharacters) {
  const MatchCase cases[] = {
      {"\\s", {" ", "\t", "\n", "\r"}, {"a", "\xC2\xA0", "\f"}},
      {"\\S", {"a", "\xC2\xA0"}, {" ", "\n"}},
      {"\\d", {"0", "9", "\xD9\xA1"}, {"a", "\xC2\xB2"}},  // 9, arabic 1; not superscript 2
      {"\\D", {"a", "\n", "\xC2\xB2"}, {"0", "\xD9\xA1"}},
      {"\\w", {"a", "1", "+", "\xCC\x81"}, {"_", "-", " ", "\n", "."}},
      {"\\W", {"_", "-", " ", "\n"}, {"a", "1", "+"}},
      {"\\i", {"a", "_", ":", "\xC3\xA9", "\xE4\xB8\x80"}, {"-", "1", ".", " ", "\xC3\x97"}},
      {"\\I", {"-", "1", ".", "\n", "\xC3\x97"}, {"a", "_", ":"}},
      {"\\c", {"a", "_", ":", "-", "1", ".", "\xC2\xB7"}, {" ", "+", "\xC3\x97"}},
      {"\\C", {" ", "+", "\xC3\x97", "\n"}, {"a", "1", ".", "\xEC\xA0\x80"}},
      {"\\i\\c*", {"a1:b", "_"}, {"1a", ""}},
      {"[\\i-[:]][\\c-[:]]*", {"a1", "_b.c-d"}, {"a:b", "1"}},
  };
  ExpectMatches(cases);
}

TEST(XsdPattern, KnowsCategoriesAndBlocks) {
  const MatchCase cases[] = {
      {"\\p{L}\\p{Lu}\\p{Ll}", {"aAa"}, {"aaa", "1Aa"}},
      {"\\p{Nd}\\p{Nl}\\p{No}", {"1\xE2\x85\xA0\xC2\xB2"}, {"111"}},
      {"\\p{Sc}\\p{Sm}", {"$+"}, {"+$"}},
      {"\\p{Zs}*", {" \xC2\xA0"}, {"\t"}},
      {"\\P{L}+", {"1-+"}, {"1a"}},
      {"\\p{IsBasicLatin}+", {"az~\x7F"}, {"\xC2\x80"}},
      {"\\p{IsLatin-1Supplement}", {"\xC2\x80", "\xC3\xBF"}, {"a", "\xC4\x80"}},
      {"\\p{IsLatinExtended-A}", {"\xC4\x80", "\xC5\xBF"}, {"\xC3\xBF", "\xC6\x80"}},
      {"\\p{IsLatinExtended-B}", {"\xC6\x80", "\xC9\x8F"}, {"\xC5\xBF", "\xC9\x90"}},
      {"\\P{IsBasicLatin}", {"\xC2\x80"}, {"a", "\n"}},
      {"\\p{IsCJKUnifiedIdeographs}", {"\xE4\xB8\x80"}, {"a"}},
      {"\\p{IsGothic}", {"\xF0\x90\x8C\xB0"}, {"\xF0\x90\x8C\xAF", "\xF0\x90\x8D\x90"}},
      {"\\p{IsHighSurrogates}*", {""}, {"a", "\xEE\x80\x80"}},
      {"\\P{IsHighSurrogates}", {"a", "\n"}, {""}},
  };
  ExpectMatches(cases);
}

TEST(XsdPattern, KnowsClasses) {
  const MatchCase cases[] = {
      {"[abc]", {"a", "b", "c"}, {"d", "", "ab"}},
      {"[^abc]", {"d", "\n", "^"}, {"a"}},
      {"[a^]", {"a", "^"}, {"b"}},
      {"[^^]", {"a"}, {"^"}},
      {"[-a]", {"-", "a"}, {"b"}},
      {"[a-]", {"-", "a"}, {"b"}},
      {"[^-a]", {"b"}, {"-", "a"}},
      {"[-]", {"-"}, {"a"}},
      {"[--]", {"-"}, {"a"}},
      {"[a-c-]", {"b", "-"}, {"d"}},
      {"[.$*+?(){}|]", {".", "$", "*", "+", "?", "(", ")", "{", "}", "|"}, {"a", "\\"}},
      {"[\\[\\]\\\\\\^\\-]", {"[", "]", "\\", "^", "-"}, {"a"}},
      {"[\\n-\\r]", {"\n", "\v", "\r"}, {"\t", "n"}},
      {"[+-\\-]", {"+", ",", "-"}, {"."}},
      {"[\\D]", {"a", "\n"}, {"1"}},
      {"[^\\D]", {"1"}, {"a"}},
      {"[\\S]", {"a"}, {" "}},
      {"[\\C\\?]", {"?", " "}, {"a"}},
      {"[\\W\\d]", {"_", "1"}, {"a"}},
      {"[^\\w]", {"_"}, {"a", "1"}},
      {"[\\w_]", {"_", "a"}, {"-"}},
      {"[\\P{L}a]", {"a", "1"}, {"b"}},
      {"[\\P{IsBasicLatin}a]", {"a", "\xC3\xA9"}, {"b"}},
  };
  ExpectMatches(cases);
}

TEST(XsdPattern, TakesClassesFromClassesToAnyDepth) {
  const MatchCase cases[] = {
      {"[a-z-[aeiou]]+", {"xyz"}, {"a", "xaz", "A"}},
      {"[^a-[b]]", {"c", "\n"}, {"a", "b"}},
      {"[a-z-[^aeiou]]", {"a", "u"}, {"b", "1"}},
      {"[a-z-[b-y-[m]]]", {"a", "z", "m"}, {"b", "y", "A"}},
      {"[a-z-[b-y-[c-x-[m]]]]", {"a", "c", "x", "z"}, {"b", "m", "y"}},
      {"[\\w-[\\d]]", {"a", "+"}, {"1", "_"}},
      {"[\\w-[\\p{Lu}-[A]]]", {"a", "A", "1"}, {"B"}},
      {"[\\p{L}-[a-c]]{2}", {"de"}, {"da", "ad", "1d"}},
      {"[a-z-[\\p{L}]]", {}, {"a", "1"}},
      {"[a-c-[a-z]]", {}, {"a", "b", "z"}},
      {"[--[a]]", {"-"}, {"a"}},
      {"[a--[b]]", {"a", "-"}, {"b"}},
      {"[a\\--[b]]", {"a", "-"}, {"b"}},
  };
  ExpectMatches(cases);
}

TEST(XsdPattern, RefusesWhatIsNoRegularExpressionWithPlaceAndReason) {
  const struct {
    const char* pattern;
    std::size_t offset;
    const char* message;
  } cases[] = {
      {"a)", 1, "')' closes no group"},
      {"a(b(c)", 1, "'(' is not closed"},
      {"*a", 0, "'*' has nothing in front of it that it could repeat"},
      {"a|+", 2, "'+' has nothing in front of it that it could repeat"},
      {"(?:a)", 1, "'?' has nothing in front of it that it could repeat"},
      {"a+?", 2, "'?' has nothing in front of it that it could repeat"},
      {"{2}", 0, "'{' has nothing in front of it that it could repeat"},
      {"a}", 1, "'}' has to be written '\\}' to stand for itself"},
      {"a]", 1, "']' has to be written '\\]' to stand for itself"},
      {"a{,2}", 2, "A number is missing"},
      {"a{}", 2, "A number is missing"},
      {"a{2", 1, "'{' has to be followed by {n}, {n,} or {n,m}"},
      {"a{2 }", 1, "'{' has to be followed by {n}, {n,} or {n,m}"},
      {"a{3,2}", 1, "The second number is below the first"},
      {"a{99999999999999999999}", 2, "The number is too large"},
      {"[a", 0, "'[' is not closed"},
      {"x[a-", 1, "'[' is not closed"},
      {"[", 0, "'[' is not closed"},
      {"[]", 1, "A class can not be empty"},
      {"[^]", 2, "A class can not be empty"},
      {"[-[a]]", 1, "A class can not be empty"},
      {"[a[b]]", 2, "'[' has to be written '\\[' to stand for itself"},
      {"[a-[b]c]", 6, "Only ']' can stand behind a class that is taken away"},
      {"[b-a]", 1, "The range's end is below its beginning"},
      {"[a-\\d]", 3, "A range can not end with an escape for several characters"},
      {"[!--a]", 3, "'-' has to be written '\\-' to end a range"},
      {"[a-b-c]", 4,
       "'-' stands for itself only at the beginning and the end of a class, or as '\\-'"},
      {"[\\d-z]", 3,
       "'-' stands for itself only at the beginning and the end of a class, or as '\\-'"},
      {"a\\", 1, "'\\' has nothing behind it that it could escape"},
      {"\\1", 0, "'\\1' is no escape of a regular expression of XML Schema"},
      {"\\$", 0, "'\\$' is no escape of a regular expression of XML Schema"},
      {"\xC3\xA9\\\xC3\xA9", 1, "'\\\xC3\xA9' is no escape of a regular expression of XML Schema"},
      {"[\\x41]", 1, "'\\x' is no escape of a regular expression of XML Schema"},
      {"\\pL", 0, "'\\p' has to be followed by a name in braces"},
      {"\\P{L", 0, "'\\P{' is not closed"},
      {"\\p{Foo}", 0, "There is no category of characters 'Foo'"},
      {"\\p{^L}", 0, "There is no category of characters '^L'"},
      {"\\p{IsFoo}", 0, "There is no block of characters 'IsFoo'"},
      {"a\xFF", 1, "The pattern is not in UTF-8"},
      {"\xC3", 0, "The pattern is not in UTF-8"},
      {"\xED\xA0\x80", 0, "The pattern is not in UTF-8"},
      {"\xE0\x80\x80", 0, "The pattern is not in UTF-8"},
      {"\xF4\x90\x80\x80", 0, "The pattern is not in UTF-8"},
  };
  for (const auto& c : cases) {
    try {
      TranslateXsdPattern(c.pattern);
      ADD_FAILURE() << c.pattern << " is taken";
    } catch (const CPatternError& e) {
      EXPECT_STREQ(c.message, e.what()) << c.pattern;
      EXPECT_EQ(c.offset, e.GetOffset()) << c.pattern;
    }
  }
}

TEST(XsdPattern, RefusesWhatIsNestedTooDeep) {
  const auto nest = [](std::size_t depth) {
    return std::string(depth, '(') + "a" + std::string(depth, ')');
  };
  EXPECT_TRUE(Matches(nest(100), "a"));
  std::string classes;
  for (int i = 0; i < 100; ++i) classes += "[\\p{L}-";
  EXPECT_TRUE(Matches(classes.substr(0, 99 * 7) + "[a]" + std::string(99, ']'), "b"));
  for (const std::string& pattern : {nest(101), nest(100000), classes + "[a]", classes + classes}) {
    try {
      TranslateXsdPattern(pattern);
      ADD_FAILURE();
    } catch (const CPatternError& e) {
      const std::string message = e.what();
      EXPECT_TRUE(message == "Groups stand in each other more than 100 deep" ||
                  message == "Classes stand in each other more than 100 deep")
          << message;
    }
  }
}

TEST(XsdPattern, CountsBeyondWhatOneQuantifierOfPcre2Takes) {
  const std::string many(70000, 'a');
  EXPECT_TRUE(Matches("a{70000}", many));
  EXPECT_FALSE(Matches("a{70001}", many));
  EXPECT_FALSE(Matches("a{69999}", many));
  EXPECT_TRUE(Matches("a{70000,}", many + "a"));
  EXPECT_FALSE(Matches("a{70001,}", many));
  EXPECT_TRUE(Matches("a{3,70000}", many));
  EXPECT_TRUE(Matches("a{3,70000}", "aaa"));
  EXPECT_FALSE(Matches("a{3,70000}", "aa"));
  EXPECT_EQ("(?:a{65535}){1}a{4465}(?:a{0,65535}){1}a?", TranslateXsdPattern("a{70000,135536}"));
}

TEST(XsdPattern, JoinsThePatternsOfAStepAsAlternatives) {
  EXPECT_EQ("", JoinAlternatives({}));
  EXPECT_EQ("a|b", JoinAlternatives({"a|b"}));
  EXPECT_EQ("a|b|c", JoinAlternatives({"a|b", "c"}));
  EXPECT_EQ("a|(?:b)\\\\z", JoinAlternatives({"a", "(?:b)\\\\z"}));
  EXPECT_EQ("(?:a|(?:b)\\z)\\z", JoinAlternatives({"a", "(?:b)\\z"}));
  const std::string joined = JoinAlternatives(
      {TranslateXsdPattern("a"), TranslateXsdPattern("a\\s"), TranslateXsdPattern("")});
  for (const char* value : {"a", "a\n", ""}) EXPECT_TRUE(MatchesRegularExpression(joined, value));
  EXPECT_FALSE(MatchesRegularExpression(joined, "aa"));
}

TEST(XsdPattern, JoinsThePatternsOfStepsSoThatAllHold) {
  EXPECT_EQ("", JoinSteps({}));
  EXPECT_EQ("a|b", JoinSteps({"a|b"}));
  EXPECT_EQ("(?=(?:a|b)\\z)(?:b|c)", JoinSteps({"a|b", "b|c"}));
  const std::string joined = JoinSteps(
      {TranslateXsdPattern("[a-z]*"), TranslateXsdPattern(".{2,4}"), TranslateXsdPattern("a.*|b")});
  for (const char* value : {"ab", "abcd"}) EXPECT_TRUE(MatchesRegularExpression(joined, value));
  for (const char* value : {"a", "b", "abcde", "a1", "ba"}) {
    EXPECT_FALSE(MatchesRegularExpression(joined, value)) << value;
  }
}

TEST(XsdPattern, RequiresLengthsInCharacters) {
  EXPECT_EQ("a*", RequireLength("a*", std::nullopt, std::nullopt));
  EXPECT_EQ("(?=(?>[\\x{0}-\\x{10FFFF}]{2,3})\\z)(?:a|b)", RequireLength("a|b", 2, 3));
  const struct {
    std::string pattern;
    std::optional<std::uint32_t> least, most;
    std::string value;
    bool matches;
  } cases[] = {
      {"", 2, std::nullopt, "\xC3\xA9\xF0\x9D\x9F\x8E", true},
      {"", 3, std::nullopt, "\xC3\xA9\xF0\x9D\x9F\x8E", false},
      {"", std::nullopt, 2, "\xC3\xA9\xF0\x9D\x9F\x8E", true},
      {"", std::nullopt, 1, "\xC3\xA9\xF0\x9D\x9F\x8E", false},
      {"", 0, 0, "", true},
      {"", 0, 0, "\n", false},
      {"", 1, 1, "\n", true},
      {"", 1, 2, "a\n", true},
      {"", 1, 1, "a\n", false},
      {"a*|b", 2, 3, "aaa", true},
      {"a*|b", 2, 3, "b", false},
      {"a*|b", 2, 3, "aaaa", false},
      {"", std::nullopt, 70000, std::string(70000, 'a'), true},
      {"", std::nullopt, 70000, std::string(70001, 'a'), false},
      {"", 70000, std::nullopt, std::string(70000, 'a'), true},
      {"", 70000, std::nullopt, std::string(69999, 'a'), false},
      {"", 3, 2, "aaa", false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.matches,
              MatchesRegularExpression(RequireLength(c.pattern, c.least, c.most), c.value))
        << c.pattern << " " << c.value.substr(0, 10);
  }
}

TEST(XsdPattern, FindsWhatPcre2Refuses) {
  EXPECT_FALSE(FindRefusal(TranslateXsdPattern("(ab){2,3}")).has_value());
  EXPECT_EQ("missing closing parenthesis", FindRefusal("(").value_or(""));
  EXPECT_EQ("regular expression is too large",
            FindRefusal(TranslateXsdPattern("((a|b){1000}c){60000}")).value_or(""));
}

TEST(XsdPattern, NeverWritesWhatTheLibraryReplaces) {
  for (const char* pattern :
       {"\\i\\I\\c\\C", "[\\i\\I\\c\\C]", "\\p{IsBasicLatin}\\p{IsLatin-1Supplement}",
        "\\p{IsLatinExtended-A}[\\p{IsLatinExtended-B}]", "[\\\\-c]\\\\c[\\\\i]", "\\\\\\\\i"}) {
    const std::string translated = TranslateXsdPattern(pattern);
    for (std::size_t at = translated.find('\\'); at != std::string::npos;
         at = translated.find('\\', at + 2)) {
      EXPECT_EQ(std::string::npos, std::string("iIcC").find(translated[at + 1])) << translated;
    }
    EXPECT_EQ(std::string::npos, translated.find("{Is")) << translated;
    EXPECT_TRUE(std::all_of(translated.begin(), translated.end(), [](char c) {
      return c >= ' ' && c <= '~';
    })) << translated;
  }
}
