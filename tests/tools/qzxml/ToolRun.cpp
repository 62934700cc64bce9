#include "tests/tools/qzxml/ToolRun.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "tests/support/Documents.h"

namespace qztest {

std::string ConvertText(const std::string& input, const std::vector<std::string>& options) {
  std::vector<std::string> arguments = {"convert", "-", "-"};
  arguments.insert(arguments.end(), options.begin(), options.end());
  const ToolResult result = RunTool(arguments, input);
  EXPECT_EQ(0, result.code) << result.err << input;
  return result.out;
}

TemporaryFolder::TemporaryFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "qzxml-tool-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
  m_path = pattern;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(m_path, ignored);
}

std::string TemporaryFolder::Write(const std::string& name, const std::string& content) const {
  std::ofstream file(Path(name), std::ios::binary);
  file << content;
  if (!file.flush()) throw std::runtime_error("cannot write " + Path(name));
  return Path(name);
}

std::string TemporaryFolder::Read(const std::string& name) const {
  return ReadWholeFile(Path(name));
}

std::string TemporaryFolder::List() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(m_path)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  std::string list;
  for (const std::string& name : names) list += (list.empty() ? "" : " ") + name;
  return list;
}

std::string FromHex(const std::string& digits) {
  std::string octets;
  std::string pair;
  for (const char c : digits) {
    if (c == ' ') continue;
    pair += c;
    if (pair.size() < 2) continue;
    octets += static_cast<char>(std::stoi(pair, nullptr, 16));
    pair.clear();
  }
  return octets;
}

std::string ToHex(const std::string& octets) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (const char c : octets) {
    text += kDigits[static_cast<unsigned char>(c) >> 4];
    text += kDigits[static_cast<unsigned char>(c) & 0x0F];
  }
  return text;
}

}  // namespace qztest
