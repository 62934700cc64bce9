#pragma once

#include <string>
#include <string_view>

#include "qzxml/binding/ClassBinding.h"
#include "qzxml/binding/Member.h"

// What CBoundClass makes of the constants of generated code. Not for others.
namespace QzXmlLib16 {
namespace detail {

// Fills the tables of a class: its info, its attributes and its children.
void BuildTables(const CClassBinding& binding, CTabledClass::CTables& made);

// What the class says of itself as a whole; withType where it has to write xsi:type.
QzXmlLib16Data::CParentElementInfo* NewClassInfo(const CClassBinding& binding, bool withType);

// Whether the wildcard of a member takes names of a namespace; empty for those without one.
// Source: XML Schema 1.0 part 1, section 3.10.4.
bool WildcardTakes(const CMember& member, std::string_view namespaceUri);

// A new object of a member that is no collection; null for an abstract type.
CObjectHandle NewMemberObject(const CMember& member);

// A value whose text does not read back as the same value becomes a text that does: a real that has
// more digits than its text shows (16 of a double, or 7 of a float, do not tell all of them apart)
// the shortest one, and no time at all, which the library writes as "P", "PT0S".
void KeepEveryDigit(QzVariant& value);

// Throws CQzInvalidValueException "The value [%s] of %s is not the fixed value [%s]" for another
// value than the member's fixed one.
void CheckFixed(const CMember& member, const QzVariant& value);

// The failures of a choice that has to have a member and has none, in the words of the walks.
[[noreturn]] void ThrowNothingSelected(const std::string& elementName);
[[noreturn]] void ThrowNothingPopulated(CXmlElement& parent);

// Whether a text has nothing but white space, if anything.
bool HasOnlyWhitespace(std::string_view text);

// Throws CQzValidationException "Unexpected text [%s] found in the element [%s]." with the path of
// an element that has more than white space beside its children.
void RequireNoText(const CXmlElement& element);

// Throws the walks' CQzValidationException about an element that nobody took.
void RequireNoChild(const CXmlElement& element);

// Throws CQzValidationException "The type [%s] that xsi:type names cannot stand in the element
// [%s]." where the element's xsi:type is not the type of the class.
void RequireOwnType(const CClassBinding& binding, const CXmlElement& element);
[[noreturn]] void ThrowUnsuitableType(const std::string& typeName, const CXmlElement& element);

// The failure of an element whose xsi:type names no class that may stand there.
[[noreturn]] void ThrowNoSuitableType(const CMember& member, CXmlElement& parent);

}  // namespace detail
}  // namespace QzXmlLib16
