#pragma once

#include <cstdint>
#include <limits>

namespace QzXmlLib16::detail {

// How many octets a load may put into its tree, measured by its input: below 8 MiB as many as it
// likes, above that a number of times its size. No bound while no load runs.
class CGrowthBound {
 public:
  // Begins with no input. 0 times is no bound.
  void Begin(std::uint32_t times);
  void SetInputOctets(std::uint64_t octets);
  void End() { m_maxOctets = kNone; }

  // Counts octets that are put into the tree.
  // Throws CQzException "The document grows past %d times its size".
  void Count(std::uint64_t octets) {
    m_octets += octets;
    if (m_octets > m_maxOctets) Throw();
  }

 private:
  static constexpr std::uint64_t kNone = std::numeric_limits<std::uint64_t>::max();

  [[noreturn]] void Throw() const;

  std::uint64_t m_octets = 0;
  std::uint64_t m_maxOctets = kNone;
  std::uint32_t m_times = 0;
};

}  // namespace QzXmlLib16::detail
