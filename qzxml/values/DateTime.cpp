#include "qzxml/values/DateTime.h"

#include <iterator>

#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/values/DateTimeDetail.h"

// Fields, types and their rules. Texts are in DateTimeText.cpp, comparing and adding in
// DateTimeArithmetic.cpp, and what asks the system in DateTimeSystem.cpp.
namespace QzXmlLib16 {

namespace detail {

const char* TypeText(CDateTime::DTType type) {
  constexpr const char* kTexts[] = {"yearZero", "dateTime", "date",   "gYearMonth", "gYear",
                                    "time",     "gDay",     "gMonth", "gMonthDay"};
  return type < 0 || type >= static_cast<int>(std::size(kTexts)) ? "unknown" : kTexts[type];
}

}  // namespace detail

namespace {

using detail::kHasDay;
using detail::kHasMonth;
using detail::kHasTime;
using detail::kHasYear;

// Meant: setters throw these as well, with the word Get; callers know the texts.
constexpr char kNoYear[] = "Failed to GetYear. Invalid Date Type: %s.";
constexpr char kNoMonth[] = "Failed to GetMonth. Invalid Date Type: %s.";
constexpr char kNoDay[] = "Failed to GetDay. Invalid Date Type: %s.";
constexpr char kNoHour[] = "Failed to GetHour. Invalid Date Type: %s.";
constexpr char kNoMinute[] = "Failed to GetMinute. Invalid Date Type: %s.";
constexpr char kNoSecond[] = "Failed to GetSecond. Invalid Date Type: %s.";
constexpr char kNoMilliSecond[] = "Failed to GetMilliSecond. Invalid Date Type: %s.";
constexpr char kNoMicroSecond[] = "Failed to GetMicroSecond. Invalid Date Type: %s.";
constexpr char kNoNanoSecond[] = "Failed to GetNanoSecond. Invalid Date Type: %s.";
constexpr char kNoRealSecond[] = "Failed to GetRealSecond. Invalid Date Type: %s.";
constexpr char kNoTimeZone[] = "TimeZone is not been used";

template <const char* kMessage>
void NeedField(CDateTime::DTType type, unsigned field) {
  if ((detail::FieldsOf(type) & field) == 0) {
    throw CQzInvalidStateException(FormatString(kMessage, detail::TypeText(type)));
  }
}

template <typename Assign>
void ClearOnFailure(CDateTime& value, Assign assign) {
  try {
    assign();
  } catch (const CQzInvalidValueException&) {
    value = CDateTime();
  }
}

}  // namespace

// ---- Construction ----

CDateTime::CDateTime(DTType type) : m_type(type) {}

CDateTime::CDateTime(const char* text) { ParseXSDDateTime(text); }

CDateTime::CDateTime(short year, unsigned char month, unsigned char day) {
  ClearOnFailure(*this, [&] { SetDate(year, month, day); });
}

CDateTime::CDateTime(short year, unsigned char month, unsigned char day, unsigned char hour,
                     unsigned char minute, unsigned char second) {
  ClearOnFailure(*this, [&] { SetDateTime(year, month, day, hour, minute, second); });
}

CDateTime::CDateTime(short year, unsigned char month, unsigned char day, unsigned char hour,
                     unsigned char minute, unsigned char second, unsigned short milliSecond,
                     unsigned short microSecond, unsigned short nanoSecond) {
  ClearOnFailure(*this, [&] {
    SetDateTime(year, month, day, hour, minute, second, milliSecond, microSecond, nanoSecond);
  });
}

CDateTime::CDateTime(const long long& time) {
  ClearOnFailure(*this, [&] { *this = time; });
}

CDateTime::CDateTime(const _SYSTEMTIME& time) {
  ClearOnFailure(*this, [&] { *this = time; });
}

CDateTime::CDateTime(const _FILETIME& time) {
  ClearOnFailure(*this, [&] { *this = time; });
}

// ---- Whole values ----

void CDateTime::SetDateTime(DTType type, short year, unsigned char month, unsigned char day,
                            unsigned char hour, unsigned char minute, unsigned char second,
                            unsigned short milliSecond, unsigned short microSecond,
                            unsigned short nanoSecond) {
  if (m_type != dt_yearZero && m_type != type) {
    throw CQzInvalidValueException(
        FormatString("Failed to copy CDateTime. Invalid Date Type: %s, expected: %s.",
                     detail::TypeText(type), detail::TypeText(m_type)));
  }
  Clear();
  m_type = type;
  m_year = year;
  m_month = month;
  m_day = day;
  m_hour = hour;
  m_minute = minute;
  m_second = second;
  m_milliSecond = milliSecond;
  m_microSecond = microSecond;
  m_nanoSecond = nanoSecond;
  Validate();
}

void CDateTime::SetDateTime(short year, unsigned char month, unsigned char day, unsigned char hour,
                            unsigned char minute, unsigned char second) {
  SetDateTime(dt_dateTime, year, month, day, hour, minute, second, 0, 0, 0);
}

void CDateTime::SetDateTime(short year, unsigned char month, unsigned char day, unsigned char hour,
                            unsigned char minute, unsigned char second, unsigned short milliSecond,
                            unsigned short microSecond, unsigned short nanoSecond) {
  SetDateTime(dt_dateTime, year, month, day, hour, minute, second, milliSecond, microSecond,
              nanoSecond);
}

void CDateTime::SetDate(short year, unsigned char month, unsigned char day) {
  SetDateTime(dt_date, year, month, day, 0, 0, 0, 0, 0, 0);
}

void CDateTime::SetTime(unsigned char hour, unsigned char minute, unsigned char second) {
  SetDateTime(dt_time, 0, 0, 0, hour, minute, second, 0, 0, 0);
}

void CDateTime::SetTime(unsigned char hour, unsigned char minute, unsigned char second,
                        unsigned short milliSecond, unsigned short microSecond,
                        unsigned short nanoSecond) {
  SetDateTime(dt_time, 0, 0, 0, hour, minute, second, milliSecond, microSecond, nanoSecond);
}

void CDateTime::SetFracTime(unsigned short milliSecond, unsigned short microSecond,
                            unsigned short nanoSecond) {
  SetDateTime(dt_time, 0, 0, 0, 0, 0, 0, milliSecond, microSecond, nanoSecond);
}

void CDateTime::SetGYear(short year) { SetDateTime(dt_gYear, year, 0, 0, 0, 0, 0, 0, 0, 0); }

void CDateTime::SetGYearMonth(short year, unsigned char month) {
  SetDateTime(dt_gYearMonth, year, month, 0, 0, 0, 0, 0, 0, 0);
}

void CDateTime::SetGMonth(unsigned char month) {
  SetDateTime(dt_gMonth, 0, month, 0, 0, 0, 0, 0, 0, 0);
}

void CDateTime::SetGMonthDay(unsigned char month, unsigned char day) {
  SetDateTime(dt_gMonthDay, 0, month, day, 0, 0, 0, 0, 0, 0);
}

void CDateTime::SetGDay(unsigned char day) { SetDateTime(dt_gDay, 0, 0, day, 0, 0, 0, 0, 0, 0); }

void CDateTime::SetDateTime(const CDateTime& source, DTType target) {
  if (!CheckConversion(source.m_type, target)) {
    // Meant: the source's type stands where one would look for the target's, as in all logs so far.
    throw CQzInvalidValueException(
        FormatString("Attempting to set a CDateTime of type %s using an XmlDateTime of type %s. "
                     "The source CDateTime does not contian enough data to allow the conversion.",
                     detail::TypeText(source.m_type), detail::TypeText(target)));
  }
  *this = source;
  m_type = target;
}

bool CDateTime::CheckConversion(DTType source, DTType target) const {
  if (source == target || target == dt_yearZero) return true;
  switch (source) {
    case dt_dateTime:
      return true;
    case dt_date:
      return target == dt_gYearMonth || target == dt_gYear || target == dt_gDay ||
             target == dt_gMonth || target == dt_gMonthDay;
    case dt_gYearMonth:
      return target == dt_gYear || target == dt_gMonth;
    case dt_gMonthDay:
      return target == dt_gDay || target == dt_gMonth;
    case dt_yearZero:
    case dt_gYear:
    case dt_time:
    case dt_gDay:
    case dt_gMonth:
      return false;
  }
  throw CQzInvalidValueException(FormatString("Unknown date type %d.", static_cast<int>(source)));
}

// ---- Validity ----

void CDateTime::Validate() const {
  if (m_type == dt_yearZero) throw CQzInvalidValueException("Invalid Year Zero");
  const unsigned fields = detail::FieldsOf(m_type);
  if ((fields & kHasMonth) != 0) {
    if (m_month < 1 || m_month > 12) {
      throw CQzInvalidValueException(
          FormatString("Invalid Month [%d] (1 <= month <= 12)", m_month));
    }
  } else if (m_month != 0) {
    throw CQzInvalidValueException(
        FormatString("Invalid Month [%d] for type %s", m_month, detail::TypeText(m_type)));
  }
  if ((fields & kHasYear) != 0) {
    if (m_year == 0 || m_year < detail::kMinYear || m_year > detail::kMaxYear) {
      throw CQzInvalidValueException(
          FormatString("Invalid Year [%d] (%d <= year <= %d && year != 0)", m_year,
                       detail::kMinYear, detail::kMaxYear));
    }
  } else if (m_year != 0) {
    throw CQzInvalidValueException(
        FormatString("Invalid Year [%d] for type %s", m_year, detail::TypeText(m_type)));
  }
  ValidateDay();
  if ((fields & kHasTime) != 0) {
    ValidateTime();
  } else {
    ValidateNoTime();
  }
}

void CDateTime::ValidateDay() const {
  if (m_type == dt_dateTime || m_type == dt_date) {
    if (m_day < 1 || m_day > detail::DaysInMonth(m_year, m_month)) {
      // Meant: the bracket stays open; callers compare the text.
      throw CQzInvalidValueException(
          FormatString("Invalid Day [%d] (1 <= day <= days in month", m_day));
    }
  } else if (m_type == dt_gMonthDay) {
    if (m_day < 1 || m_day > detail::DaysInMonth(m_month)) {
      throw CQzInvalidValueException(
          FormatString("Invalid Day [%d] (1 <= day <= days in month)", m_day));
    }
  } else if (m_type == dt_gDay) {
    // Meant: the upper bound looks at the month, which is 0 here; stored documents have such days.
    if (m_day < 1 || m_month >= 32) {
      throw CQzInvalidValueException(FormatString("Invalid Day [%d] (1 <= day <= 31)", m_day));
    }
  } else if (m_day != 0) {
    throw CQzInvalidValueException(
        FormatString("Invalid Day [%d] for type %s", m_day, detail::TypeText(m_type)));
  }
}

void CDateTime::ValidateTime() const {
  if (m_hour > 23) {
    throw CQzInvalidValueException(FormatString("Invalid Hour [%d] (0 <= hour <= 23)", m_hour));
  }
  if (m_minute > 59) {
    throw CQzInvalidValueException(
        FormatString("Invalid Minute [%d] (0 <= minute <= 59)", m_minute));
  }
  if (m_second > 59) {
    throw CQzInvalidValueException(
        FormatString("Invalid Second [%d] (0 <= second <= 59)", m_second));
  }
  if (m_milliSecond > 999) {
    throw CQzInvalidValueException(
        FormatString("Invalid Milli-Second [%d] (0 <= milli <= 999)", m_milliSecond));
  }
  if (m_microSecond > 999) {
    throw CQzInvalidValueException(
        FormatString("Invalid Micro-Second [%d] (0 <= micro <= 999)", m_microSecond));
  }
  if (m_nanoSecond > 999) {
    throw CQzInvalidValueException(
        FormatString("Invalid Nano-Second [%d] (0 <= nano <= 999)", m_nanoSecond));
  }
}

void CDateTime::ValidateNoTime() const {
  if (m_hour != 0) {
    throw CQzInvalidValueException(
        FormatString("Invalid Hour [%d] for type %s", m_hour, detail::TypeText(m_type)));
  }
  if (m_minute != 0) {
    throw CQzInvalidValueException(
        FormatString("Invalid Minute [%d] for type %s", m_minute, detail::TypeText(m_type)));
  }
  if (m_second != 0) {
    throw CQzInvalidValueException(
        FormatString("Invalid Second [%d] for type %s", m_second, detail::TypeText(m_type)));
  }
  if (m_milliSecond != 0) {
    throw CQzInvalidValueException(FormatString("Invalid Milli-Second [%d] for type %s",
                                                m_milliSecond, detail::TypeText(m_type)));
  }
  if (m_microSecond != 0) {
    throw CQzInvalidValueException(FormatString("Invalid Micro-Second [%d] for type %s",
                                                m_microSecond, detail::TypeText(m_type)));
  }
  if (m_nanoSecond != 0) {
    throw CQzInvalidValueException(FormatString("Invalid Nano-Second [%d] for type %s",
                                                m_nanoSecond, detail::TypeText(m_type)));
  }
}

// ---- Zone ----

void CDateTime::SetTimeZone(short hour, unsigned char minute) {
  if (hour < -23 || hour > 23 || minute >= 60) {
    throw CQzInvalidValueException(FormatString("Invalid TimeZone [%d:%d]", hour, minute));
  }
  m_isUTC = true;
  m_hasTimeZone = true;
  m_zoneHour = hour;
  m_zoneMinute = minute;
}

void CDateTime::SetUTC() {
  m_isUTC = true;
  m_hasTimeZone = false;
  m_zoneHour = 0;
  m_zoneMinute = 0;
}

short CDateTime::GetZoneHour() const {
  if (!m_hasTimeZone) throw CQzInvalidStateException(kNoTimeZone);
  return m_zoneHour;
}

unsigned char CDateTime::GetZoneMinute() const {
  if (!m_hasTimeZone) throw CQzInvalidStateException(kNoTimeZone);
  return m_zoneMinute;
}

// ---- Fields ----

short CDateTime::GetYear() const {
  NeedField<kNoYear>(m_type, kHasYear);
  return m_year;
}

void CDateTime::SetYear(short year) {
  NeedField<kNoYear>(m_type, kHasYear);
  m_year = year;
}

unsigned char CDateTime::GetMonth() const {
  NeedField<kNoMonth>(m_type, kHasMonth);
  return m_month;
}

void CDateTime::SetMonth(unsigned char month) {
  NeedField<kNoMonth>(m_type, kHasMonth);
  m_month = month;
}

unsigned char CDateTime::GetDay() const {
  NeedField<kNoDay>(m_type, kHasDay);
  return m_day;
}

void CDateTime::SetDay(unsigned char day) {
  NeedField<kNoDay>(m_type, kHasDay);
  m_day = day;
}

unsigned char CDateTime::GetHour() const {
  NeedField<kNoHour>(m_type, kHasTime);
  return m_hour;
}

void CDateTime::SetHour(unsigned char hour) {
  NeedField<kNoHour>(m_type, kHasTime);
  m_hour = hour;
}

unsigned char CDateTime::GetMinute() const {
  NeedField<kNoMinute>(m_type, kHasTime);
  return m_minute;
}

void CDateTime::SetMinute(unsigned char minute) {
  NeedField<kNoMinute>(m_type, kHasTime);
  m_minute = minute;
}

unsigned char CDateTime::GetSecond() const {
  NeedField<kNoSecond>(m_type, kHasTime);
  return m_second;
}

void CDateTime::SetSecond(unsigned char second) {
  NeedField<kNoSecond>(m_type, kHasTime);
  m_second = second;
}

unsigned short CDateTime::GetMilliSecond() const {
  NeedField<kNoMilliSecond>(m_type, kHasTime);
  return m_milliSecond;
}

void CDateTime::SetMilliSecond(unsigned short milliSecond) {
  NeedField<kNoMilliSecond>(m_type, kHasTime);
  m_milliSecond = milliSecond;
}

unsigned short CDateTime::GetMicroSecond() const {
  NeedField<kNoMicroSecond>(m_type, kHasTime);
  return m_microSecond;
}

void CDateTime::SetMicroSecond(unsigned short microSecond) {
  NeedField<kNoMicroSecond>(m_type, kHasTime);
  m_microSecond = microSecond;
}

unsigned short CDateTime::GetNanoSecond() const {
  NeedField<kNoNanoSecond>(m_type, kHasTime);
  return m_nanoSecond;
}

void CDateTime::SetNanoSecond(unsigned short nanoSecond) {
  NeedField<kNoNanoSecond>(m_type, kHasTime);
  m_nanoSecond = nanoSecond;
}

double CDateTime::GetRealSecond() const {
  NeedField<kNoRealSecond>(m_type, kHasTime);
  return m_second + m_milliSecond / 1000.0 + m_microSecond / 1e6 + m_nanoSecond / 1e9;
}

std::string CDateTime::GetTypeAsString() const { return GetTypeAsString(m_type); }

std::string CDateTime::GetTypeAsString(DTType type) { return detail::TypeText(type); }

}  // namespace QzXmlLib16
