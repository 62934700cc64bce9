#include <CLI/CLI.hpp>
#include <exception>
#include <new>
#include <ostream>

#include "qzxml/runtime/QzException.h"
#include "tools/qzxml/Commands.h"
#include "tools/qzxml/Failure.h"
#include "tools/qzxml/System.h"

namespace qztool {
namespace {

constexpr char kDescription[] =
    "Looks at documents and converts them: XML, Fast Infoset and JSON, plain or compressed. "
    "Makes C++ classes of XML schemas.";
constexpr char kFooter[] =
    "Exit codes: 0 done; 1 a document is damaged, or can not be had in that format,\n"
    "or a schema is wrong; 2 the command line is wrong; 3 a file can not be read or\n"
    "written; 4 with --strict, the format would not keep everything.";

// What is wrong with the command line. CLI11 looks for what is missing first, which is no help
// where something is misspelt.
std::string GetMistake(const CLI::App& app, const CLI::ParseError& error) {
  const std::vector<std::string> unknown = app.remaining(true);
  if (unknown.empty() || error.get_exit_code() != static_cast<int>(CLI::ExitCodes::RequiredError)) {
    return error.what();
  }
  if (unknown[0].compare(0, 1, "-") == 0) return "there is no option '" + unknown[0] + '\'';
  return "there is no command '" + unknown[0] + '\'';
}

// Help and version are answers; anything else is a mistake in the command line.
int EndParsing(const CLI::App& app, const CLI::ParseError& error, CConsole& console) {
  if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
    const int code = app.exit(error, console.out, console.err);
    FlushOutput(console.out);
    return code;
  }
  std::string command = "qzxml";
  for (const CLI::App* called : app.get_subcommands()) command += ' ' + called->get_name();
  console.err << command << ": " << Printable(GetMistake(app, error)) << "\nTry '" << command
              << " --help'.\n";
  return ExitCode_Usage;
}

}  // namespace

int RunProgram(int argc, const char* const* argv, CConsole& console,
               const std::function<void(CLI::App&)>& addCommands) {
  try {
    CLI::App app(kDescription, "qzxml");
    app.set_version_flag("--version", "qzxml " QZXML_TOOL_VERSION, "Print the version and end");
    app.set_help_flag("-h,--help", "Print this help and end");
    app.require_subcommand(1);
    app.footer(kFooter);
    addCommands(app);
    try {
      app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
      return EndParsing(app, e, console);
    }
    FlushOutput(console.out);
    return ExitCode_Done;
  } catch (const CFailure& e) {
    console.err << Printable(e.what()) << '\n';
    return e.GetCode();
  } catch (const QzXmlLib16::CQzException& e) {
    console.err << "qzxml: " << e.GetFullMessage() << '\n';
  } catch (const std::bad_alloc&) {
    console.err << "qzxml: there is not enough memory\n";
  } catch (const std::exception& e) {
    console.err << "qzxml: " << e.what() << '\n';
  }
  return ExitCode_Document;
}

}  // namespace qztool
