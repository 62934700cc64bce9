#pragma once

#include "qzxml/collections/XmlCollection.h"
#include "qzxml/runtime/QzIterator.h"
#include "qzxml/runtime/SmartPtr.h"
#include "qzxml/xml/XmlElement.h"

namespace QzXmlLib16 {

// The objects of one generated class that stand in a row under one element name: what a class
// element with more than one occurrence becomes. Items are counted objects; the collection holds
// one reference on each.
//
//   for (const CSmartPtr<CItem>& item : order.GetItems()) total += item->GetPrice();
template <typename Object>
class CXmlObjectCol : public CXmlCollection {
 public:
  // Makes an empty item that is written under the given name.
  using Factory = CSmartPtr<CXmlObjectBase> (*)(int classId, const char* elementName);

  CXmlObjectCol(const char* elementName, const char* elementNamespace, int minOccurs, int maxOccurs,
                Factory factory, int classId)
      : CXmlCollection(elementName, elementNamespace, minOccurs, maxOccurs),
        m_factory(factory),
        m_classId(classId) {}

  // Appends a new item, or the given one, which takes the element name of the collection.
  CSmartPtr<Object> Add() {
    const CSmartPtr<CXmlObjectBase> item = m_factory(m_classId, ElementName().c_str());
    AppendItem(item);
    return Cast(item);
  }
  CSmartPtr<Object> Add(Object* item) {
    const CHeldItem held(item);
    TakeName(item);
    AppendItem(item);
    return CSmartPtr<Object>(item);
  }

  // Throws CQzInvalidParamException "Index out of range".
  void AddAt(int index, Object* item) {
    TakeName(item);
    AddItemAt(index, item);
  }

  // Throws CQzInvalidParamException "Index %d is out of range, use 0 - %d".
  CSmartPtr<Object> Item(int index) const { return Cast(GetNodeAtIndex(index)->item); }

  CQzIterator<Object> begin() const { return CQzIterator<Object>(GetFirstNode()); }
  CQzIterator<Object> end() const { return CQzIterator<Object>(nullptr); }

 protected:
  void ToXml_Int(CXmlWriter* writer, bool, const char* elementNamespace,
                 const CSerializationContext& context, bool) const override {
    ValidateCount(context);
    for (const CNode* node = GetFirstNode(); node != nullptr; node = node->next) {
      CXmlObjectBase::ToXml_Int(node->item, writer, false, elementNamespace, context, false);
    }
  }

  CXmlElement* FromXml_Int(CXmlElement*, CXmlElement* element, const CSerializationContext& context,
                           bool) override {
    const std::string& name = ElementName();
    const std::string itemNamespace = GetNamespace();
    while (element != nullptr &&
           DoesElementNameMatch(context, element, name.c_str(), itemNamespace.c_str())) {
      const CSmartPtr<CXmlObjectBase> item = m_factory(m_classId, name.c_str());
      CXmlObjectBase::FromXml_Int(item, element, element->GetFirstElement(), context);
      AppendItem(item);
      element = element->GetNextSiblingElement();
    }
    return element;
  }

 private:
  void TakeName(Object* item) {
    if (item != nullptr) SetElementName(item, ElementName().c_str());
  }
  static CSmartPtr<Object> Cast(const CSmartPtr<CXmlObjectBase>& item) {
    CXmlObjectBase* base = item;
    return CSmartPtr<Object>(static_cast<Object*>(base));
  }

  Factory m_factory;
  int m_classId;
};

}  // namespace QzXmlLib16
