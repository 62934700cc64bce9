#pragma once

#include <cstdint>
#include <initializer_list>
#include <limits>
#include <string>
#include <vector>

#include "qzxml/QzXml.h"
#include "tests/collections/TypedCols.h"

namespace qztest {

// --- The classes, each with three values of its kind and their texts.

template <typename OfClass, ItemType kItemType, typename OfValue>
struct Of {
  using Col = OfClass;
  using Value = OfValue;
  static constexpr ItemType kType = kItemType;
  static constexpr ItemType kWritten = kItemType;  // what a writer is told
  static constexpr bool kIsDate = false;
};
template <typename OfClass, ItemType kItemType>
struct OfDate : Of<OfClass, kItemType, CDateTime> {
  static constexpr ItemType kWritten = ItemType_datetime;
  static constexpr bool kIsDate = true;
};

inline CBinaryData Octets(std::initializer_list<unsigned char> octets) {
  return CBinaryData(octets.begin(), static_cast<std::uint32_t>(octets.size()));
}

struct I1 : Of<Ci1Col, ItemType_i1, char> {
  static constexpr char kName[] = "Ci1Col";
  static std::vector<Sample<Value>> Samples() {
    return {{static_cast<char>(-128), "-128"}, {0, "0"}, {127, "127"}};
  }
};
struct I2 : Of<Ci2Col, ItemType_i2, short> {
  static constexpr char kName[] = "Ci2Col";
  static std::vector<Sample<Value>> Samples() {
    return {{-32768, "-32768"}, {-1, "-1"}, {32767, "32767"}};
  }
};
struct I4 : Of<Ci4Col, ItemType_i4, std::int32_t> {
  static constexpr char kName[] = "Ci4Col";
  static std::vector<Sample<Value>> Samples() {
    return {{std::numeric_limits<std::int32_t>::min(), "-2147483648"},
            {7, "7"},
            {2147483647, "2147483647"}};
  }
};
struct I8 : Of<Ci8Col, ItemType_i8, std::int64_t> {
  static constexpr char kName[] = "Ci8Col";
  static std::vector<Sample<Value>> Samples() {
    return {{std::numeric_limits<std::int64_t>::min(), "-9223372036854775808"},
            {0, "0"},
            {std::numeric_limits<std::int64_t>::max(), "9223372036854775807"}};
  }
};
struct Ui1 : Of<Cui1Col, ItemType_ui1, unsigned char> {
  static constexpr char kName[] = "Cui1Col";
  static std::vector<Sample<Value>> Samples() { return {{0, "0"}, {128, "128"}, {255, "255"}}; }
};
struct Ui2 : Of<Cui2Col, ItemType_ui2, unsigned short> {
  static constexpr char kName[] = "Cui2Col";
  static std::vector<Sample<Value>> Samples() {
    return {{0, "0"}, {32768, "32768"}, {65535, "65535"}};
  }
};
struct Ui4 : Of<Cui4Col, ItemType_ui4, std::uint32_t> {
  static constexpr char kName[] = "Cui4Col";
  static std::vector<Sample<Value>> Samples() {
    return {{0, "0"}, {2147483648U, "2147483648"}, {4294967295U, "4294967295"}};
  }
};
struct Ui8 : Of<Cui8Col, ItemType_ui8, std::uint64_t> {
  static constexpr char kName[] = "Cui8Col";
  static std::vector<Sample<Value>> Samples() {
    return {{0, "0"},
            {9223372036854775808U, "9223372036854775808"},
            {std::numeric_limits<std::uint64_t>::max(), "18446744073709551615"}};
  }
};
struct R4 : Of<Cr4Col, ItemType_r4, float> {
  static constexpr char kName[] = "Cr4Col";
  static std::vector<Sample<Value>> Samples() {
    return {{0.5F, "0.5"}, {-1.25F, "-1.25"}, {std::numeric_limits<float>::infinity(), "INF"}};
  }
};
struct R8 : Of<Cr8Col, ItemType_r8, double> {
  static constexpr char kName[] = "Cr8Col";
  static std::vector<Sample<Value>> Samples() {
    return {{0.1, "0.1"}, {-2.5e-7, "-2.5e-007"}, {1e20, "1e+020"}};
  }
};
struct Decimal : Of<CdecimalCol, ItemType_decimal, CDecimal> {
  static constexpr char kName[] = "CdecimalCol";
  static std::vector<Sample<Value>> Samples() {
    return {{CDecimal("1.5"), "1.5"},
            {CDecimal("-0.25"), "-0.25"},
            {CDecimal("1000000000000000000000"), "1000000000000000000000"}};
  }
};
struct Integer : Of<CintegerCol, ItemType_integer, CBigInteger> {
  static constexpr char kName[] = "CintegerCol";
  static std::vector<Sample<Value>> Samples() {
    return {{CBigInteger("-7"), "-7"},
            {CBigInteger("0"), "0"},
            {CBigInteger("123456789012345678901234567890"), "123456789012345678901234567890"}};
  }
};
struct String : Of<CstringCol, ItemType_string, std::string> {
  static constexpr char kName[] = "CstringCol";
  static std::vector<Sample<Value>> Samples() {
    return {{"a b", "a b"},
            {"\xC3\xA9t\xC3\xA9", "\xC3\xA9t\xC3\xA9"},
            {"a text of more than fifteen octets", "a text of more than fifteen octets"}};
  }
};
struct Boolean : Of<CbooleanCol, ItemType_boolean, bool> {
  static constexpr char kName[] = "CbooleanCol";
  static std::vector<Sample<Value>> Samples() {
    return {{true, "true"}, {false, "false"}, {true, "true"}};
  }
};
struct HexBinary : Of<ChexBinaryCol, ItemType_hexBinary, CBinaryData> {
  static constexpr char kName[] = "ChexBinaryCol";
  static std::vector<Sample<Value>> Samples() {
    return {{Octets({0, 255}), "00FF"}, {Octets({10}), "0A"}, {Octets({1, 2, 3}), "010203"}};
  }
};
struct Base64Binary : Of<Cbase64BinaryCol, ItemType_base64Binary, CBinaryData> {
  static constexpr char kName[] = "Cbase64BinaryCol";
  static std::vector<Sample<Value>> Samples() {
    return {{Octets({0, 255}), "AP8="}, {Octets({1}), "AQ=="}, {Octets({97, 98, 99}), "YWJj"}};
  }
};
struct Duration : Of<CdurationCol, ItemType_duration, CDateTimeSpan> {
  static constexpr char kName[] = "CdurationCol";
  static std::vector<Sample<Value>> Samples() {
    return {{CDateTimeSpan(1, 2, 3, 0, 0, 0), "P1Y2M3D"},
            {CDateTimeSpan(4, 0, 0), "PT4H"},
            {CDateTimeSpan(0, 0, 7, 0, 0, 0), "P7D"}};
  }
};
struct Year : Of<CyearCol, ItemType_year, unsigned short> {
  static constexpr char kName[] = "CyearCol";
  static std::vector<Sample<Value>> Samples() {
    return {{1999, "1999"}, {1000, "1000"}, {9999, "9999"}};
  }
};
struct Month : Of<CmonthCol, ItemType_month, unsigned char> {
  static constexpr char kName[] = "CmonthCol";
  static std::vector<Sample<Value>> Samples() { return {{1, "--01"}, {12, "--12"}, {5, "--05"}}; }
};
struct Day : Of<CdayCol, ItemType_day, unsigned char> {
  static constexpr char kName[] = "CdayCol";
  static std::vector<Sample<Value>> Samples() {
    return {{9, "---09"}, {31, "---31"}, {1, "---01"}};
  }
};

inline CDateTime YearMonthOf(short year, unsigned char month) {
  CDateTime date;
  date.SetGYearMonth(year, month);
  return date;
}
inline CDateTime MonthDayOf(unsigned char month, unsigned char day) {
  CDateTime date;
  date.SetGMonthDay(month, day);
  return date;
}
inline CDateTime TimeOf(unsigned char hour, unsigned char minute, unsigned char second) {
  CDateTime time;
  time.SetTime(hour, minute, second);
  return time;
}

struct YearMonth : OfDate<CyearMonthCol, ItemType_yearMonth> {
  static constexpr char kName[] = "CyearMonthCol";
  static constexpr CDateTime::DTType kDateType = CDateTime::dt_gYearMonth;
  static std::vector<Sample<Value>> Samples() {
    return {{YearMonthOf(2004, 5), "2004-05"},
            {YearMonthOf(1999, 12), "1999-12"},
            {YearMonthOf(-44, 3), "-0044-03"}};
  }
};
struct MonthDay : OfDate<CmonthDayCol, ItemType_monthDay> {
  static constexpr char kName[] = "CmonthDayCol";
  static constexpr CDateTime::DTType kDateType = CDateTime::dt_gMonthDay;
  static std::vector<Sample<Value>> Samples() {
    return {{MonthDayOf(5, 6), "--05-06"},
            {MonthDayOf(12, 31), "--12-31"},
            {MonthDayOf(2, 29), "--02-29"}};
  }
};
struct Date : OfDate<CdateCol, ItemType_date> {
  static constexpr char kName[] = "CdateCol";
  static constexpr CDateTime::DTType kDateType = CDateTime::dt_date;
  static std::vector<Sample<Value>> Samples() {
    return {{CDateTime(2004, 5, 6), "2004-05-06"},
            {CDateTime(1999, 12, 31), "1999-12-31"},
            {CDateTime(2000, 2, 29), "2000-02-29"}};
  }
};
struct Datetime : OfDate<CdatetimeCol, ItemType_datetime> {
  static constexpr char kName[] = "CdatetimeCol";
  static constexpr CDateTime::DTType kDateType = CDateTime::dt_dateTime;
  static std::vector<Sample<Value>> Samples() {
    return {{CDateTime(2004, 5, 6, 7, 8, 9), "2004-05-06T07:08:09"},
            {CDateTime(1999, 12, 31, 23, 59, 59), "1999-12-31T23:59:59"},
            {CDateTime(2000, 2, 29, 0, 0, 0, 120, 0, 0), "2000-02-29T00:00:00.12"}};
  }
};
struct Time : OfDate<CtimeCol, ItemType_time> {
  static constexpr char kName[] = "CtimeCol";
  static constexpr CDateTime::DTType kDateType = CDateTime::dt_time;
  static std::vector<Sample<Value>> Samples() {
    return {{TimeOf(7, 8, 9), "07:08:09"},
            {TimeOf(0, 0, 0), "00:00:00"},
            {TimeOf(23, 59, 59), "23:59:59"}};
  }
};

}  // namespace qztest
