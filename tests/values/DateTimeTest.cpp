#include <functional>
#include <type_traits>
#include <vector>

#include "qzxml/values/DateTime.h"
#include "tests/support/QzTest.h"

using namespace QzXmlLib16;

namespace {

constexpr CDateTime::DTType kTypes[] = {
    CDateTime::dt_yearZero,   CDateTime::dt_dateTime, CDateTime::dt_date,
    CDateTime::dt_gYearMonth, CDateTime::dt_gYear,    CDateTime::dt_time,
    CDateTime::dt_gDay,       CDateTime::dt_gMonth,   CDateTime::dt_gMonthDay};
constexpr const char* kTypeTexts[] = {"yearZero", "dateTime", "date",   "gYearMonth", "gYear",
                                      "time",     "gDay",     "gMonth", "gMonthDay"};
constexpr auto kNoType = static_cast<CDateTime::DTType>(9);

// A getter, its setter, the types that have the field, and the text of the others.
struct FieldCase {
  std::function<long(const CDateTime&)> get;
  std::function<void(CDateTime&)> set;
  std::vector<int> types;
  const char* message;
};

template <typename Value>
FieldCase Field(Value (CDateTime::*get)() const, void (CDateTime::*set)(Value),
                std::vector<int> types, const char* message) {
  return {[get](const CDateTime& value) { return static_cast<long>((value.*get)()); },
          [set](CDateTime& value) { (value.*set)(static_cast<Value>(7)); }, std::move(types),
          message};
}

std::vector<FieldCase> Fields() {
  const std::vector<int> time = {1, 5};
  return {
      Field(&CDateTime::GetYear, &CDateTime::SetYear, {1, 2, 3, 4},
            "Failed to GetYear. Invalid Date Type: %s."),
      Field(&CDateTime::GetMonth, &CDateTime::SetMonth, {1, 2, 3, 7, 8},
            "Failed to GetMonth. Invalid Date Type: %s."),
      Field(&CDateTime::GetDay, &CDateTime::SetDay, {1, 2, 6, 8},
            "Failed to GetDay. Invalid Date Type: %s."),
      Field(&CDateTime::GetHour, &CDateTime::SetHour, time,
            "Failed to GetHour. Invalid Date Type: %s."),
      Field(&CDateTime::GetMinute, &CDateTime::SetMinute, time,
            "Failed to GetMinute. Invalid Date Type: %s."),
      Field(&CDateTime::GetSecond, &CDateTime::SetSecond, time,
            "Failed to GetSecond. Invalid Date Type: %s."),
      Field(&CDateTime::GetMilliSecond, &CDateTime::SetMilliSecond, time,
            "Failed to GetMilliSecond. Invalid Date Type: %s."),
      Field(&CDateTime::GetMicroSecond, &CDateTime::SetMicroSecond, time,
            "Failed to GetMicroSecond. Invalid Date Type: %s."),
      Field(&CDateTime::GetNanoSecond, &CDateTime::SetNanoSecond, time,
            "Failed to GetNanoSecond. Invalid Date Type: %s."),
  };
}

std::string With(const std::string& message, const std::string& type) {
  return message.substr(0, message.find("%s")) + type + message.substr(message.find("%s") + 2);
}

bool Contains(const std::vector<int>& types, CDateTime::DTType type) {
  for (const int each : types) {
    if (each == type) return true;
  }
  return false;
}

}  // namespace

TEST(DateTime, NumbersItsTypesAndResults) {
  EXPECT_EQ(CDateTime::dt_yearZero, 0);
  EXPECT_EQ(CDateTime::dt_dateTime, 1);
  EXPECT_EQ(CDateTime::dt_date, 2);
  EXPECT_EQ(CDateTime::dt_gYearMonth, 3);
  EXPECT_EQ(CDateTime::dt_gYear, 4);
  EXPECT_EQ(CDateTime::dt_time, 5);
  EXPECT_EQ(CDateTime::dt_gDay, 6);
  EXPECT_EQ(CDateTime::dt_gMonth, 7);
  EXPECT_EQ(CDateTime::dt_gMonthDay, 8);
  EXPECT_EQ(CDateTime::dtc_equal, 0);
  EXPECT_EQ(CDateTime::dtc_less, 1);
  EXPECT_EQ(CDateTime::dtc_greater, 2);
  EXPECT_EQ(CDateTime::dtc_indeterminate, 3);
  static_assert(sizeof(CDateTime::DTType) == 4);
  static_assert(std::has_virtual_destructor_v<CDateTime>);
}

TEST(DateTime, NamesItsTypes) {
  for (int i = 0; i < 9; ++i) {
    const CDateTime value(kTypes[i]);
    EXPECT_EQ(value.GetType(), kTypes[i]);
    EXPECT_EQ(value.GetTypeAsString(), kTypeTexts[i]);
  }
  EXPECT_EQ(CDateTime(kNoType).GetTypeAsString(), "unknown");
}

TEST(DateTime, IsNotSetAtFirst) {
  const CDateTime value;
  EXPECT_EQ(value.GetType(), CDateTime::dt_yearZero);
  EXPECT_FALSE(value.IsUTC());
  EXPECT_FALSE(value.HasTimeZone());
  EXPECT_EQ(value.ToString(), "Error: Date Not Set");
}

TEST(DateTime, IsOfATypeWithAllFieldsZero) {
  const CDateTime value(CDateTime::dt_date);
  EXPECT_EQ(value.GetType(), CDateTime::dt_date);
  EXPECT_EQ(value.GetYear(), 0);
  EXPECT_EQ(value.GetMonth(), 0);
  EXPECT_EQ(value.GetDay(), 0);
  EXPECT_EQ(value.ToString(), "Error: Date Not Set");
  EXPECT_EQ(CDateTime(CDateTime::dt_time).ToString(), "00:00:00");
}

// ---- Fields ----

TEST(DateTime, AnswersTheFieldsOfItsTypeAndRefusesTheOthers) {
  int index = 0;
  for (const FieldCase& field : Fields()) {
    SCOPED_TRACE(++index);
    for (const CDateTime::DTType type : kTypes) {
      CDateTime value(type);
      if (Contains(field.types, type)) {
        EXPECT_EQ(field.get(value), 0);
        field.set(value);
        EXPECT_EQ(field.get(value), 7);
        continue;
      }
      const std::string message = With(field.message, value.GetTypeAsString());
      EXPECT_QZ_THROW(CQzInvalidStateException, message, field.get(value));
      EXPECT_QZ_THROW(CQzInvalidStateException, message, field.set(value));
    }
  }
}

TEST(DateTime, RefusesAFieldWithTheTextOfGettingIt) {
  CDateTime value;
  value.SetGYear(2004);
  EXPECT_QZ_THROW(CQzInvalidStateException, "Failed to GetMonth. Invalid Date Type: gYear.",
                  value.SetMonth(1));
  EXPECT_QZ_THROW(CQzInvalidStateException, "Failed to GetYear. Invalid Date Type: unknown.",
                  CDateTime(kNoType).GetYear());
}

TEST(DateTime, StoresAFieldUnchecked) {
  CDateTime value(2004, 1, 31);
  value.SetMonth(2);
  value.SetDay(200);
  value.SetYear(-32768);
  EXPECT_EQ(value.GetDay(), 200);
  EXPECT_EQ(value.ToString(), "-32768-02-200");
}

TEST(DateTime, GivesTheSecondWithItsFractions) {
  EXPECT_DOUBLE_EQ(CDateTime(2004, 1, 1, 0, 0, 59, 123, 456, 789).GetRealSecond(), 59.123456789);
  CDateTime value;
  value.SetTime(1, 2, 3);
  EXPECT_DOUBLE_EQ(value.GetRealSecond(), 3.0);
  EXPECT_QZ_THROW(CQzInvalidStateException, "Failed to GetRealSecond. Invalid Date Type: date.",
                  CDateTime(2004, 1, 1).GetRealSecond());
}

TEST(DateTime, CountsTheDaysOfTheYearWithTheLeapDayAhead) {
  const struct {
    short year;
    unsigned char month;
    unsigned char day;
    unsigned short dayOfYear;
  } cases[] = {{2003, 1, 1, 1},     {2003, 2, 28, 59}, {2003, 3, 1, 60},  {2003, 12, 31, 365},
               {2004, 1, 1, 2},     {2004, 2, 28, 60}, {2004, 2, 29, 61}, {2004, 3, 1, 60},
               {2004, 12, 31, 365}, {1900, 1, 31, 31}, {2000, 1, 31, 32}, {-4, 1, 1, 2},
               {-1, 1, 1, 1},       {2003, 4, 1, 91},  {2003, 5, 1, 121}, {2003, 6, 1, 152},
               {2003, 7, 1, 182},   {2003, 8, 1, 213}, {2003, 9, 1, 244}, {2003, 10, 1, 274},
               {2003, 11, 1, 305},  {2003, 12, 1, 335}};
  for (const auto& c : cases) {
    EXPECT_EQ(CDateTime(c.year, c.month, c.day).GetDayOfYear(), c.dayOfYear)
        << c.year << "-" << int{c.month} << "-" << int{c.day};
    EXPECT_EQ(CDateTime(c.year, c.month, c.day, 23, 0, 0).GetDayOfYear(), c.dayOfYear);
  }
}

TEST(DateTime, CountsNoDaysOfATypeWithoutADate) {
  for (const CDateTime::DTType type : kTypes) {
    if (type == CDateTime::dt_dateTime || type == CDateTime::dt_date) continue;
    const CDateTime value(type);
    EXPECT_QZ_THROW(CQzInvalidStateException,
                    With("Failed to GetDayOfYear. Invalid Date Type: %s.", value.GetTypeAsString()),
                    value.GetDayOfYear());
  }
}

TEST(DateTime, CountsTheDaysOfMonthsThatDoNotExistWithinItsTable) {
  CDateTime value(2003, 1, 10);
  value.SetMonth(0);
  EXPECT_EQ(value.GetDayOfYear(), 10);
  value.SetMonth(255);
  EXPECT_EQ(value.GetDayOfYear(), 375);
}

// ---- Zone ----

TEST(DateTime, HoldsAZone) {
  CDateTime value(2004, 1, 1);
  EXPECT_QZ_THROW(CQzInvalidStateException, "TimeZone is not been used", value.GetZoneHour());
  EXPECT_QZ_THROW(CQzInvalidStateException, "TimeZone is not been used", value.GetZoneMinute());
  value.SetTimeZone(-23, 59);
  EXPECT_TRUE(value.IsUTC());
  EXPECT_TRUE(value.HasTimeZone());
  EXPECT_EQ(value.GetZoneHour(), -23);
  EXPECT_EQ(value.GetZoneMinute(), 59);
  EXPECT_EQ(value.ToString(), "2004-01-01-23:59");
  value.SetUTC();
  EXPECT_TRUE(value.IsUTC());
  EXPECT_FALSE(value.HasTimeZone());
  EXPECT_EQ(value.ToString(), "2004-01-01Z");
  EXPECT_QZ_THROW(CQzInvalidStateException, "TimeZone is not been used", value.GetZoneHour());
}

TEST(DateTime, RefusesAZoneOutOfRangeAndKeepsItsOwn) {
  CDateTime value(2004, 1, 1);
  value.SetTimeZone(5, 30);
  EXPECT_QZ_THROW(CQzInvalidValueException, "Invalid TimeZone [24:0]", value.SetTimeZone(24, 0));
  EXPECT_QZ_THROW(CQzInvalidValueException, "Invalid TimeZone [-24:0]", value.SetTimeZone(-24, 0));
  EXPECT_QZ_THROW(CQzInvalidValueException, "Invalid TimeZone [0:60]", value.SetTimeZone(0, 60));
  EXPECT_EQ(value.ToString(), "2004-01-01+05:30");
  value.SetTimeZone(23, 59);
  EXPECT_EQ(value.ToString(), "2004-01-01+23:59");
}

// ---- Whole values ----

TEST(DateTime, SetsWholeValuesOfEachType) {
  CDateTime dateTime, precise, date, yearMonth, year, time, preciseTime, fraction, day, month, both;
  dateTime.SetDateTime(2004, 2, 29, 23, 59, 58);
  precise.SetDateTime(-1, 12, 31, 0, 1, 2, 3, 4, 5);
  date.SetDate(9999, 12, 31);
  yearMonth.SetGYearMonth(-9999, 1);
  year.SetGYear(2004);
  time.SetTime(1, 2, 3);
  preciseTime.SetTime(23, 59, 59, 999, 998, 997);
  fraction.SetFracTime(1, 20, 300);
  day.SetGDay(31);
  month.SetGMonth(12);
  both.SetGMonthDay(2, 29);
  const struct {
    const CDateTime& value;
    CDateTime::DTType type;
    const char* text;
  } cases[] = {{dateTime, CDateTime::dt_dateTime, "2004-02-29T23:59:58"},
               {precise, CDateTime::dt_dateTime, "-0001-12-31T00:01:02.003004005"},
               {date, CDateTime::dt_date, "9999-12-31"},
               {yearMonth, CDateTime::dt_gYearMonth, "-9999-01"},
               {year, CDateTime::dt_gYear, "2004"},
               {time, CDateTime::dt_time, "01:02:03"},
               {preciseTime, CDateTime::dt_time, "23:59:59.999998997"},
               {fraction, CDateTime::dt_time, "00:00:00.0010203"},
               {day, CDateTime::dt_gDay, "---31"},
               {month, CDateTime::dt_gMonth, "--12"},
               {both, CDateTime::dt_gMonthDay, "--02-29"}};
  for (const auto& c : cases) {
    EXPECT_EQ(c.value.GetType(), c.type) << c.text;
    EXPECT_EQ(c.value.ToString(), c.text);
  }
}

TEST(DateTime, DropsTheZoneWhenAWholeValueIsSet) {
  CDateTime value(2004, 1, 1);
  value.SetTimeZone(1, 0);
  value.SetDate(2005, 1, 1);
  EXPECT_EQ(value.ToString(), "2005-01-01");
  EXPECT_FALSE(value.IsUTC());
}

TEST(DateTime, KeepsItsTypeOnceItIsSet) {
  CDateTime value;
  value.SetGYear(2004);
  EXPECT_EQ(value.ToString(), "2004");
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "Failed to copy CDateTime. Invalid Date Type: date, expected: gYear.",
                  value.SetDate(2004, 1, 1));
  EXPECT_EQ(value.ToString(), "2004");
  value.SetGYear(2005);
  EXPECT_EQ(value.ToString(), "2005");
  CDateTime typed(CDateTime::dt_gDay);
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "Failed to copy CDateTime. Invalid Date Type: time, expected: gDay.",
                  typed.SetFracTime(1, 0, 0));
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "Failed to copy CDateTime. Invalid Date Type: dateTime, expected: gDay.",
                  typed = 0LL);
}

TEST(DateTime, RefusesWhatIsOutOfRange) {
  const struct {
    std::function<void(CDateTime&)> set;
    const char* message;
  } cases[] = {
      {[](CDateTime& v) { v.SetDate(2004, 0, 1); }, "Invalid Month [0] (1 <= month <= 12)"},
      {[](CDateTime& v) { v.SetDate(2004, 13, 1); }, "Invalid Month [13] (1 <= month <= 12)"},
      {[](CDateTime& v) { v.SetGYearMonth(2004, 13); }, "Invalid Month [13] (1 <= month <= 12)"},
      {[](CDateTime& v) { v.SetGMonth(0); }, "Invalid Month [0] (1 <= month <= 12)"},
      {[](CDateTime& v) { v.SetGMonthDay(255, 1); }, "Invalid Month [255] (1 <= month <= 12)"},
      // The month is looked at first, then the year, the day and the time.
      {[](CDateTime& v) { v.SetDate(0, 0, 0); }, "Invalid Month [0] (1 <= month <= 12)"},
      {[](CDateTime& v) { v.SetDate(0, 1, 0); },
       "Invalid Year [0] (-9999 <= year <= 9999 && year != 0)"},
      {[](CDateTime& v) { v.SetGYear(10000); },
       "Invalid Year [10000] (-9999 <= year <= 9999 && year != 0)"},
      {[](CDateTime& v) { v.SetGYear(-10000); },
       "Invalid Year [-10000] (-9999 <= year <= 9999 && year != 0)"},
      {[](CDateTime& v) { v.SetGYear(0); },
       "Invalid Year [0] (-9999 <= year <= 9999 && year != 0)"},
      {[](CDateTime& v) { v.SetDate(2004, 1, 0); }, "Invalid Day [0] (1 <= day <= days in month"},
      {[](CDateTime& v) { v.SetDate(2004, 4, 31); }, "Invalid Day [31] (1 <= day <= days in month"},
      {[](CDateTime& v) { v.SetDate(2003, 2, 29); }, "Invalid Day [29] (1 <= day <= days in month"},
      {[](CDateTime& v) { v.SetDateTime(1900, 2, 29, 24, 0, 0); },
       "Invalid Day [29] (1 <= day <= days in month"},
      {[](CDateTime& v) { v.SetGMonthDay(2, 30); }, "Invalid Day [30] (1 <= day <= days in month)"},
      {[](CDateTime& v) { v.SetGMonthDay(2, 0); }, "Invalid Day [0] (1 <= day <= days in month)"},
      {[](CDateTime& v) { v.SetGDay(0); }, "Invalid Day [0] (1 <= day <= 31)"},
      {[](CDateTime& v) { v.SetTime(24, 60, 60); }, "Invalid Hour [24] (0 <= hour <= 23)"},
      {[](CDateTime& v) { v.SetTime(23, 60, 60); }, "Invalid Minute [60] (0 <= minute <= 59)"},
      {[](CDateTime& v) { v.SetTime(23, 59, 60); }, "Invalid Second [60] (0 <= second <= 59)"},
      {[](CDateTime& v) { v.SetFracTime(1000, 1000, 1000); },
       "Invalid Milli-Second [1000] (0 <= milli <= 999)"},
      {[](CDateTime& v) { v.SetTime(0, 0, 0, 999, 1000, 1000); },
       "Invalid Micro-Second [1000] (0 <= micro <= 999)"},
      {[](CDateTime& v) { v.SetDateTime(2004, 1, 1, 0, 0, 0, 999, 999, 65535); },
       "Invalid Nano-Second [65535] (0 <= nano <= 999)"},
  };
  for (const auto& c : cases) {
    CDateTime value;
    EXPECT_QZ_THROW(CQzInvalidValueException, c.message, c.set(value));
  }
}

TEST(DateTime, TakesTheLastDayOfEachMonth) {
  const unsigned char days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  for (unsigned char month = 1; month <= 12; ++month) {
    const unsigned char last = days[month - 1];
    CDateTime value;
    value.SetDate(2003, month, last);
    EXPECT_EQ(value.GetDay(), last);
    EXPECT_QZ_THROW(CQzInvalidValueException,
                    "Invalid Day [" + std::to_string(last + 1) + "] (1 <= day <= days in month",
                    value.SetDate(2003, month, static_cast<unsigned char>(last + 1)));
    CDateTime ofAnyYear;
    ofAnyYear.SetGMonthDay(month, static_cast<unsigned char>(month == 2 ? 29 : last));
    EXPECT_EQ(ofAnyYear.GetMonth(), month);
  }
}

TEST(DateTime, KnowsLeapYearsByTheStoredNumber) {
  const struct {
    short year;
    bool isLeap;
  } cases[] = {{4, true},     {100, false},  {400, true},   {1600, true},  {1700, false},
               {1900, false}, {1996, true},  {1999, false}, {2000, true},  {2001, false},
               {2004, true},  {2100, false}, {9996, true},  {9999, false}, {-1, false},
               {-4, true},    {-5, false},   {-100, false}, {-400, true},  {-9996, true}};
  for (const auto& c : cases) {
    EXPECT_EQ(CDateTime(c.year, 2, 29).GetType() == CDateTime::dt_date, c.isLeap) << c.year;
  }
}

TEST(DateTime, TakesAnyDayOfAGDayButZero) {
  CDateTime value;
  value.SetGDay(45);
  EXPECT_EQ(value.ToString(), "---45");
  value.SetGDay(255);
  EXPECT_EQ(value.ToString(), "---255");
}

TEST(DateTime, ConstructorsGiveAnUnsetValueForWhatIsRefused) {
  EXPECT_EQ(CDateTime(2004, 13, 1).ToString(), "Error: Date Not Set");
  EXPECT_EQ(CDateTime(2004, 13, 1).GetType(), CDateTime::dt_yearZero);
  EXPECT_EQ(CDateTime(2004, 1, 1, 24, 0, 0).ToString(), "Error: Date Not Set");
  EXPECT_EQ(CDateTime(2004, 1, 1, 0, 0, 0, 1000, 0, 0).GetType(), CDateTime::dt_yearZero);
  EXPECT_EQ(CDateTime(2004, 2, 29).ToString(), "2004-02-29");
  EXPECT_EQ(CDateTime(2004, 2, 29, 1, 2, 3).ToString(), "2004-02-29T01:02:03");
  EXPECT_EQ(CDateTime(2004, 2, 29, 1, 2, 3, 4, 5, 6).ToString(), "2004-02-29T01:02:03.004005006");
}

TEST(DateTime, TheConstructorOfATextGivesItsFailure) {
  EXPECT_EQ(CDateTime("2004-02-29T01:02:03Z").ToString(), "2004-02-29T01:02:03Z");
  EXPECT_QZ_THROW(CQzInvalidValueException, "Invalid XSD DateTime [2004-02-29].",
                  CDateTime("2004-02-29"));
}

TEST(DateTime, IsCopiedWithItsZone) {
  CDateTime value(2004, 1, 1, 2, 3, 4, 5, 6, 7);
  value.SetTimeZone(-8, 15);
  const CDateTime copy(value);
  EXPECT_EQ(copy.ToString(), "2004-01-01T02:03:04.005006007-08:15");
  CDateTime assigned;
  assigned.SetGYear(1);
  assigned = value;
  EXPECT_EQ(assigned.ToString(), "2004-01-01T02:03:04.005006007-08:15");
}

// ---- Another type ----

TEST(DateTime, ConvertsWhereTheSourceHasEnough) {
  const std::vector<std::vector<int>> targets = {{0},
                                                 {0, 1, 2, 3, 4, 5, 6, 7, 8},
                                                 {0, 2, 3, 4, 6, 7, 8},
                                                 {0, 3, 4, 7},
                                                 {0, 4},
                                                 {0, 5},
                                                 {0, 6},
                                                 {0, 7},
                                                 {0, 6, 7, 8}};
  for (const CDateTime::DTType from : kTypes) {
    for (const CDateTime::DTType to : kTypes) {
      CDateTime value(2004, 1, 1);
      if (Contains(targets[static_cast<std::size_t>(from)], to)) {
        value.SetDateTime(CDateTime(from), to);
        EXPECT_EQ(value.GetType(), to);
        continue;
      }
      EXPECT_QZ_THROW(CQzInvalidValueException,
                      std::string("Attempting to set a CDateTime of type ") + kTypeTexts[from] +
                          " using an XmlDateTime of type " + kTypeTexts[to] +
                          ". The source CDateTime does not contian enough data to allow the "
                          "conversion.",
                      value.SetDateTime(CDateTime(from), to));
      EXPECT_EQ(value.ToString(), "2004-01-01");
    }
  }
}

TEST(DateTime, NamesBothTypesOfAConversionThatHasTooLittle) {
  CDateTime value;
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "Attempting to set a CDateTime of type date using an XmlDateTime of type "
                  "dateTime. The source CDateTime does not contian enough data to allow the "
                  "conversion.",
                  value.SetDateTime(CDateTime(2004, 1, 1), CDateTime::dt_dateTime));
}

TEST(DateTime, RefusesToConvertAnUnknownType) {
  CDateTime value;
  EXPECT_QZ_THROW(CQzInvalidValueException, "Unknown date type 9.",
                  value.SetDateTime(CDateTime(kNoType), CDateTime::dt_date));
  value.SetDateTime(CDateTime(kNoType), kNoType);
  EXPECT_EQ(value.GetType(), kNoType);
  EXPECT_EQ(value.ToString(), "Error: Date Not Set");
  value.SetDateTime(CDateTime(2004, 1, 1, 0, 0, 0), kNoType);
  EXPECT_EQ(value.ToString(), "");
}

TEST(DateTime, ConversionToNoTypeGivesAValueThatIsNotSet) {
  CDateTime value;
  value.SetDateTime(CDateTime(2004, 1, 1), CDateTime::dt_yearZero);
  EXPECT_EQ(value.GetType(), CDateTime::dt_yearZero);
  EXPECT_EQ(value.ToString(), "Error: Date Not Set");
  // It has no type to keep.
  value.SetGYear(2005);
  EXPECT_EQ(value.ToString(), "2005");
}

TEST(DateTime, ConversionKeepsZoneAndHiddenFields) {
  CDateTime source(2004, 2, 29, 12, 30, 15, 1, 2, 3);
  source.SetTimeZone(2, 0);
  CDateTime value;
  value.SetGYear(1999);
  value.SetDateTime(source, CDateTime::dt_gMonthDay);
  EXPECT_EQ(value.ToString(), "--02-29+02:00");
  // What it does not show is there, and comes back with another conversion of the value.
  CDateTime month;
  month.SetDateTime(value, CDateTime::dt_gMonth);
  EXPECT_EQ(month.ToString(), "--02+02:00");
  value.SetDateTime(source, CDateTime::dt_time);
  EXPECT_EQ(value.ToString(), "12:30:15.001002003+02:00");
  source.SetDateTime(source, CDateTime::dt_gYear);
  EXPECT_EQ(source.ToString(), "2004+02:00");
}
