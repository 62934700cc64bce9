#include <string>

#include "tests/serialization/Facets.h"
#include "tests/support/CommaLocale.h"
#include "tests/support/QzTest.h"

// The facets of numbers of any size, dates and durations.
using QzXmlLib16::CDateTime;
using QzXmlLib16::CheckPrimitiveRestriction;
using QzXmlLib16::CQzException;
using QzXmlLib16::CQzInvalidStateException;
using QzXmlLib16::CQzInvalidValueException;
using QzXmlLib16::ItemType;
using QzXmlLib16::QzVariant;
using namespace qztest;

namespace {

constexpr ItemType kDuration = QzXmlLib16::ItemType_duration;
constexpr ItemType kYearMonth = QzXmlLib16::ItemType_yearMonth;
constexpr ItemType kMonthDay = QzXmlLib16::ItemType_monthDay;
constexpr ItemType kYear = QzXmlLib16::ItemType_year;
constexpr ItemType kMonth = QzXmlLib16::ItemType_month;
constexpr ItemType kDay = QzXmlLib16::ItemType_day;
constexpr ItemType kDate = QzXmlLib16::ItemType_date;
constexpr ItemType kDateTime = QzXmlLib16::ItemType_datetime;
constexpr ItemType kTime = QzXmlLib16::ItemType_time;
constexpr ItemType kDecimal = QzXmlLib16::ItemType_decimal;
constexpr ItemType kInteger = QzXmlLib16::ItemType_integer;

// Whether a value keeps each of the bounds, when it is the only one.
struct BoundCase {
  ItemType type;
  const char* value;
  const char* bound;
  bool minInclusive;
  bool maxInclusive;
  bool minExclusive;
  bool maxExclusive;
};

bool Keeps(const BoundCase& c, const Facets& facets) {
  return Check(c.type, c.value, facets).empty();
}

void ExpectBounds(const BoundCase& c) {
  SCOPED_TRACE(std::string(c.value) + " against " + c.bound);
  EXPECT_EQ(c.minInclusive, Keeps(c, MinInclusive(c.bound)));
  EXPECT_EQ(c.maxInclusive, Keeps(c, MaxInclusive(c.bound)));
  EXPECT_EQ(c.minExclusive, Keeps(c, MinExclusive(c.bound)));
  EXPECT_EQ(c.maxExclusive, Keeps(c, MaxExclusive(c.bound)));
}

BoundCase Less(ItemType type, const char* value, const char* bound) {
  return {type, value, bound, false, true, false, true};
}

BoundCase Equal(ItemType type, const char* value, const char* bound) {
  return {type, value, bound, true, true, false, false};
}

BoundCase Greater(ItemType type, const char* value, const char* bound) {
  return {type, value, bound, true, false, true, false};
}

BoundCase Indeterminate(ItemType type, const char* value, const char* bound) {
  return {type, value, bound, true, true, true, true};
}

}  // namespace

// --- Bounds ---

TEST(PrimitiveRestrictionsObjects, NumbersOfAnySizeKeepTheirBounds) {
  const BoundCase cases[] = {
      Less(kDecimal, "1.49", "1.5"),
      Equal(kDecimal, "1.50", "1.5"),
      Equal(kDecimal, "1.5", " 15e-1 "),
      Greater(kDecimal, "1.51", "1.5"),
      Less(kDecimal, "-0.5", "0.5"),
      Greater(kDecimal, "0.05", "0.005"),
      Less(kDecimal, "9", "10"),
      Less(kDecimal, "12345678901234567890.1", "12345678901234567890.2"),
      Less(kInteger, "9", "10"),
      Equal(kInteger, "10", "\t10\n"),
      Equal(kInteger, "1000", "1e3"),
      Greater(kInteger, "-9", "-10"),
      Less(kInteger, "-123456789012345678901234567890", "0"),
      Greater(kInteger, "123456789012345678901234567891", "123456789012345678901234567890"),
  };
  for (const BoundCase& c : cases) ExpectBounds(c);
}

TEST(PrimitiveRestrictionsObjects, ANegativeZeroIsBelowZero) {
  // Equal to it and yet less, as these numbers compare.
  ExpectBounds(Less(kInteger, "-0", "0"));
  ExpectBounds(Less(kDecimal, "-0", "0"));
  ExpectBounds(Greater(kDecimal, "0", "-0.0"));
}

TEST(PrimitiveRestrictionsObjects, DatesKeepTheirBounds) {
  const BoundCase cases[] = {
      Less(kDate, "2004-01-14", "2004-01-15"),
      Equal(kDate, "2004-01-15", " 2004-01-15 "),
      Greater(kDate, "2004-01-16", "2004-01-15"),
      Equal(kDate, "2004-01-15Z", "2004-01-15+00:00"),
      Less(kDateTime, "2004-01-15T10:00:00Z", "2004-01-15T10:00:00.001Z"),
      Equal(kDateTime, "2004-01-15T10:00:00+01:00", "2004-01-15T09:00:00Z"),
      Greater(kDateTime, "2004-01-15T10:00:00", "2003-12-31T23:59:59"),
      Less(kTime, "12:00:00", "12:00:01"),
      Equal(kTime, "12:00:00.50", "12:00:00.5"),
      // An hour before midnight in UTC, on the day before, which a time does not tell.
      Greater(kTime, "01:00:00+02:00", "12:00:00Z"),
      Less(kYearMonth, "2004-05", "2004-06"),
      Equal(kYearMonth, "2004-05", "2004-05"),
      Greater(kYearMonth, "2005-01", "2004-12"),
      Less(kMonthDay, "--05-06", "--05-07"),
      Equal(kMonthDay, "--02-29", "--02-29"),
      Greater(kMonthDay, "--12-01", "--11-30"),
  };
  for (const BoundCase& c : cases) ExpectBounds(c);
}

TEST(PrimitiveRestrictionsObjects, WhatCanNotBeComparedKeepsEveryBound) {
  const BoundCase cases[] = {
      // The window reaches from the value without a zone 14 hours back.
      Indeterminate(kDate, "2004-01-15", "2004-01-15Z"),
      Indeterminate(kDate, "2004-01-16", "2004-01-15Z"),
      Less(kDate, "2004-01-14", "2004-01-15Z"),
      Greater(kDate, "2004-01-17", "2004-01-15Z"),
      Indeterminate(kDateTime, "2004-01-01T12:00:00", "2004-01-01T02:00:00Z"),
      Greater(kDateTime, "2004-01-01T12:00:00", "2003-12-31T20:00:00Z"),
      Less(kDateTime, "2004-01-01T12:00:00", "2004-01-01T20:00:00Z"),
      Indeterminate(kDate, "-0001-01-01", "0001-01-01"),
      Indeterminate(kDuration, "P1M", "P30D"),
      Indeterminate(kDuration, "P1Y", "P365D"),
  };
  for (const BoundCase& c : cases) ExpectBounds(c);
}

TEST(PrimitiveRestrictionsObjects, DurationsKeepTheirBounds) {
  const BoundCase cases[] = {
      Less(kDuration, "P1M", "P32D"),    Greater(kDuration, "P1M", "P27D"),
      Equal(kDuration, "P12M", " P1Y "), Equal(kDuration, "PT60M", "PT1H"),
      Less(kDuration, "-P1D", "P1D"),    Greater(kDuration, "PT48H", "P1D"),
      Equal(kDuration, "PT2H", "PT1H"),  // told apart by whole days only
  };
  for (const BoundCase& c : cases) ExpectBounds(c);
}

TEST(PrimitiveRestrictionsObjects, YearsMonthsAndDaysKeepTheirBoundsAsUnsignedNumbers) {
  const BoundCase cases[] = {
      Less(kYear, "1999", "2000"),      Equal(kYear, "2000", " 2000Z "),
      Greater(kYear, "2001", "2000"),   Less(kYear, "2001", "-0001"),  // 65535
      Greater(kYear, "-0001", "-0002"), Equal(kYear, "2004", "2004-05-06"),
      Less(kMonth, "--02", "--03"),     Equal(kMonth, "--02", "--02--"),
      Greater(kMonth, "--12", "--11"),  Less(kDay, "---09", "---10"),
      Equal(kDay, "---10", "--05-10"),  Greater(kDay, "---31", "---10"),
  };
  for (const BoundCase& c : cases) ExpectBounds(c);
}

TEST(PrimitiveRestrictionsObjects, ADateThatWasNeverSetIsComparedWithoutHarm) {
  const struct {
    ItemType type;
    CDateTime::DTType dateType;
    const char* bound;
  } cases[] = {{kYearMonth, CDateTime::dt_gYearMonth, "2004-05Z"},
               {kMonthDay, CDateTime::dt_gMonthDay, "--05-06-14:00"},
               {kDate, CDateTime::dt_date, "2004-05-06+14:00"},
               {kDateTime, CDateTime::dt_dateTime, "2004-05-06T07:08:09Z"},
               {kTime, CDateTime::dt_time, "07:08:09Z"}};
  for (const auto& c : cases) {
    for (const CDateTime& date : {CDateTime(c.dateType), CDateTime()}) {
      QzVariant value;
      value.LendDateTime(c.type, date);
      for (const Facets& facets : {MinInclusive(c.bound), MaxInclusive(c.bound),
                                   MinExclusive(c.bound), MaxExclusive(c.bound)}) {
        try {
          CheckPrimitiveRestriction("name", value, c.type, facets.Make());
        } catch (const CQzException& e) {
          EXPECT_EQ("Invalid Value for name [" + date.ToString() + "].", e.GetMessage());
        }
      }
    }
  }
}

// --- Texts ---

TEST(PrimitiveRestrictionsObjects, AFailureShowsTheValueInTheFormOfItsKind) {
  struct {
    ItemType type;
    const char* value;
    const char* most;
    const char* message;
  } const cases[] = {
      {kDuration, "P1Y2M3DT4H5M6.50S", "P1Y", "Invalid Value for name [P1Y2M3DT4H5M6.5S]."},
      {kYearMonth, "2004-05", "2004-04", "Invalid Value for name [2004-05]."},
      {kMonthDay, "--05-06", "--05-05", "Invalid Value for name [--05-06]."},
      {kYear, "2004", "2003", "Invalid Value for name [2004]"},
      {kYear, "-0001", "2003", "Invalid Value for name [65535]"},
      {kMonth, "--05", "--04", "Invalid Value for name [5]"},
      {kDay, "---06", "---05", "Invalid Value for name [6]"},
      {kDate, "2004-05-06Z", "2004-05-05Z", "Invalid Value for name [2004-05-06Z]."},
      {kDateTime, "2004-05-06T01:02:03.50+01:00", "2004-05-05T00:00:00Z",
       "Invalid Value for name [2004-05-06T01:02:03.5+01:00]."},
      {kTime, "01:02:03", "01:02:02", "Invalid Value for name [01:02:03]."},
      {kDecimal, "+1.50", "1", "Invalid Value for name [1.5]."},
      {kInteger, "007", "6", "Invalid Value for name [7]."},
  };
  for (const auto& c : cases) EXPECT_EQ(c.message, Check(c.type, c.value, MaxInclusive(c.most)));
}

TEST(PrimitiveRestrictionsObjects, AFailedFacetIsAPlainException) {
  EXPECT_QZ_THROW(CQzException, "Invalid Value for name [2004-05-06].",
                  CheckPrimitiveRestriction("name", MakeValue(kDate, "2004-05-06"), kDate,
                                            MaxInclusive("2004-05-05").Make()));
  EXPECT_QZ_THROW(CQzException, "Invalid Value for name [2004]",
                  CheckPrimitiveRestriction("name", MakeValue(kYear, "2004"), kYear,
                                            MaxInclusive("2003").Make()));
  EXPECT_QZ_THROW(CQzException, "Invalid Value for name [1.5].",
                  CheckPrimitiveRestriction("name", MakeValue(kDecimal, "1.5"), kDecimal,
                                            FractionDigits(0).Make()));
}

TEST(PrimitiveRestrictionsObjects, AFacetThatDoesNotParseFailsAsItsConversionDoes) {
  struct {
    ItemType type;
    const char* value;
    const char* bound;
    const char* message;
  } const cases[] = {
      {kDuration, "P1D", " x ",
       "Invalid XSD Duration [x] expected [-]P[nY][nM][nD][T[nH][nM][nS.ff]]"},
      {kYearMonth, "2004-05", "x", "Invalid XSD Date [x] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {kMonthDay, "--05-06", "--02-30", "Invalid Day [30] (1 <= day <= days in month)"},
      {kYear, "2004", "0000", "Invalid Year [0] (-9999 <= year <= 9999 && year != 0)"},
      {kMonth, "--05", "--13", "Invalid Month [13] (1 <= month <= 12)"},
      {kDay, "---05", "x", "Invalid XSD Date [x] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {kDate, "2004-05-06", "2004-05-06T00:00:00", "Invalid Date ('T' not allowed)"},
      {kDateTime, "2004-05-06T00:00:00", "2004-05-06", "Invalid XSD DateTime [2004-05-06]."},
      {kTime, "00:00:00", "24:00:00", "Invalid XSD Time [24:00:00] expected hh:mm:ss[.ff]"},
      {kDecimal, "1", "1,5",
       "The string representing a Decimal, contained an invalid char at position 1 [1,5]."},
      {kInteger, "1", "one",
       "The string representing a Decimal, contained an invalid char at position 0 [one]."},
  };
  for (const auto& c : cases) {
    for (const Facets& facets : {MinInclusive(c.bound), MaxInclusive(c.bound),
                                 MinExclusive(c.bound), MaxExclusive(c.bound)}) {
      EXPECT_QZ_THROW(
          CQzInvalidValueException, c.message,
          CheckPrimitiveRestriction("name", MakeValue(c.type, c.value), c.type, facets.Make()));
    }
  }
  EXPECT_QZ_THROW(CQzInvalidStateException, "Failed to GetYear. Invalid Date Type: gMonth.",
                  CheckPrimitiveRestriction("name", MakeValue(kYear, "2004"), kYear,
                                            MinInclusive("--05").Make()));
}

TEST(PrimitiveRestrictionsObjects, FacetsAreReadAndTestedOneAfterTheOther) {
  struct {
    ItemType type;
    const char* value;
    const char* low;   // below the value
    const char* high;  // above it
    const char* failure;
    const char* message;
  } const cases[] = {
      {kDuration, "P2D", "P1D", "P3D", "Invalid Value for name [P2D].",
       "Invalid XSD Duration [?] expected [-]P[nY][nM][nD][T[nH][nM][nS.ff]]"},
      {kDate, "2004-05-06", "2004-05-05", "2004-05-07", "Invalid Value for name [2004-05-06].",
       "Invalid XSD Date [?] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {kYear, "2004", "2003", "2005", "Invalid Value for name [2004]",
       "Invalid XSD Date [?] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {kDecimal, "1.5", "1.4", "1.6", "Invalid Value for name [1.5].",
       "The string representing a Decimal, contained an invalid char at position 0 [?]."},
      {kInteger, "15", "14", "16", "Invalid Value for name [15].",
       "The string representing a Decimal, contained an invalid char at position 0 [?]."},
  };
  for (const auto& c : cases) {
    Facets facets = MinInclusive(c.high);
    facets.maxInclusive = "?";
    EXPECT_EQ(c.failure, Check(c.type, c.value, facets));
    facets.minInclusive = c.low;
    EXPECT_EQ(c.message, Check(c.type, c.value, facets));

    facets.maxInclusive = c.low;
    facets.minExclusive = "?";
    EXPECT_EQ(c.failure, Check(c.type, c.value, facets));
    facets.maxInclusive = c.high;
    EXPECT_EQ(c.message, Check(c.type, c.value, facets));

    facets.minExclusive = c.high;
    facets.maxExclusive = "?";
    EXPECT_EQ(c.failure, Check(c.type, c.value, facets));
    facets.minExclusive = c.low;
    EXPECT_EQ(c.message, Check(c.type, c.value, facets));
    facets.maxExclusive = c.high;
    EXPECT_EQ("", Check(c.type, c.value, facets));
  }
  // Digits are counted behind the bounds.
  for (const ItemType type : {kDecimal, kInteger}) {
    Facets facets = TotalDigits(0);
    facets.maxExclusive = "?";
    EXPECT_EQ("The string representing a Decimal, contained an invalid char at position 0 [?].",
              Check(type, "15", facets));
  }
}

// --- Digits ---

TEST(PrimitiveRestrictionsObjects, DigitsOfADecimalAreThoseAheadOfAndBehindThePoint) {
  struct {
    const char* value;
    int aheadOfPoint;
    int behindPoint;
  } const cases[] = {
      {"0", 0, 0},      {"0.0", 0, 0},   {"7", 1, 0},
      {"-7", 1, 0},     {"100", 3, 0},   {"0.5", 0, 1},
      {"-0.5", 0, 1},   {"0.05", 0, 2},  {"1.50", 1, 1},
      {"-99.25", 2, 2}, {"1.005", 1, 3}, {"1.5e3", 4, 0},
      {"10.00", 2, 0},  {"007.5", 1, 1}, {"12345678901234567890.000000000000000000001", 20, 21},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.value);
    const int total = c.aheadOfPoint + c.behindPoint;
    EXPECT_EQ("", Check(kDecimal, c.value, TotalDigits(total)));
    if (total > 0) {
      EXPECT_NE("", Check(kDecimal, c.value, TotalDigits(total - 1)));
    }
    EXPECT_EQ("", Check(kDecimal, c.value, FractionDigits(c.behindPoint)));
    if (c.behindPoint > 0) {
      EXPECT_NE("", Check(kDecimal, c.value, FractionDigits(c.behindPoint - 1)));
    }
    Facets both = TotalDigits(total);
    both.fractionDigits = c.behindPoint;
    EXPECT_EQ("", Check(kDecimal, c.value, both));
  }
}

TEST(PrimitiveRestrictionsObjects, TheSignOfAnIntegerCountsAsADigit) {
  EXPECT_EQ("", Check(kInteger, "99", TotalDigits(2)));
  EXPECT_EQ("", Check(kInteger, "0099", TotalDigits(2)));
  EXPECT_EQ("Invalid Value for name [100].", Check(kInteger, "100", TotalDigits(2)));
  EXPECT_EQ("Invalid Value for name [-10].", Check(kInteger, "-10", TotalDigits(2)));
  EXPECT_EQ("", Check(kInteger, "-10", TotalDigits(3)));
  EXPECT_EQ("Invalid Value for name [0].", Check(kInteger, "0", TotalDigits(0)));
  EXPECT_EQ("", Check(kInteger, "1234567890123456789012", TotalDigits(22)));
}

TEST(PrimitiveRestrictionsObjects, FacetsOfOtherKindsHaveNoEffect) {
  Facets facets = Pattern("x");
  facets.minLength = 100;
  facets.maxLength = 0;
  facets.length = 100;
  EXPECT_EQ("", Check(kDecimal, "1.5", facets));
  facets.fractionDigits = 0;
  EXPECT_EQ("", Check(kInteger, "15", facets));
  facets.totalDigits = 0;
  EXPECT_EQ("", Check(kDuration, "P1D", facets));
  EXPECT_EQ("", Check(kYearMonth, "2004-05", facets));
  EXPECT_EQ("", Check(kMonthDay, "--05-06", facets));
  EXPECT_EQ("", Check(kYear, "2004", facets));
  EXPECT_EQ("", Check(kMonth, "--05", facets));
  EXPECT_EQ("", Check(kDay, "---06", facets));
  EXPECT_EQ("", Check(kDate, "2004-05-06", facets));
  EXPECT_EQ("", Check(kDateTime, "2004-05-06T00:00:00", facets));
  EXPECT_EQ("", Check(kTime, "00:00:00", facets));
}

TEST(PrimitiveRestrictionsObjects, ChecksAreTheSameInEveryLocale) {
  const qztest::CommaLocale locale;
  if (!locale.Works()) GTEST_SKIP() << "no localedef: " << locale.GetStatus();
  ExpectBounds(Less(kDecimal, "1.49", "1.5"));
  EXPECT_EQ("Invalid Value for name [1234.5].", Check(kDecimal, "1234.5", MaxInclusive("1234.4")));
  EXPECT_EQ("Invalid Value for name [12:00:00.5].",
            Check(kTime, "12:00:00.5", MaxInclusive("12:00:00.25")));
}
