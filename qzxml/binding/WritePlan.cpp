#include "qzxml/binding/WritePlan.h"

#include <memory>

#include "qzxml/binding/BoundClass.h"
#include "qzxml/binding/ObjectCol.h"

namespace QzXmlLib16::detail {

using namespace QzXmlLib16Data;

// --- Members

namespace {

// The class of the objects that a member declares; null for one that is abstract or no bound class.
const std::type_info* GetDeclaredClass(const CMember& member) {
  if (member.newObject == nullptr) return nullptr;
  const CObjectHandle sample = member.newObject(0, member.name);
  const CXmlObjectBase* const object = sample;
  const CBoundClass* const bound = dynamic_cast<const CBoundClass*>(object);
  return bound == nullptr ? nullptr : &typeid(*bound);
}

bool HoldsBoundObjects(const CMember& member) {
  const CCollectionHandle sample(member.newCollection(member));
  const CXmlCollectionBase* const collection = sample;
  return dynamic_cast<const CBoundObjectCol*>(collection) != nullptr;
}

CWritePlan::Way WayOf(const CPlannedValue& value) {
  using Way = CWritePlan::Way;
  if (!value.IsPlanned()) return Way::Walk;
  if (value.IsString()) return Way::Text;
  if (value.IsDate()) return Way::Date;
  if (!value.IsScalar()) return Way::Value;
  switch (value.GetWrittenKind()) {
    case ItemType_i4:
      return Way::Int;
    case ItemType_r8:
      return Way::Real;
    default:
      return Way::Value;
  }
}

// That of attributes; as plans, never freed.
const std::string& NoUri() {
  static const auto* const none = new std::string();
  return *none;
}

}  // namespace

CWritePlan::CChild::CChild(const CMember& member, const CElementInfo* childEntry)
    : hasDefault(member.defaultValue != nullptr),
      entry(childEntry),
      name(member.name, member.namespaceUri),
      octetsName(name.GetTags().GetId(), member.name, name.GetUri()) {}

CWritePlan::CAttribute::CAttribute(const CMember& member, const CAttributeInfo* attributeEntry)
    : isOptional(member.occurs.min == 0),
      hasDefault(member.defaultValue != nullptr),
      entry(attributeEntry),
      tag(member.name),
      octetsName(tag.GetId(), member.name, NoUri()) {}

void CWritePlan::AddChild(const CMember& member, const CMember& declared,
                          const CElementInfo* entry) {
  CChild& child = m_children.emplace_back(member, entry);
  const bool isObject = member.form == MemberForm::Object;
  child.property = declared.property;
  child.isNeeded = member.occurs.min > 0 && !m_isChoice;
  if (isObject) child.itemClass = GetDeclaredClass(member);
  if (member.IsCollection()) {
    const bool isPlanned = isObject && child.itemClass != nullptr && HoldsBoundObjects(member);
    child.way = isPlanned ? Way::Collection : Way::WalkCollection;
  } else if (member.form == MemberForm::Value) {
    child.value = CPlannedValue(member, declared);
    child.way = WayOf(child.value);
    // An absent value may stand for nil.
    child.isNeeded = child.isNeeded || (member.isNillable && member.occurs.min > 0);
  } else {
    child.way = child.itemClass != nullptr ? Way::Object : Way::WalkObject;
    child.optionalChoice = m_isChoice && member.newObjectByType == nullptr;
    // The attributes of a group belong to the class around it.
    if (member.form == MemberForm::Group) m_hasTag = false;
  }
}

void CWritePlan::AddAttribute(const CMember& member, const CMember& declared,
                              const CAttributeInfo* entry) {
  CAttribute& attribute = m_attributes.emplace_back(member, entry);
  attribute.property = declared.property;
  if (member.IsCollection()) {
    attribute.way = Way::WalkCollection;
  } else if (*member.namespaceUri == '\0') {
    attribute.value = CPlannedValue(member, declared);
    attribute.way = WayOf(attribute.value);
  }
}

// --- Plans

// The members are visited as BuildTables visits them, so that entries and members go together.
CWritePlan::CWritePlan(const CClassBinding& binding, const CTabledClass::CTables& tables)
    : m_hasTag(binding.GetTraits().elementType == XmlElementType_Element),
      m_isChoice(binding.GetTraits().group == XmlElementGroupType_Choice),
      m_isNillable(binding.GetTraits().isNillable),
      m_requiresContent(binding.GetTraits().requiresContent) {
  if (binding.GetTraits().newObject != nullptr) {
    const CObjectHandle sample = binding.GetTraits().newObject(0, nullptr);
    const CXmlObjectBase* const object = sample;
    if (object != nullptr) m_class = &typeid(*object);
  }
  CElementInfo* const* element = tables.GetElements();
  CAttributeInfo* const* attribute = tables.GetAttributes();
  int wildcard = -1;
  for (int i = 0; i < binding.GetMemberCount(); ++i) {
    const CMember& member = binding.GetMember(i);
    if (member.occurs.max == 0) continue;
    const CMember& declared = binding.GetDeclaredMember(i);
    if (member.form == MemberForm::AnyAttribute) {
      wildcard = i;
    } else if (member.form == MemberForm::Attribute) {
      AddAttribute(member, declared, *attribute++);
    } else if (member.form == MemberForm::Text) {
      m_text = CPlannedValue(member, declared);
      m_hasText = true;
    } else {
      AddChild(member, declared, *element++);
    }
  }
  if (wildcard != -1) {
    AddAttribute(binding.GetMember(wildcard), binding.GetDeclaredMember(wildcard), *attribute);
  }
}

void CWritePlan::Build(CClassBinding& binding, const CTabledClass::CTables& tables) {
  const std::unique_ptr<const CWritePlan> before(binding.m_writePlan.exchange(nullptr));
  binding.m_writePlan.store(new CWritePlan(binding, tables), std::memory_order_release);
}

[[gnu::noinline]] const CWritePlan* CWritePlan::Make(const CBoundClass& object) {
  object.CBoundClass::GetTables();
  return object.m_binding->m_writePlan.load(std::memory_order_acquire);
}

}  // namespace QzXmlLib16::detail
