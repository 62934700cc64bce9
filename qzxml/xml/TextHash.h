#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "qzxml/platform/Export.h"
#include "qzxml/xml/ShortText.h"

namespace QzXmlLib16::detail {

// A number that is another one in each process.
QZXML_API std::uint64_t GetHashSalt();

inline std::uint64_t HashSalt() {
  static const std::uint64_t salt = GetHashSalt();
  return salt;
}

// A hash of eight bytes, folded in by a multiplication of 64 by 64 to 128 bits.
inline std::uint64_t MixWord(std::uint64_t hash, std::uint64_t word) {
  __extension__ using Product = unsigned __int128;
  const Product product = static_cast<Product>(hash ^ word) * 0x9E3779B97F4A7C15u;
  return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

// A hash that is salted for each process, so that no document can be written whose texts collide.
// The last eight bytes may overlap those before, and fewer than eight are taken twice in part.
inline std::uint64_t HashText(std::string_view text) {
  const char* at = text.data();
  std::size_t size = text.size();
  std::uint64_t hash = HashSalt() ^ size;
  if (size >= 8) {
    for (; size > 8; size -= 8, at += 8) hash = MixWord(hash, LoadWord<std::uint64_t>(at));
    return MixWord(hash, LoadWord<std::uint64_t>(at + size - 8));
  }
  if (size >= 4) {
    const std::uint64_t first = LoadWord<std::uint32_t>(at);
    return MixWord(hash, first << 32 | LoadWord<std::uint32_t>(at + size - 4));
  }
  if (size == 0) return hash;
  const auto byte = [at](std::size_t place) {
    return std::uint64_t{static_cast<unsigned char>(at[place])};
  };
  return MixWord(hash, byte(0) << 16 | byte(size / 2) << 8 | byte(size - 1));
}

}  // namespace QzXmlLib16::detail
