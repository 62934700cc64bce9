#include "tools/qzxml/Progress.h"

#include <ostream>
#include <utility>

#include "tools/qzxml/Console.h"

namespace qztool {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kPatience(1000);
constexpr milliseconds kPeriod(100);

milliseconds Now() {
  return std::chrono::duration_cast<milliseconds>(
      std::chrono::steady_clock::now().time_since_epoch());
}

}  // namespace

CProgress::CProgress(std::ostream& stream, bool isTerminal) : CProgress(stream, isTerminal, &Now) {}

CProgress::CProgress(std::ostream& stream, bool isTerminal, Clock clock)
    : m_stream(stream),
      m_isTerminal(isTerminal),
      m_clock(std::move(clock)),
      m_due(m_clock() + kPatience) {}

CProgress::~CProgress() { Wipe(); }

void CProgress::Begin(std::string work) { m_work = std::move(work); }

void CProgress::Tell(std::uint64_t done, std::uint64_t all) {
  if (!m_isTerminal) return;
  const milliseconds now = m_clock();
  if (now <= m_due) return;
  m_due = now + kPeriod;
  Wipe();
  std::string line = "qzxml: " + Printable(m_work);
  if (all != 0) line += ": " + std::to_string(done * 100 / all) + " %";
  m_stream << line << std::flush;
  m_width = line.size();
}

void CProgress::Wipe() {
  if (m_width == 0) return;
  m_stream << '\r' << std::string(m_width, ' ') << '\r' << std::flush;
  m_width = 0;
}

}  // namespace qztool
