#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <string>
#include <thread>

#include "qzxml/platform/File.h"
#include "tests/support/Documents.h"
#include "tests/support/FileLimits.h"

namespace QzXmlLib16::detail {
namespace {

std::unique_ptr<IFile> Open(const std::string& path, int& error) {
  return OpenFile(path.c_str(), FileMode::Read, error);
}

TEST(File, ReadsAtAnyPlaceAndStopsAtItsEnd) {
  const std::string content = std::string(100000, 'a') + std::string(1, '\0') + "end";
  const qztest::TemporaryFile file(content);
  int error = -1;
  const std::unique_ptr<IFile> input = Open(file.path(), error);
  ASSERT_NE(nullptr, input);
  EXPECT_EQ(0, error);

  std::uint64_t size = 0;
  EXPECT_EQ(0, input->GetSize(size));
  EXPECT_EQ(content.size(), size);

  std::string read(60000, '?');
  std::size_t done = 0;
  EXPECT_EQ(0, input->Read(0, read.data(), read.size(), done));
  ASSERT_EQ(60000U, done);
  input->ReadAhead(60000, 40004);
  std::string rest(60000, '?');
  EXPECT_EQ(0, input->Read(60000, rest.data(), rest.size(), done));
  EXPECT_EQ(40004U, done);
  EXPECT_EQ(content, read + rest.substr(0, done));
  EXPECT_EQ(0, input->Read(100004, rest.data(), rest.size(), done));
  EXPECT_EQ(0U, done);
  EXPECT_EQ(0, input->Read(100001, rest.data(), 2, done));
  EXPECT_EQ("en", rest.substr(0, done));
}

TEST(File, TellsTheErrorOfTheSystem) {
  const qztest::TemporaryFile file("");
  int error = 0;
  EXPECT_EQ(nullptr, Open(file.path() + "/none", error));
  EXPECT_EQ(ENOTDIR, error);
  EXPECT_EQ(nullptr, Open(file.path() + ".none", error));
  EXPECT_EQ(ENOENT, error);
  EXPECT_EQ(nullptr, Open("/", error));
  EXPECT_EQ(EISDIR, error);
}

TEST(File, AFifoNobodyWritesToIsNotWaitedForAndHasNoSize) {
  const qztest::TemporaryFile file("");
  const std::string path = file.path() + ".fifo";
  ASSERT_EQ(0, mkfifo(path.c_str(), 0600));
  int error = -1;
  const std::unique_ptr<IFile> input = Open(path, error);
  ASSERT_NE(nullptr, input);
  std::uint64_t size = 1;
  EXPECT_EQ(ESPIPE, input->GetSize(size));
  char byte = 0;
  std::size_t done = 1;
  EXPECT_EQ(ESPIPE, input->Read(0, &byte, 1, done));
  EXPECT_EQ(0U, done);
}

TEST(File, AnOpenerStandsInForTheSystemUntilItIsTakenAway) {
  const FileOpener system =
      SetFileOpener([](const char*, FileMode, int& error) -> std::unique_ptr<IFile> {
        error = EIO;
        return nullptr;
      });
  const qztest::TemporaryFile file("content");
  int error = 0;
  EXPECT_EQ(nullptr, Open(file.path(), error));
  EXPECT_EQ(EIO, error);
  EXPECT_NE(system, SetFileOpener(nullptr));
  EXPECT_NE(nullptr, Open(file.path(), error));
  EXPECT_EQ(0, error);
  EXPECT_EQ(system, SetFileOpener(nullptr));
}

// --- Writing

TEST(OutputFile, WritesOneBehindTheOtherAndReplacesWhatWasThere) {
  const qztest::TemporaryFile file("what was there before, and longer");
  int error = -1;
  const std::unique_ptr<IOutputFile> output = CreateOutputFile(file.path().c_str(), error);
  ASSERT_NE(nullptr, output);
  EXPECT_EQ(0, error);
  EXPECT_EQ("", qztest::ReadWholeFile(file.path()));
  EXPECT_EQ(0, output->Write("one\0", 4));
  EXPECT_EQ(0, output->Write(nullptr, 0));
  EXPECT_EQ(0, output->Write("two", 3));
  EXPECT_EQ(0, output->Close());
  EXPECT_EQ(std::string("one\0two", 7), qztest::ReadWholeFile(file.path()));
}

TEST(OutputFile, AFileThatIsOpenElsewhereIsReplacedAllTheSame) {
  const qztest::TemporaryFile file("old");
  int error = -1;
  const auto first = CreateOutputFile(file.path().c_str(), error);
  ASSERT_NE(nullptr, first);
  EXPECT_NE(nullptr, CreateOutputFile(file.path().c_str(), error));
  EXPECT_EQ(0, error);
}

TEST(OutputFile, AnswersTheErrorOfTheSystem) {
  const qztest::TemporaryFile file("");
  const std::string fifo = file.path() + ".fifo";
  ASSERT_EQ(0, mkfifo(fifo.c_str(), 0600));
  const struct {
    std::string path;
    int error;
  } cases[] = {
      {"/no/such/folder/file", ENOENT},  {"", ENOENT},  {"/tmp", EISDIR},
      {file.path() + "/below", ENOTDIR}, {fifo, ENXIO},
  };
  const int before = qztest::OpenDescriptors();
  for (const auto& c : cases) {
    int error = 0;
    EXPECT_EQ(nullptr, CreateOutputFile(c.path.c_str(), error)) << c.path;
    EXPECT_EQ(c.error, error) << c.path;
  }
  EXPECT_EQ(before, qztest::OpenDescriptors());
}

TEST(OutputFile, AFullDiskFailsWhereItIsWritten) {
  int error = -1;
  const auto full = CreateOutputFile("/dev/full", error);
  ASSERT_NE(nullptr, full);
  EXPECT_EQ(ENOSPC, full->Write("x", 1));
}

TEST(OutputFile, WhatFitsIsWrittenAndTheRestFails) {
  const qztest::TemporaryFile file("");
  int error = -1;
  const auto output = CreateOutputFile(file.path().c_str(), error);
  ASSERT_NE(nullptr, output);
  const qztest::FileSizeLimit limit(10);
  EXPECT_EQ(EFBIG, output->Write("0123456789ABC", 13));
  EXPECT_EQ("0123456789", qztest::ReadWholeFile(file.path()));
}

TEST(OutputFile, WritesIntoAFifoThatHasAReader) {
  const qztest::TemporaryFile file("");
  const std::string fifo = file.path() + ".fifo";
  ASSERT_EQ(0, mkfifo(fifo.c_str(), 0600));
  std::string read;
  std::thread reader([&] { read = qztest::ReadWholeFile(fifo); });
  std::unique_ptr<IOutputFile> output;
  for (int error = ENXIO; output == nullptr && error == ENXIO;) {
    output = CreateOutputFile(fifo.c_str(), error);
    std::this_thread::yield();
  }
  ASSERT_NE(nullptr, output);
  const std::string content(300000, 'x');  // more than a fifo holds, so that the writer waits
  EXPECT_EQ(0, output->Write(content.data(), content.size()));
  EXPECT_EQ(0, output->Close());
  reader.join();
  EXPECT_EQ(content, read);
}

// An end of a fifo that is open for reading, until Close.
class CFifoReader {
 public:
  explicit CFifoReader(const std::string& path)
      : m_descriptor(open(path.c_str(), O_RDONLY | O_NONBLOCK)) {}
  ~CFifoReader() { Close(); }
  CFifoReader(const CFifoReader&) = delete;
  CFifoReader& operator=(const CFifoReader&) = delete;
  void Close() {
    if (m_descriptor >= 0) close(m_descriptor);
    m_descriptor = -1;
  }

 private:
  int m_descriptor;
};

bool IsPipeSignalDue() {
  sigset_t due;
  sigpending(&due);
  return sigismember(&due, SIGPIPE) == 1;
}

TEST(OutputFile, AFifoWhoseReaderGoesFailsWithoutASignal) {
  const qztest::TemporaryFile file("");
  const std::string fifo = file.path() + ".fifo";
  ASSERT_EQ(0, mkfifo(fifo.c_str(), 0600));
  CFifoReader reader(fifo);
  int error = -1;
  const auto output = CreateOutputFile(fifo.c_str(), error);
  ASSERT_NE(nullptr, output);
  EXPECT_EQ(0, output->Write("one", 3));
  reader.Close();
  EXPECT_EQ(EPIPE, output->Write("two", 3));  // SIGPIPE would end this process
  EXPECT_EQ(EPIPE, output->Write("three", 5));
  EXPECT_FALSE(IsPipeSignalDue());
}

TEST(OutputFile, ASignalOfAPipeThatWasDueStaysDue) {
  const qztest::TemporaryFile file("");
  const std::string fifo = file.path() + ".fifo";
  ASSERT_EQ(0, mkfifo(fifo.c_str(), 0600));
  CFifoReader reader(fifo);
  int error = -1;
  const auto output = CreateOutputFile(fifo.c_str(), error);
  ASSERT_NE(nullptr, output);
  reader.Close();
  sigset_t pipe;
  sigemptyset(&pipe);
  sigaddset(&pipe, SIGPIPE);
  pthread_sigmask(SIG_BLOCK, &pipe, nullptr);
  pthread_kill(pthread_self(), SIGPIPE);
  EXPECT_EQ(EPIPE, output->Write("x", 1));
  EXPECT_TRUE(IsPipeSignalDue());
  int taken = 0;
  sigwait(&pipe, &taken);
  pthread_sigmask(SIG_UNBLOCK, &pipe, nullptr);
}

}  // namespace
}  // namespace QzXmlLib16::detail
