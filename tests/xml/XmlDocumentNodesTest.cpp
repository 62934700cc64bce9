// What the memory and the names of a document must not show: that texts wait until somebody asks
// for them, that names and white space are shared, and that pruned elements leave their place to
// others.
#include <algorithm>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "qzxml/runtime/Encoder.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/SerializationContext.h"
#include "tests/support/LiveCounts.h"
#include "tests/support/QzTest.h"
#include "tests/xml/TreeShape.h"

namespace QzXmlLib16 {
namespace {

using qztest::Shape;
using XmlDocumentNodes = qztest::NothingLeftBehind;

std::string Repeat(const std::string& text, std::size_t times) {
  std::string all;
  all.reserve(text.size() * times);
  for (std::size_t i = 0; i < times; ++i) all += text;
  return all;
}

CXmlElement* Child(const CXmlElement* parent, int index) {
  CXmlElement* child = parent->GetFirstElement();
  while (index-- > 0) child = child->GetNextSiblingElement();
  return child;
}

// --- Texts

TEST_F(XmlDocumentNodes, ATextIsTheSameAsStringAndAsView) {
  for (const std::size_t length :
       {0U, 1U, 15U, 16U, 8191U, 8192U, 8193U, 65535U, 65536U, 300000U}) {
    std::string text;
    while (text.size() < length) text += static_cast<char>('a' + text.size() % 26);
    CXmlDocument document;
    document.LoadXml(("<r a='" + text + "'>" + text + "</r>").c_str());
    const CXmlElement* root = document.GetDocumentElement();
    const CXmlAttribute* attribute = *root->GetAttributeRange().begin();
    EXPECT_EQ(text, root->GetTextView());
    EXPECT_EQ(text, root->GetText());
    EXPECT_EQ(text, root->GetTextView());
    EXPECT_EQ(text.size(), std::strlen(root->GetText().c_str()));
    EXPECT_EQ(text, attribute->GetValueView());
    EXPECT_EQ(text, attribute->GetValue());
    EXPECT_EQ(text, attribute->GetValueView());
  }
}

TEST_F(XmlDocumentNodes, AStringStaysWhereItIsOnceItWasAskedFor) {
  CXmlDocument document;
  document.LoadXml("<r a='value'><c>one</c><c>two</c></r>");
  const CXmlElement* root = document.GetDocumentElement();
  const std::string& text = Child(root, 0)->GetText();
  const std::string& value = root->GetAttributes()[0]->GetValue();
  EXPECT_EQ("two", Child(root, 1)->GetText());
  EXPECT_EQ(&text, &Child(root, 0)->GetText());
  EXPECT_EQ(&value, &root->GetAttributes()[0]->GetValue());
  EXPECT_EQ(&value, &root->GetAttribute("a", ""));
  EXPECT_EQ("one", text);
  EXPECT_EQ("value", value);
}

TEST_F(XmlDocumentNodes, WhatIsAppendedToAReadTextJoinsIt) {
  CXmlDocument document;
  document.LoadXml("<r>\n  <a/>\n  <a/>\n</r>");
  CXmlElement* root = document.GetDocumentElement();
  root->AppendText("one");
  root->AppendText("two and more", 3);
  EXPECT_EQ("\n  \n  \nonetwo", root->GetText());
  EXPECT_EQ("\n  \n  \nonetwo", root->GetTextView());
}

TEST_F(XmlDocumentNodes, EqualWhiteSpaceOfManyParentsIsEachOnesOwn) {
  const std::string space = "\n                  ";
  CXmlDocument document;
  document.LoadXml(("<r>" + Repeat("<p>" + space + "<c/>" + space + "</p>", 10) + "</r>").c_str());
  CXmlElement* first = document.GetDocumentElement()->GetFirstElement();
  first->AppendText("changed");
  EXPECT_EQ(space + space + "changed", first->GetText());
  for (const CXmlElement* e = first->GetNextSiblingElement(); e != nullptr;
       e = e->GetNextSiblingElement()) {
    EXPECT_EQ(space + space, e->GetText());
  }
}

TEST_F(XmlDocumentNodes, AMillionSmallPiecesAreLinear) {
  CXmlDocument document;
  CXmlElement* root = document.AddDocElement("", "r");
  for (int i = 0; i < 1000000; ++i) root->AppendText("x", 1);
  EXPECT_EQ(std::string(1000000, 'x'), root->GetText());
}

TEST_F(XmlDocumentNodes, WhatIsPromisedToBeAsciiIsNotLookedAt) {
  SetLocalCharEncoding(1252);
  ASCIIOnly(true);
  CXmlDocument document;
  document.LoadXml("<a x='\xC3\xA9'>\xE2\x82\xAC&#13;</a>");
  ASCIIOnly(false);
  SetLocalCharEncoding(3);
  EXPECT_EQ("a x='\xC3\xA9' \"\xE2\x82\xAC\"", Shape(document));
}

// --- Attributes

TEST_F(XmlDocumentNodes, AttributesAreTheSameAsVectorAndAsRange) {
  CXmlDocument document;
  document.LoadXml("<r c='1' a='2' b='3'><n/></r>");
  CXmlElement* root = document.GetDocumentElement();
  std::vector<CXmlAttribute*> ranged;
  for (CXmlAttribute* attribute : root->GetAttributeRange()) ranged.push_back(attribute);
  EXPECT_EQ(3U, ranged.size());
  EXPECT_EQ(ranged, root->GetAttributes());
  root->AddAttribute("d", "4", "u");
  ranged.clear();
  for (CXmlAttribute* attribute : root->GetAttributeRange()) ranged.push_back(attribute);
  EXPECT_EQ(4U, ranged.size());
  EXPECT_EQ(ranged, root->GetAttributes());
  EXPECT_EQ("4", root->GetAttribute("d", "u"));
  for (const CXmlAttribute* none : Child(root, 0)->GetAttributeRange()) FAIL() << none;
  EXPECT_TRUE(Child(root, 0)->GetAttributes().empty());
}

// --- Names

TEST_F(XmlDocumentNodes, ThereAreAsManyNamesAsTheDocumentHas) {
  std::string text = "<r xmlns:p='urn:p' xmlns:q='urn:q'>";
  for (int i = 0; i < 3000; ++i) {
    const std::string n = std::to_string(i);
    text += "<n" + n + " a" + n + "='1'/><p:n" + n + "/><q:n" + n + " p:n" + n + "='2'/>";
  }
  CXmlDocument document;
  for (int round = 0; round < 2; ++round) {
    document.LoadXml((text + "</r>").c_str());
    const CXmlElement* e = document.GetDocumentElement()->GetFirstElement();
    for (int i = 0; i < 3000; ++i) {
      const std::string n = std::to_string(i);
      ASSERT_EQ("n" + n + " a" + n + "='1'", Shape(e));
      e = e->GetNextSiblingElement();
      ASSERT_EQ("{urn:p}n" + n, Shape(e));
      e = e->GetNextSiblingElement();
      ASSERT_EQ("{urn:q}n" + n + " {urn:p}n" + n + "='2'", Shape(e));
      e = e->GetNextSiblingElement();
    }
    EXPECT_EQ(nullptr, e);
  }
}

TEST_F(XmlDocumentNodes, NamesThatWereReadAndNamesMadeByHandAreTheSame) {
  CXmlDocument document;
  document.LoadXml("<p:a xmlns:p='u'><p:b/></p:a>");
  CXmlElement* root = document.GetDocumentElement();
  CXmlElement* child = root->CreateNewChildElement();
  child->SetNamespace("u");
  child->SetElementName("b");
  EXPECT_EQ("/p:a/p:b[2]", child->GetXPath());
  EXPECT_EQ("/p:a/p:b[1]", Child(root, 0)->GetXPath());
  // A path compares what it shows.
  CXmlElement* prefixed = root->CreateNewChildElement();
  prefixed->SetElementName("p:b");
  EXPECT_EQ("/p:a/p:b[3]", prefixed->GetXPath());
}

TEST_F(XmlDocumentNodes, NamesThatEndAlikeAreOthersInAPath) {
  CXmlDocument document;
  document.LoadXml("<a><xb/><b/><bx/><b/></a>");
  EXPECT_EQ("/a/b[1]", Child(document.GetDocumentElement(), 1)->GetXPath());
  EXPECT_EQ("/a/xb", Child(document.GetDocumentElement(), 0)->GetXPath());
}

TEST_F(XmlDocumentNodes, ManyAliasesAreLookedUpAsFewAre) {
  std::string text = "<r";
  for (int i = 0; i < 500; ++i) {
    text += " xmlns:a" + std::to_string(i) + "='u" + std::to_string(i / 2) + "'";
  }
  CXmlDocument document;
  document.LoadXml((text + "/>").c_str());
  for (int i = 0; i < 500; i += 2) {
    const std::string even = "a" + std::to_string(i);
    const std::string odd = "a" + std::to_string(i + 1);
    const std::string uri = "u" + std::to_string(i / 2);
    EXPECT_EQ(std::min(even, odd), document.LookupAliasFromNamespace(uri.c_str()));
    EXPECT_EQ(uri, document.LookupNamespaceFromAlias(odd.c_str()));
  }
  EXPECT_EQ("", document.LookupAliasFromNamespace("u250"));
  document.LoadXml("<r xmlns:b='u0'/>");
  EXPECT_EQ("b", document.LookupAliasFromNamespace("u0"));
  EXPECT_EQ("", document.LookupAliasFromNamespace("u1"));
}

TEST_F(XmlDocumentNodes, APathAmongManySiblingsIsLinear) {
  // Each of a namespace and an alias of its own, so that nothing can be shared.
  std::string text = "<r>";
  for (int i = 0; i < 100000; ++i) {
    const std::string n = std::to_string(i);
    text += "<a" + n + ":x xmlns:a" + n + "='" + n + "'/>";
  }
  CXmlDocument document;
  document.LoadXml((text + "</r>").c_str());
  EXPECT_EQ("/r/a70000:x", Child(document.GetDocumentElement(), 70000)->GetXPath());
}

// --- Pruning

TEST_F(XmlDocumentNodes, PrunedElementsUseTheSameMemoryAgain) {
  static std::set<const void*> places;
  places.clear();
  CXmlDocument document([](CXmlElement* element) {
    places.insert(element);
    for (const CXmlAttribute* attribute : element->GetAttributes()) {
      places.insert(attribute);
      places.insert(&attribute->GetValue());
    }
    places.insert(&element->GetAttributes());
    places.insert(&element->GetText());
    return true;
  });
  std::string text = "<r>";
  for (int i = 0; i < 20000; ++i) {
    const std::string n = std::to_string(i);
    text += "<e a='" + n + "'>a text of more than a few letters<f/>" + n + "</e>";
  }
  document.LoadXml((text + "</r>").c_str());
  EXPECT_GT(20U, places.size());
}

TEST_F(XmlDocumentNodes, PruningEverySecondOfManySiblingsIsLinear) {
  static bool prune;
  prune = false;
  CXmlDocument document([](CXmlElement*) { return prune = !prune; });
  document.LoadXml(("<r>" + Repeat("<e/>", 300000) + "</r>").c_str());
  EXPECT_EQ(150001U, qztest::AllElements(document.GetDocumentElement()).size());
}

TEST_F(XmlDocumentNodes, ACallbackThatEmptiesTheDocumentIsNotHeard) {
  static CXmlDocument* current = nullptr;
  CXmlDocument document([](CXmlElement*) {
    EXPECT_QZ_ASSERT("!m_bLoading", current->Cleanup());
    return false;
  });
  current = &document;
  document.LoadXml("<r>good<a/></r>");
  EXPECT_EQ("r \"good\"[a]", Shape(document));
}

// --- Nodes that a document type makes

constexpr char kGrows[] = "The document grows past 100 times its size";

TEST_F(XmlDocumentNodes, DefaultAttributesCountAsNodesHoweverShortTheyAre) {
  std::string text = "<!DOCTYPE r [<!ATTLIST a";
  for (char c = 'a'; c <= 'z'; ++c) text += std::string(" ") + c + " CDATA ''";
  text += ">]><r>" + Repeat("<a/>", 100000) + "</r>";
  CXmlDocument document;
  EXPECT_QZ_THROW(CQzException, kGrows, document.LoadXml(text.c_str()));
}

TEST_F(XmlDocumentNodes, ElementsOfAnEntityCountAsNodesHoweverShortTheyAre) {
  const std::string text =
      "<!DOCTYPE r [<!ENTITY e '" + Repeat("<a/>", 1000) + "'>]><r>" + Repeat("&e;", 1000) + "</r>";
  CXmlDocument document;
  EXPECT_QZ_THROW(CQzException, kGrows, document.LoadXml(text.c_str()));
}

TEST_F(XmlDocumentNodes, ElementsOfAnEntityCountAsDeepAsTheyStand) {
  CSerializationContext context;
  context.SetMaxDepth(3);
  CXmlDocument document(context);
  EXPECT_QZ_THROW(CQzException, "The document exceeds the depth limit of 3 elements",
                  document.LoadXml("<!DOCTYPE r [<!ENTITY e '<a><b><c/></b></a>'>]><r>&e;</r>"));
}

TEST_F(XmlDocumentNodes, WhatADocumentWritesItselfNeverGrowsPastIt) {
  CSerializationContext context;
  context.SetMaxAmplification(1);
  CXmlDocument document(context);
  const std::string text = "<!DOCTYPE r><r xmlns='urn:a-namespace-that-every-element-has'>" +
                           Repeat("<a-name-of-some-length at='v'/><b>t</b>\n", 300000) + "</r>";
  document.LoadXml(text.c_str());
  EXPECT_EQ(600001U, qztest::AllElements(document.GetDocumentElement()).size());
}

}  // namespace
}  // namespace QzXmlLib16
