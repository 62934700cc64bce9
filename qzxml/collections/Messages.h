#pragma once

// The texts that more than one collection throws. A text that is used once stands at its throw.
namespace QzXmlLib16 {
namespace Messages {

// CQzInvalidParamException, with the index and the count.
// Meant: the upper figure is the count itself, not the last index.
inline constexpr char kIndexNotInCollection[] = "Index %d is out of range, use 0 - %d";

// CQzInvalidParamException, for a place to insert at.
inline constexpr char kInsertionIndex[] = "Index out of range";

}  // namespace Messages
}  // namespace QzXmlLib16
