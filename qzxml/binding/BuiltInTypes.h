#pragma once

#include <string_view>

#include "qzxml/binding/SimpleTypeInfo.h"
#include "qzxml/platform/Export.h"

// The built-in types of XML Schema as the members of generated classes name them: kXsdInt is
// xs:int. Each needs no initialisation and lives as long as the process.
//
// A kind of the library holds the values of most of them. Years, months and days without a date are
// texts, as their kinds know neither zones nor years before 1; so are the types derived from
// string, whose rules hold each value against the type.
// Source: XML Schema 1.0 part 2, second edition, section 3.
namespace QzXmlLib16 {

QZXML_API extern const CSimpleTypeInfo kXsdAnySimpleType;
QZXML_API extern const CSimpleTypeInfo kXsdString;
QZXML_API extern const CSimpleTypeInfo kXsdNormalizedString;
QZXML_API extern const CSimpleTypeInfo kXsdToken;
QZXML_API extern const CSimpleTypeInfo kXsdLanguage;
QZXML_API extern const CSimpleTypeInfo kXsdName;
QZXML_API extern const CSimpleTypeInfo kXsdNCName;
QZXML_API extern const CSimpleTypeInfo kXsdNMTOKEN;
QZXML_API extern const CSimpleTypeInfo kXsdNMTOKENS;
QZXML_API extern const CSimpleTypeInfo kXsdID;
QZXML_API extern const CSimpleTypeInfo kXsdIDREF;
QZXML_API extern const CSimpleTypeInfo kXsdIDREFS;
QZXML_API extern const CSimpleTypeInfo kXsdENTITY;
QZXML_API extern const CSimpleTypeInfo kXsdENTITIES;
QZXML_API extern const CSimpleTypeInfo kXsdQName;
QZXML_API extern const CSimpleTypeInfo kXsdNOTATION;
QZXML_API extern const CSimpleTypeInfo kXsdAnyURI;
QZXML_API extern const CSimpleTypeInfo kXsdBoolean;
QZXML_API extern const CSimpleTypeInfo kXsdDecimal;
QZXML_API extern const CSimpleTypeInfo kXsdInteger;
QZXML_API extern const CSimpleTypeInfo kXsdNonPositiveInteger;
QZXML_API extern const CSimpleTypeInfo kXsdNegativeInteger;
QZXML_API extern const CSimpleTypeInfo kXsdLong;
QZXML_API extern const CSimpleTypeInfo kXsdInt;
QZXML_API extern const CSimpleTypeInfo kXsdShort;
QZXML_API extern const CSimpleTypeInfo kXsdByte;
QZXML_API extern const CSimpleTypeInfo kXsdNonNegativeInteger;
QZXML_API extern const CSimpleTypeInfo kXsdUnsignedLong;
QZXML_API extern const CSimpleTypeInfo kXsdUnsignedInt;
QZXML_API extern const CSimpleTypeInfo kXsdUnsignedShort;
QZXML_API extern const CSimpleTypeInfo kXsdUnsignedByte;
QZXML_API extern const CSimpleTypeInfo kXsdPositiveInteger;
QZXML_API extern const CSimpleTypeInfo kXsdFloat;
QZXML_API extern const CSimpleTypeInfo kXsdDouble;
QZXML_API extern const CSimpleTypeInfo kXsdDuration;
QZXML_API extern const CSimpleTypeInfo kXsdDateTime;
QZXML_API extern const CSimpleTypeInfo kXsdTime;
QZXML_API extern const CSimpleTypeInfo kXsdDate;
QZXML_API extern const CSimpleTypeInfo kXsdGYearMonth;
QZXML_API extern const CSimpleTypeInfo kXsdGYear;
QZXML_API extern const CSimpleTypeInfo kXsdGMonthDay;
QZXML_API extern const CSimpleTypeInfo kXsdGDay;
QZXML_API extern const CSimpleTypeInfo kXsdGMonth;
QZXML_API extern const CSimpleTypeInfo kXsdHexBinary;
QZXML_API extern const CSimpleTypeInfo kXsdBase64Binary;

namespace detail {

// The built-in type that a name stands for; null for any other.
const CSimpleTypeInfo* FindBuiltInType(std::string_view namespaceUri, std::string_view localName);

// Whether a built-in type is base or derived from it. False where base is none of them.
// Source: XML Schema 1.0 part 2, second edition, section 3.
bool IsBuiltInDerived(const CSimpleTypeInfo& builtIn, const CSimpleTypeInfo& base);

}  // namespace detail
}  // namespace QzXmlLib16
