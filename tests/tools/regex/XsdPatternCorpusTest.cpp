// The patterns of the W3C's XML Schema test suite: each is taken or refused as the suite says of
// its schema. A part of them stands in tests/corpora; all are used where QZXML_CORPORA names a
// folder that has them.
#include <fstream>

#include "tests/support/QzTest.h"
#include "tests/tools/regex/FacetCases.h"
#include "tools/generator/regex/XsdPattern.h"

using namespace qzxml::generator;

namespace {

std::size_t ExpectVerdicts(const std::string& path) {
  std::size_t count = 0;
  std::ifstream stream(path, std::ios::binary);
  std::string line;
  std::getline(stream, line);  // the heading
  for (; std::getline(stream, line); ++count) {
    const std::size_t tab = line.find('\t');
    const std::string pattern = qztest::Unescape(line.substr(0, tab));
    std::string verdict = "valid";
    try {
      EXPECT_FALSE(FindRefusal(TranslateXsdPattern(pattern)).has_value()) << pattern;
    } catch (const CPatternError&) {
      verdict = "invalid";
    }
    EXPECT_EQ(line.substr(tab + 1), verdict) << pattern;
  }
  return count;
}

}  // namespace

TEST(XsdPatternCorpus, TakesAndRefusesWhatTheSuiteDoes) {
  EXPECT_EQ(554u, ExpectVerdicts(QZXML_TEST_DIRECTORY "/corpora/xsd/patterns.tsv"));
}

TEST(XsdPatternCorpus, DoesSoForTheWholeSuite) {
  const std::size_t count = ExpectVerdicts(QZXML_MADE_CASES "/patterns.tsv");
  if (count == 0) GTEST_SKIP() << "QZXML_CORPORA names no folder with xsd-suite";
  EXPECT_GT(count, 554u);
}
