#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "qzxml/platform/DebugChannel.h"
#include "qzxml/runtime/Functions.h"
#include "tests/support/CommaLocale.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

// ---- FormatString ----

TEST(FormatString, FormatsAsPrintfDoes) {
  EXPECT_EQ("", FormatString("%s", ""));
  EXPECT_EQ("100%", FormatString("%d%%", 100));
  EXPECT_EQ("[name] 5 of 7", FormatString("[%s] %d of %u", "name", 5, 7U));
  EXPECT_EQ("00ff FF 0x1f 17", FormatString("%04x %X %#x %o", 255, 255, 31, 15));
  EXPECT_EQ("   ab|ab   |ab", FormatString("%5s|%-5s|%.2s", "ab", "ab", "abc"));
  EXPECT_EQ("   ab|abc", FormatString("%*s|%.*s", 5, "ab", 3, "abcdef"));
  EXPECT_EQ("x", FormatString("%c", 'x'));
  EXPECT_EQ("-9223372036854775808", FormatString("%lld", LLONG_MIN));
  EXPECT_EQ("18446744073709551615", FormatString("%llu", ULLONG_MAX));
  EXPECT_EQ("-5 7 3", FormatString("%hd %ld %zu", static_cast<short>(-5), 7L, std::size_t{3}));
  EXPECT_EQ("+1.50 1e+20 0.25", FormatString("%+.2f %g %g", 1.5, 1e20, 0.25));
  EXPECT_EQ("1.5", FormatString("%.1Lf", 1.5L));
}

TEST(FormatString, IsAsLongAsItMustBe) {
  for (const std::size_t length : {0U, 1U, 510U, 511U, 512U, 513U, 100000U}) {
    const std::string text(length, 'x');
    EXPECT_EQ("<" + text + ">", FormatString("<%s>", text.c_str())) << length;
  }
  EXPECT_EQ(std::string(9999, ' ') + "1", FormatString("%10000d", 1));
  EXPECT_EQ(318U, FormatString("%f", -1e310L > 0 ? 0 : -1.7976931348623157e308).size() + 1);
}

TEST(FormatString, NullTextShowsAsNull) {
  const char* volatile null = nullptr;
  const char* const text = null;
  EXPECT_EQ("(null)", FormatString("%s", text));
  EXPECT_EQ("[(null)]", FormatString("[%s]", text));
}

TEST(FormatString, EndsAtItsFirstZeroByte) {
  EXPECT_EQ("a", FormatString("a%cb", 0));
  const std::string longText(1000, 'x');
  EXPECT_EQ(longText, FormatString("%s%cb", longText.c_str(), 0));
}

TEST(FormatString, AssertsOnNegativeWidthsAndPrecisions) {
  EXPECT_QZ_ASSERT("nWidth >= 0", FormatString("%*d", -5, 1));
  EXPECT_QZ_ASSERT("nWidth >= 0", FormatString("%d %s %f %*s", 1, "text", 1.5, -1, "x"));
  EXPECT_QZ_ASSERT("nPrecision >= 0", FormatString("%.*s", -1, "x"));
  EXPECT_QZ_ASSERT("nPrecision >= 0",
                   FormatString("%c%p%ld%lld%zu%td%jd%5.1Lf%.*d", 'c', nullptr, 1L, 1LL,
                                std::size_t{1}, std::ptrdiff_t{1}, std::intmax_t{1}, 1.5L, -1, 1));
  const qztest::AssertionRecorder goesOn;
  EXPECT_EQ("1    |x", FormatString("%*d|%.*s", -5, 1, -1, "x"));
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#pragma GCC diagnostic ignored "-Wformat-security"

TEST(FormatString, AssertsOnConversionsThatMessagesHaveNoUseFor) {
  for (const char* format : {"%E", "%a", "%A", "%I64d", "%k", "%", "%5", "%-"}) {
    EXPECT_QZ_ASSERT("0", FormatString(format, 1.5)) << format;
  }
  const qztest::AssertionRecorder goesOn;
  EXPECT_EQ("1.500000E+00", FormatString("%E", 1.5));
}

TEST(FormatString, KnownConversionsDoNotAssert) {
  for (const char* format : {"%d", "%i", "%o", "%u", "%x", "%X", "%p", "%s", "%S", "%c", "%C",
                             "%hd", "%ld", "%#x", "%-5d", "%+d", "% d", "%05d", "%.3d"}) {
    EXPECT_QZ_ASSERT("(nothing)", FormatString(format, nullptr)) << format;
  }
  for (const char* format : {"%e", "%f", "%g", "%G", "%Ff", "%10.3f"}) {
    EXPECT_QZ_ASSERT("(nothing)", FormatString(format, 1.5)) << format;
  }
  int written = 0;
  EXPECT_QZ_ASSERT("(nothing)", FormatString("text%n", &written));
}

#pragma GCC diagnostic pop

TEST(FormatString, WritesNumbersTheSameInEveryLocale) {
  const qztest::CommaLocale locale;
  if (!locale.Works()) GTEST_SKIP() << "localedef ended with " << locale.GetStatus();
  char printed[16];
  std::snprintf(printed, sizeof printed, "%.1f", 1.5);
  ASSERT_STREQ("1,5", printed);

  EXPECT_EQ("1.5 2.5e-07 text", FormatString("%.1f %.1e %s", 1.5, 2.5e-7, "text"));
  EXPECT_EQ(std::string(600, ' ') + "1.5", FormatString("%603.1f", 1.5));
  std::snprintf(printed, sizeof printed, "%.1f", 1.5);
  EXPECT_STREQ("1,5", printed);  // the process keeps its locale
}

// ---- ReplaceAll ----

struct ReplaceCase {
  const char* text;
  const char* what;
  const char* with;
  const char* result;
};

const ReplaceCase kReplaceCases[] = {
    {"a<b<c", "<", "&lt;", "a&lt;b&lt;c"},
    {"a&b&&c", "&", "&amp;", "a&amp;b&amp;&amp;c"},  // what is put in is not searched
    {"", "x", "y", ""},
    {"text", "x", "x", "text"},
    {"none", "q", "y", "none"},
    {"anything", "", "y", "anything"},  // nothing to search for
    {"ababab", "ab", "", ""},
    {"aabb", "ab", "", ""},  // a new place comes about where the two ends meet
    {"aaabbb", "ab", "", ""},
    {"xaabby", "ab", "", "xy"},
    {"aab", "ab", "b", "b"},  // and with what was put in
    {"aaabc", "aab", "b", "abc"},
    {"aab", "ab", "ba", "baa"},
    {"aabb", "ab", "ba", "bbaa"},
    {"aaa", "aa", "b", "ba"},      // leftmost first
    {"aaa", "aa", "aab", "aaba"},  // holds what is searched for: one pass
    {"one two one", "one", "three", "three two three"},
    {"aaaaa", "aa", "a", "a"},
};

TEST(ReplaceAll, ReplacesUntilNoneIsLeft) {
  for (const ReplaceCase& c : kReplaceCases) {
    std::string text = c.text;
    ReplaceAll(text, c.what, c.with);
    EXPECT_EQ(c.result, text) << c.text << " " << c.what << " " << c.with;
  }
}

template <typename String>
String Widen(const char* text) {
  return String(text, text + std::char_traits<char>::length(text));
}

template <typename String>
void CheckWideCases() {
  for (const ReplaceCase& c : kReplaceCases) {
    auto text = Widen<String>(c.text);
    ReplaceAll(text, Widen<String>(c.what), Widen<String>(c.with));
    EXPECT_TRUE(Widen<String>(c.result) == text) << c.text << " " << c.what << " " << c.with;
  }
}

TEST(ReplaceAll, WideTwinsDoTheSame) {
  CheckWideCases<std::wstring>();
  CheckWideCases<std::u16string>();
}

TEST(ReplaceAll, GivesWhatSearchingFromTheBeginningEachTimeGives) {
  const std::vector<std::string> patterns = {"a", "b", "ab", "ba", "aa", "aab", "aba"};
  const std::vector<std::string> replacements = {"", "a", "b", "ba", "bb"};
  for (unsigned bits = 0; bits < 512; ++bits) {
    std::string original;
    for (unsigned i = 0; i < 9; ++i) original += (bits >> i & 1U) != 0 ? 'b' : 'a';
    for (const std::string& what : patterns) {
      for (const std::string& with : replacements) {
        if (with.find(what) != std::string::npos) continue;
        std::string expected = original;
        for (std::size_t at = 0; (at = expected.find(what)) != std::string::npos;) {
          expected.replace(at, what.size(), with);
        }
        std::string text = original;
        ReplaceAll(text, what, with);
        EXPECT_EQ(expected, text) << original << " " << what << " " << with;
      }
    }
  }
}

TEST(ReplaceAll, MovesEachPlaceAsFarAsItGoes) {
  std::string text = std::string(300, 'a') + std::string(300, 'b');
  ReplaceAll(text, "ab", "ba");  // 90000 times
  EXPECT_EQ(std::string(300, 'b') + std::string(300, 'a'), text);
}

TEST(ReplaceAll, EndsOnReplacementsThatMakeNewPlacesForEver) {
  std::string text = "aab";
  ReplaceAll(text, "ab", "bbaa");
  EXPECT_LT(text.size(), 10000U);
}

TEST(ReplaceAll, TakesTimeInProportionToTheText) {
  std::string text(1000000, '<');
  ReplaceAll(text, "<", "&lt;");
  EXPECT_EQ(4000000U, text.size());
  std::string pairs = std::string(500000, 'a') + std::string(500000, 'b');
  ReplaceAll(pairs, "ab", "");
  EXPECT_EQ("", pairs);
}

// ---- The others ----

TEST(FormatPaddedInt, PadsWithZeros) {
  EXPECT_EQ("00042", FormatPaddedInt(42, 5));
  EXPECT_EQ("-0042", FormatPaddedInt(-42, 5));
  EXPECT_EQ("12345", FormatPaddedInt(12345, 2));
  EXPECT_EQ("7", FormatPaddedInt(7, 0));
  EXPECT_EQ("-2147483648", FormatPaddedInt(INT_MIN, 4));
  EXPECT_EQ("42   ", FormatPaddedInt(42, -5));
}

TEST(FormatPaddedInt, IsAtMost255Wide) {
  EXPECT_EQ(std::string(253, '0') + "42", FormatPaddedInt(42, 255));
  EXPECT_EQ(std::string(253, '0') + "42", FormatPaddedInt(42, 256));
  EXPECT_EQ(std::string(253, '0') + "42", FormatPaddedInt(42, INT_MAX));
  EXPECT_EQ("42" + std::string(253, ' '), FormatPaddedInt(42, INT_MIN));
}

TEST(TrimTrailingZeros, KeepsTheFirstCharacter) {
  EXPECT_EQ("0", TrimTrailingZeros("000"));
  EXPECT_EQ("0", TrimTrailingZeros("0"));
  EXPECT_EQ("", TrimTrailingZeros(""));
  EXPECT_EQ("1", TrimTrailingZeros("100"));
  EXPECT_EQ("1.5", TrimTrailingZeros("1.500"));
  EXPECT_EQ("1.", TrimTrailingZeros("1.0"));
  EXPECT_EQ("1001", TrimTrailingZeros("1001"));
}

std::vector<std::string> g_pieces;

class DebugTraceTest : public ::testing::Test {
 protected:
  DebugTraceTest() {
    g_pieces.clear();
    SetDebugChannel([](const char* text) { g_pieces.emplace_back(text); });
  }
  ~DebugTraceTest() override { SetDebugChannel(nullptr); }
  static std::string Joined() {
    std::string text;
    for (const std::string& piece : g_pieces) text += piece;
    return text;
  }
};

TEST_F(DebugTraceTest, FormatsAndSendsInPiecesOf128) {
  DebugTrace("%s=%d\n", "name", 3);
  EXPECT_EQ(std::vector<std::string>{"name=3\n"}, g_pieces);
  g_pieces.clear();
  const std::string text(300, 'x');
  DebugTrace("%s", text.c_str());
  ASSERT_EQ(3U, g_pieces.size());
  EXPECT_EQ(128U, g_pieces[0].size());
  EXPECT_EQ(128U, g_pieces[1].size());
  EXPECT_EQ(44U, g_pieces[2].size());
  EXPECT_EQ(text, Joined());
}

TEST_F(DebugTraceTest, TakesTextBelow32768BytesWhole) {
  const std::string text(32767, 'x');
  DebugTrace("%s", text.c_str());
  EXPECT_EQ(text, Joined());
}

TEST_F(DebugTraceTest, AssertsOnLongerTextAndCutsIt) {
  const std::string text(32768, 'x');
  EXPECT_QZ_ASSERT("nBuf < 1024*32", DebugTrace("%s", text.c_str()));
  const qztest::AssertionRecorder goesOn;
  g_pieces.clear();
  DebugTrace("%s", text.c_str());
  EXPECT_EQ(std::string(32767, 'x'), Joined());
}

TEST_F(DebugTraceTest, FormatsNothingWhileNobodyListens) {
  SetDebugChannel(nullptr);
  int written = -1;
  DebugTrace("text%n", &written);
  EXPECT_EQ(-1, written);
}

}  // namespace
}  // namespace QzXmlLib16
