#include <string>
#include <type_traits>
#include <utility>

#include "qzxml/collections/XmlCollectionBase.h"
#include "qzxml/values/QzVariant.h"
#include "tests/support/QzTest.h"
#include "tests/values/QzVariantKinds.h"

using qztest::GetKinds;
using qztest::Kind;
using qztest::MakeDate;
using qztest::MakeSpan;
using QzXmlLib16::CBinaryData;
using QzXmlLib16::CDateTime;
using QzXmlLib16::CWhitespaceUtils;
using QzXmlLib16::QzVariant;

namespace {

constexpr auto kNone = CWhitespaceUtils::WhitespaceRule_None;

}  // namespace

TEST(QzVariant, IsNeitherValidNorNilAtFirst) {
  const QzVariant value;
  EXPECT_FALSE(value.IsValid());
  EXPECT_FALSE(value.IsNil());
  EXPECT_EQ(0, value.GetTypeAsEnum());
}

TEST(QzVariant, GivesBackWhatItWasGiven) {
  for (const Kind& kind : GetKinds()) {
    QzVariant value;
    kind.set(value);
    EXPECT_TRUE(value.IsValid()) << kind.name;
    EXPECT_FALSE(value.IsNil()) << kind.name;
    EXPECT_EQ(kind.number, value.GetTypeAsEnum()) << kind.name;
    EXPECT_EQ(kind.name, value.GetType());
    EXPECT_EQ(kind.text, value.ToString(nullptr)) << kind.name;
    EXPECT_EQ(kind.text, value.ToString("")) << kind.name;
    kind.get(value);
  }
}

TEST(QzVariant, ASetterReplacesAValueOfAnyKind) {
  for (const Kind& before : GetKinds()) {
    for (const Kind& after : GetKinds()) {
      QzVariant value;
      before.set(value);
      after.set(value);
      EXPECT_EQ(after.number, value.GetTypeAsEnum()) << before.name << " " << after.name;
      after.get(value);
    }
  }
}

TEST(QzVariant, AGetterAssertsItsKind) {
  for (const Kind& held : GetKinds()) {
    QzVariant value;
    held.set(value);
    for (const Kind& asked : GetKinds()) {
      if (&asked == &held) continue;
      EXPECT_QZ_ASSERT(asked.assertion, asked.get(value));
    }
  }
}

TEST(QzVariant, AGetterOfTheWrongKindFollowsNoPointer) {
  const qztest::AssertionRecorder recorder;
  QzVariant number;
  number.SetUI8(0x4141414141414141u);
  EXPECT_EQ("", number.GetString());
  EXPECT_EQ("", number.GetStringReference());
  EXPECT_EQ(CBinaryData(), number.GetHexBinary());
  EXPECT_EQ(CBinaryData(), number.GetBase64Binary());
  EXPECT_EQ("P", number.GetDuration().ToString());
  for (const CDateTime& date : {number.GetYearMonth(), number.GetMonthDay(), number.GetDate(),
                                number.GetDateTime(), number.GetTime()}) {
    EXPECT_EQ(CDateTime::dt_yearZero, date.GetType());
  }
  EXPECT_EQ("0", number.GetDecimal().ToString());
  EXPECT_EQ("0", number.GetInteger().ToString());
  EXPECT_EQ(nullptr, number.GetXmlObject());
  EXPECT_EQ(nullptr, number.GetXmlCollection());
  number.GetBoolean();

  QzVariant text;
  text.SetString("2004-05-06");
  EXPECT_EQ(CDateTime::dt_yearZero, text.GetDate().GetType());
  EXPECT_EQ("0", text.GetDecimal().ToString());

  QzVariant nilText;
  nilText.SetString("x");
  nilText.SetNil();
  EXPECT_EQ("", nilText.GetString());
  EXPECT_EQ("", nilText.ToString(nullptr));
  for (const Kind& kind : GetKinds()) {
    QzVariant nil;
    kind.set(nil);
    nil.SetNil();
    nil.ToString(nullptr);
    const QzVariant copy(nil);
    copy.ToString("1");
  }
}

TEST(QzVariant, ANilDateOrNumberIsNoValueOfItsOwn) {
  const qztest::AssertionRecorder recorder;
  QzVariant value;
  value.SetDate(MakeDate("2004-05-06"));
  value.SetNil();
  EXPECT_EQ(19, value.GetTypeAsEnum());
  EXPECT_EQ(CDateTime::dt_yearZero, value.GetDate().GetType());
  value.SetDuration(MakeSpan("P1D"));
  value.SetNil();
  EXPECT_EQ("P", value.GetDuration().ToString());
  value.SetDecimal("1.5");
  value.SetNil();
  EXPECT_EQ("0", value.GetDecimal().ToString());
  value.SetInteger("7");
  value.SetNil();
  EXPECT_EQ("0", value.TakeInteger().ToString());
}

TEST(QzVariant, GivesAStringWithoutACopy) {
  QzVariant value;
  value.SetString("a text that is not short at all");
  const std::string& text = value.GetStringReference();
  EXPECT_EQ("a text that is not short at all", text);
  EXPECT_EQ(&text, &value.GetStringReference());
}

TEST(QzVariant, AStringIsMovedIn) {
  std::string text(100, 'x');
  const char* const bytes = text.data();
  QzVariant value;
  value.SetString(std::move(text));
  EXPECT_EQ(bytes, value.GetStringReference().data());

  std::string other(200, 'y');
  const char* const otherBytes = other.data();
  value.SetString(std::move(other));
  EXPECT_EQ(otherBytes, value.GetStringReference().data());
}

TEST(QzVariant, AStringMayComeFromTheVariantItself) {
  QzVariant value;
  value.SetString(std::string(100, 'x'));
  value.SetString(value.GetStringReference());
  EXPECT_EQ(std::string(100, 'x'), value.GetString());
}

TEST(QzVariant, BinaryDataIsACopyThatSharesItsStore) {
  CBinaryData data("abc");
  QzVariant value;
  value.SetHexBinary(data);
  EXPECT_EQ(data.GetData(), value.GetHexBinary().GetData());
  data.Append('d');
  EXPECT_EQ(CBinaryData("abc"), value.GetHexBinary());
}

TEST(QzVariant, NilKeepsTheKindAndGivesThePayloadUp) {
  for (const Kind& kind : GetKinds()) {
    QzVariant value;
    kind.set(value);
    value.SetNil();
    EXPECT_EQ(kind.number, value.GetTypeAsEnum()) << kind.name;
    EXPECT_EQ(kind.name, value.GetType());
    EXPECT_TRUE(value.IsNil()) << kind.name;
    EXPECT_TRUE(value.IsValid()) << kind.name;
  }
}

TEST(QzVariant, ANilStringHasNoText) {
  QzVariant value;
  value.SetString("text");
  value.SetNil();
  EXPECT_EQ(23, value.GetTypeAsEnum());
  EXPECT_TRUE(value.IsNil());
  EXPECT_TRUE(value.IsValid());
  EXPECT_QZ_ASSERT("m_type == ItemType_string && m_pString != 0", value.GetString());
}

TEST(QzVariant, ANilNumberIsLeftAsItLies) {
  QzVariant value;
  value.SetI4(5);
  value.SetNil();
  EXPECT_EQ(5, value.GetI4());
  EXPECT_EQ("5", value.ToString(nullptr));
}

TEST(QzVariant, ASetterEndsNil) {
  for (const Kind& kind : GetKinds()) {
    QzVariant value;
    value.SetI4(1);
    value.SetNil();
    kind.set(value);
    EXPECT_FALSE(value.IsNil()) << kind.name;
    kind.get(value);
  }
}

TEST(QzVariant, NilOfNoKindStaysThroughTheNextSetter) {
  QzVariant value;
  value.SetNil();
  EXPECT_TRUE(value.IsNil());
  EXPECT_TRUE(value.IsValid());
  EXPECT_EQ(0, value.GetTypeAsEnum());
  value.SetI4(5);
  EXPECT_TRUE(value.IsNil());
  EXPECT_EQ(5, value.GetTypeAsEnum());
  EXPECT_EQ(5, value.GetI4());
}

TEST(QzVariant, NilOfNoKindEndsWithTheSetterAfterTheNext) {
  for (const Kind& kind : GetKinds()) {
    QzVariant value;
    value.SetNil();
    kind.set(value);
    EXPECT_TRUE(value.IsNil()) << kind.name;
    kind.set(value);
    EXPECT_FALSE(value.IsNil()) << kind.name;
    kind.get(value);
  }
}

TEST(QzVariant, NilOfNoKindSurvivesClearAndSetInvalid) {
  QzVariant value;
  value.SetNil();
  value.Clear();
  value.SetInvalid();
  EXPECT_TRUE(value.IsNil());
  EXPECT_TRUE(value.IsValid());
  value = QzVariant();
  EXPECT_FALSE(value.IsNil());
  EXPECT_FALSE(value.IsValid());
}

TEST(QzVariant, ClearAndSetInvalidEndAnyKind) {
  for (const Kind& kind : GetKinds()) {
    QzVariant cleared;
    kind.set(cleared);
    cleared.Clear();
    EXPECT_FALSE(cleared.IsValid()) << kind.name;
    EXPECT_EQ(0, cleared.GetTypeAsEnum()) << kind.name;

    QzVariant invalid;
    kind.set(invalid);
    invalid.SetNil();
    invalid.SetInvalid();
    EXPECT_FALSE(invalid.IsValid()) << kind.name;
    EXPECT_FALSE(invalid.IsNil()) << kind.name;
  }
}

TEST(QzVariant, IsTheSizeOfItsFieldsAndADestructor) {
  EXPECT_EQ(3 * sizeof(void*), sizeof(QzVariant));
  EXPECT_TRUE(std::has_virtual_destructor_v<QzVariant>);
}

TEST(QzVariant, ADateIsHeldAsItIsWhateverItsType) {
  QzVariant value;
  value.SetTime(MakeDate("2004-05-06"));
  EXPECT_EQ(21, value.GetTypeAsEnum());
  EXPECT_EQ("2004-05-06", value.ToString(nullptr));
  value.FromString("2004", QzXmlLib16::ItemType_yearMonth, kNone);
  EXPECT_EQ(14, value.GetTypeAsEnum());
  EXPECT_EQ(CDateTime::dt_gYear, value.GetYearMonth().GetType());
}

TEST(QzVariant, ANumberOfAnySizeMayComeFromTheVariantItself) {
  QzVariant value;
  value.SetDecimal("12345678901234567890.5");
  value.SetDecimal(value.GetDecimalReference());
  EXPECT_EQ("12345678901234567890.5", value.ToString(nullptr));
  value.SetInteger(value.GetDecimalReference().GetIntegerPart());
  EXPECT_EQ("12345678901234567890", value.ToString(nullptr));
  value.SetDecimal(value.GetIntegerReference());
  EXPECT_EQ("12345678901234567890", value.ToString(nullptr));
}
