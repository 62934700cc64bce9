#include <functional>
#include <memory>

#include "qzxml/json/JsonReaderToXmlHandler.h"
#include "qzxml/json/JsonTextReader.h"
#include "qzxml/json/JsonTextWriter.h"
#include "qzxml/runtime/Encoder.h"
#include "qzxml/runtime/TextStream.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlTextWriter.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

constexpr char kDeclaration[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
constexpr char kNotClosed[] = "An Element has not been closed.";

constexpr JsonRoundTrip kModes[] = {JsonRoundTrip_None, JsonRoundTrip_Marked, JsonRoundTrip_Full};

// The XML of a text without its declaration.
std::string Xml(const std::string& json, JsonRoundTrip mode = JsonRoundTrip_Full,
                const char* root = "") {
  CSerializationContext context;
  context.GetJsonContext().SetSupportRoundtrip(mode);
  context.GetJsonContext().SetRootElementName(root);
  const CBinaryData xml = JsonToXml(json, context);
  const std::string text(reinterpret_cast<const char*>(xml.GetData()), xml.GetLength());
  EXPECT_EQ(kDeclaration, text.substr(0, sizeof kDeclaration - 1));
  return text.substr(sizeof kDeclaration - 1);
}

struct Case {
  std::string json;
  std::string xml;
};

void ExpectXml(const std::vector<Case>& cases, JsonRoundTrip mode = JsonRoundTrip_Full,
               const char* root = "") {
  for (const Case& c : cases) EXPECT_EQ(c.xml, Xml(c.json, mode, root)) << c.json;
}

// What Expat says to the XML that a text becomes.
std::string LoadFailure(const std::string& json, JsonRoundTrip mode = JsonRoundTrip_Full) {
  const std::string xml = kDeclaration + Xml(json, mode);
  CXmlDocument document;
  try {
    document.LoadXml(xml.c_str());
  } catch (const CQzException& e) {
    return e.GetMessage();
  }
  return "loads";
}

// --- The mapping

TEST(JsonReaderToXmlHandler, AMemberBecomesAnElementOfItsName) {
  ExpectXml({
      {"{\"a\":\"x\"}", "<a>x</a>\n"},
      {"{\"a\":{}}", "<a/>\n"},
      {"{\"a\":\"\"}", "<a/>\n"},
      {"{\"a\":null}", "<a/>\n"},
      {"{\"r\":{\"a\":{\"b\":1},\"c\":null,\"d\":\"x\"}}",
       "<r>\n\t<a>\n\t\t<b>1</b>\n\t</a>\n\t<c/>\n\t<d>x</d>\n</r>\n"},
      {"{}", ""},
      {"", ""},
      {" // x", ""},
      {"null", ""},
  });
}

TEST(JsonReaderToXmlHandler, EveryValueIsAText) {
  ExpectXml({
      {"{\"r\":{\"a\":-1.50E+07,\"b\":true,\"c\":false,\"d\":\"1\"}}",
       "<r>\n\t<a>-1.50E+07</a>\n\t<b>true</b>\n\t<c>false</c>\n\t<d>1</d>\n</r>\n"},
      {"{\"r\":{\"@a\":0.10,\"@b\":true,\"@c\":false,\"#text\":1}}",
       "<r a=\"0.10\" b=\"true\" c=\"false\">1</r>\n"},
  });
}

TEST(JsonReaderToXmlHandler, TextsAreEscaped) {
  ExpectXml({{"{\"a\":\"<&>\\\" x\\ty\\nz\"}", "<a>&lt;&amp;&gt;\" x\ty\nz</a>\n"},
             {"{\"r\":{\"@a\":\"<&>\\\" x\\ty\\nz\",\"#text\":\"\"}}",
              "<r a=\"&lt;&amp;&gt;&quot; x\ty&#xA;z\"/>\n"}});
}

TEST(JsonReaderToXmlHandler, WithTheMarksAtAndTextMeanAttributeAndText) {
  for (const JsonRoundTrip mode : {JsonRoundTrip_Marked, JsonRoundTrip_Full}) {
    ExpectXml(
        {{"{\"r\":{\"@x\":\"1\",\"#text\":\"v\"}}", "<r x=\"1\">v</r>\n"},
         {"{\"r\":{\"@x\":\"1\",\"@y\":\"2\",\"a\":3}}", "<r x=\"1\" y=\"2\">\n\t<a>3</a>\n</r>\n"},
         {"{\"r\":{\"#text\":\"v\"}}", "<r>v</r>\n"},
         {"{\"r\":{\"@x\":null,\"b\":1}}", "<r>\n\t<b>1</b>\n</r>\n"},
         {"{\"r\":{\"@x\":null,\"#text\":null}}", "<r/>\n"},
         {"{\"#texts\":1}", "<#texts>1</#texts>\n"}},
        mode);
  }
}

TEST(JsonReaderToXmlHandler, WithoutTheMarksTheyAreNamesLikeOthers) {
  ExpectXml(
      {{"{\"r\":{\"@x\":\"1\",\"#text\":\"v\"}}", "<r>\n\t<@x>1</@x>\n\t<#text>v</#text>\n</r>\n"},
       {"{\"#text\":\"v\"}", "<#text>v</#text>\n"},
       {"{\"@x\":\"1\"}", "<@x>1</@x>\n"}},
      JsonRoundTrip_None);
}

TEST(JsonReaderToXmlHandler, APrefixAndItsDeclarationStayAsTheyStand) {
  ExpectXml(
      {{"{\"AA:r\":{\"@xmlns\":\"urn:d\",\"@xmlns:AA\":\"urn:a\",\"@AA:x\":1,\"AA:i\":2}}",
        "<AA:r xmlns=\"urn:d\" xmlns:AA=\"urn:a\" AA:x=\"1\">\n\t<AA:i>2</AA:i>\n</AA:r>\n"}});
  EXPECT_EQ("loads", LoadFailure("{\"AA:r\":{\"@xmlns:AA\":\"urn:a\",\"AA:i\":2}}"));
}

TEST(JsonReaderToXmlHandler, AnArrayOfObjectsIsOneElementForEach) {
  ExpectXml({
      {"{\"r\":{\"a\":[{\"b\":1},{\"b\":2},{}]}}",
       "<r>\n\t<a>\n\t\t<b>1</b>\n\t</a>\n\t<a>\n\t\t<b>2</b>\n\t</a>\n\t<a/>\n</r>\n"},
      {"{\"r\":{\"a\":[{\"@x\":1,\"#text\":\"v\"},{\"@x\":2,\"#text\":\"w\"}],\"c\":3}}",
       "<r>\n\t<a x=\"1\">v</a>\n\t<a x=\"2\">w</a>\n\t<c>3</c>\n</r>\n"},
      {"{\"r\":{\"a\":[{\"b\":[{\"c\":1},{\"c\":2}]},{\"b\":[{}]}]}}",
       "<r>\n\t<a>\n\t\t<b>\n\t\t\t<c>1</c>\n\t\t</b>\n\t\t<b>\n\t\t\t<c>2</c>\n\t\t</b>\n\t</a>\n"
       "\t<a>\n\t\t<b/>\n\t</a>\n</r>\n"},
  });
}

// Only one without a name of its own is an item of the array.
TEST(JsonReaderToXmlHandler, AnObjectThatIsAMemberInAnArrayIsOneElement) {
  ExpectXml({{"{\"r\":{\"a\":[{\"b\":{\"c\":1}},{\"a\":{\"c\":2}}]}}",
              "<r>\n\t<a>\n\t\t<b>\n\t\t\t<c>1</c>\n\t\t</b>\n\t</a>\n"
              "\t<a>\n\t\t<a>\n\t\t\t<c>2</c>\n\t\t</a>\n\t</a>\n</r>\n"}});
}

TEST(JsonReaderToXmlHandler, TheOrderOfMembersIsKept) {
  ExpectXml({{"{\"r\":{\"@b\":1,\"@a\":2,\"z\":3,\"y\":4,\"z\":5}}",
              "<r b=\"1\" a=\"2\">\n\t<z>3</z>\n\t<y>4</y>\n\t<z>5</z>\n</r>\n"}});
}

TEST(JsonReaderToXmlHandler, TheRootElementGoesAroundAllMembers) {
  ExpectXml({{"{\"a\":1,\"b\":{\"c\":2}}", "<r>\n\t<a>1</a>\n\t<b>\n\t\t<c>2</c>\n\t</b>\n</r>\n"},
             {"{\"@x\":1,\"#text\":\"v\"}", "<r x=\"1\">v</r>\n"},
             {"[1]", "<r>1</r>\n"},
             {"5", "<r>5</r>\n"},
             {"[{\"a\":1},{\"a\":2}]", "<r>\n\t<a>1</a>\n</r>\n<r>\n\t<a>2</a>\n</r>\n"},
             {"", "<r/>\n"}},
            JsonRoundTrip_Full, "r");
}

TEST(JsonReaderToXmlHandler, ACarriageReturnIsDropped) {
  ExpectXml({{"{\"a\":\"x\\r\\ny\\r\"}", "<a>x\ny</a>\n"},
             {"{\"a\":\"x\ry\"}", "<a>xy</a>\n"},
             {"{\"r\":{\"@a\":\"x\\r\\ny\",\"#text\":\"\\r\"}}", "<r a=\"x&#xA;y\"></r>\n"}});
}

TEST(JsonReaderToXmlHandler, CommentsAreSkippedWhereTheContextAllowsThem) {
  const std::string json = "/* a */ {\"a\": /* b */ 1 // c\n}";
  CSerializationContext context;
  EXPECT_NO_THROW(JsonToXml(json, context));
  context.GetJsonContext().GetAllowComments(false);
  EXPECT_QZ_THROW(CQzValidationException,
                  "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found '/' "
                  "at line 1, position 1.\nPath: $",
                  JsonToXml(json, context));
}

TEST(JsonReaderToXmlHandler, TheBytesAreUtf8WhateverTheLocalEncoding) {
  struct CWestern {
    CWestern() { SetLocalCharEncoding(1252); }
    ~CWestern() { SetLocalCharEncoding(3); }
  };
  const CWestern western;
  EXPECT_EQ("<a>\xC3\xA9</a>\n", Xml("{\"a\":\"\xE9\"}"));
}

// --- What does not survive

TEST(JsonReaderToXmlHandler, WithoutTheMarksTextBesideAttributesHasNoName) {
  for (const JsonRoundTrip mode : kModes) {
    EXPECT_QZ_THROW_FULL(CQzValidationException, "JSON item has an empty Name.\nPath: $..r.x",
                         "$..r.x", Xml("{\"x\":{\"r\":{\"\":\"v\"}}}", mode));
    EXPECT_QZ_THROW_FULL(CQzValidationException, "JSON item has an empty Name.\nPath: $.", "$.",
                         Xml("{\"\":\"v\"}", mode));
  }
}

TEST(JsonReaderToXmlHandler, AMemberBehindTheTextLandsInTheElementAround) {
  ExpectXml({{"{\"r\":{\"a\":{\"#text\":\"v\",\"b\":1},\"c\":2}}",
              "<r>\n\t<a>v</a>\n\t<b>1</b>\n\t<c>2</c>\n</r>\n"},
             {"{\"r\":{\"a\":{\"@x\":0,\"#text\":\"v\",\"b\":1}}}",
              "<r>\n\t<a x=\"0\">v</a>\n\t<b>1</b>\n</r>\n"}});
}

TEST(JsonReaderToXmlHandler, AnObjectThatEndsInAnAttributeLeavesItsElementOpen) {
  for (const char* json : {"{\"r\":{\"@x\":\"1\"}}", "{\"r\":{\"a\":{\"@x\":\"1\"}}}",
                           "{\"r\":{\"a\":[{\"@x\":1},{\"@x\":2}]}}", "{\"r\":{\"@x\":null}}"}) {
    EXPECT_QZ_THROW_FULL(CQzException, kNotClosed, "", Xml(json));
  }
}

// The next element opens inside it, and the end of an object around closes it after all.
TEST(JsonReaderToXmlHandler, BehindSuchAnObjectElementsAreOneDeeper) {
  ExpectXml({{"{\"r\":{\"@x\":\"1\"},\"b\":2}", "<r x=\"1\">\n\t<b>2</b>\n</r>\n"},
             {"{\"r\":{\"a\":[{\"@x\":1},{\"b\":2}]}}",
              "<r>\n\t<a x=\"1\">\n\t\t<a>\n\t\t\t<b>2</b>\n\t\t</a>\n\t</a>\n</r>\n"}});
  EXPECT_QZ_THROW(CQzException, "An Element has not been closed.",
                  Xml("{\"q\":{\"r\":{\"s\":{\"@x\":1},\"t\":{\"@x\":1},\"b\":2}}}"));
}

TEST(JsonReaderToXmlHandler, AnEmptyArrayLeavesItsElementOpen) {
  ExpectXml({{"{\"r\":{\"a\":[],\"b\":1}}", "<r>\n\t<a>\n\t\t<b>1</b>\n\t</a>\n</r>\n"},
             {"{\"r\":{\"a\":[]}}", "<r>\n\t<a/>\n</r>\n"},
             {"{\"a\":[]}", "<a/>\n"}});
  EXPECT_QZ_THROW(CQzException, kNotClosed, Xml("{\"r\":{\"a\":[],\"c\":[]}}"));
}

TEST(JsonReaderToXmlHandler, OfAnArrayOfPlainValuesOnlyTheFirstGetsAnElement) {
  ExpectXml({{"{\"r\":{\"a\":[1]}}", "<r>\n\t<a>1</a>\n</r>\n"},
             {"{\"r\":{\"a\":[1,2]}}", "<r>\n\t<a>1</a>\n2</r>\n"},
             {"{\"r\":{\"a\":[1,null]}}", "<r>\n\t<a>1</a>\n</r>\n"},
             {"{\"q\":{\"r\":{\"a\":[\"x\",\"y\",\"z\"]}}}",
              "<q>\n\t<r>\n\t\t<a>x</a>\ny\t</r>\nz</q>\n"}});
  EXPECT_EQ("junk after document element at line 5", LoadFailure("{\"r\":{\"a\":[1,2],\"b\":3}}"));
  EXPECT_QZ_THROW(CQzInvalidStateException,
                  "Failed to convert value '3' to Element string value in XML.",
                  Xml("{\"r\":{\"a\":[1,2,3]}}"));
}

TEST(JsonReaderToXmlHandler, OfArraysInAnArrayOnlyTheFirstHasAName) {
  ExpectXml({{"{\"r\":{\"a\":[[{\"b\":1},{\"b\":2}]]}}",
              "<r>\n\t<a>\n\t\t<b>1</b>\n\t</a>\n\t<a>\n\t\t<b>2</b>\n\t</a>\n</r>\n"}});
  EXPECT_QZ_THROW_FULL(CQzValidationException, "JSON Array has no Name.\nPath: $.r", "$.r",
                       Xml("{\"r\":{\"a\":[[{\"b\":1}],[{\"b\":2}]]}}"));
}

TEST(JsonReaderToXmlHandler, AnArrayThatIsTheWholeTextHasNoName) {
  for (const JsonRoundTrip mode : kModes) {
    EXPECT_QZ_THROW_FULL(CQzValidationException, "JSON Array has no Name.\nPath: $", "$",
                         Xml("[1]", mode));
  }
  EXPECT_EQ("<r>1</r>\n", Xml("[1]", JsonRoundTrip_Full, "r"));
}

TEST(JsonReaderToXmlHandler, SeveralMembersAreSeveralRoots) {
  ExpectXml({{"{\"a\":1,\"b\":2}", "<a>1</a>\n<b>2</b>\n"}});
  EXPECT_EQ("junk after document element at line 3", LoadFailure("{\"a\":1,\"b\":2}"));
}

TEST(JsonReaderToXmlHandler, ARawLineEndOrMarkInATextDoesNotComeBackWhole) {
  ExpectXml({{"{\"a\":\"x\ny\"}", "<a>xy</a>\n"}, {"{\"a\":\"x\r\ny\"}", "<a>xy</a>\n"}});
  EXPECT_QZ_THROW(CQzValidationException,
                  "Expected Object separator character ',', found 'y' at line 1, position 9.\n"
                  "Path: $.a",
                  Xml("{\"a\":\"x\"y\"}"));
}

// A document that the JSON writer made, as the reader gets it back.

std::string Written(JsonRoundTrip mode, const std::function<void(CJsonTextWriter&)>& calls) {
  CTextStream stream;
  CJsonTextWriter writer(&stream);
  writer.StartDocument();
  writer.SetFormatted(false);
  writer.SetRoundtrip(mode);
  writer.WriteDocumentStart();
  calls(writer);
  writer.WriteDocumentEnd();
  writer.EndDocument();
  return stream.TakeText();
}

void WriteElement(CJsonTextWriter& writer, const char* name, const char* text,
                  ItemType type = ItemType_string, const char* uri = "") {
  writer.WriteStartElement(name, uri);
  writer.WriteText(text, type, false);
  writer.WriteEndElement();
}

TEST(JsonReaderToXmlHandler, TheKindsOfWrittenValuesDoNotComeBack) {
  const std::string json = Written(JsonRoundTrip_Full, [](CJsonTextWriter& writer) {
    writer.WriteStartElement("r", "");
    WriteElement(writer, "a", "1.50", ItemType_decimal);
    WriteElement(writer, "b", "1.50");
    WriteElement(writer, "c", "true", ItemType_boolean);
    writer.WriteEndElement();
  });
  EXPECT_EQ("{\"r\": {\"a\": 1.50,\"b\": \"1.50\",\"c\": true}}", json);
  EXPECT_EQ("<r>\n\t<a>1.50</a>\n\t<b>1.50</b>\n\t<c>true</c>\n</r>\n", Xml(json));
}

TEST(JsonReaderToXmlHandler, WrittenWithoutTheMarksAttributesComeBackAsElementsAndTextDoesNot) {
  const auto calls = [](CJsonTextWriter& writer) {
    writer.WriteStartElement("r", "");
    writer.WriteAttribute("x", "", "1", ItemType_string);
    WriteElement(writer, "a", "v");
    writer.WriteEndElement();
  };
  const std::string json = Written(JsonRoundTrip_None, calls);
  EXPECT_EQ("{\"r\": {\"x\": \"1\",\"a\": \"v\"}}", json);
  EXPECT_EQ("<r>\n\t<x>1</x>\n\t<a>v</a>\n</r>\n", Xml(json, JsonRoundTrip_None));
  EXPECT_EQ("<r x=\"1\">\n\t<a>v</a>\n</r>\n",
            Xml(Written(JsonRoundTrip_Marked, calls), JsonRoundTrip_Marked));

  const std::string beside = Written(JsonRoundTrip_None, [](CJsonTextWriter& writer) {
    writer.WriteStartElement("r", "");
    writer.WriteAttribute("x", "", "1", ItemType_string);
    writer.WriteText("v", ItemType_string, false);
    writer.WriteEndElement();
  });
  EXPECT_EQ("{\"r\": {\"x\": \"1\",\"\": \"v\"}}", beside);
  EXPECT_QZ_THROW_FULL(CQzValidationException, "JSON item has an empty Name.\nPath: $..r", "$..r",
                       Xml(beside, JsonRoundTrip_None));
}

TEST(JsonReaderToXmlHandler, WrittenNamespacesComeBackInTheFullModeAlone) {
  const auto calls = [](CJsonTextWriter& writer) {
    writer.WriteStartElement("r", "urn:a");
    WriteElement(writer, "i", "v", ItemType_string, "urn:a");
    writer.WriteEndElement();
  };
  for (const JsonRoundTrip mode : {JsonRoundTrip_None, JsonRoundTrip_Marked}) {
    EXPECT_EQ("<r>\n\t<i>v</i>\n</r>\n", Xml(Written(mode, calls), mode));
  }
  EXPECT_EQ("<AA:r xmlns:AA=\"urn:a\">\n\t<AA:i>v</AA:i>\n</AA:r>\n",
            Xml(Written(JsonRoundTrip_Full, calls)));
}

TEST(JsonReaderToXmlHandler, CommentsAndInstructionsDoNotComeBack) {
  const std::string json = Written(JsonRoundTrip_Full, [](CJsonTextWriter& writer) {
    writer.WriteComment("c");
    writer.WriteProcessingInstruction("p");
    WriteElement(writer, "r", "v");
  });
  EXPECT_EQ("{/* c */\n\"r\": \"v\"}", json);
  EXPECT_EQ("<r>v</r>\n", Xml(json));
}

// What is left of an element with a nil mark alone is its name, which no reader takes; with an
// attribute it comes back empty, around what follows. The null of other writers is empty too.
TEST(JsonReaderToXmlHandler, NilMarksDoNotComeBack) {
  const auto write = [](bool attribute) {
    return Written(JsonRoundTrip_Full, [=](CJsonTextWriter& writer) {
      writer.WriteStartElement("r", "");
      writer.WriteStartElement("a", "");
      if (attribute) writer.WriteAttribute("x", "", "1", ItemType_string);
      writer.WriteXsiNil();
      writer.WriteEndElement();
      WriteElement(writer, "b", "v");
      writer.WriteEndElement();
    });
  };
  EXPECT_EQ("{\"r\": {\"a\": ,\"b\": \"v\"}}", write(false));
  EXPECT_QZ_THROW_FULL(
      CQzValidationException,
      "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found "
      "',' at line 1, position 13.\nPath: $.a.r",
      "$.a.r", Xml(write(false)));
  EXPECT_EQ("<r>\n\t<a x=\"1\">\n\t\t<b>v</b>\n\t</a>\n</r>\n", Xml(write(true)));
  EXPECT_EQ("<r>\n\t<a/>\n\t<b>v</b>\n</r>\n", Xml("{\"r\":{\"a\":null,\"b\":\"v\"}}"));
}

// The bracket that closes them has none that opens it.
TEST(JsonReaderToXmlHandler, OfWrittenCollectionsThoseOfObjectsComeBackAndThoseOfValuesDoNot) {
  const auto write = [](bool objects) {
    return Written(JsonRoundTrip_Full, [=](CJsonTextWriter& writer) {
      writer.WriteStartElement("r", "");
      writer.SetCollectionState(1);
      for (const char* value : {"1", "2"}) {
        if (objects) writer.WriteStartElement("a", "");
        WriteElement(writer, objects ? "b" : "a", value);
        if (objects) writer.WriteEndElement();
      }
      writer.SetCollectionState(3);
      writer.WriteEndElement();
    });
  };
  EXPECT_EQ("{\"r\": {\"a\": [{\"b\": \"1\"},{\"b\": \"2\"}]}}", write(true));
  EXPECT_EQ("<r>\n\t<a>\n\t\t<b>1</b>\n\t</a>\n\t<a>\n\t\t<b>2</b>\n\t</a>\n</r>\n",
            Xml(write(true)));
  EXPECT_EQ("{\"r\": {\"a\": \"1\",\"a\": \"2\"]}}", write(false));
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Expected Object separator character ',', found ']' at line 1, position 25."
                       "\nPath: $.a.r",
                       "$.a.r", Xml(write(false)));
}

TEST(JsonReaderToXmlHandler, AnAttributeOrATextThatIsAnObjectGivesItsMembersToTheElement) {
  ExpectXml({{"{\"r\":{\"@x\":{\"b\":1}}}", "<r>\n\t<b>1</b>\n</r>\n"},
             {"{\"r\":{\"#text\":{\"b\":1}}}", "<r>\n\t<b>1</b>\n</r>\n"},
             {"{\"r\":{\"#text\":[1]}}", "<r>1</r>\n"}});
}

TEST(JsonReaderToXmlHandler, APlainValueBehindAnObjectInAnArrayEndsTheElementAround) {
  ExpectXml({{"{\"r\":{\"a\":[{\"b\":1},5]}}", "<r>\n\t<a>\n\t\t<b>1</b>\n\t</a>\n5</r>\n"}});
}

// Nine characters at its beginning mark it.
TEST(JsonReaderToXmlHandler, ATextThatIsMarkedAsCDataStandsAsItIs) {
  ExpectXml({{"{\"a\":\"<![CDATA[x<b>&y]]>\"}", "<a><![CDATA[x<b>&y]]></a>\n"},
             {"{\"a\":\" <![CDATA[x]]>\"}", "<a> &lt;![CDATA[x]]&gt;</a>\n"}});
  EXPECT_EQ("unclosed CDATA section at line 3", LoadFailure("{\"a\":\"<![CDATA[x\"}"));
}

TEST(JsonReaderToXmlHandler, NamesThatXmlDoesNotAllowFailWhereItIsRead) {
  EXPECT_EQ("not well-formed (invalid token) at line 2", LoadFailure("{\"a b\":1}"));
  EXPECT_EQ("not well-formed (invalid token) at line 2", LoadFailure("{\"1\":1}"));
  EXPECT_EQ("not well-formed (invalid token) at line 2",
            LoadFailure("{\"#text\":1}", JsonRoundTrip_None));
  EXPECT_EQ("duplicate attribute at line 2",
            LoadFailure("{\"r\":{\"@x\":1,\"@x\":2,\"#text\":3}}"));
  EXPECT_EQ("not well-formed (invalid token) at line 2",
            LoadFailure("{\"r\":{\"@\":1,\"#text\":3}}"));
}

TEST(JsonReaderToXmlHandler, OfAnAttributeWithAnArrayTheSecondValueHasNoName) {
  EXPECT_EQ("<r x=\"1\" =\"2\">v</r>\n", Xml("{\"r\":{\"@x\":[1,2],\"#text\":\"v\"}}"));
}

// --- Failures

TEST(JsonReaderToXmlHandler, AFailureInAnArrayCarriesThePathWithItsRawCharacter) {
  const std::string path("$..a[\0].r", 9);  // "a" and the object in it
  EXPECT_QZ_THROW(CQzValidationException, "JSON item has an empty Name.\nPath: " + path,
                  Xml("{\"r\":{\"a\":[{\"\":1}]}}"));
}

TEST(JsonReaderToXmlHandler, ALongValueStandsWholeInAFailure) {
  const std::string value(100000, 'v');
  EXPECT_QZ_THROW(CQzInvalidStateException,
                  "Failed to convert value '" + value + "' to Element string value in XML.",
                  Xml("\"" + value + "\""));
}

TEST(JsonReaderToXmlHandler, AValueWithNoElementOpenFails) {
  for (const JsonRoundTrip mode : kModes) {
    EXPECT_QZ_THROW_FULL(CQzInvalidStateException,
                         "Failed to convert value '5' to Element string value in XML.", "",
                         Xml("5", mode));
    EXPECT_QZ_THROW_FULL(CQzInvalidStateException,
                         "Failed to convert value 'true' to Element string value in XML.", "",
                         Xml("true", mode));
    EXPECT_QZ_THROW_FULL(CQzInvalidStateException,
                         "Failed to convert value '' to Element string value in XML.", "",
                         Xml("\"\"", mode));
  }
  EXPECT_QZ_THROW_FULL(CQzInvalidStateException,
                       "Failed to convert value 'v' to Element string value in XML.", "",
                       Xml("{\"#text\":\"v\"}"));
  EXPECT_QZ_THROW_FULL(CQzInvalidStateException,
                       "Failed to convert value '2' to Element string value in XML.", "",
                       Xml("[1,2]", JsonRoundTrip_Full, "r"));
}

TEST(JsonReaderToXmlHandler, AnAttributeWithNoElementOpenFails) {
  EXPECT_QZ_THROW_FULL(CQzInvalidStateException,
                       "Failed to convert value '1' to Attribute string value in XML.", "",
                       Xml("{\"@x\":\"1\"}"));
  EXPECT_QZ_THROW_FULL(CQzInvalidStateException,
                       "Failed to convert value 'false' to Attribute string value in XML.", "",
                       Xml("{\"a\":1,\"@x\":false}", JsonRoundTrip_Marked));
  EXPECT_EQ("", Xml("{\"@x\":null}"));
}

TEST(JsonReaderToXmlHandler, AnAttributeBehindContentFailsAndAsserts) {
  for (const char* json :
       {"{\"r\":{\"b\":1,\"@x\":\"y\"}}", "{\"r\":{\"#text\":\"v\",\"@x\":\"y\"},\"s\":1}"}) {
    std::vector<std::string> expected;
#if defined(QZXML_ASSERTIONS)
    if (std::string(json).find('b') != std::string::npos) expected = {"false"};
#endif
    const qztest::AssertionRecorder recorder;
    EXPECT_QZ_THROW_FULL(CQzInvalidStateException,
                         "Failed to convert value 'y' to Attribute string value in XML.", "",
                         Xml(json));
    EXPECT_EQ(expected, recorder.conditions()) << json;
  }
}

// Refuses the calls that it is told to refuse.
class CRefusing : public CXmlWriter {
 public:
  CRefusing() : CXmlWriter("CRefusing") {}
  bool names = false;
  void WriteComment(const std::string&) override {}
  void WriteProcessingInstruction(const std::string&) override {}
  void WriteInlineSchema(const std::string&) override {}
  void WriteStartElement(const std::string&, const std::string&) override {
    if (names) throw CQzException("no");
  }
  void WriteText(const std::string&, ItemType type, bool isDefault) override {
    EXPECT_EQ(ItemType_string, type);
    EXPECT_FALSE(isDefault);
    throw CQzException("no");
  }
  void WriteEndElement() override {}
  void WriteAttribute(const std::string&, const std::string& uri, const std::string&,
                      ItemType type) override {
    EXPECT_EQ("", uri);
    EXPECT_EQ(ItemType_string, type);
    throw CQzException("no");
  }
  void WriteXsiType(const std::string&, const std::string&, ItemType) override {}
  void WriteXsiNil() override {}
};

void Drive(CXmlWriter* writer, const std::string& json) {
  CJsonTextReader reader(json);
  reader.SetHandler(
      new CJsonReaderToXmlHandler(writer, JsonRoundTrip_Full, reader.GetErrorPathProvider()));
  reader.Parse();
}

TEST(JsonReaderToXmlHandler, WhatTheWriterRefusesFailsAndAsserts) {
  const struct {
    const char* json;
    bool names;
    const char* text;
  } cases[] = {
      {"{\"a\":\"x\"}", true, "Failed to convert name 'a' to Element name in XML."},
      {"{\"a\":\"x\"}", false, "Failed to convert value 'x' to Element string value in XML."},
      {"{\"a\":{\"@b\":7}}", false,
       "Failed to convert value '7' to Attribute string value in XML."},
  };
  for (const auto& c : cases) {
    CRefusing writer;
    writer.names = c.names;
    EXPECT_QZ_ASSERT("false", Drive(&writer, c.json));
    const qztest::AssertionRecorder recorder;
    EXPECT_QZ_THROW_FULL(CQzInvalidStateException, c.text, "", Drive(&writer, c.json));
  }
}

TEST(JsonReaderToXmlHandler, ANewDocumentForgetsTheElementsAndArraysThatWereOpen) {
  CRefusing writer;
  CJsonReaderToXmlHandler handler(&writer, JsonRoundTrip_Full, nullptr);
  handler.StartDocument();
  handler.Name("a");
  handler.StartArray();
  handler.StartDocument();
  EXPECT_QZ_THROW(CQzInvalidStateException,
                  "Failed to convert value 'v' to Element string value in XML.",
                  handler.String("v"));
  handler.Null();  // no element ends, but the name is gone
  writer.names = true;
  EXPECT_NO_THROW(handler.StartObject());  // no array gives it a name
  EXPECT_QZ_ASSERT("m_arrayStack.size() > 0", handler.EndArray());
}

TEST(JsonReaderToXmlHandler, AnEndWithoutAnArrayAsserts) {
  CTextStream stream;
  CXmlTextWriter writer(&stream);
  CJsonReaderToXmlHandler handler(&writer, JsonRoundTrip_Full, nullptr);
  EXPECT_QZ_ASSERT("m_arrayStack.size() > 0", handler.EndArray());
  const qztest::AssertionRecorder recorder;
  EXPECT_NO_THROW(handler.EndArray());
}

// --- Bounds

TEST(JsonReaderToXmlHandler, ANameThatIsWrittenManyTimesIsBounded) {
  const auto array = [](int objects) {
    std::string json = "{\"" + std::string(1000, 'a') + "\":[{}";
    for (int i = 1; i < objects; ++i) json += ",{}";
    return json + "]}";
  };
  // 1004 bytes for each; 8 MiB may come of any text.
  EXPECT_EQ(8000u * 1004u, Xml(array(8000)).size());
  EXPECT_QZ_THROW_FULL(CQzException, "The document grows past 100 times its size", "",
                       Xml(array(10000)));
  CSerializationContext context;
  context.SetMaxAmplification(400);
  EXPECT_NO_THROW(JsonToXml(array(10000), context));
  context.SetMaxAmplification(300);
  EXPECT_QZ_THROW(CQzException, "The document grows past 300 times its size",
                  JsonToXml(array(10000), context));
  context.SetMaxAmplification(0);
  EXPECT_NO_THROW(JsonToXml(array(10000), context));
}

TEST(JsonReaderToXmlHandler, ElementsThatAreLeftOpenAreBounded) {
  std::string json = "{\"a\":[{\"@x\":1}";
  for (int i = 1; i < 20000; ++i) json += ",{\"@x\":1}";
  EXPECT_QZ_THROW(CQzException, "The document grows past 100 times its size", Xml(json + "]}"));
}

}  // namespace
}  // namespace QzXmlLib16
