#pragma once

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

#include "qzxml/fastinfoset/FastInfosetRun.h"
#include "qzxml/values/DateTime.h"

// Values in the octets of an algorithm of Fast Infoset: none for a value that it does not take.
namespace QzXmlLib16::detail {

using FIValueOctets = FastInfosetRun::Octets;
inline constexpr FIValueOctets kNoFIOctets = {0, 0};

inline FIValueOctets OctetsOf(std::int64_t number, std::uint32_t algorithm) {
  const auto bits = static_cast<std::uint64_t>(number);
  switch (algorithm) {
    case 3:
      return number == static_cast<std::int16_t>(number) ? FIValueOctets{bits, 2} : kNoFIOctets;
    case 4:
      return number == static_cast<std::int32_t>(number) ? FIValueOctets{bits, 4} : kNoFIOctets;
    case 5:
      return {bits, 8};
    default:
      return kNoFIOctets;
  }
}

inline FIValueOctets OctetsOf(std::int32_t number, std::uint32_t algorithm) {
  return OctetsOf(std::int64_t{number}, algorithm);
}

// The text of a negative zero may be that of zero, whose octets it has then.
inline FIValueOctets OctetsOf(double real, std::uint32_t algorithm) {
  if (real == 0 && std::signbit(real)) return kNoFIOctets;
  if (algorithm == 8) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &real, sizeof bits);
    return {bits, 8};
  }
  if (algorithm != 7) return kNoFIOctets;
  std::uint32_t bits = 0;
  const auto narrow = static_cast<float>(real);
  std::memcpy(&bits, &narrow, sizeof bits);
  return {bits, 4};
}

inline FIValueOctets OctetsOf(const CDateTime&, std::uint32_t) { return kNoFIOctets; }

}  // namespace QzXmlLib16::detail
