#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/xml/XmlDocument.h"
#include "tests/support/LiveCounts.h"
#include "tests/support/QzTest.h"
#include "tests/xml/TreeShape.h"

namespace QzXmlLib16 {
namespace {

using qztest::Shape;

class XmlDocument : public qztest::NothingLeftBehind {};

// --- Building

TEST_F(XmlDocument, IsEmptyWhenMadeAndBehindCleanup) {
  CSerializationContext context;
  CXmlDocument plain;
  CXmlDocument withContext(context);
  CXmlDocument withCallback([](CXmlElement*) { return false; });
  CXmlDocument withBoth([](CXmlElement*) { return false; }, context);
  for (CXmlDocument* document : {&plain, &withContext, &withCallback, &withBoth}) {
    EXPECT_EQ(nullptr, document->GetDocumentElement());
    document->LoadXml("<r xmlns:p='urn:p'><c/></r>");
    EXPECT_EQ("r[c]", Shape(*document));
    document->Cleanup();
    EXPECT_EQ(nullptr, document->GetDocumentElement());
    EXPECT_EQ("", document->LookupNamespaceFromAlias("p"));
    document->LoadXml("<s/>");
    document->Init();
    EXPECT_EQ(nullptr, document->GetDocumentElement());
  }
}

TEST_F(XmlDocument, IsBuiltFromTheRootOn) {
  CXmlDocument document;
  CXmlElement* root = document.AddDocElement("urn:r", "r");
  EXPECT_EQ(root, document.GetDocumentElement());
  EXPECT_EQ(nullptr, root->GetParentElm());
  EXPECT_EQ(&document, root->GetDocument());
  CXmlElement* a = document.AddChildElement("", "a");
  EXPECT_EQ(root, a->GetParentElm());
  CXmlDocument::AddElementAttribute(a, "x", "1", "urn:x");
  CXmlDocument::AppendTextExcludingCR(a, "text");
  document.AddChildElement("urn:b", "b");
  document.EndElement();
  document.EndElement();
  document.AddChildElement("", "c");
  document.EndElement();
  document.EndElement();
  EXPECT_EQ("{urn:r}r[a {urn:x}x='1' \"text\"[{urn:b}b]][c]", Shape(document));
}

TEST_F(XmlDocument, NullNamesAreEmpty) {
  CXmlDocument document;
  document.AddDocElement(nullptr, nullptr);
  const CXmlElement* child = document.AddChildElement(nullptr, nullptr);
  EXPECT_EQ("", child->GetLocalName());
  EXPECT_EQ("", child->GetNamespaceURI());
  EXPECT_EQ("[]", Shape(document));
}

TEST_F(XmlDocument, AChildNeedsAnOpenElement) {
  CXmlDocument document;
  EXPECT_QZ_THROW_FULL(CQzException, "The document has no open element.", "",
                       document.AddChildElement("", "a"));
  document.AddDocElement("", "r");
  document.EndElement();
  EXPECT_QZ_THROW(CQzException, "The document has no open element.",
                  document.AddChildElement("", "a"));
  EXPECT_EQ("r", Shape(document));
  document.LoadXml("<r/>");
  EXPECT_QZ_THROW(CQzException, "The document has no open element.",
                  document.AddChildElement("", "a"));
}

TEST_F(XmlDocument, AnEndWithoutAnOpenElementIsNothing) {
  CXmlDocument document([](CXmlElement*) -> bool {
    ADD_FAILURE();
    return false;
  });
  document.EndElement();
  EXPECT_EQ("(none)", Shape(document));
}

TEST_F(XmlDocument, AnOpenElementThatIsTakenAwayIsOpenNoLonger) {
  CXmlDocument document;
  CXmlElement* root = document.AddDocElement("", "r");
  document.AddChildElement("", "a");
  document.AddChildElement("", "b");
  document.AddChildElement("", "c");
  EXPECT_EQ("a[b[c]]", Shape(root->RemoveLastChildElement().get()));
  document.AddChildElement("", "d");
  EXPECT_EQ("r[d]", Shape(document));
  document.EndElement();
  document.EndElement();
  EXPECT_QZ_THROW(CQzException, "The document has no open element.",
                  document.AddChildElement("", "e"));
}

// Keeps what it has; a load may not mix two documents for that.
class CKeepingDocument : public CXmlDocument {
 public:
  void Cleanup() override { ++cleanups; }

  int cleanups = 0;
};

TEST_F(XmlDocument, EveryLoadBeginsWithTheCleanupOfTheDocumentsClass) {
  CKeepingDocument document;
  EXPECT_THROW(document.LoadXml("<r xmlns:p='urn:p'><a>"), CQzException);
  document.LoadXml("<s>t</s>");
  EXPECT_EQ("s \"t\"", Shape(document));
  EXPECT_EQ("", document.LookupNamespaceFromAlias("p"));
  EXPECT_THROW(document.LoadXml(""), CQzException);
  EXPECT_THROW(document.LoadXml(u""), CQzException);
  EXPECT_THROW(document.LoadXmlStream(nullptr, 0), CQzException);
  EXPECT_THROW(document.Load("/none/none"), CQzException);
  EXPECT_EQ(6, document.cleanups);
}

TEST_F(XmlDocument, ASecondRootTakesThePlaceOfTheFirst) {
  CXmlDocument document;
  document.AddDocElement("", "r");
  document.AddChildElement("", "a");
  document.AddDocElement("", "s");
  document.AddChildElement("", "b");
  EXPECT_EQ("s[b]", Shape(document));
  EXPECT_EQ(2, qztest::LiveCounts()["CXmlElement"]);
}

TEST_F(XmlDocument, ASecondRootMayHaveItsNameFromTheFirst) {
  CXmlDocument document;
  CXmlElement* root = document.AddDocElement("urn:r", "r");
  root->AppendText("a-text-of-some-length-that-becomes-a-name");
  root->AddAttribute("a", "urn:of-an-attribute-of-the-first-root", "");
  document.AddDocElement(root->GetAttribute("a", "").c_str(), root->GetText().c_str());
  EXPECT_EQ("{urn:of-an-attribute-of-the-first-root}a-text-of-some-length-that-becomes-a-name",
            Shape(document));
}

TEST_F(XmlDocument, TheSchemaTypeOfTheContextIsTakenByInit) {
  CSerializationContext context;
  CXmlDocument document(context);
  context.SetSchemaType(SchemaType_NoNamespaces);
  document.LoadXml("<p:r xmlns:p='urn:p'/>");
  EXPECT_EQ("{urn:p}r", Shape(document));
  document.Init();
  document.LoadXml("<p:r xmlns:p='urn:p'/>");
  EXPECT_EQ("p:r xmlns:p='urn:p'", Shape(document));
}

// --- Text without carriage returns

TEST_F(XmlDocument, CarriageReturnsNeverEnterTheText) {
  const struct {
    std::string text;
    std::string stored;
  } cases[] = {
      {"", ""},
      {"ab", "ab"},
      {"a\r\nb", "a\nb"},
      {"\r", ""},
      {"\r\r\r", ""},
      {"\ra", "a"},
      {"a\r", "a"},
      {"a\r\rb\r", "ab"},
      {"\r\n\r\n", "\n\n"},
      {"a\n\rb", "a\nb"},
      {std::string("a\r\0b", 4), "a"},
      {std::string("\0a", 2), ""},
  };
  for (const auto& c : cases) {
    CXmlDocument document;
    CXmlElement* byZero = document.AddDocElement("", "r");
    CXmlDocument::AppendTextExcludingCR(byZero, c.text.c_str());
    EXPECT_EQ(c.stored, byZero->GetText());
    CXmlElement* byLength = document.AddChildElement("", "c");
    CXmlDocument::AppendTextExcludingCR(byLength, c.text.data(),
                                        static_cast<std::uint32_t>(c.text.size()));
    EXPECT_EQ(c.stored, byLength->GetText());
  }
}

TEST_F(XmlDocument, TextEndsAtItsLengthOrAtAZeroByte) {
  CXmlDocument document;
  CXmlElement* root = document.AddDocElement("", "r");
  CXmlDocument::AppendTextExcludingCR(root, "a\rbc", 3);
  EXPECT_EQ("ab", root->GetText());
  CXmlDocument::AppendTextExcludingCR(root, "def", 0);
  EXPECT_EQ("ab", root->GetText());
  CXmlDocument::AppendTextExcludingCR(root, "d\0e", 3);
  EXPECT_EQ("abd", root->GetText());
  CXmlDocument::AppendTextExcludingCR(root, "fg", 0xFFFFFFFF);
  EXPECT_EQ("abdfg", root->GetText());
  CXmlDocument::AppendTextExcludingCR(root, nullptr);
  CXmlDocument::AppendTextExcludingCR(root, nullptr, 5);
  EXPECT_EQ("abdfg", root->GetText());
  const char exact[] = {'h', '\r', 'i'};  // nothing behind it may be looked at
  CXmlDocument::AppendTextExcludingCR(root, exact, 3);
  EXPECT_EQ("abdfghi", root->GetText());
}

TEST_F(XmlDocument, TextAroundChildrenJoins) {
  CXmlDocument document;
  document.LoadXml("<r>a<c/>b</r>");
  EXPECT_EQ("r \"ab\"[c]", Shape(document));
  document.LoadXml("<r>\n  <c/>\n  <d/>\n</r>");
  EXPECT_EQ("r \"\n  \n  \n\"[c][d]", Shape(document));
}

// --- Namespaces

TEST_F(XmlDocument, TheMapOfNamespacesIsFlatAndTheLaterDeclarationCounts) {
  CXmlDocument document;
  document.LoadXml(
      "<r xmlns='urn:d' xmlns:p='urn:1'><a xmlns:p='urn:2' xmlns:q='urn:q'/><b xmlns=''/></r>");
  EXPECT_EQ("{urn:d}r[{urn:d}a][b]", Shape(document));
  EXPECT_EQ("urn:2", document.LookupNamespaceFromAlias("p"));
  EXPECT_EQ("urn:q", document.LookupNamespaceFromAlias("q"));
  EXPECT_EQ("", document.LookupNamespaceFromAlias(""));
  EXPECT_EQ("", document.LookupNamespaceFromAlias("none"));
  EXPECT_EQ("", document.LookupNamespaceFromAlias(nullptr));
  EXPECT_EQ("p", document.LookupAliasFromNamespace("urn:2"));
  EXPECT_EQ("", document.LookupAliasFromNamespace("urn:1"));
  EXPECT_EQ("", document.LookupAliasFromNamespace("urn:d"));
}

TEST_F(XmlDocument, TheFirstAliasInTheirOrderAnswersForANamespace) {
  const struct {
    const char* declarations;
    const char* alias;  // of "u"
  } cases[] = {
      {"xmlns:p='u'", "p"},
      {"xmlns:q='u' xmlns:p='u'", "p"},
      {"xmlns:p='u' xmlns:q='u'", "p"},
      {"xmlns:p='u' xmlns='u'", ""},
      {"xmlns:b='u' xmlns:B='u'", "B"},
      {"xmlns:a='v' xmlns:b='u' xmlns:c='u'", "b"},
      {"xmlns:a10='u' xmlns:a9='u'", "a10"},
      {"xmlns:a='v'", ""},
      {"xmlns:a='1' xmlns:b='2' xmlns:c='3' xmlns:d='4' xmlns:e='5' xmlns:f='6' xmlns:g='7' "
       "xmlns:i='u' xmlns:h='u'",
       "h"},
      {"xmlns:a='1' xmlns:b='2' xmlns:c='3' xmlns:d='4' xmlns:e='5' xmlns:f='6' xmlns:g='7' "
       "xmlns:i='u' xmlns='u'",
       ""},
  };
  for (const auto& c : cases) {
    CXmlDocument document;
    document.LoadXml((std::string("<r ") + c.declarations + "/>").c_str());
    EXPECT_EQ(c.alias, document.LookupAliasFromNamespace("u")) << c.declarations;
  }
}

TEST_F(XmlDocument, ALookupTakesInWhatIsDeclaredBehindIt) {
  static CXmlDocument* s_document;
  static std::vector<std::string> s_aliases;
  s_aliases.clear();
  CXmlDocument document([](CXmlElement*) {
    s_aliases.push_back(s_document->LookupAliasFromNamespace("u"));
    return false;
  });
  s_document = &document;
  std::string text = "<r";
  for (int i = 0; i < 20; ++i) {
    const std::string n = std::to_string(i);
    text += " xmlns:n" + n + "='" + n + "'";
  }
  document.LoadXml((text + "><a/><b xmlns:p='u'/><c xmlns:k='u'/><d xmlns:k='v'/></r>").c_str());
  EXPECT_EQ((std::vector<std::string>{"", "p", "k", "p", "p"}), s_aliases);
}

}  // namespace
}  // namespace QzXmlLib16
