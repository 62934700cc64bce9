#pragma once

#include <string>

namespace qztest {

// The whole of a file under tests/, by its path from there: "golden/order.xml". Throws
// std::runtime_error when it can not be read.
std::string ReadTestFile(const std::string& path);

// The whole of any file.
std::string ReadWholeFile(const std::string& path);

// A path for a file that the test writes, in a folder that the destructor removes with it.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& content);
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile();
  const std::string& path() const { return m_path; }

 private:
  std::string m_folder;
  std::string m_path;
};

}  // namespace qztest
