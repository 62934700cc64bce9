// JSON into XML: the mapping, its three measures, and what is refused.
#include <gtest/gtest.h>

#include "tests/tools/qzxml/ToolRun.h"

namespace {

using qztest::ConvertText;
using qztest::RunTool;
using qztest::ToolResult;

const std::string kDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

std::string ToXml(const std::string& json, std::vector<std::string> options = {}) {
  options.insert(options.end(), {"--to", "xml", "--indent", "0"});
  std::string xml = ConvertText(json, options);
  EXPECT_EQ(0U, xml.rfind(kDeclaration, 0));
  xml.erase(0, kDeclaration.size());
  EXPECT_EQ('\n', xml.back());
  xml.pop_back();
  return xml;
}

TEST(JsonIn, BecomesElementsAttributesAndTexts) {
  const struct {
    const char* json;
    const char* xml;
  } cases[] = {
      {"{\"r\":\"x\"}", "<r>x</r>"},
      {"{\"r\":\"\"}", "<r/>"},
      {"{\"r\":null}", "<r/>"},
      {"{\"r\":{}}", "<r/>"},
      {"{\"r\":-1.50e+3}", "<r>-1.50e+3</r>"},
      {"{\"r\":true}", "<r>true</r>"},
      {" { \"r\" : { \"@k\" : 1 , \"#text\" : \"x\" } } ", "<r k=\"1\">x</r>"},
      {"{\"r\":{\"b\":\"1\",\"@k\":false}}", "<r k=\"false\"><b>1</b></r>"},
      {"{\"r\":{\"a\":[\"x\",2,{\"#text\":\"y\"},null,{\"@k\":\"v\"}]}}",
       "<r><a>x</a><a>2</a><a>y</a><a/><a k=\"v\"/></r>"},
      {"{\"r\":{\"a\":1,\"#text\":\"x\",\"b\":2}}", "<r><a>1</a>x<b>2</b></r>"},
      {"{\"r\":{\"a\":1,\"b\":2,\"a\":3}}", "<r><a>1</a><b>2</b><a>3</a></r>"},
      {"{\"r\":{\"a\":[[1,2],[]]}}", "<r><a><item>1</item><item>2</item></a><a/></r>"},
      {"{\"r\":[{\"a\":1}]}", "<r><a>1</a></r>"},
      {"{\"r\":\"\\\"\\\\\\/\\n\\t<&\"}", "<r>\"\\/\n\t&lt;&amp;</r>"},
      {"{\"r\":\"\\u00e9\\u20AC\\ud83d\\uDE00\"}", "<r>\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80</r>"},
      {"{\"r\":\"a\nb\"}", "<r>a\nb</r>"},
      {"{\"p:r\":{\"@xmlns:p\":\"urn:p\",\"@p:k\":\"1\",\"p:a\":{}}}",
       "<p:r xmlns:p=\"urn:p\" p:k=\"1\"><p:a/></p:r>"},
      {"{\"r\":{\"@xmlns\":\"urn:d\",\"a\":{\"@xmlns\":\"\"}}}",
       "<r xmlns=\"urn:d\"><a xmlns=\"\"/></r>"},
      {"{\"r\":{\"@xml:lang\":\"en\"}}", "<r xml:lang=\"en\"/>"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.xml, ToXml(c.json)) << c.json;
  }
}

TEST(JsonIn, MarksMeanNothingWithRoundTripNone) {
  EXPECT_EQ("<r><k>1</k>x</r>",
            ToXml("{\"r\":{\"k\":\"1\",\"\":\"x\"}}", {"--round-trip", "none"}));
  const ToolResult result =
      RunTool({"convert", "-", "-", "--round-trip", "none"}, "{\"r\":{\"@k\":1}}");
  EXPECT_EQ(1, result.code);
  EXPECT_EQ("-: /r: \"@k\" can not be a name in XML\n", result.err);
}

TEST(JsonIn, ARootIsPutAroundTheWhole) {
  EXPECT_EQ("<d><a>1</a><b>2</b></d>", ToXml("{\"a\":1,\"b\":2}", {"--root", "d"}));
  EXPECT_EQ("<d><item>1</item><item><a>2</a></item></d>", ToXml("[1,{\"a\":2}]", {"--root", "d"}));
  EXPECT_EQ("<d>1</d>", ToXml("1", {"--root", "d"}));
  EXPECT_EQ("<d k=\"v\"><r/></d>", ToXml("{\"@k\":\"v\",\"r\":{}}", {"--root", "d"}));
}

TEST(JsonIn, JsonIntoJsonKeepsTheKindsOfValues) {
  const std::string json =
      "{\"r\":{\"@k\":1.0,\"a\":true,\"b\":null,\"c\":\"1\",\"d\":[{\"#text\":-0},{\"#text\":\"x\"}"
      "]}}\n";
  EXPECT_EQ(json, ConvertText(json, {"--to", "json", "--indent", "0", "--strict"}));
}

TEST(JsonIn, CommentsAreReadOver) {
  const ToolResult result =
      RunTool({"convert", "-", "-", "--indent", "0"}, "// one\n{ /* two */ \"r\"\n: 1 } // three");
  EXPECT_EQ(0, result.code);
  EXPECT_EQ(kDeclaration + "<r>1</r>\n", result.out);
  EXPECT_EQ(
      "-: /: a comment is not kept (line 1)\n"
      "-: /: a comment is not kept (line 2)\n"
      "-: /: a comment is not kept (line 3)\n",
      result.err);
}

TEST(JsonIn, WhatIsNoJsonIsAFailure) {
  const struct {
    const char* json;
    const char* message;
  } cases[] = {
      {"{", "a name in quotes is missing at line 1, column 2"},
      {"{\"a\"", "\":\" is missing at line 1, column 5"},
      {"{\"a\":", "the text ends where a value has to be at line 1, column 6"},
      {"{\"a\":1", "\",\" or \"}\" is missing at line 1, column 7"},
      {"{\"a\":1,}", "a name in quotes is missing at line 1, column 8"},
      {"{a:1}", "a name in quotes is missing at line 1, column 2"},
      {"[1 2]", "\",\" or \"]\" is missing at line 1, column 4"},
      {"[1,]", "this is no value at line 1, column 4"},
      {"{\"a\":\n nul}", "this is no value at line 2, column 2"},
      {"{\"a\":01}", "\",\" or \"}\" is missing at line 1, column 7"},
      {"{\"a\":1.}", "a digit is missing at line 1, column 8"},
      {"{\"a\":-}", "a digit is missing at line 1, column 7"},
      {"{\"a\":1e}", "a digit is missing at line 1, column 8"},
      {"{\"a\":\"x", "a string does not end, which begins at line 1, column 6"},
      {"{\"a\":\"\\x\"}", "there is no such escape at line 1, column 7"},
      {"{\"a\":\"\\u12G4\"}", "there is no such escape at line 1, column 7"},
      {"{\"a\":\"\\", "there is no such escape at line 1, column 7"},
      {"{\"a\":\"\\ud800\"}", "an escape stands for half a character at line 1, column 7"},
      {"{\"a\":\"\\udc00\\ud800\"}", "an escape stands for half a character at line 1, column 7"},
      {"{} {}", "text stands behind the end of the document at line 1, column 4"},
      {"{} /* x", "a comment does not end at line 1, column 4"},
  };
  for (const auto& c : cases) {
    const ToolResult result = RunTool({"convert", "-", "-"}, c.json);
    EXPECT_EQ(1, result.code) << c.json;
    EXPECT_EQ("-: " + std::string(c.message) + "\n", result.err) << c.json;
  }
}

TEST(JsonIn, WhatXmlCanNotHaveIsAFailure) {
  const struct {
    const char* json;
    const char* message;
  } cases[] = {
      {"{}", "the document has 0 roots; --root puts an element around them"},
      {"{\"a\":1,\"b\":2}", "the document has 2 roots; --root puts an element around them"},
      {"{\"a\":[1,2,3]}", "the document has 3 roots; --root puts an element around them"},
      {"[1]", "the document is no object, so that its root has no name; --root gives one"},
      {"\"x\"", "the document is no object, so that its root has no name; --root gives one"},
      {"{\"\":1}", "a member has no name"},
      {"{\"r\":{\"\":1}}", "/r: a member has no name"},
      {"{\"r\":{\"my key\":1}}", "/r: \"my key\" can not be a name in XML"},
      {"{\"r\":{\"1\":1}}", "/r: \"1\" can not be a name in XML"},
      {"{\"r\":{\"a\":[1,{\"@-\":1}]}}", "/r/a[2]: \"-\" can not be a name in XML"},
      {"{\"p:r\":1}", "the prefix of \"p:r\" is not declared"},
      {"{\"r\":{\"@p:k\":1}}", "/r: the prefix of \"p:k\" is not declared"},
      {"{\"r\":{\"@k\":[1]}}", "/r: \"@k\" has to have a plain value"},
      {"{\"r\":{\"#text\":{}}}", "/r: \"#text\" has to have a plain value"},
      {"{\"r\":{\"@k\":1,\"@k\":2}}", "/r: the attribute \"k\" stands there twice"},
      {"{\"r\":{\"@xmlns:p\":\"\"}}", "/r: the prefix \"p\" stands for no namespace"},
      {"{\"r\":{\"@xmlns:q\":\"http://www.w3.org/XML/1998/namespace\"}}",
       "/r: the prefix \"q\" can not be declared for \"http://www.w3.org/XML/1998/namespace\""},
      {"{\"r\":{\"@xmlns:xmlns\":\"urn:x\"}}", "/r: the prefix \"xmlns\" can not be used"},
      {"{\"r\":\"\\u0000\"}", "/r: the character U+0000 can not stand in XML"},
      {"{\"r\":\"\\b\"}", "/r: the character U+0008 can not stand in XML"},
      {"{\"r\":{\"@k\":\"\\uffff\"}}", "/r: the character U+FFFF can not stand in XML"},
      {"{\"r\":\"\xFF\"}", "/r: the octet 0xFF is no text in UTF-8"},
  };
  for (const auto& c : cases) {
    const ToolResult result = RunTool({"convert", "-", "-"}, c.json);
    EXPECT_EQ(1, result.code) << c.json;
    EXPECT_EQ("-: " + std::string(c.message) + "\n", result.err) << c.json;
    EXPECT_EQ("", result.out) << c.json;
  }
}

}  // namespace
