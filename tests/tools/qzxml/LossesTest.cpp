// What a conversion tells of, each message whole, and what --strict does then.
#include <gtest/gtest.h>

#include "tests/tools/qzxml/ToolRun.h"

namespace {

using qztest::FromHex;
using qztest::RunTool;
using qztest::TemporaryFolder;
using qztest::ToolResult;

std::string Told(const std::string& input, const std::vector<std::string>& options) {
  std::vector<std::string> arguments = {"convert", "-", "-"};
  arguments.insert(arguments.end(), options.begin(), options.end());
  const ToolResult result = RunTool(arguments, input);
  EXPECT_EQ(0, result.code) << result.err;
  return result.err;
}

const std::string kEverything =
    "<!DOCTYPE r>\n<!--1--><?p1 x?><r><!--2--><a/><a>t<?p2?><b/>u<![CDATA[v]]></a>"
    "<c xml:space='preserve'> <d/></c>\n</r><!--3-->";

TEST(Losses, OfXmlInFastInfoset) {
  EXPECT_EQ(
      "-: /: the document type is not kept\n"
      "-: /: a comment is not kept\n"
      "-: /: the processing instruction \"p1\" is not kept\n"
      "-: /r: a comment is not kept\n"
      "-: /r/a[2]: the position of text among elements is not kept\n"
      "-: /r/a[2]: the processing instruction \"p2\" is not kept\n"
      "-: /r/a[2]: a CDATA section is kept as plain text\n"
      "-: /: a comment is not kept\n",
      Told(kEverything, {"--to", "fastinfoset"}));
}

TEST(Losses, OfXmlInJson) {
  EXPECT_EQ(
      "-: /: the document type is not kept\n"
      "-: /: a comment is not kept\n"
      "-: /: the processing instruction \"p1\" is not kept\n"
      "-: /r: a comment is not kept\n"
      "-: /r/a[2]: the position of text among elements is not kept\n"
      "-: /r/a[2]: the processing instruction \"p2\" is not kept\n"
      "-: /r/a[2]: a CDATA section is kept as plain text\n"
      "-: /r/c: the position of text among elements is not kept\n"
      "-: /: a comment is not kept\n",
      Told(kEverything, {"--to", "json"}));
}

TEST(Losses, OfXmlInXmlAreNone) {
  EXPECT_EQ("", Told(kEverything, {"--to", "xml"}));
  EXPECT_EQ("", Told(kEverything, {"--to", "xml", "--indent", "2"}));
}

TEST(Losses, TextInFrontOfElementsKeepsItsPlaceInFastInfosetOnly) {
  EXPECT_EQ("", Told("<r>x<a/></r>", {"--to", "fastinfoset"}));
  EXPECT_EQ("-: /r: the position of text among elements is not kept\n",
            Told("<r>x<a/></r>", {"--to", "json"}));
}

TEST(Losses, MembersThatComeTwice) {
  const char* const kTwice =
      "\" stands in its object twice, and many readers of JSON keep one only\n";
  EXPECT_EQ(std::string("-: /r/a[3]: the member \"a") + kTwice,
            Told("<r><a/><a/><b/><a/></r>", {"--to", "json"}));
  EXPECT_EQ(
      "-: /p:r: the namespace \"urn:p\" is not kept\n"
      "-: /p:r: the namespace \"urn:q\" is not kept\n"
      "-: /p:r: the member \"k" +
          std::string(kTwice),
      Told("<p:r xmlns:p=\"urn:p\" xmlns:q=\"urn:q\" q:k=\"1\" k=\"2\"><p:k/></p:r>",
           {"--to", "json", "--round-trip", "marked"}));
  EXPECT_EQ(
      "-: /r: attributes can not be told from elements\n"
      "-: /r/k: the member \"k" +
          std::string(kTwice),
      Told("<r k=\"1\"><k/><l m=\"\"/></r>", {"--to", "json", "--round-trip", "none"}));
}

TEST(Losses, PrefixesOfTwoNamespaces) {
  EXPECT_EQ("-: /r/p:b: the prefix \"p\" is not kept where it stands for \"urn:q\"\n",
            Told("<r><p:a xmlns:p=\"urn:p\"/><p:b xmlns:p=\"urn:q\" p:k=\"\"/></r>",
                 {"--to", "fastinfoset"}));
}

TEST(Losses, EntitiesThatAreNotRead) {
  const std::string xml =
      "<!DOCTYPE r SYSTEM \"r.dtd\" [<!ENTITY x SYSTEM \"x.xml\">]><r>&x;<a>&u;</a></r>";
  EXPECT_EQ(
      "-: /r: the external entity \"x.xml\" is not read\n"
      "-: /r/a: the entity \"u\" is not known\n",
      Told(xml, {"--to", "xml"}));
}

TEST(Losses, OfJson) {
  const std::string json = "{\"r\":{\"@k\":null,\"a\":null,\"b\":[],\"c\":[1,null]}}";
  EXPECT_EQ(
      "-: /r: the attribute \"k\" is null and left out\n"
      "-: /r: the empty array \"b\" is left out\n"
      "-: /r/a: null becomes an empty element\n"
      "-: /r/c[2]: null becomes an empty element\n",
      Told(json, {"--to", "xml"}));
  EXPECT_EQ(
      "-: /r: the attribute \"k\" is null and left out\n"
      "-: /r: the empty array \"b\" is left out\n",
      Told(json, {"--to", "json"}));
}

TEST(Losses, OfFastInfoset) {
  // Additional data "u" with one octet; the notation n and the unparsed entity e of it; then the
  // document type with an instruction, the root a with a reference to e, and an octet too many.
  const std::string octets = FromHex(
      "E0000001 58"
      "00 0075 0078"
      "C0 006E F0"
      "D0 0065 0073 80 F0"
      "C4 E1 0070 FF F0"
      "3C0061 C8 81 F0 F0 00");
  EXPECT_EQ(
      "-: /: the additional data \"u\" are not kept\n"
      "-: /: the notation \"n\" is not kept\n"
      "-: /: the unparsed entity \"e\" is not kept\n"
      "-: /: the processing instruction \"p\" in the document type is not kept\n"
      "-: /: octets behind the end of the document are not kept (1 octet)\n"
      "-: /a: the reference to the entity \"e\" is not kept\n",
      Told(octets, {"--to", "xml"}));
}

TEST(Losses, OfManyPlacesAreCounted) {
  std::string xml = "<r>";
  std::string expected;
  for (int i = 1; i <= 103; ++i) {
    xml += "<a><!---->x<?p" + std::to_string(i) + "?></a>";
    if (i > 100) continue;
    const std::string place = "-: /r/a[" + std::to_string(i) + "]: ";
    expected += place + "a comment is not kept\n" + place + "the processing instruction \"p" +
                std::to_string(i) + "\" is not kept\n";
  }
  expected +=
      "-: 3 more places: a comment is not kept\n"
      "-: 3 more places: the processing instruction ...\n";
  EXPECT_EQ(expected, Told(xml + "</r>", {"--to", "fastinfoset"}));
}

TEST(Losses, AreAFailureWithStrict) {
  const TemporaryFolder folder;
  const std::string in = folder.Write("in.xml", "<r><!-- c --></r>");
  const std::string out = folder.Path("out.json");
  const ToolResult result = RunTool({"convert", in, out, "--strict"});
  EXPECT_EQ(4, result.code);
  EXPECT_EQ(in + ": /r: a comment is not kept\n" + out +
                ": not written, as JSON would not keep all of " + in + "\n",
            result.err);
  EXPECT_EQ("in.xml", folder.List());
}

TEST(Losses, ThereAreNoneWithStrict) {
  const TemporaryFolder folder;
  const std::string in = folder.Write("in.xml", "<r>\n <a k=''/>\n</r>\n");
  const ToolResult result = RunTool({"convert", in, folder.Path("out.fi"), "--strict"});
  EXPECT_EQ(0, result.code);
  EXPECT_EQ("", result.err);
  EXPECT_EQ("in.xml out.fi", folder.List());
}

}  // namespace
