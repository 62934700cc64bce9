#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tools/schema/SchemaTrial.h"

// Which files are read, and for which namespace.

using namespace qzxml::generator;
using qztest::SchemaTrial;

namespace {

std::string Schema(const std::string& attributes, const std::string& body) {
  return "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' " + attributes + ">" + body +
         "</xs:schema>";
}

std::string InNamespace(const std::string& uri, const std::string& body,
                        const std::string& more = {}) {
  return Schema("xmlns='" + uri + "' targetNamespace='" + uri + "' " + more, body);
}

std::vector<std::string> GetDocuments(const SchemaTrial& trial, const CSchemaSet& set) {
  std::vector<std::string> documents;
  for (const SchemaDocument* document : set.GetDocuments()) {
    documents.push_back(trial.GetShortPath(document->file) + " " + document->targetNamespace);
  }
  return documents;
}

using Texts = std::vector<std::string>;

}  // namespace

TEST(ReadSchemas, ReadsWhatIsIncludedAheadOfWhoIncludes) {
  SchemaTrial trial;
  trial.File("a.xsd", InNamespace("urn:a",
                                  "<xs:include schemaLocation='sub/b.xsd'/>"
                                  "<xs:element name='a' type='B'/>"));
  trial.File("sub/b.xsd", InNamespace("urn:a",
                                      "<xs:include schemaLocation='../c.xsd'/>"
                                      "<xs:complexType name='B'/>"));
  trial.File("c.xsd", InNamespace("urn:a",
                                  "<xs:simpleType name='C'><xs:restriction base='xs:int'/>"
                                  "</xs:simpleType>"));
  const CSchemaSet& set = trial.Read({"a.xsd"});
  EXPECT_EQ("", trial.GetDiagnostics());
  EXPECT_EQ((Texts{"c.xsd urn:a", "sub/b.xsd urn:a", "a.xsd urn:a"}), GetDocuments(trial, set));
  EXPECT_FALSE(set.GetDocuments()[0]->isGiven);
  EXPECT_TRUE(set.GetDocuments()[2]->isGiven);
  EXPECT_EQ(set.FindType({"urn:a", "B"}), set.FindElement({"urn:a", "a"})->type);
  Texts files;
  for (const std::string& file : set.GetFiles()) files.push_back(trial.GetShortPath(file));
  EXPECT_EQ((Texts{"a.xsd", "sub/b.xsd", "c.xsd"}), files);
}

TEST(ReadSchemas, ReadsSchemasThatIncludeOneAnotherOnce) {
  SchemaTrial trial;
  trial.File("a.xsd", InNamespace("urn:a",
                                  "<xs:include schemaLocation='b.xsd'/>"
                                  "<xs:include schemaLocation='./b.xsd'/>"
                                  "<xs:element name='a' type='B'/>"));
  trial.File("b.xsd", InNamespace("urn:a",
                                  "<xs:include schemaLocation='a.xsd'/>"
                                  "<xs:complexType name='B'><xs:sequence>"
                                  "<xs:element ref='a' minOccurs='0'/>"
                                  "</xs:sequence></xs:complexType>"));
  const CSchemaSet& set = trial.Read({"a.xsd", "b.xsd"});
  EXPECT_EQ("", trial.GetDiagnostics());
  EXPECT_EQ((Texts{"b.xsd urn:a", "a.xsd urn:a"}), GetDocuments(trial, set));
}

TEST(ReadSchemas, TakesAnIncludedSchemaWithoutNamespaceIntoThatOfEachWhoIncludesIt) {
  SchemaTrial trial;
  trial.File("a.xsd", InNamespace("urn:a",
                                  "<xs:include schemaLocation='c.xsd'/>"
                                  "<xs:import namespace='urn:b' schemaLocation='b.xsd'/>"));
  trial.File("b.xsd", InNamespace("urn:b", "<xs:include schemaLocation='c.xsd'/>"));
  trial.File("c.xsd", Schema("",
                             "<xs:element name='c' type='C'/><xs:complexType name='C'>"
                             "<xs:sequence><xs:element name='local' type='C' minOccurs='0'/>"
                             "</xs:sequence></xs:complexType>"));
  const CSchemaSet& set = trial.Read({"a.xsd"});
  EXPECT_EQ("", trial.GetDiagnostics());
  EXPECT_EQ((Texts{"c.xsd urn:a", "c.xsd urn:b", "b.xsd urn:b", "a.xsd urn:a"}),
            GetDocuments(trial, set));
  for (const char* uri : {"urn:a", "urn:b"}) {
    const ComplexType* type = set.FindType({uri, "C"})->AsComplex();
    EXPECT_EQ(type, set.FindElement({uri, "c"})->type);
    EXPECT_EQ(type, type->particle->group->particles[0]->element->type);
    EXPECT_EQ("local", type->particle->group->particles[0]->element->name.ToString());
  }
}

TEST(ReadSchemas, FindsWhatIsImportedWithoutLocationInAnotherGivenFile) {
  SchemaTrial trial;
  trial.File("a.xsd", InNamespace("urn:a",
                                  "<xs:import namespace='urn:b'/>"
                                  "<xs:element name='a' type='b:B' xmlns:b='urn:b'/>"));
  trial.File("b.xsd", InNamespace("urn:b", "<xs:complexType name='B'/>"));
  trial.Read({"a.xsd", "b.xsd"});
  EXPECT_EQ("", trial.GetDiagnostics());
  trial.Read({"a.xsd"});
  EXPECT_EQ(
      "a.xsd: /xs:schema/xs:element[@name='a']: There is no type '{urn:b}B' (src-resolve). No "
      "schema of its namespace was read: no file is where it is imported from.",
      trial.GetDiagnostics());
}

TEST(ReadSchemas, NeedsNoRemoteSchemaThatNothingIsTakenFrom) {
  SchemaTrial trial;
  trial.File("a.xsd", InNamespace("urn:a",
                                  "<xs:import namespace='urn:b' "
                                  "schemaLocation='http://example.com/b.xsd'/>"
                                  "<xs:element name='a' type='xs:int'/>"));
  trial.Read({"a.xsd"});
  EXPECT_EQ("", trial.GetDiagnostics());
}

TEST(ReadSchemas, MapsLocationsAndNamespacesByCatalogs) {
  SchemaTrial trial;
  const std::string catalog = "<catalog xmlns='urn:oasis:names:tc:entity:xmlns:xml:catalog' ";
  trial.File("catalog.xml", catalog +
                                "xml:base='far/'><group><system systemId='http://example.com/b.xsd'"
                                " uri='b.xsd'/></group><uri name='urn:c' uri='c%20c.xsd'/>"
                                "<nextCatalog catalog='../next.xml'/></catalog>");
  trial.File("next.xml", catalog +
                             "><rewriteURI uriStartString='http://example.com/' "
                             "rewritePrefix='no/'/><rewriteURI "
                             "uriStartString='http://example.com/d/' rewritePrefix='far'/>"
                             "<nextCatalog catalog='catalog.xml'/></catalog>");
  trial.File("a.xsd",
             InNamespace("urn:a",
                         "<xs:import namespace='urn:b' schemaLocation='http://example.com/b.xsd'/>"
                         "<xs:import namespace='urn:c'/>"
                         "<xs:import namespace='urn:d' "
                         "schemaLocation='http://example.com/d/d.xsd'/>"));
  trial.File("far/b.xsd", InNamespace("urn:b", ""));
  trial.File("far/c c.xsd", InNamespace("urn:c", ""));
  trial.File("far/d.xsd", InNamespace("urn:d", ""));
  trial.Catalog("catalog.xml");
  const CSchemaSet& set = trial.Read({"a.xsd"});
  EXPECT_EQ("", trial.GetDiagnostics());
  EXPECT_EQ((Texts{"far/b.xsd urn:b", "far/c c.xsd urn:c", "far/d.xsd urn:d", "a.xsd urn:a"}),
            GetDocuments(trial, set));
  Texts files;
  for (const std::string& file : set.GetFiles()) files.push_back(trial.GetShortPath(file));
  EXPECT_EQ((Texts{"catalog.xml", "next.xml", "a.xsd", "far/b.xsd", "far/c c.xsd", "far/d.xsd"}),
            files);
}

TEST(ReadSchemas, TellsWhatIsWrongWithCatalogs) {
  SchemaTrial trial;
  trial.File("catalog.xml",
             "<catalog xmlns='urn:oasis:names:tc:entity:xmlns:xml:catalog'>"
             "<uri name='urn:b'/></catalog>");
  trial.File("other.xml", "<catalog/>");
  trial.File("a.xsd", InNamespace("urn:a", ""));
  trial.Catalog("catalog.xml").Catalog("other.xml").Catalog("none.xml");
  trial.Read({"a.xsd"});
  EXPECT_EQ(
      "catalog.xml: /catalog/uri[@name='urn:b']: The entry needs the attributes 'name' and 'uri'.\n"
      "other.xml: The file is no XML catalog: its document element is 'catalog'.\n"
      "none.xml: There is no such file.",
      trial.GetDiagnostics());
}

TEST(ReadSchemas, KnowsTheAttributesOfTheXmlNamespace) {
  SchemaTrial trial;
  trial.File("a.xsd",
             InNamespace("urn:a",
                         "<xs:import namespace='http://www.w3.org/XML/1998/namespace' "
                         "schemaLocation='http://www.w3.org/2001/xml.xsd'/>"
                         "<xs:complexType name='A'><xs:attributeGroup ref='xml:specialAttrs'/>"
                         "</xs:complexType>"));
  const CSchemaSet& set = trial.Read({"a.xsd"});
  EXPECT_EQ("", trial.GetDiagnostics());
  EXPECT_EQ("base lang space id",
            qztest::ToText(set.FindType({"urn:a", "A"})->AsComplex()->attributes));
  EXPECT_EQ((Texts{" http://www.w3.org/XML/1998/namespace", "a.xsd urn:a"}),
            GetDocuments(trial, set));
  EXPECT_EQ("xml", set.GetTargetNamespaces()[0].prefix);
}

TEST(ReadSchemas, PrefersASchemaOfTheXmlNamespaceThatIsThere) {
  SchemaTrial trial;
  trial.File("xml.xsd", Schema("targetNamespace='http://www.w3.org/XML/1998/namespace'",
                               "<xs:attribute name='lang' type='xs:string'/>"));
  trial.File("a.xsd", InNamespace("urn:a",
                                  "<xs:import namespace='http://www.w3.org/XML/1998/namespace' "
                                  "schemaLocation='xml.xsd'/><xs:complexType name='A'>"
                                  "<xs:attribute ref='xml:lang'/></xs:complexType>"));
  const CSchemaSet& set = trial.Read({"a.xsd"});
  EXPECT_EQ("", trial.GetDiagnostics());
  EXPECT_EQ(BuiltIn_string,
            set.FindType({"urn:a", "A"})->AsComplex()->attributes[0].attribute->type->builtIn);
}

TEST(ReadSchemas, TakesEntitiesAndDefaultAttributesOfADocumentType) {
  SchemaTrial trial;
  trial.File("a.xsd",
             "<?xml version='1.0'?>\n<!DOCTYPE schema [\n"
             "<!ENTITY uri 'urn:a'>\n"
             "<!ATTLIST schema xmlns:t CDATA #FIXED 'urn:a'>\n]>\n"
             "<schema xmlns='http://www.w3.org/2001/XMLSchema' targetNamespace='&uri;'>"
             "<element name='a' type='t:A'/><complexType name='A'/></schema>");
  const CSchemaSet& set = trial.Read({"a.xsd"});
  EXPECT_EQ("", trial.GetDiagnostics());
  EXPECT_NE(nullptr, set.FindElement({"urn:a", "a"}));
}

TEST(ReadSchemas, ResolvesPrefixesWhereTheyStand) {
  SchemaTrial trial;
  trial.File("a.xsd", InNamespace("urn:a",
                                  "<xs:import namespace='urn:b' schemaLocation='b.xsd'/>"
                                  "<xs:complexType name='A'/>"
                                  "<xs:element name='one' type='p:A' xmlns:p='urn:a'/>"
                                  "<xs:element name='two' type='p:A' xmlns:p='urn:b'/>"
                                  "<xsd:element name='three' type='A' xmlns='urn:b' "
                                  "xmlns:xsd='http://www.w3.org/2001/XMLSchema'/>"));
  trial.File("b.xsd", InNamespace("urn:b", "<xs:complexType name='A'/>"));
  const CSchemaSet& set = trial.Read({"a.xsd"});
  EXPECT_EQ("", trial.GetDiagnostics());
  EXPECT_EQ(set.FindType({"urn:a", "A"}), set.FindElement({"urn:a", "one"})->type);
  EXPECT_EQ(set.FindType({"urn:b", "A"}), set.FindElement({"urn:a", "two"})->type);
  EXPECT_EQ(set.FindType({"urn:b", "A"}), set.FindElement({"urn:a", "three"})->type);
}

TEST(ReadSchemas, HintsAtThePrefixesOfNamespaces) {
  SchemaTrial trial;
  trial.File("a.xsd", Schema("xmlns:own='urn:a' targetNamespace='urn:a'",
                             "<xs:import namespace='urn:b' schemaLocation='b.xsd'/>"
                             "<xs:import schemaLocation='c.xsd'/>"));
  trial.File("b.xsd", InNamespace("urn:b", ""));
  trial.File("c.xsd", Schema("xmlns:bee='urn:b'", ""));
  const CSchemaSet& set = trial.Read({"a.xsd"});
  ASSERT_EQ(3U, set.GetTargetNamespaces().size());
  EXPECT_EQ("urn:b", set.GetTargetNamespaces()[0].uri);
  EXPECT_EQ("bee", set.GetTargetNamespaces()[0].prefix);
  EXPECT_EQ("", set.GetTargetNamespaces()[1].uri);
  EXPECT_EQ("", set.GetTargetNamespaces()[1].prefix);
  EXPECT_EQ("own", set.GetTargetNamespaces()[2].prefix);
}

TEST(ReadSchemas, PutsRedefinedComponentsInThePlaceOfTheFormerOnes) {
  SchemaTrial trial;
  trial.File("a.xsd",
             InNamespace("urn:t",
                         "<xs:redefine schemaLocation='b.xsd'>"
                         "<xs:complexType name='C'><xs:complexContent><xs:extension base='C'>"
                         "<xs:sequence><xs:element name='two'/></xs:sequence>"
                         "</xs:extension></xs:complexContent></xs:complexType>"
                         "<xs:simpleType name='S'><xs:restriction base='S'>"
                         "<xs:maxLength value='3'/></xs:restriction></xs:simpleType>"
                         "<xs:group name='G'><xs:sequence><xs:group ref='G'/>"
                         "<xs:element name='more'/></xs:sequence></xs:group>"
                         "<xs:attributeGroup name='AG'><xs:attributeGroup ref='AG'/>"
                         "<xs:attribute name='y'/></xs:attributeGroup>"
                         "</xs:redefine>"));
  trial.File("b.xsd",
             Schema("",
                    "<xs:complexType name='C'><xs:sequence><xs:element name='one'/>"
                    "</xs:sequence></xs:complexType>"
                    "<xs:simpleType name='S'><xs:restriction base='xs:string'/>"
                    "</xs:simpleType>"
                    "<xs:group name='G'><xs:sequence><xs:element name='g'/></xs:sequence>"
                    "</xs:group>"
                    "<xs:attributeGroup name='AG'><xs:attribute name='x'/></xs:attributeGroup>"
                    "<xs:complexType name='User'><xs:group ref='G'/>"
                    "<xs:attribute name='s' type='S'/><xs:attributeGroup ref='AG'/>"
                    "</xs:complexType>"));
  trial.Read({"a.xsd"});
  EXPECT_EQ("", trial.GetDiagnostics());
  const ComplexType& redefining = trial.GetComplex("C");
  EXPECT_EQ("((one), (two))", qztest::ToText(redefining.particle));
  EXPECT_FALSE(redefining.isRedefined);
  EXPECT_TRUE(redefining.base->isRedefined);
  EXPECT_EQ("C", redefining.base->name.localName);
  const ComplexType& user = trial.GetComplex("User");
  EXPECT_EQ("((g), more)", qztest::ToText(user.particle));
  EXPECT_EQ("s x y", qztest::ToText(user.attributes));
  EXPECT_EQ("3", user.attributes[0].attribute->type->FindFacet(FacetKind_maxLength)->value);
}

TEST(ReadSchemas, TellsWhatIsWrongWithFiles) {
  const struct {
    std::string body;
    std::string expected;
  } cases[] = {
      {"<xs:include schemaLocation='none.xsd'/>",
       "warning: a.xsd: /xs:schema/xs:include: There is no file for the location 'none.xsd'; "
       "nothing is taken from there."},
      {"<xs:redefine schemaLocation='none.xsd'><xs:complexType name='C'/></xs:redefine>",
       "a.xsd: /xs:schema/xs:redefine: There is no file for the location 'none.xsd' "
       "(src-redefine.1)."},
      {"<xs:include schemaLocation='broken.xsd'/>", "broken.xsd: mismatched tag at line 2"},
      {"<xs:include schemaLocation='other.xml'/>",
       "other.xml: The file is no XML Schema: its document element is '{urn:x}order'."},
      {"<xs:include schemaLocation='b.xsd'/>",
       "a.xsd: /xs:schema/xs:include: The schema 'b.xsd' has the namespace 'urn:b' and not the "
       "namespace 'urn:t', that of the schema that takes it in (src-include.2)."},
      {"<xs:redefine schemaLocation='b.xsd'/>",
       "a.xsd: /xs:schema/xs:redefine: The schema 'b.xsd' has the namespace 'urn:b' and not the "
       "namespace 'urn:t', that of the schema that takes it in (src-redefine.3)."},
      {"<xs:import namespace='urn:c' schemaLocation='b.xsd'/>",
       "a.xsd: /xs:schema/xs:import: The schema 'b.xsd' has the namespace 'urn:b' and not the "
       "namespace 'urn:c', which is imported (src-import.3)."},
      {"<xs:import schemaLocation='b.xsd'/>",
       "a.xsd: /xs:schema/xs:import: The schema 'b.xsd' has the namespace 'urn:b' and not no "
       "namespace, which is imported (src-import.3)."},
      {"<xs:import namespace='urn:t'/>",
       "a.xsd: /xs:schema/xs:import: A schema does not import its own namespace "
       "(src-import.1.1)."},
      {"<xs:include schemaLocation='takes-b.xsd'/>"
       "<xs:element name='e' type='b:B' xmlns:b='urn:b'/>",
       "a.xsd: /xs:schema/xs:element[@name='e']: The namespace 'urn:b' is not imported, but "
       "'{urn:b}B' is referred to (src-resolve.4)."},
      {"<xs:element name='e' type='q:B'/>",
       "a.xsd: /xs:schema/xs:element[@name='e']: The prefix 'q' of 'q:B' is not declared "
       "(src-qname)."},
      {"<q:element name='e'/>",
       "a.xsd: /xs:schema/q:element[@name='e']: The prefix 'q' is not declared.\n"
       "a.xsd: /xs:schema/q:element[@name='e']: The element 'q:element' is not allowed here."},
      {"<xs:element name='e' xmlns:q=''/>",
       "a.xsd: /xs:schema/xs:element[@name='e']: The prefix 'q' is bound to no namespace."},
      {"<xs:element name='e' a:x='1' b:x='2' xmlns:a='urn:x' xmlns:b='urn:x'/>",
       "a.xsd: /xs:schema/xs:element[@name='e']: The attribute '{urn:x}x' is there twice."},
  };
  for (const auto& c : cases) {
    SchemaTrial trial;
    trial.File("a.xsd", InNamespace("urn:t", c.body));
    trial.File("b.xsd", InNamespace("urn:b", "<xs:complexType name='B'/>"));
    trial.File("takes-b.xsd",
               InNamespace("urn:t", "<xs:import namespace='urn:b' schemaLocation='b.xsd'/>"));
    trial.File("broken.xsd", "<a>\n</b>");
    trial.File("other.xml", "<order xmlns='urn:x'/>");
    trial.Read({"a.xsd"});
    EXPECT_EQ(c.expected, trial.GetDiagnostics()) << c.body;
  }
  SchemaTrial none;
  none.Read({"none.xsd"});
  EXPECT_EQ("none.xsd: There is no such file.", none.GetDiagnostics());
  SchemaTrial without;
  without.File("a.xsd", Schema("", "<xs:import schemaLocation='a.xsd'/>"));
  without.Read({"a.xsd"});
  EXPECT_EQ(
      "a.xsd: /xs:schema/xs:import: Only a schema that has a target namespace imports "
      "components that have none (src-import.1.2).",
      without.GetDiagnostics());
}

TEST(ReadSchemas, EndsWhereSchemasIncludeOneAnotherTooDeep) {
  SchemaTrial trial;
  for (int i = 0; i < 600; ++i) {
    const std::string next = "s" + std::to_string(i + 1) + ".xsd";
    trial.File("s" + std::to_string(i) + ".xsd",
               Schema("", "<xs:include schemaLocation='" + next + "'/>"));
  }
  trial.Read({"s0.xsd"});
  EXPECT_EQ("s500.xsd: Schemas include one another too deep.", trial.GetErrors());
}

TEST(ReadSchemas, JoinsTheTextsOfDocumentation) {
  SchemaTrial trial;
  trial.ReadBody(
      "<xs:annotation><xs:documentation>The whole.</xs:documentation></xs:annotation>"
      "<xs:complexType name='C'><xs:annotation>\n"
      "  <xs:documentation>\n    First line,\n      indented,\n\n    last.  \n  "
      "</xs:documentation>\n"
      "  <xs:appinfo>not this</xs:appinfo>\n"
      "  <xs:documentation> Second <b xmlns='urn:h'>bold</b></xs:documentation>"
      "<xs:documentation> </xs:documentation></xs:annotation>"
      "<xs:sequence><xs:element name='e' type='xs:int'>"
      "<xs:annotation><xs:documentation><![CDATA[a < b]]></xs:documentation></xs:annotation>"
      "</xs:element></xs:sequence></xs:complexType>");
  EXPECT_EQ("", trial.GetDiagnostics());
  const ComplexType& type = trial.GetComplex("C");
  EXPECT_EQ("First line,\n  indented,\n\nlast.\n\nSecond\nbold", type.documentation);
  EXPECT_EQ("a < b", type.particle->group->particles[0]->element->documentation);
  EXPECT_EQ("The whole.", type.location.document->documentation);
}
