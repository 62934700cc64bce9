// The command line: help, version, and what is wrong with it.
#include <gtest/gtest.h>

#include "tests/tools/qzxml/ToolRun.h"

namespace {

using qztest::RunTool;
using qztest::ToolResult;

TEST(Usage, TellsTheVersion) {
  const ToolResult result = RunTool({"--version"});
  EXPECT_EQ(0, result.code);
  EXPECT_EQ("qzxml 16.0.0\n", result.out);
  EXPECT_EQ("", result.err);
}

TEST(Usage, HelpsWithEachCommandAndOption) {
  const struct {
    std::vector<std::string> arguments;
    std::vector<const char*> words;
  } cases[] = {
      {{"--help"}, {"convert", "inspect", "--version", "Exit codes: 0 done; 1 a document"}},
      {{"convert", "--help"},
       {"IN", "OUT", "--to", "--gzip", "--indent", "--round-trip", "--root", "--strict",
        "standard error"}},
      {{"inspect", "--help"}, {"FILE", "--octets"}},
  };
  for (const auto& c : cases) {
    const ToolResult result = RunTool(c.arguments);
    EXPECT_EQ(0, result.code);
    EXPECT_EQ("", result.err);
    for (const char* word : c.words) {
      EXPECT_NE(std::string::npos, result.out.find(word)) << word << '\n' << result.out;
    }
  }
}

// Texts that are not given are those of CLI11, which differ from one version to the next.
TEST(Usage, RefusesAWrongCommandLine) {
  const struct {
    std::vector<std::string> arguments;
    const char* message;
  } cases[] = {
      {{}, "qzxml: A subcommand is required\nTry 'qzxml --help'.\n"},
      {{"transmute"}, "qzxml: there is no command 'transmute'\nTry 'qzxml --help'.\n"},
      {{"-v"}, "qzxml: there is no option '-v'\nTry 'qzxml --help'.\n"},
      {{"a\n"}, "qzxml: there is no command 'a\\x0a'\nTry 'qzxml --help'.\n"},
      {{"inspect", "--octet"},
       "qzxml inspect: there is no option '--octet'\nTry 'qzxml inspect --help'.\n"},
      {{"convert"}, "qzxml convert: IN is required\nTry 'qzxml convert --help'.\n"},
      {{"convert", "a"}, "qzxml convert: OUT is required\nTry 'qzxml convert --help'.\n"},
      {{"convert", "a", "b", "c"}, nullptr},
      {{"convert", "a", "b", "--to", "yaml"}, nullptr},
      {{"convert", "a", "b", "--to"}, nullptr},
      {{"convert", "a", "b", "--indent", "-1"}, nullptr},
      {{"convert", "a", "b", "--indent", "17"}, nullptr},
      {{"convert", "a", "b", "--indent", "two"}, nullptr},
      {{"convert", "a", "b", "--round-trip", "some"}, nullptr},
      {{"convert", "a", "b", "--loose"}, nullptr},
      {{"convert", "a", "b", "--root", "p:r"},
       "qzxml convert: --root: \"p:r\" can not be the name of an element\n"
       "Try 'qzxml convert --help'.\n"},
      {{"convert", "a", "b", "--root", ""}, nullptr},
      {{"inspect"}, "qzxml inspect: FILE is required\nTry 'qzxml inspect --help'.\n"},
      {{"inspect", "a", "b"}, nullptr},
  };
  for (const auto& c : cases) {
    const ToolResult result = RunTool(c.arguments);
    EXPECT_EQ(2, result.code) << result.err;
    EXPECT_EQ("", result.out);
    if (c.message != nullptr) {
      EXPECT_EQ(c.message, result.err);
    }
    EXPECT_EQ(0U, result.err.rfind("qzxml", 0));
    EXPECT_NE(std::string::npos, result.err.find("--help'.\n")) << result.err;
  }
}

}  // namespace
