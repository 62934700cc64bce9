#include "qzxml/values/Decimal.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <string>
#include <system_error>
#include <utility>

#include "qzxml/runtime/QzException.h"

// A value is an integer part, a fraction part and the number of places that the fraction counts:
// -1.005 is -1, -5, 3. Both parts carry the sign, -0.5 is a zero with the sign -1, -5, 1. What is
// done to the parts in powers of ten is a matter of taking digits off or putting zeros on.
//
// Three steps shape every result. ChangeFractionalDivider brings it to a number of places, and is
// where rounding happens: to the nearest, halves toward zero, no carry into the integer part.
// Normalize brings two values to the larger number of places of the two. Rationalise takes zeros
// off the end of the fraction. Texts are read and written in DecimalText.cpp.
namespace QzXmlLib16 {
namespace {

// No useful number of places is above; it keeps a division from asking for gigabytes.
constexpr std::int32_t kMostPlaces = 100000;

}  // namespace

std::int32_t CDecimal::m_maxDivider = 30;  // a constant: static initialisers read numbers

CDecimal::CDecimal() : m_fractionDivider(1) {}

CDecimal::CDecimal(int value) : m_integerPart(value), m_fractionDivider(1) {}

CDecimal::CDecimal(unsigned int value) : m_integerPart(value), m_fractionDivider(1) {}

CDecimal::CDecimal(long value) : m_integerPart(value), m_fractionDivider(1) {}

CDecimal::CDecimal(unsigned long value) : m_integerPart(value), m_fractionDivider(1) {}

CDecimal::CDecimal(long long value) : m_integerPart(value), m_fractionDivider(1) {}

CDecimal::CDecimal(unsigned long long value) : m_integerPart(value), m_fractionDivider(1) {}

CDecimal::CDecimal(const CBigInteger& value) : m_integerPart(value), m_fractionDivider(1) {}

CDecimal::CDecimal(CBigInteger integerPart, CBigInteger fractionPart, int divider)
    : m_integerPart(std::move(integerPart)),
      m_fractionPart(std::move(fractionPart)),
      m_fractionDivider(divider) {}

CDecimal::~CDecimal() = default;

int CDecimal::GetMaxDecimalPlaces() { return m_maxDivider; }

void CDecimal::SetMaxDecimalPlaces(int places) { m_maxDivider = places; }

int CDecimal::GetKeptPlaces() { return std::clamp(m_maxDivider, 0, kMostPlaces); }

// --- Places. ---

void CDecimal::ChangeFractionalDivider(int newDivider) {
  if (m_fractionDivider <= newDivider) {
    m_fractionPart.TimesPow10(newDivider - m_fractionDivider);
    m_fractionDivider = newDivider;
    return;
  }
  const int count = m_fractionDivider - newDivider;
  const int round = GetRounding(m_fractionPart, count);
  m_fractionPart.DividePow10(count);
  m_fractionDivider = newDivider;
  if (round == 0) return;
  if (newDivider == 0) {
    m_integerPart += CBigInteger(round);
    return;
  }
  // Meant: the fraction may become a whole here and stays one, in this value and in its text.
  m_fractionPart += CBigInteger(round);
  if (m_integerPart.GetSignum() > 0 && m_fractionPart.GetSignum() < 0) BorrowWhole(newDivider);
  if (m_integerPart.GetSignum() < 0 && m_fractionPart.GetSignum() > 0) CarryWhole(newDivider);
  if (m_integerPart.IsZero()) m_integerPart.m_sign = m_fractionPart.m_sign;
}

// What the last count digits of a number round to: 1 or -1 by its sign when they are more than a
// half of the digit ahead of them, otherwise 0.
int CDecimal::GetRounding(const CBigInteger& number, int count) {
  const auto cut = static_cast<std::size_t>(count);
  const detail::CDigitStore& digits = number.m_digits;
  if (digits.size() < cut || digits[cut - 1] < 5) return 0;
  const char* const rest = digits.begin() + static_cast<std::ptrdiff_t>(cut - 1);
  const bool isHalf =
      *rest == 5 && std::all_of(digits.begin(), rest, [](char c) { return c == 0; });
  return isHalf ? 0 : number.m_sign;
}

void CDecimal::CarryWhole(int divider) {
  m_fractionPart -= CBigInteger::Pow10(static_cast<unsigned int>(divider));
  m_integerPart += CBigInteger(1);
}

void CDecimal::BorrowWhole(int divider) {
  m_fractionPart += CBigInteger::Pow10(static_cast<unsigned int>(divider));
  m_integerPart -= CBigInteger(1);
}

void CDecimal::Rationalise() {
  if (m_fractionDivider < 2) return;
  const auto most = static_cast<std::size_t>(m_fractionDivider) - 1;
  const detail::CDigitStore& digits = m_fractionPart.m_digits;
  // Meant: a fraction that was rounded up to a whole loses all places but one, like a zero.
  std::size_t zeros = most;
  if (!m_fractionPart.IsZero() && digits.size() <= most + 1) {
    const char* const last =
        std::find_if(digits.begin(), digits.end(), [](char c) { return c != 0; });
    zeros = std::min(most, static_cast<std::size_t>(last - digits.begin()));
  }
  if (zeros == 0) return;
  m_fractionPart.DividePow10(static_cast<int>(zeros));
  m_fractionDivider -= static_cast<std::int32_t>(zeros);
}

void CDecimal::RationaliseAndCut() {
  Rationalise();
  if (m_fractionDivider > GetKeptPlaces()) ChangeFractionalDivider(GetKeptPlaces());
}

int CDecimal::Normalize(CDecimal& a, CDecimal& b) {
  const int divider = std::max(a.m_fractionDivider, b.m_fractionDivider);
  if (a.m_fractionDivider != divider) a.ChangeFractionalDivider(divider);
  if (b.m_fractionDivider != divider) b.ChangeFractionalDivider(divider);
  return divider;
}

CBigInteger CDecimal::GetUnits() const {
  CBigInteger units(m_integerPart);
  units.TimesPow10(m_fractionDivider);
  units += m_fractionPart;
  return units;
}

CDecimal CDecimal::FromUnits(CBigInteger units, int divider) {
  CBigInteger fraction = units.RemainderPow10(divider);
  units.DividePow10(divider);
  CDecimal result(std::move(units), std::move(fraction), divider);
  result.RationaliseAndCut();
  return result;
}

// --- Comparison. ---

// The order of the fraction parts at the same number of places, with the signs of zeros.
int CDecimal::CompareFractions(const CDecimal& other) const {
  const auto compare = [](const CBigInteger& a, const CBigInteger& b) {
    return a < b ? -1 : a > b ? 1 : 0;
  };
  if (m_fractionDivider == other.m_fractionDivider) {
    return compare(m_fractionPart, other.m_fractionPart);
  }
  CDecimal a(CBigInteger(), m_fractionPart, m_fractionDivider);
  CDecimal b(CBigInteger(), other.m_fractionPart, other.m_fractionDivider);
  Normalize(a, b);
  return compare(a.m_fractionPart, b.m_fractionPart);
}

bool CDecimal::operator==(const CDecimal& other) const {
  if (m_integerPart != other.m_integerPart) return false;
  if (m_fractionPart.IsZero()) return other.m_fractionPart.IsZero();
  return CompareFractions(other) == 0;
}

bool CDecimal::operator!=(const CDecimal& other) const { return !(*this == other); }

bool CDecimal::operator<(const CDecimal& other) const {
  if (m_integerPart < other.m_integerPart) return true;
  return m_integerPart == other.m_integerPart && CompareFractions(other) < 0;
}

bool CDecimal::operator<=(const CDecimal& other) const {
  if (m_integerPart < other.m_integerPart) return true;
  return m_integerPart == other.m_integerPart && CompareFractions(other) <= 0;
}

bool CDecimal::operator>(const CDecimal& other) const { return other < *this; }

bool CDecimal::operator>=(const CDecimal& other) const { return other <= *this; }

int CDecimal::CompareWithInteger(const CBigInteger& other) const {
  if (m_integerPart == other) return m_fractionPart.GetSignum();
  return m_integerPart < other ? -1 : 1;
}

// --- Arithmetic. ---

CDecimal CDecimal::operator+(const CDecimal& other) const {
  CDecimal sum(*this);
  CDecimal addend(other);
  const int divider = Normalize(sum, addend);
  sum.m_fractionPart += addend.m_fractionPart;
  sum.m_integerPart += addend.m_integerPart;
  // A fraction is a whole or more when it has more digits than there are places.
  while (sum.m_fractionPart.m_digits.size() > static_cast<std::size_t>(divider) &&
         !sum.m_fractionPart.IsZero()) {
    if (sum.m_fractionPart.m_sign > 0) {
      sum.CarryWhole(divider);
    } else {
      sum.BorrowWhole(divider);
    }
  }
  if (sum.m_integerPart.GetSignum() > 0 && sum.m_fractionPart.GetSignum() < 0) {
    sum.BorrowWhole(divider);
  }
  if (sum.m_integerPart.GetSignum() < 0 && sum.m_fractionPart.GetSignum() > 0) {
    sum.CarryWhole(divider);
  }
  if (sum.m_integerPart.IsZero()) sum.m_integerPart.m_sign = sum.m_fractionPart.m_sign;
  sum.Rationalise();
  return sum;
}

CDecimal CDecimal::operator-(const CDecimal& other) const { return *this + other.GetNegative(); }

CDecimal CDecimal::operator*(const CDecimal& other) const {
  CDecimal a(*this);
  CDecimal b(other);
  const int divider = Normalize(a, b);
  return FromUnits(a.GetUnits() * b.GetUnits(), 2 * divider);
}

CDecimal CDecimal::operator/(const CDecimal& other) const {
  constexpr int kGuardDigits = 2;  // they make the final cut a rounding
  CDecimal dividend(*this);
  CDecimal divisor(other);
  Normalize(dividend, divisor);
  const int places = GetKeptPlaces() + kGuardDigits;
  CBigInteger units = dividend.GetUnits();
  units.TimesPow10(places);
  return FromUnits(units / divisor.GetUnits(), places);
}

CDecimal& CDecimal::operator+=(const CDecimal& other) { return *this = *this + other; }

CDecimal& CDecimal::operator-=(const CDecimal& other) { return *this = *this - other; }

CDecimal& CDecimal::operator*=(const CDecimal& other) { return *this = *this * other; }

CDecimal& CDecimal::operator/=(const CDecimal& other) { return *this = *this / other; }

CDecimal& CDecimal::operator++() { return *this += CDecimal(1); }

CDecimal& CDecimal::operator--() { return *this -= CDecimal(1); }

CDecimal CDecimal::operator++(int) const { return *this + CDecimal(1); }

CDecimal CDecimal::operator--(int) const { return *this - CDecimal(1); }

void CDecimal::Negate() {
  m_integerPart.Negate();
  m_fractionPart.Negate();
}

CDecimal CDecimal::GetNegative() const {
  CDecimal result(*this);
  result.Negate();
  return result;
}

// --- Conversion. ---

std::int32_t CDecimal::ToLong() const {
  CDecimal rounded(*this);
  rounded.ChangeFractionalDivider(0);
  if (rounded.CompareWithInteger(CBigInteger::MAX_LONG) > 0 ||
      rounded.CompareWithInteger(CBigInteger::MIN_LONG) < 0) {
    throw CQzOverFlowException("The Decimal value if to large to fit into a LONG");
  }
  return static_cast<std::int32_t>(rounded.m_integerPart.GetInt64());
}

long long CDecimal::ToLongLong() const {
  CDecimal rounded(*this);
  rounded.ChangeFractionalDivider(1);
  if (rounded.CompareWithInteger(CBigInteger::MAX_LONGLONG) > 0 ||
      rounded.CompareWithInteger(CBigInteger::MIN_LONGLONG) < 0) {
    throw CQzOverFlowException("The Decimal value if to large to fit into a LONGLONG");
  }
  return rounded.m_integerPart.GetInt64();
}

double CDecimal::ToDouble() const {
  if (m_integerPart > CBigInteger::MAX_DOUBLE || m_integerPart < CBigInteger::MIN_DOUBLE) {
    throw CQzOverFlowException("The Decimal value if to large to fit into a Double");
  }
  const std::string text = ToString();
  double value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  // Nothing is too large here, so it was too close to zero.
  if (result.ec == std::errc::result_out_of_range) return text[0] == '-' ? -0.0 : 0.0;
  return value;
}

CBigInteger CDecimal::ToBigInteger() const {
  CDecimal rounded(*this);
  rounded.ChangeFractionalDivider(0);
  return std::move(rounded.m_integerPart);
}

}  // namespace QzXmlLib16
