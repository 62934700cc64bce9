// Any bytes on the standard input of qzxml: a conversion ends with 0 or 1, and with one line when
// it fails. What it writes is a document of that format, and going through the same format once
// more changes nothing. What qzxml inspect tells does not matter; it ends.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "tools/qzxml/Commands.h"

namespace {

struct Result {
  int code;
  std::string out;
  std::string err;
};

Result Run(const std::vector<const char*>& arguments, const std::string& input) {
  std::vector<const char*> argv = {"qzxml"};
  argv.insert(argv.end(), arguments.begin(), arguments.end());
  std::istringstream in(input);
  std::ostringstream out;
  std::ostringstream err;
  qztool::CConsole console{in, out, err};
  const int code = qztool::RunProgram(static_cast<int>(argv.size()), argv.data(), console,
                                      [&console](CLI::App& app) {
                                        qztool::AddConvertCommand(app, console);
                                        qztool::AddInspectCommand(app, console);
                                      });
  return {code, out.str(), err.str()};
}

void Require(bool condition, const char* what, const Result& result, const char* format) {
  if (condition) return;
  std::fprintf(stderr, "%s (%s): %d\n%s\n%s\n", what, format, result.code, result.err.c_str(),
               result.out.c_str());
  std::abort();
}

void Convert(const std::string& input, const char* format) {
  const Result first = Run({"convert", "-", "-", "--to", format}, input);
  Require(first.code == 0 || first.code == 1, "no such end", first, format);
  if (first.code == 1) {
    Require(std::count(first.err.begin(), first.err.end(), '\n') == 1 && first.out.empty(),
            "not one line", first, format);
    return;
  }
  const Result second = Run({"convert", "-", "-", "--strict", "--to", format}, first.out);
  // The order of text and elements in JSON, and an entity that is not known, are told again.
  Require(second.code == 0 || second.code == 4, "not read again", second, format);
  if (second.code == 0) Require(second.out == first.out, "not the same again", second, format);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  for (const char* format : {"xml", "fastinfoset", "json"}) Convert(input, format);
  const Result told = Run({"inspect", "-", "--octets"}, input);
  Require(told.code == 0 || told.code == 1, "no such end", told, "inspect");
  return 0;
}
