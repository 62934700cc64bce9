#pragma once

#include <cstdlib>
#include <ctime>
#include <string>

namespace qztest {

// While one lives, the process is in this time zone, a TZ text of POSIX, so that no zone needs to
// be installed: "EST5EDT,M3.2.0,M11.1.0" has five hours less than UTC, and four in summer.
class TimeZone {
 public:
  explicit TimeZone(const char* zone) {
    const char* const before = std::getenv("TZ");
    m_wasSet = before != nullptr;
    if (m_wasSet) m_before = before;
    setenv("TZ", zone, 1);
    tzset();
  }

  ~TimeZone() {
    if (m_wasSet) {
      setenv("TZ", m_before.c_str(), 1);
    } else {
      unsetenv("TZ");
    }
    tzset();
  }

  TimeZone(const TimeZone&) = delete;
  TimeZone& operator=(const TimeZone&) = delete;

 private:
  bool m_wasSet = false;
  std::string m_before;
};

// Summer time from the second Sunday of March to the first of November, at 02:00.
inline constexpr char kNewYork[] = "EST5EDT,M3.2.0,M11.1.0";
// From the last Sunday of March at 02:00 to the last one of October at 03:00.
inline constexpr char kBerlin[] = "CET-1CEST,M3.5.0,M10.5.0/3";
// From the first Sunday of October to the first of April: the year begins in summer.
inline constexpr char kSydney[] = "AEST-10AEDT,M10.1.0,M4.1.0/3";
inline constexpr char kIndia[] = "IST-5:30";
inline constexpr char kFarEast[] = "<+14>-14";
inline constexpr char kFarWest[] = "<-12>12";

}  // namespace qztest
