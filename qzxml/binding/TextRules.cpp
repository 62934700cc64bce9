#include "qzxml/binding/TextRules.h"

#include <algorithm>
#include <string>
#include <utility>

#include "qzxml/binding/XsdValue.h"
#include "qzxml/runtime/Encoder.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/Messages.h"
#include "qzxml/serialization/Pattern.h"
#include "qzxml/values/BinaryData.h"

// A text is a value of a union when it is one of a member, so that the check first finds the leaf:
// the rules, of an atomic type or a list, whose value it is. The facets of the unions on the way
// there then look at the text as the leaf's white space rule leaves it.
namespace QzXmlLib16 {

bool CPatternStep::Matches(std::string_view value) const {
  const detail::CPattern* compiled = m_compiled.load(std::memory_order_acquire);
  if (compiled == nullptr) {
    compiled = &detail::KeepPattern(m_text);
    m_compiled.store(compiled, std::memory_order_release);
  }
  return compiled->MatchesUtf8(value);
}

namespace detail {

class CTextRulesCheck {
 public:
  // The leaf whose value the text is, when it keeps the facets of all on the way; null for none.
  static const CTextRules* FindLeaf(const CTextRules& rules, std::string_view text);

  // Whether lengths and patterns are all that the rules look at.
  static bool IsPlain(const CTextRules& rules) {
    const bool isText = rules.m_type == XsdType_string || rules.m_type == XsdType_token ||
                        rules.m_type == XsdType_normalizedString;
    return isText && rules.m_item == nullptr && rules.m_members == nullptr &&
           rules.m_enumeration == nullptr && rules.m_minInclusive == nullptr &&
           rules.m_maxInclusive == nullptr && rules.m_minExclusive == nullptr &&
           rules.m_maxExclusive == nullptr;
  }
  // What FindLeaf says of such rules and a text without white space.
  static bool Keeps(const CTextRules& rules, std::string_view text) {
    return KeepsLengths(rules, text) && KeepsPatterns(rules, text);
  }

 private:
  // A text as a rule leaves it. The view is valid as long as this and the text are.
  class CNormalized {
   public:
    CNormalized(const CTextRules& leaf, std::string_view text) : m_view(text) {
      const CWhitespaceUtils::WhitespaceRule rule = GetWhitespace(leaf);
      if (rule == CWhitespaceUtils::WhitespaceRule_Collapse) {
        m_view = ApplyRule(rule, text, m_scratch);
      } else if (rule == CWhitespaceUtils::WhitespaceRule_Replace) {
        Replace(text);
      }
    }
    CNormalized(const CNormalized&) = delete;
    CNormalized& operator=(const CNormalized&) = delete;
    std::string_view Get() const { return m_view; }

   private:
    // One space for each char, as XML Schema has it: a line end here came by a reference.
    void Replace(std::string_view text) {
      if (text.find_first_of("\t\n\r") == std::string_view::npos) return;
      m_scratch = text;
      std::replace_if(
          m_scratch.begin(), m_scratch.end(),
          [](char c) { return CWhitespaceUtils::IsWhiteSpace(c); }, ' ');
      m_view = m_scratch;
    }

    std::string m_scratch;
    std::string_view m_view;
  };

  static bool IsUnion(const CTextRules& rules) { return rules.m_members != nullptr; }
  static bool IsBuiltInList(const CTextRules& rules) {
    return rules.m_item == nullptr && GetBuiltInItem(rules.m_type) != rules.m_type;
  }
  static bool IsList(const CTextRules& rules) {
    return rules.m_item != nullptr || IsBuiltInList(rules);
  }
  static CWhitespaceUtils::WhitespaceRule GetWhitespace(const CTextRules& leaf);
  static CTextRules GetItem(const CTextRules& list) {
    return list.m_item == nullptr ? CTextRules(GetBuiltInItem(list.m_type)) : *list.m_item;
  }

  static const CTextRules* FindMemberLeaf(const CTextRules& rules, std::string_view text);
  static bool IsValue(const CTextRules& leaf, std::string_view text);
  static bool KeepsPatterns(const CTextRules& rules, std::string_view text);
  static bool KeepsEnumeration(const CTextRules& rules, const CTextRules& leaf,
                               std::string_view text);
  static bool KeepsLengths(const CTextRules& leaf, std::string_view text);
  static bool KeepsBounds(const CTextRules& leaf, std::string_view text);
  static bool KeepsDigits(const CTextRules& leaf, std::string_view text);
  static bool AreEqual(const CTextRules& a, std::string_view left, const CTextRules& b,
                       std::string_view right);
  static bool AreListsEqual(const CTextRules& a, std::string_view left, const CTextRules& b,
                            std::string_view right);
};

namespace {

// Takes the first item off a text whose white space is collapsed.
std::string_view TakeItem(std::string_view& list) {
  const std::string_view item = list.substr(0, list.find(' '));
  list.remove_prefix(std::min(item.size() + 1, list.size()));
  return item;
}

bool IsText(XsdType type) {
  const XsdType primitive = GetPrimitive(type);
  return primitive == XsdType_string || primitive == XsdType_anySimpleType;
}

bool HasWhitespace(std::string_view text) {
  const auto isSpace = [](char c) { return static_cast<unsigned char>(c) <= ' '; };
  return std::any_of(text.begin(), text.end(), isSpace);
}

std::size_t CountItems(std::string_view list) {
  if (list.empty()) return 0;
  return static_cast<std::size_t>(std::count(list.begin(), list.end(), ' ')) + 1;
}

}  // namespace

CWhitespaceUtils::WhitespaceRule CTextRulesCheck::GetWhitespace(const CTextRules& leaf) {
  if (IsList(leaf)) return CWhitespaceUtils::WhitespaceRule_Collapse;
  return leaf.m_whitespace == CWhitespaceUtils::WhitespaceRule_None ? GetWhitespaceRule(leaf.m_type)
                                                                    : leaf.m_whitespace;
}

const CTextRules* CTextRulesCheck::FindLeaf(const CTextRules& rules, std::string_view text) {
  const CTextRules* const leaf = FindMemberLeaf(rules, text);
  if (leaf == nullptr) return nullptr;
  const CNormalized value(*leaf, text);
  const bool keeps =
      (IsUnion(rules) || (IsValue(rules, value.Get()) && KeepsLengths(rules, value.Get()) &&
                          KeepsBounds(rules, value.Get()) && KeepsDigits(rules, value.Get()))) &&
      KeepsPatterns(rules, value.Get()) && KeepsEnumeration(rules, *leaf, value.Get());
  return keeps ? leaf : nullptr;
}

// Without the facets of the rules themselves; those of no union are their own leaf.
const CTextRules* CTextRulesCheck::FindMemberLeaf(const CTextRules& rules, std::string_view text) {
  if (!IsUnion(rules)) return &rules;
  for (std::size_t i = 0; i < rules.m_memberCount; ++i) {
    const CTextRules* const leaf = FindLeaf(*rules.m_members[i], text);
    if (leaf != nullptr) return leaf;
  }
  return nullptr;
}

bool CTextRulesCheck::IsValue(const CTextRules& leaf, std::string_view text) {
  if (!IsList(leaf)) return IsValueOf(leaf.m_type, text);
  if (IsBuiltInList(leaf) && text.empty()) return false;
  const CTextRules item = GetItem(leaf);
  while (!text.empty()) {
    if (FindLeaf(item, TakeItem(text)) == nullptr) return false;
  }
  return true;
}

bool CTextRulesCheck::KeepsPatterns(const CTextRules& rules, std::string_view text) {
  return std::all_of(rules.m_patterns, rules.m_patterns + rules.m_patternCount,
                     [text](const CPatternStep& step) { return step.Matches(text); });
}

bool CTextRulesCheck::KeepsEnumeration(const CTextRules& rules, const CTextRules& leaf,
                                       std::string_view text) {
  if (rules.m_enumeration == nullptr) return true;
  const bool isAtom = !IsUnion(rules) && !IsList(rules);
  const bool isText = isAtom && IsText(rules.m_type);
  const auto isEqual = [&](std::string_view allowed) {
    if (isAtom && allowed == text) return true;
    // White space that a rule takes away can not be in a text that is shorter.
    if (isText && (allowed.size() < text.size() || !HasWhitespace(allowed))) return false;
    const CTextRules* const other = FindMemberLeaf(rules, allowed);
    if (other == nullptr) return false;
    const CNormalized value(*other, allowed);
    return AreEqual(leaf, text, *other, value.Get());
  };
  return std::any_of(rules.m_enumeration, rules.m_enumeration + rules.m_enumerationCount, isEqual);
}

bool CTextRulesCheck::KeepsLengths(const CTextRules& leaf, std::string_view text) {
  if (leaf.m_minLength == 0 && leaf.m_maxLength == CTextRules::kNoLimit) return true;
  const XsdType primitive = GetPrimitive(leaf.m_type);
  if (!IsList(leaf) && (primitive == XsdType_QName || primitive == XsdType_NOTATION)) return true;
  const std::size_t length = IsList(leaf) ? CountItems(text) : GetValueLength(primitive, text);
  return length >= leaf.m_minLength &&
         (length <= leaf.m_maxLength || leaf.m_maxLength == CTextRules::kNoLimit);
}

bool CTextRulesCheck::KeepsBounds(const CTextRules& leaf, std::string_view text) {
  const auto keeps = [&](const char* bound, ValueOrder order, bool isInclusive) {
    if (bound == nullptr) return true;
    const CNormalized value(leaf, bound);
    const ValueOrder found = CompareValues(GetPrimitive(leaf.m_type), text, value.Get());
    return found == order || (isInclusive && found == ValueOrder::kEqual);
  };
  return keeps(leaf.m_minInclusive, ValueOrder::kGreater, true) &&
         keeps(leaf.m_maxInclusive, ValueOrder::kLess, true) &&
         keeps(leaf.m_minExclusive, ValueOrder::kGreater, false) &&
         keeps(leaf.m_maxExclusive, ValueOrder::kLess, false);
}

bool CTextRulesCheck::KeepsDigits(const CTextRules& leaf, std::string_view text) {
  if (GetPrimitive(leaf.m_type) != XsdType_decimal) return true;
  const DigitCounts digits = CountDigits(text);
  return digits.total <= leaf.m_totalDigits && digits.fraction <= leaf.m_fractionDigits;
}

// Of two values that their rules take, with the white space that these leave.
bool CTextRulesCheck::AreEqual(const CTextRules& a, std::string_view left, const CTextRules& b,
                               std::string_view right) {
  if (IsList(a) || IsList(b)) return IsList(a) && IsList(b) && AreListsEqual(a, left, b, right);
  const XsdType primitive = GetPrimitive(a.m_type);
  return primitive == GetPrimitive(b.m_type) &&
         CompareValues(primitive, left, right) == ValueOrder::kEqual;
}

bool CTextRulesCheck::AreListsEqual(const CTextRules& a, std::string_view left, const CTextRules& b,
                                    std::string_view right) {
  if (CountItems(left) != CountItems(right)) return false;
  const CTextRules leftItem = GetItem(a);
  const CTextRules rightItem = GetItem(b);
  while (!left.empty()) {
    const std::string_view leftText = TakeItem(left);
    const std::string_view rightText = TakeItem(right);
    const CTextRules* const leftLeaf = FindLeaf(leftItem, leftText);
    const CTextRules* const rightLeaf = FindLeaf(rightItem, rightText);
    if (leftLeaf == nullptr || rightLeaf == nullptr ||
        !AreEqual(*leftLeaf, leftText, *rightLeaf, rightText)) {
      return false;
    }
  }
  return true;
}

}  // namespace detail

bool CTextRules::Accepts(std::string_view text) const {
  if (detail::CTextRulesCheck::IsPlain(*this) && !detail::HoldsBlank(text) &&
      detail::IsLocalUtf8()) {
    return detail::CTextRulesCheck::Keeps(*this, text);
  }
  if (text.find('\0') != std::string_view::npos) return false;  // no character of a document
  if (detail::IsLocalUtf8()) return detail::CTextRulesCheck::FindLeaf(*this, text) != nullptr;
  const CBinaryData bytes = LocalToUtf8(std::string(text).c_str());
  const std::string utf8(bytes.GetData(), bytes.GetData() + bytes.GetLength());
  return detail::CTextRulesCheck::FindLeaf(*this, utf8) != nullptr;
}

void CTextRules::Check(const char* memberName, std::string_view text) const {
  const std::string value(text);
  bool isAccepted = false;
  try {
    isAccepted = Accepts(text);
  } catch (const CQzException& e) {
    throw CQzException(FormatString("%s\nInvalid Value for %s [%s].", e.GetMessage().c_str(),
                                    memberName, value.c_str()));
  }
  if (!isAccepted) {
    throw CQzException(FormatString(Messages::kInvalidTextValue, memberName, value.c_str()));
  }
}

}  // namespace QzXmlLib16
