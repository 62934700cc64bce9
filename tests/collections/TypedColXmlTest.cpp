#include "tests/collections/OpenContent.h"
#include "tests/collections/TypedColKinds.h"
#include "tests/support/MemberTrial.h"
#include "tests/support/QzTest.h"

// What the collections of every kind write and read.
namespace qztest {
namespace {

template <typename Kind>
class TypedColXml : public TypedColOf<Kind> {};
TYPED_TEST_SUITE(TypedColXml, Kinds, KindName);

TYPED_TEST(TypedColXml, WritesEachValueAsAnElement) {
  typename TestFixture::Col col;
  EXPECT_EQ("<owner/>", WriteInOwner(&col));
  this->Fill(col, "012");
  EXPECT_EQ("<owner><v>" + this->text(0) + "</v><v>" + this->text(1) + "</v><v>" + this->text(2) +
                "</v></owner>",
            WriteInOwner(&col));
}

TYPED_TEST(TypedColXml, TellsTheWriterTheKindAndNoDefault) {
  ColOptions o;
  o.uri = "urn:v";
  typename TestFixture::Col col(o);
  this->Fill(col, "20");
  const std::string kind = std::to_string(static_cast<int>(TypeParam::kWritten));
  CRecordingWriter writer;
  col.ToXml_Int(&writer, true, "urn:other", CSerializationContext(), true);
  EXPECT_EQ((Lines{"start v urn:v", "text " + this->text(2) + " " + kind, "end", "start v urn:v",
                   "text " + this->text(0) + " " + kind, "end"}),
            writer.calls);
}

TYPED_TEST(TypedColXml, ChecksTheNumberOnWritingAlone) {
  ColOptions o;
  o.minOccurs = 1;
  o.maxOccurs = 2;
  typename TestFixture::Col col(o);
  CSerializationContext context;
  CRecordingWriter writer;
  EXPECT_FALSE(col.IsValidCount(context));
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "The Minimum number of [v] elements allowed in this collection is 1", "",
                       col.ToXml_Int(&writer, false, "", context, false));
  this->Fill(col, "012");
  EXPECT_EQ(3, col.GetCount());
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "The Maximum number of [v] elements allowed in this collection is 2", "",
                       col.ToXml_Int(&writer, false, "", context, false));
  EXPECT_EQ(Lines(), writer.calls);
  context.SetIgnoreInvalidCollectionCounts(true);
  col.ToXml_Int(&writer, false, "", context, false);
  EXPECT_EQ(9U, writer.calls.size());
}

// Has its own idea of how many there may be.
template <typename Col>
class CCounted : public CMade<Col> {
 public:
  void ValidateCount(const CSerializationContext& context) const override {
    if (!context.GetIgnoreInvalidCollectionCounts()) throw CQzException("Never.");
  }
};

TYPED_TEST(TypedColXml, ChecksTheNumberByAVirtualCall) {
  CCounted<typename TypeParam::Col> col;
  col.Add(this->value(0));
  CSerializationContext context;
  CRecordingWriter writer;
  EXPECT_QZ_THROW(CQzException, "Never.", col.ToXml_Int(&writer, false, "", context, false));
  EXPECT_EQ(Lines(), writer.calls);
  context.SetIgnoreInvalidCollectionCounts(true);
  col.ToXml_Int(&writer, false, "", context, false);
  EXPECT_EQ(3U, writer.calls.size());
}

TYPED_TEST(TypedColXml, ReadsTheRunOfElementsOfItsName) {
  const std::string a = "<v>" + this->text(0) + "</v>";
  const std::string b = "<v> " + this->text(1) + "\n</v>";
  const std::string c = "<v>" + this->text(2) + "</v>";
  const CLoaded document(("<r>" + a + b + c + "<other/>" + a + "</r>").c_str());
  typename TestFixture::Col col;
  CValueListener<TypeParam> listener(col);
  CXmlElement* const left = col.FromXml_Int(document.root(), document.root()->GetFirstElement(),
                                            CSerializationContext(), false);
  ASSERT_NE(nullptr, left);
  EXPECT_EQ("other", left->GetLocalName());
  EXPECT_EQ(this->TextsOf("012"), this->Texts(col));
  EXPECT_EQ(9U, listener.log.size());
  EXPECT_EQ(left, col.FromXml_Int(document.root(), left, CSerializationContext(), false));
  EXPECT_EQ(3, col.GetCount());
}

TYPED_TEST(TypedColXml, ReadsWhatItWrites) {
  typename TestFixture::Col col;
  this->Fill(col, "201");
  const CLoaded document(WriteInOwner(&col).c_str());
  typename TestFixture::Col again;
  EXPECT_EQ(nullptr, again.FromXml_Int(document.root(), document.root()->GetFirstElement(),
                                       CSerializationContext(), false));
  EXPECT_EQ(this->TextsOf("201"), this->Texts(again));
}

// A class as the generator writes it, with one collection.
template <typename Col>
class CHolder : public CTableObject {
 public:
  explicit CHolder(const CTables& tables) : CTableObject(tables), values(new Col(Options())) {}
  const CSmartPtr<Col> values;

 protected:
  void AccessProperty(int, bool read, QzVariant& value) const override {
    AccessCollection(read, value, values);
  }
  void Init() override { values->Clear(); }

 private:
  static ColOptions Options() {
    ColOptions o;
    o.minOccurs = 1;
    o.maxOccurs = 2;
    return o;
  }
};

TYPED_TEST(TypedColXml, IsAPropertyOfAClass) {
  CTables tables;
  tables.Add(new QzXmlLib16Data::CElementInfoSeqPrimCol("v", "", 0), Unset::Object);
  CHolder<typename TestFixture::Col> object(tables);
  const std::string one = "<v>" + this->text(1) + "</v>";
  const std::string two = "<v>" + this->text(0) + "</v>" + one;
  object.FromXml(("<r>" + two + "</r>").c_str());
  EXPECT_EQ(this->TextsOf("01"), this->Texts(*object.values));
  EXPECT_EQ("<r>" + two + "</r>", Text(object));
  object.FromXml(("<r>" + one + "</r>").c_str());
  EXPECT_EQ(this->TextsOf("1"), this->Texts(*object.values));
  EXPECT_EQ(
      "CQzValidationException: Failed to process the element.\nPath: /r\nThe Maximum number of [v] "
      "elements "
      "allowed in this collection is 2",
      Outcome([&] {
        object.FromXml(("<r>" + two + one + "</r>").c_str());
        return std::string("read");
      }));
}

}  // namespace
}  // namespace qztest
