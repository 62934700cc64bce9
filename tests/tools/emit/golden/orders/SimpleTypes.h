// Made by qzxml generate from order.xsd.
#pragma once

#include "qzxml/binding/SimpleTypeInfo.h"

namespace orders {

extern const QzXmlLib16::CSimpleTypeInfo kCurrencyType;
extern const QzXmlLib16::CSimpleTypeInfo kQuantityType;

// Three digits and two capitals.
extern const QzXmlLib16::CSimpleTypeInfo kSkuType;

}  // namespace orders
