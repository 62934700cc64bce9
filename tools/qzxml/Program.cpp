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

}  // namespace

int RunProgram(int argc, const char* const* argv, CConsole& console,
               const std::function<void(CCommandLine&)>& addCommands) {
  try {
    CCommandLine line({"qzxml", "qzxml " QZXML_TOOL_VERSION, kDescription, kFooter});
    addCommands(line);
    line.Run(argc, argv, console.out);
    FlushOutput(console.out);
    return ExitCode_Done;
  } catch (const CUsageFailure& e) {
    console.err << e.GetCommand() << ": " << Printable(e.what()) << "\nTry '" << e.GetCommand()
                << " --help'.\n";
    return ExitCode_Usage;
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
