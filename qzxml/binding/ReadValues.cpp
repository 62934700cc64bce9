// Values of ordinary texts: those that no rule of white space changes and that a short conversion
// takes. Each function makes the whole value and holds it against its type before the object gets
// it. False, or a CQzException, which Take turns into one, says that this is a text for the walk.
#include "qzxml/binding/ReadValues.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

#include "qzxml/binding/BoundClassDetail.h"
#include "qzxml/binding/DateForms.h"
#include "qzxml/binding/SimpleElement.h"
#include "qzxml/collections/XmlCollectionBase.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/PrimitiveRestrictions.h"
#include "qzxml/values/Conversions.h"
#include "qzxml/values/ConversionsDetail.h"
#include "qzxml/values/PlainNumbers.h"
#include "qzxml/xml/ShortText.h"

namespace QzXmlLib16 {
namespace detail {

using namespace QzXmlLib16Data;

namespace {

using Rule = CWhitespaceUtils::WhitespaceRule;

// --- The data member

// Out of the bytes that a member keeps.
template <typename T, typename Member>
T& DataMemberOf(CBoundClass& object, const Member& member) {
  T CBoundClass::*pointer;
  static_assert(sizeof pointer == sizeof member.pointer);
  std::memcpy(&pointer, member.pointer, sizeof pointer);
  return object.*pointer;
}

template <typename Value>
std::optional<Value>& PropertyOf(CBoundClass& object, const ReadMember& member) {
  return DataMemberOf<std::optional<Value>>(object, member);
}

template <typename T, typename Member>
void KeepPointer(T CBoundClass::*pointer, Member& member) {
  static_assert(sizeof pointer == sizeof member.pointer);
  std::memcpy(member.pointer, &pointer, sizeof pointer);
}

// --- Emptying

template <typename T>
void ResetValue(CBoundClass& object, const MemberReset& member) {
  DataMemberOf<T>(object, member).reset();
}

void ResetObject(CBoundClass& object, const MemberReset& member) {
  CObjectHandle& property = DataMemberOf<CObjectHandle>(object, member);
  if (property != nullptr) property = nullptr;
}

void ResetCollection(CBoundClass& object, const MemberReset& member) {
  const CCollectionHandle& property = DataMemberOf<CCollectionHandle>(object, member);
  if (property != nullptr && property->GetCount() > 0) property->Clear();
}

// --- Checks

// What CSimpleTypeInfo::Check says of a value, by a way for all kinds.
template <ItemType kind>
bool Passes(const ReadMember& member, const typename VariantKind<kind>::Value& value) {
  const CSimpleTypeInfo& type = *member.member.type;
  if (!type.IsChecked()) return true;
  QzVariant variant;
  VariantKind<kind>::Set(variant, value);
  type.Check(member.member.name, variant);
  return true;
}

// --- Texts

constexpr std::size_t kMostNumberSize = 64;

// Whether the text is digits, with a minus in front and one point among them at most, and short
// enough to be surely taken as a number of any size.
bool IsPlainNumber(std::string_view text, bool mayHavePoint) {
  if (!text.empty() && text.front() == '-') text.remove_prefix(1);
  if (text.empty() || text == "." || text.size() > kMostNumberSize) return false;
  for (const char c : text) {
    if (c >= '0' && c <= '9') continue;
    if (c != '.' || !mayHavePoint) return false;
    mayHavePoint = false;
  }
  return true;
}

// --- Kinds

bool StoreString(CBoundClass& object, const ReadMember& member, std::string_view text) {
  const CSimpleTypeInfo& type = *member.member.type;
  std::string scratch;
  const std::string_view value = ApplyRule(type.GetWhitespaceRule(), text, scratch);
  if (type.HasFacets()) {
    if (!Passes<ItemType_string>(member, std::string(value))) return false;
  } else if (type.GetRules() != nullptr && !type.GetRules()->Accepts(value)) {
    return false;
  }
  std::optional<std::string>& property = PropertyOf<std::string>(object, member);
  if (property) {
    property->assign(value);
  } else {
    property.emplace(value);
  }
  return true;
}

// Of a type that takes every text as it stands.
bool StoreWhole(CBoundClass& object, const ReadMember& member, std::string_view text) {
  std::optional<std::string>& property = PropertyOf<std::string>(object, member);
  if (property) return false;
  property.emplace(text);
  return true;
}

template <ItemType kind>
bool StoreInteger(CBoundClass& object, const ReadMember& member, std::string_view text) {
  using Value = typename VariantKind<kind>::Value;
  using Number = std::conditional_t<kind == ItemType_i1, signed char, Value>;
  Number number = 0;
  if (!ParsePlainInteger(text, number)) return false;
  const auto value = static_cast<Value>(number);
  if (member.hasBounds) {
    using Wide = std::conditional_t<std::is_signed_v<Number>, std::int64_t, std::uint64_t>;
    const auto wide = static_cast<Wide>(number);
    if (wide < static_cast<Wide>(member.lowest) || wide > static_cast<Wide>(member.highest)) {
      return false;
    }
  } else if (!Passes<kind>(member, value)) {
    return false;
  }
  PropertyOf<Value>(object, member) = value;
  return true;
}

template <ItemType kind>
bool StoreReal(CBoundClass& object, const ReadMember& member, std::string_view text) {
  using Value = typename VariantKind<kind>::Value;
  if (!IsPlainNumber(text, true) && !IsLexicalForm(kind, text)) return false;
  const Rule rule = member.member.type->GetWhitespaceRule();
  const std::string whole(text);
  const Value value = static_cast<Value>(
      kind == ItemType_r4 ? static_cast<double>(CConversions::r4FromString(whole, rule))
                          : CConversions::r8FromString(whole, rule));
  if (!Passes<kind>(member, value)) return false;
  PropertyOf<Value>(object, member) = value;
  return true;
}

bool StoreBoolean(CBoundClass& object, const ReadMember& member, std::string_view text) {
  const bool isTrue = text == "true" || text == "1";
  if (!isTrue && text != "false" && text != "0") return false;
  if (!Passes<ItemType_boolean>(member, isTrue)) return false;
  PropertyOf<bool>(object, member) = isTrue;
  return true;
}

// Texts in the tree of a document end with a zero byte.
template <ItemType kind>
bool StoreLongNumber(CBoundClass& object, const ReadMember& member, std::string_view text) {
  using Value = typename VariantKind<kind>::Value;
  if (!IsPlainNumber(text, kind == ItemType_decimal)) return false;
  std::optional<Value>& property = PropertyOf<Value>(object, member);
  if (!property && !member.member.type->IsChecked()) {
    property.emplace(text.data());
    return true;
  }
  Value value(text.data());
  if (!Passes<kind>(member, value)) return false;
  property = std::move(value);
  return true;
}

// Whether a text that was parsed as a value of the kind has its only form of that size: CCYY-MM-DD,
// CCYY-MM-DDThh:mm:ss and the same with "Z". Such a text is one of XML Schema's.
template <ItemType kind>
bool HasCommonForm(std::string_view text) {
  if constexpr (kind == ItemType_date) return text.size() == 10;
  if constexpr (kind == ItemType_datetime) {
    return text.size() == 19 || (text.size() == 20 && text.back() == 'Z');
  }
  return false;
}

template <ItemType kind>
bool StoreDateTime(CBoundClass& object, const ReadMember& member, std::string_view text) {
  if (text.empty() || HoldsBlank(text)) return false;
  CDateTime value;
  if constexpr (kind == ItemType_datetime) {
    value.ParseXSDDateTime(text.data());
  } else if constexpr (kind == ItemType_time) {
    value.ParseXSDTime(text.data());
  } else {
    value.ParseXSDDate(text.data());
  }
  if (value.GetType() != DateFormOf(kind)) return false;
  if (!HasCommonForm<kind>(text) && !IsLexicalForm(kind, text)) return false;
  const CSimpleTypeInfo& type = *member.member.type;
  const bool isChecked = type.HasFacets() || type.GetRules() != nullptr;
  if (isChecked && !Passes<kind>(member, value)) return false;
  PropertyOf<CDateTime>(object, member) = value;
  return true;
}

bool StoreDuration(CBoundClass& object, const ReadMember& member, std::string_view text) {
  if (HoldsBlank(text) || !IsLexicalForm(ItemType_duration, text)) return false;
  CDateTimeSpan value;
  value.ParseXSDDuration(text.data());
  if (!Passes<ItemType_duration>(member, value)) return false;
  PropertyOf<CDateTimeSpan>(object, member) = value;
  return true;
}

bool StoreEnumeration(CBoundClass& object, const ReadMember& member, std::string_view text) {
  const CSimpleTypeInfo& type = *member.member.type;
  const std::int32_t number = type.GetStringToEnum()(text.empty() ? "" : text.data());
  type.GetEnumToString()(number);  // refuses what is no enumerator
  PropertyOf<std::int32_t>(object, member) = number;
  return true;
}

// Null for a kind that is left to the walk.
template <ItemType kind>
ReadMember::StoreValue FindStore(const CSimpleTypeInfo& type) {
  if constexpr (kind == ItemType_string) {
    const bool isWhole =
        !type.IsChecked() && type.GetWhitespaceRule() == CWhitespaceUtils::WhitespaceRule_None;
    return isWhole ? &StoreWhole : &StoreString;
  } else if constexpr (kind >= ItemType_i1 && kind <= ItemType_ui8) {
    return &StoreInteger<kind>;
  } else if constexpr (kind == ItemType_r4 || kind == ItemType_r8) {
    return &StoreReal<kind>;
  } else if constexpr (kind == ItemType_boolean) {
    return &StoreBoolean;
  } else if constexpr (kind == ItemType_decimal || kind == ItemType_integer) {
    return &StoreLongNumber<kind>;
  } else if constexpr (HoldsDateTime(kind)) {
    return &StoreDateTime<kind>;
  } else if constexpr (kind == ItemType_duration) {
    return &StoreDuration;
  } else {
    return nullptr;
  }
}

// --- Bounds of integers

template <typename Wide, ItemType kind>
Wide ParseBound(const std::string& bound) {
  QzVariant value;
  value.FromString(bound, kind, CWhitespaceUtils::WhitespaceRule_Collapse);
  if constexpr (kind == ItemType_i1) {
    return static_cast<signed char>(VariantKind<kind>::Take(value));
  } else {
    return VariantKind<kind>::Take(value);
  }
}

// Takes the bounds of a type that has nothing else to check. Those that no number can keep, and
// those that are no numbers, stay with the type.
template <ItemType kind>
void PrepareBounds(const CSimpleTypeInfo& type, ReadMember& member) {
  using Value = typename VariantKind<kind>::Value;
  using Number = std::conditional_t<kind == ItemType_i1, signed char, Value>;
  using Wide = std::conditional_t<std::is_signed_v<Number>, std::int64_t, std::uint64_t>;
  const CPrimitiveRestrictions& facets = type.GetRestrictions();
  if (!type.HasFacets() || type.GetRules() != nullptr || facets.GetTotalDigits() >= 0) return;
  const Wide least = std::numeric_limits<Number>::min();
  const Wide most = std::numeric_limits<Number>::max();
  Wide lowest = least;
  Wide highest = most;
  try {
    const auto parse = [](const std::string& bound) { return ParseBound<Wide, kind>(bound); };
    if (!facets.GetMinInclusive().empty()) lowest = parse(facets.GetMinInclusive());
    if (!facets.GetMaxInclusive().empty()) highest = parse(facets.GetMaxInclusive());
    if (!facets.GetMinExclusive().empty()) {
      const Wide bound = parse(facets.GetMinExclusive());
      if (bound == most) return;
      lowest = std::max(lowest, static_cast<Wide>(bound + 1));
    }
    if (!facets.GetMaxExclusive().empty()) {
      const Wide bound = parse(facets.GetMaxExclusive());
      if (bound == least) return;
      highest = std::min(highest, static_cast<Wide>(bound - 1));
    }
  } catch (const CQzException&) {
    return;
  }
  member.hasBounds = true;
  member.lowest = static_cast<std::int64_t>(lowest);
  member.highest = static_cast<std::int64_t>(highest);
}

}  // namespace

// --- CReadValues

void CReadValues::Prepare(const CMember& declared, ReadMember& member) {
  const CSimpleTypeInfo& type = *member.member.type;
  const bool isOrdinary = !member.member.isFixed && type.GetKind() == declared.type->GetKind() &&
                          type.IsEnumeration() == declared.type->IsEnumeration() &&
                          IsKnownRule(type.GetWhitespaceRule());
  if (!isOrdinary) return;
  CBoundClass::VisitValue(declared, [&type, &member](auto kind, auto pointer) {
    constexpr ItemType kKind = decltype(kind)::value;
    KeepPointer(pointer, member);
    member.storeValue = type.IsEnumeration() ? &StoreEnumeration : FindStore<kKind>(type);
    if constexpr (kKind >= ItemType_i1 && kKind <= ItemType_ui8) {
      if (!type.IsEnumeration()) PrepareBounds<kKind>(type, member);
    }
  });
  if (member.storeValue != nullptr) member.way = ReadMember::Way::kValue;
}

void CReadValues::PrepareObject(const CMember& declared, ReadMember& member) {
  if (member.member.IsCollection()) {
    KeepPointer(declared.property.m_collection, member);
    member.way = ReadMember::Way::kCollection;
  } else if (member.member.newObjectByType == nullptr) {
    KeepPointer(declared.property.m_object, member);
    member.way = member.isMandatory ? ReadMember::Way::kHeldObject : ReadMember::Way::kNewObject;
  }
}

bool CReadValues::Take(CBoundClass& object, const ReadMember& member, std::string_view text) {
  if (member.way != ReadMember::Way::kValue) return false;
  try {
    return member.storeValue(object, member, text);
  } catch (const CQzException&) {
    return false;  // to be met again by the walk
  }
}

std::vector<MemberReset> CReadValues::ListResets(const CClassBinding& binding) {
  std::vector<MemberReset> resets;
  for (const CClassBinding* at = &binding; at != nullptr; at = at->m_base) {
    for (const CMember& member : at->m_own) {
      MemberReset reset;
      if (member.IsCollection()) {
        KeepPointer(member.property.m_collection, reset);
        reset.function = &ResetCollection;
      } else if (member.IsValue()) {
        CBoundClass::VisitValue(member, [&reset](auto, auto pointer) {
          KeepPointer(pointer, reset);
          reset.function =
              &ResetValue<std::decay_t<decltype(std::declval<CBoundClass&>().*pointer)>>;
        });
      } else {
        KeepPointer(member.property.m_object, reset);
        reset.function = &ResetObject;
      }
      if (reset.function != nullptr) resets.push_back(reset);
    }
  }
  return resets;
}

bool CReadValues::IsEmpty(const CBoundClass& object) {
  bool isEmpty = true;
  for (const CClassBinding* at = &object.GetBinding(); at != nullptr; at = at->m_base) {
    for (const CMember& member : at->m_own) {
      if (member.IsCollection()) {
        const CCollectionHandle& collection = object.*member.property.m_collection;
        isEmpty = isEmpty && (collection == nullptr || collection->GetCount() == 0);
      } else if (member.IsValue()) {
        CBoundClass::VisitValue(member, [&object, &isEmpty](auto, auto pointer) {
          isEmpty = isEmpty && !(object.*pointer).has_value();
        });
      } else {
        isEmpty = isEmpty && object.*member.property.m_object == nullptr;
      }
    }
  }
  return isEmpty;
}

bool CReadValues::HasListeners(const CBoundClass& object) {
  for (const CClassBinding* at = &object.GetBinding(); at != nullptr; at = at->m_base) {
    for (const CMember& member : at->m_own) {
      if (!member.IsCollection()) continue;
      const CXmlCollectionBase* const collection = object.*member.property.m_collection;
      if (collection != nullptr && collection->HasEventListeners()) return true;
    }
  }
  return false;
}

CObjectHandle& CReadValues::Object(CBoundClass& object, const ReadMember& member) {
  return DataMemberOf<CObjectHandle>(object, member);
}

CCollectionHandle& CReadValues::Collection(CBoundClass& object, const ReadMember& member) {
  return DataMemberOf<CCollectionHandle>(object, member);
}

CObjectHandle CReadValues::HeldObject(CBoundClass& object, const ReadMember& member) {
  try {
    return object.GetObject(member.index, Object(object, member));
  } catch (const CQzException&) {
    return CObjectHandle();  // to be met again by the walk
  }
}

}  // namespace detail
}  // namespace QzXmlLib16
