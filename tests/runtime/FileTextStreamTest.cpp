#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "qzxml/runtime/Encoder.h"
#include "qzxml/runtime/FileTextStream.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/xml/XmlTextWriter.h"
#include "tests/support/Documents.h"
#include "tests/support/FailingFile.h"
#include "tests/support/FileLimits.h"
#include "tests/support/LiveCounts.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using FileTextStream = qztest::NothingLeftBehind;

const std::string kMark = "\xFF\xFE";

std::string Bytes(CTextStream& stream) {
  CBinaryData bytes;
  stream.GetEncodedData(bytes);
  return std::string(reinterpret_cast<const char*>(bytes.GetData()), bytes.GetLength());
}

// What a file holds that is written in pieces.
std::string Written(XmlEncoding encoding, const std::vector<std::string>& pieces) {
  const qztest::TemporaryFile file("what was there before");
  CFileTextStream stream(file.path().c_str(), encoding);
  stream.Start();
  for (const std::string& piece : pieces) {
    stream.Put(piece);
    stream.Flush();
  }
  stream.End();
  return qztest::ReadWholeFile(file.path());
}

// ---- The bytes of a text ----

TEST_F(FileTextStream, TextHasTheBytesOfItsEncoding) {
  const struct {
    XmlEncoding encoding;
    std::string bytes;
  } cases[] = {
      {XmlEncoding_UTF8, "a\xC3\xA4\xF0\x9F\x98\x80"},
      {XmlEncoding_UTF16, std::string("a\0\xE4\0\x3D\xD8\x00\xDE", 8)},
      {XmlEncoding_UTF16NoDecl, std::string("a\0\xE4\0\x3D\xD8\x00\xDE", 8)},
  };
  for (const auto& c : cases) {
    CTextStream stream(c.encoding);
    stream.Put("a\xC3\xA4\xF0\x9F\x98\x80");
    EXPECT_EQ(c.bytes, Bytes(stream));
    EXPECT_EQ(c.bytes, Bytes(stream));  // it stays pending
    EXPECT_EQ(7U, stream.GetLength());
  }
}

TEST_F(FileTextStream, NoTextHasNoBytes) {
  for (const XmlEncoding encoding :
       {XmlEncoding_UTF8, XmlEncoding_UTF16, XmlEncoding_UTF16NoDecl}) {
    CTextStream stream(encoding);
    EXPECT_EQ("", Bytes(stream));
  }
}

TEST_F(FileTextStream, TextOfManyBlocksIsJoined) {
  CTextStream stream(XmlEncoding_UTF8);
  std::string text;
  for (int i = 0; i < 5000; ++i) {
    stream.Put(std::to_string(i));
    text += std::to_string(i);
  }
  EXPECT_EQ(text, Bytes(stream));
}

TEST_F(FileTextStream, BytesEndAtAZeroByte) {
  for (const XmlEncoding encoding : {XmlEncoding_UTF8, XmlEncoding_UTF16}) {
    CTextStream stream(encoding);
    stream.Put("a\0b", 3);
    EXPECT_EQ(encoding == XmlEncoding_UTF8 ? "a" : std::string("a\0", 2), Bytes(stream));
  }
  CTextStream stream(XmlEncoding_UTF8);
  stream.Put('\0');
  EXPECT_EQ("", Bytes(stream));
}

// While one lives, local text is Windows-1252.
struct CWestern {
  CWestern() { SetLocalCharEncoding(1252); }
  ~CWestern() { SetLocalCharEncoding(3); }
};

TEST_F(FileTextStream, TextOfAnotherLocalEncodingIsConverted) {
  const CWestern western;
  CTextStream narrow(XmlEncoding_UTF8);
  narrow.Put("a\xE4\x80");
  EXPECT_EQ("a\xC3\xA4\xE2\x82\xAC", Bytes(narrow));
  CTextStream wide(XmlEncoding_UTF16);
  wide.Put("a\xE4\x80");
  EXPECT_EQ(std::string("a\0\xE4\0\xAC\x20", 6), Bytes(wide));
  EXPECT_EQ("a\xC3\xA4", Written(XmlEncoding_UTF8, {"a", "\xE4"}));
}

TEST_F(FileTextStream, PromisedAsciiIsCopied) {
  const CWestern western;
  ASCIIOnly(true);
  CTextStream narrow(XmlEncoding_UTF8);
  narrow.Put("a\xE4");
  EXPECT_EQ("a\xE4", Bytes(narrow));
  ASCIIOnly(false);
}

TEST_F(FileTextStream, AnUnknownEncodingHasNoBytes) {
  for (const int encoding : {0, 4, -1}) {
    CTextStream stream(static_cast<XmlEncoding>(encoding));
    EXPECT_QZ_THROW(CQzException, "Unknown Encoding, select UTF-8 (contact our support team)",
                    Bytes(stream));
  }
}

// ---- Files ----

TEST_F(FileTextStream, ReplacesAFileByTheEncodedText) {
  EXPECT_EQ("a\xC3\xA4z", Written(XmlEncoding_UTF8, {"a\xC3\xA4", "z"}));
  EXPECT_EQ(kMark + std::string("a\0\xE4\0z\0", 6), Written(XmlEncoding_UTF16, {"a\xC3\xA4", "z"}));
  EXPECT_EQ(kMark + std::string("z\0", 2), Written(XmlEncoding_UTF16NoDecl, {"z"}));
}

TEST_F(FileTextStream, AnEmptyDocumentIsItsMarkAlone) {
  EXPECT_EQ("", Written(XmlEncoding_UTF8, {}));
  EXPECT_EQ(kMark, Written(XmlEncoding_UTF16, {}));
  EXPECT_EQ(kMark, Written(XmlEncoding_UTF16NoDecl, {""}));
}

TEST_F(FileTextStream, OpensTheFileInStart) {
  const qztest::TemporaryFile file("old");
  CFileTextStream stream(file.path().c_str(), XmlEncoding_UTF8);
  EXPECT_EQ("old", qztest::ReadWholeFile(file.path()));
  stream.Start();
  EXPECT_EQ("", qztest::ReadWholeFile(file.path()));
}

TEST_F(FileTextStream, WritesWithEachFlushAndTheRestAtTheEnd) {
  const qztest::TemporaryFile file("");
  CFileTextStream stream(file.path().c_str(), XmlEncoding_UTF8);
  stream.Start();
  stream.Put("one");
  stream.Flush();
  EXPECT_EQ(0U, stream.GetLength());
  EXPECT_EQ("one", qztest::ReadWholeFile(file.path()));
  stream.Put("two");
  EXPECT_EQ("one", qztest::ReadWholeFile(file.path()));
  stream.End();
  EXPECT_EQ("onetwo", qztest::ReadWholeFile(file.path()));
}

TEST_F(FileTextStream, AFileThatCanNotBeMadeFailsAtStart) {
  const struct {
    const char* path;
    const char* message;
  } cases[] = {
      {"/no/such/file", "Failed to write data to the file [/no/such/file] error [0x00000002]"},
      {"/", "Failed to write data to the file [/] error [0x00000015]"},
      {"", "Failed to write data to the file [] error [0x00000002]"},
      {nullptr, "Failed to write data to the file [] error [0x00000002]"},
  };
  const int before = qztest::OpenDescriptors();
  for (const auto& c : cases) {
    CFileTextStream stream(c.path, XmlEncoding_UTF8);
    EXPECT_QZ_THROW(CQzException, c.message, stream.Start());
  }
  EXPECT_EQ(before, qztest::OpenDescriptors());
}

TEST_F(FileTextStream, AFullDiskFailsWithTheMarkOrWithTheFirstText) {
  const int before = qztest::OpenDescriptors();
  CFileTextStream wide("/dev/full", XmlEncoding_UTF16);
  EXPECT_QZ_THROW(CQzException, "Failed to write data to the file [/dev/full] error [0x0000001C]",
                  wide.Start());
  CFileTextStream narrow("/dev/full", XmlEncoding_UTF8);
  narrow.Start();
  narrow.Put("x");
  EXPECT_QZ_THROW(CQzException, "Failed to write data to the file. Error [0x0000001C]",
                  narrow.Flush());
  EXPECT_EQ(before, qztest::OpenDescriptors());
  // It was closed: EBADF.
  EXPECT_QZ_THROW(CQzException, "Failed to write data to the file. Error [0x00000009]",
                  narrow.End());
}

TEST_F(FileTextStream, AFileThatFillsUpStaysAsFarAsItGot) {
  const qztest::TemporaryFile file("");
  const qztest::FileSizeLimit limit(6);
  CFileTextStream stream(file.path().c_str(), XmlEncoding_UTF8);
  stream.Start();
  stream.Put("0123");
  stream.Flush();
  stream.Put("4567");
  EXPECT_QZ_THROW(CQzException, "Failed to write data to the file. Error [0x0000001B]",
                  stream.End());
  EXPECT_EQ("012345", qztest::ReadWholeFile(file.path()));
}

TEST_F(FileTextStream, AnUnknownEncodingFailsAtTheFirstFlushBehindAnEmptyFile) {
  const qztest::TemporaryFile file("old");
  CFileTextStream stream(file.path().c_str(), XmlEncoding_Default);
  stream.Start();
  stream.Flush();  // nothing is pending
  stream.Put("x");
  EXPECT_QZ_THROW(CQzException, "Unknown Encoding, select UTF-8 (contact our support team)",
                  stream.Flush());
  EXPECT_EQ("", qztest::ReadWholeFile(file.path()));
}

TEST_F(FileTextStream, AStreamThatWasNotStartedFails) {
  CFileTextStream stream("/dev/null", XmlEncoding_UTF8);
  stream.Put("x");
  EXPECT_QZ_THROW(CQzException, "Failed to write data to the file. Error [0x00000009]",
                  stream.Flush());
}

TEST_F(FileTextStream, ClosesItsFileWhenItIsAbandoned) {
  const qztest::TemporaryFile file("");
  const int before = qztest::OpenDescriptors();
  {
    CFileTextStream stream(file.path().c_str(), XmlEncoding_UTF8);
    stream.Start();
    stream.Put("part");
    stream.Flush();
    stream.Put("lost");
    EXPECT_EQ(before + 1, qztest::OpenDescriptors());
  }
  EXPECT_EQ(before, qztest::OpenDescriptors());
  EXPECT_EQ("part", qztest::ReadWholeFile(file.path()));
}

// A stream that counts how often it is flushed with something in it.
class CCountedStream : public CFileTextStream {
 public:
  using CFileTextStream::CFileTextStream;
  void Flush() override {
    if (GetLength() != 0) sizes.push_back(GetLength());
    CFileTextStream::Flush();
  }
  std::vector<std::uint32_t> sizes;
};

TEST_F(FileTextStream, TheEndCallsTheFlushOfADerivedStream) {
  const qztest::TemporaryFile file("");
  CCountedStream stream(file.path().c_str(), XmlEncoding_UTF8);
  stream.Start();
  stream.Put("text");
  stream.End();
  EXPECT_EQ(std::vector<std::uint32_t>({4}), stream.sizes);
  EXPECT_EQ("text", qztest::ReadWholeFile(file.path()));
}

// A document of one element and the text that fills it up to so many octets.
void WriteDocument(CXmlTextWriter& writer, std::size_t octets) {
  writer.StartDocument();
  writer.SetFormatted(false);
  writer.WriteStartElement("a", "");
  writer.WriteText(std::string(octets - 7, 'x'), ItemType_string, false);
  writer.WriteEndElement();
}

TEST_F(FileTextStream, ADocumentOfLessThan4096OctetsGoesOutInOneWriteFromTheEnd) {
  const struct {
    std::size_t octets;
    std::vector<std::uint32_t> sizes;
  } cases[] = {
      {8, {8}},          {4095, {4095}}, {4096, {4096}},  // flushed behind the end tag
      {4100, {4096, 4}},                                  // flushed behind the text
      {4101, {4097, 4}},
  };
  for (const auto& c : cases) {
    const qztest::TemporaryFile file("");
    CCountedStream stream(file.path().c_str(), XmlEncoding_UTF8);
    CXmlTextWriter writer(&stream);
    WriteDocument(writer, c.octets);
    EXPECT_EQ(c.octets < 4096 ? 0 : c.sizes.front(), qztest::ReadWholeFile(file.path()).size())
        << c.octets;
    writer.EndDocument();
    EXPECT_EQ(c.sizes, stream.sizes) << c.octets;
    EXPECT_EQ(c.octets, qztest::ReadWholeFile(file.path()).size());
  }
}

TEST_F(FileTextStream, AFifoWhoseReaderGoesFails) {
  const qztest::TemporaryFile file("");
  const std::string fifo = file.path() + ".fifo";
  ASSERT_EQ(0, mkfifo(fifo.c_str(), 0600));
  const int reader = open(fifo.c_str(), O_RDONLY | O_NONBLOCK);
  CFileTextStream stream(fifo.c_str(), XmlEncoding_UTF8);
  stream.Start();
  close(reader);
  stream.Put("x");
  EXPECT_QZ_THROW(CQzException, "Failed to write data to the file. Error [0x00000020]",
                  stream.End());
}

TEST_F(FileTextStream, AnyWriteMayFailAndClosesTheFile) {
  for (const int failing : {1, 2, 3}) {
    qztest::FailingFile file;
    file.failingWrite = failing;
    file.writeError = 0x7ABCDEF0;
    CFileTextStream stream("a.xml", XmlEncoding_UTF16);
    int started = 0;
    const auto write = [&] {
      stream.Start();
      ++started;
      stream.Put("one");
      stream.Flush();
      stream.Put("two");
      stream.End();
    };
    EXPECT_QZ_THROW(CQzException,
                    failing == 1 ? "Failed to write data to the file [a.xml] error [0x7ABCDEF0]"
                                 : "Failed to write data to the file. Error [0x7ABCDEF0]",
                    write());
    EXPECT_EQ(failing == 1 ? 0 : 1, started);
    EXPECT_EQ(0, file.open);
    EXPECT_EQ(failing, file.writes);
    EXPECT_EQ(std::string("\xFF\xFEo\0n\0e\0", 8)
                  .substr(0, failing == 3   ? 8
                             : failing == 2 ? 2
                                            : 0),
              file.content);
  }
}

TEST_F(FileTextStream, ClosingMayFail) {
  qztest::FailingFile file;
  file.closeError = 28;
  CFileTextStream stream("a.xml", XmlEncoding_UTF8);
  stream.Start();
  stream.Put("one");
  EXPECT_QZ_THROW(CQzException, "Failed to write data to the file. Error [0x0000001C]",
                  stream.End());
  EXPECT_EQ(0, file.open);
  EXPECT_EQ("one", file.content);
}

TEST_F(FileTextStream, CanBeStartedAnewBehindItsEnd) {
  const qztest::TemporaryFile file("");
  CFileTextStream stream(file.path().c_str(), XmlEncoding_UTF8);
  for (const char* text : {"one", "two"}) {
    stream.Start();
    stream.Put(text);
    stream.End();
    EXPECT_EQ(text, qztest::ReadWholeFile(file.path()));
  }
}

TEST_F(FileTextStream, IsCountedAmongThePlainStreams) {
  const CFileTextStream stream("x", XmlEncoding_UTF8);
  EXPECT_NE(std::string::npos, CInstanceMonitor::DumpState().find("--> CTextStream = 1/"));
  EXPECT_EQ(std::string::npos, CInstanceMonitor::DumpState().find("CFileTextStream"));
}

}  // namespace
}  // namespace QzXmlLib16
