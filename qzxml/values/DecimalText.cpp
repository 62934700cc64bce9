#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "qzxml/platform/Format.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/values/Decimal.h"
#include "qzxml/values/WhitespaceUtils.h"

// The texts of decimals. An ordinary text is read where it stands. Of any other the digits of the
// three sections are collected in buffers on the stack, and the value is touched when the whole
// text is good. Either way the heap holds what the digits of the result need. The buffers bound
// what a text may ask for: the digits before and behind the point, and the exponent, which is
// tested digit by digit, ahead of any power of ten.
namespace QzXmlLib16 {
namespace {

constexpr int kMostDigits = 512;     // before the point, and behind it
constexpr int kMostExponent = 1024;  // either way
constexpr int kMostExponentDigits = 32;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The digits of a section, in ASCII.
class DigitBuffer {
 public:
  bool IsFull() const { return m_count == kMostDigits; }
  void Append(char digit) { m_digits[m_count++] = digit; }

  int GetCount() const { return m_count; }
  const char* begin() const { return m_digits; }
  const char* end() const { return m_digits + m_count; }

  int CountLeadingZeros() const {
    const char* const first = std::find_if(begin(), end(), [](char c) { return c != '0'; });
    return static_cast<int>(first - begin());
  }
  int CountTrailingZeros() const {
    int count = 0;
    while (count < m_count && m_digits[m_count - 1 - count] == '0') ++count;
    return count;
  }

 private:
  int m_count = 0;
  char m_digits[kMostDigits];
};

// A text as most are: a minus or none, digits, a point or none, digits. They stay where they are.
class PlainText {
 public:
  explicit PlainText(const char* text)
      : negative(*text == '-'),
        integer(text + (negative ? 1 : 0)),
        point(SkipDigits(integer)),
        fraction(*point == '.' ? point + 1 : point),
        end(SkipDigits(fraction)) {}

  bool IsWhole() const {
    return *end == 0 && point - integer <= kMostDigits && end - fraction <= kMostDigits;
  }

  const bool negative;
  const char* const integer;
  const char* const point;  // the end of the integer part, with a point or without
  const char* const fraction;
  const char* const end;

 private:
  static const char* SkipDigits(const char* at) {
    while (IsDigit(*at)) ++at;
    return at;
  }
};

// Takes any text apart; a failure is raised at the char that has been reached.
class DecimalScanner {
 public:
  explicit DecimalScanner(const char* text) : m_text(text), m_at(text) {}

  void Scan() {
    ScanInteger();
    if (*m_at == '.') ScanFraction();
    if (*m_at == 'e' || *m_at == 'E') ScanExponent();
    if (*m_at != 0) Fail();
  }

  bool negative = false;
  DigitBuffer integer;
  DigitBuffer fraction;
  bool hasExponent = false;
  bool negativeExponent = false;
  int exponent = 0;  // without its sign

 private:
  void ScanInteger() {
    for (; *m_at != 0 && *m_at != '.' && *m_at != 'e' && *m_at != 'E'; ++m_at) {
      if (IsDigit(*m_at)) {
        Take(integer);
      } else if (*m_at == '-' || *m_at == '+') {
        negative = *m_at == '-';  // Meant: anywhere in the section, and the last one counts
      } else if (!CWhitespaceUtils::IsWhiteSpace(*m_at)) {
        Fail();
      }
    }
  }

  void ScanFraction() {
    for (++m_at; *m_at != 0; ++m_at) {
      if (IsDigit(*m_at)) {
        Take(fraction);
      } else if (!CWhitespaceUtils::IsWhiteSpace(*m_at)) {
        return;
      }
    }
  }

  void ScanExponent() {
    for (++m_at; *m_at == '-' || *m_at == '+' || CWhitespaceUtils::IsWhiteSpace(*m_at); ++m_at) {
      if (*m_at == '-' || *m_at == '+') negativeExponent = *m_at == '-';
    }
    int count = 0;
    for (; IsDigit(*m_at); ++m_at) {
      if (++count > kMostExponentDigits) Fail();
      exponent = exponent * 10 + (*m_at - '0');
      hasExponent = true;
      if (exponent > kMostExponent || CountShiftedDigits() > kMostDigits) Fail();
    }
  }

  void Take(DigitBuffer& section) {
    if (section.IsFull()) Fail();
    section.Append(*m_at);
  }

  // With the exponent, the digits that the value has before the point, or behind it for a negative
  // exponent; 0 or less where there are none.
  int CountShiftedDigits() const {
    const int before = integer.GetCount() - integer.CountLeadingZeros();
    const int behind = fraction.GetCount() - fraction.CountTrailingZeros();
    if (negativeExponent) {
      if (behind > 0) return behind + exponent;
      return before > 0 ? exponent - integer.CountTrailingZeros() : 0;
    }
    if (before > 0) return before + exponent;
    return behind > 0 ? exponent - fraction.CountLeadingZeros() : 0;
  }

  [[noreturn]] void Fail() const {
    throw CQzInvalidValueException(FormatString(
        "The string representing a Decimal, contained an invalid char at position %d [%s].",
        static_cast<int>(m_at - m_text), m_text));
  }

  const char* const m_text;
  const char* m_at;
};

}  // namespace

CDecimal::CDecimal(const char* text)
    : m_integerPart(CBigInteger::Unset{}),
      m_fractionPart(CBigInteger::Unset{}),
      m_fractionDivider(1) {
  Parse(text);
}

CDecimal::CDecimal(double value)
    : m_integerPart(CBigInteger::Unset{}),
      m_fractionPart(CBigInteger::Unset{}),
      m_fractionDivider(1) {
  char text[1024];  // the largest double has 309 digits before the point
  detail::FormatReal(text, sizeof(text), "%.13f\n", value);
  Parse(text);
}

void CDecimal::Parse(const char* text) {
  if (text == nullptr) text = "";
  const PlainText plain(text);
  if (plain.IsWhole()) {
    Assign(plain.negative, plain.integer, plain.point, plain.fraction, plain.end);
    RationaliseAndCut();
    return;
  }
  DecimalScanner scanner(text);
  scanner.Scan();
  Assign(scanner.negative, scanner.integer.begin(), scanner.integer.end(), scanner.fraction.begin(),
         scanner.fraction.end());
  if (scanner.hasExponent) {
    const CDecimal power(CBigInteger::Pow10(static_cast<unsigned int>(scanner.exponent)));
    *this = scanner.negativeExponent ? *this / power : *this * power;
  }
  RationaliseAndCut();
}

// The digits of the parts in ASCII. The zeros at the end of the fraction are left out.
void CDecimal::Assign(bool negative, const char* integer, const char* integerEnd,
                      const char* fraction, const char* fractionEnd) {
  const bool hadPlaces = fractionEnd - fraction > 1;
  while (fractionEnd - fraction > 1 && fractionEnd[-1] == '0') --fractionEnd;
  CBigInteger::BuildText(integer, integerEnd, m_integerPart.m_digits);
  CBigInteger::BuildText(fraction, fractionEnd, m_fractionPart.m_digits);
  m_integerPart.m_sign = negative ? -1 : 1;
  // Meant: the fraction of "-1.00" is +0, that of "-1" or "-1.0" is -0; < and > tell them apart.
  m_fractionPart.m_sign = hadPlaces && m_fractionPart.IsZero() ? 1 : m_integerPart.m_sign;
  m_fractionDivider = std::max(1, static_cast<int>(fractionEnd - fraction));
}

std::string CDecimal::ToString() const {
  if (m_fractionPart.IsZero()) return m_integerPart.ToString();
  std::string text;
  if (m_integerPart.m_sign < 0) text += '-';
  m_integerPart.AppendMagnitude(text);
  text += '.';
  AppendFraction(text);
  return text;
}

// The digits of the fraction, with the zeros that it has ahead of them.
void CDecimal::AppendFraction(std::string& text) const {
  const auto places = static_cast<std::size_t>(m_fractionDivider);
  const std::size_t digits = std::max<std::size_t>(m_fractionPart.m_digits.size(), 1);
  if (digits < places) text.append(places - digits, '0');
  m_fractionPart.AppendMagnitude(text);
}

std::string CDecimal::ToString(int decimalPlaces) const {
  const int places = std::max(decimalPlaces, 0);
  // Half a unit of the last place, which is cut to zero where a value keeps no more places.
  const bool hasHalf = places < GetKeptPlaces();
  CBigInteger zero;
  CBigInteger half(hasHalf ? 5 : 0);
  zero.m_sign = half.m_sign = m_integerPart.m_sign;
  const CDecimal rounded =
      CDecimal(std::move(zero), std::move(half), hasHalf ? places + 1 : 1) + *this;

  std::string text;
  if (rounded.m_integerPart.m_sign < 0) text += '-';
  rounded.m_integerPart.AppendMagnitude(text);
  text += '.';
  std::string fraction;
  rounded.AppendFraction(fraction);
  text.append(fraction, 0, static_cast<std::size_t>(places));
  return text;
}

}  // namespace QzXmlLib16
