#include "tests/support/LiveCounts.h"

#include <sstream>

#include "qzxml/runtime/MemoryLeakHelp.h"

namespace qztest {

std::map<std::string, std::int32_t> LiveCounts() {
  std::map<std::string, std::int32_t> counts;
  std::istringstream dump(CInstanceMonitor::DumpState());
  std::string line;
  std::getline(dump, line);  // the heading
  while (std::getline(dump, line)) {
    const std::size_t equals = line.rfind(" = ");
    const std::int32_t alive = std::stoi(line.substr(equals + 3));
    if (alive != 0) counts[line.substr(4, equals - 4)] = alive;
  }
  return counts;
}

}  // namespace qztest
