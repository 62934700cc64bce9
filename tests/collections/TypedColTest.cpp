#include <map>
#include <type_traits>
#include <vector>

#include "tests/collections/TypedColKinds.h"
#include "tests/support/LiveCounts.h"
#include "tests/support/QzTest.h"

// What holds for the collections of every kind: how they are made, and their values.
namespace qztest {
namespace {

template <typename Kind>
class TypedCol : public TypedColOf<Kind> {};
TYPED_TEST_SUITE(TypedCol, Kinds, KindName);

TYPED_TEST(TypedCol, KeepsWhatItWasMadeWith) {
  ColOptions o;
  o.name = "item";
  o.uri = "urn:items";
  o.minOccurs = 1;
  o.maxOccurs = 4;
  o.pattern = "[a-z]+";
  o.minLength = 2;
  o.maxLength = 8;
  o.minInclusive = "b";
  o.maxInclusive = "y";
  o.minExclusive = "a";
  o.maxExclusive = "z";
  o.length = 5;
  o.totalDigits = 3;
  o.fractionDigits = 1;
  o.rule = CWhitespaceUtils::WhitespaceRule_Replace;
  o.format = "%.2f";
  const typename TestFixture::Col col(o);
  EXPECT_EQ(0, col.GetCount());
  EXPECT_EQ(TypeParam::kType, col.GetItemType());
  EXPECT_EQ("item", col.GetElementName());
  EXPECT_EQ("urn:items", col.GetNamespace());
  EXPECT_EQ(1, col.GetMinOccurs());
  EXPECT_EQ(4, col.GetMaxOccurs());
  EXPECT_EQ("%.2f", col.GetFormat());
  EXPECT_EQ(CWhitespaceUtils::WhitespaceRule_Replace, col.GetWhitespaceRule());
  const CPrimitiveRestrictions& r = col.GetRestrictions();
  EXPECT_EQ("[a-z]+", r.GetPattern());
  EXPECT_EQ(2, r.GetMinLength());
  EXPECT_EQ(8, r.GetMaxLength());
  EXPECT_EQ("b", r.GetMinInclusive());
  EXPECT_EQ("y", r.GetMaxInclusive());
  EXPECT_EQ("a", r.GetMinExclusive());
  EXPECT_EQ("z", r.GetMaxExclusive());
  EXPECT_EQ(5, r.GetLength());
  EXPECT_EQ(3, r.GetTotalDigits());
  EXPECT_EQ(1, r.GetFractionDigits());
}

TYPED_TEST(TypedCol, TakesNullTextsAsEmpty) {
  ColOptions o;
  o.name = nullptr;
  o.uri = nullptr;
  const typename TestFixture::Col col(o);
  EXPECT_EQ("", col.GetElementName());
  EXPECT_EQ("", col.GetNamespace());
  EXPECT_EQ("", col.GetFormat());
  EXPECT_FALSE(col.HasFacets());
}

TYPED_TEST(TypedCol, IsAnObjectThatHandlesHold) {
  const CSmartPtr<typename TypeParam::Col> col(new typename TestFixture::Col);
  EXPECT_EQ(col, col->GetBase());
  EXPECT_QZ_THROW(CQzException,
                  "CXmlCollectionBase::GetTargetNamespace Should not be used from within a "
                  "Collection (program logic error)",
                  col->GetTargetNamespace());
}

TYPED_TEST(TypedCol, IsCountedUnderItsOwnName) {
  const std::map<std::string, std::int32_t> before = LiveCounts();
  {
    const typename TestFixture::Col first;
    const typename TestFixture::Col second;
    std::map<std::string, std::int32_t> with = before;
    with[TypeParam::kName] += 2;
    EXPECT_EQ(with, LiveCounts());
  }
  EXPECT_EQ(before, LiveCounts());
}

TYPED_TEST(TypedCol, HasTheBasesOfItsBranch) {
  using OfKind = typename TypeParam::Col;
  EXPECT_TRUE((std::is_convertible_v<OfKind*, CXmlTypeCollection*>));
  EXPECT_TRUE((std::is_base_of_v<CInstanceMonitor, OfKind>));
  EXPECT_FALSE((std::is_convertible_v<OfKind*, CInstanceMonitor*>));
  EXPECT_EQ(TypeParam::kIsDate, (std::is_convertible_v<OfKind*, CdatetimeBaseCol*>));
}

// --- Values

// A class that has operations of the same names: those of dates are virtual, the others are not.
template <typename Kind>
class CSameNames : public CMade<typename Kind::Col> {
 public:
  using Value = typename Kind::Value;
  void Add(const Value& value) {
    ++calls;
    CMade<typename Kind::Col>::Add(value);
  }
  void AddAt(int index, const Value& value) {
    ++calls;
    CMade<typename Kind::Col>::AddAt(index, value);
  }
  Value Item(int index) const {
    ++calls;
    return CMade<typename Kind::Col>::Item(index);
  }
  mutable int calls = 0;
};

TYPED_TEST(TypedCol, AddsAndGivesByVirtualCallsInTheBranchOfDatesAlone) {
  CSameNames<TypeParam> col;
  typename TypeParam::Col& known = col;
  known.Add(this->value(0));
  EXPECT_EQ(TypeParam::kIsDate ? 2 : 0, col.calls);  // Add and AddAt
  known.AddAt(0, this->value(1));
  EXPECT_EQ(TypeParam::kIsDate ? 3 : 0, col.calls);
  EXPECT_EQ(this->text(1), this->TextOf(known.Item(0)));
  EXPECT_EQ(TypeParam::kIsDate ? 4 : 0, col.calls);
}

TYPED_TEST(TypedCol, AppendsInsertsAndGivesBack) {
  typename TestFixture::Col col;
  this->Fill(col, "01");
  EXPECT_EQ(2, col.GetCount());
  EXPECT_EQ(this->TextsOf("01"), this->Texts(col));
  col.AddAt(0, this->value(2));
  col.AddAt(3, this->value(1));
  col.AddAt(2, this->value(2));
  EXPECT_EQ(this->TextsOf("20211"), this->Texts(col));
}

TYPED_TEST(TypedCol, IsWalkedFromTheFirstValueToTheLast) {
  typename TestFixture::Col col;
  EXPECT_TRUE(col.begin() == col.end());
  this->Fill(col, "210");
  Lines texts;
  for (const typename TestFixture::Value& value : col) texts.push_back(this->TextOf(value));
  EXPECT_EQ(this->TextsOf("210"), texts);
  const typename TestFixture::Col& unchanged = col;
  EXPECT_EQ(3, unchanged.end() - unchanged.begin());
  *col.begin() = this->value(1);
  EXPECT_EQ(this->TextsOf("110"), this->Texts(col));
}

TYPED_TEST(TypedCol, RemovesAnyOne) {
  typename TestFixture::Col col;
  this->Fill(col, "01210");
  col.Remove(1);
  EXPECT_EQ(this->TextsOf("0210"), this->Texts(col));
  col.Remove(3);
  EXPECT_EQ(this->TextsOf("021"), this->Texts(col));
  col.Remove(0);
  EXPECT_EQ(this->TextsOf("21"), this->Texts(col));
  EXPECT_EQ(2, col.end() - col.begin());
  col.AddAt(0, this->value(1));
  EXPECT_EQ(this->TextsOf("121"), this->Texts(col));
  col.Remove(0);
  col.Remove(0);
  col.Remove(0);
  EXPECT_EQ(0, col.GetCount());
  EXPECT_TRUE(col.begin() == col.end());
  col.Add(this->value(2));
  EXPECT_EQ(this->TextsOf("2"), this->Texts(col));
}

TYPED_TEST(TypedCol, TakesAValueOfItsOwn) {
  typename TestFixture::Col col;
  this->Fill(col, "012");
  CValueListener<TypeParam> listener(col);
  col.AddAt(0, *(col.begin() + 2));
  col.Add(*col.begin());
  EXPECT_EQ(this->TextsOf("20122"), this->Texts(col));
  EXPECT_EQ("added " + this->text(2) + ", 4", listener.log[1]);
  EXPECT_EQ("added " + this->text(2) + ", 5", listener.log[4]);
}

}  // namespace
}  // namespace qztest
