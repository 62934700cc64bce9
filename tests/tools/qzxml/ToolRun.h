#pragma once

#include <string>
#include <vector>

#include "tests/tools/qzxml/RunTool.h"

// What tests of the program share beside running it.
namespace qztest {

// Converts standard input to standard output; fails the test unless that ends with 0.
std::string ConvertText(const std::string& input, const std::vector<std::string>& options);

// A folder for files of a test, which goes with it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  std::string Path(const std::string& name) const { return m_path + '/' + name; }
  // Answers the path.
  std::string Write(const std::string& name, const std::string& content) const;
  std::string Read(const std::string& name) const;
  // The names of its files, in their order, with a blank in between.
  std::string List() const;

 private:
  std::string m_path;
};

// Octets from hexadecimal digits; blanks are skipped.
std::string FromHex(const std::string& digits);
// The other way, without blanks.
std::string ToHex(const std::string& octets);

}  // namespace qztest
