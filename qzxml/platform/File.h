#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "qzxml/platform/Export.h"

namespace QzXmlLib16::detail {

// What a file is opened for.
enum class FileMode {
  Read,  // an existing regular file, read from begin to end
};

// An open file. Every operation answers 0, or the error number of the system (errno).
// The destructor closes it. One thread at a time. Tests put their own in place with SetFileOpener.
class QZXML_API IFile {
 public:
  IFile() = default;
  IFile(const IFile&) = delete;
  IFile& operator=(const IFile&) = delete;
  virtual ~IFile();

  virtual int GetSize(std::uint64_t& size) = 0;

  // Reads up to wanted octets at an offset. Fewer come only at the end of the file, and with an
  // error; done tells how many.
  virtual int Read(std::uint64_t offset, void* buffer, std::size_t wanted, std::size_t& done) = 0;

  // Starts reading a range in the background, so that a Read of it finds it there. A hint: a
  // failure shows in that Read.
  virtual void ReadAhead(std::uint64_t offset, std::size_t length) = 0;
};

// Opens a file; null and the error number when that fails. A folder fails with EISDIR. The call
// does not wait for anything, not even for the other end of a fifo.
QZXML_API std::unique_ptr<IFile> OpenFile(const char* path, FileMode mode, int& error);

// Puts another function in the place of OpenFile's own, for the whole process, and answers the one
// before; null stands for OpenFile's own. Not locked.
using FileOpener = std::unique_ptr<IFile> (*)(const char* path, FileMode mode, int& error);
QZXML_API FileOpener SetFileOpener(FileOpener opener);

// A file that is written from its begin. Both operations answer 0, or the error number of the
// system. The destructor closes it in silence. One thread at a time. The system's own write-back is
// at work behind what was written.
class QZXML_API IOutputFile {
 public:
  IOutputFile() = default;
  IOutputFile(const IOutputFile&) = delete;
  IOutputFile& operator=(const IOutputFile&) = delete;
  virtual ~IOutputFile();

  // All of it, behind what was written before. A pipe whose reader has gone fails with EPIPE, and
  // raises no signal.
  virtual int Write(const void* data, std::size_t length) = 0;

  // To be called once, last: what the system could not write shows here at the latest.
  virtual int Close() = 0;
};

// Makes a file, or empties the one that is there; null and the error number when that fails. A
// folder fails with EISDIR. The call does not wait: a fifo without a reader fails with ENXIO.
QZXML_API std::unique_ptr<IOutputFile> CreateOutputFile(const char* path, int& error);

// The same as SetFileOpener for CreateOutputFile.
using OutputFileCreator = std::unique_ptr<IOutputFile> (*)(const char* path, int& error);
QZXML_API OutputFileCreator SetOutputFileCreator(OutputFileCreator creator);

}  // namespace QzXmlLib16::detail
