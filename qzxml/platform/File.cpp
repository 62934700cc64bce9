#include "qzxml/platform/File.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>

namespace QzXmlLib16::detail {

namespace {

class PosixInputFile : public IInputFile {
 public:
  explicit PosixInputFile(int descriptor) : m_descriptor(descriptor) {}
  PosixInputFile(const PosixInputFile&) = delete;
  PosixInputFile& operator=(const PosixInputFile&) = delete;
  ~PosixInputFile() override { close(m_descriptor); }

  int GetSize(std::uint64_t& size) override {
    struct stat status {};
    if (fstat(m_descriptor, &status) != 0) return errno;
    size = static_cast<std::uint64_t>(status.st_size);
    return 0;
  }

  int Read(void* data, std::size_t size, std::size_t& done) override {
    // Systems read no more than this at a time.
    constexpr std::size_t kMostAtOnce = 0x40000000;
    done = 0;
    while (done < size) {
      const ssize_t came =
          read(m_descriptor, static_cast<char*>(data) + done, std::min(size - done, kMostAtOnce));
      if (came < 0 && errno == EINTR) continue;
      if (came < 0) return errno;
      if (came == 0) break;
      done += static_cast<std::size_t>(came);
    }
    return 0;
  }

  void ReadAhead(std::uint64_t offset, std::size_t size) override {
#if defined(POSIX_FADV_WILLNEED)
    static_cast<void>(posix_fadvise(m_descriptor, static_cast<off_t>(offset),
                                    static_cast<off_t>(size), POSIX_FADV_WILLNEED));
#else
    static_cast<void>(offset);
    static_cast<void>(size);
#endif
  }

 private:
  int m_descriptor;
};

std::unique_ptr<IInputFile> OpenPosixInputFile(const char* path, int& error) {
  int descriptor = -1;
  do {
    descriptor = open(path, O_RDONLY | O_CLOEXEC);
  } while (descriptor < 0 && errno == EINTR);
  error = descriptor < 0 ? errno : 0;
  if (descriptor < 0) return nullptr;
  return std::make_unique<PosixInputFile>(descriptor);
}

std::atomic<InputFileOpener> g_opener{&OpenPosixInputFile};

}  // namespace

IInputFile::~IInputFile() = default;

std::unique_ptr<IInputFile> OpenInputFile(const char* path, int& error) {
  return g_opener.load()(path, error);
}

void SetInputFileOpener(InputFileOpener opener) {
  g_opener.store(opener != nullptr ? opener : &OpenPosixInputFile);
}

}  // namespace QzXmlLib16::detail
