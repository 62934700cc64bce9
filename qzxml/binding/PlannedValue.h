#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "qzxml/binding/BoundClass.h"
#include "qzxml/binding/Member.h"
#include "qzxml/values/ConversionsDetail.h"
#include "qzxml/values/DateTimeDetail.h"

namespace QzXmlLib16::detail {

// A value of a bound class, found and turned into text without AccessProperty and without a
// variant.
class CPlannedValue {
 public:
  CPlannedValue() = default;
  // declared is the member as the class that has the data member declares it.
  CPlannedValue(const CMember& member, const CMember& declared);

  // False for the kinds that are left to the walk.
  bool IsPlanned() const { return m_form != Form::Other; }

  // Where the value is; null for an absent one.
  const void* Find(const CBoundClass& object) const;

  // Whether its text has to be asked for as such. A text may have bytes to escape.
  bool IsText() const { return m_form >= Form::Text; }
  // Lies in the object, or in scratch.
  std::string_view GetText(const void* value, std::string& scratch) const {
    return IsString() ? As<std::string>(value) : GetOtherText(value, scratch);
  }

  // Any other is written in place, and its end answered. Null, and what is there has no meaning,
  // for a value whose text is not easily told. Takes kRoom.
  static constexpr std::size_t kRoom = 64;
  char* Write(const void* value, char* out) const;
  // The same for those whose kind the caller knows.
  static char* WriteAs(std::int32_t value, char* out) { return WriteInteger(out, value); }
  static char* WriteAs(const CDateTime& value, char* out) { return WriteDateTime(value, out); }
  // A text that reads back as the value has all its digits (KeepEveryDigit).
  static char* WriteAs(double value, char* out) { return WriteExactR8(out, value); }

  bool IsString() const { return m_form == Form::Text; }
  bool IsScalar() const { return m_form == Form::Scalar; }
  bool IsDate() const { return m_form == Form::Date; }

  // The kind that its text is written as.
  ItemType GetWrittenKind() const { return m_form == Form::Enumeration ? ItemType_string : m_kind; }
  // Puts a scalar into a variant; false for one that Write answers null for.
  bool Lend(const void* value, QzVariant& variant) const;

  bool IsDefault(std::string_view text) const {
    return !m_defaultText.empty() && text == m_defaultText;
  }

 private:
  std::string_view GetOtherText(const void* value, std::string& scratch) const;
  template <typename T>
  static const void* PlaceOf(const std::optional<T>& value) {
    return value ? &*value : nullptr;
  }
  template <typename T>
  static const T& As(const void* value) {
    return *static_cast<const T*>(value);
  }
  template <ItemType kind>
  static void AppendTextOf(const void* value, std::string& out);

  enum class Form : unsigned char {
    Other,
    Scalar,       // a number or a boolean
    Date,         // a CDateTime
    Text,         // a text
    Enumeration,  // a number with a text
    Composed,     // something that makes a text of itself
  };

  Form m_form = Form::Other;
  ItemType m_kind = ItemType_None;
  CProperty m_property;
  EnumToString m_enumToString = nullptr;
  std::string m_defaultText;  // empty for none
};

inline const void* CPlannedValue::Find(const CBoundClass& object) const {
  switch (m_kind) {
    case ItemType_string:
      return PlaceOf(object.*m_property.m_string);
    case ItemType_i4:
      return PlaceOf(object.*m_property.m_i4);
    case ItemType_boolean:
      return PlaceOf(object.*m_property.m_boolean);
    case ItemType_i1:
      return PlaceOf(object.*m_property.m_i1);
    case ItemType_i2:
      return PlaceOf(object.*m_property.m_i2);
    case ItemType_i8:
      return PlaceOf(object.*m_property.m_i8);
    case ItemType_ui1:
    case ItemType_month:
    case ItemType_day:
      return PlaceOf(object.*m_property.m_ui1);
    case ItemType_ui2:
    case ItemType_year:
      return PlaceOf(object.*m_property.m_ui2);
    case ItemType_ui4:
      return PlaceOf(object.*m_property.m_ui4);
    case ItemType_ui8:
      return PlaceOf(object.*m_property.m_ui8);
    case ItemType_r8:
      return PlaceOf(object.*m_property.m_r8);
    case ItemType_yearMonth:
    case ItemType_monthDay:
    case ItemType_date:
    case ItemType_datetime:
    case ItemType_time:
      return PlaceOf(object.*m_property.m_dateTime);
    case ItemType_decimal:
      return PlaceOf(object.*m_property.m_decimal);
    case ItemType_integer:
      return PlaceOf(object.*m_property.m_integer);
    case ItemType_hexBinary:
    case ItemType_base64Binary:
      return PlaceOf(object.*m_property.m_binary);
    default:
      return nullptr;
  }
}

inline char* CPlannedValue::Write(const void* value, char* out) const {
  if (m_form == Form::Date) return WriteDateTime(As<CDateTime>(value), out);
  switch (m_kind) {
    case ItemType_i1:
      return WriteInteger(out, static_cast<signed char>(As<char>(value)));
    case ItemType_i2:
      return WriteInteger(out, As<std::int16_t>(value));
    case ItemType_i4:
      return WriteInteger(out, As<std::int32_t>(value));
    case ItemType_i8:
      return WriteInteger(out, As<std::int64_t>(value));
    case ItemType_ui1:
      return WriteInteger(out, As<std::uint8_t>(value));
    case ItemType_ui2:
      return WriteInteger(out, As<std::uint16_t>(value));
    case ItemType_ui4:
      return WriteInteger(out, As<std::uint32_t>(value));
    case ItemType_ui8:
      return WriteInteger(out, As<std::uint64_t>(value));
    case ItemType_r8:
      return WriteAs(As<double>(value), out);
    case ItemType_year:
      return WriteYear(out, As<std::uint16_t>(value));
    case ItemType_month:
      return WriteMonth(out, As<std::uint8_t>(value));
    case ItemType_day:
      return WriteDay(out, As<std::uint8_t>(value));
    default:
      return WriteText(out, As<bool>(value) ? "true" : "false");
  }
}

}  // namespace QzXmlLib16::detail
