#include <sys/stat.h>

#include <string>

#include "qzxml/json/JsonContext.h"
#include "qzxml/runtime/QzZip.h"
#include "qzxml/values/BinaryData.h"
#include "tests/serialization/Note.h"
#include "tests/support/Documents.h"
#include "tests/support/FileLimits.h"
#include "tests/support/LiveCounts.h"
#include "tests/support/QzTest.h"
#include "tests/support/Unprivileged.h"

// The entries that give bytes and files, of XML and of JSON.
namespace QzXmlLib16 {
namespace {

using qztest::CNote;

constexpr char kZLibRefused[] = "ZLIB Compression only available for To Stream methods.";
constexpr char kUnknownEncoding[] = "Unknown Encoding, select UTF-8 (contact our support team)";

// The default context with what it makes when a document first asks for it: not left by a test.
const CSerializationContext& DefaultContext() {
  const CSerializationContext& context = CSerializationContext::GetDefaultContext();
  context.GetAdditionalRootAttributes();
  return context;
}
const CSerializationContext& kContext = DefaultContext();

using XmlWriteEntry = qztest::NothingLeftBehind;

// Writing in pieces, until the end of the scope.
class InPieces {
 public:
  explicit InPieces(bool inPieces = true) { AsyncToXmlFile(inPieces); }
  ~InPieces() { AsyncToXmlFile(false); }
};

struct Note : CNote {
  explicit Note(std::vector<std::string> text = {"Milk", "\xC3\x84pfel"}) {
    to = "Ann";
    lines = std::move(text);
  }
};

std::string Text(const CBinaryData& bytes) {
  return std::string(reinterpret_cast<const char*>(bytes.GetData()), bytes.GetLength());
}

// Each octet and a zero: ASCII in UTF-16, little endian.
std::string Wide(const std::string& ascii) {
  std::string wide;
  for (const char c : ascii) wide += {c, '\0'};
  return wide;
}

std::string Expanded(const std::string& packed) {
  CBinaryData expanded;
  EXPECT_TRUE(CQzZip::Decompress(reinterpret_cast<const unsigned char*>(packed.data()),
                                 static_cast<std::uint32_t>(packed.size()), expanded));
  return Text(expanded);
}

const std::string kDeclared = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
const std::string kBody =
    "<AA:note xmlns:AA=\"urn:notes\" to=\"Ann\"><AA:line>Milk</AA:line>"
    "<AA:line>\xC3\x84pfel</AA:line></AA:note>";
const std::string kJson =
    "{\"AA:note\": {\"@xmlns:AA\": \"urn:notes\",\"@to\": \"Ann\",\"AA:line\": \"Milk\","
    "\"AA:line\": \"\xC3\x84pfel\"}}";

// ---- Bytes ----

TEST_F(XmlWriteEntry, BytesAreTheTextInItsEncoding) {
  const Note note;
  EXPECT_EQ(kDeclared + kBody, Text(note.ToXmlStream(true, false)));
  EXPECT_EQ(kBody, Text(note.ToXmlStream(false, false)));
  const Note plain({"x"});
  EXPECT_EQ(Wide("<?xml version=\"1.0\" encoding=\"UTF-16\"?>\r\n<AA:note xmlns:AA=\"urn:notes\" "
                 "to=\"Ann\">\r\n\t<AA:line>x</AA:line>\r\n</AA:note>\r\n"),
            Text(plain.ToXmlStream(true, true, XmlEncoding_UTF16, EOLType_CRLF)));
  EXPECT_EQ(Wide("<?xml version=\"1.0\"?>\n<AA:note xmlns:AA=\"urn:notes\" to=\"Ann\">"
                 "<AA:line>x</AA:line></AA:note>"),
            Text(plain.ToXmlStream(true, false, XmlEncoding_UTF16NoDecl)));
}

TEST_F(XmlWriteEntry, JsonBytesAreTheTextInItsEncoding) {
  EXPECT_EQ(kJson, Note().ToJson(false));
  EXPECT_EQ(kJson, Text(Note().ToJsonStream(false)));
  EXPECT_EQ(Wide("{\r\n\t\"AA:note\": {\r\n\t\t\"@xmlns:AA\": \"urn:notes\",\r\n\t\t\"@to\": "
                 "\"Ann\",\r\n\t\t\"AA:line\": \"x\"\r\n\t}\r\n}"),
            Text(Note({"x"}).ToJsonStream(true, XmlEncoding_UTF16NoDecl, EOLType_CRLF)));
}

TEST_F(XmlWriteEntry, JsonTakesItsOptionsFromTheContext) {
  CSerializationContext context;
  context.SetIndentChars("  ");
  context.GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_None);
  EXPECT_EQ("{\n  \"note\": {\n    \"to\": \"Ann\",\n    \"line\": \"x\"\n  }\n}",
            Note({"x"}).ToJson(true, EOLType_LF, context));
}

TEST_F(XmlWriteEntry, BytesAreCompressedBehindTheWriter) {
  const Note note({std::string(2000, 'x')});
  for (const CompressionType type : {CompressionType_GZip, CompressionType_ZLib}) {
    const std::string xml =
        Text(note.ToXmlStream(true, true, XmlEncoding_UTF8, EOLType_LF, kContext, type));
    EXPECT_LT(xml.size(), 200U);
    EXPECT_EQ(note.ToXmlStream().GetLength(), Expanded(xml).size());
    EXPECT_EQ(Text(note.ToXmlStream()), Expanded(xml));
    EXPECT_EQ(
        note.ToJson(),
        Expanded(Text(note.ToJsonStream(true, XmlEncoding_UTF8, EOLType_LF, kContext, type))));
  }
}

TEST_F(XmlWriteEntry, AnUnknownEncodingFailsBehindTheWholeDocument) {
  for (const int encoding : {0, 4, 9}) {
    const Note note;
    EXPECT_QZ_THROW(CQzException, kUnknownEncoding,
                    note.ToXmlStream(true, true, static_cast<XmlEncoding>(encoding)));
    EXPECT_EQ(1, note.attributeCalls);
    EXPECT_QZ_THROW(CQzException, kUnknownEncoding,
                    note.ToJsonStream(true, static_cast<XmlEncoding>(encoding)));
    EXPECT_EQ(2, note.attributeCalls);
  }
}

TEST_F(XmlWriteEntry, WhatIsTooSmallToCompressFails) {
  const Note note(std::vector<std::string>{});
  EXPECT_QZ_THROW(
      CQzException, "Failed to compress data. [Error Code: 0]",
      note.ToXmlStream(false, false, XmlEncoding_UTF8, EOLType_LF, kContext, CompressionType_GZip));
  EXPECT_QZ_THROW(
      CQzException, "Failed to compress data. [Error Code: 0]",
      note.ToJsonStream(false, XmlEncoding_UTF8, EOLType_LF, kContext, CompressionType_ZLib));
}

TEST_F(XmlWriteEntry, AnUnknownCompressionChangesNothing) {
  EXPECT_EQ(kBody, Text(Note().ToXmlStream(false, false, XmlEncoding_UTF8, EOLType_LF, kContext,
                                           static_cast<CompressionType>(3))));
}

TEST_F(XmlWriteEntry, AFailureOfTheObjectPassesOn) {
  Note note;
  note.to = "nobody";
  const qztest::TemporaryFile file("old");
  const std::string path = file.path();
  EXPECT_QZ_THROW(CQzException, "A note is to somebody.", note.ToXmlStream());
  EXPECT_QZ_THROW(CQzException, "A note is to somebody.", note.ToJson());
  EXPECT_QZ_THROW(CQzException, "A note is to somebody.", note.ToJsonStream());
  EXPECT_QZ_THROW(CQzException, "A note is to somebody.", note.ToXmlFile(path.c_str()));
  EXPECT_QZ_THROW(CQzException, "A note is to somebody.", note.ToJsonFile(path.c_str()));
  EXPECT_EQ("old", qztest::ReadWholeFile(path));  // nothing was opened yet
  const InPieces pieces;
  const int before = qztest::OpenDescriptors();
  EXPECT_QZ_THROW(CQzException, "A note is to somebody.", note.ToXmlFile(path.c_str()));
  EXPECT_EQ("", qztest::ReadWholeFile(path));
  EXPECT_EQ(before, qztest::OpenDescriptors());
}

// ---- Files ----

TEST_F(XmlWriteEntry, FilesAreTheBytesBehindTheMark) {
  const qztest::TemporaryFile file("old");
  const char* const path = file.path().c_str();
  const Note note;
  for (const bool inPieces : {false, true}) {
    const InPieces pieces(inPieces);
    for (const XmlEncoding encoding :
         {XmlEncoding_UTF8, XmlEncoding_UTF16, XmlEncoding_UTF16NoDecl}) {
      const std::string mark = encoding == XmlEncoding_UTF8 ? "" : "\xFF\xFE";
      note.ToXmlFile(path, true, true, encoding, EOLType_CRLF);
      EXPECT_EQ(mark + Text(note.ToXmlStream(true, true, encoding, EOLType_CRLF)),
                qztest::ReadWholeFile(path));
      note.ToJsonFile(path, true, encoding, EOLType_CRLF);
      EXPECT_EQ(mark + Text(note.ToJsonStream(true, encoding, EOLType_CRLF)),
                qztest::ReadWholeFile(path));
    }
  }
}

TEST_F(XmlWriteEntry, AFileWrittenInPiecesIsTheSameOne) {
  const qztest::TemporaryFile file("");
  const char* const path = file.path().c_str();
  // Documents of a byte less than each multiple of the size of a piece to a byte more.
  const std::size_t frame = Text(Note({"x"}).ToXmlStream(false, false)).size() - 1;
  // Every multiple up to 3 MiB: of the first the octet before, at and behind it, of the others one
  // in turn. Where each step is checked, one in 16 of those.
#ifdef QZXML_ASSERTIONS
  const std::size_t step = 16;
#else
  const std::size_t step = 1;
#endif
  for (std::size_t multiple = 1; multiple <= 768; multiple += multiple < 64 ? 1 : step) {
    for (const std::size_t place : {0U, 1U, 2U}) {
      if (multiple > 64 && place != multiple / step % 3) continue;
      const std::size_t size = multiple * 4096 - 1 + place;
      const Note note({std::string(size - frame, 'x')});
      const std::string whole = Text(note.ToXmlStream(false, false));
      EXPECT_EQ(size, whole.size());
      const InPieces pieces;
      note.ToXmlFile(path, false, false);
      EXPECT_TRUE(whole == qztest::ReadWholeFile(path)) << size;
    }
  }
}

TEST_F(XmlWriteEntry, AFileOfManyElementsWrittenInPiecesIsTheSameOne) {
  const qztest::TemporaryFile file("");
  const char* const path = file.path().c_str();
  for (const int count : {10, 100, 1000, 20000}) {
    std::vector<std::string> lines;
    for (int i = 0; i < count; ++i) lines.push_back("line \xC3\xA4 " + std::to_string(i));
    const Note note(lines);
    const std::string xml = Text(note.ToXmlStream(true, true, XmlEncoding_UTF16));
    const std::string json = Text(note.ToJsonStream());
    const InPieces pieces;
    note.ToXmlFile(path, true, true, XmlEncoding_UTF16);
    EXPECT_TRUE("\xFF\xFE" + xml == qztest::ReadWholeFile(path)) << count;
    note.ToJsonFile(path);
    EXPECT_TRUE(json == qztest::ReadWholeFile(path)) << count;
  }
}

TEST_F(XmlWriteEntry, AFileCanBeGZip) {
  const qztest::TemporaryFile file("");
  const char* const path = file.path().c_str();
  const Note note({std::string(2000, 'x')});
  for (const bool inPieces : {false, true}) {  // a compressed file is never written in pieces
    const InPieces pieces(inPieces);
    note.ToXmlFile(path, true, true, XmlEncoding_UTF8, EOLType_LF, kContext, CompressionType_GZip);
    EXPECT_EQ(Text(note.ToXmlStream()), Expanded(qztest::ReadWholeFile(path)));
    note.ToJsonFile(path, true, XmlEncoding_UTF8, EOLType_LF, kContext, CompressionType_GZip);
    EXPECT_EQ(note.ToJson(), Expanded(qztest::ReadWholeFile(path)));
  }
}

TEST_F(XmlWriteEntry, TheMarkOfUtf16StandsInFrontOfGZip) {
  const qztest::TemporaryFile file("");
  const Note note({std::string(2000, 'x')});
  note.ToXmlFile(file.path().c_str(), true, true, XmlEncoding_UTF16, EOLType_LF, kContext,
                 CompressionType_GZip);
  const std::string content = qztest::ReadWholeFile(file.path());
  EXPECT_EQ("\xFF\xFE\x1F\x8B", content.substr(0, 4));
  EXPECT_EQ(Text(note.ToXmlStream(true, true, XmlEncoding_UTF16)), Expanded(content.substr(2)));
}

TEST_F(XmlWriteEntry, FilesRefuseZLibBeforeAnythingElse) {
  Note note;
  note.to = "nobody";
  for (const bool inPieces : {false, true}) {
    const InPieces pieces(inPieces);
    EXPECT_QZ_THROW(CQzException, kZLibRefused,
                    note.ToXmlFile("/no/such/file", true, true, XmlEncoding_Default, EOLType_LF,
                                   kContext, CompressionType_ZLib));
    EXPECT_QZ_THROW(CQzException, kZLibRefused,
                    note.ToJsonFile("/no/such/file", true, XmlEncoding_Default, EOLType_LF,
                                    kContext, CompressionType_ZLib));
  }
  EXPECT_EQ(0, note.attributeCalls);
}

TEST_F(XmlWriteEntry, AFileThatCanNotBeMadeFails) {
  const Note note;
  const int before = qztest::OpenDescriptors();
  for (const bool inPieces : {false, true}) {
    const InPieces pieces(inPieces);
    EXPECT_QZ_THROW(CQzException, "Failed to write data to the file [/no/file] error [0x00000002]",
                    note.ToXmlFile("/no/file"));
    EXPECT_QZ_THROW(CQzException, "Failed to write data to the file [/tmp] error [0x00000015]",
                    note.ToJsonFile("/tmp"));
  }
  EXPECT_EQ(before, qztest::OpenDescriptors());
}

TEST_F(XmlWriteEntry, AFileWithoutPermissionIsNotWritten) {
  const Note note;
  const qztest::TemporaryFile file("old");
  const std::string path = file.path();
  for (const bool inPieces : {false, true}) {
    const InPieces pieces(inPieces);
    const std::string message =
        "Failed to write data to the file [" + path + "] error [0x0000000D]";
    EXPECT_EQ(message, qztest::FailureWithoutRights(path, [&] { note.ToXmlFile(path.c_str()); }));
    EXPECT_EQ(message, qztest::FailureWithoutRights(path, [&] { note.ToJsonFile(path.c_str()); }));
  }
  chmod(path.c_str(), 0600);
  EXPECT_EQ("old", qztest::ReadWholeFile(path));
}

TEST_F(XmlWriteEntry, AFifoWithoutAReaderFails) {
  const Note note;
  const qztest::TemporaryFile file("");
  const std::string fifo = file.path() + ".fifo";
  ASSERT_EQ(0, mkfifo(fifo.c_str(), 0600));
  for (const bool inPieces : {false, true}) {
    const InPieces pieces(inPieces);
    EXPECT_QZ_THROW(CQzException,
                    "Failed to write data to the file [" + fifo + "] error [0x00000006]",
                    note.ToXmlFile(fifo.c_str()));
  }
}

TEST_F(XmlWriteEntry, AFullDiskFails) {
  const Note note;
  EXPECT_QZ_THROW(CQzException, "Failed to write data to the file [/dev/full] error [0x0000001C]",
                  note.ToXmlFile("/dev/full"));
  const InPieces pieces;
  EXPECT_QZ_THROW(CQzException, "Failed to write data to the file. Error [0x0000001C]",
                  note.ToXmlFile("/dev/full"));
  EXPECT_QZ_THROW(CQzException, "Failed to write data to the file. Error [0x0000001C]",
                  note.ToJsonFile("/dev/full"));
}

TEST_F(XmlWriteEntry, AnUnknownEncodingLeavesAFileOnlyWhenItIsWrittenInPieces) {
  const Note note;
  const qztest::TemporaryFile file("old");
  const char* const path = file.path().c_str();
  EXPECT_QZ_THROW(CQzException, kUnknownEncoding,
                  note.ToXmlFile(path, true, true, XmlEncoding_Default));
  EXPECT_EQ("old", qztest::ReadWholeFile(path));
  const InPieces pieces;
  EXPECT_QZ_THROW(CQzException, kUnknownEncoding,
                  note.ToXmlFile(path, true, true, XmlEncoding_Default));
  EXPECT_EQ("", qztest::ReadWholeFile(path));
}

TEST_F(XmlWriteEntry, WhatIsWrittenIsReadBack) {
  const qztest::TemporaryFile file("");
  const char* const path = file.path().c_str();
  const Note note({std::string(2000, 'x'), "\xC3\x84pfel"});
  for (const XmlEncoding encoding :
       {XmlEncoding_UTF8, XmlEncoding_UTF16, XmlEncoding_UTF16NoDecl}) {
    CNote back;
    note.ToXmlFile(path, true, true, encoding);
    back.FromXmlFile(path);
    EXPECT_EQ(note.lines, back.lines);
  }
  CNote back;
  back.FromXmlStream(
      note.ToXmlStream(true, true, XmlEncoding_UTF8, EOLType_LF, kContext, CompressionType_ZLib));
  EXPECT_EQ(note.lines, back.lines);
  back.lines.clear();
  note.ToXmlFile(path, true, true, XmlEncoding_UTF8, EOLType_LF, kContext, CompressionType_GZip);
  back.FromXmlFile(path);
  EXPECT_EQ(note.lines, back.lines);
}

}  // namespace
}  // namespace QzXmlLib16
