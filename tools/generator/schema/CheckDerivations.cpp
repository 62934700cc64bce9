#include <algorithm>

#include "tools/generator/schema/SchemaBuilder.h"

// Whether complex types that restrict do so.
// Source: XML Schema 1.0 part 1, section 3.4.6, derivation-ok-restriction.

namespace qzxml::generator {

namespace {

const AttributeUse* Find(const std::vector<AttributeUse>& uses, const QName& name) {
  const auto found = std::find_if(uses.begin(), uses.end(), [&](const AttributeUse& use) {
    return use.attribute->name == name;
  });
  return found != uses.end() ? &*found : nullptr;
}

class CRestrictionCheck {
 public:
  CRestrictionCheck(BuildState& state, const SchemaNode& node) : m_state(state), m_node(node) {}

  void CheckAttributes(const std::vector<AttributeUse>& uses, const Wildcard* wildcard,
                       const std::vector<AttributeUse>& baseUses, const Wildcard* baseWildcard) {
    for (const AttributeUse& use : uses) {
      if (use.use == UseKind_Prohibited) continue;
      const AttributeUse* const former = Find(baseUses, use.attribute->name);
      if (former != nullptr) {
        CheckUse(use, *former);
      } else if (baseWildcard == nullptr ||
                 !baseWildcard->constraint.Allows(use.attribute->name.namespaceUri)) {
        Tell(use, "is not in the base (derivation-ok-restriction.2.2).");
      }
    }
    for (const AttributeUse& former : baseUses) {
      if (former.use != UseKind_Required || Find(uses, former.attribute->name) != nullptr) continue;
      Tell(former, "is required by the base (derivation-ok-restriction.3).");
    }
    CheckWildcard(wildcard, baseWildcard);
  }

 private:
  void Tell(const AttributeUse& use, const std::string& what) {
    m_state.Error(m_node, "The attribute '" + use.attribute->name.ToString() + "' " + what);
  }

  void CheckUse(const AttributeUse& use, const AttributeUse& former) {
    if (former.use == UseKind_Required && use.use != UseKind_Required) {
      Tell(use, "is required by the base (derivation-ok-restriction.2.1.1).");
    }
    if (!IsDerivedFrom(use.attribute->type, former.attribute->type)) {
      Tell(use,
           "is not of a type that is derived from that in the base "
           "(derivation-ok-restriction.2.1.2).");
    }
    if (!former.value.fixedValue) return;
    if (use.value.fixedValue &&
        m_state.values.AreEqual(*former.attribute->type, *former.value.fixedValue,
                                *use.value.fixedValue)) {
      return;
    }
    Tell(use, "has in the base the fixed value [" + *former.value.fixedValue +
                  "] (derivation-ok-restriction.2.1.3).");
  }

  void CheckWildcard(const Wildcard* wildcard, const Wildcard* base) {
    if (wildcard == nullptr) return;
    if (base == nullptr) {
      m_state.Error(m_node,
                    "The base has no wildcard for attributes "
                    "(derivation-ok-restriction.4.1).");
    } else if (!wildcard->constraint.IsSubsetOf(base->constraint)) {
      m_state.Error(m_node,
                    "The wildcard for attributes lets more pass than that of the base "
                    "(derivation-ok-restriction.4.2).");
    } else if (wildcard->processContents > base->processContents) {
      m_state.Error(m_node,
                    "The wildcard for attributes is weaker than that of the base "
                    "(derivation-ok-restriction.4.3).");
    }
  }

  BuildState& m_state;
  const SchemaNode& m_node;
};

void CheckContent(BuildState& state, const SchemaNode& node, const ComplexType& type,
                  const ComplexType& base) {
  if (type.content == ContentKind_Simple) return;  // checked where it was made
  if (base.content == ContentKind_Simple) {
    state.Error(node, "The content of the base is simple (derivation-ok-restriction.5).");
    return;
  }
  if (type.content == ContentKind_Mixed && base.content != ContentKind_Mixed) {
    state.Error(node,
                "The content is mixed and that of the base is not "
                "(derivation-ok-restriction.5.4.1).");
    return;
  }
  if (type.particle == nullptr) {
    if (IsEmptiable(base.particle)) return;
    state.Error(node,
                "The content is empty and that of the base may not be "
                "(derivation-ok-restriction.5.3.2).");
    return;
  }
  if (base.particle == nullptr) {
    if (IsEmptiable(type.particle) && type.particle->group != nullptr &&
        type.particle->group->particles.empty()) {
      return;
    }
    state.Error(node, "The content of the base is empty (derivation-ok-restriction.5).");
    return;
  }
  const std::string fault = FindRestrictionFault(state, type.particle, base.particle);
  if (fault.empty()) return;
  state.Error(node, "The content does not restrict that of the base: " + fault +
                        " (derivation-ok-restriction.5.4.2).");
}

void CheckType(BuildState& state, const SchemaNode& node, const ComplexType& type) {
  const ComplexType* const base = type.base->AsComplex();
  if (base == nullptr || base->IsAnyType() || type.method != DerivationMethod_Restriction) return;
  CRestrictionCheck(state, node)
      .CheckAttributes(type.attributes, type.attributeWildcard, base->attributes,
                       base->attributeWildcard);
  CheckContent(state, node, type, *base);
}

}  // namespace

void CheckAttributeRestriction(BuildState& state, const SchemaNode& node,
                               const std::vector<AttributeUse>& uses, const Wildcard* wildcard,
                               const std::vector<AttributeUse>& baseUses,
                               const Wildcard* baseWildcard) {
  CRestrictionCheck(state, node).CheckAttributes(uses, wildcard, baseUses, baseWildcard);
}

void CheckDerivations(BuildState& state) {
  for (const Made<ComplexType>& made : state.complexTypes) {
    CheckType(state, *made.node, *made.component);
  }
}

}  // namespace qzxml::generator
