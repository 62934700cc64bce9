#pragma once

#include <cstddef>

namespace QzXmlLib16::detail {

// Tells the system that a piece of fresh memory is going to be filled as a whole, so that it can be
// given in large pages: the system then works for one in 500. Changes nothing that could be seen;
// does nothing for less than kLargePiece, and where the system knows no such thing.
inline constexpr std::size_t kLargePiece = std::size_t{4} << 20;
void ExpectToFill(void* begin, std::size_t size);

// Memory straight from the system, which gets it back at once when it is unmapped: a number of
// pieces of kLargePage octets, one behind the other, each beginning at a multiple of its size. With
// willBeFilled each is one large page where the system has those; otherwise only what is used of it
// takes room. Pieces that were mapped together may be unmapped one by one.
// Throws std::bad_alloc.
inline constexpr std::size_t kLargePage = std::size_t{2} << 20;
void* MapLargePages(std::size_t count, bool willBeFilled);
void UnmapLargePage(void* page) noexcept;

// Tells the system that it may take a mapped piece away when it is short of memory. What the piece
// holds is lost; it is used as before.
void OfferLargePage(void* page) noexcept;

}  // namespace QzXmlLib16::detail
