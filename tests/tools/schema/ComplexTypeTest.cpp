#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tools/schema/SchemaTrial.h"

using namespace qzxml::generator;
using qztest::SchemaTrial;
using qztest::ToText;

TEST(ComplexType, HasTheContentThatItWrites) {
  const struct {
    const char* body;  // of a type
    ContentKind content;
    const char* particle;
  } cases[] = {
      {"", ContentKind_Empty, "-"},
      {"<xs:sequence/>", ContentKind_Empty, "-"},
      {"<xs:all/>", ContentKind_Empty, "-"},
      {"<xs:choice minOccurs='0'/>", ContentKind_Empty, "-"},
      {"<xs:choice/>", ContentKind_ElementOnly, "()"},
      {"<xs:sequence minOccurs='0' maxOccurs='0'><xs:element name='a'/></xs:sequence>",
       ContentKind_Empty, "-"},
      {"<xs:sequence><xs:element name='a' minOccurs='0' maxOccurs='0'/></xs:sequence>",
       ContentKind_ElementOnly, "()"},
      {"<xs:sequence><xs:element name='a'/><xs:choice minOccurs='2' maxOccurs='unbounded'>"
       "<xs:element name='b' minOccurs='0'/><xs:any namespace='##other'/></xs:choice>"
       "</xs:sequence>",
       ContentKind_ElementOnly, "(a, (b? | ##other){2,*})"},
      {"<xs:all minOccurs='0'><xs:element name='a'/><xs:element name='b' minOccurs='0'/></xs:all>",
       ContentKind_ElementOnly, "(a & b?)?"},
      {"<xs:group ref='G' maxOccurs='3'/>", ContentKind_ElementOnly, "(g, h){1,3}"},
      {"<xs:sequence><xs:element ref='e' maxOccurs='999999999999999999999'/></xs:sequence>",
       ContentKind_ElementOnly, "(e{1,1000000000000000000})"},
  };
  for (const auto& c : cases) {
    SchemaTrial trial;
    trial.ReadBody(std::string("<xs:complexType name='T'>") + c.body +
                   "</xs:complexType><xs:element name='e'/><xs:group name='G'><xs:sequence>"
                   "<xs:element name='g'/><xs:element name='h'/></xs:sequence></xs:group>");
    EXPECT_EQ("", trial.GetDiagnostics()) << c.body;
    const ComplexType& type = trial.GetComplex("T");
    EXPECT_EQ(c.content, type.content) << c.body;
    EXPECT_EQ(c.particle, ToText(type.particle)) << c.body;
    EXPECT_EQ(type.particle, type.ownParticle) << c.body;
    EXPECT_TRUE(type.base->AsComplex()->IsAnyType()) << c.body;
  }
}

TEST(ComplexType, KnowsTheNamedGroupThatContentComesFrom) {
  SchemaTrial trial;
  const CSchemaSet& set = trial.ReadBody(
      "<xs:group name='G'><xs:choice><xs:element name='g'/></xs:choice></xs:group>"
      "<xs:complexType name='T'><xs:sequence><xs:group ref='G' minOccurs='0'/></xs:sequence>"
      "</xs:complexType>");
  const Particle& particle = *trial.GetComplex("T").particle->group->particles[0];
  EXPECT_TRUE(particle.isReference);
  EXPECT_EQ(set.FindGroup({"urn:t", "G"}), particle.group->definition);
  EXPECT_EQ(0, particle.minOccurs);
  EXPECT_EQ(nullptr, trial.GetComplex("T").particle->group->definition);
}

TEST(ComplexType, ExtendsTheContentOfItsBase) {
  const struct {
    const char* base;
    const char* own;
    ContentKind content;
    const char* particle;
  } cases[] = {
      {"<xs:sequence><xs:element name='a'/></xs:sequence>",
       "<xs:sequence><xs:element name='b'/></xs:sequence>", ContentKind_ElementOnly, "((a), (b))"},
      {"<xs:sequence><xs:element name='a'/></xs:sequence>", "", ContentKind_ElementOnly, "(a)"},
      {"", "<xs:sequence><xs:element name='b'/></xs:sequence>", ContentKind_ElementOnly, "(b)"},
      {"", "<xs:all><xs:element name='b'/></xs:all>", ContentKind_ElementOnly, "(b)"},
      {"", "", ContentKind_Empty, "-"},
      {"<xs:choice maxOccurs='2'><xs:element name='a'/></xs:choice>",
       "<xs:choice><xs:element name='b'/></xs:choice>", ContentKind_ElementOnly, "((a){1,2}, (b))"},
  };
  for (const auto& c : cases) {
    SchemaTrial trial;
    trial.ReadBody(std::string("<xs:complexType name='T'><xs:complexContent>"
                               "<xs:extension base='B'>") +
                   c.own + "</xs:extension></xs:complexContent></xs:complexType>" +
                   "<xs:complexType name='B'>" + c.base + "</xs:complexType>");
    EXPECT_EQ("", trial.GetDiagnostics()) << c.own;
    const ComplexType& type = trial.GetComplex("T");
    EXPECT_EQ(c.content, type.content) << c.own;
    EXPECT_EQ(c.particle, ToText(type.particle)) << c.own;
    EXPECT_EQ(DerivationMethod_Extension, type.method);
    EXPECT_EQ(&trial.GetComplex("B"), type.base);
    EXPECT_EQ(std::vector<const ComplexType*>{&type}, trial.GetComplex("B").derivedTypes);
  }
}

TEST(ComplexType, IsMixedWhereItsContentOrTheTypeSaysSo) {
  SchemaTrial trial;
  trial.ReadBody(
      "<xs:complexType name='M' mixed='true'/>"
      "<xs:complexType name='E'><xs:complexContent><xs:extension base='M'/></xs:complexContent>"
      "</xs:complexType>"
      "<xs:complexType name='F'><xs:complexContent mixed='1'><xs:extension base='M'>"
      "<xs:sequence><xs:element name='a'/></xs:sequence></xs:extension></xs:complexContent>"
      "</xs:complexType>"
      "<xs:complexType name='R' mixed='true'><xs:complexContent mixed='false'>"
      "<xs:restriction base='M'/></xs:complexContent></xs:complexType>");
  EXPECT_EQ("", trial.GetDiagnostics());
  EXPECT_EQ(ContentKind_Mixed, trial.GetComplex("M").content);
  EXPECT_EQ(nullptr, trial.GetComplex("M").particle);
  EXPECT_EQ(ContentKind_Mixed, trial.GetComplex("E").content);
  EXPECT_EQ(ContentKind_Mixed, trial.GetComplex("F").content);
  EXPECT_EQ("(a)", ToText(trial.GetComplex("F").particle));
  EXPECT_EQ(ContentKind_Empty, trial.GetComplex("R").content);
}

TEST(ComplexType, HasSimpleContentOfItsBaseOrOfAnAnonymousRestriction) {
  SchemaTrial trial;
  const CSchemaSet& set = trial.ReadBody(
      "<xs:complexType name='X'><xs:simpleContent><xs:extension base='xs:decimal'>"
      "<xs:attribute name='unit'/></xs:extension></xs:simpleContent></xs:complexType>"
      "<xs:complexType name='Y'><xs:simpleContent><xs:extension base='X'>"
      "<xs:attribute name='more'/></xs:extension></xs:simpleContent></xs:complexType>"
      "<xs:complexType name='R'><xs:simpleContent><xs:restriction base='Y'>"
      "<xs:maxInclusive value='10'/></xs:restriction></xs:simpleContent></xs:complexType>"
      "<xs:complexType name='S'><xs:simpleContent><xs:restriction base='Y'>"
      "<xs:simpleType><xs:restriction base='xs:int'/></xs:simpleType>"
      "</xs:restriction></xs:simpleContent></xs:complexType>"
      "<xs:complexType name='Q'><xs:simpleContent><xs:restriction base='Y'/></xs:simpleContent>"
      "</xs:complexType>"
      "<xs:complexType name='M' mixed='true'><xs:sequence minOccurs='0'><xs:element name='a'/>"
      "</xs:sequence></xs:complexType>"
      "<xs:complexType name='O'><xs:simpleContent><xs:restriction base='M'>"
      "<xs:simpleType><xs:restriction base='xs:token'/></xs:simpleType>"
      "<xs:minLength value='1'/></xs:restriction></xs:simpleContent></xs:complexType>");
  EXPECT_EQ("", trial.GetDiagnostics());
  EXPECT_EQ(set.GetBuiltIn(BuiltIn_decimal), trial.GetComplex("Y").simpleContent);
  EXPECT_EQ("unit more", ToText(trial.GetComplex("Y").attributes));
  const SimpleType* const restricted = trial.GetComplex("R").simpleContent;
  EXPECT_EQ(set.GetBuiltIn(BuiltIn_decimal), restricted->base);
  EXPECT_EQ("10", restricted->FindUpperBound().facet->value);
  EXPECT_EQ(&trial.GetComplex("R"), restricted->context);
  EXPECT_EQ(BuiltIn_int, trial.GetComplex("S").simpleContent->GetNearestBuiltIn());
  EXPECT_EQ(set.GetBuiltIn(BuiltIn_decimal), trial.GetComplex("Q").simpleContent);
  EXPECT_EQ(BuiltIn_token, trial.GetComplex("O").simpleContent->GetNearestBuiltIn());
  EXPECT_EQ("unit more", ToText(trial.GetComplex("R").attributes));
}

TEST(ComplexType, InheritsRestrictsAndProhibitsAttributes) {
  SchemaTrial trial;
  trial.ReadBody(
      "<xs:attribute name='g' type='xs:int' default='7'/>"
      "<xs:attributeGroup name='AG'><xs:attribute name='c' type='xs:token' use='required'/>"
      "<xs:attributeGroup ref='AH'/></xs:attributeGroup>"
      "<xs:attributeGroup name='AH'><xs:attribute name='d'/><xs:attribute name='no' "
      "use='prohibited'/></xs:attributeGroup>"
      "<xs:complexType name='B'><xs:attribute name='a' default=' x '/>"
      "<xs:attribute name='b' type='xs:int' fixed=' 05 '/><xs:attributeGroup ref='AG'/>"
      "<xs:attribute ref='g'/></xs:complexType>"
      "<xs:complexType name='R'><xs:complexContent><xs:restriction base='B'>"
      "<xs:attribute name='d' use='required'/><xs:attribute name='a' use='prohibited'/>"
      "<xs:attribute ref='g' default='8'/></xs:restriction></xs:complexContent></xs:complexType>"
      "<xs:complexType name='E'><xs:complexContent><xs:extension base='R'>"
      "<xs:attribute name='a' use='required'/></xs:extension></xs:complexContent>"
      "</xs:complexType>");
  EXPECT_EQ("", trial.GetDiagnostics());
  EXPECT_EQ("a= x  b:=05 c! d g=7", ToText(trial.GetComplex("B").attributes));
  EXPECT_EQ("b:=05 c! d! g=8", ToText(trial.GetComplex("R").attributes));
  EXPECT_EQ("d! a- g=8", ToText(trial.GetComplex("R").ownAttributes));
  EXPECT_EQ("b:=05 c! d! g=8 a!", ToText(trial.GetComplex("E").attributes));
  EXPECT_TRUE(trial.GetComplex("B").attributes[4].isReference);
  EXPECT_EQ("{urn:t}g", trial.GetComplex("B").attributes[4].attribute->name.ToString());
  EXPECT_EQ("a", trial.GetComplex("B").attributes[0].attribute->name.ToString());
}

TEST(ComplexType, MergesTheWildcardsForAttributes) {
  SchemaTrial trial;
  trial.ReadBody(
      "<xs:attributeGroup name='AG'><xs:anyAttribute namespace='urn:a urn:b ##local' "
      "processContents='lax'/></xs:attributeGroup>"
      "<xs:complexType name='B'><xs:attributeGroup ref='AG'/>"
      "<xs:anyAttribute namespace='urn:b urn:c' processContents='skip'/></xs:complexType>"
      "<xs:complexType name='G'><xs:attributeGroup ref='AG'/></xs:complexType>"
      "<xs:complexType name='E'><xs:complexContent><xs:extension base='B'>"
      "<xs:anyAttribute namespace='##targetNamespace'/></xs:extension></xs:complexContent>"
      "</xs:complexType>"
      "<xs:complexType name='F'><xs:complexContent><xs:extension base='B'/></xs:complexContent>"
      "</xs:complexType>"
      "<xs:complexType name='R'><xs:complexContent><xs:restriction base='B'/></xs:complexContent>"
      "</xs:complexType>");
  EXPECT_EQ("", trial.GetDiagnostics());
  const struct {
    const char* type;
    const char* text;
    ProcessContents process;
  } cases[] = {{"B", "urn:b", ProcessContents_Skip},
               {"G", "urn:a urn:b ##local", ProcessContents_Lax},
               {"E", "##targetNamespace urn:b", ProcessContents_Strict},
               {"F", "urn:b", ProcessContents_Skip}};
  for (const auto& c : cases) {
    const Wildcard* const wildcard = trial.GetComplex(c.type).attributeWildcard;
    ASSERT_NE(nullptr, wildcard) << c.type;
    EXPECT_EQ(c.text, wildcard->namespaceText) << c.type;
    EXPECT_EQ(c.process, wildcard->processContents) << c.type;
  }
  EXPECT_EQ(nullptr, trial.GetComplex("R").attributeWildcard);
}

TEST(ComplexType, MayHoldItself) {
  SchemaTrial trial;
  trial.ReadBody(
      "<xs:complexType name='Node'><xs:sequence><xs:element name='child' type='Node' "
      "minOccurs='0' maxOccurs='unbounded'/><xs:group ref='G' minOccurs='0'/></xs:sequence>"
      "</xs:complexType>"
      "<xs:group name='G'><xs:sequence><xs:element name='inner'><xs:complexType>"
      "<xs:group ref='G' minOccurs='0'/></xs:complexType></xs:element></xs:sequence></xs:group>");
  EXPECT_EQ("", trial.GetDiagnostics());
  const ComplexType& node = trial.GetComplex("Node");
  EXPECT_EQ(&node, node.particle->group->particles[0]->element->type);
  const ModelGroup* const group = node.particle->group->particles[1]->group;
  const ComplexType* const inner = group->particles[0]->element->type->AsComplex();
  EXPECT_EQ(group, inner->particle->group);
  EXPECT_EQ(group->particles[0]->element, inner->context);
}

TEST(ComplexType, HasTheSetsOfFinalAndBlockOrThoseOfTheSchema) {
  SchemaTrial trial;
  trial.File("t.xsd",
             "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' targetNamespace='urn:t' "
             "finalDefault='extension list' blockDefault='#all'>"
             "<xs:complexType name='A'/><xs:complexType name='B' final='' block='extension' "
             "abstract='true'/><xs:element name='e' block='substitution'/><xs:element name='f'/>"
             "</xs:schema>");
  trial.Read({"t.xsd"});
  EXPECT_EQ("", trial.GetDiagnostics());
  EXPECT_EQ(Derivation_Extension, trial.GetComplex("A").finalSet);
  EXPECT_EQ(Derivation_Extension | Derivation_Restriction, trial.GetComplex("A").blockSet);
  EXPECT_EQ(Derivation_None, trial.GetComplex("B").finalSet);
  EXPECT_EQ(Derivation_Extension, trial.GetComplex("B").blockSet);
  EXPECT_TRUE(trial.GetComplex("B").isAbstract);
  EXPECT_EQ(Derivation_Substitution, trial.GetElement("e").blockSet);
  EXPECT_EQ(Derivation_Extension | Derivation_Restriction | Derivation_Substitution,
            trial.GetElement("f").blockSet);
}
