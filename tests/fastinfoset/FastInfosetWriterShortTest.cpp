#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "qzxml/fastinfoset/FastInfosetContext.h"
#include "qzxml/fastinfoset/FastInfosetWriter.h"
#include "qzxml/platform/DebugChannel.h"
#include "qzxml/runtime/BinaryStream.h"
#include "qzxml/runtime/MemoryLeakHelp.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/values/QzVariant.h"

// The short ways against the calls that they stand for: a class derived from the writer has none.

namespace QzXmlLib16 {
namespace {

using detail::AttributeTag;
using detail::CShortWays;
using detail::ElementTags;

class CLongWriter : public CFastInfosetWriter {
 public:
  using CFastInfosetWriter::CFastInfosetWriter;
};

void PutElement(CXmlWriter& writer, const ElementTags& name, const std::string& uri,
                const QzVariant& value) {
  CShortWays* const shortWays = writer.GetShortWays();
  if (shortWays != nullptr && shortWays->PutValueElement(name, uri, value, "")) return;
  writer.WriteStartElement(name.GetName(), uri);
  writer.WriteText(value.ToString(""), value.GetTypeAsEnum(), false);
  writer.WriteEndElement();
}

void PutAttribute(CXmlWriter& writer, const AttributeTag& name, const QzVariant& value) {
  CShortWays* const shortWays = writer.GetShortWays();
  if (shortWays != nullptr && shortWays->PutValueAttribute(name, value, "")) return;
  writer.WriteAttribute(name.GetName(), "", value.ToString(""), value.GetTypeAsEnum());
}

// The octets of a document, or the text of its failure behind those that were written.
template <typename Writer, typename Calls>
std::string Written(CFastInfosetContext& context, Calls calls) {
  CBinaryStream stream;
  std::string failure;
  Writer writer(&context, &stream);
  writer.StartDocument();
  writer.WriteHeader(FInfoDecl_None);
  writer.SetDefaultNamespace("urn:d");
  writer.AddNamespaceMapping("p", "urn:p");
  try {
    calls(writer);
  } catch (const CQzException& e) {
    failure = e.GetMessage();
  } catch (...) {
    failure = "an assertion";  // on a text of base 64 that is none
  }
  writer.WriteDocumentEnd();
  return stream.GetData().GetAsHexString() + failure;
}

template <typename Calls>
void ExpectSame(CFastInfosetContext& context, Calls calls, const std::string& what) {
  EXPECT_EQ(Written<CLongWriter>(context, calls), Written<CFastInfosetWriter>(context, calls))
      << what;
}

std::vector<QzVariant> Values() {
  std::vector<QzVariant> values;
  const auto add = [&values](auto set, auto... numbers) {
    (set(values.emplace_back(), numbers), ...);
  };
  using I8 = std::numeric_limits<std::int64_t>;
  add([](QzVariant& v, int n) { v.SetI1(static_cast<char>(n)); }, -128, 0, 127);
  add([](QzVariant& v, int n) { v.SetI2(static_cast<short>(n)); }, -32768, 0, 32767);
  add([](QzVariant& v, std::int32_t n) { v.SetI4(n); }, -2147483647 - 1, -99999, -1, 0, 9, 10, 99,
      100, 999, 1000, 9999, 10000, 32767, 32768, -32768, -32769, 2147483647);
  add([](QzVariant& v, std::int64_t n) { v.SetI8(n); }, I8::min(), std::int64_t{-1},
      std::int64_t{2147483648}, I8::max());
  add([](QzVariant& v, int n) { v.SetUI1(static_cast<unsigned char>(n)); }, 0, 255);
  add([](QzVariant& v, int n) { v.SetUI2(static_cast<unsigned short>(n)); }, 0, 65535);
  add([](QzVariant& v, std::uint32_t n) { v.SetUI4(n); }, 0u, 4294967295u);
  add([](QzVariant& v, std::uint64_t n) { v.SetUI8(n); }, std::uint64_t{0},
      static_cast<std::uint64_t>(I8::max()), std::numeric_limits<std::uint64_t>::max());
  const auto reals = [&add](auto set) {
    add(set, 0.0, -0.0, 1.0, -1.0, 0.1, 0.1 + 0.2, 1.0 / 3, -2.5, 1234.5, 19.99,
        9.99999999999999989, 0.00012345, 1e-5, 1e15, 123456789012345.6, 1e16, 1e20, 5e-324,
        1.7976931348623157e308, 99999999.99999999, 4503599627370497.5,
        std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
        std::numeric_limits<double>::quiet_NaN());
  };
  reals([](QzVariant& v, double n) { v.SetR8(n); });
  reals([](QzVariant& v, double n) { v.SetR4(static_cast<float>(n)); });
  add([](QzVariant& v, bool b) { v.SetBoolean(b); }, true, false);
  add([](QzVariant& v, int n) { v.SetYear(static_cast<unsigned short>(n)); }, 1, 2026);
  add([](QzVariant& v, int n) { v.SetMonth(static_cast<unsigned char>(n)); }, 1, 12);
  add([](QzVariant& v, int n) { v.SetDay(static_cast<unsigned char>(n)); }, 1, 31);
  add([](QzVariant& v, char c) { v.SetChar(c); }, 'x', ' ', '\0', '\n', '\xE4');
  using Size = std::size_t;
  for (const Size size :
       {0u, 1u, 2u, 3u, 5u, 6u, 7u, 8u, 9u, 16u, 17u, 32u, 33u, 258u, 259u, 264u, 265u, 9000u}) {
    values.emplace_back().SetString(std::string(size, '7'));
    if (size == 0) continue;
    for (const std::size_t at : {std::size_t{0}, size / 2, size - 1}) {
      for (const char c : {'\0', '\r', '\n', '\xC3', ':'}) {
        std::string text(size, '7');
        text[at] = c;
        values.emplace_back().SetString(text);
      }
    }
  }
  return values;
}

// Each value comes twice, so that it is met in its table.
void PutAll(CXmlWriter& writer) {
  const auto inDefault = ElementTags::InOneNamespace("inDefault");
  const auto prefixed = ElementTags::InOneNamespace("prefixed");
  const auto plain = ElementTags::InOneNamespace("plain");
  const ElementTags any("any");
  const AttributeTag a("a");
  const AttributeTag b("b");
  const std::vector<QzVariant> values = Values();
  writer.WriteStartElement("root", "urn:d");
  for (int round = 0; round < 2; ++round) {
    for (const QzVariant& value : values) {
      writer.WriteStartElement("item", "urn:d");
      PutAttribute(writer, a, value);
      PutAttribute(writer, b, value);
      PutElement(writer, inDefault, "urn:d", value);
      PutElement(writer, any, "urn:p", value);
      writer.WriteEndElement();
      PutElement(writer, prefixed, "urn:p", value);
      PutElement(writer, plain, "", value);
      PutElement(writer, any, "", value);
    }
  }
  writer.WriteEndElement();
}

TEST(FastInfosetWriterShort, TheOctetsAreThoseOfTheLongWay) {
  CFastInfosetContext context;
  ExpectSame(context, PutAll, "as text");
  for (const std::uint32_t length : {0u, 1u, 8u, 33u, 4000000000u}) {
    context.SetAttributeMaxAddLength(length);
    context.SetElementMaxAddLength(length);
    ExpectSame(context, PutAll, "tables up to " + std::to_string(length));
  }
}

// One document for each value, as many of them fail.
TEST(FastInfosetWriterShort, SoTheyAreUnderEveryEncoding) {
  using Encoding = CFastInfosetContext::EncodedCharacterString;
  std::vector<Encoding> encodings = {Encoding(1, 0), Encoding(1, 1), Encoding(1, 2), Encoding(1, 3),
                                     Encoding(3, 1)};
  for (std::uint32_t algorithm = 0; algorithm <= 11; ++algorithm) {
    encodings.emplace_back(2, algorithm);
  }
  std::size_t texts = 0;
  std::vector<QzVariant> values;
  for (QzVariant& value : Values()) {  // of the texts one in seven
    if (value.GetTypeAsEnum() == ItemType_string && texts++ % 7 != 0) continue;
    values.push_back(std::move(value));
  }
  for (const Encoding& encoding : encodings) {
    for (const QzVariant& value : values) {
      CFastInfosetContext context;
      context.SetEncoding(value.GetTypeAsEnum(), encoding);
      const std::string what = std::to_string(encoding.m_dwType) + ' ' +
                               std::to_string(encoding.m_dwIndex) + ' ' + value.ToString("");
      const auto element = ElementTags::InOneNamespace("element");
      const AttributeTag attribute("attribute");
      ExpectSame(
          context,
          [&](CXmlWriter& writer) {
            writer.WriteStartElement("root", "urn:d");
            for (int i = 0; i < 3; ++i) PutElement(writer, element, "urn:d", value);
          },
          what);
      ExpectSame(
          context,
          [&](CXmlWriter& writer) {
            for (int i = 0; i < 3; ++i) {
              writer.WriteStartElement("root", "urn:d");
              PutAttribute(writer, attribute, value);
            }
          },
          what);
    }
  }
}

TEST(FastInfosetWriterShort, ANameFollowsItsNamespace) {
  CFastInfosetContext context;
  ExpectSame(
      context,
      [](CXmlWriter& writer) {
        QzVariant value;
        value.SetI4(1);
        const auto name = ElementTags::InOneNamespace("name");
        const auto other = ElementTags::InOneNamespace("other");
        writer.WriteStartElement("root", "");
        PutElement(writer, name, "urn:p", value);
        PutElement(writer, other, "urn:unknown", value);
        writer.WriteStartElement("a", "");
        writer.AddNamespaceMapping("q", "urn:p");
        PutElement(writer, name, "urn:p", value);
        PutElement(writer, other, "urn:unknown", value);
        writer.WriteStartElement("b", "");
        writer.SetDefaultNamespace("urn:p");
        PutElement(writer, name, "urn:p", value);
        writer.WriteEndElement();
        PutElement(writer, name, "urn:p", value);
        writer.WriteEndElement();
        PutElement(writer, name, "urn:p", value);
        PutElement(writer, other, "urn:unknown", value);
        writer.WriteEndElement();
      },
      "");
}

// A second root is in a namespace of its own.
TEST(FastInfosetWriterShort, NothingIsKnownOfARootInTheNext) {
  CFastInfosetContext context;
  ExpectSame(
      context,
      [](CXmlWriter& writer) {
        QzVariant value;
        value.SetI4(1);
        const auto name = ElementTags::InOneNamespace("name");
        for (const char* prefix : {"first", "second"}) {
          writer.AddNamespaceMapping(prefix, "urn:p");
          writer.WriteStartElement("root", "urn:p");
          PutElement(writer, name, "urn:p", value);
          PutElement(writer, name, "urn:p", value);
          writer.WriteEndElement();
        }
      },
      "");
}

TEST(FastInfosetWriterShort, ThereAreNoneWithoutAnElement) {
  CFastInfosetContext context;
  CBinaryStream stream;
  CFastInfosetWriter writer(&context, &stream);
  EXPECT_EQ(nullptr, writer.GetShortWays());
  writer.WriteHeader(FInfoDecl_None);
  CShortWays* const shortWays = writer.GetShortWays();
  ASSERT_NE(nullptr, shortWays);
  QzVariant value;
  value.SetI4(1);
  EXPECT_FALSE(shortWays->PutValueElement("a", "", value, ""));
  EXPECT_FALSE(shortWays->PutValueAttribute("a", value, ""));
  EXPECT_FALSE(shortWays->PutTextElement("a", "", "text", ItemType_string));
  writer.WriteStartElement("root", "");
  writer.WriteText("text", ItemType_string, false);
  EXPECT_FALSE(shortWays->PutValueAttribute("a", value, ""));
  EXPECT_TRUE(shortWays->PutValueElement("a", "", value, ""));
}

TEST(FastInfosetWriterShort, NoneIsTakenWhileSomebodyListens) {
  CFastInfosetContext context;
  CBinaryStream stream;
  CFastInfosetWriter writer(&context, &stream);
  writer.WriteHeader(FInfoDecl_None);
  writer.WriteStartElement("root", "");
  QzVariant value;
  value.SetI4(1);
  SetDebugChannel([](const char*) {});
  EXPECT_FALSE(writer.GetShortWays()->PutValueAttribute("a", value, ""));
  EXPECT_FALSE(writer.GetShortWays()->PutValueElement("a", "", value, ""));
  SetDebugChannel(nullptr);
  EXPECT_TRUE(writer.GetShortWays()->PutValueElement("a", "", value, ""));
}

// How many contexts of elements were made until now, by the dump of the monitor.
int CountContexts() {
  const std::string dump = CInstanceMonitor::DumpState();
  const std::size_t at = dump.find(" CXmlWriterContext = ");
  if (at == std::string::npos) return 0;
  return std::stoi(dump.substr(dump.find('/', at) + 1));
}

TEST(FastInfosetWriterShort, AnElementCountsAsOneThatWasOpened) {
  CFastInfosetContext context;
  CBinaryStream stream;
  CFastInfosetWriter writer(&context, &stream);
  writer.WriteHeader(FInfoDecl_None);
  writer.WriteStartElement("root", "");
  QzVariant value;
  value.SetI4(1);
  const int before = CountContexts();
  for (int i = 0; i < 5; ++i) {
    EXPECT_TRUE(writer.GetShortWays()->PutValueElement("a", "", value, ""));
  }
  EXPECT_EQ(before + 5, CountContexts());
}

}  // namespace
}  // namespace QzXmlLib16
