#include <functional>
#include <memory>
#include <string>

#include "qzxml/json/JsonContext.h"
#include "qzxml/json/JsonTextWriter.h"
#include "qzxml/runtime/QzZip.h"
#include "qzxml/runtime/TextStream.h"
#include "qzxml/serialization/AttributeInfo.h"
#include "qzxml/serialization/ElementInfoSeq.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/values/Decimal.h"
#include "qzxml/xml/XmlNamespaces.h"
#include "qzxml/xml/XmlTextWriter.h"
#include "tests/support/Documents.h"
#include "tests/support/GeneratedTable.h"
#include "tests/support/LiveCounts.h"
#include "tests/support/QzTest.h"

// Whole documents, compared byte by byte with files that a person wrote: tests/golden/output.
namespace QzXmlLib16 {
namespace {

using namespace QzXmlLib16Data;
using qztest::CTableCol;
using qztest::CTableObject;
using qztest::CTables;
using qztest::CTextCol;
using qztest::Prim;
using qztest::PrimOptions;
using qztest::Unset;

constexpr char kCatalog[] = "urn:catalog";
constexpr char kExtra[] = "urn:extra";

CAttributeInfo* Attribute(const char* name, int index, ItemType type = ItemType_string,
                          const char* uri = "") {
  return new CAttributeInfoPrimitive(name, uri, index, false, type, nullptr,
                                     CWhitespaceUtils::WhitespaceRule_None,
                                     CPrimitiveRestrictions(), nullptr);
}

PrimOptions Options(ItemType type, const char* uri = kCatalog, bool nillable = false) {
  PrimOptions options;
  options.type = type;
  options.uri = uri;
  options.nillable = nillable;
  return options;
}

// The class whose text is a property, beside one attribute.
void MakeTextClass(CTables& tables, const char* attribute, ItemType attributeType, ItemType type) {
  tables.Add(Attribute(attribute, 0, attributeType), &Unset::Value).AddProperty(&Unset::Value);
  tables.textIndex = 1;
  tables.textType = type;
}

// Nil until it is set, and again where a document has it nil: reading leaves such a value alone.
QzVariant NilBoolean() {
  QzVariant value;
  value.SetBoolean(false);
  value.SetNil();
  return value;
}

Unset::Make Objects(const CTables& tables, const char* name, const char* uri) {
  return Unset::Collection([&tables, name, uri]() -> CXmlCollectionBase* {
    return new CTableCol(tables, name, uri, 0, -1);
  });
}

Unset::Make Texts(const char* name, const char* uri) {
  return Unset::Collection(
      [name, uri]() -> CXmlCollectionBase* { return new CTextCol(name, uri, 0, -1); });
}

CTableCol& ObjectsAt(CTableObject& object, std::size_t index) {
  CXmlCollectionBase* const collection = object[index].GetXmlCollection();
  return static_cast<CTableCol&>(*collection);
}

CTextCol& TextsAt(CTableObject& object, std::size_t index) {
  CXmlCollectionBase* const collection = object[index].GetXmlCollection();
  return static_cast<CTextCol&>(*collection);
}

CSerializationContext ContextOf(JsonRoundTrip roundTrip) {
  CSerializationContext context;
  context.GetJsonContext().SetSupportRoundtrip(roundTrip);
  return context;
}

// --- The catalog: everything that a document can hold.

class CCatalog {
 public:
  CCatalog() {
    MakeTextClass(m_price, "currency", ItemType_string, ItemType_decimal);
    m_labels.Add(new CElementInfoSeqCol("label", kCatalog, 0), Texts("label", kCatalog));
    m_book.Add(Attribute("lang", 0), &Unset::Value)
        .Add(Prim<CElementInfoSeqPrimMnd>("name", 1, Options(ItemType_string)), &Unset::Value);
    m_shelf.Add(Attribute("id", 0, ItemType_i4), &Unset::Value)
        .Add(Prim<CElementInfoSeqPrimMnd>("room", 1, Options(ItemType_string)), &Unset::Value)
        .Add(new CElementInfoSeqClsCol("book", kCatalog, 2, XmlElementType_Element),
             Objects(m_book, "book", kCatalog));
    m_catalog.Add(Attribute("edition", 0, ItemType_i4), &Unset::Value)
        .Add(Attribute("origin", 1, ItemType_string, kExtra), &Unset::Value)
        .Add(Prim<CElementInfoSeqPrimMnd>("title", 2, Options(ItemType_string)), &Unset::Value)
        .Add(Prim<CElementInfoSeqPrimMnd>("note", 3, Options(ItemType_string, kExtra)),
             &Unset::Value)
        .Add(ClassOf(m_price, "price", 4), HeldOf(m_price, "price"))
        .Add(Prim<CElementInfoSeqPrimMnd>("open", 5, Options(ItemType_boolean)), &Unset::Value)
        .Add(Prim<CElementInfoSeqPrimMnd>("closed", 6, Options(ItemType_boolean, kCatalog, true)),
             &NilBoolean)
        .Add(ClassOf(m_labels, "labels", 7), HeldOf(m_labels, "labels"))
        .Add(new CElementInfoSeqClsCol("shelf", kCatalog, 8, XmlElementType_Element),
             Objects(m_shelf, "shelf", kCatalog));
    for (CTables* tables : {&m_catalog, &m_price, &m_labels, &m_shelf, &m_book}) {
      tables->uri = kCatalog;
    }
  }

  CSmartPtr<CTableObject> Empty() const {
    return CSmartPtr<CTableObject>(new CTableObject(m_catalog, "catalog"));
  }

  CSmartPtr<CTableObject> Filled() const {
    const CSmartPtr<CTableObject> catalog = Empty();
    CTableObject& c = *catalog;
    c[0].SetI4(3);
    c.Set(1, "G\"rlitz <\xC3\x96>");
    c.Set(2, "Tea & <T\xC3\xB6>");
    c.Set(3, "first\nsecond \"quoted\"");
    c.ObjectAt(4)->Set(0, "\xE2\x82\xAC");
    (*c.ObjectAt(4))[1].SetDecimal(CDecimal("4.5"));
    c[5].SetBoolean(true);
    TextsAt(*c.ObjectAt(7), 0).texts = {"old", "Gr\xC3\xB6\xC3\x9F\x65"};
    CTableObject& first = AddShelf(c, 1, "A");
    AddBook(first, "de", "Faust");
    AddBook(first, "en", "Emma");
    AddShelf(c, 2, "B \xF0\x9F\x98\x80");
    return catalog;
  }

  static CSerializationContext Context(JsonRoundTrip roundTrip = JsonRoundTrip_Full) {
    CSerializationContext context = ContextOf(roundTrip);
    context.SetDefaultNamespaceURI(kCatalog);
    context.GetNamespaceAliases().Add("x", kExtra);
    context.GetNamespaceAliases().Add("xsi", kXmlSchemaInstanceNamespace);
    context.GetProcessingInstructions().push_back("<?style plain?>");
    return context;
  }

 private:
  static CElementInfo* ClassOf(const CTables& tables, const char* name, int index) {
    return new CElementInfoSeqClsMnd(name, kCatalog, index, XmlElementType_Element,
                                     &qztest::MakeTableObject, tables.id(), false);
  }
  static Unset::Make HeldOf(const CTables& tables, const char* name) {
    return Unset::Held([&tables, name] { return new CTableObject(tables, name); });
  }
  static CTableObject& AddShelf(CTableObject& catalog, std::int32_t id, const char* room) {
    CTableObject& shelf = *ObjectsAt(catalog, 8).Add();
    shelf[0].SetI4(id);
    shelf.Set(1, room);
    return shelf;
  }
  static void AddBook(CTableObject& shelf, const char* language, const char* name) {
    CTableObject& book = *ObjectsAt(shelf, 2).Add();
    book.Set(0, language);
    book.Set(1, name);
  }

  CTables m_price;
  CTables m_labels;
  CTables m_book;
  CTables m_shelf;
  CTables m_catalog;
};

// --- The run: items of a value and an attribute, and members behind an array.

class CRun {
 public:
  CRun() {
    MakeTextClass(m_point, "at", ItemType_i4, ItemType_i4);
    m_run
        .Add(new CElementInfoSeqClsCol("point", "", 0, XmlElementType_Element),
             Objects(m_point, "point", ""))
        .Add(Prim<CElementInfoSeqPrimMnd>("unit", 1), &Unset::Value)
        .Add(new CElementInfoSeqCol("mark", "", 2), Texts("mark", ""));
  }

  CSmartPtr<CTableObject> Filled() const {
    const CSmartPtr<CTableObject> run(new CTableObject(m_run, "run"));
    for (const std::int32_t at : {1, 2}) {
      CTableObject& point = *ObjectsAt(*run, 0).Add();
      point[0].SetI4(at);
      point[1].SetI4(at + 6);
    }
    run->Set(1, "mm");
    TextsAt(*run, 2).texts = {"a", "b"};
    return run;
  }

 private:
  CTables m_point;
  CTables m_run;
};

// --- The files

std::string Golden(const std::string& name) {
  return qztest::ReadTestFile("golden/output/" + name);
}

std::string Text(const CBinaryData& bytes) {
  return std::string(reinterpret_cast<const char*>(bytes.GetData()), bytes.GetLength());
}

// What a file is without its mark.
std::string WithoutMark(const std::string& file, XmlEncoding encoding) {
  if (encoding == XmlEncoding_UTF8) return file;
  EXPECT_EQ("\xFF\xFE", file.substr(0, 2));
  return file.substr(2);
}

std::string Expanded(const CBinaryData& packed) {
  CBinaryData expanded;
  EXPECT_TRUE(CQzZip::Decompress(packed.GetData(), packed.GetLength(), expanded));
  return Text(expanded);
}

// The bytes of one document by every way that gives any.
class CWays {
 public:
  using ToFile = std::function<void(const char* path, CompressionType type)>;
  using ToStream = std::function<CBinaryData(CompressionType type)>;

  // Compares the stream, plain and compressed, and the file, written at once and in pieces and
  // compressed, with a golden file.
  static void Expect(const std::string& name, XmlEncoding encoding, const ToStream& toStream,
                     const ToFile& toFile) {
    SCOPED_TRACE(name);
    const std::string golden = Golden(name);
    const std::string bytes = WithoutMark(golden, encoding);
    EXPECT_EQ(bytes, Text(toStream(CompressionType_None)));
    EXPECT_EQ(bytes, Expanded(toStream(CompressionType_GZip)));
    EXPECT_EQ(bytes, Expanded(toStream(CompressionType_ZLib)));
    const qztest::TemporaryFile file("");
    for (const bool inPieces : {false, true}) {
      AsyncToXmlFile(inPieces);
      toFile(file.path().c_str(), CompressionType_None);
      AsyncToXmlFile(false);
      EXPECT_EQ(golden, qztest::ReadWholeFile(file.path()));
    }
    toFile(file.path().c_str(), CompressionType_GZip);
    const std::string packed = WithoutMark(qztest::ReadWholeFile(file.path()), encoding);
    EXPECT_EQ(bytes, Expanded(CBinaryData(reinterpret_cast<const unsigned char*>(packed.data()),
                                          static_cast<std::uint32_t>(packed.size()))));
  }
};

using OutputGolden = qztest::NothingLeftBehind;

const struct {
  const char* file;
  bool declaration;
  bool formatted;
  XmlEncoding encoding;
  EOLType eol;
} kXmlForms[] = {
    {"catalog.xml", true, true, XmlEncoding_UTF8, EOLType_LF},
    {"catalog-crlf.xml", true, true, XmlEncoding_UTF8, EOLType_CRLF},
    {"catalog-undeclared.xml", false, true, XmlEncoding_UTF8, EOLType_LF},
    {"catalog-flat.xml", true, false, XmlEncoding_UTF8, EOLType_LF},
    {"catalog-flat-crlf.xml", false, false, XmlEncoding_UTF8, EOLType_CRLF},
    {"catalog-utf16.xml", true, true, XmlEncoding_UTF16, EOLType_CRLF},
    {"catalog-utf16-unnamed.xml", true, true, XmlEncoding_UTF16NoDecl, EOLType_LF},
};

TEST_F(OutputGolden, XmlHasTheBytesOfItsFiles) {
  const CCatalog tables;
  const CSmartPtr<CTableObject> catalog = tables.Filled();
  const CSerializationContext context = CCatalog::Context();
  for (const auto& form : kXmlForms) {
    CWays::Expect(
        form.file, form.encoding,
        [&](CompressionType type) {
          return catalog->ToXmlStream(form.declaration, form.formatted, form.encoding, form.eol,
                                      context, type);
        },
        [&](const char* path, CompressionType type) {
          catalog->ToXmlFile(path, form.declaration, form.formatted, form.encoding, form.eol,
                             context, type);
        });
  }
}

TEST_F(OutputGolden, XmlTextNamesNoEncoding) {
  const CCatalog tables;
  EXPECT_EQ(Golden("catalog-text.xml"),
            tables.Filled()->ToXml(true, true, EOLType_LF, CCatalog::Context()));
  EXPECT_EQ(Golden("catalog-undeclared.xml"),
            tables.Filled()->ToXml(false, true, EOLType_LF, CCatalog::Context()));
}

TEST_F(OutputGolden, XmlFilesAreReadIntoTheSameObject) {
  const CCatalog tables;
  for (const auto& form : kXmlForms) {
    const CSmartPtr<CTableObject> catalog = tables.Empty();
    catalog->FromXmlFile((std::string(QZXML_TEST_DIRECTORY "/golden/output/") + form.file).c_str());
    EXPECT_EQ(Golden("catalog.xml"), Text(catalog->ToXmlStream(true, true, XmlEncoding_UTF8,
                                                               EOLType_LF, CCatalog::Context())))
        << form.file;
  }
}

TEST_F(OutputGolden, JsonHasTheBytesOfItsFilesInEachMode) {
  const struct {
    const char* file;
    JsonRoundTrip roundTrip;
    bool formatted;
    XmlEncoding encoding;
    EOLType eol;
  } forms[] = {
      {"catalog-full.json", JsonRoundTrip_Full, true, XmlEncoding_UTF8, EOLType_LF},
      {"catalog-full-flat.json", JsonRoundTrip_Full, false, XmlEncoding_UTF8, EOLType_LF},
      {"catalog-full-crlf.json", JsonRoundTrip_Full, true, XmlEncoding_UTF8, EOLType_CRLF},
      {"catalog-full-utf16.json", JsonRoundTrip_Full, true, XmlEncoding_UTF16, EOLType_LF},
      {"catalog-full-utf16.json", JsonRoundTrip_Full, true, XmlEncoding_UTF16NoDecl, EOLType_LF},
      {"catalog-marked.json", JsonRoundTrip_Marked, true, XmlEncoding_UTF8, EOLType_LF},
      {"catalog-marked-flat.json", JsonRoundTrip_Marked, false, XmlEncoding_UTF8, EOLType_LF},
      {"catalog-none.json", JsonRoundTrip_None, true, XmlEncoding_UTF8, EOLType_LF},
      {"catalog-none-flat.json", JsonRoundTrip_None, false, XmlEncoding_UTF8, EOLType_LF},
      {"catalog-none-utf16.json", JsonRoundTrip_None, false, XmlEncoding_UTF16, EOLType_CRLF},
  };
  const CCatalog tables;
  const CSmartPtr<CTableObject> catalog = tables.Filled();
  for (const auto& form : forms) {
    const CSerializationContext context = CCatalog::Context(form.roundTrip);
    CWays::Expect(
        form.file, form.encoding,
        [&](CompressionType type) {
          return catalog->ToJsonStream(form.formatted, form.encoding, form.eol, context, type);
        },
        [&](const char* path, CompressionType type) {
          catalog->ToJsonFile(path, form.formatted, form.encoding, form.eol, context, type);
        });
    if (form.encoding == XmlEncoding_UTF8) {
      EXPECT_EQ(Golden(form.file), catalog->ToJson(form.formatted, form.eol, context));
    }
  }
}

TEST_F(OutputGolden, JsonOfItemsWithAnAttributeHasTheBytesOfItsFiles) {
  const struct {
    const char* file;
    JsonRoundTrip roundTrip;
    bool formatted;
  } forms[] = {
      {"run-full.json", JsonRoundTrip_Full, true},
      {"run-full.json", JsonRoundTrip_Marked, true},
      {"run-none.json", JsonRoundTrip_None, true},
      {"run-full-flat.json", JsonRoundTrip_Full, false},
      {"run-full-flat.json", JsonRoundTrip_Marked, false},
      {"run-none-flat.json", JsonRoundTrip_None, false},
  };
  const CRun tables;
  const CSmartPtr<CTableObject> run = tables.Filled();
  for (const auto& form : forms) {
    EXPECT_EQ(Golden(form.file),
              run->ToJson(form.formatted, EOLType_LF, ContextOf(form.roundTrip)));
  }
}

// --- Comments, which no object writes

void WriteWithComments(CXmlWriter& writer) {
  writer.WriteComment("made by hand\n<now>");
  writer.WriteProcessingInstruction("<?style plain?>");
  writer.WriteStartElement("r", "");
  writer.WriteStartElement("a", "");
  writer.WriteText("5", ItemType_i4, false);
  writer.WriteEndElement();
  writer.WriteComment("between");
  writer.WriteStartElement("b", "");
  writer.WriteText("six", ItemType_string, false);
  writer.WriteEndElement();
  writer.WriteEndElement();
}

TEST_F(OutputGolden, CommentsHaveTheBytesOfTheirFiles) {
  const struct {
    const char* file;
    bool formatted;
    EOLType eol;
  } forms[] = {
      {"comments", true, EOLType_LF},
      {"comments-crlf", true, EOLType_CRLF},
      {"comments-flat", false, EOLType_LF},
  };
  for (const auto& form : forms) {
    CTextStream xml(XmlEncoding_UTF8);
    CXmlTextWriter xmlWriter(&xml);
    xmlWriter.StartDocument();
    xmlWriter.SetFormatted(form.formatted);
    xmlWriter.SetEOLType(form.eol);
    xmlWriter.WriteXmlDeclaration();
    WriteWithComments(xmlWriter);
    xmlWriter.EndDocument();
    EXPECT_EQ(Golden(std::string(form.file) + ".xml"), xml.TakeText());

    CTextStream json;
    CJsonTextWriter jsonWriter(&json);
    jsonWriter.StartDocument();
    jsonWriter.SetFormatted(form.formatted);
    jsonWriter.SetEOLType(form.eol);
    jsonWriter.WriteDocumentStart();
    WriteWithComments(jsonWriter);
    jsonWriter.WriteDocumentEnd();
    jsonWriter.EndDocument();
    EXPECT_EQ(Golden(std::string(form.file) + ".json"), json.TakeText());
  }
}

}  // namespace
}  // namespace QzXmlLib16
