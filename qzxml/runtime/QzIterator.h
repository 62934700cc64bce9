#pragma once

#include <cstddef>
#include <iterator>

#include "qzxml/platform/Assert.h"
#include "qzxml/runtime/SmartPtr.h"

namespace QzXmlLib16 {

// A node of a collection: item, next, prev. Defined in qzxml/collections/XmlCollection.h, where it
// is also named CXmlCollection::CNode.
struct CXmlCollectionNode;

namespace detail {

// Makes the node's type depend on T, so that it is needed complete only where an iterator is used.
template <typename T>
struct CollectionNodeOf {
  using type = CXmlCollectionNode;
};

template <typename T>
T* PointerOf(const CSmartPtr<T>& handle) {
  return handle;
}

}  // namespace detail

// Walks the items of a collection from head to tail. An input iterator that gives handles, by
// value, and works in a range-for:
//
//   for (CSmartPtr<COrder> order : orders) Use(order->GetNumber());
//
// Does not own the node: a node that is removed takes its iterators with it.
template <typename T>
class CQzIterator {
  using Node = typename detail::CollectionNodeOf<T>::type;

 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = CSmartPtr<T>;
  using difference_type = std::ptrdiff_t;
  using pointer = CSmartPtr<T>;
  using reference = CSmartPtr<T>;

  CQzIterator() = default;  // past the end
  explicit CQzIterator(Node* node) : m_pNode(node) {}

  // The item at this place; asserts "m_pNode != 0", and past the end the handle is null.
  CSmartPtr<T> operator*() const {
    QZ_ASSERT_TEXT(m_pNode != nullptr, "m_pNode != 0");
    if (m_pNode == nullptr) return CSmartPtr<T>();
    return CSmartPtr<T>(static_cast<T*>(detail::PointerOf(m_pNode->item)));
  }

  // it->x is a member of the item, as (*it)->x.
  CSmartPtr<T> operator->() const { return **this; }

  // Asserts "m_pNode != 0"; past the end it stays there.
  CQzIterator& operator++() {
    QZ_ASSERT_TEXT(m_pNode != nullptr, "m_pNode != 0");
    if (m_pNode != nullptr) m_pNode = m_pNode->next;
    return *this;
  }
  CQzIterator operator++(int) {
    const CQzIterator before = *this;
    ++*this;
    return before;
  }

  friend bool operator==(const CQzIterator& a, const CQzIterator& b) {
    return a.m_pNode == b.m_pNode;
  }
  friend bool operator!=(const CQzIterator& a, const CQzIterator& b) {
    return a.m_pNode != b.m_pNode;
  }

 private:
  Node* m_pNode = nullptr;
};

}  // namespace QzXmlLib16
