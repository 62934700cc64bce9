#include "qzxml/fastinfoset/FIVocabulary.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/xml/XmlNamespaces.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using Parts = std::vector<std::uint32_t>;

Parts PartsOf(const CFIVocabulary::CQNameParts& parts) {
  return {parts.m_dwPrefixIndex, parts.m_dwNamespaceIndex, parts.m_dwLocalNameIndex};
}

std::string DumpOf(const CFIVocabulary& vocabulary) {
  ::testing::internal::CaptureStdout();
  vocabulary.Dump();
  return ::testing::internal::GetCapturedStdout();
}

// 999 for a name that is not there.
std::uint32_t LocalNameIndex(const CFIVocabulary& vocabulary, const std::string& name) {
  std::uint32_t index = 999;
  return vocabulary.FindLocalNameIndex(name, index) ? index : 999;
}

TEST(FIVocabulary, BeginsWithThePrefixXmlAndItsNamespace) {
  const CFIVocabulary vocabulary;
  EXPECT_EQ(std::vector<std::string>{"xml"}, vocabulary.GetPrefixNamesTable().m_table);
  EXPECT_EQ(std::vector<std::string>{kXmlNamespace}, vocabulary.GetNamespaceNamesTable().m_table);
  std::uint32_t index = 0;
  EXPECT_TRUE(vocabulary.FindPrefixNameIndex("xml", index));
  EXPECT_EQ(1u, index);
  index = 0;
  EXPECT_TRUE(vocabulary.FindNamespaceNameIndex(kXmlNamespace, index));
  EXPECT_EQ(1u, index);
  EXPECT_TRUE(vocabulary.GetAttributeNamesTable().m_table.empty());
  EXPECT_TRUE(vocabulary.GetAttributeValuesTable().m_table.empty());
  EXPECT_TRUE(vocabulary.GetCharacterChunksTable().m_table.empty());
  EXPECT_TRUE(vocabulary.GetElementNamesTable().m_table.empty());
  EXPECT_TRUE(vocabulary.GetLocalNamesTable().m_table.empty());
}

TEST(FIVocabulary, ANameThatIsNotThereLeavesTheIndexAsItWas) {
  const CFIVocabulary vocabulary;
  std::uint32_t index = 77;
  EXPECT_FALSE(vocabulary.FindPrefixNameIndex("p", index));
  EXPECT_FALSE(vocabulary.FindNamespaceNameIndex("urn:p", index));
  EXPECT_FALSE(vocabulary.FindLocalNameIndex("p", index));
  EXPECT_EQ(77u, index);
}

TEST(FIVocabulary, AnElementOfNoNamespaceHasItsLocalNameAlone) {
  CFIVocabulary vocabulary;
  vocabulary.AddElement("", "", "order");
  ASSERT_EQ(1u, vocabulary.GetElementNamesTable().m_table.size());
  EXPECT_EQ((Parts{0, 0, 1}), PartsOf(vocabulary.GetElementNamesTable().GetEntry(1)));
  EXPECT_EQ(std::vector<std::string>{"order"}, vocabulary.GetLocalNamesTable().m_table);
}

TEST(FIVocabulary, ANameAddsThosePartsThatAreNotThereYet) {
  CFIVocabulary vocabulary;
  vocabulary.AddElement("o", "urn:o", "order");
  vocabulary.AddElement("o", "urn:o", "item");
  vocabulary.AddElement("", "urn:o", "item");
  vocabulary.AddAttribute("xml", kXmlNamespace, "lang");
  vocabulary.AddAttribute("", "", "item");
  const auto& elements = vocabulary.GetElementNamesTable().m_table;
  ASSERT_EQ(3u, elements.size());
  EXPECT_EQ((Parts{2, 2, 1}), PartsOf(elements[0]));
  EXPECT_EQ((Parts{2, 2, 2}), PartsOf(elements[1]));
  EXPECT_EQ((Parts{0, 2, 2}), PartsOf(elements[2]));
  const auto& attributes = vocabulary.GetAttributeNamesTable().m_table;
  ASSERT_EQ(2u, attributes.size());
  EXPECT_EQ((Parts{1, 1, 3}), PartsOf(attributes[0]));
  EXPECT_EQ((Parts{0, 0, 2}), PartsOf(attributes[1]));
  EXPECT_EQ((std::vector<std::string>{"order", "item", "lang"}),
            vocabulary.GetLocalNamesTable().m_table);
}

TEST(FIVocabulary, ANameAddedTwiceChangesNothingTheSecondTime) {
  CFIVocabulary vocabulary;
  vocabulary.AddElement("o", "urn:o", "order");
  vocabulary.AddAttribute("o", "urn:o", "id");
  const std::string before = DumpOf(vocabulary);
  vocabulary.AddElement("o", "urn:o", "order");
  vocabulary.AddAttribute("o", "urn:o", "id");
  EXPECT_EQ(before, DumpOf(vocabulary));
  EXPECT_EQ(1u, vocabulary.GetElementNamesTable().m_table.size());
  EXPECT_EQ(1u, vocabulary.GetAttributeNamesTable().m_table.size());
  EXPECT_EQ(2u, vocabulary.GetPrefixNamesTable().m_table.size());
  EXPECT_EQ(2u, vocabulary.GetNamespaceNamesTable().m_table.size());
  EXPECT_EQ(2u, vocabulary.GetLocalNamesTable().m_table.size());
}

TEST(FIVocabulary, ATextAddedTwiceHasTwoEntriesAndTheLaterIndex) {
  CFIVocabulary vocabulary;
  vocabulary.AddLocalName("a");
  EXPECT_EQ(1u, LocalNameIndex(vocabulary, "a"));
  vocabulary.AddLocalName("a");
  EXPECT_EQ(2u, LocalNameIndex(vocabulary, "a"));
  EXPECT_EQ((std::vector<std::string>{"a", "a"}), vocabulary.GetLocalNamesTable().m_table);
}

TEST(FIVocabulary, EachTextGoesIntoTheTableOfItsKind) {
  CFIVocabulary vocabulary;
  vocabulary.AddAttributeValue("v");
  vocabulary.AddElementValue("c");
  vocabulary.AddPrefixName("p");
  vocabulary.AddNamespaceName("urn:n");
  vocabulary.AddLocalName("l");
  EXPECT_EQ(std::vector<std::string>{"v"}, vocabulary.GetAttributeValuesTable().m_table);
  EXPECT_EQ(std::vector<std::string>{"c"}, vocabulary.GetCharacterChunksTable().m_table);
  EXPECT_EQ((std::vector<std::string>{"xml", "p"}), vocabulary.GetPrefixNamesTable().m_table);
  EXPECT_EQ((std::vector<std::string>{kXmlNamespace, "urn:n"}),
            vocabulary.GetNamespaceNamesTable().m_table);
  EXPECT_EQ(std::vector<std::string>{"l"}, vocabulary.GetLocalNamesTable().m_table);
}

TEST(FIVocabulary, TheTablesAreWalkedInTheOrderOfTheirIndexes) {
  CFIVocabulary vocabulary;
  vocabulary.AddElement("", "", "b");
  vocabulary.AddElement("", "", "a");
  std::string names;
  for (const std::string& name : vocabulary.GetLocalNamesTable()) names += name;
  EXPECT_EQ("ba", names);
  std::uint32_t sum = 0;
  for (const auto& parts : vocabulary.GetElementNamesTable()) sum += parts.m_dwLocalNameIndex;
  EXPECT_EQ(3u, sum);
}

TEST(FIVocabulary, AnIndexOutsideItsTableIsRefused) {
  CFIVocabulary vocabulary;
  const auto& prefixes = vocabulary.GetPrefixNamesTable();
  EXPECT_EQ("xml", prefixes.GetEntry(1));
  EXPECT_QZ_THROW(CQzException,
                  "Failed to parse FastInfoset. The index 0 is outside a table of 1 entries.",
                  prefixes.GetEntry(0));
  EXPECT_QZ_THROW(CQzException,
                  "Failed to parse FastInfoset. The index 2 is outside a table of 1 entries.",
                  prefixes.GetEntry(2));
  EXPECT_QZ_THROW(
      CQzException,
      "Failed to parse FastInfoset. The index 4294967295 is outside a table of 0 entries.",
      vocabulary.GetElementNamesTable().GetEntry(0xFFFFFFFF));
}

TEST(FIVocabulary, ATableTakes2To20EntriesAndDropsTheRest) {
  CFIVocabulary vocabulary;
  for (int i = 1; i < 0x100000; ++i) vocabulary.AddLocalName(std::to_string(i));
  vocabulary.AddLocalName("last");
  vocabulary.AddLocalName("behind");
  EXPECT_EQ(0x100000u, LocalNameIndex(vocabulary, "last"));
  EXPECT_EQ(999u, LocalNameIndex(vocabulary, "behind"));
  ASSERT_EQ(0x100000u, vocabulary.GetLocalNamesTable().m_table.size());
  EXPECT_EQ("last", vocabulary.GetLocalNamesTable().GetEntry(0x100000));
}

TEST(FIVocabulary, ACopyIsDeep) {
  CFIVocabulary source;
  source.AddLocalName("a");
  CFIVocabulary copy(source);
  copy.AddLocalName("b");
  EXPECT_EQ(2u, LocalNameIndex(copy, "b"));
  EXPECT_EQ(999u, LocalNameIndex(source, "b"));
  EXPECT_EQ(1u, source.GetLocalNamesTable().m_table.size());
  source = copy;
  source.AddLocalName("c");
  EXPECT_EQ(3u, LocalNameIndex(source, "c"));
  EXPECT_EQ(999u, LocalNameIndex(copy, "c"));
}

TEST(FIVocabulary, DumpPrintsEachTableInTheOrderOfItsTexts) {
  CFIVocabulary vocabulary;
  vocabulary.AddAttribute("", "", "id");
  vocabulary.AddElement("o", "urn:o", "order");
  vocabulary.AddElement("", "", "item");
  vocabulary.AddAttributeValue("v");
  vocabulary.AddElementValue("\xC3\xA9");
  vocabulary.AddElementValue("z");
  vocabulary.AddElementValue("Z");
  EXPECT_EQ(
      "\n** Dumping FI Tables **\n\nAttr Names\n"
      "id\x01\x01, 1\n"
      "\nAttr Values\n"
      "v, 1\n"
      "\nCharacter Chunks\n"
      "Z, 3\n"
      "z, 2\n"
      "\xC3\xA9, 1\n"
      "\nElement Names\n"
      "item\x01\x01, 2\n"
      "order\x01urn:o\x01o, 1\n"
      "\nLocal Names\n"
      "id, 1\n"
      "item, 3\n"
      "order, 2\n"
      "\nNamespace Names\n"
      "http://www.w3.org/XML/1998/namespace, 1\n"
      "urn:o, 2\n"
      "\nPrefix Names\n"
      "o, 2\n"
      "xml, 1\n",
      DumpOf(vocabulary));
}

}  // namespace
}  // namespace QzXmlLib16
