#include <gtest/gtest.h>

#include <string>

#include "tools/generator/schema/Wildcard.h"

using namespace qzxml::generator;

namespace {

constexpr auto kAny = NamespaceConstraint::Kind_Any;
constexpr auto kNot = NamespaceConstraint::Kind_Not;
constexpr auto kList = NamespaceConstraint::Kind_List;

const NamespaceConstraint any{kAny, {}};
const NamespaceConstraint notA{kNot, {"a"}};
const NamespaceConstraint notB{kNot, {"b"}};
const NamespaceConstraint notNone{kNot, {""}};
const NamespaceConstraint none{kList, {""}};
const NamespaceConstraint a{kList, {"a"}};
const NamespaceConstraint b{kList, {"b"}};
const NamespaceConstraint ab{kList, {"a", "b"}};
const NamespaceConstraint aNone{kList, {"a", ""}};
const NamespaceConstraint bNone{kList, {"b", ""}};
const NamespaceConstraint nothing{kList, {}};

std::string ToText(const std::optional<NamespaceConstraint>& constraint) {
  if (!constraint) return "not expressible";
  if (constraint->kind == kAny) return "any";
  std::string text = constraint->kind == kNot ? "not" : "list";
  for (const std::string& name : constraint->namespaces) text += name.empty() ? " -" : " " + name;
  return text;
}

}  // namespace

TEST(Wildcard, AllowsNamespaces) {
  // Section 3.10.4.
  const struct {
    const NamespaceConstraint& constraint;
    bool none, a, b;
  } cases[] = {{any, true, true, true},        {notA, false, false, true},
               {notNone, false, true, true},   {aNone, true, true, false},
               {nothing, false, false, false}, {ab, false, true, true}};
  for (const auto& c : cases) {
    EXPECT_EQ(c.none, c.constraint.Allows("")) << ToText(c.constraint);
    EXPECT_EQ(c.a, c.constraint.Allows("a")) << ToText(c.constraint);
    EXPECT_EQ(c.b, c.constraint.Allows("b")) << ToText(c.constraint);
  }
}

TEST(Wildcard, UnitesByTheRulesOfPart1Section3_10_6) {
  const struct {
    const NamespaceConstraint& left;
    const NamespaceConstraint& right;
    const char* expected;
  } cases[] = {
      {notA, notA, "not a"}, {any, nothing, "any"},           {a, bNone, "list a b -"},
      {notA, notB, "not -"}, {notA, notNone, "not -"},        {notA, aNone, "any"},
      {notA, a, "not -"},    {notA, none, "not expressible"}, {notA, bNone, "not expressible"},
      {notA, b, "not a"},    {notNone, none, "any"},          {notNone, a, "not -"},
  };
  for (const auto& c : cases) {
    const std::string names = ToText(c.left) + " and " + ToText(c.right);
    EXPECT_EQ(c.expected, ToText(NamespaceConstraint::Unite(c.left, c.right))) << names;
    if (c.left.kind != kList) {
      EXPECT_EQ(c.expected, ToText(NamespaceConstraint::Unite(c.right, c.left))) << names;
    }
  }
}

TEST(Wildcard, IntersectsByTheRulesOfPart1Section3_10_6) {
  const struct {
    const NamespaceConstraint& left;
    const NamespaceConstraint& right;
    const char* expected;
  } cases[] = {
      {notA, notA, "not a"}, {any, aNone, "list a -"},        {any, any, "any"},
      {notA, ab, "list b"},  {notA, bNone, "list b"},         {notNone, aNone, "list a"},
      {ab, bNone, "list b"}, {notA, notB, "not expressible"}, {notA, notNone, "not a"},
      {a, b, "list"},
  };
  for (const auto& c : cases) {
    const std::string names = ToText(c.left) + " and " + ToText(c.right);
    EXPECT_EQ(c.expected, ToText(NamespaceConstraint::Intersect(c.left, c.right))) << names;
    EXPECT_EQ(c.expected, ToText(NamespaceConstraint::Intersect(c.right, c.left))) << names;
  }
}

TEST(Wildcard, IsASubsetByTheRulesOfPart1Section3_10_6) {
  EXPECT_TRUE(notA.IsSubsetOf(any));
  EXPECT_FALSE(any.IsSubsetOf(notA));
  EXPECT_TRUE(notA.IsSubsetOf(notA));
  EXPECT_FALSE(notA.IsSubsetOf(notB));
  EXPECT_FALSE(notA.IsSubsetOf(ab));
  EXPECT_TRUE(b.IsSubsetOf(notA));
  EXPECT_FALSE(bNone.IsSubsetOf(notA));
  EXPECT_TRUE(a.IsSubsetOf(ab));
  EXPECT_FALSE(ab.IsSubsetOf(a));
  EXPECT_TRUE(nothing.IsSubsetOf(a));
}

TEST(Wildcard, IsWrittenAsInASchema) {
  EXPECT_EQ("##any", any.ToText("a"));
  EXPECT_EQ("##other", notA.ToText("a"));
  EXPECT_EQ("##targetNamespace b", ab.ToText("a"));
  EXPECT_EQ("b ##local", bNone.ToText("a"));
  EXPECT_EQ("", nothing.ToText("a"));
}
