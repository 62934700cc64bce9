#include "qzxml/collections/Element.h"
#include "tests/collections/OpenContent.h"
#include "tests/support/QzTest.h"

// Documents written by hand, read as open content and written again; what must come out was worked
// out by hand as well. What is known to be lost: the place of a text among the children, prefixes,
// comments, processing instructions and the document type.
namespace QzXmlLib16 {
namespace {

using qztest::CLoaded;
using qztest::CWalk;
using qztest::Flat;
using qztest::Formatted;

struct Rewritten {
  const char* xml;
  const char* written;
};

CSmartPtr<CElement> Read(const char* xml, const CSerializationContext& context) {
  const CLoaded document(xml, context);
  CSmartPtr<CElement> element(new CElement("e"));
  EXPECT_EQ(nullptr, CWalk::Read(element, document.root(), document.root(), context));
  return element;
}

// Both ways of taking over a document, and a clone, give the same text; and what was written is
// written once more as it stands.
void ExpectRewritten(const Rewritten& c, const CSerializationContext& context) {
  SCOPED_TRACE(c.xml);
  const CSmartPtr<CElement> element = Read(c.xml, context);
  EXPECT_EQ(c.written, Flat(element));
  EXPECT_EQ(c.written, Flat(element->Clone()));
  EXPECT_EQ(c.written, Flat(Read(c.written, context)));
  if (context.GetStripCDATA() && context.GetSchemaType() == SchemaType_Default) {
    EXPECT_EQ(c.written, Flat(CSmartPtr<CElement>(new CElement(element, nullptr))));
    element->FromXml(c.xml);
    EXPECT_EQ(c.written, Flat(element));
  }
}

TEST(ElementReader, RewritesElementsAttributesAndText) {
  const Rewritten cases[] = {
      {"<a/>", "<a/>"},
      {"<a></a>", "<a/>"},
      {"<a x=\"1\" y='two' z=''/>", "<a x=\"1\" y=\"two\" z=\"\"/>"},
      {"<a><b/><b><c/></b><d/></a>", "<a><b/><b><c/></b><d/></a>"},
      {"<a>text</a>", "<a>text</a>"},
      {"<a><b>x</b><b>y</b></a>", "<a><b>x</b><b>y</b></a>"},
      {"<a k='&lt;&amp;&quot;&gt;&apos;&#10;'>&lt;&amp;\"'&gt;\t&#10;</a>",
       "<a k=\"&lt;&amp;&quot;&gt;'&#xA;\">&lt;&amp;\"'&gt;\t\n</a>"},
      {"<a>\xC3\xA4\xF0\x9F\x98\x80<\xC3\xA9 k='\xE2\x82\xAC'/></a>",
       "<a><\xC3\xA9 k=\"\xE2\x82\xAC\"/>\xC3\xA4\xF0\x9F\x98\x80</a>"},
      {"<a>&#xE4;</a>", "<a>\xC3\xA4</a>"},
      // Deeper, then back, then deeper again.
      {"<a><b><c><d/></c></b><e><f/><g><h/></g></e></a>",
       "<a><b><c><d/></c></b><e><f/><g><h/></g></e></a>"},
      // All text of an element stands behind its children.
      {"<a>one<b>two</b>three<c/>four</a>", "<a><b>two</b><c/>onethreefour</a>"},
      {"<a>\n  <b/>\n</a>", "<a><b/>\n  \n</a>"},
      {"<a> <b> </b> </a>", "<a><b> </b>  </a>"},
      // What the tree does not keep.
      {"<?xml version='1.0'?><!-- c --><a><!-- d --><?p q?><b/></a><!-- e -->", "<a><b/></a>"},
      {"<!DOCTYPE a [<!ENTITY e 'v'><!ATTLIST a k CDATA 'd'>]><a>&e;</a>", "<a k=\"d\">v</a>"},
      // Carriage returns.
      {"<a k='x&#13;y'>x&#13;y</a>", "<a k=\"xy\">xy</a>"},
      {"<a k='x\r\ny'>x\r\ny</a>", "<a k=\"x y\">x\ny</a>"},
      {"<a><![CDATA[<x>&]]></a>", "<a>&lt;x&gt;&amp;</a>"},
      {"<a>p<![CDATA[q]]>r</a>", "<a>pqr</a>"},
  };
  const CSerializationContext context;
  for (const Rewritten& c : cases) ExpectRewritten(c, context);
}

// A tab goes out as it is, and the next reader takes a tab in an attribute for a blank.
TEST(ElementReader, RewritesATabInAnAttributeAsItStands) {
  EXPECT_EQ("<a k=\"x\ty\"/>", Flat(Read("<a k='x&#9;y'/>", CSerializationContext())));
}

TEST(ElementReader, RewritesNamespaces) {
  const Rewritten cases[] = {
      // A default namespace becomes a prefix.
      {"<a xmlns='urn:a'><b><c/></b></a>", "<AA:a xmlns:AA=\"urn:a\"><AA:b><AA:c/></AA:b></AA:a>"},
      {"<p:a xmlns:p='urn:a'><p:b/><c/></p:a>", "<AA:a xmlns:AA=\"urn:a\"><AA:b/><c/></AA:a>"},
      // Undone and done again below.
      {"<a xmlns='urn:a'><b xmlns=''><c xmlns='urn:a'/></b></a>",
       "<AA:a xmlns:AA=\"urn:a\"><b><AA:c/></b></AA:a>"},
      // Nested namespaces get prefixes of their own, which their subtree shares.
      {"<a xmlns='urn:a'><b xmlns='urn:b'><c xmlns='urn:c'/><d xmlns='urn:a'/></b></a>",
       "<AA:a xmlns:AA=\"urn:a\"><AB:b xmlns:AB=\"urn:b\"><AC:c xmlns:AC=\"urn:c\"/><AA:d/></AB:b>"
       "</AA:a>"},
      // Siblings declare for themselves.
      {"<a><b xmlns='urn:b'/><c xmlns='urn:b'/></a>",
       "<a><AA:b xmlns:AA=\"urn:b\"/><AA:c xmlns:AA=\"urn:b\"/></a>"},
      {"<a xmlns:p='urn:p'><p:b/><p:b><p:c/></p:b></a>",
       "<a><AA:b xmlns:AA=\"urn:p\"/><AA:b xmlns:AA=\"urn:p\"><AA:c/></AA:b></a>"},
      // A declaration that nothing uses is gone.
      {"<a xmlns:p='urn:p'/>", "<a/>"},
      // Attributes in namespaces; a default namespace does not reach them.
      {"<a xmlns='urn:a' xmlns:p='urn:a' k='1' p:l='2'/>",
       "<AA:a xmlns:AA=\"urn:a\" k=\"1\" AA:l=\"2\"/>"},
      {"<a xmlns:p='urn:p' xmlns:q='urn:q' p:k='1' q:k='2' k='3' p:l='4'/>",
       "<a xmlns:AA=\"urn:p\" AA:k=\"1\" xmlns:AB=\"urn:q\" AB:k=\"2\" k=\"3\" AA:l=\"4\"/>"},
      {"<p:a xmlns:p='urn:p' xmlns:q='urn:q' q:k='v'><q:b p:l='w'/></p:a>",
       "<AA:a xmlns:AA=\"urn:p\" xmlns:AB=\"urn:q\" AB:k=\"v\"><AB:b AA:l=\"w\"/></AA:a>"},
      {"<a xml:lang='en' xml:space='preserve'/>", "<a xml:lang=\"en\" xml:space=\"preserve\"/>"},
      {"<a xmlns:i='http://www.w3.org/2001/XMLSchema-instance' i:nil='true' i:type='p:t'/>",
       "<a xmlns:AA=\"http://www.w3.org/2001/XMLSchema-instance\" AA:nil=\"true\" "
       "AA:type=\"p:t\"/>"},
  };
  const CSerializationContext context;
  for (const Rewritten& c : cases) ExpectRewritten(c, context);
}

TEST(ElementReader, RewritesCdataSectionsThatTheReaderLeavesMarked) {
  CSerializationContext context;
  context.SetStripCDATA(false);
  const Rewritten cases[] = {
      {"<a><![CDATA[<x>&]]></a>", "<a><![CDATA[<x>&]]></a>"},
      {"<a><![CDATA[]]></a>", "<a><![CDATA[]]></a>"},
      {"<a><b><![CDATA[1]]></b><b><![CDATA[2]]></b></a>",
       "<a><b><![CDATA[1]]></b><b><![CDATA[2]]></b></a>"},
      {"<a><![CDATA[p]]><![CDATA[q]]></a>", "<a><![CDATA[p]]><![CDATA[q]]></a>"},
  };
  for (const Rewritten& c : cases) ExpectRewritten(c, context);
  // Behind other text the mark is text.
  EXPECT_EQ("<a>t&lt;![CDATA[x]]&gt;</a>", Flat(Read("<a>t<![CDATA[x]]></a>", context)));
}

TEST(ElementReader, RewritesPrefixesAsNamesWithoutNamespaceProcessing) {
  CSerializationContext context;
  context.SetSchemaType(SchemaType_NoNamespaces);
  const Rewritten cases[] = {
      {"<p:a xmlns:p='urn:p' p:k='v'><p:b xmlns='urn:b'>t</p:b></p:a>",
       "<p:a xmlns:p=\"urn:p\" p:k=\"v\"><p:b xmlns=\"urn:b\">t</p:b></p:a>"},
      {"<q:a/>", "<q:a/>"},  // no prefix is looked up
  };
  for (const Rewritten& c : cases) ExpectRewritten(c, context);
}

TEST(ElementReader, RewritesWithIndents) {
  const CSerializationContext context;
  EXPECT_EQ("<a>\n\t<b>t</b>\n\t<c k=\"v\">\n\t\t<d/>\n\t</c>\n</a>\n",
            Formatted(Read("<a><b>t</b><c k='v'><d/></c></a>", context)));
}

TEST(ElementReader, ReadsManySiblings) {
  std::string xml = "<a>";
  std::string written = "<a>";
  for (int i = 0; i < 20000; ++i) {
    xml += "<b i='" + std::to_string(i) + "'>t</b>";
    written += "<b i=\"" + std::to_string(i) + "\">t</b>";
  }
  const CSmartPtr<CElement> element = Read((xml + "</a>").c_str(), CSerializationContext());
  EXPECT_EQ(20000, element->GetChildElements()->GetCount());
  EXPECT_TRUE(written + "</a>" == Flat(element));
}

}  // namespace
}  // namespace QzXmlLib16
