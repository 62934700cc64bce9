#pragma once

#include <cstddef>

namespace QzXmlLib16::detail {

// Memory for the parser. It copies its input into one buffer, which is by far the largest thing
// that it asks for: for a large document that is memory that the heap would have mapped anew and
// given back with each. The pool maps it in large pages, and makes blocks of it when the parser has
// ended and the objects come. All else is the heap's. As malloc, realloc and free.
void* TakeParserMemory(std::size_t size) noexcept;
void* ResizeParserMemory(void* memory, std::size_t size) noexcept;
void GiveParserMemory(void* memory) noexcept;

}  // namespace QzXmlLib16::detail
