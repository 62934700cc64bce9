// Open content on documents that nobody here wrote: CElement reads each and writes it back, as XML
// and as Fast Infoset, with the same elements, attributes and text.
#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "qzxml/QzXml.h"
#include "tests/support/Documents.h"
#include "tests/support/MixedText.h"
#include "tests/support/QzTest.h"
#include "tests/support/TreeText.h"

using namespace QzXmlLib16;

namespace {

// What writing keeps of a value: an attribute's tabs go out as they are, so that reading again
// makes blanks of them, and a carriage return is dropped.
std::string Kept(const CXmlElement&, const std::string& attribute, const std::string& value) {
  if (attribute.empty()) return value;
  std::string kept = value;
  kept.erase(std::remove(kept.begin(), kept.end(), '\r'), kept.end());
  std::replace(kept.begin(), kept.end(), '\t', ' ');
  return kept;
}

void ExpectKept(const std::string& file) {
  SCOPED_TRACE(file);
  CXmlDocument document;
  document.Load(file.c_str());
  CElement element("none");
  element.FromXml(qztest::ReadWholeFile(file).c_str());
  for (const bool formatted : {false, true}) {
    const std::string text = element.ToXml(true, formatted);
    CXmlDocument written;
    written.LoadXml(text.c_str());
    EXPECT_EQ(qztest::TreeText(document.GetDocumentElement(), &Kept),
              qztest::TreeText(written.GetDocumentElement(), &Kept));
  }
}

// Without the text between elements, which Fast Infoset has inside the element before it.
void ExpectKeptByFastInfoset(const std::string& file) {
  SCOPED_TRACE(file);
  CXmlDocument document;
  document.Load(file.c_str());
  const std::string text = qztest::WithoutMixedText(document);
  document.LoadXml(text.c_str());
  CElement element("none");
  element.FromXml(text.c_str());
  CSerializationContext context;
  for (const std::uint32_t limit : {6u, 0u, 100u}) {
    context.GetFIContext().SetAttributeMaxAddLength(limit);
    context.GetFIContext().SetElementMaxAddLength(limit);
    const CBinaryData octets = element.ToFastInfosetStream(FInfoDecl_None, context);
    CXmlDocument written;
    written.LoadXmlStream(octets.GetData(), octets.GetLength());
    EXPECT_EQ(qztest::TreeText(document.GetDocumentElement()),
              qztest::TreeText(written.GetDocumentElement()));
  }
}

TEST(OpenContentDocuments, AreWrittenWithTheSameElementsAttributesAndText) {
  int seen = 0;
  for (const auto& entry : std::filesystem::directory_iterator(QZXML_EXAMPLE_DATA)) {
    if (entry.path().extension() != ".gpx") continue;
    ExpectKept(entry.path().string());
    ExpectKeptByFastInfoset(entry.path().string());
    ++seen;
  }
  EXPECT_EQ(4, seen);
}

bool IsWellFormed(const std::string& file) {
  CXmlDocument document;
  try {
    document.Load(file.c_str());
    return true;
  } catch (const CQzException&) {
    return false;
  }
}

TEST(OpenContentDocuments, TheWholeCorpusIsWrittenWithTheSameElementsAttributesAndText) {
  const char* corpora = std::getenv("QZXML_CORPORA");
  if (corpora == nullptr) GTEST_SKIP() << "QZXML_CORPORA names no folder";
  int kept = 0;
  for (const auto& entry :
       std::filesystem::recursive_directory_iterator(std::string(corpora) + "/standards")) {
    if (!entry.is_regular_file() || !IsWellFormed(entry.path().string())) continue;
    ExpectKept(entry.path().string());
    ExpectKeptByFastInfoset(entry.path().string());
    ++kept;
  }
  EXPECT_GE(kept, 200);
}

}  // namespace
