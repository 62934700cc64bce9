// The names of kinds, and variants to text and back.
#include <cmath>

#include "qzxml/values/QzVariant.h"
#include "tests/support/QzTest.h"
#include "tests/values/QzVariantKinds.h"

using qztest::GetKinds;
using qztest::Kind;
using QzXmlLib16::CQzException;
using QzXmlLib16::CQzInvalidValueException;
using QzXmlLib16::CWhitespaceUtils;
using QzXmlLib16::ItemType;
using QzXmlLib16::QzVariant;
using QzXmlLib16::QzVariantTestAccess;

namespace {

constexpr auto kNone = CWhitespaceUtils::WhitespaceRule_None;
constexpr auto kCollapse = CWhitespaceUtils::WhitespaceRule_Collapse;

}  // namespace

TEST(QzVariant, AKindWithoutANameThrows) {
  QzVariant value;
  EXPECT_QZ_THROW(CQzException, "Invalid Type 0", value.GetType());
  value.SetXmlObject(nullptr);
  EXPECT_QZ_THROW(CQzException, "Invalid Type 27", value.GetType());
  value.SetXmlCollection(nullptr);
  EXPECT_QZ_THROW(CQzException, "Invalid Type 28", value.GetType());
  QzVariantTestAccess::SetType(value, 29);
  EXPECT_QZ_THROW(CQzException, "Invalid Type 29", value.GetType());
}

TEST(QzVariant, AKindWithoutATextThrows) {
  QzVariant value;
  EXPECT_QZ_THROW(CQzException, "Invalid Type 0 to convert to string", value.ToString(nullptr));
  value.SetXmlObject(nullptr);
  EXPECT_QZ_THROW(CQzException, "Invalid Type 27 to convert to string", value.ToString(nullptr));
  value.SetXmlCollection(nullptr);
  EXPECT_QZ_THROW(CQzException, "Invalid Type 28 to convert to string", value.ToString(nullptr));
  EXPECT_EQ(28, value.GetTypeAsEnum());
}

TEST(QzVariant, AFormatServesRealsAndDecimalsAlone) {
  for (const Kind& kind : GetKinds()) {
    QzVariant value;
    kind.set(value);
    if (kind.number == 11 || kind.number == 12 || kind.number == 25) continue;
    EXPECT_EQ(kind.text, value.ToString("%.2f")) << kind.name;
  }
  QzVariant real;
  real.SetR8(1.0 / 3);
  EXPECT_EQ("0.33", real.ToString("%.2f"));
  EXPECT_EQ("0.3333333333333333", real.ToString(nullptr));
  real.SetR4(2.0f / 3);
  EXPECT_EQ("0.67", real.ToString("%.2f"));
  EXPECT_EQ("0.6666667", real.ToString(""));
  QzVariant decimal;
  decimal.SetDecimal("12.65");
  EXPECT_EQ("12.7", decimal.ToString("1"));
  EXPECT_EQ("12.65", decimal.ToString(""));
  EXPECT_EQ("13.", decimal.ToString("%.2f"));
}

TEST(QzVariant, ReadsTheTextOfEveryKindBack) {
  for (const Kind& kind : GetKinds()) {
    QzVariant value;
    value.SetString("before");
    value.FromString(kind.text, static_cast<ItemType>(kind.number), kNone);
    EXPECT_EQ(kind.number, value.GetTypeAsEnum()) << kind.name;
    kind.get(value);
  }
}

TEST(QzVariant, ReadsBehindTheRule) {
  QzVariant value;
  value.FromString(" 1\n", QzXmlLib16::ItemType_i4, kCollapse);
  EXPECT_EQ(1, value.GetI4());
  value.FromString(" a\r\n b ", QzXmlLib16::ItemType_string, kCollapse);
  EXPECT_EQ("a b", value.GetString());
  value.FromString(" a\r\n b ", QzXmlLib16::ItemType_string, kNone);
  EXPECT_EQ(" a\r\n b ", value.GetString());
  value.FromString("NaN", QzXmlLib16::ItemType_r8, kNone);
  EXPECT_TRUE(std::isnan(value.GetR8()));
}

TEST(QzVariant, ReadsIntoANilVariant) {
  QzVariant value;
  value.SetI4(1);
  value.SetNil();
  value.FromString("x", QzXmlLib16::ItemType_string, kNone);
  EXPECT_FALSE(value.IsNil());
  EXPECT_EQ("x", value.GetString());
}

TEST(QzVariant, ATextThatDoesNotParseLeavesTheValue) {
  struct Case {
    ItemType type;
    const char* text;
    const char* message;
  };
  const Case cases[] = {
      {QzXmlLib16::ItemType_i1, "128", "The value [128] is to large to fit in a i1"},
      {QzXmlLib16::ItemType_i2, "x", "The value [x] can not be converted to a i4"},
      {QzXmlLib16::ItemType_i4, "x", "The value [x] can not be converted to a i4"},
      {QzXmlLib16::ItemType_i8, "x", "The value [x] can not be converted to a i8"},
      {QzXmlLib16::ItemType_ui1, "256", "The value [256] is to large to fit in a ui1"},
      {QzXmlLib16::ItemType_ui2, "x", "The value [x] can not be converted to a ui4"},
      {QzXmlLib16::ItemType_ui4, "x", "The value [x] can not be converted to a ui4"},
      {QzXmlLib16::ItemType_ui8, "x", "The value [x] can not be converted to a ui8"},
      {QzXmlLib16::ItemType_r4, "x", "The value [x] can not be converted to a r4"},
      {QzXmlLib16::ItemType_r8, "x", "The value [x] can not be converted to a r8"},
      {QzXmlLib16::ItemType_duration, "P",
       "Invalid XSD Duration [P] expected [-]P[nY][nM][nD][T[nH][nM][nS.ff]]"},
      {QzXmlLib16::ItemType_yearMonth, "x",
       "Invalid XSD Date [x] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {QzXmlLib16::ItemType_monthDay, "--02-30", "Invalid Day [30] (1 <= day <= days in month)"},
      {QzXmlLib16::ItemType_year, "", "Invalid Date (Empty String)"},
      {QzXmlLib16::ItemType_month, "--00", "Invalid Month [0] (1 <= month <= 12)"},
      {QzXmlLib16::ItemType_day, "1", "Invalid XSD Date [1] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {QzXmlLib16::ItemType_date, "2003-02-29", "Invalid Day [29] (1 <= day <= days in month"},
      {QzXmlLib16::ItemType_datetime, "x", "Invalid XSD DateTime [x]."},
      {QzXmlLib16::ItemType_time, "x", "Invalid XSD Time [x] expected hh:mm:ss[.ff]"},
      {QzXmlLib16::ItemType_decimal, "1.x",
       "The string representing a Decimal, contained an invalid char at position 2 [1.x]."},
      {QzXmlLib16::ItemType_integer, "x",
       "The string representing a Decimal, contained an invalid char at position 0 [x]."},
      {QzXmlLib16::ItemType_char, "ab",
       "The value [ab] can not be a char as it is either empty of greater than 1 char long"},
      {QzXmlLib16::ItemType_boolean, "2",
       "A Boolean Value read from an XML document was invalid [2]. Valid values are 'true', "
       "'false', '1', or '0'"},
  };
  for (const Case& c : cases) {
    QzVariant value;
    value.SetString("before");
    EXPECT_QZ_THROW(CQzInvalidValueException, c.message, value.FromString(c.text, c.type, kNone));
    EXPECT_EQ("before", value.GetString());
  }
  QzVariant value;
  value.SetString("before");
  EXPECT_QZ_THROW(CQzException, "Invalid length in hex string",
                  value.FromString("ABC", QzXmlLib16::ItemType_hexBinary, kNone));
  EXPECT_EQ("before", value.GetString());
  EXPECT_QZ_THROW(QzXmlLib16::CQzInvalidStateException,
                  "Failed to GetYear. Invalid Date Type: gMonth.",
                  value.FromString("--05", QzXmlLib16::ItemType_year, kNone));
  EXPECT_EQ("before", value.GetString());
  value.SetNil();
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [x] can not be converted to a i4",
                  value.FromString("x", QzXmlLib16::ItemType_i4, kNone));
  EXPECT_TRUE(value.IsNil());
}

TEST(QzVariant, AnUnknownTypeIsToldByTheKindHeld) {
  for (const int type : {0, 27, 28, 29, -1}) {
    QzVariant value;
    EXPECT_QZ_THROW(CQzException, "Invalid Type 0 to convert to string",
                    value.FromString("1", static_cast<ItemType>(type), kNone));
    value.SetI4(7);
    EXPECT_QZ_THROW(CQzException, "Invalid Type 5 to convert to string",
                    value.FromString("1", static_cast<ItemType>(type), kNone));
    EXPECT_EQ(7, value.GetI4());
    value.SetXmlObject(nullptr);
    EXPECT_QZ_THROW(CQzException, "Invalid Type 27 to convert to string",
                    value.FromString("1", static_cast<ItemType>(type), kNone));
  }
}
