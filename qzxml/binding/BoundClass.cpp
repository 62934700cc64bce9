#include "qzxml/binding/BoundClass.h"

#include <utility>

#include "qzxml/binding/BindingTables.h"
#include "qzxml/binding/BoundClassDetail.h"
#include "qzxml/binding/Messages.h"
#include "qzxml/binding/PlannedWriting.h"
#include "qzxml/binding/ReadPlan.h"
#include "qzxml/binding/SimpleElement.h"
#include "qzxml/collections/Element.h"
#include "qzxml/collections/XmlCollectionBase.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/xml/XmlElement.h"
#include "qzxml/xml/XmlWriter.h"

namespace QzXmlLib16 {

using namespace QzXmlLib16Data;

namespace {

constexpr char kWhitespace[] = " \t\r\n";

}  // namespace

// --- CClassBinding

const CMember& CClassBinding::GetMember(std::int32_t propertyIndex) const {
  for (const CClassBinding* binding = this; propertyIndex < binding->m_basePropertyCount;
       binding = binding->m_base) {
    for (const CRestrictedMember& restricted : binding->m_restricted) {
      if (restricted.propertyIndex == propertyIndex) return restricted.member;
    }
  }
  return GetDeclaredMember(propertyIndex);
}

const CMember& CClassBinding::GetDeclaredMember(std::int32_t propertyIndex) const {
  const CClassBinding* binding = this;
  while (propertyIndex < binding->m_basePropertyCount) binding = binding->m_base;
  return binding->m_own.begin()[propertyIndex - binding->m_basePropertyCount];
}

// --- CBoundClass

CBoundClass::CBoundClass(CClassBinding& binding) : m_binding(&binding) {
  m_isBound = true;
  SetElementName(binding.GetTraits().elementName);
}

CBoundClass::~CBoundClass() = default;

// The namespace that a root is written in.
std::string CBoundClass::GetTargetNamespace() const {
  return m_rootNamespace != nullptr ? m_rootNamespace : m_binding->GetTraits().namespaceUri;
}

std::string CBoundClass::GetNamespace() const { return m_binding->GetTraits().namespaceUri; }

void CBoundClass::BeRoot(const char* namespaceUri) {
  m_rootNamespace = namespaceUri;
  m_isRoot = true;
}

// --- Tables

const CBoundClass::CTables& CBoundClass::GetTables() const {
  CClassBinding& binding = *m_binding;
  return BuildOnce(binding.m_tables, [&binding](CTables& made) {
    detail::BuildTables(binding, made);
    delete binding.m_typedInfo;  // of an attempt that failed
    binding.m_typedInfo = detail::NewClassInfo(binding, true);
    delete std::exchange(binding.m_readPlan, nullptr);
    binding.m_readPlan = detail::CReadPlan::Make(binding, made).release();
    detail::CWritePlan::Build(binding, made);
  });
}

CBoundClass::CParentElementInfo* CBoundClass::GetClassInfo() const {
  const CTables& tables = GetTables();
  return m_writesType ? m_binding->m_typedInfo : tables.GetInfo();
}

// --- Values

void CBoundClass::CheckValue(std::int32_t index, const QzVariant& value) const {
  const CMember& member = m_binding->GetMember(index);
  member.type->Check(member.name, value);
  if (member.isFixed) detail::CheckFixed(member, value);
}

void CBoundClass::DefaultValue(std::int32_t index, QzVariant& value) const {
  const CMember& member = m_binding->GetMember(index);
  value.FromString(member.defaultValue, member.type->GetKind(), member.type->GetWhitespaceRule());
}

std::int32_t CBoundClass::EnumOrDefault(std::int32_t index,
                                        const std::optional<std::int32_t>& property) const {
  if (property) return *property;
  const CMember& member = m_binding->GetMember(index);
  return member.defaultValue == nullptr ? 0 : member.type->GetStringToEnum()(member.defaultValue);
}

void CBoundClass::SetEnum(std::int32_t index, std::optional<std::int32_t>& property,
                          std::optional<std::int32_t> value) {
  if (value) {
    QzVariant variant;
    variant.SetI4(*value);
    CheckValue(index, variant);
  }
  SelectMember(index, value.has_value());
  property = value;
}

void CBoundClass::ReadValue(const CMember& member, int index, QzVariant& value) {
  VisitValue(m_binding->GetDeclaredMember(index), [this, &value](auto kind, auto property) {
    AccessValue<decltype(kind)::value>(true, value, this->*property);
  });
  if (value.IsValid()) {
    // The class's own text passes as it stands.
    if (member.form == MemberForm::Text && member.type->IsEnumeration()) {
      value.SetString(member.type->GetEnumToString()(value.GetI4()));
    }
    detail::KeepEveryDigit(value);
    return;
  }
  if (member.form == MemberForm::Text && member.type->GetKind() == ItemType_string) {
    value.SetString(std::string());
  } else if (member.isNillable && member.occurs.min > 0) {
    value.SetString(std::string());
    value.SetNil();
  }
}

// Text that comes as such, the class's own, takes its kind first.
void CBoundClass::StoreValue(const CMember& member, int index, QzVariant& value) {
  const CSimpleTypeInfo& type = *member.type;
  if (member.form == MemberForm::Text) {
    std::string text = value.TakeString();
    if (m_binding->GetTraits().isMixed && text.find_first_not_of(kWhitespace) == text.npos) return;
    if (text.empty() && member.defaultValue != nullptr) text = member.defaultValue;
    if (type.IsEnumeration()) {
      value.SetI4(type.GetStringToEnum()(text.c_str()));
    } else {
      detail::RequireLexicalForm(type.GetKind(), text);
      value.FromString(text, type.GetKind(), type.GetWhitespaceRule());
    }
  }
  CheckValue(index, value);
  SelectMember(index, true);
  VisitValue(m_binding->GetDeclaredMember(index), [this, &value](auto kind, auto property) {
    AccessValue<decltype(kind)::value>(false, value, this->*property);
  });
}

// --- Objects and collections

const CObjectHandle& CBoundClass::GetObject(std::int32_t index,
                                            const CObjectHandle& property) const {
  const CMember& member = m_binding->GetMember(index);
  if (property == nullptr && member.occurs.min > 0 &&
      m_binding->GetTraits().group != XmlElementGroupType_Choice) {
    // Meant: what a mandatory member answers is there from the first question on.
    const_cast<CObjectHandle&>(property) = detail::NewMemberObject(member);
  }
  return property;
}

const CObjectHandle& CBoundClass::EnsureObject(std::int32_t index, CObjectHandle& property) {
  if (property != nullptr) return property;
  const CMember& member = m_binding->GetMember(index);
  const CObjectHandle made = detail::NewMemberObject(member);
  if (made == nullptr) {
    throw CQzInvalidStateException(FormatString(detail::kAbstractProperty, member.name));
  }
  SelectMember(index, true);
  property = made;
  return property;
}

void CBoundClass::SetObject(std::int32_t index, CObjectHandle& property, CXmlObjectBase* value) {
  const CObjectHandle held(value);
  const CMember& member = m_binding->GetMember(index);
  const bool isChoice = m_binding->GetTraits().group == XmlElementGroupType_Choice;
  if (member.occurs.min > 0 && !isChoice) Throw_IfPropertyIsNull(value, member.name);
  SelectMember(index, value != nullptr);
  if (value != nullptr) TakeAsMember(member, value);
  property = held;
}

// An object takes the tag of the member, and says which class it is where that is not the declared
// one. Open content keeps its own name.
void CBoundClass::TakeAsMember(const CMember& member, CXmlObjectBase* object) {
  if (member.form != MemberForm::Object) return;
  SetElementName(object, member.name);
  if (object->m_isBound) static_cast<CBoundClass*>(object)->TakeTypeFrom(member);
}

void CBoundClass::TakeTypeFrom(const CMember& member) {
  m_writesType = m_binding->GetTraits().newObject != member.newObject;
  m_isRoot = false;
}

CXmlCollectionBase& CBoundClass::GetCollection(std::int32_t index,
                                               const CCollectionHandle& property) const {
  if (property == nullptr) {
    // Meant: a collection is there from the first question on.
    CCollectionHandle& own = const_cast<CCollectionHandle&>(property);
    own = CCollectionHandle(m_binding->GetMember(index).newCollection(m_binding->GetMember(index)));
    if (m_binding->GetTraits().group == XmlElementGroupType_Choice) {
      own->AddEventListener(const_cast<CBoundClass*>(this));
    }
  }
  return *property;
}

// --- Choices

// A collection is selected when it says that it is to get its first item, which may come to
// nothing.
std::int32_t CBoundClass::GetSelectedMember() const {
  if (m_selected == -1) return -1;
  const CMember& member = m_binding->GetDeclaredMember(m_selected);
  if (!member.IsCollection()) return m_selected;
  const CCollectionHandle& collection = this->*member.property.m_collection;
  return collection == nullptr || collection->GetCount() == 0 ? -1 : m_selected;
}

void CBoundClass::SelectMember(std::int32_t index, bool hasValue) {
  if (m_binding->GetTraits().group != XmlElementGroupType_Choice) return;
  if (!m_binding->GetMember(index).IsElement()) return;
  if (m_selected == index) {
    if (!hasValue) m_selected = -1;
    return;
  }
  if (!hasValue) return;
  if (GetSelectedMember() != -1) {
    std::string selected = m_binding->GetMember(m_selected).name;
    // Another name than any member's, as two members may have one name.
    Choice_CollectionChanged("", 1, selected);
  }
  m_selected = index;
}

void CBoundClass::OnEvent(CXmlObjectBase* sender, MsgType type, void*) {
  if (type != MsgType_CollectionAdd && type != MsgType_CollectionRemoveComplete) return;
  for (std::int32_t i = 0; i < m_binding->GetMemberCount(); ++i) {
    const CMember& member = m_binding->GetDeclaredMember(i);
    if (!member.IsCollection()) continue;
    CXmlCollectionBase* const collection = this->*member.property.m_collection;
    if (collection == nullptr || collection->GetBase() != sender) continue;
    SelectMember(i, type == MsgType_CollectionAdd || collection->GetCount() > 0);
    return;
  }
}

bool CBoundClass::MissesContent() const {
  const CClassTraits& traits = m_binding->GetTraits();
  return traits.requiresContent && traits.group == XmlElementGroupType_Choice &&
         GetSelectedMember() == -1;
}

// --- The walks

void CBoundClass::AccessProperty(int index, bool read, QzVariant& value) const {
  CBoundClass& self = const_cast<CBoundClass&>(*this);
  const CMember& member = m_binding->GetMember(index);
  if (member.IsCollection()) {
    const CProperty& property = m_binding->GetDeclaredMember(index).property;
    if (read) value.SetXmlCollection(&GetCollection(index, this->*property.m_collection));
  } else if (!member.IsValue()) {
    self.AccessObjectMember(member, index, read, value);
  } else if (read) {
    self.ReadValue(member, index, value);
  } else {
    self.StoreValue(member, index, value);
  }
}

void CBoundClass::AccessObjectMember(const CMember& member, int index, bool read,
                                     QzVariant& value) {
  CObjectHandle& property = this->*m_binding->GetDeclaredMember(index).property.m_object;
  if (read) {
    value.SetXmlObject(GetObject(index, property));
    return;
  }
  const CObjectHandle object = value.GetXmlObject();
  SelectMember(index, object != nullptr);
  if (object != nullptr) TakeAsMember(member, object);
  property = object;
}

void CBoundClass::Init() {
  m_selected = -1;
  if (m_binding->GetTraits().isNillable) dynamic_cast<INillable&>(*this).SetIsNil(false);
  GetTables();
  if (m_binding->m_readPlan != nullptr) {
    m_binding->m_readPlan->Reset(*this);
  } else {
    ResetMembers();
  }
  m_selected = -1;  // what the collections told of their end
}

void CBoundClass::ResetMembers() {
  for (const CClassBinding* binding = m_binding; binding != nullptr; binding = binding->m_base) {
    for (const CMember& member : binding->m_own) {
      if (member.IsCollection()) {
        const CCollectionHandle& collection = this->*member.property.m_collection;
        if (collection != nullptr && collection->GetCount() > 0) collection->Clear();
      } else if (member.IsValue()) {
        VisitValue(member, [this](auto, auto property) { (this->*property).reset(); });
      } else {
        this->*member.property.m_object = nullptr;
      }
    }
  }
}

void CBoundClass::ToXml_Int(CXmlWriter* writer, bool root, const char* namespaceUri,
                            const CSerializationContext& context, bool optionalChoice) const {
  if (MissesContent() && !context.GetIgnoreMissingChoice() && !IsNilObject()) {
    detail::ThrowNothingSelected(ElementName());
  }
  CTabledClass::ToXml_Int(writer, root, namespaceUri, context, optionalChoice);
}

void CBoundClass::ContentToXml(const CParentElementInfo& info, CXmlWriter* writer,
                               const CSerializationContext& context, bool optionalChoice) const {
  CXmlTextWriter* const text = writer->GetPlainTextWriter();
  detail::CShortWays* const ways = writer->GetShortWays();
  const detail::CWritePlan* const plan = detail::CWritePlan::For(*this);
  if (plan != nullptr && text != nullptr && detail::XmlTextRun::IsPossible(*text)) {
    detail::CPlannedWriting<detail::CXmlSink> writing(context, *text);
    writing.Content(*plan, *this, optionalChoice);
  } else if (plan != nullptr && ways != nullptr) {
    detail::CPlannedWriting<detail::CFastInfosetSink> writing(context, *writer, *ways);
    writing.Content(*plan, *this, optionalChoice);
  } else {
    CTabledClass::ContentToXml(info, writer, context, optionalChoice);
  }
}

CXmlElement* CBoundClass::FromXml_Int(CXmlElement* parent, CXmlElement* cursor,
                                      const CSerializationContext& context, bool optionalChoice) {
  const CTables& tables = GetTables();
  const bool hasTag = m_binding->GetTraits().elementType == XmlElementType_Element;
  if (hasTag) RequireSuitableElement(context, *parent);
  const detail::CReadPlan* const plan = m_binding->m_readPlan;
  const bool isServed = plan != nullptr && detail::CReadPlan::Serves(context);
  CXmlElement* const rest =
      isServed ? plan->Read(*this, parent, cursor, context, optionalChoice)
               : CTabledClass::FromXml_Int(parent, cursor, context, optionalChoice);
  if (!hasTag) return rest;
  const bool isNil = IsNilObject();
  if (MissesContent() && !context.GetIgnoreMissingChoice() && !isNil) {
    detail::ThrowNothingPopulated(*parent);
  }
  if (context.GetIgnoreUnknownElements()) return rest;
  const bool hasText = tables.GetInfo()->GetPrimitiveValuePropertyIndex() != -1;
  if (isNil) detail::RequireNoChild(*parent);
  if (isNil || !hasText) detail::RequireNoText(*parent);
  return rest;
}

// Ahead of anything that changes the object.
void CBoundClass::RequireSuitableElement(const CSerializationContext& context,
                                         const CXmlElement& element) const {
  if (m_isRoot && element.GetParentElm() == nullptr) RequireRoot(context, element);
  if (context.GetIgnoreUnknownAttributes()) return;
  for (const CXmlAttribute* const attribute : element.GetAttributeRange()) {
    if (!attribute->IsNamespaceAttribute()) continue;  // xsi:type is one of these
    detail::RequireOwnType(*m_binding, element);
    return;
  }
}

// Under another name the document is none of this object's; IgnoreNamespaces lets another namespace
// pass.
void CBoundClass::RequireRoot(const CSerializationContext& context,
                              const CXmlElement& element) const {
  const bool hasNamespace =
      context.GetIgnoreNamespaces() || element.GetNamespaceURI() == GetTargetNamespace();
  if (hasNamespace && element.GetLocalName() == ElementName()) return;
  const auto full = [](const std::string& uri, const std::string& name) {
    return uri.empty() ? name : "{" + uri + "}" + name;
  };
  throw CQzValidationException(
      FormatString(detail::kOtherRoot,
                   full(element.GetNamespaceURI(), element.GetLocalName()).c_str(),
                   full(GetTargetNamespace(), ElementName()).c_str()),
      element.GetXPath());
}

bool CBoundClass::IsNilObject() const {
  if (!m_binding->GetTraits().isNillable) return false;
  return dynamic_cast<INillable&>(const_cast<CBoundClass&>(*this)).GetIsNil();
}

}  // namespace QzXmlLib16
