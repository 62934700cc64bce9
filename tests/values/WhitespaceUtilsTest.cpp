#include <string>

#include "qzxml/values/WhitespaceUtils.h"
#include "tests/support/QzTest.h"

using QzXmlLib16::CQzException;
using QzXmlLib16::CWhitespaceUtils;

namespace {

using Rule = CWhitespaceUtils::WhitespaceRule;

std::string operator""_s(const char* text, std::size_t length) { return std::string(text, length); }

struct RuleCase {
  std::string value;
  std::string preserved;
  std::string replaced;
  std::string collapsed;
};

// The rules as they are defined, char by char, over the whole value; the result of a rewrite is
// read as zero-terminated text.
struct Expected {
  static std::string CutAtZero(const std::string& text) { return text.c_str(); }

  static std::string Preserved(const std::string& value) {
    if (value.find('\r') == std::string::npos) return value;
    std::string out;
    for (std::size_t i = 0; i < value.size(); ++i) {
      if (value[i] == '\n' && i > 0 && value[i - 1] == '\r') continue;
      out += value[i] == '\r' ? '\n' : value[i];
    }
    return CutAtZero(out);
  }

  static std::string Replaced(const std::string& value) {
    std::string out;
    for (std::size_t i = 0; i < value.size(); ++i) {
      if (value[i] == '\n' && i > 0 && value[i - 1] == '\r') continue;
      out += value[i] == '\r' || value[i] == '\n' || value[i] == '\t' ? ' ' : value[i];
    }
    return out == value ? value : CutAtZero(out);
  }

  static std::string Collapsed(const std::string& value) {
    std::string out;
    bool gap = true;
    for (const char c : value) {
      const bool blank = c == ' ' || c == '\t' || c == '\r' || c == '\n';
      if (!blank) out += c;
      if (blank && !gap) out += ' ';
      gap = blank;
    }
    if (!out.empty() && out.back() == ' ') out.pop_back();
    return CutAtZero(out);
  }
};

}  // namespace

TEST(WhitespaceUtils, OnlySpaceTabCarriageReturnAndLineFeedAreWhiteSpace) {
  for (int i = 0; i < 256; ++i) {
    const char c = static_cast<char>(i);
    const bool expected = i == 0x20 || i == 0x09 || i == 0x0D || i == 0x0A;
    EXPECT_EQ(expected, CWhitespaceUtils::IsWhiteSpace(c)) << i;
  }
}

TEST(WhitespaceUtils, RulesChangeWhiteSpaceAlone) {
  const RuleCase cases[] = {
      {"", "", "", ""},
      {"a", "a", "a", "a"},
      {"a b", "a b", "a b", "a b"},
      {"a  b", "a  b", "a  b", "a b"},
      {" a ", " a ", " a ", "a"},
      {"  a \r\n b  ", "  a \n b  ", "  a   b  ", "a b"},
      {"a\r\nb", "a\nb", "a b", "a b"},
      {"a\rb\r\nc", "a\nb\nc", "a b c", "a b c"},
      {"a\nb\tc", "a\nb\tc", "a b c", "a b c"},
      {"a\r\r\n\nb", "a\n\n\nb", "a   b", "a b"},
      {"a\n\rb", "a\n\nb", "a  b", "a b"},
      {"\r", "\n", " ", ""},
      {"\r\n", "\n", " ", ""},
      {" \t\r\n ", " \t\n ", "    ", ""},
      {"\v\f", "\v\f", "\v\f", "\v\f"},
      {"\xC2\xA0 x", "\xC2\xA0 x", "\xC2\xA0 x", "\xC2\xA0 x"},
  };
  for (const RuleCase& c : cases) {
    EXPECT_EQ(c.preserved, CWhitespaceUtils::Preserve(c.value)) << c.value;
    EXPECT_EQ(c.replaced, CWhitespaceUtils::Replace(c.value)) << c.value;
    EXPECT_EQ(c.collapsed, CWhitespaceUtils::Collapse(c.value)) << c.value;
  }
}

TEST(WhitespaceUtils, AppliesTheRuleOfTheNumber) {
  const std::string value = " a\r\n b ";
  EXPECT_EQ(value, CWhitespaceUtils::ApplyRule(static_cast<Rule>(0), value));
  EXPECT_EQ(" a\n b ", CWhitespaceUtils::ApplyRule(static_cast<Rule>(1), value));
  EXPECT_EQ(" a  b ", CWhitespaceUtils::ApplyRule(static_cast<Rule>(2), value));
  EXPECT_EQ("a b", CWhitespaceUtils::ApplyRule(static_cast<Rule>(3), value));
}

TEST(WhitespaceUtils, RefusesAnyOtherRule) {
  for (const int rule : {4, -1, 255}) {
    EXPECT_QZ_THROW(CQzException, "Unknown WhitespaceRule",
                    CWhitespaceUtils::ApplyRule(static_cast<Rule>(rule), "x"));
  }
}

TEST(WhitespaceUtils, AZeroByteEndsARewrittenValueAlone) {
  EXPECT_EQ("a\0b"_s, CWhitespaceUtils::ApplyRule(CWhitespaceUtils::WhitespaceRule_None, "a\0b"_s));
  EXPECT_EQ("a\0b"_s, CWhitespaceUtils::Preserve("a\0b"_s));
  EXPECT_EQ("a", CWhitespaceUtils::Preserve("a\0b\r"_s));
  EXPECT_EQ("a\0b"_s, CWhitespaceUtils::Replace("a\0b"_s));
  EXPECT_EQ("a ", CWhitespaceUtils::Replace("a\t\0b"_s));
  EXPECT_EQ("a", CWhitespaceUtils::Collapse("a\0b"_s));
  EXPECT_EQ("a ", CWhitespaceUtils::Collapse(" a \0 b "_s));
}

TEST(WhitespaceUtils, PreservesThatManyCharsOfAPlainText) {
  EXPECT_EQ("a\nb", CWhitespaceUtils::Preserve("a\r\nbcd", 4));
  EXPECT_EQ("ab", CWhitespaceUtils::Preserve("abcd", 2));
  EXPECT_EQ("a\n", CWhitespaceUtils::Preserve("a\r\n", 2));
  EXPECT_EQ("a", CWhitespaceUtils::Preserve("a\0b", 3));
  EXPECT_EQ("", CWhitespaceUtils::Preserve("abcd", 0));
  EXPECT_EQ("", CWhitespaceUtils::Preserve("abcd", -1));
  EXPECT_EQ("", CWhitespaceUtils::Preserve(nullptr, 0));
}

TEST(WhitespaceUtils, RulesHoldForEveryShortText) {
  const std::string alphabet = "a \t\r\n\0"_s;
  std::vector<std::string> texts = {""};
  for (std::size_t first = 0; first < texts.size(); ++first) {
    const std::string text = texts[first];
    ASSERT_EQ(Expected::Preserved(text), CWhitespaceUtils::Preserve(text)) << first;
    ASSERT_EQ(Expected::Replaced(text), CWhitespaceUtils::Replace(text)) << first;
    ASSERT_EQ(Expected::Collapsed(text), CWhitespaceUtils::Collapse(text)) << first;
    if (text.size() == 5) continue;
    for (const char c : alphabet) texts.push_back(text + c);
  }
  EXPECT_EQ(1u + 6 + 36 + 216 + 1296 + 7776, texts.size());
}

TEST(WhitespaceUtils, CollapseFindsWhatChangesWhereverItStands) {
  for (const std::string& piece : {"  "_s, "\t"_s, "\r"_s, "\n"_s, "\0"_s, " "_s, "  \n"_s}) {
    for (std::size_t at = 0; at <= 600; ++at) {
      std::string value(600, 'x');
      value.insert(at, piece);
      ASSERT_EQ(Expected::Collapsed(value), CWhitespaceUtils::Collapse(value)) << at;
    }
  }
}

TEST(WhitespaceUtils, CollapsesALongValueInOnePass) {
  std::string value;
  std::string expected;
  for (int i = 0; i < 200000; ++i) {
    value += " \t\r\nx";
    expected += i == 0 ? "x" : " x";
  }
  EXPECT_EQ(expected, CWhitespaceUtils::Collapse(value));
}
