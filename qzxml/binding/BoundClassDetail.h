#pragma once

#include <type_traits>

#include "qzxml/binding/BoundClass.h"

// What the sources of CBoundClass share.
namespace QzXmlLib16 {

// Calls visit(kind, property) with the kind as a type, in which the value travels, and the pointer
// to the data member of a value.
template <typename Visit>
void CBoundClass::VisitValue(const CMember& declared, Visit visit) {
  const CProperty& property = declared.property;
  switch (declared.type->IsEnumeration() ? ItemType_i4 : declared.type->GetKind()) {
#define QZXML_VISIT(kind, name) \
  case kind:                    \
    return visit(std::integral_constant<ItemType, kind>(), property.m_##name);
    QZXML_VISIT(ItemType_hexBinary, binary)
    QZXML_VISIT(ItemType_base64Binary, binary)
    QZXML_VISIT(ItemType_i1, i1)
    QZXML_VISIT(ItemType_i2, i2)
    QZXML_VISIT(ItemType_i4, i4)
    QZXML_VISIT(ItemType_i8, i8)
    QZXML_VISIT(ItemType_ui1, ui1)
    QZXML_VISIT(ItemType_ui2, ui2)
    QZXML_VISIT(ItemType_ui4, ui4)
    QZXML_VISIT(ItemType_ui8, ui8)
    QZXML_VISIT(ItemType_r4, r4)
    QZXML_VISIT(ItemType_r8, r8)
    QZXML_VISIT(ItemType_duration, duration)
    QZXML_VISIT(ItemType_yearMonth, dateTime)
    QZXML_VISIT(ItemType_monthDay, dateTime)
    QZXML_VISIT(ItemType_year, ui2)
    QZXML_VISIT(ItemType_month, ui1)
    QZXML_VISIT(ItemType_day, ui1)
    QZXML_VISIT(ItemType_date, dateTime)
    QZXML_VISIT(ItemType_datetime, dateTime)
    QZXML_VISIT(ItemType_time, dateTime)
    QZXML_VISIT(ItemType_char, i1)
    QZXML_VISIT(ItemType_string, string)
    QZXML_VISIT(ItemType_boolean, boolean)
    QZXML_VISIT(ItemType_decimal, decimal)
    QZXML_VISIT(ItemType_integer, integer)
#undef QZXML_VISIT
    case ItemType_None:
    case ItemType_XmlObjectBase:
    case ItemType_XmlCollection:
      break;
  }
}

}  // namespace QzXmlLib16
