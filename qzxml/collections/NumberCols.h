#pragma once

#include <cstdint>

#include "qzxml/collections/TypedCollection.h"
#include "qzxml/platform/Export.h"
#include "qzxml/values/BigInteger.h"
#include "qzxml/values/Decimal.h"
#include "qzxml/values/ItemType.h"

// The collections of numbers. See TypedCollection.h for what they do, and CConversions for the
// texts that they read and write.
namespace QzXmlLib16 {

// --- Integers

class QZXML_API Ci1Col : public CTypedCollection<ItemType_i1, char> {
 public:
  using CTypedCollection::CTypedCollection;
};

class QZXML_API Ci2Col : public CTypedCollection<ItemType_i2, short> {
 public:
  using CTypedCollection::CTypedCollection;
};

class QZXML_API Ci4Col : public CTypedCollection<ItemType_i4, std::int32_t> {
 public:
  using CTypedCollection::CTypedCollection;
};

class QZXML_API Ci8Col : public CTypedCollection<ItemType_i8, std::int64_t> {
 public:
  using CTypedCollection::CTypedCollection;
};

class QZXML_API Cui1Col : public CTypedCollection<ItemType_ui1, unsigned char> {
 public:
  using CTypedCollection::CTypedCollection;
};

class QZXML_API Cui2Col : public CTypedCollection<ItemType_ui2, unsigned short> {
 public:
  using CTypedCollection::CTypedCollection;
};

class QZXML_API Cui4Col : public CTypedCollection<ItemType_ui4, std::uint32_t> {
 public:
  using CTypedCollection::CTypedCollection;
};

class QZXML_API Cui8Col : public CTypedCollection<ItemType_ui8, std::uint64_t> {
 public:
  using CTypedCollection::CTypedCollection;
};

// --- Reals. The format of the collection is a printf format for one double, as for
// CConversions::r8ToString.

class QZXML_API Cr4Col : public CTypedCollection<ItemType_r4, float> {
 public:
  using CTypedCollection::CTypedCollection;
};

class QZXML_API Cr8Col : public CTypedCollection<ItemType_r8, double> {
 public:
  using CTypedCollection::CTypedCollection;
};

// --- Numbers of any size. The format of the collection is the number of decimal places, as for
// CConversions::decimalToString; integers ignore it.

class QZXML_API CdecimalCol : public CTypedCollection<ItemType_decimal, CDecimal> {
 public:
  using CTypedCollection::CTypedCollection;
};

class QZXML_API CintegerCol : public CTypedCollection<ItemType_integer, CBigInteger> {
 public:
  using CTypedCollection::CTypedCollection;
};

}  // namespace QzXmlLib16
