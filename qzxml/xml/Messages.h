#pragma once

// The texts of failures that more than one place in xml/ raises.
namespace QzXmlLib16::Messages {

inline constexpr char kElementNotClosed[] = "An Element has not been closed.";
inline constexpr char kAttributeAfterContent[] = "Attributes must be added before elements";
inline constexpr char kInvalidEolType[] = "Invalid EOL type.";

}  // namespace QzXmlLib16::Messages
