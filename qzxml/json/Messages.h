#pragma once

// The texts of failures that more than one place in json/ raises. Those of the reader end with the
// line and the position of the byte that it took last.
namespace QzXmlLib16::Messages {

inline constexpr char kJsonTooLong[] = "A JSON text of 4 GiB or more is not supported.";

inline constexpr char kJsonUnclosedArray[] =
    "Unexpected End of File. Expected Array terminator character ']' at line %d, position %d.";
inline constexpr char kJsonUnclosedObject[] =
    "Unexpected End of File. Expected Object terminator character '}' at line %d, position %d.";
inline constexpr char kJsonUnclosedString[] =
    "Unexpected End of File. Expected string value at line %d, position %d.";
inline constexpr char kJsonUnendedNumber[] =
    "Unexpected End of File. Expected a number at line %d, position %d.";
// Meant: it stands for a digit that is missing behind the letter of an exponent as well, where the
// text has not ended.
inline constexpr char kJsonUnendedFraction[] =
    "Unexpected End of File. Expected a digit '0' to '9' at line %d, position %d.";
inline constexpr char kJsonNoDigit[] =
    "Expected a digit '0' to '9', found '%c' at line %d, position %d.";

}  // namespace QzXmlLib16::Messages
