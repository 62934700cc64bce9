#include "tests/support/QzTest.h"
#include "tools/generator/regex/CharacterSet.h"
#include "tools/generator/regex/UnicodeNames.h"

using namespace qzxml::generator;

namespace {

CCharacterSet Ranges(std::initializer_list<CodeRange> ranges) {
  CCharacterSet set;
  for (const CodeRange& range : ranges) set.AddRange(range.first, range.last);
  return set;
}

}  // namespace

TEST(CharacterSet, WritesOneAtomForEachSet) {
  struct Case {
    CCharacterSet set;
    const char* atom;
    const char* negated;
  };
  const Case cases[] = {
      {Ranges({{'a', 'a'}}), "a", "[^a]"},
      {Ranges({{'.', '.'}}), "\\.", "[^.]"},
      {Ranges({{'a', 'b'}}), "[ab]", "[^ab]"},
      {Ranges({{'a', 'c'}}), "[a-c]", "[^a-c]"},
      {Ranges({{'x', 'z'}, {'a', 'c'}, {'b', 'd'}, {'e', 'e'}}), "[a-ex-z]", "[^a-ex-z]"},
      {Ranges({{'\\', '\\'}, {'[', '['}, {']', ']'}, {'^', '^'}, {'-', '-'}}), "[\\-\\[-\\^]",
       "[^\\-\\[-\\^]"},
      {Ranges({{0x0A, 0x0A}}), "\\n", "[^\\n]"},
      {Ranges({{0x09, 0x0A}, {0x0D, 0x0D}, {0x20, 0x20}}), "[\\t\\n\\r ]", "[^\\t\\n\\r ]"},
      {Ranges({{0x4E00, 0x9FFF}}), "[\\x{4E00}-\\x{9FFF}]", "[^\\x{4E00}-\\x{9FFF}]"},
      {CCharacterSet(), "[^\\x{0}-\\x{10FFFF}]", "[\\x{0}-\\x{10FFFF}]"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(c.atom, c.set.ToAtom(false));
    EXPECT_EQ(c.negated, c.set.ToAtom(true));
  }
}

TEST(CharacterSet, WritesCategoriesByTheirNames) {
  CCharacterSet digits;
  digits.AddCategory("Nd", false);
  EXPECT_EQ("\\p{Nd}", digits.ToAtom(false));
  EXPECT_EQ("\\P{Nd}", digits.ToAtom(true));
  EXPECT_EQ("\\P{Nd}", digits.GetComplement().ToAtom(false));
  EXPECT_EQ("\\p{Nd}", digits.GetComplement().ToAtom(true));
  digits.Add('_');
  digits.AddCategory("L", true);
  digits.AddCategory("L", true);
  EXPECT_EQ("[_\\p{Nd}\\P{L}]", digits.ToAtom(false));
  EXPECT_EQ("[^_\\p{Nd}\\P{L}]", digits.ToAtom(true));
}

TEST(CharacterSet, ComplementsAndDifferencesAreExact) {
  EXPECT_EQ("[\\x{0}-`{-\\x{10FFFF}]", Ranges({{'a', 'z'}}).GetComplement().ToAtom(false));
  EXPECT_EQ("[b-y]", Ranges({{0, 'a'}, {'z', kLastCode}}).GetComplement().ToAtom(false));
  EXPECT_EQ("[aeg-z]",
            Ranges({{'a', 'z'}}).Without(Ranges({{'b', 'd'}, {'f', 'f'}})).ToAtom(false));
  EXPECT_EQ("[^\\x{0}-\\x{10FFFF}]",
            Ranges({{'b', 'c'}}).Without(Ranges({{'a', 'z'}})).ToAtom(false));
}

TEST(CharacterSet, SurrogatesEndNoRange) {
  EXPECT_EQ("[\\x{D000}-\\x{D7FF}]", Ranges({{0xD000, 0xD900}}).ToAtom(false));
  EXPECT_EQ("[\\x{E000}-\\x{E010}]", Ranges({{0xDC00, 0xE010}}).ToAtom(false));
  EXPECT_EQ("[^\\x{0}-\\x{10FFFF}]", Ranges({{0xD800, 0xDFFF}}).ToAtom(false));
}

TEST(CharacterSet, KnowsWhetherALineFeedIsInIt) {
  EXPECT_TRUE(Ranges({{0x09, 0x0A}}).HasLineFeed());
  EXPECT_FALSE(Ranges({{0x0B, 0x20}}).HasLineFeed());
  const struct {
    const char* category;
    bool isOther;
    bool has;
  } cases[] = {{"C", false, true},  {"Cc", false, true}, {"L", false, false}, {"C", true, false},
               {"Cc", true, false}, {"L", true, true},   {"Cf", true, true},  {"Cf", false, false}};
  for (const auto& c : cases) {
    CCharacterSet set;
    set.AddCategory(c.category, c.isOther);
    EXPECT_EQ(c.has, set.HasLineFeed()) << c.category;
  }
}

TEST(UnicodeNames, BlocksOfOneNameAreOneSet) {
  EXPECT_EQ("[\\x{FEFF}\\x{FFF0}-\\x{FFFD}]", FindBlock("Specials")->ToAtom(false));
  EXPECT_EQ("[\\x{E000}-\\x{F8FF}\\x{F0000}-\\x{FFFFD}\\x{100000}-\\x{10FFFD}]",
            FindBlock("PrivateUse")->ToAtom(false));
  EXPECT_EQ("[^\\x{0}-\\x{10FFFF}]", FindBlock("HighSurrogates")->ToAtom(false));
  EXPECT_EQ(FindBlock("Greek")->ToAtom(false), FindBlock("GreekandCoptic")->ToAtom(false));
  EXPECT_FALSE(FindBlock("").has_value());
  EXPECT_FALSE(FindBlock("basicLatin").has_value());
}

TEST(UnicodeNames, CategoriesAreThoseOfXmlSchema) {
  for (const char* name :
       {"L",  "Lu", "Ll", "Lt", "Lm", "Lo", "M",  "Mn", "Mc", "Me", "N",  "Nd",
        "Nl", "No", "P",  "Pc", "Pd", "Ps", "Pe", "Pi", "Pf", "Po", "Z",  "Zs",
        "Zl", "Zp", "S",  "Sm", "Sc", "Sk", "So", "C",  "Cc", "Cf", "Co", "Cn"}) {
    EXPECT_TRUE(IsCategory(name)) << name;
  }
  for (const char* name : {"", "Cs", "L&", "lu", "LC", "Xan"})
    EXPECT_FALSE(IsCategory(name)) << name;
}
