#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/xml/XmlDocument.h"
#include "tests/support/Documents.h"
#include "tests/support/LiveCounts.h"
#include "tests/xml/TreeShape.h"

// Documents that are cut or damaged, in every encoding: each gives a tree or a CQzException, and
// leaves nothing behind.

namespace QzXmlLib16 {
namespace {

using qztest::Shape;

class XmlDocumentDamage : public qztest::NothingLeftBehind {};

struct Encoded {
  const char* encoding;
  std::string bytes;
};

// The same document, of ISO 8859-1 characters, in the encodings that the parser knows.
std::vector<Encoded> Documents() {
  const std::u16string body =
      u"<!DOCTYPE r [<!ENTITY e 'n&#38;#13;t'><!ATTLIST r d CDATA 'f'>]><!-- c -->\r\n"
      u"<r xmlns='urn:d' xmlns:p='urn:p' p:a='v\u00E9'>t&e;<p:c/><![CDATA[x<y]]><?i d?>&#8364;"
      u"<d>\r\n\u00FC</d></r>";
  std::string utf8;
  std::string latin = "<?xml version='1.0' encoding='ISO-8859-1'?>";
  std::string little = "\xFF\xFE";
  std::string big = "\xFE\xFF";
  for (const char16_t unit : body) {
    const char low = static_cast<char>(unit);
    latin += low;
    little += low;
    little += '\0';
    big += '\0';
    big += low;
    if (unit < 0x80) {
      utf8 += low;
    } else {
      utf8 += static_cast<char>(0xC0 | unit >> 6);
      utf8 += static_cast<char>(0x80 | (unit & 0x3F));
    }
  }
  return {{"UTF-8", utf8},
          {"UTF-8 with a mark", "\xEF\xBB\xBF" + utf8},
          {"ISO-8859-1", latin},
          {"UTF-16, little endian", little},
          {"UTF-16, big endian", big}};
}

constexpr char kShape[] =
    "{urn:d}r {urn:p}a='v\xC3\xA9' d='f' \"tnt<![CDATA[x<y]]>\xE2\x82\xAC\"[{urn:p}c]"
    "[{urn:d}d \"\n\xC3\xBC\"]";

void Load(CXmlDocument& document, const std::string& bytes) {
  document.LoadXmlStream(reinterpret_cast<const unsigned char*>(bytes.data()),
                         static_cast<std::uint32_t>(bytes.size()));
}

TEST_F(XmlDocumentDamage, EveryEncodingGivesTheSameTreeAndNoneWhenItIsCut) {
  CSerializationContext context;
  context.SetStripCDATA(false);
  CXmlDocument document(context);
  for (const Encoded& whole : Documents()) {
    Load(document, whole.bytes);
    EXPECT_EQ(kShape, Shape(document)) << whole.encoding;
    for (std::size_t length = 1; length < whole.bytes.size(); ++length) {
      EXPECT_THROW(Load(document, whole.bytes.substr(0, length)), CQzException)
          << whole.encoding << ' ' << length;
    }
  }
}

TEST_F(XmlDocumentDamage, AFileInEveryEncodingIsReadInChunksToo) {
  CSerializationContext context;
  context.SetStripCDATA(false);
  AsyncFromXmlFile(true);
  for (const Encoded& whole : Documents()) {
    const qztest::TemporaryFile file(whole.bytes);
    CXmlDocument document(context);
    document.Load(file.path().c_str());
    EXPECT_EQ(kShape, Shape(document)) << whole.encoding;
  }
  AsyncFromXmlFile(false);
}

TEST_F(XmlDocumentDamage, EveryFlippedBitGivesATreeOrAFailure) {
  CSerializationContext contexts[2];
  contexts[0].SetStripCDATA(false);
  contexts[1].SetSchemaType(SchemaType_NoNamespaces);
  const auto prune = [](CXmlElement* element) { return element->GetLocalName() == "c"; };
  int loaded = 0;
  int failed = 0;
  for (const CSerializationContext& context : contexts) {
    CXmlDocument document(prune, context);
    for (const Encoded& whole : Documents()) {
      for (std::size_t bit = 0; bit < whole.bytes.size() * 8; ++bit) {
        std::string bytes = whole.bytes;
        bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ 1 << bit % 8);
        try {
          Load(document, bytes);
          ++loaded;
          EXPECT_NE(nullptr, document.GetDocumentElement()) << whole.encoding << ' ' << bit;
        } catch (const CQzException& e) {
          ++failed;
          EXPECT_NE(std::string::npos, e.GetMessage().find(" at line ")) << e.GetMessage();
        }
        Shape(document);  // all of it can be read
      }
    }
  }
  EXPECT_LT(100, loaded);
  EXPECT_LT(100, failed);
}

}  // namespace
}  // namespace QzXmlLib16
