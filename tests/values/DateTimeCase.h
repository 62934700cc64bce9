#pragma once

#include <cstdint>
#include <string>

#include "qzxml/values/DateTime.h"
#include "qzxml/values/DateTimeSpan.h"

// What the tables of DateTimeCases.h are made of.
namespace qztest {

// Year to nanosecond, as numbers: an addition may come to fields that no text shows.
struct DateFieldsCase {
  int year, month, day, hour, minute, second, milliSecond, microSecond, nanoSecond;
};

struct SpanCase {
  unsigned short years;
  std::uint32_t months, days, hours;
  std::uint64_t minutes, seconds;
  unsigned short milliSeconds, microSeconds, nanoSeconds;
  bool isNegative;
};

struct AdditionCase {
  DateFieldsCase start;
  SpanCase span;
  DateFieldsCase sum;
};

struct TimeCase {
  int hour, minute, second;
};

struct TimeAdditionCase {
  SpanCase span;
  TimeCase sum;
};

struct NormalizeCase {
  const char* text;
  const char* normalized;
};

struct CompareCase {
  const char* left;
  const char* right;
  QzXmlLib16::CDateTime::DTCompareResult result;
};

inline QzXmlLib16::CDateTimeSpan MakeSpan(const SpanCase& c) {
  QzXmlLib16::CDateTimeSpan span(c.years, c.months, c.days, c.hours, c.minutes, c.seconds,
                                 c.milliSeconds, c.microSeconds, c.nanoSeconds);
  if (c.isNegative) span.Negate();
  return span;
}

// A dateTime of these fields, whether they are a date or not.
inline QzXmlLib16::CDateTime MakeDateTime(const DateFieldsCase& c) {
  QzXmlLib16::CDateTime value(QzXmlLib16::CDateTime::dt_dateTime);
  value.SetYear(static_cast<short>(c.year));
  value.SetMonth(static_cast<unsigned char>(c.month));
  value.SetDay(static_cast<unsigned char>(c.day));
  value.SetHour(static_cast<unsigned char>(c.hour));
  value.SetMinute(static_cast<unsigned char>(c.minute));
  value.SetSecond(static_cast<unsigned char>(c.second));
  value.SetMilliSecond(static_cast<unsigned short>(c.milliSecond));
  value.SetMicroSecond(static_cast<unsigned short>(c.microSecond));
  value.SetNanoSecond(static_cast<unsigned short>(c.nanoSecond));
  return value;
}

inline std::string FieldsText(const DateFieldsCase& c) {
  std::string text;
  for (const int field : {c.year, c.month, c.day, c.hour, c.minute, c.second, c.milliSecond,
                          c.microSecond, c.nanoSecond}) {
    text += std::to_string(field) + " ";
  }
  return text;
}

// Of a dateTime.
inline std::string FieldsText(const QzXmlLib16::CDateTime& value) {
  return FieldsText(DateFieldsCase{
      value.GetYear(), value.GetMonth(), value.GetDay(), value.GetHour(), value.GetMinute(),
      value.GetSecond(), value.GetMilliSecond(), value.GetMicroSecond(), value.GetNanoSecond()});
}

}  // namespace qztest
