#include <gtest/gtest.h>

#include "tests/tools/model/ModelText.h"

// Extension and restriction of complex types.
namespace qzxml::generator::tests {
namespace {

std::string Type(const std::string& name, const std::string& content) {
  return "<xs:complexType name='" + name + "'>" + content + "</xs:complexType>";
}

std::string Derive(const std::string& method, const std::string& name, const std::string& base,
                   const std::string& content) {
  return Type(name, "<xs:complexContent><xs:" + method + " base='" + base + "'>" + content +
                        "</xs:" + method + "></xs:complexContent>");
}

std::string Extend(const std::string& name, const std::string& base, const std::string& content) {
  return Derive("extension", name, base, content);
}

std::string Restrict(const std::string& name, const std::string& base, const std::string& content) {
  return Derive("restriction", name, base, content);
}

std::string Sequence(const std::string& content) {
  return "<xs:sequence>" + content + "</xs:sequence>";
}
std::string Choice(const std::string& content) { return "<xs:choice>" + content + "</xs:choice>"; }

std::string Element(const std::string& name, const std::string& more = "") {
  return "<xs:element name='" + name + "' type='xs:int' " + more + "/>";
}

// What is bound of the types, without the line of the namespace.
std::string BindTypes(const std::string& content) {
  const std::string text = DescribeSchema(content);
  return text.substr(text.find('\n') + 1);
}

const std::string kMaybe = "minOccurs='0'";
const std::string kMany = "minOccurs='0' maxOccurs='unbounded'";

// --- Extension

TEST(Derivation, AnExtensionAddsBehindItsBase) {
  EXPECT_EQ(
      "class CA <A> A: sequence > CB > CC\n"
      "  X: attribute x kXsdInt [?]\n"
      "  A: value a kXsdInt [1]\n"
      "class CB <B> B: sequence base CA 2 > CC\n"
      "  Y: attribute y kXsdInt [?]\n"
      "  B: value b kXsdInt [1]\n"
      "class CC <C> C: sequence base CB 4\n",
      BindTypes(
          Type("A", Sequence(Element("a")) + "<xs:attribute name='x' type='xs:int'/>") +
          Extend("B", "t:A", Sequence(Element("b")) + "<xs:attribute name='y' type='xs:int'/>") +
          Extend("C", "t:B", "")));
}

TEST(Derivation, ABaseStandsAheadOfWhatDerivesFromIt) {
  EXPECT_EQ(
      "class CA <A> A: sequence > CB\n"
      "class CB <B> B: sequence base CA 0\n",
      BindTypes(Extend("B", "t:A", "") + Type("A", "")));
}

TEST(Derivation, AChoiceThatIsExtendedIsAGroupOfTheBase) {
  EXPECT_EQ(
      "class CA <A> A: sequence > CB > CC\n"
      "  XOrY: group xOrY CA::CXOrY [1] requiresContent\n"
      "class CB <B> B: sequence base CA 1 > CC\n"
      "class CC <C> C: sequence base CB 1\n"
      "  Z: value z kXsdInt [1]\n"
      "class CD <D> D: choice > CE\n"
      "  X: value x kXsdInt [?]\n"
      "  Y: value y kXsdInt [?]\n"
      "class CE <E> E: choice base CD 2\n"
      "  At: attribute at kXsdInt [?]\n"
      "class CA::CXOrY xOrY: group choice\n"
      "  X: value x kXsdInt [?]\n"
      "  Y: value y kXsdInt [?]\n",
      BindTypes(Type("A", Choice(Element("x") + Element("y"))) + Extend("B", "t:A", "") +
                Extend("C", "t:B", Sequence(Element("z"))) +
                Type("D", Choice(Element("x") + Element("y"))) +
                Extend("E", "t:D", "<xs:attribute name='at' type='xs:int'/>")));
}

TEST(Derivation, AnExtensionByAChoiceIsOneOnlyWhereTheBaseHasNoElements) {
  EXPECT_EQ(
      "class CA <A> A: sequence > CB\n"
      "  X: attribute x kXsdInt [?]\n"
      "class CB <B> B: choice base CA 1\n"
      "  P: value p kXsdInt [?]\n"
      "  Q: value q kXsdInt [?]\n"
      "class CC <C> C: sequence > CD\n"
      "  C: value c kXsdInt [1]\n"
      "class CD <D> D: sequence base CC 1\n"
      "  POrQ: group pOrQ CD::CPOrQ [1] requiresContent\n"
      "class CD::CPOrQ pOrQ: group choice\n"
      "  P: value p kXsdInt [?]\n"
      "  Q: value q kXsdInt [?]\n",
      BindTypes(Type("A", "<xs:attribute name='x' type='xs:int'/>") +
                Extend("B", "t:A", Choice(Element("p") + Element("q"))) +
                Type("C", Sequence(Element("c"))) +
                Extend("D", "t:C", Choice(Element("p") + Element("q")))));
}

TEST(Derivation, AWildcardThatGetsWiderStaysTheBasesProperty) {
  EXPECT_EQ(
      "class CA <A> A: sequence > CB\n"
      "  AnyAttributes: anyAttribute \"urn:u\" [*]\n"
      "class CB <B> B: sequence base CA 1\n"
      "  #0 AnyAttributes: anyAttribute \"##any\" [*]\n",
      BindTypes(Type("A", "<xs:anyAttribute namespace='urn:u'/>") +
                Extend("B", "t:A", "<xs:anyAttribute/>")));
}

TEST(Derivation, SimpleContentIsExtendedByAttributesAndTightened) {
  EXPECT_EQ(
      "simple kSmall: decimal Collapse MaxInclusive(\"9\")\n"
      "simple kCValue: decimal Collapse MaxInclusive(\"5\")\n"
      "class CA <A> A: sequence > CB > CC\n"
      "  X: attribute x kXsdInt [?]\n"
      "  Value: text kSmall [1]\n"
      "class CB <B> B: sequence base CA 2 > CC\n"
      "  Y: attribute y kXsdInt [?]\n"
      "class CC <C> C: sequence base CB 3\n"
      "  #0 X: attribute x kXsdInt [1]\n"
      "  #1 Value: text kCValue [1]\n",
      BindTypes("<xs:simpleType name='Small'><xs:restriction base='xs:decimal'><xs:maxInclusive "
                "value='9'/></xs:restriction></xs:simpleType>" +
                Type("A",
                     "<xs:simpleContent><xs:extension base='t:Small'><xs:attribute name='x' "
                     "type='xs:int'/></xs:extension></xs:simpleContent>") +
                Type("B",
                     "<xs:simpleContent><xs:extension base='t:A'><xs:attribute name='y' "
                     "type='xs:int'/></xs:extension></xs:simpleContent>") +
                Type("C",
                     "<xs:simpleContent><xs:restriction base='t:B'><xs:maxInclusive value='5'/>"
                     "<xs:attribute name='x' type='xs:int' use='required'/>"
                     "</xs:restriction></xs:simpleContent>")));
}

TEST(Derivation, AnExtensionOfAnyTypeHasItsContentWhole) {
  EXPECT_EQ(
      "class CT <T> T: sequence mixed\n"
      "  AnyAttributes: anyAttribute \"##any\" [*]\n"
      "  AnyElements: any \"##any\" [*]\n"
      "  Text: text kXsdString [1]\n",
      BindTypes(Type("T",
                     "<xs:complexContent mixed='true'><xs:extension base='xs:anyType'/>"
                     "</xs:complexContent>")));
}

// --- Restriction

TEST(Derivation, ARestrictionKeepsTheMembersAndTightensThem) {
  EXPECT_EQ(
      "simple kSmall: i4 Collapse MaxInclusive(\"9\")\n"
      "class CA <A> A: sequence > CR\n"
      "  X: attribute x kXsdInt [?]\n"
      "  Y: attribute y kXsdInt [?]\n"
      "  Z: attribute z kXsdInt [?]\n"
      "  AnyAttributes: anyAttribute \"##any\" [*]\n"
      "  A: value a kXsdInt [?]\n"
      "  Bs: value b kXsdInt [*]\n"
      "  C: value c kXsdInt [?]\n"
      "  D: value d kXsdInt [1]\n"
      "class CR <R> R: sequence base CA 8\n"
      "  New: attribute new kXsdInt [?]\n"
      "  #0 X: attribute x kXsdInt [1]\n"
      "  #1 Y: attribute y kXsdInt [0] single\n"
      "  #2 Z: attribute z kSmall [?] default \"3\"\n"
      "  #3 AnyAttributes: anyAttribute \"##any\" [0] col\n"
      "  #4 A: value a kSmall [1]\n"
      "  #5 Bs: value b kXsdInt [1] col\n"
      "  #6 C: value c kXsdInt [0] single\n"
      "  #7 D: value d kXsdInt [1] fixed \"7\"\n",
      BindTypes(
          "<xs:simpleType name='Small'><xs:restriction base='xs:int'><xs:maxInclusive value='9'/>"
          "</xs:restriction></xs:simpleType>" +
          Type("A",
               Sequence(Element("a", kMaybe) + Element("b", kMany) + Element("c", kMaybe) +
                        Element("d")) +
                   "<xs:attribute name='x' type='xs:int'/><xs:attribute name='y' type='xs:int'/>"
                   "<xs:attribute name='z' type='xs:int'/><xs:anyAttribute/>") +
          Restrict("R", "t:A",
                   Sequence("<xs:element name='a' type='t:Small'/>" + Element("b") +
                            Element("d", "fixed='7'")) +
                       "<xs:attribute name='x' type='xs:int' use='required'/>"
                       "<xs:attribute name='y' use='prohibited'/>"
                       "<xs:attribute name='z' type='t:Small' default='3'/>"
                       "<xs:attribute name='new' type='xs:int'/>")));
}

TEST(Derivation, ARestrictionToAnotherKindIsCheckedByRules) {
  EXPECT_EQ(
      "simple kKindAsString: string Collapse rules\n"
      "simple kIntAsDecimal: decimal Collapse rules\n"
      "class CA <A> A: sequence > CR\n"
      "  Kind: attribute kind kXsdString [?]\n"
      "  Size: attribute size kXsdDecimal [?]\n"
      "class CR <R> R: sequence base CA 2\n"
      "  #0 Kind: attribute kind kKindAsString [?]\n"
      "  #1 Size: attribute size kIntAsDecimal [?]\n",
      BindTypes(
          Type("A",
               "<xs:attribute name='kind' type='xs:string'/>"
               "<xs:attribute name='size' type='xs:decimal'/>") +
          Restrict("R", "t:A",
                   "<xs:attribute name='kind'><xs:simpleType><xs:restriction base='xs:NMTOKEN'>"
                   "<xs:enumeration value='a'/></xs:restriction></xs:simpleType></xs:attribute>"
                   "<xs:attribute name='size' type='xs:int'/>")));
}

TEST(Derivation, ARestrictionOfAnEnumerationInAPropertyIsToldOf) {
  const std::string both =
      "<xs:simpleType name='E'><xs:restriction base='xs:token'><xs:enumeration value='a'/>"
      "<xs:enumeration value='b'/></xs:restriction></xs:simpleType>"
      "<xs:simpleType name='F'><xs:restriction base='t:E'><xs:enumeration value='b'/>"
      "</xs:restriction></xs:simpleType>";
  EXPECT_EQ(
      "enum E Collapse: E_a=a, E_b=b\n"
      "enum F Collapse: F_b=b\n"
      "simple kE: i4 Collapse enum\n"
      "simple kF: i4 Collapse enum\n"
      "class CA <A> A: sequence > CR\n"
      "  X: attribute x E [?]\n"
      "class CR <R> R: sequence base CA 1\n"
      "warning: /xs:schema/xs:complexType[@name='R']/xs:complexContent/xs:restriction/"
      "xs:attribute[@name='x']: The enumeration of the base is taken for x, with the values that "
      "the restriction leaves out\n",
      BindTypes(both + Type("A", "<xs:attribute name='x' type='t:E'/>") +
                Restrict("R", "t:A", "<xs:attribute name='x' type='t:F'/>")));
}

TEST(Derivation, ARestrictionOfAChoiceMayHaveFewerBranches) {
  EXPECT_EQ(
      "class CA <A> A: choice > CR > CS\n"
      "  A: value a kXsdInt [?]\n"
      "  B: value b kXsdInt [?]\n"
      "  C: value c kXsdInt [?]\n"
      "class CR <R> R: choice base CA 3\n"
      "  #1 B: value b kXsdInt [0] single\n"
      "class CS <S> S: choice base CA 3\n"
      "  #0 A: value a kXsdInt [0] single\n"
      "  #2 C: value c kXsdInt [0] single\n",
      BindTypes(Type("A", Choice(Element("a") + Element("b") + Element("c"))) +
                Restrict("R", "t:A", Choice(Element("a") + Element("c"))) +
                Restrict("S", "t:A", Sequence(Element("b")))));
}

TEST(Derivation, ARestrictionOfAllMayBeASequence) {
  EXPECT_EQ(
      "class CA <A> A: all > CR\n"
      "  A: value a kXsdInt [1]\n"
      "  B: value b kXsdInt [?]\n"
      "  C: value c kXsdInt [?]\n"
      "class CR <R> R: sequence base CA 3\n"
      "  #1 B: value b kXsdInt [0] single\n"
      "  #2 C: value c kXsdInt [1]\n",
      BindTypes(Type("A", "<xs:all>" + Element("a") + Element("b", kMaybe) + Element("c", kMaybe) +
                              "</xs:all>") +
                Restrict("R", "t:A", Sequence(Element("a") + Element("c")))));
}

TEST(Derivation, ARestrictionMayNarrowTheClassOfAnElement) {
  EXPECT_EQ(
      "class CB <B> B: sequence > CC\n"
      "class CC <C> C: sequence base CB 0\n"
      "class CA <A> A: sequence > CR\n"
      "  X: object x CB [1] byType\n"
      "  Ys: object y CB [*] byType\n"
      "class CR <R> R: sequence base CA 2\n"
      "  #0 X: object x CC [1]\n"
      "  #1 Ys: object y CC [*]\n",
      BindTypes(
          Type("B", "") + Restrict("C", "t:B", "") +
          Type("A", Sequence("<xs:element name='x' type='t:B'/><xs:element name='y' type='t:B' "
                             "minOccurs='0' maxOccurs='unbounded'/>")) +
          Restrict("R", "t:A",
                   Sequence("<xs:element name='x' type='t:C'/><xs:element name='y' type='t:C' "
                            "minOccurs='0' maxOccurs='unbounded'/>"))));
}

TEST(Derivation, TheDeclaredPropertyComesWithARestriction) {
  CSchemaTrial trial;
  trial.AddSchema(Type("A", Sequence(Element("b", kMany))) +
                  Restrict("R", "t:A", Sequence(Element("b"))) +
                  Restrict("S", "t:R", Sequence(Element("b", "fixed='1'"))));
  const Model& model = trial.Bind();
  const BoundClass* const base = FindClass(model, "CA");
  const BoundClass* const last = FindClass(model, "CS");
  ASSERT_NE(nullptr, last);
  ASSERT_EQ(1u, last->restricted.size());
  EXPECT_EQ(base, last->restricted[0].owner);
  EXPECT_EQ(&base->members[0], last->restricted[0].declared);
  EXPECT_TRUE(last->restricted[0].member.IsCollection());
  EXPECT_EQ(1, last->restricted[0].member.maxOccurs);
  EXPECT_EQ("1", last->restricted[0].member.defaultValue.value_or(""));
}

TEST(Derivation, ElementsInPlaceOfAWildcardAreTheClassesOwn) {
  EXPECT_EQ(
      "class CA <A> A: sequence > CR > CS\n"
      "  A: value a kXsdInt [1]\n"
      "  AnyElements: any \"##any\" [*]\n"
      "class CR <R> R: sequence base CA 2\n"
      "  Bs: value b kXsdInt [*]\n"
      "  #1 AnyElements: any \"##any\" [0] col\n"
      "class CS <S> S: sequence base CA 2\n"
      "  BOrC: group bOrC CS::CBOrC [1] requiresContent\n"
      "  #1 AnyElements: any \"##any\" [0] col\n"
      "class CS::CBOrC bOrC: group choice\n"
      "  B: value b kXsdInt [?]\n"
      "  C: value c kXsdInt [?]\n",
      BindTypes(
          Type("A", Sequence(Element("a") + "<xs:any minOccurs='0' maxOccurs='unbounded' "
                                            "processContents='lax'/>")) +
          Restrict("R", "t:A", Sequence(Element("a") + Element("b", kMany))) +
          Restrict("S", "t:A", Sequence(Element("a") + Choice(Element("b") + Element("c"))))));
}

TEST(Derivation, AGroupThatIsRestrictedWithinIsTakenWholeWithAWarning) {
  EXPECT_EQ(
      "class CA <A> A: sequence > CR\n"
      "  AOrBs: group aOrB CA::CAOrB [*] requiresContent\n"
      "class CR <R> R: sequence base CA 1\n"
      "class CA::CAOrB aOrB: group choice\n"
      "  A: value a kXsdInt [?]\n"
      "  B: value b kXsdInt [?]\n"
      "warning: /xs:schema/xs:complexType[@name='R']: The content of this restriction is taken "
      "with "
      "more of {urn:t}A than it allows\n",
      BindTypes(Type("A", "<xs:choice minOccurs='0' maxOccurs='unbounded'>" + Element("a") +
                              Element("b") + "</xs:choice>") +
                Restrict("R", "t:A", Sequence(Element("a") + Element("b")))));
}

TEST(Derivation, WhatCannotBeLaidOverTheBaseIsTakenFromItWithAWarning) {
  EXPECT_EQ(
      "class CA <A> A: sequence > CR\n"
      "  AnyElements: any \"##any\" [1] col\n"
      "  B: value b kXsdInt [1]\n"
      "class CR <R> R: sequence base CA 2\n"
      "warning: /xs:schema/xs:complexType[@name='R']: The content of this restriction cannot be "
      "laid "
      "over that of {urn:t}A, whose content is taken instead\n",
      BindTypes(Type("A", Sequence("<xs:any processContents='lax'/>" + Element("b"))) +
                Restrict("R", "t:A", Sequence(Element("a") + Element("b")))));
}

TEST(Derivation, ARestrictionToNothingProhibitsEverything) {
  EXPECT_EQ(
      "class CA <A> A: sequence mixed > CR\n"
      "  A: value a kXsdInt [?]\n"
      "  Text: text kXsdString [1]\n"
      "class CR <R> R: sequence base CA 2\n"
      "  #0 A: value a kXsdInt [0] single\n"
      "  #1 Text: text kXsdString [0] single\n",
      BindTypes("<xs:complexType name='A' mixed='true'>" + Sequence(Element("a", kMaybe)) +
                "</xs:complexType>" + Restrict("R", "t:A", "")));
}

TEST(Derivation, AnExtensionOfARestrictionCountsAllProperties) {
  EXPECT_EQ(
      "class CA <A> A: sequence > CR > CE\n"
      "  A: value a kXsdInt [?]\n"
      "class CR <R> R: sequence base CA 1 > CE\n"
      "  #0 A: value a kXsdInt [1]\n"
      "class CE <E> E: sequence base CR 1\n"
      "  B: value b kXsdInt [1]\n",
      BindTypes(Type("A", Sequence(Element("a", kMaybe))) +
                Restrict("R", "t:A", Sequence(Element("a"))) +
                Extend("E", "t:R", Sequence(Element("b")))));
}

}  // namespace
}  // namespace qzxml::generator::tests
