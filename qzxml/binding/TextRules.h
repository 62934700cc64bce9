#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "qzxml/binding/XsdType.h"
#include "qzxml/platform/Export.h"
#include "qzxml/values/WhitespaceUtils.h"

namespace QzXmlLib16 {

namespace detail {
class CPattern;
class CTextRulesCheck;
}  // namespace detail

// One pattern of PCRE2, as MatchesRegularExpression takes it, compiled when it is first asked. To
// be held in a static variable, which needs no initialisation; the compiled form is kept for the
// life of the process, once for each text. Any number of threads may ask.
class QZXML_API CPatternStep {
 public:
  constexpr CPatternStep(const char* text) : m_text(text), m_compiled(nullptr) {}
  CPatternStep(const CPatternStep&) = delete;
  CPatternStep& operator=(const CPatternStep&) = delete;

  const char* GetText() const { return m_text; }

  // Whether the whole value, in UTF-8, matches. Fails as MatchesRegularExpression does.
  bool Matches(std::string_view value) const;

 private:
  const char* m_text;                                       // not owned
  mutable std::atomic<const detail::CPattern*> m_compiled;  // null until first use
};

// What texts one XSD simple type takes, with every facet as XSD means it: lengths count characters,
// items of a list or octets of binary data; digits are those of the value, without its sign;
// enumerations and bounds are compared as values (1.0 is 1, 12:00:00Z is 13:00:00+01:00), numbers
// of any size exactly. A bound that a value can not be compared with, as a date without zone and
// one with, is not kept; NaN keeps no bound. What needs the whole document is not looked at: that
// an ID stands once, that an entity is declared, that a prefix is.
//
//   static const CPatternStep kSkuPatterns[] = {"[0-9]{3}-[A-Z]{2}"};
//   static const CTextRules kSku = CTextRules(XsdType_token).Patterns(kSkuPatterns).MaxLength(6);
//   static const CTextRules kSkus = CTextRules::ListOf(kSku).MinLength(1);
//
// Each facet returns the rules with it, so that rules are made where they are declared, without
// initialisation at run time. A type that is derived in steps has the facets of all of them: the
// patterns of each step, of the others the last. Texts, arrays and other rules are not owned. A
// plain value; any thread may ask it.
// Source: XML Schema 1.0 part 2, second edition, sections 3 and 4.3.
class QZXML_API CTextRules {
 public:
  using WhitespaceRule = CWhitespaceUtils::WhitespaceRule;

  // The values of a built-in type. NMTOKENS, IDREFS and ENTITIES are lists that are not empty.
  constexpr explicit CTextRules(XsdType type) : m_type(type) {}

  // Values of item with white space between them; none is allowed.
  static constexpr CTextRules ListOf(const CTextRules& item) {
    CTextRules rules(XsdType_anySimpleType);
    rules.m_item = &item;
    return rules;
  }

  // Values of one of the members: of the first that takes the text, whose white space rule holds.
  static constexpr CTextRules UnionOf(const CTextRules* const* members, std::size_t count) {
    CTextRules rules(XsdType_anySimpleType);
    rules.m_members = members;
    rules.m_memberCount = count;
    return rules;
  }
  template <std::size_t Count>
  static constexpr CTextRules UnionOf(const CTextRules* const (&members)[Count]) {
    return UnionOf(members, Count);
  }

  // --- Facets. Each answers these rules with the facet, in place of what it was before. ---

  // In place of the built-in type's own: of string preserve, of normalizedString replace, of all
  // others collapse. Lists always collapse.
  constexpr CTextRules Whitespace(WhitespaceRule rule) const {
    return With([rule](CTextRules& rules) { rules.m_whitespace = rule; });
  }

  // All of them have to match, for a list the whole of it.
  constexpr CTextRules Patterns(const CPatternStep* steps, std::size_t count) const {
    return With([=](CTextRules& rules) {
      rules.m_patterns = steps;
      rules.m_patternCount = count;
    });
  }
  template <std::size_t Count>
  constexpr CTextRules Patterns(const CPatternStep (&steps)[Count]) const {
    return Patterns(steps, Count);
  }

  // The value is that of one of the texts, in UTF-8. A text that is no value equals none.
  constexpr CTextRules Enumeration(const char* const* texts, std::size_t count) const {
    return With([=](CTextRules& rules) {
      rules.m_enumeration = texts;
      rules.m_enumerationCount = count;
    });
  }
  template <std::size_t Count>
  constexpr CTextRules Enumeration(const char* const (&texts)[Count]) const {
    return Enumeration(texts, Count);
  }

  // In characters, items or octets. A QName and a NOTATION have no length that counts.
  constexpr CTextRules Length(std::uint32_t length) const {
    return With([=](CTextRules& rules) { rules.m_minLength = rules.m_maxLength = length; });
  }
  constexpr CTextRules MinLength(std::uint32_t length) const {
    return With([=](CTextRules& rules) { rules.m_minLength = length; });
  }
  constexpr CTextRules MaxLength(std::uint32_t length) const {
    return With([=](CTextRules& rules) { rules.m_maxLength = length; });
  }

  // Bounds of numbers, dates and durations, as they stand in the schema.
  constexpr CTextRules MinInclusive(const char* bound) const {
    return With([=](CTextRules& rules) { rules.m_minInclusive = bound; });
  }
  constexpr CTextRules MaxInclusive(const char* bound) const {
    return With([=](CTextRules& rules) { rules.m_maxInclusive = bound; });
  }
  constexpr CTextRules MinExclusive(const char* bound) const {
    return With([=](CTextRules& rules) { rules.m_minExclusive = bound; });
  }
  constexpr CTextRules MaxExclusive(const char* bound) const {
    return With([=](CTextRules& rules) { rules.m_maxExclusive = bound; });
  }

  // Of decimals and integers.
  constexpr CTextRules TotalDigits(std::uint32_t digits) const {
    return With([=](CTextRules& rules) { rules.m_totalDigits = digits; });
  }
  constexpr CTextRules FractionDigits(std::uint32_t digits) const {
    return With([=](CTextRules& rules) { rules.m_fractionDigits = digits; });
  }

  // --- Checks. The text is in the local encoding, as a document has it: white space comes first.
  // ---

  // Whether the text is a value and keeps the facets. Throws CQzException "Invalid Regular
  // Expression: %s Error: '%s'" for a pattern that PCRE2 refuses.
  bool Accepts(std::string_view text) const;

  // Throws CQzException "Invalid Value for %s [%s]." with the name of the member and the text when
  // it is not accepted.
  void Check(const char* memberName, std::string_view text) const;

 private:
  friend class detail::CTextRulesCheck;
  static constexpr std::uint32_t kNoLimit = 0xFFFFFFFF;

  template <typename Change>
  constexpr CTextRules With(Change change) const {
    CTextRules changed = *this;
    change(changed);
    return changed;
  }

  XsdType m_type;
  WhitespaceRule m_whitespace = WhitespaceRule::WhitespaceRule_None;  // None: the type's own
  const CTextRules* m_item = nullptr;                                 // of a list
  const CTextRules* const* m_members = nullptr;                       // of a union
  std::size_t m_memberCount = 0;
  const CPatternStep* m_patterns = nullptr;
  std::size_t m_patternCount = 0;
  const char* const* m_enumeration = nullptr;
  std::size_t m_enumerationCount = 0;
  const char* m_minInclusive = nullptr;
  const char* m_maxInclusive = nullptr;
  const char* m_minExclusive = nullptr;
  const char* m_maxExclusive = nullptr;
  std::uint32_t m_minLength = 0;
  std::uint32_t m_maxLength = kNoLimit;
  std::uint32_t m_totalDigits = kNoLimit;
  std::uint32_t m_fractionDigits = kNoLimit;
};

}  // namespace QzXmlLib16
