#pragma once

// The texts of serialization that more than one place throws. A text that is used once stands at
// its throw.
namespace QzXmlLib16 {
namespace Messages {

// CQzInvalidStateException, with the name of the member that is selected. The typing error is part
// of the text.
inline constexpr char kChoiceAlreadySet[] =
    "The Property [%s] is already set. Only one element within this class bay be set at a time";

// CQzInvalidStateException, for either flag when the other is set.
inline constexpr char kUnknownAndMissingElements[] =
    "The parser can only ignore additional elements, or ignore the fact that some required ones "
    "are missing, you can not ignore both\n"
    "Set IgnoreMissingMandatoryElements to false before setting IgnoreUnknownElements to true";

// CQzException, for a value that fails a facet and is not shown as a small number or a real: the
// name of the member and the value's text.
inline constexpr char kInvalidTextValue[] = "Invalid Value for %s [%s].";

// CQzException, for a value that fails a facet and is shown as a number of up to 32 bits.
inline constexpr char kInvalidNumberValue[] = "Invalid Value for %s [%d]";

// CQzException, for a real that fails a facet.
inline constexpr char kInvalidRealValue[] = "Invalid Value for %s [%f]";

// CQzValidationException, with the name of the element or the attribute.
inline constexpr char kGetPropertyFailed[] = "Failed to get the property value for [%s].";

// CQzValidationException with an empty path, on writing: a choice that may not be empty is.
inline constexpr char kNothingSelected[] =
    "This element is a choice, and as such must have at one (and only one) valid item, currently "
    "there are none set";

// CQzValidationException, on reading: the same, with the name of the element.
inline constexpr char kNothingPopulated[] =
    "No child elements within the element [%s] were populated. The element represents a choice, so "
    "one and only one element should be populated. The element contained no sutable child elements";

// CQzValidationException, around each failure of an element that is written.
inline constexpr char kWritingFailed[] = "Failed to convert the element [%s] to XML";

// CQzValidationException, with the name of a member for whose element no class is found.
inline constexpr char kNoSubstitution[] =
    "Failed to find a suitable substitution element for [%s].";

// CQzValidationException, with the names of the element and of the first child that nobody took.
inline constexpr char kLeftOver[] =
    "Failed read all the elements held within the element [%s]. The unexpected element [%s] "
    "remains un processed";

}  // namespace Messages
}  // namespace QzXmlLib16
