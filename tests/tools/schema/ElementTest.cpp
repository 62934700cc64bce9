#include <gtest/gtest.h>

#include <string>

#include "tests/tools/schema/SchemaTrial.h"

using namespace qzxml::generator;
using qztest::SchemaTrial;

namespace {

std::string GetSubstitutes(const ElementDecl& element) {
  std::string text;
  for (const ElementDecl* const substitute : element.substitutes) {
    text += (text.empty() ? "" : " ") + substitute->name.localName;
  }
  return text;
}

}  // namespace

TEST(Element, IsQualifiedAsItsFormOrTheSchemaSays) {
  SchemaTrial trial;
  const CSchemaSet& set =
      trial
          .File("t.xsd",
                "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' targetNamespace='urn:t' "
                "attributeFormDefault='qualified'><xs:complexType name='T'><xs:sequence>"
                "<xs:element name='a'/><xs:element name='b' form='qualified'/></xs:sequence>"
                "<xs:attribute name='c'/><xs:attribute name='d' form='unqualified'/>"
                "</xs:complexType><xs:element name='e'/></xs:schema>")
          .Read({"t.xsd"});
  EXPECT_EQ("", trial.GetDiagnostics());
  const ComplexType& type = trial.GetComplex("T");
  EXPECT_EQ("a", type.particle->group->particles[0]->element->name.ToString());
  EXPECT_EQ("{urn:t}b", type.particle->group->particles[1]->element->name.ToString());
  EXPECT_EQ("{urn:t}c", type.attributes[0].attribute->name.ToString());
  EXPECT_EQ("d", type.attributes[1].attribute->name.ToString());
  EXPECT_TRUE(set.FindElement({"urn:t", "e"})->isGlobal);
  EXPECT_FALSE(type.particle->group->particles[0]->element->isGlobal);
}

TEST(Element, HasItsValuesBehindTheWhiteSpaceRule) {
  SchemaTrial trial;
  trial.ReadBody(
      "<xs:element name='a' type='xs:int' default=' 5 ' nillable='true'/>"
      "<xs:element name='b' fixed=' x '><xs:simpleType><xs:restriction "
      "base='xs:string'/></xs:simpleType></xs:element>"
      "<xs:element name='c' default=' as it is '><xs:complexType mixed='true'>"
      "<xs:sequence minOccurs='0'><xs:element name='i'/></xs:sequence>"
      "</xs:complexType></xs:element>");
  EXPECT_EQ("", trial.GetDiagnostics());
  EXPECT_EQ("5", trial.GetElement("a").value.defaultValue);
  EXPECT_TRUE(trial.GetElement("a").isNillable);
  EXPECT_EQ(" x ", trial.GetElement("b").value.fixedValue);
  EXPECT_EQ(" as it is ", trial.GetElement("c").value.defaultValue);
}

TEST(Element, HasTheTypeOfItsHeadWhereItNamesNone) {
  SchemaTrial trial;
  trial.ReadBody(
      "<xs:element name='c' substitutionGroup='b'/>"
      "<xs:element name='b' substitutionGroup='a'/>"
      "<xs:element name='a' type='xs:int'/><xs:element name='d'/>");
  EXPECT_EQ("", trial.GetDiagnostics());
  EXPECT_EQ(trial.GetElement("a").type, trial.GetElement("c").type);
  EXPECT_TRUE(trial.GetElement("c").hasNoNamedType);
  EXPECT_FALSE(trial.GetElement("a").hasNoNamedType);
  EXPECT_TRUE(trial.GetElement("d").type->AsComplex()->IsAnyType());
}

TEST(Element, KnowsAllThatMayStandInItsPlace) {
  SchemaTrial trial;
  trial.ReadBody(
      "<xs:element name='late' type='Ext' substitutionGroup='mid'/>"
      "<xs:element name='head' type='Base'/>"
      "<xs:element name='mid' type='Base' abstract='true' substitutionGroup='head'/>"
      "<xs:element name='res' type='Res' substitutionGroup='head'/>"
      "<xs:element name='noExt' type='Base' block='extension'/>"
      "<xs:element name='x1' type='Ext' substitutionGroup='noExt'/>"
      "<xs:element name='x2' type='Res' substitutionGroup='noExt'/>"
      "<xs:element name='none' type='Base' block='substitution'/>"
      "<xs:element name='n1' type='Base' substitutionGroup='none'/>"
      "<xs:element name='blocked' type='Blocked'/>"
      "<xs:element name='b1' type='OfBlocked' substitutionGroup='blocked'/>"
      "<xs:complexType name='Base'/>"
      "<xs:complexType name='Ext'><xs:complexContent><xs:extension base='Base'/>"
      "</xs:complexContent></xs:complexType>"
      "<xs:complexType name='Res'><xs:complexContent><xs:restriction base='Base'/>"
      "</xs:complexContent></xs:complexType>"
      "<xs:complexType name='Blocked' block='#all'/>"
      "<xs:complexType name='OfBlocked'><xs:complexContent><xs:extension base='Blocked'/>"
      "</xs:complexContent></xs:complexType>");
  EXPECT_EQ("", trial.GetDiagnostics());
  EXPECT_EQ("late res", GetSubstitutes(trial.GetElement("head")));
  EXPECT_EQ("late", GetSubstitutes(trial.GetElement("mid")));
  EXPECT_EQ("x2", GetSubstitutes(trial.GetElement("noExt")));
  EXPECT_EQ("", GetSubstitutes(trial.GetElement("none")));
  EXPECT_EQ("", GetSubstitutes(trial.GetElement("blocked")));
  EXPECT_EQ(&trial.GetElement("mid"), trial.GetElement("late").head);
}

TEST(Element, KeepsItsIdentityConstraintsAndWarnsOfThem) {
  SchemaTrial trial;
  trial.ReadBody(
      "<xs:element name='e'><xs:complexType><xs:sequence><xs:element name='i' "
      "maxOccurs='unbounded'/></xs:sequence></xs:complexType>"
      "<xs:key name='k'><xs:selector xpath='.//t:i | t:i/child::*'/><xs:field xpath='@a'/>"
      "<xs:field xpath='.//t:x/attribute::t:*'/></xs:key>"
      "<xs:keyref name='r' refer='k'><xs:selector xpath='*'/><xs:field xpath='.'/>"
      "<xs:field xpath='a.b/c-d'/></xs:keyref></xs:element>");
  EXPECT_EQ(
      "warning: t.xsd: /xs:schema/xs:element[@name='e']/xs:key[@name='k']: Identity constraints "
      "are not bound: '{urn:t}k' is not checked by what is generated.\n"
      "warning: t.xsd: /xs:schema/xs:element[@name='e']/xs:keyref[@name='r']: Identity "
      "constraints are not bound: '{urn:t}r' is not checked by what is generated.",
      trial.GetDiagnostics());
  const ElementDecl& element = trial.GetElement("e");
  ASSERT_EQ(2U, element.identityConstraints.size());
  EXPECT_EQ(IdentityKind_Key, element.identityConstraints[0]->identityKind);
  EXPECT_EQ(".//t:i | t:i/child::*", element.identityConstraints[0]->selector);
  EXPECT_EQ(2U, element.identityConstraints[0]->fields.size());
  EXPECT_EQ(element.identityConstraints[0], element.identityConstraints[1]->refer);
}
