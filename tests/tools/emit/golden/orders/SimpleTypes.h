// Made by qzxml generate from order.xsd.
#pragma once

#include "qzxml/binding/BuiltInTypes.h"
#include "qzxml/binding/SimpleTypeInfo.h"

namespace orders {

extern const QzXmlLib16::CSimpleTypeInfo kCurrency;
extern const QzXmlLib16::CSimpleTypeInfo kQuantity;

// Three digits and two capitals.
extern const QzXmlLib16::CSimpleTypeInfo kSku;

// The types of elements, and those that an xsi:type may name there.
extern const QzXmlLib16::CNamedSimpleType kSku_Named[];
inline constexpr QzXmlLib16::CSimpleTypeFamily kSku_Types{kSku, kSku_Named};
extern const QzXmlLib16::CNamedSimpleType kQuantity_Named[];
inline constexpr QzXmlLib16::CSimpleTypeFamily kQuantity_Types{kQuantity, kQuantity_Named};
extern const QzXmlLib16::CNamedSimpleType kXsdDecimal_Named[];
inline constexpr QzXmlLib16::CSimpleTypeFamily kXsdDecimal_Types{QzXmlLib16::kXsdDecimal,
                                                                 kXsdDecimal_Named};
extern const QzXmlLib16::CNamedSimpleType kXsdString_Named[];
inline constexpr QzXmlLib16::CSimpleTypeFamily kXsdString_Types{QzXmlLib16::kXsdString,
                                                                kXsdString_Named};

}  // namespace orders
