// The operations on magnitudes that CBigInteger is made of: vectors of digits, least significant
// first.
#include <cstddef>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "qzxml/values/BigInteger.h"
#include "tests/support/QzTest.h"

using QzXmlLib16::CBigInteger;
using QzXmlLib16::CQzInvalidValueException;

namespace {

constexpr char kDivisionByZero[] = "ERROR: Overflow in operator/.";

struct TextCase {
  const char* text;
  const char* value;
};

CBigInteger::Digits DigitsOf(const std::string& text) {
  CBigInteger::Digits digits;
  for (std::size_t i = text.size(); i-- > 0;) digits.push_back(static_cast<char>(text[i] - '0'));
  return digits;
}

std::string TextOf(const CBigInteger::Digits& digits) {
  std::string text;
  for (std::size_t i = digits.size(); i-- > 0;) text += static_cast<char>(digits[i] + '0');
  return text;
}

// The product, a digit of one by a digit of the other.
std::string SchoolbookProduct(const std::string& a, const std::string& b) {
  std::vector<unsigned> sums(a.size() + b.size() + 1, 0);
  for (std::size_t i = 0; i < a.size(); ++i) {
    for (std::size_t j = 0; j < b.size(); ++j) {
      sums[i + j] +=
          static_cast<unsigned>((a[a.size() - 1 - i] - '0') * (b[b.size() - 1 - j] - '0'));
    }
  }
  std::string text;
  unsigned carry = 0;
  for (const unsigned sum : sums) {
    text.insert(text.begin(), static_cast<char>('0' + (sum + carry) % 10));
    carry = (sum + carry) / 10;
  }
  const std::size_t first = text.find_first_not_of('0');
  return first == std::string::npos ? "0" : text.substr(first);
}

// Groups of nine digits at the ends of their range are where a division estimates wrongly.
std::string TextOfGroups(std::mt19937& random, int groups) {
  static const char* const kEdges[] = {"000000000", "000000001", "499999999", "500000000",
                                       "500000001", "999999998", "999999999"};
  std::string text = std::to_string(1 + random() % 9);
  for (int i = 0; i < groups; ++i) {
    const auto pick = random() % 10;
    text += pick < 7 ? kEdges[pick] : std::to_string(100000000 + random() % 900000000);
  }
  return text;
}

}  // namespace

TEST(BigIntegerDigits, AreBuiltOfTextAndNumbers) {
  const TextCase cases[] = {{"", "0"},     {"0", "0"},   {"000", "0"}, {"0120", "120"},
                            {"a12", "12"}, {"12a", "0"}, {"-7", "7"},  {"1x2x34", "34"}};
  for (const TextCase& c : cases) {
    CBigInteger::Digits digits{9};
    CBigInteger::Build(std::string(c.text), digits);
    EXPECT_EQ(c.value, TextOf(digits)) << c.text;
  }
  CBigInteger::Digits digits;
  CBigInteger::Build(0U, digits);
  EXPECT_EQ(CBigInteger::Digits({0}), digits);
  CBigInteger::Build(4294967295U, digits);
  EXPECT_EQ("4294967295", TextOf(digits));
  CBigInteger::BuildDWORDLONG(18446744073709551615ULL, digits);
  EXPECT_EQ("18446744073709551615", TextOf(digits));
  CBigInteger::BuildDouble(1234.5, digits);
  EXPECT_EQ("1234", TextOf(digits));
  CBigInteger::BuildDouble(0.2, digits);
  EXPECT_EQ("0", TextOf(digits));
}

TEST(BigIntegerDigits, AreNotBuiltOfANegativeDouble) {
  CBigInteger::Digits digits;
  EXPECT_QZ_ASSERT("d >= 0", CBigInteger::BuildDouble(-1.0, digits));
}

TEST(BigIntegerDigits, AreCleanedDownToOneDigit) {
  const std::pair<CBigInteger::Digits, CBigInteger::Digits> cases[] = {
      {{0, 0}, {0}}, {{1, 2, 0, 0}, {1, 2}}, {{0, 1}, {0, 1}}, {{}, {0}}};
  for (const auto& c : cases) {
    CBigInteger::Digits digits = c.first;
    CBigInteger::Clean(digits);
    EXPECT_EQ(c.second, digits);
  }
}

TEST(BigIntegerDigits, AreComparedByLengthAndFromTheTop) {
  EXPECT_EQ(0, CBigInteger::Compare({1, 2}, {1, 2}));
  EXPECT_EQ(-1, CBigInteger::Compare({9, 9}, {0, 0, 1}));
  EXPECT_EQ(1, CBigInteger::Compare({0, 0, 1}, {9, 9}));
  EXPECT_EQ(-1, CBigInteger::Compare({9, 1}, {0, 2}));
  EXPECT_EQ(1, CBigInteger::Compare({2, 1}, {1, 1}));
}

TEST(BigIntegerDigits, AreAddedAndSubtractedWithCarries) {
  CBigInteger::Digits out;
  CBigInteger::Add(DigitsOf("999"), DigitsOf("1"), out);
  EXPECT_EQ("1000", TextOf(out));
  CBigInteger::Add(DigitsOf("5"), DigitsOf("12345"), out);
  EXPECT_EQ("12350", TextOf(out));
  CBigInteger::Subtract(DigitsOf("1000"), DigitsOf("1"), out);
  EXPECT_EQ("999", TextOf(out));
  CBigInteger::Subtract(DigitsOf("1000"), DigitsOf("999"), out);
  EXPECT_EQ("1", TextOf(out));
  CBigInteger::Subtract(DigitsOf("50"), DigitsOf("50"), out);
  EXPECT_EQ("0", TextOf(out));
  EXPECT_QZ_ASSERT("a >= b", CBigInteger::Subtract({1}, {2}, out));
}

TEST(BigIntegerDigits, AreMultipliedByADigit) {
  CBigInteger::Digits out;
  CBigInteger::Multiply(DigitsOf("99"), 9, out);
  EXPECT_EQ("891", TextOf(out));
  CBigInteger::Multiply(DigitsOf("99"), 0, out);
  EXPECT_EQ("0", TextOf(out));
  CBigInteger::Multiply(DigitsOf("0"), 7, out);
  EXPECT_EQ("0", TextOf(out));
}

TEST(BigIntegerDigits, AreShiftedByZerosInFront) {
  CBigInteger::Digits digits{5};
  CBigInteger::ShiftLeft(digits, 3);
  EXPECT_EQ("5000", TextOf(digits));
  CBigInteger::ShiftLeft(digits, 0);
  CBigInteger::ShiftLeft(digits, -1);
  EXPECT_EQ("5000", TextOf(digits));
  EXPECT_EQ(4, CBigInteger::Position(digits));
  EXPECT_EQ(1, CBigInteger::Position({}));
  CBigInteger::Pow10(2, digits);
  EXPECT_EQ("100", TextOf(digits));
  // Zero is no exception: Clean takes the zeros off again.
  CBigInteger::Digits zero{0};
  CBigInteger::ShiftLeft(zero, 2);
  EXPECT_EQ(CBigInteger::Digits({0, 0, 0}), zero);
  CBigInteger::Pow10(0, zero);
  EXPECT_EQ(CBigInteger::Digits({1}), zero);
}

TEST(BigIntegerDigits, DivideRefusesAZeroDivisor) {
  CBigInteger::Digits quotient;
  CBigInteger::Digits remainder;
  EXPECT_QZ_THROW(CQzInvalidValueException, kDivisionByZero,
                  CBigInteger::Divide({5}, {0}, quotient, remainder));
  EXPECT_QZ_THROW(CQzInvalidValueException, kDivisionByZero,
                  CBigInteger::Divide({0}, {0}, quotient, remainder));
  EXPECT_QZ_THROW(CQzInvalidValueException, kDivisionByZero,
                  CBigInteger::Divide(DigitsOf(std::string(50, '7')), {0}, quotient, remainder));
}

TEST(BigIntegerDigits, ResultsMayReplaceOperands) {
  const std::string a = "987654321098765432109876543210";
  const std::string b = "123456789012345678901234567890";
  CBigInteger::Digits x = DigitsOf(a);
  CBigInteger::Digits y = DigitsOf(b);
  CBigInteger::Add(x, y, y);
  EXPECT_EQ("1111111110111111111011111111100", TextOf(y));
  CBigInteger::Subtract(y, x, x);
  EXPECT_EQ(b, TextOf(x));
  CBigInteger::Subtract(y, x, y);
  EXPECT_EQ(a, TextOf(y));
  CBigInteger::Divide(y, x, y, x);
  EXPECT_EQ("8", TextOf(y));
  EXPECT_EQ("9000000000900000000090", TextOf(x));
  CBigInteger::Multiply(x, x, x);
  EXPECT_EQ(SchoolbookProduct("9000000000900000000090", "9000000000900000000090"), TextOf(x));
  CBigInteger::Multiply(y, 7, y);
  EXPECT_EQ("56", TextOf(y));
}

TEST(BigIntegerDigits, SmallNumbersCalculateAsTheMachineDoes) {
  for (unsigned a = 0; a < 130; ++a) {
    for (unsigned b = 0; b < 130; ++b) {
      CBigInteger::Digits x;
      CBigInteger::Digits y;
      CBigInteger::Build(a, x);
      CBigInteger::Build(b, y);
      CBigInteger::Digits out;
      CBigInteger::Digits rest;
      CBigInteger::Add(x, y, out);
      ASSERT_EQ(std::to_string(a + b), TextOf(out));
      CBigInteger::Multiply(x, y, out);
      ASSERT_EQ(std::to_string(a * b), TextOf(out));
      if (a >= b) {
        CBigInteger::Subtract(x, y, out);
        ASSERT_EQ(std::to_string(a - b), TextOf(out));
      }
      if (b == 0) continue;
      CBigInteger::Divide(x, y, out, rest);
      ASSERT_EQ(std::to_string(a / b), TextOf(out));
      ASSERT_EQ(std::to_string(a % b), TextOf(rest));
    }
  }
}

TEST(BigIntegerDigits, LargeProductsAndQuotientsAgreeWithTheSchoolbook) {
  std::mt19937 random(20040506);
  for (int round = 0; round < 1500; ++round) {
    const std::string a = TextOfGroups(random, static_cast<int>(random() % 9));
    const std::string b = TextOfGroups(random, static_cast<int>(random() % 6));
    const CBigInteger::Digits x = DigitsOf(a);
    const CBigInteger::Digits y = DigitsOf(b);
    CBigInteger::Digits product;
    CBigInteger::Multiply(x, y, product);
    ASSERT_EQ(SchoolbookProduct(a, b), TextOf(product)) << a << " * " << b;

    CBigInteger::Digits quotient;
    CBigInteger::Digits rest;
    CBigInteger::Divide(x, y, quotient, rest);
    ASSERT_EQ(-1, CBigInteger::Compare(rest, y)) << a << " / " << b;
    CBigInteger::Digits whole;
    CBigInteger::Add(DigitsOf(SchoolbookProduct(TextOf(quotient), b)), rest, whole);
    ASSERT_EQ(a, TextOf(whole)) << a << " / " << b << " = " << TextOf(quotient);
  }
}

// Nothing but nines gives the largest sums that a product has; its square is one less eight, as
// many zeros and a one: 999 * 999 is 998001.
TEST(BigIntegerDigits, ProductsOfNinesFitTheirSums) {
  for (std::size_t count = 1; count < 700; count += count < 30 ? 1 : 9) {
    const std::string nines(count, '9');
    const std::string square =
        std::string(count - 1, '9') + "8" + std::string(count - 1, '0') + "1";
    CBigInteger::Digits out;
    CBigInteger::Multiply(DigitsOf(nines), DigitsOf(nines), out);
    ASSERT_EQ(count == 1 ? "81" : square, TextOf(out)) << count;
    CBigInteger::Digits rest;
    CBigInteger::Divide(out, DigitsOf(nines), out, rest);
    ASSERT_EQ(nines, TextOf(out)) << count;
    ASSERT_EQ("0", TextOf(rest)) << count;
  }
}

// Numbers for which the estimate of a limb is too large even behind its correction.
TEST(BigIntegerDigits, ALimbThatWasEstimatedTooLargeIsTakenBack) {
  const struct {
    const char *a, *b, *quotient, *remainder;
  } cases[] = {
      {"999999998999999999499999999499999999", "999999998999999999500000000", "999999999",
       "999999998999999998999999999"},
      {"999999999000000000000000000000000001", "999999999000000000500000001", "999999999",
       "999999998499999999500000002"},
      {"999999999000000001500000000000000000", "499999999500000000999999999", "1999999999",
       "499999999000000002999999999"},
      {"500000000999999998500000001000000001", "500000001500000000500000000", "999999998",
       "500000001000000002000000001"},
  };
  for (const auto& c : cases) {
    CBigInteger::Digits quotient;
    CBigInteger::Digits rest;
    CBigInteger::Divide(DigitsOf(c.a), DigitsOf(c.b), quotient, rest);
    EXPECT_EQ(c.quotient, TextOf(quotient)) << c.a << " / " << c.b;
    EXPECT_EQ(c.remainder, TextOf(rest)) << c.a << " / " << c.b;
  }
}
