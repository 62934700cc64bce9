// Documents within gzip and zlib, as they come and as they are written.
#include <gtest/gtest.h>

#include "qzxml/runtime/QzZip.h"
#include "tests/tools/qzxml/ToolRun.h"

namespace {

using qztest::ConvertText;
using qztest::FromHex;
using qztest::RunTool;
using qztest::ToolResult;
using QzXmlLib16::CQzZip;

// What the failure says of octets that convert and inspect are given.
std::string Refuse(const std::string& octets) {
  const ToolResult converted = RunTool({"convert", "-", "-"}, octets);
  const ToolResult inspected = RunTool({"inspect", "-"}, octets);
  EXPECT_EQ(1, converted.code);
  EXPECT_EQ(1, inspected.code);
  EXPECT_EQ("", converted.out + inspected.out);
  EXPECT_EQ(converted.err, inspected.err);
  return converted.err;
}

// A gzip stream with one stored block (RFC 1952, 2.3; RFC 1951, 3.2.4).
std::string Member(const std::string& text, const std::string& check) {
  const auto size = static_cast<char>(text.size());
  return FromHex("1F8B0800 00000000 0003 01") + size + '\0' + static_cast<char>(~size) + '\xFF' +
         text + FromHex(check) + size + std::string(3, '\0');
}

// The sums of the texts are those that Python's zlib.crc32 gives, the lowest octet first.
const std::string kFirst = Member("<r>a", "886EBCB7");
const std::string kSecond = Member("b</r>", "2B935470");

// zlib.compress(b"<r/>")
const std::string kZlib = FromHex("789CB329D2B7030002E6011C");

TEST(Compression, AllMembersOfAGzipFileAreRead) {
  EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<r>ab</r>\n",
            ConvertText(kFirst + kSecond, {}));
  EXPECT_NE(std::string::npos, RunTool({"inspect", "-"}, kFirst + kSecond)
                                   .out.find("compression             gzip, 9 octets expanded\n"));
  // What is no member is none of the document's, as gzip itself has it.
  const std::string whole = Member("<r/>", "FD01B11F");
  EXPECT_EQ(ConvertText("<r/>", {}), ConvertText(whole + std::string(512, '\0'), {}));
}

TEST(Compression, DamageIsToldApartFromWhatIsNoDocument) {
  EXPECT_EQ("-: the gzip stream is damaged or cut off\n", Refuse(kFirst + kSecond.substr(0, 20)));
  EXPECT_EQ("-: the gzip stream is damaged or cut off\n", Refuse(Member("<r/>", "00000000")));
  EXPECT_EQ("-: the zlib stream is damaged or cut off\n", Refuse(kZlib.substr(0, 9)));
  EXPECT_EQ(ConvertText("<r/>", {}), ConvertText(kZlib, {}));
  // Texts whose first two octets could begin a zlib stream as well.
  EXPECT_EQ("-: this is neither XML, Fast Infoset nor JSON\n", Refuse("x^"));
  EXPECT_EQ("{\"r\":80}\n", ConvertText("80", {"--root", "r", "--to", "json", "--indent", "0"}));
}

TEST(Compression, ADocumentThatIsCompressedTwiceIsToldOf) {
  // Python: gzip.compress(b"\x1f\x8b\x08\x00", mtime=0)
  EXPECT_EQ("-: the document is compressed twice\n",
            Refuse(FromHex("1F8B080000000000020393EFE6600000BCE6870C04000000")));
}

TEST(Compression, ExpandsNothingAboveTheLimit) {
  const std::string compressed = ConvertText("<r>" + std::string(100000, ' ') + "</r>", {"--gzip"});
  const std::uint32_t limit = CQzZip::GetMaxDecompressedSize();
  CQzZip::SetMaxDecompressedSize(100000);
  EXPECT_EQ("-: The decompressed data exceeds the limit of 100000 bytes\n", Refuse(compressed));
  CQzZip::SetMaxDecompressedSize(limit);
  EXPECT_EQ(0, RunTool({"convert", "-", "-"}, compressed).code);
}

}  // namespace
