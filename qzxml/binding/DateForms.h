#pragma once

#include "qzxml/values/DateTime.h"
#include "qzxml/values/ItemType.h"

namespace QzXmlLib16::detail {

// The form that dates of a kind have; a value of the kind in any other is refused.
constexpr CDateTime::DTType DateFormOf(ItemType kind) {
  switch (kind) {
    case ItemType_yearMonth:
      return CDateTime::dt_gYearMonth;
    case ItemType_monthDay:
      return CDateTime::dt_gMonthDay;
    case ItemType_date:
      return CDateTime::dt_date;
    case ItemType_time:
      return CDateTime::dt_time;
    default:
      return CDateTime::dt_dateTime;
  }
}

}  // namespace QzXmlLib16::detail
