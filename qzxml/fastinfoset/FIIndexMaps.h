#pragma once

#include "qzxml/fastinfoset/FITextIndexes.h"

namespace QzXmlLib16::detail {

// The tables for writing: the index of each name and value. A plain value; a copy is deep.
struct CFIIndexMaps {
  // Behind this no text has an index. Names, most of which the next document has too, stay.
  void Clear() {
    attributeValues.Clear();
    characterChunks.Clear();
    attributeNames.Forget();
    elementNames.Forget();
    localNames.Forget();
    namespaceNames.Forget();
    prefixNames.Forget();
  }

  CFITextIndexes attributeNames;
  CFITextIndexes attributeValues;
  CFITextIndexes elementNames;
  CFITextIndexes characterChunks;
  CFITextIndexes localNames;
  CFITextIndexes namespaceNames;
  CFITextIndexes prefixNames;
};

}  // namespace QzXmlLib16::detail
