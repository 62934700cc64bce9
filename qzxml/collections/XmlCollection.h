#pragma once

#include <cstddef>
#include <cstdint>

#include "qzxml/collections/XmlCollectionBase.h"
#include "qzxml/platform/Export.h"
#include "qzxml/runtime/ObjectMemory.h"
#include "qzxml/runtime/QzIterator.h"
#include "qzxml/runtime/SmartPtr.h"

namespace QzXmlLib16 {

// One place in the list of a collection; it holds one reference on its item.
struct CXmlCollectionNode {
  CSmartPtr<CXmlObjectBase> item;
  CXmlCollectionNode* next;  // toward the tail
  CXmlCollectionNode* prev;  // toward the head

  // A node lies beside its item when both come from a document.
  static void* operator new(std::size_t size) { return detail::TakeObjectMemory(size); }
  static void operator delete(void* node) noexcept { detail::GiveObjectMemory(node); }
};

// A collection of objects, as a doubly linked list. Appending and iterating cost the same for each
// item; an index is found by walking. The class itself hides the typed operations: a collection of
// one class offers Add, Item, begin and end over what stands here.
//
//   CSmartPtr<CItem> CItemCol::Add() {
//     CSmartPtr<CItem> item(new CItem("item"));
//     AppendItem(item);
//     return item;
//   }
//   CQzIterator<CItem> CItemCol::begin() const { return CQzIterator<CItem>(GetFirstNode()); }
//
// Events go out as told for CXmlCollectionBase; a removal does not tell which index has gone, so
// that its data is a null pointer. An exception of a listener before the change leaves the
// collection as it was. Listeners may change the collection too.
class QZXML_API CXmlCollection : public CXmlCollectionBase {
 public:
  using CNode = CXmlCollectionNode;

  ~CXmlCollection() override;  // as Clear; an exception of a listener goes nowhere

  int GetCount() const override { return m_lCount; }
  void Clear() override;
  // Throws CQzInvalidParamException "Index %d is out of range, use 0 - %d" with index and count
  // (the count itself, not the last index), before any event.
  void Remove(int index) override;

 protected:
  CXmlCollection() = default;
  CXmlCollection(const char* elementName, const char* namespaceUri, int minOccurs, int maxOccurs);
  CXmlCollection(detail::CSharedText namespaceUri, int minOccurs, int maxOccurs);

  // The attributes of each item, on the start tag that is open.
  void AttributesToXml_Int(CXmlWriter* writer, const CSerializationContext& context) const override;

  // --- Insertion. The item must not be null (asserted as "item != 0"); nothing is inserted then.

  void AppendItem(CXmlObjectBase* item);
  void PrependItem(CXmlObjectBase* item);
  // Behind no item (null) means at the start, in front of no item at the end. Throws
  // CQzInvalidParamException "The object was not found in the collection", when the add event has
  // gone out already.
  void AddAfterItem(const CXmlObjectBase* existing, CXmlObjectBase* item);
  void AddBeforeItem(const CXmlObjectBase* existing, CXmlObjectBase* item);
  // Throws CQzInvalidParamException "Index out of range", before any event.
  void AddItemAt(int index, CXmlObjectBase* item);

  // One reference on an item while it is being inserted, whatever listeners do to their handles on
  // it. An insertion that fails gives the reference back without deleting the item: one that nobody
  // held belongs to the caller still.
  class QZXML_API CHeldItem {
   public:
    explicit CHeldItem(CXmlObjectBase* item);  // may be null
    ~CHeldItem();
    CHeldItem(const CHeldItem&) = delete;
    CHeldItem& operator=(const CHeldItem&) = delete;

   private:
    CXmlObjectBase* m_pItem;
    int m_exceptions;
  };

  // --- Nodes

  // Asserts "m_pTail == pNode" for an end of another list, and leaves both lists as they are. A
  // node from the middle of another list leaves that one, and the two count wrongly.
  void RemoveNode(CNode* pNode);
  // Throws as Remove.
  CNode* GetNodeAtIndex(int index) const;
  // The first node with that object. Throws CQzInvalidParamException "The object was not found in
  // the collection".
  CNode* GetNodeForItem(const CXmlObjectBase* item) const;
  CNode* GetFirstNode() const { return m_pHead; }  // null in an empty collection
  CNode* GetLastNode() const { return m_pTail; }

 private:
  class CHeldSelf;

  // place() is asked behind the add event for the node to insert in front of, null for the end.
  template <class Place>
  void Insert(CXmlObjectBase* item, Place place);
  void Link(CNode* successor, CXmlObjectBase* item);
  void Unlink(CNode* pNode);
  bool FitsEnds(const CNode* node) const;
  bool IsLinked(const CNode* node) const;

  CNode* m_pHead = nullptr;
  CNode* m_pTail = nullptr;
  std::int32_t m_lCount = 0;
  std::uint32_t m_dwRemovals = 0;  // how many nodes have gone: tells whether a listener took some
};

}  // namespace QzXmlLib16
