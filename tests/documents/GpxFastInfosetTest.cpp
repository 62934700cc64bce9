// The bound format of examples/ by way of Fast Infoset: XML into objects, these as Fast Infoset,
// that into other objects, and these as XML again.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "gpx/gpx.h"
#include "qzxml/QzXml.h"
#include "tests/support/Documents.h"
#include "tests/support/MixedText.h"
#include "tests/support/QzTest.h"
#include "tests/support/TreeText.h"

using namespace QzXmlLib16;

namespace {

// What stands for a document. Of it nothing is used but what each bound class has.
using CBound = gpx::CGpxType;

constexpr char kGpx[] = "http://www.topografix.com/GPX/1/1";
constexpr char kXsi[] = "http://www.w3.org/2001/XMLSchema-instance";
constexpr char kNotInAlphabet[] =
    "Failed to write FastInfoset. Invalid character not found for Restricted Alphabet.";

// --- The options of a trip

using Options = std::function<void(CSerializationContext&, const CXmlElement* root)>;

void AsText(CSerializationContext&, const CXmlElement*) {}

void Suggested(CSerializationContext& context, const CXmlElement*) {
  context.GetFIContext().SetSuggestedValues();
}

// Times may have a fraction or a zone east of Greenwich, which their alphabet has no characters
// for.
void SuggestedButTimes(CSerializationContext& context, const CXmlElement*) {
  context.GetFIContext().SetSuggestedValues();
  context.GetFIContext().SetEncoding(ItemType_datetime,
                                     CFastInfosetContext::EncodedCharacterString());
}

void Unprefixed(CSerializationContext& context, const CXmlElement*) {
  context.SetDefaultNamespaceURI(kGpx);
  context.GetFIContext().SetAttributeMaxAddLength(100);
  context.GetFIContext().SetElementMaxAddLength(100);
}

void NoTables(CSerializationContext& context, const CXmlElement*) {
  context.GetFIContext().SetAttributeMaxAddLength(0);
  context.GetFIContext().SetElementMaxAddLength(0);
}

// The names of the document and every second of its short values, as a generator would give the
// names of the schema.
void GeneratedVocabulary(CSerializationContext& context, const CXmlElement* root) {
  context.SetDefaultNamespaceURI(kGpx);
  CFastInfosetContext& options = context.GetFIContext();
  options.SetUseGeneratedVocabulary(true);
  options.SetExternalVocabularyURI("urn:gpx:vocabulary");
  CFIVocabulary& vocabulary = *options.GetVocabulary();
  std::set<std::string> texts;
  qztest::ForEachElement(root, [&](const CXmlElement& element) {
    vocabulary.AddElement("", element.GetNamespaceURI(), element.GetLocalName());
    for (const CXmlAttribute* attribute : element.GetAttributes()) {
      vocabulary.AddAttribute("", attribute->GetNamespaceURI(), attribute->GetLocalName());
    }
    if (element.GetText().size() < 6) texts.insert(element.GetText());
  });
  bool adds = true;
  for (const std::string& text : texts) {
    if (adds) vocabulary.AddElementValue(text);
    adds = !adds;
  }
}

void SuggestedAndGenerated(CSerializationContext& context, const CXmlElement* root) {
  SuggestedButTimes(context, root);
  GeneratedVocabulary(context, root);
}

struct Way {
  const char* name;
  Options options;
};

const std::vector<Way>& Ways() {
  static const std::vector<Way> ways = {{"as text", &AsText},
                                        {"suggested", &Suggested},
                                        {"suggested, but for times", &SuggestedButTimes},
                                        {"without prefixes", &Unprefixed},
                                        {"without tables", &NoTables},
                                        {"generated vocabulary", &GeneratedVocabulary},
                                        {"suggested and generated", &SuggestedAndGenerated}};
  return ways;
}

// --- The trip

// The attributes of XML Schema instances on the root (schemaLocation) are no part of the classes.
CSerializationContext ContextOf(const CXmlElement* root, const Way& way) {
  CSerializationContext context;
  for (const CXmlAttribute* attribute : root->GetAttributes()) {
    if (attribute->GetNamespaceURI() == kXsi) {
      context.GetAdditionalRootAttributes()->Add(attribute->GetLocalName().c_str(),
                                                 attribute->GetValue().c_str(), kXsi);
    }
  }
  way.options(context, root);
  return context;
}

// A time that the alphabet of times has all characters of.
bool IsInAlphabet(const std::string& time) {
  return time.find_first_not_of("0123456789-:TZ ") == std::string::npos;
}

bool HasTimeOutsideTheAlphabet(const std::string& xml) {
  CXmlDocument document;
  document.LoadXml(xml.c_str());
  bool has = false;
  qztest::ForEachElement(document.GetDocumentElement(), [&](const CXmlElement& element) {
    has = has || (element.GetNamespaceURI() == kGpx && element.GetLocalName() == "time" &&
                  !IsInAlphabet(element.GetText()));
  });
  return has;
}

std::string Trimmed(const CXmlElement&, const std::string& attribute, const std::string& value) {
  return attribute.empty() ? CWhitespaceUtils::Collapse(value) : value;
}

std::string TreeOf(const CBinaryData& bytes, const CSerializationContext& context,
                   const qztest::ValueForm& form) {
  CXmlDocument document(context);
  document.LoadXmlStream(bytes.GetData(), bytes.GetLength());
  return qztest::TreeText(document.GetDocumentElement(), form);
}

std::string TreeOfText(const std::string& xml, const qztest::ValueForm& form) {
  CXmlDocument document;
  document.LoadXml(xml.c_str());
  return qztest::TreeText(document.GetDocumentElement(), form);
}

// Both ends are the same: as text where isExact, else but for white space around values.
void ExpectSameAtBothEnds(const std::string& xml, const CSerializationContext& context,
                          bool isExact) {
  const qztest::ValueForm form = isExact ? qztest::ValueForm() : &Trimmed;
  CBound first;
  first.FromXml(xml.c_str(), context);
  const std::string before = first.ToXml(true, true, EOLType_LF, context);
  const CBinaryData bytes = first.ToFastInfosetStream(FInfoDecl_V10, context);
  EXPECT_EQ(TreeOfText(before, form), TreeOf(bytes, context, form));
  CBound second;
  second.FromXmlStream(bytes, context);
  const std::string after = second.ToXml(true, true, EOLType_LF, context);
  if (isExact) {
    EXPECT_EQ(before, after);
  } else {
    EXPECT_EQ(TreeOfText(before, form), TreeOfText(after, form));
  }
}

void ExpectTrip(const std::string& xml, const Way& way, bool isExact) {
  SCOPED_TRACE(way.name);
  CXmlDocument document;
  document.LoadXml(xml.c_str());
  const CSerializationContext context = ContextOf(document.GetDocumentElement(), way);
  CBound object;
  object.FromXml(xml.c_str(), context);
  if (way.name == std::string("suggested") &&
      HasTimeOutsideTheAlphabet(object.ToXml(true, true, EOLType_LF, context))) {
    EXPECT_QZ_THROW(CQzException, kNotInAlphabet,
                    object.ToFastInfosetStream(FInfoDecl_None, context));
    return;
  }
  ExpectSameAtBothEnds(xml, context, isExact);
}

// Whether the classes take the document.
bool TryTrips(const std::string& file) {
  SCOPED_TRACE(file);
  const std::string xml = qztest::ReadWholeFile(file);
  CBound object;
  try {
    object.FromXml(xml.c_str());
  } catch (const CQzException&) {
    return false;
  }
  CXmlDocument document;
  document.LoadXml(xml.c_str());
  const std::string withoutMixedText = qztest::WithoutMixedText(document);
  ExpectTrip(xml, Ways().front(), false);
  for (const Way& way : Ways()) ExpectTrip(withoutMixedText, way, true);
  return true;
}

// How many documents of the folder the classes take.
int TryFolder(const std::string& folder) {
  int taken = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    const std::string extension = entry.path().extension().string();
    if (extension != ".gpx" && extension != ".GPX") continue;
    if (TryTrips(entry.path().string())) ++taken;
  }
  return taken;
}

TEST(GpxFastInfoset, EachSampleIsTheSameAtBothEnds) { EXPECT_EQ(4, TryFolder(QZXML_EXAMPLE_DATA)); }

TEST(GpxFastInfoset, EachGpx11OfTheCorpusIsTheSameAtBothEnds) {
  const char* corpora = std::getenv("QZXML_CORPORA");
  if (corpora == nullptr) GTEST_SKIP() << "QZXML_CORPORA names no folder";
  EXPECT_EQ(8, TryFolder(std::string(corpora) + "/standards/gpx"));
}

TEST(GpxFastInfoset, ADocumentMadeWithAVocabularyIsNotReadWithout) {
  const std::string xml = qztest::ReadWholeFile(QZXML_EXAMPLE_DATA "/jpx-ISSUE-51.gpx");
  CXmlDocument document;
  document.LoadXml(xml.c_str());
  const CSerializationContext context =
      ContextOf(document.GetDocumentElement(), {"", &GeneratedVocabulary});
  CBound object;
  object.FromXml(xml.c_str(), context);
  const CBinaryData bytes = object.ToFastInfosetStream(FInfoDecl_None, context);
  CBound other;
  try {
    other.FromXmlStream(bytes);
    ADD_FAILURE() << "was read";
  } catch (const CQzException& e) {
    EXPECT_EQ(0u, e.GetMessage().find("Failed to parse FastInfoset. The index "));
  }
}

TEST(GpxFastInfoset, CompressedDocumentsAndFilesAreTheSameAtBothEnds) {
  CBound first;
  first.FromXmlFile(QZXML_EXAMPLE_DATA "/jpx-ISSUE-51.gpx");
  const CSerializationContext context;
  for (const CompressionType type : {CompressionType_GZip, CompressionType_ZLib}) {
    CBound second;
    second.FromXmlStream(first.ToFastInfosetStream(FInfoDecl_None, context, type), context);
    EXPECT_EQ(first.ToXml(), second.ToXml());
  }
  const qztest::TemporaryFile file("");
  first.ToFastInfosetFile(file.path().c_str(), FInfoDecl_V11, context, CompressionType_GZip);
  CBound second;
  second.FromXmlFile(file.path().c_str());
  EXPECT_EQ(first.ToXml(), second.ToXml());
}

TEST(GpxFastInfoset, SuggestedValuesMakeADocumentSmaller) {
  CBound object;
  object.FromXmlFile(QZXML_EXAMPLE_DATA "/around-visnjan-with-car.gpx");
  CSerializationContext context;
  context.SetDefaultNamespaceURI(kGpx);
  const std::size_t asXml = object.ToXml(true, false, EOLType_LF, context).size();
  const std::size_t asText = object.ToFastInfosetStream(FInfoDecl_None, context).GetLength();
  context.GetFIContext().SetSuggestedValues();
  const std::size_t suggested = object.ToFastInfosetStream(FInfoDecl_None, context).GetLength();
  EXPECT_LT(asText, asXml);
  EXPECT_LT(suggested, asText);
}

}  // namespace
