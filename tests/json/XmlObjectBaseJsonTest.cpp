#include <memory>

#include "qzxml/collections/Element.h"
#include "qzxml/json/JsonContext.h"
#include "qzxml/platform/File.h"
#include "qzxml/runtime/Encoder.h"
#include "qzxml/runtime/QzZip.h"
#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/xml/XmlDocument.h"
#include "tests/json/JsonFile.h"
#include "tests/serialization/Note.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using qztest::Bytes;
using qztest::CTemporaryFile;

constexpr char kMemo[] = R"({"memo": {"@xmlns": "urn:notes", "@to": "Ann",
                              "line": "Milk", "line": "\"Bread\" \u0041"}})";

// A note that keeps what it is read from.
class CProbe : public qztest::CNote {
 public:
  using CXmlObjectBase::FromXmlStream;
  void FromXmlStream(const CBinaryData& data, const CSerializationContext& context) override {
    ++reads;
    xml.assign(reinterpret_cast<const char*>(data.GetData()), data.GetLength());
    ignoredNamespaces = context.GetIgnoreNamespaces();
    qztest::CNote::FromXmlStream(data, context);
  }
  int reads = 0;
  std::string xml;
  bool ignoredNamespaces = false;
};

TEST(XmlObjectBaseJson, AnObjectIsReadFromJson) {
  const CSerializationContext context;
  CProbe probe;
  probe.FromJson(kMemo, context);
  EXPECT_EQ("memo", probe.GetElementName());
  EXPECT_EQ("Ann", probe.to);
  EXPECT_EQ((std::vector<std::string>{"Milk", "\"Bread\" 3"}), probe.lines);
  EXPECT_EQ(&context, probe.call.context);
  EXPECT_EQ(1, probe.reads);
  EXPECT_EQ(
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<memo xmlns=\"urn:notes\" to=\"Ann\">\n"
      "\t<line>Milk</line>\n\t<line>\"Bread\" 3</line>\n</memo>\n",
      probe.xml);
}

TEST(XmlObjectBaseJson, WithoutAContextTheDefaultOneCounts) {
  CProbe probe;
  probe.FromJson(kMemo);
  EXPECT_EQ(&CSerializationContext::GetDefaultContext(), probe.call.context);
}

TEST(XmlObjectBaseJson, WithARootElementAnArrayCanBeRead) {
  CSerializationContext context;
  context.GetJsonContext().SetRootElementName("memo");
  context.GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_Marked);
  CProbe probe;
  probe.FromJson("[{\"@to\": \"Ann\", \"line\": \"Milk\"}]", context);
  EXPECT_EQ("Ann", probe.to);
  EXPECT_EQ(std::vector<std::string>{"Milk"}, probe.lines);
  probe.FromJson("{\"line\": \"Milk\", \"line\": \"Bread\"}", context);
  EXPECT_EQ((std::vector<std::string>{"Milk", "Bread"}), probe.lines);
}

// Open content held as what it derives from reads the first element of the root, from JSON too.
TEST(XmlObjectBaseJson, OpenContentReadsTheFirstElementOfTheRoot) {
  CElement element("none");
  element.FromJson("{\"r\":{\"a\":{\"@x\":1,\"#text\":\"v\"}}}");
  EXPECT_EQ("<a x=\"1\">v</a>", element.ToXml(false, false));
}

// --- There and back

qztest::CNote Note(const std::vector<std::string>& lines) {
  qztest::CNote note;
  note.to = "Ann";
  note.lines = lines;
  return note;
}

CSerializationContext InMode(JsonRoundTrip mode) {
  CSerializationContext context;
  context.GetJsonContext().SetSupportRoundtrip(mode);
  return context;
}

TEST(XmlObjectBaseJson, AnObjectComesBackFromItsJsonWithTheMarks) {
  for (const JsonRoundTrip mode : {JsonRoundTrip_Marked, JsonRoundTrip_Full}) {
    const CSerializationContext context = InMode(mode);
    for (const bool formatted : {true, false}) {
      for (const EOLType eol : {EOLType_LF, EOLType_CRLF}) {
        const qztest::CNote note = Note({"Milk", "", "{[,:/*]}'"});
        CProbe back;
        back.FromJson(note.ToJson(formatted, eol, context).c_str(), context);
        EXPECT_EQ("note", back.GetElementName());
        EXPECT_EQ("Ann", back.to);
        EXPECT_EQ(note.lines, back.lines);
        EXPECT_EQ(mode == JsonRoundTrip_Full ? "urn:notes" : "", back.call.namespaceUri);
      }
    }
  }
}

TEST(XmlObjectBaseJson, AnObjectComesBackFromTheBytesOfItsJson) {
  const qztest::CNote note = Note({"Milk", "\xC3\xA4", std::string(500, 'x')});
  for (const CompressionType type :
       {CompressionType_None, CompressionType_GZip, CompressionType_ZLib}) {
    CProbe back;
    back.FromJsonStream(note.ToJsonStream(true, XmlEncoding_UTF8, EOLType_LF,
                                          CSerializationContext::GetDefaultContext(), type));
    EXPECT_EQ(note.lines, back.lines);
  }
}

TEST(XmlObjectBaseJson, WithoutTheMarksAnAttributeComesBackAsAnElement) {
  const CSerializationContext context = InMode(JsonRoundTrip_None);
  CProbe back;
  EXPECT_THROW(back.FromJson(Note({"Milk"}).ToJson(false, EOLType_LF, context).c_str(), context),
               CQzException);
  EXPECT_EQ(
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<note>\n\t<to>Ann</to>\n\t<line>Milk</line>\n"
      "</note>\n",
      back.xml);
}

TEST(XmlObjectBaseJson, AnObjectWithAttributesAloneDoesNotComeBack) {
  const CSerializationContext context = InMode(JsonRoundTrip_Marked);
  CProbe back;
  EXPECT_QZ_THROW(CQzException, "An Element has not been closed.",
                  back.FromJson(Note({}).ToJson(true, EOLType_LF, context).c_str(), context));
}

// The writer escapes neither marks nor line ends.
TEST(XmlObjectBaseJson, TextsWithMarksOrLineEndsDoNotComeBackWhole) {
  CProbe back;
  back.FromJson(Note({"a\nb"}).ToJson().c_str());
  EXPECT_EQ(std::vector<std::string>{"ab"}, back.lines);
  back.FromJson(Note({"a\nb"}).ToJson(true, EOLType_CRLF).c_str());
  EXPECT_EQ(std::vector<std::string>{"ab"}, back.lines);
  back.FromJson(Note({"a\\tb"}).ToJson().c_str());
  EXPECT_EQ(std::vector<std::string>{"a\tb"}, back.lines);
  back.FromJson(Note({"a\x01"
                      "b"})
                    .ToJson()
                    .c_str());
  EXPECT_EQ(std::vector<std::string>{"a3b"}, back.lines);
  EXPECT_THROW(back.FromJson(Note({"a\"b"}).ToJson().c_str()), CQzValidationException);
}

// --- Namespaces

TEST(XmlObjectBaseJson, BelowTheFullModeNamespacesAreIgnoredForTheTimeOfTheCall) {
  for (const JsonRoundTrip mode : {JsonRoundTrip_None, JsonRoundTrip_Marked, JsonRoundTrip_Full}) {
    for (const bool before : {false, true}) {
      CSerializationContext context;
      context.SetIgnoreNamespaces(before);
      context.GetJsonContext().SetSupportRoundtrip(mode);
      CProbe probe;
      const bool ignored = before || mode != JsonRoundTrip_Full;
      if (ignored) {
        EXPECT_NO_THROW(probe.FromJson("{\"memo\":{\"line\":\"Milk\"}}", context));
      } else {
        EXPECT_THROW(probe.FromJson("{\"memo\":{\"line\":\"Milk\"}}", context), CQzException);
      }
      EXPECT_EQ(ignored, probe.ignoredNamespaces) << mode;
      EXPECT_EQ(before, context.GetIgnoreNamespaces()) << mode;
    }
  }
}

TEST(XmlObjectBaseJson, TheFlagIsBackAlsoBehindAFailure) {
  struct CThrowing : qztest::CNote {
    using CXmlObjectBase::FromXmlStream;
    void FromXmlStream(const CBinaryData&, const CSerializationContext& context) override {
      EXPECT_TRUE(context.GetIgnoreNamespaces());
      throw 7;
    }
  };
  CSerializationContext context;
  context.GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_Marked);
  CThrowing throwing;
  EXPECT_THROW(throwing.FromJson("{\"a\":1}", context), int);
  EXPECT_FALSE(context.GetIgnoreNamespaces());
  CProbe probe;
  EXPECT_THROW(probe.FromJson("{\"a\":{\"b\":1}}", context), CQzException);
  EXPECT_FALSE(context.GetIgnoreNamespaces());
}

TEST(XmlObjectBaseJson, AContextThatNobodyMayChangeIsAsBefore) {
  const CSerializationContext context;
  context.GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_None);
  CProbe probe;
  probe.FromJson("{\"memo\":{\"line\":\"Milk\"}}", context);
  EXPECT_TRUE(probe.ignoredNamespaces);
  EXPECT_FALSE(context.GetIgnoreNamespaces());
}

// What the getter answers is put back, which is true for this type whatever the flag.
TEST(XmlObjectBaseJson, WithoutNamespaceProcessingTheFlagStaysSet) {
  CSerializationContext context;
  context.SetSchemaType(SchemaType_NoNamespaces);
  context.GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_Marked);
  CProbe probe;
  probe.FromJson("{\"memo\":{\"line\":\"Milk\"}}", context);
  context.SetSchemaType(SchemaType_Default);
  EXPECT_TRUE(context.GetIgnoreNamespaces());

  CSerializationContext full;
  full.SetSchemaType(SchemaType_NoNamespaces);
  probe.FromJson("{\"memo\":{\"line\":\"Milk\"}}", full);
  full.SetSchemaType(SchemaType_Default);
  EXPECT_FALSE(full.GetIgnoreNamespaces());
}

// --- Failures

TEST(XmlObjectBaseJson, AFailureOfTheXmlCarriesItsText) {
  CElement element("none");
  EXPECT_QZ_THROW_FULL(CQzException,
                       "Error converting JSON to XML:\n<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<a>1</a>\n<b>2</b>\n\njunk after document element at line 3",
                       "", element.FromJson("{\"a\":1,\"b\":2}"));
  CProbe probe;
  EXPECT_QZ_THROW_FULL(CQzException,
                       "Error converting JSON to XML:\n<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<memo>\n\t<word>1</word>\n</memo>\n\nA note has lines alone.\n"
                       "Path: /memo/word",
                       "", probe.FromJson("{\"memo\":{\"word\":1}}"));
}

TEST(XmlObjectBaseJson, ATextWithoutAValueFailsInTheXml) {
  CElement element("none");
  for (const char* json : {" ", "\n", "// x", "null", "{}"}) {
    EXPECT_QZ_THROW_FULL(CQzException,
                         "Error converting JSON to XML:\n<?xml version=\"1.0\" "
                         "encoding=\"UTF-8\"?>\n\nno element found at line 2",
                         "", element.FromJson(json));
  }
}

TEST(XmlObjectBaseJson, AFailureOfTheJsonIsNotWrapped) {
  CProbe probe;
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', "
                       "found ']' at line 1, position 10.\nPath: $.memo",
                       "$.memo", probe.FromJson("{\"memo\": ]"));
  EXPECT_QZ_THROW_FULL(CQzException, "An Element has not been closed.", "",
                       probe.FromJson("{\"memo\":{\"@to\":\"Ann\"}}"));
  EXPECT_EQ(0, probe.reads);
}

// Each object of the array leaves an element open, and each null closes one.
TEST(XmlObjectBaseJson, ElementsThatAreLeftOpenCountInTheDepthOfTheDocument) {
  const auto nested = [](int depth) {
    std::string json = "{\"r\":{\"a\":[{\"@x\":1}";
    for (int i = 3; i < depth; ++i) json += ",{\"@x\":1}";
    json += ",{\"b\":1}";
    for (int i = 2; i < depth; ++i) json += ",null";
    return json + "]}}";
  };
  CElement element("none");
  EXPECT_NO_THROW(element.FromJson(nested(1023).c_str()));
  try {
    element.FromJson(nested(1024).c_str());
    ADD_FAILURE() << "passes";
  } catch (const CQzException& e) {
    EXPECT_EQ(0u, e.GetMessage().find("Error converting JSON to XML:\n<?xml"));
    ASSERT_NE(nullptr, e.GetInnerException());
    EXPECT_EQ("The document exceeds the depth limit of 1024 elements",
              e.GetInnerException()->GetMessage());
  }
}

// An entity that fifty octets make, in an attribute that a name brings, for each object of an
// array: the XML is 150 times the JSON, and the tree 16 times that.
std::string TextWithEntities() {
  std::string json = "{\"!DOCTYPE r [<!ENTITY a '" + std::string(50, 'x') + "'>]><r\":{\"b x='";
  for (int i = 0; i < 250; ++i) json += "&a;";
  json += "'\":[{}";
  for (int i = 1; i < 1000; ++i) json += ",{}";
  return json + "]}}";
}

TEST(XmlObjectBaseJson, WhatTheXmlGrowsToIsBoundedByTheJson) {
  const std::string json = TextWithEntities();
  const auto failure = [&json](std::uint32_t times) {
    CSerializationContext context;
    context.SetMaxAmplification(times);
    CElement element("none");
    try {
      element.FromJson(json.c_str(), context);
    } catch (const CQzException& e) {
      return e.GetInnerException() != nullptr ? e.GetInnerException()->GetMessage() : "no XML";
    }
    return std::string("passes");
  };
  // 12.5 million octets for the tree of 5000 octets of JSON. The end of the root is no name.
  EXPECT_EQ("The document grows past 100 times its size", failure(100));
  EXPECT_EQ("The document grows past 2000 times its size", failure(2000));
  EXPECT_EQ("not well-formed (invalid token) at line 1003", failure(4000));
  EXPECT_EQ("not well-formed (invalid token) at line 1003", failure(0));
  // The same XML in another hand is measured by itself.
  CXmlDocument document;
  const CBinaryData xml = document.LoadJson(json.c_str());
  EXPECT_QZ_THROW(CQzException, "not well-formed (invalid token) at line 1003",
                  document.LoadXmlStream(xml.GetData(), xml.GetLength()));
}

// A long namespace counts for each element. The XML of 37,000 octets is the measure, not the JSON
// of 217,000.
TEST(XmlObjectBaseJson, WhiteSpaceInJsonGivesItsXmlNoRoomToGrow) {
  const auto text = [](const std::string& front, const std::string& behind) {
    std::string json =
        front + "{\"r\":{\"@xmlns\":\"urn:" + std::string(2000, 'x') + "\",\"b\":[{}";
    for (int i = 1; i < 5000; ++i) json += ",{}";
    return json + "]}}" + behind;
  };
  const std::string spaces(200000, ' ');
  for (const std::string& json : {text(spaces, ""), text("", spaces), text("", "")}) {
    CElement element("none");
    try {
      element.FromJson(json.c_str());
      ADD_FAILURE() << "passes";
    } catch (const CQzException& e) {
      ASSERT_NE(nullptr, e.GetInnerException());
      EXPECT_EQ("The document grows past 100 times its size", e.GetInnerException()->GetMessage());
    }
  }
}

TEST(XmlObjectBaseJson, TheSizeOfTheJsonCountsAlsoWhenOtherJsonIsReadFirst) {
  struct CNested : qztest::CNote {
    using CXmlObjectBase::FromXmlStream;
    void FromXmlStream(const CBinaryData& data, const CSerializationContext& context) override {
      CElement("none").FromJson("{\"r\":{\"a\":1}}");
      CNote::FromXmlStream(data, context);
    }
  };
  CNested nested;
  try {
    nested.FromJson(TextWithEntities().c_str());
    ADD_FAILURE() << "passes";
  } catch (const CQzException& e) {
    ASSERT_NE(nullptr, e.GetInnerException());
    EXPECT_EQ("The document grows past 100 times its size", e.GetInnerException()->GetMessage());
  }
}

TEST(XmlObjectBaseJson, AnEmptyTextFails) {
  CElement element("none");
  EXPECT_QZ_THROW_FULL(CQzException, "JSON String is empty!", "", element.FromJson(""));
  EXPECT_QZ_THROW_FULL(CQzException, "JSON String is empty!", "", element.FromJson(L""));
  EXPECT_QZ_THROW_FULL(CQzException, "JSON String is empty!", "", element.FromJson(u""));
  const char* none = nullptr;
  const wchar_t* noneWide = nullptr;
  const char16_t* noneUtf16 = nullptr;
  EXPECT_QZ_THROW_FULL(CQzException, "JSON String is empty!", "", element.FromJson(none));
  EXPECT_QZ_THROW_FULL(CQzException, "JSON String is empty!", "", element.FromJson(noneWide));
  EXPECT_QZ_THROW_FULL(CQzException, "JSON String is empty!", "", element.FromJson(noneUtf16));
}

TEST(XmlObjectBaseJson, ATextIsTakenAsItStands) {
  CElement element("none");
  EXPECT_QZ_THROW(CQzValidationException,
                  "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found "
                  "'\xEF' at line 1, position 1.\nPath: $",
                  element.FromJson("\xEF\xBB\xBF{\"a\":1}"));
  EXPECT_QZ_THROW(CQzValidationException,
                  "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found "
                  "'\x1F' at line 1, position 1.\nPath: $",
                  element.FromJson("\x1F\x8B\x08"));
}

// The reader gets the two bytes of each unit, and meets the zero byte of the first one.
TEST(XmlObjectBaseJson, AWideTextFailsAtItsFirstZeroByte) {
  CElement element("none");
  EXPECT_QZ_THROW(CQzValidationException,
                  "Expected quotation mark character '\"' before Name, found '\nPath: $",
                  element.FromJson(L"{\"a\":1}"));
  EXPECT_QZ_THROW(CQzValidationException,
                  "Expected quotation mark character '\"' before Name, found '\nPath: $",
                  element.FromJson(u"{\"a\":1}"));
  CXmlDocument document;
  EXPECT_QZ_THROW(CQzInvalidStateException,
                  "Failed to convert value '1' to Element string value in XML.",
                  document.LoadJson(u"1"));
  // Two ASCII characters in each unit, low byte first: {"a":1}
  const char16_t packed[] = {0x227B, 0x2261, 0x313A, 0x207D, 0};
  EXPECT_EQ(CBinaryData("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a>1</a>\n"),
            document.LoadJson(packed));
}

// --- Bytes and files

// The lines of a memo that comes as bytes, by each of the three ways.
void ExpectLines(const std::vector<std::string>& lines, const CBinaryData& json) {
  const CTemporaryFile file(json);
  const CSerializationContext context;
  CProbe probe;
  probe.FromJsonStream(json, context);
  EXPECT_EQ(lines, probe.lines);
  EXPECT_EQ(&context, probe.call.context);
  CProbe fromBytes;
  fromBytes.FromJsonStream(json.GetData(), json.GetLength(), context);
  EXPECT_EQ(lines, fromBytes.lines);
  CProbe fromFile;
  fromFile.FromJsonFile(file.path(), context);
  EXPECT_EQ(lines, fromFile.lines);
  EXPECT_EQ(&context, fromFile.call.context);
}

void ExpectFailure(const std::string& message, const CBinaryData& json) {
  const CTemporaryFile file(json);
  CProbe probe;
  EXPECT_QZ_THROW(CQzValidationException, message, probe.FromJsonStream(json));
  EXPECT_QZ_THROW(CQzValidationException, message, probe.FromJsonFile(file.path()));
}

TEST(XmlObjectBaseJson, BytesAndFilesAreRead) {
  ExpectLines({"Milk", "\"Bread\" 3"}, Bytes(kMemo));
}

TEST(XmlObjectBaseJson, AByteOrderMarkInBytesIsSkippedOnce) {
  ExpectLines({"Milk", "\"Bread\" 3"}, Bytes("\xEF\xBB\xBF" + std::string(kMemo)));
  const std::string found =
      "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found '\xEF' at line "
      "1, position 1.\nPath: $";
  ExpectFailure(found, Bytes("\xEF\xBB\xBF\xEF\xBB\xBF{}"));
  ExpectFailure(found, Bytes("\xEF\xBB"));
  ExpectFailure(found, Bytes("\xEF\xBB{}"));
  CElement element("none");
  EXPECT_QZ_THROW_FULL(CQzException,
                       "Error converting JSON to XML:\n<?xml version=\"1.0\" "
                       "encoding=\"UTF-8\"?>\n\nno element found at line 2",
                       "", element.FromJsonStream(Bytes("\xEF\xBB\xBF")));
}

TEST(XmlObjectBaseJson, CompressedBytesAreExpandedFirst) {
  for (const CompressionType type : {CompressionType_GZip, CompressionType_ZLib}) {
    for (const char* mark : {"", "\xEF\xBB\xBF"}) {
      CBinaryData json = Bytes(mark + std::string(kMemo) + std::string(200, ' '));
      CQzZip::Compress(json, type);
      ExpectLines({"Milk", "\"Bread\" 3"}, json);
      CElement element("none");
      const std::string text(reinterpret_cast<const char*>(json.GetData()), json.GetLength());
      EXPECT_THROW(element.FromJson(text.c_str()), CQzValidationException);
      const CBinaryData cut(json.GetData(), json.GetLength() - 1);
      EXPECT_THROW(element.FromJsonStream(cut), CQzValidationException);
    }
  }
}

// An empty gzip file of RFC 1952, and an empty stream of RFC 1950.
TEST(XmlObjectBaseJson, CompressedNothingIsATextWithoutAValue) {
  const std::string gzip("\x1F\x8B\x08\0\0\0\0\0\2\3\3\0\0\0\0\0\0\0\0\0", 20);
  const std::string zlib("\x78\x9C\3\0\0\0\0\1", 8);
  CElement element("none");
  for (const std::string& packed : {gzip, zlib}) {
    EXPECT_QZ_THROW_FULL(CQzException,
                         "Error converting JSON to XML:\n<?xml version=\"1.0\" "
                         "encoding=\"UTF-8\"?>\n\nno element found at line 2",
                         "", element.FromJsonStream(Bytes(packed)));
  }
}

TEST(XmlObjectBaseJson, BytesAreBoundedAsWhatIsExpandedAnywhere) {
  CBinaryData json = Bytes(std::string(100000, ' '));
  CQzZip::Compress(json, CompressionType_GZip);
  const std::uint32_t before = CQzZip::GetMaxDecompressedSize();
  CQzZip::SetMaxDecompressedSize(99999);
  CElement element("none");
  EXPECT_QZ_THROW(CQzException, "The decompressed data exceeds the limit of 99999 bytes",
                  element.FromJsonStream(json));
  CQzZip::SetMaxDecompressedSize(before);
}

TEST(XmlObjectBaseJson, BytesBecomeLocalText) {
  struct CWestern {
    CWestern() { SetLocalCharEncoding(1252); }
    ~CWestern() { SetLocalCharEncoding(3); }
  };
  const CWestern western;
  ExpectLines({"\xE9"}, Bytes("{\"memo\":{\"@xmlns\":\"urn:notes\",\"line\":\"\xC3\xA9\"}}"));
}

// As all bytes that become local text do.
TEST(XmlObjectBaseJson, BytesEndAtTheFirstZeroByte) {
  ExpectLines({"Milk", "\"Bread\" 3"}, Bytes(kMemo + std::string("\0x", 2)));
  ExpectFailure("Unexpected End of File. Expected string value at line 1, position 2.\nPath: $",
                Bytes(std::string("\"a\0\"", 4)));
}

TEST(XmlObjectBaseJson, NoBytesAreNoStream) {
  CElement element("none");
  EXPECT_QZ_THROW_FULL(CQzException, "JSON Stream is empty!", "",
                       element.FromJsonStream(CBinaryData()));
  EXPECT_QZ_THROW_FULL(CQzException, "JSON Stream is empty!", "",
                       element.FromJsonStream(nullptr, 5));
  const BYTE byte = '1';
  EXPECT_QZ_THROW_FULL(CQzException, "JSON Stream is empty!", "", element.FromJsonStream(&byte, 0));
}

TEST(XmlObjectBaseJson, AnEmptyFileFailsInTheXml) {
  const CTemporaryFile file{CBinaryData()};
  CElement element("none");
  EXPECT_QZ_THROW_FULL(CQzException,
                       "Error converting JSON to XML:\n<?xml version=\"1.0\" "
                       "encoding=\"UTF-8\"?>\n\nno element found at line 2",
                       "", element.FromJsonFile(file.path()));
}

TEST(XmlObjectBaseJson, AFileThatCanNotBeReadFails) {
  CElement element("none");
  EXPECT_QZ_THROW_FULL(CQzException,
                       "Failed to open the file [/no/such/file.json] Error [0x00000002]", "",
                       element.FromJsonFile("/no/such/file.json"));
  EXPECT_QZ_THROW_FULL(CQzException, "Failed to open the file [] Error [0x00000002]", "",
                       element.FromJsonFile(nullptr));
}

// While one lives, every file has 8 octets, of which the system gives fewer, or not even the size.
class CDamagedFiles {
 public:
  CDamagedFiles(int sizeError, std::size_t length, int readError) {
    s_damage = {sizeError, length, readError};
    m_before = detail::SetFileOpener([](const char*, detail::FileMode, int&) {
      return std::unique_ptr<detail::IFile>(new CFile);
    });
  }
  ~CDamagedFiles() { detail::SetFileOpener(m_before); }
  CDamagedFiles(const CDamagedFiles&) = delete;
  CDamagedFiles& operator=(const CDamagedFiles&) = delete;

 private:
  struct Damage {
    int sizeError;
    std::size_t length;
    int readError;
  };
  struct CFile : detail::IFile {
    int GetSize(std::uint64_t& size) override {
      size = 8;
      return s_damage.sizeError;
    }
    int Read(std::uint64_t, void*, std::size_t, std::size_t& done) override {
      done = s_damage.length;
      return s_damage.readError;
    }
    void ReadAhead(std::uint64_t, std::size_t) override {}
  };
  static inline Damage s_damage;
  detail::FileOpener m_before;
};

TEST(XmlObjectBaseJson, AFileThatTheSystemDoesNotGiveFails) {
  CElement element("none");
  const CDamagedFiles unknown(5, 8, 0);
  EXPECT_QZ_THROW_FULL(CQzException, "Failed to get the size of the file [a] Error [0x00000005]",
                       "", element.FromJsonFile("a"));
  const CDamagedFiles failing(0, 8, 5);
  EXPECT_QZ_THROW_FULL(CQzException,
                       "Failed to read the contents of the file [a] Error [0x00000005]", "",
                       element.FromJsonFile("a"));
  const CDamagedFiles shrunk(0, 7, 0);
  EXPECT_QZ_THROW_FULL(CQzException,
                       "Failed to read the contents of the file [a] Error [0x00000000]", "",
                       element.FromJsonFile("a"));
}

TEST(XmlObjectBaseJson, BelowTheFullModeAFileIsReadWithoutNamespaces) {
  const CTemporaryFile file(Bytes("{\"memo\":{\"line\":\"Milk\"}}"));
  CSerializationContext context;
  context.GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_Marked);
  CProbe probe;
  probe.FromJsonFile(file.path(), context);
  EXPECT_TRUE(probe.ignoredNamespaces);
  EXPECT_FALSE(context.GetIgnoreNamespaces());
  const CTemporaryFile bad(Bytes("{\"memo\":{\"word\":\"Milk\"}}"));
  EXPECT_THROW(probe.FromJsonFile(bad.path(), context), CQzException);
  EXPECT_FALSE(context.GetIgnoreNamespaces());
}

}  // namespace
}  // namespace QzXmlLib16
