#include <map>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/collections/OpenContent.h"
#include "tests/collections/TypedColKinds.h"
#include "tests/support/MemberTrial.h"
#include "tests/support/QzTest.h"

// The five collections of CDateTime, which test a value before they tell of it.
namespace qztest {
namespace {

// What a class of an application that has its say in everything notes, and is told.
struct Say {
  Lines calls;
  bool fails = false;
};

template <typename Col>
class CDated final : public CMade<Col> {
 public:
  explicit CDated(Say& say) : m_say(say) {}
  void Add(const CDateTime& value) override {
    m_say.calls.push_back("Add");
    Col::Add(value);
  }
  void AddAt(int index, const CDateTime& value) override {
    m_say.calls.push_back("AddAt " + std::to_string(index));
    Col::AddAt(index, value);
  }

 protected:
  std::string ItemToString(const CDateTime& value) const override {
    if (m_say.fails) throw CQzException("No text.");
    return "<" + Col::ItemToString(value) + ">";
  }

 private:
  Say& m_say;
};

// One of the five; all that they do can be reached by their base.
using Made = std::unique_ptr<CdatetimeBaseCol>;
struct DateKind {
  const char* name;
  CDateTime::DTType type;
  std::vector<Sample<CDateTime>> (*samples)();
  CColListener::TextOf textOf;
  Made (*make)(const ColOptions& o);
  Made (*makeDated)(Say& say);
};

template <typename Kind>
constexpr DateKind kKind = {
    Kind::kName,
    Kind::kDateType,
    &Kind::Samples,
    &TextOfValue<Kind>,
    [](const ColOptions& o) { return Made(new CMade<typename Kind::Col>(o)); },
    [](Say& say) { return Made(new CDated<typename Kind::Col>(say)); }};

class TypedColDates : public testing::TestWithParam<const DateKind*> {
 protected:
  TypedColDates() : samples(GetParam()->samples()) {}

  Made Make(const ColOptions& o = ColOptions()) const { return GetParam()->make(o); }
  CDateTime value(std::size_t index) const { return samples[index].value; }
  std::string text(std::size_t index) const { return samples[index].text; }

  const std::vector<Sample<CDateTime>> samples;
};

INSTANTIATE_TEST_SUITE_P(Kinds, TypedColDates,
                         testing::Values(&kKind<YearMonth>, &kKind<MonthDay>, &kKind<Date>,
                                         &kKind<Datetime>, &kKind<Time>),
                         [](const testing::TestParamInfo<const DateKind*>& kind) {
                           return std::string(kind.param->name);
                         });

TEST_P(TypedColDates, TakeTheTypeOfTheirClassAlone) {
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
  const std::string& text = texts.at(GetParam()->type);
  const Made col = Make();
  CColListener listener(*col, GetParam()->textOf);
  for (const CDateTime& date : dates) {
    if (date.GetType() == GetParam()->type) continue;
    EXPECT_QZ_THROW(CQzInvalidParamException, text, col->Add(date));
    // The type comes ahead of the place.
    EXPECT_QZ_THROW(CQzInvalidParamException, text, col->AddAt(7, date));
  }
  EXPECT_EQ(Lines(), listener.log);
  EXPECT_EQ(0, col->GetCount());
  col->Add(value(0));
  EXPECT_EQ(1, col->GetCount());
}

TEST_P(TypedColDates, TestTypeThenFacetsAndThenTellAndTestThePlace) {
  ColOptions o;
  o.maxInclusive = samples[0].text;
  o.minInclusive = o.maxInclusive;
  const Made col = Make(o);
  CColListener listener(*col, GetParam()->textOf);
  EXPECT_QZ_THROW(CQzException, "Invalid Value for v [" + text(1) + "].", col->AddAt(7, value(1)));
  EXPECT_EQ(Lines(), listener.log);
  EXPECT_QZ_THROW(CQzInvalidParamException, "Index out of range", col->AddAt(7, value(0)));
  EXPECT_EQ(Lines{"add " + text(0) + ", 0"}, listener.log);
  EXPECT_EQ(0, col->GetCount());
}

TEST_P(TypedColDates, AreFilledAndReadThroughTheirBase) {
  const Made col = Make();
  CdatetimeBaseCol& base = *col;
  base.Add(value(0));
  base.AddAt(0, value(1));
  EXPECT_EQ(2, base.GetCount());
  EXPECT_TRUE(value(1) == base.Item(0));
  EXPECT_TRUE(value(0) == base.Item(1));
  EXPECT_QZ_THROW(CQzInvalidParamException, "Index 2 is out of range, use 0 - 2", base.Item(2));
  base.Clear();
  EXPECT_TRUE(base.begin() == base.end());
}

TEST_P(TypedColDates, AreReadThroughTheVirtualAddAndAddAt) {
  Say say;
  const Made col = GetParam()->makeDated(say);
  const CLoaded document(("<r><v>" + text(0) + "</v><v>" + text(1) + "</v></r>").c_str());
  EXPECT_EQ(nullptr, CWalk::Read(col.get(), document.root(), document.root()->GetFirstElement()));
  EXPECT_EQ((Lines{"Add", "AddAt 0", "Add", "AddAt 1"}), say.calls);
}

TEST_P(TypedColDates, AreWrittenThroughTheVirtualItemToString) {
  Say say;
  const Made col = GetParam()->makeDated(say);
  col->Add(value(2));
  CRecordingWriter writer;
  CWalk::Write(col.get(), &writer, CSerializationContext());
  EXPECT_EQ((Lines{"start v", "text <" + text(2) + "> 20", "end"}), writer.calls);
  say.fails = true;
  CRecordingWriter stopped;
  EXPECT_QZ_THROW(CQzException, "No text.",
                  CWalk::Write(col.get(), &stopped, CSerializationContext()));
  EXPECT_EQ(Lines{"start v"}, stopped.calls);
}

TEST_P(TypedColDates, WriteADateThatWasNeverSet) {
  const Made col = Make();
  col->Add(CDateTime(GetParam()->type));
  const std::string text =
      GetParam()->type == CDateTime::dt_time ? "00:00:00" : "Error: Date Not Set";
  EXPECT_EQ("<owner><v>" + text + "</v></owner>", WriteInOwner(col.get()));
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
