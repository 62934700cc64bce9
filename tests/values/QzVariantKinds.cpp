#include "tests/values/QzVariantKinds.h"

#include "tests/support/QzTest.h"

namespace qztest {

using QzXmlLib16::CBinaryData;
using QzXmlLib16::CDateTime;
using QzXmlLib16::CDateTimeSpan;
using QzXmlLib16::QzVariant;

CDateTime MakeDate(const char* text) {
  CDateTime date;
  date.ParseXSDDate(text);
  return date;
}

CDateTime MakeTime(const char* text) {
  CDateTime time;
  time.ParseXSDTime(text);
  return time;
}

CDateTimeSpan MakeSpan(const char* text) {
  CDateTimeSpan span;
  span.ParseXSDDuration(text);
  return span;
}

namespace {

const unsigned char kBytes[] = {0x4D, 0x61, 0x6E};

}  // namespace

const std::vector<Kind>& GetKinds() {
  static const std::vector<Kind> s_kinds = {
      {1, "hexBinary", [](QzVariant& v) { v.SetHexBinary(CBinaryData(kBytes, 3)); }, "4D616E",
       [](const QzVariant& v) { EXPECT_EQ(CBinaryData("Man"), v.GetHexBinary()); },
       "m_type == ItemType_hexBinary"},
      {2, "base64Binary", [](QzVariant& v) { v.SetBase64Binary(CBinaryData(kBytes, 3)); }, "TWFu",
       [](const QzVariant& v) { EXPECT_EQ(CBinaryData("Man"), v.GetBase64Binary()); },
       "m_type == ItemType_base64Binary"},
      {3, "i1", [](QzVariant& v) { v.SetI1(static_cast<char>(-128)); }, "-128",
       [](const QzVariant& v) { EXPECT_EQ(static_cast<char>(-128), v.GetI1()); },
       "m_type == ItemType_i1"},
      {4, "i2", [](QzVariant& v) { v.SetI2(-32768); }, "-32768",
       [](const QzVariant& v) { EXPECT_EQ(-32768, v.GetI2()); }, "m_type == ItemType_i2"},
      {5, "i4", [](QzVariant& v) { v.SetI4(-2147483647 - 1); }, "-2147483648",
       [](const QzVariant& v) { EXPECT_EQ(-2147483647 - 1, v.GetI4()); }, "m_type == ItemType_i4"},
      {6, "i8", [](QzVariant& v) { v.SetI8(-9007199254740993); }, "-9007199254740993",
       [](const QzVariant& v) { EXPECT_EQ(-9007199254740993, v.GetI8()); },
       "m_type == ItemType_i8"},
      {7, "ui1", [](QzVariant& v) { v.SetUI1(255); }, "255",
       [](const QzVariant& v) { EXPECT_EQ(255, v.GetUI1()); }, "m_type == ItemType_ui1"},
      {8, "ui2", [](QzVariant& v) { v.SetUI2(65535); }, "65535",
       [](const QzVariant& v) { EXPECT_EQ(65535, v.GetUI2()); }, "m_type == ItemType_ui2"},
      {9, "ui4", [](QzVariant& v) { v.SetUI4(4294967295u); }, "4294967295",
       [](const QzVariant& v) { EXPECT_EQ(4294967295u, v.GetUI4()); }, "m_type == ItemType_ui4"},
      {10, "ui8", [](QzVariant& v) { v.SetUI8(18446744073709551615u); }, "18446744073709551615",
       [](const QzVariant& v) { EXPECT_EQ(18446744073709551615u, v.GetUI8()); },
       "m_type == ItemType_ui8"},
      {11, "r4", [](QzVariant& v) { v.SetR4(0.1f); }, "0.1",
       [](const QzVariant& v) { EXPECT_EQ(0.1f, v.GetR4()); }, "m_type == ItemType_r4"},
      {12, "r8", [](QzVariant& v) { v.SetR8(-1e20); }, "-1e+020",
       [](const QzVariant& v) { EXPECT_EQ(-1e20, v.GetR8()); }, "m_type == ItemType_r8"},
      {13, "duration", [](QzVariant& v) { v.SetDuration(MakeSpan("-P1DT2H")); }, "-P1DT2H",
       [](const QzVariant& v) { EXPECT_EQ("-P1DT2H", v.GetDuration().ToString()); },
       "m_type == ItemType_duration"},
      {14, "yearMonth", [](QzVariant& v) { v.SetYearMonth(MakeDate("2004-05")); }, "2004-05",
       [](const QzVariant& v) { EXPECT_EQ("2004-05", v.GetYearMonth().ToString()); },
       "m_type == ItemType_yearMonth"},
      {15, "monthDay", [](QzVariant& v) { v.SetMonthDay(MakeDate("--02-29Z")); }, "--02-29Z",
       [](const QzVariant& v) { EXPECT_EQ("--02-29Z", v.GetMonthDay().ToString()); },
       "m_type == ItemType_monthDay"},
      {16, "year", [](QzVariant& v) { v.SetYear(1999); }, "1999",
       [](const QzVariant& v) { EXPECT_EQ(1999, v.GetYear()); }, "m_type == ItemType_year"},
      {17, "month", [](QzVariant& v) { v.SetMonth(2); }, "--02",
       [](const QzVariant& v) { EXPECT_EQ(2, v.GetMonth()); }, "m_type == ItemType_month"},
      {18, "day", [](QzVariant& v) { v.SetDay(31); }, "---31",
       [](const QzVariant& v) { EXPECT_EQ(31, v.GetDay()); }, "m_type == ItemType_day"},
      {19, "date", [](QzVariant& v) { v.SetDate(MakeDate("-0044-03-15")); }, "-0044-03-15",
       [](const QzVariant& v) { EXPECT_EQ("-0044-03-15", v.GetDate().ToString()); },
       "m_type == ItemType_date"},
      {20, "datetime", [](QzVariant& v) { v.SetDateTime("2004-02-29T23:59:59.5+01:00"); },
       "2004-02-29T23:59:59.5+01:00",
       [](const QzVariant& v) {
         EXPECT_EQ("2004-02-29T23:59:59.5+01:00", v.GetDateTime().ToString());
       },
       "m_type == ItemType_datetime"},
      {21, "time", [](QzVariant& v) { v.SetTime(MakeTime("00:00:00")); }, "00:00:00",
       [](const QzVariant& v) { EXPECT_EQ("00:00:00", v.GetTime().ToString()); },
       "m_type == ItemType_time"},
      {22, "char", [](QzVariant& v) { v.SetChar('x'); }, "x",
       [](const QzVariant& v) { EXPECT_EQ('x', v.GetChar()); }, "m_type == ItemType_char"},
      {23, "string", [](QzVariant& v) { v.SetString("a text that is not short at all"); },
       "a text that is not short at all",
       [](const QzVariant& v) { EXPECT_EQ("a text that is not short at all", v.GetString()); },
       "m_type == ItemType_string && m_pString != 0"},
      {24, "boolean", [](QzVariant& v) { v.SetBoolean(true); }, "true",
       [](const QzVariant& v) { EXPECT_TRUE(v.GetBoolean()); }, "m_type == ItemType_boolean"},
      {25, "decimal", [](QzVariant& v) { v.SetDecimal("-12345678901234567890.05"); },
       "-12345678901234567890.05",
       [](const QzVariant& v) {
         EXPECT_EQ("-12345678901234567890.05", v.GetDecimal().ToString());
         EXPECT_EQ("-12345678901234567890.05", v.GetDecimalReference().ToString());
       },
       "m_type == ItemType_decimal && m_pDecimal != 0"},
      {26, "integer", [](QzVariant& v) { v.SetInteger("-123456789012345678901234567890"); },
       "-123456789012345678901234567890",
       [](const QzVariant& v) {
         EXPECT_EQ("-123456789012345678901234567890", v.GetInteger().ToString());
         EXPECT_EQ("-123456789012345678901234567890", v.GetIntegerReference().ToString());
       },
       "m_type == ItemType_integer && m_pBigInteger != 0"},
  };
  return s_kinds;
}

}  // namespace qztest
