#include <algorithm>
#include <deque>
#include <unordered_map>

#include "tools/generator/schema/SchemaBuilder.h"

// Whether one content model restricts another, by the rules for each pair of kinds of particles.
// Both are simplified first: groups that say nothing go, and an element that others may stand for
// becomes a choice of all of them.
// Source: XML Schema 1.0 part 1, section 3.9.6.

namespace qzxml::generator {

namespace {

// Content models beyond it are let pass, and all of them when so much was spent on those before.
constexpr std::size_t kMaxParticles = 20'000;
constexpr std::size_t kMaxSteps = 50'000'000;

struct Range {
  std::int64_t min = 1;
  std::int64_t max = 1;

  bool IsWithin(const Range& other) const {
    if (min < other.min) return false;
    return other.max == kUnbounded || (max != kUnbounded && max <= other.max);
  }
};

std::int64_t Multiply(std::int64_t a, std::int64_t b) {
  if (a == 0 || b == 0) return 0;
  if (a == kUnbounded || b == kUnbounded) return kUnbounded;
  constexpr std::int64_t kMost = 1'000'000'000'000'000'000;
  return a > kMost / b ? kMost : a * b;
}

std::int64_t Add(std::int64_t a, std::int64_t b) {
  if (a == kUnbounded || b == kUnbounded) return kUnbounded;
  constexpr std::int64_t kMost = 1'000'000'000'000'000'000;
  return std::min(kMost, a + b);
}

// The sum or the choice of what members take, and as often as the group itself.
template <typename Members, typename GetRange>
Range GetGroupRange(const Range& range, bool isChoice, const Members& members, GetRange getRange) {
  Range inner{0, 0};
  bool isFirst = true;
  for (const auto* const member : members) {
    const Range part = getRange(*member);
    if (!isChoice) {
      inner = {Add(inner.min, part.min), Add(inner.max, part.max)};
    } else {
      const bool isUnbounded = inner.max == kUnbounded || part.max == kUnbounded;
      inner.min = isFirst ? part.min : std::min(inner.min, part.min);
      inner.max = isUnbounded ? kUnbounded : std::max(inner.max, part.max);
    }
    isFirst = false;
  }
  return {Multiply(range.min, inner.min), Multiply(range.max, inner.max)};
}

// A particle without what is pointless.
struct Simple {
  enum Kind { Kind_Element, Kind_Wildcard, Kind_All, Kind_Choice, Kind_Sequence };

  Kind kind = Kind_Sequence;
  Range range;
  const Particle* origin = nullptr;
  const ElementDecl* element = nullptr;
  const Wildcard* wildcard = nullptr;
  bool isOfSubstitutes = false;  // a choice of those that may stand for an element
  std::vector<const Simple*> children;

  bool IsOnce() const { return range.min == 1 && range.max == 1; }
};

Range GetTotalRange(const Simple& particle) {
  if (particle.element != nullptr || particle.wildcard != nullptr) return particle.range;
  return GetGroupRange(particle.range, particle.kind == Simple::Kind_Choice, particle.children,
                       [](const Simple& child) { return GetTotalRange(child); });
}

class CSimplifier {
 public:
  // Null for content that is empty.
  const Simple* Simplify(const Particle& particle) {
    if (particle.maxOccurs == 0) return nullptr;
    return particle.group != nullptr ? SimplifyGroup(particle) : MakeLeaf(particle);
  }

  std::size_t GetCount() const { return m_made.size(); }
  bool IsTooLarge() const { return GetCount() > kMaxParticles; }

  Simple& Make() { return m_made.emplace_back(); }

 private:
  const Simple* MakeLeaf(const Particle& particle) {
    Simple& leaf = Make();
    leaf.origin = &particle;
    leaf.range = {particle.minOccurs, particle.maxOccurs};
    leaf.wildcard = particle.wildcard;
    leaf.kind = Simple::Kind_Wildcard;
    if (particle.element == nullptr) return &leaf;
    if (particle.element->substitutes.empty()) {
      leaf.kind = Simple::Kind_Element;
      leaf.element = particle.element;
      return &leaf;
    }
    leaf.kind = Simple::Kind_Choice;
    leaf.isOfSubstitutes = true;
    leaf.children.push_back(MakeSubstitute(*particle.element));
    for (const ElementDecl* const substitute : particle.element->substitutes) {
      leaf.children.push_back(MakeSubstitute(*substitute));
    }
    return &leaf;
  }

  const Simple* MakeSubstitute(const ElementDecl& element) {
    Simple& leaf = Make();
    leaf.kind = Simple::Kind_Element;
    leaf.element = &element;
    return &leaf;
  }

  static Simple::Kind ToKind(Compositor compositor) {
    switch (compositor) {
      case Compositor_Sequence:
        return Simple::Kind_Sequence;
      case Compositor_Choice:
        return Simple::Kind_Choice;
      case Compositor_All:
        break;
    }
    return Simple::Kind_All;
  }

  const Simple* SimplifyGroup(const Particle& particle) {
    Simple& group = Make();
    group.origin = &particle;
    group.range = {particle.minOccurs, particle.maxOccurs};
    group.kind = ToKind(particle.group->compositor);
    for (const Particle* const p : particle.group->particles) {
      if (IsTooLarge()) return nullptr;
      AddChild(group, *p);
    }
    if (group.children.empty()) {
      const bool isUnfulfillable = group.kind == Simple::Kind_Choice && group.range.min > 0;
      return isUnfulfillable ? &group : nullptr;
    }
    return group.children.size() == 1 && group.IsOnce() ? group.children.front() : &group;
  }

  // A group within one of its kind that is there once adds nothing but its members.
  void AddChild(Simple& group, const Particle& particle) {
    const Simple* const child = Simplify(particle);
    if (child == nullptr) return;
    const bool isSameKind = child->kind == group.kind && group.kind != Simple::Kind_All;
    if (isSameKind && child->IsOnce()) {
      group.children.insert(group.children.end(), child->children.begin(), child->children.end());
      group.isOfSubstitutes = group.isOfSubstitutes || child->isOfSubstitutes;
    } else {
      group.children.push_back(child);
    }
  }

  std::deque<Simple> m_made;
};

class CParticleRestriction {
 public:
  explicit CParticleRestriction(BuildState& state, CSimplifier& simplifier)
      : m_state(state), m_simplifier(simplifier) {}

  bool Restricts(const Simple& r, const Simple& b) {
    if (++m_state.restrictionSteps > kMaxSteps || (r.origin != nullptr && r.origin == b.origin))
      return true;
    switch (b.kind) {
      case Simple::Kind_Element:
        return r.kind == Simple::Kind_Element && IsNameAndTypeOk(r, b);
      case Simple::Kind_Wildcard:
        return RestrictsWildcard(r, b, true);
      case Simple::Kind_All:
        if (r.kind == Simple::Kind_Sequence) return RecurseUnordered(r, b);
        return r.kind == Simple::Kind_All ? Recurse(r, b) : IsOneMember(r, b);
      case Simple::Kind_Choice:
        if (r.kind == Simple::Kind_Sequence) return MapAndSum(r, b);
        return r.kind == Simple::Kind_Choice ? RecurseLax(r, b) : IsOneMember(r, b);
      case Simple::Kind_Sequence:
        break;
    }
    return r.kind == Simple::Kind_Sequence ? Recurse(r, b) : IsOneMember(r, b);
  }

  const std::string& GetFault() const { return m_fault; }

 private:
  bool Fail(const std::string& fault) {
    m_fault = fault;
    return false;
  }

  static std::string Describe(const Simple& particle) {
    switch (particle.kind) {
      case Simple::Kind_Element:
        return "the element '" + particle.element->name.ToString() + "'";
      case Simple::Kind_Wildcard:
        return "the wildcard '" + particle.wildcard->namespaceText + "'";
      case Simple::Kind_All:
        return "a group of xs:all";
      case Simple::Kind_Choice:
        return "a choice";
      case Simple::Kind_Sequence:
        break;
    }
    return "a sequence";
  }

  bool CheckRange(const Simple& r, const Simple& b) {
    if (r.range.IsWithin(b.range)) return true;
    return Fail(Describe(r) + " may be there more or less often than " + Describe(b) +
                " in the base");
  }

  bool IsNameAndTypeOk(const Simple& r, const Simple& b) {
    const ElementDecl& own = *r.element;
    const ElementDecl& base = *b.element;
    const std::string name = Describe(r);
    if (own.name != base.name) {
      return Fail(name + " stands where the base has " + Describe(b));
    }
    if (!CheckRange(r, b)) return false;
    if (&own == &base) return true;
    if (own.isNillable && !base.isNillable) return Fail(name + " is nillable, and not in the base");
    if (!IsFixedOk(own, base)) return Fail(name + " has a fixed value in the base");
    if ((base.blockSet & ~own.blockSet) != 0) return Fail(name + " blocks less than in the base");
    constexpr unsigned kBlocked = Derivation_Extension | Derivation_List | Derivation_Union;
    if (!IsDerivedFrom(own.type, base.type, kBlocked)) {
      return Fail(name + " has a type that does not restrict that in the base");
    }
    return true;
  }

  bool IsFixedOk(const ElementDecl& own, const ElementDecl& base) {
    if (!base.value.fixedValue) return true;
    if (!own.value.fixedValue) return false;
    const SimpleType* type = base.type->AsSimple();
    if (type == nullptr) type = base.type->AsComplex()->simpleContent;
    if (type == nullptr) return *own.value.fixedValue == *base.value.fixedValue;
    return m_state.values.AreEqual(*type, *base.value.fixedValue, *own.value.fixedValue);
  }

  // NSCompat, NSSubset and NSRecurseCheckCardinality. Of the members of a group the sum counts, not
  // each one's number.
  bool RestrictsWildcard(const Simple& r, const Simple& b, bool countsRange) {
    const NamespaceConstraint& allowed = b.wildcard->constraint;
    if (countsRange && !GetTotalRange(r).IsWithin(b.range)) {
      return Fail(Describe(r) + " may be there more or less often than " + Describe(b) +
                  " in the base");
    }
    if (r.kind == Simple::Kind_Element) {
      return allowed.Allows(r.element->name.namespaceUri) ||
             Fail(Describe(r) + " is not of " + Describe(b) + " in the base");
    }
    if (r.kind == Simple::Kind_Wildcard) {
      const bool isSubset = r.wildcard->constraint.IsSubsetOf(allowed) &&
                            r.wildcard->processContents <= b.wildcard->processContents;
      return isSubset || Fail(Describe(r) + " lets more pass than " + Describe(b) + " in the base");
    }
    return std::all_of(r.children.begin(), r.children.end(),
                       [&](const Simple* child) { return RestrictsWildcard(*child, b, false); });
  }

  // One that is no group, as the only member of a group like the base.
  bool IsOneMember(const Simple& r, const Simple& b) {
    if (r.kind != Simple::Kind_Element) {
      return Fail(Describe(r) + " stands where the base has " + Describe(b));
    }
    Simple& group = m_simplifier.Make();
    group.kind = b.kind;
    group.children.push_back(&r);
    return b.kind == Simple::Kind_Choice ? RecurseLax(group, b) : Recurse(group, b);
  }

  static bool IsEmptiable(const Simple& particle) { return GetTotalRange(particle).min == 0; }

  bool Recurse(const Simple& r, const Simple& b) {
    if (!CheckRange(r, b)) return false;
    std::size_t next = 0;
    for (const Simple* const child : r.children) {
      for (;; ++next) {
        if (next == b.children.size()) return FailAt(*child);
        if (Restricts(*child, *b.children[next])) break;
        if (!IsEmptiable(*b.children[next])) return false;
      }
      ++next;
    }
    for (; next < b.children.size(); ++next) {
      if (!IsEmptiable(*b.children[next])) {
        return Fail(Describe(*b.children[next]) + " of the base is missing");
      }
    }
    return true;
  }

  bool FailAt(const Simple& child) {
    if (!m_fault.empty()) return false;
    return Fail(Describe(child) + " has no place in the base");
  }

  bool RecurseUnordered(const Simple& r, const Simple& b) {
    if (!CheckRange(r, b)) return false;
    std::vector<bool> isUsed(b.children.size(), false);
    for (const Simple* const child : r.children) {
      std::size_t i = 0;
      while (i < isUsed.size() && (isUsed[i] || !Restricts(*child, *b.children[i]))) ++i;
      if (i == isUsed.size()) return FailAt(*child);
      isUsed[i] = true;
    }
    for (std::size_t i = 0; i < isUsed.size(); ++i) {
      if (!isUsed[i] && !IsEmptiable(*b.children[i])) {
        return Fail(Describe(*b.children[i]) + " of the base is missing");
      }
    }
    return true;
  }

  bool RecurseLax(const Simple& r, const Simple& b) {
    if (!CheckRange(r, b)) return false;
    // Those that may stand for an element have no order.
    const bool isOrdered = !r.isOfSubstitutes && !b.isOfSubstitutes;
    std::size_t next = 0;
    for (const Simple* const child : r.children) {
      if (!isOrdered) next = 0;
      while (next < b.children.size() && !Restricts(*child, *b.children[next])) ++next;
      if (next == b.children.size()) return FailAt(*child);
      ++next;
    }
    return true;
  }

  bool MapAndSum(const Simple& r, const Simple& b) {
    const auto count = static_cast<std::int64_t>(r.children.size());
    const Range sum{Multiply(r.range.min, count), Multiply(r.range.max, count)};
    if (!sum.IsWithin(b.range)) {
      return Fail("a sequence has more or less members than the choice in the base may repeat");
    }
    for (const Simple* const child : r.children) {
      const bool isFound =
          std::any_of(b.children.begin(), b.children.end(),
                      [&](const Simple* alternative) { return Restricts(*child, *alternative); });
      if (!isFound) return FailAt(*child);
    }
    return true;
  }

  BuildState& m_state;
  CSimplifier& m_simplifier;
  std::string m_fault;
};

// Groups that are referred to more than once are looked at once.
class CEmptiable {
 public:
  bool IsEmptiable(const Particle& particle) {
    if (particle.minOccurs == 0) return true;
    return particle.group != nullptr && IsEmptiable(*particle.group);
  }

 private:
  bool IsEmptiable(const ModelGroup& group) {
    const auto known = m_known.find(&group);
    if (known != m_known.end()) return known->second;
    const auto isEmptiable = [this](const Particle* p) { return IsEmptiable(*p); };
    const auto& particles = group.particles;
    const bool result =
        group.compositor == Compositor_Choice
            ? particles.empty() || std::any_of(particles.begin(), particles.end(), isEmptiable)
            : std::all_of(particles.begin(), particles.end(), isEmptiable);
    m_known[&group] = result;
    return result;
  }

  std::unordered_map<const ModelGroup*, bool> m_known;
};

}  // namespace

bool IsEmptiable(const Particle* particle) {
  return particle == nullptr || CEmptiable().IsEmptiable(*particle);
}

std::string FindRestrictionFault(BuildState& state, const Particle* particle,
                                 const Particle* base) {
  if (state.restrictionSteps > kMaxSteps) return {};
  CSimplifier simplifier;
  const Simple* const r = simplifier.Simplify(*particle);
  const Simple* const b = simplifier.Simplify(*base);
  state.restrictionSteps += simplifier.GetCount();
  if (simplifier.IsTooLarge()) return {};
  if (r == nullptr) {
    return IsEmptiable(base) ? std::string() : "it is empty, and that of the base may not be";
  }
  if (b == nullptr) return "that of the base is empty";
  CParticleRestriction restriction(state, simplifier);
  return restriction.Restricts(*r, *b) ? std::string() : restriction.GetFault();
}

}  // namespace qzxml::generator
