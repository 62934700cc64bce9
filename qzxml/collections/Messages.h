#pragma once

// The texts that more than one collection throws, and those that are put together away from their
// throw. Any other text stands at its throw.
namespace QzXmlLib16 {
namespace Messages {

// CQzInvalidParamException, with the index and the count.
// Meant: the upper figure is the count itself, not the last index.
inline constexpr char kIndexNotInCollection[] = "Index %d is out of range, use 0 - %d";

// CQzInvalidParamException, for a place to insert at.
inline constexpr char kInsertionIndex[] = "Index out of range";

// CQzInvalidNamespaceException, with the namespace and the name of an element and the restriction.
inline constexpr char kRestrictionRefused[] =
    "The namespace %s in the class %s is invalid against restriction %s";

}  // namespace Messages
}  // namespace QzXmlLib16
