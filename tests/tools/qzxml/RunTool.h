#pragma once

#include <functional>
#include <string>
#include <vector>

namespace qztool {
class CCommandLine;
struct CConsole;
}  // namespace qztool

// Runs the program qzxml as a function, on streams of memory: for tests and for fuzzers.
namespace qztest {

struct ToolResult {
  int code;
  std::string out;
  std::string err;
};

// The arguments behind the program's name; input is what stands on standard input. Without
// addCommands the program has convert and inspect.
ToolResult RunTool(const std::vector<std::string>& arguments, const std::string& input = "");
ToolResult RunTool(
    const std::vector<std::string>& arguments, const std::string& input,
    const std::function<void(qztool::CCommandLine&, qztool::CConsole&)>& addCommands);

}  // namespace qztest
