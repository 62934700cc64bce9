#pragma once

#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

#include "qzxml/platform/Export.h"
#include "qzxml/values/DigitStore.h"

namespace QzXmlLib16 {

class CDecimal;

// An integer of any size, exact: the value of xs:integer and the engine of CDecimal.
// Digits are kept in base 10, least significant first, so that text needs no change of base; a
// multiplication or division packs them into larger pieces for its own time.
//
// A zero may carry the sign -1: CDecimal needs it for the integer part of -0.5. ToString and == do
// not see that sign, < and > do: CBigInteger("-0") is equal to 0 and less than 0.
//
// A plain value: copy and move it freely; threads may share one that nobody changes. A value that
// was moved from is a zero. An operation that fails leaves its operands as they were.
// Source: XML Schema 1.0 part 2, section 3.3.13.
class QZXML_API CBigInteger {
 public:
  using Digits = std::vector<char>;  // the numbers 0 to 9, least significant first

  CBigInteger();  // 0
  CBigInteger(const CBigInteger&) = default;
  CBigInteger(CBigInteger&&) noexcept = default;
  CBigInteger& operator=(const CBigInteger&) = default;
  CBigInteger& operator=(CBigInteger&&) noexcept = default;
  CBigInteger(int value);
  CBigInteger(unsigned int value);
  CBigInteger(long value);
  CBigInteger(unsigned long value);
  CBigInteger(long long value);
  CBigInteger(unsigned long long value);
  // The nearest integer by BuildDouble; the sign is that of the value also where 0 comes out.
  // Throws CQzInvalidValueException as CDecimal(double) for NaN and the infinities.
  CBigInteger(double value);
  CBigInteger(const char* text);       // as Parse
  CBigInteger(const CDecimal& value);  // the nearest integer, ties toward zero
  virtual ~CBigInteger();

  // --- The ranges of other types. Usable in static initialisers. ---
  static const CBigInteger MAX_LONG;      // 2147483647
  static const CBigInteger MIN_LONG;      // -2147483648
  static const CBigInteger MAX_LONGLONG;  // 9223372036854775807
  static const CBigInteger MIN_LONGLONG;  // -9223372036854775808
  static const CBigInteger MAX_DOUBLE;    // 17 and 307 zeros
  static const CBigInteger MIN_DOUBLE;    // the same, negative

  // --- Text. ---

  // A text of nothing but digits, signs, spaces, tabs, LF and CR is read as it is, of any length:
  // without the spaces at its ends, a '-' in front is the sign, and the number is the digits that
  // end the text, 0 where none do. Meant: what stands ahead of those digits is not looked at, so
  // "12-34" is 34, "1 2" is 2 and "5\n" is 0; callers rely on the leniency.
  // Any other text is read by CDecimal::Parse, with its bounds and its failure, and rounded as by
  // CBigInteger(const CDecimal&): "1.6" is 2, "1e3" is 1000. A null text is an empty one.
  void Parse(const char* text);

  // "-" for a negative number, and the digits without leading zeros; "0" for either zero.
  std::string ToString() const;

  // --- Signs, roots and powers. ---
  void Abs();
  CBigInteger GetAbs() const;
  void Negate();  // a zero changes its sign too
  CBigInteger GetNegative() const;
  CBigInteger& operator-();  // Meant: negates this object and returns it, as it always has

  // The root, rounded down. Throws CQzInvalidValueException "ERROR: Negative Number in function
  // SquareRoot()." below zero, which a zero with the sign -1 is, and "ERROR: Overflow in
  // operator/." for zero.
  CBigInteger SquareRoot() const;

  // 10 to the exponent.
  static CBigInteger Pow10(unsigned int exponent);

  // --- Comparison. ---
  bool operator==(const CBigInteger& other) const;
  bool operator!=(const CBigInteger& other) const;
  bool operator<(const CBigInteger& other) const;
  bool operator<=(const CBigInteger& other) const;  // not >
  bool operator>(const CBigInteger& other) const;
  bool operator>=(const CBigInteger& other) const;  // not <

  // --- Arithmetic. A sum of numbers that cancel out is +0; a product takes the product of the
  // signs, also where it is zero. ---
  CBigInteger operator+(const CBigInteger& other) const;
  CBigInteger operator-(const CBigInteger& other) const;
  CBigInteger operator*(const CBigInteger& other) const;
  CBigInteger& operator+=(const CBigInteger& other);
  CBigInteger& operator-=(const CBigInteger& other);
  CBigInteger& operator*=(const CBigInteger& other);

  // Quotients are cut toward zero; the remainder has the sign of the left operand. Zero divided by
  // anything is +0. Throw CQzInvalidValueException:
  //   /    divisor zero   "ERROR: Overflow in operator/."
  //   /=   zero or below  "ERROR: Overflow in operator /=."
  //   %    zero or below  "ERROR: Overflow in operator%."
  //   %=   zero or below  "ERROR: Overflow in operator%=."
  // Meant: only / takes a negative divisor; that the four differ is a settled fact for callers.
  CBigInteger operator/(const CBigInteger& other) const;
  CBigInteger operator%(const CBigInteger& other) const;
  CBigInteger& operator/=(const CBigInteger& other);
  CBigInteger& operator%=(const CBigInteger& other);

  // --- Conversion. ---

  // Throws CQzInvalidValueException "ERROR: Value out of bound of int.".
  operator int() const;

  // Throws CQzInvalidValueException "ERROR: Value out of bound of LONGLONG.". Meant: exact only up
  // to 4999999999 either way; the terms of the sum have 32 bits, so that 5000000000 gives
  // 705032704. CDecimal::ToLongLong is exact.
  operator long long() const;
  operator long() const;  // as to the type of the same size

  // --- Operands that are plain numbers: with conversions both ways, value == 5 would be ambiguous
  // otherwise. ---
  template <typename T>
  using IfNumber = std::enable_if_t<std::is_arithmetic_v<T>, int>;
  template <typename T, IfNumber<T> = 0>
  bool operator==(T other) const {
    return *this == CBigInteger(other);
  }
  template <typename T, IfNumber<T> = 0>
  bool operator!=(T other) const {
    return *this != CBigInteger(other);
  }
  template <typename T, IfNumber<T> = 0>
  bool operator<(T other) const {
    return *this < CBigInteger(other);
  }
  template <typename T, IfNumber<T> = 0>
  bool operator<=(T other) const {
    return *this <= CBigInteger(other);
  }
  template <typename T, IfNumber<T> = 0>
  bool operator>(T other) const {
    return *this > CBigInteger(other);
  }
  template <typename T, IfNumber<T> = 0>
  bool operator>=(T other) const {
    return *this >= CBigInteger(other);
  }
  template <typename T, IfNumber<T> = 0>
  CBigInteger operator+(T other) const {
    return *this + CBigInteger(other);
  }
  template <typename T, IfNumber<T> = 0>
  CBigInteger operator-(T other) const {
    return *this - CBigInteger(other);
  }
  template <typename T, IfNumber<T> = 0>
  CBigInteger operator*(T other) const {
    return *this * CBigInteger(other);
  }
  template <typename T, IfNumber<T> = 0>
  CBigInteger operator/(T other) const {
    return *this / CBigInteger(other);
  }
  template <typename T, IfNumber<T> = 0>
  CBigInteger operator%(T other) const {
    return *this % CBigInteger(other);
  }

  // --- Magnitudes: vectors of digits as told above, with at least one digit and no zero at the
  // most significant end but for zero itself, which is [0]. What is put out replaces what was
  // there, and may be one of the operands. ---
  static void Build(const std::string& text, Digits& out);  // the digits that end the text
  static void Build(unsigned int value, Digits& out);
  static void BuildDWORDLONG(unsigned long long value, Digits& out);
  // Rounds to the nearest integer, ties down. Meant: taken apart by fmod and division in double, so
  // above 2^53 the lower digits are those of that arithmetic. Asserts "d >= 0"; throws as
  // CBigInteger(double).
  static void BuildDouble(double d, Digits& out);
  static void Clean(Digits& digits);                     // takes zeros off the most significant end
  static int Compare(const Digits& a, const Digits& b);  // -1, 0 or 1; the longer is the larger
  static void Add(const Digits& a, const Digits& b, Digits& out);
  static void Subtract(const Digits& a, const Digits& b, Digits& out);  // asserts "a >= b"
  static void Multiply(const Digits& a, const Digits& b, Digits& out);
  static void Multiply(const Digits& a, char digit, Digits& out);  // by a number 0 to 9
  // Throws CQzInvalidValueException "ERROR: Overflow in operator/." when b is zero.
  static void Divide(const Digits& a, const Digits& b, Digits& quotient, Digits& remainder);
  static void Pow10(unsigned int exponent, Digits& out);
  static void ShiftLeft(Digits& digits, int count);  // times 10 to the count; [0] becomes [0, 0]
  static int Position(const Digits& digits);         // the number of digits, 1 for an empty vector

 protected:
  CBigInteger(int sign, const Digits& digits);  // sign is 1 or -1

 private:
  friend class CDecimal;
  struct Unset {};
  explicit CBigInteger(Unset) noexcept : m_sign(1) {}  // without digits until they are assigned

  using Store = detail::CDigitStore;

  // From ASCII digits, most significant first, none of them for 0.
  static void BuildText(const char* first, const char* last, Digits& out);
  static void BuildText(const char* first, const char* last, Store& out);
  static int Compare(const Store& a, const Store& b);
  void AppendMagnitude(std::string& text) const;

  // Values of few digits are calculated in one word.
  static bool AreWords(const CBigInteger& a, const CBigInteger& b);
  std::uint64_t GetWord() const;
  void SetWord(std::uint64_t magnitude);

  bool IsZero() const;                                 // of either sign
  int GetSignum() const;                               // -1, 0 or 1: a zero has no sign here
  std::int64_t GetInt64() const;                       // of a value that is in its range
  bool IsRefusedDivisor() const;                       // of /=, % and %=
  void AddSigned(const CBigInteger& other, int sign);  // plus the magnitude with that sign
  CBigInteger GetQuotient(const CBigInteger& divisor) const;
  CBigInteger GetRemainder(const CBigInteger& divisor) const;

  // As * Pow10(count), / Pow10(count) and % Pow10(count); count is not negative.
  void TimesPow10(int count);
  void DividePow10(int count);
  CBigInteger RemainderPow10(int count) const;

  std::int32_t m_sign;  // 1 or -1, of a zero too
  Store m_digits;       // empty only in a value that was moved from
};

}  // namespace QzXmlLib16
