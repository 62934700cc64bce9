#include <iostream>

#include "tools/qzxml/Commands.h"

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  qztool::CConsole console{std::cin, std::cout, std::cerr};
  return qztool::RunProgram(argc, argv, console, [&console](qztool::CCommandLine& line) {
    qztool::AddGenerateCommand(line, console);
    qztool::AddConvertCommand(line, console);
    qztool::AddInspectCommand(line, console);
  });
}
