#include "tools/generator/schema/SimpleType.h"

#include <algorithm>

#include "tools/generator/schema/Components.h"

namespace qzxml::generator {

const char* GetFacetName(FacetKind kind) {
  static const char* const names[] = {
      "length",       "minLength",    "maxLength",    "whiteSpace",  "minInclusive",
      "minExclusive", "maxInclusive", "maxExclusive", "totalDigits", "fractionDigits"};
  return names[kind];
}

bool FacetStep::IsEmpty() const {
  return patterns.empty() && enumerations.empty() &&
         std::none_of(single.begin(), single.end(), [](const auto& facet) { return bool(facet); });
}

BuiltIn SimpleType::GetNearestBuiltIn() const {
  const SimpleType* type = this;
  while (type != nullptr && type->builtIn == BuiltIn_None) type = type->base;
  return type != nullptr ? type->builtIn : BuiltIn_None;
}

BuiltIn SimpleType::GetPrimitive() const {
  if (variety != Variety_Atomic) return BuiltIn_None;
  for (const SimpleType* type = this; type != nullptr; type = type->base) {
    if (type->base != nullptr && type->base->builtIn == BuiltIn_anySimpleType) return type->builtIn;
  }
  return BuiltIn_None;
}

bool SimpleType::IsDerivedFrom(const SimpleType* other) const {
  const SimpleType* type = this;
  while (type != nullptr && type != other) type = type->base;
  return type != nullptr;
}

const Facet* SimpleType::FindFacet(FacetKind wanted) const {
  for (const SimpleType* type = this; type != nullptr; type = type->base) {
    if (const Facet* const facet = type->facets.Find(wanted)) return facet;
  }
  return nullptr;
}

namespace {

SimpleType::Bound FindBound(const SimpleType* type, FacetKind inclusive, FacetKind exclusive) {
  for (; type != nullptr; type = type->base) {
    if (const Facet* const facet = type->facets.Find(inclusive)) return {facet, false};
    if (const Facet* const facet = type->facets.Find(exclusive)) return {facet, true};
  }
  return {};
}

}  // namespace

SimpleType::Bound SimpleType::FindLowerBound() const {
  return FindBound(this, FacetKind_minInclusive, FacetKind_minExclusive);
}

SimpleType::Bound SimpleType::FindUpperBound() const {
  return FindBound(this, FacetKind_maxInclusive, FacetKind_maxExclusive);
}

std::vector<const std::vector<Pattern>*> SimpleType::GetPatternSteps() const {
  std::vector<const std::vector<Pattern>*> steps;
  for (const SimpleType* type = this; type != nullptr; type = type->base) {
    if (!type->facets.patterns.empty()) steps.push_back(&type->facets.patterns);
  }
  std::reverse(steps.begin(), steps.end());
  return steps;
}

const std::vector<Enumeration>* SimpleType::FindEnumerations() const {
  for (const SimpleType* type = this; type != nullptr; type = type->base) {
    if (!type->facets.enumerations.empty()) return &type->facets.enumerations;
  }
  return nullptr;
}

WhiteSpace SimpleType::GetWhiteSpace() const {
  if (variety == Variety_List) return WhiteSpace_Collapse;
  if (variety == Variety_Union) {
    const bool isCollapsed = std::all_of(
        memberTypes.begin(), memberTypes.end(),
        [](const SimpleType* member) { return member->GetWhiteSpace() == WhiteSpace_Collapse; });
    return isCollapsed ? WhiteSpace_Collapse : WhiteSpace_Preserve;
  }
  const Facet* const facet = FindFacet(FacetKind_whiteSpace);
  if (facet == nullptr || facet->value == "preserve") return WhiteSpace_Preserve;
  return facet->value == "replace" ? WhiteSpace_Replace : WhiteSpace_Collapse;
}

const SimpleType* Type::AsSimple() const {
  return IsSimple() ? static_cast<const SimpleType*>(this) : nullptr;
}

const ComplexType* Type::AsComplex() const {
  return IsSimple() ? nullptr : static_cast<const ComplexType*>(this);
}

}  // namespace qzxml::generator
