#include <algorithm>
#include <functional>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include "tools/generator/schema/SchemaBuilder.h"

// Whether each element of a document can be attributed to one particle of a content model
// (cos-nonambig), and whether elements of one name have one type in it (cos-element-consistent).
//
// The content model is taken as an automaton of positions, one for each place where the model names
// an element or a wildcard, as V. Glushkov does for regular expressions: what may come at one
// moment is a set of positions. Two in it that take the same element, and are not one particle, are
// ambiguous.
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
constexpr std::size_t kMaxSteps = 50'000'000;

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

// What may come at one moment is a set, and sets are made of others without being copied: what may
// come behind the middle of a sequence is what its next member begins with and, where that may be
// empty, what may come behind it. The model is walked from its end to its beginning, so that what
// follows is known. Only sets that are no part of another one have to be looked at, and those of
// repetitions, which are parts of themselves.
class CPositionAutomaton {
 public:
  struct Position {
    const Particle* particle;
    int identity;  // copies have the same
  };

  // The steps are counted on, and end it when there are too many.
  CPositionAutomaton(const Particle& particle, std::size_t& steps) : m_steps(steps) {
    m_sets[Build(particle, AddSet())].isWhole = true;
  }

  // Sets of positions that can come at one moment, in the order of the document: each such set is
  // one of them or a part of one.
  std::vector<Positions> GetMoments() {
    std::vector<Positions> moments;
    for (std::size_t i = m_sets.size(); i-- > 0 && m_steps <= kMaxSteps;) {
      if (m_sets[i].isWhole || !m_sets[i].isPart) moments.push_back(Collect(i));
    }
    return moments;
  }

  const Position& Get(int position) const {
    return m_positions[static_cast<std::size_t>(position)];
  }

 private:
  struct Set {
    int position = -1;               // of a set of one
    std::vector<std::size_t> parts;  // of others
    bool isPart = false;             // of another
    bool isWhole = false;            // to be looked at also when it is
    std::size_t visit = 0;           // the last one
  };

  std::size_t AddSet() {
    m_sets.emplace_back();
    return m_sets.size() - 1;
  }

  void AddPart(std::size_t set, std::size_t part) {
    m_sets[set].parts.push_back(part);
    m_sets[part].isPart = true;
  }

  Positions Collect(std::size_t set) {
    Positions positions;
    std::vector<std::size_t> open{set};
    ++m_visit;
    while (!open.empty()) {
      Set& next = m_sets[open.back()];
      open.pop_back();
      ++m_steps;
      if (next.visit == m_visit) continue;
      next.visit = m_visit;
      if (next.position >= 0) positions.push_back(next.position);
      open.insert(open.end(), next.parts.begin(), next.parts.end());
    }
    // Positions are numbered from the end of the model.
    std::sort(positions.begin(), positions.end(), std::greater<int>());
    return positions;
  }

  // Each answers what may come where the particle may, when the set may come behind it.
  std::size_t Build(const Particle& particle, std::size_t behind) {
    const bool isFixed = particle.maxOccurs > 1 && particle.minOccurs == particle.maxOccurs;
    if (isFixed) {
      const int identity = m_nextIdentity;
      const std::size_t last = BuildOnce(particle, behind);
      m_nextIdentity = identity;
      return BuildOnce(particle, last);
    }
    if (particle.IsRepeated()) {
      const std::size_t again = AddSet();
      m_sets[again].isWhole = true;
      AddPart(again, behind);
      const std::size_t first = BuildOnce(particle, again);
      AddPart(again, first);
      return particle.minOccurs == 0 ? again : first;
    }
    const std::size_t first = BuildOnce(particle, behind);
    if (particle.minOccurs != 0) return first;
    const std::size_t optional = AddSet();
    AddPart(optional, first);
    AddPart(optional, behind);
    return optional;
  }

  std::size_t BuildOnce(const Particle& particle, std::size_t behind) {
    if (particle.group == nullptr) return BuildLeaf(particle);
    const auto& members = particle.group->particles;
    if (particle.group->compositor == Compositor_Sequence) {
      for (auto p = members.rbegin(); p != members.rend(); ++p) behind = Build(**p, behind);
      return behind;
    }
    const std::size_t any = AddSet();
    if (particle.group->compositor == Compositor_All) {
      // Members in any order: behind each may come any other. That it may not come again is of no
      // matter here.
      m_sets[any].isWhole = true;
      AddPart(any, behind);
      behind = any;
    }
    for (auto p = members.rbegin(); p != members.rend(); ++p) AddPart(any, Build(**p, behind));
    return any;
  }

  std::size_t BuildLeaf(const Particle& particle) {
    const std::size_t set = AddSet();
    m_sets[set].position = static_cast<int>(m_positions.size());
    m_positions.push_back({&particle, m_nextIdentity++});
    return set;
  }

  std::vector<Position> m_positions;
  std::vector<Set> m_sets;
  int m_nextIdentity = 0;
  std::size_t m_visit = 0;
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
