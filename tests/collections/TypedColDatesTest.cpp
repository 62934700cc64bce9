#include <type_traits>
#include <vector>

#include "tests/collections/OpenContent.h"
#include "tests/collections/TypedColKinds.h"
#include "tests/support/MemberTrial.h"
#include "tests/support/QzTest.h"

// The five collections of CDateTime, which test a value before they tell of it.
namespace qztest {
namespace {

template <typename Kind>
class TypedColDates : public TypedColOf<Kind> {};
using Dates = testing::Types<YearMonth, MonthDay, Date, Datetime, Time>;
TYPED_TEST_SUITE(TypedColDates, Dates, KindName);

TYPED_TEST(TypedColDates, TakeTheTypeOfTheirClassAlone) {
  std::vector<CDateTime> dates;
  for (const CDateTime::DTType type :
       {CDateTime::dt_yearZero, CDateTime::dt_dateTime, CDateTime::dt_date,
        CDateTime::dt_gYearMonth, CDateTime::dt_gYear, CDateTime::dt_time, CDateTime::dt_gDay,
        CDateTime::dt_gMonth, CDateTime::dt_gMonthDay}) {
    dates.push_back(CDateTime(type));
  }
  const std::map<CDateTime::DTType, std::string> texts = {
      {CDateTime::dt_gYearMonth, "Dates added to this collection must be of type dt_gYearMonth"},
      {CDateTime::dt_gMonthDay, "Dates added to this collection must be of type dt_gMonthDay"},
      {CDateTime::dt_date, "Dates added to this collection must be of type dt_date"},
      {CDateTime::dt_dateTime, "Dates added to this collection must be of type dt_dateTime"},
      {CDateTime::dt_time, "Dates added to this collection must be of type dt_time"}};
  const std::string& text = texts.at(TypeParam::kDateType);
  typename TestFixture::Col col;
  CValueListener<TypeParam> listener(col);
  for (const CDateTime& date : dates) {
    if (date.GetType() == TypeParam::kDateType) continue;
    EXPECT_QZ_THROW(CQzInvalidParamException, text, col.Add(date));
    // The type comes ahead of the place.
    EXPECT_QZ_THROW(CQzInvalidParamException, text, col.AddAt(7, date));
  }
  EXPECT_EQ(Lines(), listener.log);
  EXPECT_EQ(0, col.GetCount());
  col.Add(this->value(0));
  EXPECT_EQ(1, col.GetCount());
}

TYPED_TEST(TypedColDates, TestTypeThenFacetsAndThenTellAndTestThePlace) {
  ColOptions o;
  o.maxInclusive = TypeParam::Samples()[0].text;
  o.minInclusive = o.maxInclusive;
  typename TestFixture::Col col(o);
  CValueListener<TypeParam> listener(col);
  EXPECT_QZ_THROW(CQzException, "Invalid Value for v [" + this->text(1) + "].",
                  col.AddAt(7, this->value(1)));
  EXPECT_EQ(Lines(), listener.log);
  EXPECT_QZ_THROW(CQzInvalidParamException, "Index out of range", col.AddAt(7, this->value(0)));
  EXPECT_EQ(Lines{"add " + this->text(0) + ", 0"}, listener.log);
  EXPECT_EQ(0, col.GetCount());
}

TYPED_TEST(TypedColDates, AreFilledAndReadThroughTheirBase) {
  typename TestFixture::Col col;
  CdatetimeBaseCol& base = col;
  base.Add(this->value(0));
  base.AddAt(0, this->value(1));
  EXPECT_EQ(2, base.GetCount());
  EXPECT_TRUE(this->value(1) == base.Item(0));
  EXPECT_TRUE(this->value(0) == base.Item(1));
  EXPECT_QZ_THROW(CQzInvalidParamException, "Index 2 is out of range, use 0 - 2", base.Item(2));
  base.Clear();
  EXPECT_TRUE(base.begin() == base.end());
}

// A class of an application that has its say in everything.
template <typename Col>
class CDated : public CMade<Col> {
 public:
  using CMade<Col>::CMade;
  void Add(const CDateTime& value) override {
    calls.push_back("Add");
    Col::Add(value);
  }
  void AddAt(int index, const CDateTime& value) override {
    calls.push_back("AddAt " + std::to_string(index));
    Col::AddAt(index, value);
  }
  Lines calls;
  bool fails = false;

 protected:
  std::string ItemToString(const CDateTime& value) const override {
    if (fails) throw CQzException("No text.");
    return "<" + Col::ItemToString(value) + ">";
  }
};

TYPED_TEST(TypedColDates, AreReadThroughTheVirtualAddAndAddAt) {
  CDated<typename TypeParam::Col> col;
  const CLoaded document(
      ("<r><v>" + this->text(0) + "</v><v>" + this->text(1) + "</v></r>").c_str());
  EXPECT_EQ(nullptr, col.FromXml_Int(document.root(), document.root()->GetFirstElement(),
                                     CSerializationContext(), false));
  EXPECT_EQ((Lines{"Add", "AddAt 0", "Add", "AddAt 1"}), col.calls);
}

TYPED_TEST(TypedColDates, AreWrittenThroughTheVirtualItemToString) {
  CDated<typename TypeParam::Col> col;
  col.Add(this->value(2));
  CRecordingWriter writer;
  col.ToXml_Int(&writer, false, "", CSerializationContext(), false);
  EXPECT_EQ((Lines{"start v", "text <" + this->text(2) + "> 20", "end"}), writer.calls);
  col.fails = true;
  CRecordingWriter stopped;
  EXPECT_QZ_THROW(CQzException, "No text.",
                  col.ToXml_Int(&stopped, false, "", CSerializationContext(), false));
  EXPECT_EQ(Lines{"start v"}, stopped.calls);
}

TYPED_TEST(TypedColDates, WriteADateThatWasNeverSet) {
  typename TestFixture::Col col;
  col.Add(CDateTime(TypeParam::kDateType));
  const std::string text =
      TypeParam::kDateType == CDateTime::dt_time ? "00:00:00" : "Error: Date Not Set";
  EXPECT_EQ("<owner><v>" + text + "</v></owner>", WriteInOwner(&col));
}

// --- The base

// A sixth class, of an application: years of our era, in a form of its own.
class CEraCol : public CdatetimeBaseCol {
 public:
  CEraCol()
      : CdatetimeBaseCol(ItemType_year, "era", "urn:eras", 1, 3, "p", 1, 2, "a", "b", "c", "d", 3,
                         4, 5, CWhitespaceUtils::WhitespaceRule_Replace, "f") {}
  void AddAt(int index, const CDateTime& value) override { BaseAddAt(index, value); }
  using CdatetimeBaseCol::GetFormat;
  using CdatetimeBaseCol::GetItemType;
  using CdatetimeBaseCol::GetRestrictions;
  using CdatetimeBaseCol::GetWhitespaceRule;
  using CdatetimeBaseCol::ToXml_Int;

 protected:
  void AddFromString(std::string text) override {
    Add(CConversions::dateFromString(text, GetWhitespaceRule()));
  }
  std::string ItemToString(const CDateTime& value) const override {
    return "AD " + std::to_string(value.GetYear());
  }
};

TEST(TypedColDateBase, IsAbstractAndTakesTheKindAheadOfTheOtherArguments) {
  EXPECT_TRUE(std::is_abstract_v<CdatetimeBaseCol>);
  EXPECT_TRUE((std::is_convertible_v<CdatetimeBaseCol*, CXmlTypeCollection*>));
  const CEraCol col;
  EXPECT_EQ(ItemType_year, col.GetItemType());
  EXPECT_EQ("urn:eras", col.GetNamespace());
  EXPECT_EQ(1, col.GetMinOccurs());
  EXPECT_EQ(3, col.GetMaxOccurs());
  EXPECT_EQ("f", col.GetFormat());
  EXPECT_EQ(CWhitespaceUtils::WhitespaceRule_Replace, col.GetWhitespaceRule());
  const CPrimitiveRestrictions& r = col.GetRestrictions();
  EXPECT_EQ("p", r.GetPattern());
  EXPECT_EQ(1, r.GetMinLength());
  EXPECT_EQ(2, r.GetMaxLength());
  EXPECT_EQ("a", r.GetMinInclusive());
  EXPECT_EQ("b", r.GetMaxInclusive());
  EXPECT_EQ("c", r.GetMinExclusive());
  EXPECT_EQ("d", r.GetMaxExclusive());
  EXPECT_EQ(3, r.GetLength());
  EXPECT_EQ(4, r.GetTotalDigits());
  EXPECT_EQ(5, r.GetFractionDigits());
}

TEST(TypedColDateBase, AddsAnyDateAndTellsOfItAheadOfTheTestOfThePlace) {
  CEraCol col;
  CValueListener<Date> listener(col);
  EXPECT_QZ_THROW(CQzInvalidParamException, "Index out of range",
                  col.AddAt(1, Date::Samples()[0].value));
  EXPECT_EQ(Lines{"add 2004-05-06, 0"}, listener.log);
  listener.log.clear();
  col.Add(Date::Samples()[1].value);
  EXPECT_EQ((Lines{"add 1999-12-31, 0", "added 1999-12-31, 1", "change, 1"}), listener.log);
  col.AddAt(0, YearMonthOf(2004, 5));
  CRecordingWriter writer;
  col.ToXml_Int(&writer, false, "", CSerializationContext(), false);
  EXPECT_EQ((Lines{"start era urn:eras", "text AD 2004 20", "end", "start era urn:eras",
                   "text AD 1999 20", "end"}),
            writer.calls);
}

// The text decides which type a date has.
TEST(TypedColDateTexts, OfAnotherFormFailInTheAddition) {
  CMade<CyearMonthCol> months;
  EXPECT_QZ_THROW(CQzInvalidParamException,
                  "Dates added to this collection must be of type dt_gYearMonth",
                  months.AddFromString("2004-05-06"));
  CMade<CmonthDayCol> days;
  EXPECT_QZ_THROW(CQzInvalidParamException,
                  "Dates added to this collection must be of type dt_gMonthDay",
                  days.AddFromString("2004"));
  CMade<CdateCol> dates;
  EXPECT_QZ_THROW(CQzInvalidParamException,
                  "Dates added to this collection must be of type dt_date",
                  dates.AddFromString("2004-05"));
  EXPECT_EQ(0, months.GetCount() + days.GetCount() + dates.GetCount());
}

TEST(TypedColDateTexts, KeepTheZone) {
  CMade<CdatetimeCol> col;
  for (const char* text : {"2004-05-06T07:08:09Z", "2004-05-06T07:08:09-05:30"}) {
    col.AddFromString(text);
  }
  EXPECT_EQ("<owner><v>2004-05-06T07:08:09Z</v><v>2004-05-06T07:08:09-05:30</v></owner>",
            WriteInOwner(&col));
}

TEST(TypedColDateTexts, PassABoundThatLeavesThemUndecided) {
  ColOptions o;
  o.minInclusive = "2004-05-06Z";
  CMade<CdateCol> col(o);
  col.Add(CDateTime(2004, 5, 6));
  EXPECT_EQ(1, col.GetCount());
}

TEST(TypedColDateTexts, GiveAListenerACopyOfTheValue) {
  // What it writes there goes in, and the caller's value stays.
  CMade<CdateCol> col;
  CValueListener<Date> listener(col);
  listener.onEvent = [](IEventSink::MsgType type, void* data) {
    if (type == IEventSink::MsgType_CollectionAdd) {
      *static_cast<CDateTime*>(data) = CDateTime(1999, 12, 31);
    }
  };
  const CDateTime date(2004, 5, 6);
  col.Add(date);
  EXPECT_EQ("1999-12-31", col.Item(0).ToString());
  EXPECT_EQ("2004-05-06", date.ToString());
}

}  // namespace
}  // namespace qztest
