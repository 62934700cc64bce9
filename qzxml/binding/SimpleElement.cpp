#include "qzxml/binding/SimpleElement.h"

#include <string>

#include "qzxml/binding/BindingTables.h"
#include "qzxml/binding/BuiltInTypes.h"
#include "qzxml/binding/TypeOfElement.h"
#include "qzxml/binding/XsdValue.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/ElementInfoValues.h"
#include "qzxml/serialization/Messages.h"
#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/values/ConversionsDetail.h"
#include "qzxml/values/QzVariant.h"
#include "qzxml/xml/XmlAttribute.h"
#include "qzxml/xml/XmlElement.h"
#include "qzxml/xml/XmlNamespaces.h"

namespace QzXmlLib16 {
namespace detail {

namespace {

std::string_view Trim(std::string_view text) {
  constexpr char kWhitespace[] = " \t\r\n";
  const std::size_t first = text.find_first_not_of(kWhitespace);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(kWhitespace) - first + 1);
}

// The types whose texts the values of the kinds have, and what failures call the kinds. The sizes
// of integers are checked where they are converted.
struct LexicalType {
  XsdType type;
  const char* kindName;
};

LexicalType GetLexicalType(ItemType kind) {
  switch (kind) {
#define QZXML_LEXICAL(kind, type) \
  case ItemType_##kind:           \
    return {XsdType_##type, #kind};
    QZXML_LEXICAL(hexBinary, hexBinary)
    QZXML_LEXICAL(base64Binary, base64Binary)
    QZXML_LEXICAL(i1, integer)
    QZXML_LEXICAL(i2, integer)
    QZXML_LEXICAL(i4, integer)
    QZXML_LEXICAL(i8, integer)
    QZXML_LEXICAL(ui1, nonNegativeInteger)
    QZXML_LEXICAL(ui2, nonNegativeInteger)
    QZXML_LEXICAL(ui4, nonNegativeInteger)
    QZXML_LEXICAL(ui8, nonNegativeInteger)
    QZXML_LEXICAL(r4, float)
    QZXML_LEXICAL(r8, double)
    QZXML_LEXICAL(duration, duration)
    QZXML_LEXICAL(yearMonth, gYearMonth)
    QZXML_LEXICAL(monthDay, gMonthDay)
    QZXML_LEXICAL(date, date)
    QZXML_LEXICAL(datetime, dateTime)
    QZXML_LEXICAL(time, time)
    QZXML_LEXICAL(boolean, boolean)
    QZXML_LEXICAL(decimal, decimal)
    QZXML_LEXICAL(integer, integer)
#undef QZXML_LEXICAL
    default:
      return {XsdType_anySimpleType, nullptr};
  }
}

// A type of XML Schema's own where the member is; null for one that cannot stand there.
const CSimpleTypeInfo* FindSuitableBuiltIn(const CMember& member, const CSimpleTypeInfo* builtIn) {
  if (builtIn == member.type) return builtIn;
  if (member.isOwnTypeOnly) return nullptr;
  if (IsBuiltInDerived(*builtIn, *member.type)) return builtIn;
  const CNamedSimpleType* const named = member.namedTypes;
  for (const CNamedSimpleType* row = named; row != nullptr && row->name != nullptr; ++row) {
    if (IsBuiltInDerived(*builtIn, *row->type)) return builtIn;
  }
  return nullptr;
}

// Whether the type is known; found stays null for one that cannot stand where the member is.
bool FindTypeIn(const CMember& member, const std::string& uri, const std::string& name,
                const CSimpleTypeInfo*& found) {
  const CNamedSimpleType* const named = member.namedTypes;
  for (const CNamedSimpleType* row = named; row != nullptr && row->name != nullptr; ++row) {
    if (row->name != name || row->namespaceUri != uri) continue;
    const bool isOwn = row == named && row->type == member.type;
    if (isOwn || !member.isOwnTypeOnly) found = row->type;
    return true;
  }
  if (uri != kXmlSchemaNamespace) return false;
  const CSimpleTypeInfo* const builtIn = FindBuiltInType(kXmlSchemaNamespace, name);
  if (builtIn == nullptr) return false;
  found = FindSuitableBuiltIn(member, builtIn);
  return true;
}

// The type that a name stands for where the member is; null for one that cannot stand there.
const CSimpleTypeInfo* FindNamedType(const CMember& member, const CTypeOfElement& type) {
  const CSimpleTypeInfo* found = nullptr;
  type.FindNamespace(
      [&](const std::string& uri) { return FindTypeIn(member, uri, type.GetName(), found); });
  return found;
}

bool IsTextOf(const CSimpleTypeInfo& type, std::string_view text) {
  return (type.IsEnumeration() || IsLexicalForm(type.GetKind(), text)) && type.Accepts(text);
}

}  // namespace

bool IsLexicalForm(ItemType kind, std::string_view text) {
  const LexicalType lexical = GetLexicalType(kind);
  return lexical.kindName == nullptr || IsValueOf(lexical.type, Trim(text));
}

void RequireLexicalForm(ItemType kind, std::string_view text) {
  if (IsLexicalForm(kind, text)) return;
  // What the library's conversion refuses as well, it tells of in its own words.
  QzVariant value;
  value.FromString(std::string(text), kind, CWhitespaceUtils::WhitespaceRule_Collapse);
  ThrowNotConvertible(text, GetLexicalType(kind).kindName);
}

void RequireSimpleType(const CMember& member, const CXmlElement& element, bool isNil) {
  const CTypeOfElement type(element);
  if (!type.IsGiven()) return;
  const CSimpleTypeInfo* const named = FindNamedType(member, type);
  if (named == nullptr) ThrowUnsuitableType(type.GetName(), element);
  if (isNil || named == member.type) return;
  std::string_view text = element.GetTextView();
  if (text.empty() && member.defaultValue != nullptr) text = member.defaultValue;
  if (IsTextOf(*named, text)) return;
  throw CQzException(FormatString(Messages::kInvalidTextValue, element.GetLocalName().c_str(),
                                  std::string(text).c_str()));
}

void RequireSimpleElement(const CMember& member, const CSerializationContext& context,
                          const CXmlElement& element, bool isNil) {
  if (!context.GetIgnoreUnknownElements()) RequireNoChild(element);
  if (element.GetAttributeRange().empty()) return;
  for (const CXmlAttribute* const attribute : element.GetAttributeRange()) {
    if (attribute->IsNamespaceAttribute()) continue;
    if (attribute->IsNilAttribute()) {
      if (!member.isNillable) QzXmlLib16Data::ThrowNilNotAllowed(element);
      continue;
    }
    if (!context.GetIgnoreUnknownAttributes()) {
      QzXmlLib16Data::ThrowUnexpectedAttribute(*attribute);
    }
  }
  RequireSimpleType(member, element, isNil);
}

std::string ReadSimpleElement(const CMember& member, const CSerializationContext& context,
                              const CXmlElement& element) {
  RequireSimpleElement(member, context, element, false);
  std::string text(element.GetTextView());
  if (text.empty() && member.defaultValue != nullptr) return member.defaultValue;
  if (!member.type->IsEnumeration()) RequireLexicalForm(member.type->GetKind(), text);
  return text;
}

void CSimpleElementRules::CheckElement(const CSerializationContext& context,
                                       const CXmlElement& element, bool isNil) const {
  RequireSimpleElement(m_member, context, element, isNil);
  const std::string_view text = element.GetTextView();
  if (isNil) {
    if (!context.GetIgnoreUnknownElements()) RequireNoText(element);
  } else if (!m_member.type->IsEnumeration() && !(text.empty() && m_member.defaultValue)) {
    RequireLexicalForm(m_member.type->GetKind(), text);
  }
}

}  // namespace detail
}  // namespace QzXmlLib16
