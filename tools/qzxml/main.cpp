#include <iostream>

#include "tools/qzxml/Commands.h"

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  qztool::CConsole console{std::cin, std::cout, std::cerr};
  return qztool::RunProgram(argc, argv, console, [&console](CLI::App& app) {
    qztool::AddGenerateCommand(app, console);
    qztool::AddConvertCommand(app, console);
    qztool::AddInspectCommand(app, console);
  });
}
