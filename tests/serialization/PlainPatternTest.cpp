// The plainest patterns are matched without PCRE2. Each pattern is asked as it is and in a group,
// which goes to PCRE2; both say the same of every short text.
#include <string>
#include <vector>

#include "qzxml/serialization/PrimitiveRestrictions.h"
#include "tests/support/QzTest.h"

using QzXmlLib16::MatchesRegularExpression;

namespace {

std::vector<std::string> ShortTexts() {
  const std::string alphabet = "Aba09-. \n";
  std::vector<std::string> texts = {""};
  std::size_t first = 0;
  for (int length = 1; length <= 4; ++length) {
    const std::size_t end = texts.size();
    for (std::size_t i = first; i < end; ++i) {
      for (const char c : alphabet) texts.push_back(texts[i] + c);
    }
    first = end;
  }
  for (const char* const text : {"\xC3\xA9",
                                 "A\xC3\xA9",
                                 "\xFF",
                                 "a\x80",
                                 "[",
                                 "]",
                                 "^",
                                 "\\",
                                 "|",
                                 "Ab0",
                                 "none",
                                 "a+b",
                                 "00000000000000000000",
                                 "AAA-00000",
                                 "AAA-0000",
                                 "ab9-ab9-",
                                 "[a]",
                                 "a|b",
                                 "9 9",
                                 "z{2}"}) {
    texts.emplace_back(text);
  }
  return texts;
}

}  // namespace

TEST(PlainPattern, SaysOfEveryShortTextWhatPcre2Says) {
  const char* const patterns[] = {
      "",
      "a",
      "[A-Z]{3}-[0-9]{5}",
      "[A-Z]{0,2}",
      "[A-Z]{1,3}[0-9]*",
      "[a-b]+[0-9]?",
      "[0-9]{1,2}\\.[0-9]{1,2}",
      "\\d+",
      "\\d{2}-\\d{2}",
      "[\\d.]+",
      "a?b?0?",
      "a?[ab]",
      "a*a",
      "a*b*a*",
      "a*b*c*a",
      "[a-z]*[A-Z]*[0-9]*",
      "[ab]{2}[ab]{2}",
      "[ab]{1,2}[ab]",
      "a|ab",
      "ab|a|0",
      "|a",
      "a|",
      "a||b",
      "[-a]",
      "[a-]",
      "[-]",
      "[-]+",
      "[a\\-b]+",
      "[\\.\\-]*",
      "[A-Za-z0-9]*",
      "[ .]+",
      "a{2,}",
      "a{0}b",
      "a{0,0}",
      "[a.+*?(){}|$]+",
      "\\[a\\]",
      "a\\|b",
      "a\\+b",
      "\\\\",
      "0{3}|9{4}",
      " ",
      "9 9",
      "[A-B][a-b][0-1]",
      // None of these is plain.
      "[^a]*",
      "(a|b)+",
      ".*",
      "[a-z-[b]]*",
      "a+?b",
      "a++b",
      "\\w+",
      "\\s*",
      "\\p{L}*",
      "[a-9]*",
      "a{,2}",
      "a{x}",
      "[]a]",
      "[a",
      "a)",
      "[b-a]",
      "[\\d-9]*",
      "[a-b-0]*",
      "a{2,1}",
      "*a",
      "\\",
      "[[:digit:]]+",
  };
  const std::vector<std::string> texts = ShortTexts();
  for (const std::string pattern : patterns) {
    const auto matches = [](const std::string& asked, const std::string& text) {
      try {
        return MatchesRegularExpression(asked, text) ? "yes" : "no";
      } catch (const QzXmlLib16::CQzException&) {
        return "refused";
      }
    };
    const std::string grouped = "(" + pattern + ")";
    for (const std::string& text : texts) {
      const std::string expected = matches(grouped, text);
      ASSERT_EQ(matches(pattern, text), expected) << pattern << " of [" << text << "]";
    }
  }
}

TEST(PlainPattern, CountsTheTimesOfASet) {
  EXPECT_TRUE(MatchesRegularExpression("[A-Z]{3}-[0-9]{5}", "ABC-12345"));
  EXPECT_FALSE(MatchesRegularExpression("[A-Z]{3}-[0-9]{5}", "ABC-1234"));
  EXPECT_FALSE(MatchesRegularExpression("[A-Z]{3}-[0-9]{5}", "ABC-123456"));
  EXPECT_FALSE(MatchesRegularExpression("[A-Z]{3}-[0-9]{5}", "ABCD-12345"));
  EXPECT_TRUE(MatchesRegularExpression("[0-9]+", std::string(1000000, '7')));
}
