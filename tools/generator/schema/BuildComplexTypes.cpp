#include <algorithm>

#include "tools/generator/schema/SchemaBuilder.h"

// Complex types, each behind its base: content and attributes as a whole.
// Source: XML Schema 1.0 part 1, section 3.4.

namespace qzxml::generator {

namespace {

class CComplexTypeFinisher {
 public:
  CComplexTypeFinisher(BuildState& state, SchemaNode& node, ComplexType& type)
      : m_state(state), m_node(node), m_type(type) {}

  void Finish() {
    m_type.base = m_state.storage.anyType;
    if (SchemaNode* const simple = m_node.FindChild("simpleContent")) {
      FinishSimpleContent(*simple);
    } else if (SchemaNode* const complex = m_node.FindChild("complexContent")) {
      const bool isMixed =
          complex->Find("mixed") != nullptr ? complex->IsTrue("mixed") : m_node.IsTrue("mixed");
      FinishComplexContent(*complex, isMixed);
    } else {
      SetOwnContent(m_node, m_node.IsTrue("mixed"));
      m_type.particle = m_type.ownParticle;
      SetAttributes(m_node);
    }
  }

 private:
  // ---- The base ----

  // The child that derives; sets method and base. Null base for one that is unknown, which is told.
  SchemaNode* SetBase(SchemaNode& content, bool& isKnown) {
    SchemaNode* node = content.FindChild("extension");
    m_type.method = DerivationMethod_Extension;
    if (node == nullptr) {
      node = content.FindChild("restriction");
      m_type.method = DerivationMethod_Restriction;
    }
    const Type* base = ResolveType(m_state, *node, *node->Find("base"), true);
    if (base != nullptr && m_state.progress[base] == Progress_InWork) {
      m_state.Error(*node,
                    "The " + Describe(*base) + " is derived from itself (ct-props-correct.3).");
      base = nullptr;
    }
    isKnown = base != nullptr;
    if (!isKnown) return node;
    if (!base->IsSimple()) Finish(m_state, *base);
    m_type.base = base;
    CheckFinal(*node, *base);
    return node;
  }

  void CheckFinal(const SchemaNode& node, const Type& base) {
    const bool isExtension = m_type.method == DerivationMethod_Extension;
    const unsigned step = isExtension ? Derivation_Extension : Derivation_Restriction;
    if ((base.finalSet & step) == 0) return;
    m_state.Error(node,
                  "The " + Describe(base) + " is final for this kind of derivation (" +
                      (isExtension ? "cos-ct-extends.1.1)." : "derivation-ok-restriction.1)."));
  }

 public:
  static void Finish(BuildState& state, const Type& complex) {
    Progress& progress = state.progress[&complex];
    if (progress != Progress_None) return;
    SchemaNode& node = *state.nodes.at(&complex);
    auto& type = *static_cast<ComplexType*>(node.component);
    const CDepthGuard guard(state, node);
    if (guard.IsTooDeep()) {
      type.base = state.storage.anyType;
    } else {
      progress = Progress_InWork;
      CComplexTypeFinisher(state, node, type).Finish();
      if (!NoteDepth(state, node, &type, {type.base})) {
        type.base = state.storage.anyType;
        type.particle = type.ownParticle;
      }
    }
    progress = Progress_Done;
  }

 private:
  // ---- Simple content ----

  void FinishSimpleContent(SchemaNode& content) {
    bool isKnown = false;
    SchemaNode* const node = SetBase(content, isKnown);
    m_type.content = ContentKind_Simple;
    m_type.simpleContent = m_state.storage.builtIns[BuiltIn_string];
    if (isKnown) {
      if (m_type.method == DerivationMethod_Extension) {
        ExtendSimple(*node);
      } else {
        RestrictSimple(*node);
      }
    }
    SetAttributes(*node);
  }

  void ExtendSimple(const SchemaNode& node) {
    const ComplexType* const complex = m_type.base->AsComplex();
    if (complex == nullptr) {
      m_type.simpleContent = m_type.base->AsSimple();
    } else if (complex->content == ContentKind_Simple) {
      m_type.simpleContent = complex->simpleContent;
    } else {
      m_state.Error(node, "The " + Describe(*complex) +
                              " has no simple content that could be extended (src-ct.2).");
    }
  }

  void RestrictSimple(SchemaNode& node) {
    const ComplexType* const base = m_type.base->AsComplex();
    SchemaNode* const child = node.FindChild("simpleType");
    if (base == nullptr) {
      m_state.Error(node, "The " + Describe(*m_type.base) +
                              " is simple: only complex types are restricted here (src-ct.2).");
      return;
    }
    const bool isMixed = base->content == ContentKind_Mixed && IsEmptiable(base->particle);
    if (base->content != ContentKind_Simple && !(isMixed && child != nullptr)) {
      m_state.Error(node, "The " + Describe(*base) +
                              " has no simple content that could be restricted (src-ct.2).");
      return;
    }
    const SimpleType* former = base->content == ContentKind_Simple ? base->simpleContent : nullptr;
    if (child != nullptr) former = CheckOwnType(*child, former);
    m_type.simpleContent = AddFacets(node, former);
  }

  const SimpleType* CheckOwnType(SchemaNode& child, const SimpleType* former) {
    const auto* const own = static_cast<const SimpleType*>(child.component);
    if (former != nullptr && !IsDerivedFrom(own, former)) {
      m_state.Error(child, "The type is not derived from the " + Describe(*former) +
                               ", the content of the base (derivation-ok-restriction.5.1).");
    }
    return own;
  }

  static bool IsFacet(const std::unique_ptr<SchemaNode>& child) {
    static const char* const others[] = {"annotation", "simpleType", "attribute", "attributeGroup",
                                         "anyAttribute"};
    return std::none_of(std::begin(others), std::end(others),
                        [&](const char* name) { return child->Is(name); });
  }

  // The type itself where there are no facets, so that it keeps its name.
  const SimpleType* AddFacets(const SchemaNode& node, const SimpleType* base) {
    if (std::none_of(node.children.begin(), node.children.end(), IsFacet)) return base;
    SimpleType& type = m_state.storage.simpleTypes.emplace_back();
    type.name.namespaceUri = m_type.name.namespaceUri;
    type.context = &m_type;
    type.location = node.GetLocation();
    type.base = base;
    type.variety = base->variety;
    type.itemType = base->itemType;
    type.memberTypes = base->memberTypes;
    m_state.progress[&type] = Progress_Done;
    m_state.allTypes.push_back(&type);
    if (base->builtIn == BuiltIn_anySimpleType) {
      m_state.Error(node,
                    "The type 'anySimpleType' is not restricted by schemas "
                    "(cos-st-restricts.1.1).");
    } else {
      BuildFacets(m_state, node, type);
    }
    return &type;
  }

  // ---- Complex content ----

  void FinishComplexContent(SchemaNode& content, bool isMixed) {
    bool isKnown = false;
    SchemaNode* const node = SetBase(content, isKnown);
    if (isKnown && m_type.base->IsSimple()) {
      m_state.Error(*node, "The " + Describe(*m_type.base) +
                               " is simple, where a complex one is needed (src-ct.1).");
      m_type.base = m_state.storage.anyType;
    }
    SetOwnContent(*node, isMixed);
    m_type.particle = m_type.ownParticle;
    if (m_type.method == DerivationMethod_Extension) ExtendContent(*node, isMixed);
    SetAttributes(*node);
  }

  // Whether the particle is written without anything in it, which counts as no content.
  static bool IsExplicitlyEmpty(const SchemaNode& node) {
    const Particle& particle = *node.particle;
    if (particle.maxOccurs == 0) return true;
    if (node.Is("group")) return false;
    const bool hasContent = std::any_of(node.children.begin(), node.children.end(),
                                        [](const auto& child) { return !child->Is("annotation"); });
    return !hasContent && (!node.Is("choice") || particle.minOccurs == 0);
  }

  void SetOwnContent(const SchemaNode& node, bool isMixed) {
    for (const auto& child : node.children) {
      if (child->particle != nullptr && !IsExplicitlyEmpty(*child)) {
        m_type.ownParticle = child->particle;
      }
    }
    if (isMixed) {
      m_type.content = ContentKind_Mixed;
    } else if (m_type.ownParticle != nullptr) {
      m_type.content = ContentKind_ElementOnly;
    }
  }

  void ExtendContent(const SchemaNode& node, bool isMixed) {
    const ComplexType& base = *m_type.base->AsComplex();
    if (m_type.ownParticle == nullptr && !isMixed) {
      m_type.content = base.content;
      m_type.simpleContent = base.simpleContent;
      m_type.particle = base.particle;
      return;
    }
    if (base.content == ContentKind_Simple) {
      m_state.Error(node, "The " + Describe(base) +
                              " has simple content, which is not extended by elements "
                              "(cos-ct-extends.1.4).");
    } else if (base.content != ContentKind_Empty && base.content != m_type.content) {
      m_state.Error(node,
                    "Of the base and its extension one is mixed and the other is not "
                    "(cos-ct-extends.1.4).");
    }
    if (base.particle == nullptr) return;
    if (m_type.ownParticle == nullptr) {
      m_type.particle = base.particle;
      return;
    }
    CheckAll(node, base.particle);
    CheckAll(node, m_type.ownParticle);
    m_type.particle = MakeSequence(node, *base.particle, *m_type.ownParticle);
  }

  void CheckAll(const SchemaNode& node, const Particle* particle) {
    if (particle->group == nullptr || particle->group->compositor != Compositor_All) return;
    m_state.Error(node,
                  "Content of xs:all is neither extended nor an extension of other content "
                  "(cos-all-limited.1).");
  }

  const Particle* MakeSequence(const SchemaNode& node, const Particle& first,
                               const Particle& second) {
    ModelGroup& group = m_state.storage.modelGroups.emplace_back();
    group.location = node.GetLocation();
    group.particles = {&first, &second};
    Particle& particle = m_state.storage.particles.emplace_back();
    particle.location = node.GetLocation();
    particle.group = &group;
    return &particle;
  }

  // ---- Attributes ----

  void SetAttributes(SchemaNode& node) {
    AttributeSet own = ReadAttributes(m_state, node);
    m_type.ownAttributes = own.uses;
    m_type.attributeWildcard = own.wildcard;
    const ComplexType* const base = m_type.base->AsComplex();
    if (m_type.method == DerivationMethod_Extension) {
      if (base != nullptr) m_type.attributes = base->attributes;
      AddOwn();
      if (base != nullptr && base->attributeWildcard != nullptr) {
        m_type.attributeWildcard = UniteWildcards(node, *base->attributeWildcard, own.wildcard);
      }
    } else {
      if (base != nullptr) m_type.attributes = base->attributes;
      ReplaceOwn();
    }
    CheckAttributeSet(m_state, node, m_type.attributes);
    CheckOwnDuplicates(node);
  }

  void AddOwn() {
    for (const AttributeUse& use : m_type.ownAttributes) {
      if (use.use != UseKind_Prohibited) m_type.attributes.push_back(use);
    }
  }

  // A restriction writes what it changes; the rest it has from its base.
  void ReplaceOwn() {
    std::vector<AttributeUse>& all = m_type.attributes;
    const std::size_t inherited = all.size();
    std::vector<bool> isReplaced(inherited, false);
    for (const AttributeUse& use : m_type.ownAttributes) {
      const auto begin = all.begin();
      const auto end = begin + static_cast<std::ptrdiff_t>(inherited);
      const auto former = std::find_if(begin, end, [&](const AttributeUse& a) {
        return a.attribute->name == use.attribute->name;
      });
      const auto index = static_cast<std::size_t>(former - begin);
      if (former != end && !isReplaced[index]) {
        *former = use;
        isReplaced[index] = true;
      } else {
        all.push_back(use);
      }
    }
    all.erase(std::remove_if(all.begin(), all.end(),
                             [](const AttributeUse& a) { return a.use == UseKind_Prohibited; }),
              all.end());
  }

  void CheckOwnDuplicates(const SchemaNode& node) {
    std::map<QName, int> names;
    for (const AttributeUse& use : m_type.ownAttributes) {
      if (++names[use.attribute->name] != 2 || use.use != UseKind_Prohibited) continue;
      m_state.Error(node, "The attribute '" + use.attribute->name.ToString() +
                              "' is there twice (ct-props-correct.4).");
    }
  }

  const Wildcard* UniteWildcards(const SchemaNode& node, const Wildcard& base,
                                 const Wildcard* own) {
    if (own == nullptr) return &base;
    const auto both = NamespaceConstraint::Unite(own->constraint, base.constraint);
    if (both) return MakeMergedWildcard(m_state, *own, *both);
    m_state.Error(node,
                  "The union of the wildcard for attributes with that of the base can not be "
                  "expressed (src-ct.5).");
    return own;
  }

  BuildState& m_state;
  SchemaNode& m_node;
  ComplexType& m_type;
};

// In xs:redefine a type derives from the one that it redefines.
void CheckRedefined(BuildState& state, const SchemaNode& node, const Type& type, const Type* base) {
  const auto original = state.originals.find(&type);
  if (original == state.originals.end() || original->second == base) return;
  state.Error(node, "A redefined type derives from itself (src-redefine.5).");
}

}  // namespace

void ResolveComplexTypes(BuildState& state) {
  for (const Made<ComplexType>& made : state.complexTypes) {
    CComplexTypeFinisher::Finish(state, *made.component);
  }
  for (const Made<ComplexType>& made : state.complexTypes) {
    CheckRedefined(state, *made.node, *made.component, made.component->base);
    const ComplexType* const base = made.component->base->AsComplex();
    if (base == nullptr || base->IsAnyType()) continue;
    static_cast<ComplexType*>(state.nodes.at(base)->component)
        ->derivedTypes.push_back(made.component);
  }
  for (const Made<SimpleType>& made : state.simpleTypes) {
    CheckRedefined(state, *made.node, *made.component, made.component->base);
  }
}

}  // namespace qzxml::generator
