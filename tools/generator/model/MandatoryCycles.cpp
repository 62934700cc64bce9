#include "tools/generator/model/MandatoryCycles.h"

#include <map>

#include "tools/generator/model/ClassBinder.h"

namespace qzxml::generator {

namespace {

enum State { State_New, State_Open, State_Done };

class CCycleBreaker {
 public:
  CCycleBreaker(Model& model, const CClassRegistry& classes) : m_model(model), m_classes(classes) {}

  // One step into a class; those that are open on the way are required by each other.
  void Visit(const BoundClass& bound) {
    State& state = m_states[&bound];
    if (state != State_New) return;
    state = State_Open;
    if (bound.groupType != BoundGroupType::Choice) {
      for (const EffectiveMember& property : GetEffectiveMembers(bound)) Follow(bound, property);
    }
    m_states[&bound] = State_Done;
  }

 private:
  void Follow(const BoundClass& bound, const EffectiveMember& property) {
    const BoundMember& member = property.member;
    const bool isObject = member.form == BoundForm::Object || member.form == BoundForm::Group;
    if (!isObject || !member.IsMandatory() || member.IsCollection()) return;
    if (member.objectClass->isAbstract) return;
    if (m_states[member.objectClass] == State_Open) {
      Loosen(bound, property);
    } else {
      Visit(*member.objectClass);
    }
  }

  void Loosen(const BoundClass& bound, const EffectiveMember& property) {
    BoundClass& owner = m_classes.Change(*property.owner);
    for (BoundMember& member : owner.members) {
      if (&member == property.declared) member.minOccurs = 0;
    }
    for (const BoundClass* at = &bound; at != nullptr; at = at->base) {
      for (BoundRestriction& restriction : m_classes.Change(*at).restricted) {
        if (restriction.declared == property.declared) restriction.member.minOccurs = 0;
      }
    }
    const ElementDecl* const element = property.member.element;
    m_model.diagnostics.push_back(
        MakeWarning(element != nullptr ? element->location : Location(),
                    "The element " + property.member.xmlName +
                        " requires itself without end, it is bound as optional"));
  }

  Model& m_model;
  const CClassRegistry& m_classes;
  std::map<const BoundClass*, State> m_states;
};

}  // namespace

void BreakMandatoryCycles(Model& model, const CClassRegistry& classes) {
  CCycleBreaker breaker(model, classes);
  // Those of types first, so that it is a member of a type that gives way.
  for (const bool isGroup : {false, true}) {
    for (const BoundClass* bound : classes.GetClasses()) {
      if (bound->isGroup == isGroup) breaker.Visit(*bound);
    }
  }
}

}  // namespace qzxml::generator
