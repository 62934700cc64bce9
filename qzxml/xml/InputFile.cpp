#include "qzxml/xml/InputFile.h"

#include <cerrno>
#include <cstddef>
#include <limits>
#include <utility>

#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/xml/Messages.h"

namespace QzXmlLib16::detail {

std::unique_ptr<IFile> OpenForReading(const char* path) {
  int error = 0;
  auto file = OpenFile(path, FileMode::Read, error);
  if (file == nullptr) {
    throw CQzException(
        FormatString(Messages::kFileNotOpened, path, static_cast<unsigned int>(error)));
  }
  return file;
}

WholeFile ReadWholeFile(const char* path) {
  const auto file = OpenForReading(path);
  std::uint64_t size = 0;
  int error = file->GetSize(size);
  if (error == 0 && size > std::numeric_limits<std::uint32_t>::max()) error = EFBIG;
  if (error != 0) {
    throw CQzException(
        FormatString(Messages::kFileSizeUnknown, path, static_cast<unsigned int>(error)));
  }
  std::unique_ptr<unsigned char[]> octets(new unsigned char[size]);
  std::size_t done = 0;
  error = file->Read(0, octets.get(), static_cast<std::size_t>(size), done);
  if (error != 0 || done < size) {
    throw CQzException(
        FormatString(Messages::kFileNotRead, path, static_cast<unsigned int>(error)));
  }
  return {std::move(octets), static_cast<std::uint32_t>(size)};
}

}  // namespace QzXmlLib16::detail
