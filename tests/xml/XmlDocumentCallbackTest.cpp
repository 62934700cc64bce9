#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "qzxml/runtime/QzException.h"
#include "qzxml/xml/XmlDocument.h"
#include "tests/support/LiveCounts.h"
#include "tests/support/QzTest.h"
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

// --- Callbacks that change the tree themselves

CXmlDocument* g_document = nullptr;

// Loads a text, and what a tree holds at its end is all there is.
std::string LoadedWith(CXmlDocument::ElementCallback callback, const char* text) {
  CXmlDocument document(callback);
  g_document = &document;
  document.LoadXml(text);
  EXPECT_EQ(qztest::AllElements(document.GetDocumentElement()).size(),
            static_cast<std::size_t>(qztest::LiveCounts()["CXmlElement"]))
      << text;
  document.EndElement();  // nothing is open behind a load
  EXPECT_QZ_THROW(CQzException, "The document has no open element.",
                  document.AddChildElement("", "late"));
  return Shape(document);
}

TEST_F(XmlDocumentCallback, AnEndFromTheCallbackLeavesOpenWhatTheDocumentHasOpen) {
  const auto end = [](CXmlElement*) {
    for (int i = 0; i < 5; ++i) g_document->EndElement();
    return false;
  };
  EXPECT_EQ("r \"adg\"[a \"bf\"[b \"ce\"[c]]][d]",
            LoadedWith(end, "<r>a<a>b<b>c<c/>e</b>f</a>d<d/>g</r>"));
}

TEST_F(XmlDocumentCallback, TheCallbackMayBuildOnInTheTree) {
  const auto build = [](CXmlElement* element) {
    if (element->GetLocalName() != "a") return false;
    CXmlElement* added = g_document->AddChildElement("", "new");
    CXmlDocument::AppendTextExcludingCR(added, "n");
    g_document->AddChildElement("", "inner");
    g_document->EndElement();
    g_document->EndElement();
    g_document->EndElement();  // one too many
    return false;
  };
  EXPECT_EQ("r \"xyz\"[a][new \"n\"[inner]][b \"t\"]", LoadedWith(build, "<r>x<a/>y<b>t</b>z</r>"));
}

TEST_F(XmlDocumentCallback, WhatTheCallbackLeavesOpenEndsWithIt) {
  const auto leaveOpen = [](CXmlElement* element) {
    if (element->GetLocalName() == "a") {
      g_document->AddChildElement("", "new");
      g_document->AddChildElement("", "inner");
    }
    return false;
  };
  EXPECT_EQ("r \"xy\"[a][new[inner]][b]", LoadedWith(leaveOpen, "<r>x<a/>y<b/></r>"));
}

TEST_F(XmlDocumentCallback, WhatTheCallbackAddsBehindAnElementIsTakenForIt) {
  const auto add = [](CXmlElement* element) {
    if (element->GetLocalName() != "a") return false;
    g_document->AddChildElement("", "new");
    g_document->EndElement();
    return true;
  };
  EXPECT_EQ("r[a][a][b]", LoadedWith(add, "<r><a/><a/><b/></r>"));
}

TEST_F(XmlDocumentCallback, WhatTheCallbackAddsMayBeTakenByTheCallback) {
  const auto add = [](CXmlElement* element) {
    if (element->GetLocalName() == "new") return true;
    g_document->AddChildElement("", "new");
    g_document->EndElement();
    return element->GetLocalName() == "p";
  };
  // The root has no parent to add to.
  const auto below = [](CXmlElement* element) {
    if (element->GetLocalName() == "new") return true;
    if (element->GetParentElm() == nullptr) return false;
    g_document->AddChildElement("", "new");
    g_document->EndElement();
    return element->GetLocalName() == "p";
  };
  EXPECT_EQ("r[a][b]", LoadedWith(below, "<r><p/><a/><p/><p/><b/><p/></r>"));
  EXPECT_QZ_THROW(CQzException, "The document has no open element.", LoadedWith(add, "<r/>"));
}

TEST_F(XmlDocumentCallback, TheCallbackCanNotTakeAwayWhatIsOpen) {
  const auto take = [](CXmlElement* element) {
    if (element->GetLocalName() != "c") return false;
    EXPECT_EQ(nullptr, g_document->GetDocumentElement()->RemoveLastChildElement());
    EXPECT_EQ("r \"x\"[a \"y\"[b \"z\"[c]]]", Shape(*g_document));
    return false;
  };
  EXPECT_EQ("r \"xv\"[a \"yw\"[b \"zu\"[c]]]", LoadedWith(take, "<r>x<a>y<b>z<c/>u</b>w</a>v</r>"));
}

TEST_F(XmlDocumentCallback, TheCallbackMayTakeAwayWhatHasEnded) {
  const auto takeTwo = [](CXmlElement* element) {
    if (element->GetLocalName() != "p") return false;
    CXmlElement* root = g_document->GetDocumentElement();
    root->RemoveLastChildElement();
    root->RemoveLastChildElement();
    return true;  // and what is the last one now
  };
  const struct {
    const char* text;
    const char* shape;
  } cases[] = {
      {"<r><p/></r>", "r"},
      {"<r><a/><p/></r>", "r"},
      {"<r><a/><b/><p/><c/></r>", "r[c]"},
      {"<r><a/><b/><c/><p/><d/></r>", "r[a][d]"},
      {"<r><a/><b/><c/><d/><p/><p/><e/></r>", "r[e]"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.shape, LoadedWith(takeTwo, c.text)) << c.text;
}

TEST_F(XmlDocumentCallback, ADocumentIsNotBegunAnewFromItsCallback) {
  const auto begin = [](CXmlElement*) {
    EXPECT_QZ_THROW(CQzInvalidStateException,
                    "A document can not be loaded from its element callback.",
                    g_document->AddDocElement("", "s"));
    return false;
  };
  EXPECT_EQ("r \"x\"[a]", LoadedWith(begin, "<r>x<a/></r>"));
}

TEST_F(XmlDocumentCallback, AnExceptionOutOfAnElementThatTheCallbackBuildsLeavesAWholeTree) {
  struct Stop {};
  CXmlDocument document([](CXmlElement* element) -> bool {
    if (element->GetLocalName() == "new") throw Stop();
    g_document->AddChildElement("", "new");
    g_document->EndElement();
    return false;
  });
  g_document = &document;
  EXPECT_THROW(document.LoadXml("<r>x<a>y<b/></a></r>"), Stop);
  EXPECT_EQ("r \"x\"[a \"y\"[b][new]]", Shape(document));
  EXPECT_EQ("/r/a/b",
            document.GetDocumentElement()->GetFirstElement()->GetFirstElement()->GetXPath());
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
