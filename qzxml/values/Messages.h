#pragma once

// The texts of the values that more than one place throws. A text that is used once stands at its
// throw.
namespace QzXmlLib16 {
namespace Messages {

// CQzInvalidValueException, with the text and the kind.
inline constexpr char kNotConvertible[] = "The value [%s] can not be converted to a %s";

// CQzInvalidValueException, with the text and the kind. Meant: the wording stands for values too
// far below the range as well.
inline constexpr char kTooLarge[] = "The value [%s] is to large to fit in a %s";

// CQzException, with the number of the kind that the variant holds.
inline constexpr char kInvalidTypeToConvert[] = "Invalid Type %d to convert to string";

// CQzException.
inline constexpr char kBinaryDataTooLong[] = "Binary data can not hold more than 4294967295 bytes";

// CQzInvalidValueException.
inline constexpr char kDivisionByZero[] = "ERROR: Overflow in operator/.";

}  // namespace Messages
}  // namespace QzXmlLib16
