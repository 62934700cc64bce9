#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/xml/XmlAttribute.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"
#include "tests/support/LiveCounts.h"
#include "tests/xml/TreeShape.h"

namespace QzXmlLib16 {
namespace {

using qztest::Shape;

class XmlElement : public qztest::NothingLeftBehind {
 protected:
  XmlElement() : root(document.AddDocElement("", "r")) {}

  // A last child of the root.
  CXmlElement* Add(const char* name) {
    CXmlElement* child = root->CreateNewChildElement();
    child->SetElementName(name);
    return child;
  }

  CXmlDocument document;
  CXmlElement* root;
};

TEST_F(XmlElement, KnowsItsPlace) {
  CXmlElement* a = Add("a");
  CXmlElement* b = Add("b");
  EXPECT_EQ(&document, root->GetDocument());
  EXPECT_EQ(nullptr, root->GetParentElm());
  EXPECT_EQ(nullptr, root->GetNextSiblingElement());
  EXPECT_EQ(a, root->GetFirstElement());
  EXPECT_EQ(&document, a->GetDocument());
  EXPECT_EQ(root, a->GetParentElm());
  EXPECT_EQ(b, a->GetNextSiblingElement());
  EXPECT_EQ(nullptr, b->GetNextSiblingElement());
  EXPECT_EQ(root, b->GetParentElm());
  EXPECT_EQ(nullptr, b->GetFirstElement());
}

TEST_F(XmlElement, ANewChildIsTheLastAndHasNothing) {
  Add("a");
  const CXmlElement* child = root->CreateNewChildElement();
  EXPECT_EQ(child, root->GetFirstElement()->GetNextSiblingElement());
  EXPECT_EQ("", child->GetLocalName());
  EXPECT_EQ("", child->GetNamespaceURI());
  EXPECT_EQ("", child->GetText());
  EXPECT_TRUE(child->GetAttributes().empty());
  EXPECT_EQ(nullptr, child->GetFirstElement());
  EXPECT_EQ(nullptr, child->GetNextSiblingElement());
}

TEST_F(XmlElement, NameAndNamespaceAreSetOneByOne) {
  CXmlElement* a = Add("a");
  const CXmlElement* other = Add("a");
  a->SetNamespace("urn:a");
  EXPECT_EQ("{urn:a}a", Shape(a));
  a->SetElementName("b");
  EXPECT_EQ("{urn:a}b", Shape(a));
  a->SetNamespace("");
  EXPECT_EQ("b", Shape(a));
  a->SetNamespace(nullptr);
  a->SetElementName(nullptr);
  EXPECT_EQ("", Shape(a));
  EXPECT_EQ("a", Shape(other));
}

// --- Text

TEST_F(XmlElement, TextIsAppendedAsItIs) {
  EXPECT_EQ("", root->GetText());
  root->AppendText("a\r\n");
  root->AppendText("");
  root->AppendText(nullptr);
  root->AppendText("b\0c", 3);
  root->AppendText("never", 0);
  root->AppendText(nullptr, 5);
  EXPECT_EQ(std::string("a\r\nb\0c", 6), root->GetText());
  EXPECT_EQ(root->GetText(), root->GetTextView());
}

TEST_F(XmlElement, TextOfAnyLengthIsKept) {
  for (const int size :
       {1, 15, 16, 4094, 4095, 4096, 4097, 32767, 32768, 32769, 65535, 65536, 65537, 1000000}) {
    CXmlElement* a = Add("a");
    const std::string text(static_cast<std::size_t>(size), 'x');
    a->AppendText(text.c_str());
    EXPECT_TRUE(text == a->GetText()) << size;
    a->AppendText("end", 3);
    EXPECT_TRUE(text + "end" == a->GetText()) << size;
  }
}

TEST_F(XmlElement, ATextCanBeAppendedToItself) {
  root->AppendText("0123456789abcdefghij");
  std::string expected = "0123456789abcdefghij";
  for (int i = 0; i < 10; ++i) {
    root->AppendText(root->GetText().c_str());
    expected += expected;
    EXPECT_EQ(expected, root->GetText());
    const std::string part = expected.substr(3, 7);
    root->AppendText(root->GetText().c_str() + 3, 7);
    expected += part;
    EXPECT_EQ(expected, root->GetText());
  }
}

TEST_F(XmlElement, ATextThatDoesNotFitDoublesItsCapacity) {
  root->AppendText(std::string(100, 'x').c_str());
  for (int i = 0; i < 10; ++i) {
    const std::size_t capacity = root->GetText().capacity();
    root->AppendText(std::string(capacity - root->GetText().size(), 'y').c_str());
    EXPECT_EQ(capacity, root->GetText().capacity());
    root->AppendText("z");
    EXPECT_LE(2 * capacity, root->GetText().capacity());
  }
  const std::size_t needed = root->GetText().capacity() * 3;
  root->AppendText(std::string(needed, 'w').c_str());
  EXPECT_LE(needed, root->GetText().size());
}

// --- Attributes

TEST_F(XmlElement, AttributesStandInTheOrderOfTheirArrival) {
  root->AddAttribute("z", "1", "");
  EXPECT_EQ("r z='1'", Shape(root));
  root->AddAttribute("a", "2", "urn:a");
  root->AddAttribute("m", "3", "");
  EXPECT_EQ("r z='1' {urn:a}a='2' m='3'", Shape(root));
  std::string ranged;
  for (const CXmlAttribute* attribute : root->GetAttributeRange()) {
    ranged += attribute->GetLocalName() + attribute->GetValue();
  }
  EXPECT_EQ("z1a2m3", ranged);
}

TEST_F(XmlElement, AnAttributeIsFoundByBothItsNames) {
  root->AddAttribute("a", "plain", "");
  root->AddAttribute("a", "in a namespace", "urn:a");
  root->AddAttribute("a", "the second of its name", "urn:a");
  root->AddAttribute("empty", "", "");
  EXPECT_EQ("plain", root->GetAttribute("a", ""));
  EXPECT_EQ("in a namespace", root->GetAttribute("a", "urn:a"));
  EXPECT_EQ(&root->GetAttributes()[1]->GetValue(), &root->GetAttribute("a", "urn:a"));
  EXPECT_EQ("", root->GetAttribute("empty", ""));
}

TEST_F(XmlElement, AMissingAttributeIsAnEmptyText) {
  EXPECT_EQ("", root->GetAttribute("a", ""));
  root->AddAttribute("a", "v", "urn:a");
  for (const char* name : {"", "A", "b", "aa"}) EXPECT_EQ("", root->GetAttribute(name, "urn:a"));
  for (const char* uri : {"", "urn:A", "urn:b", "urn"}) EXPECT_EQ("", root->GetAttribute("a", uri));
  const std::string* missing = &root->GetAttribute("b", "");
  document.Cleanup();
  EXPECT_EQ("", *missing);
}

// --- Taking children away

TEST_F(XmlElement, TheLastChildIsTakenAndTheListEndsBeforeIt) {
  EXPECT_EQ(nullptr, root->RemoveLastChildElement());
  CXmlElement* a = Add("a");
  CXmlElement* b = Add("b");
  CXmlElement* c = Add("c");
  {
    const CXmlElement::Owner taken = root->RemoveLastChildElement();
    EXPECT_EQ(c, taken.get());
    EXPECT_EQ("c", Shape(taken.get()));
    EXPECT_EQ(nullptr, taken->GetNextSiblingElement());
  }
  EXPECT_EQ("r[a][b]", Shape(root));
  EXPECT_EQ(nullptr, b->GetNextSiblingElement());
  Add("d");
  EXPECT_EQ("r[a][b][d]", Shape(root));
  root->RemoveLastChildElement();
  root->RemoveLastChildElement();
  EXPECT_EQ("r[a]", Shape(root));
  EXPECT_EQ(nullptr, a->GetNextSiblingElement());
  root->RemoveLastChildElement();
  EXPECT_EQ(nullptr, root->GetFirstElement());
  EXPECT_EQ(nullptr, root->RemoveLastChildElement());
  Add("e");
  EXPECT_EQ("r[e]", Shape(root));
}

TEST_F(XmlElement, AChildIsTakenWithAllThatIsBelowIt) {
  CXmlElement* a = Add("a");
  a->AddAttribute("x", "1", "");
  a->AppendText("t");
  a->CreateNewChildElement()->SetElementName("b");
  const std::int32_t elements = qztest::LiveCounts()["CXmlElement"];
  CXmlElement::Owner taken = root->RemoveLastChildElement();
  EXPECT_EQ("a x='1' \"t\"[b]", Shape(taken.get()));
  EXPECT_EQ(elements, qztest::LiveCounts()["CXmlElement"]);
  taken.reset();
  EXPECT_EQ(elements - 2, qztest::LiveCounts()["CXmlElement"]);
  EXPECT_EQ(0, qztest::LiveCounts()["CXmlAttribute"]);
}

TEST_F(XmlElement, WhatWasTakenCanBeLetGoAndHeldAgain) {
  Add("a");
  Add("b");
  CXmlElement* a = root->GetFirstElement();
  EXPECT_EQ("b", Shape(root->RemoveLastChildElement().release()));  // goes with the document
  const CXmlElement::Owner held(root->RemoveLastChildElement().release());
  EXPECT_EQ(a, held.get());
  EXPECT_EQ(3, qztest::LiveCounts()["CXmlElement"]);
  { const CXmlElement::Owner neverTaken(root); }
  EXPECT_EQ("r", Shape(document));
}

TEST_F(XmlElement, WhatWasTakenGoesWithItsDocumentWhoeverHoldsIt) {
  CXmlElement::Owner first;
  CXmlElement::Owner second;
  CXmlElement::Owner third;
  {
    CXmlDocument other;
    CXmlElement* otherRoot = other.AddDocElement("", "r");
    otherRoot->CreateNewChildElement()->AppendText("a text that is longer than a small one");
    otherRoot->CreateNewChildElement()->AddAttribute("a", "", "");
    first = otherRoot->RemoveLastChildElement();
    second = otherRoot->RemoveLastChildElement();
    EXPECT_EQ(" a=''", Shape(first.get()));
    other.Cleanup();
    EXPECT_EQ(1, qztest::LiveCounts()["CXmlElement"]);  // the root of the fixture
    first.reset();
    // The next content may stand in the same memory.
    other.LoadXml("<r><a/><b/></r>");
    third = other.GetDocumentElement()->RemoveLastChildElement();
    second.reset();
    EXPECT_EQ("b", Shape(third.get()));
  }
  EXPECT_EQ(1, qztest::LiveCounts()["CXmlElement"]);
}

// --- Paths

struct PathCase {
  const char* text;
  const char* paths;  // of all elements in document order, a blank between two
};

std::string Paths(const CXmlDocument& document) {
  std::string paths;
  for (const CXmlElement* element : qztest::AllElements(document.GetDocumentElement())) {
    if (!paths.empty()) paths += ' ';
    paths += element->GetXPath();
  }
  return paths;
}

void ExpectPaths(std::initializer_list<PathCase> cases, const CSerializationContext& context = {}) {
  for (const PathCase& c : cases) {
    CXmlDocument document(context);
    document.LoadXml(c.text);
    EXPECT_EQ(c.paths, Paths(document)) << c.text;
  }
}

TEST_F(XmlElement, ANameHasANumberExactlyWhereASiblingHasItToo) {
  ExpectPaths({
      {"<r/>", "/r"},
      {"<r><a/></r>", "/r /r/a"},
      {"<r><a/><b/></r>", "/r /r/a /r/b"},
      {"<r><a/><a/></r>", "/r /r/a[1] /r/a[2]"},
      {"<r><a/><b/><a/></r>", "/r /r/a[1] /r/b /r/a[2]"},
      {"<r><b/><a/><b/><a/><c/><a/></r>", "/r /r/b[1] /r/a[1] /r/b[2] /r/a[2] /r/c /r/a[3]"},
      {"<r><a><b/></a><a><b/><b/></a></r>",
       "/r /r/a[1] /r/a[1]/b /r/a[2] /r/a[2]/b[1] /r/a[2]/b[2]"},
      {"<r><r><r/></r></r>", "/r /r/r /r/r/r"},
      {"<r><aa/><a/><ba/></r>", "/r /r/aa /r/a /r/ba"},
  });
}

TEST_F(XmlElement, NumbersGrowBeyondOneDigit) {
  std::string text = "<r>";
  for (int i = 0; i < 120; ++i) text += "<a/>";
  CXmlDocument many;
  many.LoadXml((text + "</r>").c_str());
  const std::vector<const CXmlElement*> all = qztest::AllElements(many.GetDocumentElement());
  for (const std::size_t i : {1U, 9U, 10U, 99U, 100U, 120U}) {
    EXPECT_EQ("/r/a[" + std::to_string(i) + "]", all[i]->GetXPath());
  }
}

TEST_F(XmlElement, APathShowsTheAliasOfANamespace) {
  ExpectPaths({
      {"<p:r xmlns:p='urn:p'/>", "/p:r"},
      {"<p:r xmlns:p='urn:p'><p:a/><a/></p:r>", "/p:r /p:r/p:a /p:r/a"},
      {"<r xmlns:p='urn:p' xmlns:q='urn:q'><p:a/><q:a/><a/></r>", "/r /r/p:a /r/q:a /r/a"},
      {"<r xmlns:p='urn:p'><p:a/><a/><p:a/></r>", "/r /r/p:a[1] /r/a /r/p:a[2]"},
      {"<r xmlns='urn:d'><a/></r>", "/r /r/a"},
  });
}

TEST_F(XmlElement, OneNamespaceWithTwoAliasesShowsTheFirstInTheirOrder) {
  ExpectPaths({
      {"<r xmlns:q='u' xmlns:p='u'><q:a/><p:a/></r>", "/r /r/p:a[1] /r/p:a[2]"},
      {"<p:r xmlns:p='u' xmlns='u'><p:a/><a/></p:r>", "/r /r/a[1] /r/a[2]"},
  });
}

TEST_F(XmlElement, NamespacesWithoutADifferenceInTheirAliasesShareTheirNumbers) {
  ExpectPaths({
      {"<r><a xmlns='urn:d'/><a/></r>", "/r /r/a[1] /r/a[2]"},
      {"<r><a xmlns='urn:d'/><a xmlns='urn:e'/></r>", "/r /r/a[1] /r/a[2]"},
  });
}

TEST_F(XmlElement, ANamespaceWhoseAliasWasDeclaredAnewShowsNone) {
  ExpectPaths({
      {"<r><p:a xmlns:p='u'/><p:a xmlns:p='v'/></r>", "/r /r/a /r/p:a"},
      {"<p:r xmlns:p='u'><p:a xmlns:p='v'/></p:r>", "/r /r/p:a"},
  });
}

TEST_F(XmlElement, WithoutNamespaceProcessingAPathShowsThePrefixesOfTheDocument) {
  CSerializationContext context;
  context.SetSchemaType(SchemaType_NoNamespaces);
  ExpectPaths(
      {{"<p:r xmlns:p='u'><p:a/><q:a/><p:a/></p:r>", "/p:r /p:r/p:a[1] /p:r/q:a /p:r/p:a[2]"}},
      context);
}

TEST_F(XmlElement, APathOfManyLevelsNeedsNoStack) {
  CXmlElement* element = root;
  std::string path = "/r";
  for (int i = 0; i < 100000; ++i) {
    element = element->CreateNewChildElement();
    element->SetElementName("a");
    path += "/a";
  }
  EXPECT_TRUE(path == element->GetXPath());
}

}  // namespace
}  // namespace QzXmlLib16
