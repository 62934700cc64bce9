#pragma once

#include <cstdint>
#include <memory>

#include "qzxml/platform/File.h"

namespace QzXmlLib16::detail {

// Throws CQzException "Failed to open the file [%s] Error [0x%08x]".
std::unique_ptr<IFile> OpenForReading(const char* path);

// The octets of a file.
struct WholeFile {
  std::unique_ptr<unsigned char[]> octets;
  std::uint32_t length;
};

// Throws CQzException "Failed to open the file [%s] Error [0x%08x]", "Failed to get the size of the
// file [%s] Error [0x%08x]" (one of 4 GiB or more as well) and "Failed to read the contents of the
// file [%s] Error [0x%08x]".
WholeFile ReadWholeFile(const char* path);

}  // namespace QzXmlLib16::detail
