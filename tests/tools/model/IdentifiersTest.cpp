#include <gtest/gtest.h>

#include "tools/generator/model/Identifiers.h"

namespace qzxml::generator {
namespace {

struct Case {
  const char* from;
  const char* to;
};

TEST(Identifiers, MakesUpperCamelOfNames) {
  const Case cases[] = {
      {"purchaseOrder", "PurchaseOrder"},
      {"purchase-order", "PurchaseOrder"},
      {"purchase_order", "PurchaseOrder"},
      {"URL", "URL"},
      {"v1.0", "V1_0"},
      {"v10", "V10"},
      {"camt.053.001.02", "Camt053_001_02"},
      {"_1st", "1st"},
      {"_", "X"},
      {"", "X"},
      {"Straße", "Strasse"},
      {"été", "Ete"},
      {"Übergröße", "Uebergroesse"},
      {"Łódź", "Lodz"},
      {"a\xCC\x81"
       "b",
       "Ab"},                // a, a combining acute, b
      {"a\xC2\xB7z", "AZ"},  // a middle dot
      {"Заказ", "Заказ"},
      {"注文", "注文"},
      {"a\xE2\xB0\x80", "AU2C00"},  // a letter that is not kept
  };
  for (const Case& c : cases) EXPECT_EQ(c.to, ToUpperCamel(c.from)) << c.from;
}

TEST(Identifiers, MakesVariablesOfUpperCamel) {
  const Case cases[] = {{"ShipTo", "shipTo"}, {"URL", "url"}, {"URLPath", "urlPath"},
                        {"X", "x"},           {"ID", "id"},   {"XMLHttp", "xmlHttp"},
                        {"V1_0", "v1_0"},     {"1st", "1st"}, {"A4Size", "a4Size"}};
  for (const Case& c : cases) EXPECT_EQ(c.to, ToLowerCamel(c.from)) << c.from;
}

TEST(Identifiers, MakesPlurals) {
  const Case cases[] = {{"Item", "Items"},
                        {"Address", "Addresses"},
                        {"Box", "Boxes"},
                        {"Entry", "Entries"},
                        {"Key", "Keys"},
                        {"Child", "Children"},
                        {"Branch", "Branches"},
                        {"Wish", "Wishes"},
                        {"Status", "Statuses"},
                        {"Analysis", "Analyses"},
                        {"Links", "Links"},
                        {"MetaData", "MetaData"},
                        {"PersonInfo", "PersonInfo"},
                        {"Line1", "Line1List"},
                        {"URL", "URLs"},
                        {"CITY", "CITYs"},
                        {"Y", "Ys"}};
  for (const Case& c : cases) EXPECT_EQ(c.to, ToPlural(c.from)) << c.from;
}

TEST(Identifiers, MakesEnumeratorsOfTexts) {
  const Case cases[] = {
      {"kg", "kg"},
      {"read only", "read_only"},
      {"READ-ONLY", "READ_ONLY"},
      {"1.0", "1_0"},
      {"-1", "Minus1"},
      {"+1", "Plus1"},
      {"a--b", "a_b"},
      {" a ", "a"},
      {"", "Empty"},
      {"+", "Plus"},
      {"<=", "LessEqual"},
      {"größer", "groesser"},
      {"0123456789012345678901234567890123456789012345678901234567890123456789",
       "0123456789012345678901234567890123456789012345678901234567890123"},
  };
  for (const Case& c : cases) EXPECT_EQ(c.to, ToEnumeratorPart(c.from)) << c.from;
  EXPECT_EQ("aPlus", ToSpeltEnumeratorPart("a+"));
  EXPECT_EQ("Empty", ToSpeltEnumeratorPart(""));
}

TEST(Identifiers, MakesNamespaces) {
  const Case cases[] = {{"Orders", "orders"},
                        {"camt.053.001.02", "camt_053_001_02"},
                        {"20022", "n20022"},
                        {"class", "class_ns"},
                        {"std", "std_ns"},
                        {"linux", "linux_ns"},
                        {"-", "schema"},
                        {"Time", "time_ns"},
                        {"QzXmlLib16", "qzxmllib16_ns"}};
  for (const Case& c : cases) EXPECT_EQ(c.to, ToNamespaceName(c.from)) << c.from;
}

TEST(Identifiers, KnowsWhatAProgramMayUse) {
  for (const char* name : {"a", "orders", "A1", "a_b", "Заказ"})
    EXPECT_TRUE(IsIdentifier(name)) << name;
  for (const char* name : {"", "1a", "_a", "a__b", "class", "co_await", "a-b", "a::b", "a b"}) {
    EXPECT_FALSE(IsIdentifier(name)) << name;
  }
}

TEST(Identifiers, MakesPlainFileNames) {
  EXPECT_EQ("Order_2", ToFileStem("Order_2"));
  EXPECT_EQ("U6CE8U6587", ToFileStem("注文"));
}

TEST(NameScope, GivesTheFirstFreeNameElseANumber) {
  CNameScope scope;
  EXPECT_EQ("CItem", scope.TakeFirst({"CItem"}));
  EXPECT_EQ("COrderItem", scope.TakeFirst({"CItem", "COrderItem"}));
  EXPECT_EQ("COrderItem2", scope.TakeFirst({"CItem", "COrderItem"}));
  EXPECT_EQ("CV1", scope.TakeFirst({"CV1"}));
  EXPECT_EQ("CV1_2", scope.TakeFirst({"CV1"}));
  EXPECT_TRUE(scope.IsFree("citem"));
}

TEST(NameScope, MayTakeLettersOfEitherCaseForOne) {
  CNameScope scope(CNameScope::Case_Insensitive);
  EXPECT_EQ("Order", scope.TakeFirst({"Order"}));
  EXPECT_EQ("ORDER2", scope.TakeFirst({"ORDER"}));
  EXPECT_FALSE(scope.IsFree("order"));
}

}  // namespace
}  // namespace qzxml::generator
