#include "tools/generator/model/RestrictionBinder.h"

#include <algorithm>

namespace qzxml::generator {

namespace {

bool IsChild(const BoundMember& member) {
  return member.form != BoundForm::Attribute && member.form != BoundForm::AnyAttribute &&
         member.form != BoundForm::Text;
}

bool IsElement(const BoundMember& member) {
  return member.form == BoundForm::Value || member.form == BoundForm::Object ||
         member.form == BoundForm::Untyped;
}

bool IsDifferent(const BoundMember& a, const BoundMember& b) {
  return a.minOccurs != b.minOccurs || a.maxOccurs != b.maxOccurs || a.simple != b.simple ||
         a.objectClass != b.objectClass || a.isByType != b.isByType || a.blocked != b.blocked ||
         a.defaultValue != b.defaultValue || a.isFixed != b.isFixed ||
         a.isNillable != b.isNillable || a.wildcard != b.wildcard ||
         a.xmlNamespace != b.xmlNamespace;
}

bool DerivesFrom(const BoundClass* bound, const BoundClass* base) {
  while (bound != nullptr && bound != base) bound = bound->base;
  return bound != nullptr;
}

void SetOccurrence(const ContentNode& node, BoundGroupType within, BoundMember& member) {
  member.declaredAsCollection = member.IsCollection();
  member.minOccurs = node.minOccurs;
  member.maxOccurs = node.maxOccurs;
  if (within == BoundGroupType::Choice && !member.IsCollection()) member.minOccurs = 0;
}

bool CanBeLeftOut(const BoundMember& member) {
  return member.minOccurs == 0 || (member.form == BoundForm::Group && !member.requiresContent);
}

}  // namespace

CRestrictionBinder::CRestrictionBinder(CClassBinder& binder, BoundClass& bound,
                                       const ComplexType& type)
    : m_binder(binder), m_bound(bound), m_type(type), m_base(GetEffectiveMembers(*bound.base)) {}

void CRestrictionBinder::Tighten(const EffectiveMember& base, const BoundMember& tightened) {
  if (!IsDifferent(base.member, tightened)) return;
  BoundRestriction entry;
  entry.propertyIndex = base.propertyIndex;
  entry.owner = base.owner;
  entry.declared = base.declared;
  entry.member = tightened;
  entry.member.declaredAsCollection = base.declared->IsCollection();
  m_entries.push_back(std::move(entry));
}

void CRestrictionBinder::Prohibit(const EffectiveMember& base) {
  BoundMember prohibited = base.member;
  prohibited.minOccurs = 0;
  prohibited.maxOccurs = 0;
  Tighten(base, prohibited);
}

void CRestrictionBinder::Keep() {
  for (BoundRestriction& entry : m_entries) m_bound.restricted.push_back(std::move(entry));
  m_entries.clear();
}

// --- Attributes and text

std::vector<const AttributeUse*> CRestrictionBinder::LayAttributes() {
  std::vector<const AttributeUse*> own;
  for (const AttributeUse& use : m_type.attributes) own.push_back(&use);
  for (const EffectiveMember& base : m_base) {
    if (base.member.form == BoundForm::AnyAttribute) {
      LayAnyAttribute(base);
    } else if (base.member.form == BoundForm::Attribute) {
      const auto found = std::find_if(own.begin(), own.end(), [&base](const AttributeUse* use) {
        return use->attribute->name.localName == base.member.xmlName &&
               use->attribute->name.namespaceUri == base.member.xmlNamespace;
      });
      if (found == own.end()) {
        Prohibit(base);
      } else {
        LayAttribute(base, **found);
        own.erase(found);
      }
    }
  }
  Keep();
  return own;
}

void CRestrictionBinder::LayAnyAttribute(const EffectiveMember& base) {
  if (m_type.attributeWildcard == nullptr) return Prohibit(base);
  BoundMember member = base.member;
  member.maxOccurs = -1;
  SetWildcard(*m_type.attributeWildcard, member);
  // One text means the same whatever the target namespace is.
  if (member.wildcard == base.member.wildcard && member.wildcard == "##any") {
    member.xmlNamespace = base.member.xmlNamespace;
  }
  Tighten(base, member);
}

void CRestrictionBinder::LayAttribute(const EffectiveMember& base, const AttributeUse& use) {
  BoundMember member = base.member;
  member.minOccurs = use.use == UseKind_Required ? 1 : 0;
  member.maxOccurs = use.use == UseKind_Prohibited ? 0 : 1;
  member.isFixed = use.value.fixedValue.has_value();
  member.defaultValue = member.isFixed ? use.value.fixedValue : use.value.defaultValue;
  member.simple = Narrow(base, *use.attribute->type, use.location);
  Tighten(base, member);
}

const BoundSimpleType* CRestrictionBinder::Narrow(const EffectiveMember& base,
                                                  const SimpleType& type,
                                                  const Location& location) {
  const BoundSimpleType* const narrowed =
      m_binder.GetSimpleTypes().Narrow(*base.member.simple, type, *m_bound.where);
  if (narrowed != nullptr) return narrowed;
  m_binder.Warn(location, "The enumeration of the base is taken for " + base.member.xmlName +
                              ", with the values that the restriction leaves out");
  return base.member.simple;
}

void CRestrictionBinder::LayText() {
  for (const EffectiveMember& base : m_base) {
    if (base.member.form != BoundForm::Text) continue;
    if (m_type.content == ContentKind_Simple && m_type.simpleContent != nullptr) {
      BoundMember member = base.member;
      member.simple = Narrow(base, *m_type.simpleContent, m_type.location);
      Tighten(base, member);
    } else if (m_type.content != ContentKind_Mixed) {
      Prohibit(base);
    }
  }
  Keep();
}

// --- Content

CRestrictionBinder::Nodes CRestrictionBinder::LayContent() {
  const ContentPointer content = m_binder.BuildContent(m_type.particle);
  Nodes nodes;
  BoundGroupType type = BoundGroupType::Sequence;
  const bool isPlain = content != nullptr && content->kind == ContentNode::Kind_Group &&
                       content->head == nullptr && !content->IsRepeated();
  const bool isChoice = isPlain && content->type == BoundGroupType::Choice;
  if (isPlain && (isChoice || content->minOccurs == 1) && !IsGroupOfBase(*content)) {
    nodes = content->children;
    type = content->type;
  } else if (content != nullptr) {
    nodes.push_back(content);
  }
  bool fits = LayNodes(nodes, type);
  if (!fits && type != BoundGroupType::Sequence) {
    Forget();
    type = BoundGroupType::Sequence;
    fits = LayNodes({content}, type);
  }
  if (!fits) {
    Forget();
    m_binder.Warn(m_type.location, "The content of this restriction cannot be laid over that of " +
                                       m_type.base->name.ToString() +
                                       ", whose content is taken instead");
    return {};
  }
  if (m_isLooser) {
    m_binder.Warn(m_type.location, "The content of this restriction is taken with more of " +
                                       m_type.base->name.ToString() + " than it allows");
  }
  if (type == BoundGroupType::Choice && m_bound.groupType == BoundGroupType::Choice) {
    m_bound.requiresContent = content->minOccurs > 0;
  }
  Keep();
  return std::move(m_own);
}

void CRestrictionBinder::Forget() {
  m_entries.clear();
  m_own.clear();
  m_isLooser = false;
}

// Whether the base has this content as one member.
bool CRestrictionBinder::IsGroupOfBase(const ContentNode& content) {
  const BoundMember* only = nullptr;
  for (const EffectiveMember& base : m_base) {
    if (!IsChild(base.member)) continue;
    if (only != nullptr) return false;
    only = &base.member;
  }
  return only != nullptr && only->form == BoundForm::Group &&
         only->objectClass->groupType == content.type;
}

bool CRestrictionBinder::LayNodes(const Nodes& nodes, BoundGroupType type) {
  const BoundGroupType baseType = m_bound.groupType;
  const bool isOrdered = baseType == BoundGroupType::Sequence && type == BoundGroupType::Sequence;
  const bool isFew = nodes.size() < 2;
  if (type == BoundGroupType::All && baseType != BoundGroupType::All && !isFew) return false;
  if (type == BoundGroupType::Sequence && baseType == BoundGroupType::Choice && !isFew) {
    return false;
  }
  const bool becomesChoice =
      type == BoundGroupType::Choice && baseType != BoundGroupType::Choice && !isFew;
  const BoundGroupType within = becomesChoice ? BoundGroupType::Choice : baseType;

  std::vector<const EffectiveMember*> rest;
  for (const EffectiveMember& base : m_base) {
    if (IsChild(base.member) && !base.member.IsProhibited()) rest.push_back(&base);
  }
  if (becomesChoice && (!m_type.derivedTypes.empty() ||
                        !std::all_of(rest.begin(), rest.end(), [](const EffectiveMember* base) {
                          return CanBeLeftOut(base->member);
                        }))) {
    return false;
  }
  const EffectiveMember* last = nullptr;
  bool isInOrder = true;
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const ContentNode& node = *nodes[i];
    const auto found = FindBase(rest, node, isOrdered ? last : nullptr);
    if (found == rest.end()) {
      // Several in a row may stand in one group.
      if (last != nullptr && Holds(last->member, node)) continue;
      if (!isOrdered || !CanBeOwn(nodes, i)) return false;
      m_own.assign(nodes.begin() + static_cast<std::ptrdiff_t>(i), nodes.end());
      break;
    }
    isInOrder = isInOrder && (last == nullptr || (*found)->propertyIndex > last->propertyIndex);
    last = *found;
    LayNode(*last, node, within);
    rest.erase(found);
  }
  for (const EffectiveMember* base : rest) {
    // What has members of its own has them in place of the wildcard that stood there.
    const bool isReplaced = !m_own.empty() && base->member.form == BoundForm::Wildcard &&
                            (last == nullptr || base->propertyIndex > last->propertyIndex);
    if (baseType != BoundGroupType::Choice && !isReplaced && !CanBeLeftOut(base->member)) {
      return false;
    }
    Prohibit(*base);
  }
  if (becomesChoice) m_bound.groupType = BoundGroupType::Choice;
  if (baseType == BoundGroupType::All && type == BoundGroupType::Sequence && isInOrder) {
    m_bound.groupType = BoundGroupType::Sequence;
  }
  if (baseType == BoundGroupType::Choice && type == BoundGroupType::Sequence) {
    m_bound.requiresContent = !nodes.empty() && nodes[0]->minOccurs > 0 && !nodes[0]->IsEmptiable();
  }
  return true;
}

// The member that a node of the restriction restricts; one behind last, if that is set. A group
// that only holds the node among others stands back behind one that is the same.
std::vector<const EffectiveMember*>::iterator CRestrictionBinder::FindBase(
    std::vector<const EffectiveMember*>& rest, const ContentNode& node,
    const EffectiveMember* last) {
  const auto isBehind = [last](const EffectiveMember* base) {
    return last == nullptr || base->propertyIndex > last->propertyIndex;
  };
  const auto same = std::find_if(rest.begin(), rest.end(), [&](const EffectiveMember* base) {
    return isBehind(base) && IsSame(base->member, node);
  });
  if (same != rest.end()) return same;
  return std::find_if(rest.begin(), rest.end(), [&](const EffectiveMember* base) {
    return isBehind(base) && Holds(base->member, node);
  });
}

// Whether the nodes from the first one on are to be members of this class: the base has none of
// these elements.
bool CRestrictionBinder::CanBeOwn(const Nodes& nodes, std::size_t first) {
  for (std::size_t i = first; i < nodes.size(); ++i) {
    for (const EffectiveMember& base : m_base) {
      if (nodes[i]->kind == ContentNode::Kind_Element && IsChild(base.member) &&
          (IsSame(base.member, *nodes[i]) || Holds(base.member, *nodes[i]))) {
        return false;
      }
    }
  }
  return true;
}

// Whether what the node allows stands in a group of the base, which then is taken as it is.
bool CRestrictionBinder::Holds(const BoundMember& member, const ContentNode& node) {
  if (member.form != BoundForm::Group) return false;
  const auto holdsOne = [&](const ContentNode& inner) {
    return std::any_of(
        member.objectClass->members.begin(), member.objectClass->members.end(),
        [&](const BoundMember& entry) { return IsSame(entry, inner) || Holds(entry, inner); });
  };
  const bool holds =
      node.kind != ContentNode::Kind_Group
          ? holdsOne(node)
          : std::all_of(node.children.begin(), node.children.end(),
                        [&](const ContentPointer& child) { return holdsOne(*child); });
  m_isLooser = m_isLooser || holds;
  return holds;
}

bool CRestrictionBinder::IsSame(const BoundMember& member, const ContentNode& node) {
  switch (node.kind) {
    case ContentNode::Kind_Element:
      return IsElement(member) && member.xmlName == node.element->name.localName &&
             member.xmlNamespace == node.element->name.namespaceUri;
    case ContentNode::Kind_Wildcard:
      return member.form == BoundForm::Wildcard;
    case ContentNode::Kind_Group:
      break;
  }
  if (member.form != BoundForm::Group) return false;
  if (node.head != nullptr) return m_binder.GetClasses().FindShared(node) == member.objectClass;
  if (node.definition != nullptr && m_binder.GetClasses().FindShared(node) == member.objectClass) {
    return true;
  }
  return IsSameGroup(*member.objectClass, node);
}

// Whether what stands in the group of the restriction stands in that of the base too. What stands
// there beyond it, or more often, stays.
bool CRestrictionBinder::IsSameGroup(const BoundClass& group, const ContentNode& node) {
  if (group.groupType != node.type) return false;
  const bool wasLooser = m_isLooser;
  std::vector<const BoundMember*> rest;
  for (const BoundMember& member : group.members) rest.push_back(&member);
  for (const ContentPointer& child : node.children) {
    const auto found = std::find_if(rest.begin(), rest.end(), [&](const BoundMember* member) {
      return IsSame(*member, *child);
    });
    if (found == rest.end()) {
      m_isLooser = wasLooser;
      return false;
    }
    BoundMember inner = **found;
    SetOccurrence(*child, group.groupType, inner);
    if (child->element != nullptr) NarrowType(*child, inner);
    m_isLooser = m_isLooser || IsDifferent(inner, **found);
    rest.erase(found);
  }
  m_isLooser = m_isLooser || !rest.empty();
  return true;
}

void CRestrictionBinder::LayNode(const EffectiveMember& base, const ContentNode& node,
                                 BoundGroupType within) {
  // A group that holds the node among others cannot say how often.
  if (base.member.form == BoundForm::Group && node.kind != ContentNode::Kind_Group) return;
  BoundMember member = base.member;
  SetOccurrence(node, within, member);
  if (node.element != nullptr) NarrowType(node, member);
  if (node.wildcard != nullptr) SetWildcard(*node.wildcard, member);
  Tighten(base, member);
}

void CRestrictionBinder::NarrowType(const ContentNode& node, BoundMember& member) {
  const ElementDecl& element = *node.element;
  const SimpleType* const simple = element.type->AsSimple();
  member.element = &element;
  if (member.form == BoundForm::Value && simple != nullptr) {
    const BoundSimpleType* const narrowed =
        m_binder.GetSimpleTypes().Narrow(*member.simple, *simple, *m_bound.where);
    if (narrowed != nullptr) member.simple = narrowed;
    m_isLooser = m_isLooser || narrowed == nullptr;
    member.isNillable = member.isNillable && element.isNillable;
    member.isOwnTypeOnly = CClassBinder::IsOwnTypeOnly(element);
    member.isFixed = element.value.fixedValue.has_value();
    member.defaultValue = member.isFixed ? element.value.fixedValue : element.value.defaultValue;
  } else if (member.form == BoundForm::Object && simple == nullptr &&
             !element.type->AsComplex()->IsAnyType()) {
    const BoundClass& own = m_binder.GetClasses().Get(*element.type->AsComplex());
    if (DerivesFrom(&own, member.objectClass)) {
      member.objectClass = &own;
      member.isByType = CClassBinder::IsByType(element);
      member.blocked = CClassBinder::GetBlocked(element);
    } else {
      m_isLooser = true;
    }
  } else if (member.form == BoundForm::Untyped) {
    m_isLooser = m_isLooser || simple != nullptr || !element.type->AsComplex()->IsAnyType();
  } else if (member.objectClass == nullptr || member.objectClass->type != element.type) {
    m_isLooser = true;
  }
}

}  // namespace qzxml::generator
