#include "qzxml/collections/XmlCollection.h"

#include <exception>
#include <utility>

#include "qzxml/collections/Messages.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"

// Listeners run in the middle of every change and may do anything: change the list again, drop
// their handles on the item, on the collection itself. So what a change still needs behind an event
// is held over it, and a node is looked for again where others have gone meanwhile.

namespace QzXmlLib16 {
namespace {

// Releases the nodes from first to last. An item that is itself the last holder of a collection
// releases that from inside here, and so on downwards; from a certain depth on the nodes are only
// put aside and released by the loop at that depth, so that a tree of any depth fits every stack.
void ReleaseNodes(CXmlCollectionNode* first, CXmlCollectionNode* last) noexcept {
  constexpr int kMaxDepth = 64;
  thread_local int depth = 0;
  thread_local CXmlCollectionNode* aside = nullptr;

  if (depth == kMaxDepth) {
    last->next = aside;
    aside = first;
    return;
  }
  ++depth;
  while (first != nullptr) {
    CXmlCollectionNode* const node = first;
    first = first->next;
    delete node;
    if (first == nullptr && depth == kMaxDepth) {
      first = aside;
      aside = nullptr;
    }
  }
  --depth;
}

}  // namespace

// One reference on the collection while it calls listeners, if handles hold it: none for one on the
// stack, nor for one that is being destroyed.
class CXmlCollection::CHeldSelf {
 public:
  explicit CHeldSelf(CXmlCollection* self)
      : m_self(self->HasEventListeners() && IsHeld(self) ? self : nullptr) {}

 private:
  static bool IsHeld(CXmlObjectBase* object) {
    return object->m_lRefCount.load(std::memory_order_relaxed) > 0;
  }

  CSmartPtr<CXmlObjectBase> m_self;
};

CXmlCollection::CHeldItem::CHeldItem(CXmlObjectBase* item)
    : m_pItem(item), m_exceptions(std::uncaught_exceptions()) {
  if (m_pItem != nullptr) m_pItem->AddRef();
}

CXmlCollection::CHeldItem::~CHeldItem() {
  if (m_pItem == nullptr) return;
  if (std::uncaught_exceptions() > m_exceptions) {
    m_pItem->m_lRefCount.fetch_sub(1, std::memory_order_acq_rel);
  } else {
    m_pItem->Release();
  }
}

CXmlCollection::CXmlCollection(const char* elementName, const char* namespaceUri, int minOccurs,
                               int maxOccurs)
    : CXmlCollectionBase(elementName, namespaceUri, minOccurs, maxOccurs) {}

CXmlCollection::CXmlCollection(detail::CSharedText namespaceUri, int minOccurs, int maxOccurs)
    : CXmlCollectionBase(std::move(namespaceUri), minOccurs, maxOccurs) {}

CXmlCollection::~CXmlCollection() {
  if (HasEventListeners()) {
    try {
      Clear();
    } catch (...) {  // nobody is there to hear of it; the rest goes without events
    }
  }
  if (m_pHead == nullptr) return;
  CNode* const first = m_pHead;
  CNode* const last = m_pTail;
  m_pHead = m_pTail = nullptr;
  m_lCount = 0;
  ReleaseNodes(first, last);
}

void CXmlCollection::Clear() {
  const CHeldSelf self(this);
  while (m_lCount >= 1) Remove(0);
}

void CXmlCollection::Remove(int index) { RemoveNode(GetNodeAtIndex(index)); }

void CXmlCollection::AttributesToXml_Int(CXmlWriter* writer,
                                         const CSerializationContext& context) const {
  for (const CNode* node = m_pHead; node != nullptr; node = node->next) {
    CXmlObjectBase::AttributesToXml_Int(node->item, writer, context);
  }
}

// Insertion

template <class Place>
void CXmlCollection::Insert(CXmlObjectBase* item, Place place) {
  QZ_ASSERT_TEXT(item != nullptr, "item != 0");
  if (item == nullptr) return;
  if (!HasEventListeners()) return Link(place(), item);

  const CHeldSelf self(this);
  const CHeldItem held(item);
  FireOnCollectionAdd(item);
  Link(place(), item);
  FireOnCollectionAddComplete(item);
  FireOnCollectionChange();
}

void CXmlCollection::AppendItem(CXmlObjectBase* item) {
  Insert(item, [] { return static_cast<CNode*>(nullptr); });
}

void CXmlCollection::PrependItem(CXmlObjectBase* item) {
  Insert(item, [this] { return m_pHead; });
}

void CXmlCollection::AddAfterItem(const CXmlObjectBase* existing, CXmlObjectBase* item) {
  if (existing == nullptr) return PrependItem(item);
  Insert(item, [=] { return GetNodeForItem(existing)->next; });
}

void CXmlCollection::AddBeforeItem(const CXmlObjectBase* existing, CXmlObjectBase* item) {
  if (existing == nullptr) return AppendItem(item);
  Insert(item, [=] { return GetNodeForItem(existing); });
}

void CXmlCollection::AddItemAt(int index, CXmlObjectBase* item) {
  if (index < 0 || index > m_lCount) throw CQzInvalidParamException(Messages::kInsertionIndex);
  if (index == m_lCount) return AppendItem(item);
  Insert(item, [=] {
    CNode* node = m_pHead;
    for (int i = 0; i < index && node != nullptr; ++i) node = node->next;
    return node;
  });
}

void CXmlCollection::Link(CNode* successor, CXmlObjectBase* item) {
  CNode* const predecessor = successor != nullptr ? successor->prev : m_pTail;
  CNode* const node = new CNode{CSmartPtr<CXmlObjectBase>(item), successor, predecessor};
  (predecessor != nullptr ? predecessor->next : m_pHead) = node;
  (successor != nullptr ? successor->prev : m_pTail) = node;
  ++m_lCount;
}

// Nodes

CXmlCollection::CNode* CXmlCollection::GetNodeAtIndex(int index) const {
  const int count = GetCount();
  if (index > count - 1 || index < 0) {
    throw CQzInvalidParamException(FormatString(Messages::kIndexNotInCollection, index, count));
  }
  CNode* pNode = m_pHead;
  for (int i = 0; i < index && pNode != nullptr; ++i) {
    pNode = pNode->next;
    QZ_ASSERT_TEXT(pNode != nullptr, "pNode != 0");
  }
  QZ_ASSERT_TEXT(pNode != nullptr, "pNode != 0");
  if (pNode == nullptr) {  // a class that counts differently
    throw CQzInvalidParamException(FormatString(Messages::kIndexNotInCollection, index, count));
  }
  return pNode;
}

CXmlCollection::CNode* CXmlCollection::GetNodeForItem(const CXmlObjectBase* item) const {
  const CXmlObjectBase* const wanted = item != nullptr ? item->GetBase() : nullptr;
  for (CNode* node = m_pHead; node != nullptr; node = node->next) {
    if (node->item->GetBase() == wanted) return node;
  }
  throw CQzInvalidParamException("The object was not found in the collection");
}

void CXmlCollection::RemoveNode(CNode* pNode) {
  if (pNode == nullptr) return;
  const CHeldSelf self(this);
  const std::uint32_t removals = m_dwRemovals;
  FireOnCollectionRemove(-1);
  if (m_dwRemovals != removals && !IsLinked(pNode)) return;  // a listener has removed it
  if (!FitsEnds(pNode)) {
    QZ_ASSERT(m_pTail == pNode);
    return;
  }
  Unlink(pNode);
  delete pNode;
  FireOnCollectionRemoveComplete(-1);
  FireOnCollectionChange();
}

void CXmlCollection::Unlink(CNode* pNode) {
  if (pNode->prev != nullptr) {
    pNode->prev->next = pNode->next;
    (pNode->next != nullptr ? pNode->next->prev : m_pTail) = pNode->prev;
  } else if (pNode->next != nullptr) {
    m_pHead = pNode->next;
    m_pHead->prev = nullptr;
  } else {
    m_pHead = nullptr;
    m_pTail = nullptr;
  }
  --m_lCount;
  ++m_dwRemovals;
}

// Whether a node without a neighbour is that end of this list. An end of another list is not, and
// to take it for one would free what is in use.
bool CXmlCollection::FitsEnds(const CNode* node) const {
  return (node->prev == nullptr) == (node == m_pHead) &&
         (node->next == nullptr) == (node == m_pTail);
}

bool CXmlCollection::IsLinked(const CNode* node) const {
  const CNode* at = m_pHead;
  while (at != nullptr && at != node) at = at->next;
  return at != nullptr;
}

}  // namespace QzXmlLib16
