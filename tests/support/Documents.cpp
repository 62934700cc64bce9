#include "tests/support/Documents.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace qztest {

std::string ReadWholeFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("The file " + path + " can not be read");
  std::string content;
  char piece[65536];
  do {
    file.read(piece, sizeof(piece));
    content.append(piece, static_cast<std::size_t>(file.gcount()));
  } while (file);
  return content;
}

std::string ReadTestFile(const std::string& path) {
  return ReadWholeFile(std::string(QZXML_TEST_DIRECTORY) + "/" + path);
}

TemporaryFile::TemporaryFile(const std::string& content) {
  std::string folder = (std::filesystem::temp_directory_path() / "qzxml-test-XXXXXX").string();
  if (mkdtemp(folder.data()) == nullptr) throw std::runtime_error("No temporary folder");
  m_folder = folder;
  m_path = m_folder + "/file";
  std::ofstream file(m_path, std::ios::binary);
  file.write(content.data(), static_cast<std::streamsize>(content.size()));
}

TemporaryFile::~TemporaryFile() {
  std::error_code ignored;
  std::filesystem::remove_all(m_folder, ignored);
}

}  // namespace qztest
