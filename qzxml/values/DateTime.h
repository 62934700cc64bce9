#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "qzxml/platform/Export.h"
#include "qzxml/platform/SystemTime.h"

namespace QzXmlLib16 {

class CDateTime;
class CDateTimeSpan;

namespace detail {
char* WriteDateTime(const CDateTime& value, char* out);  // DateTimeDetail.h
}  // namespace detail

// A point or a period of the calendar, or a time of day: the value of xs:dateTime, date, time,
// gYearMonth, gYear, gMonth, gDay and gMonthDay. A type says which of the fields mean something.
//
// Years are -9999 to 9999 without 0, written with four digits; leap years go by the number that is
// stored, so that -4 is one. Times resolve one nanosecond. A value without a zone is of no certain
// place; it is compared with a zoned one through a window (CompareTo), and only what asks the
// system (GetTime, GetDayOfWeek) takes it as UTC.
//
// Unless something else is said, failures are CQzInvalidValueException, and a failed operation
// leaves what it had stored so far. A value that has a type keeps it until it is parsed or
// assigned. A plain value without memory of its own: copy it freely; threads may share one that
// nobody changes. Source: XML Schema 1.0 part 2, sections 3.2.7 to 3.2.14, and appendix E.
class QZXML_API CDateTime {
 public:
  enum DTType : std::int32_t {
    dt_yearZero = 0,    // not set
    dt_dateTime = 1,    // all fields
    dt_date = 2,        // year, month, day
    dt_gYearMonth = 3,  // year, month
    dt_gYear = 4,       // year
    dt_time = 5,        // hour, minute, second, fractions
    dt_gDay = 6,        // day
    dt_gMonth = 7,      // month
    dt_gMonthDay = 8,   // month, day
  };
  enum DTCompareResult : std::int32_t {
    dtc_equal = 0,
    dtc_less = 1,
    dtc_greater = 2,
    dtc_indeterminate = 3,
  };

  CDateTime() = default;   // not set
  CDateTime(DTType type);  // that type, with all fields zero
  CDateTime(const CDateTime& other) = default;
  CDateTime& operator=(const CDateTime& other) = default;
  virtual ~CDateTime() = default;

  CDateTime(const char* text);  // as ParseXSDDateTime, with its failures

  // Meant: what SetDate, SetDateTime and the assignments refuse gives a value that is not set, and
  // no exception; callers test for it by ToString or GetType.
  CDateTime(short year, unsigned char month, unsigned char day);
  CDateTime(short year, unsigned char month, unsigned char day, unsigned char hour,
            unsigned char minute, unsigned char second);
  CDateTime(short year, unsigned char month, unsigned char day, unsigned char hour,
            unsigned char minute, unsigned char second, unsigned short milliSecond,
            unsigned short microSecond, unsigned short nanoSecond);
  CDateTime(const long long& time);
  CDateTime(const _SYSTEMTIME& time);
  CDateTime(const _FILETIME& time);

  // A dateTime without zone, by the rules of SetDateTime, from seconds since 1970-01-01T00:00:00Z,
  // from the fields of a _SYSTEMTIME (its year is taken as a signed number of 16 bits), and from a
  // count of 100 nanoseconds since 1601, of which whole milliseconds are kept. A count beyond the
  // system's own range throws "Failed to convert FILETIME to SYSTEMTIME".
  CDateTime& operator=(const long long& time);
  CDateTime& operator=(const _SYSTEMTIME& time);
  CDateTime& operator=(const _FILETIME& time);

  // ---- Text ----

  // CCYY-MM-DDThh:mm:ss[.fffffffff][zone], where a zone is "Z", +hh:mm or -hh:mm. Texts:
  // "Invalid DateTime (Null String)", "Invalid XSD DateTime [%s]." for a text without 'T',
  // "Invalid XSD DateTime [%s] expected CCYY-MM-DDThh:mm:ss[.ff]" for another date than a whole
  // one, and those of the two below for its two parts.
  void ParseXSDDateTime(const char* text);

  // Any form but those with a time; the form alone decides the type: [-]CCYY, [-]CCYY-MM,
  // [-]CCYY-MM-DD, --MM (or --MM--), ---DD, --MM-DD, each with or without a zone. Texts:
  //   "Invalid Date (Null String)", "Invalid Date (Empty String)",
  //   "Invalid Date ('T' not allowed)", "Invalid Date (Bad Zone value)" for ':' together with 'Z',
  //   "Invalid XSD Date [%s] expected CCYY-MM-DD[Z|[+|-]hh:mm]" for any other form,
  //   "Invalid XSD Time Zone [%s]." for a sign without hh:mm, "Invalid TimeZone [%d:%d]",
  //   and the ranges of the fields as for SetDate.
  // Meant: a zone that begins with no sign is no zone and no failure; -00:30 counts as +00:30.
  void ParseXSDDate(const char* text);

  // hh:mm:ss[.fffffffff][zone]. Texts: "Invalid Time (Null String)",
  // "Invalid XSD Time (Empty String)", "Invalid XSD Time [%s] expected hh:mm:ss[.ff]" (24:00:00
  // among them), "Invalid XSD Time [%s] Fraction part too long" for a tenth digit, and the zone's.
  void ParseXSDTime(const char* text);

  // The form of the type, as the parsers take it, with the zone; "Error: Date Not Set" without a
  // type and for a value other than a time whose fields are all zero.
  std::string ToString() const;
  // "s" is the same; null, "" and "G" give an empty text, and any other format
  // "Unknown Format: <format>". A value that is not set gives its text with each.
  std::string ToString(const char* format) const;

  // ---- Whole values. They drop the zone. Texts: "Failed to copy CDateTime. Invalid Date Type: %s,
  // expected: %s." for a value that has another type already, which stays as it was, and
  // "Invalid Month [%d] (1 <= month <= 12)" and its like for what is out of range.
  // Meant: SetGDay takes any day but 0; stored documents hold such days. ----

  void SetDateTime(short year, unsigned char month, unsigned char day, unsigned char hour,
                   unsigned char minute, unsigned char second);
  void SetDateTime(short year, unsigned char month, unsigned char day, unsigned char hour,
                   unsigned char minute, unsigned char second, unsigned short milliSecond,
                   unsigned short microSecond, unsigned short nanoSecond);
  void SetDate(short year, unsigned char month, unsigned char day);
  void SetTime(unsigned char hour, unsigned char minute, unsigned char second);
  void SetTime(unsigned char hour, unsigned char minute, unsigned char second,
               unsigned short milliSecond, unsigned short microSecond, unsigned short nanoSecond);
  void SetFracTime(unsigned short milliSecond, unsigned short microSecond,
                   unsigned short nanoSecond);
  void SetGYear(short year);
  void SetGYearMonth(short year, unsigned char month);
  void SetGMonth(unsigned char month);
  void SetGMonthDay(unsigned char month, unsigned char day);
  void SetGDay(unsigned char day);

  // The source's fields and zone under another type, whatever this value was. Throws "Attempting to
  // set a CDateTime of type %s using an XmlDateTime of type %s. The source CDateTime does not
  // contian enough data to allow the conversion." and "Unknown date type %d.".
  // Meant: fields that the target does not use keep what was copied, and nothing is checked.
  void SetDateTime(const CDateTime& source, DTType target);

  // ---- Zone ----

  // Hours -23 to 23, minutes 0 to 59, else "Invalid TimeZone [%d:%d]".
  void SetTimeZone(short hour, unsigned char minute);
  void SetUTC();                                      // "Z"
  bool IsUTC() const { return m_isUTC; }              // a zone is known, "Z" or an offset
  bool HasTimeZone() const { return m_hasTimeZone; }  // an offset is known
  // Without an offset both throw CQzInvalidStateException "TimeZone is not been used".
  short GetZoneHour() const;
  unsigned char GetZoneMinute() const;

  // ---- Fields. Asking for or storing one that the type lacks throws CQzInvalidStateException
  // "Failed to GetYear. Invalid Date Type: %s." and its like; the setters say Get as well. What is
  // stored is not checked. ----

  short GetYear() const;
  void SetYear(short year);
  unsigned char GetMonth() const;
  void SetMonth(unsigned char month);
  unsigned char GetDay() const;
  void SetDay(unsigned char day);
  unsigned char GetHour() const;
  void SetHour(unsigned char hour);
  unsigned char GetMinute() const;
  void SetMinute(unsigned char minute);
  unsigned char GetSecond() const;
  void SetSecond(unsigned char second);
  unsigned short GetMilliSecond() const;
  void SetMilliSecond(unsigned short milliSecond);
  unsigned short GetMicroSecond() const;
  void SetMicroSecond(unsigned short microSecond);
  unsigned short GetNanoSecond() const;
  void SetNanoSecond(unsigned short nanoSecond);
  double GetRealSecond() const;  // with the fractions

  // Of a dateTime or a date; others throw as the fields do.
  unsigned char GetDayOfWeek() const;  // 1 is Sunday; of GetTime() in the process's time zone
  // Meant: 1 January of a leap year is 2, 31 December of one 365; callers count on these numbers.
  unsigned short GetDayOfYear() const;

  DTType GetType() const { return m_type; }
  std::string GetTypeAsString() const;  // "dateTime"; "yearZero" when not set

  // ---- Order ----

  // Values of the same knowledge of a zone by their fields in UTC, a field that the type lacks
  // counting -1: fields of different sign are indeterminate, so -0001 is against 0001. A zoned
  // value against one without is less or greater where the other lies beyond a window, else
  // indeterminate. Meant: the window reaches 14 hours to one side and none to the other.
  DTCompareResult CompareTo(const CDateTime& other) const;
  bool operator==(const CDateTime& other) const { return CompareTo(other) == dtc_equal; }
  bool operator!=(const CDateTime& other) const { return CompareTo(other) != dtc_equal; }
  bool operator<(const CDateTime& other) const { return CompareTo(other) == dtc_less; }
  bool operator<=(const CDateTime& other) const;
  bool operator>(const CDateTime& other) const { return CompareTo(other) == dtc_greater; }
  bool operator>=(const CDateTime& other) const;

  // The value at offset +00:00; one without an offset as it is. The type stays, so a date that
  // crosses midnight keeps an hour that is not seen.
  CDateTime GetNormalized() const;

  // ---- Addition ----

  // By the steps of appendix E with quotients of single precision, exact while each number of the
  // span is below 16 million. Years wrap at 16 bits. Meant: a day is not pinned to the month's
  // length (2000-03-31 plus P1M is 2000-04-31), there is a year 0, and nothing is checked.
  void AddDateTimeSpan(const CDateTimeSpan& span);
  CDateTime operator+(const CDateTimeSpan& span) const;
  CDateTime& operator+=(const CDateTimeSpan& span);
  CDateTime operator-(const CDateTimeSpan& span) const;
  CDateTime& operator-=(const CDateTimeSpan& span);
  CDateTimeSpan operator-(const CDateTime& other) const;  // Meant: always an empty span

  // ---- The system's time ----

  // Seconds since 1970-01-01T00:00:00Z of a dateTime or a date, without zone taken as UTC. Throws
  // "Failed to GetTime, Date Status must be dateTime or date. Invalid Date Type: %s.".
  long long GetTime() const;
  // The fields as they are, without the zone. Throws "Failed to GetAsSystemTime, Date Status must
  // be dateTime. Invalid Date Type: %s.".
  _SYSTEMTIME GetAsSystemTime() const;
  static CDateTime GetTickCount();  // now, local time, to the millisecond, without zone

 private:
  void Clear() { *this = CDateTime(); }
  void SetDateTime(DTType type, short year, unsigned char month, unsigned char day,
                   unsigned char hour, unsigned char minute, unsigned char second,
                   unsigned short milliSecond, unsigned short microSecond,
                   unsigned short nanoSecond);
  bool SetPlainDate(std::string_view text);
  void SetXSDDate(std::string_view text);
  void SetXSDTime(std::string_view text);
  void SetZone(std::string_view text);
  std::size_t SetFraction(std::string_view text);
  void Validate() const;
  void ValidateDay() const;
  void ValidateTime() const;
  void ValidateNoTime() const;
  bool CheckConversion(DTType source, DTType target) const;
  static std::string GetTypeAsString(DTType type);
  DTCompareResult CompareFields(const CDateTime& other) const;
  friend char* detail::WriteDateTime(const CDateTime& value, char* out);

  DTType m_type = dt_yearZero;
  std::int16_t m_year = 0;
  std::uint8_t m_month = 0;
  std::uint8_t m_day = 0;
  std::uint8_t m_hour = 0;
  std::uint8_t m_minute = 0;
  std::uint8_t m_second = 0;
  std::uint16_t m_milliSecond = 0;
  std::uint16_t m_microSecond = 0;
  std::uint16_t m_nanoSecond = 0;
  bool m_isUTC = false;
  bool m_hasTimeZone = false;
  std::int16_t m_zoneHour = 0;    // -23 to 23
  std::uint8_t m_zoneMinute = 0;  // 0 to 59
};

}  // namespace QzXmlLib16
