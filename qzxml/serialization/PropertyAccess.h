#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "qzxml/runtime/SmartPtr.h"
#include "qzxml/values/BigInteger.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/values/DateTime.h"
#include "qzxml/values/DateTimeSpan.h"
#include "qzxml/values/Decimal.h"
#include "qzxml/values/QzVariant.h"

// What a class's AccessProperty is made of: each function passes one property from the object into
// the variant (read) or from the variant into the object. A property that is not set makes the
// variant invalid, which the metadata takes for an absent element or attribute.
//
//   switch (index) {
//     case kQuantity: return AccessValue<ItemType_i4>(read, value, self.m_quantity);
//     case kAddress:  return AccessObject(read, value, self.m_address);
//     case kItems:    return AccessCollection(read, value, m_items);
//   }
namespace QzXmlLib16 {

// How a kind of value stands in C++, and the variant's setter and getter for it.
template <ItemType kind>
struct VariantKind;

#define QZXML_VARIANT_KIND(kind, type, name)                                             \
  template <>                                                                            \
  struct VariantKind<kind> {                                                             \
    using Value = type;                                                                  \
    static void Set(QzVariant& variant, const type& value) { variant.Set##name(value); } \
    static type Take(QzVariant& variant) { return variant.Get##name(); }                 \
  };
QZXML_VARIANT_KIND(ItemType_hexBinary, CBinaryData, HexBinary)
QZXML_VARIANT_KIND(ItemType_base64Binary, CBinaryData, Base64Binary)
QZXML_VARIANT_KIND(ItemType_i1, char, I1)
QZXML_VARIANT_KIND(ItemType_i2, std::int16_t, I2)
QZXML_VARIANT_KIND(ItemType_i4, std::int32_t, I4)
QZXML_VARIANT_KIND(ItemType_i8, std::int64_t, I8)
QZXML_VARIANT_KIND(ItemType_ui1, std::uint8_t, UI1)
QZXML_VARIANT_KIND(ItemType_ui2, std::uint16_t, UI2)
QZXML_VARIANT_KIND(ItemType_ui4, std::uint32_t, UI4)
QZXML_VARIANT_KIND(ItemType_ui8, std::uint64_t, UI8)
QZXML_VARIANT_KIND(ItemType_r4, float, R4)
QZXML_VARIANT_KIND(ItemType_r8, double, R8)
QZXML_VARIANT_KIND(ItemType_year, std::uint16_t, Year)
QZXML_VARIANT_KIND(ItemType_month, std::uint8_t, Month)
QZXML_VARIANT_KIND(ItemType_day, std::uint8_t, Day)
QZXML_VARIANT_KIND(ItemType_char, char, Char)
QZXML_VARIANT_KIND(ItemType_boolean, bool, Boolean)
#undef QZXML_VARIANT_KIND

// A date is lent.
#define QZXML_VARIANT_KIND(kind, name)                                        \
  template <>                                                                 \
  struct VariantKind<kind> {                                                  \
    using Value = CDateTime;                                                  \
    static void Set(QzVariant& variant, const CDateTime& value) {             \
      variant.LendDateTime(kind, value);                                      \
    }                                                                         \
    static CDateTime Take(QzVariant& variant) { return variant.Get##name(); } \
  };
QZXML_VARIANT_KIND(ItemType_yearMonth, YearMonth)
QZXML_VARIANT_KIND(ItemType_monthDay, MonthDay)
QZXML_VARIANT_KIND(ItemType_date, Date)
QZXML_VARIANT_KIND(ItemType_datetime, DateTime)
QZXML_VARIANT_KIND(ItemType_time, Time)
#undef QZXML_VARIANT_KIND

// So is a duration.
template <>
struct VariantKind<ItemType_duration> {
  using Value = CDateTimeSpan;
  static void Set(QzVariant& variant, const CDateTimeSpan& value) { variant.LendDuration(value); }
  static CDateTimeSpan Take(QzVariant& variant) { return variant.GetDuration(); }
};

// A number of any size and a text pass without a copy: out of the object they are lent, into the
// object they are moved.
template <>
struct VariantKind<ItemType_decimal> {
  using Value = CDecimal;
  static void Set(QzVariant& variant, const CDecimal& value) { variant.LendDecimal(value); }
  static CDecimal Take(QzVariant& variant) { return variant.TakeDecimal(); }
};

template <>
struct VariantKind<ItemType_integer> {
  using Value = CBigInteger;
  static void Set(QzVariant& variant, const CBigInteger& value) { variant.LendInteger(value); }
  static CBigInteger Take(QzVariant& variant) { return variant.TakeInteger(); }
};

template <>
struct VariantKind<ItemType_string> {
  using Value = std::string;
  static void Set(QzVariant& variant, const std::string& value) { variant.LendString(value); }
  static std::string Take(QzVariant& variant) { return variant.TakeString(); }
};

// A value that may be absent.
template <ItemType kind>
void AccessValue(bool read, QzVariant& value,
                 std::optional<typename VariantKind<kind>::Value>& property) {
  if (!read) {
    property = VariantKind<kind>::Take(value);
  } else if (property) {
    VariantKind<kind>::Set(value, *property);
  } else {
    value.SetInvalid();
  }
}

// An enumeration, which travels as a 32-bit integer.
template <typename Enumeration>
void AccessEnum(bool read, QzVariant& value, std::optional<Enumeration>& property) {
  if (!read) {
    property = static_cast<Enumeration>(value.GetI4());
  } else if (property) {
    value.SetI4(static_cast<std::int32_t>(*property));
  } else {
    value.SetInvalid();
  }
}

// An object of a generated class or of open content; the property is null when it is absent. An
// object of another class than the property's leaves a null property.
template <typename Object>
void AccessObject(bool read, QzVariant& value, CSmartPtr<Object>& property) {
  if (read) {
    value.SetXmlObject(property);
  } else {
    property = CSmartPtr<Object>(
        dynamic_cast<Object*>(static_cast<CXmlObjectBase*>(value.GetXmlObject())));
  }
}

// A collection, which the object owns from its construction on: it is handed out and never
// replaced.
template <typename Collection>
void AccessCollection(bool read, QzVariant& value, const CSmartPtr<Collection>& property) {
  if (read) value.SetXmlCollection(property);
}

}  // namespace QzXmlLib16
