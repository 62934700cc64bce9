#include "tools/generator/schema/Component.h"

#include <set>

#include "tools/generator/schema/Components.h"

namespace qzxml::generator {

namespace {

// The type, and the members of a union without facets, with theirs: each once, however often unions
// of unions have it.
void AddWithMembers(const SimpleType& type, std::set<const SimpleType*>& found) {
  if (!found.insert(&type).second || type.variety != Variety_Union || !type.facets.IsEmpty())
    return;
  for (const SimpleType* member : type.memberTypes) AddWithMembers(*member, found);
}

// Section 3.14.6, cos-st-derived-ok.
bool IsSimpleDerivedFrom(const SimpleType* type, const Type* other, unsigned blockedSet) {
  if (type == other) return true;
  if ((blockedSet & Derivation_Restriction) != 0) return false;
  const ComplexType* const complex = other->AsComplex();
  if (complex != nullptr) return complex->IsAnyType();
  std::set<const SimpleType*> wanted;
  AddWithMembers(*other->AsSimple(), wanted);
  while (type != nullptr && wanted.count(type) == 0) type = type->base;
  return type != nullptr;
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
