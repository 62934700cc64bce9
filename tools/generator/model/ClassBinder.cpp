#include "tools/generator/model/ClassBinder.h"

#include <algorithm>

#include "tools/generator/model/RestrictionBinder.h"

namespace qzxml::generator {

namespace {

bool IsChild(const BoundMember& member) {
  return member.form != BoundForm::Attribute && member.form != BoundForm::AnyAttribute &&
         member.form != BoundForm::Text;
}

bool HasChildren(const BoundClass& bound) {
  for (const BoundClass* at = &bound; at != nullptr; at = at->base) {
    if (std::any_of(at->members.begin(), at->members.end(), IsChild)) return true;
  }
  return false;
}

const BoundMember* FindMember(const BoundClass& bound, BoundForm form) {
  for (const BoundClass* at = &bound; at != nullptr; at = at->base) {
    for (const BoundMember& member : at->members) {
      if (member.form == form) return &member;
    }
  }
  return nullptr;
}

std::int32_t CountProperties(const BoundClass* bound) {
  std::size_t count = 0;
  for (; bound != nullptr; bound = bound->base) count += bound->members.size();
  return static_cast<std::int32_t>(count);
}

void SetOccurrence(const ContentNode& node, BoundGroupType within, BoundMember& member) {
  member.minOccurs = node.minOccurs;
  member.maxOccurs = node.maxOccurs;
  if (within == BoundGroupType::Choice && !member.IsCollection()) member.minOccurs = 0;
}

const std::string& GetDocumentation(const ContentNode& node) {
  static const std::string none;
  if (node.particle != nullptr && !node.particle->documentation.empty()) {
    return node.particle->documentation;
  }
  return node.element != nullptr ? node.element->documentation : none;
}

// The only element of a type without name.
const ElementDecl* FindOwner(const ComplexType& type) {
  const bool isOwned =
      type.name.IsEmpty() && type.context != nullptr && type.context->kind == ComponentKind_Element;
  return isOwned ? static_cast<const ElementDecl*>(type.context) : nullptr;
}

// Whether the text of a class is no member of a base class.
bool HasOwnText(const ComplexType& type) {
  if (type.content != ContentKind_Simple && type.content != ContentKind_Mixed) return false;
  const ComplexType* const base = type.base != nullptr ? type.base->AsComplex() : nullptr;
  return base == nullptr || base->IsAnyType() || base->content == ContentKind_Empty ||
         base->content == ContentKind_ElementOnly;
}

// Whether a named type derives from the type by steps that are none of the blocked ones.
bool HasDerived(const ComplexType& type, unsigned blocked) {
  return std::any_of(type.derivedTypes.begin(), type.derivedTypes.end(),
                     [blocked](const ComplexType* derived) {
                       if ((GetStep(*derived) & blocked) != 0) return false;
                       return !derived->name.IsEmpty() || HasDerived(*derived, blocked);
                     });
}

// Whether a named type derives from the type by a step that is one of the blocked ones.
bool IsBlocking(const ComplexType& type, unsigned blocked) {
  return std::any_of(type.derivedTypes.begin(), type.derivedTypes.end(),
                     [blocked](const ComplexType* derived) {
                       return (GetStep(*derived) & blocked) != 0 || IsBlocking(*derived, blocked);
                     });
}

}  // namespace

std::vector<EffectiveMember> GetEffectiveMembers(const BoundClass& bound) {
  std::vector<EffectiveMember> members;
  if (bound.base != nullptr) members = GetEffectiveMembers(*bound.base);
  for (const BoundRestriction& restriction : bound.restricted) {
    members[static_cast<std::size_t>(restriction.propertyIndex)].member = restriction.member;
  }
  for (const BoundMember& member : bound.members) {
    members.push_back({static_cast<std::int32_t>(members.size()), &bound, &member, member});
  }
  return members;
}

void SetWildcard(const Wildcard& wildcard, BoundMember& member) {
  const NamespaceConstraint& constraint = wildcard.constraint;
  member.xmlNamespace = wildcard.targetNamespace;
  if (constraint.kind == NamespaceConstraint::Kind_Not && !constraint.namespaces.empty()) {
    member.xmlNamespace = constraint.namespaces[0];
  }
  member.wildcard = constraint.ToText(member.xmlNamespace);
}

CClassBinder::CClassBinder(Model& model, const CSchemaSet& schemas, CClassRegistry& classes,
                           CSimpleTypeBinder& simpleTypes)
    : m_schemas(schemas),
      m_model(model),
      m_classes(classes),
      m_simpleTypes(simpleTypes),
      m_contents(model.diagnostics) {}

void CClassBinder::Warn(const Location& location, std::string message) {
  m_model.diagnostics.push_back(MakeWarning(location, std::move(message)));
}

const BoundSimpleType& CClassBinder::GetMixedText() {
  return m_simpleTypes.Bind(*m_schemas.GetBuiltIn(BuiltIn_string));
}

bool CClassBinder::IsByType(const ElementDecl& element) {
  const ComplexType* const type = element.type->AsComplex();
  if (type == nullptr || type->IsAnyType()) return false;
  return type->isAbstract || HasDerived(*type, element.blockSet | type->blockSet);
}

unsigned CClassBinder::GetBlocked(const ElementDecl& element) {
  const ComplexType* const type = element.type->AsComplex();
  if (type == nullptr || type->IsAnyType()) return Derivation_None;
  const unsigned blocked =
      (element.blockSet | type->blockSet) & (Derivation_Extension | Derivation_Restriction);
  // What blocks nothing that is there is no difference.
  return IsBlocking(*type, blocked) ? blocked : Derivation_None;
}

bool CClassBinder::IsOwnTypeOnly(const ElementDecl& element) {
  return (element.blockSet & Derivation_Restriction) != 0;
}

void CClassBinder::FillAll() {
  const std::vector<BoundClass*> types = m_classes.GetTypeClasses();
  for (BoundClass* bound : types) FillType(*bound, *bound->type->AsComplex());
  for (const SchemaDocument* document : m_schemas.GetDocuments()) {
    for (const ElementDecl* element : document->elements) {
      BoundClass* const root = m_classes.FindRoot(*element);
      if (root == nullptr) continue;
      if (element->type->IsSimple()) {
        FillSimple(*root, *element->type->AsSimple(), IsOwnTypeOnly(*element), &element->value);
      } else {
        FillAny(*root);
      }
    }
  }
}

void CClassBinder::Finish(BoundClass& bound, Members& members) {
  bound.basePropertyCount = CountProperties(bound.base);
  CMemberNames names(bound);
  for (auto& [member, singular] : members.children) names.Give(member, singular);
  for (BoundMember& member : members.text) names.Give(member, bound.isMixed ? "Text" : "Value");
  for (BoundMember& member : members.attributes) {
    const bool isAny = member.form == BoundForm::AnyAttribute;
    names.Give(member, isAny ? "AnyAttribute" : ToUpperCamel(member.xmlName));
  }
  std::sort(bound.restricted.begin(), bound.restricted.end(),
            [](const BoundRestriction& a, const BoundRestriction& b) {
              return a.propertyIndex < b.propertyIndex;
            });
  bound.members = std::move(members.attributes);
  for (auto& child : members.children) bound.members.push_back(std::move(child.first));
  for (BoundMember& member : members.text) bound.members.push_back(std::move(member));
}

// --- Classes of elements without a complex type

void CClassBinder::FillSimple(BoundClass& bound, const SimpleType& type, bool isOwnTypeOnly,
                              const ValueConstraint* value) {
  Members members;
  BoundMember text;
  text.form = BoundForm::Text;
  text.simple = &m_simpleTypes.Bind(type);
  text.isOwnTypeOnly = isOwnTypeOnly;
  if (value != nullptr) SetValue(*value, text);
  members.text.push_back(text);
  Finish(bound, members);
}

// The content of anyType: everything, with the text in one piece.
void CClassBinder::FillAny(BoundClass& bound) {
  Members members;
  BoundMember attributes;
  attributes.form = BoundForm::AnyAttribute;
  attributes.minOccurs = 0;
  attributes.maxOccurs = -1;
  attributes.wildcard = "##any";
  attributes.xmlNamespace = bound.where->uri;
  members.attributes.push_back(attributes);
  BoundMember children = attributes;
  children.form = BoundForm::Wildcard;
  members.children.emplace_back(children, "AnyElement");
  BoundMember text;
  text.form = BoundForm::Text;
  text.simple = &GetMixedText();
  members.text.push_back(text);
  Finish(bound, members);
}

// --- Classes of complex types

void CClassBinder::FillType(BoundClass& bound, const ComplexType& type) {
  Members members;
  FillContent(bound, type, members);
  AddAttributes(bound, type, members);
  AddText(bound, type, members);
  Finish(bound, members);
}

// Whether a class derived from this one adds elements, so that a choice has to stay by itself.
bool CClassBinder::NeedsGroup(const ComplexType& type) {
  return std::any_of(type.derivedTypes.begin(), type.derivedTypes.end(),
                     [this](const ComplexType* derived) {
                       return (derived->method == DerivationMethod_Extension &&
                               m_contents.Build(derived->ownParticle) != nullptr) ||
                              NeedsGroup(*derived);
                     });
}

void CClassBinder::FillContent(BoundClass& bound, const ComplexType& type, Members& members) {
  const BoundClass* const base = bound.base;
  if (base != nullptr) {
    bound.groupType = base->groupType;
    bound.requiresContent = base->requiresContent;
    if (type.method == DerivationMethod_Restriction) {
      const auto own = CRestrictionBinder(*this, bound, type).LayContent();
      return AddChildren(bound, bound, own, members);
    }
  }
  const ContentPointer content =
      m_contents.Build(base != nullptr ? type.ownParticle : type.particle);
  if (content == nullptr) return;
  const bool isPlain = content->kind == ContentNode::Kind_Group && content->head == nullptr &&
                       !content->IsRepeated() && !content->children.empty();
  const bool isAlone = base == nullptr || !HasChildren(*base);
  const bool isOnce = isPlain && content->minOccurs == 1;
  if (isOnce && content->type == BoundGroupType::Sequence) {
    if (isAlone) bound.groupType = BoundGroupType::Sequence;
    return AddChildren(bound, bound, content->children, members);
  }
  if (isOnce && content->type == BoundGroupType::All && isAlone) {
    bound.groupType = BoundGroupType::All;
    return AddChildren(bound, bound, content->children, members);
  }
  if (isPlain && content->type == BoundGroupType::Choice && isAlone && !NeedsGroup(type)) {
    bound.groupType = BoundGroupType::Choice;
    bound.requiresContent = content->minOccurs > 0;
    return AddChildren(bound, bound, content->children, members);
  }
  AddChildren(bound, bound, {content}, members);
}

void CClassBinder::AddAttributes(BoundClass& bound, const ComplexType& type, Members& members) {
  std::vector<const AttributeUse*> own;
  if (bound.base != nullptr) {
    own = CRestrictionBinder(*this, bound, type).LayAttributes();
  } else {
    for (const AttributeUse& use : type.attributes) own.push_back(&use);
  }
  for (const AttributeUse* use : own) {
    if (use->use != UseKind_Prohibited) members.attributes.push_back(MakeAttribute(*use));
  }
  const bool isNew =
      bound.base == nullptr || FindMember(*bound.base, BoundForm::AnyAttribute) == nullptr;
  if (type.attributeWildcard == nullptr || !isNew) return;
  BoundMember any;
  any.form = BoundForm::AnyAttribute;
  any.minOccurs = 0;
  any.maxOccurs = -1;
  any.documentation = type.attributeWildcard->documentation;
  SetWildcard(*type.attributeWildcard, any);
  members.attributes.push_back(any);
}

void CClassBinder::AddText(BoundClass& bound, const ComplexType& type, Members& members) {
  if (bound.base != nullptr && FindMember(*bound.base, BoundForm::Text) != nullptr) {
    CRestrictionBinder(*this, bound, type).LayText();
    return;
  }
  const bool isSimple = type.content == ContentKind_Simple && type.simpleContent != nullptr;
  if (!isSimple && type.content != ContentKind_Mixed) return;
  BoundMember text;
  text.form = BoundForm::Text;
  text.simple = isSimple ? &m_simpleTypes.Bind(*type.simpleContent) : &GetMixedText();
  if (const ElementDecl* element = FindOwner(type)) SetValue(element->value, text);
  members.text.push_back(text);
}

void CClassBinder::CheckValue(const ElementDecl& element) {
  if (element.value.IsEmpty()) return;
  const ComplexType* const type = element.type->AsComplex();
  if (type != nullptr && FindOwner(*type) == &element && HasOwnText(*type)) return;
  Warn(element.location, "The default or fixed value of an element that is an object is not bound");
}

// --- Members

void CClassBinder::SetValue(const ValueConstraint& value, BoundMember& member) const {
  member.isFixed = value.fixedValue.has_value();
  member.defaultValue = member.isFixed ? value.fixedValue : value.defaultValue;
}

BoundMember CClassBinder::MakeAttribute(const AttributeUse& use) {
  BoundMember member;
  member.form = BoundForm::Attribute;
  member.xmlName = use.attribute->name.localName;
  member.xmlNamespace = use.attribute->name.namespaceUri;
  member.minOccurs = use.use == UseKind_Required ? 1 : 0;
  member.simple = &m_simpleTypes.Bind(*use.attribute->type);
  member.documentation = use.documentation;
  member.attribute = &use;
  SetValue(use.value, member);
  return member;
}

BoundMember CClassBinder::MakeElement(const ContentNode& node, BoundGroupType within,
                                      const BoundClass& user) {
  const ElementDecl& element = *node.element;
  BoundMember member;
  member.xmlName = element.name.localName;
  member.xmlNamespace = element.name.namespaceUri;
  member.documentation = GetDocumentation(node);
  member.element = &element;
  member.isNillable = element.isNillable;
  SetOccurrence(node, within, member);
  const bool isOnce = member.minOccurs > 0 && !member.IsCollection();
  if (element.type->IsSimple() && (!element.isNillable || isOnce)) {
    member.form = BoundForm::Value;
    member.simple = &m_simpleTypes.Bind(*element.type->AsSimple());
    member.isOwnTypeOnly = IsOwnTypeOnly(element);
    SetValue(element.value, member);
    return member;
  }
  CheckValue(element);
  if (element.type->IsSimple()) {
    const SimpleType& type = *element.type->AsSimple();
    const bool isOwnTypeOnly = IsOwnTypeOnly(element);
    const auto [made, isNew] = m_classes.GetNillable(type, user.where->uri, isOwnTypeOnly);
    if (isNew) FillSimple(*made, type, isOwnTypeOnly, nullptr);
    member.form = BoundForm::Object;
    member.objectClass = made;
  } else if (element.type->AsComplex()->IsAnyType()) {
    member.form = BoundForm::Untyped;
  } else {
    member.form = BoundForm::Object;
    BoundClass& bound = m_classes.Get(*element.type->AsComplex());
    bound.isNillable = bound.isNillable || element.isNillable;
    member.objectClass = &bound;
    member.isByType = IsByType(element);
    member.blocked = GetBlocked(element);
  }
  return member;
}

BoundMember CClassBinder::MakeWildcard(const ContentNode& node) const {
  BoundMember member;
  member.form = BoundForm::Wildcard;
  member.minOccurs = node.minOccurs;
  member.maxOccurs = node.maxOccurs;
  member.documentation = node.wildcard->documentation;
  SetWildcard(*node.wildcard, member);
  return member;
}

void CClassBinder::AddChildren(BoundClass& bound, BoundClass& outer,
                               const std::vector<ContentPointer>& children, Members& members) {
  for (const ContentPointer& child : children) {
    switch (child->kind) {
      case ContentNode::Kind_Element:
        members.children.emplace_back(MakeElement(*child, bound.groupType, bound),
                                      ToUpperCamel(child->element->name.localName));
        break;
      case ContentNode::Kind_Wildcard:
        members.children.emplace_back(MakeWildcard(*child), "AnyElement");
        break;
      case ContentNode::Kind_Group:
        AddGroup(bound, outer, *child, members);
        break;
    }
  }
}

void CClassBinder::AddGroup(BoundClass& bound, BoundClass& outer, const ContentNode& group,
                            Members& members) {
  const std::string stem = GetGroupStem(group);
  BoundClass* made = nullptr;
  if (group.definition == nullptr && group.head == nullptr) {
    made = &m_classes.AddNested(outer, stem);
    made->documentation = GetDocumentation(group);
    FillGroup(*made, outer, group);
    outer.nested.push_back(made);  // behind those that it needs
  } else {
    made = m_classes.FindShared(group);
    if (made == nullptr) {
      made = &m_classes.AddShared(group);
      FillGroup(*made, *made, group);
    }
  }
  BoundMember member;
  member.form = BoundForm::Group;
  member.objectClass = made;
  member.xmlName = made->elementName;
  member.documentation = GetDocumentation(group);
  member.requiresContent = !group.IsEmptiable();
  SetOccurrence(group, bound.groupType, member);
  members.children.emplace_back(std::move(member), stem);
}

void CClassBinder::FillGroup(BoundClass& bound, BoundClass& outer, const ContentNode& group) {
  bound.groupType = group.type;
  bound.requiresContent = !group.IsEmptiable();
  Members members;
  AddChildren(bound, outer, group.children, members);
  Finish(bound, members);
}

}  // namespace qzxml::generator
