#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "qzxml/xml/XmlTextWriter.h"
#include "tests/support/QzTest.h"
#include "tests/xml/XmlTextWriterOutput.h"

using namespace QzXmlLib16;
using namespace qztest;

namespace {

// A writer whose EOL type has been damaged.
class DamagedWriter : public CXmlTextWriter {
 public:
  explicit DamagedWriter(CTextStream* stream) : CXmlTextWriter(stream) {
    m_eolType = static_cast<EOLType>(2);
  }
};

}  // namespace

// ---- Escaping ----

namespace {

// What a byte becomes, told apart from the writer. No entry for zero and carriage return.
std::string EscapedByte(int byte, bool inAttribute, const std::string& eol) {
  switch (byte) {
    case 10:
      return inAttribute ? "&#xA;" : eol;
    case 34:
      return inAttribute ? "&quot;" : "\"";
    case 38:
      return "&amp;";
    case 60:
      return "&lt;";
    case 62:
      return "&gt;";
    default:
      return std::string(1, static_cast<char>(byte));
  }
}

}  // namespace

TEST(XmlTextWriterText, EscapesEveryByteInTextsAndValuesAtEveryPlaceOfEveryLength) {
  for (int byte = 1; byte < 256; ++byte) {
    if (byte == 13) continue;
    const EOLType type = byte % 2 == 0 ? EOLType_CRLF : EOLType_LF;
    const std::string eol = type == EOLType_CRLF ? "\r\n" : "\n";
    const std::string inText = EscapedByte(byte, false, eol);
    const std::string inValue = EscapedByte(byte, true, eol);
    Output out(false);
    out.writer.SetEOLType(type);
    std::string expected = "<r>";
    out.Start("r");
    for (std::size_t length = 1; length <= 36; ++length) {
      for (std::size_t place = 0; place < length; ++place) {
        std::string text(length, 'x');
        text[place] = static_cast<char>(byte);
        const std::string before(place, 'x');
        const std::string behind(length - place - 1, 'x');
        out.Start("a");
        out.Attribute("b", text);
        out.Text(text);
        out.End();
        expected +=
            "<a b=\"" + before + inValue + behind + "\">" + before + inText + behind + "</a>";
      }
    }
    out.End();
    ASSERT_EQ(expected + "</r>", out.text()) << byte;
  }
}

TEST(XmlTextWriterText, EscapesWholeTexts) {
  struct Case {
    std::string text;
    std::string inText;
    std::string inValue;
  };
  const Case cases[] = {
      {"a<b>c&d\"e'f", "a&lt;b&gt;c&amp;d\"e'f", "a&lt;b&gt;c&amp;d&quot;e'f"},
      {"&amp;", "&amp;amp;", "&amp;amp;"},
      {"\n\n", "\r\n\r\n", "&#xA;&#xA;"},
      {"\t\v\x01\x1F\x7F", "\t\v\x01\x1F\x7F", "\t\v\x01\x1F\x7F"},
      {"\x80\xC3\xBC\xFF\xA0", "\x80\xC3\xBC\xFF\xA0", "\x80\xC3\xBC\xFF\xA0"},
      {"]]>", "]]&gt;", "]]&gt;"},
      {std::string("before\0behind", 13), "before", "before"},
      {std::string("a\0<", 3), "a", "a"},
      {"<&><&>\"\"<&><&>", "&lt;&amp;&gt;&lt;&amp;&gt;\"\"&lt;&amp;&gt;&lt;&amp;&gt;",
       "&lt;&amp;&gt;&lt;&amp;&gt;&quot;&quot;&lt;&amp;&gt;&lt;&amp;&gt;"},
  };
  for (const Case& c : cases) {
    Output out(false);
    out.writer.SetEOLType(EOLType_CRLF);
    out.Start("a");
    out.Attribute("b", c.text);
    out.Text(c.text);
    out.End();
    EXPECT_EQ("<a b=\"" + c.inValue + "\">" + c.inText + "</a>", out.text()) << c.text;
  }
}

TEST(XmlTextWriterText, ClosesTheStartTagForATextThatIsAZeroByte) {
  Output out(false);
  out.Start("a");
  out.Text(std::string(1, '\0'));
  out.End();
  EXPECT_EQ("<a></a>", out.text());
}

TEST(XmlTextWriterText, WritesACDataSectionAsItStands) {
  const std::pair<const char*, const char*> cases[] = {
      {"<![CDATA[a<b&c\n\"]]>", "<a><![CDATA[a<b&c\n\"]]></a>"},
      {"<![CDATA[", "<a><![CDATA[</a>"},  // meant: nothing more is checked
      {"<![CDATA[a]]> & b", "<a><![CDATA[a]]> & b</a>"},
      {" <![CDATA[a]]>", "<a> &lt;![CDATA[a]]&gt;</a>"},
      {"<![CDATA", "<a>&lt;![CDATA</a>"},
      {"<![cdata[a]]>", "<a>&lt;![cdata[a]]&gt;</a>"},
  };
  for (const auto& [text, expected] : cases) {
    Output out(false);
    out.writer.SetEOLType(EOLType_CRLF);
    out.Start("a");
    out.Text(text);
    out.End();
    EXPECT_EQ(expected, out.text());
  }
}

TEST(XmlTextWriterText, AssertsOnACarriageReturnOfACaller) {
  Output out;
  EXPECT_QZ_ASSERT("false", out.writer.WriteComment("a\rb"));
  out.Start("a");
  EXPECT_QZ_ASSERT("false", out.Attribute("b", "1\r2"));
  EXPECT_QZ_ASSERT("false", out.Text("1\r2"));
  out.writer.StartDocument();
  EXPECT_QZ_ASSERT("false", out.writer.WriteTextElement("c", "", "1\r2", kString, false));
}

TEST(XmlTextWriterText, DropsACarriageReturn) {
  const qztest::AssertionRecorder recorder;
  Output out(false);
  out.writer.SetEOLType(EOLType_CRLF);
  out.Start("a");
  out.Attribute("b", "\r1\r\n2\r");
  out.Text("\r1\r\n2\r");
  out.End();
  EXPECT_EQ("<a b=\"1&#xA;2\">1\r\n2</a>", out.text());
#if defined(QZXML_ASSERTIONS)
  EXPECT_EQ(std::vector<std::string>(6, "false"), recorder.conditions());
#endif
}

TEST(XmlTextWriterText, DropsACarriageReturnOfADocumentInSilence) {
  const qztest::AssertionRecorder recorder;
  Output out(false);
  const CXmlWriter::CDocumentValues values(&out.writer);
  out.Start("a");
  out.Attribute("b", "\r1\r\n2\r");
  out.Text("\r1\r\n2\r");
  out.End();
  EXPECT_EQ("<a b=\"1&#xA;2\">1\n2</a>", out.text());
  EXPECT_TRUE(recorder.conditions().empty());
}

TEST(XmlTextWriterText, PassesACarriageReturnInACDataSection) {
  Output out(false);
  out.Start("a");
  out.Text("<![CDATA[\r]]>");
  out.End();
  EXPECT_EQ("<a><![CDATA[\r]]></a>", out.text());
}

TEST(XmlTextWriterText, RefusesALineFeedWhenItsEolTypeIsDamaged) {
  CTextStream stream;
  DamagedWriter writer(&stream);
  writer.WriteStartElement("a", "");
  writer.WriteAttribute("b", "", "1\n2", kString);
  writer.WriteText("no line end", kString, false);
  EXPECT_QZ_THROW(CQzException, "Invalid EOL type.", writer.WriteText("1\n2", kString, false));
  EXPECT_QZ_THROW(CQzException, "Invalid EOL type.",
                  writer.WriteTextElement("c", "", "1\n2", kString, false));
}

// ---- Blocks of the stream ----

TEST(XmlTextWriterText, WritesTheSameAcrossTheEndOfABlock) {
  const std::string expected =
      "<AA:element xmlns:AA=\"urn:a\" attribute=\"a &lt; value\" AA:b=\"\">text &amp; more text\n"
      "\t<AA:child>text only</AA:child>\n\t<empty/>\n</AA:element>\n";
  for (std::size_t filled = 3900; filled <= 4100; ++filled) {
    Output out;
    out.writer.StartDocument();
    const std::string filler(filled, '.');
    out.stream.Put(filler);
    out.Start("element", "urn:a");
    out.Attribute("attribute", "a < value");
    out.Attribute("b", "", "urn:a");
    out.Text("text & more text\n");
    out.writer.WriteTextElement("child", "urn:a", "text only", kString, false);
    out.writer.WriteTextElement("empty", "", "", kString, false);
    out.End();
    ASSERT_EQ(filler + expected, out.text()) << filled;
  }
}

TEST(XmlTextWriterText, WritesNamesUrisAndValuesLongerThanABlock) {
  const std::string longName(5000, 'n');
  const std::string longUri(6000, 'u');
  const std::string longText(100000, 't');
  Output out(false);
  out.writer.WriteStartElement(longName, longUri);
  out.writer.WriteAttribute(longName, "", longText, kString);
  out.writer.WriteTextElement(longName, longUri, "<" + longText + "&", kString, false);
  out.End();
  EXPECT_EQ("<AA:" + longName + " xmlns:AA=\"" + longUri + "\" " + longName + "=\"" + longText +
                "\"><AA:" + longName + ">&lt;" + longText + "&amp;</AA:" + longName +
                "></AA:" + longName + ">",
            out.text());
}

TEST(XmlTextWriterText, WritesALongTextThatIsEscapedAtEveryByte) {
  Output out(false);
  out.Start("a");
  out.Text(std::string(300000, '&'));
  out.End();
  EXPECT_EQ("<a>" + Repeated("&amp;", 300000) + "</a>", out.text());
}
