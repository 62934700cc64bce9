#include "qzxml/values/BigInteger.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "qzxml/platform/InitOrder.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/values/Decimal.h"
#include "qzxml/values/Messages.h"

// Signs and texts of the big integer; what is done to the digits is in BigIntegerDigits.cpp.
//
// Every value has at least one digit, and no zero at its most significant end unless it is zero. A
// zero may be negative. It comes from a text ("-0"), from Negate, from a product or quotient whose
// operands have different signs (-3 / 5), and from the remainder of a negative number. Sums have it
// only where both operands are negative zeros. CDecimal keeps the sign of values between -1 and 0
// in it, and so the operators < and > look at it.
namespace QzXmlLib16 {
namespace {

// What a text may hold that is not handed on to CDecimal.
bool IsPlain(char c) {
  return (c >= '0' && c <= '9') || c == '-' || c == '+' || c == ' ' || c == '\n' || c == '\r' ||
         c == '\t';
}

int SignOf(bool negative) { return negative ? -1 : 1; }

}  // namespace

// Read by static initialisers of other sources, and MAX_DOUBLE is read by CDecimal, whose own
// static is a constant.
QZXML_INIT_ORDER(detail::InitOrder_NumericRanges)
const CBigInteger CBigInteger::MAX_LONG("2147483647");
QZXML_INIT_ORDER(detail::InitOrder_NumericRanges)
const CBigInteger CBigInteger::MIN_LONG("-2147483648");
QZXML_INIT_ORDER(detail::InitOrder_NumericRanges)
const CBigInteger CBigInteger::MAX_LONGLONG("9223372036854775807");
QZXML_INIT_ORDER(detail::InitOrder_NumericRanges)
const CBigInteger CBigInteger::MIN_LONGLONG("-9223372036854775808");
QZXML_INIT_ORDER(detail::InitOrder_NumericRanges)
const CBigInteger CBigInteger::MAX_DOUBLE("1.7E+308");
QZXML_INIT_ORDER(detail::InitOrder_NumericRanges)
const CBigInteger CBigInteger::MIN_DOUBLE("-1.7E+308");

CBigInteger::CBigInteger() : m_sign(1), m_digits(0) {}

CBigInteger::CBigInteger(int value) : CBigInteger(static_cast<long long>(value)) {}

CBigInteger::CBigInteger(unsigned int value)
    : CBigInteger(static_cast<unsigned long long>(value)) {}

CBigInteger::CBigInteger(long value) : CBigInteger(static_cast<long long>(value)) {}

CBigInteger::CBigInteger(unsigned long value)
    : CBigInteger(static_cast<unsigned long long>(value)) {}

CBigInteger::CBigInteger(long long value) : m_sign(SignOf(value < 0)) {
  const auto bits = static_cast<unsigned long long>(value);
  SetWord(value < 0 ? 0 - bits : bits);
}

CBigInteger::CBigInteger(unsigned long long value) : m_sign(1) { SetWord(value); }

CBigInteger::CBigInteger(double value) : m_sign(SignOf(0.0 > value)) {
  if (!std::isfinite(value)) static_cast<void>(CDecimal(value));  // throws, with the sign
  Digits digits;
  BuildDouble(std::abs(value), digits);
  m_digits.Set(std::move(digits));
}

CBigInteger::CBigInteger(const char* text) : m_sign(1) { Parse(text); }

CBigInteger::CBigInteger(const CDecimal& value) : CBigInteger(value.ToBigInteger()) {}

CBigInteger::CBigInteger(int sign, const Digits& digits) : m_sign(SignOf(sign < 0)) {
  Digits cleaned(digits);
  Clean(cleaned);
  m_digits.Set(std::move(cleaned));
}

CBigInteger::~CBigInteger() = default;

// --- Text. ---

void CBigInteger::Parse(const char* text) {
  if (text == nullptr) text = "";
  const char* last = text;
  while (IsPlain(*last)) ++last;
  if (*last != 0) {
    *this = CBigInteger(CDecimal(text));
    return;
  }
  while (last != text && last[-1] == ' ') --last;
  while (text != last && *text == ' ') ++text;
  const bool negative = text != last && *text == '-';
  const char* first = last;
  while (first != text && first[-1] >= '0' && first[-1] <= '9') --first;
  BuildText(first, last, m_digits);
  m_sign = SignOf(negative);
}

std::string CBigInteger::ToString() const {
  std::string text;
  if (m_sign < 0 && !IsZero()) text += '-';
  AppendMagnitude(text);
  return text;
}

void CBigInteger::AppendMagnitude(std::string& text) const {
  if (m_digits.empty()) text += '0';
  std::size_t at = text.size();
  text.resize(at + m_digits.size());
  for (std::size_t i = m_digits.size(); i-- > 0;) text[at++] = static_cast<char>(m_digits[i] + '0');
}

// --- Digits in place, and words of them. ---

void CBigInteger::BuildText(const char* first, const char* last, Store& out) {
  while (first != last && *first == '0') ++first;
  const auto count = static_cast<std::size_t>(last - first);
  if (count > Store::kMostInPlace) {
    Digits digits;
    BuildText(first, last, digits);
    return out.Set(std::move(digits));
  }
  char* digit = out.MakeInPlace(std::max<std::size_t>(count, 1));
  *digit = 0;
  while (last != first) *digit++ = static_cast<char>(*--last - '0');
}

// The digits of a value that was moved from are those of zero.
int CBigInteger::Compare(const Store& a, const Store& b) {
  const char zero = 0;
  const char* const left = a.empty() ? &zero : a.data();
  const char* const right = b.empty() ? &zero : b.data();
  const std::size_t size = std::max<std::size_t>(a.size(), 1);
  const std::size_t other = std::max<std::size_t>(b.size(), 1);
  if (size != other) return size < other ? -1 : 1;
  for (std::size_t i = size; i-- > 0;) {
    if (left[i] != right[i]) return left[i] < right[i] ? -1 : 1;
  }
  return 0;
}

bool CBigInteger::AreWords(const CBigInteger& a, const CBigInteger& b) {
  constexpr std::size_t kMostOfWord = 18;  // their sum is in range too
  return a.m_digits.size() <= kMostOfWord && b.m_digits.size() <= kMostOfWord;
}

std::uint64_t CBigInteger::GetWord() const {
  std::uint64_t word = 0;
  for (std::size_t i = m_digits.size(); i-- > 0;) {
    word = word * 10 + static_cast<unsigned char>(m_digits[i]);
  }
  return word;
}

void CBigInteger::SetWord(std::uint64_t magnitude) {
  char digits[Store::kMostInPlace];
  std::size_t count = 0;
  do {
    digits[count++] = static_cast<char>(magnitude % 10);
    magnitude /= 10;
  } while (magnitude > 0);
  m_digits.Assign(digits, count);
}

// --- Signs, roots and powers. ---

bool CBigInteger::IsZero() const {
  return m_digits.empty() || (m_digits.size() == 1 && m_digits[0] == 0);
}

int CBigInteger::GetSignum() const { return IsZero() ? 0 : m_sign; }

void CBigInteger::Abs() { m_sign = 1; }

CBigInteger CBigInteger::GetAbs() const {
  CBigInteger result(*this);
  result.Abs();
  return result;
}

void CBigInteger::Negate() { m_sign = -m_sign; }

CBigInteger CBigInteger::GetNegative() const {
  CBigInteger result(*this);
  result.Negate();
  return result;
}

CBigInteger& CBigInteger::operator-() {
  Negate();
  return *this;
}

// Newton's method from above: the first guess is the power of ten that has just more digits than
// the root, and as long as it falls, the root is below.
CBigInteger CBigInteger::SquareRoot() const {
  if (*this < CBigInteger()) {
    throw CQzInvalidValueException("ERROR: Negative Number in function SquareRoot().");
  }
  const CBigInteger two(2);
  CBigInteger guess =
      Pow10((static_cast<unsigned int>(std::max<std::size_t>(m_digits.size(), 1)) + 1) / 2);
  CBigInteger last(Unset{});
  do {
    last = std::move(guess);
    guess = (last + *this / last) / two;
  } while (guess < last);
  return last;
}

CBigInteger CBigInteger::Pow10(unsigned int exponent) {
  CBigInteger result(Unset{});
  Digits digits;
  Pow10(exponent, digits);
  result.m_digits.Set(std::move(digits));
  return result;
}

void CBigInteger::TimesPow10(int count) {
  if (IsZero() || count <= 0) return;
  const std::size_t size = m_digits.size();
  const auto zeros = static_cast<std::size_t>(count);
  if (zeros <= Store::kMostInPlace && size + zeros <= Store::kMostInPlace) {
    const Store before(m_digits);
    char* const digits = m_digits.MakeInPlace(size + zeros);
    std::fill_n(digits, zeros, '\0');
    std::copy(before.begin(), before.end(), digits + zeros);
    return;
  }
  Digits digits(m_digits.begin(), m_digits.end());
  ShiftLeft(digits, count);
  m_digits.Set(std::move(digits));
}

void CBigInteger::DividePow10(int count) {
  if (IsZero()) {
    *this = CBigInteger();
    return;
  }
  const std::size_t gone = std::min(static_cast<std::size_t>(count), m_digits.size());
  if (gone == m_digits.size()) {
    m_digits = Store(0);
  } else if (gone > 0) {
    m_digits.Assign(m_digits.data() + gone, m_digits.size() - gone);
  }
}

CBigInteger CBigInteger::RemainderPow10(int count) const {
  if (IsZero()) return CBigInteger();
  std::size_t kept = std::min(static_cast<std::size_t>(count), m_digits.size());
  while (kept > 0 && m_digits[kept - 1] == 0) --kept;
  CBigInteger result(Unset{});
  result.m_sign = m_sign;
  if (kept == 0) {
    result.m_digits = Store(0);
  } else {
    result.m_digits.Assign(m_digits.data(), kept);
  }
  return result;
}

// --- Comparison. ---

bool CBigInteger::operator==(const CBigInteger& other) const {
  if (Compare(m_digits, other.m_digits) != 0) return false;
  return m_sign == other.m_sign || IsZero();
}

bool CBigInteger::operator!=(const CBigInteger& other) const { return !(*this == other); }

bool CBigInteger::operator<(const CBigInteger& other) const {
  if (m_sign != other.m_sign) return m_sign < other.m_sign;
  return Compare(m_digits, other.m_digits) == -m_sign;
}

bool CBigInteger::operator<=(const CBigInteger& other) const { return !(*this > other); }

bool CBigInteger::operator>(const CBigInteger& other) const { return other < *this; }

bool CBigInteger::operator>=(const CBigInteger& other) const { return !(*this < other); }

// --- Arithmetic. ---

CBigInteger CBigInteger::operator+(const CBigInteger& other) const {
  CBigInteger result(*this);
  result.AddSigned(other, other.m_sign);
  return result;
}

CBigInteger CBigInteger::operator-(const CBigInteger& other) const {
  CBigInteger result(*this);
  result.AddSigned(other, -other.m_sign);
  return result;
}

CBigInteger& CBigInteger::operator+=(const CBigInteger& other) {
  AddSigned(other, other.m_sign);
  return *this;
}

CBigInteger& CBigInteger::operator-=(const CBigInteger& other) {
  AddSigned(other, -other.m_sign);
  return *this;
}

void CBigInteger::AddSigned(const CBigInteger& other, int sign) {
  const int order = m_sign == sign ? 1 : Compare(m_digits, other.m_digits);
  if (order == 0) {
    *this = CBigInteger();
    return;
  }
  if (AreWords(*this, other)) {
    const std::uint64_t own = GetWord();
    const std::uint64_t its = other.GetWord();
    SetWord(m_sign == sign ? own + its : order > 0 ? own - its : its - own);
  } else {
    Digits scratch;
    Digits result(m_digits.begin(), m_digits.end());
    const Digits& its = other.m_digits.View(scratch);
    if (m_sign == sign) {
      Add(result, its, result);
    } else if (order > 0) {
      Subtract(result, its, result);
    } else {
      Subtract(its, result, result);
    }
    m_digits.Set(std::move(result));
  }
  if (order < 0) m_sign = sign;
}

CBigInteger CBigInteger::operator*(const CBigInteger& other) const {
  CBigInteger result(Unset{});
  constexpr std::size_t kMostOfWord = 18;  // digits that a product in one word surely has room for
  if (m_digits.size() + other.m_digits.size() <= kMostOfWord) {
    result.SetWord(GetWord() * other.GetWord());
  } else {
    Digits own;
    Digits its;
    Digits product;
    Multiply(m_digits.View(own), other.m_digits.View(its), product);
    result.m_digits.Set(std::move(product));
  }
  result.m_sign = m_sign * other.m_sign;
  return result;
}

CBigInteger& CBigInteger::operator*=(const CBigInteger& other) { return *this = *this * other; }

bool CBigInteger::IsRefusedDivisor() const { return m_sign < 0 || IsZero(); }

CBigInteger CBigInteger::GetQuotient(const CBigInteger& divisor) const {
  if (IsZero()) return CBigInteger();
  CBigInteger result(Unset{});
  if (AreWords(*this, divisor) && !divisor.IsZero()) {
    result.SetWord(GetWord() / divisor.GetWord());
  } else {
    Digits own;
    Digits its;
    Digits quotient;
    Digits remainder;
    Divide(m_digits.View(own), divisor.m_digits.View(its), quotient, remainder);
    result.m_digits.Set(std::move(quotient));
  }
  result.m_sign = m_sign * divisor.m_sign;
  return result;
}

CBigInteger CBigInteger::GetRemainder(const CBigInteger& divisor) const {
  if (IsZero()) return CBigInteger();
  CBigInteger result(Unset{});
  if (AreWords(*this, divisor) && !divisor.IsZero()) {
    result.SetWord(GetWord() % divisor.GetWord());
  } else {
    Digits own;
    Digits its;
    Digits quotient;
    Digits remainder;
    Divide(m_digits.View(own), divisor.m_digits.View(its), quotient, remainder);
    result.m_digits.Set(std::move(remainder));
  }
  result.m_sign = m_sign;
  return result;
}

CBigInteger CBigInteger::operator/(const CBigInteger& other) const {
  if (other.IsZero()) throw CQzInvalidValueException(Messages::kDivisionByZero);
  return GetQuotient(other);
}

CBigInteger CBigInteger::operator%(const CBigInteger& other) const {
  if (other.IsRefusedDivisor()) throw CQzInvalidValueException("ERROR: Overflow in operator%.");
  return GetRemainder(other);
}

CBigInteger& CBigInteger::operator/=(const CBigInteger& other) {
  if (other.IsRefusedDivisor()) throw CQzInvalidValueException("ERROR: Overflow in operator /=.");
  return *this = GetQuotient(other);
}

CBigInteger& CBigInteger::operator%=(const CBigInteger& other) {
  if (other.IsRefusedDivisor()) throw CQzInvalidValueException("ERROR: Overflow in operator%=.");
  return *this = GetRemainder(other);
}

// --- Conversion. ---

CBigInteger::operator int() const {
  if (*this < MIN_LONG || *this > MAX_LONG) {
    throw CQzInvalidValueException("ERROR: Value out of bound of int.");
  }
  return static_cast<int>(GetInt64());
}

CBigInteger::operator long long() const {
  if (*this < MIN_LONGLONG || *this > MAX_LONGLONG) {
    throw CQzInvalidValueException("ERROR: Value out of bound of LONGLONG.");
  }
  // Meant: place and term wrap at 32 bits, as callers of old have their numbers from here.
  std::int64_t total = 0;
  std::uint32_t place = 1;
  for (const char digit : m_digits) {
    const std::uint32_t term = static_cast<unsigned char>(digit) * place;
    total += m_sign * std::int64_t{term};
    place *= 10;
  }
  return total;
}

CBigInteger::operator long() const {
  if constexpr (sizeof(long) == sizeof(int)) return operator int();
  return static_cast<long>(operator long long());
}

std::int64_t CBigInteger::GetInt64() const {
  const std::uint64_t magnitude = GetWord();
  return static_cast<std::int64_t>(m_sign < 0 ? 0 - magnitude : magnitude);
}

}  // namespace QzXmlLib16
