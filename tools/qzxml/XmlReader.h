#pragma once

#include <string>

#include "tools/qzxml/Content.h"
#include "tools/qzxml/Progress.h"

namespace qztool {

// Reads XML in UTF-8 into an empty document, whole: CXmlDocument, made for objects, leaves out what
// stands between the elements. External entities are not read, but told of as losses. Throws
// CDocumentFailure with Expat's text and the place, "%s at line %d, column %d".
void ReadXml(const std::string& text, CContentDocument& document, CProgress& progress);

}  // namespace qztool
