#include "qzxml/platform/File.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <utility>

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

// While one lives, a pipe whose reader has gone does not end the process: the write answers EPIPE,
// and its signal is taken back. One that was due before stays due.
class CNoPipeSignal {
 public:
  CNoPipeSignal() {
    sigemptyset(&m_pipe);
    sigaddset(&m_pipe, SIGPIPE);
    sigset_t due;
    sigemptyset(&due);
    sigpending(&due);
    m_bWasDue = sigismember(&due, SIGPIPE) == 1;
    pthread_sigmask(SIG_BLOCK, &m_pipe, &m_before);
  }
  CNoPipeSignal(const CNoPipeSignal&) = delete;
  CNoPipeSignal& operator=(const CNoPipeSignal&) = delete;
  ~CNoPipeSignal() {
    const timespec atOnce = {};
    while (!m_bWasDue && sigtimedwait(&m_pipe, nullptr, &atOnce) < 0 && errno == EINTR) {
    }
    pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
  }

 private:
  sigset_t m_pipe;
  sigset_t m_before;
  bool m_bWasDue;
};

class CPosixOutputFile final : public IOutputFile {
 public:
  CPosixOutputFile(int descriptor, bool isPipe) : m_descriptor(descriptor), m_bIsPipe(isPipe) {}
  ~CPosixOutputFile() override { Close(); }

  int Write(const void* data, std::size_t length) override {
    if (!m_bIsPipe) return WriteAll(data, length);
    const CNoPipeSignal quiet;
    return WriteAll(data, length);
  }

  int Close() override {
    if (m_descriptor < 0) return 0;
    const int descriptor = std::exchange(m_descriptor, -1);
    // An interrupted close has closed all the same.
    return close(descriptor) == 0 || errno == EINTR ? 0 : errno;
  }

 private:
  int WriteAll(const void* data, std::size_t length) const {
    for (const char* at = static_cast<const char*>(data); length > 0;) {
      const ssize_t count = write(m_descriptor, at, std::min(length, kMostAtOnce));
      if (count > 0) {
        at += count;
        length -= static_cast<std::size_t>(count);
      } else if (count == 0) {
        return EIO;  // a device that takes nothing and tells no reason
      } else if (errno != EINTR) {
        return errno;
      }
    }
    return 0;
  }

  int m_descriptor;  // below 0 when closed
  const bool m_bIsPipe;
};

constexpr mode_t kEverybodyMayReadAndWrite = 0666;  // less what the process's mask takes away

std::unique_ptr<IOutputFile> CreatePosixOutputFile(const char* path, int& error) {
  // O_NONBLOCK lets a fifo without a reader answer at once; then the writes are to wait again.
  const int descriptor =
      open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NONBLOCK, kEverybodyMayReadAndWrite);
  if (descriptor < 0) {
    error = errno;
    return nullptr;
  }
  struct stat status = {};
  const bool isPipe = fstat(descriptor, &status) == 0 && S_ISFIFO(status.st_mode);
  auto file = std::make_unique<CPosixOutputFile>(descriptor, isPipe);
  const int flags = fcntl(descriptor, F_GETFL);
  if (flags < 0 || fcntl(descriptor, F_SETFL, flags & ~O_NONBLOCK) != 0) {
    error = errno;
    return nullptr;
  }
  error = 0;
  return file;
}

std::atomic<FileOpener> g_opener{&OpenPosixFile};
std::atomic<OutputFileCreator> g_creator{&CreatePosixOutputFile};

}  // namespace

IFile::~IFile() = default;

IOutputFile::~IOutputFile() = default;

std::unique_ptr<IFile> OpenFile(const char* path, FileMode mode, int& error) {
  return g_opener.load(std::memory_order_acquire)(path, mode, error);
}

FileOpener SetFileOpener(FileOpener opener) {
  return g_opener.exchange(opener != nullptr ? opener : &OpenPosixFile);
}

std::unique_ptr<IOutputFile> CreateOutputFile(const char* path, int& error) {
  return g_creator.load(std::memory_order_acquire)(path, error);
}

OutputFileCreator SetOutputFileCreator(OutputFileCreator creator) {
  return g_creator.exchange(creator != nullptr ? creator : &CreatePosixOutputFile);
}

}  // namespace QzXmlLib16::detail
