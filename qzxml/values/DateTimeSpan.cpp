#include "qzxml/values/DateTimeSpan.h"

#include <charconv>

#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/values/DateTimeDetail.h"

namespace QzXmlLib16 {

namespace {

using detail::IsDigit;

// ---- Reading ----

// Reads one designator after another; the stage says which ones may follow. What is left of the
// text is at `at`.
class DurationReader {
 public:
  DurationReader(const char* text, CDateTimeSpan& span) : m_text(text), m_at(text), m_span(span) {}

  bool Read() {
    if (*m_at == '-') {
      m_span.Negate();
      ++m_at;
    }
    if (*m_at != 'P') return false;
    ++m_at;
    while (*m_at != '\0') {
      if (!ReadPart()) return false;
    }
    return m_stage != kBegun && m_stage != kBehindT;
  }

 private:
  enum Stage {
    kBegun = 0,
    kBehindYears = 1,
    kBehindMonths = 2,
    kBehindDays = 3,
    kBehindT = 4,
    kBehindHours = 5,
    kBehindMinutes = 6,
    kBehindSeconds = 7,
    kBehindFraction = 8,
  };

  // Meant: no digits count 0, and a number too large for a field is cut to the field's width.
  std::uint64_t ReadNumber() {
    std::uint64_t number = 0;
    for (; IsDigit(*m_at); ++m_at) number = number * 10 + static_cast<unsigned>(*m_at - '0');
    return number;
  }

  bool ReadPart() {
    const std::uint64_t number = ReadNumber();
    const char designator = *m_at;
    if (designator == '\0') return false;
    ++m_at;
    switch (designator) {
      case 'Y':  // Meant: wherever it stands; it leads back to the stage behind the years
        m_span.SetYears(static_cast<unsigned short>(number));
        return Enter(true, kBehindYears);
      case 'M':
        return ReadMonthsOrMinutes(number);
      case 'D':
        if (m_stage < kBehindDays) m_span.SetDays(static_cast<std::uint32_t>(number));
        return Enter(m_stage < kBehindDays, kBehindDays);
      case 'T':  // Meant: a number in front of it is dropped
        return Enter(m_stage < kBehindT, kBehindT);
      case 'H':
        if (m_stage == kBehindT) m_span.SetHours(static_cast<std::uint32_t>(number));
        return Enter(m_stage == kBehindT, kBehindHours);
      case 'S':
        return ReadSeconds(number);
      case '.':
        // Meant: a point that ends the text needs no 'S'.
        return ReadSeconds(number) && (*m_at == '\0' || ReadFraction());
      default:
        return false;
    }
  }

  bool Enter(bool isAllowed, Stage stage) {
    if (isAllowed) m_stage = stage;
    return isAllowed;
  }

  bool ReadMonthsOrMinutes(std::uint64_t number) {
    if (m_stage < kBehindMonths) {
      m_span.SetMonths(static_cast<std::uint32_t>(number));
      return Enter(true, kBehindMonths);
    }
    if (m_stage != kBehindT && m_stage != kBehindHours) return false;
    m_span.SetMinutes(number);
    return Enter(true, kBehindMinutes);
  }

  bool ReadSeconds(std::uint64_t number) {
    if (m_stage < kBehindT || m_stage > kBehindMinutes) return false;
    m_span.SetSeconds(number);
    return Enter(true, kBehindSeconds);
  }

  bool ReadFraction() {
    for (std::size_t index = 0; IsDigit(*m_at); ++m_at, ++index) {
      if (index == 9) {
        throw CQzInvalidValueException(
            FormatString("Invalid XSD Duration [%s] Fraction part too long", m_text));
      }
      AddFractionDigit(index, static_cast<unsigned>(*m_at - '0'));
    }
    m_stage = kBehindFraction;
    if (*m_at != 'S') return false;
    ++m_at;
    return true;
  }

  void AddFractionDigit(std::size_t index, unsigned digit) {
    const unsigned value = digit * detail::PlaceInGroup(index);
    if (index < 3) {
      m_span.SetMilliSeconds(static_cast<unsigned short>(m_span.GetMilliSeconds() + value));
    } else if (index < 6) {
      m_span.SetMicroSeconds(static_cast<unsigned short>(m_span.GetMicroSeconds() + value));
    } else {
      // Meant: the last digit alone, without its place; stored durations were read like this.
      m_span.SetNanoSeconds(static_cast<unsigned short>(digit));
    }
  }

  const char* const m_text;
  const char* m_at;
  CDateTimeSpan& m_span;
  int m_stage = kBegun;
};

// ---- Writing ----

// Sign, 'P' and 'T', the digits of 16, three times 32 and twice 64 bits, their designators.
constexpr std::size_t kSpanSize = 3 + 5 + 3 * 10 + 2 * 20 + 6 + detail::kFractionSize;

char* WriteNumber(char* at, std::uint64_t number, char designator) {
  at = std::to_chars(at, at + 20, number).ptr;
  if (designator != '\0') *at++ = designator;
  return at;
}

char* WritePart(char* at, std::uint64_t number, char designator) {
  return number == 0 ? at : WriteNumber(at, number, designator);
}

}  // namespace

// ---- Construction ----

CDateTimeSpan::CDateTimeSpan(std::uint32_t hours, std::uint64_t minutes, std::uint64_t seconds) {
  SetDateTimeSpan(hours, minutes, seconds);
}

CDateTimeSpan::CDateTimeSpan(unsigned short years, std::uint32_t months, std::uint32_t days,
                             std::uint32_t hours, std::uint64_t minutes, std::uint64_t seconds) {
  SetDateTimeSpan(years, months, days, hours, minutes, seconds);
}

CDateTimeSpan::CDateTimeSpan(unsigned short years, std::uint32_t months, std::uint32_t days,
                             std::uint32_t hours, std::uint64_t minutes, std::uint64_t seconds,
                             unsigned short milliSeconds, unsigned short microSeconds,
                             unsigned short nanoSeconds) {
  SetDateTimeSpan(years, months, days, hours, minutes, seconds, milliSeconds, microSeconds,
                  nanoSeconds);
}

void CDateTimeSpan::SetDateTimeSpan(std::uint32_t hours, std::uint64_t minutes,
                                    std::uint64_t seconds) {
  SetDateTimeSpan(0, 0, 0, hours, minutes, seconds, 0, 0, 0);
}

void CDateTimeSpan::SetDateTimeSpan(unsigned short years, std::uint32_t months, std::uint32_t days,
                                    std::uint32_t hours, std::uint64_t minutes,
                                    std::uint64_t seconds) {
  SetDateTimeSpan(years, months, days, hours, minutes, seconds, 0, 0, 0);
}

void CDateTimeSpan::SetDateTimeSpan(unsigned short years, std::uint32_t months, std::uint32_t days,
                                    std::uint32_t hours, std::uint64_t minutes,
                                    std::uint64_t seconds, unsigned short milliSeconds,
                                    unsigned short microSeconds, unsigned short nanoSeconds) {
  Clear();
  m_years = years;
  m_months = months;
  m_days = days;
  m_hours = hours;
  m_minutes = minutes;
  m_seconds = seconds;
  m_milliSeconds = milliSeconds;
  m_microSeconds = microSeconds;
  m_nanoSeconds = nanoSeconds;
}

// ---- Text ----

void CDateTimeSpan::ParseXSDDuration(const char* text) {
  Clear();
  if (text == nullptr) throw CQzInvalidValueException("Invalid XSD Duration (Null String)");
  if (*text == '\0') throw CQzInvalidValueException("Invalid XSD Duration (Empty String)");
  if (!DurationReader(text, *this).Read()) {
    throw CQzInvalidValueException(FormatString(
        "Invalid XSD Duration [%s] expected [-]P[nY][nM][nD][T[nH][nM][nS.ff]]", text));
  }
}

std::string CDateTimeSpan::ToString() const {
  char text[kSpanSize];
  char* at = text;
  if (m_isNegative) *at++ = '-';
  *at++ = 'P';
  at = WritePart(at, m_years, 'Y');
  at = WritePart(at, m_months, 'M');
  at = WritePart(at, m_days, 'D');
  const bool hasSeconds =
      m_seconds != 0 || m_milliSeconds != 0 || m_microSeconds != 0 || m_nanoSeconds != 0;
  if (m_hours != 0 || m_minutes != 0 || hasSeconds) *at++ = 'T';
  at = WritePart(at, m_hours, 'H');
  at = WritePart(at, m_minutes, 'M');
  if (hasSeconds) {
    at = WriteNumber(at, m_seconds, '\0');
    at = detail::WriteFraction(at, m_milliSeconds, m_microSeconds, m_nanoSeconds);
    *at++ = 'S';
  }
  return std::string(text, at);
}

// ---- Sign and order ----

CDateTimeSpan CDateTimeSpan::GetAsNegative() const {
  CDateTimeSpan result = *this;
  result.Negate();
  return result;
}

CDateTime::DTCompareResult CDateTimeSpan::CompareTo(const CDateTimeSpan& other) const {
  // The points at which XML Schema 1.0 part 2, section 3.2.6.2, tells months and years apart.
  constexpr struct {
    short year;
    unsigned char month;
    unsigned char day;
  } kPoints[] = {{1696, 9, 1}, {1697, 2, 1}, {1903, 3, 1}, {1903, 7, 1}};
  CDateTime::DTCompareResult first = CDateTime::dtc_indeterminate;
  for (const auto& point : kPoints) {
    CDateTime start;
    start.SetDate(point.year, point.month, point.day);
    start.SetUTC();
    const CDateTime::DTCompareResult result = (start + *this).CompareTo(start + other);
    if (&point == kPoints) first = result;
    if (result != first) return CDateTime::dtc_indeterminate;
    if (result == CDateTime::dtc_indeterminate) return result;
  }
  return first;
}

}  // namespace QzXmlLib16
