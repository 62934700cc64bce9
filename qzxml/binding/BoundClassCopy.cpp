#include "qzxml/binding/BoundClass.h"
#include "qzxml/binding/BoundClassDetail.h"
#include "qzxml/binding/ItemCopying.h"
#include "qzxml/collections/Attribute.h"
#include "qzxml/collections/AttributeCol.h"
#include "qzxml/collections/Element.h"
#include "qzxml/collections/ElementCol.h"

// Copies of objects with all that is below them.
namespace QzXmlLib16 {
namespace detail {

CObjectHandle CopyOfObject(const CXmlObjectBase& object) {
  if (const CBoundClass* const bound = dynamic_cast<const CBoundClass*>(&object)) {
    return bound->NewCopy();
  }
  const CSmartPtr<CElement> copy = dynamic_cast<const CElement&>(object).Clone();
  return CObjectHandle(static_cast<CElement*>(copy));
}

}  // namespace detail

namespace {

void CopyCollection(const CXmlCollectionBase& from, CXmlCollectionBase& to) {
  if (detail::IItemCopying* const items = dynamic_cast<detail::IItemCopying*>(&to)) {
    items->CopyItems(from);
  } else if (const auto* const attributes = dynamic_cast<const CAttributeCol*>(&from)) {
    for (const CSmartPtr<CAttribute>& attribute : *attributes) {
      dynamic_cast<CAttributeCol&>(to).Add(attribute->Clone());
    }
  } else {
    for (const CSmartPtr<CElement>& element : dynamic_cast<const CElementCol&>(from)) {
      dynamic_cast<CElementCol&>(to).Add(element->Clone());
    }
  }
}

}  // namespace

CObjectHandle CBoundClass::NewCopy() const {
  const CObjectHandle made = m_binding->GetTraits().newObject(0, ElementName().c_str());
  CBoundClass& copy = dynamic_cast<CBoundClass&>(*made);
  copy.m_writesType = m_writesType;
  copy.m_rootNamespace = m_rootNamespace;
  copy.m_isRoot = m_isRoot;
  for (int i = 0; i < m_binding->GetMemberCount(); ++i) {
    const CMember& declared = m_binding->GetDeclaredMember(i);
    if (declared.IsCollection()) {
      const CCollectionHandle& collection = this->*declared.property.m_collection;
      if (collection == nullptr || collection->GetCount() == 0) continue;
      CopyCollection(*collection, copy.GetCollection(i, copy.*declared.property.m_collection));
    } else if (declared.IsValue()) {
      VisitValue(declared,
                 [this, &copy](auto, auto property) { copy.*property = this->*property; });
    } else if (const CObjectHandle& object = this->*declared.property.m_object) {
      copy.*declared.property.m_object = detail::CopyOfObject(*object);
    }
  }
  copy.m_selected = m_selected;
  if (IsNilObject()) dynamic_cast<INillable&>(copy).SetIsNil(true);
  return made;
}

}  // namespace QzXmlLib16
