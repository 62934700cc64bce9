#include <algorithm>
#include <ctime>
#include <limits>

#include "qzxml/platform/Clock.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/values/DateTime.h"
#include "qzxml/values/DateTimeDetail.h"

// What goes through the system's clock and calendar.
namespace QzXmlLib16 {

namespace {

// A word that a field of a value does not hold becomes 255, which no field takes either.
unsigned char NarrowWord(std::uint16_t word) {
  return static_cast<unsigned char>(std::min<std::uint16_t>(word, 255));
}

}  // namespace

CDateTime& CDateTime::operator=(const long long& time) {
  std::tm fields = {};
  const bool isKnown = detail::GetUtcFields(time, fields);
  const long long year = isKnown ? fields.tm_year + 1900LL : 0;
  // Years beyond 16 bits must not come out as others; each of these two is refused as it is.
  const long long least = std::numeric_limits<short>::min();
  const long long most = std::numeric_limits<short>::max();
  SetDateTime(static_cast<short>(std::clamp(year, least, most)),
              static_cast<unsigned char>(fields.tm_mon + 1),
              static_cast<unsigned char>(fields.tm_mday),
              static_cast<unsigned char>(fields.tm_hour), static_cast<unsigned char>(fields.tm_min),
              static_cast<unsigned char>(fields.tm_sec));
  return *this;
}

CDateTime& CDateTime::operator=(const _SYSTEMTIME& time) {
  SetDateTime(static_cast<short>(time.wYear), NarrowWord(time.wMonth), NarrowWord(time.wDay),
              NarrowWord(time.wHour), NarrowWord(time.wMinute), NarrowWord(time.wSecond),
              time.wMilliseconds, 0, 0);
  return *this;
}

CDateTime& CDateTime::operator=(const _FILETIME& time) {
  _SYSTEMTIME fields = {};
  if (!detail::FileTimeToFields(time, fields)) {
    throw CQzInvalidValueException("Failed to convert FILETIME to SYSTEMTIME");
  }
  return *this = fields;
}

long long CDateTime::GetTime() const {
  const CDateTime normalized = GetNormalized();
  std::tm fields = {};  // tm_isdst too: the zone's own time is meant, that of the winter
  if (m_type == dt_dateTime) {
    fields.tm_hour = normalized.m_hour;
    fields.tm_min = normalized.m_minute;
    fields.tm_sec = normalized.m_second;
  } else if (m_type != dt_date) {
    throw CQzInvalidValueException(FormatString(
        "Failed to GetTime, Date Status must be dateTime or date. Invalid Date Type: %s.",
        detail::TypeText(m_type)));
  }
  fields.tm_year = normalized.m_year - 1900;
  fields.tm_mon = normalized.m_month - 1;
  fields.tm_mday = normalized.m_day;

  // The fields are read as local ones, and what the zone adds to UTC is put back.
  const long long time = detail::GetTimeOfLocalFields(fields);
  std::tm utc = {};
  std::tm local = {};
  if (!detail::GetUtcFields(time, utc) || !detail::GetLocalFields(time, local)) return time;
  const long long utcAsLocal = detail::GetTimeOfLocalFields(utc);
  return time + (detail::GetTimeOfLocalFields(local) - utcAsLocal);
}

unsigned char CDateTime::GetDayOfWeek() const {
  if (m_type != dt_dateTime && m_type != dt_date) {
    throw CQzInvalidStateException(
        FormatString("Failed to GetDayOfWeek. Invalid Date Type: %s.", detail::TypeText(m_type)));
  }
  std::tm local = {};
  detail::GetLocalFields(GetTime(), local);
  return static_cast<unsigned char>(local.tm_wday + 1);
}

unsigned short CDateTime::GetDayOfYear() const {
  if (m_type != dt_dateTime && m_type != dt_date) {
    throw CQzInvalidStateException(
        FormatString("Failed to GetDayOfYear. Invalid Date Type: %s.", detail::TypeText(m_type)));
  }
  constexpr unsigned kDaysBefore[] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};
  // A setter may have stored a month that does not exist; what lies above counts as the year's end.
  const unsigned month = std::clamp<unsigned>(m_month, 1, 13);
  const unsigned leapDay = detail::IsLeapYear(m_year) && m_month < 3 ? 1 : 0;
  return static_cast<unsigned short>(kDaysBefore[month - 1] + m_day + leapDay);
}

_SYSTEMTIME CDateTime::GetAsSystemTime() const {
  if (m_type != dt_dateTime) {
    throw CQzInvalidValueException(FormatString(
        "Failed to GetAsSystemTime, Date Status must be dateTime. Invalid Date Type: %s.",
        detail::TypeText(m_type)));
  }
  _SYSTEMTIME result = {};
  result.wYear = static_cast<std::uint16_t>(m_year);
  result.wMonth = m_month;
  result.wDayOfWeek = static_cast<std::uint16_t>(GetDayOfWeek() - 1);
  result.wDay = m_day;
  result.wHour = m_hour;
  result.wMinute = m_minute;
  result.wSecond = m_second;
  result.wMilliseconds = m_milliSecond;
  return result;
}

CDateTime CDateTime::GetTickCount() { return CDateTime(detail::GetLocalSystemTime()); }

}  // namespace QzXmlLib16
