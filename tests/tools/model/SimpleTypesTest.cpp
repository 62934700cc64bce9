#include <gtest/gtest.h>

#include "tests/tools/model/ModelText.h"

// Which C++ type a simple type has, and what checks it.
namespace qzxml::generator::tests {
namespace {

std::string Restrict(const std::string& base, const std::string& facets) {
  return "<xs:restriction base='" + base + "'>" + facets + "</xs:restriction>";
}

std::string Facet(const std::string& name, const std::string& value) {
  return "<xs:" + name + " value='" + value + "'/>";
}

// The line of a simple type T with that definition.
std::string BindType(const std::string& definition) {
  const std::string text =
      DescribeSchema("<xs:simpleType name='T'>" + definition + "</xs:simpleType>");
  const std::string head = "== t <urn:t> t\n";
  return text.substr(0, head.size()) == head ? text.substr(head.size()) : text;
}

struct KindCase {
  const char* base;
  std::string facets;
  const char* expected;
};

TEST(SimpleTypes, IntegersWithoutALimitHaveTheSmallestKindThatTheirBoundsAllow) {
  const KindCase cases[] = {
      {"xs:positiveInteger", Facet("maxExclusive", "100"),
       "i4 Collapse MinInclusive(\"1\") MaxInclusive(\"99\")"},
      {"xs:positiveInteger", "", "integer Collapse MinInclusive(\"1\")"},
      {"xs:nonNegativeInteger", Facet("maxInclusive", "2147483647"),
       "i4 Collapse MinInclusive(\"0\")"},
      {"xs:nonNegativeInteger", Facet("maxInclusive", "2147483648"),
       "i8 Collapse MinInclusive(\"0\") MaxInclusive(\"2147483648\")"},
      {"xs:nonNegativeInteger", Facet("maxInclusive", "9223372036854775808"),
       "ui8 Collapse MaxInclusive(\"9223372036854775808\")"},
      {"xs:nonNegativeInteger", Facet("maxInclusive", "18446744073709551616"),
       "integer Collapse MinInclusive(\"0\") MaxInclusive(\"18446744073709551616\")"},
      {"xs:integer", Facet("totalDigits", "3"),
       "i4 Collapse MinInclusive(\"-999\") MaxInclusive(\"999\")"},
      {"xs:integer", Facet("totalDigits", "18"),
       "i8 Collapse MinInclusive(\"-999999999999999999\") MaxInclusive(\"999999999999999999\")"},
      {"xs:integer", Facet("minInclusive", "-5"), "integer Collapse MinInclusive(\"-5\")"},
      {"xs:negativeInteger", Facet("minExclusive", "-11"),
       "i4 Collapse MinInclusive(\"-10\") MaxInclusive(\"-1\")"},
  };
  for (const KindCase& c : cases) {
    EXPECT_EQ("simple kT: " + std::string(c.expected) + "\n", BindType(Restrict(c.base, c.facets)))
        << c.base << c.facets;
  }
}

TEST(SimpleTypes, IntegersOfASizeKeepIt) {
  const KindCase cases[] = {
      {"xs:long", Facet("maxInclusive", "5"), "i8 Collapse MaxInclusive(\"5\")"},
      {"xs:int", "", "i4 Collapse"},
      {"xs:short", Facet("minInclusive", "0"), "i2 Collapse MinInclusive(\"0\")"},
      {"xs:byte", "", "i1 Collapse"},
      {"xs:unsignedLong", "", "ui8 Collapse"},
      {"xs:unsignedInt", Facet("totalDigits", "2"), "ui4 Collapse MaxInclusive(\"99\")"},
      {"xs:unsignedShort", Facet("minExclusive", "0"), "ui2 Collapse MinInclusive(\"1\")"},
      {"xs:unsignedByte", "", "ui1 Collapse"},
  };
  for (const KindCase& c : cases) {
    EXPECT_EQ("simple kT: " + std::string(c.expected) + "\n", BindType(Restrict(c.base, c.facets)))
        << c.base << c.facets;
  }
}

TEST(SimpleTypes, OtherKindsHaveTheFacetsThatTheyKeepAndRulesForTheRest) {
  const KindCase cases[] = {
      {"xs:decimal", Facet("minInclusive", "-90.0") + Facet("maxExclusive", "90"),
       "decimal Collapse MinInclusive(\"-90.0\") MaxExclusive(\"90\")"},
      {"xs:decimal", Facet("totalDigits", "5") + Facet("fractionDigits", "2"),
       "decimal Collapse TotalDigits(5) FractionDigits(2)"},
      {"xs:float", Facet("minExclusive", "0"), "r4 Collapse MinExclusive(\"0\")"},
      {"xs:double", Facet("maxInclusive", "INF"), "r8 Collapse MaxInclusive(\"INF\")"},
      {"xs:boolean", "", "boolean Collapse"},
      {"xs:hexBinary", Facet("length", "16"), "hexBinary Collapse Length(16)"},
      {"xs:base64Binary", Facet("minLength", "1") + Facet("maxLength", "9"),
       "base64Binary Collapse MinLength(1) MaxLength(9)"},
      {"xs:hexBinary", Facet("maxLength", "3000000000"), "hexBinary Collapse rules"},
      {"xs:date", Facet("minInclusive", "2000-01-01"), "date Collapse rules"},
      {"xs:dateTime", "", "datetime Collapse"},
      {"xs:time", "", "time Collapse"},
      {"xs:gYearMonth", "", "yearMonth Collapse"},
      {"xs:gMonthDay", "", "monthDay Collapse"},
      {"xs:duration", Facet("maxInclusive", "P1Y"), "duration Collapse rules"},
  };
  for (const KindCase& c : cases) {
    EXPECT_EQ("simple kT: " + std::string(c.expected) + "\n", BindType(Restrict(c.base, c.facets)))
        << c.base << c.facets;
  }
}

TEST(SimpleTypes, WhatCountsAsItIsWrittenIsText) {
  const KindCase cases[] = {
      {"xs:decimal", Facet("pattern", "[0-9]+\\.[0-9]{2}"), "string Collapse rules"},
      {"xs:int", Facet("enumeration", "1") + Facet("enumeration", "2"), "string Collapse rules"},
      {"xs:boolean", Facet("pattern", "true|false"), "string Collapse rules"},
      {"xs:gYear", "", "string Collapse rules"},
      {"xs:gMonth", "", "string Collapse rules"},
      {"xs:gDay", "", "string Collapse rules"},
      {"xs:QName", Facet("enumeration", "t:a"), "string Collapse rules"},
      {"xs:anyURI", Facet("enumeration", "http://a"), "string Collapse rules"},
      {"xs:string", "", "string None"},
      {"xs:string", Facet("maxLength", "5"), "string None rules"},
      {"xs:string", Facet("whiteSpace", "collapse"), "string Collapse"},
      {"xs:normalizedString", Facet("minLength", "1"), "string Replace rules"},
      {"xs:token", "", "string Collapse"},
      {"xs:NMTOKEN", "", "string Collapse rules"},
      {"xs:ID", "", "string Collapse rules"},
      {"xs:IDREFS", Facet("maxLength", "2"), "string Collapse rules"},
  };
  for (const KindCase& c : cases) {
    EXPECT_EQ("simple kT: " + std::string(c.expected) + "\n", BindType(Restrict(c.base, c.facets)))
        << c.base << c.facets;
  }
}

TEST(SimpleTypes, ListsAndUnionsAreText) {
  EXPECT_EQ("simple kT: string Collapse rules\n", BindType("<xs:list itemType='xs:int'/>"));
  EXPECT_EQ("simple kT: string Collapse rules\n",
            BindType("<xs:union memberTypes='xs:int xs:date'/>"));
  // A member that keeps its blanks has them from the document.
  EXPECT_EQ("simple kT: string None rules\n",
            BindType("<xs:union memberTypes='xs:int xs:string'/>"));
}

TEST(SimpleTypes, EnumerationsOfTextsAreEnumerations) {
  EXPECT_EQ(
      "enum T Collapse: T_kg=kg, T_read_only=read only, T_1_0=1.0, T_Empty=, T_Plus=+\n"
      "simple kT: i4 Collapse enum\n",
      BindType(Restrict("xs:token", Facet("enumeration", "kg") + Facet("enumeration", "read only") +
                                        Facet("enumeration", "1.0") + Facet("enumeration", "") +
                                        Facet("enumeration", "+") + Facet("enumeration", "kg"))));
  EXPECT_EQ(
      "enum T None: T_a_b=a b, T_aBlankBlankb=a  b, T_A_b=A b\n"
      "simple kT: i4 None enum\n",
      BindType(Restrict("xs:string", Facet("enumeration", "a b") + Facet("enumeration", "a  b") +
                                         Facet("enumeration", "A b"))));
}

TEST(SimpleTypes, TextsThatALengthForbidsAreNoEnumerators) {
  EXPECT_EQ(
      "enum T None: T_ab=ab\n"
      "simple kT: i4 None enum\n",
      BindType(Restrict("xs:string", Facet("length", "2") + Facet("enumeration", "ab") +
                                         Facet("enumeration", "abc"))));
}

TEST(SimpleTypes, AnEnumerationUnderAPatternIsText) {
  EXPECT_EQ("simple kT: string None rules\n",
            BindType(Restrict("xs:string", Facet("pattern", "a.*") + Facet("enumeration", "ab") +
                                               Facet("enumeration", "b"))));
}

TEST(SimpleTypes, ARestrictionOfAnEnumerationIsOneOfItsOwnUnlessItIsTheSame) {
  EXPECT_EQ(
      "== t <urn:t> t\n"
      "enum Unit Collapse: Unit_kg=kg, Unit_g=g\n"
      "enum Small Collapse: Small_g=g\n"
      "simple kUnit: i4 Collapse enum\n"
      "simple kSmall: i4 Collapse enum\n"
      "class CT <T> T: sequence\n"
      "  A: attribute a Unit [?]\n"
      "  B: attribute b Unit [?]\n"
      "  C: attribute c Small [?]\n",
      DescribeSchema(
          "<xs:simpleType name='Unit'>" +
          Restrict("xs:token", Facet("enumeration", "kg") + Facet("enumeration", "g")) +
          "</xs:simpleType><xs:simpleType name='Same'>" + Restrict("t:Unit", "") +
          "</xs:simpleType><xs:simpleType name='Small'>" +
          Restrict("t:Unit", Facet("enumeration", "g")) +
          "</xs:simpleType><xs:complexType name='T'><xs:attribute name='a' type='t:Unit'/>"
          "<xs:attribute name='b' type='t:Same'/><xs:attribute name='c' type='t:Small'/>"
          "</xs:complexType>"));
}

TEST(SimpleTypes, BuiltInTypesInUseAreTheLibrarysConstants) {
  CSchemaTrial trial;
  trial.AddSchema(
      "<xs:complexType name='T'><xs:attribute name='a' type='xs:dateTime'/>"
      "<xs:attribute name='b' type='xs:unsignedByte'/><xs:attribute name='c' type='xs:dateTime'/>"
      "<xs:attribute name='d' type='xs:NMTOKENS'/></xs:complexType>");
  const Model& model = trial.Bind();
  ASSERT_EQ(3u, model.builtIns.size());
  const BoundSimpleType& dateTime = *model.builtIns[0];
  EXPECT_EQ("kXsdDateTime", dateTime.constant);
  EXPECT_EQ("ItemType_datetime", dateTime.kind);
  EXPECT_EQ("CDateTime", dateTime.cppType);
  EXPECT_FALSE(dateTime.isPassedByValue);
  EXPECT_EQ(nullptr, dateTime.where);
  EXPECT_EQ("kXsdUnsignedByte", model.builtIns[1]->constant);
  EXPECT_EQ("std::uint8_t", model.builtIns[1]->cppType);
  EXPECT_TRUE(model.builtIns[1]->isPassedByValue);
  EXPECT_EQ("kXsdNMTOKENS", model.builtIns[2]->constant);
  EXPECT_EQ("std::string", model.builtIns[2]->cppType);
}

// "Sku ShortSku xs:date" of a member: the names that an xsi:type may have in its element, each with
// the constant that holds the value then, and "own" where no other type than its own may be named.
std::string DescribeNames(const BoundMember& member) {
  std::string text = member.isOwnTypeOnly ? "own" : "";
  if (member.family == nullptr) return text;
  for (const BoundSimpleFamily::Named& named : member.family->names) {
    const bool isBuiltIn = named.name.namespaceUri == "http://www.w3.org/2001/XMLSchema";
    text += text.empty() ? "" : " ";
    text += (isBuiltIn                            ? "xs:"
             : named.name.namespaceUri == "urn:o" ? "o:"
                                                  : "") +
            named.name.localName + "=" + named.type->constant;
  }
  return text;
}

constexpr char kNamedTypes[] =
    "<xs:simpleType name='A'><xs:restriction base='xs:int'/></xs:simpleType>"
    "<xs:simpleType name='B'><xs:restriction base='t:A'/></xs:simpleType>"
    "<xs:simpleType name='C'><xs:restriction base='t:B'/></xs:simpleType>"
    "<xs:simpleType name='W'><xs:restriction base='xs:token'/></xs:simpleType>"
    "<xs:simpleType name='E'><xs:restriction base='xs:string'><xs:enumeration value='x'/>"
    "</xs:restriction></xs:simpleType>"
    "<xs:simpleType name='F'><xs:restriction base='t:E'/></xs:simpleType>"
    "<xs:simpleType name='U'><xs:union memberTypes='t:B xs:date'/></xs:simpleType>"
    "<xs:simpleType name='V'><xs:restriction base='t:U'><xs:pattern value='.*'/>"
    "</xs:restriction></xs:simpleType>"
    "<xs:simpleType name='L'><xs:list itemType='t:A'/></xs:simpleType>";

TEST(SimpleTypes, ElementsKnowTheNamesThatAnXsiTypeMayHave) {
  const struct {
    const char* declared;  // attributes and content of the element
    const char* names;
  } cases[] = {
      {" type='t:A'/>", "A=kA B=kB C=kC"},
      {" type='t:B'/>", "B=kB C=kC"},
      {" type='t:C'/>", "C=kC"},
      {" type='xs:int'/>", "A=kA B=kB C=kC"},
      {" type='xs:short'/>", ""},
      {" type='xs:decimal'/>", "A=kA B=kB C=kC"},
      {" type='xs:string'/>", "W=kW E=kE F=kE"},
      {" type='xs:normalizedString'/>", "W=kW"},
      {" type='t:E'/>", "E=kE F=kE"},
      {" type='t:F'/>", "F=kE"},
      {" type='t:U'/>", "U=kU xs:date=kXsdDate B=kB C=kC V=kV"},
      {" type='t:V'/>", "V=kV xs:date=kXsdDate B=kB C=kC"},
      {" type='t:L'/>", "L=kL"},
      {" type='xs:anySimpleType'/>", "A=kA B=kB C=kC W=kW E=kE F=kE U=kU V=kV L=kL"},
      {"><xs:simpleType><xs:restriction base='t:A'/></xs:simpleType></xs:element>", ""},
      {"><xs:simpleType><xs:union memberTypes='t:W xs:int'/></xs:simpleType></xs:element>",
       "xs:int=kXsdInt A=kA B=kB C=kC W=kW"},
      {" type='t:A' block='restriction'/>", "own A=kA B=kB C=kC"},
      {" type='t:A' block='extension'/>", "A=kA B=kB C=kC"},
      {" type='t:C' block='#all'/>", "C=kC"},
      {" type='xs:int' block='restriction'/>", "own"},
      {" type='xs:date' block='restriction'/>", ""},
  };
  for (const auto& c : cases) {
    CSchemaTrial trial;
    trial.AddSchema(std::string(kNamedTypes) +
                    "<xs:complexType name='T'><xs:sequence><xs:element name='e'" + c.declared +
                    "</xs:sequence></xs:complexType>");
    const BoundClass* const bound = FindClass(trial.Bind(), "CT");
    ASSERT_NE(nullptr, bound);
    EXPECT_EQ(c.names, DescribeNames(bound->members.at(0))) << c.declared;
  }
}

// Each union has the one before it twice, so its members by all ways are thousands; and the types
// are a long chain. What a type may stand for is found without going all ways for each step of the
// chain.
TEST(SimpleTypes, UnionsOfUnionsAreLookedThroughOnce) {
  constexpr int kUnions = 11;
  constexpr int kSteps = 60;
  std::string schema =
      "<xs:simpleType name='A0'><xs:restriction base='xs:NCName'/></xs:simpleType>";
  for (int i = 1; i <= kSteps; ++i) {
    schema += "<xs:simpleType name='A" + std::to_string(i) + "'><xs:restriction base='t:A" +
              std::to_string(i - 1) + "'/></xs:simpleType>";
  }
  schema += "<xs:simpleType name='U0'><xs:union memberTypes='xs:int xs:date'/></xs:simpleType>";
  std::string names = "xs:int=kXsdInt xs:date=kXsdDate U0=kU0";
  for (int i = 1; i <= kUnions; ++i) {
    const std::string before = " t:U" + std::to_string(i - 1);
    schema += "<xs:simpleType name='U" + std::to_string(i) + "'><xs:union memberTypes='" + before +
              before + "'/></xs:simpleType>";
    const std::string name = "U" + std::to_string(i);
    if (i < kUnions) names += " " + name + "=k" + name;
  }
  CSchemaTrial trial;
  trial.AddSchema(schema +
                  "<xs:complexType name='T'><xs:sequence><xs:element name='e' type='t:U11'/>"
                  "</xs:sequence></xs:complexType>");
  const BoundClass* const bound = FindClass(trial.Bind(), "CT");
  ASSERT_NE(nullptr, bound);
  EXPECT_EQ("U11=kU11 " + names, DescribeNames(bound->members.at(0)));
}

TEST(SimpleTypes, AttributesAndTheTextOfComplexTypesHaveNoNames) {
  CSchemaTrial trial;
  trial.AddSchema(std::string(kNamedTypes) +
                  "<xs:complexType name='T'><xs:simpleContent><xs:extension base='t:A'>"
                  "<xs:attribute name='a' type='t:A'/></xs:extension></xs:simpleContent>"
                  "</xs:complexType><xs:element name='r' type='t:A'/>");
  const Model& model = trial.Bind();
  const BoundClass* const complex = FindClass(model, "CT");
  const BoundClass* const root = FindClass(model, "CR");
  ASSERT_TRUE(complex != nullptr && root != nullptr);
  for (const BoundMember& member : complex->members) EXPECT_EQ("", DescribeNames(member));
  EXPECT_EQ("A=kA B=kB C=kC", DescribeNames(root->members.at(0)));
}

TEST(SimpleTypes, TypesOfOtherNamespacesAreNamedToo) {
  CSchemaTrial trial;
  trial.Add("a.xsd",
            "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' xmlns:o='urn:o'"
            " targetNamespace='urn:t'><xs:import namespace='urn:o' schemaLocation='o.xsd'/>"
            "<xs:complexType name='T'><xs:sequence><xs:element name='e' type='xs:int'/>"
            "<xs:element name='f' type='o:A'/></xs:sequence></xs:complexType>"
            "<xs:simpleType name='B'><xs:restriction base='o:A'/></xs:simpleType></xs:schema>");
  trial.Add("o.xsd",
            "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' targetNamespace='urn:o'>"
            "<xs:simpleType name='A'><xs:restriction base='xs:int'/></xs:simpleType>"
            "</xs:schema>");
  const BoundClass* const bound = FindClass(trial.Bind(), "CT");
  ASSERT_NE(nullptr, bound);
  EXPECT_EQ("o:A=kA B=kB", DescribeNames(bound->members.at(1)));
  EXPECT_EQ("o:A=kA B=kB", DescribeNames(bound->members.at(0)));
  EXPECT_EQ("urn:o", bound->members.at(1).family->where->uri);
}

}  // namespace
}  // namespace qzxml::generator::tests
