#include <gtest/gtest.h>

#include <string>

#include "qzxml/runtime/BinaryStream.h"
#include "qzxml/runtime/QzException.h"
#include "tests/support/Documents.h"
#include "tests/support/FailingFile.h"
#include "tests/support/FileLimits.h"
#include "tests/support/LiveCounts.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using BinaryStream = qztest::NothingLeftBehind;

std::string Text(const CBinaryData& bytes) {
  return std::string(reinterpret_cast<const char*>(bytes.GetData()), bytes.GetLength());
}

TEST_F(BinaryStream, TakesBytesOneBehindTheOther) {
  CBinaryStream stream;
  EXPECT_EQ(0U, stream.GetData().GetLength());
  stream.Put(0xE0);
  stream.Put(CBinaryData("abc"));
  stream.Put("\0d", 2);
  stream.Put(nullptr, 0);
  EXPECT_EQ(std::string("\xE0"
                        "abc\0d",
                        6),
            Text(stream.GetData()));
}

TEST_F(BinaryStream, BeginsWithACopy) {
  CBinaryData start("abc");
  CBinaryStream stream(start);
  stream.Put('d');
  EXPECT_EQ("abcd", Text(stream.GetData()));
  EXPECT_EQ("abc", Text(start));
}

TEST_F(BinaryStream, GivesACopyThatLaterBytesDoNotChange) {
  CBinaryStream stream(CBinaryData("abc"));
  const CBinaryData before = stream.GetData();
  stream.Put('d');
  EXPECT_EQ("abc", Text(before));
}

TEST_F(BinaryStream, ReplacesAFileInOneGo) {
  const struct {
    XmlEncoding encoding;
    std::string mark;
  } cases[] = {{XmlEncoding_Default, ""},
               {XmlEncoding_UTF8, ""},
               {XmlEncoding_UTF16, "\xFF\xFE"},
               {XmlEncoding_UTF16NoDecl, "\xFF\xFE"}};
  for (const auto& c : cases) {
    const qztest::TemporaryFile file("what was there before");
    CFileBinaryStream stream(file.path().c_str(), c.encoding, CBinaryData("\x1F\x8B"));
    EXPECT_EQ("what was there before", qztest::ReadWholeFile(file.path()));
    stream.Write();
    EXPECT_EQ(c.mark + "\x1F\x8B", qztest::ReadWholeFile(file.path()));
    CFileBinaryStream empty(file.path().c_str(), c.encoding);
    empty.Write();
    EXPECT_EQ(c.mark, qztest::ReadWholeFile(file.path()));
    empty.Put("x", 1);
    empty.Write();
    EXPECT_EQ(c.mark + "x", qztest::ReadWholeFile(file.path()));
  }
}

TEST_F(BinaryStream, FailuresOfTheSystemNameTheFile) {
  const struct {
    const char* path;
    XmlEncoding encoding;
    const char* message;
  } cases[] = {
      {"/no/such/file", XmlEncoding_UTF8,
       "Failed to write data to the file [/no/such/file] error [0x00000002]"},
      {"/", XmlEncoding_UTF8, "Failed to write data to the file [/] error [0x00000015]"},
      {nullptr, XmlEncoding_UTF8, "Failed to write data to the file [] error [0x00000002]"},
      {"/dev/full", XmlEncoding_UTF8,
       "Failed to write data to the file [/dev/full] error [0x0000001C]"},
      {"/dev/full", XmlEncoding_UTF16,
       "Failed to write data to the file [/dev/full] error [0x0000001C]"},
  };
  const int before = qztest::OpenDescriptors();
  for (const auto& c : cases) {
    CFileBinaryStream stream(c.path, c.encoding, CBinaryData("x"));
    EXPECT_QZ_THROW(CQzException, c.message, stream.Write());
  }
  EXPECT_EQ(before, qztest::OpenDescriptors());
}

TEST_F(BinaryStream, AFileThatFillsUpStaysAsFarAsItGot) {
  const qztest::TemporaryFile file("");
  const qztest::FileSizeLimit limit(6);
  CFileBinaryStream stream(file.path().c_str(), XmlEncoding_UTF16, CBinaryData("abcdefg"));
  EXPECT_QZ_THROW(CQzException,
                  "Failed to write data to the file [" + file.path() + "] error [0x0000001B]",
                  stream.Write());
  EXPECT_EQ(
      "\xFF\xFE"
      "abcd",
      qztest::ReadWholeFile(file.path()));
}

TEST_F(BinaryStream, AnyWriteAndTheClosingMayFailAndCloseTheFile) {
  const struct {
    int failingWrite;
    int closeError;
    std::string content;
  } cases[] = {{1, 0, ""}, {2, 0, "\xFF\xFE"}, {0, 0x12345678, "\xFF\xFEx"}};
  for (const auto& c : cases) {
    qztest::FailingFile file;
    file.failingWrite = c.failingWrite;
    file.writeError = 0x12345678;
    file.closeError = c.closeError;
    CFileBinaryStream stream("a.xml", XmlEncoding_UTF16, CBinaryData("x"));
    EXPECT_QZ_THROW(CQzException, "Failed to write data to the file [a.xml] error [0x12345678]",
                    stream.Write());
    EXPECT_EQ(c.content, file.content);
    EXPECT_EQ(0, file.open);
  }
}

TEST_F(BinaryStream, FilesAreCountedAmongThePlainStreams) {
  const CFileBinaryStream stream("x", XmlEncoding_UTF8);
  EXPECT_NE(std::string::npos, CInstanceMonitor::DumpState().find("--> CBinaryStream = 1/"));
  EXPECT_EQ(std::string::npos, CInstanceMonitor::DumpState().find("CFileBinaryStream"));
}

// A stream with a name of its own in the dumps.
class CNamedStream : public CBinaryStream {
 public:
  CNamedStream() : CBinaryStream("CNamedStream") {}
  explicit CNamedStream(const CBinaryData& data) : CBinaryStream("CNamedStream", data) {}
};

TEST_F(BinaryStream, ADerivedStreamMayCountUnderItsOwnName) {
  const CNamedStream first;
  const CNamedStream second(CBinaryData("abc"));
  EXPECT_EQ("abc", Text(second.GetData()));
  EXPECT_NE(std::string::npos, CInstanceMonitor::DumpState().find("--> CNamedStream = 2/"));
}

}  // namespace
}  // namespace QzXmlLib16
