#include "tools/generator/model/MemberNames.h"

#include <algorithm>

namespace qzxml::generator {

namespace {

constexpr std::size_t kLongestJoinedName = 32;

// What follows Get, Set or IsSet in the names of operations that a bound class has already.
constexpr const char* kLibraryStems[] = {
    "Base",  "Binding",   "ClassAttributeInfo", "ClassElementInfo", "ClassInfo", "ElementName",
    "IsNil", "Namespace", "Selected",           "SelectedMember",   "Tables",    "TargetNamespace"};

}  // namespace

CMemberNames::CMemberNames(const BoundClass& owner) {
  for (const char* stem : kLibraryStems) m_taken[stem] = Kind_Library;
  // What a choice answers while no member is selected.
  if (owner.groupType == BoundGroupType::Choice) m_taken["None"] = Kind_Library;
  AddBase(owner.base);
}

void CMemberNames::AddBase(const BoundClass* base) {
  for (; base != nullptr; base = base->base) {
    for (const BoundMember& member : base->members) {
      m_taken[member.name] = GetKind(member);
      m_variables.Take(member.variable);
    }
  }
}

CMemberNames::Kind CMemberNames::GetKind(const BoundMember& member) {
  switch (member.form) {
    case BoundForm::Attribute:
    case BoundForm::AnyAttribute:
      return Kind_Attribute;
    case BoundForm::Text:
      return Kind_Text;
    default:
      return Kind_Element;
  }
}

void CMemberNames::Give(BoundMember& member, const std::string& singular) {
  const Kind kind = GetKind(member);
  const auto inflect = [&member](const std::string& stem) {
    return member.IsCollection() ? ToPlural(stem) : stem;
  };
  std::string name = inflect(singular);
  const auto found = m_taken.find(name);
  if (found != m_taken.end() && found->second != kind) {
    const char* const suffix = kind == Kind_Attribute ? "Attribute"
                               : kind == Kind_Text    ? "Text"
                                                      : "Element";
    name = inflect(singular + suffix);
  }
  const std::string unnumbered = name;
  for (int number = 2; m_taken.count(name) != 0; ++number) name = WithNumber(unnumbered, number);
  m_taken[name] = kind;
  member.name = name;
  member.variable = m_variables.TakeFirst({"m_" + ToLowerCamel(name)});
}

std::string GetGroupStem(const ContentNode& group) {
  if (group.definition != nullptr) return ToUpperCamel(group.definition->name.localName);
  if (group.head != nullptr) return ToUpperCamel(group.head->name.localName);
  if (group.type == BoundGroupType::All) return "All";
  const bool isChoice = group.type == BoundGroupType::Choice;
  std::string joined;
  for (const ContentPointer& child : group.children) {
    if (child->element == nullptr) return isChoice ? "Choice" : "Sequence";
    if (!joined.empty()) joined += isChoice ? "Or" : "And";
    joined += ToUpperCamel(child->element->name.localName);
  }
  const bool isShort = group.children.size() <= 3 && joined.size() <= kLongestJoinedName;
  return isShort ? joined : isChoice ? "Choice" : "Sequence";
}

}  // namespace qzxml::generator
