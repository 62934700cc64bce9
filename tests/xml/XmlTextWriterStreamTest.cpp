#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "qzxml/values/QzVariant.h"
#include "qzxml/xml/XmlTextWriter.h"
#include "tests/support/QzTest.h"
#include "tests/xml/XmlTextWriterOutput.h"

using namespace QzXmlLib16;
using namespace qztest;

// ---- Flushing ----

namespace {

struct Operation {
  const char* name;
  bool inElement;  // needs an open element
  bool flushes;
  std::function<void(CXmlTextWriter&)> run;
};

const Operation kOperations[] = {
    {"WriteXmlDeclaration", false, true, [](auto& w) { w.WriteXmlDeclaration(); }},
    {"WriteDirective", false, true, [](auto& w) { w.WriteDirective("<!DOCTYPE a>"); }},
    {"WriteComment", false, true, [](auto& w) { w.WriteComment("text"); }},
    {"WriteProcessingInstruction", false, true,
     [](auto& w) { w.WriteProcessingInstruction("<?p?>"); }},
    {"WriteStartElement of a root", false, true, [](auto& w) { w.WriteStartElement("a", "u"); }},
    {"WriteInlineSchema", true, true, [](auto& w) { w.WriteInlineSchema("a=\"1\""); }},
    {"WriteStartElement", true, true, [](auto& w) { w.WriteStartElement("a", ""); }},
    {"WriteAttribute", true, true, [](auto& w) { w.WriteAttribute("a", "", "1", kString); }},
    {"WriteXsiType", true, true, [](auto& w) { w.WriteXsiType("", "t", kString); }},
    {"WriteXsiNil", true, true, [](auto& w) { w.WriteXsiNil(); }},
    {"WriteText", true, true, [](auto& w) { w.WriteText("text", kString, false); }},
    {"WriteText of CDATA", true, true,
     [](auto& w) { w.WriteText("<![CDATA[text]]>", kString, false); }},
    {"WriteEndElement", true, true, [](auto& w) { w.WriteEndElement(); }},
    {"WriteRawLine", false, false, [](auto& w) { w.WriteRawLine("<a/>"); }},
    {"CloseOpenStartTag", true, false, [](auto& w) { w.CloseOpenStartTag(); }},
    {"empty WriteText", true, false, [](auto& w) { w.WriteText("", kString, false); }},
};

// What an operation asks of its stream when that holds so many bytes at its end.
std::string CallsOf(const Operation& operation, std::size_t bytesAtEnd) {
  CTextStream trial;
  RecordingStream stream;
  CXmlTextWriter trialWriter(&trial);
  CXmlTextWriter writer(&stream);
  if (operation.inElement) {
    trialWriter.WriteStartElement("e", "");
    writer.WriteStartElement("e", "");
  }
  operation.run(trialWriter);
  stream.Put(std::string(bytesAtEnd - trial.GetLength(), '.'));
  operation.run(writer);
  EXPECT_EQ(bytesAtEnd, stream.GetLength());
  return stream.calls;
}

}  // namespace

TEST(XmlTextWriterStream, FlushesAtTheEndOfEachOperationThatFindsAPageOfBytes) {
  for (const Operation& operation : kOperations) {
    EXPECT_EQ("", CallsOf(operation, 4095)) << operation.name;
    EXPECT_EQ(operation.flushes ? "Flush(4096) " : "", CallsOf(operation, 4096)) << operation.name;
    EXPECT_EQ(operation.flushes ? "Flush(9000) " : "", CallsOf(operation, 9000)) << operation.name;
  }
}

TEST(XmlTextWriterStream, FlushesOnlyBetweenOperationsHoweverLongTheyAre) {
  EmptyingStream stream;
  CXmlTextWriter writer(&stream);
  writer.StartDocument();
  writer.WriteStartElement("a", "");
  writer.WriteText(std::string(10000, 't'), kString, false);
  writer.WriteEndElement();
  writer.EndDocument();
  EXPECT_EQ((std::vector<std::size_t>{10003}), stream.sizes);
  EXPECT_STREQ("</a>\n", stream.GetBuffer());
}

TEST(XmlTextWriterStream, TakesAnElementForNotBegunWhoseStartTagTheStreamRefused) {
  FailingStream stream;
  CXmlTextWriter writer(&stream);
  stream.Put(std::string(4096, '.'));
  EXPECT_QZ_THROW(CQzException, "the disk is full", writer.WriteStartElement("a", "urn:a"));
  writer.EndDocument();

  stream.fails = false;
  writer.StartDocument();
  writer.WriteStartElement("r", "");
  stream.Put(std::string(4096, '.'));
  stream.fails = true;
  EXPECT_QZ_THROW(CQzException, "the disk is full", writer.WriteStartElement("a", "urn:a"));
  stream.fails = false;
  writer.StartDocument();
  writer.WriteStartElement("b", "urn:b");
  writer.WriteEndElement();
  writer.WriteEndElement();
  EXPECT_STREQ("\t<AA:b xmlns:AA=\"urn:b\"/>\n</r>\n", stream.GetBuffer());
}

TEST(XmlTextWriterStream, KeepsAnElementOpenWhoseEndTagTheStreamRefused) {
  FailingStream stream;
  CXmlTextWriter writer(&stream);
  stream.fails = false;
  writer.WriteStartElement("a", "");
  stream.Put(std::string(4096, '.'));
  stream.fails = true;
  EXPECT_QZ_THROW(CQzException, "the disk is full", writer.WriteEndElement());
  EXPECT_QZ_THROW(CQzException, "An Element has not been closed.", writer.EndDocument());
}

TEST(XmlTextWriterStream, WritesADocumentThroughAStreamThatIsEmptiedAtEachFlush) {
  EmptyingStream stream;
  CXmlTextWriter writer(&stream);
  writer.StartDocument();
  writer.WriteStartElement("list", "");
  std::string expected = "<list>\n";
  for (int i = 0; i < 1000; ++i) {
    writer.WriteTextElement("item", "", "value " + std::to_string(i), kString, false);
    expected += "\t<item>value " + std::to_string(i) + "</item>\n";
  }
  writer.WriteEndElement();
  ASSERT_FALSE(stream.sizes.empty());
  std::size_t before = 0;
  for (const std::size_t size : stream.sizes) {
    EXPECT_GE(size - before, 4096u);
    EXPECT_LT(size - before, 4096u + std::string("\t<item>value 999</item>\n").size());
    before = size;
  }
  EXPECT_EQ(expected + "</list>\n", stream.flushed + stream.GetBuffer());
}

// ---- Elements with nothing but a text ----

// Writes text elements in every relation to the namespaces around them.
static void WriteTextElements(CXmlTextWriter& writer, const std::string& text, bool isDefault,
                              const std::string& name = "name") {
  writer.StartDocument();
  writer.SetDefaultNamespace("urn:d");
  writer.AddNamespaceMapping("p", "urn:p");
  writer.WriteTextElement("first", "urn:p", text, kString, isDefault);  // a root
  writer.WriteStartElement("root", "urn:r");
  for (const char* uri : {"", "urn:d", "urn:r", "urn:p", "urn:unknown"}) {
    writer.WriteTextElement(name, uri, text, kString, isDefault);
  }
  writer.WriteStartElement("inner", "urn:unknown");
  writer.WriteTextElement(name, "urn:unknown", text, kString, isDefault);
  writer.SetDefaultNamespace("urn:unknown");
  writer.WriteTextElement(name, "urn:unknown", text, kString, isDefault);
  writer.WriteTextElement(name, "urn:d", text, kString, isDefault);
  writer.WriteEndElement();
  writer.WriteTextElement(name, "urn:r", text, kString, isDefault);
  writer.WriteEndElement();
}

TEST(XmlTextWriterStream, WritesATextElementAsItsThreeCallsDo) {
  const std::string texts[] = {
      "",
      "1",
      "plain text",
      "a < b",
      "l1\nl2\n",
      "\r1\r\n2\r",
      "<![CDATA[<]]>",
      "<b>",
      "\"'\t\x01\x7F\xC3\xBC",
      std::string("a\0b", 3),
      std::string("\0", 1),
      std::string("a&b\0c", 5),
      Repeated("&", 6),
      Repeated("&", 7),
      Repeated("ab > c\n", 8),
      std::string(5000, 'x'),
      std::string(5000, '&'),
  };
  const qztest::AssertionRecorder silence;  // on the carriage returns
  for (const std::string& text : texts) {
    for (int options = 0; options < 16; ++options) {
      CTextStream shortStream;
      CTextStream longStream;
      CXmlTextWriter shortWay(&shortStream);
      LongWayWriter longWay(&longStream);
      for (CXmlTextWriter* writer : {&shortWay, static_cast<CXmlTextWriter*>(&longWay)}) {
        writer->SetFormatted((options & 1) != 0);
        writer->SetWriteDefaultValues((options & 2) != 0);
        writer->SetEOLType((options & 4) != 0 ? EOLType_CRLF : EOLType_LF);
        WriteTextElements(*writer, text, (options & 8) != 0);
      }
      EXPECT_EQ(std::string(longStream.GetBuffer()), shortStream.GetBuffer())
          << text.substr(0, 20) << " " << options;
    }
  }
}

TEST(XmlTextWriterStream, FlushesATextElementWhereItsThreeCallsWould) {
  for (std::size_t filled = 4060; filled <= 4100; ++filled) {
    RecordingStream shortStream;
    RecordingStream longStream;
    CXmlTextWriter shortWay(&shortStream);
    LongWayWriter longWay(&longStream);
    const std::pair<CXmlTextWriter*, RecordingStream*> both[] = {{&shortWay, &shortStream},
                                                                 {&longWay, &longStream}};
    for (const auto& [writer, stream] : both) {
      writer->StartDocument();
      writer->WriteStartElement("r", "");
      stream->Put(std::string(filled - 2, '.'));
      writer->WriteTextElement("element", "", "text", kString, false);
    }
    EXPECT_EQ(longStream.calls, shortStream.calls) << filled;
    EXPECT_EQ(std::string(longStream.GetBuffer()), shortStream.GetBuffer()) << filled;
  }
}

TEST(XmlTextWriterStream, WritesATextElementInTheNamespaceOfItsParent) {
  Output out;
  out.writer.StartDocument();
  out.Start("r", "urn:r");
  out.writer.WriteTextElement("a", "urn:r", "1", kString, false);
  out.writer.WriteTextElement("b", "urn:r", "", kString, false);
  out.writer.WriteTextElement("c", "urn:r", "a & b", kString, false);
  out.writer.WriteTextElement("d", "urn:d", "2", kString, false);
  out.End();
  EXPECT_EQ(
      "<AA:r xmlns:AA=\"urn:r\">\n\t<AA:a>1</AA:a>\n\t<AA:b/>\n\t<AA:c>a &amp; b</AA:c>\n"
      "\t<AB:d xmlns:AB=\"urn:d\">2</AB:d>\n</AA:r>\n",
      out.text());
}

TEST(XmlTextWriterStream, CallsTheOperationsOfADerivedClassForATextElement) {
  class Shouting : public CXmlTextWriter {
   public:
    using CXmlTextWriter::CXmlTextWriter;
    void WriteText(const std::string& text, ItemType type, bool isDefault) override {
      CXmlTextWriter::WriteText(text + "!", type, isDefault);
    }
  };
  CTextStream stream;
  Shouting writer(&stream);
  writer.StartDocument();
  writer.WriteStartElement("r", "");
  writer.WriteTextElement("a", "", "1", kString, false);
  writer.WriteEndElement();
  EXPECT_STREQ("<r>\n\t<a>1!</a>\n</r>\n", stream.GetBuffer());
}

TEST(XmlTextWriterStream, WritesNamesOfAnyLengthAsTheLongWayDoes) {
  for (std::size_t length = 1; length <= 70; ++length) {
    CTextStream shortStream;
    CTextStream longStream;
    CXmlTextWriter shortWay(&shortStream);
    LongWayWriter longWay(&longStream);
    for (CXmlTextWriter* writer : {&shortWay, static_cast<CXmlTextWriter*>(&longWay)}) {
      WriteTextElements(*writer, std::string(length, 't'), false, std::string(length, 'n'));
    }
    EXPECT_EQ(std::string(longStream.GetBuffer()), shortStream.GetBuffer()) << length;
  }
}

TEST(XmlTextWriterStream, OffersTheShortWaysForAPlainWriterWhoseDocumentHasBegun) {
  CTextStream stream;
  CXmlTextWriter writer(&stream);
  EXPECT_EQ(nullptr, writer.GetPlainTextWriter());
  writer.StartDocument();
  EXPECT_EQ(&writer, writer.GetPlainTextWriter());
  LongWayWriter derived(&stream);
  derived.StartDocument();
  EXPECT_EQ(nullptr, derived.GetPlainTextWriter());
}

// ---- Attributes in no namespace ----

TEST(XmlTextWriterStream, WritesAnAttributeInOneGoWhereNothingIsToBeEscaped) {
  for (std::size_t length = 0; length <= 70; ++length) {
    const std::string name(length % 20 + 1, 'n');
    const std::string value(length, 'v');
    CTextStream stream;
    CXmlTextWriter writer(&stream);
    writer.StartDocument();
    writer.WriteStartElement("a", "");
    EXPECT_TRUE(writer.PutPlainAttribute(name, value));
    EXPECT_TRUE(writer.PutPlainAttribute("b", "'\t\x7F\xC3\xBC"));
    writer.WriteEndElement();
    EXPECT_EQ("<a " + name + "=\"" + value + "\" b=\"'\t\x7F\xC3\xBC\"/>\n",
              std::string(stream.GetBuffer()));
  }
}

TEST(XmlTextWriterStream, LeavesEveryOtherAttributeToTheLongWay) {
  CTextStream stream;
  CXmlTextWriter writer(&stream);
  writer.StartDocument();
  EXPECT_FALSE(writer.PutPlainAttribute("b", "1"));  // no element
  writer.WriteStartElement("a", "");
  for (std::size_t at = 0; at < 40; ++at) {
    for (const char special : {'&', '<', '>', '"', '\n', '\r', '\0'}) {
      std::string value(40, 'v');
      value[at] = special;
      EXPECT_FALSE(writer.PutPlainAttribute("b", value)) << at;
    }
  }
  EXPECT_FALSE(writer.PutPlainAttribute("b", std::string(5000, 'v')));  // no room in a block
  EXPECT_FALSE(writer.PutPlainAttribute(std::string(5000, 'n'), "1"));
  EXPECT_STREQ("<a", stream.GetBuffer());
  writer.WriteText("t", kString, false);
  EXPECT_FALSE(writer.PutPlainAttribute("b", "1"));  // behind content
  EXPECT_STREQ("<a>t", stream.GetBuffer());
}

TEST(XmlTextWriterStream, LeavesAnAttributeThatBringsAFlushToTheLongWay) {
  for (std::size_t filled = 4000; filled <= 4100; ++filled) {
    RecordingStream stream;
    CXmlTextWriter writer(&stream);
    writer.StartDocument();
    writer.WriteStartElement("r", "");
    stream.Put(std::string(filled - 2, '.'));
    const std::string before = stream.calls;
    const bool done = writer.PutPlainAttribute("name", "value");
    EXPECT_EQ(before, stream.calls);
    EXPECT_EQ(filled + (done ? sizeof(" name=\"value\"") - 1 : 0), stream.GetLength());
    EXPECT_TRUE(done || filled > 4040) << filled;
    EXPECT_TRUE(!done || stream.GetLength() < 4096) << filled;
  }
}

// ---- Values ----

TEST(XmlTextWriterStream, WritesAValueAsItsText) {
  struct Case {
    const char* text;
    std::function<void(QzVariant&)> set;
  };
  const Case cases[] = {
      {"-2147483648", [](QzVariant& v) { v.SetI4(-2147483647 - 1); }},
      {"18446744073709551615", [](QzVariant& v) { v.SetUI8(18446744073709551615U); }},
      {"-100", [](QzVariant& v) { v.SetI1(-100); }},
      {"1866.65", [](QzVariant& v) { v.SetR8(1866.65); }},
      {"-1.797693134862316e+308", [](QzVariant& v) { v.SetR8(-1.7976931348623157e308); }},
      {"0.5", [](QzVariant& v) { v.SetR4(0.5F); }},
      {"NaN", [](QzVariant& v) { v.SetR8(std::nan("")); }},
      {"true", [](QzVariant& v) { v.SetBoolean(true); }},
      {"1999", [](QzVariant& v) { v.SetYear(1999); }},
      {"--02", [](QzVariant& v) { v.SetMonth(2); }},
      {"---09", [](QzVariant& v) { v.SetDay(9); }},
      {"some text", [](QzVariant& v) { v.SetString("some text"); }},
  };
  for (const Case& c : cases) {
    QzVariant value;
    c.set(value);
    Output out;
    out.writer.StartDocument();
    out.Start("a");
    EXPECT_TRUE(out.writer.PutValueAttribute("b", value, "")) << c.text;
    EXPECT_TRUE(out.writer.PutValueElement("c", "", value, "")) << c.text;
    out.End();
    EXPECT_EQ("<a b=\"" + std::string(c.text) + "\">\n\t<c>" + c.text + "</c>\n</a>\n", out.text());
  }
}

TEST(XmlTextWriterStream, LeavesAValueWithAFormatAndASingleCharToTheLongWay) {
  Output out;
  out.writer.StartDocument();
  out.Start("a");
  QzVariant value;
  value.SetR8(0.5);
  EXPECT_FALSE(out.writer.PutValueAttribute("b", value, "%.2f"));
  EXPECT_FALSE(out.writer.PutValueElement("c", "", value, "%.2f"));
  value.SetChar('&');
  EXPECT_FALSE(out.writer.PutValueAttribute("b", value, ""));
  EXPECT_FALSE(out.writer.PutValueElement("c", "", value, ""));
  value.SetHexBinary(CBinaryData());
  EXPECT_FALSE(out.writer.PutValueAttribute("b", value, ""));
  EXPECT_FALSE(out.writer.PutValueElement("c", "", value, ""));
  value.SetString("<![CDATA[<]]>");
  EXPECT_FALSE(out.writer.PutValueElement("c", "", value, ""));
  EXPECT_EQ("<a", out.text());
}
