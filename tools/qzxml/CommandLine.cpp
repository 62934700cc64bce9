#include "tools/qzxml/CommandLine.h"

#include <CLI/CLI.hpp>
#include <ostream>
#include <set>

namespace qztool {
namespace {

bool IsCode(const CLI::ParseError& error, CLI::ExitCodes code) {
  return error.get_exit_code() == static_cast<int>(code);
}

// What is wrong with the command line. CLI11 looks for what is missing first, which is no help
// where something is misspelt.
std::string GetMistake(const CLI::App& app, const CLI::ParseError& error) {
  const std::vector<std::string> unknown = app.remaining(true);
  if (unknown.empty() || !IsCode(error, CLI::ExitCodes::RequiredError)) return error.what();
  if (unknown[0].compare(0, 1, "-") == 0) return "there is no option '" + unknown[0] + '\'';
  return "there is no command '" + unknown[0] + '\'';
}

}  // namespace

// ---- options ----

COption& COption::Require() {
  m_option->required();
  return *this;
}

COption& COption::SetTypeName(const std::string& name) {
  m_option->type_name(name);
  return *this;
}

COption& COption::AddCheck(const Check& check) {
  m_option->check(check);
  return *this;
}

COption& COption::RequireRange(int first, int last) {
  m_option->check(CLI::Range(first, last));
  return *this;
}

COption& COption::TakeOneEachTime() {
  m_option->allow_extra_args(false);
  return *this;
}

// ---- commands ----

COption CCommand::AddOption(const std::string& name, std::string& value, const std::string& help) {
  return COption(m_command->add_option(name, value, help));
}

COption CCommand::AddOption(const std::string& name, std::int32_t& value, const std::string& help) {
  return COption(m_command->add_option(name, value, help));
}

COption CCommand::AddOption(const std::string& name, std::optional<int>& value,
                            const std::string& help) {
  return COption(m_command->add_option(name, value, help));
}

COption CCommand::AddOption(const std::string& name, std::vector<std::string>& values,
                            const std::string& help) {
  return COption(m_command->add_option(name, values, help));
}

COption CCommand::AddChoice(const std::string& name, std::initializer_list<const char*> texts,
                            const std::function<void(const std::string& text)>& take,
                            const std::string& help) {
  CLI::Option* const option = m_command->add_option_function(name, take, help);
  option->check(CLI::IsMember(texts));
  return COption(option);
}

COption CCommand::AddList(const std::string& name, const COption::Check& take,
                          const std::string& help) {
  const std::function<void(const std::vector<std::string>&)> takeAll =
      [name, take](const std::vector<std::string>& texts) {
        for (const std::string& text : texts) {
          const std::string failure = take(text);
          if (!failure.empty()) throw CLI::ValidationError(name, failure);
        }
      };
  return COption(m_command->add_option_function(name, takeAll, help));
}

void CCommand::AddFlag(const std::string& name, bool& value, const std::string& help) {
  m_command->add_flag(name, value, help);
}

void CCommand::SetFooter(const std::string& footer) { m_command->footer(footer); }

void CCommand::SetWork(const std::function<void()>& work) { m_command->callback(work); }

// ---- the command line ----

CCommandLine::CCommandLine(const CProgramTexts& texts)
    : m_name(texts.name), m_app(std::make_unique<CLI::App>(texts.description, texts.name)) {
  m_app->set_version_flag("--version", texts.version, "Print the version and end");
  m_app->set_help_flag("-h,--help", "Print this help and end");
  m_app->require_subcommand(1);
  m_app->footer(texts.footer);
}

CCommandLine::~CCommandLine() = default;

CCommand CCommandLine::AddCommand(const std::string& name, const std::string& help) {
  return CCommand(m_app->add_subcommand(name, help));
}

void CCommandLine::Run(int argc, const char* const* argv, std::ostream& out) {
  try {
    m_app->parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    if (IsCode(e, CLI::ExitCodes::Success)) {
      m_app->exit(e, out, out);
      return;
    }
    std::string command = m_name;
    for (const CLI::App* called : m_app->get_subcommands()) command += ' ' + called->get_name();
    throw CUsageFailure(command, GetMistake(*m_app, e));
  }
}

}  // namespace qztool
