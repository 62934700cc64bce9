#include "tools/qzxml/System.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <istream>
#include <ostream>
#include <string_view>
#include <system_error>
#include <vector>

#include "tools/qzxml/Failure.h"

namespace qztool {
namespace {

constexpr std::uint64_t kMaxSize = UINT32_MAX;
constexpr std::size_t kStep = std::size_t{1} << 18;
constexpr int kMaxLinks = 40;  // as the system has it

[[noreturn]] void FailReading(const std::string& name, int error) {
  throw CFailure(ExitCode_File,
                 name + ": can not be read: " + std::generic_category().message(error));
}

[[noreturn]] void FailWriting(const std::string& name, int error) {
  throw CFailure(ExitCode_File,
                 name + ": can not be written: " + std::generic_category().message(error));
}

void CheckSize(const std::string& name, std::uint64_t size) {
  if (size <= kMaxSize) return;
  throw CFailure(ExitCode_File, name + ": files of 4 GiB or more are not supported");
}

// A file descriptor, closed at the latest by the destructor.
class CDescriptor {
 public:
  explicit CDescriptor(int descriptor) : m_descriptor(descriptor) {}
  CDescriptor(const CDescriptor&) = delete;
  CDescriptor& operator=(const CDescriptor&) = delete;
  ~CDescriptor() { Close(); }
  int Get() const { return m_descriptor; }
  int Close() {
    const int descriptor = m_descriptor;
    m_descriptor = -1;
    return descriptor >= 0 ? close(descriptor) : 0;
  }

 private:
  int m_descriptor;
};

std::string ReadStream(std::istream& stream) {
  std::string octets;
  std::vector<char> step(kStep);
  errno = 0;
  while (stream.read(step.data(), static_cast<std::streamsize>(step.size())) ||
         stream.gcount() > 0) {
    octets.append(step.data(), static_cast<std::size_t>(stream.gcount()));
    CheckSize("-", octets.size());
  }
  if (stream.bad()) FailReading("-", errno != 0 ? errno : EIO);
  return octets;
}

// An error number, or 0.
int WriteAll(int descriptor, const std::string& octets) {
  std::size_t done = 0;
  while (done < octets.size()) {
    const ssize_t count =
        write(descriptor, octets.data() + done, std::min(kStep, octets.size() - done));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return errno;
    done += static_cast<std::size_t>(count);
  }
  return 0;
}

// ---- The file beside the one that is to be written ----

// Its name while it is there, for the handler of signals.
std::array<char, PATH_MAX> s_besideName;
std::atomic<bool> s_isBesideThere{false};

extern "C" void RemoveBesideAndDie(int signal) {
  if (s_isBesideThere.load()) unlink(s_besideName.data());
  raise(signal);  // at its default action, which SA_RESETHAND put back
}

void WatchSignals() {
  for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
    struct sigaction before = {};
    if (sigaction(signal, nullptr, &before) != 0 || before.sa_handler != SIG_DFL) continue;
    struct sigaction action = {};
    action.sa_handler = &RemoveBesideAndDie;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    sigaction(signal, &action, nullptr);
  }
}

// While one lives, the signals that are watched wait.
class CSignalsHeld {
 public:
  CSignalsHeld() {
    sigset_t held;
    sigemptyset(&held);
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) sigaddset(&held, signal);
    sigprocmask(SIG_BLOCK, &held, &m_before);
  }
  CSignalsHeld(const CSignalsHeld&) = delete;
  CSignalsHeld& operator=(const CSignalsHeld&) = delete;
  ~CSignalsHeld() { sigprocmask(SIG_SETMASK, &m_before, nullptr); }

 private:
  sigset_t m_before;
};

class CFileBeside {
 public:
  explicit CFileBeside(const std::string& target) : m_target(target) {
    m_name = target + ".XXXXXX";
    WatchSignals();
    const CSignalsHeld held;
    m_descriptor = mkstemp(m_name.data());
    if (m_descriptor < 0) {
      m_error = errno;
      return;
    }
    if (m_name.size() < s_besideName.size()) {
      std::memcpy(s_besideName.data(), m_name.c_str(), m_name.size() + 1);
      s_isBesideThere.store(true);
    }
  }
  CFileBeside(const CFileBeside&) = delete;
  CFileBeside& operator=(const CFileBeside&) = delete;
  ~CFileBeside() {
    if (m_descriptor >= 0) close(m_descriptor);
    if (m_error == 0 && !m_isTaken) unlink(m_name.c_str());
    s_isBesideThere.store(false);
  }

  // An error number, or 0: then the target has the octets.
  int Write(const std::string& octets, mode_t permissions) {
    if (m_descriptor < 0) return m_error;
    int error = WriteAll(m_descriptor, octets);
    if (error == 0 && fchmod(m_descriptor, permissions) != 0) error = errno;
    const int descriptor = m_descriptor;
    m_descriptor = -1;
    if (close(descriptor) != 0 && error == 0) error = errno;
    const CSignalsHeld held;
    if (error == 0 && rename(m_name.c_str(), m_target.c_str()) != 0) error = errno;
    m_isTaken = error == 0;
    s_isBesideThere.store(!m_isTaken);
    return error;
  }

 private:
  std::string m_target;
  std::string m_name;
  int m_descriptor = -1;
  int m_error = 0;         // of making it
  bool m_isTaken = false;  // it has the name of the target now
};

// The permissions that a new file gets.
mode_t GetNewPermissions() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

// Where a name leads to when it is a link, so that the link stays; also to a file that is not
// there.
std::string FollowLinks(const std::string& name) {
  std::filesystem::path path(name);
  std::error_code ignored;
  for (int links = 0; std::filesystem::is_symlink(path, ignored); ++links) {
    if (links == kMaxLinks) FailWriting(name, ELOOP);
    const std::filesystem::path target = std::filesystem::read_symlink(path, ignored);
    path = path.parent_path() / target;  // the target alone where that is absolute
  }
  return path.string();
}

// The descriptor that a name of the system's stands for, or -1. Opening such a name would begin at
// the front of a file, where something may stand already.
int FindDescriptor(const std::string& name) {
  if (name == "/dev/stdout") return STDOUT_FILENO;
  if (name == "/dev/stderr") return STDERR_FILENO;
  for (const std::string_view folder : {"/dev/fd/", "/proc/self/fd/"}) {
    if (name.compare(0, folder.size(), folder) != 0) continue;
    int descriptor = -1;
    const char* const end = name.data() + name.size();
    const auto read = std::from_chars(name.data() + folder.size(), end, descriptor);
    if (read.ec == std::errc() && read.ptr == end) return descriptor;
  }
  return -1;
}

int WriteInPlace(const std::string& name, const std::string& octets) {
  const int descriptor = FindDescriptor(name);
  CDescriptor file(descriptor >= 0 ? dup(descriptor) : open(name.c_str(), O_WRONLY | O_CLOEXEC));
  if (file.Get() < 0) return errno;
  const int error = WriteAll(file.Get(), octets);
  if (error != 0) return error;
  return file.Close() != 0 ? errno : 0;
}

}  // namespace

bool IsErrorATerminal() { return isatty(STDERR_FILENO) != 0; }

std::string ReadInput(const std::string& name, std::istream& standardInput) {
  if (name == "-") return ReadStream(standardInput);
  const CDescriptor file(open(name.c_str(), O_RDONLY | O_CLOEXEC));
  if (file.Get() < 0) FailReading(name, errno);
  std::string octets;
  struct stat status = {};
  if (fstat(file.Get(), &status) == 0 && S_ISREG(status.st_mode)) {
    CheckSize(name, static_cast<std::uint64_t>(status.st_size));
    octets.reserve(static_cast<std::size_t>(status.st_size));
  }
  std::vector<char> step(kStep);
  for (;;) {
    const ssize_t count = read(file.Get(), step.data(), step.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) FailReading(name, errno);
    if (count == 0) return octets;
    octets.append(step.data(), static_cast<std::size_t>(count));
    CheckSize(name, octets.size());
  }
}

void WriteOutput(const std::string& name, const std::string& octets, std::ostream& standardOutput) {
  if (name == "-") {
    standardOutput.write(octets.data(), static_cast<std::streamsize>(octets.size()));
    return FlushOutput(standardOutput);
  }
  struct stat status = {};
  const bool isThere = stat(name.c_str(), &status) == 0;
  if (isThere && S_ISDIR(status.st_mode)) FailWriting(name, EISDIR);
  int error = 0;
  if (FindDescriptor(name) >= 0 || (isThere && !S_ISREG(status.st_mode))) {
    error = WriteInPlace(name, octets);
  } else if (isThere && access(name.c_str(), W_OK) != 0) {
    error = errno;  // a file that may not be written is not replaced either
  } else {
    CFileBeside beside(FollowLinks(name));
    error = beside.Write(octets, isThere ? status.st_mode & 07777 : GetNewPermissions());
  }
  if (error != 0) FailWriting(name, error);
}

void FlushOutput(std::ostream& standardOutput) {
  standardOutput.flush();
  if (!standardOutput) FailWriting("-", errno != 0 ? errno : EIO);
}

}  // namespace qztool
