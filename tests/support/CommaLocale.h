#pragma once

#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace qztest {

// While one lives, the process runs in a locale whose decimal separator is a comma, made for this
// time with localedef. Ask Works() first: where that program is not to be had, a test skips. One
// inside another changes nothing.
class CommaLocale {
 public:
  CommaLocale() : m_inner(Works()) {
    if (m_inner) return;
    namespace fs = std::filesystem;
    const fs::path folder =
        fs::temp_directory_path() / ("qzxml-locale-" + std::to_string(getpid()));
    fs::create_directories(folder);
    std::ofstream(folder / "source") << "LC_NUMERIC\ndecimal_point \",\"\nthousands_sep \".\"\n"
                                        "grouping 3;3\nEND LC_NUMERIC\n";
    // It warns of the categories that the source does not have.
    const std::string command = "cd '" + folder.string() +
                                "' && localedef -c -i source -f ANSI_X3.4-1968 ./comma"
                                " >/dev/null 2>&1";
    m_status = std::system(command.c_str());
    setenv("LOCPATH", folder.c_str(), 1);
    std::setlocale(LC_ALL, "comma");
    unsetenv("LOCPATH");
    std::error_code ignored;
    fs::remove_all(folder, ignored);
  }

  ~CommaLocale() {
    if (!m_inner) std::setlocale(LC_ALL, "C");
  }

  CommaLocale(const CommaLocale&) = delete;
  CommaLocale& operator=(const CommaLocale&) = delete;

  bool Works() const { return std::localeconv()->decimal_point == std::string(","); }
  int GetStatus() const { return m_status; }  // what localedef ended with

 private:
  const bool m_inner;
  int m_status = 0;
};

}  // namespace qztest
