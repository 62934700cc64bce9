#include "qzxml/binding/BindingTables.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

#include "qzxml/binding/Messages.h"
#include "qzxml/binding/SimpleElement.h"
#include "qzxml/binding/TypeOfElement.h"
#include "qzxml/collections/AttributeCol.h"
#include "qzxml/collections/Element.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/AttributeInfo.h"
#include "qzxml/serialization/ElementInfoAll.h"
#include "qzxml/serialization/ElementInfoChoice.h"
#include "qzxml/serialization/ElementInfoSeq.h"
#include "qzxml/serialization/ElementInfoValues.h"
#include "qzxml/serialization/Messages.h"
#include "qzxml/values/ConversionsDetail.h"
#include "qzxml/values/QzVariant.h"
#include "qzxml/xml/ShortText.h"
#include "qzxml/xml/XmlAttribute.h"
#include "qzxml/xml/XmlElement.h"

namespace QzXmlLib16 {
namespace detail {

using namespace QzXmlLib16Data;

namespace {

// --- The entries of the three model groups

struct Sequence {
  using ClassMandatory = CElementInfoSeqClsMnd;
  using ClassOptional = CElementInfoSeqClsOpt;
  using ClassMany = CElementInfoSeqClsCol;
  using ByTypeMandatory = CElementInfoSeqAbsClsMnd;
  using ByTypeOptional = CElementInfoSeqAbsClsOpt;
  using ByTypeMany = CElementInfoSeqAbsClsCol;
  using ValueMandatory = CElementInfoSeqPrimMnd;
  using ValueOptional = CElementInfoSeqPrimOpt;
  using ValueMany = CElementInfoSeqPrimCol;
  using EnumMandatory = CElementInfoSeqEnumMnd;
  using EnumOptional = CElementInfoSeqEnumOpt;
  using EnumMany = CElementInfoSeqEnumCol;
  using UntypedMandatory = CElementInfoSeqUntpdMnd;
  using UntypedOptional = CElementInfoSeqUntpdOpt;
  using UntypedMany = CElementInfoSeqUntpdCol;
};

// Every element of an xs:all stands once at most; the table has no collections then.
struct All {
  using ClassMandatory = CElementInfoAllClsMnd;
  using ClassOptional = CElementInfoAllClsOpt;
  using ClassMany = CElementInfoAllClsCol;
  using ByTypeMandatory = CElementInfoAllAbsClsMnd;
  using ByTypeOptional = CElementInfoAllAbsClsOpt;
  using ByTypeMany = CElementInfoAllAbsClsCol;
  using ValueMandatory = CElementInfoAllPrimMnd;
  using ValueOptional = CElementInfoAllPrimOpt;
  using ValueMany = CElementInfoAllPrimCol;
  using EnumMandatory = CElementInfoAllEnumMnd;
  using EnumOptional = CElementInfoAllEnumOpt;
  using EnumMany = CElementInfoAllPrimCol;
  using UntypedMandatory = CElementInfoAllUntpdMnd;
  using UntypedOptional = CElementInfoAllUntpdOpt;
  using UntypedMany = CElementInfoAllUntpdCol;
};

// A member of a choice is optional by nature.
struct Choice {
  using ClassOptional = CElementInfoChoiceClsOpt;
  using ClassMany = CElementInfoChoiceClsCol;
  using ByTypeOptional = CElementInfoChoiceAbsClsOpt;
  using ByTypeMany = CElementInfoChoiceAbsClsCol;
  using ValueOptional = CElementInfoChoicePrimOpt;
  using ValueMany = CElementInfoChoicePrimCol;
  using EnumOptional = CElementInfoChoiceEnumOpt;
  using EnumMany = CElementInfoChoiceEnumCol;
  using UntypedOptional = CElementInfoChoiceUntpdOpt;
  using UntypedMany = CElementInfoChoiceUntpdCol;
};

// What the walks check once more on the way out: nothing, as all of a type was checked on the way
// in.
const CPrimitiveRestrictions& NoRestrictions() {
  static const CPrimitiveRestrictions kNone;
  return kNone;
}

// Makes the entry of one child.
template <typename Group>
class CElementMaker {
 public:
  CElementMaker(const CMember& member, int index) : m_member(member), m_index(index) {}

  CElementInfo* Make() const {
    switch (m_member.form) {
      case MemberForm::Value:
        return m_member.type->IsEnumeration() ? MakeEnum() : MakeValue();
      case MemberForm::Untyped:
      case MemberForm::Wildcard:
        return MakeUntyped();
      case MemberForm::Object:
      case MemberForm::Group:
      default:
        return m_member.newObjectByType == nullptr ? MakeObject() : MakeObjectByType();
    }
  }

 private:
  // The mandatory or the optional entry, with the same arguments.
  template <typename Mandatory, typename OptionalEntry, typename... Arguments>
  CElementInfo* MakeOne(const Arguments&... arguments) const {
    if (m_member.occurs.min > 0) {
      return new Mandatory(m_member.name, m_member.namespaceUri, m_index, arguments...);
    }
    return new OptionalEntry(m_member.name, m_member.namespaceUri, m_index, arguments...);
  }

  template <typename Many, typename... Arguments>
  CElementInfo* MakeMany(const Arguments&... arguments) const {
    return new Many(m_member.name, m_member.namespaceUri, m_index, arguments...);
  }

  XmlElementType GetElementType() const {
    return m_member.form == MemberForm::Group ? XmlElementType_PseudoElement
                                              : XmlElementType_Element;
  }

  CElementInfo* MakeValue() const {
    if (m_member.IsCollection()) return MakeMany<typename Group::ValueMany>();
    const CSimpleTypeInfo& type = *m_member.type;
    const char* const noFormat = nullptr;
    if constexpr (std::is_same_v<Group, Choice>) {
      return MakeMany<Choice::ValueOptional>(m_member.isNillable, type.GetKind(), noFormat,
                                             type.GetWhitespaceRule(), NoRestrictions(),
                                             m_member.defaultValue);
    } else {
      return MakeOne<typename Group::ValueMandatory, typename Group::ValueOptional>(
          m_member.isNillable, type.GetKind(), noFormat, type.GetWhitespaceRule(), NoRestrictions(),
          m_member.defaultValue);
    }
  }

  CElementInfo* MakeEnum() const {
    if (m_member.IsCollection()) return MakeMany<typename Group::EnumMany>();
    const CSimpleTypeInfo& type = *m_member.type;
    if constexpr (std::is_same_v<Group, Choice>) {
      return MakeMany<Choice::EnumOptional>(m_member.isNillable, type.GetEnumToString(),
                                            type.GetStringToEnum(), m_member.defaultValue);
    } else {
      return MakeOne<typename Group::EnumMandatory, typename Group::EnumOptional>(
          m_member.isNillable, type.GetEnumToString(), type.GetStringToEnum(),
          m_member.defaultValue);
    }
  }

  CElementInfo* MakeUntyped() const {
    if (m_member.IsCollection()) return MakeMany<typename Group::UntypedMany>();
    if constexpr (std::is_same_v<Group, Choice>) {
      return MakeMany<Choice::UntypedOptional>(m_member.wildcard, m_member.namespaceUri);
    } else {
      return MakeOne<typename Group::UntypedMandatory, typename Group::UntypedOptional>(
          m_member.wildcard, m_member.namespaceUri);
    }
  }

  CElementInfo* MakeObject() const {
    const XmlElementType elementType = GetElementType();
    if (m_member.IsCollection()) return MakeMany<typename Group::ClassMany>(elementType);
    if constexpr (!std::is_same_v<Group, Choice>) {
      if (m_member.occurs.min > 0) {
        // A mandatory child of an xs:all that is missing passes unless it requires content.
        const bool requiresContent = m_member.requiresContent || std::is_same_v<Group, All>;
        return MakeMany<typename Group::ClassMandatory>(elementType, m_member.newObject, 0,
                                                        requiresContent);
      }
    }
    return MakeMany<typename Group::ClassOptional>(elementType, m_member.newObject, 0);
  }

  CElementInfo* MakeObjectByType() const {
    const XmlElementType elementType = GetElementType();
    if (m_member.IsCollection()) return MakeMany<typename Group::ByTypeMany>(elementType);
    if constexpr (std::is_same_v<Group, Choice>) {
      return MakeMany<Choice::ByTypeOptional>(elementType, m_member.newObjectByType);
    } else {
      return MakeOne<typename Group::ByTypeMandatory, typename Group::ByTypeOptional>(
          elementType, m_member.newObjectByType);
    }
  }

  const CMember& m_member;
  int m_index;
};

CElementInfo* MakeElementInfo(XmlElementGroupType group, const CMember& member, int index) {
  switch (group) {
    case XmlElementGroupType_Choice:
      return CElementMaker<Choice>(member, index).Make();
    case XmlElementGroupType_All:
      return CElementMaker<All>(member, index).Make();
    case XmlElementGroupType_Sequence:
    default:
      return CElementMaker<Sequence>(member, index).Make();
  }
}

// The entry, with what its constructors do not take.
CElementInfo* NewElementInfo(XmlElementGroupType group, const CMember& member, int index) {
  CElementInfo* const made = MakeElementInfo(group, member, index);
  if (member.form == MemberForm::Value && !member.IsCollection()) {
    made->SetRules(std::make_unique<CSimpleElementRules>(member));
  }
  if (member.form == MemberForm::Untyped) made->SetNeedsNamespace();
  return made;
}

// --- Attributes

// The wildcard of attributes, with the namespaces as a schema means them.
class CWildcardAttributeInfo : public CAttributeInfoAny {
 public:
  CWildcardAttributeInfo(const CMember& member, int index)
      : CAttributeInfoAny(member.name, "", index, true, "##any", member.namespaceUri, nullptr),
        m_member(member) {}

  bool AttributeFromXml(const CSerializationContext& context, CXmlGeneratedClass* object,
                        CXmlAttribute* attribute) override {
    return WildcardTakes(m_member, attribute->GetNamespaceURI()) &&
           CAttributeInfoAny::AttributeFromXml(context, object, attribute);
  }

 private:
  const CMember& m_member;
};

// A value whose text has to be one of XML Schema's. It was held against its type on its way in, and
// may come as a text of its own (KeepEveryDigit).
class CValueAttributeInfo : public CAttributeInfoPrimitive {
 public:
  CValueAttributeInfo(const CMember& member, int index)
      : CAttributeInfoPrimitive(member.name, member.namespaceUri, index, member.occurs.min == 0,
                                member.type->GetKind(), nullptr, member.type->GetWhitespaceRule(),
                                NoRestrictions(), member.defaultValue),
        m_kind(member.type->GetKind()) {}

  bool AttributeFromXml(const CSerializationContext& context, CXmlGeneratedClass* object,
                        CXmlAttribute* attribute) override {
    if (!HasName(*attribute) || !HasNamespace(*attribute)) return false;
    RequireLexicalForm(m_kind, attribute->GetValueView());
    return CAttributeInfoPrimitive::AttributeFromXml(context, object, attribute);
  }

 private:
  ItemType TestValue(const QzVariant& value) const override { return WrittenKind(value, m_kind); }

  ItemType m_kind;
};

CAttributeInfo* NewAttributeInfo(const CMember& member, int index) {
  const bool optional = member.occurs.min == 0;
  const CSimpleTypeInfo& type = *member.type;
  if (type.IsEnumeration()) {
    return new CAttributeInfoEnum(member.name, member.namespaceUri, index, optional,
                                  type.GetEnumToString(), type.GetStringToEnum(),
                                  member.defaultValue);
  }
  return new CValueAttributeInfo(member, index);
}

// Whether the value is a duration of nothing.
bool IsNoTime(const QzVariant& value) {
  return value.GetTypeAsEnum() == ItemType_duration && value.ToString(nullptr).back() == 'P';
}

// A property of a member that a restriction has taken away is in no table.
bool IsAbsent(const CMember& member) { return member.occurs.max == 0; }

}  // namespace

bool WildcardTakes(const CMember& member, std::string_view namespaceUri) {
  const std::string_view target = member.namespaceUri;
  std::string_view rest = member.wildcard;
  while (!rest.empty()) {
    const std::size_t end = rest.find_first_of(" \t\r\n");
    const std::string_view token = rest.substr(0, end);
    rest = end == rest.npos ? std::string_view() : rest.substr(end + 1);
    if (token == "##any") return true;
    if (token == "##other") return !namespaceUri.empty() && namespaceUri != target;
    if (token == "##local" && namespaceUri.empty()) return true;
    if (token == "##targetNamespace" && namespaceUri == target) return true;
    if (!token.empty() && token == namespaceUri) return true;
  }
  return false;
}

// --- Tables

void BuildTables(const CClassBinding& binding, CTabledClass::CTables& made) {
  const int count = binding.GetMemberCount();
  std::vector<CAttributeInfo*> attributes;
  std::vector<CElementInfo*> elements;
  int wildcard = -1;  // behind all named attributes; that of the most derived class
  for (int i = 0; i < count; ++i) {
    const CMember& member = binding.GetMember(i);
    if (IsAbsent(member)) continue;
    if (member.form == MemberForm::AnyAttribute) {
      wildcard = i;
    } else if (member.form == MemberForm::Attribute) {
      attributes.push_back(NewAttributeInfo(member, i));
    } else if (member.IsElement()) {
      elements.push_back(NewElementInfo(binding.GetTraits().group, member, i));
    }
  }
  if (wildcard != -1) {
    attributes.push_back(new CWildcardAttributeInfo(binding.GetMember(wildcard), wildcard));
  }
  made.SetInfo(NewClassInfo(binding, false));
  made.SetElements(elements.data(), elements.size());
  made.SetAttributes(attributes.data(), attributes.size());
}

CParentElementInfo* NewClassInfo(const CClassBinding& binding, bool withType) {
  const CClassTraits& traits = binding.GetTraits();
  int textIndex = -1;
  ItemType textKind = ItemType_None;
  for (int i = 0; i < binding.GetMemberCount(); ++i) {
    const CMember& member = binding.GetMember(i);
    if (member.form != MemberForm::Text || IsAbsent(member)) continue;
    textIndex = i;
    textKind = member.type->IsEnumeration() ? ItemType_string : member.type->GetKind();
  }
  // The attributes of the element around a group are none of the group's.
  const bool failsOnUnknown = traits.elementType == XmlElementType_Element;
  auto info = std::make_unique<CParentElementInfo>(
      traits.group, traits.elementType, traits.typeName, traits.namespaceUri, failsOnUnknown,
      withType, textIndex, textKind, nullptr, textIndex != -1);
  if (!failsOnUnknown) info->SetReadsNoAttributes();
  if (!traits.requiresContent) info->SetMayBeEmpty();
  return info.release();
}

CObjectHandle NewMemberObject(const CMember& member) {
  if (member.form == MemberForm::Untyped) {
    return CObjectHandle(
        new CElement(member.name, member.namespaceUri, member.wildcard, member.namespaceUri));
  }
  return member.newObject == nullptr ? CObjectHandle() : member.newObject(0, member.name);
}

void KeepEveryDigit(QzVariant& value) {
  char text[kNumberSize];
  std::to_chars_result end{};
  int shown = 0;
  if (value.GetTypeAsEnum() == ItemType_r8) {
    // Most texts are seen to read back as the value.
    if (WriteExactR8(text, value.GetR8()) != nullptr || !std::isfinite(value.GetR8())) return;
    end = std::to_chars(text, text + sizeof text, value.GetR8(), std::chars_format::scientific);
    shown = 16;
  } else if (value.GetTypeAsEnum() == ItemType_r4) {
    if (!std::isfinite(value.GetR4())) return;
    end = std::to_chars(text, text + sizeof text, value.GetR4(), std::chars_format::scientific);
    shown = 7;
  } else {
    if (IsNoTime(value)) value.SetString("PT0S");
    return;
  }
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  if (std::count_if(text, std::find(text, end.ptr, 'e'), isDigit) <= shown) return;
  const std::to_chars_result whole = shown == 16
                                         ? std::to_chars(text, text + sizeof text, value.GetR8())
                                         : std::to_chars(text, text + sizeof text, value.GetR4());
  value.SetString(std::string(text, whole.ptr));
}

// --- Failures

namespace {

// Whether two texts are the same value to the rules of a type, as "1.0" and "1.00" are to a union
// with float.
bool IsSameByRules(const CSimpleTypeInfo& type, const std::string& text, const std::string& value) {
  if (type.GetRules() == nullptr) return false;
  const char* const values[] = {value.c_str()};
  return CTextRules(*type.GetRules()).Enumeration(values).Accepts(text);
}

// Whether all bytes of the word are white space. Indentation is spaces and line feeds, which differ
// in three bits: all three or none of them are different from a space then, and nothing else. In
// the other case, for each of the four, the highest bit of a byte tells where the word has it: the
// sum carries into it for every byte but zero.
inline bool IsWhitespaceWord(std::uint64_t word) {
  constexpr std::uint64_t kOnes = 0x0101010101010101;
  constexpr std::uint64_t kLow = 0x7F * kOnes;
  constexpr std::uint64_t kDifferent = (' ' ^ '\n') * kOnes;
  constexpr std::uint64_t kLowerTwo = 0x0A * kOnes;
  static_assert((' ' ^ '\n') == 0x2A);
  const std::uint64_t fromSpace = word ^ (kOnes * ' ');
  if ((fromSpace & ~kDifferent) == 0 && ((fromSpace ^ (fromSpace >> 2)) & kLowerTwo) == 0) {
    return true;
  }
  const auto without = [word](char c) {
    const std::uint64_t differing = word ^ (kOnes * static_cast<unsigned char>(c));
    return ((differing & kLow) + kLow) | differing | kLow;
  };
  return (without(' ') & without('\n') & without('\t') & without('\r')) == kLow;
}

}  // namespace

void CheckFixed(const CMember& member, const QzVariant& value) {
  const CSimpleTypeInfo& type = *member.type;
  std::string text;
  std::string fixed = member.defaultValue;
  if (type.IsEnumeration()) {
    text = type.GetEnumToString()(value.GetI4());
  } else {
    text = value.ToString(nullptr);
    QzVariant fixedValue;
    fixedValue.FromString(fixed, type.GetKind(), type.GetWhitespaceRule());
    fixed = fixedValue.ToString(nullptr);
  }
  if (text == fixed || IsSameByRules(type, text, fixed)) return;
  throw CQzInvalidValueException(
      FormatString(kNotFixedValue, text.c_str(), member.name, fixed.c_str()));
}

void ThrowNothingSelected(const std::string& elementName) {
  const CQzValidationException inner(Messages::kNothingSelected, "");
  throw CQzValidationException(FormatString(Messages::kWritingFailed, elementName.c_str()), "",
                               inner);
}

void ThrowNothingPopulated(CXmlElement& parent) {
  throw CQzValidationException(
      FormatString(Messages::kNothingPopulated, parent.GetLocalName().c_str()), parent.GetXPath());
}

// Each parent's text is asked, which is mostly indentation.
bool HasOnlyWhitespace(std::string_view text) {
  constexpr std::size_t kWord = sizeof(std::uint64_t);
  const char* at = text.data();
  std::size_t left = text.size();
  if (left < kWord) {
    for (; left != 0; ++at, --left) {
      if (*at != ' ' && *at != '\n' && *at != '\t' && *at != '\r') return false;
    }
    return true;
  }
  for (; left > kWord; at += kWord, left -= kWord) {
    if (!IsWhitespaceWord(LoadWord<std::uint64_t>(at))) return false;
  }
  return IsWhitespaceWord(LoadWord<std::uint64_t>(at + left - kWord));  // the words may overlap
}

void RequireNoText(const CXmlElement& element) {
  const std::string_view text = element.GetTextView();
  if (HasOnlyWhitespace(text)) return;
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  constexpr std::size_t kMostShown = 100;
  const std::string shown(text.substr(first, kMostShown));
  throw CQzValidationException(
      FormatString(kUnexpectedText, shown.c_str(), element.GetLocalName().c_str()),
      element.GetXPath());
}

void RequireNoChild(const CXmlElement& element) {
  const CXmlElement* const child = element.GetFirstElement();
  if (child == nullptr) return;
  throw CQzValidationException(FormatString(Messages::kLeftOver, element.GetLocalName().c_str(),
                                            child->GetLocalName().c_str()),
                               element.GetXPath());
}

namespace {

bool IsNilElement(const CXmlElement& element) {
  for (const CXmlAttribute* const attribute : element.GetAttributeRange()) {
    if (attribute->IsNilAttribute()) return ReadNil(*attribute) == NilValue_True;
  }
  return false;
}

}  // namespace

void RequireOwnType(const CClassBinding& binding, const CXmlElement& element) {
  const CTypeOfElement type(element);
  if (!type.IsGiven()) return;
  const CClassTraits& traits = binding.GetTraits();
  if (type.MayBe(traits.namespaceUri, traits.typeName)) return;
  // The classes of global elements of a simple type and of anyType have no name of a type.
  const bool isNameless = *traits.typeName == '\0' && binding.GetMemberCount() > 0;
  const CMember* const first = isNameless ? &binding.GetMember(0) : nullptr;
  if (isNameless && first->form == MemberForm::Text) {
    return RequireSimpleType(*first, element, traits.isNillable && IsNilElement(element));
  }
  if (isNameless && first->form == MemberForm::AnyAttribute && binding.GetMemberCount() == 3)
    return;
  ThrowUnsuitableType(type.GetName(), element);
}

void ThrowUnsuitableType(const std::string& typeName, const CXmlElement& element) {
  throw CQzValidationException(
      FormatString(kUnsuitableType, typeName.c_str(), element.GetLocalName().c_str()),
      element.GetXPath());
}

void ThrowNoSuitableType(const CMember& member, CXmlElement& parent) {
  throw CQzValidationException(FormatString(Messages::kNoSubstitution, member.name),
                               parent.GetXPath());
}

}  // namespace detail
}  // namespace QzXmlLib16
