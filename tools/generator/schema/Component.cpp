#include "tools/generator/schema/Component.h"

#include <algorithm>

#include "tools/generator/schema/Components.h"

namespace qzxml::generator {

namespace {

bool IsSimpleDerivedFrom(const SimpleType* type, const Type* other, unsigned blockedSet);

bool IsDerivedFromMember(const SimpleType* type, const SimpleType* other, unsigned blockedSet) {
  if (other == nullptr || other->variety != Variety_Union || !other->facets.IsEmpty()) return false;
  return std::any_of(
      other->memberTypes.begin(), other->memberTypes.end(),
      [&](const SimpleType* member) { return IsSimpleDerivedFrom(type, member, blockedSet); });
}

// Section 3.14.6, cos-st-derived-ok.
bool IsSimpleDerivedFrom(const SimpleType* type, const Type* other, unsigned blockedSet) {
  if (type == other) return true;
  if ((blockedSet & Derivation_Restriction) != 0) return false;
  const ComplexType* const complex = other->AsComplex();
  if (complex != nullptr) return complex->IsAnyType();
  for (const SimpleType* t = type; t != nullptr; t = t->base) {
    if (t == other || IsDerivedFromMember(t, other->AsSimple(), blockedSet)) return true;
  }
  return false;
}

}  // namespace

bool IsDerivedFrom(const Type* type, const Type* other, unsigned blockedSet) {
  while (type != nullptr && type != other) {
    const ComplexType* const complex = type->AsComplex();
    if (complex == nullptr) return IsSimpleDerivedFrom(type->AsSimple(), other, blockedSet);
    const unsigned step = complex->method == DerivationMethod_Extension ? Derivation_Extension
                                                                        : Derivation_Restriction;
    if ((blockedSet & step) != 0) return false;
    type = complex->base;
  }
  return type != nullptr;
}

}  // namespace qzxml::generator
