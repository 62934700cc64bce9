#pragma once

#include <memory>
#include <string>

#include "qzxml/platform/File.h"

namespace qztest {

// While one lives, every file that is made takes what is written into `content`, fails the write
// with that number (1 is the first) and the closing as told, and counts how many are open.
class FailingFile {
 public:
  FailingFile() {
    s_current = this;
    m_before = QzXmlLib16::detail::SetOutputFileCreator(&Create);
  }
  FailingFile(const FailingFile&) = delete;
  FailingFile& operator=(const FailingFile&) = delete;
  ~FailingFile() {
    QzXmlLib16::detail::SetOutputFileCreator(m_before);
    s_current = nullptr;
  }

  int failingWrite = 0;  // none
  int writeError = 0;
  int closeError = 0;

  std::string content;
  int writes = 0;
  int open = 0;

 private:
  class File : public QzXmlLib16::detail::IOutputFile {
   public:
    explicit File(FailingFile& test) : m_test(test) { ++m_test.open; }
    ~File() override { --m_test.open; }
    int Write(const void* data, std::size_t length) override {
      if (++m_test.writes == m_test.failingWrite) return m_test.writeError;
      m_test.content.append(static_cast<const char*>(data), length);
      return 0;
    }
    int Close() override { return m_test.closeError; }

   private:
    FailingFile& m_test;
  };

  static std::unique_ptr<QzXmlLib16::detail::IOutputFile> Create(const char*, int& error) {
    error = 0;
    return std::make_unique<File>(*s_current);
  }

  static inline FailingFile* s_current = nullptr;
  QzXmlLib16::detail::OutputFileCreator m_before;
};

}  // namespace qztest
