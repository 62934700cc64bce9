// qzxml inspect: what it says of documents of each format, worked out by hand.
#include <gtest/gtest.h>

#include "tests/tools/qzxml/ToolRun.h"

namespace {

using qztest::FromHex;
using qztest::RunTool;
using qztest::TemporaryFolder;
using qztest::ToolResult;

std::string Inspect(const std::string& input, const std::vector<std::string>& options = {}) {
  std::vector<std::string> arguments = {"inspect", "-"};
  arguments.insert(arguments.end(), options.begin(), options.end());
  const ToolResult result = RunTool(arguments, input);
  EXPECT_EQ(0, result.code) << result.err;
  EXPECT_EQ("", result.err);
  return result.out;
}

TEST(Inspect, TellsOfXml) {
  EXPECT_EQ(
      "file                    -\n"
      "size                    196 octets\n"
      "compression             none\n"
      "format                  XML\n"
      "encoding                UTF-8\n"
      "document type           <!DOCTYPE p:r SYSTEM \"r.dtd\" [...]>\n"
      "root                    p:r in urn:p\n"
      "namespaces              3\n"
      "                        http://www.w3.org/XML/1998/namespace (xml)\n"
      "                        urn:d (the default)\n"
      "                        urn:p (p, q)\n"
      "elements                4\n"
      "attributes              2\n"
      "depth                   3\n"
      "texts                   3, 10 octets\n"
      "CDATA sections          1\n"
      "comments                2\n"
      "instructions            1\n"
      "beside                  /p:r/a/b: the entity \"u\" is not known\n",
      Inspect("<!DOCTYPE p:r SYSTEM \"r.dtd\" [<!ENTITY e \"x\">]>\n<!--c-->"
              "<p:r xmlns:p=\"urn:p\" xmlns=\"urn:d\" xmlns:q=\"urn:p\" q:k=\"1\">\n"
              "<a>one <b xml:lang=\"en\">two&u;</b><![CDATA[ \xC3\xA9]]></a><?pi?><c/>"
              "</p:r><!-- d -->\n"));
}

TEST(Inspect, TellsOfJson) {
  EXPECT_EQ(
      "file                    -\n"
      "size                    75 octets\n"
      "compression             none\n"
      "format                  JSON\n"
      "encoding                UTF-8\n"
      "root                    r\n"
      "objects                 3\n"
      "members                 6\n"
      "arrays                  1\n"
      "depth                   5\n"
      "strings                 2\n"
      "numbers                 1\n"
      "booleans                2\n"
      "nulls                   1\n"
      "comments                1\n",
      Inspect("{\"r\": {\"a\": [1, true, {\"b\": \"x\"}], \"c\": null, \"d\": false /* e */,"
              " \"f\": \"\"}}"));
}

TEST(Inspect, NamesTheRootOfJson) {
  const auto root = [](const std::string& json) {
    const std::string told = Inspect(json);
    const std::size_t at = told.find("\nroot ");
    return told.substr(at + 25, told.find('\n', at + 1) - at - 25);
  };
  EXPECT_EQ("an array of 2 items", root("[1,2]"));
  EXPECT_EQ("an object of 0 members", root("{}"));
  EXPECT_EQ("an object of 2 members", root("{\"a\":1,\"b\":2}"));
  EXPECT_EQ("a plain value", root("\"x\""));
}

TEST(Inspect, TellsOfCompressedFiles) {
  const TemporaryFolder folder;
  const std::string path = folder.Path("a.gz");
  ASSERT_EQ(0, RunTool({"convert", "-", path, "--indent", "0"}, "<a/>").code);
  const std::string told = RunTool({"inspect", path}).out;
  // The declaration and its line end are 39 octets.
  EXPECT_NE(std::string::npos, told.find("\ncompression             gzip, 44 octets expanded\n"))
      << told;
  EXPECT_EQ(0U, told.find("file                    " + path + "\nsize                    " +
                          std::to_string(folder.Read("a.gz").size()) + " octets\n"));
}

// <a k="v">hi</a>, as ConvertTest has it.
const std::string kFastInfoset = "E000000100 78F0 3C0061 78006B 4076 F0 916869 FF";

const std::string kTables =
    "file                    -\n"
    "size                    20 octets\n"
    "compression             none\n"
    "format                  Fast Infoset\n"
    "declaration             none\n"
    "root                    a\n"
    "namespaces              0\n"
    "elements                1\n"
    "attributes              1\n"
    "depth                   1\n"
    "texts                   1, 2 octets\n"
    "CDATA sections          0\n"
    "comments                0\n"
    "instructions            0\n"
    "prefixes                1\n"
    "       1  \"xml\"\n"
    "namespace names         1\n"
    "       1  \"http://www.w3.org/XML/1998/namespace\"\n"
    "local names             2\n"
    "       1  \"a\"\n"
    "       2  \"k\"\n"
    "attribute values        1\n"
    "       1  \"v\"\n"
    "character chunks        1\n"
    "       1  \"hi\"\n"
    "element names           1\n"
    "       1  a\n"
    "attribute names         1\n"
    "       1  k\n";

TEST(Inspect, TellsTheTablesOfFastInfoset) { EXPECT_EQ(kTables, Inspect(FromHex(kFastInfoset))); }

TEST(Inspect, ListsTheOctetsOfFastInfoset) {
  EXPECT_EQ(kTables +
                "\n"
                "00000000  e0 00 00 01              identification, version 1\n"
                "00000004  00                       optional components: none\n"
                "00000005  78                       element with attributes, with namespace "
                "attributes\n"
                "00000006  f0                       end of the namespace attributes\n"
                "00000007  3c                       element name in full\n"
                "00000008  00                       its local name, 1 octet\n"
                "00000009  61                       its octets, entry 1 of its table: \"a\"\n"
                "0000000a  78                       attribute, its name in full\n"
                "0000000b  00                       its local name, 1 octet\n"
                "0000000c  6b                       its octets, entry 2 of its table: \"k\"\n"
                "0000000d  40                       attribute value in UTF-8, 1 octet\n"
                "0000000e  76                       its octets, entry 1 of its table: \"v\"\n"
                "0000000f  f0                       end of the attributes\n"
                "00000010  91                       character chunk in UTF-8, 2 octets\n"
                "00000011  68 69                    its octets, entry 1 of its table: \"hi\"\n"
                "00000013  ff                       end of the element and of the document\n",
            Inspect(FromHex(kFastInfoset), {"--octets"}));
}

std::string ListOf(const std::string& digits) {
  const std::string told = RunTool({"inspect", "-", "--octets"}, FromHex(digits)).out;
  return told.substr(told.find("\n\n") + 2);
}

TEST(Inspect, ListsEveryKindOfItem) {
  // A declaration; additional data, vocabulary, notations, unparsed entities, encoding, standalone
  // and version; comment, instruction, document type; and in the root a reference, a text in two
  // lines of octets, values of an alphabet and of an algorithm, names by index.
  EXPECT_EQ(
      "00000000  3c 3f 78 6d 6c 20 65 6e  XML declaration\n"
      "00000008  63 6f 64 69 6e 67 3d 27\n"
      "00000010  66 69 6e 66 27 3f 3e\n"
      "00000017  e0 00 00 01              identification, version 1\n"
      "0000001b  7f                       optional components: additional data, initial vocabulary,"
      " notations, unparsed entities, character encoding, standalone, version\n"
      "0000001c  00                       pieces of additional data: 1\n"
      "0000001d  00                       name of the additional data, 1 octet\n"
      "0000001e  75                       its octets: \"u\"\n"
      "0000001f  00                       additional data, 1 octet\n"
      "00000020  78                       its octets: \"x\"\n"
      "00000021  10 92                    initial vocabulary: external vocabulary, local names,"
      " attribute values, element names\n"
      "00000023  00                       external vocabulary, 1 octet\n"
      "00000024  77                       its octets: \"w\"\n"
      "00000025  00                       entries, local name: 1\n"
      "00000026  00                       local name, 1 octet\n"
      "00000027  61                       its octets: \"a\"\n"
      "00000028  00                       entries, attribute value: 1\n"
      "00000029  00                       attribute value in UTF-8, 1 octet\n"
      "0000002a  76                       its octets: \"v\"\n"
      "0000002b  00                       entries, element name: 1\n"
      "0000002c  00 80                    element name: \"a\"\n"
      "0000002e  c0                       notation\n"
      "0000002f  00                       its name, 1 octet\n"
      "00000030  6e                       its octets, entry 1 of its table: \"n\"\n"
      "00000031  f0                       end of the notations\n"
      "00000032  d0                       unparsed entity\n"
      "00000033  00                       its name, 1 octet\n"
      "00000034  65                       its octets, entry 2 of its table: \"e\"\n"
      "00000035  00                       its system identifier, 1 octet\n"
      "00000036  73                       its octets, entry 1 of its table: \"s\"\n"
      "00000037  80                       its notation, entry 1 of its table: \"n\"\n"
      "00000038  f0                       end of the unparsed entities\n"
      "00000039  00                       character encoding, 1 octet\n"
      "0000003a  78                       its octets: \"x\"\n"
      "0000003b  01                       standalone: yes\n"
      "0000003c  00                       version in UTF-8, 1 octet\n"
      "0000003d  31                       its octets: \"1\"\n"
      "0000003e  e2                       comment\n"
      "0000003f  40                       its text in UTF-8, 1 octet\n"
      "00000040  63                       its octets, entry 1 of its table: \"c\"\n"
      "00000041  c4                       document type\n"
      "00000042  e1                       processing instruction\n"
      "00000043  80                       its target, entry 1 of its table: \"n\"\n"
      "00000044  ff                       its data, empty\n"
      "00000045  f0                       end of the document type\n"
      "00000046  40                       element with attributes, entry 1 of its table: \"a\"\n"
      "00000047  78                       attribute, its name in full\n"
      "00000048  80                       its local name, entry 1 of its table: \"a\"\n"
      "00000049  80                       attribute value, entry 1 of its table: \"v\"\n"
      "0000004a  f0                       end of the attributes\n"
      "0000004b  ca                       reference to an entity\n"
      "0000004c  81                       its name, entry 2 of its table: \"e\"\n"
      "0000004d  80                       its system identifier, entry 1 of its table: \"s\"\n"
      "0000004e  82 06                    character chunk in UTF-8, 9 octets\n"
      "00000050  31 32 33 34 35 36 37 38  its octets: \"123456789\"\n"
      "00000058  39\n"
      "00000059  88 01                    character chunk in the numeric alphabet, 2 octets\n"
      "0000005b  12 af                    its octets: \"12-\"\n"
      "0000005d  9c 09                    character chunk in algorithm short, 2 octets\n"
      "0000005f  00 07                    its octets, entry 1 of its table: \"7\"\n"
      "00000061  a0                       character chunk, entry 1 of its table: \"7\"\n"
      "00000062  f0                       end of the element\n"
      "00000063  f0                       end of the document\n"
      "00000064  00 00                    behind the end of the document\n",
      ListOf("3C3F786D6C20656E636F64696E673D2766696E66273F3E E0000001 7F"
             "00 0075 0078"
             "1092 0077 00 0061 00 0076 00 0080"
             "C0 006E F0 D0 0065 0073 80 F0 0078 01 0031"
             "E2 4063 C4 E1 80 FF F0"
             "40 78 80 80 F0 CA 81 80 8206 313233343536373839 8801 12AF 9C09 0007 A0 F0 F0 0000"));
}

TEST(Inspect, ListsADamagedDocumentUpToTheDamage) {
  const ToolResult result =
      RunTool({"inspect", "-", "--octets"}, FromHex("E000000100 3C0061 9068 C0"));
  EXPECT_EQ(1, result.code);
  EXPECT_EQ("-: /a: no item begins like this: at offset 10\n", result.err);
  EXPECT_EQ(
      "file                    -\n"
      "size                    11 octets\n"
      "compression             none\n"
      "format                  Fast Infoset\n"
      "\n"
      "00000000  e0 00 00 01              identification, version 1\n"
      "00000004  00                       optional components: none\n"
      "00000005  3c                       element without attributes, its name in full\n"
      "00000006  00                       its local name, 1 octet\n"
      "00000007  61                       its octets, entry 1 of its table: \"a\"\n"
      "00000008  90                       character chunk in UTF-8, 1 octet\n"
      "00000009  68                       its octets, entry 1 of its table: \"h\"\n",
      result.out);
}

TEST(Inspect, ShowsTheOctetsOfAnUnknownAlgorithm) {
  EXPECT_NE(std::string::npos,
            ListOf("E000000100 3C0061 8C80 41 FF")
                .find("character chunk in algorithm 33, 1 octet\n"
                      "0000000a  41                       its octets: \"41\"\n"));
}

TEST(Inspect, CutsLongValues) {
  const std::string told =
      Inspect(qztest::ConvertText("<a k='" + std::string(70, 'x') + "'/>", {"--to", "fastinfoset"}),
              {"--octets"});
  EXPECT_NE(std::string::npos,
            told.find("its octets: \"" + std::string(60, 'x') + "\" and 10 octets more\n"))
      << told;
}

TEST(Inspect, HasNothingToListOfOtherFormats) {
  EXPECT_EQ(Inspect("<a/>"), Inspect("<a/>", {"--octets"}));
}

TEST(Inspect, MakesWhatItTellsPrintable) {
  EXPECT_NE(std::string::npos,
            Inspect("<a xmlns=\"urn:&#9;&#x7F;\xC3\xA9\"/>").find("a in urn:\\x09\\x7f\xC3\xA9\n"));
}

}  // namespace
