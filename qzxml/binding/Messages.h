#pragma once

// The texts of bound classes.
namespace QzXmlLib16 {
namespace detail {

// CQzInvalidStateException, with the name of the member.
inline constexpr char kAbstractProperty[] = "The Property [%s] has an abstract type, set an object";

// CQzInvalidValueException, with the value, the name of the member and the fixed value.
inline constexpr char kNotFixedValue[] = "The value [%s] of %s is not the fixed value [%s]";

// CQzValidationException, with the text (its first 100 octets) and the element.
inline constexpr char kUnexpectedText[] = "Unexpected text [%s] found in the element [%s].";

// CQzValidationException, with the type that xsi:type names and the element.
inline constexpr char kUnsuitableType[] =
    "The type [%s] that xsi:type names cannot stand in the element [%s].";

// CQzValidationException, with the names of the document's root and of the object.
inline constexpr char kOtherRoot[] = "The root of the document is [%s], not [%s].";

}  // namespace detail
}  // namespace QzXmlLib16
