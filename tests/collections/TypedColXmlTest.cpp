#include "tests/collections/AnyCol.h"
#include "tests/collections/OpenContent.h"
#include "tests/support/MemberTrial.h"
#include "tests/support/QzTest.h"

// What the collections of every kind write and read.
namespace qztest {
namespace {

class TypedColXml : public OfEveryKind {};
INSTANTIATE_TEST_SUITE_P(Kinds, TypedColXml, testing::ValuesIn(AllKinds()), &NameOfKind);

TEST_P(TypedColXml, WritesEachValueAsAnElement) {
  const auto col = kind().Make();
  EXPECT_EQ("<owner/>", WriteInOwner(&col->base()));
  col->Fill("012");
  EXPECT_EQ("<owner><v>" + text(0) + "</v><v>" + text(1) + "</v><v>" + text(2) + "</v></owner>",
            WriteInOwner(&col->base()));
}

TEST_P(TypedColXml, TellsTheWriterTheKindAndNoDefault) {
  ColOptions o;
  o.uri = "urn:v";
  const auto col = kind().Make(o);
  col->Fill("20");
  const std::string type = std::to_string(static_cast<int>(kind().written));
  CRecordingWriter writer;
  col->ToXml_Int(&writer, true, "urn:other", CSerializationContext(), true);
  EXPECT_EQ((Lines{"start v urn:v", "text " + text(2) + " " + type, "end", "start v urn:v",
                   "text " + text(0) + " " + type, "end"}),
            writer.calls);
}

TEST_P(TypedColXml, ChecksTheNumberOnWritingAlone) {
  ColOptions o;
  o.minOccurs = 1;
  o.maxOccurs = 2;
  const auto col = kind().Make(o);
  CSerializationContext context;
  CRecordingWriter writer;
  EXPECT_FALSE(col->base().IsValidCount(context));
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "The Minimum number of [v] elements allowed in this collection is 1", "",
                       col->ToXml_Int(&writer, false, "", context, false));
  col->Fill("012");
  EXPECT_EQ(3, col->GetCount());
  EXPECT_QZ_THROW_FULL(CQzValidationException,
                       "The Maximum number of [v] elements allowed in this collection is 2", "",
                       col->ToXml_Int(&writer, false, "", context, false));
  EXPECT_EQ(Lines(), writer.calls);
  context.SetIgnoreInvalidCollectionCounts(true);
  col->ToXml_Int(&writer, false, "", context, false);
  EXPECT_EQ(9U, writer.calls.size());
}

TEST_P(TypedColXml, ChecksTheNumberByAVirtualCall) {
  const auto col = kind().MakeCounted();
  col->Add(0);
  CSerializationContext context;
  CRecordingWriter writer;
  EXPECT_QZ_THROW(CQzException, "Never.", col->ToXml_Int(&writer, false, "", context, false));
  EXPECT_EQ(Lines(), writer.calls);
  context.SetIgnoreInvalidCollectionCounts(true);
  col->ToXml_Int(&writer, false, "", context, false);
  EXPECT_EQ(3U, writer.calls.size());
}

TEST_P(TypedColXml, ReadsTheRunOfElementsOfItsName) {
  const std::string a = "<v>" + text(0) + "</v>";
  const std::string b = "<v> " + text(1) + "\n</v>";
  const std::string c = "<v>" + text(2) + "</v>";
  const CLoaded document(("<r>" + a + b + c + "<other/>" + a + "</r>").c_str());
  const auto col = kind().Make();
  CColListener listener(col->base(), kind().textOf);
  CXmlElement* const left = col->FromXml_Int(document.root(), document.root()->GetFirstElement(),
                                             CSerializationContext(), false);
  ASSERT_NE(nullptr, left);
  EXPECT_EQ("other", left->GetLocalName());
  EXPECT_EQ(TextsOf("012"), col->Texts());
  EXPECT_EQ(9U, listener.log.size());
  EXPECT_EQ(left, col->FromXml_Int(document.root(), left, CSerializationContext(), false));
  EXPECT_EQ(3, col->GetCount());
}

TEST_P(TypedColXml, ReadsWhatItWrites) {
  const auto col = kind().Make();
  col->Fill("201");
  const CLoaded document(WriteInOwner(&col->base()).c_str());
  const auto again = kind().Make();
  EXPECT_EQ(nullptr, again->FromXml_Int(document.root(), document.root()->GetFirstElement(),
                                        CSerializationContext(), false));
  EXPECT_EQ(TextsOf("201"), again->Texts());
}

TEST_P(TypedColXml, IsAPropertyOfAClass) {
  CTables tables;
  tables.Add(new QzXmlLib16Data::CElementInfoSeqPrimCol("v", "", 0), Unset::Object);
  const auto holder = kind().MakeHolder(tables);
  CAnyHolder& object = *holder;
  const std::string one = "<v>" + text(1) + "</v>";
  const std::string two = "<v>" + text(0) + "</v>" + one;
  object.FromXml(("<r>" + two + "</r>").c_str());
  EXPECT_EQ(TextsOf("01"), object.Texts());
  EXPECT_EQ("<r>" + two + "</r>", Text(object));
  object.FromXml(("<r>" + one + "</r>").c_str());
  EXPECT_EQ(TextsOf("1"), object.Texts());
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
