#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace QzXmlLib16::detail {

// A number that is another one in each process.
std::uint64_t GetHashSalt();

// A hash that is salted for each process, so that no document can be written whose texts collide.
// Eight bytes at a time, each folded in by a multiplication of 64 by 64 to 128 bits.
inline std::uint64_t HashText(std::string_view text) {
  __extension__ using Product = unsigned __int128;
  static const std::uint64_t salt = GetHashSalt();
  const auto mix = [](std::uint64_t hash, const char* bytes, std::size_t count) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, count);
    const Product product = static_cast<Product>(hash ^ word) * 0x9E3779B97F4A7C15u;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
  };
  std::uint64_t hash = salt ^ text.size();
  while (text.size() >= 8) {
    hash = mix(hash, text.data(), 8);
    text.remove_prefix(8);
  }
  return text.empty() ? hash : mix(hash, text.data(), text.size());
}

}  // namespace QzXmlLib16::detail
