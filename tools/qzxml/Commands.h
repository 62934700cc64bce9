#pragma once

#include <CLI/App.hpp>
#include <functional>

#include "tools/qzxml/Console.h"

// The commands of the program. Each adds itself to the program with its options and with the work
// that the program does when the command is the one that was called. The work throws CFailure; any
// other exception ends the program with ExitCode_Document and its text.
namespace qztool {

// The console must outlive the app.
void AddConvertCommand(CLI::App& app, CConsole& console);
void AddGenerateCommand(CLI::App& app, CConsole& console);  // stands in tools/generator
void AddInspectCommand(CLI::App& app, CConsole& console);

// Runs the program with the commands that are added, and answers its exit code. Nothing is thrown;
// failures are told on the console, each with one line.
int RunProgram(int argc, const char* const* argv, CConsole& console,
               const std::function<void(CLI::App&)>& addCommands);

}  // namespace qztool
