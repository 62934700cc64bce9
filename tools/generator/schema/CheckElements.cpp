#include <algorithm>
#include <set>
#include <unordered_map>

#include "tools/generator/schema/SchemaBuilder.h"

// Substitution groups, and the values and types of elements.
// Source: XML Schema 1.0 part 1, section 3.3.

namespace qzxml::generator {

namespace {

ElementDecl& GetMutable(const BuildState& state, const ElementDecl* element) {
  return *static_cast<ElementDecl*>(state.nodes.at(element)->component);
}

// Substitution groups of substitution groups: each element is among the substitutes of all of them.
constexpr int kMaxHeads = 100;

// Cuts circles of heads, which are errors, and chains of them that nobody wrote.
void CutCircles(BuildState& state) {
  std::unordered_map<const ElementDecl*, int> depths;
  for (const Made<ElementDecl>& made : state.elements) {
    std::vector<ElementDecl*> open;
    std::set<const ElementDecl*> seen;
    for (ElementDecl* e = made.component; e != nullptr && depths.count(e) == 0;) {
      open.push_back(e);
      seen.insert(e);
      if (e->head != nullptr && seen.count(e->head) != 0) {
        state.Error(*state.nodes.at(e), "The element '" + e->name.ToString() +
                                            "' may be substituted by itself (e-props-correct.6).");
        e->head = nullptr;
      }
      e = e->head != nullptr ? &GetMutable(state, e->head) : nullptr;
    }
    for (auto e = open.rbegin(); e != open.rend(); ++e) {
      int& depth = depths[*e];
      depth = (*e)->head != nullptr ? depths.at((*e)->head) + 1 : 0;
      if (depth <= kMaxHeads) continue;
      state.Error(*state.nodes.at(*e), "Elements may stand for one another too deep.");
      (*e)->head = nullptr;
      depth = 0;
    }
  }
}

// An element that names no type has its head's.
void InheritTypes(BuildState& state) {
  for (const Made<ElementDecl>& made : state.elements) {
    std::vector<ElementDecl*> untyped;
    const ElementDecl* e = made.component;
    for (; e != nullptr && e->type == nullptr; e = e->head) {
      untyped.push_back(&GetMutable(state, e));
    }
    for (ElementDecl* const element : untyped) {
      element->type = e != nullptr ? e->type : state.storage.anyType;
    }
  }
}

// What may not lie between the types of an element and of its head: block of the head and of its
// type, and of the types between.
unsigned GetBlocked(const ElementDecl& head, const ElementDecl& member) {
  unsigned blocked = head.blockSet;
  const ComplexType* const headType = head.type->AsComplex();
  if (headType != nullptr) blocked |= headType->blockSet;
  for (const Type* type = member.type; type != nullptr && type != head.type;) {
    const ComplexType* const complex = type->AsComplex();
    if (complex == nullptr) break;
    if (type != member.type) blocked |= complex->blockSet;
    type = complex->base;
  }
  return blocked;
}

// Who may stand for whom, by the places of the elements in the order of the documents.
class CSubstitutions {
 public:
  explicit CSubstitutions(BuildState& state) : m_state(state), m_direct(state.elements.size()) {
    std::unordered_map<const ElementDecl*, std::size_t> places;
    for (const Made<ElementDecl>& made : state.elements) {
      places.emplace(made.component, places.size());
    }
    for (std::size_t i = 0; i < state.elements.size(); ++i) {
      const ElementDecl* const head = state.elements[i].component->head;
      if (head != nullptr) m_direct[places.at(head)].push_back(i);
    }
  }

  void SetSubstitutes() {
    for (std::size_t i = 0; i < m_direct.size(); ++i) {
      ElementDecl& head = *m_state.elements[i].component;
      if (m_direct[i].empty() || (head.blockSet & Derivation_Substitution) != 0) continue;
      for (const std::size_t place : FindAll(i)) {
        const ElementDecl& member = *m_state.elements[place].component;
        if (!member.isAbstract && IsDerivedFrom(member.type, head.type, GetBlocked(head, member))) {
          head.substitutes.push_back(&member);
        }
      }
    }
  }

 private:
  // Directly or by way of others. There are no circles any more.
  std::vector<std::size_t> FindAll(std::size_t head) const {
    std::vector<std::size_t> found = m_direct[head];
    for (std::size_t i = 0; i < found.size(); ++i) {
      const std::vector<std::size_t>& more = m_direct[found[i]];
      found.insert(found.end(), more.begin(), more.end());
    }
    std::sort(found.begin(), found.end());
    return found;
  }

  BuildState& m_state;
  std::vector<std::vector<std::size_t>> m_direct;
};

// ---- Values ----

void CheckValue(BuildState& state, const SchemaNode& node, ElementDecl& element) {
  const ComplexType* const complex = element.type->AsComplex();
  const SimpleType* simple = element.type->AsSimple();
  if (complex != nullptr && complex->content == ContentKind_Simple) simple = complex->simpleContent;
  element.value = ReadValueConstraint(state, node, simple);
  if (simple != nullptr || element.value.IsEmpty()) return;
  if (complex->content != ContentKind_Mixed) {
    state.Error(node,
                "A default or fixed value needs simple or mixed content "
                "(cos-valid-default.2.1).");
  } else if (!IsEmptiable(complex->particle)) {
    state.Error(node,
                "A default or fixed value needs content that may be without elements "
                "(cos-valid-default.2.2.2).");
  }
}

void CheckHead(BuildState& state, const SchemaNode& node, const ElementDecl& element) {
  if (element.head == nullptr || IsDerivedFrom(element.type, element.head->type)) {
    if (element.head == nullptr ||
        IsDerivedFrom(element.type, element.head->type, element.head->finalSet)) {
      return;
    }
    state.Error(node, "The element '" + element.head->name.ToString() +
                          "' is final for the derivation of this one's type "
                          "(e-props-correct.4).");
    return;
  }
  state.Error(node, "The " + Describe(*element.type) + " is not derived from the " +
                        Describe(*element.head->type) + " of the element '" +
                        element.head->name.ToString() +
                        "', which it may stand for "
                        "(e-props-correct.4).");
}

}  // namespace

void ResolveSubstitutions(BuildState& state) {
  CutCircles(state);
  InheritTypes(state);
  CSubstitutions(state).SetSubstitutes();
}

void CheckElements(BuildState& state) {
  for (const Made<ElementDecl>& made : state.elements) {
    CheckValue(state, *made.node, *made.component);
    CheckHead(state, *made.node, *made.component);
    CheckNotationType(state, *made.node, made.component->type);
  }
}

}  // namespace qzxml::generator
