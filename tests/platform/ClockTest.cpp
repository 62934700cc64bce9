#include <cstdint>
#include <ctime>
#include <limits>

#include "qzxml/platform/Clock.h"
#include "tests/support/QzTest.h"
#include "tests/support/TimeZone.h"

using namespace QzXmlLib16::detail;
using qztest::TimeZone;

namespace {

std::string Text(const std::tm& fields) {
  char text[64];
  std::strftime(text, sizeof(text), "%Y-%m-%dT%H:%M:%S %w", &fields);
  return text;
}

std::string UtcText(long long time) {
  std::tm fields;
  return GetUtcFields(time, fields) ? Text(fields) : "none";
}

std::string LocalText(long long time) {
  std::tm fields;
  return GetLocalFields(time, fields) ? Text(fields) : "none";
}

_FILETIME FileTime(std::uint64_t ticks) {
  return {static_cast<std::uint32_t>(ticks), static_cast<std::uint32_t>(ticks >> 32)};
}

constexpr std::uint64_t kTicksOf1970 = 116444736000000000;
constexpr std::uint64_t kTicksPerDay = 864000000000;

}  // namespace

TEST(Clock, BreaksDownUtc) {
  const TimeZone zone(qztest::kNewYork);
  EXPECT_EQ(UtcText(0), "1970-01-01T00:00:00 4");
  EXPECT_EQ(UtcText(-1), "1969-12-31T23:59:59 3");
  EXPECT_EQ(UtcText(1088656200), "2004-07-01T04:30:00 4");
  EXPECT_EQ(UtcText(253402300799), "9999-12-31T23:59:59 5");
}

TEST(Clock, BreaksDownLocalTime) {
  const TimeZone zone(qztest::kNewYork);
  EXPECT_EQ(LocalText(1072931400), "2003-12-31T23:30:00 3");  // 2004-01-01T04:30:00Z
  EXPECT_EQ(LocalText(1088656200), "2004-07-01T00:30:00 4");  // 2004-07-01T04:30:00Z
  EXPECT_EQ(LocalText(0), "1969-12-31T19:00:00 3");
}

TEST(Clock, LooksAtTheZoneEachTime) {
  const TimeZone first(qztest::kFarEast);
  EXPECT_EQ(LocalText(0), "1970-01-01T14:00:00 4");
  const TimeZone second(qztest::kFarWest);
  EXPECT_EQ(LocalText(0), "1969-12-31T12:00:00 3");
}

TEST(Clock, HasNoFieldsForACountBeyondTheSystem) {
  EXPECT_EQ(UtcText(std::numeric_limits<long long>::max()), "none");
  EXPECT_EQ(UtcText(std::numeric_limits<long long>::min()), "none");
  EXPECT_EQ(LocalText(std::numeric_limits<long long>::max()), "none");
  EXPECT_EQ(LocalText(std::numeric_limits<long long>::min()), "none");
}

TEST(Clock, CountsLocalFields) {
  const TimeZone zone(qztest::kNewYork);
  std::tm fields = {};
  fields.tm_year = 104;
  fields.tm_mon = 6;
  fields.tm_mday = 1;
  fields.tm_min = 30;
  EXPECT_EQ(GetTimeOfLocalFields(fields), 1088656200 + 3600);  // told in winter time
  fields.tm_isdst = 1;
  EXPECT_EQ(GetTimeOfLocalFields(fields), 1088656200);
  fields.tm_year = std::numeric_limits<int>::max();
  fields.tm_mon = std::numeric_limits<int>::max();
  fields.tm_mday = std::numeric_limits<int>::max();
  EXPECT_NO_FATAL_FAILURE(GetTimeOfLocalFields(fields));
}

TEST(Clock, TellsTheLocalTime) {
  const TimeZone zone(qztest::kFarEast);
  const std::time_t before = std::time(nullptr);
  const _SYSTEMTIME now = GetLocalSystemTime();
  const std::time_t after = std::time(nullptr);
  std::tm fields = {};
  fields.tm_year = now.wYear - 1900;
  fields.tm_mon = now.wMonth - 1;
  fields.tm_mday = now.wDay;
  fields.tm_hour = now.wHour;
  fields.tm_min = now.wMinute;
  fields.tm_sec = now.wSecond;
  const long long time = GetTimeOfLocalFields(fields);
  EXPECT_GE(time, before - 1);  // std::time may look at a coarser clock
  EXPECT_LE(time, after + 1);
  EXPECT_LT(now.wMilliseconds, 1000);
  std::tm local;
  ASSERT_TRUE(GetLocalFields(time, local));
  EXPECT_EQ(now.wDayOfWeek, local.tm_wday);
}

TEST(Clock, BreaksDownFileTimes) {
  const struct {
    std::uint64_t ticks;
    _SYSTEMTIME fields;
  } cases[] = {
      {0, {1601, 1, 1, 1, 0, 0, 0, 0}},
      {9999, {1601, 1, 1, 1, 0, 0, 0, 0}},
      {10000, {1601, 1, 1, 1, 0, 0, 0, 1}},
      {kTicksPerDay - 1, {1601, 1, 1, 1, 23, 59, 59, 999}},
      {kTicksPerDay, {1601, 1, 2, 2, 0, 0, 0, 0}},
      {kTicksOf1970, {1970, 1, 4, 1, 0, 0, 0, 0}},
      {kTicksOf1970 + 1088656200 * 10000000ULL + 1239999, {2004, 7, 4, 1, 4, 30, 0, 123}},
      // The last one, as Windows has it.
      {0x7FFFFFFFFFFFFFFF, {30828, 9, 4, 14, 2, 48, 5, 477}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.ticks);
    _SYSTEMTIME fields;
    ASSERT_TRUE(FileTimeToFields(FileTime(c.ticks), fields));
    EXPECT_EQ(fields.wYear, c.fields.wYear);
    EXPECT_EQ(fields.wMonth, c.fields.wMonth);
    EXPECT_EQ(fields.wDayOfWeek, c.fields.wDayOfWeek);
    EXPECT_EQ(fields.wDay, c.fields.wDay);
    EXPECT_EQ(fields.wHour, c.fields.wHour);
    EXPECT_EQ(fields.wMinute, c.fields.wMinute);
    EXPECT_EQ(fields.wSecond, c.fields.wSecond);
    EXPECT_EQ(fields.wMilliseconds, c.fields.wMilliseconds);
  }
}

TEST(Clock, HasTheSystemsCalendarForFileTimes) {
  constexpr long long kDaysTo1970 = 134774;
  for (std::uint32_t day = 0; day < 3200000; day += day < 300000 ? 1 : 61) {
    _SYSTEMTIME fields;
    ASSERT_TRUE(FileTimeToFields(FileTime(day * kTicksPerDay), fields));
    std::tm expected;
    ASSERT_TRUE(GetUtcFields((day - kDaysTo1970) * 86400, expected));
    ASSERT_EQ(fields.wYear, expected.tm_year + 1900) << day;
    ASSERT_EQ(fields.wMonth, expected.tm_mon + 1) << day;
    ASSERT_EQ(fields.wDay, expected.tm_mday) << day;
    ASSERT_EQ(fields.wDayOfWeek, expected.tm_wday) << day;
  }
}

TEST(Clock, RefusesFileTimesThatTheSystemRefuses) {
  _SYSTEMTIME fields;
  EXPECT_FALSE(FileTimeToFields(FileTime(0x8000000000000000), fields));
  EXPECT_FALSE(FileTimeToFields(FileTime(0xFFFFFFFFFFFFFFFF), fields));
  EXPECT_EQ(fields.wYear, 0);
}
