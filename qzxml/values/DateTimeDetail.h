#pragma once

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "qzxml/values/ConversionsDetail.h"
#include "qzxml/values/DateTime.h"

// What the sources of CDateTime and CDateTimeSpan share: which type has which fields, the calendar,
// and the pieces of their texts.
namespace QzXmlLib16::detail {

// ---- Types and fields ----

enum DateFields : unsigned {
  kHasYear = 1,
  kHasMonth = 2,
  kHasDay = 4,
  kHasTime = 8,  // hour to nanosecond
};

// The fields of a type; none of a number that is no type.
inline unsigned FieldsOf(CDateTime::DTType type) {
  constexpr unsigned kFields[] = {0,
                                  kHasYear | kHasMonth | kHasDay | kHasTime,
                                  kHasYear | kHasMonth | kHasDay,
                                  kHasYear | kHasMonth,
                                  kHasYear,
                                  kHasTime,
                                  kHasDay,
                                  kHasMonth,
                                  kHasMonth | kHasDay};
  return type < CDateTime::dt_yearZero || type > CDateTime::dt_gMonthDay ? 0 : kFields[type];
}

// The name of a type, as messages and GetTypeAsString show it.
const char* TypeText(CDateTime::DTType type);

// ---- Calendar ----

inline constexpr int kMinYear = -9999;
inline constexpr int kMaxYear = 9999;

// Of the number as it is stored: there is no shift for the year that is missing between -1 and 1.
constexpr bool IsLeapYear(int year) {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

// Of a leap year; a month that does not exist has 31 days.
constexpr int DaysInMonth(std::int64_t month) {
  constexpr int kDays[] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month < 1 || month > 12 ? 31 : kDays[month - 1];
}

constexpr int DaysInMonth(int year, std::int64_t month) {
  return month == 2 && !IsLeapYear(year) ? 28 : DaysInMonth(month);
}

// ---- Text ----

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Two digits, of a number below 100.
inline char* WriteTwoDigits(char* at, unsigned value) {
  std::memcpy(at, kDigitPairs + std::size_t{2} * value, 2);
  return at + 2;
}

// Writes the decimal digits, with zeros in front up to the width. What writes returns the end.
[[gnu::noinline]] inline char* WritePaddedDigits(char* at, unsigned value, int width) {
  char digits[10];
  const std::ptrdiff_t count = std::to_chars(digits, digits + sizeof(digits), value).ptr - digits;
  for (std::ptrdiff_t zeros = width - count; zeros > 0; --zeros) *at++ = '0';
  for (std::ptrdiff_t i = 0; i < count; ++i) *at++ = digits[i];
  return at;
}

// The same for widths that are known where it is compiled; most values have no more digits.
inline char* WritePadded(char* at, unsigned value, int width) {
  if (width == 2 && value < 100) return WriteTwoDigits(at, value);
  if (width == 4 && value < 10000) {
    return WriteTwoDigits(WriteTwoDigits(at, value / 100), value % 100);
  }
  return WritePaddedDigits(at, value, width);
}

// Room for what WriteFraction writes: a point and three numbers of 16 bits.
inline constexpr std::size_t kFractionSize = 16;

// Room for any text of a date: sign, year of up to five digits, two fields of up to three, 'T',
// three more, a fraction, and the zone.
inline constexpr std::size_t kDateTimeSize = 1 + 5 + 8 + 12 + kFractionSize + 8;

// Writes what ToString() returns and answers its end; null for a date that is not set. Takes
// kDateTimeSize.
char* WriteDateTime(const CDateTime& value, char* out);

// ".5", ".123456789": the parts of a second in groups of three digits up to the last one that is
// not zero, and that one without the zeros at its end; nothing if all are zero.
inline char* WriteFraction(char* at, unsigned milli, unsigned micro, unsigned nano) {
  if ((milli | micro | nano) == 0) return at;
  *at++ = '.';
  at = WritePadded(at, milli, 3);
  if ((micro | nano) != 0) at = WritePadded(at, micro, 3);
  if (nano != 0) at = WritePadded(at, nano, 3);
  while (at[-1] == '0') --at;  // stops inside the last group, which is not zero
  return at;
}

// What one digit of a fraction counts in its group of three: 100, 10 or 1.
constexpr unsigned PlaceInGroup(std::size_t index) {
  constexpr unsigned kPlaces[] = {100, 10, 1};
  return kPlaces[index % 3];
}

}  // namespace QzXmlLib16::detail
