#pragma once

#include <cstdint>
#include <string>

#include "qzxml/platform/Export.h"
#include "qzxml/values/BigInteger.h"

namespace QzXmlLib16 {

// The value of xs:decimal: exact, with a number of decimal places of its own. The integer part and
// the digits behind the point are kept apart, both with the sign of the value: -1.005 is -1, -5 and
// 3 places. The integer part of -0.5 is a zero with the sign -1.
//
// Operands are brought to one number of places first; what Parse, * and / give is cut back to
// GetMaxDecimalPlaces. That cut rounds to the nearest value and drops exact halves, so that 0.125
// is 0.12 with 2 places.
// Meant: a fraction that rounds up to a whole is not carried, 0.996 with 2 places is the fraction
// 100 with 2 places ("0.100"); callers know it so.
//
// A plain value: copy and move it freely; threads may share one that nobody changes. A value that
// was moved from is a zero. An operator that fails leaves its operands as they were.
// Source: XML Schema 1.0 part 2, section 3.2.3.
class QZXML_API CDecimal {
 public:
  CDecimal();  // 0
  CDecimal(const CDecimal&) = default;
  CDecimal(CDecimal&&) noexcept = default;
  CDecimal& operator=(const CDecimal&) = default;
  CDecimal& operator=(CDecimal&&) noexcept = default;
  CDecimal(int value);
  CDecimal(unsigned int value);
  CDecimal(long value);
  CDecimal(unsigned long value);
  CDecimal(long long value);
  CDecimal(unsigned long long value);
  CDecimal(const CBigInteger& value);
  // By the text of "%.13f\n": 13 decimal places. NaN and the infinities throw as Parse, with the
  // formatter's text: "nan\n" or "inf\n" with its sign.
  CDecimal(double value);
  CDecimal(const char* text);  // as Parse
  virtual ~CDecimal();

  // --- Text. ---

  // Reads [digits][.digits][e[sign]digits], with white space anywhere but among the digits of the
  // exponent and behind them. Signs stand anywhere ahead of the point, and the last one counts:
  // "1-2" is -12. Missing digits are zeros: "" and "." are zero. A null text is an empty one. Zeros
  // at the end of the fraction go, down to one place.
  // Throws CQzInvalidValueException "The string representing a Decimal, contained an invalid char
  // at position %d [%s]." with the position, from 0, of the char that it stopped at, and the text.
  // So it does at the first digit too much: the 513th before or behind the point, written or
  // brought about by the exponent, an exponent beyond 1024 either way, its 33rd digit. A failure
  // leaves the value as it was.
  void Parse(const char* text);

  // The exact text, of any length, without a point for whole numbers: "-0.5", "150".
  std::string ToString() const;

  // Rounded to the places, ties away from zero. Meant: zeros that the rounding brings about at the
  // end are not written, and no places leave a bare point: 1.25 is "1.3" with 1 place, 1.995 is
  // "2.0" with 2, 12.6 is "13." with 0. Places below 0 count as 0.
  std::string ToString(int decimalPlaces) const;

  // --- Conversion. Throw CQzOverFlowException. ---

  // "The Decimal value if to large to fit into a Double" when the integer part is beyond
  // CBigInteger::MAX_DOUBLE or MIN_DOUBLE.
  double ToDouble() const;

  // The nearest integer, ties toward zero. "The Decimal value if to large to fit into a LONG".
  std::int32_t ToLong() const;

  // Cut toward zero. Meant: rounded to one place before that, ties toward zero, so that 1.96 is 2.0
  // and gives 1 by its missing carry. "The Decimal value if to large to fit into a LONGLONG", for
  // what is above the last integer by a fraction too.
  long long ToLongLong() const;

  // The nearest integer, ties toward zero.
  CBigInteger ToBigInteger() const;

  // --- The parts. ---
  CBigInteger GetIntegerPart() const { return m_integerPart; }
  CBigInteger GetFractionPart() const { return m_fractionPart; }
  // The decimal places: the fraction part counts units of 10 to the minus this.
  int GetFractionDivider() const { return m_fractionDivider; }

  void Negate();
  CDecimal GetNegative() const;

  // The places that Parse, * and / keep at most, 30 at first, for the whole process: set it before
  // values are used. Any number is kept; where it is used, numbers below 0 count as 0 and above
  // 100000 as 100000.
  static int GetMaxDecimalPlaces();
  static void SetMaxDecimalPlaces(int places);

  // --- Comparison: the integer parts, and where they are equal the fraction parts, as CBigInteger
  // compares them, with the signs of zeros. ---
  bool operator==(const CDecimal& other) const;
  bool operator!=(const CDecimal& other) const;
  bool operator<(const CDecimal& other) const;
  bool operator<=(const CDecimal& other) const;
  bool operator>(const CDecimal& other) const;
  bool operator>=(const CDecimal& other) const;

  // --- Arithmetic. Sums are exact. A division by zero throws CQzInvalidValueException "ERROR:
  // Overflow in operator/.". ---
  CDecimal operator+(const CDecimal& other) const;
  CDecimal operator-(const CDecimal& other) const;
  CDecimal operator*(const CDecimal& other) const;
  CDecimal operator/(const CDecimal& other) const;
  CDecimal& operator+=(const CDecimal& other);
  CDecimal& operator-=(const CDecimal& other);
  CDecimal& operator*=(const CDecimal& other);
  CDecimal& operator/=(const CDecimal& other);

  CDecimal& operator++();
  CDecimal& operator--();
  // Meant: leave this object as it is and give the value plus or minus 1, unlike the built-in
  // types; callers know them so.
  CDecimal operator++(int) const;
  CDecimal operator--(int) const;

 private:
  CDecimal(CBigInteger integerPart, CBigInteger fractionPart, int divider);

  void Assign(bool negative, const char* integer, const char* integerEnd, const char* fraction,
              const char* fractionEnd);

  // --- Places. ---
  void ChangeFractionalDivider(int newDivider);  // rounds when places go; newDivider is 0 or more
  static int GetRounding(const CBigInteger& number, int count);
  void Rationalise();        // takes zeros off the end of the fraction, down to one place
  void RationaliseAndCut();  // and cuts it to the places that are kept
  static int Normalize(CDecimal& a, CDecimal& b);  // returns the places that both have then
  static int GetKeptPlaces();                      // m_maxDivider as it is used

  // One more for the integer part and a whole less for the fraction part, and the other way.
  void CarryWhole(int divider);
  void BorrowWhole(int divider);

  // The value counted in units of its last place; the decimal of such a count, cut to the places
  // that are kept.
  CBigInteger GetUnits() const;
  static CDecimal FromUnits(CBigInteger units, int divider);

  int CompareFractions(const CDecimal& other) const;       // of equal integer parts
  int CompareWithInteger(const CBigInteger& other) const;  // zeros have no sign here
  void AppendFraction(std::string& text) const;

  CBigInteger m_integerPart;
  CBigInteger m_fractionPart;
  std::int32_t m_fractionDivider;

  static std::int32_t m_maxDivider;
};

}  // namespace QzXmlLib16
