#include <algorithm>

#include "tools/generator/schema/SchemaBuilder.h"

// Particles, groups, and the types of elements.
// Source: XML Schema 1.0 part 1, sections 3.3, 3.7, 3.8 and 3.9.

namespace qzxml::generator {

namespace {

constexpr std::int64_t kMaxOccurs = 1'000'000'000'000'000'000;

std::int64_t ReadCount(const std::string& text) {
  if (text == "unbounded") return kUnbounded;
  std::int64_t count = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') continue;
    if (count >= kMaxOccurs / 10) return kMaxOccurs;
    count = count * 10 + (c - '0');
  }
  return count;
}

bool IsContentOf(const SchemaNode& node, std::initializer_list<const char*> names) {
  return node.parent != nullptr && std::any_of(names.begin(), names.end(), [&](const char* name) {
           return node.parent->Is(name);
         });
}

// ---- Elements ----

void TellReferenceFaults(BuildState& state, const SchemaNode& node) {
  static const char* const attributes[] = {"nillable", "default", "fixed", "form", "block", "type"};
  for (const char* const name : attributes) {
    if (node.Find(name) == nullptr) continue;
    state.Error(node, std::string("A reference to an element has no attribute '") + name +
                          "' (src-element.2.2).");
  }
  for (const auto& child : node.children) {
    if (child->Is("annotation")) continue;
    state.Error(node,
                "A reference to an element has no content but an annotation "
                "(src-element.2.2).");
    return;
  }
}

const Type* FindElementType(BuildState& state, const SchemaNode& node) {
  const std::string* const written = node.Find("type");
  const SchemaNode* child = node.FindChild("simpleType");
  if (child == nullptr) child = node.FindChild("complexType");
  if (written != nullptr && child != nullptr) {
    state.Error(node, "There are both the attribute 'type' and a type (src-element.3).");
  }
  if (child != nullptr) return static_cast<const Type*>(child->component);
  const Type* const type = written != nullptr ? ResolveType(state, node, *written) : nullptr;
  return type != nullptr || written == nullptr ? type : state.storage.anyType;
}

void ResolveElement(BuildState& state, const SchemaNode& node, ElementDecl& element) {
  element.type = FindElementType(state, node);
  element.hasNoNamedType = element.type == nullptr;
  if (node.Find("substitutionGroup") != nullptr) {
    element.head = static_cast<const ElementDecl*>(
        ResolveName(state, node, *node.Find("substitutionGroup"), SymbolSpace_Element));
  }
}

// ---- Particles ----

void SetOccurrence(BuildState& state, const SchemaNode& node, Particle& particle) {
  if (node.Find("minOccurs") != nullptr) particle.minOccurs = ReadCount(node.Get("minOccurs"));
  if (node.Find("maxOccurs") != nullptr) particle.maxOccurs = ReadCount(node.Get("maxOccurs"));
  if (particle.maxOccurs == kUnbounded || particle.minOccurs <= particle.maxOccurs) return;
  state.Error(node, "minOccurs is above maxOccurs (p-props-correct.2.1).");
}

void SetElement(BuildState& state, const SchemaNode& node, Particle& particle) {
  if (particle.isReference == (node.Find("name") != nullptr)) {
    state.Error(node, "An element has either a name or a ref (src-element.2.1).");
  }
  if (!particle.isReference) {
    particle.element = static_cast<const ElementDecl*>(node.component);
    return;
  }
  TellReferenceFaults(state, node);
  particle.element = static_cast<const ElementDecl*>(
      ResolveName(state, node, *node.Find("ref"), SymbolSpace_Element));
}

// What can not be resolved is an empty sequence.
const ModelGroup* GetEmptyGroup(BuildState& state) {
  return &state.storage.modelGroups.emplace_back();
}

void SetGroupReference(BuildState& state, const SchemaNode& node, Particle& particle) {
  const auto* const definition = static_cast<const GroupDefinition*>(
      ResolveName(state, node, *node.Find("ref"), SymbolSpace_Group, true));
  particle.group = definition != nullptr ? definition->group : nullptr;
  if (particle.group == nullptr) {
    particle.group = GetEmptyGroup(state);
    return;
  }
  if (particle.group->compositor != Compositor_All) return;
  if (!IsContentOf(node, {"complexType", "extension", "restriction"})) {
    state.Error(node, "A group of xs:all is the whole content of a type (cos-all-limited.1).");
  } else if (particle.maxOccurs != 1) {
    state.Error(node, "A group of xs:all is there once at most (cos-all-limited.1.2).");
  }
}

void ResolveParticle(BuildState& state, const SchemaNode& node, Particle& particle) {
  SetOccurrence(state, node, particle);
  if (node.Is("element")) {
    SetElement(state, node, particle);
  } else if (node.Is("any")) {
    particle.wildcard = MakeWildcard(state, node);
  } else if (node.Is("group")) {
    SetGroupReference(state, node, particle);
  } else {
    particle.group = node.modelGroup;
  }
}

bool IsComplete(const Particle& particle) {
  return particle.element != nullptr || particle.group != nullptr || particle.wildcard != nullptr;
}

void FillGroup(const SchemaNode& node, ModelGroup& group) {
  for (const auto& child : node.children) {
    const Particle* const particle = child->particle;
    if (particle == nullptr || particle->maxOccurs == 0 || !IsComplete(*particle)) continue;
    group.particles.push_back(particle);
  }
}

// ---- Named groups ----

void SetDefinition(const SchemaNode& node, GroupDefinition& definition) {
  for (const auto& child : node.children) {
    if (child->modelGroup == nullptr) continue;
    child->modelGroup->definition = &definition;
    definition.group = child->modelGroup;
  }
}

// Finds groups that hold themselves, and takes them out of themselves.
class CGroupCircles {
 public:
  explicit CGroupCircles(BuildState& state) : m_state(state) {
    for (const Made<ModelGroup>& made : state.modelGroups) m_groups[made.component] = made;
  }

  void Visit(const ModelGroup* group) {
    const auto found = m_groups.find(group);
    if (found == m_groups.end()) return;
    Progress& progress = m_state.progress[group];
    if (progress != Progress_None) return;
    const CDepthGuard guard(m_state, *found->second.node);
    progress = Progress_InWork;
    auto& particles = found->second.component->particles;
    for (std::size_t i = 0; i < particles.size() && !guard.IsTooDeep();) {
      const ModelGroup* const inner = particles[i]->group;
      if (inner != nullptr) Visit(inner);
      if (inner != nullptr && m_state.progress[inner] == Progress_InWork) {
        Tell(*particles[i], *inner);
        particles.erase(particles.begin() + static_cast<std::ptrdiff_t>(i));
      } else {
        ++i;
      }
    }
    std::vector<const void*> parts;
    for (const Particle* const particle : particles) parts.push_back(particle->group);
    if (!NoteDepth(m_state, *found->second.node, group, parts)) particles.clear();
    m_state.progress[group] = Progress_Done;
  }

 private:
  void Tell(const Particle& particle, const ModelGroup& group) {
    const std::string name =
        group.definition != nullptr ? group.definition->name.ToString() : std::string();
    m_state.diagnostics.Error(particle.location,
                              "The group '" + name + "' holds itself (mg-props-correct.2).");
  }

  BuildState& m_state;
  std::map<const ModelGroup*, Made<ModelGroup>> m_groups;
};

// ---- Redefined groups ----

std::size_t CountReferences(BuildState& state, const SchemaNode& node, const QName& name,
                            const SchemaNode*& last) {
  std::size_t count = 0;
  for (const auto& child : node.children) {
    if (child->Is("group") && child->Find("ref") != nullptr &&
        ResolveQName(state, *child, *child->Find("ref")) == name) {
      ++count;
      last = child.get();
    }
    count += CountReferences(state, *child, name, last);
  }
  return count;
}

void CheckRedefinedGroup(BuildState& state, const SchemaNode& node, const GroupDefinition& group) {
  const auto original = state.originals.find(&group);
  if (original == state.originals.end() || group.group == nullptr) return;
  const SchemaNode* reference = nullptr;
  const std::size_t count = CountReferences(state, node, group.name, reference);
  if (count > 1) {
    state.Error(node, "A redefined group refers to itself once at most (src-redefine.6.1.1).");
  } else if (count == 1) {
    if (reference->particle->minOccurs != 1 || reference->particle->maxOccurs != 1) {
      state.Error(*reference,
                  "A redefined group refers to itself for one occurrence "
                  "(src-redefine.6.1.2).");
    }
  } else {
    Particle particle;
    particle.group = group.group;
    Particle former;
    former.group = static_cast<const GroupDefinition*>(original->second)->group;
    const std::string fault = FindRestrictionFault(state, &particle, &former);
    if (fault.empty()) return;
    state.Error(node, "The redefined group does not restrict the former one: " + fault +
                          " (src-redefine.6.2.2).");
  }
}

}  // namespace

void ResolveContent(BuildState& state) {
  for (const Made<ElementDecl>& made : state.elements) {
    ResolveElement(state, *made.node, *made.component);
  }
  for (const Made<GroupDefinition>& made : state.groups) SetDefinition(*made.node, *made.component);
  for (const Made<Particle>& made : state.particles) {
    ResolveParticle(state, *made.node, *made.component);
  }
  for (const Made<ModelGroup>& made : state.modelGroups) FillGroup(*made.node, *made.component);
  CGroupCircles circles(state);
  for (const Made<ModelGroup>& made : state.modelGroups) circles.Visit(made.component);
}

void CheckRedefinedGroups(BuildState& state) {
  for (const Made<GroupDefinition>& made : state.groups) {
    CheckRedefinedGroup(state, *made.node, *made.component);
  }
}

}  // namespace qzxml::generator
