#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "qzxml/runtime/QzException.h"
#include "qzxml/runtime/QzZip.h"
#include "qzxml/values/BinaryData.h"
#include "tests/support/Documents.h"
#include "tests/support/LiveCounts.h"
#include "tests/support/QzTest.h"
#include "tests/xml/TreeShape.h"

namespace QzXmlLib16 {
namespace {

using qztest::Shape;

class XmlDocumentCompressed : public qztest::NothingLeftBehind,
                              public ::testing::WithParamInterface<CompressionType> {
 protected:
  // A document and its compressed form.
  static std::string Plain() {
    std::string text = "<r>";
    for (int i = 0; i < 20000; ++i) text += "<i n='" + std::to_string(i) + "'/>";
    return text + "</r>";
  }

  static std::string Compressed(const std::string& text) {
    CBinaryData bytes(reinterpret_cast<const unsigned char*>(text.data()),
                      static_cast<std::uint32_t>(text.size()));
    CQzZip::Compress(bytes, GetParam());
    return std::string(reinterpret_cast<const char*>(bytes.GetData()), bytes.GetLength());
  }

  static void LoadStream(CXmlDocument& document, const std::string& bytes) {
    document.LoadXmlStream(reinterpret_cast<const unsigned char*>(bytes.data()),
                           static_cast<std::uint32_t>(bytes.size()));
  }

  static std::string PlainShape() {
    CXmlDocument document;
    document.LoadXml(Plain().c_str());
    return Shape(document);
  }
};

INSTANTIATE_TEST_SUITE_P(Kinds, XmlDocumentCompressed,
                         ::testing::Values(CompressionType_GZip, CompressionType_ZLib));

TEST_P(XmlDocumentCompressed, IsRecognisedByItsBytesInAStream) {
  CXmlDocument document;
  LoadStream(document, Compressed(Plain()));
  EXPECT_EQ(PlainShape(), Shape(document));
}

TEST_P(XmlDocumentCompressed, IsRecognisedByItsBytesInAFile) {
  const qztest::TemporaryFile file(Compressed(Plain()));
  CXmlDocument document;
  document.Load(file.path().c_str());
  EXPECT_EQ(PlainShape(), Shape(document));
}

TEST_P(XmlDocumentCompressed, IsTakenForTextInAFileReadInChunks) {
  const qztest::TemporaryFile file(Compressed(Plain()));
  CXmlDocument document;
  AsyncFromXmlFile(true);
  EXPECT_QZ_THROW(CQzException, "not well-formed (invalid token) at line 1",
                  document.Load(file.path().c_str()));
  AsyncFromXmlFile(false);
}

TEST_P(XmlDocumentCompressed, FailsAsTextWhenItIsTruncated) {
  const std::string whole = Compressed(Plain());
  CXmlDocument document;
  EXPECT_QZ_THROW(CQzException, "not well-formed (invalid token) at line 1",
                  LoadStream(document, whole.substr(0, whole.size() - 1)));
}

TEST_P(XmlDocumentCompressed, FailsWithTheLimitAndNotAsText) {
  const std::string packed = Compressed(Plain());
  const std::uint32_t before = CQzZip::GetMaxDecompressedSize();
  CQzZip::SetMaxDecompressedSize(100000);
  CXmlDocument document;
  EXPECT_QZ_THROW(CQzException, "The decompressed data exceeds the limit of 100000 bytes",
                  LoadStream(document, packed));
  CQzZip::SetMaxDecompressedSize(before);
}

TEST_P(XmlDocumentCompressed, CountsLinesInWhatWasCompressed) {
  const std::string text = "<r>" + std::string(2000, '\n') + "<a></r>";
  CXmlDocument document;
  EXPECT_QZ_THROW(CQzException, "mismatched tag at line 2001",
                  LoadStream(document, Compressed(text)));
}

}  // namespace
}  // namespace QzXmlLib16
