#pragma once

#include <cstdint>
#include <iosfwd>
#include <map>
#include <string>

namespace qztool {

// The three streams of a run. Not owned; tests put their own in the place of the process's.
struct CConsole {
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
};

// Tells on standard error what a format does not keep, one line for each place:
//
//   order.xml: /order/note[2]: a comment is not kept
//
// Of one kind, which is the message up to a quote or a parenthesis, only so many places are told,
// then how many more there are.
class CNotices {
 public:
  static constexpr unsigned kPlacesOfAKind = 100;

  CNotices(CConsole& console, const std::string& file);

  // Whether the next place of this kind is told; if not, it is counted, and its path need not be
  // found out.
  bool IsTold(const std::string& message);
  // After IsTold answered true.
  void Tell(const std::string& path, const std::string& message);

  // Behind the last one: how many more of each kind there were.
  void Finish();

  // How many places there were, told or not.
  unsigned long GetCount() const { return m_count; }

 private:
  CConsole& m_console;
  std::string m_file;
  std::map<std::string, unsigned long> m_kinds;  // places of each
  unsigned long m_count = 0;
};

// A text for a line of a terminal: control characters and octets that are no UTF-8 as \xNN.
std::string Printable(const std::string& text);

// "1 octet", "2 octets".
std::string CountOctets(std::uint64_t count);

}  // namespace qztool
