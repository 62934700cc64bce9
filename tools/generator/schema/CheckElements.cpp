#include <algorithm>
#include <set>

#include "tools/generator/schema/SchemaBuilder.h"

// Substitution groups, and the values and types of elements.
// Source: XML Schema 1.0 part 1, section 3.3.

namespace qzxml::generator {

namespace {

ElementDecl& GetMutable(const BuildState& state, const ElementDecl* element) {
  return *static_cast<ElementDecl*>(state.nodes.at(element)->component);
}

// Cuts circles of heads, which are errors.
void CutCircles(BuildState& state) {
  std::set<const ElementDecl*> done;
  for (const Made<ElementDecl>& made : state.elements) {
    std::set<const ElementDecl*> seen;
    for (ElementDecl* e = made.component; e != nullptr && done.count(e) == 0;) {
      seen.insert(e);
      if (e->head != nullptr && seen.count(e->head) != 0) {
        state.Error(*state.nodes.at(e), "The element '" + e->name.ToString() +
                                            "' may be substituted by itself (e-props-correct.6).");
        e->head = nullptr;
      }
      e = e->head != nullptr ? &GetMutable(state, e->head) : nullptr;
    }
    done.insert(seen.begin(), seen.end());
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

using Members = std::map<const ElementDecl*, std::vector<const ElementDecl*>>;

void AddSubstitutes(const Members& members, ElementDecl& head) {
  if ((head.blockSet & Derivation_Substitution) != 0) return;
  std::set<const ElementDecl*> found;
  std::vector<const ElementDecl*> open{&head};
  while (!open.empty()) {
    const auto direct = members.find(open.back());
    open.pop_back();
    if (direct == members.end()) continue;
    for (const ElementDecl* const member : direct->second) {
      if (!found.insert(member).second) continue;
      open.push_back(member);
      if (!member->isAbstract &&
          IsDerivedFrom(member->type, head.type, GetBlocked(head, *member))) {
        head.substitutes.push_back(member);
      }
    }
  }
}

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
  Members members;
  for (const Made<ElementDecl>& made : state.elements) {
    if (made.component->head != nullptr) members[made.component->head].push_back(made.component);
  }
  std::map<const ElementDecl*, std::size_t> order;
  for (const Made<ElementDecl>& made : state.elements) order.emplace(made.component, order.size());
  for (const Made<ElementDecl>& made : state.elements) {
    if (!made.component->isGlobal || members.count(made.component) == 0) continue;
    auto& substitutes = made.component->substitutes;
    AddSubstitutes(members, *made.component);
    std::sort(substitutes.begin(), substitutes.end(),
              [&](const ElementDecl* a, const ElementDecl* b) { return order[a] < order[b]; });
  }
}

void CheckElements(BuildState& state) {
  for (const Made<ElementDecl>& made : state.elements) {
    CheckValue(state, *made.node, *made.component);
    CheckHead(state, *made.node, *made.component);
    CheckNotationType(state, *made.node, made.component->type);
  }
}

}  // namespace qzxml::generator
