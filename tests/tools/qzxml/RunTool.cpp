#include "tests/tools/qzxml/RunTool.h"

#include <sstream>

#include "tools/qzxml/Commands.h"

namespace qztest {

ToolResult RunTool(const std::vector<std::string>& arguments, const std::string& input) {
  return RunTool(arguments, input, [](CLI::App& app, qztool::CConsole& console) {
    qztool::AddConvertCommand(app, console);
    qztool::AddInspectCommand(app, console);
  });
}

ToolResult RunTool(const std::vector<std::string>& arguments, const std::string& input,
                   const std::function<void(CLI::App&, qztool::CConsole&)>& addCommands) {
  std::vector<const char*> argv = {"qzxml"};
  for (const std::string& argument : arguments) argv.push_back(argument.c_str());
  std::istringstream in(input);
  std::ostringstream out;
  std::ostringstream err;
  qztool::CConsole console{in, out, err};
  const int code = qztool::RunProgram(static_cast<int>(argv.size()), argv.data(), console,
                                      [&](CLI::App& app) { addCommands(app, console); });
  return {code, out.str(), err.str()};
}

}  // namespace qztest
