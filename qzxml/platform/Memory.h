#pragma once

#include <cstddef>

namespace QzXmlLib16::detail {

// Tells the system that a piece of fresh memory is going to be filled as a whole, so that it can be
// given in large pages: the system then works for one in 500. Changes nothing that could be seen;
// does nothing for less than kLargePiece, and where the system knows no such thing.
inline constexpr std::size_t kLargePiece = std::size_t{4} << 20;
void ExpectToFill(void* begin, std::size_t size);

}  // namespace QzXmlLib16::detail
