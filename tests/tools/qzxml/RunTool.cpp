#include "tests/tools/qzxml/RunTool.h"

#include <sstream>

#include "tools/qzxml/Commands.h"

namespace qztest {

ToolResult RunTool(const std::vector<std::string>& arguments, const std::string& input) {
  return RunTool(arguments, input, [](qztool::CCommandLine& line, qztool::CConsole& console) {
    qztool::AddConvertCommand(line, console);
    qztool::AddInspectCommand(line, console);
  });
}

ToolResult RunTool(
    const std::vector<std::string>& arguments, const std::string& input,
    const std::function<void(qztool::CCommandLine&, qztool::CConsole&)>& addCommands) {
  std::vector<const char*> argv = {"qzxml"};
  for (const std::string& argument : arguments) argv.push_back(argument.c_str());
  std::istringstream in(input);
  std::ostringstream out;
  std::ostringstream err;
  qztool::CConsole console{in, out, err};
  const int code =
      qztool::RunProgram(static_cast<int>(argv.size()), argv.data(), console,
                         [&](qztool::CCommandLine& line) { addCommands(line, console); });
  return {code, out.str(), err.str()};
}

}  // namespace qztest
