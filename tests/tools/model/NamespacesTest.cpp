#include <gtest/gtest.h>

#include "tests/tools/model/ModelText.h"
#include "tools/generator/model/ModelNames.h"

namespace qzxml::generator::tests {
namespace {

TEST(Namespaces, AreDerivedFromPrefixUriOrFile) {
  struct Case {
    const char* uri;
    const char* prefix;
    const char* expected;
  };
  const Case cases[] = {
      {"urn:oasis:names:specification:ubl:schema:xsd:CommonBasicComponents-2", "cbc", "cbc"},
      {"http://www.topografix.com/GPX/1/1", "", "gpx"},
      {"http://a.org/orders/v2", "tns", "orders"},
      {"http://a.org/orders/2.0/", "ns1", "orders"},
      {"http://a.org/orders.xsd", "", "orders"},
      {"urn:iso:std:iso:20022:tech:xsd:camt.053.001.02", "", "camt_053_001_02"},
      {"http://www.w3.org/XML/1998/namespace", "xml", "xml"},
      {"http://a.org/2001/class", "", "class_ns"},
      {"http://1.2.3/4", "n", "po_1"},
      {"urn:1", "", "po_1"},
      {"", "", "po_1"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(c.expected, DeriveNamespaceName(c.uri, c.prefix, "some/folder/po-1.xsd")) << c.uri;
  }
}

// A given schema that imports another.
void AddTwo(CSchemaTrial& trial, const std::string& uri) {
  trial.Add("a.xsd",
            "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' xmlns:o='urn:other' "
            "targetNamespace='" +
                uri +
                "'><xs:import namespace='urn:other' schemaLocation='b.xsd'/>"
                "<xs:complexType name='A'><xs:complexContent><xs:extension base='o:B'/>"
                "</xs:complexContent></xs:complexType></xs:schema>");
  trial.Add("b.xsd",
            "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' xmlns:x='urn:other' "
            "targetNamespace='urn:other'><xs:complexType name='B'/></xs:schema>");
}

TEST(Namespaces, TheOneGivenIsThatOfTheGivenSchema) {
  CSchemaTrial trial;
  AddTwo(trial, "urn:given");
  EXPECT_EQ(
      "== x <urn:other> x\n"
      "class CB <B> B: sequence > CA\n"
      "== acme::orders <urn:given> acme_orders\n"
      "class orders::CA <A> A: sequence base CB 0\n",
      Describe(trial.Bind({"acme::orders", {}})));
}

TEST(Namespaces, AMappedOneIsTaken) {
  CSchemaTrial trial;
  AddTwo(trial, "urn:given");
  EXPECT_EQ(
      "== others <urn:other> others\n"
      "class CB <B> B: sequence > CA\n"
      "== given <urn:given> given\n"
      "class CA <A> A: sequence base CB 0\n",
      Describe(trial.Bind({"", {{"urn:other", "others"}}})));
}

TEST(Namespaces, DerivedOnesDiffer) {
  CSchemaTrial trial;
  AddTwo(trial, "http://y.org/x");
  EXPECT_EQ(
      "== x <urn:other> x\n"
      "class CB <B> B: sequence > CA\n"
      "== x2 <http://y.org/x> x2\n"
      "class CA <A> A: sequence base CB 0\n",
      Describe(trial.Bind({"", {}})));
}

TEST(Namespaces, TwoMayBeMappedToOne) {
  CSchemaTrial trial;
  AddTwo(trial, "urn:given");
  const Model& model = trial.Bind({"one", {{"urn:other", "one"}}});
  EXPECT_EQ(
      "== one <urn:other> one\n"
      "class CB <B> B: sequence > CA\n"
      "== one <urn:given> one2\n"
      "class CA <A> A: sequence base CB 0\n",
      Describe(model));
  EXPECT_EQ("kNamespace", model.namespaces[0]->constant);
  EXPECT_EQ("kNamespace2", model.namespaces[1]->constant);
}

TEST(Namespaces, OneThatIsNoNameOfCppIsAnError) {
  CSchemaTrial trial;
  AddTwo(trial, "urn:given");
  const Model& model = trial.Bind({"a::class", {}});
  EXPECT_TRUE(model.HasErrors());
  EXPECT_EQ("error: : \"a::class\", the C++ namespace for \"urn:given\", is no name of C++\n",
            DescribeDiagnostics(model));
}

TEST(Namespaces, OneThatOthersOwnIsAnError) {
  for (const char* name : {"std", "QzXmlLib16", "time", "main", "a::std"}) {
    CSchemaTrial trial;
    AddTwo(trial, "urn:given");
    EXPECT_EQ("error: : \"" + std::string(name) +
                  "\", the C++ namespace for \"urn:given\", has a name that others own\n",
              DescribeDiagnostics(trial.Bind({name, {}})));
  }
  CSchemaTrial trial;
  AddTwo(trial, "urn:given");
  EXPECT_EQ("", DescribeDiagnostics(trial.Bind({"a::time", {}})));
}

TEST(Namespaces, AMapForNoSchemaIsToldOf) {
  CSchemaTrial trial;
  AddTwo(trial, "urn:given");
  EXPECT_EQ(
      "warning: : No schema has the target namespace \"urn:othr\", which is mapped to other\n",
      DescribeDiagnostics(trial.Bind({"", {{"urn:othr", "other"}}})));
}

TEST(Namespaces, ASchemaWithoutTargetNamespaceIsNamedAfterItsFile) {
  CSchemaTrial trial;
  trial.Add("my-orders.xsd",
            "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>"
            "<xs:element name='a'><xs:complexType><xs:sequence><xs:element name='b' type='xs:int'/>"
            "</xs:sequence></xs:complexType></xs:element></xs:schema>");
  EXPECT_EQ(
      "== my_orders <> my_orders\n"
      "class CA a: sequence\n"
      "  B: value b kXsdInt [1]\n"
      "root a: CA\n",
      Describe(trial.Bind({"", {}})));
}

TEST(Namespaces, ASchemaOfNothingGivesNothing) {
  EXPECT_EQ("", DescribeSchema("<xs:attribute name='a' type='xs:int'/>"));
}

}  // namespace
}  // namespace qzxml::generator::tests
