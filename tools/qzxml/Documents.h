#pragma once

#include "tools/qzxml/Console.h"
#include "tools/qzxml/Content.h"
#include "tools/qzxml/Input.h"
#include "tools/qzxml/JsonReader.h"
#include "tools/qzxml/Progress.h"

namespace qztool {

// Reads what the input was recognised as into an empty document. Throws CFailure with
// ExitCode_Document and "file: path: message".
void ReadContent(const CInput& input, const CJsonReading& json, CContentDocument& document,
                 CProgress& progress);

}  // namespace qztool
