#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <utility>

#include "qzxml/runtime/MemoryLeakHelp.h"
#include "qzxml/xml/XmlNamespaces.h"
#include "qzxml/xml/XmlTextWriter.h"
#include "tests/support/QzTest.h"
#include "tests/xml/XmlTextWriterOutput.h"

using namespace QzXmlLib16;
using namespace qztest;

namespace {

std::string Golden(const std::string& name) {
  std::ifstream file(QZXML_TEST_DIRECTORY "/golden/xml/" + name, std::ios::binary);
  EXPECT_TRUE(file) << name;
  return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

}  // namespace

// ---- Options ----

TEST(XmlTextWriter, BeginsWithTheDocumentedOptions) {
  const Output out;
  EXPECT_TRUE(out.writer.GetFormatted());
  EXPECT_EQ(EOLType_LF, out.writer.GetEOLType());
  EXPECT_EQ("\t", out.writer.GetIndentChars());
  EXPECT_FALSE(out.writer.GetWriteDefaultValues());
}

TEST(XmlTextWriter, KeepsItsOptions) {
  Output out;
  out.writer.SetFormatted(false);
  EXPECT_FALSE(out.writer.GetFormatted());
  out.writer.SetEOLType(EOLType_CRLF);
  EXPECT_EQ(EOLType_CRLF, out.writer.GetEOLType());
  out.writer.SetIndentChars("any text");
  EXPECT_EQ("any text", out.writer.GetIndentChars());
  out.writer.SetIndentChars(std::string("-"));
  EXPECT_EQ("-", out.writer.GetIndentChars());
  out.writer.SetIndentChars(nullptr);
  EXPECT_EQ("", out.writer.GetIndentChars());
  out.writer.SetWriteDefaultValues(true);
  EXPECT_TRUE(out.writer.GetWriteDefaultValues());
}

TEST(XmlTextWriter, RefusesAnyOtherEolType) {
  Output out;
  out.writer.SetEOLType(EOLType_CRLF);
  for (const int type : {-1, 2, 3, 256}) {
    EXPECT_QZ_THROW(CQzException, "Invalid EOL type.",
                    out.writer.SetEOLType(static_cast<EOLType>(type)));
    EXPECT_EQ(EOLType_CRLF, out.writer.GetEOLType()) << type;
  }
}

TEST(XmlTextWriter, AssertsThatItIsNotFormattedAnewInsideAnElement) {
  Output out;
  out.Start("a");
  EXPECT_QZ_ASSERT("m_pContext == 0", out.writer.SetFormatted(false));
}

// ---- The document and the stream ----

TEST(XmlTextWriter, StartsAndEndsItsStream) {
  RecordingStream stream;
  CXmlTextWriter writer(&stream);
  EXPECT_EQ("", stream.calls);
  writer.StartDocument();
  EXPECT_EQ("Start ", stream.calls);
  writer.EndDocument();
  EXPECT_EQ("Start End ", stream.calls);
}

TEST(XmlTextWriter, EndsItsStreamBeforeItComplainsOfAnOpenElement) {
  RecordingStream stream;
  CXmlTextWriter writer(&stream);
  writer.WriteStartElement("a", "");
  EXPECT_QZ_THROW(CQzException, "An Element has not been closed.", writer.EndDocument());
  EXPECT_EQ("End ", stream.calls);
}

TEST(XmlTextWriter, ForgetsWhatTheStreamHeldWhenTheDocumentStarts) {
  Output out;
  out.stream.Put("left over");
  out.writer.StartDocument();
  out.Start("a");
  out.End();
  EXPECT_EQ("<a/>\n", out.text());
}

TEST(XmlTextWriter, TakesASecondRoot) {
  Output out;
  out.writer.AddNamespaceMapping("p", "urn:p");
  out.Start("a", "urn:a");
  out.End();
  out.Start("b", "urn:b");
  out.End();
  EXPECT_EQ(
      "<AA:a xmlns:AA=\"urn:a\" xmlns:p=\"urn:p\"/>\n"
      "<AA:b xmlns:AA=\"urn:b\" xmlns:p=\"urn:p\"/>\n",
      out.text());
}

TEST(XmlTextWriter, WritesTheDeclarationOfEachEncoding) {
  const std::pair<XmlEncoding, std::string> cases[] = {
      {XmlEncoding_Default, "<?xml version=\"1.0\"?>\n"},
      {XmlEncoding_UTF8, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"},
      {XmlEncoding_UTF16, "<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n"},
      {XmlEncoding_UTF16NoDecl, "<?xml version=\"1.0\"?>\n"},
  };
  for (const auto& [encoding, expected] : cases) {
    for (const bool formatted : {true, false}) {
      Output out(encoding);
      out.writer.SetFormatted(formatted);
      out.writer.WriteXmlDeclaration();
      EXPECT_EQ(expected, out.text()) << encoding;
    }
  }
}

TEST(XmlTextWriter, AssertsThatNoElementIsOpenBehindTheDeclaration) {
  Output out;
  out.Start("a");
  EXPECT_QZ_ASSERT("m_pContext == 0", out.writer.WriteXmlDeclaration());
  const qztest::AssertionRecorder silence;
  Output other;
  other.Start("a");
  other.writer.WriteXmlDeclaration();
  EXPECT_EQ("<a<?xml version=\"1.0\"?>\n", other.text());
}

TEST(XmlTextWriter, WritesDirectivesBeforeTheRootOnly) {
  Output out(false);
  out.writer.WriteDirective("<!DOCTYPE a [<!ENTITY b \"c & d\">]>");
  EXPECT_EQ("<!DOCTYPE a [<!ENTITY b \"c & d\">]>\n", out.text());
  out.Start("a");
  EXPECT_QZ_THROW(CQzException, "Headed directives must appear before an Element has been added.",
                  out.writer.WriteDirective("<!DOCTYPE a>"));
  EXPECT_EQ("<!DOCTYPE a [<!ENTITY b \"c & d\">]>\n<a", out.text());
}

TEST(XmlTextWriter, WritesCommentsInstructionsAndInlineSchemasWithTheirLineEnds) {
  for (const bool formatted : {true, false}) {
    for (const EOLType type : {EOLType_CRLF, EOLType_LF}) {
      Output out(formatted);
      out.writer.SetEOLType(type);
      const std::string eol = type == EOLType_CRLF ? "\r\n" : "\n";
      out.writer.WriteComment("a < b & c -- \"d\"\ne");
      out.writer.WriteProcessingInstruction("<?go \"a\" & b?>");
      EXPECT_EQ(
          "<!--a &lt; b &amp; c -- \"d\"" + eol + "e-->" + eol + "<?go \"a\" & b?>" + eol + eol,
          out.text());
    }
  }
}

TEST(XmlTextWriter, DoesNotTouchAnOpenStartTagForACommentOrAnInstruction) {
  Output out(false);
  out.Start("a");
  out.writer.WriteComment("c");
  out.writer.WriteProcessingInstruction("<?p?>");
  out.Attribute("b", "1");
  out.End();
  EXPECT_EQ("<a<!--c-->\n<?p?>\n\n b=\"1\"/>", out.text());
}

TEST(XmlTextWriter, PutsAnInlineSchemaInsideTheStartTag) {
  for (const bool formatted : {true, false}) {
    Output out(formatted);
    out.Start("a");
    out.writer.WriteInlineSchema("x=\"<1>\"");
    out.End();
    EXPECT_EQ(std::string("<a \nx=\"<1>\"\n/>") + (formatted ? "\n" : ""), out.text());
  }
}

TEST(XmlTextWriter, WritesRawLinesAsTheyStand) {
  Output out;
  out.writer.WriteRawLine("<a>&</a>");
  EXPECT_EQ("<a>&</a>\n", out.text());
  Output plain(false);
  plain.writer.WriteRawLine("<a>&</a>");
  EXPECT_EQ("<a>&</a>", plain.text());
}

TEST(XmlTextWriter, ClosesAnOpenStartTagAndCountsAChild) {
  Output out;
  out.writer.CloseOpenStartTag();  // nothing is open: nothing happens
  EXPECT_EQ("", out.text());
  out.Start("r");
  out.Start("a");
  out.writer.CloseOpenStartTag();
  out.writer.WriteRawLine("<raw/>");
  out.writer.CloseOpenStartTag();  // closed already
  out.End(2);
  EXPECT_EQ("<r>\n\t<a>\n<raw/>\n\t</a>\n</r>\n", out.text());
}

// ---- Elements and formatting ----

TEST(XmlTextWriter, WritesAnElementWithNothingInItAsOneTag) {
  Output out;
  out.Start("a");
  out.End();
  EXPECT_EQ("<a/>\n", out.text());
  Output plain(false);
  plain.Start("a");
  plain.End();
  EXPECT_EQ("<a/>", plain.text());
}

TEST(XmlTextWriter, LeavesTheEmptyFormOnEmptyAndOnUnwantedDefaultTexts) {
  struct Case {
    const char* text;
    bool isDefault;
    bool writeDefaults;
    const char* expected;
  };
  const Case cases[] = {
      {"", false, false, "<a/>\n"},      {"", true, true, "<a/>\n"},
      {"7", true, false, "<a/>\n"},      {"7", true, true, "<a>7</a>\n"},
      {"7", false, false, "<a>7</a>\n"}, {"7", false, true, "<a>7</a>\n"},
  };
  for (const Case& c : cases) {
    Output out;
    out.writer.SetWriteDefaultValues(c.writeDefaults);
    out.Start("a");
    out.writer.WriteText(c.text, kString, c.isDefault);
    out.End();
    EXPECT_EQ(c.expected, out.text());
  }
}

TEST(XmlTextWriter, StillTakesAttributesBehindATextThatWroteNothing) {
  Output out;
  out.Start("a");
  out.Text("");
  out.Attribute("b", "1");
  out.End();
  EXPECT_EQ("<a b=\"1\"/>\n", out.text());
}

TEST(XmlTextWriter, PutsTheIndentOfAChildRightBehindAText) {
  Output out;
  out.Start("r");
  out.Start("a");
  out.Text("text");
  out.Start("b");
  out.End(3);
  EXPECT_EQ("<r>\n\t<a>text\t\t<b/>\n\t</a>\n</r>\n", out.text());
}

TEST(XmlTextWriter, WritesSeveralTextsOneBehindTheOther) {
  Output out;
  out.Start("a");
  out.Text("1");
  out.Text("2");
  out.Start("b");
  out.End();
  out.Text("3");
  out.End();
  EXPECT_EQ("<a>12\t<b/>\n3</a>\n", out.text());
}

TEST(XmlTextWriter, WritesNoLineEndAndNoIndentBetweenElementsWhenNotFormatted) {
  Output out(false);
  out.writer.WriteXmlDeclaration();
  out.writer.WriteDirective("<!DOCTYPE a>");
  out.writer.WriteComment("c");
  out.writer.WriteProcessingInstruction("<?p?>");
  out.Start("a");
  out.writer.WriteInlineSchema("s=\"1\"");
  out.Start("b");
  out.Text("t");
  out.End();
  out.Start("c");
  out.End(2);
  EXPECT_EQ(
      "<?xml version=\"1.0\"?>\n<!DOCTYPE a>\n<!--c-->\n<?p?>\n\n"
      "<a \ns=\"1\"\n><b>t</b><c/></a>",
      out.text());
}

TEST(XmlTextWriter, IndentsWithCharactersOfAnyNumber) {
  for (const std::size_t count : {1u, 2u, 7u, 15u, 16u, 17u, 64u, 100u, 127u, 128u, 129u, 300u}) {
    std::string chars;
    while (chars.size() < count) chars += static_cast<char>('a' + chars.size() % 26);
    Output out;
    out.writer.SetIndentChars("overwritten");
    out.writer.SetIndentChars(chars);
    std::string starts;
    std::string ends;
    std::string indent;
    for (int depth = 0; depth < 40; ++depth) {
      out.Start("e");
      starts += indent + "<e>\n";
      ends = indent + "</e>\n" + ends;
      indent += chars;
    }
    out.writer.WriteTextElement("t", "", "text", kString, false);
    for (int depth = 0; depth < 40; ++depth) out.End();
    EXPECT_EQ(starts + indent + "<t>text</t>\n" + ends, out.text()) << count;
  }
}

TEST(XmlTextWriter, IndentsByDepthWithAnyCharacters) {
  // The lengths are around those of the prepared indents and of a block of the stream.
  for (const std::size_t length : {0u, 1u, 2u, 7u, 63u, 64u, 65u, 127u, 128u, 129u, 1500u}) {
    Output out;
    const std::string indent(length, '.');
    out.writer.SetIndentChars(indent);
    const char* const names[] = {"a", "b", "c", "d"};
    std::string expected;
    for (std::size_t depth = 0; depth < 4; ++depth) {
      out.Start(names[depth]);
      expected += Repeated(indent, depth) + "<" + names[depth] + (depth < 3 ? ">\n" : "/>\n");
    }
    out.End(4);
    for (std::size_t depth = 3; depth-- > 0;) {
      expected += Repeated(indent, depth) + "</" + names[depth] + ">\n";
    }
    EXPECT_EQ(expected, out.text()) << length;
  }
}

TEST(XmlTextWriter, IndentsEveryLevelOfADeepDocument) {
  Output out;
  std::string expected;
  for (std::size_t depth = 0; depth < 300; ++depth) {
    out.Start("a");
    expected += Repeated("\t", depth) + (depth < 299 ? "<a>\n" : "<a/>\n");
  }
  out.End(300);
  for (std::size_t depth = 299; depth-- > 0;) expected += Repeated("\t", depth) + "</a>\n";
  EXPECT_EQ(expected, out.text());
}

TEST(XmlTextWriter, WritesAHundredThousandLevels) {
  constexpr int kDepth = 100000;
  Output out(false);
  for (int depth = 0; depth < kDepth; ++depth) out.Start("a", "urn:a");
  out.End(kDepth);
  out.writer.EndDocument();
  EXPECT_EQ("<AA:a xmlns:AA=\"urn:a\">" + Repeated("<AA:a>", kDepth - 2) + "<AA:a/>" +
                Repeated("</AA:a>", kDepth - 1),
            out.text());
}

TEST(XmlTextWriter, CanBeAbandonedAHundredThousandLevelsDeep) {
  Output out(false);
  for (int depth = 0; depth < 100000; ++depth) out.Start("a");
  EXPECT_QZ_THROW(CQzException, "An Element has not been closed.", out.writer.EndDocument());
}

// ---- Attributes ----

TEST(XmlTextWriter, WritesAttributesInTheOrderOfCalls) {
  Output out;
  out.Start("a");
  out.Attribute("z", "1");
  out.Attribute("b", "");
  out.Attribute("z", "2");
  out.End();
  EXPECT_EQ("<a z=\"1\" b=\"\" z=\"2\"/>\n", out.text());
}

TEST(XmlTextWriter, RefusesAttributesBehindContent) {
  const std::function<void(Output&)> attributes[] = {
      [](Output& out) { out.Attribute("b", "1"); },
      [](Output& out) { out.writer.WriteXsiType("", "t", kString); },
      [](Output& out) { out.writer.WriteXsiType("urn:t", "t", kString); },
      [](Output& out) { out.writer.WriteXsiNil(); },
  };
  const std::function<void(Output&)> contents[] = {
      [](Output& out) { out.Text("t"); },
      [](Output& out) { out.Start("c"), out.End(); },
      [](Output& out) { out.writer.WriteTextElement("c", "", "", kString, false); },
      [](Output& out) { out.writer.CloseOpenStartTag(); },
  };
  for (const auto& attribute : attributes) {
    for (const auto& content : contents) {
      Output out;
      out.writer.StartDocument();
      out.Start("a");
      content(out);
      const std::string before = out.text();
      EXPECT_QZ_THROW(CQzException, "Attributes must be added before elements", attribute(out));
      EXPECT_EQ(before, out.text());
    }
  }
}

TEST(XmlTextWriter, AssertsThatAnElementIsOpen) {
  Output out;
  EXPECT_QZ_ASSERT("m_pContext != 0", out.Text("t"));
  EXPECT_QZ_ASSERT("m_pContext != 0", out.End());
  EXPECT_QZ_ASSERT("m_pContext != 0", out.Attribute("a", "1"));
  EXPECT_QZ_ASSERT("m_pContext != 0", out.writer.WriteXsiType("", "t", kString));
  EXPECT_QZ_ASSERT("m_pContext != 0", out.writer.WriteXsiNil());
  EXPECT_EQ("", out.text());
}

TEST(XmlTextWriter, WritesNothingWithoutAnElementWhereAssertionsAreSilent) {
  const qztest::AssertionRecorder silence;
  Output out;
  out.Text("t");
  out.End();
  const char refusal[] = "Attributes must be added before elements";
  EXPECT_QZ_THROW(CQzException, refusal, out.Attribute("a", "1"));
  EXPECT_QZ_THROW(CQzException, refusal, out.writer.WriteXsiType("", "t", kString));
  EXPECT_QZ_THROW(CQzException, refusal, out.writer.WriteXsiNil());
  EXPECT_EQ("", out.text());
}

// ---- The monitor ----

namespace {

bool DumpHas(const std::string& line) {
  return (CInstanceMonitor::DumpState() + "\n").find("\n" + line + "\n") != std::string::npos;
}

int MadeContexts() {
  const std::string dump = CInstanceMonitor::DumpState();
  const std::size_t place = dump.find("CXmlWriterContext = ");
  return place == std::string::npos ? 0 : std::stoi(dump.substr(dump.find('/', place) + 1));
}

}  // namespace

TEST(XmlTextWriter, IsCountedByTheMonitorWithItsElements) {
  const int before = MadeContexts();
  {
    Output out;
    out.writer.StartDocument();
    EXPECT_NE(std::string::npos, CInstanceMonitor::DumpState().find("--> CXmlTextWriter = 1/"));
    out.Start("r");
    out.Start("a");
    EXPECT_TRUE(DumpHas("--> CXmlWriterContext = 2/" + std::to_string(before + 2)));
    out.End();
    out.writer.WriteTextElement("b", "", "one that is written in one go", kString, false);
    EXPECT_TRUE(DumpHas("--> CXmlWriterContext = 1/" + std::to_string(before + 3)));
    out.End();
    EXPECT_TRUE(DumpHas("    CXmlWriterContext = 0/" + std::to_string(before + 3)));
    out.Start("left open");
  }
  EXPECT_TRUE(DumpHas("    CXmlWriterContext = 0/" + std::to_string(before + 4)));
  EXPECT_NE(std::string::npos, CInstanceMonitor::DumpState().find("    CXmlTextWriter = 0/"));
}

// ---- One document behind another ----

namespace {

// With a prefix that is made, and the one that every document has.
std::string Plain() {
  Output out;
  out.Start("r");
  out.Start("a", "urn:a");
  out.Attribute("lang", "en", kXmlNamespace);
  out.End(2);
  return out.text();
}

constexpr char kPlain[] = "<r>\n\t<AA:a xmlns:AA=\"urn:a\" xml:lang=\"en\"/>\n</r>\n";

}  // namespace

TEST(XmlTextWriter, LeavesNothingOfItsDocumentToTheNextOne) {
  ASSERT_EQ(kPlain, Plain());
  {
    Output out;
    out.writer.AddNamespaceMapping("other", kXmlNamespace);
    out.Start("r");
    out.Attribute("lang", "en", kXmlNamespace);
    out.End();
    EXPECT_EQ("<r other:lang=\"en\"/>\n", out.text());
  }
  EXPECT_EQ(kPlain, Plain());
  {
    Output out;
    out.writer.SetDefaultNamespace("urn:default");
    out.writer.AddNamespaceMapping("b", "urn:b");
    out.Start("r", "urn:default");
    out.Start("a", "urn:a");
    out.writer.AddNamespaceMapping("c", "urn:c");
    out.writer.SetDefaultNamespace("urn:inner");
    out.Start("left open", "urn:b");
  }
  EXPECT_EQ(kPlain, Plain());
  for (const int count : {1, 100}) {
    Output out;
    for (int i = 0; i < count; ++i) {
      const std::string number = std::to_string(i);
      out.writer.AddNamespaceMapping("p" + number, "urn:" + number);
    }
    out.Start(std::string(100000, 'n').c_str(), "urn:0");
    for (int i = 0; i < count; ++i) out.Start("a", ("urn:inner:" + std::to_string(i)).c_str());
    out.End(count + 1);
    EXPECT_EQ(kPlain, Plain()) << count;
  }
}

// The first one has its own when the others begin, and ends behind them.
TEST(XmlTextWriter, HasWhatItBeganWithWhateverOthersWrite) {
  Output first;
  first.Start("r");
  first.Start("a", "urn:a");
  {
    Output others[20];
    for (Output& other : others) other.Start("r", "urn:b");
    EXPECT_EQ(kPlain, Plain());
    for (Output& other : others) {
      other.End();
      EXPECT_EQ("<AA:r xmlns:AA=\"urn:b\"/>\n", other.text());
    }
  }
  first.Attribute("lang", "en", kXmlNamespace);
  first.End(2);
  EXPECT_EQ(kPlain, first.text());
}

// Also what has been made for an earlier document counts anew.
TEST(XmlTextWriter, IsCountedByTheMonitorThatBeginsAgain) {
  ASSERT_EQ(kPlain, Plain());
  CInstanceMonitor::Cleanup();
  Output out;
  out.Start("r");
  EXPECT_TRUE(DumpHas("--> CXmlWriterContext = 1/1"));
}

// ---- Whole documents ----

namespace {

void WriteOrder(CXmlTextWriter& writer) {
  const std::string ns = "urn:example:order";
  const std::string money = "urn:example:money";
  writer.StartDocument();
  writer.WriteXmlDeclaration();
  writer.WriteComment("made by hand & by a writer");
  writer.WriteProcessingInstruction("<?xml-stylesheet href=\"order.css\"?>");
  writer.SetDefaultNamespace(ns);
  writer.AddNamespaceMapping("xsi", kXmlSchemaInstanceNamespace);
  writer.AddNamespaceMapping("m", money);
  writer.WriteStartElement("order", ns);
  writer.WriteAttribute("number", "", "7", ItemType_i4);
  writer.WriteAttribute("note", "", "say \"hi\"\n& go", kString);
  writer.WriteStartElement("customer", ns);
  writer.WriteXsiType("urn:example:people", "Company", kString);
  writer.WriteTextElement("name", ns, "M\xC3\xBCller & S\xC3\xB6hne", kString, false);
  writer.WriteTextElement("fax", ns, "", kString, false);
  writer.WriteEndElement();
  for (const char* price : {"1.50", "2.25"}) {
    writer.WriteStartElement("item", ns);
    writer.WriteAttribute("lang", kXmlNamespace, "en", kString);
    writer.WriteTextElement("price", money, price, ItemType_decimal, false);
    writer.WriteStartElement("remark", "");
    writer.WriteText("line 1\nline 2", kString, false);
    writer.WriteEndElement();
    writer.WriteStartElement("size", "urn:example:size");
    writer.WriteXsiNil();
    writer.WriteEndElement();
    writer.WriteEndElement();
  }
  writer.WriteStartElement("script", ns);
  writer.WriteText("<![CDATA[if (a < b && c) d();]]>", kString, false);
  writer.WriteEndElement();
  writer.WriteEndElement();
  writer.EndDocument();
}

}  // namespace

TEST(XmlTextWriter, WritesTheGoldenDocuments) {
  struct Case {
    const char* file;
    bool formatted;
    EOLType eol;
    const char* indent;
  };
  const Case cases[] = {
      {"writer-tabs-lf.xml", true, EOLType_LF, "\t"},
      {"writer-blanks-crlf.xml", true, EOLType_CRLF, "  "},
      {"writer-plain.xml", false, EOLType_LF, "\t"},
  };
  for (const Case& c : cases) {
    CTextStream stream(XmlEncoding_UTF8);
    CXmlTextWriter writer(&stream);
    writer.SetFormatted(c.formatted);
    writer.SetEOLType(c.eol);
    writer.SetIndentChars(c.indent);
    WriteOrder(writer);
    EXPECT_EQ(Golden(c.file), stream.GetBuffer()) << c.file;
  }
}
