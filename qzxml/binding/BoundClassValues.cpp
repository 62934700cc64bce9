#include <type_traits>

#include "qzxml/binding/BoundClass.h"

// The accessors of values whose kind the table of members says. They are compiled here for every
// type that a property may have, so that generated code only calls them.
namespace QzXmlLib16 {
namespace {

// Lends the value to the variant as one of that kind, which is a kind of values of this type.
template <typename Value>
void Lend(ItemType kind, const Value& value, QzVariant& variant) {
  switch (kind) {
#define QZXML_LEND(kind)                                                      \
  case kind:                                                                  \
    if constexpr (std::is_same_v<typename VariantKind<kind>::Value, Value>) { \
      VariantKind<kind>::Set(variant, value);                                 \
    }                                                                         \
    return;
    QZXML_LEND(ItemType_hexBinary)
    QZXML_LEND(ItemType_base64Binary)
    QZXML_LEND(ItemType_i1)
    QZXML_LEND(ItemType_i2)
    QZXML_LEND(ItemType_i4)
    QZXML_LEND(ItemType_i8)
    QZXML_LEND(ItemType_ui1)
    QZXML_LEND(ItemType_ui2)
    QZXML_LEND(ItemType_ui4)
    QZXML_LEND(ItemType_ui8)
    QZXML_LEND(ItemType_r4)
    QZXML_LEND(ItemType_r8)
    QZXML_LEND(ItemType_duration)
    QZXML_LEND(ItemType_yearMonth)
    QZXML_LEND(ItemType_monthDay)
    QZXML_LEND(ItemType_year)
    QZXML_LEND(ItemType_month)
    QZXML_LEND(ItemType_day)
    QZXML_LEND(ItemType_date)
    QZXML_LEND(ItemType_datetime)
    QZXML_LEND(ItemType_time)
    QZXML_LEND(ItemType_char)
    QZXML_LEND(ItemType_string)
    QZXML_LEND(ItemType_boolean)
    QZXML_LEND(ItemType_decimal)
    QZXML_LEND(ItemType_integer)
#undef QZXML_LEND
    case ItemType_None:
    case ItemType_XmlObjectBase:
    case ItemType_XmlCollection:
      return;
  }
}

// The variant's value, which is of that kind.
template <typename Value>
Value Take(QzVariant& variant) {
  switch (variant.GetTypeAsEnum()) {
#define QZXML_TAKE(kind)                                                      \
  case kind:                                                                  \
    if constexpr (std::is_same_v<typename VariantKind<kind>::Value, Value>) { \
      return VariantKind<kind>::Take(variant);                                \
    }                                                                         \
    break;
    QZXML_TAKE(ItemType_hexBinary)
    QZXML_TAKE(ItemType_base64Binary)
    QZXML_TAKE(ItemType_i1)
    QZXML_TAKE(ItemType_i2)
    QZXML_TAKE(ItemType_i4)
    QZXML_TAKE(ItemType_i8)
    QZXML_TAKE(ItemType_ui1)
    QZXML_TAKE(ItemType_ui2)
    QZXML_TAKE(ItemType_ui4)
    QZXML_TAKE(ItemType_ui8)
    QZXML_TAKE(ItemType_r4)
    QZXML_TAKE(ItemType_r8)
    QZXML_TAKE(ItemType_duration)
    QZXML_TAKE(ItemType_yearMonth)
    QZXML_TAKE(ItemType_monthDay)
    QZXML_TAKE(ItemType_year)
    QZXML_TAKE(ItemType_month)
    QZXML_TAKE(ItemType_day)
    QZXML_TAKE(ItemType_date)
    QZXML_TAKE(ItemType_datetime)
    QZXML_TAKE(ItemType_time)
    QZXML_TAKE(ItemType_char)
    QZXML_TAKE(ItemType_string)
    QZXML_TAKE(ItemType_boolean)
    QZXML_TAKE(ItemType_decimal)
    QZXML_TAKE(ItemType_integer)
#undef QZXML_TAKE
    case ItemType_None:
    case ItemType_XmlObjectBase:
    case ItemType_XmlCollection:
      break;
  }
  return Value();
}

}  // namespace

template <typename Value>
Value CBoundClass::ValueOrDefault(std::int32_t index, const std::optional<Value>& property) const {
  if (property) return *property;
  QzVariant variant;
  DefaultValue(index, variant);
  return Take<Value>(variant);
}

template <typename Value>
void CBoundClass::SetValue(std::int32_t index, std::optional<Value>& property,
                           typename detail::NotDeduced<std::optional<Value>>::Type value) {
  if (value) {
    QzVariant variant;
    Lend(m_binding->GetMember(index).type->GetKind(), *value, variant);
    CheckValue(index, variant);
  }
  SelectMember(index, value.has_value());
  property = std::move(value);
}

#define QZXML_VALUE(type)                                                                       \
  template QZXML_API type CBoundClass::ValueOrDefault(std::int32_t, const std::optional<type>&) \
      const;                                                                                    \
  template QZXML_API void CBoundClass::SetValue(std::int32_t, std::optional<type>&,             \
                                                std::optional<type>);
QZXML_VALUE(std::string)
QZXML_VALUE(bool)
QZXML_VALUE(char)
QZXML_VALUE(std::int16_t)
QZXML_VALUE(std::int32_t)
QZXML_VALUE(std::int64_t)
QZXML_VALUE(std::uint8_t)
QZXML_VALUE(std::uint16_t)
QZXML_VALUE(std::uint32_t)
QZXML_VALUE(std::uint64_t)
QZXML_VALUE(float)
QZXML_VALUE(double)
QZXML_VALUE(CDateTime)
QZXML_VALUE(CDateTimeSpan)
QZXML_VALUE(CDecimal)
QZXML_VALUE(CBigInteger)
QZXML_VALUE(CBinaryData)
#undef QZXML_VALUE

}  // namespace QzXmlLib16
