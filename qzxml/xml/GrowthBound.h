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

// While one lives, a load on its thread is measured by what its input was made of, where that is
// told here: two steps that may each grow a number of times are then bounded as one.
class CInputOrigin {
 public:
  CInputOrigin();
  CInputOrigin(const CInputOrigin&) = delete;
  CInputOrigin& operator=(const CInputOrigin&) = delete;
  ~CInputOrigin();

  // The octets that begin there were made of so many. They stay where they are as long as the
  // innermost origin of the thread lives; nothing is remembered where there is none.
  static void Tell(const unsigned char* octets, std::uint64_t originOctets);

  // What an input counts: its own size, or that of its origin where that is less.
  static std::uint64_t Measure(const unsigned char* octets, std::uint64_t size);

 private:
  CInputOrigin* const m_pOuter;  // not owned
  const unsigned char* m_pOctets = nullptr;
  std::uint64_t m_originOctets = 0;
};

}  // namespace QzXmlLib16::detail
