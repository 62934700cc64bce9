#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>
#include <string>

#include "qzxml/platform/File.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/SerializationContext.h"
#include "tests/support/Documents.h"
#include "tests/support/LiveCounts.h"
#include "tests/support/QzTest.h"
#include "tests/support/Unprivileged.h"
#include "tests/xml/TreeShape.h"

namespace QzXmlLib16 {
namespace {

using qztest::Shape;

constexpr std::size_t kChunk = 131072;

// Loading in chunks, until the end of the scope.
class InChunks {
 public:
  explicit InChunks(bool inChunks = true) { AsyncFromXmlFile(inChunks); }
  ~InChunks() { AsyncFromXmlFile(false); }
};

// A file of the test in the place of those of the system, until the end of the scope.
struct FakeFile {
  FakeFile() {
    s_current = this;
    m_before = detail::SetFileOpener(&FakeFile::Open);
  }
  ~FakeFile() { detail::SetFileOpener(m_before); }

  std::string content;
  int openError = 0;
  int sizeError = 0;
  std::uint64_t size = std::numeric_limits<std::uint64_t>::max();  // as said, if not this
  int readError = 0;
  int failingRead = 1;  // the number of the read that answers readError
  int reads = 0;
  int open = 0;  // files that are not closed

 private:
  class File : public detail::IFile {
   public:
    explicit File(FakeFile& fake) : m_fake(fake) { ++fake.open; }
    ~File() override { --m_fake.open; }

    int GetSize(std::uint64_t& size) override {
      const bool isTrue = m_fake.size == std::numeric_limits<std::uint64_t>::max();
      size = isTrue ? m_fake.content.size() : m_fake.size;
      return m_fake.sizeError;
    }

    int Read(std::uint64_t offset, void* buffer, std::size_t wanted, std::size_t& done) override {
      done = 0;
      if (++m_fake.reads == m_fake.failingRead && m_fake.readError != 0) return m_fake.readError;
      const std::string& content = m_fake.content;
      if (offset >= content.size()) return 0;
      done = std::min(wanted, content.size() - static_cast<std::size_t>(offset));
      std::memcpy(buffer, content.data() + offset, done);
      return 0;
    }

    void ReadAhead(std::uint64_t, std::size_t) override {}

   private:
    FakeFile& m_fake;
  };

  static std::unique_ptr<detail::IFile> Open(const char*, detail::FileMode, int& error) {
    error = s_current->openError;
    if (error != 0) return nullptr;
    return std::make_unique<File>(*s_current);
  }

  static FakeFile* s_current;
  detail::FileOpener m_before;
};

FakeFile* FakeFile::s_current = nullptr;

// A document of that many octets: a root, children with an attribute, and text of any kind.
std::string DocumentOfSize(std::size_t size) {
  const std::string end = "</r>";
  std::string text = "<r xmlns:p='urn:p'>";
  for (int i = 0;; ++i) {
    const std::string child = "<p:c n='" + std::to_string(i) + "'>t\xC3\xA9xt&amp;\n</p:c>\n";
    if (text.size() + child.size() + end.size() > size) break;
    text += child;
  }
  text.append(size - end.size() - text.size(), '.');
  return text + end;
}

std::string LoadedFromFile(const std::string& path, bool inChunks) {
  const InChunks chunks(inChunks);
  CXmlDocument document;
  document.Load(path.c_str());
  return Shape(document);
}

std::string LoadedFromText(const std::string& text) {
  CXmlDocument document;
  document.LoadXml(text.c_str());
  return Shape(document);
}

class XmlDocumentLoad : public qztest::NothingLeftBehind {};

// --- Files

TEST_F(XmlDocumentLoad, AFileThatIsNotThereIsNotOpened) {
  const qztest::TemporaryFile file("<r/>");
  for (const bool inChunks : {false, true}) {
    const InChunks chunks(inChunks);
    CXmlDocument document;
    const std::string none = file.path() + ".none";
    EXPECT_QZ_THROW_FULL(CQzException, "Failed to open the file [" + none + "] Error [0x00000002]",
                         "", document.Load(none.c_str()));
    const std::string below = file.path() + "/none";
    EXPECT_QZ_THROW(CQzException, "Failed to open the file [" + below + "] Error [0x00000014]",
                    document.Load(below.c_str()));
    EXPECT_QZ_THROW(CQzException, "Failed to open the file [] Error [0x00000002]",
                    document.Load(""));
    EXPECT_QZ_THROW(CQzException, "Failed to open the file [] Error [0x00000002]",
                    document.Load(nullptr));
    EXPECT_EQ("(none)", Shape(document));
  }
}

TEST_F(XmlDocumentLoad, AFolderIsNotOpened) {
  for (const bool inChunks : {false, true}) {
    const InChunks chunks(inChunks);
    CXmlDocument document;
    EXPECT_QZ_THROW(CQzException, "Failed to open the file [/] Error [0x00000015]",
                    document.Load("/"));
  }
}

TEST_F(XmlDocumentLoad, AFileWithoutPermissionIsNotOpened) {
  const qztest::TemporaryFile file("<r/>");
  const std::string path = file.path();
  for (const bool inChunks : {false, true}) {
    const InChunks chunks(inChunks);
    EXPECT_EQ("Failed to open the file [" + path + "] Error [0x0000000d]",
              qztest::FailureWithoutRights(path, [&] {
                CXmlDocument document;
                document.Load(path.c_str());
              }));
  }
}

TEST_F(XmlDocumentLoad, AnErrorOfOpeningStandsInHexadecimal) {
  FakeFile fake;
  fake.openError = 0x7ABCDEF0;
  for (const bool inChunks : {false, true}) {
    const InChunks chunks(inChunks);
    CXmlDocument document;
    EXPECT_QZ_THROW(CQzException, "Failed to open the file [a.xml] Error [0x7abcdef0]",
                    document.Load("a.xml"));
  }
}

TEST_F(XmlDocumentLoad, AFileWhoseSizeIsNotKnownIsNotRead) {
  FakeFile fake;
  fake.content = "<r/>";
  fake.sizeError = EIO;
  CXmlDocument document;
  EXPECT_QZ_THROW_FULL(CQzException,
                       "Failed to get the size of the file [a.xml] Error [0x00000005]", "",
                       document.Load("a.xml"));
  EXPECT_EQ(0, fake.reads);
  EXPECT_EQ(0, fake.open);
  EXPECT_EQ("(none)", Shape(document));
}

TEST_F(XmlDocumentLoad, AFileOf4GiBIsRefusedBeforeItIsRead) {
  FakeFile fake;
  CXmlDocument document;
  for (const std::uint64_t size : {std::uint64_t{1} << 32, std::uint64_t{0xFFFFFFFF} << 32}) {
    fake.size = size;
    EXPECT_QZ_THROW(CQzException, "Failed to get the size of the file [big.xml] Error [0x0000001b]",
                    document.Load("big.xml"));
  }
  EXPECT_EQ(0, fake.reads);
  EXPECT_EQ(0, fake.open);
}

TEST_F(XmlDocumentLoad, AFileThatCanNotBeReadFailsWithTheErrorOfTheSystem) {
  FakeFile fake;
  fake.content = "<r/>";
  fake.readError = EIO;
  CXmlDocument document;
  EXPECT_QZ_THROW_FULL(CQzException,
                       "Failed to read the contents of the file [a.xml] Error [0x00000005]", "",
                       document.Load("a.xml"));
  EXPECT_EQ(0, fake.open);
}

TEST_F(XmlDocumentLoad, AFileThatComesUpShortFailsWithoutAnError) {
  FakeFile fake;
  fake.content = "<r/>";
  fake.size = 5;
  CXmlDocument document;
  EXPECT_QZ_THROW(CQzException,
                  "Failed to read the contents of the file [a.xml] Error [0x00000000]",
                  document.Load("a.xml"));
  EXPECT_EQ(0, fake.open);
  EXPECT_EQ("(none)", Shape(document));
}

TEST_F(XmlDocumentLoad, AWholeFileIsReadAtOnceAndClosedBehindIt) {
  FakeFile fake;
  fake.content = DocumentOfSize(3 * kChunk);
  CXmlDocument document;
  document.Load("a.xml");
  EXPECT_EQ(1, fake.reads);
  EXPECT_EQ(0, fake.open);
  EXPECT_EQ(LoadedFromText(fake.content), Shape(document));
}

TEST_F(XmlDocumentLoad, ADocumentCanNameTheFileThatComesInItsPlace) {
  const qztest::TemporaryFile file("<s/>");
  for (const bool inChunks : {false, true}) {
    const InChunks chunks(inChunks);
    CXmlDocument document;
    document.LoadXml(("<r href='" + file.path() + "'/>").c_str());
    document.Load(document.GetDocumentElement()->GetAttribute("href", "").c_str());
    EXPECT_EQ("s", Shape(document));
    document.LoadXml("<r>/a-folder/that-is/not-there</r>");
    EXPECT_QZ_THROW(CQzException,
                    "Failed to open the file [/a-folder/that-is/not-there] Error [0x00000002]",
                    document.Load(document.GetDocumentElement()->GetText().c_str()));
  }
}

TEST_F(XmlDocumentLoad, AnEmptyFileFailsInExpat) {
  const qztest::TemporaryFile file("");
  for (const bool inChunks : {false, true}) {
    const InChunks chunks(inChunks);
    CXmlDocument document;
    EXPECT_QZ_THROW_FULL(CQzException, "no element found at line 1", "",
                         document.Load(file.path().c_str()));
  }
}

// --- Files in chunks

TEST_F(XmlDocumentLoad, ChunksOfEverySizeGiveTheTreeOfTheWholeFile) {
  for (const int chunks : {0, 1, 2, 3}) {
    for (const int more : {-1, 0, 1, 1000}) {
      const int size = chunks * static_cast<int>(kChunk) + more;
      if (size < 100) continue;
      const std::string text = DocumentOfSize(static_cast<std::size_t>(size));
      ASSERT_EQ(static_cast<std::size_t>(size), text.size());
      const qztest::TemporaryFile file(text);
      const std::string shape = LoadedFromText(text);
      EXPECT_TRUE(shape == LoadedFromFile(file.path(), false)) << size;
      EXPECT_TRUE(shape == LoadedFromFile(file.path(), true)) << size;
    }
  }
}

TEST_F(XmlDocumentLoad, SmallFilesAreLoadedInChunksToo) {
  const struct {
    const char* text;
    const char* shape;
  } cases[] = {{"<r/>", "r"},
               {"\xEF\xBB\xBF<r>t</r>", "r \"t\""},
               {"<r a='1'>x<!-- c --><c/>y</r>\n", "r a='1' \"xy\"[c]"}};
  for (const auto& c : cases) {
    const qztest::TemporaryFile file(c.text);
    EXPECT_EQ(c.shape, LoadedFromFile(file.path(), true)) << c.text;
  }
}

TEST_F(XmlDocumentLoad, TokensMayCrossTheEndOfAChunkAnywhere) {
  const std::string token =
      "<n:long-name n:attr='v\xC3\xA9&lt;&#65;'>a\xE2\x82\xAC\r\nb<![CDATA[c]]d]]>"
      "&#13;&amp;<!-- e --><?f g?></n:long-name>";
  const std::string begin = "<r xmlns:n='urn:n'>";
  const std::string expected =
      "[{urn:n}long-name {urn:n}attr='v\xC3\xA9<A' "
      "\"a\xE2\x82\xAC\nbc]]d&\"]";
  for (std::size_t cut = 0; cut <= token.size(); ++cut) {
    FakeFile fake;
    const InChunks chunks;
    fake.content = begin + std::string(kChunk - begin.size() - cut, ' ') + token + "</r>";
    CXmlDocument document;
    document.Load("a.xml");
    EXPECT_EQ(expected, '[' + Shape(document.GetDocumentElement()->GetFirstElement()) + ']') << cut;
  }
}

TEST_F(XmlDocumentLoad, OneTokenMayTakeManyChunks) {
  const std::string value(5 * kChunk + 17, 'v');
  const qztest::TemporaryFile file("<r a='" + value + "'>" + value + "</r>");
  const InChunks chunks;
  CXmlDocument document;
  document.Load(file.path().c_str());
  EXPECT_TRUE(value == document.GetDocumentElement()->GetAttribute("a", ""));
  EXPECT_TRUE(value == document.GetDocumentElement()->GetText());
}

TEST_F(XmlDocumentLoad, AChunkThatCanNotBeReadFailsWithoutThePath) {
  for (const int failing : {1, 2, 3}) {
    FakeFile fake;
    const InChunks chunks;
    fake.content = DocumentOfSize(3 * kChunk);
    fake.readError = EIO;
    fake.failingRead = failing;
    CXmlDocument document;
    EXPECT_QZ_THROW_FULL(CQzException,
                         "Failed to read the contents of the file. Error [0x00000005]", "",
                         document.Load("a.xml"));
    EXPECT_EQ(failing, fake.reads);
    EXPECT_EQ(0, fake.open) << failing;
    EXPECT_EQ(failing > 1, document.GetDocumentElement() != nullptr) << failing;
  }
}

TEST_F(XmlDocumentLoad, AFailureInTheFirstChunkEndsTheReading) {
  FakeFile fake;
  const InChunks chunks;
  fake.content = "<r>\n<a></b>" + std::string(4 * kChunk, ' ') + "</r>";
  CXmlDocument document;
  EXPECT_QZ_THROW(CQzException, "mismatched tag at line 2", document.Load("a.xml"));
  EXPECT_GE(2, fake.reads);
  EXPECT_EQ(0, fake.open);
  EXPECT_EQ("r \"\n\"[a]", Shape(document));
}

TEST_F(XmlDocumentLoad, ALineIsCountedThroughAllChunks) {
  const std::string lines(2 * kChunk, '\n');
  const qztest::TemporaryFile file("<r>" + lines + "</s>");
  for (const bool inChunks : {false, true}) {
    const InChunks chunks(inChunks);
    CXmlDocument document;
    EXPECT_QZ_THROW(CQzException, "mismatched tag at line 262145",
                    document.Load(file.path().c_str()));
  }
}

TEST_F(XmlDocumentLoad, AFileOfWhiteSpaceHasNoElementInEveryNumberOfChunks) {
  for (const std::size_t size : {std::size_t{1}, kChunk, kChunk + 1, 2 * kChunk}) {
    const qztest::TemporaryFile file(std::string(size, ' '));
    const InChunks chunks;
    CXmlDocument document;
    EXPECT_QZ_THROW(CQzException, "no element found at line 1", document.Load(file.path().c_str()));
  }
}

// --- Bytes and texts

TEST_F(XmlDocumentLoad, NoBytesAreAnEmptyStream) {
  CXmlDocument document;
  const unsigned char byte = '<';
  EXPECT_QZ_THROW_FULL(CQzException, "XML Stream is empty!", "", document.LoadXmlStream(&byte, 0));
  EXPECT_QZ_THROW(CQzException, "XML Stream is empty!", document.LoadXmlStream(nullptr, 0));
  EXPECT_QZ_THROW(CQzException, "XML Stream is empty!", document.LoadXmlStream(nullptr, 7));
}

TEST_F(XmlDocumentLoad, NoCharactersAreAnEmptyString) {
  CXmlDocument document;
  EXPECT_QZ_THROW_FULL(CQzException, "XML String is empty!", "", document.LoadXml(""));
  EXPECT_QZ_THROW(CQzException, "XML String is empty!",
                  document.LoadXml(static_cast<const char*>(nullptr)));
}

TEST_F(XmlDocumentLoad, AnEmptyWideStringFailsInExpat) {
  CXmlDocument document;
  EXPECT_QZ_THROW_FULL(CQzException, "no element found at line 1", "", document.LoadXml(u""));
  EXPECT_QZ_THROW(CQzException, "no element found at line 1", document.LoadXml(L""));
  EXPECT_QZ_THROW(CQzException, "no element found at line 1",
                  document.LoadXml(static_cast<const char16_t*>(nullptr)));
  EXPECT_QZ_THROW(CQzException, "no element found at line 1",
                  document.LoadXml(static_cast<const wchar_t*>(nullptr)));
}

TEST_F(XmlDocumentLoad, BytesAreReadToTheirLengthOnly) {
  CXmlDocument document;
  const std::string text = "<r>t</r><garbage";
  document.LoadXmlStream(reinterpret_cast<const unsigned char*>(text.data()), 8);
  EXPECT_EQ("r \"t\"", Shape(document));
}

TEST_F(XmlDocumentLoad, AZeroByteEndsAStringAndFailsInAStream) {
  const std::string text("<r>a\0b</r>", 10);
  CXmlDocument document;
  EXPECT_QZ_THROW(CQzException, "no element found at line 1", document.LoadXml(text.c_str()));
  EXPECT_EQ("r \"a\"", Shape(document));
  EXPECT_QZ_THROW(CQzException, "not well-formed (invalid token) at line 1",
                  document.LoadXmlStream(reinterpret_cast<const unsigned char*>(text.data()), 10));
}

TEST_F(XmlDocumentLoad, WideTextsGiveTheTreeOfTheSameNarrowText) {
  CXmlDocument document;
  document.LoadXml(u"<r \u00E9='\u20AC'>\U0001D11E\r\n<c/></r>");
  const std::string expected = "r \xC3\xA9='\xE2\x82\xAC' \"\xF0\x9D\x84\x9E\n\"[c]";
  EXPECT_EQ(expected, Shape(document));
  document.LoadXml(L"<r \u00E9='\u20AC'>\U0001D11E\r\n<c/></r>");
  EXPECT_EQ(expected, Shape(document));
  document.LoadXml("<r \xC3\xA9='\xE2\x82\xAC'>\xF0\x9D\x84\x9E\r\n<c/></r>");
  EXPECT_EQ(expected, Shape(document));
}

TEST_F(XmlDocumentLoad, AWideTextThatDeclaresAnEncodingOfOctetsFails) {
  CXmlDocument document;
  EXPECT_QZ_THROW(CQzException, "encoding specified in XML declaration is incorrect at line 1",
                  document.LoadXml(u"<?xml version='1.0' encoding='UTF-8'?><r/>"));
  document.LoadXml(u"<?xml version='1.0' encoding='UTF-16'?><r/>");
  EXPECT_EQ("r", Shape(document));
}

TEST_F(XmlDocumentLoad, ALoneSurrogateInAWideTextFails) {
  const char16_t lone[] = {'<', 'r', '>', 0xD800, '<', '/', 'r', '>', 0};
  CXmlDocument document;
  try {
    document.LoadXml(lone);
    ADD_FAILURE() << "loaded";
  } catch (const CQzException& e) {
    // Expat 2.5.0 without its later security updates takes the '<' for the other half, and misses
    // the end tag.
    const std::string text = e.GetMessage();
    EXPECT_TRUE(text == "not well-formed (invalid token) at line 1" ||
                text == "no element found at line 1")
        << text;
  }
}

// --- What a load leaves

TEST_F(XmlDocumentLoad, ASecondLoadDiscardsTheFirstTreeAndItsNamespaces) {
  CXmlDocument document;
  document.LoadXml("<p:r xmlns:p='urn:p' xmlns='urn:d'><c/></p:r>");
  EXPECT_EQ("urn:p", document.LookupNamespaceFromAlias("p"));
  document.LoadXml("<s xmlns:q='urn:q'/>");
  EXPECT_EQ("s", Shape(document));
  EXPECT_EQ("", document.LookupNamespaceFromAlias("p"));
  EXPECT_EQ("", document.LookupNamespaceFromAlias(""));
  EXPECT_EQ("urn:q", document.LookupNamespaceFromAlias("q"));
}

TEST_F(XmlDocumentLoad, EveryFailedLoadDiscardsWhatWasThere) {
  const struct {
    const char* what;
    void (*load)(CXmlDocument&);
  } cases[] = {
      {"no bytes", [](CXmlDocument& d) { d.LoadXmlStream(nullptr, 0); }},
      {"no text", [](CXmlDocument& d) { d.LoadXml(""); }},
      {"no wide text", [](CXmlDocument& d) { d.LoadXml(u""); }},
      {"no wide text", [](CXmlDocument& d) { d.LoadXml(L""); }},
      {"no file", [](CXmlDocument& d) { d.Load("/none/none"); }},
  };
  for (const auto& c : cases) {
    CXmlDocument document;
    document.LoadXml("<p:r xmlns:p='urn:p'/>");
    EXPECT_THROW(c.load(document), CQzException) << c.what;
    EXPECT_EQ(nullptr, document.GetDocumentElement()) << c.what;
    EXPECT_EQ("", document.LookupNamespaceFromAlias("p")) << c.what;
  }
}

TEST_F(XmlDocumentLoad, AFailureKeepsWhatWasBuiltUntilTheNextLoad) {
  CXmlDocument document;
  EXPECT_QZ_THROW(CQzException, "mismatched tag at line 2",
                  document.LoadXml("<r xmlns:p='urn:p' a='1'>x<c>y</c>\n<d>z</r>"));
  EXPECT_EQ("r a='1' \"x\n\"[c \"y\"][d \"z\"]", Shape(document));
  EXPECT_EQ("urn:p", document.LookupNamespaceFromAlias("p"));
  document.LoadXml("<s/>");
  EXPECT_EQ("s", Shape(document));
}

TEST_F(XmlDocumentLoad, EveryPrefixOfADocumentFailsAndTheWholeLoads) {
  const std::string text =
      "<?xml version='1.0'?><!DOCTYPE r [<!ENTITY e 'ent'><!ATTLIST r d CDATA 'def'>]>"
      "<!-- c --><r xmlns='urn:d' xmlns:p='urn:p' p:a='v\xC3\xA9'>t&e;<p:c/><![CDATA[x<y]]>"
      "<?pi data?>&#8364;</r>";
  const std::string shape =
      "{urn:d}r {urn:p}a='v\xC3\xA9' d='def' \"tentx<y\xE2\x82\xAC\"[{urn:p}c]";
  CXmlDocument document;
  for (std::size_t length = 1; length < text.size(); ++length) {
    const std::string prefix = text.substr(0, length);
    EXPECT_THROW(document.LoadXml(prefix.c_str()), CQzException) << prefix;
    FakeFile fake;
    const InChunks chunks;
    fake.content = prefix;
    EXPECT_THROW(document.Load("a.xml"), CQzException) << prefix;
  }
  document.LoadXml(text.c_str());
  EXPECT_EQ(shape, Shape(document));
}

TEST_F(XmlDocumentLoad, NodesAreCountedWhileTheyLiveAndNotBehindIt) {
  const auto counts = [] {
    std::map<std::string, std::int32_t> live = qztest::LiveCounts();
    return std::to_string(live["CXmlDocument"]) + " " + std::to_string(live["CXmlElement"]) + " " +
           std::to_string(live["CXmlAttribute"]) + " " + std::to_string(live["CExpatReader"]);
  };
  ASSERT_EQ("0 0 0 0", counts());
  {
    CXmlDocument document;
    EXPECT_EQ("1 0 0 0", counts());
    document.LoadXml("<r a='1' b='2'><c d='3'/><e/></r>");
    EXPECT_EQ("1 3 3 0", counts());
    EXPECT_THROW(document.LoadXml("<r a='1'><c></r>"), CQzException);
    EXPECT_EQ("1 2 1 0", counts());
    EXPECT_THROW(document.LoadXml(""), CQzException);
    EXPECT_EQ("1 0 0 0", counts());
    document.LoadXml(u"<r a='1'/>");
    EXPECT_EQ("1 1 1 0", counts());
    document.Cleanup();
    EXPECT_EQ("1 0 0 0", counts());
  }
  EXPECT_EQ("0 0 0 0", counts());
}

TEST_F(XmlDocumentLoad, AParserIsCountedWhileItWorks) {
  CXmlDocument document([](CXmlElement*) {
    EXPECT_EQ(1, qztest::LiveCounts()["CExpatReader"]);
    return false;
  });
  document.LoadXml("<r/>");
  EXPECT_EQ(0, qztest::LiveCounts()["CExpatReader"]);
}

// --- The callback and loading

CXmlDocument* g_document = nullptr;

TEST_F(XmlDocumentLoad, AnElementCallbackCanNotLoadItsDocument) {
  CXmlDocument document([](CXmlElement*) {
    g_document->LoadXml("<s/>");
    return false;
  });
  g_document = &document;
  EXPECT_QZ_THROW(CQzInvalidStateException,
                  "A document can not be loaded from its element callback.",
                  document.LoadXml("<r><c/></r>"));
  EXPECT_EQ("r[c]", Shape(document));
}

TEST_F(XmlDocumentLoad, EveryWayOfLoadingIsClosedToTheElementCallback) {
  CXmlDocument document([](CXmlElement*) {
    const char* text = "A document can not be loaded from its element callback.";
    const unsigned char byte = '<';
    EXPECT_QZ_THROW(CQzInvalidStateException, text, g_document->Load("/none"));
    EXPECT_QZ_THROW(CQzInvalidStateException, text, g_document->LoadXml(u"<r/>"));
    EXPECT_QZ_THROW(CQzInvalidStateException, text, g_document->LoadXml(L"<r/>"));
    EXPECT_QZ_THROW(CQzInvalidStateException, text, g_document->LoadXmlStream(&byte, 1));
    return false;
  });
  g_document = &document;
  document.LoadXml("<r>t</r>");
  EXPECT_EQ("r \"t\"", Shape(document));
  document.LoadXml("<s/>");
  EXPECT_EQ("s", Shape(document));
}

TEST_F(XmlDocumentLoad, AnElementCallbackMayLoadAnotherDocument) {
  CXmlDocument document([](CXmlElement* element) {
    CXmlDocument other;
    other.LoadXml("<other>o</other>");
    element->AppendText(other.GetDocumentElement()->GetText().c_str());
    return false;
  });
  document.LoadXml("<r>t<c/></r>");
  EXPECT_EQ("r \"to\"[c \"o\"]", Shape(document));
}

struct Stop {};

TEST_F(XmlDocumentLoad, AnExceptionOfTheElementCallbackPassesOn) {
  const std::string text = "<r>a<c/>b" + std::string(2 * kChunk, ' ') + "</r>";
  const qztest::TemporaryFile file(text);
  for (const bool inChunks : {false, true}) {
    const InChunks chunks(inChunks);
    CXmlDocument document([](CXmlElement*) -> bool { throw Stop(); });
    EXPECT_THROW(document.Load(file.path().c_str()), Stop);
    EXPECT_EQ("r \"a\"[c]", Shape(document));
    EXPECT_THROW(document.LoadXml(text.c_str()), Stop);
  }
}

}  // namespace
}  // namespace QzXmlLib16
