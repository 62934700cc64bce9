#pragma once

#include "qzxml/fastinfoset/FITextIndexes.h"

namespace QzXmlLib16::detail {

// The tables for writing: the index of each name and value. A plain value; a copy is deep.
struct CFIIndexMaps {
  void Clear() {
    attributeNames.Clear();
    attributeValues.Clear();
    elementNames.Clear();
    characterChunks.Clear();
    localNames.Clear();
    namespaceNames.Clear();
    prefixNames.Clear();
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
