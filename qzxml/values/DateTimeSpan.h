#pragma once

#include <cstdint>
#include <string>

#include "qzxml/platform/Export.h"
#include "qzxml/values/DateTime.h"

namespace QzXmlLib16 {

// A length of time in years, months, days, hours, minutes and seconds: the value of xs:duration.
// The fields stay as they are given: 90 minutes are 90 minutes, not an hour and a half.
//
// A plain value without memory of its own: copy it freely; threads may share one that nobody
// changes. Source: XML Schema 1.0 part 2, section 3.2.6.
class QZXML_API CDateTimeSpan {
 public:
  CDateTimeSpan() = default;  // no time, positive
  CDateTimeSpan(const CDateTimeSpan& other) = default;
  CDateTimeSpan& operator=(const CDateTimeSpan& other) = default;
  virtual ~CDateTimeSpan() = default;

  // As SetDateTimeSpan.
  CDateTimeSpan(std::uint32_t hours, std::uint64_t minutes, std::uint64_t seconds);
  CDateTimeSpan(unsigned short years, std::uint32_t months, std::uint32_t days, std::uint32_t hours,
                std::uint64_t minutes, std::uint64_t seconds);
  CDateTimeSpan(unsigned short years, std::uint32_t months, std::uint32_t days, std::uint32_t hours,
                std::uint64_t minutes, std::uint64_t seconds, unsigned short milliSeconds,
                unsigned short microSeconds, unsigned short nanoSeconds);

  // Positive; what is not given is zero.
  void SetDateTimeSpan(std::uint32_t hours, std::uint64_t minutes, std::uint64_t seconds);
  void SetDateTimeSpan(unsigned short years, std::uint32_t months, std::uint32_t days,
                       std::uint32_t hours, std::uint64_t minutes, std::uint64_t seconds);
  void SetDateTimeSpan(unsigned short years, std::uint32_t months, std::uint32_t days,
                       std::uint32_t hours, std::uint64_t minutes, std::uint64_t seconds,
                       unsigned short milliSeconds, unsigned short microSeconds,
                       unsigned short nanoSeconds);

  // ---- Text ----

  // [-]P[nY][nM][nD][T[nH][nM][nS.ff]]. Throws CQzInvalidValueException
  // "Invalid XSD Duration (Null String)", "Invalid XSD Duration (Empty String)",
  // "Invalid XSD Duration [%s] Fraction part too long" for a tenth digit, and
  // "Invalid XSD Duration [%s] expected [-]P[nY][nM][nD][T[nH][nM][nS.ff]]" for any other failure;
  // the fields read so far stay.
  // Meant, and stored documents need all of it: a designator without digits counts 0, years may
  // stand anywhere, a number too large for its field is cut to its width, and of the digits of the
  // nanoseconds the last one alone is kept (".123456789" has 9 of them).
  void ParseXSDDuration(const char* text);

  // The same form with the fields that are not zero.
  // Meant: no time at all is "P", which is not read back.
  std::string ToString() const;

  // ---- Fields, without the sign ----

  unsigned short GetYears() const { return m_years; }
  void SetYears(unsigned short years) { m_years = years; }
  std::uint32_t GetMonths() const { return m_months; }
  void SetMonths(std::uint32_t months) { m_months = months; }
  std::uint32_t GetDays() const { return m_days; }
  void SetDays(std::uint32_t days) { m_days = days; }
  std::uint32_t GetHours() const { return m_hours; }
  void SetHours(std::uint32_t hours) { m_hours = hours; }
  std::uint64_t GetMinutes() const { return m_minutes; }
  void SetMinutes(std::uint64_t minutes) { m_minutes = minutes; }
  std::uint64_t GetSeconds() const { return m_seconds; }
  void SetSeconds(std::uint64_t seconds) { m_seconds = seconds; }
  unsigned short GetMilliSeconds() const { return m_milliSeconds; }
  void SetMilliSeconds(unsigned short milliSeconds) { m_milliSeconds = milliSeconds; }
  unsigned short GetMicroSeconds() const { return m_microSeconds; }
  void SetMicroSeconds(unsigned short microSeconds) { m_microSeconds = microSeconds; }
  unsigned short GetNanoSeconds() const { return m_nanoSeconds; }
  void SetNanoSeconds(unsigned short nanoSeconds) { m_nanoSeconds = nanoSeconds; }

  // ---- Sign ----

  bool IsNegative() const { return m_isNegative; }
  void Negate() { m_isNegative = !m_isNegative; }  // also of no time at all
  CDateTimeSpan GetAsNegative() const;             // a copy, negated: positive if this is negative

  // ---- Order ----

  // What both spans lead to from each of 1696-09-01, 1697-02-01, 1903-03-01 and 1903-07-01;
  // indeterminate where these do not agree. Meant: the reference points are dates, so that spans
  // are told apart by whole days only, and PT1H equals PT2H.
  CDateTime::DTCompareResult CompareTo(const CDateTimeSpan& other) const;
  bool operator==(const CDateTimeSpan& other) const {
    return CompareTo(other) == CDateTime::dtc_equal;
  }
  bool operator!=(const CDateTimeSpan& other) const {
    return CompareTo(other) != CDateTime::dtc_equal;
  }
  bool operator<(const CDateTimeSpan& other) const {
    return CompareTo(other) == CDateTime::dtc_less;
  }
  bool operator>(const CDateTimeSpan& other) const {
    return CompareTo(other) == CDateTime::dtc_greater;
  }

 private:
  void Clear() { *this = CDateTimeSpan(); }

  std::uint16_t m_years = 0;
  std::uint32_t m_months = 0;
  std::uint32_t m_days = 0;
  std::uint32_t m_hours = 0;
  std::uint64_t m_minutes = 0;
  std::uint64_t m_seconds = 0;
  std::uint16_t m_milliSeconds = 0;
  std::uint16_t m_microSeconds = 0;
  std::uint16_t m_nanoSeconds = 0;
  bool m_isNegative = false;
};

}  // namespace QzXmlLib16
