#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "qzxml/platform/Export.h"

// Reading of files. Failures are numbers of the operating system (errno), which the callers put
// into their messages; 0 is success.

namespace QzXmlLib16::detail {

// An open file, read from its beginning to its end; closed by the destructor.
class QZXML_API IInputFile {
 public:
  virtual ~IInputFile();

  virtual int GetSize(std::uint64_t& size) = 0;

  // Reads until `size` bytes are there or the file ends; `done` tells how many came.
  virtual int Read(void* data, std::size_t size, std::size_t& done) = 0;

  // Tells the system which bytes will be wanted next, so that it fetches them meanwhile. A hint.
  virtual void ReadAhead(std::uint64_t offset, std::size_t size) = 0;
};

// Opens a file of the system; null and the error when that fails.
QZXML_API std::unique_ptr<IInputFile> OpenInputFile(const char* path, int& error);

// What OpenInputFile asks instead of the system; null puts the system back. For tests, which let
// the nth read fail or come short.
using InputFileOpener = std::unique_ptr<IInputFile> (*)(const char* path, int& error);
QZXML_API void SetInputFileOpener(InputFileOpener opener);

}  // namespace QzXmlLib16::detail
