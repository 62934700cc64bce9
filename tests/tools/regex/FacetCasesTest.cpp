// Values of simple types from the W3C's XML Schema test suite: translated patterns and text rules
// together say of each what the suite says. A sample stands in tests/corpora; all are used where
// QZXML_CORPORA names a folder that has them.
#include <cstddef>
#include <map>

#include "tests/support/QzTest.h"
#include "tests/tools/regex/FacetCases.h"

using namespace qztest;

namespace {

// Where the suite's verdict is not about the value, or is wrong.
const std::map<std::string, const char*> kOthers = {
    {"ctI042.xml", "invalid by its complex type"},
    {"elemO007.xml", "invalid by its element"},
    {"elemT005.xml", "invalid by its element"},
    {"ST_name00101m1_n.xml", "invalid by its schema"},
    {"gMonth004.xml", "the form of the first edition, --05--, which others of the suite refuse"},
    {"reJ11.xml", "beyond U+FFFF the suite takes characters for two"},
    {"reJ13.xml", "beyond U+FFFF the suite takes characters for two"},
    {"reJ25.xml", "beyond U+FFFF the suite takes characters for two"},
    {"reJ61.xml", "beyond U+FFFF the suite takes characters for two"},
    {"reJ75.xml", "beyond U+FFFF the suite takes characters for two"},
    {"reS42.xml", "beyond U+FFFF the suite takes characters for two"},
    {"NISTXML-SV-II-atomic-gDay-maxInclusive-2-2.xml", "29 is below 30"},
    {"NISTXML-SV-II-atomic-gDay-maxInclusive-2-3.xml", "21 is below 30"},
    {"NISTXML-SV-II-atomic-gDay-maxInclusive-2-4.xml", "19 is below 30"},
    {"NISTXML-SV-IV-atomic-gDay-maxInclusive-3-2.xml", "6 is above 1"},
    {"NISTXML-SV-IV-atomic-gDay-maxInclusive-3-3.xml", "7 is above 1"},
    {"NISTXML-SV-IV-atomic-gDay-maxInclusive-3-4.xml", "10 is above 1"},
    {"NISTXML-SV-IV-atomic-gDay-maxInclusive-3-5.xml", "11 is above 1"},
    {"valueConstraint00501m1_p.xml", "empty, and so the default value"},
    {"valueConstraint00601m5_p.xml", "empty, and so the default value"},
    {"valueConstraint01101m1_p.xml", "empty, and so the default value"},
};

std::size_t ExpectVerdicts(const std::string& path) {
  const std::vector<FacetCase> cases = ReadFacetCases(path);
  for (const FacetCase& c : cases) {
    const CRulesOfCase rules(c);
    const bool isExpected = c.isValid == (kOthers.count(c.name) == 0);
    EXPECT_EQ(isExpected, rules.Get().Accepts(c.value)) << c.name << ": " << c.value;
  }
  return cases.size();
}

}  // namespace

TEST(FacetCases, AcceptsAndRefusesWhatTheSuiteDoes) {
  EXPECT_EQ(927u, ExpectVerdicts(QZXML_TEST_DIRECTORY "/corpora/xsd/facet-cases.tsv"));
}

TEST(FacetCases, DoesSoForTheWholeSuite) {
  const std::size_t count = ExpectVerdicts(QZXML_MADE_CASES "/facet-cases.tsv");
  if (count == 0) GTEST_SKIP() << "QZXML_CORPORA names no folder with xsd-suite";
  EXPECT_GT(count, 927u);
}
