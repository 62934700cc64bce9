#pragma once

#include <string>
#include <vector>

// Runs the program qzxml as a function, on streams of memory: for tests and for fuzzers.
namespace qztest {

struct ToolResult {
  int code;
  std::string out;
  std::string err;
};

// The arguments behind the program's name; input is what stands on standard input.
ToolResult RunTool(const std::vector<std::string>& arguments, const std::string& input = "");

}  // namespace qztest
