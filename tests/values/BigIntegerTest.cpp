#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>

#include "qzxml/values/BigInteger.h"
#include "qzxml/values/Decimal.h"
#include "tests/support/QzTest.h"

using QzXmlLib16::CBigInteger;
using QzXmlLib16::CDecimal;
using QzXmlLib16::CQzException;
using QzXmlLib16::CQzInvalidValueException;

namespace {

// Read by a static initialiser, as tables of facets may do.
const CBigInteger kBeyondLong = CBigInteger::MAX_LONG + CBigInteger(1);
const std::string kMaxDoubleText = CBigInteger::MAX_DOUBLE.ToString();

constexpr char kDivisionByZero[] = "ERROR: Overflow in operator/.";
constexpr char kOutOfInt[] = "ERROR: Value out of bound of int.";
constexpr char kOutOfLongLong[] = "ERROR: Value out of bound of LONGLONG.";

struct IntegerCase {
  const char* a;
  const char* operation;
  const char* b;
  const char* result;  // a zero with its sign, or the text of the failure
};

const IntegerCase kCases[] = {
#include "tests/values/BigIntegerCases.inc"
};

// The text, with the sign of a zero.
std::string SignedText(const CBigInteger& value) {
  const bool negativeZero = value == CBigInteger() && value < CBigInteger();
  return negativeZero ? "-" + value.ToString() : value.ToString();
}

CBigInteger Calculate(const CBigInteger& a, const std::string& operation, const CBigInteger& b) {
  if (operation == "+") return a + b;
  if (operation == "-") return a - b;
  if (operation == "*") return a * b;
  if (operation == "/") return a / b;
  if (operation == "%") return a % b;
  if (operation == "root") return a.SquareRoot();
  if (operation == "int") return CBigInteger(static_cast<int>(a));
  if (operation == "long long") return CBigInteger(static_cast<long long>(a));
  CBigInteger result(a);
  if (operation == "+=") return result += b;
  if (operation == "-=") return result -= b;
  if (operation == "*=") return result *= b;
  if (operation == "/=") return result /= b;
  if (operation == "%=") return result %= b;
  throw CQzException("an operation that the test does not know");
}

std::string Outcome(const IntegerCase& c) {
  try {
    return SignedText(Calculate(CBigInteger(c.a), c.operation, CBigInteger(c.b)));
  } catch (const CQzInvalidValueException& e) {
    return e.GetMessage();
  }
}

struct TextCase {
  const char* text;
  const char* value;  // with the sign of a zero
};

}  // namespace

TEST(BigInteger, CalculatesAsTheTableSays) {
  for (const IntegerCase& c : kCases) {
    EXPECT_EQ(c.result, Outcome(c)) << c.a << ' ' << c.operation << ' ' << c.b;
  }
}

TEST(BigInteger, ReadsPlainTextLeniently) {
  const TextCase cases[] = {
      {"", "0"},
      {"   ", "0"},
      {"0", "0"},
      {"-0", "-0"},
      {"000", "0"},
      {"007", "7"},
      {"-007", "-7"},
      {"+5", "5"},
      {"  +5  ", "5"},
      {"12-34", "34"},
      {"1 2", "2"},
      {"-1 2", "-2"},
      {"- 5", "-5"},
      {"--5", "-5"},
      {"+-5", "5"},
      {"-+5", "-5"},
      {"-", "-0"},
      {"+", "0"},
      {"5-", "0"},
      {"-5-", "-0"},
      {"5\n", "0"},
      {"-5\t ", "-0"},
      {"\n5", "5"},
      {"\n-5", "5"},
      {"\t\r\n 5", "5"},
      {" -5 ", "-5"},
      {"5 \n 6", "6"},
      {"\n", "0"},
      {"- ", "-0"},
      {" - 0 ", "-0"},
      {"1+2+003", "3"},
      {"340282366920938463463374607431768211456", "340282366920938463463374607431768211456"},
  };
  for (const TextCase& c : cases) {
    EXPECT_EQ(c.value, SignedText(CBigInteger(c.text))) << '[' << c.text << ']';
    CBigInteger value(77);
    value.Parse(c.text);
    EXPECT_EQ(c.value, SignedText(value)) << '[' << c.text << ']';
  }
  EXPECT_EQ("0", CBigInteger(static_cast<const char*>(nullptr)).ToString());
}

TEST(BigInteger, WritesZeroWithoutASign) {
  for (const char* text : {"", "   ", "0", "-0"}) EXPECT_EQ("0", CBigInteger(text).ToString());
  EXPECT_EQ("0", CBigInteger().ToString());
}

TEST(BigInteger, ReadsOtherTextAsADecimalAndRounds) {
  const TextCase cases[] = {
      {"1.5", "1"},    {"1.6", "2"},     {"-1.6", "-2"}, {"-1.5", "-1"}, {"1e3", "1000"},
      {"1E3", "1000"}, {"12e-1", "1"},   {"16e-1", "2"}, {"-0.4", "-0"}, {"5.", "5"},
      {".", "0"},      {"1-2.0", "-12"}, {"1 2.", "12"},
  };
  for (const TextCase& c : cases) EXPECT_EQ(c.value, SignedText(CBigInteger(c.text))) << c.text;
}

TEST(BigInteger, RefusesOtherTextWithTheFailureOfADecimal) {
  EXPECT_QZ_THROW(
      CQzInvalidValueException,
      "The string representing a Decimal, contained an invalid char at position 2 [12x].",
      CBigInteger("12x"));
  CBigInteger value(7);
  EXPECT_QZ_THROW(
      CQzInvalidValueException,
      "The string representing a Decimal, contained an invalid char at position 1 [-INF].",
      value.Parse("-INF"));
  EXPECT_EQ("7", value.ToString());
}

TEST(BigInteger, IsMadeOfEveryIntegerType) {
  EXPECT_EQ("-2147483648", CBigInteger(std::numeric_limits<int>::min()).ToString());
  EXPECT_EQ("4294967295", CBigInteger(std::numeric_limits<unsigned int>::max()).ToString());
  EXPECT_EQ("-9223372036854775808",
            CBigInteger(std::numeric_limits<std::int64_t>::min()).ToString());
  EXPECT_EQ("-9223372036854775808", CBigInteger(std::numeric_limits<long long>::min()).ToString());
  EXPECT_EQ("18446744073709551615",
            CBigInteger(std::numeric_limits<std::uint64_t>::max()).ToString());
  EXPECT_EQ("18446744073709551615",
            CBigInteger(std::numeric_limits<unsigned long long>::max()).ToString());
  EXPECT_EQ(std::to_string(std::numeric_limits<long>::min()),
            CBigInteger(std::numeric_limits<long>::min()).ToString());
  EXPECT_EQ(std::to_string(std::numeric_limits<unsigned long>::max()),
            CBigInteger(std::numeric_limits<unsigned long>::max()).ToString());
  EXPECT_EQ("0", SignedText(CBigInteger(0)));
}

TEST(BigInteger, RoundsADoubleToTheNearestWithTiesDown) {
  const std::pair<double, const char*> cases[] = {
      {0.0, "0"},
      {0.5, "0"},
      {0.51, "1"},
      {1.5, "1"},
      {2.5, "2"},
      {2.6, "3"},
      {-0.3, "-0"},
      {-0.5, "-0"},
      {-1.5, "-1"},
      {-1.6, "-2"},
      {1e6, "1000000"},
      {-0.0, "0"},
      {123456789.49, "123456789"},
      {4503599627370496.0, "4503599627370496"},
      // The half that is taken off is lost here, and with it the last unit.
      {4503599627370497.0, "4503599627370496"},
      {1e15, "1000000000000000"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.second, SignedText(CBigInteger(c.first))) << c.first;
}

// Each digit is what fmod leaves, and each division by ten is rounded to a double. Expected values
// are those of the same two steps in Python.
TEST(BigInteger, TakesALargeDoubleApartInDoubleArithmetic) {
  const std::pair<double, const char*> cases[] = {
      {4503599627370495.5, "4503599627370495"},
      {9007199254740996.0, "9007199254740996"},
      {90071992547409936.0, "90071992547409946"},
      {123456789012345680.0, "123456789012345680"},
      {9223372036854775808.0, "9223372036854776028"},
      {1e22, "10000000000000000000000"},
      {1e23, "100000000000000000000002"},
      {-1e23, "-100000000000000000000002"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.second, CBigInteger(c.first).ToString()) << c.first;
}

TEST(BigInteger, RefusesADoubleThatIsNoNumber) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_QZ_THROW(
      CQzInvalidValueException,
      "The string representing a Decimal, contained an invalid char at position 0 [inf\n].",
      CBigInteger{infinity});
  EXPECT_QZ_THROW(
      CQzInvalidValueException,
      "The string representing a Decimal, contained an invalid char at position 1 [-inf\n].",
      CBigInteger(-infinity));
  const double nan = std::copysign(std::numeric_limits<double>::quiet_NaN(), 1.0);
  EXPECT_QZ_THROW(
      CQzInvalidValueException,
      "The string representing a Decimal, contained an invalid char at position 0 [nan\n].",
      CBigInteger{nan});
  CBigInteger::Digits digits;
  EXPECT_QZ_THROW(
      CQzInvalidValueException,
      "The string representing a Decimal, contained an invalid char at position 0 [inf\n].",
      CBigInteger::BuildDouble(infinity, digits));
}

TEST(BigInteger, IsMadeOfADecimalByRounding) {
  EXPECT_EQ("1", CBigInteger(CDecimal("1.5")).ToString());
  EXPECT_EQ("2", CBigInteger(CDecimal("1.51")).ToString());
  EXPECT_EQ("-2", CBigInteger(CDecimal("-1.51")).ToString());
  EXPECT_EQ("-0", SignedText(CBigInteger(CDecimal("-0.5"))));
}

TEST(BigInteger, ANegativeZeroIsEqualToZeroAndLessThanIt) {
  const CBigInteger negative("-0");
  const CBigInteger positive("0");
  EXPECT_TRUE(negative == positive);
  EXPECT_FALSE(negative != positive);
  EXPECT_TRUE(negative < positive);
  EXPECT_TRUE(positive > negative);
  EXPECT_FALSE(negative > positive);
  EXPECT_FALSE(positive < negative);
  EXPECT_TRUE(negative <= positive);
  EXPECT_FALSE(negative >= positive);
  EXPECT_TRUE(positive >= negative);
  EXPECT_FALSE(positive <= negative);
  EXPECT_FALSE(negative < negative);
}

TEST(BigInteger, OrdersNumbersBySignLengthAndDigits) {
  const char* const ordered[] = {"-1000000000000000000000",
                                 "-999999999999999999999",
                                 "-12",
                                 "-11",
                                 "-2",
                                 "-0",
                                 "0",
                                 "2",
                                 "11",
                                 "12",
                                 "999999999999999999999",
                                 "1000000000000000000000"};
  const int count = static_cast<int>(std::size(ordered));
  for (int i = 0; i < count; ++i) {
    for (int j = 0; j < count; ++j) {
      const CBigInteger a(ordered[i]);
      const CBigInteger b(ordered[j]);
      EXPECT_EQ(i < j, a < b) << ordered[i] << ' ' << ordered[j];
      EXPECT_EQ(i <= j, a <= b) << ordered[i] << ' ' << ordered[j];
      EXPECT_EQ(i > j, a > b) << ordered[i] << ' ' << ordered[j];
      EXPECT_EQ(i >= j, a >= b) << ordered[i] << ' ' << ordered[j];
      const bool zeros = i + j == 11 && (i == 5 || i == 6);
      EXPECT_EQ(i == j || zeros, a == b) << ordered[i] << ' ' << ordered[j];
      EXPECT_EQ(i != j && !zeros, a != b) << ordered[i] << ' ' << ordered[j];
    }
  }
}

TEST(BigInteger, DivisionsDifferInTheDivisorsThatTheyRefuse) {
  EXPECT_EQ("-3", (CBigInteger(7) / CBigInteger(-2)).ToString());
  EXPECT_EQ("-1", (CBigInteger(-7) % CBigInteger(2)).ToString());
  EXPECT_QZ_THROW(CQzInvalidValueException, "ERROR: Overflow in operator%.",
                  CBigInteger(7) % CBigInteger(-2));
  EXPECT_QZ_THROW(CQzInvalidValueException, "ERROR: Overflow in operator/.",
                  CBigInteger(5) / CBigInteger(0));
  EXPECT_QZ_THROW(CQzInvalidValueException, "ERROR: Overflow in operator/.",
                  CBigInteger(0) / CBigInteger("-0"));

  CBigInteger value(7);
  for (const char* divisor : {"-2", "0", "-0"}) {
    EXPECT_QZ_THROW(CQzInvalidValueException, "ERROR: Overflow in operator /=.",
                    value /= CBigInteger(divisor));
    EXPECT_QZ_THROW(CQzInvalidValueException, "ERROR: Overflow in operator%=.",
                    value %= CBigInteger(divisor));
    EXPECT_QZ_THROW(CQzInvalidValueException, "ERROR: Overflow in operator%.",
                    value % CBigInteger(divisor));
    EXPECT_EQ("7", value.ToString());
  }
}

TEST(BigInteger, ConvertsToIntWithinItsRange) {
  EXPECT_EQ(std::numeric_limits<int>::max(), static_cast<int>(CBigInteger::MAX_LONG));
  EXPECT_EQ(std::numeric_limits<int>::min(), static_cast<int>(CBigInteger::MIN_LONG));
  EXPECT_EQ(0, static_cast<int>(CBigInteger("-0")));
  int number = 7;
  EXPECT_QZ_THROW(CQzInvalidValueException, kOutOfInt, number = CBigInteger::MAX_LONG + 1);
  EXPECT_QZ_THROW(CQzInvalidValueException, kOutOfInt, number = CBigInteger::MIN_LONG - 1);
  EXPECT_EQ(7, number);
}

TEST(BigInteger, ConvertsToLongLongExactlyUpTo4999999999) {
  EXPECT_EQ(4999999999LL, static_cast<long long>(CBigInteger("4999999999")));
  EXPECT_EQ(-4999999999LL, static_cast<long long>(CBigInteger("-4999999999")));
  EXPECT_EQ(705032704LL, static_cast<long long>(CBigInteger("5000000000")));
  EXPECT_EQ(-705032704LL, static_cast<long long>(CBigInteger("-5000000000")));
  EXPECT_QZ_THROW(CQzInvalidValueException, kOutOfLongLong,
                  static_cast<void>(static_cast<long long>(CBigInteger::MAX_LONGLONG + 1)));
  const long number = CBigInteger(-123456);
  EXPECT_EQ(-123456, number);
  const std::int64_t wide = CBigInteger(123456);
  EXPECT_EQ(123456, wide);
}

TEST(BigInteger, SquareRootsAreRoundedDown) {
  EXPECT_EQ("9", CBigInteger(99).SquareRoot().ToString());
  EXPECT_EQ("10", CBigInteger(100).SquareRoot().ToString());
  EXPECT_EQ("1", CBigInteger(1).SquareRoot().ToString());
  EXPECT_QZ_THROW(CQzInvalidValueException, kDivisionByZero, CBigInteger(0).SquareRoot());
  EXPECT_QZ_THROW(CQzInvalidValueException, "ERROR: Negative Number in function SquareRoot().",
                  CBigInteger(-4).SquareRoot());
  EXPECT_QZ_THROW(CQzInvalidValueException, "ERROR: Negative Number in function SquareRoot().",
                  CBigInteger("-0").SquareRoot());
  for (int number = 1; number < 3000; ++number) {
    const int root = CBigInteger(number).SquareRoot();
    EXPECT_TRUE(root * root <= number && (root + 1) * (root + 1) > number) << number;
  }
}

TEST(BigInteger, TheMinusSignNegatesTheObjectItself) {
  CBigInteger value(5);
  CBigInteger& result = -value;
  EXPECT_EQ(&value, &result);
  EXPECT_EQ("-5", value.ToString());
}

TEST(BigInteger, SignsChangeInPlaceOrInACopy) {
  CBigInteger value(-5);
  EXPECT_EQ("5", value.GetAbs().ToString());
  EXPECT_EQ("5", value.GetNegative().ToString());
  EXPECT_EQ("-5", value.ToString());
  value.Abs();
  EXPECT_EQ("5", value.ToString());
  value.Negate();
  EXPECT_EQ("-5", value.ToString());
  EXPECT_EQ("-0", SignedText(CBigInteger(0).GetNegative()));
}

TEST(BigInteger, PowersOfTenAreOneDigitAndZeros) {
  EXPECT_EQ("1", CBigInteger::Pow10(0).ToString());
  EXPECT_EQ("1000", CBigInteger::Pow10(3).ToString());
  EXPECT_EQ("1" + std::string(100000, '0'), CBigInteger::Pow10(100000).ToString());
}

TEST(BigInteger, TheRangesHaveTheirValuesInStaticInitialisers) {
  EXPECT_EQ("2147483648", kBeyondLong.ToString());
  EXPECT_EQ("17" + std::string(307, '0'), kMaxDoubleText);
  EXPECT_EQ("-17" + std::string(307, '0'), CBigInteger::MIN_DOUBLE.ToString());
  EXPECT_EQ("2147483647", CBigInteger::MAX_LONG.ToString());
  EXPECT_EQ("-2147483648", CBigInteger::MIN_LONG.ToString());
  EXPECT_EQ("9223372036854775807", CBigInteger::MAX_LONGLONG.ToString());
  EXPECT_EQ("-9223372036854775808", CBigInteger::MIN_LONGLONG.ToString());
}

TEST(BigInteger, TakesPlainNumbersAsOperands) {
  const CBigInteger value(12);
  EXPECT_TRUE(value == 12 && value != 13 && value < 13L && value <= 12ULL && value > 11U);
  EXPECT_TRUE(value >= 12.0);
  EXPECT_EQ("14", (value + 2).ToString());
  EXPECT_EQ("10", (value - 2).ToString());
  EXPECT_EQ("24", (value * 2).ToString());
  EXPECT_EQ("-6", (value / -2).ToString());
  EXPECT_EQ("2", (value % 5).ToString());
}

TEST(BigInteger, AnOperandMayBeTheResult) {
  CBigInteger value("123456789012345678901234567890");
  value += value;
  EXPECT_EQ("246913578024691357802469135780", value.ToString());
  value *= value;
  EXPECT_EQ("60966315012955347001981406250144795150007620799500076208400", value.ToString());
  value /= value;
  EXPECT_EQ("1", value.ToString());
  value %= value;
  EXPECT_EQ("0", value.ToString());
  value -= value;
  EXPECT_EQ("0", SignedText(value));
}

TEST(BigInteger, MovesAndLeavesAZero) {
  static_assert(std::is_nothrow_move_constructible_v<CBigInteger>);
  static_assert(std::is_nothrow_move_assignable_v<CBigInteger>);
  static_assert(std::has_virtual_destructor_v<CBigInteger>);
  CBigInteger value("12345678901234567890");
  const CBigInteger moved(std::move(value));
  EXPECT_EQ("12345678901234567890", moved.ToString());
  EXPECT_EQ("0", value.ToString());
  EXPECT_TRUE(value == CBigInteger() && CBigInteger() == value);
  EXPECT_FALSE(value < CBigInteger() || value > CBigInteger());
  EXPECT_EQ("5", (value + 5).ToString());
  EXPECT_EQ("-5", (value - 5).ToString());
  EXPECT_EQ("5", (CBigInteger(5) - value).ToString());
  EXPECT_EQ("0", (value * value).ToString());
  EXPECT_EQ("0", (value / CBigInteger(3)).ToString());
  EXPECT_EQ("0", (value + value).ToString());
  EXPECT_EQ(0, static_cast<int>(value));
  EXPECT_QZ_THROW(CQzInvalidValueException, kDivisionByZero, CBigInteger(3) / value);
  value = moved;
  EXPECT_EQ("12345678901234567890", value.ToString());
}

TEST(BigInteger, IsMadeOfASignAndDigitsByAClassBelowIt) {
  class Derived : public CBigInteger {
   public:
    Derived(int sign, const Digits& digits) : CBigInteger(sign, digits) {}
  };
  EXPECT_EQ("-123", Derived(-1, {3, 2, 1}).ToString());
  EXPECT_EQ("12", Derived(1, {2, 1, 0, 0}).ToString());
  EXPECT_EQ("-0", SignedText(Derived(-1, {})));
}

TEST(BigInteger, HandlesTenThousandDigits) {
  std::string text = "1";
  while (text.size() < 10000) text += std::to_string(text.size() * 7919 % 100003);
  text.resize(10000);
  const CBigInteger value(text.c_str());
  EXPECT_EQ(text, value.ToString());
  const CBigInteger square = value * value;
  EXPECT_TRUE(square / value == value);
  const CBigInteger root = value.SquareRoot();
  EXPECT_TRUE(root * root <= value && value < (root + 1) * (root + 1));
  EXPECT_EQ("1", ((square + 1) % value).ToString());
}

// Values of up to 27 digits need no memory of their own; every operation goes over that boundary.
TEST(BigInteger, IsTheSameWithFewDigitsAndWithMany) {
  for (const int digits : {1, 2, 9, 10, 17, 18, 19, 20, 26, 27, 28, 29, 54, 55, 100}) {
    const std::string ones(static_cast<std::size_t>(digits), '1');
    const std::string nines(static_cast<std::size_t>(digits), '9');
    const std::string zeros(static_cast<std::size_t>(digits), '0');
    const CBigInteger value(ones.c_str());
    EXPECT_EQ(ones, value.ToString());
    EXPECT_EQ("-" + ones, value.GetNegative().ToString());

    CBigInteger copy(value);
    EXPECT_EQ(ones, copy.ToString());
    const CBigInteger moved(std::move(copy));
    EXPECT_EQ(ones, moved.ToString());
    copy = CBigInteger(nines.c_str());
    EXPECT_EQ(nines, copy.ToString());
    copy += CBigInteger(1);
    EXPECT_EQ("1" + zeros, copy.ToString());
    copy -= CBigInteger(1);
    EXPECT_EQ(nines, copy.ToString());
    copy = copy - copy;
    EXPECT_EQ("0", copy.ToString());
    copy = moved;
    copy += copy;
    EXPECT_EQ(std::string(ones.size(), '2'), copy.ToString());
    copy -= moved;
    EXPECT_TRUE(copy == moved);
    copy -= copy;
    EXPECT_EQ("0", copy.ToString());

    const CBigInteger power = CBigInteger::Pow10(static_cast<unsigned int>(digits));
    EXPECT_EQ("1" + zeros, power.ToString());
    EXPECT_EQ(ones + zeros, (value * power).ToString());
    EXPECT_EQ(ones, (value * power / power).ToString());
    EXPECT_EQ(ones, ((value * power + value) % power).ToString());
    EXPECT_EQ(nines, (power - CBigInteger(1)).ToString());
    EXPECT_TRUE(value < power);
    EXPECT_TRUE(power > CBigInteger(nines.c_str()));
    EXPECT_TRUE((power * power).SquareRoot() == power);
  }
}
