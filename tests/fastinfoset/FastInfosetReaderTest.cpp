// Documents octet by octet, and the tree that each gives. The shapes were worked out by hand.
#include <cstdio>
#include <string>
#include <vector>

#include "qzxml/fastinfoset/DocumentMarks.h"
#include "qzxml/fastinfoset/FastInfosetContext.h"
#include "qzxml/fastinfoset/FastInfosetReader.h"
#include "qzxml/platform/DebugChannel.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzZip.h"
#include "qzxml/values/BinaryData.h"
#include "tests/fastinfoset/FIDocument.h"
#include "tests/support/Documents.h"
#include "tests/support/LiveCounts.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using qztest::Finf;
using qztest::FinfOf;
using qztest::LoadOctets;
using qztest::Octets;
using qztest::ShapeOf;
using qztest::Times;

class FastInfosetReader : public qztest::NothingLeftBehind {};

struct ShapeCase {
  const char* hex;  // behind identification and head
  const char* shape;
};

void ExpectShapes(const std::vector<ShapeCase>& cases) {
  for (const ShapeCase& c : cases) {
    SCOPED_TRACE(c.hex);
    EXPECT_EQ(c.shape, ShapeOf(FinfOf(c.hex)));
  }
}

void ExpectFailure(const std::string& text, const std::string& octets) {
  CXmlDocument document;
  EXPECT_QZ_THROW(CQzException, text, LoadOctets(document, octets));
}

constexpr char kEndOfFile[] = "Failed to parse FastInfoset. Unexpected End of File.";

// --- What is Fast Infoset

// What Expat makes of octets that are no text.
std::string ExpatText(const std::string& octets) {
  CXmlDocument document;
  try {
    LoadOctets(document, octets);
  } catch (const CQzException& e) {
    const std::string text = e.GetMessage();
    const std::size_t place = text.rfind(" at line ");
    return place != std::string::npos ? text.substr(place) : text;
  }
  return "(nothing)";
}

TEST_F(FastInfosetReader, FourOctetsAloneAreTakenForXml) {
  EXPECT_EQ(" at line 1", ExpatText(Octets("E0 00 00 01")));
  ExpectFailure(kEndOfFile, Octets("E0 00 00 01 00"));
}

TEST_F(FastInfosetReader, EachOfTheNineDeclarationsMayStandInFront) {
  int count = 0;
  for (const std::string_view text : detail::kFIDeclarations) {
    SCOPED_TRACE(text);
    ++count;
    const std::string declaration(text);
    EXPECT_EQ("a", ShapeOf(declaration + FinfOf("3C 00 61 FF")));
  }
  EXPECT_EQ(9, count);
  EXPECT_EQ("a", ShapeOf("<?xml version='1.0' encoding='finf'?>" + FinfOf("3C 00 61 FF")));
}

TEST_F(FastInfosetReader, AnythingElseGoesToTheParserOfText) {
  EXPECT_EQ("a", ShapeOf("<?xml version='1.0'?><a/>"));
  ExpectFailure("unknown encoding at line 1", "<?xml version='1.0' encoding='finf'?><a/>");
  EXPECT_EQ(" at line 1", ExpatText("<?xml version=\"1.0\"?>" + FinfOf("3C 00 61 FF")));
  EXPECT_EQ(" at line 1", ExpatText(Octets("E0 00 00 02 00 3C 00 61 FF")));
}

TEST_F(FastInfosetReader, TellsWhatItTakes) {
  struct Case {
    std::string octets;
    bool isFastInfoset;
  };
  const std::string mark = Octets("E0 00 00 01");
  const std::string declaration = "<?xml encoding='finf' standalone='no'?>";
  const Case cases[] = {{"", false},
                        {mark, false},
                        {mark.substr(0, 3), false},
                        {mark + "x", true},
                        {declaration, false},
                        {declaration + mark, false},
                        {declaration + mark + "x", true},
                        {declaration + declaration + mark + "x", false},
                        {" " + mark + "x", false},
                        {"<a/>", false}};
  for (const Case& c : cases) {
    EXPECT_EQ(c.isFastInfoset, CFastInfosetReader::IsFastInfoset(
                                   reinterpret_cast<const unsigned char*>(c.octets.data()),
                                   static_cast<std::uint32_t>(c.octets.size())))
        << c.octets;
  }
}

CXmlDocument* g_document = nullptr;
std::vector<bool> g_answers;

TEST_F(FastInfosetReader, ParseAnswersFalseAndChangesNothingWithoutFastInfoset) {
  // A reader on XML text, which is there while the document is loaded.
  g_answers.clear();
  for (const char* text : {"<a/>", "<?xml version='1.0'?><a/>"}) {
    CXmlDocument document([](CXmlElement*) {
      CFastInfosetContext context;
      CFastInfosetReader reader(&context, g_document);
      g_answers.push_back(reader.Parse());
      return false;
    });
    g_document = &document;
    LoadOctets(document, text);
    EXPECT_EQ("a", qztest::Shape(document));
  }
  EXPECT_EQ((std::vector<bool>{false, false}), g_answers);
}

TEST_F(FastInfosetReader, CompressedDocumentsAndFilesAreRead) {
  const std::string octets = Finf(Octets("3C 00 61") + Times(100, Octets("80 78")) + Octets("FF"));
  const std::string shape = "a \"" + Times(100, "x") + '"';
  CBinaryData gzip(reinterpret_cast<const unsigned char*>(octets.data()),
                   static_cast<std::uint32_t>(octets.size()));
  CBinaryData zlib(gzip);
  CQzZip::Compress(gzip, CompressionType_GZip);
  CQzZip::Compress(zlib, CompressionType_ZLib);
  for (const CBinaryData* data : {&gzip, &zlib}) {
    CXmlDocument document;
    document.LoadXmlStream(data->GetData(), data->GetLength());
    EXPECT_EQ(shape, qztest::Shape(document));
  }
  const qztest::TemporaryFile file(octets);
  CXmlDocument document;
  document.Load(file.path().c_str());
  EXPECT_EQ(shape, qztest::Shape(document));
}

TEST_F(FastInfosetReader, AStringIsNeverTakenForFastInfoset) {
  const std::string octets = "<?xml version='1.0' encoding='finf'?>" + FinfOf("3C 00 61 FF");
  CXmlDocument document;
  EXPECT_QZ_THROW(CQzException, "unknown encoding at line 1", document.LoadXml(octets.c_str()));
}

TEST_F(FastInfosetReader, AFileThatIsReadInChunksIsTakenForXml) {
  const qztest::TemporaryFile file(FinfOf("3C 00 61 FF"));
  AsyncFromXmlFile(true);
  CXmlDocument document;
  EXPECT_QZ_THROW(CQzException, "not well-formed (invalid token) at line 1",
                  document.Load(file.path().c_str()));
  AsyncFromXmlFile(false);
  document.Load(file.path().c_str());
  EXPECT_EQ("a", qztest::Shape(document));
}

// --- Items of the document

TEST_F(FastInfosetReader, EndsAreWholeOctets) {
  ExpectShapes({
      {"3C 00 61 FF", "a"},
      {"3C 00 61 F0 F0", "a"},
      {"3C 00 61 F0 FF", "a"},
      {"3C 00 61 3C 00 62 FF F0", "a[b]"},
      {"3C 00 61 3C 00 62 FF FF", "a[b]"},
      {"3C 00 61 3C 00 62 F0 FF", "a[b]"},
      {"3C 00 61 3C 00 62 F0 F0 F0", "a[b]"},
      {"3C 00 61 3C 00 62 3C 00 63 FF 90 74 FF", "a \"t\"[b[c]]"},
      {"3C 00 61 3C 00 62 F0 3C 00 63 FF F0", "a[b][c]"},
      {"3C 00 61 3C 00 62 3C 00 63 F0 F0 3C 00 64 FF F0", "a[b[c]][d]"},
      // Behind the end of the document nothing is looked at.
      {"3C 00 61 FF 3C 00 62 FF", "a"},
      {"3C 00 61 F0 F0 E5", "a"},
  });
}

TEST_F(FastInfosetReader, WhatStandsAroundTheRootIsSteppedOver) {
  ExpectShapes({
      {"E2 00 63 3C 00 61 FF", "a"},
      {"E2 03 F0 9F 98 80 3C 00 61 FF", "a"},
      {"E2 FF 3C 00 61 FF", "a"},
      {"E2 85 3C 00 61 FF", "a"},
      {"E2 13 00 63 00 64 3C 00 61 FF", "a"},
      {"E2 30 91 61 62 3C 00 61 FF", "a"},
      {"E1 00 74 00 64 3C 00 61 FF", "a"},
      {"E1 80 FF 3C 00 61 FF", "a"},
      {"C4 F0 3C 00 61 FF", "a"},
      {"C6 00 73 F0 3C 00 61 FF", "a"},
      {"C7 00 73 80 F0 3C 00 61 FF", "a"},
      {"C5 9F E1 00 74 00 64 E1 80 FF F0 3C 00 61 FF", "a"},
      // Octets that begin nothing here.
      {"80 C8 D0 E3 F1 3C 00 61 FF", "a"},
      // Behind the root.
      {"3C 00 61 F0 E2 00 63 E1 00 74 00 64 F0", "a"},
      {"3C 00 61 3C 00 62 FF E2 00 63 F0", "a[b]"},
  });
}

TEST_F(FastInfosetReader, WhatStandsAmongTheContentIsSteppedOver) {
  ExpectShapes({
      {"3C 00 61 E1 00 74 00 64 80 78 E2 00 63 80 79 FF", "a \"xy\""},
      {"3C 00 61 80 78 C8 00 65 80 79 FF", "a \"xy\""},
      {"3C 00 61 80 78 CA 00 65 00 73 80 79 FF", "a \"xy\""},
      {"3C 00 61 80 78 C9 80 C0 00 80 79 FF", "a \"xy\""},
      {"3C 00 61 80 78 CB 00 65 00 73 00 70 80 79 FF", "a \"xy\""},
  });
}

TEST_F(FastInfosetReader, RefusesWhatContentCanNotBe) {
  constexpr char kText[] = "Failed to parse FastInfoset. Invalid Encoding of Element type.";
  for (const char* octet : {"C0", "C4", "C7", "CC", "D0", "E0", "E3", "E5", "F1", "FE"}) {
    SCOPED_TRACE(octet);
    ExpectFailure(kText, FinfOf("3C 00 61 " + std::string(octet) + " FF"));
  }
}

TEST_F(FastInfosetReader, RefusesWhatADocumentTypeDeclarationCanNotHold) {
  ExpectFailure("Failed to parse FastInfoset. Invalid Encoding of document type declaration.",
                FinfOf("C4 E2 00 63 F0 3C 00 61 FF"));
}

TEST_F(FastInfosetReader, ADocumentNeedsAnElement) {
  for (const char* hex : {"F0", "FF", "E2 00 63 F0", "C4 FF", "C4 F0 F0"}) {
    SCOPED_TRACE(hex);
    ExpectFailure("Invalid or empty XML document", FinfOf(hex));
  }
}

TEST_F(FastInfosetReader, ADocumentHasOneRoot) {
  ExpectFailure("Failed to parse FastInfoset. There is more than one root element.",
                FinfOf("3C 00 61 F0 3C 00 62 FF"));
}

TEST_F(FastInfosetReader, TheEndOfTheDocumentIsNotLeftOut) {
  ExpectFailure(kEndOfFile, FinfOf("3C 00 61 F0"));
  ExpectFailure(kEndOfFile, FinfOf("3C 00 61 3C 00 62 FF"));
}

// --- Names

TEST_F(FastInfosetReader, ReadsNamesInFullAndByTheirIndexes) {
  ExpectShapes({
      // No namespace, a namespace, a prefix too; then each again.
      {"3C 00 61 3D 00 75 00 62 3F 00 70 00 76 00 63 F0 00 F0 01 F0 02 FF FF F0",
       "a[{u}b[{v}c][a][{u}b][{v}c]]"},
      // Parts by their indexes: prefix 1 is xml, namespace name 1 that of it.
      {"3F 80 80 00 61 FF", "{http://www.w3.org/XML/1998/namespace}a"},
      {"3D 00 75 00 61 3D 81 80 FF F0", "{u}a[{u}a]"},
      // One local name under two namespaces are two entries.
      {"3D 00 75 00 61 3D 00 76 80 F0 00 F0 01 FF F0", "{u}a[{v}a][{u}a][{v}a]"},
  });
}

TEST_F(FastInfosetReader, NamesOfAttributesHaveATableOfTheirOwn) {
  ExpectShapes({
      {"7C 00 61 78 00 6B 00 76 FF FF", "a k='v'"},
      {"7C 00 61 78 80 00 76 FF FF", "a a='v'"},
      {"7C 00 61 79 00 75 00 6B 00 76 F0 FF", "a {u}k='v'"},
      {"7C 00 61 7B 80 80 03 6C 61 6E 67 41 65 6E F0 FF",
       "a {http://www.w3.org/XML/1998/namespace}lang='en'"},
      {"7C 00 61 78 00 6B 00 76 F0 40 00 00 77 F0 3C 00 62 FF FF", "a k='v'[a k='w'[b]]"},
      // Bit 6 of a literal name says nothing.
      {"7C 00 61 7C 00 6B 00 76 FF FF", "a k='v'"},
  });
}

TEST_F(FastInfosetReader, APrefixNeedsANamespace) {
  constexpr char kText[] =
      "Failed to parse FastInfoset. Invalid QName type Prefix without Namespace.";
  ExpectFailure(kText, FinfOf("3E 00 70 00 61 FF"));
  ExpectFailure(kText, FinfOf("7C 00 61 7A 00 70 00 6B 00 76 FF FF"));
}

std::string OutsideTable(unsigned index, unsigned entries) {
  return FormatString("Failed to parse FastInfoset. The index %u is outside a table of %u entries.",
                      index, entries);
}

TEST_F(FastInfosetReader, AnIndexOutsideItsTableFailsInEveryBuild) {
  struct Case {
    const char* hex;
    unsigned index;
    unsigned entries;
  };
  const Case cases[] = {
      {"00 FF", 1, 0},  // name of an element
      {"3C 00 61 01 FF FF", 2, 1},
      {"7C 00 61 00 00 76 FF FF", 1, 0},              // name of an attribute
      {"7C 00 61 78 00 6B 80 FF FF", 1, 0},           // value
      {"7C 00 61 78 00 6B 00 76 00 80 FF FF", 1, 0},  // a value without the add bit
      {"3C 00 61 A0 FF", 1, 0},                       // chunk
      {"3C 00 61 80 76 A0 FF", 1, 0},                 // a chunk without the add bit
      {"3F 81 80 00 61 FF", 2, 1},                    // prefix
      {"3D 81 00 61 FF", 2, 1},                       // namespace name
      {"3C 80 FF", 1, 0},                             // local name
      {"38 CF 81 80 F0 3C 00 61 FF", 2, 1},           // a declaration's prefix
      {"38 CD 81 F0 3C 00 61 FF", 2, 1},              // a declaration's namespace name
      {"3C 00 61 8B FC 12 FF", 256, 2},               // alphabet of a chunk
      {"7C 00 61 78 00 6B 20 20 12 FF FF", 3, 2},     // alphabet of a value
      {"7C 00 61 78 00 6B 22 00 12 FF FF", 33, 2},    // its high bits
      {"7C 00 61 78 00 6B 2F F0 12 FF FF", 256, 2},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.hex);
    ExpectFailure(OutsideTable(c.index, c.entries), FinfOf(c.hex));
  }
}

TEST_F(FastInfosetReader, TheTableOfNamesStopsGrowingAt2To20Entries) {
  // 2^20 names a, then b, which is in no table; an index can say 2^20 but not the next.
  const std::string body = Octets("3C 00 61") + Times(0xFFFFF, Octets("3C 80 F0"));
  const std::string name = Octets("3C 00 62 F0");
  const std::string limit = Octets("30 07 F7 DF");   // 2^20 - 526369
  const std::string beyond = Octets("30 07 F7 E0");  // one more
  CXmlDocument document;
  EXPECT_QZ_THROW(CQzException, OutsideTable(0x100001, 0x100000),
                  LoadOctets(document, Finf(body + name + limit + Octets("F0") + beyond)));
  const CXmlElement* last = document.GetDocumentElement()->GetFirstElement();
  const CXmlElement* before = nullptr;
  for (; last->GetNextSiblingElement() != nullptr; last = last->GetNextSiblingElement()) {
    before = last;
  }
  EXPECT_EQ("b", before->GetLocalName());
  EXPECT_EQ("a", last->GetLocalName());
}

// --- Declarations of namespaces

TEST_F(FastInfosetReader, DeclarationsFillTheMapOfTheDocument) {
  CXmlDocument document;
  LoadOctets(document,
             FinfOf("38 CF 00 70 00 75 CD 00 76 CF 00 71 81 CE 00 72 CC F0 3F 81 81 00 61 FF"));
  EXPECT_EQ("{u}a", qztest::Shape(document));
  EXPECT_EQ("u", document.LookupNamespaceFromAlias("p"));
  EXPECT_EQ("u", document.LookupNamespaceFromAlias("q"));
  EXPECT_EQ("", document.LookupNamespaceFromAlias("r"));
  // The later declaration of the default namespace has no name.
  EXPECT_EQ("", document.LookupNamespaceFromAlias(""));
  LoadOctets(document, FinfOf("38 CD 00 76 F0 3D 81 00 61 FF"));
  EXPECT_EQ("v", document.LookupNamespaceFromAlias(""));
  EXPECT_EQ("", document.LookupNamespaceFromAlias("p"));
}

TEST_F(FastInfosetReader, TheFirstOctetOfAnElementTellsWhetherItHasAttributes) {
  ExpectShapes({
      {"78 F0 3C 00 61 78 00 6B 00 76 FF FF", "a k='v'"},
      // Meant: bit 2 of the octet behind the declarations says nothing.
      {"78 F0 7C 00 61 78 00 6B 00 76 FF FF", "a k='v'"},
      {"38 F0 7C 00 61 80 76 FF", "a \"v\""},
      // Any octet ends the declarations.
      {"38 FF 3C 00 61 FF", "a"},
      {"38 00 3C 00 61 FF", "a"},
      // A child with declarations.
      {"3C 00 61 38 CD 00 75 F0 3D 81 00 62 FF F0", "a[{u}b]"},
  });
}

// --- Values and text

TEST_F(FastInfosetReader, ReadsValuesOfAttributes) {
  ExpectShapes({
      // In full, into the table, by index, index 0.
      {"7C 00 61 78 00 6B 40 76 78 00 6C 80 78 00 6D FF 78 00 6E 00 77 FF FF",
       "a k='v' l='v' m='' n='w'"},
      {"7C 00 61 78 00 6B 41 76 77 78 00 6C 40 78 F0 40 00 81 00 80 FF FF FF",
       "a k='vw' l='x'[a k='x' k='vw']"},
      // Attributes end with one end or with that of their element.
      {"7C 00 61 F0 80 78 FF", "a \"x\""},
      {"7C 00 61 FF F0", "a"},
      {"3C 00 61 7C 00 62 78 00 6B 00 76 FF 80 78 FF", "a \"x\"[b k='v']"},
      // Meant: any octet from 80 on ends them.
      {"7C 00 61 80 80 78 FF", "a \"x\""},
      {"7C 00 61 90 80 78 FF", "a \"x\""},
      {"7C 00 61 FE 80 78 FF", "a \"x\""},
  });
}

TEST_F(FastInfosetReader, TextOfManyChunksJoins) {
  ExpectShapes({
      {"3C 00 61 80 78 80 79 FF", "a \"xy\""},
      {"3C 00 61 90 78 A0 91 79 7A A1 A0 FF", "a \"xxyzyzx\""},
      {"3C 00 61 90 78 3C 00 62 A0 F0 A0 FF", "a \"xx\"[b \"x\"]"},
  });
}

TEST_F(FastInfosetReader, CarriageReturnsAreDroppedFromTextAndKeptInValues) {
  ExpectShapes({
      {"3C 00 61 82 01 78 0D 0A 79 FF", "a \"x\ny\""},
      {"3C 00 61 90 0D A0 FF", "a"},
      {"3C 00 61 92 00 0D 78 0D A0 FF", "a \"xx\""},
      {"7C 00 61 78 00 6B 02 78 0D 79 FF FF", "a k='x\ry'"},
  });
}

TEST_F(FastInfosetReader, AZeroByteEndsATextOfUtf8) {
  ExpectShapes({
      {"3C 00 61 82 00 78 00 79 80 7A FF", "a \"xz\""},
      {"7C 00 61 78 00 6B 42 78 00 79 78 00 6C 80 FF FF", "a k='x' l='x'"},
      {"3C 02 61 00 62 FF", "a"},
  });
}

// --- Vocabularies of the context

TEST_F(FastInfosetReader, StartsFromTheVocabularyOfTheContextWhenToldSo) {
  CSerializationContext context;
  CFastInfosetContext& options = context.GetFIContext();
  CFIVocabulary& vocabulary = *options.GetVocabulary();
  vocabulary.AddElement("p", "urn:x", "order");
  vocabulary.AddAttribute("", "", "id");
  vocabulary.AddAttributeValue("seven");
  vocabulary.AddElementValue("text");
  // A head with an external vocabulary; element 1, attribute 1 of value 1, chunk 1.
  const std::string octets =
      Octets("E0 00 00 01 20 10 00 03 75 72 6E 78 40 00 80 F0 A0 3C 81 FF F0");
  CXmlDocument document(context);
  EXPECT_QZ_THROW(CQzException, OutsideTable(1, 0), LoadOctets(document, octets));

  options.SetUseGeneratedVocabulary(true);
  EXPECT_EQ("{urn:x}order id='seven' \"text\"[id]", ShapeOf(octets, context));
  // No document changes it.
  EXPECT_EQ("{urn:x}order id='seven' \"text\"[id]", ShapeOf(octets, context));
  EXPECT_EQ(1u, vocabulary.GetElementNamesTable().m_table.size());
}

// --- Around the reader

std::string g_trace;

TEST_F(FastInfosetReader, TellsTheDebugChannelOfElements) {
  g_trace.clear();
  SetDebugChannel([](const char* text) { g_trace += text; });
  ShapeOf(FinfOf("3D 00 75 00 61 7C 00 62 78 00 6B 00 76 FF FF"));
  SetDebugChannel(nullptr);
  EXPECT_EQ("New Root Elm: u::a\nNew Elm: ::b\nEnd Elm: ::b\nEnd Elm: u::a\n", g_trace);
}

TEST_F(FastInfosetReader, ALongNameIsCutForTheDebugChannel) {
  const std::string name(40000, 'n');
  g_trace.clear();
  SetDebugChannel([](const char* text) { g_trace += text; });
  ShapeOf(Finf(Octets("3C 60 00 00 9A FF") + name + Octets("FF")));
  SetDebugChannel(nullptr);
  EXPECT_EQ("New Root Elm: ::" + std::string(32767 - 16, 'n') +
                "End Elm: ::" + std::string(32767 - 11, 'n'),
            g_trace);
}

std::vector<std::string> g_ended;

TEST_F(FastInfosetReader, OffersElementsToTheCallback) {
  g_ended.clear();
  CXmlDocument document([](CXmlElement* element) {
    g_ended.push_back(qztest::Shape(element));
    return element->GetLocalName() == "b";
  });
  LoadOctets(document, FinfOf("3C 00 61 3C 00 62 80 78 F0 7C 00 63 FF 01 FF F0"));
  EXPECT_EQ((std::vector<std::string>{"b \"x\"", "c", "b", "a[c]"}), g_ended);
  EXPECT_EQ("a[c]", qztest::Shape(document));
}

TEST_F(FastInfosetReader, WhatTheCallbackThrowsPassesOn) {
  CXmlDocument document([](CXmlElement*) -> bool { throw CQzException("enough"); });
  EXPECT_QZ_THROW(CQzException, "enough", LoadOctets(document, FinfOf("3C 00 61 3C 00 62 F0 FF")));
}

TEST_F(FastInfosetReader, AFailureLeavesTheTreeAsFarAsItWasBuilt) {
  CXmlDocument document;
  EXPECT_QZ_THROW(CQzException, kEndOfFile,
                  LoadOctets(document, FinfOf("3C 00 61 80 78 3C 00 62")));
  EXPECT_EQ("a \"x\"[b]", qztest::Shape(document));
  LoadOctets(document, FinfOf("3C 00 63 FF"));
  EXPECT_EQ("c", qztest::Shape(document));
}

TEST_F(FastInfosetReader, PrintsItsTablesOfNames) {
  CFastInfosetContext context;
  context.GetVocabulary()->AddElement("p", "u", "a");
  context.GetVocabulary()->AddElement("", "", "b");
  context.GetVocabulary()->AddAttribute("", "", "a");
  context.SetUseGeneratedVocabulary(true);
  CXmlDocument document;
  CFastInfosetReader reader(&context, &document);
  ::testing::internal::CaptureStdout();
  reader.Dump();
  std::fflush(stdout);
  EXPECT_EQ("Elements\n2\n1\n0\n2\nAttributes\n0\n1\n", ::testing::internal::GetCapturedStdout());
  reader.Cleanup();
  ::testing::internal::CaptureStdout();
  reader.Dump();
  std::fflush(stdout);
  EXPECT_EQ("", ::testing::internal::GetCapturedStdout());
}

}  // namespace
}  // namespace QzXmlLib16
