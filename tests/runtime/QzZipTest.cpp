#include <gtest/gtest.h>
#include <zlib.h>

#include <cstring>
#include <random>
#include <string>

#include "qzxml/runtime/QzZip.h"
#include "qzxml/values/BinaryData.h"
#include "tests/support/LiveCounts.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using QzZip = qztest::NothingLeftBehind;

// "<a>", "text " twelve times, "</a>", packed by Python's zlib at its best level.
const std::string kPlain = "<a>text text text text text text text text text text text text </a>";
const std::string kGZip(
    "\x1F\x8B\x08\x00\x00\x00\x00\x00\x02\x03\xB3\x49\xB4\x2B\x49\xAD\x28\x51\x20\x93\xB0\xD1\x4F"
    "\xB4\x03\x00\xCA\xBF\x4A\x85\x43\x00\x00\x00",
    34);
const std::string kZLib(
    "\x78\xDA\xB3\x49\xB4\x2B\x49\xAD\x28\x51\x20\x93\xB0\xD1\x4F\xB4\x03\x00\x52\xE3\x18\xA2", 22);

CBinaryData Bytes(const std::string& text) {
  CBinaryData bytes;
  bytes.Append(reinterpret_cast<const unsigned char*>(text.data()),
               static_cast<std::uint32_t>(text.size()));
  return bytes;
}

std::string Text(const CBinaryData& bytes) {
  return std::string(reinterpret_cast<const char*>(bytes.GetData()), bytes.GetLength());
}

// An array made by array new, as the entries take it.
struct CArray {
  explicit CArray(const std::string& text)
      : data(new unsigned char[text.size()]), length(static_cast<std::uint32_t>(text.size())) {
    std::memcpy(data, text.data(), text.size());
  }
  CArray(const CArray&) = delete;
  CArray& operator=(const CArray&) = delete;
  ~CArray() { delete[] data; }

  std::string Text() const { return std::string(reinterpret_cast<char*>(data), length); }

  unsigned char* data;
  std::uint32_t length;
};

std::string Decompressed(const std::string& text) {
  CArray array(text);
  CQzZip::Decompress(array.data, array.length);
  return array.Text();
}

std::string Compressed(const std::string& text, CompressionType type) {
  CBinaryData bytes = Bytes(text);
  CQzZip::Compress(bytes, type);
  return Text(bytes);
}

// What zlib itself makes of a stream that is known to hold length octets, all of it read.
std::string InflatedByZLib(const std::string& packed, std::size_t length, int windowBits) {
  std::string result(length + 1, '\0');
  z_stream stream = {};
  EXPECT_EQ(Z_OK, inflateInit2(&stream, windowBits));
  std::string input = packed;
  stream.next_in = reinterpret_cast<Bytef*>(&input[0]);
  stream.avail_in = static_cast<uInt>(input.size());
  stream.next_out = reinterpret_cast<Bytef*>(&result[0]);
  stream.avail_out = static_cast<uInt>(result.size());
  EXPECT_EQ(Z_STREAM_END, inflate(&stream, Z_FINISH));
  EXPECT_EQ(0U, stream.avail_in);
  result.resize(stream.total_out);
  inflateEnd(&stream);
  return result;
}

std::string RandomText(std::size_t length) {
  std::mt19937 random(7);
  std::string text(length, '\0');
  for (char& c : text) c = static_cast<char>(random() & 0xFF);
  return text;
}

// The limit for the time of a test.
class CLimit {
 public:
  explicit CLimit(std::uint32_t limit) : m_before(CQzZip::GetMaxDecompressedSize()) {
    CQzZip::SetMaxDecompressedSize(limit);
  }
  CLimit(const CLimit&) = delete;
  CLimit& operator=(const CLimit&) = delete;
  ~CLimit() { CQzZip::SetMaxDecompressedSize(m_before); }

 private:
  std::uint32_t m_before;
};

TEST_F(QzZip, ExpandsWhatAnotherProgramCompressed) {
  EXPECT_EQ(kPlain, Decompressed(kGZip));
  EXPECT_EQ(kPlain, Decompressed(kZLib));
}

TEST_F(QzZip, MakesStreamsThatZLibReads) {
  std::string text;
  for (int i = 0; i < 30000; ++i) text += "<item n='" + std::to_string(i) + "'/>";
  const std::string gzip = Compressed(text, CompressionType_GZip);
  EXPECT_EQ("\x1F\x8B\x08", gzip.substr(0, 3));
  EXPECT_EQ(text, InflatedByZLib(gzip, text.size(), 31));
  const std::string zlib = Compressed(text, CompressionType_ZLib);
  EXPECT_EQ("\x78\x01", zlib.substr(0, 2));  // the fastest level
  EXPECT_EQ(text, InflatedByZLib(zlib, text.size(), 15));
  EXPECT_LT(gzip.size(), text.size() / 3);
}

TEST_F(QzZip, ReplacesAnArrayInPlace) {
  CArray array(kPlain);
  CQzZip::Compress(array.data, array.length, CompressionType_GZip);
  EXPECT_LT(array.length, kPlain.size());
  CQzZip::Decompress(array.data, array.length);
  EXPECT_EQ(kPlain, array.Text());
}

TEST_F(QzZip, RefusesWhatWouldGrowAndKeepsIt) {
  const struct {
    std::string text;
    CompressionType type;
    const char* message;
  } cases[] = {
      // Z_BUF_ERROR where the output is full before the end is asked for, else Z_OK: full by then.
      {"<a/>", CompressionType_GZip, "Failed to compress data. [Error Code: -5]"},
      {"x", CompressionType_GZip, "Failed to compress data. [Error Code: -5]"},
      {"x", CompressionType_ZLib, "Failed to compress data. [Error Code: -5]"},
      {RandomText(1 << 20), CompressionType_GZip, "Failed to compress data. [Error Code: 0]"},
      {RandomText(1 << 20), CompressionType_ZLib, "Failed to compress data. [Error Code: 0]"},
      {"<a/>", CompressionType_ZLib, "Failed to compress data. [Error Code: 0]"},
  };
  for (const auto& c : cases) {
    CBinaryData bytes = Bytes(c.text);
    EXPECT_QZ_THROW(CQzException, c.message, CQzZip::Compress(bytes, c.type));
    EXPECT_EQ(c.text, Text(bytes));
    CArray array(c.text);
    EXPECT_QZ_THROW(CQzException, c.message, CQzZip::Compress(array.data, array.length, c.type));
    EXPECT_EQ(c.text, array.Text());
  }
}

TEST_F(QzZip, RefusesAnArrayOfNothing) {
  CArray array("");
  EXPECT_QZ_THROW(CQzException, "Failed to compress data. [Error Code: -5]",
                  CQzZip::Compress(array.data, array.length, CompressionType_GZip));
  EXPECT_EQ(0U, array.length);
}

TEST_F(QzZip, LeavesDataAloneWithoutAKindOfCompression) {
  for (const int type : {0, 3, -1, 1000}) {
    EXPECT_EQ(kPlain, Compressed(kPlain, static_cast<CompressionType>(type)));
    EXPECT_EQ("x", Compressed("x", static_cast<CompressionType>(type)));
  }
}

TEST_F(QzZip, LeavesEmptyDataEmpty) {
  CBinaryData bytes;
  CQzZip::Compress(bytes, CompressionType_GZip);
  CQzZip::Compress(bytes, CompressionType_ZLib);
  EXPECT_EQ(0U, bytes.GetLength());
  unsigned char* none = nullptr;
  std::uint32_t length = 0;
  CQzZip::Decompress(none, length);
  EXPECT_EQ(nullptr, none);
  EXPECT_EQ(0U, length);
}

TEST_F(QzZip, OnlyTheValueThatIsCompressedChanges) {
  const CBinaryData bytes = Bytes(kPlain);
  CBinaryData copy = bytes;
  CQzZip::Compress(copy, CompressionType_ZLib);
  EXPECT_EQ(kPlain, Text(bytes));
  EXPECT_NE(kPlain, Text(copy));
}

TEST_F(QzZip, TakesPlainDataForPlain) {
  const std::string cases[] = {
      "<?xml version='1.0'?><a/>",
      "{\"a\":1}",
      "",
      "x",
      "\x1F",
      "\x1F\x8B",
      "\x78",
      "\x78\x9C",
      // the two bytes of a zlib header and nothing that follows from them
      "\x78\x9CThis is not compressed",
      "\x1F\x8B\x08 not compressed",
      // the check of the header, its method, its window
      "\x78\x9D" + kZLib.substr(2),
      "\x77\x85" + kZLib.substr(2),
      "\x88\x1C" + kZLib.substr(2),
  };
  for (const std::string& text : cases) {
    EXPECT_EQ(text, Decompressed(text)) << text;
    CBinaryData expanded = Bytes("before");
    EXPECT_FALSE(CQzZip::Decompress(reinterpret_cast<const unsigned char*>(text.data()),
                                    static_cast<std::uint32_t>(text.size()), expanded));
    EXPECT_EQ("before", Text(expanded));
  }
}

TEST_F(QzZip, TakesATruncatedStreamForPlainData) {
  for (const std::string& whole : {kGZip, kZLib}) {
    for (std::size_t length = 0; length < whole.size(); ++length) {
      EXPECT_EQ(whole.substr(0, length), Decompressed(whole.substr(0, length))) << length;
    }
  }
}

TEST_F(QzZip, TakesADamagedStreamForPlainData) {
  std::string wrongCheck = kGZip;
  wrongCheck[28] = static_cast<char>(wrongCheck[28] ^ 1);
  EXPECT_EQ(wrongCheck, Decompressed(wrongCheck));
}

TEST_F(QzZip, DropsWhatStandsBehindAStream) {
  EXPECT_EQ(kPlain, Decompressed(kGZip + "more"));
  EXPECT_EQ(kPlain, Decompressed(kGZip + kGZip));  // members in a row: the first
  EXPECT_EQ(kPlain, Decompressed(kZLib + std::string(100000, '\0')));
}

TEST_F(QzZip, ExpandsAroundTheBoundariesOfItsSteps) {
  for (const std::uint32_t length : {1U, 65535U, 65536U, 65537U, 131071U, 131072U, 131073U}) {
    const std::string text(length, 'x');
    if (length > 1) {
      EXPECT_EQ(text, Decompressed(Compressed(text, CompressionType_GZip))) << length;
    }
  }
}

TEST_F(QzZip, ExpandsAStreamOfNothing) {
  EXPECT_EQ("", Decompressed(std::string("\x78\x9C\x03\x00\x00\x00\x00\x01", 8)));
}

TEST_F(QzZip, LimitsWhatItExpandsTo) {
  // A thousand to one: 3 MiB of the same octet in about 3 KiB.
  const std::string bomb = Compressed(std::string(3 << 20, 'x'), CompressionType_GZip);
  EXPECT_LT(bomb.size(), 20000U);
  const CLimit limit((3 << 20) - 1);
  EXPECT_QZ_THROW(CQzException, "The decompressed data exceeds the limit of 3145727 bytes",
                  Decompressed(bomb));
}

TEST_F(QzZip, PassesExactlyTheLimit) {
  const std::string packed = Compressed(std::string(3 << 20, 'x'), CompressionType_ZLib);
  const CLimit limit(3 << 20);
  EXPECT_EQ(3U << 20, Decompressed(packed).size());
}

TEST_F(QzZip, ABombWithoutAnEndIsNotTakenForPlainData) {
  std::string bomb = Compressed(std::string(3 << 20, 'x'), CompressionType_GZip);
  bomb.resize(bomb.size() - 8);
  const CLimit limit(1 << 20);
  EXPECT_QZ_THROW(CQzException, "The decompressed data exceeds the limit of 1048576 bytes",
                  Decompressed(bomb));
}

TEST_F(QzZip, TheLimitIsOneGiBAndZeroLiftsIt) {
  EXPECT_EQ(1U << 30, CQzZip::GetMaxDecompressedSize());
  const CLimit limit(0);
  EXPECT_EQ(4294967295U, CQzZip::GetMaxDecompressedSize());
}

TEST_F(QzZip, IsCountedUnderItsName) {
  {
    const CQzZip zip;
    EXPECT_NE(std::string::npos, CInstanceMonitor::DumpState().find("--> CQzZip = 1/"));
  }
}

}  // namespace
}  // namespace QzXmlLib16
