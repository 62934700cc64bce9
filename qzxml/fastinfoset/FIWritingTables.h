#pragma once

#include <memory>
#include <string>

#include "qzxml/fastinfoset/FIIndexMaps.h"
#include "qzxml/fastinfoset/FIKnownIntegers.h"
#include "qzxml/fastinfoset/FIPieces.h"
#include "qzxml/fastinfoset/FastInfosetWriter.h"
#include "qzxml/fastinfoset/FastInfosetWriterNames.h"

namespace QzXmlLib16::detail {

// What a Fast Infoset writer fills while it writes a document. To make all that anew costs a small
// document as much as to write it; so some wait, emptied, for the next one. Any thread may take and
// give; what is taken belongs to the taker.
struct CFIWritingTables {
  CFIIndexMaps maps;
  CFIKnownNames names;  // of one root
  CFIKnownIntegers integers;
  std::string key;  // room for that of a name in the maps
  CFIPieces pieces;
};

// Empty ones. Throws std::bad_alloc.
std::unique_ptr<CFIWritingTables, CFIGiveTables> TakeFIWritingTables();

}  // namespace QzXmlLib16::detail
