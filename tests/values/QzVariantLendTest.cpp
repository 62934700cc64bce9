// Values that are lent to a variant, given to it and taken from it.
#include <string>
#include <utility>

#include "qzxml/values/QzVariant.h"
#include "tests/support/QzTest.h"
#include "tests/values/QzVariantKinds.h"

using qztest::MakeDate;
using qztest::MakeSpan;
using QzXmlLib16::CBigInteger;
using QzXmlLib16::CDateTime;
using QzXmlLib16::CDateTimeSpan;
using QzXmlLib16::CDecimal;
using QzXmlLib16::ItemType;
using QzXmlLib16::QzVariant;

TEST(QzVariant, LendsATextWithoutCopyingIt) {
  const std::string text = "a text that is too long to be kept in place";
  QzVariant value;
  value.LendString(text);
  EXPECT_EQ(&text, &value.GetStringReference());
  EXPECT_EQ(QzXmlLib16::ItemType_string, value.GetTypeAsEnum());
  EXPECT_EQ(text, value.ToString(nullptr));
}

TEST(QzVariant, ACopyOfALentTextIsItsOwn) {
  QzVariant copy;
  QzVariant assigned;
  {
    const std::string text = "a text that is too long to be kept in place";
    QzVariant value;
    value.LendString(text);
    copy = QzVariant(value);
    assigned = value;
    EXPECT_NE(&text, &copy.GetStringReference());
  }
  EXPECT_EQ("a text that is too long to be kept in place", copy.GetString());
  EXPECT_EQ("a text that is too long to be kept in place", assigned.GetString());
}

TEST(QzVariant, ALentTextStaysAsItIsWhateverBecomesOfTheVariant) {
  std::string text = "lent";
  QzVariant value;
  value.LendString(text);
  value.SetString("own");
  EXPECT_EQ("own", value.GetString());
  value.LendString(text);
  EXPECT_EQ("lent", value.TakeString());
  value.LendString(text);
  value.SetI4(5);
  value.LendString(text);
  value.SetNil();
  EXPECT_TRUE(value.IsNil());
  value = QzVariant();
  value.LendString(text);
  QzVariant moved(std::move(value));
  EXPECT_EQ(&text, &moved.GetStringReference());
  moved.Clear();
  EXPECT_EQ("lent", text);
}

TEST(QzVariant, AGivenTextIsLentUntilItIsTaken) {
  std::string text(100, 'x');
  const char* const data = text.data();
  QzVariant value;
  value.GiveString(text);
  EXPECT_EQ(QzXmlLib16::ItemType_string, value.GetTypeAsEnum());
  EXPECT_EQ(&text, &value.GetStringReference());
  EXPECT_EQ(std::string(100, 'x'), value.GetString());  // a copy
  EXPECT_EQ(data, text.data());
  const std::string taken = value.TakeString();
  EXPECT_EQ(data, taken.data());
  EXPECT_FALSE(value.IsValid());
}

TEST(QzVariant, AGivenTextOutlivesItsGiverWhereItsVariantIsMovedOrCopied) {
  QzVariant moved;
  QzVariant copied;
  {
    std::string text(100, 'x');
    QzVariant value;
    value.GiveString(text);
    copied = value;
    moved = std::move(value);
    text.assign(100, 'y');
  }
  EXPECT_EQ(std::string(100, 'x'), moved.GetString());
  EXPECT_EQ(std::string(100, 'x'), copied.GetString());
}

TEST(QzVariant, AGivenTextIsForgottenWithItsVariant) {
  std::string text("given");
  const std::string lent("lent");
  QzVariant value;
  value.GiveString(text);
  value.SetI4(7);
  value.LendString(lent);
  EXPECT_EQ("lent", value.TakeString());
  EXPECT_EQ("lent", lent);
  value.GiveString(text);
  value.LendString(text);
  EXPECT_EQ("given", value.TakeString());
  EXPECT_EQ("given", text);
  value.GiveString(text);
  value.SetNil();
  EXPECT_TRUE(value.IsNil());
  EXPECT_EQ("given", text);
}

TEST(QzVariant, TakingATextMovesItOut) {
  QzVariant value;
  value.SetString("a text that is too long to be kept in place");
  const char* const place = value.GetStringReference().data();
  const std::string taken = value.TakeString();
  EXPECT_EQ(place, taken.data());
  EXPECT_FALSE(value.IsValid());
}

TEST(QzVariant, LendsValuesWithoutCopyingThem) {
  const CDecimal decimal("1.5");
  const CBigInteger integer("7");
  const CDateTimeSpan span = MakeSpan("P1D");
  const CDateTime date = MakeDate("2004-05-06");
  QzVariant value;
  value.LendDecimal(decimal);
  EXPECT_EQ(&decimal, &value.GetDecimalReference());
  EXPECT_EQ(25, value.GetTypeAsEnum());
  QzVariant copy(value);
  EXPECT_NE(&decimal, &copy.GetDecimalReference());
  EXPECT_EQ("1.5", copy.ToString(nullptr));
  EXPECT_EQ("1.5", value.TakeDecimal().ToString());

  value.LendInteger(integer);
  EXPECT_EQ(&integer, &value.GetIntegerReference());
  EXPECT_EQ(26, value.GetTypeAsEnum());
  EXPECT_EQ("7", value.TakeInteger().ToString());

  value.LendDuration(span);
  EXPECT_EQ(13, value.GetTypeAsEnum());
  EXPECT_EQ("P1D", value.GetDuration().ToString());
  copy = value;
  EXPECT_EQ("P1D", copy.ToString(nullptr));

  for (const int kind : {14, 15, 19, 20, 21}) {
    value.LendDateTime(static_cast<ItemType>(kind), date);
    EXPECT_EQ(kind, value.GetTypeAsEnum());
    EXPECT_EQ("2004-05-06", value.ToString(nullptr));
  }
  value.SetNil();
  EXPECT_EQ("2004-05-06", date.ToString());
  EXPECT_EQ("1.5", decimal.ToString());
  EXPECT_EQ("7", integer.ToString());
}

TEST(QzVariant, ADateIsLentAsOneOfItsKinds) {
  const CDateTime date = MakeDate("2004-05-06");
  for (const int kind : {0, 5, 13, 16, 23, 25, 28, 29}) {
    QzVariant value;
    EXPECT_QZ_ASSERT("kind holds a CDateTime",
                     value.LendDateTime(static_cast<ItemType>(kind), date));
  }
  const qztest::AssertionRecorder recorder;
  QzVariant value;
  value.SetI4(5);
  value.LendDateTime(QzXmlLib16::ItemType_string, date);
  EXPECT_FALSE(value.IsValid());
}

TEST(QzVariant, TakingANumberOfAnySizeLeavesInvalid) {
  QzVariant value;
  value.SetDecimal("1.5");
  EXPECT_EQ("1.5", value.TakeDecimal().ToString());
  EXPECT_FALSE(value.IsValid());
  value.SetInteger("7");
  EXPECT_EQ("7", value.TakeInteger().ToString());
  EXPECT_FALSE(value.IsValid());
}
