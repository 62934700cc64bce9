#include <functional>
#include <string>

#include "qzxml/values/Conversions.h"
#include "tests/support/CommaLocale.h"
#include "tests/support/QzTest.h"

using QzXmlLib16::CBigInteger;
using QzXmlLib16::CConversions;
using QzXmlLib16::CDateTime;
using QzXmlLib16::CDecimal;
using QzXmlLib16::CQzException;
using QzXmlLib16::CQzInvalidStateException;
using QzXmlLib16::CQzInvalidValueException;
using QzXmlLib16::CWhitespaceUtils;

namespace {

using Rule = CWhitespaceUtils::WhitespaceRule;
constexpr Rule kNone = CWhitespaceUtils::WhitespaceRule_None;
constexpr Rule kReplace = CWhitespaceUtils::WhitespaceRule_Replace;
constexpr Rule kCollapse = CWhitespaceUtils::WhitespaceRule_Collapse;
constexpr Rule kUnknown = static_cast<Rule>(4);

// Reads a text as a kind and writes it again.
using Passage = std::string (*)(const std::string&, Rule);

std::string PassDecimal(const std::string& text, Rule rule) {
  return CConversions::decimalToString(CConversions::decimalFromString(text, rule));
}
std::string PassInteger(const std::string& text, Rule rule) {
  return CConversions::integerToString(CConversions::integerFromString(text, rule));
}
std::string PassDuration(const std::string& text, Rule rule) {
  return CConversions::durationToString(CConversions::durationFromString(text, rule));
}
std::string PassYearMonth(const std::string& text, Rule rule) {
  return CConversions::yearMonthToString(CConversions::yearMonthFromString(text, rule));
}
std::string PassMonthDay(const std::string& text, Rule rule) {
  return CConversions::monthDayToString(CConversions::monthDayFromString(text, rule));
}
std::string PassYear(const std::string& text, Rule rule) {
  return CConversions::yearToString(CConversions::yearFromString(text, rule));
}
std::string PassMonth(const std::string& text, Rule rule) {
  return CConversions::monthToString(CConversions::monthFromString(text, rule));
}
std::string PassDay(const std::string& text, Rule rule) {
  return CConversions::dayToString(CConversions::dayFromString(text, rule));
}
std::string PassDate(const std::string& text, Rule rule) {
  return CConversions::dateToString(CConversions::dateFromString(text, rule));
}
std::string PassDateTime(const std::string& text, Rule rule) {
  return CConversions::datetimeToString(CConversions::datetimeFromString(text, rule));
}
std::string PassTime(const std::string& text, Rule rule) {
  return CConversions::timeToString(CConversions::timeFromString(text, rule));
}

struct Case {
  Passage pass;
  const char* text;
  Rule rule;
  const char* outcome;  // the text written again, or that of the failure
};

// The text written again, or that of the failure.
std::string OutcomeOf(const Case& c) {
  try {
    return c.pass(c.text, c.rule);
  } catch (const CQzException& e) {
    return e.GetMessage();
  }
}

template <std::size_t count>
void ExpectOutcomes(const Case (&cases)[count]) {
  for (const Case& c : cases) EXPECT_EQ(c.outcome, OutcomeOf(c)) << "[" << c.text << "]";
}

}  // namespace

TEST(ConversionsObjects, DecimalsTakeAndLoseWhatTheirClassDoes) {
  const Case cases[] = {
      {&PassDecimal, "1.50", kNone, "1.5"},
      {&PassDecimal, "1.00", kNone, "1"},
      {&PassDecimal, "-0.5", kNone, "-0.5"},
      {&PassDecimal, "0.05", kNone, "0.05"},
      {&PassDecimal, "007", kNone, "7"},
      {&PassDecimal, "+1", kNone, "1"},
      {&PassDecimal, "1.5e2", kNone, "150"},
      {&PassDecimal, "15E-1", kNone, "1.5"},
      {&PassDecimal, "", kNone, "0"},
      {&PassDecimal, "  ", kCollapse, "0"},
      {&PassDecimal, ".", kNone, "0"},
      {&PassDecimal, " 12 . 3 ", kNone, "12.3"},
      {&PassDecimal, "1-2", kNone, "-12"},
      {&PassDecimal, "12345678901234567890.123456789", kNone, "12345678901234567890.123456789"},
      {&PassDecimal, "abc", kNone,
       "The string representing a Decimal, contained an invalid char at position 0 [abc]."},
      {&PassDecimal, "1.2.3", kNone,
       "The string representing a Decimal, contained an invalid char at position 3 [1.2.3]."},
      {&PassDecimal, "\n 1\tx ", kNone,
       "The string representing a Decimal, contained an invalid char at position 4 [\n 1\tx ]."},
      {&PassDecimal, "\n 1\tx ", kReplace,
       "The string representing a Decimal, contained an invalid char at position 4 [  1 x ]."},
      {&PassDecimal, "\n 1\tx ", kCollapse,
       "The string representing a Decimal, contained an invalid char at position 2 [1 x]."},
  };
  ExpectOutcomes(cases);
}

TEST(ConversionsObjects, TheFormatOfADecimalIsANumberOfPlaces) {
  struct {
    const char* value;
    const char* format;
    const char* text;
  } const cases[] = {
      {"1.25", "", "1.25"},      {"1.25", "1", "1.3"},    {"1.25", "2", "1.25"},
      {"-1.25", "1", "-1.3"},    {"12.6", "0", "13."},    {"12.6", "%.2f", "13."},
      {"12.6", "places", "13."}, {"1.25", " 1x", "1.3"},  {"1.25", "+1", "1.3"},
      {"1.25", "+-1", "1."},     {"1.25", "1 2", "1.3"},  {"1.5", "3", "1.500"},
      {"1.9995", "3", "2.0"},    {"1.25", "\t01", "1.3"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.text, CConversions::decimalToString(CDecimal(c.value), std::string(c.format)))
        << c.value << " [" << c.format << "]";
  }
}

TEST(ConversionsObjects, IntegersTakeWhatTheirClassDoes) {
  const Case cases[] = {
      {&PassInteger, "0", kNone, "0"},
      {&PassInteger, "-0", kNone, "0"},
      {&PassInteger, "007", kNone, "7"},
      {&PassInteger, "-123456789012345678901234567890", kNone, "-123456789012345678901234567890"},
      {&PassInteger, "", kNone, "0"},
      {&PassInteger, " +5 ", kNone, "5"},
      {&PassInteger, "12-34", kNone, "34"},
      {&PassInteger, "1 2", kNone, "2"},
      {&PassInteger, "1.6", kNone, "2"},
      {&PassInteger, "1.5", kNone, "1"},
      {&PassInteger, "1e3", kNone, "1000"},
      {&PassInteger, " one ", kNone,
       "The string representing a Decimal, contained an invalid char at position 1 [ one ]."},
      {&PassInteger, " one ", kCollapse,
       "The string representing a Decimal, contained an invalid char at position 0 [one]."},
  };
  ExpectOutcomes(cases);
}

TEST(ConversionsObjects, DurationsComeBackAsTheyAre) {
  const Case cases[] = {
      {&PassDuration, "P1Y2M3DT4H5M6.789S", kNone, "P1Y2M3DT4H5M6.789S"},
      {&PassDuration, "-P1D", kNone, "-P1D"},
      {&PassDuration, "PT90M", kNone, "PT90M"},
      {&PassDuration, "P0Y", kNone, "P"},
      {&PassDuration, " P1D\n", kCollapse, "P1D"},
      {&PassDuration, " P1D", kNone,
       "Invalid XSD Duration [ P1D] expected [-]P[nY][nM][nD][T[nH][nM][nS.ff]]"},
      {&PassDuration, " P 1D ", kCollapse,
       "Invalid XSD Duration [P 1D] expected [-]P[nY][nM][nD][T[nH][nM][nS.ff]]"},
      {&PassDuration, "", kNone, "Invalid XSD Duration (Empty String)"},
      {&PassDuration, "  ", kCollapse, "Invalid XSD Duration (Empty String)"},
  };
  ExpectOutcomes(cases);
}

TEST(ConversionsObjects, DatesAndTimesComeBackAsTheyAre) {
  const Case cases[] = {
      {&PassYearMonth, "2004-05", kNone, "2004-05"},
      {&PassYearMonth, "-0044-03Z", kNone, "-0044-03Z"},
      {&PassMonthDay, "--02-29", kNone, "--02-29"},
      {&PassMonthDay, "--02-29+01:00", kNone, "--02-29+01:00"},
      {&PassDate, "2004-02-29", kNone, "2004-02-29"},
      {&PassDate, "2004-02-29-05:30", kNone, "2004-02-29-05:30"},
      {&PassDateTime, "2004-02-29T23:59:59.5Z", kNone, "2004-02-29T23:59:59.5Z"},
      {&PassDateTime, "2004-02-29T00:00:00.123456789", kNone, "2004-02-29T00:00:00.123456789"},
      {&PassTime, "12:00:00.50", kNone, "12:00:00.5"},
      {&PassTime, "00:00:00Z", kNone, "00:00:00Z"},
      {&PassDate, "\t2004-02-29 ", kCollapse, "2004-02-29"},
      {&PassDate, " 2004-02-29", kNone,
       "Invalid XSD Date [ 2004-02-29] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {&PassDate, " 2004-2-29 ", kCollapse,
       "Invalid XSD Date [2004-2-29] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {&PassYearMonth, "", kNone, "Invalid Date (Empty String)"},
      {&PassMonthDay, " ", kCollapse, "Invalid Date (Empty String)"},
      {&PassDate, "2004-02-29T00:00:00", kNone, "Invalid Date ('T' not allowed)"},
      {&PassDate, "2003-02-29", kNone, "Invalid Day [29] (1 <= day <= days in month"},
      {&PassDateTime, "2004-02-29", kNone, "Invalid XSD DateTime [2004-02-29]."},
      {&PassDateTime, "", kNone, "Invalid XSD DateTime []."},
      {&PassTime, "24:00:00", kNone, "Invalid XSD Time [24:00:00] expected hh:mm:ss[.ff]"},
      {&PassTime, " ", kCollapse, "Invalid XSD Time (Empty String)"},
  };
  ExpectOutcomes(cases);
}

TEST(ConversionsObjects, TheFormOfTheTextDecidesTheTypeOfADate) {
  struct {
    CDateTime value;
    CDateTime::DTType type;
  } const cases[] = {
      {CConversions::yearMonthFromString("2004-05-06", kNone), CDateTime::dt_date},
      {CConversions::yearMonthFromString("2004-05", kNone), CDateTime::dt_gYearMonth},
      {CConversions::monthDayFromString("2004", kNone), CDateTime::dt_gYear},
      {CConversions::monthDayFromString("--05-06", kNone), CDateTime::dt_gMonthDay},
      {CConversions::dateFromString("--05", kNone), CDateTime::dt_gMonth},
      {CConversions::dateFromString("---05", kNone), CDateTime::dt_gDay},
      {CConversions::dateFromString("2004-05-06", kNone), CDateTime::dt_date},
      {CConversions::datetimeFromString("2004-05-06T00:00:00", kNone), CDateTime::dt_dateTime},
      {CConversions::timeFromString("00:00:00", kNone), CDateTime::dt_time},
  };
  for (const auto& c : cases) EXPECT_EQ(c.type, c.value.GetType()) << c.value.ToString();
}

TEST(ConversionsObjects, YearsMonthsAndDaysAreWhatADateHasOfThem) {
  const Case cases[] = {
      {&PassYear, "1999", kNone, "1999"},
      {&PassYear, " 1999 ", kCollapse, "1999"},
      {&PassYear, "1999Z", kNone, "1999"},
      {&PassYear, "1999+14:00", kNone, "1999"},
      {&PassYear, "-0001", kNone, "65535"},
      {&PassYear, "-9999", kNone, "55537"},
      {&PassYear, "2004-05", kNone, "2004"},
      {&PassYear, "2004-05-06", kNone, "2004"},
      {&PassYear, "--05", kNone, "Failed to GetYear. Invalid Date Type: gMonth."},
      {&PassYear, "---05", kNone, "Failed to GetYear. Invalid Date Type: gDay."},
      {&PassYear, "99", kNone, "Invalid XSD Date [99] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {&PassMonth, "--05", kNone, "--05"},
      {&PassMonth, "--05--", kNone, "--05"},
      {&PassMonth, "--12Z", kNone, "--12"},
      {&PassMonth, "--12-01:00", kNone, "--12"},
      {&PassMonth, "2004-05", kNone, "--05"},
      {&PassMonth, "--05-06", kNone, "--05"},
      {&PassMonth, "2004", kNone, "Failed to GetMonth. Invalid Date Type: gYear."},
      {&PassMonth, "--13", kNone, "Invalid Month [13] (1 <= month <= 12)"},
      {&PassMonth, " -- 05 ", kCollapse,
       "Invalid XSD Date [-- 05] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {&PassDay, "---31", kNone, "---31"},
      {&PassDay, "---45", kNone, "---45"},
      {&PassDay, "---09+01:00", kNone, "---09"},
      {&PassDay, "--05-06", kNone, "---06"},
      {&PassDay, "--05", kNone, "Failed to GetDay. Invalid Date Type: gMonth."},
      {&PassDay, "---00", kNone, "Invalid Day [0] (1 <= day <= 31)"},
  };
  ExpectOutcomes(cases);
}

TEST(ConversionsObjects, FailuresHaveTheClassesOfTheirOrigin) {
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "The string representing a Decimal, contained an invalid char at position 0 [x].",
                  CConversions::decimalFromString("x", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException, "Invalid XSD Duration (Empty String)",
                  CConversions::durationFromString("", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException, "Invalid Date (Empty String)",
                  CConversions::yearFromString("", kNone));
  EXPECT_QZ_THROW(CQzInvalidStateException, "Failed to GetYear. Invalid Date Type: gMonth.",
                  CConversions::yearFromString("--05", kNone));
  EXPECT_QZ_THROW(CQzInvalidStateException, "Failed to GetMonth. Invalid Date Type: gDay.",
                  CConversions::monthFromString("---05", kNone));
  EXPECT_QZ_THROW(CQzInvalidStateException, "Failed to GetDay. Invalid Date Type: gYearMonth.",
                  CConversions::dayFromString("2004-05", kNone));
}

TEST(ConversionsObjects, EveryKindRefusesAnUnknownRule) {
  const Case cases[] = {
      {&PassDecimal, "1", kUnknown, "Unknown WhitespaceRule"},
      {&PassInteger, "1", kUnknown, "Unknown WhitespaceRule"},
      {&PassDuration, "P1D", kUnknown, "Unknown WhitespaceRule"},
      {&PassYearMonth, "2004-05", kUnknown, "Unknown WhitespaceRule"},
      {&PassMonthDay, "--05-06", kUnknown, "Unknown WhitespaceRule"},
      {&PassYear, "2004", kUnknown, "Unknown WhitespaceRule"},
      {&PassMonth, "--05", kUnknown, "Unknown WhitespaceRule"},
      {&PassDay, "---05", kUnknown, "Unknown WhitespaceRule"},
      {&PassDate, "2004-05-06", kUnknown, "Unknown WhitespaceRule"},
      {&PassDateTime, "2004-05-06T00:00:00", kUnknown, "Unknown WhitespaceRule"},
      {&PassTime, "00:00:00", kUnknown, "Unknown WhitespaceRule"},
  };
  ExpectOutcomes(cases);
}

TEST(ConversionsObjects, DoNotCareForTheLocaleOfTheProcess) {
  const qztest::CommaLocale locale;
  if (!locale.Works()) GTEST_SKIP() << "no localedef: " << locale.GetStatus();
  const Case cases[] = {
      {&PassDecimal, "1234567.25", kNone, "1234567.25"},
      {&PassDecimal, "1,5", kNone,
       "The string representing a Decimal, contained an invalid char at position 1 [1,5]."},
      {&PassInteger, "1234567.6", kNone, "1234568"},
      {&PassDuration, "PT1.5S", kNone, "PT1.5S"},
      {&PassTime, "12:00:00.25", kNone, "12:00:00.25"},
  };
  ExpectOutcomes(cases);
  EXPECT_EQ("1.3", CConversions::decimalToString(CDecimal("1.25"), "1"));
}
