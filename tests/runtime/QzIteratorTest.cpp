#include <gtest/gtest.h>

#include <type_traits>
#include <vector>

#include "qzxml/runtime/QzIterator.h"
#include "tests/support/QzTest.h"

namespace {

struct Item {
  explicit Item(int v) : value(v) {}
  void AddRef() { ++count; }
  void Release() { --count; }
  int value;
  int count = 0;
};

struct SpecialItem : Item {
  using Item::Item;
};

// A node with what the iterator needs of it.
struct Node {
  CSmartPtr<Item> item;
  Node* next;
};

}  // namespace

namespace QzXmlLib16::detail {
template <>
struct CollectionNodeOf<Item> {
  using type = Node;
};
template <>
struct CollectionNodeOf<SpecialItem> {
  using type = Node;
};
}  // namespace QzXmlLib16::detail

namespace {

using Iterator = QzXmlLib16::CQzIterator<Item>;

struct Collection {
  SpecialItem one{1};
  SpecialItem two{2};
  Node last{&two, nullptr};
  Node first{&one, &last};
  Iterator begin() { return Iterator(&first); }
  Iterator end() { return Iterator(nullptr); }
};

TEST(QzIterator, WalksFromHeadToTailInARangeFor) {
  Collection collection;
  std::vector<int> values;
  for (CSmartPtr<Item> item : collection) values.push_back(item->value);
  EXPECT_EQ((std::vector<int>{1, 2}), values);
}

TEST(QzIterator, GivesHandlesByValue) {
  Collection collection;
  static_assert(std::is_same_v<CSmartPtr<Item>, decltype(*collection.begin())>);
  const CSmartPtr<Item> item = *collection.begin();
  EXPECT_EQ(2, collection.one.count);
  EXPECT_EQ(1, collection.begin()->value);
  EXPECT_EQ(2, collection.one.count);
}

TEST(QzIterator, GivesTheClassThatItWasMadeFor) {
  Collection collection;
  const QzXmlLib16::CQzIterator<SpecialItem> it(&collection.first);
  const CSmartPtr<SpecialItem> item = *it;
  EXPECT_EQ(&collection.one, static_cast<SpecialItem*>(item));
}

TEST(QzIterator, StepsBeforeAndAfter) {
  Collection collection;
  Iterator it = collection.begin();
  EXPECT_EQ(1, (*it++)->value);
  EXPECT_EQ(2, (*it)->value);
  EXPECT_TRUE(++it == collection.end());
  EXPECT_TRUE(collection.begin() != collection.end());
  EXPECT_TRUE(Iterator() == collection.end());
}

TEST(QzIterator, GivesNullForANodeWithoutItem) {
  Node node{nullptr, nullptr};
  EXPECT_TRUE(*Iterator(&node) == nullptr);
}

TEST(QzIterator, PastTheEndAsserts) {
  Iterator it;
  EXPECT_QZ_ASSERT("m_pNode != 0", static_cast<void>(*it));
  EXPECT_QZ_ASSERT("m_pNode != 0", ++it);
  const qztest::AssertionRecorder goesOn;
  EXPECT_TRUE(*it == nullptr);
  EXPECT_TRUE(++it == Iterator());
}

TEST(QzIterator, IsAnInputIteratorOfTheSizeOfAPointer) {
  static_assert(std::is_same_v<std::input_iterator_tag, Iterator::iterator_category>);
  static_assert(std::is_same_v<CSmartPtr<Item>, std::iterator_traits<Iterator>::value_type>);
  static_assert(sizeof(Iterator) == sizeof(Node*));
}

}  // namespace
