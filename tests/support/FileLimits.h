#pragma once

#include <dirent.h>
#include <sys/resource.h>

#include <csignal>

namespace qztest {

// The descriptors that this process has open.
inline int OpenDescriptors() {
  DIR* const folder = opendir("/proc/self/fd");
  int count = 0;
  while (readdir(folder) != nullptr) ++count;
  closedir(folder);
  return count;
}

// While one lives, files of this process grow to `size` bytes and no further: a write behind that
// fails with EFBIG, as a full disk fails with ENOSPC.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t size) {
    m_handler = signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &m_before);
    rlimit limit = m_before;
    limit.rlim_cur = size;
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &m_before);
    signal(SIGXFSZ, m_handler);
  }

 private:
  rlimit m_before = {};
  void (*m_handler)(int) = nullptr;
};

}  // namespace qztest
