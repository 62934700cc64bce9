#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "qzxml/values/BinaryData.h"

namespace qztest {

inline QzXmlLib16::CBinaryData Bytes(const std::string& text) {
  return QzXmlLib16::CBinaryData(reinterpret_cast<const unsigned char*>(text.data()),
                                 static_cast<std::uint32_t>(text.size()));
}

// A file that goes with its variable.
class CTemporaryFile {
 public:
  explicit CTemporaryFile(const QzXmlLib16::CBinaryData& content)
      : m_path((std::filesystem::temp_directory_path() /
                ("qzxml-json-" + std::to_string(reinterpret_cast<std::uintptr_t>(this)) + "-" +
                 ::testing::UnitTest::GetInstance()->current_test_info()->name()))
                   .string()) {
    std::ofstream(m_path, std::ios::binary)
        .write(reinterpret_cast<const char*>(content.GetData()), content.GetLength());
  }
  ~CTemporaryFile() { std::remove(m_path.c_str()); }
  CTemporaryFile(const CTemporaryFile&) = delete;
  CTemporaryFile& operator=(const CTemporaryFile&) = delete;
  const char* path() const { return m_path.c_str(); }

 private:
  std::string m_path;
};

}  // namespace qztest
