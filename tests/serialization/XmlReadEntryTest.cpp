#include <cstdio>
#include <filesystem>
#include <fstream>

#include "qzxml/collections/Element.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/xml/XmlDocument.h"
#include "tests/serialization/Note.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using qztest::CNote;

// One document in the three encodings of the entry points; the text of a line has a letter of two
// octets and one from beyond the basic plane.
#define QZ_DOCUMENT(prefix) \
  prefix##"<memo xmlns='urn:notes' to='Ann'>" prefix##"<line>\u00E4 \U0001F600</line>" \
  prefix##"<line/></memo>"

constexpr char kLine[] = "\xC3\xA4 \xF0\x9F\x98\x80";

const BYTE* Bytes(const std::string& text) { return reinterpret_cast<const BYTE*>(text.data()); }
DWORD Length(const std::string& text) { return static_cast<DWORD>(text.size()); }
const std::string& Document() {
  static const std::string text =
      "<memo xmlns='urn:notes' to='Ann'><line>" + std::string(kLine) + "</line><line/></memo>";
  return text;
}

// A file that goes with its variable.
class CTemporaryFile {
 public:
  explicit CTemporaryFile(const std::string& content)
      : m_path((std::filesystem::temp_directory_path() /
                ("qzxml-entry-" + std::to_string(reinterpret_cast<std::uintptr_t>(this)) + "-" +
                 ::testing::UnitTest::GetInstance()->current_test_info()->name()))
                   .string()) {
    std::ofstream(m_path, std::ios::binary) << content;
  }
  ~CTemporaryFile() { std::remove(m_path.c_str()); }
  CTemporaryFile(const CTemporaryFile&) = delete;
  CTemporaryFile& operator=(const CTemporaryFile&) = delete;
  const char* path() const { return m_path.c_str(); }

 private:
  std::string m_path;
};

// While one lives, files are read in chunks.
class CAsync {
 public:
  CAsync() { AsyncFromXmlFile(true); }
  ~CAsync() { AsyncFromXmlFile(false); }
  CAsync(const CAsync&) = delete;
  CAsync& operator=(const CAsync&) = delete;
};

void ExpectMemo(const CNote& note, const CSerializationContext& context) {
  EXPECT_EQ("memo", note.GetElementName());
  EXPECT_EQ("Ann", note.to);
  EXPECT_EQ((std::vector<std::string>{kLine, ""}), note.lines);
  EXPECT_EQ(&context, note.call.context);
  EXPECT_FALSE(note.call.optionalChoice);
}

using Entry = void (*)(CNote&, const CSerializationContext&);

const struct {
  const char* name;
  Entry read;
} kEntries[] = {
    {"FromXml",
     [](CNote& note, const CSerializationContext& c) { note.FromXml(Document().c_str(), c); }},
    {"FromXml, wide",
     [](CNote& note, const CSerializationContext& c) { note.FromXml(QZ_DOCUMENT(L), c); }},
    {"FromXml, UTF-16",
     [](CNote& note, const CSerializationContext& c) { note.FromXml(QZ_DOCUMENT(u), c); }},
    {"FromXmlStream",
     [](CNote& note, const CSerializationContext& c) {
       note.FromXmlStream(Bytes(Document()), Length(Document()), c);
     }},
    {"FromXmlStream, binary data",
     [](CNote& note, const CSerializationContext& c) {
       note.FromXmlStream(CBinaryData(Document().c_str()), c);
     }},
    {"FromXmlFile",
     [](CNote& note, const CSerializationContext& c) {
       const CTemporaryFile file(Document());
       note.FromXmlFile(file.path(), c);
     }},
    {"FromXmlFile, in chunks",
     [](CNote& note, const CSerializationContext& c) {
       const CTemporaryFile file(Document());
       const CAsync async;
       note.FromXmlFile(file.path(), c);
     }},
    {"FromXmlElement",
     [](CNote& note, const CSerializationContext& c) {
       CXmlDocument document;
       document.LoadXml(Document().c_str());
       note.FromXmlElement(document.GetDocumentElement(), c);
     }},
    {"FromXmlElement, open content",
     [](CNote& note, const CSerializationContext& c) {
       CElement element("any");
       element.FromXml(Document().c_str());
       note.FromXmlElement(&element, c);
     }},
};

TEST(XmlReadEntry, EachFillsTheObjectAndNamesItAfterTheRoot) {
  for (const auto& entry : kEntries) {
    SCOPED_TRACE(entry.name);
    const CSerializationContext context;
    CNote note;
    note.to = "former";
    note.lines = {"former"};
    entry.read(note, context);
    ExpectMemo(note, context);
  }
}

TEST(XmlReadEntry, EachTakesTheDefaultContextWhenNoneIsGiven) {
  const CSerializationContext& context = CSerializationContext::GetDefaultContext();
  const CTemporaryFile file(Document());
  CXmlDocument document;
  document.LoadXml(Document().c_str());
  CElement element("any");
  element.FromXml(Document().c_str());
  const auto expect = [&context](auto read) {
    CNote note;
    read(note);
    ExpectMemo(note, context);
  };
  expect([](CNote& note) { note.FromXml(Document().c_str()); });
  expect([](CNote& note) { note.FromXml(QZ_DOCUMENT(L)); });
  expect([](CNote& note) { note.FromXml(QZ_DOCUMENT(u)); });
  expect([](CNote& note) { note.FromXmlStream(Bytes(Document()), Length(Document())); });
  expect([](CNote& note) { note.FromXmlStream(CBinaryData(Document().c_str())); });
  expect([&](CNote& note) { note.FromXmlFile(file.path()); });
  expect([&](CNote& note) {
    note.FromXmlElement(static_cast<const CXmlElement*>(document.GetDocumentElement()));
  });
  expect([&](CNote& note) { note.FromXmlElement(static_cast<const CElement*>(&element)); });
}

TEST(XmlReadEntry, TheObjectBeginsAtTheFirstChild) {
  CXmlDocument document;
  document.LoadXml("<note xmlns='urn:notes'> <!-- first --> <line/><line/></note>");
  CXmlElement* const root = document.GetDocumentElement();
  CNote note;
  note.FromXmlElement(root);
  EXPECT_EQ(root->GetFirstElement(), note.call.cursor);
  EXPECT_EQ("urn:notes", note.call.namespaceUri);

  note.FromXml("<note xmlns='urn:notes'/>");
  EXPECT_EQ(nullptr, note.call.cursor);
  EXPECT_TRUE(note.lines.empty());
}

TEST(XmlReadEntry, AnElementInsideATreeIsReadByItself) {
  CXmlDocument document;
  document.LoadXml(
      "<notes xmlns='urn:notes'><note to='Ann'><line>Milk</line></note><note to='Bob'/></notes>");
  const CXmlElement* const first = document.GetDocumentElement()->GetFirstElement();
  CNote note;
  note.FromXmlElement(first);
  EXPECT_EQ("Ann", note.to);
  EXPECT_EQ(std::vector<std::string>{"Milk"}, note.lines);
  note.FromXmlElement(first->GetNextSiblingElement());
  EXPECT_EQ("Bob", note.to);
  EXPECT_TRUE(note.lines.empty());
}

TEST(XmlReadEntry, WhatIsWrittenIsReadAgain) {
  CNote note;
  note.to = "\"A\" & <B>\n";
  note.lines = {"", " ", "a\nb", "]]>", kLine, std::string(100000, 'x')};
  for (const bool formatted : {false, true}) {
    CNote read;
    read.FromXml(note.ToXml(true, formatted).c_str());
    EXPECT_EQ(note.to, read.to);
    EXPECT_EQ(note.lines, read.lines);
    EXPECT_EQ(note.ToXml(), read.ToXml());
  }
}

// Overrides the entry points that others may go through.
class CWatching : public CNote {
 public:
  using CXmlObjectBase::FromXml;
  using CXmlObjectBase::FromXmlStream;
  void FromXml(const char* text, const CSerializationContext& context) override {
    ++texts;
    CNote::FromXml(text, context);
  }
  void FromXmlStream(const BYTE* data, DWORD length,
                     const CSerializationContext& context) override {
    ++streams;
    EXPECT_EQ(Document(), std::string(reinterpret_cast<const char*>(data), length));
    CNote::FromXmlStream(data, length, context);
  }
  int texts = 0;
  int streams = 0;
};

TEST(XmlReadEntry, BinaryDataIsHandedOnAsBytes) {
  const CSerializationContext context;
  CWatching note;
  note.FromXmlStream(CBinaryData(Document().c_str()), context);
  EXPECT_EQ(1, note.streams);
  ExpectMemo(note, context);
}

TEST(XmlReadEntry, OpenContentGoesThroughTheTextOfTheBaseClass) {
  const CSerializationContext context;
  CElement element("any");
  element.FromXml(Document().c_str());
  CWatching note;
  note.FromXmlElement(&element, context);
  EXPECT_EQ(0, note.texts);
  ExpectMemo(note, context);
}

// Keeps what it is asked to write with.
class CAsked : public CElement {
 public:
  using CElement::CElement;
  std::string ToXml(bool declaration, bool formatted, EOLType eol,
                    const CSerializationContext& context) const override {
    EXPECT_FALSE(declaration);
    EXPECT_FALSE(formatted);
    EXPECT_EQ(EOLType_LF, eol);
    EXPECT_EQ(&CSerializationContext::GetDefaultContext(), &context);
    ++asked;
    return Document();
  }
  mutable int asked = 0;
};

TEST(XmlReadEntry, OpenContentIsWrittenPlainlyInTheDefaultContext) {
  const CSerializationContext context;
  const CAsked element("any");
  CNote note;
  note.FromXmlElement(&element, context);
  EXPECT_EQ(1, element.asked);
  ExpectMemo(note, context);
}

// --- The context at work

TEST(XmlReadEntry, TheDocumentIsReadAsTheContextSays) {
  CSerializationContext context;
  CNote note;
  note.FromXml("<p:note xmlns:p='urn:notes'><p:line><![CDATA[<a>]]></p:line></p:note>", context);
  EXPECT_EQ("note", note.GetElementName());
  EXPECT_EQ(std::vector<std::string>{"<a>"}, note.lines);

  context.SetStripCDATA(false);
  note.FromXml("<p:note xmlns:p='urn:notes'><p:line><![CDATA[<a>]]></p:line></p:note>", context);
  EXPECT_EQ(std::vector<std::string>{"<![CDATA[<a>]]>"}, note.lines);

  context.SetSchemaType(SchemaType_NoNamespaces);
  note.FromXml("<p:note xmlns:p='urn:notes'><line>a</line></p:note>", context);
  EXPECT_EQ("p:note", note.GetElementName());
  EXPECT_EQ(std::vector<std::string>{"a"}, note.lines);
}

TEST(XmlReadEntry, TheDepthOfTheContextHoldsForEveryEntry) {
  CSerializationContext context;
  context.SetMaxDepth(2);
  const std::string deep = "<note><line><a/></line></note>";
  const char* const refusal = "The document exceeds the depth limit of 2 elements";
  const CTemporaryFile file(deep);
  CElement element("any");
  element.FromXml(deep.c_str());
  CNote note;
  EXPECT_QZ_THROW(CQzException, refusal, note.FromXml(deep.c_str(), context));
  EXPECT_QZ_THROW(CQzException, refusal, note.FromXml(L"<note><line><a/></line></note>", context));
  EXPECT_QZ_THROW(CQzException, refusal, note.FromXml(u"<note><line><a/></line></note>", context));
  EXPECT_QZ_THROW(CQzException, refusal, note.FromXmlStream(Bytes(deep), Length(deep), context));
  EXPECT_QZ_THROW(CQzException, refusal, note.FromXmlStream(CBinaryData(deep.c_str()), context));
  EXPECT_QZ_THROW(CQzException, refusal, note.FromXmlFile(file.path(), context));
  EXPECT_QZ_THROW(CQzException, refusal, note.FromXmlElement(&element, context));
  const CAsync async;
  EXPECT_QZ_THROW(CQzException, refusal, note.FromXmlFile(file.path(), context));
}

// --- Failures

TEST(XmlReadEntry, NothingToReadIsRefusedAndTheObjectStays) {
  CNote note;
  note.to = "Ann";
  note.lines = {"Milk"};
  const CTemporaryFile empty("");
  EXPECT_QZ_THROW_FULL(CQzException, "XML String is empty!", "", note.FromXml(""));
  EXPECT_QZ_THROW_FULL(CQzException, "no element found at line 1", "", note.FromXml(L""));
  EXPECT_QZ_THROW_FULL(CQzException, "no element found at line 1", "", note.FromXml(u""));
  EXPECT_QZ_THROW_FULL(CQzException, "XML Stream is empty!", "",
                       note.FromXmlStream(Bytes(Document()), 0));
  EXPECT_QZ_THROW_FULL(CQzException, "XML Stream is empty!", "", note.FromXmlStream(CBinaryData()));
  EXPECT_QZ_THROW_FULL(CQzException, "no element found at line 1", "",
                       note.FromXmlFile(empty.path()));
  EXPECT_QZ_THROW_FULL(CQzException, "Invalid or empty XML document", "",
                       note.FromXmlElement(static_cast<const CXmlElement*>(nullptr)));
  EXPECT_QZ_THROW_FULL(CQzException, "Invalid or empty XML document", "",
                       note.FromXmlElement(static_cast<const CElement*>(nullptr)));
  EXPECT_QZ_THROW_FULL(CQzException, "XML String is empty!", "",
                       note.FromXml(static_cast<const char*>(nullptr)));
  EXPECT_QZ_THROW_FULL(CQzException, "XML Stream is empty!", "", note.FromXmlStream(nullptr, 9));
  EXPECT_EQ("note", note.GetElementName());
  EXPECT_EQ("Ann", note.to);
  EXPECT_EQ(std::vector<std::string>{"Milk"}, note.lines);
}

TEST(XmlReadEntry, AFileThatIsNotThereIsNamedWithTheErrorOfTheSystem) {
  const std::string path =
      (std::filesystem::temp_directory_path() / "qzxml-no-such-folder" / "note.xml").string();
  const std::string refusal = "Failed to open the file [" + path + "] Error [0x00000002]";
  CNote note;
  EXPECT_QZ_THROW_FULL(CQzException, refusal, "", note.FromXmlFile(path.c_str()));
  const CAsync async;
  EXPECT_QZ_THROW_FULL(CQzException, refusal, "", note.FromXmlFile(path.c_str()));
}

TEST(XmlReadEntry, WhatIsNotWellFormedIsRefusedWithItsLineAndTheObjectStays) {
  const std::string bad = "<note>\n<line></note>";
  const char* const refusal = "mismatched tag at line 2";
  const CTemporaryFile file(bad);
  CNote note;
  note.to = "Ann";
  EXPECT_QZ_THROW_FULL(CQzException, refusal, "", note.FromXml(bad.c_str()));
  EXPECT_QZ_THROW_FULL(CQzException, refusal, "", note.FromXml(L"<note>\n<line></note>"));
  EXPECT_QZ_THROW_FULL(CQzException, refusal, "", note.FromXml(u"<note>\n<line></note>"));
  EXPECT_QZ_THROW_FULL(CQzException, refusal, "", note.FromXmlStream(Bytes(bad), Length(bad)));
  EXPECT_QZ_THROW_FULL(CQzException, refusal, "", note.FromXmlFile(file.path()));
  {
    const CAsync async;
    EXPECT_QZ_THROW_FULL(CQzException, refusal, "", note.FromXmlFile(file.path()));
  }
  EXPECT_EQ("Ann", note.to);
}

TEST(XmlReadEntry, AFailedReadingKeepsWhatWasReadSoFar) {
  CNote note;
  note.lines = {"former", "former"};
  EXPECT_QZ_THROW_FULL(
      CQzValidationException, "A note has lines alone.\nPath: /memo/end", "/memo/end",
      note.FromXml("<memo xmlns='urn:notes' to='Ann'><line>Milk</line><end/><line/></memo>"));
  EXPECT_EQ("memo", note.GetElementName());
  EXPECT_EQ("Ann", note.to);
  EXPECT_EQ(std::vector<std::string>{"Milk"}, note.lines);
}

// --- Files in chunks

TEST(XmlReadEntry, AFileIsTheSameWholeAndInChunks) {
  // One octet below, at and above one and two chunks.
  for (const std::size_t size : {131071u, 131072u, 131073u, 262143u, 262144u, 262145u, 500000u}) {
    const std::string head = "<note xmlns='urn:notes'><line>";
    const std::string tail = "</line></note>";
    const std::string line(size - head.size() - tail.size(), 'x');
    const CTemporaryFile file(head + line + tail);
    CNote whole;
    whole.FromXmlFile(file.path());
    EXPECT_EQ(std::vector<std::string>{line}, whole.lines) << size;
    CNote chunks;
    const CAsync async;
    chunks.FromXmlFile(file.path());
    EXPECT_EQ(std::vector<std::string>{line}, chunks.lines) << size;
  }
}

}  // namespace
}  // namespace QzXmlLib16
