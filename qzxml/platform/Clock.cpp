#include "qzxml/platform/Clock.h"

#include <cstdint>

namespace QzXmlLib16::detail {
namespace {

constexpr std::uint64_t kTicksPerMilliSecond = 10000;
constexpr std::uint64_t kMilliSecondsPerDay = 24 * 60 * 60 * 1000;

constexpr std::uint32_t kDaysOf400Years = 146097;
constexpr std::uint32_t kDaysOf100Years = 36524;
constexpr std::uint32_t kDaysOf4Years = 1461;

// Whether the count fits the system's type, which has 32 bits in places.
bool ToSystemCount(long long time, std::time_t& count) {
  count = static_cast<std::time_t>(time);
  return count == time;
}

// Takes up to `most` whole periods off the days; the result is how many.
std::uint32_t TakeOff(std::uint32_t& days, std::uint32_t period, std::uint32_t most) {
  const std::uint32_t whole = days / period < most ? days / period : most;
  days -= whole * period;
  return whole;
}

std::uint16_t Narrow(std::uint64_t value) { return static_cast<std::uint16_t>(value); }

// Year, month, day and weekday of a count of days since 1601-01-01, which was a Monday. A year is
// counted from March here, so that the leap day comes at its end; and so are 100 and 400 years.
void SetDay(std::uint32_t daysSince1601, _SYSTEMTIME& fields) {
  fields.wDayOfWeek = Narrow((daysSince1601 + 1) % 7);
  std::uint32_t days = daysSince1601 + 306;  // since 1600-03-01
  std::uint32_t year = 1600 + 400 * (days / kDaysOf400Years);
  days %= kDaysOf400Years;
  year += 100 * TakeOff(days, kDaysOf100Years, 3);
  year += 4 * TakeOff(days, kDaysOf4Years, 24);
  year += TakeOff(days, 365, 3);
  const std::uint32_t month = (5 * days + 2) / 153;  // 0 is March; 153 days are five months
  fields.wDay = Narrow(days - (153 * month + 2) / 5 + 1);
  fields.wMonth = Narrow(month < 10 ? month + 3 : month - 9);
  fields.wYear = Narrow(month < 10 ? year : year + 1);
}

}  // namespace

bool GetUtcFields(long long time, std::tm& fields) {
  fields = {};
  std::time_t count = 0;
  return ToSystemCount(time, count) && gmtime_r(&count, &fields) != nullptr;
}

bool GetLocalFields(long long time, std::tm& fields) {
  fields = {};
  std::time_t count = 0;
  if (!ToSystemCount(time, count)) return false;
  tzset();  // localtime_r need not look at TZ, localtime does
  return localtime_r(&count, &fields) != nullptr;
}

long long GetTimeOfLocalFields(std::tm fields) { return std::mktime(&fields); }

_SYSTEMTIME GetLocalSystemTime() {
  timespec now = {};
  clock_gettime(CLOCK_REALTIME, &now);
  std::tm local = {};
  GetLocalFields(now.tv_sec, local);
  _SYSTEMTIME result = {};
  result.wYear = static_cast<std::uint16_t>(local.tm_year + 1900);
  result.wMonth = static_cast<std::uint16_t>(local.tm_mon + 1);
  result.wDayOfWeek = static_cast<std::uint16_t>(local.tm_wday);
  result.wDay = static_cast<std::uint16_t>(local.tm_mday);
  result.wHour = static_cast<std::uint16_t>(local.tm_hour);
  result.wMinute = static_cast<std::uint16_t>(local.tm_min);
  result.wSecond = static_cast<std::uint16_t>(local.tm_sec);
  result.wMilliseconds = static_cast<std::uint16_t>(now.tv_nsec / 1000000);
  return result;
}

bool FileTimeToFields(const _FILETIME& fileTime, _SYSTEMTIME& fields) {
  fields = {};
  const std::uint64_t ticks = std::uint64_t{fileTime.dwHighDateTime} << 32 | fileTime.dwLowDateTime;
  if (ticks >> 63 != 0) return false;
  const std::uint64_t milliSeconds = ticks / kTicksPerMilliSecond;
  SetDay(static_cast<std::uint32_t>(milliSeconds / kMilliSecondsPerDay), fields);
  const std::uint64_t ofDay = milliSeconds % kMilliSecondsPerDay;
  fields.wHour = Narrow(ofDay / 3600000);
  fields.wMinute = Narrow(ofDay / 60000 % 60);
  fields.wSecond = Narrow(ofDay / 1000 % 60);
  fields.wMilliseconds = Narrow(ofDay % 1000);
  return true;
}

}  // namespace QzXmlLib16::detail
