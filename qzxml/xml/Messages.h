#pragma once

// The texts of failures that more than one place in xml/ raises.
namespace QzXmlLib16::Messages {

inline constexpr char kElementNotClosed[] = "An Element has not been closed.";
inline constexpr char kAttributeAfterContent[] = "Attributes must be added before elements";
inline constexpr char kInvalidEolType[] = "Invalid EOL type.";

// Nothing to read from: a document, or the place where one was expected, has no element.
inline constexpr char kEmptyDocument[] = "Invalid or empty XML document";

inline constexpr char kLoadFromCallback[] =
    "A document can not be loaded from its element callback.";

// Of files that are read, each with the error number of the system. The first three begin with the
// path.
inline constexpr char kFileNotOpened[] = "Failed to open the file [%s] Error [0x%08x]";
inline constexpr char kFileSizeUnknown[] = "Failed to get the size of the file [%s] Error [0x%08x]";
inline constexpr char kFileNotRead[] =
    "Failed to read the contents of the file [%s] Error [0x%08x]";
inline constexpr char kChunkNotRead[] = "Failed to read the contents of the file. Error [0x%08x]";

}  // namespace QzXmlLib16::Messages
