#include <gtest/gtest.h>

#include <utility>

#include "qzxml/runtime/SmartPtr.h"
#include "tests/support/QzTest.h"

namespace {

struct Counted {
  void AddRef() {
    ++count;
    ++added;
  }
  void Release() {
    --count;
    ++released;
  }
  int count = 0;
  int added = 0;
  int released = 0;
  int value = 7;
};

struct Derived : Counted {};

using Ptr = CSmartPtr<Counted>;

TEST(SmartPtr, HoldsOneReferenceForAsLongAsItLives) {
  Counted object;
  {
    const Ptr a(&object);
    EXPECT_EQ(1, object.count);
    const Ptr b(a);
    EXPECT_EQ(2, object.count);
    EXPECT_EQ(&object, static_cast<Counted*>(b));
  }
  EXPECT_EQ(0, object.count);
}

TEST(SmartPtr, NullNeitherAddsNorReleasesAndConvertsToNull) {
  Counted* const none = nullptr;
  const Ptr a(none);
  const Ptr b;
  const Ptr c(a);
  const Ptr d = nullptr;
  for (const Ptr& handle : {a, b, c, d}) {
    EXPECT_EQ(nullptr, static_cast<Counted*>(handle));
    EXPECT_FALSE(handle);
    EXPECT_TRUE(handle == nullptr);
    EXPECT_TRUE(nullptr == handle);
    EXPECT_FALSE(handle != nullptr);
    EXPECT_FALSE(nullptr != handle);
  }
}

TEST(SmartPtr, DereferencesToTheObject) {
  Counted object;
  const Ptr handle(&object);
  EXPECT_EQ(7, handle->value);
  (*handle).value = 8;
  EXPECT_EQ(8, object.value);
  EXPECT_EQ(&object, &*handle);
  EXPECT_TRUE(handle != nullptr);
  EXPECT_TRUE(nullptr != handle);
  EXPECT_FALSE(handle == nullptr);
}

TEST(SmartPtr, DereferencingNullAsserts) {
  [[maybe_unused]] const Ptr handle;
  EXPECT_QZ_ASSERT("p != 0", static_cast<void>(handle.operator->()));
  EXPECT_QZ_ASSERT("p != 0", static_cast<void>(*handle));
}

TEST(SmartPtr, AssignmentHoldsTheNewAndReleasesTheOld) {
  Counted first;
  Counted second;
  Ptr handle(&first);
  const Ptr other(&second);
  handle = other;
  EXPECT_EQ(0, first.count);
  EXPECT_EQ(2, second.count);
  handle = &first;
  EXPECT_EQ(1, first.count);
  EXPECT_EQ(1, second.count);
  handle = nullptr;
  EXPECT_EQ(0, first.count);
  EXPECT_TRUE(handle == nullptr);
}

TEST(SmartPtr, AssignmentToItselfNeverReachesZero) {
  struct Watched {
    void AddRef() { ++count; }
    void Release() {
      if (--count == 0) reachedZero = true;
    }
    int count = 0;
    bool reachedZero = false;
  } object;
  {
    CSmartPtr<Watched> handle(&object);
    const CSmartPtr<Watched>& same = handle;
    handle = same;
    EXPECT_EQ(1, object.count);
    EXPECT_FALSE(object.reachedZero);
  }
  EXPECT_TRUE(object.reachedZero);
}

TEST(SmartPtr, MoveCountsNothing) {
  Counted object;
  {
    Ptr a(&object);
    Ptr b(std::move(a));
    EXPECT_TRUE(a == nullptr);  // NOLINT: a moved-from handle is null
    Ptr c;
    c = std::move(b);
    EXPECT_TRUE(b == nullptr);  // NOLINT
    EXPECT_EQ(1, object.added);
    EXPECT_EQ(0, object.released);
    EXPECT_EQ(&object, static_cast<Counted*>(c));
  }
  EXPECT_EQ(0, object.count);
}

TEST(SmartPtr, ConvertsFromAHandleOnADerivedClassOnly) {
  Derived object;
  const CSmartPtr<Derived> derived(&object);
  const Ptr base = derived;
  EXPECT_EQ(2, object.count);
  EXPECT_TRUE(base == derived);
  static_assert(!std::is_constructible_v<CSmartPtr<Derived>, const Ptr&>);
}

TEST(SmartPtr, HandlesCompareByTheirObjects) {
  Counted first;
  Counted second;
  EXPECT_TRUE(Ptr(&first) == Ptr(&first));
  EXPECT_TRUE(Ptr(&first) != Ptr(&second));
}

TEST(SmartPtr, IsAsLargeAsAPointer) { static_assert(sizeof(Ptr) == sizeof(Counted*)); }

}  // namespace
