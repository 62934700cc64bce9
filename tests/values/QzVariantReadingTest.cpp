#include <string>
#include <vector>

#include "qzxml/values/QzVariant.h"
#include "tests/support/QzTest.h"

// A variant that reads one text after the other, into a value that it has already.
using QzXmlLib16::CBigInteger;
using QzXmlLib16::CDecimal;
using QzXmlLib16::CQzException;
using QzXmlLib16::CWhitespaceUtils;
using QzXmlLib16::ItemType;
using QzXmlLib16::QzVariant;

namespace {

constexpr auto kNone = CWhitespaceUtils::WhitespaceRule_None;
constexpr ItemType kDecimal = QzXmlLib16::ItemType_decimal;
constexpr ItemType kInteger = QzXmlLib16::ItemType_integer;

struct Reading {
  const char* text;
  const char* written;
};

// The texts one after the other, all by one variant.
template <std::size_t count>
void ExpectReadings(ItemType type, const Reading (&readings)[count]) {
  QzVariant value;
  QzVariant before;
  std::string written;
  for (const Reading& reading : readings) {
    SCOPED_TRACE(reading.text);
    value.FromString(reading.text, type, kNone);
    EXPECT_EQ(type, value.GetTypeAsEnum());
    EXPECT_FALSE(value.IsNil());
    EXPECT_EQ(reading.written, value.ToString(nullptr));
    if (before.IsValid()) {
      EXPECT_EQ(written, before.ToString(nullptr));  // of a copy
    }
    before = value;
    written = reading.written;
  }
}

}  // namespace

TEST(QzVariantReading, ANumberOfAnySizeKeepsNothingOfTheOneAheadOfIt) {
  const Reading decimals[] = {
      {"-12345678901234567890.0625", "-12345678901234567890.0625"},
      {"3", "3"},
      {"0.05", "0.05"},
      {"-7e2", "-700"},
      {"1.50", "1.5"},
      {"", "0"},
      {"-0.5", "-0.5"},
      {"12e-1", "1.2"},
      {"4", "4"},
  };
  ExpectReadings(kDecimal, decimals);
  const Reading integers[] = {
      {"-123456789012345678901234567890", "-123456789012345678901234567890"},
      {"3", "3"},
      {"1e3", "1000"},
      {"-1", "-1"},
      {"", "0"},
      {" 5 ", "5"},
  };
  ExpectReadings(kInteger, integers);
}

TEST(QzVariantReading, PlacesAndSignAreThoseOfTheLastText) {
  QzVariant value;
  value.FromString("-1.0625", kDecimal, kNone);
  EXPECT_EQ(4, value.GetDecimal().GetFractionDivider());
  value.FromString("2.5", kDecimal, kNone);
  EXPECT_EQ(1, value.GetDecimal().GetFractionDivider());
  EXPECT_TRUE(value.GetDecimal() > CDecimal("2"));
  EXPECT_TRUE(value.GetDecimal() == CDecimal("2.5"));
  value.FromString("-7", kInteger, kNone);
  value.FromString("0", kInteger, kNone);
  EXPECT_FALSE(value.GetInteger() < CBigInteger("0"));  // no negative zero is left behind
}

TEST(QzVariantReading, ATextThatDoesNotParseLeavesAValueOfTheSameKind) {
  const struct {
    ItemType type;
    const char* good;
    std::vector<const char*> bad;
  } cases[] = {
      {QzXmlLib16::ItemType_hexBinary, "0AFF", {"0", "0g", "01x"}},
      {QzXmlLib16::ItemType_i1, "-5", {"128", "", "1x"}},
      {QzXmlLib16::ItemType_i8, "-5", {"9223372036854775808", "1 2"}},
      {QzXmlLib16::ItemType_ui8, "5", {"18446744073709551616", "-"}},
      {QzXmlLib16::ItemType_r8, "0.5", {"1,5", "1e", "Infinity"}},
      {QzXmlLib16::ItemType_duration, "P1Y2M", {"P", "P1DT", "P9Y8X"}},
      {QzXmlLib16::ItemType_yearMonth, "2004-05", {"1999-13", "1999-12+25:00"}},
      {QzXmlLib16::ItemType_monthDay, "--05-06", {"--02-30", "--12-31x"}},
      {QzXmlLib16::ItemType_year, "2004", {"0000", "--05"}},
      {QzXmlLib16::ItemType_month, "--05", {"--13", "2004"}},
      {QzXmlLib16::ItemType_day, "---06", {"---00", "--05"}},
      {QzXmlLib16::ItemType_date, "2004-05-06", {"2003-02-29", "1999-12-31T00:00:00"}},
      {QzXmlLib16::ItemType_datetime, "2004-05-06T07:08:09Z", {"1999-12-31", "x"}},
      {QzXmlLib16::ItemType_time, "07:08:09.5", {"24:00:00", "12:34:56+9"}},
      {QzXmlLib16::ItemType_char, "x", {"", "yz"}},
      {QzXmlLib16::ItemType_boolean, "true", {"", "2", "falsee"}},
      {kDecimal, "-1.5", {"x", "12.34x", "1.2.3", "7e1025", "1e99999999999999999999", "1e5x"}},
      {kInteger, "-15", {"x", "12x", "3.5.1", "7e1025"}},
  };
  for (const auto& c : cases) {
    QzVariant value;
    value.FromString(c.good, c.type, kNone);
    for (const char* bad : c.bad) {
      EXPECT_THROW(value.FromString(bad, c.type, kNone), CQzException) << c.good << ": " << bad;
      EXPECT_EQ(c.type, value.GetTypeAsEnum());
      EXPECT_EQ(c.good, value.ToString(nullptr)) << bad;
    }
    value.SetNil();
    EXPECT_THROW(value.FromString(c.bad[0], c.type, kNone), CQzException);
    EXPECT_TRUE(value.IsNil());
    EXPECT_EQ(c.type, value.GetTypeAsEnum());
    value.FromString(c.good, c.type, kNone);
    EXPECT_FALSE(value.IsNil());
    EXPECT_EQ(c.good, value.ToString(nullptr));
  }
}

TEST(QzVariantReading, WhatIsLentIsNotReadInto) {
  const CDecimal decimal("1.5");
  const CBigInteger integer("7");
  QzVariant value;
  value.LendDecimal(decimal);
  value.FromString("2.25", kDecimal, kNone);
  EXPECT_EQ("2.25", value.ToString(nullptr));
  value.LendInteger(integer);
  value.FromString("8", kInteger, kNone);
  EXPECT_EQ("8", value.ToString(nullptr));
  value.LendDecimal(decimal);
  EXPECT_THROW(value.FromString("x", kDecimal, kNone), CQzException);
  EXPECT_EQ(&decimal, &value.GetDecimalReference());
  EXPECT_EQ("1.5", decimal.ToString());
  EXPECT_EQ("7", integer.ToString());
}

TEST(QzVariantReading, AReadingOfNilOfNoKindStaysNilOnce) {
  for (const ItemType type : {kDecimal, kInteger, QzXmlLib16::ItemType_i4}) {
    QzVariant value;
    value.SetNil();
    value.FromString("5", type, kNone);
    EXPECT_TRUE(value.IsNil());
    EXPECT_EQ(type, value.GetTypeAsEnum());
    EXPECT_EQ("5", value.ToString(nullptr));
    value.FromString("6", type, kNone);
    EXPECT_FALSE(value.IsNil());
    EXPECT_EQ("6", value.ToString(nullptr));
  }
}
