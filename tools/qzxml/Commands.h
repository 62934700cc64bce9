#pragma once

#include <functional>

#include "tools/qzxml/CommandLine.h"
#include "tools/qzxml/Console.h"

// The commands of the program. Each adds itself to the program with its options and with the work
// that the program does when the command is the one that was called. The work throws CFailure; any
// other exception ends the program with ExitCode_Document and its text.
namespace qztool {

// The console must outlive the command line.
void AddConvertCommand(CCommandLine& line, CConsole& console);
void AddGenerateCommand(CCommandLine& line, CConsole& console);  // stands in tools/generator
void AddInspectCommand(CCommandLine& line, CConsole& console);

// Runs the program with the commands that are added, and answers its exit code. Nothing is thrown;
// failures are told on the console, each with one line.
int RunProgram(int argc, const char* const* argv, CConsole& console,
               const std::function<void(CCommandLine&)>& addCommands);

}  // namespace qztool
