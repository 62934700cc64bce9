// Copies, assignments and moves of variants.
#include <type_traits>
#include <utility>

#include "qzxml/values/QzVariant.h"
#include "tests/support/QzTest.h"
#include "tests/values/QzVariantKinds.h"

using qztest::GetKinds;
using qztest::Kind;
using QzXmlLib16::CQzException;
using QzXmlLib16::QzVariant;
using QzXmlLib16::QzVariantTestAccess;

TEST(QzVariant, ACopyIsAValueOfItsOwn) {
  for (const Kind& kind : GetKinds()) {
    QzVariant source;
    kind.set(source);
    const QzVariant copied(source);
    QzVariant assigned;
    assigned.SetString("before");
    EXPECT_EQ(&assigned, &(assigned = source));
    source.SetString("after");
    kind.get(copied);
    kind.get(assigned);
    EXPECT_EQ(kind.text, copied.ToString(nullptr));
    EXPECT_EQ(kind.text, assigned.ToString(nullptr));
  }
}

TEST(QzVariant, ACopyOfNilIsNilOfTheSameKind) {
  for (const Kind& kind : GetKinds()) {
    QzVariant source;
    kind.set(source);
    source.SetNil();
    QzVariant target;
    target.SetUI8(0x4141414141414141u);
    target = source;
    EXPECT_TRUE(target.IsNil()) << kind.name;
    EXPECT_EQ(kind.number, target.GetTypeAsEnum()) << kind.name;
    target = QzVariant();
    EXPECT_FALSE(target.IsValid());
  }
}

TEST(QzVariant, ACopyOfNilOfNoKindIsTheSame) {
  QzVariant source;
  source.SetNil();
  QzVariant target;
  target.SetString("text");
  target = source;
  for (const QzVariant& copy : {target, QzVariant(source)}) {
    EXPECT_TRUE(copy.IsNil());
    EXPECT_EQ(0, copy.GetTypeAsEnum());
  }
  target.SetI4(5);
  EXPECT_TRUE(target.IsNil());
}

TEST(QzVariant, AssigningAnInvalidVariantEmptiesTheTarget) {
  QzVariant target;
  target.SetString("text");
  target = QzVariant();
  EXPECT_FALSE(target.IsValid());
  EXPECT_EQ(0, target.GetTypeAsEnum());
}

TEST(QzVariant, KeepsItsValueWhenAssignedToItself) {
  QzVariant value;
  value.SetString("text");
  const QzVariant& same = value;
  value = same;
  EXPECT_EQ("text", value.GetString());
  QzVariant& alias = value;
  value = std::move(alias);
  EXPECT_EQ("text", value.GetString());
}

TEST(QzVariant, AMoveTakesThePayloadAndLeavesInvalid) {
  static_assert(std::is_nothrow_move_constructible_v<QzVariant>);
  static_assert(std::is_nothrow_move_assignable_v<QzVariant>);
  for (const Kind& kind : GetKinds()) {
    QzVariant source;
    kind.set(source);
    QzVariant moved(std::move(source));
    kind.get(moved);
    EXPECT_FALSE(source.IsValid()) << kind.name;  // NOLINT: the state is told
    QzVariant assigned;
    assigned.SetString("before");
    assigned = std::move(moved);
    kind.get(assigned);
    EXPECT_FALSE(moved.IsValid()) << kind.name;  // NOLINT: the state is told
  }
}

TEST(QzVariant, AMoveOfNilIsNil) {
  QzVariant source;
  source.SetString("x");
  source.SetNil();
  const QzVariant target(std::move(source));
  EXPECT_TRUE(target.IsNil());
  EXPECT_EQ(23, target.GetTypeAsEnum());
  EXPECT_FALSE(source.IsNil());  // NOLINT: the state is told
}

TEST(QzVariant, AssigningAnUnknownKindThrowsAndLeavesTheKindBehind) {
  QzVariant source;
  QzVariantTestAccess::SetType(source, 29);
  QzVariant target;
  target.SetString("before");
  target.SetNil();
  EXPECT_QZ_THROW(CQzException, "Unknown Type", target = source);
  EXPECT_EQ(29, target.GetTypeAsEnum());
  EXPECT_FALSE(target.IsNil());
  target.SetString("after");
  EXPECT_EQ("after", target.GetString());
  EXPECT_QZ_THROW(CQzException, "Unknown Type", QzVariant copy(source));
}
