#pragma once

// Static objects of the library that the program's own static objects may use are built first of
// all and so destroyed last of all. QZXML_INIT_ORDER stands ahead of such a definition: a lower
// number is built earlier and destroyed later. Without it the order is that of linking, which is
// right for a shared library.
#if defined(__GNUC__)
#define QZXML_INIT_ORDER(number) __attribute__((init_priority(number)))
#else
#define QZXML_INIT_ORDER(number)
#endif

namespace QzXmlLib16::detail {

enum InitOrder : int {
  InitOrder_InstanceTracking = 150,  // its dump comes when the others are gone
  InitOrder_NumericRanges = 175,     // tables of facets may be static
  InitOrder_MetaDataLock = 200,      // a static object may make its tables on the spot
  InitOrder_DefaultContext = 250,
};

}  // namespace QzXmlLib16::detail
