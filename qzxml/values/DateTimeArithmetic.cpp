#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "qzxml/platform/Assert.h"
#include "qzxml/values/DateTime.h"
#include "qzxml/values/DateTimeDetail.h"
#include "qzxml/values/DateTimeSpan.h"

// Comparing and adding. An addition goes from the smallest field to the largest, each leaving its
// carry to the next, and days are then taken from or given to one month after another.
//
// The quotient of a step, floor(sum / modulus), is that of two floats. Meant: applications compare
// with what other installations computed, so the lost digits of a large span are lost here too, and
// a field may come out beyond its range then. Sums are exact: a field keeps their lowest bits.
namespace QzXmlLib16 {

namespace {

// ---- Steps ----

// part + sign * amount, which may need more than 64 bits. The part stays below 2^60.
struct Sum {
  std::int64_t part;
  int sign;
  std::uint64_t amount;

  std::uint64_t GetLowBits() const {
    const auto low = static_cast<std::uint64_t>(part);
    return sign < 0 ? low - amount : low + amount;
  }
  float ToFloat() const;
};

// The nearest float. Where 64 bits may not do, a quarter of the sum is taken, whose lowest bit, far
// below those that a float keeps, says whether anything was cut off.
float Sum::ToFloat() const {
  constexpr std::uint64_t kFits = std::uint64_t{1} << 62;
  if (amount < kFits) return static_cast<float>(part + sign * static_cast<std::int64_t>(amount));
  const std::int64_t along = sign * part;
  const std::int64_t partRest = ((along % 4) + 4) % 4;
  const std::int64_t rest = static_cast<std::int64_t>(amount % 4) + partRest;
  const std::int64_t quarter =
      static_cast<std::int64_t>(amount / 4) + (along - partRest) / 4 + rest / 4;
  const std::int64_t sticky = rest % 4 == 0 ? quarter : quarter | 1;
  return static_cast<float>(sign) * 4.0F * static_cast<float>(sticky);
}

// Below this the float of a sum is exact, and no quotient by 1000 or less is rounded up to a whole
// number: the next float below one of 2^17 is 2^-7 away, and what a quotient lacks is 1/60 or more
// there (1/1000 below 2^11). So whole numbers give the same.
constexpr std::int64_t kSmall = std::int64_t{1} << 20;

template <int kModulus>
std::int64_t FloorQuotient(const Sum& sum) {
  static_assert(kModulus == 12 || kModulus == 24 || kModulus == 60 || kModulus == 1000);
  if (sum.amount < kSmall / 2 && sum.part > -kSmall / 2 && sum.part < kSmall / 2) {
    const int small = static_cast<int>(sum.part) + sum.sign * static_cast<int>(sum.amount);
    return small >= 0 ? small / kModulus : -((kModulus - 1 - small) / kModulus);
  }
  // Volatile, so that processors with wider registers round to single precision here as well.
  const volatile float dividend = sum.ToFloat();
  const volatile float quotient = dividend / static_cast<float>(kModulus);
  const float exact = quotient;
  return static_cast<std::int64_t>(std::floor(exact));
}

// Leaves the remainder in the field, cut to its width, and gives the carry of the next one.
template <int kModulus, typename Field>
std::int64_t AddStep(Field& field, std::int64_t carry, int sign, std::uint64_t amount) {
  const Sum sum{field + carry, sign, amount};
  const std::int64_t quotient = FloorQuotient<kModulus>(sum);
  const std::uint64_t product = static_cast<std::uint64_t>(quotient) * kModulus;
  field = static_cast<Field>(sum.GetLowBits() - product);
  return quotient;
}

// ---- Days ----

constexpr std::int64_t kCycleYears = 400;
constexpr std::int64_t kCycleDays = 146097;

// The days of all years that 16 bits can hold; behind the last one the first one follows.
constexpr std::int64_t CountAllDays() {
  std::int64_t days = 0;
  for (int year = std::numeric_limits<std::int16_t>::min();
       year <= std::numeric_limits<std::int16_t>::max(); ++year) {
    days += detail::IsLeapYear(year) ? 366 : 365;
  }
  return days;
}
constexpr std::int64_t kAllDays = CountAllDays();

// A day on its way through the months. A month may also be one that does not exist: 0, where a
// quotient came out too large, and what lies beyond that, where it stays; such a month has 31 days.
class DayWalk {
 public:
  DayWalk(std::int16_t year, std::uint8_t month, std::uint8_t day)
      : m_year(year), m_month(month), m_day(day) {}

  void Go(std::int64_t days) {
    while (days != 0) {
      days = days > 0 ? StepForward(days) : StepBack(days);
      if (m_month == 0) {
        MoveYear(-1);
        m_month = 12;
      } else if (m_month == 13) {
        MoveYear(1);
        m_month = 1;
      }
    }
  }

  std::int16_t GetYear() const { return m_year; }
  std::uint8_t GetMonth() const { return static_cast<std::uint8_t>(m_month); }
  std::uint8_t GetDay() const { return static_cast<std::uint8_t>(m_day); }

 private:
  bool IsRealMonth() const { return m_month >= 1 && m_month <= 12; }
  int GetMonthDays() const { return detail::DaysInMonth(m_year, m_month); }
  int GetYearDays() const { return detail::IsLeapYear(m_year) ? 366 : 365; }

  // Years have 16 bits and wrap around.
  void MoveYear(std::int64_t years) { m_year = static_cast<std::int16_t>(m_year + years); }

  // Both go to the day if it is in this month, and else to the near end of the next one; they give
  // the days that are left.
  std::int64_t StepForward(std::int64_t days) {
    if (m_day == 1) days = SkipForward(days);
    const int monthDays = GetMonthDays();
    if (m_day + days <= monthDays) {
      m_day += days;
      return 0;
    }
    days -= monthDays + 1 - m_day;
    m_day = 1;
    ++m_month;
    return days;
  }

  std::int64_t StepBack(std::int64_t days) {
    if (m_day == GetMonthDays()) days = SkipBack(days);
    if (m_day - 1 >= -days) {
      m_day += days;
      return 0;
    }
    days += m_day;
    --m_month;
    m_day = GetMonthDays();
    return days;
  }

  // Both take at once what many steps would take and come out at the same place: the circle of all
  // years, cycles of 400 years, single ones, and a row of months that do not exist. They begin at
  // the first day of a month, or at the last one. No cycle goes over the end of the years that 16
  // bits hold: the fewer than 400 before it are single ones, and behind it cycles go on.
  std::int64_t SkipForward(std::int64_t days) {
    if (!IsRealMonth()) {
      if (m_month <= 13) return days;
      m_month += days / 31;
      return days % 31;
    }
    if (days >= kAllDays) days %= kAllDays;
    while (days >= 366) {
      const std::int64_t room = (std::numeric_limits<std::int16_t>::max() - m_year) / kCycleYears;
      if (const std::int64_t cycles = std::min(days / kCycleDays, room); cycles > 0) {
        MoveYear(cycles * kCycleYears);
        days -= cycles * kCycleDays;
        continue;
      }
      if (m_month <= 2) days -= GetYearDays();
      MoveYear(1);
      if (m_month > 2) days -= GetYearDays();
    }
    return days;
  }

  std::int64_t SkipBack(std::int64_t days) {
    if (!IsRealMonth()) {
      if (m_month >= 0) return days;
      m_month += days / 31;
      return days % 31;
    }
    if (-days >= kAllDays) days %= kAllDays;
    while (-days >= 366) {
      const std::int64_t room = (m_year - std::numeric_limits<std::int16_t>::min()) / kCycleYears;
      if (const std::int64_t cycles = std::min(-days / kCycleDays, room); cycles > 0) {
        MoveYear(-cycles * kCycleYears);
        days += cycles * kCycleDays;
        continue;
      }
      if (m_month >= 2) days += GetYearDays();
      MoveYear(-1);
      if (m_month < 2) days += GetYearDays();
    }
    m_day = GetMonthDays();
    return days;
  }

  std::int16_t m_year;
  std::int64_t m_month;
  std::int64_t m_day;
};

// ---- Comparison ----

template <typename Number>
CDateTime::DTCompareResult CompareNumbers(Number left, Number right) {
  // Meant: signs that differ make it indeterminate, also between years before and after 1.
  if (left * right < 0) return CDateTime::dtc_indeterminate;
  if (left < right) return CDateTime::dtc_less;
  return left > right ? CDateTime::dtc_greater : CDateTime::dtc_equal;
}

// The hours are this source's own; a zone that SetTimeZone refuses would be a mistake in it.
CDateTime AtZone(const CDateTime& value, short hour) {
  QZ_ASSERT(hour >= -23 && hour <= 23);
  CDateTime result = value;
  result.SetTimeZone(hour, 0);
  return result;
}

}  // namespace

// ---- Order ----

CDateTime CDateTime::GetNormalized() const {
  if (!m_hasTimeZone) return *this;
  const CDateTimeSpan offset(static_cast<std::uint32_t>(std::abs(m_zoneHour)), m_zoneMinute, 0);
  return AtZone(m_zoneHour < 0 ? *this + offset : *this - offset, 0);
}

CDateTime::DTCompareResult CDateTime::CompareTo(const CDateTime& other) const {
  CDateTime left = GetNormalized();
  CDateTime right = other.GetNormalized();
  if (left.m_isUTC == right.m_isUTC) return left.CompareFields(right);

  // Meant: the second step goes back from the first one's place to where it began, and so the
  // window is half of the standard's.
  if (left.m_isUTC) {
    right = AtZone(right, 14).GetNormalized();
    if (left.CompareFields(right) == dtc_less) return dtc_less;
    right = AtZone(right, -14).GetNormalized();
    return left.CompareFields(right) == dtc_greater ? dtc_greater : dtc_indeterminate;
  }
  left = AtZone(left, 14).GetNormalized();
  if (left.CompareFields(right) == dtc_greater) return dtc_greater;
  left = AtZone(left, -14).GetNormalized();
  return left.CompareFields(right) == dtc_less ? dtc_less : dtc_indeterminate;
}

CDateTime::DTCompareResult CDateTime::CompareFields(const CDateTime& other) const {
  const struct {
    unsigned field;
    int left;
    int right;
  } kParts[] = {{detail::kHasYear, m_year, other.m_year},
                {detail::kHasMonth, m_month, other.m_month},
                {detail::kHasDay, m_day, other.m_day},
                {detail::kHasTime, m_hour, other.m_hour},
                {detail::kHasTime, m_minute, other.m_minute}};
  const unsigned fields = detail::FieldsOf(m_type);
  const unsigned otherFields = detail::FieldsOf(other.m_type);
  for (const auto& part : kParts) {
    const DTCompareResult result =
        CompareNumbers((fields & part.field) != 0 ? part.left : -1,
                       (otherFields & part.field) != 0 ? part.right : -1);
    if (result != dtc_equal) return result;
  }
  return CompareNumbers((fields & detail::kHasTime) != 0 ? GetRealSecond() : -1.0,
                        (otherFields & detail::kHasTime) != 0 ? other.GetRealSecond() : -1.0);
}

bool CDateTime::operator<=(const CDateTime& other) const {
  const DTCompareResult result = CompareTo(other);
  return result == dtc_less || result == dtc_equal;
}

bool CDateTime::operator>=(const CDateTime& other) const {
  const DTCompareResult result = CompareTo(other);
  return result == dtc_greater || result == dtc_equal;
}

// ---- Addition ----

void CDateTime::AddDateTimeSpan(const CDateTimeSpan& span) {
  const int sign = span.IsNegative() ? -1 : 1;
  std::int64_t carry = AddStep<12>(m_month, -1, sign, span.GetMonths());
  ++m_month;
  m_year = static_cast<std::int16_t>(m_year + carry + sign * span.GetYears());

  carry = AddStep<1000>(m_nanoSecond, 0, sign, span.GetNanoSeconds());
  carry = AddStep<1000>(m_microSecond, carry, sign, span.GetMicroSeconds());
  carry = AddStep<1000>(m_milliSecond, carry, sign, span.GetMilliSeconds());
  carry = AddStep<60>(m_second, carry, sign, span.GetSeconds());
  carry = AddStep<60>(m_minute, carry, sign, span.GetMinutes());
  carry = AddStep<24>(m_hour, carry, sign, span.GetHours());

  DayWalk walk(m_year, m_month, m_day);
  walk.Go(carry + sign * std::int64_t{span.GetDays()});
  m_year = walk.GetYear();
  m_month = walk.GetMonth();
  m_day = walk.GetDay();
}

CDateTime CDateTime::operator+(const CDateTimeSpan& span) const {
  CDateTime result = *this;
  return result += span;
}

CDateTime& CDateTime::operator+=(const CDateTimeSpan& span) {
  AddDateTimeSpan(span);
  return *this;
}

CDateTime CDateTime::operator-(const CDateTimeSpan& span) const {
  return *this + span.GetAsNegative();
}

CDateTime& CDateTime::operator-=(const CDateTimeSpan& span) {
  return *this += span.GetAsNegative();
}

CDateTimeSpan CDateTime::operator-(const CDateTime&) const { return CDateTimeSpan(); }

}  // namespace QzXmlLib16
