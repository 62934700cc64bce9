#pragma once

#include <atomic>
#include <cstdint>
#include <string_view>

#include "qzxml/binding/TextRules.h"
#include "qzxml/platform/Export.h"
#include "qzxml/serialization/ClassfactoryBase.h"
#include "qzxml/serialization/PrimitiveRestrictions.h"
#include "qzxml/values/ItemType.h"
#include "qzxml/values/WhitespaceUtils.h"

namespace QzXmlLib16 {

struct QzVariant;

// What generated code says of one XSD simple type: the kind that its values have in C++, and what
// is checked. To be held in a static variable, which needs no initialisation at run time:
//
//   static const CSimpleTypeInfo kQuantity(
//       ItemType_ui4, CWhitespaceUtils::WhitespaceRule_Collapse,
//       CSimpleTypeInfo::CFacets().MinInclusive("1").MaxInclusive("100"));
//   static const CSimpleTypeInfo kSku(ItemType_string, CWhitespaceUtils::WhitespaceRule_Collapse,
//                                     kSkuRules);
//
// Two things can be said of what a value has to keep. The facets go to CPrimitiveRestrictions,
// whose check is fast and stands in the tables of elements and attributes too; but it counts the
// octets of a text and the sign of a number. So facets are only those that mean there what they
// mean in a schema: bounds of numbers, digits of decimals and of unsigned numbers, lengths of
// binary data, one pattern of a text. Everything else, such as the length of a text, the digits of
// signed numbers, bounds of dates, lists and unions, goes to rules (CTextRules), which look at the
// value's text. Both have to be kept. A type whose values no kind holds exactly is bound as a text
// with rules.
//
// Threads may share one.
class QZXML_API CSimpleTypeInfo {
 public:
  using WhitespaceRule = CWhitespaceUtils::WhitespaceRule;

  // The facets of a type that the kind's own check keeps exactly. Texts are not owned.
  class CFacets {
   public:
    constexpr CFacets() = default;

    constexpr CFacets Pattern(const char* pattern) const {
      return With(&CFacets::m_pattern, pattern);
    }
    constexpr CFacets MinInclusive(const char* bound) const {
      return With(&CFacets::m_minInclusive, bound);
    }
    constexpr CFacets MaxInclusive(const char* bound) const {
      return With(&CFacets::m_maxInclusive, bound);
    }
    constexpr CFacets MinExclusive(const char* bound) const {
      return With(&CFacets::m_minExclusive, bound);
    }
    constexpr CFacets MaxExclusive(const char* bound) const {
      return With(&CFacets::m_maxExclusive, bound);
    }
    constexpr CFacets MinLength(std::int32_t length) const {
      return With(&CFacets::m_minLength, length);
    }
    constexpr CFacets MaxLength(std::int32_t length) const {
      return With(&CFacets::m_maxLength, length);
    }
    constexpr CFacets Length(std::int32_t length) const { return With(&CFacets::m_length, length); }
    constexpr CFacets TotalDigits(std::int32_t digits) const {
      return With(&CFacets::m_totalDigits, digits);
    }
    constexpr CFacets FractionDigits(std::int32_t digits) const {
      return With(&CFacets::m_fractionDigits, digits);
    }

    constexpr bool IsEmpty() const {
      return m_pattern == nullptr && m_minInclusive == nullptr && m_maxInclusive == nullptr &&
             m_minExclusive == nullptr && m_maxExclusive == nullptr && m_minLength < 0 &&
             m_maxLength < 0 && m_length < 0 && m_totalDigits < 0 && m_fractionDigits < 0;
    }

   private:
    friend class CSimpleTypeInfo;
    template <typename T>
    constexpr CFacets With(T CFacets::*facet, T value) const {
      CFacets changed = *this;
      changed.*facet = value;
      return changed;
    }

    const char* m_pattern = nullptr;
    const char* m_minInclusive = nullptr;
    const char* m_maxInclusive = nullptr;
    const char* m_minExclusive = nullptr;
    const char* m_maxExclusive = nullptr;
    std::int32_t m_minLength = -1;
    std::int32_t m_maxLength = -1;
    std::int32_t m_length = -1;
    std::int32_t m_totalDigits = -1;
    std::int32_t m_fractionDigits = -1;
  };

  // A type without facets.
  constexpr CSimpleTypeInfo(ItemType kind, WhitespaceRule whitespace)
      : CSimpleTypeInfo(kind, whitespace, CFacets(), nullptr) {}
  constexpr CSimpleTypeInfo(ItemType kind, WhitespaceRule whitespace, const CFacets& facets)
      : CSimpleTypeInfo(kind, whitespace, facets, nullptr) {}
  // The rules are not owned.
  constexpr CSimpleTypeInfo(ItemType kind, WhitespaceRule whitespace, const CTextRules& rules)
      : CSimpleTypeInfo(kind, whitespace, CFacets(), &rules) {}
  constexpr CSimpleTypeInfo(ItemType kind, WhitespaceRule whitespace, const CFacets& facets,
                            const CTextRules& rules)
      : CSimpleTypeInfo(kind, whitespace, facets, &rules) {}
  // An enumeration of C++, whose kind is ItemType_i4 in a variant and whose texts are the
  // functions' (CEnumerationInfo.h). Nothing is checked but by them.
  constexpr CSimpleTypeInfo(EnumToString enumToString, StringToEnum stringToEnum)
      : m_kind(ItemType_i4),
        m_whitespace(WhitespaceRule::WhitespaceRule_None),
        m_isChecked(true),
        m_enumToString(enumToString),
        m_stringToEnum(stringToEnum) {}

  CSimpleTypeInfo(const CSimpleTypeInfo&) = delete;
  CSimpleTypeInfo& operator=(const CSimpleTypeInfo&) = delete;

  ItemType GetKind() const { return m_kind; }
  WhitespaceRule GetWhitespaceRule() const { return m_whitespace; }
  const CTextRules* GetRules() const { return m_rules; }  // null when there are none
  bool HasFacets() const { return m_hasFacets; }
  bool IsChecked() const { return m_isChecked; }  // whether Check has anything to do
  bool IsEnumeration() const { return m_enumToString != nullptr; }
  EnumToString GetEnumToString() const { return m_enumToString; }  // null unless an enumeration
  StringToEnum GetStringToEnum() const { return m_stringToEnum; }  // null unless an enumeration

  // The facets for the tables of elements and attributes, made at the first call and shared by all
  // from then on; it lives as long as the process.
  const CPrimitiveRestrictions& GetRestrictions() const;

  // Checks a value of the type's kind. A nil value and one that is not set pass. An enumeration's
  // value passes when it has a text, a date when it has the form of its kind ("2004-05" is no
  // date), data unless they come of a base64 text that was none. Throws what
  // CheckPrimitiveRestriction throws, "Invalid Value for %s [%s]." and its like, for rules too;
  // asserts "value.GetTypeAsEnum() == m_kind" where there is something to check.
  void Check(const char* memberName, const QzVariant& value) const {
    if (m_isChecked) CheckValue(memberName, value);
  }

  // Whether a document may have the text as a value of the type: that it can be converted to the
  // kind and passes Check.
  bool Accepts(std::string_view text) const;

 private:
  constexpr CSimpleTypeInfo(ItemType kind, WhitespaceRule whitespace, const CFacets& facets,
                            const CTextRules* rules)
      : m_kind(kind),
        m_whitespace(whitespace),
        m_isChecked(!facets.IsEmpty() || rules != nullptr || HasForm(kind)),
        m_hasFacets(!facets.IsEmpty()),
        m_facets(facets),
        m_rules(rules) {}

  // Whether conversions to the kind leave something to check.
  static constexpr bool HasForm(ItemType kind) {
    return detail::HoldsDateTime(kind) || kind == ItemType_base64Binary;
  }
  void CheckValue(const char* memberName, const QzVariant& value) const;
  void CheckRules(const char* memberName, const QzVariant& value) const;

  ItemType m_kind;
  WhitespaceRule m_whitespace;
  bool m_isChecked;
  bool m_hasFacets = false;
  CFacets m_facets;
  const CTextRules* m_rules = nullptr;  // not owned
  EnumToString m_enumToString = nullptr;
  StringToEnum m_stringToEnum = nullptr;
  mutable std::atomic<const CPrimitiveRestrictions*> m_restrictions{nullptr};
};

// A simple type by the name that an xsi:type has for it.
struct CNamedSimpleType {
  const char* namespaceUri;
  const char* name;  // null behind the last one of an array
  const CSimpleTypeInfo* type;
};

// The type that a schema declares for an element, and those of the schema that an xsi:type may name
// there instead: its own name first, if it has one there, then what is validly derived from it and
// the built-in types that a union has among its members. Types that are derived from built-in ones
// by XML Schema itself are known to the library and stand in no array.
//
//   const CNamedSimpleType kSku_Named[] = {
//       {kNamespace, "Sku", &kSku}, {kNamespace, "ShortSku", &kShortSku}, {}};
//   inline constexpr CSimpleTypeFamily kSku_Types{kSku, kSku_Named};
//
// Source: XML Schema 1.0 part 1, section 3.14.6, Type Derivation OK (Simple).
struct CSimpleTypeFamily {
  constexpr CSimpleTypeFamily(const CSimpleTypeInfo& itsType, const CNamedSimpleType* itsNamed)
      : type(itsType), named(itsNamed) {}

  const CSimpleTypeInfo& type;
  const CNamedSimpleType* named;
};

}  // namespace QzXmlLib16
