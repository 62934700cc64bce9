// Fast Infoset, octet by octet by annex C of X.891: what a document may have and what is refused.
#include <gtest/gtest.h>

#include "tests/tools/qzxml/ToolRun.h"

namespace {

using qztest::FromHex;
using qztest::RunTool;
using qztest::ToolResult;

const std::string kHead = "E000000100";

std::string ToXml(const std::string& digits) {
  const ToolResult result = RunTool({"convert", "-", "-", "--indent", "0"}, FromHex(digits));
  EXPECT_EQ(0, result.code) << digits << ' ' << result.err;
  const std::size_t line = result.out.find('\n');
  return line == std::string::npos ? result.out
                                   : result.out.substr(line + 1, result.out.size() - line - 2);
}

struct Case {
  std::string octets;
  const char* xml;
};

TEST(FastInfosetIn, HasElementsAttributesAndTexts) {
  const Case cases[] = {
      {kHead + "3C0061 FF", "<a/>"},
      {kHead + "3C0061 F0 F0", "<a/>"},
      // Names in full, then by index.
      {kHead + "3C0061 3C0062 F0 01 FF F0", "<a><b/><b/></a>"},
      {kHead + "7C0061 78006B 4076 FF F0", "<a k=\"v\"/>"},
      {kHead + "7C0061 78006B 4076 F0 40 00 80 FF F0 F0", "<a k=\"v\"><a k=\"v\"/></a>"},
      {kHead + "7C0061 78006B FF FF F0", "<a k=\"\"/>"},
      // A prefix and two namespaces; the attribute has the prefix by index.
      {kHead +
           "78 CF 0070 0478 3A7061 62 CD 0478 3A7061 63 F0 3F 81 81 0061 7B 81 81 006B 0076 FF F0",
       "<p:a xmlns:p=\"x:pab\" xmlns=\"x:pac\" p:k=\"v\"/>"},
      // Texts: for the table, by index, not for the table.
      {kHead + "3C0061 9078 A0 8079 A0 FF", "<a>xxyx</a>"},
      // The lengths that take an octet of their own: 3 in a chunk, 9 in an attribute.
      {kHead + "7C0061 78006B 08 00 313233343536373839 F0 82 00 787978 FF",
       "<a k=\"123456789\">xyx</a>"},
      // UTF-16: an e with acute, and a character of two units.
      {kHead + "3C0061 86 03 00E9D83DDE00 FF", "<a>\xC3\xA9\xF0\x9F\x98\x80</a>"},
      // CDATA.
      {kHead + "3C0061 8C 25 3C26 FF", "<a><![CDATA[<&]]></a>"},
      // A declaration in front.
      {"3C3F786D6C20656E636F64696E673D2766696E66273F3E" + kHead + "3C0061 FF", "<a/>"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(c.xml, ToXml(c.octets)) << c.octets;
  }
}

TEST(FastInfosetIn, HasWhatStandsBesideElements) {
  EXPECT_EQ("<!--c-->\n<?p d?>\n<a><!--c--><?p?>x</a>",
            ToXml(kHead + "E2 4063 E1 0070 0064 3C0061 E2 80 E1 80 FF 8078 FF"));
  EXPECT_EQ("<!DOCTYPE a PUBLIC \"p\" \"s\">\n<a/>", ToXml(kHead + "C7 0073 0070 F0 3C0061 FF"));
  EXPECT_EQ("<!DOCTYPE a SYSTEM 's\"'>\n<a/>", ToXml(kHead + "C6 017322 F0 3C0061 FF"));
  EXPECT_EQ("<a/>", ToXml("E0000001 07 045554462D38 01 02312E30 3C0061 FF"));
}

TEST(FastInfosetIn, HasTextsOfEveryEncoding) {
  // A chunk in an algorithm: 10 0 0 11, number - 1 in 8 bits, the length on the seventh bit.
  const Case cases[] = {
      {"8C 01 ABCD", "ABCD"},
      {"8C 05 3132", "MTI="},                       // base64: "12" by RFC 4648
      {"8C 09 FFFE", "-2"},                         // short
      {"8C 0A 01 0001FFFF", "1 -1"},                // two shorts
      {"8C 0E 01 00010000", "65536"},               // int
      {"8C 12 05 0000000100000000", "4294967296"},  // long
      {"8C 14 38", "true"},                         // boolean: 3 spare bits
      {"8C 14 1A", "true false true"},              // boolean: 1 spare bit
      {"8C 15 7F80", "true true true true true"},   // boolean: 7 spare bits
      {"8C 14 F0", ""},                             // boolean: all spare
      {"8C 1A 01 3FC00000", "1.5"},                 // float
      {"8C 1E 05 C004000000000000", "-2.5"},        // double
      {"8C 22 0D F81D4FAE7DEC11D0A76500A0C91E6BF6", "f81d4fae-7dec-11d0-a765-00a0c91e6bf6"},
      {"88 01 12AF", "12-"},  // numbers: 4 bits
      {"88 05 2B1F", "2:1"},  // dates
  };
  for (const Case& c : cases) {
    const std::string text = c.xml;
    EXPECT_EQ(text.empty() ? "<a/>" : "<a>" + text + "</a>",
              ToXml(kHead + "3C0061 " + c.octets + " FF"))
        << c.octets;
  }
}

TEST(FastInfosetIn, HasTablesOfItsOwn) {
  const Case cases[] = {
      // Prefixes p; namespaces u; local names a, k; value v; chunk x; the names p:a and k.
      {"E0000001 20 039B 00 0070 00 0075 01 0061 006B 00 0076 00 0078 00 03818180 00 0081"
       " 40 00 80 F0 A0 FF",
       "<p:a xmlns:p=\"u\" k=\"v\">x</p:a>"},
      // An alphabet of a and b, two bits each: 00 01 11 ends.
      {"E0000001 20 0800 00 016162 3C0061 88 80 1C FF", "<a>ab</a>"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(c.xml, ToXml(c.octets)) << c.octets;
  }
}

TEST(FastInfosetIn, ThatIsWrongIsAFailure) {
  const Case cases[] = {
      {"E0000002 00 3C0061 FF", "this is not Fast Infoset of version 1 at offset 0"},
      {"E0000001", "the document ends too early: octets are missing behind the one at offset 3"},
      {"E000000180", "no document begins like this: at offset 4"},
      {kHead, "the document ends too early: octets are missing behind the one at offset 4"},
      {kHead + "F0", "the document has no root at offset 5"},
      {kHead + "FF", "the document has no root at offset 5"},
      {kHead + "80", "no item begins like this: at offset 5"},
      {kHead + "3C0061",
       "/a: the document ends too early: octets are missing behind the one at offset 7"},
      {kHead + "3C0061 C0", "/a: no item begins like this: at offset 8"},
      {kHead + "3C0061 01 FF",
       "/a: there is no entry 2 in a table of 1 (element names) at offset 8"},
      {kHead + "3C0061 A0 FF",
       "/a: there is no entry 1 in a table of 0 (character chunks) at offset 8"},
      {kHead + "7C0061 00",
       "/a: there is no entry 1 in a table of 0 (attribute names) at offset 8"},
      {kHead + "7C0061 78006B 80",
       "/a: there is no entry 1 in a table of 0 (attribute value) at offset 11"},
      {kHead + "7C0061 80", "/a: no attribute begins like this: at offset 8"},
      {kHead + "3E00700061 FF", "a name has a prefix and no namespace: at offset 5"},
      {kHead + "38 C0", "no namespace attribute begins like this: at offset 6"},
      {kHead + "38 F0 40", "no element name begins like this: at offset 7"},
      {kHead + "3C4000",
       "the document ends too early: octets are missing behind the one at offset 7"},
      {kHead + "3C50", "no length has this form: at offset 6"},
      {kHead + "3C0020 FF", "\" \" can not be a name in XML at offset 7"},
      {kHead + "3C0061 F0 3C0062 FF", "the document has two roots at offset 11"},
      {kHead + "3C0061 8000 FF", "/a: the character U+0000 can not stand in XML at offset 9"},
      {kHead + "3C0061 80FF FF", "/a: the octet 0xFF is no text in UTF-8 at offset 9"},
      {kHead + "3C0061 8400 FF", "/a: half a character of UTF-16 ends at offset 9"},
      {kHead + "3C0061 85D800 FF", "/a: half a character of UTF-16 ends at offset 10"},
      {kHead + "3C0061 8810 00 FF", "/a: there is no alphabet 5 at offset 10"},
      {kHead + "3C0061 8C08 00 FF", "/a: Invalid value for SHORT byte encoding. at offset 10"},
      {kHead + "3C0061 8C80 00 FF",
       "/a: a value is encoded by the algorithm \"33\", which is not known, at offset 10"},
      {"E0000001 20 0400 00 0075 3C0061 8C80 00 FF",
       "/a: a value is encoded by the algorithm \"u\", which is not known, at offset 15"},
      {"E0000001 20 1000 0075 00 FF",
       "there is no entry 1 in a table of 0 (element names), nor is the vocabulary \"u\" known, "
       "at offset 9"},
      {"E0000001 20 2000 3C0061 FF", "no vocabulary begins like this: at offset 6"},
      {"E0000001 20 0200 F0 FF", "no number of items has this form: at offset 7"},
      {kHead + "7C0061 78006B 0031 00 0032 FF FF",
       "/a: the attribute \"k\" stands there twice at offset 16"},
      {kHead + "7C0061 7804786D6C6E73 0031 FF FF",
       "/a: an attribute can not have the name \"xmlns\" at offset 16"},
      {kHead + "E2 012D2D 3C0061 FF",
       "a comment with \"--\" in it can not be had in XML at offset 8"},
      {kHead + "E1 0070 013F3E 3C0061 FF",
       "a processing instruction with \"?>\" in it can not be had in XML at offset 10"},
      {kHead + "38 CE 0070 F0 3C0061 FF",
       "/a: the prefix \"p\" stands for no namespace at offset 12"},
      {kHead + "3C02610062 FF", "\"a\\x00b\" can not be a name in XML at offset 9"},
      {kHead + "C4 F0 C4 F0 3C0061 FF", "the document has two document types at offset 7"},
  };
  for (const Case& c : cases) {
    const ToolResult result = RunTool({"convert", "-", "-"}, FromHex(c.octets));
    EXPECT_EQ(1, result.code) << c.octets;
    EXPECT_EQ("-: " + std::string(c.xml) + "\n", result.err) << c.octets;
    EXPECT_EQ("", result.out);
  }
}

}  // namespace
