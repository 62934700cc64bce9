#include <map>
#include <vector>

#include "tests/collections/AnyCol.h"
#include "tests/support/LiveCounts.h"
#include "tests/support/QzTest.h"

// What holds for the collections of every kind: how they are made, and their values.
namespace qztest {
namespace {

class TypedCol : public OfEveryKind {};
INSTANTIATE_TEST_SUITE_P(Kinds, TypedCol, testing::ValuesIn(AllKinds()), &NameOfKind);

TEST_P(TypedCol, KeepsWhatItWasMadeWith) {
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
  const auto col = kind().Make(o);
  EXPECT_EQ(0, col->GetCount());
  EXPECT_EQ(kind().type, col->GetItemType());
  EXPECT_EQ("item", col->GetElementName());
  EXPECT_EQ("urn:items", col->base().GetNamespace());
  EXPECT_EQ(1, col->base().GetMinOccurs());
  EXPECT_EQ(4, col->base().GetMaxOccurs());
  EXPECT_EQ("%.2f", col->GetFormat());
  EXPECT_EQ(CWhitespaceUtils::WhitespaceRule_Replace, col->GetWhitespaceRule());
  const CPrimitiveRestrictions& r = col->GetRestrictions();
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

TEST_P(TypedCol, TakesNullTextsAsEmpty) {
  ColOptions o;
  o.name = nullptr;
  o.uri = nullptr;
  const auto col = kind().Make(o);
  EXPECT_EQ("", col->GetElementName());
  EXPECT_EQ("", col->base().GetNamespace());
  EXPECT_EQ("", col->GetFormat());
  EXPECT_FALSE(col->HasFacets());
}

TEST_P(TypedCol, IsAnObjectThatHandlesHold) {
  EXPECT_TRUE(kind().IsItsOwnBase());
  EXPECT_QZ_THROW(CQzException,
                  "CXmlCollectionBase::GetTargetNamespace Should not be used from within a "
                  "Collection (program logic error)",
                  kind().AskForTargetNamespace());
}

TEST_P(TypedCol, IsCountedUnderItsOwnName) {
  const std::map<std::string, std::int32_t> before = LiveCounts();
  {
    const auto first = kind().Make();
    const auto second = kind().Make();
    std::map<std::string, std::int32_t> with = before;
    with[kind().name] += 2;
    EXPECT_EQ(with, LiveCounts());
  }
  EXPECT_EQ(before, LiveCounts());
}

TEST_P(TypedCol, HasTheBasesOfItsBranch) {
  EXPECT_TRUE(kind().isTypeCollection);
  EXPECT_TRUE(kind().hasInstanceMonitor);
  EXPECT_FALSE(kind().isInstanceMonitor);
  EXPECT_EQ(kind().isDate, kind().isDateCollection);
}

// --- Values

TEST_P(TypedCol, AddsAndGivesByVirtualCallsInTheBranchOfDatesAlone) {
  const SameNames seen = kind().TrySameNames();
  EXPECT_EQ(kind().isDate ? 2 : 0, seen.callsByAdd);  // Add and AddAt
  EXPECT_EQ(kind().isDate ? 3 : 0, seen.callsByAddAt);
  EXPECT_EQ(text(1), seen.item);
  EXPECT_EQ(kind().isDate ? 4 : 0, seen.callsByItem);
}

TEST_P(TypedCol, AppendsInsertsAndGivesBack) {
  const auto col = kind().Make();
  col->Fill("01");
  EXPECT_EQ(2, col->GetCount());
  EXPECT_EQ(TextsOf("01"), col->Texts());
  col->AddAt(0, 2);
  col->AddAt(3, 1);
  col->AddAt(2, 2);
  EXPECT_EQ(TextsOf("20211"), col->Texts());
}

TEST_P(TypedCol, IsWalkedFromTheFirstValueToTheLast) {
  const auto col = kind().Make();
  EXPECT_TRUE(col->BeginsAtItsEnd());
  col->Fill("210");
  EXPECT_EQ(TextsOf("210"), col->Walk());
  EXPECT_EQ(3, col->LengthUnchanged());
  col->SetFirst(1);
  EXPECT_EQ(TextsOf("110"), col->Texts());
}

TEST_P(TypedCol, RemovesAnyOne) {
  const auto col = kind().Make();
  col->Fill("01210");
  col->Remove(1);
  EXPECT_EQ(TextsOf("0210"), col->Texts());
  col->Remove(3);
  EXPECT_EQ(TextsOf("021"), col->Texts());
  col->Remove(0);
  EXPECT_EQ(TextsOf("21"), col->Texts());
  EXPECT_EQ(2, col->Length());
  col->AddAt(0, 1);
  EXPECT_EQ(TextsOf("121"), col->Texts());
  col->Remove(0);
  col->Remove(0);
  col->Remove(0);
  EXPECT_EQ(0, col->GetCount());
  EXPECT_TRUE(col->BeginsAtItsEnd());
  col->Add(2);
  EXPECT_EQ(TextsOf("2"), col->Texts());
}

TEST_P(TypedCol, TakesAValueOfItsOwn) {
  const auto col = kind().Make();
  col->Fill("012");
  CColListener listener(col->base(), kind().textOf);
  col->AddOwnAt(0, 2);
  col->AddOwn(0);
  EXPECT_EQ(TextsOf("20122"), col->Texts());
  EXPECT_EQ("added " + text(2) + ", 4", listener.log[1]);
  EXPECT_EQ("added " + text(2) + ", 5", listener.log[4]);
}

}  // namespace
}  // namespace qztest
