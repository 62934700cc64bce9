#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <iosfwd>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

// The command line of a program with commands: what each command takes, and the reading of it. It
// is done by CLI11, whose headers cost more to compile than everything else of the program; so
// CommandLine.cpp alone includes them. Texts of help and of mistakes that are not given here are
// those of CLI11.
namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace qztool {

// A command line that can not be taken. The text says what is wrong with it; it is not printable
// yet, as parts of it come from the command line.
class CUsageFailure : public std::runtime_error {
 public:
  CUsageFailure(const std::string& command, const std::string& message)
      : std::runtime_error(message), m_command(command) {}
  // The program and the command that was called, "qzxml convert", or the program alone.
  const std::string& GetCommand() const { return m_command; }

 private:
  std::string m_command;
};

// An option or an argument of a command. A handle, of value as long as its command line lives; each
// operation answers it again.
class COption {
 public:
  // Answers what is wrong with a text, or "".
  using Check = std::function<std::string(const std::string& text)>;

  explicit COption(CLI::Option* option) : m_option(option) {}

  COption& Require();
  // What help says that stands behind it; without this, the kind of its values.
  COption& SetTypeName(const std::string& name);
  COption& AddCheck(const Check& check);
  COption& RequireRange(int first, int last);
  // Of an option with a list: takes one value each time that it stands there.
  COption& TakeOneEachTime();

 private:
  CLI::Option* m_option;
};

// A command. A handle as well. A name with '-' in front is an option's, "-o,--output" has two, and
// any other is that of an argument by its place; help is what it does. What is filled has to
// outlive the command line, or belong to the work.
class CCommand {
 public:
  explicit CCommand(CLI::App* command) : m_command(command) {}

  COption AddOption(const std::string& name, std::string& value, const std::string& help);
  COption AddOption(const std::string& name, std::int32_t& value, const std::string& help);
  COption AddOption(const std::string& name, std::optional<int>& value, const std::string& help);
  COption AddOption(const std::string& name, std::vector<std::string>& values,
                    const std::string& help);
  // Takes one of some texts, which are literals.
  COption AddChoice(const std::string& name, std::initializer_list<const char*> texts,
                    const std::function<void(const std::string& text)>& take,
                    const std::string& help);
  // Takes each value of a list, and answers what is wrong with it, or "".
  COption AddList(const std::string& name, const COption::Check& take, const std::string& help);
  void AddFlag(const std::string& name, bool& value, const std::string& help);

  // What help says at its end.
  void SetFooter(const std::string& footer);
  // What is done when it is the command that was called.
  void SetWork(const std::function<void()>& work);

 private:
  CLI::App* m_command;
};

// What a program is called and what it says of itself.
struct CProgramTexts {
  const char* name;
  const char* version;  // all that --version prints
  const char* description;
  const char* footer;
};

// The command line of a program that takes exactly one command, and --help and --version.
class CCommandLine {
 public:
  explicit CCommandLine(const CProgramTexts& texts);
  CCommandLine(const CCommandLine&) = delete;
  CCommandLine& operator=(const CCommandLine&) = delete;
  ~CCommandLine();

  CCommand AddCommand(const std::string& name, const std::string& help);

  // Does the work of the command that is called, or prints help or version into out. Throws
  // CUsageFailure, ahead of any work, and whatever the work throws.
  void Run(int argc, const char* const* argv, std::ostream& out);

 private:
  std::string m_name;
  std::unique_ptr<CLI::App> m_app;
};

}  // namespace qztool
