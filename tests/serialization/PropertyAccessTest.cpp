#include "qzxml/collections/Element.h"
#include "qzxml/collections/ElementCol.h"
#include "qzxml/serialization/PropertyAccess.h"
#include "qzxml/values/Conversions.h"
#include "tests/serialization/Note.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

constexpr auto kNone = CWhitespaceUtils::WhitespaceRule_None;
constexpr char kLongText[] = "a text that is too long to be kept in place";

// Out of one property into the variant, and from there into another.
template <ItemType kind, typename Value>
void ExpectPassage(const Value& value, const char* name) {
  SCOPED_TRACE(name);
  std::optional<Value> from = value;
  QzVariant variant;
  AccessValue<kind>(true, variant, from);
  EXPECT_EQ(name, variant.GetType());
  EXPECT_EQ(kind, variant.GetTypeAsEnum());
  EXPECT_EQ(value, from);

  std::optional<Value> to;
  AccessValue<kind>(false, variant, to);
  EXPECT_EQ(value, to);

  from.reset();
  AccessValue<kind>(true, variant, from);
  EXPECT_FALSE(variant.IsValid());
}

}  // namespace

TEST(PropertyAccess, AValuePassesBothWaysAndAnAbsentOneIsInvalid) {
  ExpectPassage<ItemType_hexBinary>(CBinaryData("Man"), "hexBinary");
  ExpectPassage<ItemType_base64Binary>(CBinaryData("Man"), "base64Binary");
  ExpectPassage<ItemType_i1>(static_cast<char>(-128), "i1");
  ExpectPassage<ItemType_i2>(static_cast<std::int16_t>(-32768), "i2");
  ExpectPassage<ItemType_i4>(std::int32_t{-2147483647}, "i4");
  ExpectPassage<ItemType_i8>(std::int64_t{-9223372036854775807}, "i8");
  ExpectPassage<ItemType_ui1>(static_cast<std::uint8_t>(255), "ui1");
  ExpectPassage<ItemType_ui2>(static_cast<std::uint16_t>(65535), "ui2");
  ExpectPassage<ItemType_ui4>(std::uint32_t{4294967295}, "ui4");
  ExpectPassage<ItemType_ui8>(std::uint64_t{18446744073709551615u}, "ui8");
  ExpectPassage<ItemType_r4>(0.1f, "r4");
  ExpectPassage<ItemType_r8>(-1e300, "r8");
  ExpectPassage<ItemType_duration>(CDateTimeSpan(1, 2, 3, 4, 5, 6), "duration");
  ExpectPassage<ItemType_yearMonth>(CConversions::yearMonthFromString("2004-05", kNone),
                                    "yearMonth");
  ExpectPassage<ItemType_monthDay>(CConversions::monthDayFromString("--05-06", kNone), "monthDay");
  ExpectPassage<ItemType_year>(static_cast<std::uint16_t>(65535), "year");
  ExpectPassage<ItemType_month>(static_cast<std::uint8_t>(12), "month");
  ExpectPassage<ItemType_day>(static_cast<std::uint8_t>(31), "day");
  ExpectPassage<ItemType_date>(CConversions::dateFromString("2004-05-06", kNone), "date");
  ExpectPassage<ItemType_datetime>(CDateTime("2004-05-06T07:08:09Z"), "datetime");
  ExpectPassage<ItemType_time>(CConversions::timeFromString("07:08:09.5", kNone), "time");
  ExpectPassage<ItemType_char>('x', "char");
  ExpectPassage<ItemType_string>(std::string(kLongText), "string");
  ExpectPassage<ItemType_string>(std::string(), "string");
  ExpectPassage<ItemType_boolean>(true, "boolean");
  ExpectPassage<ItemType_boolean>(false, "boolean");
  ExpectPassage<ItemType_decimal>(CDecimal("-12345678901234567890.05"), "decimal");
  ExpectPassage<ItemType_integer>(CBigInteger("-12345678901234567890"), "integer");
}

TEST(PropertyAccess, NumbersOfAnySizeAndDatesPassWithoutACopy) {
  std::optional<CDecimal> decimal = CDecimal("1.5");
  QzVariant value;
  AccessValue<ItemType_decimal>(true, value, decimal);
  EXPECT_EQ(&*decimal, &value.GetDecimalReference());
  AccessValue<ItemType_decimal>(false, value, decimal);  // back to its own property
  EXPECT_EQ("1.5", decimal->ToString());

  std::optional<CBigInteger> integer = CBigInteger("7");
  AccessValue<ItemType_integer>(true, value, integer);
  EXPECT_EQ(&*integer, &value.GetIntegerReference());
  AccessValue<ItemType_integer>(false, value, integer);
  EXPECT_EQ("7", integer->ToString());

  std::optional<CDateTime> date = CConversions::dateFromString("2004-05-06", kNone);
  AccessValue<ItemType_date>(true, value, date);
  AccessValue<ItemType_date>(false, value, date);
  EXPECT_EQ("2004-05-06", date->ToString());

  std::optional<CDateTimeSpan> span = CDateTimeSpan(1, 2, 3, 4, 5, 6);
  AccessValue<ItemType_duration>(true, value, span);
  EXPECT_EQ("P1Y2M3DT4H5M6S", value.ToString(nullptr));
  AccessValue<ItemType_duration>(false, value, span);
  EXPECT_EQ("P1Y2M3DT4H5M6S", span->ToString());
}

TEST(PropertyAccess, ATextPassesWithoutACopy) {
  std::optional<std::string> property = kLongText;
  QzVariant value;
  AccessValue<ItemType_string>(true, value, property);
  EXPECT_EQ(&*property, &value.GetStringReference());

  QzVariant own;
  own.SetString(kLongText);
  const char* const place = own.GetStringReference().data();
  AccessValue<ItemType_string>(false, own, property);
  EXPECT_EQ(place, property->data());
}

TEST(PropertyAccess, ATextMayComeBackToItsOwnProperty) {
  std::optional<std::string> property = kLongText;
  QzVariant value;
  AccessValue<ItemType_string>(true, value, property);
  AccessValue<ItemType_string>(false, value, property);
  EXPECT_EQ(kLongText, property);
}

enum class Colour { Red, Blue = 7 };

TEST(PropertyAccess, AnEnumerationTravelsAsANumber) {
  std::optional<Colour> property = Colour::Blue;
  QzVariant value;
  AccessEnum(true, value, property);
  EXPECT_EQ(ItemType_i4, value.GetTypeAsEnum());
  EXPECT_EQ(7, value.GetI4());
  value.SetI4(0);
  AccessEnum(false, value, property);
  EXPECT_EQ(Colour::Red, property);
  property.reset();
  AccessEnum(true, value, property);
  EXPECT_FALSE(value.IsValid());
}

TEST(PropertyAccess, AnObjectIsHeldByBoth) {
  CSmartPtr<qztest::CNote> property(new qztest::CNote);
  QzVariant value;
  AccessObject(true, value, property);
  EXPECT_EQ(ItemType_XmlObjectBase, value.GetTypeAsEnum());
  EXPECT_EQ(property, value.GetXmlObject());

  CSmartPtr<qztest::CNote> other;
  AccessObject(false, value, other);
  EXPECT_EQ(property, other);
}

TEST(PropertyAccess, NoObjectAndAnObjectOfAnotherClassAreNull) {
  CSmartPtr<qztest::CNote> property;
  QzVariant value;
  AccessObject(true, value, property);
  EXPECT_EQ(ItemType_XmlObjectBase, value.GetTypeAsEnum());
  EXPECT_EQ(nullptr, value.GetXmlObject());

  property = CSmartPtr<qztest::CNote>(new qztest::CNote);
  AccessObject(false, value, property);
  EXPECT_EQ(nullptr, property);

  property = CSmartPtr<qztest::CNote>(new qztest::CNote);
  value.SetXmlObject(new CElement("any"));
  AccessObject(false, value, property);
  EXPECT_EQ(nullptr, property);
}

TEST(PropertyAccess, ACollectionIsHandedOutAndNeverReplaced) {
  const CSmartPtr<CElementCol> property(new CElementCol("", "##any", "", 0, -1));
  QzVariant value;
  AccessCollection(true, value, property);
  EXPECT_EQ(ItemType_XmlCollection, value.GetTypeAsEnum());
  EXPECT_EQ(static_cast<CXmlCollectionBase*>(property), value.GetXmlCollection());

  value.SetXmlCollection(new CElementCol("", "##any", "", 0, -1));
  AccessCollection(false, value, property);
  EXPECT_NE(static_cast<CXmlCollectionBase*>(property), value.GetXmlCollection());
}

}  // namespace QzXmlLib16
