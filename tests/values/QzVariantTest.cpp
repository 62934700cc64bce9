#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>

#include "qzxml/collections/ElementCol.h"
#include "qzxml/values/QzVariant.h"
#include "tests/serialization/Note.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {

// Makes what no operation makes: a variant of a kind that has no meaning.
struct QzVariantTestAccess {
  static void SetType(QzVariant& value, int type) { value.m_type = static_cast<ItemType>(type); }
};

}  // namespace QzXmlLib16

using QzXmlLib16::CBigInteger;
using QzXmlLib16::CBinaryData;
using QzXmlLib16::CDateTime;
using QzXmlLib16::CDateTimeSpan;
using QzXmlLib16::CDecimal;
using QzXmlLib16::CElementCol;
using QzXmlLib16::CQzException;
using QzXmlLib16::CQzInvalidValueException;
using QzXmlLib16::CWhitespaceUtils;
using QzXmlLib16::CXmlCollectionBase;
using QzXmlLib16::CXmlObjectBase;
using QzXmlLib16::ItemType;
using QzXmlLib16::QzVariant;
using QzXmlLib16::QzVariantTestAccess;

namespace {

constexpr auto kNone = CWhitespaceUtils::WhitespaceRule_None;
constexpr auto kCollapse = CWhitespaceUtils::WhitespaceRule_Collapse;

// One kind: its number, its name, a value set into a variant, and the text of that value.
struct Kind {
  int number;
  const char* name;
  std::function<void(QzVariant&)> set;
  std::string text;
  std::function<void(const QzVariant&)> get;
  const char* assertion;
};

// A date or a time of any type, from its text.
CDateTime MakeDate(const char* text) {
  CDateTime date;
  date.ParseXSDDate(text);
  return date;
}

CDateTime MakeTime(const char* text) {
  CDateTime time;
  time.ParseXSDTime(text);
  return time;
}

CDateTimeSpan MakeSpan(const char* text) {
  CDateTimeSpan span;
  span.ParseXSDDuration(text);
  return span;
}

const unsigned char kBytes[] = {0x4D, 0x61, 0x6E};

const std::vector<Kind>& GetKinds() {
  static const std::vector<Kind> s_kinds = {
      {1, "hexBinary", [](QzVariant& v) { v.SetHexBinary(CBinaryData(kBytes, 3)); }, "4D616E",
       [](const QzVariant& v) { EXPECT_EQ(CBinaryData("Man"), v.GetHexBinary()); },
       "m_type == ItemType_hexBinary"},
      {2, "base64Binary", [](QzVariant& v) { v.SetBase64Binary(CBinaryData(kBytes, 3)); }, "TWFu",
       [](const QzVariant& v) { EXPECT_EQ(CBinaryData("Man"), v.GetBase64Binary()); },
       "m_type == ItemType_base64Binary"},
      {3, "i1", [](QzVariant& v) { v.SetI1(static_cast<char>(-128)); }, "-128",
       [](const QzVariant& v) { EXPECT_EQ(static_cast<char>(-128), v.GetI1()); },
       "m_type == ItemType_i1"},
      {4, "i2", [](QzVariant& v) { v.SetI2(-32768); }, "-32768",
       [](const QzVariant& v) { EXPECT_EQ(-32768, v.GetI2()); }, "m_type == ItemType_i2"},
      {5, "i4", [](QzVariant& v) { v.SetI4(-2147483647 - 1); }, "-2147483648",
       [](const QzVariant& v) { EXPECT_EQ(-2147483647 - 1, v.GetI4()); }, "m_type == ItemType_i4"},
      {6, "i8", [](QzVariant& v) { v.SetI8(-9007199254740993); }, "-9007199254740993",
       [](const QzVariant& v) { EXPECT_EQ(-9007199254740993, v.GetI8()); },
       "m_type == ItemType_i8"},
      {7, "ui1", [](QzVariant& v) { v.SetUI1(255); }, "255",
       [](const QzVariant& v) { EXPECT_EQ(255, v.GetUI1()); }, "m_type == ItemType_ui1"},
      {8, "ui2", [](QzVariant& v) { v.SetUI2(65535); }, "65535",
       [](const QzVariant& v) { EXPECT_EQ(65535, v.GetUI2()); }, "m_type == ItemType_ui2"},
      {9, "ui4", [](QzVariant& v) { v.SetUI4(4294967295u); }, "4294967295",
       [](const QzVariant& v) { EXPECT_EQ(4294967295u, v.GetUI4()); }, "m_type == ItemType_ui4"},
      {10, "ui8", [](QzVariant& v) { v.SetUI8(18446744073709551615u); }, "18446744073709551615",
       [](const QzVariant& v) { EXPECT_EQ(18446744073709551615u, v.GetUI8()); },
       "m_type == ItemType_ui8"},
      {11, "r4", [](QzVariant& v) { v.SetR4(0.1f); }, "0.1",
       [](const QzVariant& v) { EXPECT_EQ(0.1f, v.GetR4()); }, "m_type == ItemType_r4"},
      {12, "r8", [](QzVariant& v) { v.SetR8(-1e20); }, "-1e+020",
       [](const QzVariant& v) { EXPECT_EQ(-1e20, v.GetR8()); }, "m_type == ItemType_r8"},
      {13, "duration", [](QzVariant& v) { v.SetDuration(MakeSpan("-P1DT2H")); }, "-P1DT2H",
       [](const QzVariant& v) { EXPECT_EQ("-P1DT2H", v.GetDuration().ToString()); },
       "m_type == ItemType_duration"},
      {14, "yearMonth", [](QzVariant& v) { v.SetYearMonth(MakeDate("2004-05")); }, "2004-05",
       [](const QzVariant& v) { EXPECT_EQ("2004-05", v.GetYearMonth().ToString()); },
       "m_type == ItemType_yearMonth"},
      {15, "monthDay", [](QzVariant& v) { v.SetMonthDay(MakeDate("--02-29Z")); }, "--02-29Z",
       [](const QzVariant& v) { EXPECT_EQ("--02-29Z", v.GetMonthDay().ToString()); },
       "m_type == ItemType_monthDay"},
      {16, "year", [](QzVariant& v) { v.SetYear(1999); }, "1999",
       [](const QzVariant& v) { EXPECT_EQ(1999, v.GetYear()); }, "m_type == ItemType_year"},
      {17, "month", [](QzVariant& v) { v.SetMonth(2); }, "--02",
       [](const QzVariant& v) { EXPECT_EQ(2, v.GetMonth()); }, "m_type == ItemType_month"},
      {18, "day", [](QzVariant& v) { v.SetDay(31); }, "---31",
       [](const QzVariant& v) { EXPECT_EQ(31, v.GetDay()); }, "m_type == ItemType_day"},
      {19, "date", [](QzVariant& v) { v.SetDate(MakeDate("-0044-03-15")); }, "-0044-03-15",
       [](const QzVariant& v) { EXPECT_EQ("-0044-03-15", v.GetDate().ToString()); },
       "m_type == ItemType_date"},
      {20, "datetime", [](QzVariant& v) { v.SetDateTime("2004-02-29T23:59:59.5+01:00"); },
       "2004-02-29T23:59:59.5+01:00",
       [](const QzVariant& v) {
         EXPECT_EQ("2004-02-29T23:59:59.5+01:00", v.GetDateTime().ToString());
       },
       "m_type == ItemType_datetime"},
      {21, "time", [](QzVariant& v) { v.SetTime(MakeTime("00:00:00")); }, "00:00:00",
       [](const QzVariant& v) { EXPECT_EQ("00:00:00", v.GetTime().ToString()); },
       "m_type == ItemType_time"},
      {22, "char", [](QzVariant& v) { v.SetChar('x'); }, "x",
       [](const QzVariant& v) { EXPECT_EQ('x', v.GetChar()); }, "m_type == ItemType_char"},
      {23, "string", [](QzVariant& v) { v.SetString("a text that is not short at all"); },
       "a text that is not short at all",
       [](const QzVariant& v) { EXPECT_EQ("a text that is not short at all", v.GetString()); },
       "m_type == ItemType_string && m_pString != 0"},
      {24, "boolean", [](QzVariant& v) { v.SetBoolean(true); }, "true",
       [](const QzVariant& v) { EXPECT_TRUE(v.GetBoolean()); }, "m_type == ItemType_boolean"},
      {25, "decimal", [](QzVariant& v) { v.SetDecimal("-12345678901234567890.05"); },
       "-12345678901234567890.05",
       [](const QzVariant& v) {
         EXPECT_EQ("-12345678901234567890.05", v.GetDecimal().ToString());
         EXPECT_EQ("-12345678901234567890.05", v.GetDecimalReference().ToString());
       },
       "m_type == ItemType_decimal && m_pDecimal != 0"},
      {26, "integer", [](QzVariant& v) { v.SetInteger("-123456789012345678901234567890"); },
       "-123456789012345678901234567890",
       [](const QzVariant& v) {
         EXPECT_EQ("-123456789012345678901234567890", v.GetInteger().ToString());
         EXPECT_EQ("-123456789012345678901234567890", v.GetIntegerReference().ToString());
       },
       "m_type == ItemType_integer && m_pBigInteger != 0"},
  };
  return s_kinds;
}

std::int32_t CountReferences(CXmlObjectBase& object) {
  object.AddRef();
  return object.Release();
}

CSmartPtr<CElementCol> MakeCollection() {
  return CSmartPtr<CElementCol>(new CElementCol("urn:notes", "##any", "urn:notes", 0, -1));
}

}  // namespace

// --- Holding values ---

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

// --- Nil and invalid ---

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

// --- Copying ---

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

// --- Objects ---

TEST(QzVariant, AnObjectIsHeldByOneReference) {
  bool deleted = false;
  auto* const note = new qztest::CNote(&deleted);
  {
    const CSmartPtr<CXmlObjectBase> holder(note);
    EXPECT_EQ(1, CountReferences(*note));
    QzVariant value;
    value.SetXmlObject(note);
    EXPECT_EQ(27, value.GetTypeAsEnum());
    EXPECT_EQ(2, CountReferences(*note));
    EXPECT_EQ(note, value.GetXmlObject());
    EXPECT_EQ(2, CountReferences(*note));
    {
      QzVariant copy;
      copy = value;
      EXPECT_EQ(3, CountReferences(*note));
      EXPECT_EQ(note, copy.GetXmlObject());
    }
    EXPECT_EQ(2, CountReferences(*note));
    {
      const QzVariant moved(std::move(value));
      EXPECT_EQ(2, CountReferences(*note));
    }
    EXPECT_EQ(1, CountReferences(*note));
    value.SetXmlObject(note);
    value.SetNil();
    EXPECT_EQ(1, CountReferences(*note));
    EXPECT_EQ(27, value.GetTypeAsEnum());
    EXPECT_EQ(nullptr, value.GetXmlObject());
    value.SetXmlObject(note);
    value.Clear();
    EXPECT_EQ(1, CountReferences(*note));
    EXPECT_FALSE(deleted);
  }
  EXPECT_TRUE(deleted);
}

TEST(QzVariant, TheLastVariantDeletesItsObject) {
  bool deleted = false;
  {
    QzVariant value;
    value.SetXmlObject(new qztest::CNote(&deleted));
    value.SetXmlObject(value.GetXmlObject());
    EXPECT_FALSE(deleted);
  }
  EXPECT_TRUE(deleted);
}

TEST(QzVariant, AnObjectSetAgainIsNotReleasedInBetween) {
  bool deleted = false;
  QzVariant value;
  auto* const note = new qztest::CNote(&deleted);
  value.SetXmlObject(note);
  value.SetXmlObject(note);
  EXPECT_FALSE(deleted);
  EXPECT_EQ(1, CountReferences(*note));
}

TEST(QzVariant, ACollectionCanBeReadAsItsObject) {
  const CSmartPtr<CElementCol> collection = MakeCollection();
  {
    QzVariant value;
    value.SetXmlCollection(collection);
    EXPECT_EQ(28, value.GetTypeAsEnum());
    EXPECT_EQ(2, CountReferences(*collection));
    EXPECT_EQ(static_cast<CXmlCollectionBase*>(collection), value.GetXmlCollection());
    EXPECT_EQ(static_cast<CXmlObjectBase*>(collection), value.GetXmlObject());
    const QzVariant copy(value);
    EXPECT_EQ(3, CountReferences(*collection));
    value.SetXmlCollection(collection);
    EXPECT_EQ(3, CountReferences(*collection));
  }
  EXPECT_EQ(1, CountReferences(*collection));
}

TEST(QzVariant, ANullObjectIsStoredWithoutACount) {
  QzVariant value;
  value.SetXmlObject(nullptr);
  EXPECT_EQ(27, value.GetTypeAsEnum());
  EXPECT_TRUE(value.IsValid());
  EXPECT_EQ(nullptr, value.GetXmlObject());
  const QzVariant copy(value);
  EXPECT_EQ(nullptr, copy.GetXmlObject());

  QzVariant collection;
  collection.SetXmlCollection(nullptr);
  EXPECT_EQ(28, collection.GetTypeAsEnum());
  EXPECT_EQ(nullptr, collection.GetXmlObject());
  EXPECT_QZ_ASSERT("m_type == ItemType_XmlCollection && m_pXmlCol != 0",
                   collection.GetXmlCollection());
  const QzVariant collectionCopy(collection);
  EXPECT_EQ(28, collectionCopy.GetTypeAsEnum());
}

TEST(QzVariant, AnObjectIsOnlyThereForItsKind) {
  QzVariant value;
  value.SetI4(1);
  EXPECT_QZ_ASSERT("m_type == ItemType_XmlObjectBase", value.GetXmlObject());
  EXPECT_QZ_ASSERT("m_type == ItemType_XmlCollection && m_pXmlCol != 0", value.GetXmlCollection());
  value.SetXmlObject(nullptr);
  EXPECT_QZ_ASSERT("m_type == ItemType_XmlCollection && m_pXmlCol != 0", value.GetXmlCollection());
}

// Carries a variant of its own.
class CCarrier : public qztest::CNote {
 public:
  explicit CCarrier(bool* deleted) : CNote(deleted) {}
  QzVariant carried;
};

TEST(QzVariant, TakesWhatItsOwnObjectCarries) {
  for (const bool isMoved : {false, true}) {
    bool deleted = false;
    QzVariant value;
    auto* const carrier = new CCarrier(&deleted);
    carrier->carried.SetString("a text that is not short at all");
    value.SetXmlObject(carrier);
    if (isMoved) {
      value = std::move(carrier->carried);
    } else {
      value = carrier->carried;
    }
    EXPECT_TRUE(deleted);
    EXPECT_EQ("a text that is not short at all", value.GetString());
  }
}

// --- Names of kinds ---

TEST(QzVariant, AKindWithoutANameThrows) {
  QzVariant value;
  EXPECT_QZ_THROW(CQzException, "Invalid Type 0", value.GetType());
  value.SetXmlObject(nullptr);
  EXPECT_QZ_THROW(CQzException, "Invalid Type 27", value.GetType());
  value.SetXmlCollection(nullptr);
  EXPECT_QZ_THROW(CQzException, "Invalid Type 28", value.GetType());
  QzVariantTestAccess::SetType(value, 29);
  EXPECT_QZ_THROW(CQzException, "Invalid Type 29", value.GetType());
}

// --- Text ---

TEST(QzVariant, AKindWithoutATextThrows) {
  QzVariant value;
  EXPECT_QZ_THROW(CQzException, "Invalid Type 0 to convert to string", value.ToString(nullptr));
  value.SetXmlObject(nullptr);
  EXPECT_QZ_THROW(CQzException, "Invalid Type 27 to convert to string", value.ToString(nullptr));
  value.SetXmlCollection(nullptr);
  EXPECT_QZ_THROW(CQzException, "Invalid Type 28 to convert to string", value.ToString(nullptr));
  EXPECT_EQ(28, value.GetTypeAsEnum());
}

TEST(QzVariant, AFormatServesRealsAndDecimalsAlone) {
  for (const Kind& kind : GetKinds()) {
    QzVariant value;
    kind.set(value);
    if (kind.number == 11 || kind.number == 12 || kind.number == 25) continue;
    EXPECT_EQ(kind.text, value.ToString("%.2f")) << kind.name;
  }
  QzVariant real;
  real.SetR8(1.0 / 3);
  EXPECT_EQ("0.33", real.ToString("%.2f"));
  EXPECT_EQ("0.3333333333333333", real.ToString(nullptr));
  real.SetR4(2.0f / 3);
  EXPECT_EQ("0.67", real.ToString("%.2f"));
  EXPECT_EQ("0.6666667", real.ToString(""));
  QzVariant decimal;
  decimal.SetDecimal("12.65");
  EXPECT_EQ("12.7", decimal.ToString("1"));
  EXPECT_EQ("12.65", decimal.ToString(""));
  EXPECT_EQ("13.", decimal.ToString("%.2f"));
}

TEST(QzVariant, ReadsTheTextOfEveryKindBack) {
  for (const Kind& kind : GetKinds()) {
    QzVariant value;
    value.SetString("before");
    value.FromString(kind.text, static_cast<ItemType>(kind.number), kNone);
    EXPECT_EQ(kind.number, value.GetTypeAsEnum()) << kind.name;
    kind.get(value);
  }
}

TEST(QzVariant, ReadsBehindTheRule) {
  QzVariant value;
  value.FromString(" 1\n", QzXmlLib16::ItemType_i4, kCollapse);
  EXPECT_EQ(1, value.GetI4());
  value.FromString(" a\r\n b ", QzXmlLib16::ItemType_string, kCollapse);
  EXPECT_EQ("a b", value.GetString());
  value.FromString(" a\r\n b ", QzXmlLib16::ItemType_string, kNone);
  EXPECT_EQ(" a\r\n b ", value.GetString());
  value.FromString("NaN", QzXmlLib16::ItemType_r8, kNone);
  EXPECT_TRUE(std::isnan(value.GetR8()));
}

TEST(QzVariant, ReadsIntoANilVariant) {
  QzVariant value;
  value.SetI4(1);
  value.SetNil();
  value.FromString("x", QzXmlLib16::ItemType_string, kNone);
  EXPECT_FALSE(value.IsNil());
  EXPECT_EQ("x", value.GetString());
}

TEST(QzVariant, ATextThatDoesNotParseLeavesTheValue) {
  struct Case {
    ItemType type;
    const char* text;
    const char* message;
  };
  const Case cases[] = {
      {QzXmlLib16::ItemType_i1, "128", "The value [128] is to large to fit in a i1"},
      {QzXmlLib16::ItemType_i2, "x", "The value [x] can not be converted to a i4"},
      {QzXmlLib16::ItemType_i4, "x", "The value [x] can not be converted to a i4"},
      {QzXmlLib16::ItemType_i8, "x", "The value [x] can not be converted to a i8"},
      {QzXmlLib16::ItemType_ui1, "256", "The value [256] is to large to fit in a ui1"},
      {QzXmlLib16::ItemType_ui2, "x", "The value [x] can not be converted to a ui4"},
      {QzXmlLib16::ItemType_ui4, "x", "The value [x] can not be converted to a ui4"},
      {QzXmlLib16::ItemType_ui8, "x", "The value [x] can not be converted to a ui8"},
      {QzXmlLib16::ItemType_r4, "x", "The value [x] can not be converted to a r4"},
      {QzXmlLib16::ItemType_r8, "x", "The value [x] can not be converted to a r8"},
      {QzXmlLib16::ItemType_duration, "P",
       "Invalid XSD Duration [P] expected [-]P[nY][nM][nD][T[nH][nM][nS.ff]]"},
      {QzXmlLib16::ItemType_yearMonth, "x",
       "Invalid XSD Date [x] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {QzXmlLib16::ItemType_monthDay, "--02-30", "Invalid Day [30] (1 <= day <= days in month)"},
      {QzXmlLib16::ItemType_year, "", "Invalid Date (Empty String)"},
      {QzXmlLib16::ItemType_month, "--00", "Invalid Month [0] (1 <= month <= 12)"},
      {QzXmlLib16::ItemType_day, "1", "Invalid XSD Date [1] expected CCYY-MM-DD[Z|[+|-]hh:mm]"},
      {QzXmlLib16::ItemType_date, "2003-02-29", "Invalid Day [29] (1 <= day <= days in month"},
      {QzXmlLib16::ItemType_datetime, "x", "Invalid XSD DateTime [x]."},
      {QzXmlLib16::ItemType_time, "x", "Invalid XSD Time [x] expected hh:mm:ss[.ff]"},
      {QzXmlLib16::ItemType_decimal, "1.x",
       "The string representing a Decimal, contained an invalid char at position 2 [1.x]."},
      {QzXmlLib16::ItemType_integer, "x",
       "The string representing a Decimal, contained an invalid char at position 0 [x]."},
      {QzXmlLib16::ItemType_char, "ab",
       "The value [ab] can not be a char as it is either empty of greater than 1 char long"},
      {QzXmlLib16::ItemType_boolean, "2",
       "A Boolean Value read from an XML document was invalid [2]. Valid values are 'true', "
       "'false', '1', or '0'"},
  };
  for (const Case& c : cases) {
    QzVariant value;
    value.SetString("before");
    EXPECT_QZ_THROW(CQzInvalidValueException, c.message, value.FromString(c.text, c.type, kNone));
    EXPECT_EQ("before", value.GetString());
  }
  QzVariant value;
  value.SetString("before");
  EXPECT_QZ_THROW(CQzException, "Invalid length in hex string",
                  value.FromString("ABC", QzXmlLib16::ItemType_hexBinary, kNone));
  EXPECT_EQ("before", value.GetString());
  EXPECT_QZ_THROW(QzXmlLib16::CQzInvalidStateException,
                  "Failed to GetYear. Invalid Date Type: gMonth.",
                  value.FromString("--05", QzXmlLib16::ItemType_year, kNone));
  EXPECT_EQ("before", value.GetString());
  value.SetNil();
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [x] can not be converted to a i4",
                  value.FromString("x", QzXmlLib16::ItemType_i4, kNone));
  EXPECT_TRUE(value.IsNil());
}

TEST(QzVariant, AnUnknownTypeIsToldByTheKindHeld) {
  for (const int type : {0, 27, 28, 29, -1}) {
    QzVariant value;
    EXPECT_QZ_THROW(CQzException, "Invalid Type 0 to convert to string",
                    value.FromString("1", static_cast<ItemType>(type), kNone));
    value.SetI4(7);
    EXPECT_QZ_THROW(CQzException, "Invalid Type 5 to convert to string",
                    value.FromString("1", static_cast<ItemType>(type), kNone));
    EXPECT_EQ(7, value.GetI4());
    value.SetXmlObject(nullptr);
    EXPECT_QZ_THROW(CQzException, "Invalid Type 27 to convert to string",
                    value.FromString("1", static_cast<ItemType>(type), kNone));
  }
}

TEST(QzVariant, IsTheSizeOfItsFieldsAndADestructor) {
  EXPECT_EQ(3 * sizeof(void*), sizeof(QzVariant));
  EXPECT_TRUE(std::has_virtual_destructor_v<QzVariant>);
}

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
