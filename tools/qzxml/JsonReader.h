#pragma once

#include <string>
#include <vector>

#include "qzxml/json/JsonContext.h"
#include "tools/qzxml/Content.h"
#include "tools/qzxml/Progress.h"

namespace qztool {

struct CJsonReading {
  QzXmlLib16::JsonRoundTrip roundTrip = QzXmlLib16::JsonRoundTrip_Full;
  std::string rootName;  // of an element around the whole; "" for none
};

// Reads JSON in UTF-8 into an empty document, by the mapping of the library:
//
//   {"r": {"@k": "1", "a": [{"#text": "x"}, 2], "b": null}}
//   <r k="1"><a>x</a><a>2</a><b/></r>
//
// A member is an element; of an array each item is, all of the array's name. Names that begin with
// "@" are attributes, with "@xmlns" declarations of namespaces, and "#text" is the text beside
// them; with JsonRoundTrip_None they are names like any other, and "" is the text. An array in an
// array, or as the whole, has no name for its items: they are elements "item". Throws
// CDocumentFailure.
void ReadJson(const std::string& text, const CJsonReading& options, CContentDocument& document,
              CProgress& progress);

}  // namespace qztool
