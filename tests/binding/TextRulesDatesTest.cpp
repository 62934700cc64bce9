// Dates, times and durations as XML Schema 1.0 part 2 has them, section 3.2.6 to 3.2.14.
#include "qzxml/binding/TextRules.h"
#include "tests/support/QzTest.h"

using namespace QzXmlLib16;

namespace {

enum class Order { kLess, kEqual, kGreater, kNone };

struct OrderCase {
  XsdType type;
  const char* left;
  const char* right;
  Order order;
};

// What four bounds and an enumeration say of the left value.
Order FindOrder(XsdType type, const char* left, const char* right) {
  const char* const texts[] = {right};
  const CTextRules rules(type);
  const bool isLess = rules.MaxExclusive(right).Accepts(left);
  const bool isGreater = rules.MinExclusive(right).Accepts(left);
  const bool isEqual = rules.Enumeration(texts).Accepts(left);
  EXPECT_EQ(isLess || isEqual, rules.MaxInclusive(right).Accepts(left)) << left << " " << right;
  EXPECT_EQ(isGreater || isEqual, rules.MinInclusive(right).Accepts(left)) << left << " " << right;
  EXPECT_LE(isLess + isGreater + isEqual, 1) << left << " " << right;
  return isLess      ? Order::kLess
         : isGreater ? Order::kGreater
         : isEqual   ? Order::kEqual
                     : Order::kNone;
}

Order Reverse(Order order) {
  if (order == Order::kLess) return Order::kGreater;
  return order == Order::kGreater ? Order::kLess : order;
}

template <std::size_t Count>
void ExpectOrders(const OrderCase (&cases)[Count]) {
  for (const OrderCase& c : cases) {
    EXPECT_EQ(c.order, FindOrder(c.type, c.left, c.right)) << c.left << " " << c.right;
    EXPECT_EQ(Reverse(c.order), FindOrder(c.type, c.right, c.left)) << c.right << " " << c.left;
  }
}

struct TypeCase {
  XsdType type;
  std::vector<const char*> accepted;
  std::vector<const char*> refused;
};

}  // namespace

TEST(TextRulesDates, KnowsTheForms) {
  const TypeCase cases[] = {
      {XsdType_dateTime,
       {"2000-02-29T23:59:59", "2000-01-01T24:00:00", "2000-01-01T24:00:00.00Z",
        "-0001-12-31T00:00:00.123456789012345678901234567890", "12345-01-01T00:00:00+14:00",
        "2000-01-01T00:00:00-13:59", " 2000-01-01T00:00:00Z ",
        "99999999999999999996-02-29T00:00:00"},
       {"",
        "2000-01-01",
        "2000-01-01T",
        "2000-01-01t00:00:00",
        "2001-02-29T00:00:00",
        "0000-01-01T00:00:00",
        "02000-01-01T00:00:00",
        "200-01-01T00:00:00",
        "+2000-01-01T00:00:00",
        "2000-13-01T00:00:00",
        "2000-00-01T00:00:00",
        "2000-01-32T00:00:00",
        "2000-01-00T00:00:00",
        "2000-01-01T25:00:00",
        "2000-01-01T24:00:01",
        "2000-01-01T24:00:00.1",
        "2000-01-01T00:60:00",
        "2000-01-01T00:00:60",
        "2000-01-01T00:00:00.",
        "2000-01-01T00:00:00z",
        "2000-01-01T00:00:00+14:01",
        "2000-01-01T00:00:00+15:00",
        "2000-01-01T00:00:00+1:00",
        "2000-01-01T00:00:00+01",
        "2000-01-01T00:00:00 Z",
        "2000-01-01T00:00",
        "2000-1-1T00:00:00",
        "99999999999999999997-02-29T00:00:00"}},
      {XsdType_date,
       {"2000-02-29", "1900-02-28Z", "-2000-01-01+01:00"},
       {"1900-02-29", "2000-04-31", "2000-1-01", "2000-01", "2000-01-01T00:00:00", "20000101"}},
      {XsdType_time,
       {"00:00:00", "24:00:00", "23:59:59.999Z", "12:00:00-14:00"},
       {"24:00:01", "1:00:00", "12:00", "12:00:00.", "-12:00:00"}},
      {XsdType_gYearMonth, {"2000-02", "-0044-03Z"}, {"2000-13", "2000", "2000-02-01", "00-02"}},
      {XsdType_gYear, {"2000", "-0001", "12345", "2000Z", "2000-05:00"}, {"0000", "99", "2000-01"}},
      {XsdType_gMonthDay,
       {"--02-29", "--12-31+01:00"},
       {"--02-30", "--04-31", "--13-01", "-02-28", "--2-28"}},
      {XsdType_gDay, {"---01", "---31Z"}, {"---00", "---32", "--01", "---1"}},
      {XsdType_gMonth, {"--01", "--12-05:00"}, {"--00", "--13", "--1", "--01-", "--01--", "01"}},
      {XsdType_duration,
       {"P1Y", "P1Y2M3DT4H5M6.789S", "-P1M", "PT0S", "P0D", "PT1M", "P123456789012345678901Y",
        " P1Y "},
       {"",      "P",     "PT",    "P1YT",  "P1S",    "PT1Y",  "1Y",
        "P-1Y",  "+P1Y",  "P1M1Y", "P1D1M", "PT1S1M", "P1.5Y", "PT1.5M",
        "PT1.S", "PT.5S", "P 1Y",  "P1",    "PT5",    "P1H",   "P1YM"}},
  };
  for (const TypeCase& c : cases) {
    for (const char* text : c.accepted) EXPECT_TRUE(CTextRules(c.type).Accepts(text)) << text;
    for (const char* text : c.refused) EXPECT_FALSE(CTextRules(c.type).Accepts(text)) << text;
  }
}

TEST(TextRulesDates, OrdersTheExamplesOfXsdPart2Section3_2_7_4) {
  const OrderCase cases[] = {
      {XsdType_dateTime, "2000-01-15T00:00:00", "2000-02-15T00:00:00", Order::kLess},
      {XsdType_dateTime, "2000-01-15T12:00:00", "2000-01-16T12:00:00Z", Order::kLess},
      {XsdType_dateTime, "2000-01-01T12:00:00", "1999-12-31T23:00:00Z", Order::kNone},
      {XsdType_dateTime, "2000-01-16T12:00:00", "2000-01-16T12:00:00Z", Order::kNone},
      {XsdType_dateTime, "2000-01-16T00:00:00", "2000-01-16T12:00:00Z", Order::kNone},
  };
  ExpectOrders(cases);
}

TEST(TextRulesDates, OrdersInUtc) {
  const OrderCase cases[] = {
      {XsdType_dateTime, "2000-01-01T00:00:00Z", "2000-01-01T01:00:00+01:00", Order::kEqual},
      {XsdType_dateTime, "1999-12-31T24:00:00", "2000-01-01T00:00:00", Order::kEqual},
      {XsdType_dateTime, "2000-02-28T23:30:00-01:00", "2000-02-29T00:30:00Z", Order::kEqual},
      {XsdType_dateTime, "2000-01-01T00:00:00.1", "2000-01-01T00:00:00.10", Order::kEqual},
      {XsdType_dateTime, "2000-01-01T00:00:00.100000000000000001", "2000-01-01T00:00:00.1",
       Order::kGreater},
      {XsdType_dateTime, "-0002-01-01T00:00:00", "-0001-01-01T00:00:00", Order::kLess},
      {XsdType_dateTime, "-0001-01-01T00:00:00", "0001-01-01T00:00:00", Order::kLess},
      {XsdType_dateTime, "123456-01-01T00:00:00", "99999-01-01T00:00:00", Order::kGreater},
      {XsdType_dateTime, "99999999999999999999-01-01T00:00:00",
       "99999999999999999999-01-01T00:00:00", Order::kEqual},
      {XsdType_dateTime, "99999999999999999999-01-01T00:00:00", "2000-01-01T00:00:00",
       Order::kNone},
      {XsdType_date, "2000-01-01+14:00", "2000-01-01Z", Order::kLess},
      {XsdType_date, "2000-01-01", "2000-01-01Z", Order::kNone},
      {XsdType_date, "2000-01-01", "2000-01-02Z", Order::kLess},
      {XsdType_date, "2000-03-01", "2000-02-29", Order::kGreater},
      {XsdType_date, "1900-03-01", "1900-02-28", Order::kGreater},
      {XsdType_time, "12:00:00Z", "13:00:00+01:00", Order::kEqual},
      {XsdType_time, "23:00:00-03:00", "01:00:00Z", Order::kGreater},
      {XsdType_time, "12:00:00", "12:00:00Z", Order::kNone},
      {XsdType_time, "00:00:00", "23:00:00Z", Order::kLess},
      {XsdType_gYearMonth, "2000-01", "2000-02", Order::kLess},
      {XsdType_gYear, "2000", "2001Z", Order::kLess},
      {XsdType_gYear, "-0001", "0001", Order::kLess},
      {XsdType_gMonthDay, "--02-29", "--03-01", Order::kLess},
      {XsdType_gMonthDay, "--12-31", "--01-01", Order::kGreater},
      {XsdType_gDay, "---31", "---30", Order::kGreater},
      {XsdType_gDay, "---01Z", "---01+01:00", Order::kGreater},
      {XsdType_gMonth, "--05", "--12", Order::kLess},
      {XsdType_gMonth, "--05Z", "--05Z", Order::kEqual},
  };
  ExpectOrders(cases);
}

TEST(TextRulesDates, OrdersTheDurationsOfXsdPart2Section3_2_6_2) {
  const OrderCase cases[] = {
      {XsdType_duration, "P1Y", "P364D", Order::kGreater},
      {XsdType_duration, "P1Y", "P365D", Order::kNone},
      {XsdType_duration, "P1Y", "P366D", Order::kNone},
      {XsdType_duration, "P1Y", "P367D", Order::kLess},
      {XsdType_duration, "P1M", "P27D", Order::kGreater},
      {XsdType_duration, "P1M", "P28D", Order::kNone},
      {XsdType_duration, "P1M", "P29D", Order::kNone},
      {XsdType_duration, "P1M", "P30D", Order::kNone},
      {XsdType_duration, "P1M", "P31D", Order::kNone},
      {XsdType_duration, "P1M", "P32D", Order::kLess},
      {XsdType_duration, "P5M", "P149D", Order::kGreater},
      {XsdType_duration, "P5M", "P150D", Order::kNone},
      {XsdType_duration, "P5M", "P151D", Order::kNone},
      {XsdType_duration, "P5M", "P152D", Order::kNone},
      {XsdType_duration, "P5M", "P153D", Order::kNone},
      {XsdType_duration, "P5M", "P154D", Order::kLess},
      {XsdType_duration, "P1Y", "P12M", Order::kEqual},
      {XsdType_duration, "P1D", "PT24H", Order::kEqual},
      {XsdType_duration, "PT1H", "PT60M", Order::kEqual},
      {XsdType_duration, "PT1H", "PT2H", Order::kLess},
      {XsdType_duration, "PT0.5S", "PT0.50S", Order::kEqual},
      {XsdType_duration, "PT1.5S", "PT2S", Order::kLess},
      {XsdType_duration, "-PT1.5S", "-PT1S", Order::kLess},
      {XsdType_duration, "-PT1.5S", "-PT2S", Order::kGreater},
      {XsdType_duration, "-P1D", "PT0S", Order::kLess},
      {XsdType_duration, "-P0D", "P0D", Order::kEqual},
      {XsdType_duration, "-P1M", "-P27D", Order::kLess},
      {XsdType_duration, "P999999999999999Y", "P999999999999998Y", Order::kGreater},
      {XsdType_duration, "P9999999999999999Y", "P1Y", Order::kNone},
      {XsdType_duration, "P9999999999999999Y", "P9999999999999999Y", Order::kEqual},
  };
  ExpectOrders(cases);
}
