// Input made to do harm: a failure with one line, or a document; never more.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/support/Documents.h"
#include "tests/tools/qzxml/ToolRun.h"

namespace {

using qztest::FromHex;
using qztest::RunTool;
using qztest::ToolResult;

void ExpectOrderlyEnd(const std::string& octets, const std::string& what) {
  for (const char* to : {"xml", "fastinfoset", "json"}) {
    const ToolResult result = RunTool({"convert", "-", "-", "--to", to}, octets);
    EXPECT_TRUE(result.code == 0 || result.code == 1) << what << ' ' << to << result.err;
    if (result.code == 1) {
      EXPECT_EQ("", result.out) << what << ' ' << to;
      EXPECT_EQ(1, std::count(result.err.begin(), result.err.end(), '\n')) << result.err;
      continue;
    }
    // What was written is a document.
    const ToolResult again = RunTool({"inspect", "-"}, result.out);
    EXPECT_EQ(0, again.code) << what << ' ' << to << ' ' << again.err;
  }
  const ToolResult result = RunTool({"inspect", "-", "--octets"}, octets);
  EXPECT_TRUE(result.code == 0 || result.code == 1) << what;
}

TEST(Hostile, DocumentsCutAtEachOctetEndOrderly) {
  for (const char* name : {"corpora/finf/peer/own-namespaces.default.finf",
                           "corpora/finf/octets/R09-additional-data.finf",
                           "corpora/finf/octets/R08-initial-alphabet.finf"}) {
    const std::string octets = qztest::ReadTestFile(name);
    for (std::size_t size = 0; size < octets.size(); ++size) {
      ExpectOrderlyEnd(octets.substr(0, size), name + std::to_string(size));
    }
  }
}

TEST(Hostile, DocumentsWithAFlippedBitEndOrderly) {
  for (const char* name :
       {"corpora/finf/octets/R01-doctype.finf", "corpora/finf/octets/R06-initial-vocab-two.finf",
        "corpora/finf/octets/R12-uuid.finf"}) {
    const std::string octets = qztest::ReadTestFile(name);
    for (std::size_t at = 0; at < std::min<std::size_t>(octets.size(), 20); ++at) {
      for (int bit = 0; bit < 8; ++bit) {
        std::string damaged = octets;
        damaged[at] = static_cast<char>(damaged[at] ^ 1 << bit);
        ExpectOrderlyEnd(damaged, name + std::to_string(at) + '.' + std::to_string(bit));
      }
    }
  }
}

TEST(Hostile, DepthIsBounded) {
  std::string deepest;
  for (int i = 0; i < 1024; ++i) deepest += "<a>";
  std::string ends;
  for (int i = 0; i < 1024; ++i) ends += "</a>";
  for (const char* to : {"xml", "fastinfoset", "json"}) {
    EXPECT_EQ(0, RunTool({"convert", "-", "-", "--to", to}, deepest + ends).code) << to;
  }
  const ToolResult result = RunTool({"convert", "-", "-"}, deepest + "<b>");
  EXPECT_EQ(1, result.code);
  const std::string tail =
      "/a: The document exceeds the depth limit of 1024 elements at line 1, column 3073\n";
  EXPECT_EQ(tail, result.err.substr(result.err.size() - tail.size()));
}

TEST(Hostile, DepthOfJsonAndFastInfosetIsBounded) {
  std::string json;
  for (int i = 0; i < 200000; ++i) json += "{\"a\":";
  ToolResult result = RunTool({"convert", "-", "-"}, json);
  EXPECT_EQ(1, result.code);
  EXPECT_EQ("-: values stand more than 1024 deep inside each other, at line 1, column 5121\n",
            result.err);
  EXPECT_EQ(1, RunTool({"inspect", "-"}, std::string(200000, '[')).code);

  std::string fastInfoset = FromHex("E000000100 3C0061");
  fastInfoset += std::string(200000, '\0');
  result = RunTool({"convert", "-", "-"}, fastInfoset);
  EXPECT_EQ(1, result.code);
  // Eight octets and the first element, then one octet for each.
  const std::string tail =
      "/a: The document exceeds the depth limit of 1024 elements at offset 1031\n";
  EXPECT_EQ(tail, result.err.substr(result.err.size() - tail.size()));
}

TEST(Hostile, EntitiesDoNotGrowWithoutBound) {
  std::string xml = "<!DOCTYPE r [<!ENTITY e0 \"" + std::string(1000, 'x') + "\">";
  for (int i = 1; i < 10; ++i) {
    xml += "<!ENTITY e" + std::to_string(i) + " \"";
    for (int k = 0; k < 10; ++k) xml += "&e" + std::to_string(i - 1) + ';';
    xml += "\">";
  }
  const ToolResult result = RunTool({"convert", "-", "-"}, xml + "]><r>&e9;</r>");
  EXPECT_EQ(1, result.code);
  EXPECT_LT(result.err.size(), 200U);
}

TEST(Hostile, DefaultAttributesAndIndexesDoNotGrowWithoutBound) {
  // Of the 8 MiB each element takes its name and 32 octets, and its attribute name and value:
  // 8388608 less 33 of the root are 418 times 20034 and some.
  std::string xml = "<!DOCTYPE r [<!ATTLIST a k CDATA \"" + std::string(20000, 'x') + "\">]><r>";
  for (int i = 0; i < 2000; ++i) xml += "<a/>";
  ToolResult result = RunTool({"convert", "-", "-"}, xml + "</r>");
  EXPECT_EQ(1, result.code);
  EXPECT_EQ("-: /r/a[419]: The document grows past 100 times its size at line 1, column 21714\n",
            result.err);  // 20041 octets of the head, and 418 elements of 4

  // One chunk of 65536 octets, then its index again and again.
  std::string fastInfoset = FromHex("E000000100 3C0061 93 0000FEFD") + std::string(65536, 'x');
  fastInfoset += std::string(2000, '\xA0') + '\xFF';
  result = RunTool({"convert", "-", "-"}, fastInfoset);
  EXPECT_EQ(1, result.code);
  EXPECT_EQ("-: /a: The document grows past 100 times its size at offset 65675\n",
            result.err);  // at the 127th index, of which the first stands at 13 + 65536
}

// Five million times the rest of the value moved aside would take hours.
TEST(Hostile, AValueFullOfReferencesTakesNoMoreThanItsLength) {
  constexpr int kReferences = 5000000;
  std::string xml = "<a k=\"&#x9;";
  for (int i = 0; i < kReferences; ++i) xml += "&lt;";
  xml += "\"/>";
  EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + xml + '\n',
            qztest::ConvertText(xml, {}));
}

TEST(Hostile, WhatADocumentDoesNotHaveIsToldOfForAHundredPlaces) {
  std::string xml = "<!DOCTYPE r SYSTEM \"r.dtd\"><r>";
  for (int i = 0; i < 150000; ++i) xml += "<a>&x;</a>";
  const ToolResult result = RunTool({"inspect", "-"}, xml + "</r>");
  EXPECT_EQ(0, result.code);
  const std::string tail =
      "beside                  /r/a[100]: the entity \"x\" is not known\n"
      "beside                  149900 more places\n";
  EXPECT_EQ(tail, result.out.substr(result.out.size() - tail.size()));
  EXPECT_EQ(std::string::npos, result.out.find("/r/a[101]"));
}

TEST(Hostile, LengthsThatReachPastTheEndAskForNoMemory) {
  const ToolResult result =
      RunTool({"convert", "-", "-"}, FromHex("E000000100 3C0061 83 FFFFFFFF 41"));
  EXPECT_EQ(1, result.code);
  EXPECT_EQ("-: /a: the document ends too early: octets are missing behind the one at offset 12\n",
            result.err);
}

}  // namespace
