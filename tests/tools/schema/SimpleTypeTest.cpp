#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tools/schema/SchemaTrial.h"

using namespace qzxml::generator;
using qztest::SchemaTrial;

namespace {

std::string Value(const Facet* facet) { return facet != nullptr ? facet->value : "-"; }

std::string Bound(const SimpleType::Bound& bound) {
  if (bound.facet == nullptr) return "-";
  return bound.facet->value + (bound.isExclusive ? " exclusive" : "");
}

}  // namespace

TEST(SimpleType, KnowsEachBuiltInTypeWithItsBase) {
  // Part 2, section 3: the figure of the built-in types.
  const struct {
    BuiltIn type;
    const char* name;
    BuiltIn base;
    BuiltIn primitive;
    Variety variety;
    WhiteSpace whiteSpace;
  } cases[] = {
      {BuiltIn_string, "string", BuiltIn_anySimpleType, BuiltIn_string, Variety_Atomic,
       WhiteSpace_Preserve},
      {BuiltIn_normalizedString, "normalizedString", BuiltIn_string, BuiltIn_string, Variety_Atomic,
       WhiteSpace_Replace},
      {BuiltIn_token, "token", BuiltIn_normalizedString, BuiltIn_string, Variety_Atomic,
       WhiteSpace_Collapse},
      {BuiltIn_NCName, "NCName", BuiltIn_Name, BuiltIn_string, Variety_Atomic, WhiteSpace_Collapse},
      {BuiltIn_ID, "ID", BuiltIn_NCName, BuiltIn_string, Variety_Atomic, WhiteSpace_Collapse},
      {BuiltIn_NMTOKENS, "NMTOKENS", BuiltIn_anySimpleType, BuiltIn_None, Variety_List,
       WhiteSpace_Collapse},
      {BuiltIn_IDREFS, "IDREFS", BuiltIn_anySimpleType, BuiltIn_None, Variety_List,
       WhiteSpace_Collapse},
      {BuiltIn_boolean, "boolean", BuiltIn_anySimpleType, BuiltIn_boolean, Variety_Atomic,
       WhiteSpace_Collapse},
      {BuiltIn_integer, "integer", BuiltIn_decimal, BuiltIn_decimal, Variety_Atomic,
       WhiteSpace_Collapse},
      {BuiltIn_int, "int", BuiltIn_long, BuiltIn_decimal, Variety_Atomic, WhiteSpace_Collapse},
      {BuiltIn_positiveInteger, "positiveInteger", BuiltIn_nonNegativeInteger, BuiltIn_decimal,
       Variety_Atomic, WhiteSpace_Collapse},
      {BuiltIn_unsignedByte, "unsignedByte", BuiltIn_unsignedShort, BuiltIn_decimal, Variety_Atomic,
       WhiteSpace_Collapse},
      {BuiltIn_gMonthDay, "gMonthDay", BuiltIn_anySimpleType, BuiltIn_gMonthDay, Variety_Atomic,
       WhiteSpace_Collapse},
      {BuiltIn_anyURI, "anyURI", BuiltIn_anySimpleType, BuiltIn_anyURI, Variety_Atomic,
       WhiteSpace_Collapse},
      {BuiltIn_NOTATION, "NOTATION", BuiltIn_anySimpleType, BuiltIn_NOTATION, Variety_Atomic,
       WhiteSpace_Collapse},
  };
  SchemaTrial trial;
  const CSchemaSet& set = trial.ReadBody("");
  for (const auto& c : cases) {
    const SimpleType& type = *set.GetBuiltIn(c.type);
    EXPECT_STREQ(c.name, GetBuiltInName(c.type));
    EXPECT_EQ(c.type, FindBuiltIn(c.name));
    EXPECT_EQ(&type, set.FindType({kSchemaNamespace, c.name})) << c.name;
    EXPECT_EQ(set.GetBuiltIn(c.base), type.base) << c.name;
    EXPECT_EQ(c.primitive, type.GetPrimitive()) << c.name;
    EXPECT_EQ(c.variety, type.variety) << c.name;
    EXPECT_EQ(c.whiteSpace, type.GetWhiteSpace()) << c.name;
  }
  EXPECT_EQ(BuiltIn_None, FindBuiltIn("anyType"));
  EXPECT_EQ(set.GetAnyType(), set.FindType({kSchemaNamespace, "anyType"}));
  EXPECT_EQ("(##any{0,*})", qztest::ToText(set.GetAnyType()->particle));
}

TEST(SimpleType, BoundsIntegersAsPart2Says) {
  const struct {
    BuiltIn type;
    const char* lower;
    const char* upper;
  } cases[] = {
      {BuiltIn_integer, "-", "-"},
      {BuiltIn_nonPositiveInteger, "-", "0"},
      {BuiltIn_negativeInteger, "-", "-1"},
      {BuiltIn_long, "-9223372036854775808", "9223372036854775807"},
      {BuiltIn_int, "-2147483648", "2147483647"},
      {BuiltIn_short, "-32768", "32767"},
      {BuiltIn_byte, "-128", "127"},
      {BuiltIn_nonNegativeInteger, "0", "-"},
      {BuiltIn_unsignedLong, "0", "18446744073709551615"},
      {BuiltIn_unsignedInt, "0", "4294967295"},
      {BuiltIn_unsignedShort, "0", "65535"},
      {BuiltIn_unsignedByte, "0", "255"},
      {BuiltIn_positiveInteger, "1", "-"},
  };
  SchemaTrial trial;
  const CSchemaSet& set = trial.ReadBody("");
  for (const auto& c : cases) {
    const SimpleType& type = *set.GetBuiltIn(c.type);
    EXPECT_EQ(c.lower, Bound(type.FindLowerBound())) << type.name.localName;
    EXPECT_EQ(c.upper, Bound(type.FindUpperBound())) << type.name.localName;
    EXPECT_EQ("0", Value(type.FindFacet(FacetKind_fractionDigits))) << type.name.localName;
  }
}

TEST(SimpleType, HasTheFacetsOfItsOwnStepAndThoseInForce) {
  SchemaTrial trial;
  trial.ReadBody(
      "<xs:simpleType name='A'><xs:restriction base='xs:token'>"
      "<xs:pattern value='a.*'/><xs:pattern value='b.*'/><xs:minLength value='2' fixed='true'/>"
      "<xs:maxLength value=' 9 '><xs:annotation><xs:documentation>Short.</xs:documentation>"
      "</xs:annotation></xs:maxLength></xs:restriction></xs:simpleType>"
      "<xs:simpleType name='B'><xs:restriction base='A'><xs:pattern value='.*z'/>"
      "<xs:maxLength value='5'/></xs:restriction></xs:simpleType>"
      "<xs:simpleType name='C'><xs:restriction base='B'>"
      "<xs:enumeration value=' abz '><xs:annotation><xs:documentation>First.</xs:documentation>"
      "</xs:annotation></xs:enumeration><xs:enumeration value='bz'/>"
      "</xs:restriction></xs:simpleType>");
  EXPECT_EQ("", trial.GetDiagnostics());
  const SimpleType& c = trial.GetSimple("C");
  EXPECT_EQ(&trial.GetSimple("B"), c.base);
  EXPECT_EQ(BuiltIn_None, c.builtIn);
  EXPECT_EQ(BuiltIn_token, c.GetNearestBuiltIn());
  EXPECT_TRUE(c.IsDerivedFrom(&trial.GetSimple("A")));
  EXPECT_FALSE(trial.GetSimple("A").IsDerivedFrom(&c));
  EXPECT_EQ("5", Value(c.FindFacet(FacetKind_maxLength)));
  EXPECT_EQ("2", Value(c.FindFacet(FacetKind_minLength)));
  EXPECT_TRUE(c.FindFacet(FacetKind_minLength)->isFixed);
  EXPECT_EQ(nullptr, c.facets.Find(FacetKind_minLength));
  EXPECT_EQ("9", Value(trial.GetSimple("A").FindFacet(FacetKind_maxLength)));
  EXPECT_EQ("Short.", trial.GetSimple("A").FindFacet(FacetKind_maxLength)->documentation);
  const auto steps = c.GetPatternSteps();
  ASSERT_EQ(2U, steps.size());
  EXPECT_EQ("a.*", (*steps[0])[0].text);
  EXPECT_EQ("b.*", (*steps[0])[1].text);
  EXPECT_EQ(".*z", (*steps[1])[0].text);
  ASSERT_NE(nullptr, c.FindEnumerations());
  EXPECT_EQ("abz", (*c.FindEnumerations())[0].text);
  EXPECT_EQ("First.", (*c.FindEnumerations())[0].documentation);
  EXPECT_EQ(nullptr, trial.GetSimple("B").FindEnumerations());
}

TEST(SimpleType, TakesTheNearestBoundOfEitherKind) {
  SchemaTrial trial;
  trial.ReadBody(
      "<xs:simpleType name='A'><xs:restriction base='xs:int'><xs:minInclusive value='0'/>"
      "<xs:maxExclusive value='100'/></xs:restriction></xs:simpleType>"
      "<xs:simpleType name='B'><xs:restriction base='A'><xs:minExclusive value='0'/>"
      "<xs:maxInclusive value='99'/></xs:restriction></xs:simpleType>");
  EXPECT_EQ("", trial.GetDiagnostics());
  EXPECT_EQ("0", Bound(trial.GetSimple("A").FindLowerBound()));
  EXPECT_EQ("100 exclusive", Bound(trial.GetSimple("A").FindUpperBound()));
  EXPECT_EQ("0 exclusive", Bound(trial.GetSimple("B").FindLowerBound()));
  EXPECT_EQ("99", Bound(trial.GetSimple("B").FindUpperBound()));
}

TEST(SimpleType, IsAListOrAUnionInItsRestrictionsToo) {
  SchemaTrial trial;
  const CSchemaSet& set = trial.ReadBody(
      "<xs:simpleType name='L'><xs:list itemType='xs:int'/></xs:simpleType>"
      "<xs:simpleType name='L3'><xs:restriction base='L'><xs:maxLength value='3'/>"
      "</xs:restriction></xs:simpleType>"
      "<xs:simpleType name='U'><xs:union memberTypes='xs:int L'><xs:simpleType>"
      "<xs:restriction base='xs:string'><xs:enumeration value='none'/></xs:restriction>"
      "</xs:simpleType></xs:union></xs:simpleType>"
      "<xs:simpleType name='U2'><xs:restriction base='U'><xs:enumeration value='none'/>"
      "<xs:enumeration value='1 2'/></xs:restriction></xs:simpleType>"
      "<xs:simpleType name='N'><xs:restriction><xs:simpleType><xs:list>"
      "<xs:simpleType><xs:restriction base='xs:token'/></xs:simpleType></xs:list></xs:simpleType>"
      "<xs:length value='2'/></xs:restriction></xs:simpleType>");
  EXPECT_EQ("", trial.GetDiagnostics());
  const SimpleType& list = trial.GetSimple("L3");
  EXPECT_EQ(Variety_List, list.variety);
  EXPECT_EQ(set.GetBuiltIn(BuiltIn_int), list.itemType);
  EXPECT_EQ(BuiltIn_anySimpleType, list.GetNearestBuiltIn());
  EXPECT_EQ(WhiteSpace_Collapse, list.GetWhiteSpace());
  const SimpleType& both = trial.GetSimple("U2");
  EXPECT_EQ(Variety_Union, both.variety);
  ASSERT_EQ(3U, both.memberTypes.size());
  EXPECT_EQ(&trial.GetSimple("L"), both.memberTypes[1]);
  EXPECT_TRUE(both.memberTypes[2]->name.IsEmpty());
  EXPECT_EQ(&trial.GetSimple("U"), both.memberTypes[2]->context);
  const SimpleType& nested = trial.GetSimple("N");
  EXPECT_EQ(&nested, nested.base->context);
  EXPECT_EQ(nested.base, nested.itemType->context);
  EXPECT_EQ(&nested, set.GetAllTypes()[5]);
  EXPECT_EQ(nested.base, set.GetAllTypes()[6]);
}

TEST(SimpleType, StandsForAUnionOfItByDerivation) {
  SchemaTrial trial;
  const CSchemaSet& set = trial.ReadBody(
      "<xs:simpleType name='U'><xs:union memberTypes='xs:int xs:token'/></xs:simpleType>"
      "<xs:simpleType name='V'><xs:restriction base='U'><xs:pattern value='1'/></xs:restriction>"
      "</xs:simpleType>");
  const SimpleType* const byteType = set.GetBuiltIn(BuiltIn_byte);
  EXPECT_TRUE(IsDerivedFrom(byteType, &trial.GetSimple("U")));
  EXPECT_FALSE(IsDerivedFrom(byteType, &trial.GetSimple("V")));
  EXPECT_FALSE(IsDerivedFrom(set.GetBuiltIn(BuiltIn_decimal), &trial.GetSimple("U")));
  EXPECT_TRUE(IsDerivedFrom(byteType, set.GetAnyType()));
  EXPECT_TRUE(IsDerivedFrom(byteType, set.GetBuiltIn(BuiltIn_anySimpleType)));
  EXPECT_FALSE(IsDerivedFrom(byteType, set.GetBuiltIn(BuiltIn_int), Derivation_Restriction));
  EXPECT_TRUE(IsDerivedFrom(byteType, byteType, Derivation_Restriction));
}

TEST(SimpleType, KeepsThePrefixesOfQNamesAndNotations) {
  SchemaTrial trial;
  trial.ReadBody(
      "<xs:notation name='gif' public='image/gif'/>"
      "<xs:simpleType name='N'><xs:restriction base='xs:NOTATION'>"
      "<xs:enumeration value='t:gif'/></xs:restriction></xs:simpleType>"
      "<xs:element name='q' type='xs:QName' default='p:x' xmlns:p='urn:p'/>");
  EXPECT_EQ("", trial.GetErrors());
  EXPECT_EQ("urn:t", trial.GetSimple("N").facets.enumerations[0].namespaces.at("t"));
  EXPECT_EQ("urn:p", trial.GetElement("q").value.namespaces.at("p"));
  EXPECT_EQ(
      "warning: t.xsd: /xs:schema/xs:notation[@name='gif']: Notations are not bound: nothing is "
      "made of '{urn:t}gif'.",
      trial.GetDiagnostics());
}
