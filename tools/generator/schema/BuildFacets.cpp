#include <algorithm>
#include <initializer_list>

#include "tools/generator/schema/SchemaBuilder.h"

// The facets of one step, and whether they may stand there.
// Source: XML Schema 1.0 part 2, sections 4.1.5 and 4.3.

namespace qzxml::generator {

namespace {

// Numbers of any length, without or with sign and leading zeros, none below zero.
int CompareCounts(const std::string& a, const std::string& b) {
  const auto digits = [](const std::string& text) {
    const std::size_t begin = text.find_first_not_of("+-0");
    return begin == std::string::npos ? std::string() : text.substr(begin);
  };
  const std::string x = digits(a);
  const std::string y = digits(b);
  if (x.size() != y.size()) return x.size() < y.size() ? -1 : 1;
  return x.compare(y);
}

bool IsBound(FacetKind kind) {
  return kind >= FacetKind_minInclusive && kind <= FacetKind_maxExclusive;
}

int GetStrictness(const std::string& whiteSpace) {
  return whiteSpace == "preserve" ? 0 : whiteSpace == "replace" ? 1 : 2;
}

class CFacetBuilder {
 public:
  CFacetBuilder(BuildState& state, const SchemaNode& node, SimpleType& type)
      : m_state(state), m_node(node), m_type(type), m_base(*type.base) {}

  void Build() {
    for (const auto& child : m_node.children) {
      if (child->name.namespaceUri == kSchemaNamespace) ReadFacet(*child);
    }
    CheckFixed();
    CheckLengths();
    CheckDigits();
    CheckWhiteSpace();
    CheckBounds();
  }

 private:
  // ---- Reading ----

  void ReadFacet(const SchemaNode& child) {
    if (child.Is("pattern")) {
      ReadPattern(child);
    } else if (child.Is("enumeration")) {
      ReadEnumeration(child);
    } else {
      for (int kind = 0; kind < FacetKind_Count; ++kind) {
        if (child.Is(GetFacetName(static_cast<FacetKind>(kind)))) {
          ReadSingle(child, static_cast<FacetKind>(kind));
        }
      }
    }
  }

  void ReadPattern(const SchemaNode& child) {
    const std::string* const text = child.Find("value");
    const std::string fault = CValueCheck::FindPatternFault(*text);
    if (!fault.empty()) {
      m_state.Error(child, "The value [" + *text + "] is no regular expression: " + fault);
    }
    m_type.facets.patterns.push_back({*text, GetDocumentation(child), child.GetLocation()});
  }

  void ReadEnumeration(const SchemaNode& child) {
    if (m_base.GetPrimitive() == BuiltIn_boolean) {
      TellNotApplicable(child, "enumeration");
      return;
    }
    Enumeration value;
    value.text = ApplyWhiteSpace(m_base.GetWhiteSpace(), *child.Find("value"));
    value.documentation = GetDocumentation(child);
    value.location = child.GetLocation();
    const BuiltIn primitive = m_base.GetPrimitive();
    if (primitive == BuiltIn_QName || primitive == BuiltIn_NOTATION) {
      value.namespaces = *child.scope;
    }
    if (!m_state.values.IsValid(m_base, *child.Find("value"), *child.scope)) {
      m_state.Error(child, "The value [" + *child.Find("value") + "] is not of the " +
                               Describe(m_base) +
                               ", which is restricted (enumeration-valid-"
                               "restriction).");
    } else if (primitive == BuiltIn_NOTATION) {
      ResolveName(m_state, child, value.text, SymbolSpace_Notation);
    }
    m_type.facets.enumerations.push_back(std::move(value));
  }

  void ReadSingle(const SchemaNode& child, FacetKind kind) {
    if (!IsApplicable(kind)) {
      TellNotApplicable(child, GetFacetName(kind));
      return;
    }
    if (m_type.facets.Find(kind) != nullptr) {
      m_state.Error(child, std::string("The facet '") + GetFacetName(kind) +
                               "' is there twice (src-single-facet-value).");
      return;
    }
    Facet facet;
    facet.value = child.Get("value");
    facet.isFixed = child.IsTrue("fixed");
    facet.documentation = GetDocumentation(child);
    facet.location = child.GetLocation();
    if (IsBound(kind) && !IsBoundValue(facet.value)) {
      m_state.Error(child, "The value [" + facet.value + "] is not of the " + Describe(m_base) +
                               ", which is restricted.");
      return;
    }
    m_type.facets.single[kind] = std::move(facet);
  }

  // Whether the text is a value of the built-in type, bounds apart, which are compared one by one.
  bool IsBoundValue(const std::string& text) const {
    return IsValueOf(m_base.GetNearestBuiltIn(), text);
  }

  void TellNotApplicable(const SchemaNode& child, const char* name) {
    m_state.Error(child, std::string("The facet '") + name + "' is not for the " +
                             Describe(m_base) + " (cos-applicable-facets).");
  }

  bool IsApplicable(FacetKind kind) const {
    if (m_base.variety == Variety_Union) return false;
    if (kind == FacetKind_whiteSpace) return true;
    const bool isLength = kind <= FacetKind_maxLength;
    if (m_base.variety == Variety_List) return isLength;
    switch (m_base.GetPrimitive()) {
      case BuiltIn_string:
      case BuiltIn_hexBinary:
      case BuiltIn_base64Binary:
      case BuiltIn_anyURI:
      case BuiltIn_QName:
      case BuiltIn_NOTATION:
        return isLength;
      case BuiltIn_boolean:
        return false;
      case BuiltIn_decimal:
        return !isLength;
      default:
        return IsBound(kind);
    }
  }

  // ---- Checking ----

  void Tell(FacetKind kind, const std::string& reason, const char* rule) {
    const Facet* const facet = m_type.facets.Find(kind);
    m_state.diagnostics.Error(facet->location, std::string("The facet '") + GetFacetName(kind) +
                                                   "' with the value [" + facet->value + "] " +
                                                   reason + " (" + rule + ").");
  }

  static std::string Value(const Facet& facet) { return "[" + facet.value + "]"; }

  void CheckFixed() {
    for (int i = 0; i < FacetKind_Count; ++i) {
      const auto kind = static_cast<FacetKind>(i);
      const Facet* const own = m_type.facets.Find(kind);
      const Facet* const former = m_base.FindFacet(kind);
      if (own == nullptr || former == nullptr || !former->isFixed) continue;
      if (IsSameValue(kind, own->value, former->value)) continue;
      Tell(kind, "changes the fixed value " + Value(*former) + " of the base", "facet-fixed");
    }
  }

  bool IsSameValue(FacetKind kind, const std::string& a, const std::string& b) {
    if (kind == FacetKind_whiteSpace) return a == b;
    if (!IsBound(kind)) return CompareCounts(a, b) == 0;
    return IsAtMost(a, b) && IsAtMost(b, a);
  }

  // An own facet has to be on the right side of another one, which is of this step or of the base.
  // sign is +1 where the own one may not be below, -1 where it may not be above.
  void Compare(FacetKind kind, int sign, const Facet* other, const char* otherName,
               const char* rule) {
    const Facet* const own = m_type.facets.Find(kind);
    if (own == nullptr || other == nullptr) return;
    if (CompareCounts(own->value, other->value) * sign >= 0) return;
    Tell(
        kind,
        std::string(sign > 0 ? "is below the " : "is above the ") + otherName + " " + Value(*other),
        rule);
  }

  void CheckLengths() {
    const Facet* const length = m_type.facets.Find(FacetKind_length);
    const Facet* const baseLength = m_base.FindFacet(FacetKind_length);
    const Facet* const baseMin = m_base.FindFacet(FacetKind_minLength);
    const Facet* const baseMax = m_base.FindFacet(FacetKind_maxLength);
    if (length != nullptr && baseLength != nullptr &&
        CompareCounts(length->value, baseLength->value) != 0) {
      Tell(FacetKind_length, "is not the length " + Value(*baseLength) + " of the base",
           "length-valid-restriction");
    }
    Compare(FacetKind_minLength, +1, baseMin, "minLength of the base",
            "minLength-valid-restriction");
    Compare(FacetKind_maxLength, -1, baseMax, "maxLength of the base",
            "maxLength-valid-restriction");
    Compare(FacetKind_minLength, -1, m_type.FindFacet(FacetKind_maxLength), "maxLength",
            "minLength-less-than-equal-to-maxLength");
    Compare(FacetKind_maxLength, +1, m_type.FindFacet(FacetKind_minLength), "minLength",
            "minLength-less-than-equal-to-maxLength");
    CheckLengthWithBounds(length, baseLength, baseMin, baseMax);
  }

  // A length beside minLength and maxLength says what they allow, and they were there before it.
  void CheckLengthWithBounds(const Facet* length, const Facet* baseLength, const Facet* baseMin,
                             const Facet* baseMax) {
    const char* const rule = "length-minLength-maxLength";
    if (length != nullptr) {
      Compare(FacetKind_length, +1, m_type.FindFacet(FacetKind_minLength), "minLength", rule);
      Compare(FacetKind_length, -1, m_type.FindFacet(FacetKind_maxLength), "maxLength", rule);
    }
    for (const FacetKind kind : {FacetKind_minLength, FacetKind_maxLength}) {
      const Facet* const own = m_type.facets.Find(kind);
      if (own == nullptr) continue;
      const Facet* const former = kind == FacetKind_minLength ? baseMin : baseMax;
      const bool wasThere = former != nullptr && CompareCounts(own->value, former->value) == 0;
      if (length != nullptr && !wasThere) Tell(kind, "stands beside the facet 'length'", rule);
      if (length == nullptr && baseLength != nullptr && !wasThere) {
        Compare(kind, kind == FacetKind_minLength ? -1 : +1, baseLength, "length of the base",
                rule);
      }
    }
  }

  void CheckDigits() {
    Compare(FacetKind_totalDigits, -1, m_base.FindFacet(FacetKind_totalDigits),
            "totalDigits of the base", "totalDigits-valid-restriction");
    Compare(FacetKind_fractionDigits, -1, m_base.FindFacet(FacetKind_fractionDigits),
            "fractionDigits of the base", "fractionDigits-valid-restriction");
    Compare(FacetKind_fractionDigits, -1, m_type.FindFacet(FacetKind_totalDigits), "totalDigits",
            "fractionDigits-totalDigits");
    Compare(FacetKind_totalDigits, +1, m_type.FindFacet(FacetKind_fractionDigits), "fractionDigits",
            "fractionDigits-totalDigits");
  }

  void CheckWhiteSpace() {
    const Facet* const own = m_type.facets.Find(FacetKind_whiteSpace);
    if (own == nullptr) return;
    static const char* const names[] = {"preserve", "replace", "collapse"};
    const int former = m_base.GetWhiteSpace();
    if (GetStrictness(own->value) >= former) return;
    Tell(FacetKind_whiteSpace, std::string("is weaker than [") + names[former] + "] of the base",
         "whiteSpace-valid-restriction");
  }

  bool IsAtMost(const std::string& a, const std::string& b) {
    return m_state.values.IsAtMost(m_base, a, b);
  }

  void CheckBounds() {
    CheckPair(FacetKind_minInclusive, FacetKind_minExclusive, "minInclusive-minExclusive");
    CheckPair(FacetKind_maxInclusive, FacetKind_maxExclusive, "maxInclusive-maxExclusive");
    const SimpleType::Bound lower = m_base.FindLowerBound();
    const SimpleType::Bound upper = m_base.FindUpperBound();
    for (const FacetKind kind : {FacetKind_minInclusive, FacetKind_minExclusive,
                                 FacetKind_maxInclusive, FacetKind_maxExclusive}) {
      if (m_type.facets.Find(kind) == nullptr) continue;
      CheckAgainstLower(kind, lower);
      CheckAgainstUpper(kind, upper);
    }
    CheckOwnBounds();
  }

  void CheckPair(FacetKind inclusive, FacetKind exclusive, const char* rule) {
    if (m_type.facets.Find(inclusive) == nullptr || m_type.facets.Find(exclusive) == nullptr) {
      return;
    }
    Tell(exclusive, std::string("stands beside the facet '") + GetFacetName(inclusive) + "'", rule);
  }

  // A bound may say again what the base says: an exclusive one is no value of the base then. Dates
  // that can not be compared, with and without zone, are let pass.
  void CheckAgainstLower(FacetKind kind, const SimpleType::Bound& lower) {
    if (lower.facet == nullptr) return;
    const std::string& own = m_type.facets.Find(kind)->value;
    const bool mayBeSame =
        !lower.isExclusive ? kind != FacetKind_maxExclusive : kind == FacetKind_minExclusive;
    const bool isNotAbove = IsAtMost(own, lower.facet->value);
    if (!isNotAbove || (mayBeSame && IsAtMost(lower.facet->value, own))) return;
    Tell(kind, "is outside of the base's lower bound " + Value(*lower.facet), GetRule(kind));
  }

  void CheckAgainstUpper(FacetKind kind, const SimpleType::Bound& upper) {
    if (upper.facet == nullptr) return;
    const std::string& own = m_type.facets.Find(kind)->value;
    const bool mayBeSame =
        !upper.isExclusive ? kind != FacetKind_minExclusive : kind == FacetKind_maxExclusive;
    const bool isNotBelow = IsAtMost(upper.facet->value, own);
    if (!isNotBelow || (mayBeSame && IsAtMost(own, upper.facet->value))) return;
    Tell(kind, "is outside of the base's upper bound " + Value(*upper.facet), GetRule(kind));
  }

  static const char* GetRule(FacetKind kind) {
    switch (kind) {
      case FacetKind_minInclusive:
        return "minInclusive-valid-restriction";
      case FacetKind_minExclusive:
        return "minExclusive-valid-restriction";
      case FacetKind_maxInclusive:
        return "maxInclusive-valid-restriction";
      default:
        return "maxExclusive-valid-restriction";
    }
  }

  void CheckOwnBounds() {
    for (const FacetKind low : {FacetKind_minInclusive, FacetKind_minExclusive}) {
      for (const FacetKind high : {FacetKind_maxInclusive, FacetKind_maxExclusive}) {
        const Facet* const lower = m_type.facets.Find(low);
        const Facet* const upper = m_type.facets.Find(high);
        if (lower == nullptr || upper == nullptr) continue;
        const bool isMixed = (low == FacetKind_minExclusive) != (high == FacetKind_maxExclusive);
        const bool isNotBelow = IsAtMost(upper->value, lower->value);
        if (!isNotBelow || (!isMixed && IsAtMost(lower->value, upper->value))) continue;
        Tell(low, std::string("is above the facet '") + GetFacetName(high) + "' " + Value(*upper),
             "minInclusive-less-than-equal-to-maxInclusive");
      }
    }
  }

  BuildState& m_state;
  const SchemaNode& m_node;
  SimpleType& m_type;
  const SimpleType& m_base;
};

}  // namespace

void BuildFacets(BuildState& state, const SchemaNode& node, SimpleType& type) {
  CFacetBuilder(state, node, type).Build();
}

}  // namespace qzxml::generator
