// The same calls as XML text and as Fast Infoset give the same tree.
#include "qzxml/fastinfoset/FastInfosetContext.h"
#include "qzxml/fastinfoset/FastInfosetWriter.h"
#include "qzxml/runtime/BinaryStream.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/TextStream.h"
#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlTextWriter.h"
#include "tests/serialization/Note.h"
#include "tests/support/QzTest.h"
#include "tests/support/TreeText.h"

namespace QzXmlLib16 {
namespace {

using Content = void (*)(CXmlWriter&);

std::string AsText(Content content) {
  CTextStream stream;
  CXmlTextWriter writer(&stream);
  writer.StartDocument();
  writer.SetFormatted(false);
  content(writer);
  writer.EndDocument();
  CXmlDocument document;
  document.LoadXml(stream.TakeText().c_str());
  return qztest::TreeText(document.GetDocumentElement());
}

std::string AsFastInfoset(Content content, const CSerializationContext& context) {
  CBinaryStream stream;
  CFastInfosetWriter writer(&context.GetFIContext(), &stream);
  writer.StartDocument();
  writer.WriteHeader(FInfoDecl_V10);
  content(writer);
  writer.WriteDocumentEnd();
  writer.EndDocument();
  CXmlDocument document(context);
  const CBinaryData bytes = stream.GetData();
  document.LoadXmlStream(bytes.GetData(), bytes.GetLength());
  return qztest::TreeText(document.GetDocumentElement());
}

void WriteValue(CXmlWriter& w, const char* text, ItemType type) {
  w.WriteStartElement("v", "urn:v");
  w.WriteAttribute("k", "", text, type);
  w.WriteAttribute("k", "urn:v", text, type);
  w.WriteText(text, type, false);
  w.WriteEndElement();
}

// Canonical forms: those come back as they were.
void WriteValues(CXmlWriter& w) {
  w.AddNamespaceMapping("v", "urn:v");
  w.WriteStartElement("values", "urn:v");
  for (int turn = 0; turn < 2; ++turn) {
    WriteValue(w, "00FFA5", ItemType_hexBinary);
    WriteValue(w, "AP+l", ItemType_base64Binary);
    WriteValue(w, "-128", ItemType_i1);
    WriteValue(w, "-32768", ItemType_i2);
    WriteValue(w, "-2147483648", ItemType_i4);
    WriteValue(w, "-9223372036854775808", ItemType_i8);
    WriteValue(w, "255", ItemType_ui1);
    WriteValue(w, "65535", ItemType_ui2);
    WriteValue(w, "4294967295", ItemType_ui4);
    WriteValue(w, "9223372036854775807", ItemType_ui8);
    WriteValue(w, "0.5", ItemType_r4);
    WriteValue(w, "-INF", ItemType_r8);
    WriteValue(w, "P1Y2M3DT4H5M6S", ItemType_duration);
    WriteValue(w, "2004-02", ItemType_yearMonth);
    WriteValue(w, "--02-29", ItemType_monthDay);
    WriteValue(w, "2004", ItemType_year);
    WriteValue(w, "--02", ItemType_month);
    WriteValue(w, "---29", ItemType_day);
    WriteValue(w, "2004-02-29", ItemType_date);
    WriteValue(w, "2004-02-29T12:30:00Z", ItemType_datetime);
    WriteValue(w, "12:30:00", ItemType_time);
    WriteValue(w, "c", ItemType_char);
    WriteValue(w, "\xE2\x82\xAC & <more>", ItemType_string);
    WriteValue(w, "true", ItemType_boolean);
    WriteValue(w, "-1.5", ItemType_decimal);
    WriteValue(w, "123456789012345678901234567890", ItemType_integer);
  }
  w.WriteEndElement();
}

// So many names and values that their indexes take every form that a small document has.
void WriteManyNames(CXmlWriter& w) {
  w.WriteStartElement("names", "");
  for (int turn = 0; turn < 2; ++turn) {
    for (int i = 0; i < 2500; ++i) {
      const std::string name = FormatString("n%d", i);
      w.WriteStartElement(name, i % 3 == 0 ? "urn:x" : "");
      w.WriteAttribute(name, i % 5 == 0 ? "urn:y" : "", std::to_string(i), ItemType_string);
      w.WriteText(std::to_string(i), ItemType_string, false);
      w.WriteEndElement();
    }
  }
  w.WriteEndElement();
}

void WriteNesting(CXmlWriter& w) {
  for (int i = 0; i < 500; ++i) {
    w.WriteStartElement("n", i % 2 == 0 ? "urn:x" : "urn:y");
    w.WriteAttribute("a", "", i % 7 == 0 ? "" : "value", ItemType_string);
  }
  w.WriteText(std::string(70000, 'x'), ItemType_string, false);
  for (int i = 0; i < 500; ++i) w.WriteEndElement();
}

constexpr Content kContents[] = {WriteValues, WriteManyNames, WriteNesting};

TEST(FastInfosetThereAndBack, TheTreeIsThatOfTheText) {
  const CSerializationContext context;
  for (const Content content : kContents)
    EXPECT_EQ(AsText(content), AsFastInfoset(content, context));
}

TEST(FastInfosetThereAndBack, SuggestedValuesChangeNothing) {
  const CSerializationContext context;
  context.GetFIContext().SetSuggestedValues();
  for (const Content content : kContents)
    EXPECT_EQ(AsText(content), AsFastInfoset(content, context));
}

TEST(FastInfosetThereAndBack, AGeneratedVocabularyServesBothSides) {
  const CSerializationContext context;
  CFastInfosetContext& options = context.GetFIContext();
  options.SetUseGeneratedVocabulary(true);
  CFIVocabulary& vocabulary = *options.GetVocabulary();
  vocabulary.AddElement("v", "urn:v", "v");
  vocabulary.AddElement("v", "urn:v", "values");
  vocabulary.AddAttribute("", "", "k");
  vocabulary.AddAttributeValue("true");
  vocabulary.AddElementValue("2004");
  EXPECT_EQ(AsText(WriteValues), AsFastInfoset(WriteValues, context));
  EXPECT_EQ(AsText(WriteNesting), AsFastInfoset(WriteNesting, context));
}

TEST(FastInfosetThereAndBack, WithoutItsVocabularyADocumentIsNotRead) {
  const CSerializationContext context;
  context.GetFIContext().SetUseGeneratedVocabulary(true);
  context.GetFIContext().GetVocabulary()->AddElement("", "urn:notes", "note");
  qztest::CNote note;
  const CBinaryData bytes = note.ToFastInfosetStream(FInfoDecl_None, context);
  const CSerializationContext plain;
  EXPECT_THROW(note.FromXmlStream(bytes, plain), CQzException);
}

TEST(FastInfosetThereAndBack, AnObjectComesBackPlainAndCompressed) {
  qztest::CNote note;
  note.to = "Ann";
  note.lines.assign(100, "Bread and butter");
  const CSerializationContext context;
  for (const CompressionType type :
       {CompressionType_None, CompressionType_GZip, CompressionType_ZLib}) {
    qztest::CNote back;
    back.FromXmlStream(note.ToFastInfosetStream(FInfoDecl_None, context, type), context);
    EXPECT_EQ(note.to, back.to);
    EXPECT_EQ(note.lines, back.lines);
  }
}

}  // namespace
}  // namespace QzXmlLib16
