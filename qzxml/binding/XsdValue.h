#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "qzxml/binding/XsdType.h"
#include "qzxml/values/WhitespaceUtils.h"

// The lexical and the value spaces of the built-in types, over texts in UTF-8 whose white space is
// that of the type already. Sizes of numbers are not bounded; nothing here throws but where memory
// is short.
// Source: XML Schema 1.0 part 2, second edition, section 3.
namespace QzXmlLib16 {
namespace detail {

enum class ValueOrder { kEqual, kLess, kGreater, kIndeterminate };

// The type that a built-in type's values are values of: XsdType_decimal of XsdType_byte. Itself for
// a primitive one and for the three lists.
XsdType GetPrimitive(XsdType type);

// The item type of NMTOKENS, IDREFS and ENTITIES; any other type itself.
XsdType GetBuiltInItem(XsdType type);

CWhitespaceUtils::WhitespaceRule GetWhitespaceRule(XsdType type);

// Whether the text is a value of the type, which is none of the three lists.
bool IsValueOf(XsdType type, std::string_view text);

// How the value of a stands to that of b, a text of the same primitive type. Types without an order
// know equal and indeterminate; so does a NaN, which equals itself, and so do dates and durations
// that have no order. The text a is a value; where b is none, they are indeterminate.
ValueOrder CompareValues(XsdType primitive, std::string_view a, std::string_view b);

// The length of a value in the unit of its primitive type: octets of binary data, else characters.
std::size_t GetValueLength(XsdType primitive, std::string_view text);

// The digits that the value of a decimal needs: all of them, and those behind the point.
struct DigitCounts {
  std::size_t total;
  std::size_t fraction;
};
DigitCounts CountDigits(std::string_view decimal);

// --- Dates, times and durations (XsdDates.cpp). ---

bool IsDateValue(XsdType primitive, std::string_view text);
bool IsDurationValue(std::string_view text);
// Years and the fields of durations are compared up to 15 digits, parts of a second up to 18; what
// is larger is equal to the same text and otherwise indeterminate.
ValueOrder CompareDates(XsdType primitive, std::string_view a, std::string_view b);
ValueOrder CompareDurations(std::string_view a, std::string_view b);

}  // namespace detail
}  // namespace QzXmlLib16
