#pragma once

#include <array>
#include <cfloat>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "qzxml/values/ConversionsDetail.h"

// Prices, lengths and rates: numbers of an ordinary size with a few digits behind the point, which
// are most of the reals that a document holds. std::to_chars with a precision serves every size and
// any number of digits, and works long for it.
namespace QzXmlLib16::detail {

// The parts of WriteShortFraction, for numbers of these numbers of binary places.
namespace short_fraction {

inline constexpr unsigned kScale = 1000;
inline constexpr unsigned kFewestBinaryPlaces = 39;
inline constexpr unsigned kMostBinaryPlaces = 62;
inline constexpr std::uint64_t kHalfUnit = 500;

// Whether a rest is less than half of the last of 16 digits, of a number that has so many
// thousandths.
constexpr bool IsBehindDigits(std::uint64_t rest, std::uint64_t thousandths, std::uint64_t one) {
  std::uint64_t ratio = 2000000000000000;  // twice what a thousandth is to the last of 16 digits
  for (std::uint64_t power = 10; power <= thousandths; power *= 10) ratio /= 10;
  return rest * ratio < one;
}

// Rests up to these are, whatever the number, by its binary places.
inline constexpr auto kSmallRests = [] {
  std::array<std::uint16_t, kMostBinaryPlaces - kFewestBinaryPlaces + 1> rests{};
  for (unsigned i = 0; i < rests.size(); ++i) {
    const unsigned binaryPlaces = kFewestBinaryPlaces + i;
    const std::uint64_t one = std::uint64_t{1} << binaryPlaces;
    const std::uint64_t fewest = (std::uint64_t{kScale} << 52) >> binaryPlaces;
    std::uint16_t rest = 0;
    while (rest + 1U < kHalfUnit && IsBehindDigits(rest + 1U, fewest, one)) ++rest;
    rests[i] = rest;
  }
  return rests;
}();

}  // namespace short_fraction

// Writes what "%.16g" gives for a number from 0.001 to 9999.999 that shows three places at most, as
// most prices do; null for any other. r8FromString makes the number itself of the text.
//
// A thousand times the number is a whole one and a rest, which is counted in a thousandth of the
// unit of the number's last binary place. A rest of less than half of such a unit says that no
// other double is as near to the text: r8FromString makes the number of it. (Below a power of two
// the next one is half as far, but those of this size are whole thousandths, or far from one.) A
// rest of less than half of the last of 16 digits says that the text has no more digits.
inline char* WriteShortFraction(char* buffer, double value) {
  using namespace short_fraction;
  constexpr unsigned kBias = 1023;
  constexpr int kMantissaBits = 52;
  constexpr std::uint64_t kLeadingBit = std::uint64_t{1} << kMantissaBits;

  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof(bits));
  const unsigned binaryPlaces =
      kBias + kMantissaBits - static_cast<unsigned>(bits >> kMantissaBits);
  const unsigned place = binaryPlaces - kFewestBinaryPlaces;
  if (place >= kSmallRests.size()) return nullptr;  // also what has a sign
  const std::uint64_t one = std::uint64_t{1} << binaryPlaces;
  const std::uint64_t scaled = ((bits & (kLeadingBit - 1)) | kLeadingBit) * kScale;  // below 2^63
  const std::uint64_t nearest = (scaled + one / 2) >> binaryPlaces;
  const std::uint64_t below = nearest << binaryPlaces;
  const std::uint64_t rest = below > scaled ? below - scaled : scaled - below;
  const auto shown = static_cast<unsigned>(nearest);
  const unsigned whole = shown / kScale;
  if (whole > 9999) return nullptr;
  if (rest > kSmallRests[place] && (rest >= kHalfUnit || !IsBehindDigits(rest, shown, one))) {
    return nullptr;
  }

  if (whole > 99) {
    buffer = WriteUpTo99(buffer, whole / 100);
    std::memcpy(buffer, kDigitPairs + std::size_t{2} * (whole % 100), 2);
    buffer += 2;
  } else {
    buffer = WriteUpTo99(buffer, whole);
  }
  const unsigned places = shown % kScale;
  if (places == 0) return buffer;
  const char* const last = kDigitPairs + std::size_t{2} * (places % 100);
  buffer[0] = '.';
  buffer[1] = static_cast<char>('0' + places / 100);
  std::memcpy(buffer + 2, last, 2);  // of which zeros at the end do not count
  if (last[1] != '0') return buffer + 4;
  return buffer + (last[0] != '0' ? 3 : 2);
}

#if defined(__SIZEOF_INT128__)
#define QZXML_WRITES_ORDINARY_FRACTIONS 1

// 1 to 10^19.
inline constexpr std::array<std::uint64_t, 20> kPowersOfTen = [] {
  std::array<std::uint64_t, 20> powers{1};
  for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 10;
  return powers;
}();

// Writes a number that is shown with so many places, of which only the first three are none of
// zero, as in most prices; null for any other. Behind the point of the number stands fraction, in
// units of 2^-binaryPlaces, 54 of them at most.
//
// What three places leave of the fraction is counted in a thousandth of its unit. It has to be less
// than half of the last place that is shown, which then rounds to a zero.
inline char* WriteFewPlaces(char* buffer, std::uint64_t whole, std::uint64_t fraction,
                            int binaryPlaces, int places, double* readBack) {
  constexpr std::uint64_t kScale = 1000;
  constexpr std::uint64_t kMostRest = 500;  // times 2 * 10^15 it has 64 bits
  if (places < 3) return nullptr;
  const std::uint64_t one = std::uint64_t{1} << binaryPlaces;
  const std::uint64_t scaled = fraction * kScale;  // below 2^64
  std::uint64_t shown = (scaled + one / 2) >> binaryPlaces;
  const std::uint64_t nearest = shown << binaryPlaces;
  const std::uint64_t rest = nearest > scaled ? nearest - scaled : scaled - nearest;
  if (shown == 0 || shown >= kScale || rest > kMostRest ||
      rest * 2 * kPowersOfTen[static_cast<std::size_t>(places - 3)] >= one) {
    return nullptr;
  }
  if (readBack != nullptr && FLT_EVAL_METHOD == 0 && whole <= (std::uint64_t{1} << 53) / 1024) {
    *readBack = static_cast<double>(whole * kScale + shown) / static_cast<double>(kScale);
  }
  buffer = WriteInteger(buffer, whole);
  *buffer++ = '.';
  *buffer++ = static_cast<char>('0' + shown / 100);
  shown %= 100;
  if (shown == 0) return buffer;
  std::memcpy(buffer, kDigitPairs + 2 * shown, 2);
  return buffer + (shown % 10 == 0 ? 1 : 2);
}

// Writes what "%.{digits}g" gives for a value from 0.0001 up to where the digits reach no place
// behind the point; null for any other. At most 16 digits.
//
// The way is exact, in whole numbers: what stands behind the point is a fraction of a power of two,
// a part of the mantissa. Times a power of ten its upper part is the digits, and the lower part,
// which is cut off, rounds them: ties to even, as the general form does.
//
// Where there is a readBack it becomes the number that the text says, if that is easily told: one
// division of two numbers that a double holds exactly. Else it stays as it is.
inline char* WriteOrdinaryFraction(char* buffer, double value, int digits,
                                   double* readBack = nullptr) {
  __extension__ using Wide = unsigned __int128;
  constexpr int kMantissaBits = 52;
  constexpr std::uint64_t kLeadingBit = std::uint64_t{1} << kMantissaBits;

  const bool isNegative = value < 0;
  if (isNegative) {
    *buffer++ = '-';
    value = -value;
  }
  if (!(value >= 0.0001 && value < 1e15)) return nullptr;

  // How many places behind the point are shown.
  const auto whole = static_cast<std::uint64_t>(value);
  int places = digits;
  for (const std::uint64_t* power = kPowersOfTen.data(); *power <= whole; ++power) --places;
  if (places <= 0) return nullptr;
  if (whole == 0) places += (value < 0.1) + (value < 0.01) + (value < 0.001);

  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof(bits));
  const int binaryPlaces = 1023 + kMantissaBits - static_cast<int>(bits >> kMantissaBits);
  const std::uint64_t mantissa = (bits & (kLeadingBit - 1)) | kLeadingBit;
  if (binaryPlaces <= 54 && !isNegative) {
    const std::uint64_t fraction = mantissa & ((std::uint64_t{1} << binaryPlaces) - 1);
    char* const end = WriteFewPlaces(buffer, whole, fraction, binaryPlaces, places, readBack);
    if (end != nullptr) return end;
  }
  std::uint64_t scale = kPowersOfTen[static_cast<std::size_t>(places)];
  const Wide one = Wide{1} << binaryPlaces;  // 3 to 66 places
  const Wide scaled = (mantissa & (one - 1)) * scale;
  const Wide cutOff = scaled & (one - 1);
  auto fraction = static_cast<std::uint64_t>(scaled >> binaryPlaces);
  if (cutOff > one / 2 || (cutOff == one / 2 && fraction % 2 != 0)) ++fraction;
  if (fraction >= scale) return WriteInteger(buffer, whole + 1);

  // Zeros at the end are not shown.
  if (fraction == 0) return WriteInteger(buffer, whole);
  for (const std::uint64_t zeros : {100000000U, 10000U, 100U, 10U}) {
    if (fraction % zeros != 0) continue;
    fraction /= zeros;
    scale /= zeros;
  }

  const std::uint64_t all = whole * scale + fraction;  // at most 17 digits
  if (readBack != nullptr && FLT_EVAL_METHOD == 0 && all <= std::uint64_t{1} << 53) {
    const double number = static_cast<double>(all) / static_cast<double>(scale);
    *readBack = isNegative ? -number : number;
  }
  char* const point = WriteInteger(buffer, whole);
  char* const end = WriteInteger(point, scale + fraction);  // its first digit is a 1
  *point = '.';
  return end;
}
#endif

}  // namespace QzXmlLib16::detail
