#include <algorithm>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include "tools/generator/schema/SchemaBuilder.h"

// Whether each element of a document can be attributed to one particle of a content model
// (cos-nonambig), and whether elements of one name have one type in it (cos-element-consistent).
//
// The content model is taken as an automaton of positions, one for each place where the model names
// an element or a wildcard, as V. Glushkov does for regular expressions: which positions may come
// first, and which behind each other one. What can come at one moment is a union of such sets; two
// positions in it that take the same element, and are not one particle, are ambiguous.
//
// Numbers of occurrence need no more positions: what repeats a varying number of times may go on or
// end after each time, as often as it does; only of what repeats a fixed number of times there are
// two copies, one that goes on and one that ends. Copies are one particle.
// Source: XML Schema 1.0 part 1, sections 3.8.6 and appendix H.

namespace qzxml::generator {

namespace {

// Content models beyond it are not looked at: nobody wrote them. Groups that hold others twice, and
// these again, come to any number of positions.
constexpr std::size_t kMaxPositions = 20'000;
// What is spent on all content models together.
constexpr std::size_t kMaxSteps = 200'000'000;

// How many positions a content model takes; each group is looked at once.
class CModelSize {
 public:
  std::size_t Get(const Particle& particle) {
    const bool isFixed = particle.maxOccurs > 1 && particle.minOccurs == particle.maxOccurs;
    const std::size_t once = particle.group != nullptr ? Get(*particle.group) : 1;
    return std::min(isFixed ? once * 2 : once, kMaxPositions + 1);
  }

 private:
  std::size_t Get(const ModelGroup& group) {
    const auto known = m_known.find(&group);
    if (known != m_known.end()) return known->second;
    std::size_t size = 0;
    for (const Particle* const p : group.particles) size += Get(*p);
    size = std::min(size, kMaxPositions + 1);
    m_known[&group] = size;
    return size;
  }

  std::unordered_map<const ModelGroup*, std::size_t> m_known;
};

using Positions = std::vector<int>;

class CPositionAutomaton {
 public:
  struct Position {
    const Particle* particle;
    int identity;  // copies have the same
  };

  // The steps are counted on, and end it when there are too many.
  CPositionAutomaton(const Particle& particle, std::size_t& steps) : m_steps(steps) {
    const Part whole = Build(particle);
    m_first = AddSet(whole.first);
  }

  bool IsTooLarge() const { return m_steps > kMaxSteps; }

  // Every set of positions that can come at one moment.
  std::vector<Positions> GetMoments() {
    std::vector<Positions> moments{m_sets[static_cast<std::size_t>(m_first)]};
    std::set<Positions> seen;
    for (Positions& sets : m_follow) {
      std::sort(sets.begin(), sets.end());
      if (!seen.insert(sets).second) continue;
      Positions all;
      for (const int set : sets) {
        const Positions& one = m_sets[static_cast<std::size_t>(set)];
        all.insert(all.end(), one.begin(), one.end());
      }
      m_steps += all.size();
      if (m_steps > kMaxSteps) break;
      std::sort(all.begin(), all.end());
      all.erase(std::unique(all.begin(), all.end()), all.end());
      moments.push_back(std::move(all));
    }
    return moments;
  }

  const Position& Get(int position) const {
    return m_positions[static_cast<std::size_t>(position)];
  }

 private:
  struct Part {
    Positions first;
    Positions last;
    bool isNullable = true;
  };

  int AddSet(Positions positions) {
    m_sets.push_back(std::move(positions));
    return static_cast<int>(m_sets.size()) - 1;
  }

  Part Build(const Particle& particle) {
    const int identity = m_nextIdentity;
    Part part = BuildOnce(particle);
    if (particle.maxOccurs != kUnbounded && particle.maxOccurs > 1 &&
        particle.minOccurs == particle.maxOccurs) {
      m_nextIdentity = identity;
      part = Concatenate(std::move(part), BuildOnce(particle));
    } else if (particle.IsRepeated()) {
      Follow(part.last, part.first);
    }
    if (particle.minOccurs == 0) part.isNullable = true;
    return part;
  }

  Part BuildOnce(const Particle& particle) {
    if (IsTooLarge()) return {};
    if (particle.group == nullptr) return BuildLeaf(particle);
    switch (particle.group->compositor) {
      case Compositor_Sequence: {
        Part whole;
        for (const Particle* p : particle.group->particles) {
          whole = Concatenate(std::move(whole), Build(*p));
        }
        return whole;
      }
      case Compositor_Choice:
        return BuildChoice(*particle.group);
      case Compositor_All:
        break;
    }
    return BuildAll(*particle.group);
  }

  Part BuildLeaf(const Particle& particle) {
    const int position = static_cast<int>(m_positions.size());
    m_positions.push_back({&particle, m_nextIdentity++});
    m_follow.emplace_back();
    return {{position}, {position}, false};
  }

  static void Append(Positions& to, const Positions& from) {
    to.insert(to.end(), from.begin(), from.end());
  }

  Part BuildChoice(const ModelGroup& group) {
    Part whole;
    whole.isNullable = false;
    for (const Particle* p : group.particles) {
      const Part part = Build(*p);
      Append(whole.first, part.first);
      Append(whole.last, part.last);
      whole.isNullable = whole.isNullable || part.isNullable;
    }
    return whole;
  }

  // Members in any order: behind each may come any other. That it may not come again is of no
  // matter here.
  Part BuildAll(const ModelGroup& group) {
    Part whole;
    for (const Particle* p : group.particles) {
      const Part part = Build(*p);
      Append(whole.first, part.first);
      Append(whole.last, part.last);
      whole.isNullable = whole.isNullable && part.isNullable;
    }
    Follow(whole.last, whole.first);
    return whole;
  }

  Part Concatenate(Part a, const Part& b) {
    Follow(a.last, b.first);
    if (a.isNullable) Append(a.first, b.first);
    if (b.isNullable) {
      Append(a.last, b.last);
    } else {
      a.last = b.last;
    }
    a.isNullable = a.isNullable && b.isNullable;
    return a;
  }

  void Follow(const Positions& last, const Positions& first) {
    if (last.empty() || first.empty()) return;
    m_steps += last.size() + first.size();
    if (IsTooLarge()) return;
    const int set = AddSet(first);
    for (const int position : last) m_follow[static_cast<std::size_t>(position)].push_back(set);
  }

  std::vector<Position> m_positions;
  std::vector<Positions> m_sets;
  std::vector<Positions> m_follow;  // for each position, numbers of sets
  int m_first = 0;
  int m_nextIdentity = 0;
  std::size_t& m_steps;
};

// ---- Ambiguity ----

std::string DescribeLeaf(const Particle& particle) {
  if (particle.wildcard != nullptr) return "a wildcard";
  return "'" + particle.element->name.ToString() + "'";
}

bool Overlap(const Wildcard& a, const Wildcard& b) {
  const auto both = NamespaceConstraint::Intersect(a.constraint, b.constraint);
  return !both || both->kind != NamespaceConstraint::Kind_List || !both->namespaces.empty();
}

// What can come at one moment.
class CMoment {
 public:
  explicit CMoment(const CPositionAutomaton& automaton) : m_automaton(automaton) {}

  // The two particles that take the same element; nulls for none.
  std::pair<const Particle*, const Particle*> FindConflict(const Positions& positions) {
    for (const int number : positions) {
      const CPositionAutomaton::Position& position = m_automaton.Get(number);
      const Particle* const other =
          position.particle->wildcard != nullptr ? AddWildcard(position) : AddElement(position);
      if (other != nullptr) return {other, position.particle};
    }
    return {nullptr, nullptr};
  }

 private:
  using Position = CPositionAutomaton::Position;

  const Particle* AddElement(const Position& position) {
    const ElementDecl& element = *position.particle->element;
    if (const Particle* const other = AddName(element.name, position)) return other;
    for (const ElementDecl* const substitute : element.substitutes) {
      if (const Particle* const other = AddName(substitute->name, position)) return other;
    }
    return nullptr;
  }

  const Particle* AddName(const QName& name, const Position& position) {
    const auto [entry, isNew] = m_names.emplace(name, &position);
    if (!isNew) {
      return entry->second->identity != position.identity ? entry->second->particle : nullptr;
    }
    for (const Position* const wildcard : m_wildcards) {
      if (wildcard->particle->wildcard->constraint.Allows(name.namespaceUri)) {
        return wildcard->particle;
      }
    }
    return nullptr;
  }

  const Particle* AddWildcard(const Position& position) {
    const Wildcard& wildcard = *position.particle->wildcard;
    for (const auto& [name, other] : m_names) {
      if (wildcard.constraint.Allows(name.namespaceUri)) return other->particle;
    }
    for (const Position* const other : m_wildcards) {
      if (other->identity != position.identity && Overlap(wildcard, *other->particle->wildcard)) {
        return other->particle;
      }
    }
    m_wildcards.push_back(&position);
    return nullptr;
  }

  const CPositionAutomaton& m_automaton;
  std::map<QName, const Position*> m_names;
  std::vector<const Position*> m_wildcards;
};

void CheckAmbiguity(BuildState& state, const SchemaNode& node, const Particle& particle) {
  CPositionAutomaton automaton(particle, state.contentSteps);
  if (automaton.IsTooLarge()) return;
  for (const Positions& moment : automaton.GetMoments()) {
    const auto [a, b] = CMoment(automaton).FindConflict(moment);
    if (a == nullptr) continue;
    state.Error(node, "The content model is ambiguous: " + DescribeLeaf(*a) + " and " +
                          DescribeLeaf(*b) + " may take the same element (cos-nonambig).");
    return;
  }
}

// ---- Consistency ----

class CConsistencyCheck {
 public:
  CConsistencyCheck(BuildState& state, const SchemaNode& node) : m_state(state), m_node(node) {}

  void Visit(const Particle& particle) {
    if (particle.group != nullptr) {
      if (!m_seen.insert(particle.group).second) return;
      for (const Particle* p : particle.group->particles) Visit(*p);
    } else if (particle.element != nullptr) {
      Add(*particle.element);
      for (const ElementDecl* substitute : particle.element->substitutes) Add(*substitute);
    }
  }

 private:
  void Add(const ElementDecl& element) {
    const auto [entry, isNew] = m_types.emplace(element.name, element.type);
    if (isNew || entry->second == element.type) return;
    m_state.Error(m_node, "The elements '" + element.name.ToString() +
                              "' have different types in one content model "
                              "(cos-element-consistent).");
  }

  BuildState& m_state;
  const SchemaNode& m_node;
  std::unordered_set<const ModelGroup*> m_seen;
  std::map<QName, const Type*> m_types;
};

void CheckContentModel(BuildState& state, CModelSize& size, const SchemaNode& node,
                       const Particle& particle) {
  if (size.Get(particle) <= kMaxPositions) CheckAmbiguity(state, node, particle);
  CConsistencyCheck(state, node).Visit(particle);
}

}  // namespace

void CheckContentModels(BuildState& state) {
  CModelSize size;
  for (const Made<ComplexType>& made : state.complexTypes) {
    const ComplexType& type = *made.component;
    const bool isInherited = type.ownParticle == nullptr;
    if (type.particle == nullptr || isInherited) continue;
    CheckContentModel(state, size, *made.node, *type.particle);
  }
  for (const Made<GroupDefinition>& made : state.groups) {
    if (made.component->group == nullptr) continue;
    Particle particle;
    particle.group = made.component->group;
    CheckContentModel(state, size, *made.node, particle);
  }
}

}  // namespace qzxml::generator
