#include <gtest/gtest.h>

#include <string>

#include "qzxml/runtime/Encoder.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/xml/ExpatReader.h"
#include "tests/support/LiveCounts.h"
#include "tests/support/QzTest.h"
#include "tests/xml/TreeShape.h"

namespace QzXmlLib16 {
namespace {

using qztest::Shape;

class ExpatReader : public qztest::NothingLeftBehind {};

struct TreeCase {
  std::string text;
  std::string shape;
};

std::string Loaded(const std::string& bytes, const CSerializationContext& context = {}) {
  CXmlDocument document(context);
  document.LoadXmlStream(reinterpret_cast<const unsigned char*>(bytes.data()),
                         static_cast<std::uint32_t>(bytes.size()));
  return Shape(document);
}

void ExpectTrees(std::initializer_list<TreeCase> cases, const CSerializationContext& context = {}) {
  for (const TreeCase& c : cases) EXPECT_EQ(c.shape, Loaded(c.text, context)) << c.text;
}

// --- The reader itself

TEST_F(ExpatReader, ParsesOnlyBetweenInitAndTheLastPiece) {
  CXmlDocument document;
  CExpatReader reader(document);
  EXPECT_QZ_ASSERT("m_parser != 0", reader.Parse(true));
  reader.Init();
  reader.Parse(false);
  EXPECT_QZ_THROW_FULL(CQzException, "no element found at line 1", "", reader.Parse(true));
  EXPECT_QZ_ASSERT("m_parser != 0", reader.Parse(true));
}

TEST_F(ExpatReader, CanGoAtAnyTime) {
  CXmlDocument document;
  { const CExpatReader made(document); }
  CExpatReader initialised(document);
  initialised.Init();
  initialised.Init();
  CExpatReader fed(document);
  fed.Init();
  fed.Parse(false);
}

// --- Elements and attributes

TEST_F(ExpatReader, NamesAreSplitIntoNamespaceAndLocalName) {
  ExpectTrees({
      {"<r/>", "r"},
      {"<r xmlns='urn:d'/>", "{urn:d}r"},
      {"<p:r xmlns:p='urn:p'/>", "{urn:p}r"},
      {"<p:r xmlns:p='urn:p' a='1' p:a='2'/>", "{urn:p}r a='1' {urn:p}a='2'"},
      {"<r xmlns='urn:d' a='1'/>", "{urn:d}r a='1'"},
      {"<r xmlns='urn:d'><c xmlns=''/><d/></r>", "{urn:d}r[c][{urn:d}d]"},
      {"<r xml:lang='en'/>", "r {http://www.w3.org/XML/1998/namespace}lang='en'"},
      {"<r xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:nil='true'/>",
       "r {http://www.w3.org/2001/XMLSchema-instance}nil='true'"},
      {"<r z='1' a='2' m='3'/>", "r z='1' a='2' m='3'"},
  });
}

TEST_F(ExpatReader, ADefaultNamespaceHasTheEmptyAlias) {
  CXmlDocument document;
  document.LoadXml("<r xmlns='urn:d' a='1'/>");
  EXPECT_EQ("urn:d", document.LookupNamespaceFromAlias(""));
  EXPECT_EQ("", document.LookupAliasFromNamespace("urn:d"));
  EXPECT_EQ("", document.GetDocumentElement()->GetAttributes()[0]->GetNamespaceURI());
  document.LoadXml("<r a='1'/>");
  EXPECT_EQ("", document.LookupNamespaceFromAlias(""));
}

TEST_F(ExpatReader, WithoutNamespaceProcessingPrefixesStayInTheNames) {
  CSerializationContext context;
  context.SetSchemaType(SchemaType_NoNamespaces);
  ExpectTrees(
      {
          {"<a:b/>", "a:b"},
          {"<a:b xmlns:a='urn:a' xmlns='urn:d' a:c='1'><d/></a:b>",
           "a:b xmlns:a='urn:a' xmlns='urn:d' a:c='1'[d]"},
          {"<a:b:c/>", "a:b:c"},
          {"<r xmlns:p='urn|p'/>", "r xmlns:p='urn|p'"},
      },
      context);
  CXmlDocument document(context);
  document.LoadXml("<a:b xmlns:a='urn:a'/>");
  EXPECT_EQ("", document.GetDocumentElement()->GetNamespaceURI());
  EXPECT_EQ("", document.LookupNamespaceFromAlias("a"));
  EXPECT_FALSE(document.GetDocumentElement()->GetAttributes()[0]->IsNamespaceAttribute());
}

TEST_F(ExpatReader, ANamespaceWithAVerticalBarIsRefused) {
  for (const char* text : {"<r xmlns='a|b'/>", "<r xmlns:p='|'/>", "<r xmlns:p='a|'><p:c/></r>"}) {
    CXmlDocument document;
    EXPECT_QZ_THROW_FULL(CQzException, "syntax error at line 1", "", document.LoadXml(text));
  }
}

TEST_F(ExpatReader, AttributeValuesAreNormalizedAndKeepReferences) {
  ExpectTrees({
      {"<r a=''/>", "r a=''"},
      {"<r a='&lt;&gt;&amp;&quot;&apos;'/>", "r a='<>&\"''"},
      {"<r a='x\r\ny\tz\nw'/>", "r a='x y z w'"},
      {"<r a='x&#13;&#10;y&#9;z'/>", "r a='x\r\ny\tz'"},
      {"<r a=' x  y '/>", "r a=' x  y '"},
      {"<!DOCTYPE r [<!ATTLIST r a NMTOKENS #IMPLIED>]><r a=' x  y '/>", "r a='x y'"},
  });
}

TEST_F(ExpatReader, DefaultAttributesOfTheDocumentTypeAreThere) {
  ExpectTrees({
      {"<!DOCTYPE r [<!ATTLIST r a CDATA 'def'>]><r/>", "r a='def'"},
      {"<!DOCTYPE r [<!ATTLIST r a CDATA 'def'>]><r a='own'/>", "r a='own'"},
      {"<!DOCTYPE r [<!ATTLIST c a CDATA 'x' b CDATA #FIXED 'y'>]><r><c/><c b='y'/></r>",
       "r[c a='x' b='y'][c b='y' a='x']"},
      {"<!DOCTYPE r [<!ATTLIST r xmlns CDATA #FIXED 'urn:d'>]><r><c/></r>", "{urn:d}r[{urn:d}c]"},
  });
}

// --- Text

TEST_F(ExpatReader, WhiteSpaceBetweenChildrenStays) {
  ExpectTrees({
      {"<r> <a/> <b/> </r>", "r \"   \"[a][b]"},
      {"<r>\n\t<a/>\n</r>\n", "r \"\n\t\n\"[a]"},
      {"<r>\r\n<a/>\r</r>", "r \"\n\n\"[a]"},
  });
}

TEST_F(ExpatReader, PiecesOfATextJoinUp) {
  ExpectTrees({
      {"<r>a&lt;b&gt;c&amp;d&quot;e&apos;f</r>", "r \"a<b>c&d\"e'f\""},
      {"<r>a&#66;&#x43;&#8364;&#x1D11E;</r>", "r \"aBC\xE2\x82\xAC\xF0\x9D\x84\x9E\""},
      {"<r>line\nline\n\nline</r>", "r \"line\nline\n\nline\""},
      {"<r>a<b>c<d>e</d>f</b>g</r>", "r \"ag\"[b \"cf\"[d \"e\"]]"},
      {"<r>a<!-- c -->b<?p i?>c</r>", "r \"abc\""},
  });
}

TEST_F(ExpatReader, CarriageReturnsOfReferencesAreDropped) {
  ExpectTrees({
      {"<r>&#13;</r>", "r"},
      {"<r>a&#13;&#10;b</r>", "r \"a\nb\""},
      {"<r>a&#13;\nb</r>", "r \"a\nb\""},
      {"<r>a&#xD;&#xd;b&#13;</r>", "r \"ab\""},
      {"<r>a\rb\r\nc</r>", "r \"a\nb\nc\""},
      {"<r><c>&#13;x</c>&#13;y</r>", "r \"y\"[c \"x\"]"},
  });
}

TEST_F(ExpatReader, CarriageReturnsOfEntitiesAreDropped) {
  ExpectTrees({
      {"<!DOCTYPE r [<!ENTITY e 'a&#13;b'>]><r>&e;</r>", "r \"ab\""},
      {"<!DOCTYPE r [<!ENTITY e 'a&#38;#13;b'>]><r>&e;</r>", "r \"ab\""},
      {"<!DOCTYPE r [<!ENTITY e '&#13;&#13;&#10;'>]><r>x&e;y&#13;</r>", "r \"x\ny\""},
      {"<!DOCTYPE r [<!ENTITY e '<c>&#13;a&#13;</c>'>]><r>&e;</r>", "r[c \"a\"]"},
      {"<!DOCTYPE r [<!ENTITY e 'a\rb'>]><r>&e;\r\n</r>", "r \"a\nb\n\""},
  });
}

TEST_F(ExpatReader, CdataSectionsKeepTheirMarkersIfTheContextSaysSo) {
  CSerializationContext context;
  context.SetStripCDATA(false);
  ExpectTrees(
      {
          {"<r><![CDATA[a<b]]></r>", "r \"<![CDATA[a<b]]>\""},
          {"<r><![CDATA[]]></r>", "r \"<![CDATA[]]>\""},
          {"<r>x<![CDATA[a]]>y</r>", "r \"x<![CDATA[a]]>y\""},
          {"<r><![CDATA[a]]><![CDATA[b]]></r>", "r \"<![CDATA[a]]><![CDATA[b]]>\""},
          {"<r><![CDATA[a]]]]><![CDATA[>b]]></r>", "r \"<![CDATA[a]]]]><![CDATA[>b]]>\""},
          {"<r><![CDATA[a\r\nb\rc]]></r>", "r \"<![CDATA[a\nb\nc]]>\""},
          {"<r><![CDATA[&amp;]]></r>", "r \"<![CDATA[&amp;]]>\""},
          {"<r><c><![CDATA[a]]></c><![CDATA[b]]></r>", "r \"<![CDATA[b]]>\"[c \"<![CDATA[a]]>\"]"},
      },
      context);
}

TEST_F(ExpatReader, CdataSectionsAreTextLikeAnyOtherByDefault) {
  ExpectTrees({
      {"<r><![CDATA[a<b]]></r>", "r \"a<b\""},
      {"<r><![CDATA[]]></r>", "r"},
      {"<r>x<![CDATA[a]]>y</r>", "r \"xay\""},
      {"<r><![CDATA[a]]><![CDATA[b]]></r>", "r \"ab\""},
      {"<r><![CDATA[a]]]]><![CDATA[>b]]></r>", "r \"a]]>b\""},
      {"<r><![CDATA[a\r\nb\rc]]></r>", "r \"a\nb\nc\""},
  });
}

// --- What leaves no trace

TEST_F(ExpatReader, CommentsInstructionsAndTheDocumentTypeLeaveNoTrace) {
  const std::string plain = "r a='1' \"xyz\"[c \"t\"]";
  for (const char* text : {
           "<r a='1'>xy<c>t</c>z</r>",
           "<?xml version='1.0'?><r a='1'>xy<c>t</c>z</r>",
           "<?xml version='1.0' encoding='UTF-8' standalone='yes'?>\n<r a='1'>xy<c>t</c>z</r>",
           "<!-- a --><r a='1'>xy<c>t</c>z</r><!-- b -->",
           "<?a b?><r a='1'>xy<c>t</c>z</r><?c d?>",
           "<r a='1'>x<!-- a -->y<c><!-- b -->t</c>z<!----></r>",
           "<r a='1'>x<?a?>y<c>t<?b c?></c>z</r>",
           "<!DOCTYPE r><r a='1'>xy<c>t</c>z</r>",
           "<!DOCTYPE r SYSTEM 'none.dtd'><r a='1'>xy<c>t</c>z</r>",
           "<!DOCTYPE r PUBLIC 'p' 's' [<!ELEMENT r ANY><!NOTATION n SYSTEM 'x'><!-- c --><?p i?>]>"
           "<r a='1'>xy<c>t</c>z</r>",
           "\n\n  <!-- a -->\n<!DOCTYPE r>\n<?p?>\n<r a='1'>xy<c>t</c>z</r>\n<!-- b -->\n",
       }) {
    if (text[0] == '\n') {
      EXPECT_EQ(plain, Loaded(text)) << text;
      continue;
    }
    CXmlDocument document;
    document.LoadXml(text);
    EXPECT_EQ(plain, Shape(document)) << text;
  }
}

TEST_F(ExpatReader, InternalEntitiesAreResolvedAndExternalOnesAreNotFetched) {
  ExpectTrees({
      {"<!DOCTYPE r [<!ENTITY e 'ent'>]><r a='&e;'>x&e;y</r>", "r a='ent' \"xenty\""},
      {"<!DOCTYPE r [<!ENTITY e '<c>&#38;lt;</c>'>]><r>x&e;y</r>", "r \"xy\"[c \"<\"]"},
      {"<!DOCTYPE r [<!ENTITY f 'F'><!ENTITY e '&f;&f;'>]><r>&e;</r>", "r \"FF\""},
      {"<!DOCTYPE r [<!ENTITY e SYSTEM 'file:///etc/passwd'>]><r>x&e;y</r>", "r \"xy\""},
      {"<!DOCTYPE r SYSTEM 'none.dtd'><r>x&e;y</r>", "r \"xy\""},
  });
}

// --- Failures of the document

TEST_F(ExpatReader, AFailureTellsExpatsTextAndTheLine) {
  const struct {
    const char* text;
    const char* message;
  } cases[] = {
      {" ", "no element found at line 1"},
      {"\n\n", "no element found at line 3"},
      {"<!-- only -->", "no element found at line 1"},
      {"text", "syntax error at line 1"},
      {"<r>", "no element found at line 1"},
      {"<r>\n<c>", "no element found at line 2"},
      {"<r", "unclosed token at line 1"},
      {"<r>\n<c/>\n</r", "unclosed token at line 3"},
      {"<r></s>", "mismatched tag at line 1"},
      {"<r>\n\n<c></r>", "mismatched tag at line 3"},
      {"<r>\r\n\r\n<c></r>", "mismatched tag at line 3"},
      {"<r/>\n<s/>", "junk after document element at line 2"},
      {"<r/>text", "junk after document element at line 1"},
      {"<r a='1' a='2'/>", "duplicate attribute at line 1"},
      {"<r xmlns:p='u' xmlns:q='u'\n p:a='1' q:a='2'/>", "duplicate attribute at line 1"},
      {"<r a=1/>", "not well-formed (invalid token) at line 1"},
      {"<r>&</r>", "not well-formed (invalid token) at line 1"},
      {"<r>\n\n\n]]></r>", "not well-formed (invalid token) at line 4"},
      {"<r>\x01</r>", "not well-formed (invalid token) at line 1"},
      {"<r>\xFF</r>", "not well-formed (invalid token) at line 1"},
      {"<r>&none;</r>", "undefined entity at line 1"},
      {"<r>\n&#0;</r>", "reference to invalid character number at line 2"},
      {"<p:r/>", "unbound prefix at line 1"},
      {"<r p:a='1'/>", "unbound prefix at line 1"},
      {"<r xmlns:p=''/>", "must not undeclare prefix at line 1"},
      {"<r><![CDATA[x</r>", "unclosed CDATA section at line 1"},
      {"\n<?xml version='1.0'?><r/>", "XML or text declaration not at start of entity at line 2"},
      {"<?xml version='1.0' encoding='none'?><r/>", "unknown encoding at line 1"},
      {"<!DOCTYPE r [<!ENTITY e '&e;'>]>\n<r>&e;</r>", "recursive entity reference at line 2"},
      {"<!DOCTYPE r [<!ENTITY e '<c>'>]><r>&e;</c></r>", "asynchronous entity at line 1"},
  };
  for (const auto& c : cases) {
    CXmlDocument document;
    EXPECT_QZ_THROW_FULL(CQzException, c.message, "", document.LoadXml(c.text)) << c.text;
  }
}

TEST_F(ExpatReader, CompressedAndBinaryContentOfAStringFails) {
  const struct {
    const char* text;
    const char* message;
  } cases[] = {
      {"\x1F\x8B\x08", "not well-formed (invalid token) at line 1"},      // gzip
      {"\x78\x9C\xB3\x29", "not well-formed (invalid token) at line 1"},  // zlib
      {"\xE0", "partial character at line 1"},                            // Fast Infoset
      {"<?xml version='1.0' encoding='finf'?>\xE0", "unknown encoding at line 1"},
      {"<?xml encoding='finf'?>\xE0", "XML declaration not well-formed at line 1"},
  };
  for (const auto& c : cases) {
    CXmlDocument document;
    EXPECT_QZ_THROW(CQzException, c.message, document.LoadXml(c.text)) << c.text;
    EXPECT_EQ("(none)", Shape(document));
  }
}

// Compressed text without a zero byte, so that it is a string as well.
TEST_F(ExpatReader, AWholeCompressedTextIsReadFromBytesAndNotFromAString) {
  static const unsigned char s_bytes[] = {
      0x78, 0x9C, 0x05, 0xC1, 0xC9, 0x11, 0x80, 0x30, 0x0C, 0x04, 0xB0, 0x92, 0x68, 0x20, 0x93,
      0x5E, 0xD6, 0x06, 0x1F, 0xE0, 0x6B, 0xD2, 0xFF, 0x03, 0x69, 0x9D, 0x8D, 0xA1, 0x37, 0x45,
      0x0C, 0x6A, 0x19, 0xD1, 0x8E, 0x7C, 0xB4, 0x68, 0x42, 0x6B, 0xA2, 0x02, 0x5F, 0xC3, 0x44,
      0xD8, 0x89, 0x19, 0x0D, 0x37, 0xBF, 0x25, 0xD6, 0x75, 0xF6, 0x0F, 0xA8, 0x04, 0x16, 0xC9,
  };
  const std::string text(reinterpret_cast<const char*>(s_bytes), sizeof s_bytes);
  ASSERT_EQ(std::string::npos, text.find('\0'));
  CXmlDocument document;
  EXPECT_QZ_THROW(CQzException, "not well-formed (invalid token) at line 1",
                  document.LoadXml(text.c_str()));
  EXPECT_EQ("(none)", Shape(document));
  document.LoadXmlStream(s_bytes, sizeof s_bytes);
  EXPECT_EQ("r \"apbjmffhaghmlloiamegnbplgnplnlakoahffcibccaoaihidfl\"", Shape(document));
}

TEST_F(ExpatReader, AFailureLeavesTheTextThatWasRead) {
  const struct {
    const char* text;
    const char* shape;
  } cases[] = {
      {"<r>a<c>b<d>c</e>", "r \"a\"[c \"b\"[d \"c\"]]"},
      {"<r>a&none;b</r>", "r \"a\""},
      {"<r a='1'><c/></s>", "r a='1'[c]"},
      {"<r>a</r>b", "r \"a\""},
      {"<r><c a='1' a='2'/></r>", "r"},
  };
  for (const auto& c : cases) {
    CXmlDocument document;
    EXPECT_THROW(document.LoadXml(c.text), CQzException);
    EXPECT_EQ(c.shape, Shape(document)) << c.text;
  }
}

// --- Encodings

std::string Utf16(const std::u16string& text, bool bigEndian, bool withMark = true) {
  std::string bytes;
  for (const char16_t unit : (withMark ? u"\uFEFF" : u"") + text) {
    const char high = static_cast<char>(unit >> 8);
    const char low = static_cast<char>(unit & 0xFF);
    bytes += bigEndian ? high : low;
    bytes += bigEndian ? low : high;
  }
  return bytes;
}

TEST_F(ExpatReader, TheMarkAndTheDeclarationTellTheEncoding) {
  const std::u16string text = u"<r a='\u20AC'>\u00E9\U0001D11E\r\n<\u00FC/></r>";
  const std::u16string declared = u"<?xml version='1.0' encoding='UTF-16'?>" + text;
  const std::string shape = "r a='\xE2\x82\xAC' \"\xC3\xA9\xF0\x9D\x84\x9E\n\"[\xC3\xBC]";
  ExpectTrees({
      {Utf16(text, false), shape},
      {Utf16(text, true), shape},
      {Utf16(declared, false), shape},
      {Utf16(declared, true), shape},
      {Utf16(text, false, false), shape},
      {Utf16(text, true, false), shape},
      {"\xEF\xBB\xBF<r a='\xE2\x82\xAC'>\xC3\xA9\xF0\x9D\x84\x9E\r\n<\xC3\xBC/></r>", shape},
      {"<?xml version='1.0' encoding='ISO-8859-1'?><r a='\xA3'>\xE9\xFF<\xFC/></r>",
       "r a='\xC2\xA3' \"\xC3\xA9\xC3\xBF\"[\xC3\xBC]"},
      {"<?xml version='1.0' encoding='iso-8859-1'?><r>\xE9</r>", "r \"\xC3\xA9\""},
      {"<?xml version='1.0' encoding='US-ASCII'?><r>&#233;</r>", "r \"\xC3\xA9\""},
  });
}

TEST_F(ExpatReader, ABrokenUtf16StreamFails) {
  const std::string text = Utf16(u"<r>x</r>", false);
  for (std::size_t length = 1; length < text.size(); ++length) {
    EXPECT_THROW(Loaded(text.substr(0, length)), CQzException) << length;
  }
  EXPECT_QZ_THROW(CQzException, "not well-formed (invalid token) at line 1",
                  Loaded(Utf16(std::u16string(u"<r>") + char16_t{0xDC00} + u"</r>", true)));
}

TEST_F(ExpatReader, LongTextsOfOtherEncodingsAreWhole) {
  for (const int length : {255, 256, 257, 511, 512, 513, 1023, 1024, 1025, 5000, 70000}) {
    std::string latin;
    std::string utf8;
    for (int i = 0; i < length; ++i) {
      latin += i % 3 == 0 ? "\xE9" : "x";
      utf8 += i % 3 == 0 ? "\xC3\xA9" : "x";
    }
    const std::string text =
        "<?xml version='1.0' encoding='ISO-8859-1'?><r a='" + latin + "'>" + latin + "</r>";
    EXPECT_TRUE("r a='" + utf8 + "' \"" + utf8 + "\"" == Loaded(text)) << length;
  }
}

// Puts another local encoding in place, until the end of the scope.
class LocalEncoding {
 public:
  explicit LocalEncoding(std::uint32_t codePage) { SetLocalCharEncoding(codePage); }
  ~LocalEncoding() { SetLocalCharEncoding(3); }
};

TEST_F(ExpatReader, NamesValuesAndTextsAreInTheLocalEncoding) {
  const LocalEncoding encoding(1252);
  CSerializationContext context;
  context.SetStripCDATA(false);
  ExpectTrees(
      {
          {"<\xC3\xA9 xmlns:\xC3\xBC='urn:\xC3\xA4' "
           "\xC3\xBC:a='\xE2\x82\xAC'>x&#233;\xC3\xA0&#13;\n"
           "<![CDATA[\xC3\xA9]]></\xC3\xA9>",
           "\xE9 {urn:\xE4}"
           "a='\x80' \"x\xE9\xE0\n<![CDATA[\xE9]]>\""},
      },
      context);
  CXmlDocument document;
  document.LoadXml("<r xmlns:\xC3\xBC='urn:\xC3\xA4'/>");
  EXPECT_EQ("urn:\xE4", document.LookupNamespaceFromAlias("\xFC"));
  for (const std::size_t length : {255U, 256U, 257U, 511U, 512U, 513U, 4096U, 65536U}) {
    std::string utf8;
    for (std::size_t i = 0; i < length; ++i) utf8 += "\xC3\xA9";
    const std::string local(length, '\xE9');
    EXPECT_TRUE("r a='" + local + "' \"" + local + "\"" ==
                Loaded("<r a='" + utf8 + "'>" + utf8 + "</r>"))
        << length;
  }
}

// --- Sizes

TEST_F(ExpatReader, TextsNamesAndValuesOfEveryLengthAreWhole) {
  for (const std::size_t middle : {1U, 16U, 256U, 512U, 1024U, 4096U, 32768U, 65536U}) {
    for (int more = -2; more <= 2; ++more) {
      if (static_cast<int>(middle) + more < 1) continue;
      const std::size_t length = middle + static_cast<std::size_t>(more);
      const std::string text(length, 't');
      const std::string name(length, 'n');
      const std::string broken = "u" + text + "\n&lt;" + text;
      CXmlDocument document;
      document.LoadXml(("<r " + name + "='" + text + "'>" + text + "<" + name + ">" + "u" + text +
                        "\n&lt;" + text + "</" + name + "></r>")
                           .c_str());
      EXPECT_TRUE("r " + name + "='" + text + "' \"" + text + "\"[" + name + " \"u" + text + "\n<" +
                      text + "\"]" ==
                  Shape(document))
          << length;
    }
  }
}

TEST_F(ExpatReader, LongTextsOfManyOpenElementsDoNotMix) {
  const std::string a(70000, 'a');
  const std::string b(70000, 'b');
  const std::string c(70000, 'c');
  const std::string text =
      "<r>" + a + "&amp;<s>" + b + "\n" + b + "<t>" + c + "</t>" + b + "</s>" + a + "</r>";
  EXPECT_TRUE("r \"" + a + "&" + a + "\"[s \"" + b + "\n" + b + b + "\"[t \"" + c + "\"]]" ==
              Loaded(text));
}

// The parser's own memory, in which it keeps the value, grows past what the heap holds in one
// piece.
TEST_F(ExpatReader, AnAttributeOfFortyMegabytesIsWhole) {
  std::string value;
  for (int i = 0; value.size() < 40'000'000; ++i) value += std::to_string(i) + ' ';
  const std::string text = "<r a='" + value + "&lt;'/>";
  for (int i = 0; i < 2; ++i) {
    CXmlDocument document;
    document.LoadXmlStream(reinterpret_cast<const unsigned char*>(text.data()),
                           static_cast<std::uint32_t>(text.size()));
    EXPECT_TRUE(document.GetDocumentElement()->GetAttribute("a", "") == value + '<');
  }
}

TEST_F(ExpatReader, ManyAttributesStandInTheirOrder) {
  std::string text = "<r";
  std::string shape = "r";
  for (int i = 0; i < 5000; ++i) {
    const std::string attribute =
        " a" + std::to_string(i * 7919 % 5000) + "='" + std::to_string(i) + "'";
    text += attribute;
    shape += attribute;
  }
  EXPECT_TRUE(shape == Loaded(text + "/>"));
}

}  // namespace
}  // namespace QzXmlLib16
