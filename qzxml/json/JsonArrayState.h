#pragma once

#include <cstdint>

namespace QzXmlLib16 {

// How far the array of an element's collection is written: the states that a writer's context
// keeps, of which CXmlWriter::SetCollectionState sets Pending and Closing.
enum JsonArrayState : std::uint32_t {
  JsonArrayState_None = 0,     // no array in this element
  JsonArrayState_Pending = 1,  // items follow, and no bracket is written
  JsonArrayState_Open = 2,     // the bracket is written; items follow without a key
  JsonArrayState_Closing = 3,  // the bracket closes when the element ends
};

}  // namespace QzXmlLib16
