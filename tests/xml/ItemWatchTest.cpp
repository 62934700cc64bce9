// What is left of a document whose items are used up while it loads: all but these, with their
// memory used again.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "qzxml/fastinfoset/FastInfosetContext.h"
#include "qzxml/runtime/MemoryLeakHelp.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/xml/ItemWatch.h"
#include "tests/support/LiveCounts.h"
#include "tests/support/QzTest.h"
#include "tests/xml/TreeShape.h"

namespace QzXmlLib16 {
namespace {

using detail::CItemWatch;
using detail::IItemReader;
using qztest::Shape;

// Reads the elements "item" in "root", "list" and each other, whatever is in them, and keeps their
// shapes.
class CReader final : public IItemReader {
 public:
  const Role* FindRole(const Role&, const detail::XmlName& name) override {
    if (name.localName == "item") return &m_item;
    return name.localName == "list" ? &m_list : nullptr;
  }
  std::size_t GetRunCount() const override { return 0; }
  bool ReadItems(const Role& role, CXmlElement* first, CXmlElement* last, std::size_t,
                 bool continuesRun) override {
    EXPECT_EQ(&m_item, &role);
    if (refuses) return false;
    if (throws) throw CQzException("refused");
    for (CXmlElement* element = first;; element = element->GetNextSiblingElement()) {
      if (onItem != nullptr) onItem(*element);
      items.push_back(Shape(element));
      places.insert(element);
      if (element == last) break;
    }
    batches.push_back(continuesRun);
    return true;
  }

  const Role root{false};
  void (*onItem)(CXmlElement& element) = nullptr;
  bool refuses = false;
  bool throws = false;
  std::vector<std::string> items;
  std::vector<bool> batches;  // whether each continued its run
  std::set<const CXmlElement*> places;

 private:
  Role m_item{true};
  Role m_list{false};
};

class ItemWatch : public qztest::NothingLeftBehind {
 protected:
  // The shape of what is left, and behind it the items.
  std::string Load(const std::string& text, std::size_t octets = 0) {
    CXmlDocument document;
    const CItemWatch watch(document, m_reader, m_reader.root, octets);
    document.LoadXml(text.c_str());
    std::string shape = Shape(document.GetDocumentElement());
    for (const std::string& item : m_reader.items) shape += "\n" + item;
    return shape;
  }
  static std::string ShapeOf(const std::string& text) {
    CXmlDocument document;
    document.LoadXml(text.c_str());
    return Shape(document.GetDocumentElement());
  }

  CReader m_reader;
};

TEST_F(ItemWatch, LeavesOneEmptyElementOfARow) {
  EXPECT_EQ(
      ShapeOf("<root a='1'>t<x/>u<item/>vw<y/><item/>z</root>") + "\n" +
          ShapeOf("<item b='1'>p</item>") + "\n" + ShapeOf("<item><c>q</c></item>") + "\n" +
          ShapeOf("<item/>"),
      Load("<root a='1'>t<x/>u<item b='1'>p</item>v<item><c>q</c></item>w<y/><item/>z</root>"));
  EXPECT_EQ((std::vector<bool>{false, true, false}), m_reader.batches);
}

TEST_F(ItemWatch, IsNotAskedForWhatIsSmall) {
  const std::string text = "<root><item/><item><c/></item><list><item/></list></root>";
  EXPECT_EQ(ShapeOf(text), Load(text, 100000));
  EXPECT_EQ("", [this] {
    std::string all;
    for (const std::string& item : m_reader.items) all += item;
    return all;
  }());
}

TEST_F(ItemWatch, ReadsItemsInBatchesAndLeavesTheLastOnes) {
  const auto item = [](std::size_t i) { return "<item><c>" + std::to_string(i) + "</c></item>"; };
  std::string text = "<root>";
  for (std::size_t i = 0; i < 500; ++i) text += item(i);
  const std::string shape = Load(text + "</root>", 4000);
  EXPECT_LT(m_reader.batches.size(), 40U);
  // The first ones came before the tree was large, then there is one for those that were read.
  const std::size_t read = m_reader.items.size();
  EXPECT_GT(read, 400U);
  std::size_t first = 0;
  while (first < 500 && ShapeOf(item(first)) != m_reader.items.front()) ++first;
  EXPECT_GT(first, 0U);
  std::string left = "<root>";
  for (std::size_t i = 0; i < 500; ++i) {
    if (i < first || i >= first + read) left += item(i);
    if (i == first) left += "<item/>";
  }
  std::string expected = ShapeOf(left + "</root>");
  for (std::size_t i = first; i < first + read; ++i) expected += "\n" + ShapeOf(item(i));
  EXPECT_EQ(expected, shape);
}

TEST_F(ItemWatch, LooksIntoElementsThatGrow) {
  std::string item = "<item>";
  for (int i = 0; i < 300; ++i) item += "<item>i</item>";
  item += "</item>";
  std::string list = "<list>";
  for (int i = 0; i < 300; ++i) list += "<item>l</item>";
  list += "</list>";
  Load("<root>" + list + item + "<other>" + list + "</other></root>", 2000);
  const auto count = [this](const char* text) {
    return std::count(m_reader.items.begin(), m_reader.items.end(), ShapeOf(text));
  };
  EXPECT_GT(count("<item>l</item>"), 200);
  EXPECT_LT(count("<item>l</item>"), 301);
  EXPECT_GT(count("<item>i</item>"), 200);
}

TEST_F(ItemWatch, UsesTheMemoryAgain) {
  std::string text = "<root>";
  for (int i = 0; i < 5000; ++i) {
    text += "<item a='" + std::to_string(i) + "'><c>" + std::string(std::size_t(i % 300), 'x') +
            "</c></item>";
  }
  Load(text + "</root>");
  EXPECT_EQ(5000U, m_reader.items.size());
  EXPECT_LE(m_reader.places.size(), 3U);
}

// The strings that a reader asks for go with their elements; those of the element around stay.
TEST_F(ItemWatch, KeepsTheTextAroundTheItems) {
  m_reader.onItem = [](CXmlElement& element) {
    element.GetText();
    element.GetAttributes();
    for (CXmlAttribute* attribute : element.GetAttributes()) attribute->GetValue();
  };
  for (const std::size_t octets : {0U, 3000U}) {
    std::string text = "<root>";
    std::string expected;
    for (int i = 0; i < 12; ++i) {
      const std::string between(30000, static_cast<char>('a' + i));
      text += "<item a='1' b='" + std::string(9000, 'b') + "'>i</item>" + between;
      expected += between;
    }
    CXmlDocument document;
    const CItemWatch watch(document, m_reader, m_reader.root, octets);
    document.LoadXml((text + "</root>").c_str());
    EXPECT_EQ(expected, document.GetDocumentElement()->GetText());
  }
}

TEST_F(ItemWatch, DestroysOneByOneWhatIsCountedInSeveralRecords) {
  static int seen;
  seen = 0;
  m_reader.onItem = [](CXmlElement&) {
    if (++seen == 3) CInstanceMonitor::Cleanup();
  };
  const std::string item = "<item a='1'><c>q</c>" + std::string(9000, 't') + "</item>";
  std::string text = "<root>";
  std::string expected = ShapeOf("<root><item/><x/></root>");
  for (int i = 0; i < 9; ++i) {
    text += item;
    expected += "\n" + ShapeOf(item);
  }
  EXPECT_EQ(expected, Load(text + "<x/></root>"));
}

TEST_F(ItemWatch, EndsTheLoadWhenTheReaderRefuses) {
  for (const bool throws : {false, true}) {
    m_reader.refuses = !throws;
    m_reader.throws = throws;
    CXmlDocument document;
    const CItemWatch watch(document, m_reader, m_reader.root, 0);
    EXPECT_ANY_THROW(document.LoadXml("<root><item/></root>"));
    EXPECT_TRUE(watch.HasRead());
    EXPECT_TRUE(watch.HasFailed());
  }
}

TEST_F(ItemWatch, EndsTheLoadWhenAnAliasThatWasAskedForChanges) {
  const std::string before = "<root xmlns:p='urn:p'><item/><item/>";
  for (const char* const last : {"<item xmlns:p='urn:p'/>", "<item xmlns:p='urn:q'/>",
                                 "<item xmlns:q='urn:p'/>", "<item/>"}) {
    const bool changes = std::string(last).find("urn:q") != std::string::npos ||
                         std::string(last).find(":q=") != std::string::npos;
    for (const bool asks : {false, true}) {
      m_reader.onItem = [](CXmlElement&) {};
      if (asks) {
        m_reader.onItem = [](CXmlElement& element) {
          element.GetDocument()->LookupNamespaceFromAlias("p");
        };
      }
      CXmlDocument document;
      const CItemWatch watch(document, m_reader, m_reader.root, 0);
      const std::string text = before + last + "</root>";
      if (asks && changes) {
        EXPECT_ANY_THROW(document.LoadXml(text.c_str())) << last;
      } else {
        EXPECT_NO_THROW(document.LoadXml(text.c_str())) << last;
      }
      EXPECT_EQ(asks && changes, watch.HasFailed()) << last;
    }
  }
}

TEST_F(ItemWatch, LeavesFailuresOfTheParserAsTheyAre) {
  CXmlDocument document;
  const CItemWatch watch(document, m_reader, m_reader.root, 0);
  EXPECT_QZ_THROW(CQzException, "mismatched tag at line 2",
                  document.LoadXml("<root><item/><item><c/></item>\n<item></root>"));
  EXPECT_TRUE(watch.HasRead());
  EXPECT_FALSE(watch.HasFailed());
}

TEST_F(ItemWatch, CountsDepthAndGrowthAsEver) {
  CSerializationContext context;
  context.SetMaxDepth(3);
  context.SetMaxAmplification(1);
  std::string text = "<!DOCTYPE root [<!ENTITY e '" + std::string(1000, 'e') + "'>]><root>";
  for (int i = 0; i < 12000; ++i) text += "<item>&e;</item>";
  CXmlDocument document(context);
  const CItemWatch watch(document, m_reader, m_reader.root, 0);
  EXPECT_QZ_THROW(CQzException, "The document grows past 1 times its size",
                  document.LoadXml((text + "</root>").c_str()));
  CXmlDocument deep(context);
  const CItemWatch deepWatch(deep, m_reader, m_reader.root, 0);
  EXPECT_QZ_THROW(CQzException, "The document exceeds the depth limit of 3 elements",
                  deep.LoadXml("<root><item/><item><a><b/></a></item></root>"));
}

}  // namespace
}  // namespace QzXmlLib16
