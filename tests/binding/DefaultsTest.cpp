#include "qzxml/QzXml.h"
#include "tests/support/QzTest.h"

// Default and fixed values of what has no setter: the text of an element, items of collections.
using namespace QzXmlLib16;

namespace {

enum Unit : int { Unit_kg, Unit_g };
constexpr const char* kUnitTexts[] = {"kg", "g"};
const CEnumerationInfo kUnitInfo(kUnitTexts, CWhitespaceUtils::WhitespaceRule_Collapse);
const char* UnitToString(int value) { return kUnitInfo.ToText(value); }
int StringToUnit(const char* text) { return kUnitInfo.FromText(text); }
const CSimpleTypeInfo kUnit(&UnitToString, &StringToUnit);

class CParcel : public CBoundClass {
 public:
  CParcel() : CBoundClass(s_binding) {}

  CValueCol<ItemType_i4>& GetSizes() const {
    return static_cast<CValueCol<ItemType_i4>&>(GetCollection(Property_Sizes, m_sizes));
  }
  CEnumCol<Unit>& GetUnits() const {
    return static_cast<CEnumCol<Unit>&>(GetCollection(Property_Units, m_units));
  }
  CValueCol<ItemType_i4>& GetFixed() const {
    return static_cast<CValueCol<ItemType_i4>&>(GetCollection(Property_Fixed, m_fixed));
  }
  CEnumCol<Unit>& GetFixedUnits() const {
    return static_cast<CEnumCol<Unit>&>(GetCollection(Property_FixedUnits, m_fixedUnits));
  }

 private:
  enum Property : int { Property_Sizes, Property_Units, Property_Fixed, Property_FixedUnits };
  static const CMember s_members[];
  static CClassBinding s_binding;
  CCollectionHandle m_sizes, m_units, m_fixed, m_fixedUnits;
};

const CMember CParcel::s_members[] = {
    ValueElement("size", "", Repeated(), &CParcel::m_sizes, kXsdInt, &NewValueCol<ItemType_i4>)
        .WithDefault("5"),
    ValueElement("unit", "", Repeated(), &CParcel::m_units, kUnit, &NewEnumCol<Unit>)
        .WithDefault("g"),
    ValueElement("fixed", "", Repeated(), &CParcel::m_fixed, kXsdInt, &NewValueCol<ItemType_i4>)
        .WithFixed("7"),
    ValueElement("fixedUnit", "", Repeated(), &CParcel::m_fixedUnits, kUnit, &NewEnumCol<Unit>)
        .WithFixed("g"),
};

CClassBinding CParcel::s_binding{{"Parcel", "", "parcel", &NewObject<CParcel>}, s_members};

class CCount : public CBoundClass {
 public:
  CCount() : CBoundClass(s_binding) {}
  const std::optional<std::int32_t>& GetValue() const { return m_value; }

 private:
  static const CMember s_members[];
  static CClassBinding s_binding;
  std::optional<std::int32_t> m_value;
};

const CMember CCount::s_members[] = {Text(&CCount::m_value, kXsdInt).WithDefault("3")};

CClassBinding CCount::s_binding{{"Count", "", "count", &NewObject<CCount>}, s_members};

}  // namespace

TEST(Defaults, AnEmptyElementTakesThatOfItsText) {
  CSmartPtr<CCount> count(new CCount);
  count->FromXml("<count/>");
  EXPECT_EQ(3, count->GetValue().value_or(0));
  count->FromXml("<count>8</count>");
  EXPECT_EQ(8, count->GetValue().value_or(0));
}

TEST(Defaults, AnEmptyItemTakesThatOfItsCollection) {
  CSmartPtr<CParcel> parcel(new CParcel);
  parcel->FromXml("<parcel><size/><size>6</size><unit/><unit>kg</unit><fixed/></parcel>");
  ASSERT_EQ(2, parcel->GetSizes().size());
  EXPECT_EQ(5, parcel->GetSizes()[0]);
  EXPECT_EQ(6, parcel->GetSizes()[1]);
  ASSERT_EQ(2, parcel->GetUnits().size());
  EXPECT_EQ(Unit_g, parcel->GetUnits()[0]);
  EXPECT_EQ(Unit_kg, parcel->GetUnits()[1]);
  EXPECT_EQ(7, parcel->GetFixed()[0]);
}

TEST(Defaults, ACollectionOfAFixedValueRefusesAnyOther) {
  CSmartPtr<CParcel> parcel(new CParcel);
  parcel->GetFixed().Add(7);
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [8] of fixed is not the fixed value [7]",
                  parcel->GetFixed().Add(8));
  parcel->GetFixedUnits().Add(Unit_g);
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "The value [kg] of fixedUnit is not the fixed value [g]",
                  parcel->GetFixedUnits().Add(Unit_kg));
  EXPECT_EQ(1, parcel->GetFixed().size());
  EXPECT_EQ(1, parcel->GetFixedUnits().size());
}
