#include <ctime>
#include <limits>

#include "qzxml/values/DateTime.h"
#include "qzxml/values/DateTimeSpan.h"
#include "tests/support/QzTest.h"
#include "tests/support/TimeZone.h"

using namespace QzXmlLib16;
using qztest::TimeZone;

namespace {

constexpr const char* kZones[] = {"UTC0",          qztest::kNewYork, qztest::kBerlin,
                                  qztest::kSydney, qztest::kIndia,   qztest::kFarEast,
                                  qztest::kFarWest};

CDateTime Parse(const std::string& text) {
  CDateTime value;
  if (text.find('T') == std::string::npos) {
    value.ParseXSDDate(text.c_str());
  } else {
    value.ParseXSDDateTime(text.c_str());
  }
  return value;
}

_FILETIME FileTime(std::uint64_t ticks) {
  return {static_cast<std::uint32_t>(ticks), static_cast<std::uint32_t>(ticks >> 32)};
}

}  // namespace

// Expected values are those of Python's calendar.timegm.
TEST(DateTimeSystem, CountsSecondsAsOfUtcInEachTimeZone) {
  const struct {
    const char* text;
    long long time;
  } cases[] = {
      {"1970-01-01T00:00:00", 0},
      {"1970-01-01T00:00:00.999999999Z", 0},
      {"1969-12-31T23:59:59", -1},
      {"1969-12-31T23:00:00", -3600},
      {"1945-07-15T12:00:00", -772027200},
      {"1900-01-01T00:00:00", -2208988800},
      {"0001-01-01T00:00:00", -62135596800},
      {"9999-12-31T23:59:59", 253402300799},
      {"2038-01-19T03:14:08", 2147483648},
      {"2004-01-01T00:00:00", 1072915200},
      {"2004-07-01T04:30:00Z", 1088656200},
      // Around the changes of each zone: hours that the day does not have, and hours that it has
      // twice.
      {"2004-03-14T02:30:00", 1079231400},
      {"2004-03-14T07:30:00", 1079249400},
      {"2004-11-07T01:30:00", 1099791000},
      {"2004-11-07T05:30:00", 1099805400},
      {"2004-03-28T02:30:00", 1080441000},
      {"2004-10-31T02:30:00", 1099189800},
      {"2004-04-04T02:30:00", 1081045800},
      {"2004-10-03T02:30:00", 1096770600},
      {"2004-01-01T12:00:00+14:00", 1072908000},
      {"2003-12-31T12:00:00-14:00", 1072922400},
      {"2004-01-01T05:45:00+05:45", 1072915200},
      {"2004-02-29", 1078012800},
      {"1969-12-31", -86400},
      // Its hour in UTC is not that of a date.
      {"2004-01-01+05:00", 1072828800},
      {"2004-01-01-05:00", 1072915200},
  };
  for (const char* const name : kZones) {
    const TimeZone zone(name);
    for (const auto& c : cases) EXPECT_EQ(Parse(c.text).GetTime(), c.time) << c.text << " " << name;
  }
}

TEST(DateTimeSystem, CountsNoSecondsOfOtherTypes) {
  for (const char* const text : {"2004-01", "2004", "---01", "--01", "--01-01"}) {
    const CDateTime value = Parse(text);
    EXPECT_QZ_THROW(CQzInvalidValueException,
                    "Failed to GetTime, Date Status must be dateTime or date. Invalid Date Type: " +
                        value.GetTypeAsString() + ".",
                    value.GetTime());
  }
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "Failed to GetTime, Date Status must be dateTime or date. Invalid Date Type: "
                  "yearZero.",
                  CDateTime().GetTime());
  CDateTime time;
  time.SetTime(1, 2, 3);
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "Failed to GetTime, Date Status must be dateTime or date. Invalid Date Type: "
                  "time.",
                  time.GetTime());
}

TEST(DateTimeSystem, CountsSecondsOfFieldsThatNoDateHas) {
  const TimeZone zone(qztest::kNewYork);
  CDateTime value(2004, 1, 1, 0, 0, 0);
  value.SetMonth(0);  // carried to the December before
  EXPECT_EQ(value.GetTime(), 1072915200 - 31 * 86400);
  value.SetMonth(1);
  value.SetDay(32);
  EXPECT_EQ(value.GetTime(), 1072915200 + 31 * 86400);
  for (const short year : {short{-32768}, short{32767}}) {
    value.SetYear(year);
    value.SetMonth(255);
    value.SetDay(255);
    value.SetHour(255);
    EXPECT_EQ(CDateTime(value).GetTime(), value.GetTime());
    EXPECT_GE(value.GetDayOfWeek(), 1);
    EXPECT_LE(value.GetDayOfWeek(), 7);
  }
}

TEST(DateTimeSystem, TellsTheDayOfTheWeekInTheZoneOfTheProcess) {
  const struct {
    const char* zone;
    const char* text;
    int day;  // 1 is Sunday
  } cases[] = {
      {"UTC0", "2004-01-01T00:00:00", 5},
      {"UTC0", "2004-01-01T23:59:59", 5},
      {"UTC0", "2004-02-29", 1},
      {"UTC0", "2004-02-28", 7},
      {"UTC0", "1900-01-01", 2},
      {"UTC0", "2000-01-01", 7},
      {"UTC0", "1969-12-31", 4},
      {"UTC0", "0001-01-01", 2},
      {"UTC0", "9999-12-31", 6},
      {qztest::kNewYork, "2004-01-01T00:00:00", 4},
      {qztest::kNewYork, "2004-01-01T04:30:00", 4},
      {qztest::kNewYork, "2004-01-01T05:00:00", 5},
      {qztest::kNewYork, "2004-07-01T04:00:00", 5},  // summer: four hours
      {qztest::kNewYork, "2004-07-01T03:59:59", 4},
      {qztest::kNewYork, "1900-01-01", 1},
      {qztest::kBerlin, "1969-12-31T23:00:00", 5},
      {qztest::kBerlin, "1969-12-31T22:59:59", 4},
      {qztest::kBerlin, "2004-07-01T22:00:00", 6},  // summer: two hours
      {qztest::kBerlin, "2004-07-01T21:59:59", 5},
      {qztest::kFarEast, "2004-01-01T10:00:00", 6},
      {qztest::kFarEast, "2004-01-01", 5},
      {qztest::kFarWest, "2004-01-01T11:59:59", 4},
      {qztest::kFarWest, "2004-01-01T12:00:00", 5},
      {qztest::kIndia, "2004-01-01T18:30:00Z", 6},
      {qztest::kIndia, "2004-01-01T18:29:59Z", 5},
      // The offset of the value counts first.
      {"UTC0", "2004-01-01T00:00:00+14:00", 4},
      {qztest::kFarEast, "2004-01-01T00:00:00+14:00", 5},
  };
  for (const auto& c : cases) {
    const TimeZone zone(c.zone);
    EXPECT_EQ(int{Parse(c.text).GetDayOfWeek()}, c.day) << c.text << " " << c.zone;
  }
}

TEST(DateTimeSystem, HasNoDayOfTheWeekForOtherTypes) {
  for (const char* const text : {"2004-01", "2004", "---01", "--01", "--01-01"}) {
    const CDateTime value = Parse(text);
    EXPECT_QZ_THROW(CQzInvalidStateException,
                    "Failed to GetDayOfWeek. Invalid Date Type: " + value.GetTypeAsString() + ".",
                    value.GetDayOfWeek());
  }
  EXPECT_QZ_THROW(CQzInvalidStateException, "Failed to GetDayOfWeek. Invalid Date Type: yearZero.",
                  CDateTime().GetDayOfWeek());
}

TEST(DateTimeSystem, GivesItsFieldsAsASystemTime) {
  const TimeZone zone(qztest::kNewYork);
  const _SYSTEMTIME time = CDateTime("2004-01-01T04:30:15.123456789+14:00").GetAsSystemTime();
  EXPECT_EQ(time.wYear, 2004);
  EXPECT_EQ(time.wMonth, 1);
  EXPECT_EQ(time.wDayOfWeek, 3);  // 2003-12-31T14:30:15Z, and five hours less
  EXPECT_EQ(time.wDay, 1);
  EXPECT_EQ(time.wHour, 4);
  EXPECT_EQ(time.wMinute, 30);
  EXPECT_EQ(time.wSecond, 15);
  EXPECT_EQ(time.wMilliseconds, 123);
}

TEST(DateTimeSystem, GivesNoSystemTimeOfOtherTypes) {
  for (const char* const text : {"2004-01-01", "2004-01", "2004", "---01", "--01", "--01-01"}) {
    const CDateTime value = Parse(text);
    EXPECT_QZ_THROW(CQzInvalidValueException,
                    "Failed to GetAsSystemTime, Date Status must be dateTime. Invalid Date Type: " +
                        value.GetTypeAsString() + ".",
                    value.GetAsSystemTime());
  }
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "Failed to GetAsSystemTime, Date Status must be dateTime. Invalid Date Type: "
                  "yearZero.",
                  CDateTime().GetAsSystemTime());
}

TEST(DateTimeSystem, TakesSecondsSince1970InUtc) {
  const TimeZone zone(qztest::kNewYork);
  const struct {
    long long time;
    const char* text;
  } cases[] = {{0, "1970-01-01T00:00:00"},
               {-1, "1969-12-31T23:59:59"},
               {1088656200, "2004-07-01T04:30:00"},
               {1078012800, "2004-02-29T00:00:00"},
               {253402300799, "9999-12-31T23:59:59"},
               {-62135596800, "0001-01-01T00:00:00"},
               {-62167219201, "-0001-12-31T23:59:59"}};
  for (const auto& c : cases) {
    CDateTime value;
    value = c.time;
    EXPECT_EQ(value.ToString(), c.text);
    EXPECT_FALSE(value.IsUTC());
    EXPECT_EQ(value.GetTime(), c.time);
    EXPECT_EQ(CDateTime(c.time).ToString(), c.text);
  }
}

TEST(DateTimeSystem, RefusesSecondsOfYearsThatItDoesNotHave) {
  const struct {
    long long time;
    const char* message;
  } cases[] = {
      {253402300800, "Invalid Year [10000] (-9999 <= year <= 9999 && year != 0)"},
      {-62135596801, "Invalid Year [0] (-9999 <= year <= 9999 && year != 0)"},
      // These would be years of today if they were cut to 16 bits.
      {2068099084800 + 63158400, "Invalid Year [32767] (-9999 <= year <= 9999 && year != 0)"},
      {-2068099084800, "Invalid Year [-32768] (-9999 <= year <= 9999 && year != 0)"},
      {std::numeric_limits<long long>::max(),
       "Invalid Year [0] (-9999 <= year <= 9999 && year != 0)"},
      {std::numeric_limits<long long>::min(),
       "Invalid Year [0] (-9999 <= year <= 9999 && year != 0)"},
  };
  for (const auto& c : cases) {
    CDateTime value;
    EXPECT_QZ_THROW(CQzInvalidValueException, c.message, value = c.time);
    EXPECT_EQ(CDateTime(c.time).GetType(), CDateTime::dt_yearZero);
  }
}

TEST(DateTimeSystem, TakesAndGivesBackASystemTime) {
  const _SYSTEMTIME time = {2004, 2, 0, 29, 23, 59, 58, 999};
  const CDateTime value(time);
  EXPECT_EQ(value.ToString(), "2004-02-29T23:59:58.999");
  const TimeZone zone("UTC0");
  const _SYSTEMTIME again = value.GetAsSystemTime();
  EXPECT_EQ(again.wYear, 2004);
  EXPECT_EQ(again.wDayOfWeek, 0);
  EXPECT_EQ(again.wMilliseconds, 999);
  // The day of the week that comes in is not looked at, and years before 1 pass as signed ones.
  const CDateTime early("-0044-03-15T00:00:00");
  EXPECT_EQ(CDateTime(early.GetAsSystemTime()).ToString(), "-0044-03-15T00:00:00");
}

TEST(DateTimeSystem, RefusesASystemTimeThatDoesNotExist) {
  const struct {
    _SYSTEMTIME time;
    const char* message;
  } cases[] = {
      {{0, 0, 0, 0, 0, 0, 0, 0}, "Invalid Month [0] (1 <= month <= 12)"},
      {{2004, 257, 0, 1, 0, 0, 0, 0}, "Invalid Month [255] (1 <= month <= 12)"},
      {{2004, 1, 0, 257, 0, 0, 0, 0}, "Invalid Day [255] (1 <= day <= days in month"},
      {{2004, 1, 0, 1, 256, 0, 0, 0}, "Invalid Hour [255] (0 <= hour <= 23)"},
      {{2004, 1, 0, 1, 0, 256, 0, 0}, "Invalid Minute [255] (0 <= minute <= 59)"},
      {{2004, 1, 0, 1, 0, 0, 256, 0}, "Invalid Second [255] (0 <= second <= 59)"},
      {{2004, 1, 0, 1, 0, 0, 0, 1000}, "Invalid Milli-Second [1000] (0 <= milli <= 999)"},
      {{30827, 1, 0, 1, 0, 0, 0, 0}, "Invalid Year [30827] (-9999 <= year <= 9999 && year != 0)"},
  };
  for (const auto& c : cases) {
    CDateTime value;
    EXPECT_QZ_THROW(CQzInvalidValueException, c.message, value = c.time);
    EXPECT_EQ(CDateTime(c.time).ToString(), "Error: Date Not Set");
  }
}

TEST(DateTimeSystem, TakesAFileTime) {
  CDateTime value;
  value = FileTime(116444736000000000 + 10886562001239999);
  EXPECT_EQ(value.ToString(), "2004-07-01T04:30:00.123");
  EXPECT_EQ(CDateTime(FileTime(0)).ToString(), "1601-01-01T00:00:00");
}

TEST(DateTimeSystem, RefusesAFileTimeBeyondTheSystemOrTheYears) {
  CDateTime value(2004, 1, 1, 0, 0, 0);
  EXPECT_QZ_THROW(CQzInvalidValueException, "Failed to convert FILETIME to SYSTEMTIME",
                  value = FileTime(0x8000000000000000));
  EXPECT_EQ(value.ToString(), "2004-01-01T00:00:00");
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "Invalid Year [30828] (-9999 <= year <= 9999 && year != 0)",
                  value = FileTime(0x7FFFFFFFFFFFFFFF));
  EXPECT_EQ(CDateTime(FileTime(0x8000000000000000)).GetType(), CDateTime::dt_yearZero);
}

TEST(DateTimeSystem, AssignsATimeOfTheSystemToADateTimeAlone) {
  CDateTime date(2004, 1, 1);
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "Failed to copy CDateTime. Invalid Date Type: dateTime, expected: date.",
                  date = FileTime(0));
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "Failed to copy CDateTime. Invalid Date Type: dateTime, expected: date.",
                  date = _SYSTEMTIME({2004, 1, 0, 1, 0, 0, 0, 0}));
  EXPECT_EQ(date.ToString(), "2004-01-01");
}

TEST(DateTimeSystem, KnowsTheLocalTime) {
  const struct {
    const char* zone;
    long offset;
  } cases[] = {{"UTC0", 0},
               {qztest::kFarEast, 14 * 3600},
               {qztest::kFarWest, -12 * 3600},
               {qztest::kIndia, 19800}};
  for (const auto& c : cases) {
    const TimeZone zone(c.zone);
    const long long before = std::time(nullptr) + c.offset;
    const CDateTime now = CDateTime::GetTickCount();
    const long long after = std::time(nullptr) + c.offset;
    EXPECT_EQ(now.GetType(), CDateTime::dt_dateTime);
    EXPECT_FALSE(now.IsUTC());
    EXPECT_GE(now.GetTime(), before - 1) << c.zone;  // std::time may look at a coarser clock
    EXPECT_LE(now.GetTime(), after + 1) << c.zone;
    EXPECT_EQ(now.GetMicroSecond(), 0);
    EXPECT_EQ(now.GetNanoSecond(), 0);
  }
}
