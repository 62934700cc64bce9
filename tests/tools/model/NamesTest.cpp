#include <gtest/gtest.h>

#include "tests/tools/model/ModelText.h"

// Names of classes and of members.
namespace qzxml::generator::tests {
namespace {

std::string Type(const std::string& name, const std::string& content) {
  return "<xs:complexType name='" + name + "'>" + content + "</xs:complexType>";
}

std::string Sequence(const std::string& content) {
  return "<xs:sequence>" + content + "</xs:sequence>";
}

std::string Element(const std::string& name) {
  return "<xs:element name='" + name + "' type='xs:int'/>";
}

std::string Own(const std::string& name, const std::string& content) {
  return "<xs:element name='" + name + "'><xs:complexType>" + content +
         "</xs:complexType></xs:element>";
}

TEST(Names, ATypeWithoutNameIsCalledAfterItsElementAndThenWithWhatIsAround) {
  EXPECT_EQ(
      "== t <urn:t> t\n"
      "class COrder order: sequence\n"
      "  Item: object item CItem [1]\n"
      "class CItem item: sequence\n"
      "class CReturnType <ReturnType> ReturnType: sequence\n"
      "  Item: object item CReturnItem [1]\n"
      "class CReturnItem item: sequence\n"
      "  Item: object item CReturnItemItem [1]\n"
      "class CReturnItemItem item: sequence\n"
      "root order: COrder\n",
      DescribeSchema(Own("order", Sequence(Own("item", ""))) +
                     Type("ReturnType", Sequence(Own("item", Sequence(Own("item", "")))))));
}

TEST(Names, NamedTypesComeFirstWhereverTheyStand) {
  EXPECT_EQ(
      "== t <urn:t> t\n"
      "class CItemElement item: sequence\n"
      "class CItem <item> item: sequence\n"
      "root item: CItemElement\n",
      DescribeSchema(Own("item", "") + Type("item", "")));
}

TEST(Names, ThatDifferOnlyInCaseOrInSignsDiffer) {
  CSchemaTrial trial;
  trial.AddSchema(Type("order", "") + Type("Order", "") + Type("ORDER", "") + Type("or-der", ""));
  const Model& model = trial.Bind();
  EXPECT_EQ(
      "== t <urn:t> t\n"
      "class COrder <order> order: sequence\n"
      "class COrder2 <Order> Order: sequence\n"
      "class CORDER <ORDER> ORDER: sequence\n"
      "class COrDer <or-der> or-der: sequence\n",
      Describe(model));
  // Files for systems that know no case.
  EXPECT_EQ("Order", model.namespaces[0]->classes[0]->fileStem);
  EXPECT_EQ("Order2", model.namespaces[0]->classes[1]->fileStem);
  EXPECT_EQ("ORDERClass", model.namespaces[0]->classes[2]->fileStem);
  EXPECT_EQ("OrDerClass2", model.namespaces[0]->classes[3]->fileStem);
}

TEST(Names, OfTheLibraryAreNotTaken) {
  CSchemaTrial trial;
  trial.AddSchema(
      Type("Decimal", "") + Type("element", "") + Type("Namespace", "") +
      "<xs:simpleType name='ItemType'><xs:restriction base='xs:token'>"
      "<xs:enumeration value='a'/></xs:restriction></xs:simpleType>"
      "<xs:simpleType name='namespace'><xs:restriction base='xs:token'/></xs:simpleType>");
  EXPECT_EQ(
      "== t <urn:t> t\n"
      "enum ItemTypeType Collapse: ItemTypeType_a=a\n"
      "simple kItemTypeType: i4 Collapse enum\n"
      "simple kNamespaceType: string Collapse\n"
      "class CDecimalType <Decimal> Decimal: sequence\n"
      "class CElementType <element> element: sequence\n"
      "class CNamespace <Namespace> Namespace: sequence\n",
      Describe(trial.Bind()));
  EXPECT_EQ("NamespaceClass", trial.Bind().namespaces[0]->classes[2]->fileStem);
}

TEST(Names, OfMembersAreUnlikeEachOther) {
  EXPECT_EQ(
      "class CT <T> T: sequence\n"
      "  NameAttribute: attribute name kXsdAnySimpleType [?]\n"
      "  NameAttribute2: attribute Name kXsdAnySimpleType [?]\n"
      "  ClassAttribute: attribute class kXsdAnySimpleType [?]\n"
      "  Name: value name kXsdInt [1]\n"
      "  B: value b kXsdInt [1]\n"
      "  Name2: value name kXsdInt [1]\n"
      "  Class: value class kXsdInt [1]\n"
      "  Name3: value Name kXsdInt [1]\n",
      DescribeClassOf(Type("T", Sequence(Element("name") + Element("b") + Element("name") +
                                         Element("class") + Element("Name")) +
                                    "<xs:attribute name='name'/><xs:attribute name='Name'/>"
                                    "<xs:attribute name='class'/>"),
                      "CT"));
}

TEST(Names, OfMembersAreUnlikeWhatEveryClassHas) {
  EXPECT_EQ(
      "class CT <T> T: sequence\n"
      "  BaseAttribute: attribute base kXsdAnySimpleType [?]\n"
      "  NamespaceElement: value namespace kXsdInt [1]\n"
      "  ElementNameElement: value elementName kXsdInt [1]\n"
      "  BindingElement: value binding kXsdInt [1]\n"
      "  IsNilElement: value isNil kXsdInt [1]\n"
      "  Value: value value kXsdInt [1]\n",
      DescribeClassOf(Type("T", Sequence(Element("namespace") + Element("elementName") +
                                         Element("binding") + Element("isNil") + Element("value")) +
                                    "<xs:attribute name='base'/>"),
                      "CT"));
}

TEST(Names, OfMembersOfAChoiceLeaveOutWhatStandsForNone) {
  EXPECT_EQ(
      "class CT <T> T: choice\n"
      "  NoneElement: value none kXsdInt [?]\n"
      "  Some: value some kXsdInt [?]\n",
      DescribeClassOf(Type("T", "<xs:choice>" + Element("none") + Element("some") + "</xs:choice>"),
                      "CT"));
}

TEST(Names, OfMembersAreUnlikeThoseOfTheBase) {
  EXPECT_EQ(
      "class CD <D> D: sequence base CB 2\n"
      "  B: attribute b kXsdAnySimpleType [?]\n"
      "  A2: value a kXsdInt [1]\n"
      "  CElement: value c kXsdInt [1]\n",
      DescribeClassOf(
          Type("B", Sequence(Element("a")) + "<xs:attribute name='c'/>") +
              Type("D", "<xs:complexContent><xs:extension base='t:B'>" +
                            Sequence(Element("a") + Element("c")) +
                            "<xs:attribute name='b'/></xs:extension></xs:complexContent>"),
          "CD"));
}

TEST(Names, OfVariablesDifferWhereOnlyTheirCaseWould) {
  CSchemaTrial trial;
  trial.AddSchema(Type("T", Sequence(Element("URL") + Element("url") + Element("shipTo"))));
  const BoundClass* const bound = FindClass(trial.Bind(), "CT");
  ASSERT_NE(nullptr, bound);
  EXPECT_EQ("m_url", bound->members[0].variable);
  EXPECT_EQ("m_url2", bound->members[1].variable);
  EXPECT_EQ("m_shipTo", bound->members[2].variable);
}

TEST(Names, OfNestedClassesAreUnlikeTheClassesAround) {
  CSchemaTrial trial;
  trial.AddSchema(Type("Choice", "") +
                  Type("AOrB", Sequence("<xs:choice>" + Element("a") + Element("b") +
                                        "</xs:choice><xs:choice>" + Element("c") + Element("d") +
                                        Element("e") + Element("f") + "</xs:choice>")));
  const BoundClass* const bound = FindClass(trial.Bind(), "CAOrB");
  ASSERT_NE(nullptr, bound);
  ASSERT_EQ(2u, bound->nested.size());
  EXPECT_EQ("t::CAOrB::CAOrB2", bound->nested[0]->GetQualifiedName());
  EXPECT_EQ("t::CAOrB::CChoice2", bound->nested[1]->GetQualifiedName());
  EXPECT_EQ("AOrB", bound->nested[0]->fileStem);
}

TEST(Names, OfEnumerationsWithoutNameComeFromElementAndAttribute) {
  const std::string unit =
      "<xs:simpleType><xs:restriction base='xs:token'><xs:enumeration value='kg'/>"
      "</xs:restriction></xs:simpleType>";
  EXPECT_EQ(
      "== t <urn:t> t\n"
      "enum Unit Collapse: Unit_kg=kg\n"
      "enum BUnit Collapse: BUnit_kg=kg\n"
      "simple kUnit: i4 Collapse enum\n"
      "simple kBUnit: i4 Collapse enum\n"
      "class CA <A> A: sequence\n"
      "  Unit: attribute unit Unit [?]\n"
      "class CBType <BType> BType: sequence\n"
      "  Unit: value unit BUnit [1]\n",
      DescribeSchema(Type("A", "<xs:attribute name='unit'>" + unit + "</xs:attribute>") +
                     Type("BType", Sequence("<xs:element name='unit'>" + unit + "</xs:element>"))));
}

TEST(Names, OfWhatStandsAheadDoNotChangeWhenASchemaGrows) {
  const std::string first = Own("order", Sequence(Own("item", ""))) + Type("Address", "");
  const std::string before = DescribeSchema(first);
  const std::string after = DescribeSchema(first + Type("Other", Sequence(Own("item", ""))));
  for (const char* line : {"class COrder order: sequence\n", "class CItem item: sequence\n",
                           "class CAddress <Address> Address: sequence\n"}) {
    EXPECT_NE(std::string::npos, before.find(line)) << line;
    EXPECT_NE(std::string::npos, after.find(line)) << line;
  }
}

TEST(Names, OfARedefinedTypeBelongToTheNewOne) {
  CSchemaTrial trial;
  trial.Add("a.xsd",
            "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' xmlns='urn:t' "
            "targetNamespace='urn:t' elementFormDefault='qualified'><xs:redefine "
            "schemaLocation='b.xsd'><xs:complexType name='P'><xs:complexContent><xs:extension "
            "base='P'><xs:sequence><xs:element name='c' type='xs:int'/></xs:sequence>"
            "</xs:extension></xs:complexContent></xs:complexType></xs:redefine></xs:schema>");
  trial.Add("b.xsd",
            "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' targetNamespace='urn:t' "
            "elementFormDefault='qualified'><xs:complexType name='P'><xs:sequence><xs:element "
            "name='a' type='xs:int'/></xs:sequence></xs:complexType></xs:schema>");
  EXPECT_EQ(
      "== t <urn:t> t\n"
      "class CPOriginal P: sequence > CP\n"
      "  A: value a kXsdInt [1]\n"
      "class CP <P> P: sequence base CPOriginal 1\n"
      "  C: value c kXsdInt [1]\n",
      Describe(trial.Bind()));
}

}  // namespace
}  // namespace qzxml::generator::tests
