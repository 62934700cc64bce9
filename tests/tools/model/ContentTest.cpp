#include <gtest/gtest.h>

#include "tests/tools/model/ModelText.h"

// What becomes of the groups of a content model.
namespace qzxml::generator::tests {
namespace {

// The class CT of a type with that content, and those nested in it.
std::string BindContent(const std::string& content) {
  CSchemaTrial trial;
  trial.AddSchema("<xs:complexType name='T'>" + content + "</xs:complexType>");
  const Model& model = trial.Bind();
  std::string text = DescribeClass(model, "CT");
  const BoundClass* const bound = FindClass(model, "CT");
  if (bound == nullptr) return text;
  for (const BoundClass* nested : bound->nested)
    text += DescribeClass(model, "CT::" + nested->name);
  return text;
}

constexpr char kA[] = "<xs:element name='a' type='xs:int'/>";
constexpr char kB[] = "<xs:element name='b' type='xs:int'/>";
constexpr char kC[] = "<xs:element name='c' type='xs:int'/>";
constexpr char kOptionalA[] = "<xs:element name='a' type='xs:int' minOccurs='0'/>";
constexpr char kOptionalB[] = "<xs:element name='b' type='xs:int' minOccurs='0'/>";

std::string Group(const char* compositor, const std::string& occurs, const std::string& content) {
  return std::string("<xs:") + compositor + " " + occurs + ">" + content + "</xs:" + compositor +
         ">";
}

const std::string kMany = "minOccurs='0' maxOccurs='unbounded'";
const std::string kMore = "maxOccurs='unbounded'";
const std::string kMaybe = "minOccurs='0'";

TEST(Content, OccurrencesOfElementsAreThoseOfTheSchema) {
  EXPECT_EQ(
      "class CT <T> T: sequence\n"
      "  A: value a kXsdInt [1]\n"
      "  B: value b kXsdInt [?]\n"
      "  Cs: value c kXsdInt [*]\n"
      "  Ds: value d kXsdInt [2-5]\n"
      "  Es: value e kXsdInt [3-n]\n",
      BindContent(
          "<xs:sequence><xs:element name='a' type='xs:int'/>"
          "<xs:element name='b' type='xs:int' minOccurs='0'/>"
          "<xs:element name='c' type='xs:int' minOccurs='0' maxOccurs='unbounded'/>"
          "<xs:element name='d' type='xs:int' minOccurs='2' maxOccurs='5'/>"
          "<xs:element name='e' type='xs:int' minOccurs='3' maxOccurs='3000000000'/>"
          "<xs:element name='f' type='xs:int' minOccurs='0' maxOccurs='0'/></xs:sequence>"));
}

TEST(Content, ASequenceInASequenceIsDissolved) {
  EXPECT_EQ(
      "class CT <T> T: sequence\n"
      "  A: value a kXsdInt [1]\n"
      "  B: value b kXsdInt [1]\n"
      "  C: value c kXsdInt [1]\n",
      BindContent(Group("sequence", "", kA + Group("sequence", "", std::string(kB) + kC))));
}

TEST(Content, AChoiceInAChoiceIsDissolved) {
  EXPECT_EQ(
      "class CT <T> T: choice\n"
      "  A: value a kXsdInt [?]\n"
      "  B: value b kXsdInt [?]\n"
      "  C: value c kXsdInt [?]\n",
      BindContent(Group("choice", "", kA + Group("choice", "", std::string(kB) + kC))));
}

TEST(Content, AGroupAroundOneMemberIsDissolved) {
  const std::string expected =
      "class CT <T> T: sequence\n"
      "  As: value a kXsdInt [*]\n";
  EXPECT_EQ(expected, BindContent(Group("sequence", kMany, kA)));
  EXPECT_EQ(expected, BindContent(Group("choice", kMany, kA)));
  EXPECT_EQ(expected, BindContent(Group("sequence", "", Group("sequence", kMore, kOptionalA))));
  EXPECT_EQ("class CT <T> T: sequence\n  A: value a kXsdInt [?]\n",
            BindContent(Group("sequence", kMaybe, kA)));
  EXPECT_EQ("class CT <T> T: sequence\n  As: value a kXsdInt [2-6]\n",
            BindContent(Group("sequence", "minOccurs='2' maxOccurs='3'",
                              "<xs:element name='a' type='xs:int' maxOccurs='2'/>")));
}

TEST(Content, AGroupWhoseNumbersAreNoRangeStays) {
  // Two or none, and two, four or six.
  const std::string two = "<xs:element name='a' type='xs:int' minOccurs='2' maxOccurs='2'/>";
  EXPECT_EQ(
      "class CT <T> T: sequence\n"
      "  A: group a CT::CA [?] requiresContent\n"
      "class CT::CA a: group sequence\n"
      "  As: value a kXsdInt [2-2]\n",
      BindContent(Group("sequence", kMaybe, two)));
  EXPECT_EQ(
      "class CT <T> T: sequence\n"
      "  As: group a CT::CA [1-3] requiresContent\n"
      "class CT::CA a: group sequence\n"
      "  As: value a kXsdInt [2-2]\n",
      BindContent(Group("sequence", "maxOccurs='3'", two)));
}

TEST(Content, AChoiceInASequenceIsAGroup) {
  EXPECT_EQ(
      "class CT <T> T: sequence\n"
      "  A: value a kXsdInt [1]\n"
      "  BOrC: group bOrC CT::CBOrC [1] requiresContent\n"
      "class CT::CBOrC bOrC: group choice\n"
      "  B: value b kXsdInt [?]\n"
      "  C: value c kXsdInt [?]\n",
      BindContent(Group("sequence", "", kA + Group("choice", "", std::string(kB) + kC))));
}

TEST(Content, ASequenceInAChoiceIsAGroup) {
  EXPECT_EQ(
      "class CT <T> T: choice\n"
      "  A: value a kXsdInt [?]\n"
      "  BAndC: group bAndC CT::CBAndC [?] requiresContent\n"
      "class CT::CBAndC bAndC: group sequence\n"
      "  B: value b kXsdInt [1]\n"
      "  C: value c kXsdInt [1]\n",
      BindContent(Group("choice", "", kA + Group("sequence", "", std::string(kB) + kC))));
}

TEST(Content, ARepeatedChoiceIsACollectionOfGroups) {
  EXPECT_EQ(
      "class CT <T> T: sequence\n"
      "  AOrBs: group aOrB CT::CAOrB [*] requiresContent\n"
      "class CT::CAOrB aOrB: group choice\n"
      "  A: value a kXsdInt [?]\n"
      "  B: value b kXsdInt [?]\n",
      BindContent(Group("choice", kMany, std::string(kA) + kB)));
}

TEST(Content, InAChoiceWithoutEndNothingIsRepeated) {
  EXPECT_EQ(
      "class CT <T> T: sequence\n"
      "  AOrBOrCs: group aOrBOrC CT::CAOrBOrC [*] requiresContent\n"
      "class CT::CAOrBOrC aOrBOrC: group choice\n"
      "  A: value a kXsdInt [?]\n"
      "  B: value b kXsdInt [?]\n"
      "  C: value c kXsdInt [?]\n",
      BindContent(Group("choice", kMore,
                        "<xs:element name='a' type='xs:int' minOccurs='0' maxOccurs='unbounded'/>" +
                            Group("choice", kMany, std::string(kB) + kC))));
}

TEST(Content, WhatMayBeEmptyIsNotRequired) {
  const std::string both = std::string(kOptionalA) + kOptionalB;
  // As the content of the type, with or without a group around it.
  const std::string expected =
      "class CT <T> T: sequence\n"
      "  A: value a kXsdInt [?]\n"
      "  B: value b kXsdInt [?]\n";
  EXPECT_EQ(expected, BindContent(Group("sequence", "", both)));
  EXPECT_EQ(expected, BindContent(Group("sequence", kMaybe, both)));
  EXPECT_EQ(
      "class CT <T> T: sequence\n"
      "  AAndBs: group aAndB CT::CAAndB [*]\n"
      "class CT::CAAndB aAndB: group sequence\n"
      "  A: value a kXsdInt [?]\n"
      "  B: value b kXsdInt [?]\n",
      BindContent(Group("sequence", kMore, both)));
}

TEST(Content, AChoiceWithABranchThatMayBeEmptyMayBeEmpty) {
  const std::string expected =
      "class CT <T> T: choice optional\n"
      "  A: value a kXsdInt [?]\n"
      "  B: value b kXsdInt [?]\n";
  EXPECT_EQ(expected, BindContent(Group("choice", "", std::string(kOptionalA) + kB)));
  EXPECT_EQ(expected, BindContent(Group("choice", kMaybe, std::string(kA) + kB)));
  EXPECT_EQ(expected, BindContent(Group("choice", "", std::string(kA) + kB + "<xs:sequence/>")));
  EXPECT_EQ(
      "class CT <T> T: sequence\n"
      "  AOrB: group aOrB CT::CAOrB [?] requiresContent\n"
      "  C: value c kXsdInt [1]\n"
      "class CT::CAOrB aOrB: group choice\n"
      "  A: value a kXsdInt [?]\n"
      "  Bs: value b kXsdInt [+]\n",
      BindContent(Group(
          "sequence", "",
          Group("choice", "",
                std::string(kA) +
                    "<xs:element name='b' type='xs:int' minOccurs='0' maxOccurs='unbounded'/>") +
              kC)));
}

TEST(Content, AllIsAllInTheTypeAndAGroupWhereItMayBeMissing) {
  EXPECT_EQ(
      "class CT <T> T: all\n"
      "  A: value a kXsdInt [1]\n"
      "  B: value b kXsdInt [?]\n",
      BindContent(Group("all", "", std::string(kA) + kOptionalB)));
  EXPECT_EQ(
      "class CT <T> T: sequence\n"
      "  All: group all CT::CAll [?] requiresContent\n"
      "class CT::CAll all: group all\n"
      "  A: value a kXsdInt [1]\n"
      "  B: value b kXsdInt [?]\n",
      BindContent(Group("all", kMaybe, std::string(kA) + kOptionalB)));
  EXPECT_EQ(
      "class CT <T> T: all\n"
      "  A: value a kXsdInt [?]\n"
      "  B: value b kXsdInt [?]\n",
      BindContent(Group("all", kMaybe, std::string(kOptionalA) + kOptionalB)));
}

TEST(Content, GroupsOfTwoOrThreeShortElementsAreCalledAfterThem) {
  const std::string d = "<xs:element name='d' type='xs:int'/>";
  EXPECT_EQ(
      "class CT <T> T: sequence\n"
      "  Choices: group choice CT::CChoice [+] requiresContent\n"
      "  Sequences: group sequence CT::CSequence [+] requiresContent\n"
      "  Choice: group choice CT::CChoice2 [1] requiresContent\n"
      "class CT::CChoice choice: group choice\n"
      "  A: value a kXsdInt [?]\n"
      "  B: value b kXsdInt [?]\n"
      "  C: value c kXsdInt [?]\n"
      "  D: value d kXsdInt [?]\n"
      "class CT::CSequence sequence: group sequence\n"
      "  AnExtremelyLongName: value anExtremelyLongName kXsdInt [1]\n"
      "  AnotherLongName: value anotherLongName kXsdInt [1]\n"
      "class CT::CChoice2 choice: group choice\n"
      "  E: value e kXsdInt [?]\n"
      "  AnyElements: any \"##other\" [1] col\n",
      BindContent(
          Group("sequence", "",
                Group("choice", kMore, std::string(kA) + kB + kC + d) +
                    Group("sequence", kMore,
                          "<xs:element name='anExtremelyLongName' type='xs:int'/>"
                          "<xs:element name='anotherLongName' type='xs:int'/>") +
                    Group("choice", "",
                          "<xs:element name='e' type='xs:int'/><xs:any namespace='##other'/>"))));
}

TEST(Content, GroupsInGroupsAreNestedInTheClassOfTheType) {
  EXPECT_EQ(
      "class CT <T> T: sequence\n"
      "  Choices: group choice CT::CChoice [+] requiresContent\n"
      "class CT::CBAndC bAndC: group sequence\n"
      "  B: value b kXsdInt [1]\n"
      "  C: value c kXsdInt [1]\n"
      "class CT::CChoice choice: group choice\n"
      "  A: value a kXsdInt [?]\n"
      "  BAndC: group bAndC CT::CBAndC [?] requiresContent\n",
      BindContent(Group("choice", kMore, kA + Group("sequence", "", std::string(kB) + kC))));
}

TEST(Content, ElementsOfOneNameThatFollowEachOtherAreOneCollection) {
  EXPECT_EQ(
      "class CT <T> T: sequence\n"
      "  As: value a kXsdInt [3-3]\n"
      "  B: value b kXsdInt [1]\n"
      "  A: value a kXsdInt [1]\n",
      BindContent(Group("sequence", "",
                        "<xs:element name='a' type='xs:int' minOccurs='2' maxOccurs='2'/>" +
                            std::string(kA) + kB + kA)));
}

TEST(Content, ANamedGroupHasOneClassWhereverItIsRepeated) {
  const std::string text = DescribeSchema(
      "<xs:group name='point'><xs:sequence><xs:element name='x' type='xs:int'/>"
      "<xs:element name='y' type='xs:int'/></xs:sequence></xs:group>"
      "<xs:group name='kind'><xs:choice><xs:element name='p' type='xs:int'/>"
      "<xs:element name='q' type='xs:int'/></xs:choice></xs:group>"
      "<xs:complexType name='Line'><xs:group ref='t:point' maxOccurs='unbounded'/></xs:complexType>"
      "<xs:complexType name='Area'><xs:sequence><xs:group ref='t:point'/>"
      "<xs:group ref='t:kind'/><xs:element name='z' type='xs:int'/></xs:sequence></xs:complexType>"
      "<xs:complexType name='Two'><xs:sequence><xs:group ref='t:point' minOccurs='0'/>"
      "<xs:group ref='t:kind' minOccurs='2' maxOccurs='2'/></xs:sequence></xs:complexType>");
  EXPECT_EQ(
      "== t <urn:t> t\n"
      "class CLine <Line> Line: sequence\n"
      "  Points: group point CPoint [+] requiresContent\n"
      "class CArea <Area> Area: sequence\n"
      "  X: value x kXsdInt [1]\n"
      "  Y: value y kXsdInt [1]\n"
      "  Kind: group kind CKind [1] requiresContent\n"
      "  Z: value z kXsdInt [1]\n"
      "class CTwo <Two> Two: sequence\n"
      "  Point: group point CPoint [?] requiresContent\n"
      "  Kinds: group kind CKind [2-2] requiresContent\n"
      "class CPoint point: group sequence\n"
      "  X: value x kXsdInt [1]\n"
      "  Y: value y kXsdInt [1]\n"
      "class CKind kind: group choice\n"
      "  P: value p kXsdInt [?]\n"
      "  Q: value q kXsdInt [?]\n",
      text);
}

TEST(Content, AReferenceToTheHeadOfASubstitutionGroupIsAChoice) {
  EXPECT_EQ(
      "== t <urn:t> t\n"
      "class CSquare square: sequence\n"
      "  Value: text kXsdString [1]\n"
      "class CCircle circle: sequence\n"
      "  Value: text kXsdInt [1]\n"
      "class CDrawing <Drawing> Drawing: sequence\n"
      "  Circle: value circle kXsdInt [1]\n"
      "  Shapes: group shape CShapeChoice [+] requiresContent\n"
      "class CShapeChoice shape: group choice\n"
      "  Square: value square kXsdString [?]\n"
      "  Circle: value circle kXsdInt [?]\n"
      "root square: CSquare\n"
      "root circle: CCircle\n",
      DescribeSchema("<xs:element name='shape' type='xs:anySimpleType' abstract='true'/>"
                     "<xs:element name='square' type='xs:string' substitutionGroup='t:shape'/>"
                     "<xs:element name='circle' type='xs:int' substitutionGroup='t:shape'/>"
                     "<xs:complexType name='Drawing'><xs:sequence>"
                     "<xs:element ref='t:circle'/>"
                     "<xs:element ref='t:shape' maxOccurs='unbounded'/></xs:sequence>"
                     "</xs:complexType>"));
}

TEST(Content, TheHeadItselfIsInTheChoiceUnlessItIsAbstract) {
  EXPECT_EQ(
      "class CNoteChoice note: group choice\n"
      "  Note: value note kXsdString [?]\n"
      "  Remark: value remark kXsdString [?]\n",
      DescribeClassOf("<xs:element name='note' type='xs:string'/>"
                      "<xs:element name='remark' type='xs:string' substitutionGroup='t:note'/>"
                      "<xs:complexType name='T'><xs:all><xs:element ref='t:note'/></xs:all>"
                      "</xs:complexType>",
                      "CNoteChoice"));
}

TEST(Content, AnAbstractElementWithoutSubstitutesIsToldOf) {
  EXPECT_EQ(
      "== t <urn:t> t\n"
      "class CT <T> T: sequence\n"
      "  Shape: group shape CShapeChoice [1] requiresContent\n"
      "class CU <U> U: choice optional\n"
      "  A: value a kXsdInt [?]\n"
      "  B: value b kXsdInt [?]\n"
      "class CShapeChoice shape: group choice\n"
      "warning: /xs:schema/xs:complexType[@name='T']/xs:sequence/xs:element[@ref='t:shape']: No "
      "element can stand for the abstract {urn:t}shape\n"
      "warning: /xs:schema/xs:complexType[@name='U']/xs:choice/xs:element[@ref='t:shape']: No "
      "element can stand for the abstract {urn:t}shape, it is left out\n",
      DescribeSchema("<xs:element name='shape' abstract='true' type='xs:int'/>"
                     "<xs:complexType name='T'><xs:sequence><xs:element ref='t:shape'/>"
                     "</xs:sequence></xs:complexType>"
                     "<xs:complexType name='U'><xs:choice><xs:element name='a' type='xs:int'/>"
                     "<xs:element name='b' type='xs:int'/><xs:element ref='t:shape' minOccurs='0'/>"
                     "</xs:choice></xs:complexType>"));
}

}  // namespace
}  // namespace qzxml::generator::tests
