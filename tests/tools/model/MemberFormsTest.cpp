#include <gtest/gtest.h>

#include "tests/tools/model/ModelText.h"

// How elements, attributes and text become members.
namespace qzxml::generator::tests {
namespace {

TEST(MemberForms, AttributesStandFirstThenChildrenThenText) {
  EXPECT_EQ(
      "class CT <T> T: sequence mixed\n"
      "  Id: attribute id kXsdID [1]\n"
      "  Lang: attribute lang kXsdLanguage [?] default \"en\"\n"
      "  Version: attribute version kXsdString [?] fixed \"1.0\"\n"
      "  AnyAttributes: anyAttribute \"##other\" [*]\n"
      "  A: value a kXsdInt [1]\n"
      "  Text: text kXsdString [1]\n",
      DescribeClassOf("<xs:complexType name='T' mixed='true'><xs:sequence>"
                      "<xs:element name='a' type='xs:int'/></xs:sequence>"
                      "<xs:attribute name='id' type='xs:ID' use='required'/>"
                      "<xs:attribute name='lang' type='xs:language' default='en'/>"
                      "<xs:attribute name='version' type='xs:string' fixed='1.0'/>"
                      "<xs:attribute name='gone' use='prohibited'/>"
                      "<xs:anyAttribute namespace='##other'/></xs:complexType>",
                      "CT"));
}

TEST(MemberForms, SimpleContentIsCalledValue) {
  EXPECT_EQ(
      "class CPrice <Price> Price: sequence\n"
      "  Currency: attribute currency kXsdToken [?]\n"
      "  ValueAttribute: attribute value kXsdToken [?]\n"
      "  Value: text kXsdDecimal [1]\n",
      DescribeClassOf(
          "<xs:complexType name='Price'><xs:simpleContent><xs:extension base='xs:decimal'>"
          "<xs:attribute name='currency' type='xs:token'/>"
          "<xs:attribute name='value' type='xs:token'/>"
          "</xs:extension></xs:simpleContent></xs:complexType>",
          "CPrice"));
}

TEST(MemberForms, ElementsOfAnyTypeAreUntypedAndWildcardsAreCollections) {
  EXPECT_EQ(
      "class CT <T> T: sequence\n"
      "  A: untyped a [1]\n"
      "  Bs: untyped b [*]\n"
      "  AnyElements: any \"##other\" [?] col\n"
      "  C: value c kXsdAnySimpleType [1]\n",
      DescribeClassOf("<xs:complexType name='T'><xs:sequence><xs:element name='a'/>"
                      "<xs:element name='b' type='xs:anyType' minOccurs='0' maxOccurs='unbounded'/>"
                      "<xs:any namespace='##other' minOccurs='0'/>"
                      "<xs:element name='c' type='xs:anySimpleType'/>"
                      "</xs:sequence></xs:complexType>",
                      "CT"));
}

TEST(MemberForms, LocalElementsMayBeUnqualified) {
  EXPECT_EQ(
      "class CT <T> T: sequence\n"
      "  At: attribute at <urn:t> kXsdInt [?]\n"
      "  A: value a <> kXsdInt [1]\n"
      "  B: value b kXsdInt [1]\n",
      DescribeClassOf("<xs:complexType name='T'><xs:sequence>"
                      "<xs:element name='a' type='xs:int' form='unqualified'/>"
                      "<xs:element name='b' type='xs:int'/></xs:sequence>"
                      "<xs:attribute name='at' type='xs:int' form='qualified'/></xs:complexType>",
                      "CT"));
}

TEST(MemberForms, DefaultsOfValuesAreKeptAndThoseOfObjectsToldOf) {
  EXPECT_EQ(
      "== t <urn:t> t\n"
      "class CS <S> S: sequence\n"
      "  Value: text kXsdInt [1]\n"
      "class CT <T> T: sequence\n"
      "  A: value a kXsdInt [1] default \"7\"\n"
      "  B: value b kXsdString [?] fixed \"x\"\n"
      "  C: object c CS [1]\n"
      "warning: /xs:schema/xs:complexType[@name='T']/xs:sequence/xs:element[@name='c']: The "
      "default "
      "or fixed value of an element that is an object is not bound\n",
      DescribeSchema(
          "<xs:complexType name='S'><xs:simpleContent><xs:extension base='xs:int'/>"
          "</xs:simpleContent></xs:complexType>"
          "<xs:complexType name='T'><xs:sequence>"
          "<xs:element name='a' type='xs:int' default='7'/>"
          "<xs:element name='b' type='xs:string' fixed='x' minOccurs='0'/>"
          "<xs:element name='c' type='t:S' default='3'/></xs:sequence></xs:complexType>"));
}

TEST(MemberForms, TheDefaultOfAnElementWithATypeOfItsOwnIsThatOfItsText) {
  EXPECT_EQ(
      "== t <urn:t> t\n"
      "class CRoot root: sequence mixed\n"
      "  Size: object size CSize [?]\n"
      "  Text: text kXsdString [1] fixed \"abc\"\n"
      "class CSize size: sequence\n"
      "  Value: text kXsdInt [1] default \"3\"\n"
      "root root: CRoot\n",
      DescribeSchema("<xs:element name='root' fixed='abc'><xs:complexType mixed='true'>"
                     "<xs:sequence minOccurs='0'><xs:element name='size' default='3'>"
                     "<xs:complexType><xs:simpleContent><xs:extension base='xs:int'/>"
                     "</xs:simpleContent></xs:complexType></xs:element></xs:sequence>"
                     "</xs:complexType></xs:element>"));
}

TEST(MemberForms, ANillableValueIsAValueWhereItHasToStandAndElseAnObject) {
  EXPECT_EQ(
      "== t <urn:t> t\n"
      "simple kPrice: decimal Collapse MinInclusive(\"0\")\n"
      "class CT <T> T: sequence\n"
      "  A: value a kXsdInt [1] nillable\n"
      "  B: object b CNillableInt [?] nillable\n"
      "  Cs: object c CNillableInt [*] nillable\n"
      "  D: object d CNillablePrice [?] nillable\n"
      "class CU <U> U: choice\n"
      "  A: object a CNillableInt [?] nillable\n"
      "  E: value e kXsdInt [?]\n"
      "class CNillableInt int: sequence nillable\n"
      "  Value: text kXsdInt [1]\n"
      "class CNillablePrice Price: sequence nillable\n"
      "  Value: text kPrice [1]\n",
      DescribeSchema("<xs:simpleType name='Price'><xs:restriction base='xs:decimal'>"
                     "<xs:minInclusive value='0'/></xs:restriction></xs:simpleType>"
                     "<xs:complexType name='T'><xs:sequence>"
                     "<xs:element name='a' type='xs:int' nillable='true'/>"
                     "<xs:element name='b' type='xs:int' nillable='true' minOccurs='0'/>"
                     "<xs:element name='c' type='xs:int' nillable='true' minOccurs='0' "
                     "maxOccurs='unbounded'/>"
                     "<xs:element name='d' type='t:Price' nillable='true' minOccurs='0'/>"
                     "</xs:sequence></xs:complexType>"
                     "<xs:complexType name='U'><xs:choice>"
                     "<xs:element name='a' type='xs:int' nillable='true'/>"
                     "<xs:element name='e' type='xs:int'/></xs:choice></xs:complexType>"));
}

TEST(MemberForms, AClassIsNillableWhenAnElementOfItsTypeIsAndSoAreThoseDerivedFromIt) {
  const std::string text = DescribeSchema(
      "<xs:complexType name='A'/><xs:complexType name='B'><xs:complexContent>"
      "<xs:extension base='t:A'/></xs:complexContent></xs:complexType><xs:complexType name='C'/>"
      "<xs:complexType name='T'><xs:sequence><xs:element name='a' type='t:A' nillable='true'/>"
      "<xs:element name='c' type='t:C'/></xs:sequence></xs:complexType>"
      "<xs:element name='root' type='t:C' nillable='true'/>");
  EXPECT_EQ(
      "== t <urn:t> t\n"
      "class CA <A> A: sequence nillable > CB\n"
      "class CB <B> B: sequence nillable base CA 0\n"
      "class CC <C> root: sequence nillable\n"
      "class CT <T> T: sequence\n"
      "  A: object a CA [1] byType nillable\n"
      "  C: object c CC [1]\n"
      "root root: CC\n",
      text);
}

TEST(MemberForms, RootsOfSimpleTypeAndOfAnyTypeHaveClassesOfTheirOwn) {
  EXPECT_EQ(
      "== t <urn:t> t\n"
      "class CComment comment: sequence nillable\n"
      "  Value: text kXsdString [1] default \"none\"\n"
      "class CAnything anything: sequence mixed\n"
      "  AnyAttributes: anyAttribute \"##any\" [*]\n"
      "  AnyElements: any \"##any\" [*]\n"
      "  Text: text kXsdString [1]\n"
      "class COwn own: sequence\n"
      "class CType <Type> typed: sequence\n"
      "root comment: CComment\n"
      "root anything: CAnything\n"
      "root own: COwn\n"
      "root typed: CType\n",
      DescribeSchema("<xs:element name='comment' type='xs:string' default='none' nillable='true'/>"
                     "<xs:element name='anything'/>"
                     "<xs:element name='own'><xs:complexType/></xs:element>"
                     "<xs:complexType name='Type'/><xs:element name='typed' type='t:Type'/>"
                     "<xs:element name='head' abstract='true' type='t:Type'/>"));
}

TEST(MemberForms, XsiTypeMayTellTheClassWhereATypeHasDerivedOnesThatAreNotBlocked) {
  EXPECT_EQ(
      "class CT <T> T: sequence\n"
      "  A: object a CA [1] byType\n"
      "  B: object b CB [1]\n"
      "  Blocked: object blocked CA [1]\n"
      "  Abstract: object abstract CAbstract [1] byType\n",
      DescribeClassOf(
          "<xs:complexType name='A'/>"
          "<xs:complexType name='B'><xs:complexContent><xs:extension base='t:A'/>"
          "</xs:complexContent></xs:complexType>"
          "<xs:complexType name='Abstract' abstract='true'/>"
          "<xs:complexType name='T'><xs:sequence><xs:element name='a' type='t:A'/>"
          "<xs:element name='b' type='t:B'/>"
          "<xs:element name='blocked' type='t:A' block='extension'/>"
          "<xs:element name='abstract' type='t:Abstract'/></xs:sequence></xs:complexType>",
          "CT"));
}

TEST(MemberForms, WhatRequiresItselfWithoutEndIsOptional) {
  EXPECT_EQ(
      "== t <urn:t> t\n"
      "class CA <A> A: sequence\n"
      "  B: object b CB [1]\n"
      "class CB <B> B: sequence\n"
      "  A: object a CA [?]\n"
      "  Other: object other CB [?]\n"
      "warning: /xs:schema/xs:complexType[@name='B']/xs:sequence/xs:element[@name='a']: The "
      "element "
      "a requires itself without end, it is bound as optional\n",
      DescribeSchema("<xs:complexType name='A'><xs:sequence><xs:element name='b' type='t:B'/>"
                     "</xs:sequence></xs:complexType>"
                     "<xs:complexType name='B'><xs:sequence><xs:element name='a' type='t:A'/>"
                     "<xs:element name='other' type='t:B' minOccurs='0'/></xs:sequence>"
                     "</xs:complexType>"));
}

TEST(MemberForms, DocumentationComesAlong) {
  CSchemaTrial trial;
  trial.AddSchema(
      "<xs:element name='root'><xs:annotation><xs:documentation>A root.</xs:documentation>"
      "</xs:annotation><xs:complexType><xs:sequence><xs:element name='a' type='xs:int'>"
      "<xs:annotation><xs:documentation>An a.</xs:documentation></xs:annotation></xs:element>"
      "</xs:sequence><xs:attribute name='b'><xs:annotation><xs:documentation>A "
      "b.</xs:documentation>"
      "</xs:annotation></xs:attribute></xs:complexType></xs:element>"
      "<xs:simpleType name='E'><xs:annotation><xs:documentation>Es.</xs:documentation>"
      "</xs:annotation><xs:restriction base='xs:token'><xs:enumeration value='x'><xs:annotation>"
      "<xs:documentation>An x.</xs:documentation></xs:annotation></xs:enumeration>"
      "</xs:restriction></xs:simpleType>");
  const Model& model = trial.Bind();
  const BoundClass* const root = FindClass(model, "CRoot");
  ASSERT_NE(nullptr, root);
  EXPECT_EQ("A root.", root->documentation);
  ASSERT_EQ(2u, root->members.size());
  EXPECT_EQ("A b.", root->members[0].documentation);
  EXPECT_EQ("An a.", root->members[1].documentation);
  const BoundEnum& bound = *model.namespaces[0]->enums[0];
  EXPECT_EQ("Es.", bound.documentation);
  EXPECT_EQ("An x.", bound.enumerators[0].documentation);
  EXPECT_EQ("A root.", model.namespaces[0]->roots[0].documentation);
}

}  // namespace
}  // namespace qzxml::generator::tests
