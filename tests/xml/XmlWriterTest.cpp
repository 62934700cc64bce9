#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "qzxml/runtime/MemoryLeakHelp.h"
#include "qzxml/xml/XmlNamespaces.h"
#include "qzxml/xml/XmlWriter.h"
#include "qzxml/xml/XmlWriterContext.h"
#include "tests/support/QzTest.h"

using namespace QzXmlLib16;

namespace {

using Context = CXmlWriter::CXmlWriterContext;
using Counts = std::pair<int, int>;  // alive, made

// What the monitor's dump tells of a class.
Counts CountsOf(const std::string& className) {
  const std::string dump = CInstanceMonitor::DumpState();
  const std::string name = " " + className + " = ";
  const std::size_t place = dump.find(name);
  if (place == std::string::npos) return {0, 0};
  const std::size_t figures = place + name.size();
  const std::size_t slash = dump.find('/', figures);
  return {std::stoi(dump.substr(figures, slash - figures)), std::stoi(dump.substr(slash + 1))};
}

// A writer of nothing: only keeps the stack of elements.
class BareWriter : public CXmlWriter {
 public:
  BareWriter() : CXmlWriter("BareWriter") {}

  void WriteComment(const std::string&) override {}
  void WriteProcessingInstruction(const std::string&) override {}
  void WriteInlineSchema(const std::string&) override {}
  void WriteStartElement(const std::string& name, const std::string& uri) override {
    calls += "<" + name;
    m_pContext = OpenContext(name, uri);
  }
  void WriteText(const std::string& text, ItemType type, bool isDefault) override {
    calls += "[" + text + "," + std::to_string(type) + (isDefault ? ",default]" : "]");
  }
  void WriteEndElement() override {
    calls += ">";
    m_pContext = CloseContext(m_pContext);
  }
  void WriteAttribute(const std::string&, const std::string&, const std::string&,
                      ItemType) override {}
  void WriteXsiType(const std::string&, const std::string&, ItemType) override {}
  void WriteXsiNil() override {}

  Context* context() const { return m_pContext; }
  using CXmlWriter::CloseContext;
  using CXmlWriter::GetRootDefaultNamespace;
  using CXmlWriter::GetRootNamespaceMap;
  using CXmlWriter::IsXmlNamespace;
  using CXmlWriter::OpenContext;
  using CXmlWriter::RequireOpenStartTag;

  std::string calls;
};

// Every test leaves as many contexts and writers alive as it found.
class XmlWriter : public ::testing::Test {
 protected:
  void SetUp() override { m_contexts = CountsOf("CXmlWriterContext").first; }
  void TearDown() override {
    EXPECT_EQ(m_contexts, CountsOf("CXmlWriterContext").first);
    EXPECT_EQ(0, CountsOf("BareWriter").first);
  }

 private:
  int m_contexts = 0;
};

const CXmlWriter::NamespaceMap kNone;

}  // namespace

// ---- The interface ----

#if defined(__x86_64__) && defined(__GNUC__)
template <typename Member>
std::size_t SlotOf(Member member) {
  std::size_t words[2];
  static_assert(sizeof(words) == sizeof(member));
  std::memcpy(words, &member, sizeof(member));
  return (words[0] - 1) / sizeof(void*);  // an odd number: one more than the offset in the table
}

TEST_F(XmlWriter, HasItsOperationsInTheOrderOfSlotsBehindTheDestructor) {
  const std::size_t slots[] = {
      SlotOf(&CXmlWriter::StartDocument),       SlotOf(&CXmlWriter::EndDocument),
      SlotOf(&CXmlWriter::SetDefaultNamespace), SlotOf(&CXmlWriter::AddNamespaceMapping),
      SlotOf(&CXmlWriter::WriteComment),        SlotOf(&CXmlWriter::WriteProcessingInstruction),
      SlotOf(&CXmlWriter::WriteInlineSchema),   SlotOf(&CXmlWriter::WriteStartElement),
      SlotOf(&CXmlWriter::WriteText),           SlotOf(&CXmlWriter::WriteEndElement),
      SlotOf(&CXmlWriter::WriteAttribute),      SlotOf(&CXmlWriter::WriteXsiType),
      SlotOf(&CXmlWriter::WriteXsiNil),
  };
  std::size_t expected = 2;  // the destructor takes two
  for (const std::size_t slot : slots) EXPECT_EQ(expected++, slot);
}
#endif

TEST_F(XmlWriter, BeginsWithThePrefixXmlAndNoDefaultNamespace) {
  const BareWriter writer;
  EXPECT_EQ("", writer.GetRootDefaultNamespace());
  EXPECT_EQ((CXmlWriter::NamespaceMap{{"http://www.w3.org/XML/1998/namespace", "xml"}}),
            writer.GetRootNamespaceMap());
}

TEST_F(XmlWriter, KnowsTheNamespaceNamesOfTheW3c) {
  EXPECT_STREQ("http://www.w3.org/XML/1998/namespace", kXmlNamespace);
  EXPECT_STREQ("http://www.w3.org/2000/xmlns/", kXmlnsNamespace);
  EXPECT_STREQ("http://www.w3.org/2001/XMLSchema-instance", kXmlSchemaInstanceNamespace);
}

TEST_F(XmlWriter, TakesAUriThatOnlyBeginsLikeTheXmlNamespaceForIt) {
  const std::pair<std::string, bool> cases[] = {
      {"http://www.w3.org/XML/1998/namespace", true},
      {"http://www.w3.org/XML/1998/namespaces", true},
      {"http://www.w3.org/XML/1998/namespace#more", true},
      {"http://www.w3.org/XML/1998/namespac", false},
      {"http://www.w3.org/XML/1998/Namespace", false},
      {"", false},
  };
  for (const auto& [uri, expected] : cases)
    EXPECT_EQ(expected, BareWriter::IsXmlNamespace(uri)) << uri;
}

TEST_F(XmlWriter, EndsADocumentOnlyWhenEveryElementIsClosed) {
  BareWriter writer;
  writer.StartDocument();
  writer.EndDocument();
  writer.WriteStartElement("a", "");
  EXPECT_QZ_THROW(CQzException, "An Element has not been closed.", writer.EndDocument());
  writer.WriteEndElement();
  writer.EndDocument();
}

TEST_F(XmlWriter, WritesATextElementWithThreeCallsWhereNoShortWayIsOffered) {
  BareWriter writer;
  writer.WriteTextElement("a", "u", "text", ItemType_i4, true);
  EXPECT_EQ("<a[text,5,default]>", writer.calls);
}

TEST_F(XmlWriter, RequiresAnOpenStartTagForAttributes) {
  BareWriter writer;
  EXPECT_QZ_ASSERT("m_pContext != 0", writer.RequireOpenStartTag());
  writer.WriteStartElement("a", "");
  writer.RequireOpenStartTag();
  writer.context()->SetStartTagOpen(false);
  EXPECT_QZ_THROW(CQzException, "Attributes must be added before elements",
                  writer.RequireOpenStartTag());
}

TEST_F(XmlWriter, RefusesAttributesWithoutAnElementWhereAssertionsAreSilent) {
  const qztest::AssertionRecorder silence;
  BareWriter writer;
  EXPECT_QZ_THROW(CQzException, "Attributes must be added before elements",
                  writer.RequireOpenStartTag());
}

// ---- Namespaces of the writer and of its elements ----

TEST_F(XmlWriter, KeepsNamespacesSetBeforeTheRootForTheRoot) {
  BareWriter writer;
  writer.SetDefaultNamespace("urn:d");
  writer.AddNamespaceMapping("p", "urn:p");
  writer.AddNamespaceMapping("q", "urn:p");  // one URI, one alias: the later one
  EXPECT_EQ("urn:d", writer.GetRootDefaultNamespace());
  EXPECT_EQ("q", writer.GetRootNamespaceMap().at("urn:p"));

  writer.WriteStartElement("a", "");
  EXPECT_EQ("urn:d", writer.context()->GetDefaultNamespace());
  EXPECT_EQ(writer.GetRootNamespaceMap(), writer.context()->GetNamespaceMap());
}

TEST_F(XmlWriter, GivesNamespacesSetInAnElementToThatElementAlone) {
  BareWriter writer;
  writer.SetDefaultNamespace("urn:d");
  writer.WriteStartElement("root", "");
  writer.WriteStartElement("a", "");
  writer.SetDefaultNamespace("urn:inner");
  writer.AddNamespaceMapping("i", "urn:i");
  EXPECT_EQ("urn:inner", writer.context()->GetDefaultNamespace());
  EXPECT_EQ("i", writer.context()->GetNamespaceMapValue("urn:i"));
  writer.WriteEndElement();

  EXPECT_EQ("urn:d", writer.context()->GetDefaultNamespace());
  EXPECT_EQ(nullptr, writer.context()->FindAlias("urn:i"));
  EXPECT_EQ("urn:d", writer.GetRootDefaultNamespace());
  EXPECT_EQ(1u, writer.GetRootNamespaceMap().size());
}

TEST_F(XmlWriter, KeepsTheCollectionStateInTheInnermostElement) {
  BareWriter writer;
  writer.SetCollectionState(1);  // nothing is open: nothing happens
  writer.WriteStartElement("a", "");
  EXPECT_EQ(0u, writer.context()->GetCollectionState());
  writer.SetCollectionState(1);
  writer.WriteStartElement("b", "");
  EXPECT_EQ(0u, writer.context()->GetCollectionState());
  writer.SetCollectionState(3);
  EXPECT_EQ(3u, writer.context()->GetCollectionState());
  writer.WriteEndElement();
  EXPECT_EQ(1u, writer.context()->GetCollectionState());
}

// ---- The stack of elements ----

TEST_F(XmlWriter, OpensAContextThatIsAsNewWhereverItsMemoryWas) {
  BareWriter writer;
  writer.WriteStartElement("root", "urn:r");
  for (int round = 0; round < 3; ++round) {
    writer.WriteStartElement("a" + std::to_string(round), "urn:a");
    Context* const context = writer.context();
    EXPECT_EQ("a" + std::to_string(round), context->GetName());
    EXPECT_EQ("urn:a", context->GetNamespace());
    EXPECT_EQ(1u, context->GetDepth());
    EXPECT_EQ(0u, context->GetChildCount());
    EXPECT_TRUE(context->IsStartTagOpen());
    EXPECT_FALSE(context->HasAttributes());
    EXPECT_EQ(0u, context->GetCollectionState());
    EXPECT_EQ(1u, context->GetNamespaceMap().size());
    EXPECT_EQ("", context->GetDefaultNamespace());

    context->AddChild();
    context->SetStartTagOpen(false);
    context->SetHasAttributes(true);
    context->SetDepth(7);
    writer.SetCollectionState(2);
    writer.SetDefaultNamespace("urn:d");
    writer.AddNamespaceMapping("p", "urn:p");
    writer.WriteEndElement();
  }
  EXPECT_EQ(nullptr, writer.context()->GetParent());
  EXPECT_EQ(0u, writer.context()->GetDepth());
}

TEST_F(XmlWriter, KeepsNamesOfEveryLength) {
  BareWriter writer;
  std::vector<std::string> names;
  for (std::size_t length = 0; length < 100; ++length) {
    names.emplace_back(length, static_cast<char>('a' + length % 26));
    writer.WriteStartElement(names.back(), names.back());
  }
  for (; !names.empty(); names.pop_back()) {
    EXPECT_EQ(names.back(), writer.context()->GetName());
    EXPECT_EQ(names.back(), writer.context()->GetNamespace());
    writer.WriteEndElement();
  }
}

TEST_F(XmlWriter, OpensASecondRootWithTheNamespacesOfTheWriter) {
  BareWriter writer;
  writer.WriteStartElement("first", "");
  writer.AddNamespaceMapping("p", "urn:p");
  writer.WriteEndElement();
  writer.SetDefaultNamespace("urn:d");
  writer.WriteStartElement("second", "");
  EXPECT_EQ(nullptr, writer.context()->GetParent());
  EXPECT_EQ("urn:d", writer.context()->GetDefaultNamespace());
  EXPECT_EQ(1u, writer.context()->GetNamespaceMap().size());
}

TEST_F(XmlWriter, GivesBackAContextThatDidNotBecomeTheInnermostOne) {
  BareWriter writer;
  writer.WriteStartElement("root", "");
  Context* const context = writer.OpenContext("a", "");
  context->AddNamespaceMapValue("urn:p", "p");
  EXPECT_EQ(writer.context(), writer.CloseContext(context));
  EXPECT_EQ(nullptr, writer.context()->FindAlias("urn:p"));
}

TEST_F(XmlWriter, CountsContextsWhenTheyAreOpenedAndClosed) {
  const auto [alive, made] = CountsOf("CXmlWriterContext");
  {
    BareWriter writer;
    EXPECT_EQ(1, CountsOf("BareWriter").first);
    writer.WriteStartElement("root", "");
    writer.WriteStartElement("a", "");
    EXPECT_EQ(Counts(alive + 2, made + 2), CountsOf("CXmlWriterContext"));
    writer.WriteEndElement();
    EXPECT_EQ(Counts(alive + 1, made + 2), CountsOf("CXmlWriterContext"));
    for (int i = 0; i < 10; ++i) {
      writer.WriteStartElement("a", "");
      writer.WriteEndElement();
    }
    EXPECT_EQ(Counts(alive + 1, made + 12), CountsOf("CXmlWriterContext"));
    writer.WriteStartElement("left", "open");
    EXPECT_EQ(Counts(alive + 2, made + 13), CountsOf("CXmlWriterContext"));
  }
  EXPECT_EQ(Counts(alive, made + 13), CountsOf("CXmlWriterContext"));
  EXPECT_EQ(0, CountsOf("BareWriter").first);
}

TEST_F(XmlWriter, FreesAHundredThousandElementsLeftOpenOneAfterTheOther) {
  const int made = CountsOf("CXmlWriterContext").second;
  {
    BareWriter writer;
    for (int depth = 0; depth < 100000; ++depth) writer.WriteStartElement("a", "");
    EXPECT_EQ(99999u, writer.context()->GetDepth());
  }
  EXPECT_EQ(made + 100000, CountsOf("CXmlWriterContext").second);
}

TEST_F(XmlWriter, FreesAHundredThousandEndedElements) {
  BareWriter writer;
  for (int depth = 0; depth < 100000; ++depth) writer.WriteStartElement("a", "");
  for (int depth = 0; depth < 100000; ++depth) writer.WriteEndElement();
  writer.EndDocument();
}

TEST_F(XmlWriter, TakesAScopeForEachOfAHundredThousandLevels) {
  BareWriter writer;
  writer.WriteStartElement("root", "");
  for (int depth = 0; depth < 100000; ++depth) {
    writer.WriteStartElement("a", "");
    const std::string alias = writer.context()->GenerateAlias();
    writer.AddNamespaceMapping(alias, "urn:" + std::to_string(depth));
  }
  EXPECT_EQ(100001u, writer.context()->GetNamespaceMap().size());
  for (int depth = 0; depth < 100000; ++depth) writer.WriteEndElement();
  EXPECT_EQ(1u, writer.context()->GetNamespaceMap().size());
  EXPECT_EQ("AA", writer.context()->GenerateAlias());
}

// ---- Contexts by themselves ----

TEST_F(XmlWriter, MakesARootContextWithAScopeOfItsOwn) {
  const CXmlWriter::NamespaceMap map{{"urn:p", "p"}};
  Context root("root", "urn:r", "urn:d", map, nullptr);
  EXPECT_EQ("root", root.GetName());
  EXPECT_EQ("urn:r", root.GetNamespace());
  EXPECT_EQ("urn:d", root.GetDefaultNamespace());
  EXPECT_EQ(map, root.GetNamespaceMap());
  EXPECT_EQ(0u, root.GetDepth());
  EXPECT_EQ(nullptr, root.GetParent());
  root.AddNamespaceMapValue("urn:q", "q");
  EXPECT_EQ(1u, map.size());
}

TEST_F(XmlWriter, FreesTheParentsOfADeletedContext) {
  const int alive = CountsOf("CXmlWriterContext").first;
  auto* const root = new Context("root", "", "", kNone, nullptr);
  auto* const child = new Context("child", "", root);
  auto* const grandchild = new Context("grandchild", "", child);
  EXPECT_EQ(2u, grandchild->GetDepth());
  EXPECT_EQ(child, grandchild->DetachParent());
  EXPECT_EQ(nullptr, grandchild->GetParent());
  delete grandchild;
  EXPECT_EQ(alive + 2, CountsOf("CXmlWriterContext").first);
  delete child;
  EXPECT_EQ(alive, CountsOf("CXmlWriterContext").first);
}

TEST_F(XmlWriter, TakesANestedContextWithoutParentForARoot) {
  const qztest::AssertionRecorder silence;
  Context context("a", "urn:a", nullptr);
  EXPECT_EQ(0u, context.GetDepth());
  EXPECT_TRUE(context.GetNamespaceMap().empty());
}

TEST_F(XmlWriter, InheritsNamespacesUntilTheFirstChange) {
  BareWriter writer;
  writer.SetDefaultNamespace("urn:d");
  writer.AddNamespaceMapping("p", "urn:p");
  writer.WriteStartElement("root", "");
  writer.WriteStartElement("a", "");
  EXPECT_EQ("urn:d", writer.context()->GetDefaultNamespace());
  EXPECT_EQ("p", *writer.context()->FindAlias("urn:p"));

  writer.AddNamespaceMapping("q", "urn:q");  // the default namespace is taken over
  EXPECT_EQ("urn:d", writer.context()->GetDefaultNamespace());
  EXPECT_EQ("p", *writer.context()->FindAlias("urn:p"));
  writer.WriteStartElement("b", "");
  writer.SetDefaultNamespace("urn:e");  // the map is
  EXPECT_EQ("q", *writer.context()->FindAlias("urn:q"));
  writer.WriteStartElement("c", "");
  EXPECT_EQ("urn:e", writer.context()->GetDefaultNamespace());
  writer.WriteEndElement();
  writer.WriteEndElement();
  EXPECT_EQ("urn:d", writer.context()->GetDefaultNamespace());
}

TEST_F(XmlWriter, PutsAnOverriddenAliasBackAtTheEndOfTheElement) {
  BareWriter writer;
  writer.AddNamespaceMapping("p", "urn:p");
  writer.WriteStartElement("root", "urn:p");
  writer.WriteStartElement("a", "urn:p");
  writer.AddNamespaceMapping("q", "urn:p");
  writer.AddNamespaceMapping("r", "urn:p");
  EXPECT_EQ("r", writer.context()->GetNamespaceMapValue("urn:p"));
  writer.WriteEndElement();
  EXPECT_EQ("p", writer.context()->GetNamespaceMapValue("urn:p"));
}

TEST_F(XmlWriter, EntersAnUnknownNamespaceWithAnEmptyAliasWhenItIsAskedFor) {
  BareWriter writer;
  writer.WriteStartElement("root", "");
  writer.WriteStartElement("a", "");
  EXPECT_EQ("", writer.context()->GetNamespaceMapValue("urn:x"));
  EXPECT_EQ(2u, writer.context()->GetNamespaceMap().size());
  writer.WriteEndElement();
  // Meant: the element had no scope of its own, so the entry is the root's.
  EXPECT_EQ(1u, writer.context()->GetNamespaceMap().count("urn:x"));

  writer.WriteStartElement("b", "");
  writer.AddNamespaceMapping("p", "urn:p");
  EXPECT_EQ("", writer.context()->GetNamespaceMapValue("urn:y"));
  writer.WriteEndElement();
  EXPECT_EQ(0u, writer.context()->GetNamespaceMap().count("urn:y"));
}

TEST_F(XmlWriter, FindsThePrefixOfAnElementsName) {
  BareWriter writer;
  writer.SetDefaultNamespace("urn:d");
  writer.AddNamespaceMapping("p", "urn:p");
  writer.WriteStartElement("root", "");
  const std::string* prefix = &writer.calls;
  EXPECT_TRUE(writer.context()->FindPrefix(prefix));
  EXPECT_EQ(nullptr, prefix);

  writer.WriteStartElement("inDefault", "urn:d");
  prefix = &writer.calls;
  EXPECT_TRUE(writer.context()->FindPrefix(prefix));
  EXPECT_EQ(nullptr, prefix);

  writer.WriteStartElement("inP", "urn:p");
  EXPECT_TRUE(writer.context()->FindPrefix(prefix));
  EXPECT_EQ("p", *prefix);
  writer.SetDefaultNamespace("urn:p");
  EXPECT_TRUE(writer.context()->FindPrefix(prefix));
  EXPECT_EQ(nullptr, prefix);

  writer.WriteStartElement("nowhere", "urn:n");
  prefix = &writer.calls;
  EXPECT_FALSE(writer.context()->FindPrefix(prefix));
  EXPECT_EQ(&writer.calls, prefix);
}

// ---- Generated aliases ----

TEST_F(XmlWriter, GeneratesAliasesInAlphabeticalOrderAndThreeLettersBehindZZ) {
  const std::pair<int, std::string> cases[] = {
      {0, "AA"},   {1, "AB"},    {25, "AZ"},   {26, "BA"},   {51, "BZ"},     {52, "CA"},
      {675, "ZZ"}, {676, "AAA"}, {677, "AAB"}, {702, "ABA"}, {18251, "ZZZ"}, {18252, "AAAA"},
  };
  Context root("root", "", "", kNone, nullptr);
  int next = 0;
  for (const auto& [index, expected] : cases) {
    for (; next < index; ++next) {
      root.AddNamespaceMapValue("urn:" + std::to_string(next), root.GenerateAlias());
    }
    EXPECT_EQ(expected, root.GenerateAlias()) << index;
  }
}

TEST_F(XmlWriter, GeneratesTheSameAliasUntilItIsUsed) {
  Context root("root", "", "", kNone, nullptr);
  EXPECT_EQ("AA", root.GenerateAlias());
  EXPECT_EQ("AA", root.GenerateAlias());
  root.AddNamespaceMapValue("urn:1", "AA");
  EXPECT_EQ("AB", root.GenerateAlias());
}

TEST_F(XmlWriter, SkipsAliasesInUseWhoeverMadeThem) {
  Context root("root", "", "", CXmlWriter::NamespaceMap{{"urn:1", "AA"}, {"urn:2", "AC"}}, nullptr);
  EXPECT_EQ("AB", root.GenerateAlias());
  root.AddNamespaceMapValue("urn:3", "AB");
  EXPECT_EQ("AD", root.GenerateAlias());
}

TEST_F(XmlWriter, UsesAnAliasAgainThatNoMappingHasAnyMore) {
  Context root("root", "", "", kNone, nullptr);
  for (const char* uri : {"urn:1", "urn:2", "urn:3"}) {
    root.AddNamespaceMapValue(uri, root.GenerateAlias());
  }
  EXPECT_EQ("AD", root.GenerateAlias());
  root.AddNamespaceMapValue("urn:2", "p");
  EXPECT_EQ("AB", root.GenerateAlias());
}

TEST_F(XmlWriter, KeepsAnAliasThatTwoNamespacesShareUntilBothGaveItUp) {
  Context root("root", "", "", CXmlWriter::NamespaceMap{{"urn:1", "AA"}, {"urn:2", "AA"}}, nullptr);
  EXPECT_EQ("AB", root.GenerateAlias());
  root.AddNamespaceMapValue("urn:1", "p");
  EXPECT_EQ("AB", root.GenerateAlias());
  root.AddNamespaceMapValue("urn:2", "p");
  EXPECT_EQ("AA", root.GenerateAlias());
}

TEST_F(XmlWriter, GivesSiblingsTheSameAliasAndTheirChildrenTheNextOne) {
  BareWriter writer;
  writer.WriteStartElement("root", "");
  for (int sibling = 0; sibling < 3; ++sibling) {
    writer.WriteStartElement("a", "");
    EXPECT_EQ("AA", writer.context()->GenerateAlias());
    writer.AddNamespaceMapping("AA", "urn:1");
    writer.WriteStartElement("b", "");
    EXPECT_EQ("AB", writer.context()->GenerateAlias());
    writer.AddNamespaceMapping("q", "urn:1");  // takes AA out of use in here
    EXPECT_EQ("AA", writer.context()->GenerateAlias());
    writer.WriteEndElement();
    EXPECT_EQ("AB", writer.context()->GenerateAlias());
    writer.WriteEndElement();
  }
}

// ---- Values of documents ----

namespace {

class ValueWriter : public BareWriter {
 public:
  using CXmlWriter::AreDocumentValues;
};

}  // namespace

TEST_F(XmlWriter, TakesValuesForADocumentsWhileTheCallerSaysSo) {
  ValueWriter writer;
  EXPECT_FALSE(writer.AreDocumentValues());
  {
    const CXmlWriter::CDocumentValues outer(&writer);
    EXPECT_TRUE(writer.AreDocumentValues());
    {
      const CXmlWriter::CDocumentValues inner(&writer);
      EXPECT_TRUE(writer.AreDocumentValues());
    }
    EXPECT_TRUE(writer.AreDocumentValues());
  }
  EXPECT_FALSE(writer.AreDocumentValues());
}
