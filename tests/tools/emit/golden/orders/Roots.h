// Made by qzxml generate from order.xsd.
#pragma once

#include "qzxml/binding/ObjectFactory.h"

namespace orders {

class COrder;

// Makes the object for the root of a document; null for an element that the schema does not
// declare, and for one whose abstract type its xsi:type does not fill in.
QzXmlLib16::CObjectHandle NewRoot(QzXmlLib16::CXmlElement* element);

// Each makes an empty object for an element of that name.

// What a shop is sent.
CSmartPtr<COrder> NewOrder();

}  // namespace orders
