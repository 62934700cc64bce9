#pragma once

#include "qzxml/json/JsonContext.h"
#include "tools/qzxml/Console.h"
#include "tools/qzxml/Content.h"
#include "tools/qzxml/Input.h"

namespace qztool {

// Tells what a document would lose in a format, and what was lost on reading it, each with its
// place, in document order. Layout is no content: white space alone between elements is not told
// of, unless xml:space preserves it. Neither are the kinds of JSON's values, whose texts are kept.
void TellLosses(const CContentDocument& document, DocumentFormat to,
                QzXmlLib16::JsonRoundTrip roundTrip, CNotices& notices);

}  // namespace qztool
