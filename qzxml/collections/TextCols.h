#pragma once

#include <string>

#include "qzxml/collections/TypedCollection.h"
#include "qzxml/platform/Export.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/values/ItemType.h"

// The collections of texts, truth values and binary data. See TypedCollection.h for what they do,
// and CConversions for the texts that they read and write.
namespace QzXmlLib16 {

class QZXML_API CstringCol : public CTypedCollection<ItemType_string, std::string> {
 public:
  using CTypedCollection::CTypedCollection;
};

// In a vector of bits, whose iterators have proxies for values. No facet refuses any value.
class QZXML_API CbooleanCol : public CTypedCollection<ItemType_boolean, bool> {
 public:
  using CTypedCollection::CTypedCollection;
};

class QZXML_API ChexBinaryCol : public CTypedCollection<ItemType_hexBinary, CBinaryData> {
 public:
  using CTypedCollection::CTypedCollection;
};

class QZXML_API Cbase64BinaryCol : public CTypedCollection<ItemType_base64Binary, CBinaryData> {
 public:
  using CTypedCollection::CTypedCollection;
};

}  // namespace QzXmlLib16
