#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

#include "qzxml/values/DateTime.h"
#include "qzxml/values/DateTimeSpan.h"
#include "tests/support/QzTest.h"
#include "tests/values/DateTimeCases.h"

using namespace QzXmlLib16;
using namespace qztest;

namespace {

CDateTime Date(const char* text) {
  CDateTime value;
  value.ParseXSDDate(text);
  return value;
}

CDateTime Time(const char* text) {
  CDateTime value;
  value.ParseXSDTime(text);
  return value;
}

CDateTimeSpan Span(const char* text) {
  CDateTimeSpan span;
  span.ParseXSDDuration(text);
  return span;
}

// The days of an addition, one month after the other, as appendix E has them.
struct Calendar {
  std::int16_t year;
  std::int64_t month;
  std::int64_t day;

  std::int64_t DaysOf() const {
    if (month < 1 || month > 12) return 31;
    const int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool isLeap = year % 400 == 0 || (year % 4 == 0 && year % 100 != 0);
    return month == 2 && isLeap ? 29 : days[month - 1];
  }

  void Add(std::int64_t rest) {
    while (rest != 0) {
      if (rest > 0) {
        const std::int64_t days = DaysOf();
        if (day + rest <= days) {
          day += rest;
          rest = 0;
        } else {
          rest -= days + 1 - day;
          day = 1;
          ++month;
        }
      } else if (day - 1 < -rest) {
        rest += day;
        --month;
        day = DaysOf();
      } else {
        day += rest;
        rest = 0;
      }
      if (month == 0) {
        year = static_cast<std::int16_t>(year - 1);
        month = 12;
      } else if (month == 13) {
        year = static_cast<std::int16_t>(year + 1);
        month = 1;
      }
    }
  }
};

void ExpectDays(int year, int month, int day, std::int64_t days) {
  SCOPED_TRACE(std::to_string(year) + "-" + std::to_string(month) + "-" + std::to_string(day) +
               " and " + std::to_string(days) + " days");
  Calendar expected{static_cast<std::int16_t>(year), month, day};
  expected.Add(days);
  CDateTimeSpan span;
  span.SetDays(static_cast<std::uint32_t>(std::abs(days)));
  if (days < 0) span.Negate();
  const CDateTime sum = MakeDateTime({year, month, day, 0, 0, 0, 0, 0, 0}) + span;
  EXPECT_EQ(FieldsText(sum),
            FieldsText(DateFieldsCase{expected.year, static_cast<int>(expected.month),
                                      static_cast<int>(expected.day), 0, 0, 0, 0, 0, 0}));
}

}  // namespace

// ---- Addition ----

TEST(DateTimeArithmetic, AddsAsAppendixEDoes) {
  for (const AdditionCase& c : kAdditions) {
    const CDateTimeSpan span = MakeSpan(c.span);
    EXPECT_EQ(FieldsText(MakeDateTime(c.start) + span), FieldsText(c.sum))
        << FieldsText(c.start) << "and " << span.ToString();
  }
}

TEST(DateTimeArithmetic, AddsMoreThanSixtyFourBitsHold) {
  for (const TimeAdditionCase& c : kTimeAdditions) {
    const CDateTimeSpan span = MakeSpan(c.span);
    const CDateTime sum = CDateTime(2000, 1, 1, 12, 34, 56) + span;
    EXPECT_EQ(int{sum.GetHour()}, c.sum.hour) << span.ToString();
    EXPECT_EQ(int{sum.GetMinute()}, c.sum.minute) << span.ToString();
    EXPECT_EQ(int{sum.GetSecond()}, c.sum.second) << span.ToString();
  }
}

TEST(DateTimeArithmetic, IsExactWhileNumbersAreSmall) {
  CDateTimeSpan span;
  for (std::uint32_t seconds = 0; seconds < 16000000; seconds += seconds < 2000 ? 1 : 1019) {
    span.SetSeconds(seconds);
    CDateTime sum(2000, 1, 1, 0, 0, 0);
    sum += span;
    ASSERT_EQ(sum.GetTime(), 946684800 + static_cast<long long>(seconds));
    sum -= span;
    ASSERT_EQ(sum.GetTime(), 946684800);
    sum -= span;
    ASSERT_EQ(sum.GetTime(), 946684800 - static_cast<long long>(seconds));
  }
}

TEST(DateTimeArithmetic, DoesNotPinTheDay) {
  const CDateTime sum = Date("2000-03-31") + Span("P1M");
  EXPECT_EQ(sum.GetMonth(), 4);
  EXPECT_EQ(sum.GetDay(), 31);
  EXPECT_EQ(sum.ToString(), "2000-04-31");
}

TEST(DateTimeArithmetic, CrossesToAYearZero) {
  CDateTime value = Date("0001-01-01");
  value -= Span("P1D");
  EXPECT_EQ(value.ToString(), "0000-12-31");
  EXPECT_EQ((value + Span("P1D")).ToString(), "0001-01-01");
  EXPECT_EQ((value - Span("P1Y")).ToString(), "-0001-12-31");
}

TEST(DateTimeArithmetic, TakesAwayWhatANegativeSpanAdds) {
  const CDateTime start(2004, 3, 1, 0, 0, 0);
  CDateTime added = start;
  added.AddDateTimeSpan(Span("-PT1S"));
  EXPECT_EQ(added.ToString(), "2004-02-29T23:59:59");
  EXPECT_EQ((start - Span("PT1S")).ToString(), "2004-02-29T23:59:59");
  EXPECT_EQ((start + Span("PT1S").GetAsNegative()).ToString(), "2004-02-29T23:59:59");
  EXPECT_EQ((start - Span("-PT1S")).ToString(), "2004-03-01T00:00:01");
  CDateTime sum = start;
  sum += Span("P1Y1M1DT1H1M1.001S");
  EXPECT_EQ(sum.ToString(), "2005-04-02T01:01:01.001");
  sum -= Span("P1Y1M1DT1H1M1.001S");
  EXPECT_EQ(sum.ToString(), "2004-03-01T00:00:00");
}

TEST(DateTimeArithmetic, KeepsTheZone) {
  EXPECT_EQ((CDateTime("2004-01-01T23:00:00+14:00") + Span("PT2H")).ToString(),
            "2004-01-02T01:00:00+14:00");
  EXPECT_EQ((CDateTime("2004-01-01T23:00:00Z") + Span("PT2H")).ToString(), "2004-01-02T01:00:00Z");
}

TEST(DateTimeArithmetic, DifferencesAreEmpty) {
  const CDateTimeSpan span = CDateTime(2004, 1, 1) - CDateTime(2003, 1, 1);
  EXPECT_EQ(span.ToString(), "P");
  EXPECT_FALSE(span.IsNegative());
}

TEST(DateTimeArithmetic, OfATimeShowsTheTimeAlone) {
  CDateTime value = Time("23:00:00");
  value += Span("PT90M");
  EXPECT_EQ(value.GetType(), CDateTime::dt_time);
  EXPECT_EQ(value.ToString(), "00:30:00");
  value -= Span("PT45M");
  EXPECT_EQ(value.ToString(), "23:45:00");
}

TEST(DateTimeArithmetic, OfAGMonthDayOrGYearGoesByItsHiddenFields) {
  // A gMonthDay lies in the year 0 here, which has a 29 February.
  EXPECT_EQ((Date("--02-28") + Span("P1D")).ToString(), "--02-29");
  EXPECT_EQ((Date("--12-31") + Span("P1D")).ToString(), "--01-01");
  EXPECT_EQ((Date("--01-31") + Span("P1M")).ToString(), "--02-31");
  // The month that a gYear lacks is taken back to the December before.
  EXPECT_EQ((Date("2004") + Span("P0D")).ToString(), "2003");
  EXPECT_EQ((Date("2004") + Span("P1Y")).ToString(), "2004");
  EXPECT_EQ((Date("2004-05") + Span("P1M")).ToString(), "2004-06");
}

TEST(DateTimeArithmetic, LongSpansGiveWhatMonthAfterMonthGives) {
  for (const std::int64_t days : {1, 30, 31, 364, 366, 146096, 146097, 146098, 292194, 300000}) {
    for (const int sign : {1, -1}) {
      ExpectDays(2004, 2, 29, sign * days);
      ExpectDays(2001, 1, 1, sign * days);
      ExpectDays(1999, 12, 31, sign * days);
      ExpectDays(32767, 12, 31, sign * days);
      ExpectDays(-32768, 1, 1, sign * days);
    }
  }
}

TEST(DateTimeArithmetic, SpansAroundAllYearsGiveWhatMonthAfterMonthGives) {
  // 23,936,532 are the days of all years that 16 bits can hold.
  for (const std::int64_t days : {23936531, 23936532, 23936533, 30000000}) {
    ExpectDays(2004, 2, 29, days);
    ExpectDays(2004, 2, 29, -days);
    ExpectDays(32500, 3, 1, days);
    ExpectDays(-32500, 2, 28, -days);
  }
}

// Cycles of 400 years end where the years of 16 bits do, and begin again behind that.
TEST(DateTimeArithmetic, SpansOverTheLastYearGiveWhatMonthAfterMonthGives) {
  for (const std::int64_t days : {366, 146097, 400000, 12000000}) {
    for (const int year : {32767, 32766, 32367, 32366, 31000}) {
      ExpectDays(year, 1, 1, days);
      ExpectDays(year, 3, 1, days);
      ExpectDays(-1 - year, 12, 31, -days);
      ExpectDays(-1 - year, 1, 31, -days);
    }
  }
}

TEST(DateTimeArithmetic, DaysThatDoNotExistGiveWhatMonthAfterMonthGives) {
  for (const int day : {0, 1, 15, 30, 31, 32, 33, 100, 255}) {
    for (const int month : {1, 2, 4, 11, 12}) {
      for (const std::int64_t days :
           {1,   2,   27,  28,  29,  30,  31,     32,     60,     222,
            223, 254, 255, 256, 257, 400, 146096, 146097, 146098, 300000}) {
        ExpectDays(2003, month, day, days);
        ExpectDays(2003, month, day, -days);
        ExpectDays(32767, month, day, days);
        ExpectDays(-32768, month, day, -days);
      }
    }
  }
}

TEST(DateTimeArithmetic, AnyDayAndAnyLengthGiveWhatMonthAfterMonthGives) {
  std::mt19937 random(20040229);
  for (int i = 0; i < 300; ++i) {
    const int year = static_cast<std::int16_t>(random());
    const int month = static_cast<int>(random() % 12) + 1;
    const int day = static_cast<int>(random() % 34);
    const auto days = static_cast<std::int64_t>(random() >> random() % 32) % 3000000;
    ExpectDays(year, month, day, random() % 2 == 0 ? days : -days);
  }
}

TEST(DateTimeArithmetic, TheLongestSpanTakesNoTime) {
  CDateTimeSpan span;
  span.SetDays(std::numeric_limits<std::uint32_t>::max());
  // 179 times the 23,936,532 days of all years of 16 bits, 70 times the 146,097 days of 400 years,
  // and 101,277 days, which lead from 2000-01-01 to 2277-04-15.
  CDateTime value(2000, 1, 1, 0, 0, 0);
  value += span;
  EXPECT_EQ(FieldsText(value), "30277 4 15 0 0 0 0 0 0 ");
  for (int i = 0; i < 200; ++i) value += span;
  for (int i = 0; i < 200; ++i) value -= span;
  EXPECT_EQ(FieldsText(value), "30277 4 15 0 0 0 0 0 0 ");
  // Months that do not exist are as fast.
  span.SetDateTimeSpan(0, 4294967295U, 4294967295U, 4294967295U, 18446744073709551615U,
                       18446744073709551615U);
  for (int i = 0; i < 100; ++i) {
    value += span;
    value -= span;
  }
}

// ---- Zones ----

TEST(DateTimeArithmetic, NormalizesToUtc) {
  for (const NormalizeCase& c : kNormalized) {
    EXPECT_EQ(CDateTime(c.text).GetNormalized().ToString(), c.normalized) << c.text;
  }
}

TEST(DateTimeArithmetic, NormalizesTheExampleAcrossTheYear) {
  const CDateTime value = CDateTime("2004-01-01T12:00:00+14:00").GetNormalized();
  EXPECT_EQ(value.ToString(), "2003-12-31T22:00:00+00:00");
  EXPECT_TRUE(value.HasTimeZone());
}

TEST(DateTimeArithmetic, NormalizesNothingWithoutAnOffset) {
  EXPECT_EQ(CDateTime("2004-01-01T12:00:00Z").GetNormalized().ToString(), "2004-01-01T12:00:00Z");
  EXPECT_EQ(CDateTime("2004-01-01T12:00:00").GetNormalized().ToString(), "2004-01-01T12:00:00");
  EXPECT_EQ(CDateTime().GetNormalized().GetType(), CDateTime::dt_yearZero);
}

TEST(DateTimeArithmetic, NormalizingKeepsTheType) {
  const CDateTime date = Date("2004-01-01+05:00").GetNormalized();
  EXPECT_EQ(date.GetType(), CDateTime::dt_date);
  EXPECT_EQ(date.ToString(), "2003-12-31+00:00");
  // The hour that the date does not show is there.
  EXPECT_QZ_THROW(CQzInvalidStateException, "Failed to GetHour. Invalid Date Type: date.",
                  date.GetHour());
  EXPECT_EQ((date + Span("PT5H")).ToString(), "2004-01-01+00:00");
  const CDateTime time = Time("02:00:00+05:00").GetNormalized();
  EXPECT_EQ(time.GetType(), CDateTime::dt_time);
  EXPECT_EQ(time.ToString(), "21:00:00+00:00");
}

// ---- Order ----

TEST(DateTimeArithmetic, ComparesZonedAndOther) {
  for (const CompareCase& c : kComparisons) {
    EXPECT_EQ(CDateTime(c.left).CompareTo(CDateTime(c.right)), c.result)
        << c.left << " and " << c.right;
  }
}

TEST(DateTimeArithmetic, ComparesValuesOfOtherTypes) {
  constexpr auto kEqual = CDateTime::dtc_equal;
  constexpr auto kLess = CDateTime::dtc_less;
  constexpr auto kGreater = CDateTime::dtc_greater;
  constexpr auto kIndeterminate = CDateTime::dtc_indeterminate;
  const CDateTime none;
  const struct {
    CDateTime left;
    CDateTime right;
    CDateTime::DTCompareResult result;
  } cases[] = {
      {Date("2004"), Date("2005"), kLess},
      {Date("2005"), Date("2004"), kGreater},
      {Date("2004"), Date("2004"), kEqual},
      {Date("2004-02"), Date("2004-01"), kGreater},
      {Date("--02"), Date("--03"), kLess},
      {Date("---02"), Date("---02"), kEqual},
      {Date("--02-29"), Date("--03-01"), kLess},
      {Date("2004-01-01"), Date("2004-01-02"), kLess},
      {Time("12:00:00"), Time("12:00:00.000000001"), kLess},
      {Time("12:00:00"), Time("11:59:59.999999999"), kGreater},
      {Time("12:00:00"), Time("12:01:00"), kLess},
      // Years of different sign.
      {Date("-0001"), Date("0001"), kIndeterminate},
      {Date("0001-01-01"), Date("-0001-01-01"), kIndeterminate},
      {Date("-0002"), Date("-0001"), kLess},
      // A field that one type lacks is -1 there: against a field above 0 nothing is known, against
      // 0 it is less, and against another -1 or a year -1 equal.
      {Date("2004"), Date("2004-01"), kIndeterminate},
      {Date("2004-01-01"), CDateTime(2004, 1, 1, 0, 0, 0), kLess},
      {CDateTime(2004, 1, 1, 0, 0, 0), Date("2004-01-01"), kGreater},
      {Date("2004-01-01"), CDateTime(2004, 1, 1, 1, 0, 0), kIndeterminate},
      {Date("2004"), Date("---04"), kIndeterminate},
      {Date("-0001"), none, kEqual},
      {Date("-0002"), none, kLess},
      {Time("00:00:00"), none, kGreater},
      {Time("00:00:01"), Date("---01"), kIndeterminate},
      {none, none, kEqual},
      {none, CDateTime(CDateTime::dt_date), kLess},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.left.CompareTo(c.right), c.result)
        << c.left.ToString() << " and " << c.right.ToString();
  }
}

TEST(DateTimeArithmetic, ComparesZonesOfDatesAndTimes) {
  EXPECT_EQ(Date("2004-01-01Z").CompareTo(Date("2004-01-01+00:00")), CDateTime::dtc_equal);
  EXPECT_EQ(Date("2004-01-01").CompareTo(Date("2004-01-01Z")), CDateTime::dtc_indeterminate);
  EXPECT_EQ(Date("2004-01-01Z").CompareTo(Date("2004-01-01")), CDateTime::dtc_indeterminate);
  // Dates are compared by the day in which they begin in UTC.
  EXPECT_EQ(Date("2004-01-01+01:00").CompareTo(Date("2003-12-31Z")), CDateTime::dtc_equal);
  EXPECT_EQ(Date("2004-01-01-01:00").CompareTo(Date("2004-01-01Z")), CDateTime::dtc_equal);
  EXPECT_EQ(Date("2004-01-02Z").CompareTo(Date("2004-01-01")), CDateTime::dtc_greater);
  EXPECT_EQ(Date("2003-12-30Z").CompareTo(Date("2004-01-01")), CDateTime::dtc_less);
  EXPECT_EQ(Date("2003-12-31Z").CompareTo(Date("2004-01-01")), CDateTime::dtc_indeterminate);
  // Times have no day that midnight could change.
  EXPECT_EQ(Time("02:00:00+05:00").CompareTo(Time("21:00:00Z")), CDateTime::dtc_equal);
  EXPECT_EQ(Time("12:00:00Z").CompareTo(Time("12:00:00")), CDateTime::dtc_less);
  EXPECT_EQ(Time("12:00:00").CompareTo(Time("12:00:00Z")), CDateTime::dtc_greater);
  EXPECT_EQ(Time("20:00:00Z").CompareTo(Time("15:00:00")), CDateTime::dtc_greater);
  EXPECT_EQ(Time("05:00:00Z").CompareTo(Time("20:00:00")), CDateTime::dtc_less);
  EXPECT_EQ(Time("10:00:00Z").CompareTo(Time("20:00:00")), CDateTime::dtc_indeterminate);
}

// 14 hours back from 31 April are 30 April, 10:00, and 14 hours on from there are 1 May.
TEST(DateTimeArithmetic, TheWindowGoesBackFromWhereItsFirstStepCame) {
  CDateTime plain(2004, 4, 30, 0, 0, 0);
  plain.SetDay(31);
  const CDateTime zoned("2004-05-01T00:00:00Z");
  EXPECT_EQ(zoned.CompareTo(plain), CDateTime::dtc_indeterminate);
  EXPECT_EQ(plain.CompareTo(zoned), CDateTime::dtc_indeterminate);
  const CDateTime later("2004-05-01T00:00:01Z");
  EXPECT_EQ(later.CompareTo(plain), CDateTime::dtc_greater);
  EXPECT_EQ(plain.CompareTo(later), CDateTime::dtc_less);
  EXPECT_EQ(plain.ToString(), "2004-04-31T00:00:00");
}

TEST(DateTimeArithmetic, OperatorsFollowTheOrder) {
  const CDateTime early(2004, 1, 1), late(2004, 1, 2), same(2004, 1, 1);
  CDateTime unknown(2004, 1, 1);
  unknown.SetUTC();
  EXPECT_TRUE(early == same);
  EXPECT_FALSE(early == late);
  EXPECT_FALSE(early == unknown);
  EXPECT_FALSE(early != same);
  EXPECT_TRUE(early != late);
  EXPECT_TRUE(early != unknown);
  EXPECT_TRUE(early < late);
  EXPECT_FALSE(late < early);
  EXPECT_FALSE(early < same);
  EXPECT_FALSE(early < unknown);
  EXPECT_TRUE(early <= late);
  EXPECT_TRUE(early <= same);
  EXPECT_FALSE(late <= early);
  EXPECT_FALSE(early <= unknown);
  EXPECT_TRUE(late > early);
  EXPECT_FALSE(early > late);
  EXPECT_FALSE(early > unknown);
  EXPECT_TRUE(late >= early);
  EXPECT_TRUE(early >= same);
  EXPECT_FALSE(early >= late);
  EXPECT_FALSE(early >= unknown);
}
