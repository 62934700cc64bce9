#include "qzxml/serialization/ParentElementInfo.h"
#include "tests/support/QzTest.h"

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;

namespace {

CParentElementInfo Money() {
  return CParentElementInfo(XmlElementGroupType_Choice, XmlElementType_PseudoElement, "Money",
                            "urn:money", false, true, 7, ItemType_r8, "%.2f", true);
}

void ExpectMoney(const CParentElementInfo& info) {
  EXPECT_EQ(XmlElementGroupType_Choice, info.GetElementGroupType());
  EXPECT_EQ(XmlElementType_PseudoElement, info.GetElementType());
  EXPECT_EQ("Money", info.GetElementName());
  EXPECT_EQ("urn:money", info.GetElementNamespace());
  EXPECT_FALSE(info.GetFromXmlFailIfAttributeUnknown());
  EXPECT_TRUE(info.GetHasBaseClasses());
  EXPECT_EQ(7, info.GetPrimitiveValuePropertyIndex());
  EXPECT_EQ(ItemType_r8, info.GetPrimitiveDataType());
  EXPECT_EQ("%.2f", info.GetPrimitiveFormatOverride());
  EXPECT_TRUE(info.GetOutputPrimitiveClassAsTextProperty());
}

}  // namespace

TEST(ParentElementInfo, NumbersOfTheEnumerationsAreFixed) {
  EXPECT_EQ(0, XmlElementGroupType_Sequence);
  EXPECT_EQ(1, XmlElementGroupType_Choice);
  EXPECT_EQ(2, XmlElementGroupType_All);
  EXPECT_EQ(0, XmlElementType_Element);
  EXPECT_EQ(1, XmlElementType_PseudoElement);
}

TEST(ParentElementInfo, GivesBackWhatItWasMadeWith) { ExpectMoney(Money()); }

TEST(ParentElementInfo, TakesANullFormatForTheEmptyText) {
  const CParentElementInfo info(XmlElementGroupType_Sequence, XmlElementType_Element, "a", "", true,
                                false, -1, ItemType_None, nullptr, false);
  EXPECT_EQ("", info.GetPrimitiveFormatOverride());
  EXPECT_EQ(-1, info.GetPrimitiveValuePropertyIndex());
  EXPECT_EQ(ItemType_None, info.GetPrimitiveDataType());
}

TEST(ParentElementInfo, CopiesItsTexts) {
  std::string name = "Order";
  const CParentElementInfo info(XmlElementGroupType_All, XmlElementType_Element, name.c_str(), "",
                                true, false, -1, ItemType_None, nullptr, false);
  name = "Other";
  EXPECT_EQ("Order", info.GetElementName());
}

TEST(ParentElementInfo, CopyAndAssignmentTakeOverEveryField) {
  const CParentElementInfo money = Money();
  const CParentElementInfo copy(money);
  ExpectMoney(copy);
  CParentElementInfo assigned(XmlElementGroupType_Sequence, XmlElementType_Element, "a", "", true,
                              false, -1, ItemType_None, nullptr, false);
  assigned = money;
  ExpectMoney(assigned);
}
