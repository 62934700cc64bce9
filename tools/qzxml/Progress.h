#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>

namespace qztool {

// A line on a terminal that tells how far a long piece of work has come:
//
//   qzxml: reading order.xml: 45 %
//
// It appears when the work has taken longer than a second, ten times a second at most, and is wiped
// out by the destructor.
class CProgress {
 public:
  using Clock = std::function<std::chrono::milliseconds()>;

  // Nothing is ever written when the stream is no terminal.
  CProgress(std::ostream& stream, bool isTerminal);
  CProgress(std::ostream& stream, bool isTerminal, Clock clock);
  CProgress(const CProgress&) = delete;
  CProgress& operator=(const CProgress&) = delete;
  ~CProgress();

  // What is done from now on: "reading order.xml".
  void Begin(std::string work);

  // So much of so much of it, 0 for who knows how much. To be called as often as convenient.
  void Tell(std::uint64_t done, std::uint64_t all);

 private:
  void Wipe();

  std::ostream& m_stream;
  bool m_isTerminal;
  Clock m_clock;
  std::chrono::milliseconds m_due;
  std::string m_work;
  std::size_t m_width = 0;  // of the line that stands there
};

}  // namespace qztool
