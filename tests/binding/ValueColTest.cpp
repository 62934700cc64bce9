// A collection of values holds each against the simple type of its member, whichever of the names
// that it has it is given by.
#include <gtest/gtest.h>

#include <string>

#include "qzxml/binding/BoundClass.h"
#include "qzxml/binding/SimpleTypeInfo.h"
#include "qzxml/binding/TextRules.h"
#include "qzxml/binding/ValueCol.h"
#include "qzxml/runtime/QzException.h"
#include "tests/support/QzTest.h"

using namespace QzXmlLib16;

namespace {

constexpr auto kColCollapse = CWhitespaceUtils::WhitespaceRule_Collapse;

class CHolder : public CBoundClass {
 public:
  CCollectionHandle m_items;
};

const CSimpleTypeInfo& RecentDate() {
  static const CTextRules rules = CTextRules(XsdType_date).MinInclusive("2000-01-01");
  static const CSimpleTypeInfo type(ItemType_date, kColCollapse, rules);
  return type;
}

const CMember& Days() {
  static const CMember member = ValueElement("day", "urn:a", Repeated(), &CHolder::m_items,
                                             RecentDate(), &NewValueCol<ItemType_date>);
  return member;
}

CDateTime Day(short year) { return CDateTime(year, 5, 6); }

TEST(ValueCol, HoldsDatesAgainstTheirTypeByTheNameOfAnyBase) {
  CValueCol<ItemType_date> days(Days());
  CdateCol& dates = days;
  CdatetimeBaseCol& any = days;
  days.Add(Day(2001));
  dates.Add(Day(2002));
  any.Add(Day(2003));
  any.AddAt(0, Day(2000));
  ASSERT_EQ(4, days.GetCount());
  EXPECT_EQ(Day(2000), days.Item(0));
  EXPECT_EQ(Day(2003), days.Item(3));

  const std::string refused = "Invalid Value for day [1999-05-06].";
  EXPECT_QZ_THROW(CQzException, refused, days.Add(Day(1999)));
  EXPECT_QZ_THROW(CQzException, refused, days.AddAt(0, Day(1999)));
  EXPECT_QZ_THROW(CQzException, refused, dates.Add(Day(1999)));
  EXPECT_QZ_THROW(CQzException, refused, dates.AddAt(0, Day(1999)));
  EXPECT_QZ_THROW(CQzException, refused, any.Add(Day(1999)));
  EXPECT_QZ_THROW(CQzException, refused, any.AddAt(0, Day(1999)));
  EXPECT_EQ(4, days.GetCount());
}

}  // namespace
