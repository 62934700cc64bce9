// The encodings of XML and JSON, as the first octets and the declaration tell them.
#include <gtest/gtest.h>

#include "tests/tools/qzxml/ToolRun.h"

namespace {

using qztest::ConvertText;
using qztest::FromHex;
using qztest::RunTool;

std::string Declared(const std::string& encoding, const std::string& text) {
  return "<?xml version=\"1.0\" encoding=\"" + encoding + "\"?><a>" + text + "</a>";
}

// Each octet of ASCII as a unit of more octets.
std::string Widen(const std::string& text, const std::string& before, const std::string& behind) {
  std::string wide;
  for (const char c : text) wide += before + c + behind;
  return wide;
}

TEST(Encoding, IsRecognised) {
  const std::string zero(1, '\0');
  const std::string zeros(3, '\0');
  const std::string xml = "<a>x</a>";
  const struct {
    std::string octets;
    const char* text;
    const char* encoding;
  } cases[] = {
      {xml, "x", "UTF-8"},
      {"\xEF\xBB\xBF" + xml, "x", "UTF-8, with a byte-order mark"},
      {Declared("utf-8", "\xC3\xA9"), "\xC3\xA9", "UTF-8, declared"},
      {"\xFF\xFE" + Widen(xml, "", zero), "x", "UTF-16LE, with a byte-order mark"},
      {"\xFE\xFF" + Widen(xml, zero, ""), "x", "UTF-16BE, with a byte-order mark"},
      {"\xFF\xFE" + Widen(Declared("UTF-16", "x"), "", zero), "x",
       "UTF-16LE, with a byte-order mark, declared"},
      {Widen(xml, "", zero), "x", "UTF-16LE"},
      {Widen(xml, zero, ""), "x", "UTF-16BE"},
      {Widen(xml, "", zeros), "x", "UTF-32LE"},
      {Widen(xml, zeros, ""), "x", "UTF-32BE"},
      {"\xFF\xFE" + std::string(2, '\0') + Widen(xml, "", zeros), "x",
       "UTF-32LE, with a byte-order mark"},
      {Declared("iso-8859-1", "\xE9"), "\xC3\xA9", "ISO-8859-1, declared"},
      {Declared("US-ASCII", "x"), "x", "US-ASCII, declared"},
      {Declared("windows-1252", "\x80"), "\xE2\x82\xAC", "WINDOWS-1252, declared"},
      {Declared("Shift_JIS", "\x93\xFA"), "\xE6\x97\xA5", "SHIFT_JIS, declared"},
      {Declared("KOI8-R", "\xD1"), "\xD1\x8F", "KOI8-R, declared"},
      // The declaration and <a>, an e with acute, </a> in EBCDIC, by Python's codec cp037.
      {FromHex("4c6fa79493 40a58599a28996957e7ff14bf07f40 8595839684899587 7e7fc9c2d4f0f3f77f6f6e"
               "4c816e 51 4c61816e"),
       "\xC3\xA9", "IBM037, declared"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ("{\"a\":\"" + std::string(c.text) + "\"}\n",
              ConvertText(c.octets, {"--to", "json", "--indent", "0"}))
        << c.encoding;
    const std::string told = RunTool({"inspect", "-"}, c.octets).out;
    EXPECT_NE(std::string::npos,
              told.find("\nencoding                " + std::string(c.encoding) + "\n"))
        << c.encoding << '\n'
        << told;
  }
}

TEST(Encoding, OfJsonIsToldByItsOctets) {
  const std::string zero(1, '\0');
  EXPECT_EQ("{\"a\":1}\n", ConvertText("\xEF\xBB\xBF{\"a\":1}", {"--to", "json", "--indent", "0"}));
  EXPECT_EQ("{\"a\":1}\n",
            ConvertText(Widen("{\"a\":1}", "", zero), {"--to", "json", "--indent", "0"}));
}

TEST(Encoding, ThatIsWrongIsAFailure) {
  const std::string zero(1, '\0');
  const struct {
    std::string octets;
    const char* message;
  } cases[] = {
      {Declared("KLINGON", "x"), "-: the encoding \"KLINGON\" is not known\n"},
      {Declared("LATIN1//IGNORE", "x"), "-: the encoding \"LATIN1//IGNORE\" is not known\n"},
      {Declared("UTF-16", "x"), "-: the document is in UTF-8, but declares \"UTF-16\"\n"},
      {"\xEF\xBB\xBF" + Declared("ISO-8859-1", "x"),
       "-: the document is in UTF-8, but declares \"ISO-8859-1\"\n"},
      {Widen(Declared("UTF-8", "x"), "", zero),
       "-: the document is in UTF-16LE, but declares \"UTF-8\"\n"},
      // The document begins with 42 octets of declaration and "<a>".
      {Declared("Shift_JIS", "\x81"), "-: the octets at offset 45 are no text in SHIFT_JIS\n"},
      {"\xFF\xFE<", "-: the octets at offset 0 are no text in UTF-16LE\n"},
      {"<a>\xFF</a>", "-: /a: not well-formed (invalid token) at line 1, column 4\n"},
  };
  for (const auto& c : cases) {
    const qztest::ToolResult result = RunTool({"convert", "-", "-"}, c.octets);
    EXPECT_EQ(1, result.code);
    EXPECT_EQ(c.message, result.err);
    EXPECT_EQ("", result.out);
  }
}

TEST(Encoding, WhatIsNoDocumentIsAFailure) {
  const struct {
    std::string octets;
    const char* message;
  } cases[] = {
      {"", "-: the document is empty\n"},
      {" \r\n\t", "-: the document is empty\n"},
      {"\xEF\xBB\xBF", "-: the document is empty\n"},
      {"hello", "-: this is neither XML, Fast Infoset nor JSON\n"},
      {"nothing", "-: this is neither XML, Fast Infoset nor JSON\n"},
      {std::string(20, '\0'), "-: this is neither XML, Fast Infoset nor JSON\n"},
      {"\x89PNG\r\n", "-: this is neither XML, Fast Infoset nor JSON\n"},
      {"\x1F\x8B\x08", "-: the gzip stream is damaged or cut off\n"},
      {"<a", "-: unclosed token at line 1, column 1\n"},
      {"<a/><b/>", "-: junk after document element at line 1, column 5\n"},
      {"<a><p:b/></a>", "-: /a: unbound prefix at line 1, column 4\n"},
      {"<!-- no root -->", "-: no element found at line 1, column 17\n"},
  };
  for (const auto& c : cases) {
    for (const char* command : {"convert", "inspect"}) {
      std::vector<std::string> arguments = {command, "-"};
      if (arguments[0] == "convert") arguments.push_back("-");
      const qztest::ToolResult result = RunTool(arguments, c.octets);
      EXPECT_EQ(1, result.code) << command;
      EXPECT_EQ(c.message, result.err) << command;
    }
  }
}

}  // namespace
