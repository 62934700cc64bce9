// XML into JSON: what any reader of JSON gets, and that the library's reader gets the same
// document.
#include <gtest/gtest.h>

#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/xml/XmlDocument.h"
#include "tests/support/TreeText.h"
#include "tests/tools/qzxml/ToolRun.h"

namespace {

using qztest::ConvertText;

std::string ToJson(const std::string& xml, const std::string& roundTrip = "full") {
  std::string json = ConvertText(xml, {"--to", "json", "--indent", "0", "--round-trip", roundTrip});
  EXPECT_EQ('\n', json.back());
  json.pop_back();
  return json;
}

std::string TreeOf(const QzXmlLib16::CBinaryData& xml) {
  QzXmlLib16::CXmlDocument document;
  document.LoadXmlStream(xml.GetData(), xml.GetLength());
  return qztest::TreeText(document.GetDocumentElement());
}
std::string TreeOf(const std::string& xml) {
  return TreeOf(QzXmlLib16::CBinaryData(reinterpret_cast<const unsigned char*>(xml.data()),
                                        static_cast<std::uint32_t>(xml.size())));
}

struct Case {
  const char* xml;
  const char* json;
};

constexpr Case kFullCases[] = {
    {"<r/>", "{\"r\":\"\"}"},
    {"<r>x</r>", "{\"r\":\"x\"}"},
    {"<r> </r>", "{\"r\":\" \"}"},
    {"<r k=\"1\"/>", "{\"r\":{\"@k\":\"1\",\"#text\":\"\"}}"},
    {"<r k=\"1\">x</r>", "{\"r\":{\"@k\":\"1\",\"#text\":\"x\"}}"},
    {"<r k=\"1\"><a/></r>", "{\"r\":{\"@k\":\"1\",\"a\":\"\"}}"},
    {"<r>\n <a>1</a>\n <b>2</b>\n</r>", "{\"r\":{\"a\":\"1\",\"b\":\"2\"}}"},
    {"<r><a>1</a><a>2</a><b/></r>",
     "{\"r\":{\"a\":[{\"#text\":\"1\"},{\"#text\":\"2\"}],\"b\":\"\"}}"},
    {"<r><a><c>1</c></a><a k=\"v\"/><a/></r>",
     "{\"r\":{\"a\":[{\"c\":\"1\"},{\"@k\":\"v\",\"#text\":\"\"},{\"#text\":\"\"}]}}"},
    {"<r><a>1</a><b/><a>2</a><a>3</a></r>",
     "{\"r\":{\"a\":\"1\",\"b\":\"\",\"a\":[{\"#text\":\"2\"},{\"#text\":\"3\"}]}}"},
    {"<r>x<a><b>1</b><b>2</b></a>y</r>",
     "{\"r\":{\"a\":{\"b\":[{\"#text\":\"1\"},{\"#text\":\"2\"}]},\"#text\":\"xy\"}}"},
    {"<r>\"\\/&#9;&#10;</r>", "{\"r\":\"\\\"\\\\/\\t\\n\"}"},
    {"<r>\xC3\xA9\xF0\x9F\x98\x80&lt;&amp;</r>", "{\"r\":\"\xC3\xA9\xF0\x9F\x98\x80<&\"}"},
    {"<r><![CDATA[<x>]]></r>", "{\"r\":\"<x>\"}"},
    {"<p:r xmlns:p=\"urn:p\" p:k=\"1\"><p:a/><b xmlns=\"urn:b\"/></p:r>",
     "{\"p:r\":{\"@xmlns:p\":\"urn:p\",\"@p:k\":\"1\",\"p:a\":\"\","
     "\"b\":{\"@xmlns\":\"urn:b\",\"#text\":\"\"}}}"},
};

TEST(JsonOut, HasAMemberForEachElementAndAttribute) {
  for (const Case& c : kFullCases) EXPECT_EQ(c.json, ToJson(c.xml)) << c.xml;
}

TEST(JsonOut, IsReadByTheLibraryAsTheSameDocument) {
  for (const Case& c : kFullCases) {
    const std::string json = ToJson(c.xml);
    QzXmlLib16::CXmlDocument document;
    const QzXmlLib16::CBinaryData xml =
        document.LoadJsonStream(reinterpret_cast<const unsigned char*>(json.data()),
                                static_cast<std::uint32_t>(json.size()));
    EXPECT_EQ(TreeOf(c.xml), TreeOf(xml)) << json;
  }
}

TEST(JsonOut, IsReadHereAsTheSameDocument) {
  for (const Case& c : kFullCases) {
    EXPECT_EQ(TreeOf(c.xml), TreeOf(ConvertText(ToJson(c.xml), {}))) << c.json;
  }
}

TEST(JsonOut, MarkedHasLocalNamesAlone) {
  EXPECT_EQ(
      "{\"r\":{\"@k\":\"1\",\"@lang\":\"en\",\"a\":[{\"#text\":\"\"},{\"#text\":\"x\"}]}}",
      ToJson("<p:r xmlns:p=\"urn:p\" p:k=\"1\" xml:lang=\"en\"><p:a/><a>x</a></p:r>", "marked"));
}

TEST(JsonOut, NoneHasNoMarks) {
  EXPECT_EQ("{\"r\":{\"k\":\"1\",\"a\":[\"\",\"x\"],\"b\":{\"k\":\"2\"},\"\":\"y\"}}",
            ToJson("<p:r xmlns:p=\"urn:p\" p:k=\"1\"><p:a/><a>x</a><b k=\"2\"/>y</p:r>", "none"));
  EXPECT_EQ("{\"r\":\"x\"}", ToJson("<r xmlns=\"urn:d\">x</r>", "none"));
}

}  // namespace
