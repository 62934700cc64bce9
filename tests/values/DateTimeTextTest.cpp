#include <string>

#include "qzxml/values/DateTime.h"
#include "tests/support/CommaLocale.h"
#include "tests/support/QzTest.h"

using namespace QzXmlLib16;

namespace {

struct TextCase {
  const char* text;
  CDateTime::DTType type;
  const char* canonical;
};

struct FailureCase {
  const char* text;
  const char* message;
};

void ParseDateTime(CDateTime& value, const char* text) { value.ParseXSDDateTime(text); }
void ParseDate(CDateTime& value, const char* text) { value.ParseXSDDate(text); }
void ParseTime(CDateTime& value, const char* text) { value.ParseXSDTime(text); }

template <std::size_t kCount>
void ExpectTexts(void (*parse)(CDateTime&, const char*), const TextCase (&cases)[kCount]) {
  for (const TextCase& c : cases) {
    SCOPED_TRACE(c.text);
    CDateTime value(CDateTime::dt_gDay);  // the text alone decides the type
    parse(value, c.text);
    EXPECT_EQ(value.GetType(), c.type);
    EXPECT_EQ(value.ToString(), c.canonical);
  }
}

template <std::size_t kCount>
void ExpectFailures(void (*parse)(CDateTime&, const char*), const FailureCase (&cases)[kCount]) {
  for (const FailureCase& c : cases) {
    SCOPED_TRACE(c.text == nullptr ? "(null)" : c.text);
    CDateTime value;
    EXPECT_QZ_THROW(CQzInvalidValueException, c.message, parse(value, c.text));
  }
}

}  // namespace

// ---- Dates ----

TEST(DateTimeText, ReadsTheFormsOfDates) {
  const TextCase cases[] = {
      {"2004", CDateTime::dt_gYear, "2004"},
      {"0001", CDateTime::dt_gYear, "0001"},
      {"9999", CDateTime::dt_gYear, "9999"},
      {"-0001", CDateTime::dt_gYear, "-0001"},
      {"-9999", CDateTime::dt_gYear, "-9999"},
      {"2004Z", CDateTime::dt_gYear, "2004Z"},
      {"2004+05:30", CDateTime::dt_gYear, "2004+05:30"},
      {"2004-05:30", CDateTime::dt_gYear, "2004-05:30"},
      {"-2004-05:30", CDateTime::dt_gYear, "-2004-05:30"},
      {"2004-01", CDateTime::dt_gYearMonth, "2004-01"},
      {"-2004-12Z", CDateTime::dt_gYearMonth, "-2004-12Z"},
      {"2004-12-14:00", CDateTime::dt_gYearMonth, "2004-12-14:00"},
      {"2004-02-29", CDateTime::dt_date, "2004-02-29"},
      {"-0001-01-01", CDateTime::dt_date, "-0001-01-01"},
      {"-0004-02-29", CDateTime::dt_date, "-0004-02-29"},
      {"2004-02-29Z", CDateTime::dt_date, "2004-02-29Z"},
      {"2004-02-29+00:00", CDateTime::dt_date, "2004-02-29+00:00"},
      {"-2004-02-29-23:59", CDateTime::dt_date, "-2004-02-29-23:59"},
      {"--02", CDateTime::dt_gMonth, "--02"},
      {"--12Z", CDateTime::dt_gMonth, "--12Z"},
      {"--12+01:00", CDateTime::dt_gMonth, "--12+01:00"},
      {"--02--", CDateTime::dt_gMonth, "--02"},
      {"--02--Z", CDateTime::dt_gMonth, "--02Z"},
      {"--02---05:00", CDateTime::dt_gMonth, "--02-05:00"},
      {"--02xy", CDateTime::dt_gMonth, "--02"},
      {"---01", CDateTime::dt_gDay, "---01"},
      {"---31Z", CDateTime::dt_gDay, "---31Z"},
      {"---31-05:00", CDateTime::dt_gDay, "---31-05:00"},
      {"---45", CDateTime::dt_gDay, "---45"},
      {"---99", CDateTime::dt_gDay, "---99"},
      {"--02-29", CDateTime::dt_gMonthDay, "--02-29"},
      {"--12-31Z", CDateTime::dt_gMonthDay, "--12-31Z"},
      {"--12-31+14:00", CDateTime::dt_gMonthDay, "--12-31+14:00"},
  };
  ExpectTexts(&ParseDate, cases);
}

TEST(DateTimeText, RefusesWhatIsNoDate) {
  const FailureCase cases[] = {
      {nullptr, "Invalid Date (Null String)"},
      {"", "Invalid Date (Empty String)"},
      {"T", "Invalid Date ('T' not allowed)"},
      {"2004-01-01T00:00:00", "Invalid Date ('T' not allowed)"},
      {"T:Z", "Invalid Date ('T' not allowed)"},
      {"2004-01-01+00:00Z", "Invalid Date (Bad Zone value)"},
      {":Z", "Invalid Date (Bad Zone value)"},
      {"Z", "Invalid XSD Date [Z] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {":", "Invalid XSD Date [:] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"-", "Invalid XSD Date [-] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"--", "Invalid XSD Date [--] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"---", "Invalid XSD Date [---] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"--:", "Invalid XSD Date [--:] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"-:", "Invalid XSD Date [-:] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"204", "Invalid XSD Date [204] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"20040", "Invalid XSD Date [20040] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"12004-01-01", "Invalid XSD Date [12004-01-01] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"+2004", "Invalid XSD Date [+2004] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {" 2004", "Invalid XSD Date [ 2004] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"200x", "Invalid XSD Date [200x] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"2004/01", "Invalid XSD Date [2004/01] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"2004-0x", "Invalid XSD Date [2004-0x] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"2004-01/01", "Invalid XSD Date [2004-01/01] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"2004-01-0x", "Invalid XSD Date [2004-01-0x] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"2004-01-1", "Invalid XSD Date [2004-01-1] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"2004-1-1", "Invalid XSD Date [2004-1-1] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"2004-01-01z", "Invalid XSD Date [2004-01-01z] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"2004-01-01+0100", "Invalid XSD Date [2004-01-01+0100] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"2004-01-01+1:00", "Invalid XSD Date [2004-01-01+1:00] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"--x1", "Invalid XSD Date [--x1] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"--0x--", "Invalid XSD Date [--0x--] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"--0001", "Invalid Month [0] (1 <= month <= 12)"},
      {"--01/01", "Invalid XSD Date [--01/01] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"--01-0x", "Invalid XSD Date [--01-0x] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"--/01", "Invalid XSD Date [--/01] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"---0x", "Invalid XSD Date [---0x] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"---001-01-01", "Invalid XSD Date [---001-01-01] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"2004-01-01+0a:00", "Invalid XSD Time Zone [+0a:00]."},
      {"2004-01-01+00:0a", "Invalid XSD Time Zone [+00:0a]."},
      {"2004-01-01-:0000", "Invalid XSD Time Zone [-:0000]."},
      {"2004-01-01+23:60", "Invalid TimeZone [23:60]"},
      {"2004-01-01-25:00", "Invalid TimeZone [-25:0]"},
      {"2004-01-01+99:99", "Invalid TimeZone [99:99]"},
      {"0000-01-01", "Invalid Year [0] (-9999 <= year <= 9999 && year != 0)"},
      {"-0000", "Invalid Year [0] (-9999 <= year <= 9999 && year != 0)"},
      {"2004-13", "Invalid Month [13] (1 <= month <= 12)"},
      {"0000-00-00", "Invalid Month [0] (1 <= month <= 12)"},
      {"2003-02-29", "Invalid Day [29] (1 <= day <= days in month"},
      {"2004-01-32Z", "Invalid Day [32] (1 <= day <= days in month"},
      {"--02-30", "Invalid Day [30] (1 <= day <= days in month)"},
      {"---00", "Invalid Day [0] (1 <= day <= 31)"},
  };
  ExpectFailures(&ParseDate, cases);
}

// The two digits behind "--01" are taken as the dashes of "--MM--".
TEST(DateTimeText, LooksAtNoCharBehindTheMonthOfTheOldForm) {
  CDateTime value;
  value.ParseXSDDate("--1201");
  EXPECT_EQ(value.GetType(), CDateTime::dt_gMonth);
  EXPECT_EQ(value.ToString(), "--12");
}

TEST(DateTimeText, TakesZonesLeniently) {
  const TextCase cases[] = {
      // The sign belongs to the hour, and 0 has none.
      {"2004-01-01-00:30", CDateTime::dt_date, "2004-01-01+00:30"},
      {"2004-01-01-24:00", CDateTime::dt_date, "2004-01-01+00:00"},
      {"2004-01-01+24:59", CDateTime::dt_date, "2004-01-01+00:59"},
      // What begins with no sign is no zone.
      {"2004-01-01 05:00", CDateTime::dt_date, "2004-01-01"},
      {"2004-01-01x:yyyy", CDateTime::dt_date, "2004-01-01"},
      {"2004:12345", CDateTime::dt_gYear, "2004"},
      // A colon anywhere makes the last six chars the zone.
      {"2004-01:01", CDateTime::dt_gYear, "2004-01:01"},
      {"2004-01-01Z:1234", CDateTime::dt_date, "2004-01-01Z"},
  };
  ExpectTexts(&ParseDate, cases);
}

// ---- Times ----

TEST(DateTimeText, ReadsTimes) {
  const TextCase cases[] = {
      {"00:00:00", CDateTime::dt_time, "00:00:00"},
      {"23:59:59", CDateTime::dt_time, "23:59:59"},
      {"12:00:00.5", CDateTime::dt_time, "12:00:00.5"},
      {"12:00:00.50", CDateTime::dt_time, "12:00:00.5"},
      {"12:00:00.", CDateTime::dt_time, "12:00:00"},
      {"12:00:00.0", CDateTime::dt_time, "12:00:00"},
      {"12:00:00.123", CDateTime::dt_time, "12:00:00.123"},
      {"12:00:00.1234", CDateTime::dt_time, "12:00:00.1234"},
      {"12:00:00.123456", CDateTime::dt_time, "12:00:00.123456"},
      {"12:00:00.1234567", CDateTime::dt_time, "12:00:00.1234567"},
      {"12:00:00.123456789", CDateTime::dt_time, "12:00:00.123456789"},
      {"12:00:00.100000000", CDateTime::dt_time, "12:00:00.1"},
      {"12:00:00.000000001", CDateTime::dt_time, "12:00:00.000000001"},
      {"12:00:00.000100", CDateTime::dt_time, "12:00:00.0001"},
      {"12:00:00.010", CDateTime::dt_time, "12:00:00.01"},
      {"12:00:00Z", CDateTime::dt_time, "12:00:00Z"},
      {"12:00:00.25+05:45", CDateTime::dt_time, "12:00:00.25+05:45"},
      {"12:00:00.Z", CDateTime::dt_time, "12:00:00Z"},
      {"12:00:00-09:00", CDateTime::dt_time, "12:00:00-09:00"},
      {"12:00:00-00:30", CDateTime::dt_time, "12:00:00+00:30"},
      // What begins with no sign is no zone, and "Z" may be followed by anything.
      {"12:00:00abc", CDateTime::dt_time, "12:00:00"},
      {"12:00:00 Z", CDateTime::dt_time, "12:00:00"},
      {"12:00:00.5x+01:00", CDateTime::dt_time, "12:00:00.5"},
      {"12:00:00Zulu", CDateTime::dt_time, "12:00:00Z"},
  };
  ExpectTexts(&ParseTime, cases);
}

TEST(DateTimeText, RefusesWhatIsNoTime) {
  const FailureCase cases[] = {
      {nullptr, "Invalid Time (Null String)"},
      {"", "Invalid XSD Time (Empty String)"},
      {"12:00", "Invalid XSD Time [12:00] expected hh:mm:ss[.ff]"},
      {"12:00:0", "Invalid XSD Time [12:00:0] expected hh:mm:ss[.ff]"},
      {"24:00:00", "Invalid XSD Time [24:00:00] expected hh:mm:ss[.ff]"},
      {"12:60:00", "Invalid XSD Time [12:60:00] expected hh:mm:ss[.ff]"},
      {"12:00:60", "Invalid XSD Time [12:00:60] expected hh:mm:ss[.ff]"},
      {"-2:00:00", "Invalid XSD Time [-2:00:00] expected hh:mm:ss[.ff]"},
      {"12-00:00", "Invalid XSD Time [12-00:00] expected hh:mm:ss[.ff]"},
      {"12:00-00", "Invalid XSD Time [12:00-00] expected hh:mm:ss[.ff]"},
      {"12:0x:00", "Invalid XSD Time [12:0x:00] expected hh:mm:ss[.ff]"},
      {"12:00:0x", "Invalid XSD Time [12:00:0x] expected hh:mm:ss[.ff]"},
      {" 12:00:00", "Invalid XSD Time [ 12:00:00] expected hh:mm:ss[.ff]"},
      {"12:00:00.1234567890", "Invalid XSD Time [12:00:00.1234567890] Fraction part too long"},
      {"12:00:00.0000000000Z", "Invalid XSD Time [12:00:00.0000000000Z] Fraction part too long"},
      {"12:00:00+", "Invalid XSD Time Zone [+]."},
      {"12:00:00+1:00", "Invalid XSD Time Zone [+1:00]."},
      {"12:00:00-05:000", "Invalid XSD Time Zone [-05:000]."},
      {"12:00:00.5-05.00", "Invalid XSD Time Zone [-05.00]."},
      {"12:00:00+24:60", "Invalid TimeZone [0:60]"},
      {"12:00:00-23:60", "Invalid TimeZone [-23:60]"},
  };
  ExpectFailures(&ParseTime, cases);
}

// ---- Both ----

TEST(DateTimeText, ReadsDateTimes) {
  const TextCase cases[] = {
      {"2004-02-29T12:00:00", CDateTime::dt_dateTime, "2004-02-29T12:00:00"},
      {"-0044-03-15T00:00:00Z", CDateTime::dt_dateTime, "-0044-03-15T00:00:00Z"},
      {"2004-02-29T23:59:59.999999999+14:00", CDateTime::dt_dateTime,
       "2004-02-29T23:59:59.999999999+14:00"},
      {"2004-02-29T23:59:59.120-00:01", CDateTime::dt_dateTime, "2004-02-29T23:59:59.12+00:01"},
      // A zone in front of the 'T' is one, where none stands behind it.
      {"2004-02-29ZT12:00:00", CDateTime::dt_dateTime, "2004-02-29T12:00:00Z"},
      {"2004-02-29+01:00T12:00:00", CDateTime::dt_dateTime, "2004-02-29T12:00:00+01:00"},
      {"2004-02-29+01:00T12:00:00Z", CDateTime::dt_dateTime, "2004-02-29T12:00:00Z"},
      {"2004-02-29T12:00:00T", CDateTime::dt_dateTime, "2004-02-29T12:00:00"},
  };
  ExpectTexts(&ParseDateTime, cases);
}

TEST(DateTimeText, RefusesWhatIsNoDateTime) {
  const FailureCase cases[] = {
      {nullptr, "Invalid DateTime (Null String)"},
      {"", "Invalid XSD DateTime []."},
      {"2004-02-29 12:00:00", "Invalid XSD DateTime [2004-02-29 12:00:00]."},
      {"2004-02-29t12:00:00", "Invalid XSD DateTime [2004-02-29t12:00:00]."},
      {"T12:00:00", "Invalid Date (Empty String)"},
      {"2004T12:00:00", "Invalid XSD DateTime [2004T12:00:00] expected CCYY-MM-DDThh:mm:ss[.ff]"},
      {"2004-02T12:00:00",
       "Invalid XSD DateTime [2004-02T12:00:00] expected CCYY-MM-DDThh:mm:ss[.ff]"},
      {"--02-29Txx", "Invalid XSD DateTime [--02-29Txx] expected CCYY-MM-DDThh:mm:ss[.ff]"},
      {"x2004T12:00:00", "Invalid XSD Date [x2004] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {"2004-02-29+00:00ZT12:00:00", "Invalid Date (Bad Zone value)"},
      {"2004-02-29T", "Invalid XSD Time (Empty String)"},
      {"2004-02-29T12:00", "Invalid XSD Time [12:00] expected hh:mm:ss[.ff]"},
      {"2004-02-29T24:00:00", "Invalid XSD Time [24:00:00] expected hh:mm:ss[.ff]"},
      {"2003-02-29T12:00:00.1234567890",
       "Invalid XSD Time [12:00:00.1234567890] Fraction part too long"},
      {"2003-02-29T12:00:00+1", "Invalid XSD Time Zone [+1]."},
      {"2003-02-29T12:00:00", "Invalid Day [29] (1 <= day <= days in month"},
      {"0000-01-01T12:00:00", "Invalid Year [0] (-9999 <= year <= 9999 && year != 0)"},
      {"2004-13-01T12:00:00", "Invalid Month [13] (1 <= month <= 12)"},
  };
  ExpectFailures(&ParseDateTime, cases);
}

TEST(DateTimeText, AFailedParseKeepsWhatWasStoredSoFar) {
  CDateTime value;
  EXPECT_QZ_THROW(CQzInvalidValueException, "Invalid Day [29] (1 <= day <= days in month",
                  value.ParseXSDDate("2003-02-29"));
  EXPECT_EQ(value.ToString(), "2003-02-29");
  EXPECT_QZ_THROW(CQzInvalidValueException, "Invalid XSD Time [x] expected hh:mm:ss[.ff]",
                  value.ParseXSDDateTime("2004-01-01ZTx"));
  EXPECT_EQ(value.ToString(), "2004-01-01Z");
  // What is found before anything is stored leaves the value as it was.
  EXPECT_QZ_THROW(CQzInvalidValueException, "Invalid XSD DateTime [x].",
                  value.ParseXSDDateTime("x"));
  EXPECT_QZ_THROW(CQzInvalidValueException, "Invalid DateTime (Null String)",
                  value.ParseXSDDateTime(nullptr));
  EXPECT_EQ(value.ToString(), "2004-01-01Z");
  EXPECT_QZ_THROW(CQzInvalidValueException, "Invalid Date (Null String)",
                  value.ParseXSDDate(nullptr));
  EXPECT_EQ(value.ToString(), "Error: Date Not Set");
}

TEST(DateTimeText, ParsingDropsWhatTheValueWas) {
  CDateTime value(2004, 1, 1, 12, 30, 15, 1, 2, 3);
  value.SetTimeZone(1, 0);
  value.ParseXSDDate("2005");
  EXPECT_EQ(value.GetType(), CDateTime::dt_gYear);
  EXPECT_EQ(value.ToString(), "2005");
  value.ParseXSDTime("01:00:00");
  EXPECT_EQ(value.ToString(), "01:00:00");
  value.ParseXSDDateTime("2006-01-01T00:00:00");
  EXPECT_EQ(value.ToString(), "2006-01-01T00:00:00");
  value.ParseXSDDateTime("2004-01-01T00:00:00.987654321-05:00");
  value.ParseXSDDateTime("2005-06-07T08:09:10");
  EXPECT_EQ(value.ToString(), "2005-06-07T08:09:10");
  EXPECT_FALSE(value.IsUTC());
  EXPECT_FALSE(value.HasTimeZone());
}

TEST(DateTimeText, ALongTextFailsAsAWhole) {
  const std::string many(100000, '7');
  CDateTime value;
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "Invalid XSD Date [" + many + "] expected CCYY-MM-DD[Z|[+|-]hh:mm]",
                  value.ParseXSDDate(many.c_str()));
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "Invalid XSD Time [12:00:00." + many + "] Fraction part too long",
                  value.ParseXSDTime(("12:00:00." + many).c_str()));
  EXPECT_QZ_THROW(CQzInvalidValueException, "Invalid XSD Time Zone [+" + many + "].",
                  value.ParseXSDTime(("12:00:00+" + many).c_str()));
}

// ---- Formats ----

TEST(DateTimeText, KnowsTwoFormats) {
  const CDateTime value(2004, 2, 29);
  EXPECT_EQ(value.ToString("s"), "2004-02-29");
  EXPECT_EQ(value.ToString("G"), "");
  EXPECT_EQ(value.ToString(""), "");
  EXPECT_EQ(value.ToString(nullptr), "");
  EXPECT_EQ(value.ToString("x"), "Unknown Format: x");
  EXPECT_EQ(value.ToString("S"), "Unknown Format: S");
  EXPECT_EQ(value.ToString("g"), "Unknown Format: g");
  EXPECT_EQ(value.ToString("ss %s"), "Unknown Format: ss %s");
}

TEST(DateTimeText, SaysThatAValueIsNotSetInEachFormat) {
  for (const char* const format : {"s", "G", "", "x", static_cast<const char*>(nullptr)}) {
    EXPECT_EQ(CDateTime().ToString(format), "Error: Date Not Set");
    EXPECT_EQ(CDateTime(CDateTime::dt_gMonth).ToString(format), "Error: Date Not Set");
  }
  EXPECT_EQ(CDateTime(CDateTime::dt_time).ToString("G"), "");
}

TEST(DateTimeText, AValueWithZeroFieldsIsNotSetUnlessItIsATime) {
  CDateTime value(CDateTime::dt_dateTime);
  value.SetTimeZone(1, 0);
  EXPECT_EQ(value.ToString(), "Error: Date Not Set");
  value.SetNanoSecond(1);
  EXPECT_EQ(value.ToString(), "0000-00-00T00:00:00.000000001+01:00");
}

TEST(DateTimeText, WritesFieldsBeyondTheirRange) {
  CDateTime value(2004, 1, 1, 0, 0, 0);
  value.SetYear(-32768);
  value.SetMonth(255);
  value.SetDay(255);
  value.SetHour(255);
  value.SetMinute(255);
  value.SetSecond(255);
  value.SetMilliSecond(65535);
  value.SetMicroSecond(65535);
  value.SetNanoSecond(65535);
  value.SetTimeZone(-23, 59);
  EXPECT_EQ(value.ToString(), "-32768-255-255T255:255:255.655356553565535-23:59");
}

TEST(DateTimeText, IsTheSameInALocaleWithAComma) {
  const qztest::CommaLocale locale;
  if (!locale.Works()) GTEST_SKIP() << "localedef ended with " << locale.GetStatus();
  EXPECT_EQ(CDateTime("2004-02-29T12:00:00.125Z").ToString(), "2004-02-29T12:00:00.125Z");
}
