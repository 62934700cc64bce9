#include "qzxml/binding/PlannedValue.h"

#include "qzxml/serialization/PropertyAccess.h"
#include "qzxml/values/QzVariant.h"

namespace QzXmlLib16::detail {

static_assert(CPlannedValue::kRoom >= kDateTimeSize && CPlannedValue::kRoom >= kNumberSize);

CPlannedValue::CPlannedValue(const CMember& member, const CMember& declared)
    : m_property(declared.property) {
  const CSimpleTypeInfo& type = *member.type;
  m_kind = type.IsEnumeration() ? ItemType_i4 : type.GetKind();
  m_enumToString = type.GetEnumToString();
  if (member.defaultValue != nullptr) m_defaultText = member.defaultValue;
  // A restriction has the kind of its base.
  const CSimpleTypeInfo& held = *declared.type;
  if (type.GetKind() != held.GetKind() || type.IsEnumeration() != held.IsEnumeration()) return;
  if (type.IsEnumeration()) {
    m_form = Form::Enumeration;
    return;
  }
  switch (m_kind) {
    case ItemType_i1:
    case ItemType_i2:
    case ItemType_i4:
    case ItemType_i8:
    case ItemType_ui1:
    case ItemType_ui2:
    case ItemType_ui4:
    case ItemType_ui8:
    case ItemType_r8:
    case ItemType_year:
    case ItemType_month:
    case ItemType_day:
    case ItemType_boolean:
      m_form = Form::Scalar;
      break;
    case ItemType_yearMonth:
    case ItemType_monthDay:
    case ItemType_date:
    case ItemType_datetime:
    case ItemType_time:
      m_form = Form::Date;
      break;
    case ItemType_string:
      m_form = Form::Text;
      break;
    case ItemType_hexBinary:
    case ItemType_base64Binary:
    case ItemType_decimal:
    case ItemType_integer:
      m_form = Form::Composed;
      break;
    default:
      break;
  }
}

template <ItemType kind>
void CPlannedValue::AppendTextOf(const void* value, std::string& out) {
  QzVariant variant;
  VariantKind<kind>::Set(variant, As<typename VariantKind<kind>::Value>(value));
  AppendText(variant, std::string_view(), out);
}

std::string_view CPlannedValue::GetOtherText(const void* value, std::string& scratch) const {
  if (m_form == Form::Enumeration) {
    const char* const text = m_enumToString(As<std::int32_t>(value));
    return text != nullptr ? text : std::string_view();
  }
  scratch.clear();
  switch (m_kind) {
    case ItemType_hexBinary:
      AppendTextOf<ItemType_hexBinary>(value, scratch);
      break;
    case ItemType_base64Binary:
      AppendTextOf<ItemType_base64Binary>(value, scratch);
      break;
    case ItemType_decimal:
      AppendTextOf<ItemType_decimal>(value, scratch);
      break;
    default:
      AppendTextOf<ItemType_integer>(value, scratch);
      break;
  }
  return scratch;
}

bool CPlannedValue::Lend(const void* value, QzVariant& variant) const {
  char buffer[kRoom];
  switch (m_kind) {
#define QZXML_LEND(kind)                                                           \
  case kind:                                                                       \
    VariantKind<kind>::Set(variant, As<typename VariantKind<kind>::Value>(value)); \
    return true;
    QZXML_LEND(ItemType_i1)
    QZXML_LEND(ItemType_i2)
    QZXML_LEND(ItemType_i4)
    QZXML_LEND(ItemType_i8)
    QZXML_LEND(ItemType_ui1)
    QZXML_LEND(ItemType_ui2)
    QZXML_LEND(ItemType_ui4)
    QZXML_LEND(ItemType_ui8)
    QZXML_LEND(ItemType_year)
    QZXML_LEND(ItemType_month)
    QZXML_LEND(ItemType_day)
    QZXML_LEND(ItemType_boolean)
#undef QZXML_LEND
    case ItemType_r8:
      variant.SetR8(As<double>(value));
      return Write(value, buffer) != nullptr;
    default:
      return false;
  }
}

}  // namespace QzXmlLib16::detail
