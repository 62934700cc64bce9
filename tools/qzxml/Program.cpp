#include <CLI/CLI.hpp>
#include <exception>
#include <new>
#include <ostream>

#include "qzxml/runtime/QzException.h"
#include "tools/qzxml/Commands.h"
#include "tools/qzxml/Failure.h"

namespace qztool {
namespace {

constexpr char kDescription[] =
    "Looks at documents and converts them: XML, Fast Infoset and JSON, plain or compressed. "
    "Makes C++ classes of XML schemas.";
constexpr char kFooter[] =
    "Exit codes: 0 done; 1 a document is damaged, or can not be had in that format,\n"
    "or a schema is wrong; 2 the command line is wrong; 3 a file can not be read or\n"
    "written; 4 with --strict, the format would not keep everything.";

// Help and version are answers; anything else is a mistake in the command line.
int EndParsing(const CLI::App& app, const CLI::ParseError& error, CConsole& console) {
  if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
    return app.exit(error, console.out, console.err);
  }
  std::string command = "qzxml";
  for (const CLI::App* called : app.get_subcommands()) command += ' ' + called->get_name();
  console.err << command << ": " << Printable(error.what()) << "\nTry '" << command
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
