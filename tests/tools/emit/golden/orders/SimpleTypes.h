// Made by qzxml generate from order.xsd.
#pragma once

#include "qzxml/binding/SimpleTypeInfo.h"

namespace orders {

extern const QzXmlLib16::CSimpleTypeInfo kCurrency;
extern const QzXmlLib16::CSimpleTypeInfo kQuantity;

// Three digits and two capitals.
extern const QzXmlLib16::CSimpleTypeInfo kSku;

}  // namespace orders
