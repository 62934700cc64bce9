#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "qzxml/values/Decimal.h"
#include "tests/support/CommaLocale.h"
#include "tests/support/QzTest.h"

using QzXmlLib16::CBigInteger;
using QzXmlLib16::CDecimal;
using QzXmlLib16::CQzException;
using QzXmlLib16::CQzInvalidValueException;
using QzXmlLib16::CQzOverFlowException;

namespace {

constexpr char kTooLargeForDouble[] = "The Decimal value if to large to fit into a Double";
constexpr char kTooLargeForLong[] = "The Decimal value if to large to fit into a LONG";
constexpr char kTooLargeForLongLong[] = "The Decimal value if to large to fit into a LONGLONG";

struct DecimalCase {
  int maxPlaces;
  const char* a;
  const char* operation;
  const char* b;
  // Of a decimal "integer part, fraction part, places, text"; zeros with their sign.
  const char* result;
};

const DecimalCase kCases[] = {
#include "tests/values/DecimalCases.inc"
};

// While one lives, values keep another number of places.
class MaxPlaces {
 public:
  explicit MaxPlaces(int places) : m_before(CDecimal::GetMaxDecimalPlaces()) {
    CDecimal::SetMaxDecimalPlaces(places);
  }
  ~MaxPlaces() { CDecimal::SetMaxDecimalPlaces(m_before); }
  MaxPlaces(const MaxPlaces&) = delete;
  MaxPlaces& operator=(const MaxPlaces&) = delete;

 private:
  int m_before;
};

std::string SignedText(const CBigInteger& value) {
  const bool negativeZero = value == CBigInteger() && value < CBigInteger();
  return negativeZero ? "-" + value.ToString() : value.ToString();
}

std::string Parts(const CDecimal& value) {
  return SignedText(value.GetIntegerPart()) + " " + SignedText(value.GetFractionPart()) + " " +
         std::to_string(value.GetFractionDivider()) + " " + value.ToString();
}

// Which comparisons hold.
std::string Order(const CDecimal& a, const CDecimal& b) {
  std::string holds;
  if (a == b) holds += " ==";
  if (a < b) holds += " <";
  if (a <= b) holds += " <=";
  if (a > b) holds += " >";
  if (a >= b) holds += " >=";
  EXPECT_EQ(a == b, !(a != b));
  return holds.substr(holds.empty() ? 0 : 1);
}

CDecimal Arithmetic(const CDecimal& a, char operation, const CDecimal& b) {
  if (operation == '+') return a + b;
  if (operation == '-') return a - b;
  return operation == '*' ? a * b : a / b;
}

CDecimal Assignment(CDecimal a, char operation, const CDecimal& b) {
  if (operation == '+') return a += b;
  if (operation == '-') return a -= b;
  return operation == '*' ? a *= b : a /= b;
}

std::string Calculate(const CDecimal& a, const std::string& operation, const std::string& b) {
  if (operation == "parse") return Parts(a);
  if (operation == "long") return std::to_string(a.ToLong());
  if (operation == "long long") return std::to_string(a.ToLongLong());
  if (operation == "integer") return SignedText(a.ToBigInteger());
  if (operation == "text") return a.ToString(std::stoi(b));
  const CDecimal other(b.c_str());
  if (operation == "order") return Order(a, other);
  const std::string result = Parts(Arithmetic(a, operation[0], other));
  EXPECT_EQ(result, Parts(Assignment(a, operation[0], other)));
  return result;
}

std::string Outcome(const DecimalCase& c) {
  try {
    return Calculate(CDecimal(c.a), c.operation, c.b);
  } catch (const CQzException& e) {
    return e.GetMessage();
  }
}

std::string InvalidChar(int position, const std::string& text) {
  return "The string representing a Decimal, contained an invalid char at position " +
         std::to_string(position) + " [" + text + "].";
}

// The text of a value, or of its refusal.
std::string Read(const std::string& text) {
  try {
    return CDecimal(text.c_str()).ToString();
  } catch (const CQzInvalidValueException& e) {
    return e.GetMessage();
  }
}

std::string Nines(int count) { return std::string(static_cast<std::size_t>(count), '9'); }
std::string Zeros(int count) { return std::string(static_cast<std::size_t>(count), '0'); }

}  // namespace

TEST(Decimal, CalculatesAsTheTableSays) {
  for (const DecimalCase& c : kCases) {
    const MaxPlaces places(c.maxPlaces);
    EXPECT_EQ(c.result, Outcome(c))
        << c.a << ' ' << c.operation << ' ' << c.b << " with " << c.maxPlaces;
  }
}

TEST(Decimal, ReadsAndWritesText) {
  const std::pair<const char*, const char*> cases[] = {
      {"1.50", "1.5"},
      {"1.00", "1"},
      {"-0.5", "-0.5"},
      {"0.05", "0.05"},
      {"1.5e2", "150"},
      {"15E-1", "1.5"},
      {"", "0"},
      {".", "0"},
      {"1 2. 3", "12.3"},
      {"1-2", "-12"},
      {"-1+2", "12"},
      {"+-+7.5", "7.5"},
      {"-.5", "-0.5"},
      {"5.", "5"},
      {"007.0700", "7.07"},
      {" \t\r\n-1\n.\r5\t ", "-1.5"},
      {"-", "0"},
      {"e5", "0"},
      {"1e", "1"},
      {"1e+", "1"},
      {"1e +- 2", "0.01"},
      {"1e- +2", "100"},
      {"2e 1", "20"},
      {"1e0", "1"},
      {"1e-0", "1"},
      {".5e1", "5"},
      {"1e ", "1"},
      {"1.5 e1", "15"},
      {"-0", "0"},
      {"-0.0", "0"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.second, Read(c.first)) << '[' << c.first << ']';
  EXPECT_EQ("0", CDecimal(static_cast<const char*>(nullptr)).ToString());
}

TEST(Decimal, RefusesTextAtThePositionReached) {
  const std::pair<const char*, int> cases[] = {
      {"abc", 0},    {"1.2.3", 3}, {"1.2-", 3}, {"1,5", 1},   {"INF", 0},
      {"NaN", 0},    {"1e5 ", 3},  {"1e5-", 3}, {"1e5.", 3},  {"1e5e5", 3},
      {"1ex", 2},    {"--x", 2},   {"1.5x", 3}, {"1.5-2", 3}, {"\v1", 0},
      {"1. 5 x", 5}, {"1e1 1", 3}, {"0x10", 1}, {"1_0", 1},   {"\xc3\xa9", 0},
  };
  for (const auto& c : cases) {
    EXPECT_QZ_THROW(CQzInvalidValueException, InvalidChar(c.second, c.first), CDecimal(c.first));
  }
  CDecimal value("7.5");
  EXPECT_QZ_THROW(
      CQzInvalidValueException,
      "The string representing a Decimal, contained an invalid char at position 3 [1.2.3].",
      value.Parse("1.2.3"));
  EXPECT_EQ("7.5", value.ToString());
}

TEST(Decimal, TakesUpTo512DigitsBeforeThePoint) {
  EXPECT_EQ(Nines(512), Read(Nines(512)));
  EXPECT_EQ("-" + Nines(512), Read(" -" + Nines(512) + ".0"));
  EXPECT_EQ(InvalidChar(512, Nines(513)), Read(Nines(513)));
  EXPECT_EQ(InvalidChar(514, "- " + Nines(513)), Read("- " + Nines(513)));
  EXPECT_EQ(InvalidChar(512, Zeros(512) + "1"), Read(Zeros(512) + "1"));
  EXPECT_EQ("1" + Zeros(511), Read("1e511"));
  EXPECT_EQ("9" + Zeros(511), Read("0.009e514"));
  EXPECT_EQ(Nines(500) + Zeros(12), Read(Nines(500) + "e12"));
  EXPECT_EQ(InvalidChar(4, "1e512"), Read("1e512"));
  EXPECT_EQ(InvalidChar(8, "0.009e515"), Read("0.009e515"));
  EXPECT_EQ(InvalidChar(502, Nines(500) + "e13"), Read(Nines(500) + "e13"));
  EXPECT_EQ("0", Read("0e1024"));
  EXPECT_EQ("0", Read("0.00e-1024"));
}

TEST(Decimal, TakesUpTo512DigitsBehindThePoint) {
  const MaxPlaces places(512);
  EXPECT_EQ("0." + Nines(512), Read("." + Nines(512)));
  EXPECT_EQ(InvalidChar(513, "." + Nines(513)), Read("." + Nines(513)));
  EXPECT_EQ(InvalidChar(514, "1." + Zeros(513)), Read("1." + Zeros(513)));
  EXPECT_EQ("0." + Zeros(511) + "1", Read("1e-512"));
  EXPECT_EQ("0." + Zeros(511) + "1", Read("100e-514"));
  EXPECT_EQ(InvalidChar(5, "1e-513"), Read("1e-513"));
  EXPECT_EQ(InvalidChar(7, "100e-515"), Read("100e-515"));
  EXPECT_EQ("0." + Zeros(511) + "1", Read("1.00e-512"));
  EXPECT_EQ("0." + Zeros(511) + "1", Read(".01e-510"));
  EXPECT_EQ(InvalidChar(7, ".01e-511"), Read(".01e-511"));
}

TEST(Decimal, RefusesExponentsBeyond1024AtOnce) {
  EXPECT_EQ(InvalidChar(5, "0e1025"), Read("0e1025"));
  EXPECT_EQ(InvalidChar(6, "0e-1025"), Read("0e-1025"));
  EXPECT_EQ(InvalidChar(4, "1e999999999"), Read("1e999999999"));
  EXPECT_EQ(InvalidChar(5, "0e999999999"), Read("0e999999999"));
  EXPECT_EQ(InvalidChar(5, "1e-999999999"), Read("1e-999999999"));
  EXPECT_EQ(InvalidChar(5, "0e99999999999999999999999999"), Read("0e99999999999999999999999999"));
  EXPECT_EQ("100", Read("1e" + Zeros(31) + "2"));
  EXPECT_EQ(InvalidChar(34, "1e" + Zeros(32) + "2"), Read("1e" + Zeros(32) + "2"));
}

TEST(Decimal, AFractionOf31DigitsIsRoundedTo30) {
  EXPECT_EQ("0.123456789012345678901234567890", Read("0.1234567890123456789012345678901"));
  EXPECT_EQ("0.123456789012345678901234567891", Read("0.1234567890123456789012345678906"));
  EXPECT_EQ("0.123456789012345678901234567890", Read("0.1234567890123456789012345678905"));
}

TEST(Decimal, IsMadeOfNumbers) {
  EXPECT_EQ("0 0 1 0", Parts(CDecimal()));
  EXPECT_EQ("-7 0 1 -7", Parts(CDecimal(-7)));
  EXPECT_EQ("4294967295", CDecimal(4294967295U).ToString());
  EXPECT_EQ("-9223372036854775808", CDecimal(std::numeric_limits<std::int64_t>::min()).ToString());
  EXPECT_EQ("-9223372036854775808", CDecimal(std::numeric_limits<long long>::min()).ToString());
  EXPECT_EQ("18446744073709551615", CDecimal(std::numeric_limits<std::uint64_t>::max()).ToString());
  EXPECT_EQ("18446744073709551615",
            CDecimal(std::numeric_limits<unsigned long long>::max()).ToString());
  EXPECT_EQ(std::to_string(std::numeric_limits<long>::min()),
            CDecimal(std::numeric_limits<long>::min()).ToString());
  EXPECT_EQ("-123456789012345678901 0 1 -123456789012345678901",
            Parts(CDecimal(CBigInteger("-123456789012345678901"))));
}

TEST(Decimal, ADoubleHas13Places) {
  const std::pair<double, const char*> cases[] = {
      {0.1, "0.1"},
      {-0.1, "-0.1"},
      {1.0 / 3, "0.3333333333333"},
      {1e-14, "0"},
      {1e20, "100000000000000000000"},
      {-2.5, "-2.5"},
      {-0.0, "0"},
      {123456.789, "123456.7890000000043"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.second, CDecimal(c.first).ToString());
  EXPECT_EQ(309U, CDecimal(std::numeric_limits<double>::max()).ToString().size());
}

TEST(Decimal, ADoubleThatIsNoNumberIsRefused) {
  const double infinity = std::numeric_limits<double>::infinity();
  const double nan = std::copysign(std::numeric_limits<double>::quiet_NaN(), 1.0);
  EXPECT_QZ_THROW(CQzInvalidValueException, InvalidChar(0, "inf\n"), CDecimal{infinity});
  EXPECT_QZ_THROW(CQzInvalidValueException, InvalidChar(1, "-inf\n"), CDecimal(-infinity));
  EXPECT_QZ_THROW(CQzInvalidValueException, InvalidChar(0, "nan\n"), CDecimal{nan});
}

TEST(Decimal, SumsAreExact) {
  EXPECT_TRUE(CDecimal("0.1") + CDecimal("0.2") == CDecimal("0.3"));
  EXPECT_EQ("-0.5", (CDecimal("0.5") - CDecimal("1")).ToString());
  EXPECT_EQ("2", (CDecimal("-1") - CDecimal("-3")).ToString());
  EXPECT_EQ("-2", (CDecimal("1") - CDecimal("3")).ToString());
  EXPECT_EQ("0.000000000000000000000000000001",
            (CDecimal("1") - CDecimal("0.999999999999999999999999999999")).ToString());
}

// Both fractions are negative zeros here, which are not below zero: nothing is taken from the 2.
TEST(Decimal, ANegativeZeroOfAFractionTakesNothingFromASum) {
  EXPECT_EQ("2 -0 1 2", Parts(CDecimal("-1") - CDecimal(-3)));
  EXPECT_EQ("-2 -0 1 -2", Parts(CDecimal("-1") + CDecimal("-1")));
  EXPECT_EQ("-0 -0 1 0", Parts(CDecimal("-1") - CDecimal(-1)));
}

TEST(Decimal, QuotientsAreRoundedByTheirGuardDigits) {
  EXPECT_EQ("0." + std::string(30, '3'), (CDecimal("1") / CDecimal("3")).ToString());
  EXPECT_EQ("0." + std::string(29, '6') + "7", (CDecimal("2") / CDecimal("3")).ToString());
  EXPECT_QZ_THROW(CQzInvalidValueException, "ERROR: Overflow in operator/.",
                  CDecimal("1.5") / CDecimal("0.00"));
  CDecimal value("1.5");
  EXPECT_QZ_THROW(CQzInvalidValueException, "ERROR: Overflow in operator/.", value /= CDecimal());
  EXPECT_EQ("1.5", value.ToString());
}

TEST(Decimal, TiesGoTowardZeroWherePlacesAreCutAndAwayFromZeroInText) {
  EXPECT_EQ("1.3", CDecimal("1.25").ToString(1));
  EXPECT_EQ("-1.3", CDecimal("-1.25").ToString(1));
  const MaxPlaces places(1);
  EXPECT_EQ("1.2", CDecimal("1.25").ToString());
  EXPECT_EQ("-1.2", CDecimal("-1.25").ToString());
  EXPECT_EQ("1.3", CDecimal("1.251").ToString());
}

TEST(Decimal, AFractionThatRoundsUpToAWholeIsNotCarried) {
  const MaxPlaces places(2);
  const CDecimal value("0.996");
  EXPECT_EQ("0 100 2 0.100", Parts(value));
  EXPECT_EQ("-0 -100 2 -0.100", Parts(CDecimal("-0.996")));
  EXPECT_EQ("1", (value + CDecimal(0)).ToString());
}

TEST(Decimal, WritesNoZerosThatRoundingBringsAbout) {
  EXPECT_EQ("13.", CDecimal("12.6").ToString(0));
  EXPECT_EQ("12.", CDecimal("12.4").ToString(0));
  EXPECT_EQ("2.0", CDecimal("1.995").ToString(2));
  EXPECT_EQ("1.5", CDecimal("1.495").ToString(2));
  EXPECT_EQ("5.00", CDecimal("5").ToString(2));
  EXPECT_EQ("-0.00", CDecimal("-0.001").ToString(2));
}

TEST(Decimal, WritesAnyNumberOfPlaces) {
  EXPECT_EQ("13.", CDecimal("12.6").ToString(-1));
  EXPECT_EQ("13.", CDecimal("12.6").ToString(std::numeric_limits<int>::min()));
  EXPECT_EQ("12.6", CDecimal("12.6").ToString(30));
  EXPECT_EQ("12.6", CDecimal("12.6").ToString(600));
  EXPECT_EQ("12.6", CDecimal("12.6").ToString(std::numeric_limits<int>::max()));
  const MaxPlaces places(2000);
  EXPECT_EQ("0.1" + Zeros(599), CDecimal("0.1").ToString(600));
}

TEST(Decimal, WritesTextsOfAnyLength) {
  const CDecimal large(CBigInteger(Nines(3000).c_str()));
  EXPECT_EQ(Nines(3000), large.ToString());
  EXPECT_EQ("-" + Nines(3000) + ".25", (large.GetNegative() - CDecimal("0.25")).ToString());
  EXPECT_EQ(Nines(3000) + ".3", (large + CDecimal("0.25")).ToString(1));
  const MaxPlaces places(2000);
  EXPECT_EQ("0." + std::string(2000, '3'), (CDecimal(1) / CDecimal(3)).ToString());
}

TEST(Decimal, ToLongRoundsAndToLongLongTruncates) {
  EXPECT_EQ(1, CDecimal("1.5").ToLong());
  EXPECT_EQ(2, CDecimal("1.6").ToLong());
  EXPECT_EQ(1, CDecimal("1.96").ToLongLong());
  EXPECT_EQ(1, CDecimal("1.94").ToLongLong());
  EXPECT_EQ(std::numeric_limits<std::int32_t>::min(), CDecimal("-2147483648").ToLong());
  EXPECT_EQ(std::numeric_limits<long long>::min(), CDecimal("-9223372036854775808").ToLongLong());
  EXPECT_EQ(5000000000LL, CDecimal("5000000000").ToLongLong());
  EXPECT_QZ_THROW(CQzOverFlowException, kTooLargeForLong, CDecimal("2147483648").ToLong());
  EXPECT_QZ_THROW(CQzOverFlowException, kTooLargeForLong, CDecimal("-2147483648.6").ToLong());
  EXPECT_QZ_THROW(CQzOverFlowException, kTooLargeForLongLong,
                  CDecimal("9223372036854775807.1").ToLongLong());
  EXPECT_QZ_THROW(CQzOverFlowException, kTooLargeForLongLong,
                  CDecimal("-9223372036854775809").ToLongLong());
}

TEST(Decimal, ToDoubleIsTheNearestDouble) {
  const std::pair<const char*, double> cases[] = {
      {"0.1", 0.1},
      {"-2.5", -2.5},
      {"0", 0.0},
      {"1e308", 1e308},
      {"1.7e308", 1.7e308},
      {"-1.7e308", -1.7e308},
      {"123456789.123456789", 123456789.123456789},
      {"9007199254740993", 9007199254740992.0},
  };
  for (const auto& c : cases) EXPECT_EQ(c.second, CDecimal(c.first).ToDouble()) << c.first;
  EXPECT_EQ(1.7e308, (CDecimal("1.7e308") + CDecimal("0.5")).ToDouble());
  EXPECT_QZ_THROW(CQzOverFlowException, kTooLargeForDouble,
                  (CDecimal("1.7e308") + CDecimal("1")).ToDouble());
  EXPECT_QZ_THROW(CQzOverFlowException, kTooLargeForDouble, CDecimal("-1.8e308").ToDouble());
}

TEST(Decimal, ToDoubleOfWhatIsTooCloseToZeroIsZero) {
  const MaxPlaces places(500);
  EXPECT_EQ(0.0, CDecimal("1e-400").ToDouble());
  EXPECT_TRUE(std::signbit(CDecimal("-1e-400").ToDouble()));
  EXPECT_EQ(1e-310, CDecimal("1e-310").ToDouble());
}

TEST(Decimal, ConvertsToABigIntegerByRounding) {
  EXPECT_EQ("12", CDecimal("12.5").ToBigInteger().ToString());
  EXPECT_EQ("13", CDecimal("12.51").ToBigInteger().ToString());
  EXPECT_EQ("-13", CDecimal("-12.51").ToBigInteger().ToString());
}

TEST(Decimal, StepsInPlaceOrInACopy) {
  CDecimal value("1.5");
  EXPECT_EQ("2.5", (value++).ToString());
  EXPECT_EQ("0.5", (value--).ToString());
  EXPECT_EQ("1.5", value.ToString());
  EXPECT_EQ(&value, &++value);
  EXPECT_EQ("2.5", value.ToString());
  EXPECT_EQ(&value, &--(--(--value)));
  EXPECT_EQ("-0.5", value.ToString());
  EXPECT_EQ("0.5", (++value).ToString());
}

TEST(Decimal, NegatesBothParts) {
  CDecimal value("0.5");
  EXPECT_EQ("-0 -5 1 -0.5", Parts(value.GetNegative()));
  value.Negate();
  EXPECT_EQ("-0.5", value.ToString());
  value.Negate();
  EXPECT_EQ("0.5", value.ToString());
}

TEST(Decimal, TheSignsOfZerosCountWhereValuesAreOrdered) {
  EXPECT_EQ("< <=", Order(CDecimal("-0.5"), CDecimal("0.5")));
  EXPECT_EQ("== < <=", Order(CDecimal("-0"), CDecimal("0")));
  EXPECT_EQ("== <= >=", Order(CDecimal("1.50"), CDecimal("1.5")));
  // The fraction of the first is a negative zero, that of the second is not.
  EXPECT_EQ("== < <=", Order(CDecimal("-1"), CDecimal(-1)));
  EXPECT_EQ("== < <=", Order(CDecimal("-1"), CDecimal("-1.00")));
}

TEST(Decimal, AnyNumberOfPlacesCanBeSet) {
  EXPECT_EQ(30, CDecimal::GetMaxDecimalPlaces());
  {
    const MaxPlaces places(-5);
    EXPECT_EQ(-5, CDecimal::GetMaxDecimalPlaces());
    EXPECT_EQ("2 0 0 2", Parts(CDecimal("1.6")));
    EXPECT_EQ("1 0 0 1", Parts(CDecimal("1.5")));
    EXPECT_EQ("0 0 0 0", Parts(CDecimal(1) / CDecimal(3)));
  }
  {
    const MaxPlaces places(std::numeric_limits<int>::max());
    EXPECT_EQ(std::numeric_limits<int>::max(), CDecimal::GetMaxDecimalPlaces());
    EXPECT_EQ(100002U, (CDecimal(1) / CDecimal(3)).ToString().size());
  }
  EXPECT_EQ(30, CDecimal::GetMaxDecimalPlaces());
}

TEST(Decimal, IsTheSameInALocaleWithAComma) {
  const qztest::CommaLocale locale;
  if (!locale.Works()) GTEST_SKIP() << "localedef ended with " << locale.GetStatus();
  EXPECT_EQ("1234567.25", CDecimal(1234567.25).ToString());
  EXPECT_EQ(1234567.25, CDecimal("1234567.25").ToDouble());
  EXPECT_EQ("1234567.3", CDecimal("1234567.25").ToString(1));
  EXPECT_EQ("-1.5", CDecimal("-1.50").ToString());
  EXPECT_EQ(InvalidChar(1, "1,5"), Read("1,5"));
  EXPECT_EQ("2", CBigInteger("1.6").ToString());
}

TEST(Decimal, MovesAndLeavesAZero) {
  static_assert(std::is_nothrow_move_constructible_v<CDecimal>);
  static_assert(std::is_nothrow_move_assignable_v<CDecimal>);
  static_assert(std::has_virtual_destructor_v<CDecimal>);
  CDecimal value("-123.456");
  CDecimal moved(std::move(value));
  EXPECT_EQ("-123.456", moved.ToString());
  EXPECT_EQ("0", value.ToString());
  EXPECT_TRUE(value == CDecimal());
  EXPECT_EQ("1.5", (value + CDecimal("1.5")).ToString());
  EXPECT_EQ("0", (value * CDecimal("1.5")).ToString());
  EXPECT_EQ("0", (value / CDecimal("1.5")).ToString());
  EXPECT_EQ(0, value.ToLong());
  EXPECT_EQ(0.0, value.ToDouble());
  value = moved;
  EXPECT_EQ("-123.456", value.ToString());
  std::vector<CDecimal> values(3, moved);
  values.erase(values.begin());
  EXPECT_EQ("-123.456", values[1].ToString());
}

// Every text of up to five chars out of those that mean something, against a reading that matches
// the sections one after the other.
namespace {

const char kChars[] = "+-.0 19eEx";

struct Sections {
  int failedAt = -1;
  bool negative = false;
  std::string integer, fraction, exponent;
  bool negativeExponent = false;
};

Sections Split(const std::string& text) {
  Sections result;
  std::size_t at = text.find_first_not_of("+-019 ");
  if (at == std::string::npos) at = text.size();
  for (const char c : text.substr(0, at)) {
    if (c == '-' || c == '+') result.negative = c == '-';
    if (c >= '0' && c <= '9') result.integer += c;
  }
  if (at < text.size() && text[at] == '.') {
    std::size_t end = text.find_first_not_of("019 ", at + 1);
    if (end == std::string::npos) end = text.size();
    for (const char c : text.substr(at + 1, end - at - 1)) {
      if (c != ' ') result.fraction += c;
    }
    at = end;
  }
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    std::size_t digits = text.find_first_not_of("+- ", at + 1);
    if (digits == std::string::npos) digits = text.size();
    for (const char c : text.substr(at + 1, digits - at - 1)) {
      if (c != ' ') result.negativeExponent = c == '-';
    }
    std::size_t end = text.find_first_not_of("019", digits);
    if (end == std::string::npos) end = text.size();
    result.exponent = text.substr(digits, end - digits);
    at = end;
  }
  if (at < text.size()) result.failedAt = static_cast<int>(at);
  return result;
}

// The plain text of the sections with the point moved, and no zeros at its ends.
std::string Canonical(const Sections& s) {
  const int exponent = s.exponent.empty() ? 0 : std::stoi(s.exponent);
  std::string digits = s.integer + s.fraction;
  int point = static_cast<int>(s.integer.size()) + (s.negativeExponent ? -exponent : exponent);
  if (point < 0) {
    digits.insert(0, Zeros(-point));
    point = 0;
  }
  if (point > static_cast<int>(digits.size()))
    digits += Zeros(point - static_cast<int>(digits.size()));
  std::string before = digits.substr(0, static_cast<std::size_t>(point));
  std::string behind = digits.substr(static_cast<std::size_t>(point));
  before.erase(0, before.find_first_not_of('0'));
  behind.erase(behind.find_last_not_of('0') + 1);
  if (before.empty() && behind.empty()) return "0";
  return (s.negative ? "-" : "") + (before.empty() ? "0" : before) +
         (behind.empty() ? "" : "." + behind);
}

void CompareReadings(std::string& text, std::size_t length) {
  if (text.size() == length) {
    const Sections sections = Split(text);
    const std::string expected =
        sections.failedAt >= 0 ? InvalidChar(sections.failedAt, text) : Canonical(sections);
    // What is beyond the places that are kept, or beyond the bounds, is for the tests above.
    const int exponent = sections.exponent.empty() ? 0 : std::stoi(sections.exponent);
    if (sections.failedAt < 0 && exponent > (sections.negativeExponent ? 20 : 99)) return;
    ASSERT_EQ(expected, Read(text)) << '[' << text << ']';
    return;
  }
  for (const char* c = kChars; *c != 0; ++c) {
    text.push_back(*c);
    CompareReadings(text, length);
    text.pop_back();
  }
}

}  // namespace

TEST(Decimal, ReadsEveryShortTextSectionBySection) {
  std::string text;
  for (std::size_t length = 0; length <= 5; ++length) CompareReadings(text, length);
}
