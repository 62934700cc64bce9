#include "qzxml/binding/ObjectCol.h"

#include <string_view>

#include "qzxml/binding/BindingTables.h"
#include "qzxml/binding/BoundClass.h"
#include "qzxml/binding/EarlyItems.h"
#include "qzxml/binding/Messages.h"
#include "qzxml/collections/AttributeCol.h"
#include "qzxml/collections/ElementReader.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/NamespaceRules.h"
#include "qzxml/xml/XmlElement.h"

namespace QzXmlLib16 {

// --- CBoundObjectCol

CBoundObjectCol::CBoundObjectCol(const CMember& member)
    : CXmlCollection(member.name, member.namespaceUri, member.occurs.min, member.occurs.max),
      m_member(member) {}

CBoundObjectCol::~CBoundObjectCol() = default;

CObjectHandle CBoundObjectCol::AddNewObject() {
  const CObjectHandle item = detail::NewMemberObject(m_member);
  if (item == nullptr) {
    throw CQzInvalidStateException(FormatString(detail::kAbstractProperty, m_member.name));
  }
  AppendItem(item);
  return item;
}

void CBoundObjectCol::AddObject(CXmlObjectBase* object) {
  const CHeldItem held(object);
  if (object != nullptr) CBoundClass::TakeAsMember(m_member, object);
  AppendItem(object);
}

void CBoundObjectCol::AddObjectAt(int index, CXmlObjectBase* object) {
  const CHeldItem held(object);
  if (object != nullptr) CBoundClass::TakeAsMember(m_member, object);
  AddItemAt(index, object);
}

void CBoundObjectCol::ToXml_Int(CXmlWriter* writer, bool, const char* namespaceUri,
                                const CSerializationContext& context, bool) const {
  ValidateCount(context);
  for (const CNode* node = GetFirstNode(); node != nullptr; node = node->next) {
    CXmlObjectBase::ToXml_Int(node->item, writer, false, namespaceUri, context, false);
  }
}

CXmlElement* CBoundObjectCol::FromXml_Int(CXmlElement* parent, CXmlElement* cursor,
                                          const CSerializationContext& context, bool) {
  if (m_member.form == MemberForm::Group) return GroupsFromXml(parent, cursor, context);
  const std::string_view name = m_member.name;
  const std::string_view namespaceUri = m_member.namespaceUri;
  detail::CEarlyItems* const early = detail::CEarlyItems::Of(*parent);
  while (detail::ElementHasName(context, cursor, name, namespaceUri)) {
    if (early != nullptr && early->HasRun(*cursor, m_member)) {
      for (const CObjectHandle& item : early->TakeRun()) AppendRead(item);
    } else {
      AppendRead(ReadItem(m_member, parent, cursor, context));
    }
    cursor = cursor->GetNextSiblingElement();
  }
  return cursor;
}

CObjectHandle CBoundObjectCol::ReadItem(const CMember& member, CXmlElement* parent,
                                        CXmlElement* element,
                                        const CSerializationContext& context) {
  CObjectHandle item = member.newObjectByType == nullptr ? member.newObject(0, member.name)
                                                         : member.newObjectByType(element);
  if (item == nullptr) detail::ThrowNoSuitableType(member, *parent);
  CXmlObjectBase::FromXml_Int(item, element, element->GetFirstElement(), context);
  return item;
}

void CBoundObjectCol::AppendRead(CXmlObjectBase* item) {
  CBoundClass::TakeAsMember(m_member, item);
  AppendItem(item);
}

// Each item takes what it can; the first one that takes nothing is not there.
CXmlElement* CBoundObjectCol::GroupsFromXml(CXmlElement* parent, CXmlElement* cursor,
                                            const CSerializationContext& context) {
  while (cursor != nullptr && (GetMaxOccurs() == -1 || GetCount() < GetMaxOccurs())) {
    const CObjectHandle item = m_member.newObject(0, m_member.name);
    CXmlElement* const rest = CXmlObjectBase::FromXml_Int(item, parent, cursor, context);
    if (rest == cursor) break;
    AppendItem(item);
    cursor = rest;
  }
  return cursor;
}

void CBoundObjectCol::CopyItems(const CXmlCollectionBase& from) {
  const CNode* node = dynamic_cast<const CBoundObjectCol&>(from).GetFirstNode();
  for (; node != nullptr; node = node->next) AppendItem(detail::CopyOfObject(*node->item));
}

// --- CWildcardCol

CWildcardCol::CWildcardCol(const CMember& member)
    : CElementCol("", "##any", member.namespaceUri, member.occurs.min, member.occurs.max),
      m_member(member) {}

CWildcardCol::~CWildcardCol() = default;

CXmlElement* CWildcardCol::FromXml_Int(CXmlElement* parent, CXmlElement* cursor,
                                       const CSerializationContext& context, bool) {
  while (cursor != nullptr && (GetMaxOccurs() == -1 || GetCount() < GetMaxOccurs()) &&
         detail::WildcardTakes(m_member, cursor->GetNamespaceURI())) {
    const CSmartPtr<CElement> item(new CElement(cursor->GetLocalName().c_str()));
    CXmlObjectBase::FromXml_Int(item, parent, cursor, context);
    AppendItem(item);
    cursor = cursor->GetNextSiblingElement();
  }
  return cursor;
}

// --- Factories

CXmlCollectionBase* NewAttributeCol(const CMember& member) {
  return new CAttributeCol("", "##any", member.namespaceUri);
}

CXmlCollectionBase* NewElementCol(const CMember& member) {
  return new CElementCol(member.namespaceUri, "##any", member.namespaceUri, member.occurs.min,
                         member.occurs.max);
}

CXmlCollectionBase* NewWildcardCol(const CMember& member) { return new CWildcardCol(member); }

}  // namespace QzXmlLib16
