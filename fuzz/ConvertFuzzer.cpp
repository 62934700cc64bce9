// Any bytes on the standard input of qzxml: a conversion ends with 0 or 1, and with one line when
// it fails. What it writes is a document of that format, and going through the same format once
// more changes nothing. What qzxml inspect tells does not matter; it ends.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "tests/tools/qzxml/RunTool.h"

namespace {

using qztest::RunTool;
using qztest::ToolResult;

void Require(bool condition, const char* what, const ToolResult& result, const char* format) {
  if (condition) return;
  std::fprintf(stderr, "%s (%s): %d\n%s\n%s\n", what, format, result.code, result.err.c_str(),
               result.out.c_str());
  std::abort();
}

void Convert(const std::string& input, const char* format) {
  const ToolResult first = RunTool({"convert", "-", "-", "--to", format}, input);
  Require(first.code == 0 || first.code == 1, "no such end", first, format);
  if (first.code == 1) {
    Require(std::count(first.err.begin(), first.err.end(), '\n') == 1 && first.out.empty(),
            "not one line", first, format);
    return;
  }
  const ToolResult second = RunTool({"convert", "-", "-", "--strict", "--to", format}, first.out);
  // The order of text and elements in JSON, and an entity that is not known, are told again.
  Require(second.code == 0 || second.code == 4, "not read again", second, format);
  if (second.code == 0) Require(second.out == first.out, "not the same again", second, format);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  for (const char* format : {"xml", "fastinfoset", "json"}) Convert(input, format);
  const ToolResult told = RunTool({"inspect", "-", "--octets"}, input);
  Require(told.code == 0 || told.code == 1, "no such end", told, "inspect");
  return 0;
}
