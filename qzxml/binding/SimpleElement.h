#pragma once

#include <string>
#include <string_view>

#include "qzxml/binding/Member.h"
#include "qzxml/serialization/ElementRules.h"

// What a schema says of the elements and attributes with a simple type beside their facets: the
// library's conversions are lenient, and take "TRUE", "1e3" as a decimal and no text as zero.
namespace QzXmlLib16 {
namespace detail {

// Whether a text is one of XML Schema's for values of the kind. White space around it passes, as
// all types of these kinds collapse it. Any text is one of ItemType_string. Source: XML Schema 1.0
// part 2, section 3.
bool IsLexicalForm(ItemType kind, std::string_view text);

// Throws for a text that is none what its conversion throws, and where that would take it
// CQzInvalidValueException "The value [%s] can not be converted to a %s".
void RequireLexicalForm(ItemType kind, std::string_view text);

// Throws CQzValidationException "The type [%s] that xsi:type names cannot stand in the element
// [%s]." unless the element's xsi:type is the member's type or, where the member takes others,
// derived from it: one of the member's named types, or a built-in one. Throws CQzException "Invalid
// Value for %s [%s]." for a text that is none of the type named; an empty one stands for the
// member's default, and a nil element has none.
void RequireSimpleType(const CMember& member, const CXmlElement& element, bool isNil);

// Throws CQzValidationException for an element of simple type with a child, unless unknown elements
// are ignored; with an attribute other than those of the schema machinery and xsi:nil, unless
// unknown attributes are; with xsi:nil where the member is not nillable; and what RequireSimpleType
// throws.
void RequireSimpleElement(const CMember& member, const CSerializationContext& context,
                          const CXmlElement& element, bool isNil);

// Both, for a value that stands in a collection; answers its text, which is the default where there
// is none and the member has one.
std::string ReadSimpleElement(const CMember& member, const CSerializationContext& context,
                              const CXmlElement& element);

// Both, for the entries of the tables.
class CSimpleElementRules final : public IElementRules {
 public:
  // The member is a constant of generated code; it is kept.
  explicit CSimpleElementRules(const CMember& member) : m_member(member) {}
  void CheckElement(const CSerializationContext& context, const CXmlElement& element,
                    bool isNil) const override;

 private:
  const CMember& m_member;
};

}  // namespace detail
}  // namespace QzXmlLib16
