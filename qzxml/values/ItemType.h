#pragma once

#include <cstdint>

namespace QzXmlLib16 {

// The kind of a value: what a QzVariant holds, what a member of the metadata tables is, what a
// writer is told about a text. The numbers are part of the interface: generated code passes them.
// The names are those of the XSD primitives or their short forms (XML Schema 1.0 part 2, section
// 3).
enum ItemType : int {
  ItemType_None = 0,
  ItemType_hexBinary = 1,       // CBinaryData
  ItemType_base64Binary = 2,    // CBinaryData
  ItemType_i1 = 3,              // signed 8 bits, carried as char
  ItemType_i2 = 4,              // signed 16 bits
  ItemType_i4 = 5,              // signed 32 bits
  ItemType_i8 = 6,              // signed 64 bits
  ItemType_ui1 = 7,             // unsigned 8 bits
  ItemType_ui2 = 8,             // unsigned 16 bits
  ItemType_ui4 = 9,             // unsigned 32 bits
  ItemType_ui8 = 10,            // unsigned 64 bits
  ItemType_r4 = 11,             // float
  ItemType_r8 = 12,             // double
  ItemType_duration = 13,       // CDateTimeSpan
  ItemType_yearMonth = 14,      // CDateTime
  ItemType_monthDay = 15,       // CDateTime
  ItemType_year = 16,           // unsigned 16 bits
  ItemType_month = 17,          // unsigned 8 bits
  ItemType_day = 18,            // unsigned 8 bits
  ItemType_date = 19,           // CDateTime
  ItemType_datetime = 20,       // CDateTime
  ItemType_time = 21,           // CDateTime
  ItemType_char = 22,           // char
  ItemType_string = 23,         // std::string
  ItemType_boolean = 24,        // bool
  ItemType_decimal = 25,        // CDecimal
  ItemType_integer = 26,        // CBigInteger
  ItemType_XmlObjectBase = 27,  // counted CXmlObjectBase
  ItemType_XmlCollection = 28,  // counted CXmlCollectionBase
};

namespace detail {

// A bit for each of the kinds.
template <typename... Types>
constexpr std::uint32_t KindSet(Types... types) {
  return ((std::uint32_t{1} << types) | ...);
}

constexpr bool IsIn(ItemType type, std::uint32_t kinds) {
  return static_cast<std::uint32_t>(type) < 32 && (kinds >> type & 1) != 0;
}

constexpr std::uint32_t kDateTimes =
    KindSet(ItemType_yearMonth, ItemType_monthDay, ItemType_date, ItemType_datetime, ItemType_time);
// The kinds whose payload is a pointer that has to be given up.
constexpr std::uint32_t kPointers =
    kDateTimes | KindSet(ItemType_hexBinary, ItemType_base64Binary, ItemType_duration,
                         ItemType_string, ItemType_decimal, ItemType_integer,
                         ItemType_XmlObjectBase, ItemType_XmlCollection);

constexpr bool HoldsDateTime(ItemType type) { return IsIn(type, kDateTimes); }
constexpr bool HasPayload(ItemType type) { return IsIn(type, kPointers); }

}  // namespace detail

}  // namespace QzXmlLib16
