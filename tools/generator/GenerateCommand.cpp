#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <ostream>

#include "tools/generator/Generate.h"
#include "tools/generator/schema/XmlCatalog.h"
#include "tools/qzxml/Commands.h"
#include "tools/qzxml/Failure.h"
#include "tools/qzxml/Progress.h"
#include "tools/qzxml/System.h"

namespace qztool {
namespace {

using qzxml::generator::Diagnostic;
using qzxml::generator::GenerateOptions;
using qzxml::generator::GenerateResult;

bool IsIdentifier(const std::string& name) {
  const auto isLetter = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
  };
  return !name.empty() && isLetter(name[0]) && std::all_of(name.begin(), name.end(), [&](char c) {
    return isLetter(c) || (c >= '0' && c <= '9');
  });
}

// "" for a name that C++ takes as that of a namespace, "a" or "a::b".
std::string CheckNamespace(const std::string& name) {
  for (std::size_t at = 0;;) {
    const std::size_t colons = name.find("::", at);
    if (!IsIdentifier(name.substr(at, colons - at))) {
      return "'" + name + "' is no C++ namespace";
    }
    if (colons == name.npos) return "";
    at = colons + 2;
  }
}

// A URI may hold '=', a C++ namespace does not.
std::string TakeMap(const std::string& text, GenerateOptions& options) {
  const std::size_t equals = text.rfind('=');
  if (equals == text.npos) return "'" + text + "' is not URI=NAMESPACE";
  const std::string name = text.substr(equals + 1);
  if (const std::string failure = CheckNamespace(name); !failure.empty()) return failure;
  options.cppNamespaces[text.substr(0, equals)] = name;
  return "";
}

void Tell(const GenerateResult& result, CConsole& console) {
  for (Diagnostic diagnostic : result.diagnostics) {
    if (diagnostic.severity == qzxml::generator::Severity_Warning) {
      diagnostic.message = "warning: " + diagnostic.message;
    }
    console.err << Printable(diagnostic.ToString()) << '\n';
  }
}

// A pipe that was read already is not opened once more.
bool CanBeRead(const std::string& file) {
  std::error_code error;
  const bool isPlain = std::filesystem::is_regular_file(file, error);
  return isPlain ? std::ifstream(file).is_open() : qzxml::generator::IsFile(file);
}

// Of files that were given; what these name and cannot be read is a fault of theirs.
ExitCode CodeOfErrors(const GenerateOptions& options) {
  const auto areRead = [](const std::vector<std::string>& files) {
    return std::all_of(files.begin(), files.end(), CanBeRead);
  };
  return areRead(options.schemas) && areRead(options.catalogs) ? ExitCode_Document : ExitCode_File;
}

void RunGenerate(GenerateOptions options, CConsole& console) {
  GenerateResult result;
  try {
    CProgress progress(console.err, IsErrorATerminal());
    options.progress = [&progress](const std::string& work) {
      progress.Begin(work);
      progress.Tell(0, 0);
    };
    result = qzxml::generator::Generate(options);
  } catch (const qzxml::generator::COutputError& e) {
    throw CFailure(ExitCode_File, Printable(e.what()));
  }
  Tell(result, console);
  if (result.hasErrors) {
    throw CFailure(CodeOfErrors(options), options.schemas.front() + ": nothing was generated");
  }
  if (!options.isDry) return;
  for (const std::string& file : result.outputs) console.out << file << '\n';
}

}  // namespace

void AddGenerateCommand(CCommandLine& line, CConsole& console) {
  const auto options = std::make_shared<GenerateOptions>();
  CCommand command = line.AddCommand("generate", "Make C++ classes of XML schemas");
  command.AddOption("SCHEMA", options->schemas, "The schemas, XSD 1.0 files").Require();
  command
      .AddOption("-o,--output", options->output,
                 "The folder for the sources; programs include from it")
      .Require()
      .AddCheck(
          [](const std::string& folder) { return folder.empty() ? "no folder is named" : ""; })
      .SetTypeName("FOLDER");
  command
      .AddOption("-n,--namespace", options->cppNamespace,
                 "The C++ namespace for the target namespace of the schemas; without it one is "
                 "derived")
      .SetTypeName("NAME")
      .AddCheck(CheckNamespace);
  command
      .AddList(
          "--map", [options](const std::string& map) { return TakeMap(map, *options); },
          "The C++ namespace for another target namespace")
      .SetTypeName("URI=NAME")
      .TakeOneEachTime();
  command
      .AddOption("--catalog", options->catalogs,
                 "An XML catalog that says where imported schemas are; nothing is ever fetched "
                 "from the network")
      .SetTypeName("FILE")
      .TakeOneEachTime();
  command
      .AddOption("--depfile", options->depfile,
                 "Write the schemas that were read, for make and ninja")
      .SetTypeName("FILE");
  command
      .AddOption("--parts", options->parts,
                 "Make so many sources, NAME_1.cpp and so on, in the folder itself")
      .RequireRange(1, 10000)
      .SetTypeName("NUMBER");
  command.AddOption("--part-name", options->partStem, "The NAME of --parts (default: generated)")
      .AddCheck([](const std::string& name) {
        return IsIdentifier(name) ? "" : "'" + name + "' is no name of letters and digits";
      });
  command.AddFlag("--list", options->isDry,
                  "Only print the files, relative to the folder, one a line");
  command.SetWork([options, &console] { RunGenerate(*options, console); });
}

}  // namespace qztool
