#include <gtest/gtest.h>

#include <exception>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>
#include <typeinfo>

#include "qzxml/runtime/QzException.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

TEST(QzException, EmptyPathAddsNothingToTheMessage) {
  const CQzException e("message", "");
  EXPECT_EQ("message", e.GetMessage());
  EXPECT_EQ("", e.GetPath());
  EXPECT_EQ(nullptr, e.GetInnerException());
}

TEST(QzException, PathStandsInTheMessageAndByItself) {
  const CQzException e("message", "/order[1]/item[2]");
  EXPECT_EQ("message\nPath: /order[1]/item[2]", e.GetMessage());
  EXPECT_EQ("/order[1]/item[2]", e.GetPath());
  EXPECT_EQ("message\nPath: /order[1]/item[2]", e.GetFullMessage());
}

TEST(QzException, FullMessageWithoutInnerIsTheMessage) {
  for (const CQzException& e : {CQzException(), CQzException("one"), CQzException("one", "/a")}) {
    EXPECT_EQ(e.GetMessage(), e.GetFullMessage());
  }
}

TEST(QzException, FullMessageOfAChainIsOutermostFirstOneLineEach) {
  const CQzException innermost("third", "/c");
  const CQzValidationException middle("second", "/b", innermost);
  const CQzException outer("first", middle);
  EXPECT_EQ("first\nsecond\nPath: /b\nthird\nPath: /c", outer.GetFullMessage());
  EXPECT_EQ("first", outer.GetMessage());
  EXPECT_EQ("", outer.GetPath());
  ASSERT_NE(nullptr, outer.GetInnerException());
  EXPECT_EQ("/b", outer.GetInnerException()->GetPath());
  EXPECT_EQ("third\nPath: /c", outer.GetInnerException()->GetInnerException()->GetMessage());
  EXPECT_EQ(nullptr, outer.GetInnerException()->GetInnerException()->GetInnerException());
}

TEST(QzException, EmptyOuterMessageStillHasItsLine) {
  EXPECT_EQ("\ninner", CQzException("", CQzException("inner")).GetFullMessage());
}

// The second text of CQzException is a path, of the classes without path it does not compile.
TEST(QzException, ASecondTextIsAPathAndASecondExceptionIsInner) {
  EXPECT_EQ("/p", CQzException("m", "/p").GetPath());
  EXPECT_EQ("/p", CQzException(std::string("m"), std::string("/p")).GetPath());
  EXPECT_EQ(nullptr, CQzException("m", "/p").GetInnerException());
  const CQzException wrapped("m", CQzException("/p"));
  EXPECT_EQ("", wrapped.GetPath());
  EXPECT_EQ("/p", wrapped.GetInnerException()->GetMessage());
}

template <typename E>
constexpr bool kFromText = std::is_constructible_v<E, const char*>;
template <typename E>
constexpr bool kFromTexts = std::is_constructible_v<E, const char*, std::string>;
template <typename E>
constexpr bool kFromTextAndInner = std::is_constructible_v<E, const char*, const CQzException&>;
template <typename E>
constexpr bool kFromAll = std::is_constructible_v<E, const char*, const char*, const CQzException&>;

TEST(QzException, EachClassHasTheConstructorsOfItsKind) {
  static_assert(kFromText<CQzException> && kFromTexts<CQzException> &&
                kFromTextAndInner<CQzException> && kFromAll<CQzException>);
  static_assert(!kFromText<CQzValidationException> && kFromTexts<CQzValidationException> &&
                !kFromTextAndInner<CQzValidationException> && kFromAll<CQzValidationException>);
  static_assert(
      !kFromText<CQzInvalidNamespaceException> && kFromTexts<CQzInvalidNamespaceException> &&
      !kFromTextAndInner<CQzInvalidNamespaceException> && kFromAll<CQzInvalidNamespaceException>);
  static_assert(kFromText<CQzInvalidValueException> && !kFromTexts<CQzInvalidValueException> &&
                kFromTextAndInner<CQzInvalidValueException> && !kFromAll<CQzInvalidValueException>);
  static_assert(kFromText<CQzInvalidStateException> && !kFromTexts<CQzInvalidStateException> &&
                kFromTextAndInner<CQzInvalidStateException> && !kFromAll<CQzInvalidStateException>);
  static_assert(kFromText<CQzInvalidParamException> && !kFromTexts<CQzInvalidParamException> &&
                kFromTextAndInner<CQzInvalidParamException> && !kFromAll<CQzInvalidParamException>);
  static_assert(kFromText<CQzOverFlowException> && !kFromTexts<CQzOverFlowException> &&
                kFromTextAndInner<CQzOverFlowException> && !kFromAll<CQzOverFlowException>);
  static_assert(std::is_base_of_v<CQzValidationException, CQzInvalidValueException>);
  static_assert(std::is_base_of_v<CQzValidationException, CQzInvalidNamespaceException>);
  static_assert(!std::is_base_of_v<CQzValidationException, CQzInvalidStateException>);
  static_assert(!std::is_base_of_v<CQzValidationException, CQzInvalidParamException>);
  static_assert(!std::is_base_of_v<CQzValidationException, CQzOverFlowException>);
}

template <typename E>
class QzExceptionFamily : public ::testing::Test {};

using Family = ::testing::Types<CQzException, CQzValidationException, CQzInvalidValueException,
                                CQzInvalidNamespaceException, CQzInvalidStateException,
                                CQzInvalidParamException, CQzOverFlowException>;
TYPED_TEST_SUITE(QzExceptionFamily, Family);

TYPED_TEST(QzExceptionFamily, IsEmptyByDefault) {
  const TypeParam e;
  EXPECT_EQ("", e.GetMessage());
  EXPECT_EQ("", e.GetPath());
  EXPECT_EQ("", e.GetFullMessage());
  EXPECT_EQ(nullptr, e.GetInnerException());
}

TYPED_TEST(QzExceptionFamily, TakesOverMessagePathAndInnerOfAnyException) {
  const CQzValidationException source("message", "/p", CQzOverFlowException("inner"));
  const TypeParam taken(static_cast<const CQzException&>(source));
  EXPECT_EQ("message\nPath: /p", taken.GetMessage());
  EXPECT_EQ("/p", taken.GetPath());
  EXPECT_EQ("message\nPath: /p\ninner", taken.GetFullMessage());
  EXPECT_EQ(typeid(CQzOverFlowException), typeid(*taken.GetInnerException()));
}

TYPED_TEST(QzExceptionFamily, KeepsItsClassAsInnerException) {
  const TypeParam source(CQzException("inner", "/i"));
  const CQzException outer("outer", source);
  EXPECT_EQ(typeid(TypeParam), typeid(*outer.GetInnerException()));
  EXPECT_EQ("outer\ninner\nPath: /i", outer.GetFullMessage());
  EXPECT_EQ("/i", outer.GetInnerException()->GetPath());
  EXPECT_NE(&source, outer.GetInnerException());
}

TYPED_TEST(QzExceptionFamily, CopiesWithItsChain) {
  auto source = std::make_unique<TypeParam>(CQzException("m", "/p", CQzException("inner")));
  const TypeParam copy(*source);
  source.reset();
  EXPECT_EQ("m\nPath: /p\ninner", copy.GetFullMessage());
  EXPECT_EQ("/p", copy.GetPath());
}

TYPED_TEST(QzExceptionFamily, TravelsAsItsClassAndAsTheBase) {
  EXPECT_THROW(throw TypeParam(CQzException("m")), TypeParam);
  EXPECT_QZ_THROW_FULL(TypeParam, "m\nPath: /p", "/p", throw TypeParam(CQzException("m", "/p")));
}

template <typename E>
class QzExceptionWithoutPath : public ::testing::Test {};

using WithoutPath = ::testing::Types<CQzInvalidValueException, CQzInvalidStateException,
                                     CQzInvalidParamException, CQzOverFlowException>;
TYPED_TEST_SUITE(QzExceptionWithoutPath, WithoutPath);

TYPED_TEST(QzExceptionWithoutPath, HasMessageAndInner) {
  const TypeParam plain("The value [x] can not be converted to a i4");
  EXPECT_EQ("The value [x] can not be converted to a i4", plain.GetMessage());
  EXPECT_EQ("", plain.GetPath());
  const TypeParam wrapped("outer", CQzException("inner", "/p"));
  EXPECT_EQ("outer\ninner\nPath: /p", wrapped.GetFullMessage());
  EXPECT_EQ("", wrapped.GetPath());
}

template <typename E>
class QzExceptionWithPath : public ::testing::Test {};

using WithPath = ::testing::Types<CQzValidationException, CQzInvalidNamespaceException>;
TYPED_TEST_SUITE(QzExceptionWithPath, WithPath);

TYPED_TEST(QzExceptionWithPath, HasMessagePathAndInner) {
  EXPECT_EQ("m", TypeParam("m", "").GetMessage());
  EXPECT_EQ("m\nPath: /a", TypeParam("m", "/a").GetMessage());
  const TypeParam wrapped("m", "/a", CQzException("inner"));
  EXPECT_EQ("m\nPath: /a\ninner", wrapped.GetFullMessage());
  EXPECT_EQ("/a", wrapped.GetPath());
}

TEST(QzException, AssignmentKeepsThePathAndReplacesTheInnerException) {
  CQzException target("old", "/old", CQzException("old inner"));
  const CQzException source("new", "/new", CQzInvalidStateException("new inner"));
  target = source;
  EXPECT_EQ("new\nPath: /new", target.GetMessage());
  EXPECT_EQ("/old", target.GetPath());
  EXPECT_EQ("new\nPath: /new\nnew inner", target.GetFullMessage());
  EXPECT_EQ(typeid(CQzInvalidStateException), typeid(*target.GetInnerException()));

  target = CQzException("alone");
  EXPECT_EQ("alone", target.GetFullMessage());
  EXPECT_EQ(nullptr, target.GetInnerException());
  EXPECT_EQ("/old", target.GetPath());
}

TEST(QzException, AssignmentFromItselfAndFromItsOwnChain) {
  CQzException e("one", CQzException("two", CQzException("three")));
  const CQzException& same = e;
  e = same;
  EXPECT_EQ("one\ntwo\nthree", e.GetFullMessage());
  e = *e.GetInnerException();
  EXPECT_EQ("two\nthree", e.GetFullMessage());
  e = *e.GetInnerException();
  EXPECT_EQ("three", e.GetFullMessage());
}

TEST(QzException, DestroyingAWrapperLeavesTheWrappedAlone) {
  const CQzException wrapped("wrapped", CQzException("inner"));
  { const CQzException wrapper("wrapper", wrapped); }
  EXPECT_EQ("wrapped\ninner", wrapped.GetFullMessage());

  auto source = std::make_unique<CQzException>("source", CQzException("inner"));
  const CQzException wrapper("wrapper", *source);
  source.reset();
  EXPECT_EQ("wrapper\nsource\ninner", wrapper.GetFullMessage());
}

TEST(QzException, RethrownLaterItIsWhole) {
  std::exception_ptr kept;
  try {
    try {
      throw CQzInvalidValueException("bad value");
    } catch (const CQzException& e) {
      throw CQzValidationException("wrapped", "/a", e);
    }
  } catch (const CQzException&) {
    kept = std::current_exception();
  }
  EXPECT_QZ_THROW_FULL(CQzValidationException, "wrapped\nPath: /a\nbad value", "/a",
                       std::rethrow_exception(kept));
}

TEST(QzException, AChainOfAHundredThousandIsReadAndDestroyedWithoutRecursion) {
  constexpr std::size_t kLength = 100000;
  auto chain = std::make_unique<CQzException>("x");
  for (std::size_t i = 1; i < kLength; ++i) chain = std::make_unique<CQzException>("x", *chain);
  const std::string full = chain->GetFullMessage();
  EXPECT_EQ(2 * kLength - 1, full.size());
  EXPECT_EQ("x\nx\nx", full.substr(0, 5));
  CQzException copy(*chain);
  chain.reset();
  EXPECT_EQ(full, copy.GetFullMessage());
  copy = CQzException("short");
  EXPECT_EQ("short", copy.GetFullMessage());
}

TEST(QzException, CopiesOfOneChainMayBeDestroyedInDifferentThreads) {
  CQzException chain("x");
  for (int i = 0; i < 1000; ++i) chain = CQzException("x", CQzException(chain));
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([copy = std::make_unique<CQzException>(chain)]() mutable {
      EXPECT_EQ(2001U, copy->GetFullMessage().size());
      copy.reset();
    });
  }
  chain = CQzException();
  for (std::thread& thread : threads) thread.join();
}

}  // namespace
}  // namespace QzXmlLib16
