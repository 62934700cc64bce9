#include <limits>
#include <string>
#include <type_traits>

#include "qzxml/values/DateTimeSpan.h"
#include "tests/support/QzTest.h"
#include "tests/values/DateTimeCases.h"

using namespace QzXmlLib16;

namespace {

constexpr std::uint32_t kMost32 = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint64_t kMost64 = std::numeric_limits<std::uint64_t>::max();

CDateTimeSpan Parse(const char* text) {
  CDateTimeSpan span;
  span.ParseXSDDuration(text);
  return span;
}

std::string Message(const std::string& text) {
  return "Invalid XSD Duration [" + text + "] expected [-]P[nY][nM][nD][T[nH][nM][nS.ff]]";
}

// All fields, in their order.
std::string Fields(const CDateTimeSpan& span) {
  std::string text = span.IsNegative() ? "-" : "+";
  const std::uint64_t fields[] = {
      span.GetYears(),        span.GetMonths(),       span.GetDays(),
      span.GetHours(),        span.GetMinutes(),      span.GetSeconds(),
      span.GetMilliSeconds(), span.GetMicroSeconds(), span.GetNanoSeconds()};
  for (const std::uint64_t field : fields) text += " " + std::to_string(field);
  return text;
}

}  // namespace

static_assert(std::has_virtual_destructor_v<CDateTimeSpan>);

TEST(DateTimeSpan, IsNoTimeAtFirst) {
  EXPECT_EQ(Fields(CDateTimeSpan()), "+ 0 0 0 0 0 0 0 0 0");
  EXPECT_EQ(CDateTimeSpan().ToString(), "P");
}

TEST(DateTimeSpan, TakesThreeListsOfFields) {
  EXPECT_EQ(Fields(CDateTimeSpan(1, 2, 3)), "+ 0 0 0 1 2 3 0 0 0");
  EXPECT_EQ(Fields(CDateTimeSpan(1, 2, 3, 4, 5, 6)), "+ 1 2 3 4 5 6 0 0 0");
  EXPECT_EQ(Fields(CDateTimeSpan(1, 2, 3, 4, 5, 6, 7, 8, 9)), "+ 1 2 3 4 5 6 7 8 9");
  CDateTimeSpan span;
  span.Negate();
  span.SetDateTimeSpan(1, 2, 3, 4, 5, 6, 7, 8, 9);
  EXPECT_EQ(Fields(span), "+ 1 2 3 4 5 6 7 8 9");
  span.Negate();
  span.SetDateTimeSpan(1, 2, 3, 4, 5, 6);
  EXPECT_EQ(Fields(span), "+ 1 2 3 4 5 6 0 0 0");
  span.SetMicroSeconds(8);
  span.Negate();
  span.SetDateTimeSpan(1, 2, 3);
  EXPECT_EQ(Fields(span), "+ 0 0 0 1 2 3 0 0 0");
}

TEST(DateTimeSpan, StoresItsFieldsInFullWidth) {
  CDateTimeSpan span;
  span.SetYears(65535);
  span.SetMonths(kMost32);
  span.SetDays(kMost32 - 1);
  span.SetHours(kMost32 - 2);
  span.SetMinutes(kMost64);
  span.SetSeconds(kMost64 - 1);
  span.SetMilliSeconds(65534);
  span.SetMicroSeconds(65533);
  span.SetNanoSeconds(65532);
  EXPECT_EQ(Fields(span),
            "+ 65535 4294967295 4294967294 4294967293 18446744073709551615 18446744073709551614 "
            "65534 65533 65532");
  span.Negate();
  EXPECT_EQ(span.ToString(),
            "-P65535Y4294967295M4294967294DT4294967293H18446744073709551615M"
            "18446744073709551614.655346553365532S");
  const CDateTimeSpan copy(span);
  EXPECT_EQ(Fields(copy), Fields(span));
  CDateTimeSpan assigned(1, 2, 3);
  assigned = span;
  EXPECT_EQ(Fields(assigned), Fields(span));
}

TEST(DateTimeSpan, KeepsASignOfItsOwn) {
  CDateTimeSpan span(1, 0, 0);
  EXPECT_FALSE(span.IsNegative());
  const CDateTimeSpan negative = span.GetAsNegative();
  EXPECT_FALSE(span.IsNegative());
  EXPECT_TRUE(negative.IsNegative());
  EXPECT_EQ(Fields(negative), "- 0 0 0 1 0 0 0 0 0");
  EXPECT_FALSE(negative.GetAsNegative().IsNegative());
  span.Negate();
  EXPECT_EQ(span.ToString(), "-PT1H");
  span.Negate();
  EXPECT_EQ(span.ToString(), "PT1H");
  CDateTimeSpan none;
  none.Negate();
  EXPECT_TRUE(none.IsNegative());
  EXPECT_EQ(none.ToString(), "-P");
}

// ---- Text ----

TEST(DateTimeSpan, ReadsDurations) {
  const struct {
    const char* text;
    const char* fields;
    const char* canonical;
  } cases[] = {
      {"P1Y2M3DT4H5M6.789S", "+ 1 2 3 4 5 6 789 0 0", "P1Y2M3DT4H5M6.789S"},
      {"-P1D", "- 0 0 1 0 0 0 0 0 0", "-P1D"},
      {"P1Y", "+ 1 0 0 0 0 0 0 0 0", "P1Y"},
      {"P1M", "+ 0 1 0 0 0 0 0 0 0", "P1M"},
      {"PT1M", "+ 0 0 0 0 1 0 0 0 0", "PT1M"},
      {"P1MT1M", "+ 0 1 0 0 1 0 0 0 0", "P1MT1M"},
      {"PT1H", "+ 0 0 0 1 0 0 0 0 0", "PT1H"},
      {"PT1H2M", "+ 0 0 0 1 2 0 0 0 0", "PT1H2M"},
      {"PT1H2S", "+ 0 0 0 1 0 2 0 0 0", "PT1H2S"},
      {"PT1S", "+ 0 0 0 0 0 1 0 0 0", "PT1S"},
      {"P90DT90M", "+ 0 0 90 0 90 0 0 0 0", "P90DT90M"},
      {"PT1.5S", "+ 0 0 0 0 0 1 500 0 0", "PT1.5S"},
      {"PT0.000001S", "+ 0 0 0 0 0 0 0 1 0", "PT0.000001S"},
      {"PT1.123456S", "+ 0 0 0 0 0 1 123 456 0", "PT1.123456S"},
      {"PT1H.5S", "+ 0 0 0 1 0 0 500 0 0", "PT1H0.5S"},
      {"PT1M1.05S", "+ 0 0 0 0 1 1 50 0 0", "PT1M1.05S"},
      {"P007Y", "+ 7 0 0 0 0 0 0 0 0", "P7Y"},
      // Zero in words is read; it is written without any.
      {"P0Y", "+ 0 0 0 0 0 0 0 0 0", "P"},
      {"-PT0S", "- 0 0 0 0 0 0 0 0 0", "-P"},
      {"PY", "+ 0 0 0 0 0 0 0 0 0", "P"},
      {"PTS", "+ 0 0 0 0 0 0 0 0 0", "P"},
      {"PDT1S", "+ 0 0 0 0 0 1 0 0 0", "PT1S"},
      // A point without digits, with and without what follows it.
      {"PT1.S", "+ 0 0 0 0 0 1 0 0 0", "PT1S"},
      {"PT1.", "+ 0 0 0 0 0 1 0 0 0", "PT1S"},
      {"PT.", "+ 0 0 0 0 0 0 0 0 0", "P"},
      // Years stand anywhere, and lead back to the beginning.
      {"P1M2Y", "+ 2 1 0 0 0 0 0 0 0", "P2Y1M"},
      {"P1Y2Y", "+ 2 0 0 0 0 0 0 0 0", "P2Y"},
      {"PT1S2Y", "+ 2 0 0 0 0 1 0 0 0", "P2YT1S"},
      {"PT1.5S2Y3M", "+ 2 3 0 0 0 1 500 0 0", "P2Y3MT1.5S"},
      {"PT1H2Y3DT4H", "+ 2 0 3 4 0 0 0 0 0", "P2Y3DT4H"},
      {"PT1.5SYT1.5S", "+ 0 0 0 0 0 1 1000 0 0", "PT1.1S"},
      // A number in front of the T is dropped.
      {"P5T1S", "+ 0 0 0 0 0 1 0 0 0", "PT1S"},
      // Of the nanoseconds the last digit alone is kept.
      {"PT1.123456789S", "+ 0 0 0 0 0 1 123 456 9", "PT1.123456009S"},
      {"PT1.1234567S", "+ 0 0 0 0 0 1 123 456 7", "PT1.123456007S"},
      {"PT1.12345678S", "+ 0 0 0 0 0 1 123 456 8", "PT1.123456008S"},
      {"PT1.000000100S", "+ 0 0 0 0 0 1 0 0 0", "PT1S"},
      {"PT1.000000001S", "+ 0 0 0 0 0 1 0 0 1", "PT1.000000001S"},
      // Numbers are cut to the width of their field, and at 64 bits before that.
      {"P65536Y", "+ 0 0 0 0 0 0 0 0 0", "P"},
      {"P65537Y4294967297M4294967298DT4294967299H", "+ 1 1 2 3 0 0 0 0 0", "P1Y1M2DT3H"},
      {"PT18446744073709551615M18446744073709551616S", "+ 0 0 0 0 18446744073709551615 0 0 0 0",
       "PT18446744073709551615M"},
      {"PT18446744073709551617S", "+ 0 0 0 0 0 1 0 0 0", "PT1S"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    const CDateTimeSpan span = Parse(c.text);
    EXPECT_EQ(Fields(span), c.fields);
    EXPECT_EQ(span.ToString(), c.canonical);
  }
}

TEST(DateTimeSpan, RefusesWhatIsNoDuration) {
  CDateTimeSpan span;
  EXPECT_QZ_THROW(CQzInvalidValueException, "Invalid XSD Duration (Null String)",
                  span.ParseXSDDuration(nullptr));
  EXPECT_QZ_THROW(CQzInvalidValueException, "Invalid XSD Duration (Empty String)",
                  span.ParseXSDDuration(""));
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "Invalid XSD Duration [x] expected [-]P[nY][nM][nD][T[nH][nM][nS.ff]]",
                  span.ParseXSDDuration("x"));
  const char* const texts[] = {
      "-",      "P",       "-P",      "PT",    "P1YT",   "--P1D",   "P-1D",    "+P1D",     "1Y",
      "p1Y",    " P1Y",    "P1Y ",    "P1",    "P1Y2",   "P1X",     "P1y",     "P1D1M",    "P1D1D",
      "P1M1M",  "P1H",     "P1S",     "P.5S",  "P1.5D",  "PT1D",    "PT1M1H",  "PT1H1H",   "PT1M1M",
      "PT1S1M", "PT1S1S",  "PT1S1H",  "PTT1S", "PT1ST",  "PT1.5",   "PT1.5M",  "PT1.5.5S", "PT1.x",
      "PT1.5s", "P1YT1S1", "PT1S.5S", "P1,5D", "PT1H2D", "P1DT1DY", "PT1.5SS", "PT1.5S1M"};
  for (const char* const text : texts) {
    EXPECT_QZ_THROW(CQzInvalidValueException, Message(text), span.ParseXSDDuration(text));
  }
}

TEST(DateTimeSpan, RefusesATenthDigitBehindThePoint) {
  CDateTimeSpan span;
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "Invalid XSD Duration [PT1.1234567890S] Fraction part too long",
                  span.ParseXSDDuration("PT1.1234567890S"));
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "Invalid XSD Duration [PT1.0000000000x] Fraction part too long",
                  span.ParseXSDDuration("PT1.0000000000x"));
}

TEST(DateTimeSpan, AFailedParseKeepsWhatWasReadSoFar) {
  CDateTimeSpan span(9, 9, 9, 9, 9, 9, 9, 9, 9);
  EXPECT_QZ_THROW(CQzInvalidValueException, Message("-P1Y2M3Dx"),
                  span.ParseXSDDuration("-P1Y2M3Dx"));
  EXPECT_EQ(Fields(span), "- 1 2 3 0 0 0 0 0 0");
  // The stage that a designator may not follow leaves its field alone.
  EXPECT_QZ_THROW(CQzInvalidValueException, Message("P1D2M"), span.ParseXSDDuration("P1D2M"));
  EXPECT_EQ(Fields(span), "+ 0 0 1 0 0 0 0 0 0");
  EXPECT_QZ_THROW(CQzInvalidValueException, Message("P1D2D"), span.ParseXSDDuration("P1D2D"));
  EXPECT_EQ(Fields(span), "+ 0 0 1 0 0 0 0 0 0");
  EXPECT_QZ_THROW(CQzInvalidValueException, Message("PT1H2H"), span.ParseXSDDuration("PT1H2H"));
  EXPECT_EQ(Fields(span), "+ 0 0 0 1 0 0 0 0 0");
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "Invalid XSD Duration [PT1.1234567890S] Fraction part too long",
                  span.ParseXSDDuration("PT1.1234567890S"));
  EXPECT_EQ(Fields(span), "+ 0 0 0 0 0 1 123 456 9");
  EXPECT_QZ_THROW(CQzInvalidValueException, "Invalid XSD Duration (Empty String)",
                  span.ParseXSDDuration(""));
  EXPECT_EQ(Fields(span), "+ 0 0 0 0 0 0 0 0 0");
}

TEST(DateTimeSpan, ALongTextIsReadOrFailsAsAWhole) {
  const std::string zeros(200000, '0');
  EXPECT_EQ(Parse(("P" + zeros + "5Y").c_str()).GetYears(), 5);
  CDateTimeSpan span;
  EXPECT_QZ_THROW(CQzInvalidValueException, Message("P" + zeros),
                  span.ParseXSDDuration(("P" + zeros).c_str()));
}

TEST(DateTimeSpan, WritesTheGroupsOfAFraction) {
  const struct {
    unsigned short milli;
    unsigned short micro;
    unsigned short nano;
    const char* text;
  } cases[] = {{500, 0, 0, "PT0.5S"},       {50, 0, 0, "PT0.05S"},
               {5, 0, 0, "PT0.005S"},       {0, 500, 0, "PT0.0005S"},
               {0, 0, 500, "PT0.0000005S"}, {1, 0, 1, "PT0.001000001S"},
               {100, 200, 0, "PT0.1002S"},  {100, 200, 300, "PT0.1002003S"},
               {0, 0, 1, "PT0.000000001S"}, {999, 999, 999, "PT0.999999999S"}};
  for (const auto& c : cases) {
    const CDateTimeSpan span(0, 0, 0, 0, 0, 0, c.milli, c.micro, c.nano);
    EXPECT_EQ(span.ToString(), c.text);
  }
}

TEST(DateTimeSpan, DoesNotReadBackNoTime) {
  CDateTimeSpan span;
  EXPECT_QZ_THROW(CQzInvalidValueException, Message("P"),
                  span.ParseXSDDuration(CDateTimeSpan().ToString().c_str()));
}

// ---- Order ----

TEST(DateTimeSpan, ComparesByFourDates) {
  for (const qztest::CompareCase& c : qztest::kDurationComparisons) {
    EXPECT_EQ(Parse(c.left).CompareTo(Parse(c.right)), c.result) << c.left << " and " << c.right;
    const CDateTime::DTCompareResult mirrored =
        c.result == CDateTime::dtc_less      ? CDateTime::dtc_greater
        : c.result == CDateTime::dtc_greater ? CDateTime::dtc_less
                                             : c.result;
    EXPECT_EQ(Parse(c.right).CompareTo(Parse(c.left)), mirrored) << c.right << " and " << c.left;
  }
}

TEST(DateTimeSpan, OrdersTheExamplesOfXsdPart2Section3_2_6_2) {
  constexpr auto kLess = CDateTime::dtc_less;
  constexpr auto kGreater = CDateTime::dtc_greater;
  constexpr auto kUnknown = CDateTime::dtc_indeterminate;
  const struct {
    const char* left;
    const char* right;
    CDateTime::DTCompareResult result;
  } cases[] = {{"P1Y", "P364D", kGreater}, {"P1Y", "P365D", kUnknown}, {"P1Y", "P366D", kUnknown},
               {"P1Y", "P367D", kLess},    {"P1M", "P27D", kGreater},  {"P1M", "P28D", kUnknown},
               {"P1M", "P29D", kUnknown},  {"P1M", "P30D", kUnknown},  {"P1M", "P31D", kUnknown},
               {"P1M", "P32D", kLess},     {"P5M", "P149D", kGreater}, {"P5M", "P150D", kUnknown},
               {"P5M", "P151D", kUnknown}, {"P5M", "P152D", kUnknown}, {"P5M", "P153D", kUnknown},
               {"P5M", "P154D", kLess}};
  for (const auto& c : cases) {
    EXPECT_EQ(Parse(c.left).CompareTo(Parse(c.right)), c.result) << c.left << " and " << c.right;
  }
}

// Months of which one of the points alone makes the fewest or the most days: 73 are 2218 from
// 1697-02-01 and 2220, 2223 and 2223 from the others, 20 are 611 from 1903-03-01 and at most 609,
// 14 are 428 from 1903-07-01 and at most 427.
TEST(DateTimeSpan, EachPointCountsByItsOwnYearAndMonth) {
  const struct {
    const char* months;
    const char* days;
    CDateTime::DTCompareResult result;
  } cases[] = {{"P73M", "P2217D", CDateTime::dtc_greater},
               {"P73M", "P2218D", CDateTime::dtc_indeterminate},
               {"P73M", "P2223D", CDateTime::dtc_indeterminate},
               {"P73M", "P2224D", CDateTime::dtc_less},
               {"P20M", "P606D", CDateTime::dtc_greater},
               {"P20M", "P607D", CDateTime::dtc_indeterminate},
               {"P20M", "P611D", CDateTime::dtc_indeterminate},
               {"P20M", "P612D", CDateTime::dtc_less},
               {"P14M", "P423D", CDateTime::dtc_greater},
               {"P14M", "P424D", CDateTime::dtc_indeterminate},
               {"P14M", "P428D", CDateTime::dtc_indeterminate},
               {"P14M", "P429D", CDateTime::dtc_less}};
  for (const auto& c : cases) {
    EXPECT_EQ(Parse(c.months).CompareTo(Parse(c.days)), c.result) << c.months << ' ' << c.days;
  }
}

TEST(DateTimeSpan, TellsSpansApartByWholeDaysAlone) {
  EXPECT_EQ(Parse("PT60M").CompareTo(Parse("PT1H")), CDateTime::dtc_equal);
  EXPECT_EQ(Parse("PT1H").CompareTo(Parse("PT2H")), CDateTime::dtc_equal);
  EXPECT_EQ(Parse("PT1H").CompareTo(Parse("PT24H")), CDateTime::dtc_less);
  EXPECT_EQ(Parse("-PT1S").CompareTo(Parse("PT0S")), CDateTime::dtc_less);
}

TEST(DateTimeSpan, ComparesNothingBeyondTheYearZero) {
  // The years -1 and below on one side, and above 0 on the other.
  EXPECT_EQ(Parse("-P2000Y").CompareTo(Parse("P1D")), CDateTime::dtc_indeterminate);
  EXPECT_EQ(Parse("-P1000Y").CompareTo(Parse("P1D")), CDateTime::dtc_less);
}

TEST(DateTimeSpan, OperatorsFollowTheOrder) {
  const CDateTimeSpan month = Parse("P1M"), thirty = Parse("P30D"), longer = Parse("P32D");
  EXPECT_TRUE(month == Parse("P1M"));
  EXPECT_FALSE(month == thirty);
  EXPECT_TRUE(month != thirty);
  EXPECT_FALSE(month != Parse("P1M"));
  EXPECT_TRUE(month < longer);
  EXPECT_FALSE(longer < month);
  EXPECT_FALSE(month < thirty);
  EXPECT_TRUE(longer > month);
  EXPECT_FALSE(month > longer);
  EXPECT_FALSE(month > thirty);
}
