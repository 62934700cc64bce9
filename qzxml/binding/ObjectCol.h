#pragma once

#include "qzxml/binding/ItemCopying.h"
#include "qzxml/binding/Member.h"
#include "qzxml/collections/Element.h"
#include "qzxml/collections/ElementCol.h"
#include "qzxml/collections/XmlCollection.h"
#include "qzxml/platform/Export.h"
#include "qzxml/runtime/QzIterator.h"
#include "qzxml/runtime/SmartPtr.h"

namespace QzXmlLib16 {

namespace detail {
class CEarlyItems;
}

// The objects of a member that may stand more than once: elements of a class, or the items of a
// repeated model group, which have no tag. Classes use CObjectCol over it.
class QZXML_API CBoundObjectCol : public CXmlCollection, public detail::IItemCopying {
 public:
  ~CBoundObjectCol() override;

  int size() const { return GetCount(); }
  bool empty() const { return GetCount() == 0; }

 protected:
  // The member is a constant of generated code; it is kept.
  explicit CBoundObjectCol(const CMember& member);

  // Throws CQzInvalidStateException "The Property [%s] has an abstract type, set an object".
  CObjectHandle AddNewObject();
  // The object takes the tag of the member. Null: asserts "item != 0".
  void AddObject(CXmlObjectBase* object);
  void AddObjectAt(int index, CXmlObjectBase* object);

  void ToXml_Int(CXmlWriter* writer, bool root, const char* namespaceUri,
                 const CSerializationContext& context, bool optionalChoice) const final;
  CXmlElement* FromXml_Int(CXmlElement* parent, CXmlElement* cursor,
                           const CSerializationContext& context, bool optionalChoice) override;

 private:
  friend class detail::CEarlyItems;
  template <typename Sink>
  friend class detail::CPlannedWriting;

  static CObjectHandle ReadItem(const CMember& member, CXmlElement* parent, CXmlElement* element,
                                const CSerializationContext& context);
  void AppendRead(CXmlObjectBase* item);
  void CopyItems(const CXmlCollectionBase& from) override;
  CXmlElement* GroupsFromXml(CXmlElement* parent, CXmlElement* cursor,
                             const CSerializationContext& context);

  const CMember& m_member;
};

// The objects of one class.
//
//   for (const CSmartPtr<CItem>& item : order.GetItems()) total += item->GetPrice();
//   order.GetItems().Add()->SetQuantity(2);
template <typename Object>
class CObjectCol : public CBoundObjectCol {
 public:
  explicit CObjectCol(const CMember& member) : CBoundObjectCol(member) {}

  // Appends a new item. Throws CQzInvalidStateException "The Property [%s] has an abstract type,
  // set an object" for the items of an abstract class.
  CSmartPtr<Object> Add() { return Cast(AddNewObject()); }
  // Appends the item, which takes the element name of the collection.
  CSmartPtr<Object> Add(Object* item) {
    const CSmartPtr<Object> held(item);
    AddObject(item);
    return held;
  }
  // Throws CQzInvalidParamException "Index out of range".
  void AddAt(int index, Object* item) { AddObjectAt(index, item); }

  // Throws CQzInvalidParamException "Index %d is out of range, use 0 - %d". Walks to the item.
  CSmartPtr<Object> Item(int index) const { return Cast(GetNodeAtIndex(index)->item); }
  CSmartPtr<Object> operator[](int index) const { return Item(index); }

  CQzIterator<Object> begin() const { return CQzIterator<Object>(GetFirstNode()); }
  CQzIterator<Object> end() const { return CQzIterator<Object>(nullptr); }

 private:
  static CSmartPtr<Object> Cast(const CObjectHandle& item) {
    CXmlObjectBase* const base = item;
    return CSmartPtr<Object>(static_cast<Object*>(base));
  }
};

template <typename Object>
CXmlCollectionBase* NewObjectCol(const CMember& member) {
  return new CObjectCol<Object>(member);
}

// The elements that a wildcard takes: those whose namespace it names, up to its maximum, as a
// schema means it. Elements that are added are not tested.
// Source: XML Schema 1.0 part 1, section 3.10.4.
class QZXML_API CWildcardCol : public CElementCol {
 public:
  // The member is a constant of generated code; it is kept.
  explicit CWildcardCol(const CMember& member);
  ~CWildcardCol() override;

  int size() const { return GetCount(); }
  bool empty() const { return GetCount() == 0; }
  CSmartPtr<CElement> operator[](int index) const { return Item(index); }

 protected:
  CXmlElement* FromXml_Int(CXmlElement* parent, CXmlElement* cursor,
                           const CSerializationContext& context, bool optionalChoice) override;

 private:
  const CMember& m_member;
};

}  // namespace QzXmlLib16
