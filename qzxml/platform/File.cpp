#include "qzxml/platform/File.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>

namespace QzXmlLib16::detail {
namespace {

// The system takes at most about 2 GiB at once.
constexpr std::size_t kMostAtOnce = 1024 * 1024 * 1024;

class CPosixFile final : public IFile {
 public:
  explicit CPosixFile(int descriptor) : m_descriptor(descriptor) {}
  ~CPosixFile() override { close(m_descriptor); }

  int GetSize(std::uint64_t& size) override {
    struct stat status = {};
    if (fstat(m_descriptor, &status) != 0) return errno;
    if (!S_ISREG(status.st_mode)) return ESPIPE;
    size = static_cast<std::uint64_t>(status.st_size);
    return 0;
  }

  int Read(std::uint64_t offset, void* buffer, std::size_t wanted, std::size_t& done) override {
    for (done = 0; done < wanted;) {
      const ssize_t count =
          pread(m_descriptor, static_cast<char*>(buffer) + done,
                std::min(wanted - done, kMostAtOnce), static_cast<off_t>(offset + done));
      if (count == 0) break;
      if (count > 0) {
        done += static_cast<std::size_t>(count);
      } else if (errno != EINTR) {
        return errno;
      }
    }
    return 0;
  }

  void ReadAhead(std::uint64_t offset, std::size_t length) override {
    posix_fadvise(m_descriptor, static_cast<off_t>(offset), static_cast<off_t>(length),
                  POSIX_FADV_WILLNEED);
  }

 private:
  const int m_descriptor;
};

std::unique_ptr<IFile> OpenPosixFile(const char* path, FileMode mode, int& error) {
  if (mode != FileMode::Read) {
    error = EINVAL;
    return nullptr;
  }
  // O_NONBLOCK lets a fifo without a writer answer at once; regular files do not know it.
  const int descriptor = open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor < 0) {
    error = errno;
    return nullptr;
  }
  auto file = std::make_unique<CPosixFile>(descriptor);
  struct stat status = {};
  if (fstat(descriptor, &status) != 0) {
    error = errno;
    return nullptr;
  }
  if (S_ISDIR(status.st_mode)) {
    error = EISDIR;
    return nullptr;
  }
  posix_fadvise(descriptor, 0, 0, POSIX_FADV_SEQUENTIAL);
  error = 0;
  return file;
}

std::atomic<FileOpener> g_opener{&OpenPosixFile};

}  // namespace

IFile::~IFile() = default;

std::unique_ptr<IFile> OpenFile(const char* path, FileMode mode, int& error) {
  return g_opener.load(std::memory_order_acquire)(path, mode, error);
}

FileOpener SetFileOpener(FileOpener opener) {
  return g_opener.exchange(opener != nullptr ? opener : &OpenPosixFile);
}

}  // namespace QzXmlLib16::detail
