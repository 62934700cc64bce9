#include "tools/generator/schema/ValueCheck.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "qzxml/binding/TextRules.h"
#include "tools/generator/regex/XsdPattern.h"
#include "tools/generator/schema/BuiltIns.h"
#include "tools/generator/schema/SchemaTree.h"

namespace qzxml::generator {

using QzXmlLib16::CPatternStep;
using QzXmlLib16::CTextRules;
using QzXmlLib16::CWhitespaceUtils;

namespace {

// What does not fit is more than any text has.
std::uint32_t ToCount(const std::string& text) {
  std::uint64_t count = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') continue;
    count = count * 10 + static_cast<std::uint64_t>(c - '0');
    if (count >= std::numeric_limits<std::uint32_t>::max()) {
      return std::numeric_limits<std::uint32_t>::max() - 1;
    }
  }
  return static_cast<std::uint32_t>(count);
}

// The alternatives of one step for PCRE2, those that are no patterns left out.
std::string TranslateStep(const std::vector<Pattern>& patterns) {
  std::vector<std::string> translated;
  for (const Pattern& pattern : patterns) {
    try {
      translated.push_back(TranslateXsdPattern(pattern.text));
    } catch (const CPatternError&) {
    }
  }
  return translated.empty() ? std::string() : JoinAlternatives(translated);
}

bool IsPrefixBound(const std::string& text, const NamespaceBindings& bindings) {
  const std::size_t colon = text.find(':');
  return colon == std::string::npos || bindings.count(text.substr(0, colon)) != 0;
}

}  // namespace

// The rules of a type and what they point to.
struct CValueCheck::Rules {
  CTextRules rules{QzXmlLib16::XsdType_anySimpleType};
  std::vector<const CTextRules*> members;
  std::deque<std::string> texts;
  std::vector<CPatternStep> patterns;
  std::vector<const char*> enumeration;

  void SetPatterns(const SimpleType& type) {
    std::vector<const char*> steps;
    for (const std::vector<Pattern>* const step : type.GetPatternSteps()) {
      std::string text = TranslateStep(*step);
      if (text.empty()) continue;
      texts.push_back(std::move(text));
      steps.push_back(texts.back().c_str());
    }
    if (steps.empty()) return;
    patterns = std::vector<CPatternStep>(steps.begin(), steps.end());
    rules = rules.Patterns(patterns.data(), patterns.size());
  }

  void SetEnumeration(const SimpleType& type) {
    const std::vector<Enumeration>* const values = type.FindEnumerations();
    if (values == nullptr) return;
    for (const Enumeration& value : *values) enumeration.push_back(value.text.c_str());
    rules = rules.Enumeration(enumeration.data(), enumeration.size());
  }

  void SetLengths(const SimpleType& type) {
    if (const Facet* f = type.FindFacet(FacetKind_minLength)) {
      rules = rules.MinLength(ToCount(f->value));
    }
    if (const Facet* f = type.FindFacet(FacetKind_maxLength)) {
      rules = rules.MaxLength(ToCount(f->value));
    }
    if (const Facet* f = type.FindFacet(FacetKind_length)) rules = rules.Length(ToCount(f->value));
  }

  // Bounds and digits that a schema sets; those of the built-in type are in its rules.
  void SetNumberFacets(const SimpleType& type) {
    const SimpleType::Bound lower = type.FindLowerBound();
    if (lower.facet != nullptr) {
      const char* const text = lower.facet->value.c_str();
      rules = lower.isExclusive ? rules.MinExclusive(text) : rules.MinInclusive(text);
    }
    const SimpleType::Bound upper = type.FindUpperBound();
    if (upper.facet != nullptr) {
      const char* const text = upper.facet->value.c_str();
      rules = upper.isExclusive ? rules.MaxExclusive(text) : rules.MaxInclusive(text);
    }
    if (const Facet* f = type.FindFacet(FacetKind_totalDigits)) {
      rules = rules.TotalDigits(ToCount(f->value));
    }
    if (const Facet* f = type.FindFacet(FacetKind_fractionDigits)) {
      rules = rules.FractionDigits(ToCount(f->value));
    }
  }

  void SetWhiteSpace(const SimpleType& type) {
    if (type.GetPrimitive() != BuiltIn_string) return;
    switch (type.GetWhiteSpace()) {
      case WhiteSpace_Preserve:
        break;
      case WhiteSpace_Replace:
        rules = rules.Whitespace(CWhitespaceUtils::WhitespaceRule_Replace);
        break;
      case WhiteSpace_Collapse:
        rules = rules.Whitespace(CWhitespaceUtils::WhitespaceRule_Collapse);
        break;
    }
  }
};

CValueCheck::CValueCheck() = default;
CValueCheck::~CValueCheck() = default;

const CValueCheck::Rules& CValueCheck::GetRules(const SimpleType& type) {
  std::unique_ptr<Rules>& entry = m_rules[&type];
  if (entry) return *entry;
  entry = std::make_unique<Rules>();
  Rules& made = *entry;
  const BuiltIn builtIn = type.GetNearestBuiltIn();
  if (type.variety == Variety_List && builtIn == BuiltIn_anySimpleType) {
    if (type.itemType != nullptr) made.rules = CTextRules::ListOf(GetRules(*type.itemType).rules);
  } else if (type.variety == Variety_Union) {
    for (const SimpleType* const member : type.memberTypes) {
      made.members.push_back(&GetRules(*member).rules);
    }
    made.rules = CTextRules::UnionOf(made.members.data(), made.members.size());
  } else {
    made.rules = CTextRules(GetXsdType(builtIn));
    made.SetWhiteSpace(type);
    made.SetNumberFacets(type);
  }
  if (type.builtIn == BuiltIn_None) {
    made.SetLengths(type);
    made.SetPatterns(type);
    made.SetEnumeration(type);
  }
  return made;
}

bool CValueCheck::IsValid(const SimpleType& type, const std::string& text,
                          const NamespaceBindings& bindings) {
  if (!GetRules(type).rules.Accepts(text)) return false;
  const BuiltIn primitive = type.GetPrimitive();
  if (primitive != BuiltIn_QName && primitive != BuiltIn_NOTATION) return true;
  return IsPrefixBound(Trim(text), bindings);
}

bool CValueCheck::AreEqual(const SimpleType& type, const std::string& a, const std::string& b) {
  if (a == b) return true;
  const char* const values[] = {a.c_str()};
  return GetRules(type).rules.Enumeration(values).Accepts(b);
}

bool CValueCheck::IsAtMost(const SimpleType& type, const std::string& a, const std::string& b) {
  return CTextRules(GetXsdType(type.GetPrimitive())).MinInclusive(a.c_str()).Accepts(b);
}

std::string CValueCheck::FindPatternFault(const std::string& pattern) {
  try {
    TranslateXsdPattern(pattern);
  } catch (const CPatternError& error) {
    return error.what();
  }
  return {};
}

bool IsValueOf(BuiltIn type, const std::string& text) {
  return CTextRules(GetXsdType(type)).Accepts(text);
}

std::string ApplyWhiteSpace(WhiteSpace rule, const std::string& text) {
  std::string result = text;
  if (rule == WhiteSpace_Preserve) return result;
  std::replace_if(
      result.begin(), result.end(), [](char c) { return c == '\t' || c == '\n' || c == '\r'; },
      ' ');
  if (rule == WhiteSpace_Replace) return result;
  std::string collapsed;
  for (const std::string& word : SplitWords(result)) {
    if (!collapsed.empty()) collapsed += ' ';
    collapsed += word;
  }
  return collapsed;
}

}  // namespace qzxml::generator
