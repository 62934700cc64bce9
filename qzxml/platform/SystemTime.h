#pragma once

#include <cstdint>

// The two forms of time that applications written for Windows hand over. They carry the names, the
// fields and the layout that they have there, so that such code compiles unchanged; where the
// system has them its own are used.
#if !defined(_WIN32)
// NOLINTBEGIN(bugprone-reserved-identifier)

// A broken-down time.
struct _SYSTEMTIME {
  std::uint16_t wYear;
  std::uint16_t wMonth;      // 1 to 12
  std::uint16_t wDayOfWeek;  // 0 is Sunday
  std::uint16_t wDay;        // 1 to 31
  std::uint16_t wHour;
  std::uint16_t wMinute;
  std::uint16_t wSecond;
  std::uint16_t wMilliseconds;
};

// A count of 100 nanoseconds since 1601-01-01T00:00:00Z, in two halves.
struct _FILETIME {
  std::uint32_t dwLowDateTime;
  std::uint32_t dwHighDateTime;
};

// NOLINTEND(bugprone-reserved-identifier)
#endif
