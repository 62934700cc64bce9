#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "qzxml/xml/XmlDocument.h"
#include "tests/support/LiveCounts.h"
#include "tests/xml/TreeShape.h"

namespace QzXmlLib16 {
namespace {

using qztest::Shape;

class XmlDocumentCallback : public qztest::NothingLeftBehind {};

std::vector<std::string> g_ended;

bool Note(CXmlElement* element) {
  g_ended.push_back(Shape(element));
  return false;
}

TEST_F(XmlDocumentCallback, TheCallbackGetsEachElementAsItEndsWithAllItsContent) {
  g_ended.clear();
  CXmlDocument document(&Note);
  document.LoadXml("<r a='1'>t<c b='2'>u<d/>v</c>w<e/></r>");
  EXPECT_EQ((std::vector<std::string>{"d", "c b='2' \"uv\"[d]", "e",
                                      "r a='1' \"tw\"[c b='2' \"uv\"[d]][e]"}),
            g_ended);
  EXPECT_EQ("r a='1' \"tw\"[c b='2' \"uv\"[d]][e]", Shape(document));
}

TEST_F(XmlDocumentCallback, TheCallbackSeesTheParentsAsFarAsTheyAreRead) {
  static std::string s_parent;
  CXmlDocument document([](CXmlElement* element) {
    if (element->GetParentElm() != nullptr) s_parent = Shape(element->GetParentElm());
    return false;
  });
  document.LoadXml("<r a='1'>t&amp;<c/>later</r>");
  EXPECT_EQ("r a='1' \"t&\"[c]", s_parent);
}

bool PruneP(CXmlElement* element) { return element->GetLocalName() == "p"; }

TEST_F(XmlDocumentCallback, TheCallbackTakesElementsOutOfTheTree) {
  const struct {
    const char* text;
    const char* shape;
  } cases[] = {
      {"<r><p/></r>", "r"},
      {"<r><p/><a/></r>", "r[a]"},
      {"<r><a/><p/></r>", "r[a]"},
      {"<r><a/><p/><b/></r>", "r[a][b]"},
      {"<r><a/><p/><p/><b/><p/><c/></r>", "r[a][b][c]"},
      {"<r><p><a/></p><b/></r>", "r[b]"},
      {"<r><a><p/><b/></a><p/><c/></r>", "r[a[b]][c]"},
      {"<r>t<p>u</p>v</r>", "r \"tv\""},
      {"<r><p><p/><p/></p><a/></r>", "r[a]"},
      {"<p><a/></p>", "p[a]"},
  };
  for (const auto& c : cases) {
    CXmlDocument document(&PruneP);
    document.LoadXml(c.text);
    EXPECT_EQ(c.shape, Shape(document)) << c.text;
    EXPECT_EQ(qztest::AllElements(document.GetDocumentElement()).size(),
              static_cast<std::size_t>(qztest::LiveCounts()["CXmlElement"]))
        << c.text;
  }
}

TEST_F(XmlDocumentCallback, AnElementThatTheCallbackFilledCanBeTakenAway) {
  CXmlDocument document([](CXmlElement* element) {
    element->CreateNewChildElement()->SetElementName("new");
    return element->GetLocalName() == "p";
  });
  document.LoadXml("<r><a/><p/><b/></r>");
  EXPECT_EQ("r[a[new]][b[new]][new]", Shape(document));
}

std::size_t g_calls = 0;
std::int32_t g_most = 0;

TEST_F(XmlDocumentCallback, AMillionTakenSiblingsLeaveTheTreeFlat) {
  constexpr std::size_t kCount = 1000000;
  std::string text = "<r>";
  text.reserve(kCount * 12 + 16);
  for (std::size_t i = 0; i < kCount; ++i) text += "<c a='v'/>\n";
  text += "</r>";
  g_calls = 0;
  g_most = 0;
  CXmlDocument document([](CXmlElement*) {
    if (++g_calls % 50000 == 0) {
      const auto counts = qztest::LiveCounts();
      g_most = std::max(g_most, counts.at("CXmlElement") + counts.at("CXmlAttribute"));
    }
    return true;
  });
  document.LoadXml(text.c_str());
  EXPECT_EQ(kCount + 1, g_calls);
  EXPECT_EQ(3, g_most);  // the root, the child that ends, and its attribute
  EXPECT_EQ(nullptr, document.GetDocumentElement()->GetFirstElement());
  EXPECT_EQ(kCount, document.GetDocumentElement()->GetText().size());
}

}  // namespace
}  // namespace QzXmlLib16
