#pragma once

// The texts of the failures that files being written have in common, each with the error number of
// the system. The first begins with the path.
namespace QzXmlLib16::Messages {

inline constexpr char kFileNotWritten[] = "Failed to write data to the file [%s] error [0x%08X]";
inline constexpr char kChunkNotWritten[] = "Failed to write data to the file. Error [0x%08X]";

}  // namespace QzXmlLib16::Messages
