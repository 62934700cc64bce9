#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "qzxml/json/JsonTextWriter.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/runtime/TextStream.h"
#include "qzxml/xml/XmlNamespaces.h"
#include "tests/support/LiveCounts.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using JsonTextWriter = qztest::NothingLeftBehind;

constexpr std::uint32_t kPending = 1;
constexpr std::uint32_t kClosing = 3;

struct Options {
  JsonRoundTrip roundTrip = JsonRoundTrip_Full;
  bool formatted = false;
  EOLType eol = EOLType_LF;
};

// The document that the calls write, within its frame.
std::string Written(const Options& options, const std::function<void(CJsonTextWriter&)>& calls) {
  CTextStream stream;
  CJsonTextWriter writer(&stream);
  writer.StartDocument();
  writer.SetFormatted(options.formatted);
  writer.SetEOLType(options.eol);
  writer.SetRoundtrip(options.roundTrip);
  writer.WriteDocumentStart();
  calls(writer);
  writer.WriteDocumentEnd();
  writer.EndDocument();
  return stream.TakeText();
}

std::string Written(const std::function<void(CJsonTextWriter&)>& calls) {
  return Written(Options(), calls);
}

std::string Formatted(const std::function<void(CJsonTextWriter&)>& calls) {
  Options options;
  options.formatted = true;
  return Written(options, calls);
}

std::string WithRoundTrip(JsonRoundTrip roundTrip,
                          const std::function<void(CJsonTextWriter&)>& calls) {
  Options options;
  options.roundTrip = roundTrip;
  return Written(options, calls);
}

void Element(CJsonTextWriter& writer, const std::string& name, const std::string& text,
             ItemType type) {
  writer.WriteStartElement(name, "");
  writer.WriteText(text, type, false);
  writer.WriteEndElement();
}

// ---- Options ----

TEST_F(JsonTextWriter, StartsWithTabsLineFeedsAndAllOfXml) {
  CTextStream stream;
  const CJsonTextWriter writer(&stream);
  EXPECT_TRUE(writer.GetFormatted());
  EXPECT_EQ(EOLType_LF, writer.GetEOLType());
  EXPECT_EQ(JsonRoundTrip_Full, writer.GetRoundtrip());
  EXPECT_EQ("\t", writer.GetIndentChars());
}

TEST_F(JsonTextWriter, RefusesAnUnknownLineEndAndKeepsTheOldOne) {
  CTextStream stream;
  CJsonTextWriter writer(&stream);
  writer.SetEOLType(EOLType_CRLF);
  for (const int type : {-1, 2, 100}) {
    EXPECT_QZ_THROW(CQzException, "Invalid EOL type.",
                    writer.SetEOLType(static_cast<EOLType>(type)));
  }
  EXPECT_EQ(EOLType_CRLF, writer.GetEOLType());
}

TEST_F(JsonTextWriter, IndentsWithTheCharactersThatAreSet) {
  CTextStream stream;
  CJsonTextWriter writer(&stream);
  writer.StartDocument();
  writer.SetIndentChars("..");
  writer.WriteDocumentStart();
  Element(writer, "a", "5", ItemType_i4);
  writer.WriteDocumentEnd();
  EXPECT_EQ("{\n..\"a\": 5\n}", stream.TakeText());
  writer.SetIndentChars(nullptr);
  EXPECT_EQ("", writer.GetIndentChars());
}

#ifdef QZXML_ASSERTIONS
TEST_F(JsonTextWriter, AssertsItsCallersOrder) {
  CTextStream stream;
  CJsonTextWriter writer(&stream);
  EXPECT_QZ_ASSERT("m_pContext != 0", writer.WriteText("x", ItemType_string, false));
  EXPECT_QZ_ASSERT("m_pContext != 0", writer.WriteEndElement());
  EXPECT_QZ_ASSERT("m_pContext != 0", writer.WriteAttribute("a", "", "x", ItemType_string));
  EXPECT_QZ_ASSERT("m_pContext != 0", writer.WriteXsiType("", "t", ItemType_string));
  writer.WriteStartElement("a", "");
  EXPECT_QZ_ASSERT("m_pContext == 0", writer.SetFormatted(false));
  EXPECT_QZ_ASSERT("m_pContext == 0", writer.WriteDocumentStart());
  EXPECT_QZ_ASSERT("false", writer.WriteText("a\rb", ItemType_string, false));
  writer.AddNamespaceMapping("", "urn:empty");
  EXPECT_QZ_ASSERT("m_pContext->GetNamespaceMapValue(strNamespace).length() != 0",
                   writer.WriteAttribute("a", "urn:empty", "x", ItemType_string));
  EXPECT_QZ_ASSERT("m_pContext->GetNamespaceMapValue(strElementNamespace).length() != 0",
                   writer.WriteXsiType("urn:empty", "t", ItemType_string));
}
#else
TEST_F(JsonTextWriter, WritesNothingWithoutAnElement) {
  CTextStream stream;
  CJsonTextWriter writer(&stream);
  writer.WriteText("x", ItemType_string, false);
  writer.WriteEndElement();
  writer.WriteAttribute("a", "", "x", ItemType_string);
  writer.WriteXsiType("", "t", ItemType_string);
  EXPECT_EQ("", stream.TakeText());
}

TEST_F(JsonTextWriter, DropsACarriageReturn) {
  EXPECT_EQ("{\"a\": \"xy\"}",
            Written([](CJsonTextWriter& w) { Element(w, "a", "x\ry", ItemType_string); }));
}

TEST_F(JsonTextWriter, WritesAnEmptyAliasAsItStands) {
  EXPECT_EQ("{\"a\": {\"@:x\": \"1\"}}", Written([](CJsonTextWriter& w) {
              w.WriteStartElement("a", "");
              w.AddNamespaceMapping("", "urn:empty");
              w.WriteAttribute("x", "urn:empty", "1", ItemType_string);
              w.WriteEndElement();
            }));
}
#endif

TEST_F(JsonTextWriter, DropsACarriageReturnOfADocumentInSilence) {
  EXPECT_EQ("{\"a\": \"xy\"}", Written([](CJsonTextWriter& w) {
              const CXmlWriter::CDocumentValues values(&w);
              Element(w, "a", "x\ry", ItemType_string);
            }));
}

// ---- Elements and values ----

TEST_F(JsonTextWriter, WritesASimpleElementAsAMember) {
  const auto calls = [](CJsonTextWriter& w) { Element(w, "a", "5", ItemType_i4); };
  EXPECT_EQ("{\n\t\"a\": 5\n}", Formatted(calls));
  EXPECT_EQ("{\"a\": 5}", Written(calls));
}

TEST_F(JsonTextWriter, WritesAttributesAndTextAsMembers) {
  const auto calls = [](CJsonTextWriter& w) {
    w.WriteStartElement("a", "");
    w.WriteAttribute("x", "", "1", ItemType_i4);
    w.WriteText("v", ItemType_string, false);
    w.WriteEndElement();
  };
  EXPECT_EQ("{\n\t\"a\": {\n\t\t\"@x\": 1,\n\t\t\"#text\": \"v\"\n\t}\n}", Formatted(calls));
  EXPECT_EQ("{\"a\": {\"@x\": 1,\"#text\": \"v\"}}", WithRoundTrip(JsonRoundTrip_Full, calls));
  EXPECT_EQ("{\"a\": {\"@x\": 1,\"#text\": \"v\"}}", WithRoundTrip(JsonRoundTrip_Marked, calls));
  EXPECT_EQ("{\"a\": {\"x\": 1,\"\": \"v\"}}", WithRoundTrip(JsonRoundTrip_None, calls));
}

TEST_F(JsonTextWriter, QuotesTheKindsThatAreNoNumbers) {
  const struct {
    ItemType type;
    bool bare;
  } cases[] = {
      {ItemType_hexBinary, false}, {ItemType_base64Binary, false},
      {ItemType_i1, true},         {ItemType_i2, true},
      {ItemType_i4, true},         {ItemType_i8, true},
      {ItemType_ui1, true},        {ItemType_ui2, true},
      {ItemType_ui4, true},        {ItemType_ui8, true},
      {ItemType_r4, true},         {ItemType_r8, true},
      {ItemType_duration, false},  {ItemType_yearMonth, false},
      {ItemType_monthDay, false},  {ItemType_year, false},
      {ItemType_month, false},     {ItemType_day, false},
      {ItemType_date, false},      {ItemType_datetime, false},
      {ItemType_time, false},      {ItemType_char, false},
      {ItemType_string, false},    {ItemType_boolean, true},
      {ItemType_decimal, true},    {ItemType_integer, true},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.bare ? "{\"a\": 1}" : "{\"a\": \"1\"}",
              Written([&](CJsonTextWriter& w) { Element(w, "a", "1", c.type); }))
        << c.type;
  }
}

TEST_F(JsonTextWriter, WritesBareValuesWithoutAFilter) {
  EXPECT_EQ("{\"a\": N\n\x01 INF}",
            Written([](CJsonTextWriter& w) { Element(w, "a", "N\n\x01 INF", ItemType_r8); }));
}

TEST_F(JsonTextWriter, FiltersStringsAsItAlwaysDid) {
  const struct {
    std::string text;
    std::string written;
  } cases[] = {
      {"\b\t\f", "\b\t\f"},
      {"a\nb", "a\nb"},
      {"say \"yes\" \\ no", "say \"yes\" \\ no"},
      {"\x01\x07\x0B\x0E\x1F", "\\u0001\\u0007\\u000B\\u000E\\u001F"},
      {" /\x7F\xC3\xA4\xFF", " /\x7F\xC3\xA4\xFF"},
      {std::string("a\0b", 3), "a"},
      {"", ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ("{\"a\": \"" + c.written + "\"}",
              Written([&](CJsonTextWriter& w) { Element(w, "a", c.text, ItemType_string); }));
  }
}

TEST_F(JsonTextWriter, ALineFeedIsTheLineEndOfTheWriter) {
  Options options;
  options.eol = EOLType_CRLF;
  EXPECT_EQ("{\"a\": \"x\r\ny\"}",
            Written(options, [](CJsonTextWriter& w) { Element(w, "a", "x\ny", ItemType_string); }));
  options.formatted = true;
  EXPECT_EQ("{\r\n\t\"a\": 1\r\n}",
            Written(options, [](CJsonTextWriter& w) { Element(w, "a", "1", ItemType_i4); }));
}

// A derived writer reaches the field that SetEOLType keeps good.
class CSpoiltWriter : public CJsonTextWriter {
 public:
  using CJsonTextWriter::CJsonTextWriter;
  void Spoil() { m_eolType = static_cast<EOLType>(7); }
};

TEST_F(JsonTextWriter, ALineFeedWithAnUnknownLineEndFails) {
  CTextStream stream;
  CSpoiltWriter writer(&stream);
  writer.Spoil();
  writer.WriteStartElement("a", "");
  EXPECT_QZ_THROW(CQzException, "Invalid EOL type.",
                  writer.WriteText("x\ny", ItemType_string, false));
}

TEST_F(JsonTextWriter, AnElementOfNothingIsItsKeyAlone) {
  EXPECT_EQ("{\"r\": {\"a\": ,\"b\": }}", Written([](CJsonTextWriter& w) {
              w.WriteStartElement("r", "");
              for (const char* name : {"a", "b"}) {
                w.WriteStartElement(name, "");
                w.WriteEndElement();
              }
              w.WriteEndElement();
            }));
}

TEST_F(JsonTextWriter, AnEmptyTextIsAValue) {
  EXPECT_EQ("{\"a\": \"\"}",
            Written([](CJsonTextWriter& w) { Element(w, "a", "", ItemType_string); }));
}

// A text does not make an element an object, nor end the wait for what does.
TEST_F(JsonTextWriter, WhatFollowsATextStandsRightBehindIt) {
  EXPECT_EQ("{\"a\": \"x\"\"y\"}", Written([](CJsonTextWriter& w) {
              w.WriteStartElement("a", "");
              w.WriteText("x", ItemType_string, false);
              w.WriteText("y", ItemType_string, false);
              w.WriteEndElement();
            }));
  const auto mixed = [](CJsonTextWriter& w) {
    w.WriteStartElement("a", "");
    w.WriteText("x", ItemType_string, false);
    Element(w, "b", "1", ItemType_i4);
    w.WriteText("y", ItemType_string, false);
    w.WriteEndElement();
  };
  EXPECT_EQ("{\"a\": \"x\"{\"b\": 1,\"#text\": \"y\"}}", Written(mixed));
  EXPECT_EQ("{\n\t\"a\": \"x\"{\n\t\t\"b\": 1,\n\t\t\"#text\": \"y\"\n\t}\n}", Formatted(mixed));
}

TEST_F(JsonTextWriter, DefaultTextsAreWritten) {
  EXPECT_EQ("{\"a\": 5}", Written([](CJsonTextWriter& w) {
              w.WriteStartElement("a", "");
              w.WriteText("5", ItemType_i4, true);
              w.WriteEndElement();
            }));
}

TEST_F(JsonTextWriter, NilMarksInstructionsAndSchemasLeaveNoTrace) {
  EXPECT_EQ("{\"a\": }", Written([](CJsonTextWriter& w) {
              w.WriteProcessingInstruction("<?x y?>");
              w.WriteStartElement("a", "");
              w.WriteInlineSchema("xsi:schemaLocation='x'");
              w.WriteXsiNil();
              w.WriteEndElement();
            }));
}

TEST_F(JsonTextWriter, AttributesMayFollowContent) {
  EXPECT_EQ("{\"a\": {\"b\": 1,\"@x\": \"2\"}}", Written([](CJsonTextWriter& w) {
              w.WriteStartElement("a", "");
              Element(w, "b", "1", ItemType_i4);
              w.WriteAttribute("x", "", "2", ItemType_string);
              w.WriteEndElement();
            }));
}

TEST_F(JsonTextWriter, NestsObjectsWithTheirIndents) {
  EXPECT_EQ("{\n\t\"r\": {\n\t\t\"a\": {\n\t\t\t\"b\": true\n\t\t},\n\t\t\"c\": \"x\"\n\t}\n}",
            Formatted([](CJsonTextWriter& w) {
              w.WriteStartElement("r", "");
              w.WriteStartElement("a", "");
              Element(w, "b", "true", ItemType_boolean);
              w.WriteEndElement();
              Element(w, "c", "x", ItemType_string);
              w.WriteEndElement();
            }));
}

// ---- Comments ----

TEST_F(JsonTextWriter, ACommentStandsInFrontOfTheRootAndEndsItsLine) {
  const auto calls = [](CJsonTextWriter& w) {
    w.WriteComment("made by \x02hand\nhere");
    Element(w, "a", "5", ItemType_i4);
  };
  EXPECT_EQ("{\n/* made by \\u0002hand\nhere */\n\t\"a\": 5\n}", Formatted(calls));
  EXPECT_EQ("{/* made by \\u0002hand\nhere */\n\"a\": 5}", Written(calls));
}

// ---- Collections ----

// Two objects under "a" in "r", as the tables write a collection.
void WriteTwoObjects(CJsonTextWriter& w) {
  w.WriteStartElement("r", "");
  w.SetCollectionState(kPending);
  for (const char* text : {"1", "2"}) {
    w.WriteStartElement("a", "");
    Element(w, "b", text, ItemType_i4);
    Element(w, "c", text, ItemType_string);
    w.WriteEndElement();
  }
  w.SetCollectionState(kClosing);
  w.WriteEndElement();
}

TEST_F(JsonTextWriter, WritesACollectionOfObjectsAsAnArray) {
  EXPECT_EQ("{\"r\": {\"a\": [{\"b\": 1,\"c\": \"1\"},{\"b\": 2,\"c\": \"2\"}]}}",
            Written(WriteTwoObjects));
  EXPECT_EQ(
      "{\n"
      "\t\"r\": {\n"
      "\t\t\"a\": [\n"
      "\t\t\t{\n"
      "\t\t\t\t\"b\": 1,\n"
      "\t\t\t\t\"c\": \"1\"\n"
      "\t\t\t},\n"
      "\t\t\t{\n"
      "\t\t\t\t\"b\": 2,\n"
      "\t\t\t\t\"c\": \"2\"\n"
      "\t\t\t}\n"
      "\t\t]\n"
      "\t}\n"
      "}",
      Formatted(WriteTwoObjects));
}

TEST_F(JsonTextWriter, OneObjectIsAnArrayToo) {
  EXPECT_EQ("{\"r\": {\"a\": [{\"@x\": 1}]}}", Written([](CJsonTextWriter& w) {
              w.WriteStartElement("r", "");
              w.SetCollectionState(kPending);
              w.WriteStartElement("a", "");
              w.WriteAttribute("x", "", "1", ItemType_i4);
              w.WriteEndElement();
              w.SetCollectionState(kClosing);
              w.WriteEndElement();
            }));
}

TEST_F(JsonTextWriter, SimpleItemsRepeatTheirKeyAndStillCloseABracket) {
  const auto calls = [](CJsonTextWriter& w) {
    w.WriteStartElement("r", "");
    w.SetCollectionState(kPending);
    Element(w, "a", "1", ItemType_i4);
    Element(w, "a", "2", ItemType_i4);
    w.SetCollectionState(kClosing);
    w.WriteEndElement();
  };
  EXPECT_EQ("{\"r\": {\"a\": 1,\"a\": 2]}}", Written(calls));
  // The depth is lowered, though nothing raised it, but never below 1.
  EXPECT_EQ("{\n\t\"r\": {\n\t\t\"a\": 1,\n\t\t\"a\": 2\n\t]\n\t}\n}", Formatted(calls));
}

TEST_F(JsonTextWriter, SimpleItemsLowerTheDepthOfANestedOwner) {
  EXPECT_EQ("{\n\t\"r\": {\n\t\t\"o\": {\n\t\t\t\"a\": 1\n\t\t]\n\t},\n\t\t\"b\": 2\n\t}\n}",
            Formatted([](CJsonTextWriter& w) {
              w.WriteStartElement("r", "");
              w.WriteStartElement("o", "");
              w.SetCollectionState(kPending);
              Element(w, "a", "1", ItemType_i4);
              w.SetCollectionState(kClosing);
              w.WriteEndElement();
              Element(w, "b", "2", ItemType_i4);
              w.WriteEndElement();
            }));
}

TEST_F(JsonTextWriter, SimpleItemsWithAnAttributeAreAnArray) {
  EXPECT_EQ("{\"r\": {\"a\": [{\"@x\": 1,\"#text\": 7},{\"@x\": 2,\"#text\": 8}]}}",
            Written([](CJsonTextWriter& w) {
              w.WriteStartElement("r", "");
              w.SetCollectionState(kPending);
              for (const char* x : {"1", "2"}) {
                w.WriteStartElement("a", "");
                w.WriteAttribute("x", "", x, ItemType_i4);
                w.WriteText(*x == '1' ? "7" : "8", ItemType_i4, false);
                w.WriteEndElement();
              }
              w.SetCollectionState(kClosing);
              w.WriteEndElement();
            }));
}

TEST_F(JsonTextWriter, CollectionsNest) {
  EXPECT_EQ(
      "{\n"
      "\t\"r\": {\n"
      "\t\t\"a\": [\n"
      "\t\t\t{\n"
      "\t\t\t\t\"b\": [\n"
      "\t\t\t\t\t{\n"
      "\t\t\t\t\t\t\"@x\": 1\n"
      "\t\t\t\t\t}\n"
      "\t\t\t\t]\n"
      "\t\t\t}\n"
      "\t\t]\n"
      "\t}\n"
      "}",
      Formatted([](CJsonTextWriter& w) {
        w.WriteStartElement("r", "");
        w.SetCollectionState(kPending);
        w.WriteStartElement("a", "");
        w.SetCollectionState(kPending);
        w.WriteStartElement("b", "");
        w.WriteAttribute("x", "", "1", ItemType_i4);
        w.WriteEndElement();
        w.SetCollectionState(kClosing);
        w.WriteEndElement();
        w.SetCollectionState(kClosing);
        w.WriteEndElement();
      }));
}

TEST_F(JsonTextWriter, TheStateOfACollectionNeedsAnElement) {
  EXPECT_EQ("{}", Written([](CJsonTextWriter& w) { w.SetCollectionState(kPending); }));
}

// ---- Namespaces ----

TEST_F(JsonTextWriter, DeclaresTheNamespacesOfTheRoot) {
  const auto calls = [](CJsonTextWriter& w) {
    w.SetDefaultNamespace("urn:d");
    w.AddNamespaceMapping("q", "urn:q");
    w.AddNamespaceMapping("b", "urn:b");
    w.WriteStartElement("r", "urn:d");
    w.WriteAttribute("x", "urn:q", "1", ItemType_i4);
    w.WriteStartElement("a", "urn:b");
    w.WriteText("v", ItemType_string, false);
    w.WriteEndElement();
    w.WriteEndElement();
  };
  EXPECT_EQ(
      "{\n\t\"r\": {\n\t\t\"@xmlns\": \"urn:d\",\n\t\t\"@xmlns:b\": \"urn:b\",\n"
      "\t\t\"@xmlns:q\": \"urn:q\",\n\t\t\"@q:x\": 1,\n\t\t\"b:a\": \"v\"\n\t}\n}",
      Formatted(calls));
  EXPECT_EQ("{\"r\": {\"@x\": 1,\"a\": \"v\"}}", WithRoundTrip(JsonRoundTrip_Marked, calls));
  EXPECT_EQ("{\"r\": {\"x\": 1,\"a\": \"v\"}}", WithRoundTrip(JsonRoundTrip_None, calls));
}

TEST_F(JsonTextWriter, GeneratesAnAliasForTheRootOnly) {
  EXPECT_EQ("{\"AA:r\": {\"@xmlns:AA\": \"urn:r\",\"AA:a\": 1}}", Written([](CJsonTextWriter& w) {
              w.WriteStartElement("r", "urn:r");
              w.WriteStartElement("a", "urn:r");
              w.WriteText("1", ItemType_i4, false);
              w.WriteEndElement();
              w.WriteEndElement();
            }));
  EXPECT_EQ("{\"AB:r\": {\"@xmlns:AB\": \"urn:r\",\"@xmlns:AA\": \"urn:a\"}}",
            Written([](CJsonTextWriter& w) {
              w.AddNamespaceMapping("AA", "urn:a");
              w.WriteStartElement("r", "urn:r");
              w.WriteEndElement();
            }));
}

TEST_F(JsonTextWriter, LeavesOutWhatBelongsToXmlItself) {
  EXPECT_EQ("{\"r\": {\"@xml:lang\": \"en\"}}", Written([](CJsonTextWriter& w) {
              w.AddNamespaceMapping("more", std::string(kXmlNamespace) + "/more");
              w.WriteStartElement("r", "");
              w.WriteAttribute("lang", kXmlNamespace, "en", ItemType_string);
              w.WriteEndElement();
            }));
}

TEST_F(JsonTextWriter, DeclarationsAreNotFiltered) {
  EXPECT_EQ("{\"r\": {\"@xmlns:q\": \"urn:\x01\n\"}}", Written([](CJsonTextWriter& w) {
              w.AddNamespaceMapping("q", "urn:\x01\n");
              w.WriteStartElement("r", "");
              w.WriteEndElement();
            }));
}

TEST_F(JsonTextWriter, RefusesAnUnknownNamespaceBelowTheRoot) {
  CTextStream stream;
  CJsonTextWriter writer(&stream);
  writer.WriteStartElement("r", "");
  EXPECT_QZ_THROW(CQzException, "Unknown Namespace: item.",
                  writer.WriteStartElement("item", "urn:unknown"));
  EXPECT_QZ_THROW(CQzException, "Unknown Namespace: x.",
                  writer.WriteAttribute("x", "urn:unknown", "1", ItemType_i4));
  EXPECT_QZ_THROW(CQzException, "Unknown Namespace: TItem.",
                  writer.WriteXsiType("urn:unknown", "TItem", ItemType_string));
  writer.WriteEndElement();  // the refused element was never open
  writer.EndDocument();
}

TEST_F(JsonTextWriter, NamespacesOfFurtherItemsAreNotLookedAt) {
  EXPECT_EQ("{\"r\": {\"a\": [{\"@x\": 1},{\"@x\": 2}]}}", Written([](CJsonTextWriter& w) {
              w.WriteStartElement("r", "");
              w.SetCollectionState(kPending);
              w.WriteStartElement("a", "");
              w.WriteAttribute("x", "", "1", ItemType_i4);
              w.WriteEndElement();
              w.WriteStartElement("a", "urn:unknown");
              w.WriteAttribute("x", "", "2", ItemType_i4);
              w.WriteEndElement();
              w.SetCollectionState(kClosing);
              w.WriteEndElement();
            }));
}

TEST_F(JsonTextWriter, WritesTypesWithAllOfXmlOnly) {
  const auto calls = [](CJsonTextWriter& w) {
    w.AddNamespaceMapping("xsi", kXmlSchemaInstanceNamespace);
    w.AddNamespaceMapping("q", "urn:q");
    w.WriteStartElement("r", "");
    w.SetDefaultNamespace("urn:d");
    w.WriteXsiType("urn:q", "T", ItemType_string);
    w.WriteXsiType("urn:d", "U", ItemType_string);
    w.WriteXsiType("", "V", ItemType_string);
    w.WriteEndElement();
  };
  EXPECT_EQ(
      "{\"r\": {\"@xmlns:xsi\": \"http://www.w3.org/2001/XMLSchema-instance\","
      "\"@xmlns:q\": \"urn:q\",\"@xsi:type\": \"q:T\",\"@xsi:type\": \"U\",\"@xsi:type\": \"V\"}}",
      Written(calls));
  EXPECT_EQ("{\"r\": }", WithRoundTrip(JsonRoundTrip_Marked, calls));
  EXPECT_EQ("{\"r\": }", WithRoundTrip(JsonRoundTrip_None, calls));
}

TEST_F(JsonTextWriter, TypesNeedTheInstanceNamespace) {
  CTextStream stream;
  CJsonTextWriter writer(&stream);
  writer.WriteStartElement("r", "");
  EXPECT_QZ_THROW(CQzException, "Unknown Namespace: type.",
                  writer.WriteXsiType("", "T", ItemType_string));
}

// ---- The document ----

TEST_F(JsonTextWriter, ADocumentWithAnOpenElementFails) {
  CTextStream stream;
  CJsonTextWriter writer(&stream);
  writer.StartDocument();
  writer.WriteStartElement("r", "");
  EXPECT_QZ_THROW(CQzException, "An Element has not been closed.", writer.EndDocument());
}

// A stream that writes down how much it held when it was flushed.
class CFlushes : public CTextStream {
 public:
  void Flush() override { m_sizes.push_back(GetLength()); }
  std::vector<std::uint32_t> m_sizes;
};

TEST_F(JsonTextWriter, FlushesWhereAnElementBeginsOrACommentEnds) {
  CFlushes stream;
  CJsonTextWriter writer(&stream);
  writer.SetFormatted(false);
  writer.WriteDocumentStart();        // 1 octet
  writer.WriteStartElement("r", "");  // "r": and a blank, 6 in all
  writer.WriteText(std::string(5000, 'x'), ItemType_string, false);
  writer.WriteEndElement();
  EXPECT_TRUE(stream.m_sizes.empty());
  writer.WriteComment("");  // /*  */ and a line end
  EXPECT_EQ(std::vector<std::uint32_t>({6 + 5002 + 7}), stream.m_sizes);
  writer.WriteStartElement("s", "");
  EXPECT_EQ(2U, stream.m_sizes.size());
}

TEST_F(JsonTextWriter, FlushesFrom4096OctetsOn) {
  for (const std::size_t missing : {1U, 0U}) {
    CFlushes stream;
    CJsonTextWriter writer(&stream);
    writer.WriteComment(std::string(4096 - 7 - missing, 'x'));
    EXPECT_EQ(missing == 0 ? 1U : 0U, stream.m_sizes.size());
  }
}

}  // namespace
}  // namespace QzXmlLib16
