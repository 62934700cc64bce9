#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tools/generator/schema/SchemaSet.h"

// The schemas of standards that are in use: a few stand in tests/corpora, more of them in the
// folder that QZXML_CORPORA names. Each is read without an error.

using namespace qzxml::generator;

namespace {

std::string GetErrors(const CSchemaSet& set) {
  std::string text;
  for (const Diagnostic& diagnostic : set.GetDiagnostics()) {
    if (diagnostic.severity == Severity_Error) text += diagnostic.ToString() + "\n";
  }
  return text;
}

// The schemas that documents of the corpus are of, by the table of the corpus.
std::set<std::string> FindSchemas(const std::string& folder) {
  std::ifstream table(folder + "/cases.tsv");
  std::set<std::string> schemas;
  std::string line;
  std::getline(table, line);
  while (std::getline(table, line)) {
    std::istringstream words(line);
    std::string standard, file, octets, schema;
    std::getline(words, standard, '\t');
    std::getline(words, file, '\t');
    std::getline(words, octets, '\t');
    std::getline(words, schema, '\t');
    if (!schema.empty()) schemas.insert(folder + "/" + standard + "/schema/" + schema);
  }
  return schemas;
}

std::unique_ptr<CSchemaSet> ReadStandard(const std::string& path) {
  return ReadSchemas({std::string(QZXML_TEST_DIRECTORY) + "/corpora/standards/" + path});
}

}  // namespace

TEST(StandardSchemas, OfTracksAreRead) {
  const auto set = ReadStandard("gpx/schema/gpx.xsd");
  ASSERT_EQ("", GetErrors(*set));
  const std::string uri = "http://www.topografix.com/GPX/1/1";
  ASSERT_EQ(1U, set->GetDocuments().size());
  EXPECT_EQ(uri, set->GetDocuments()[0]->targetNamespace);
  // Counted in the file: children of xs:schema of each kind.
  EXPECT_EQ(14U, set->GetDocuments()[0]->complexTypes.size());
  EXPECT_EQ(5U, set->GetDocuments()[0]->simpleTypes.size());
  EXPECT_EQ(1U, set->GetDocuments()[0]->elements.size());
  const Type* const waypoint = set->FindType({uri, "wptType"});
  ASSERT_NE(nullptr, waypoint);
  EXPECT_EQ(2U, waypoint->AsComplex()->attributes.size());
  EXPECT_EQ("-90.0",
            set->FindType({uri, "latitudeType"})->AsSimple()->FindLowerBound().facet->value);
}

TEST(StandardSchemas, OfProcessesAreRead) {
  const auto set = ReadStandard("bpmn20/schema/BPMN20.xsd");
  ASSERT_EQ("", GetErrors(*set));
  EXPECT_EQ(5U, set->GetDocuments().size());
  EXPECT_EQ(4U, set->GetTargetNamespaces().size());
  const std::string uri = "http://www.omg.org/spec/BPMN/20100524/MODEL";
  const ElementDecl* const element = set->FindElement({uri, "flowElement"});
  ASSERT_NE(nullptr, element);
  EXPECT_TRUE(element->type->AsComplex()->isAbstract);
  // Each element that the schema lets stand for flowElement, directly or not, but abstract ones.
  for (const ElementDecl* const substitute : element->substitutes) {
    EXPECT_FALSE(substitute->isAbstract);
    EXPECT_TRUE(IsDerivedFrom(substitute->type, element->type)) << substitute->name.ToString();
  }
  EXPECT_FALSE(element->substitutes.empty());
}

TEST(StandardSchemas, OfTheCorporaAreRead) {
  const char* const corpora = std::getenv("QZXML_CORPORA");
  if (corpora == nullptr) GTEST_SKIP() << "QZXML_CORPORA names no folder";
  const std::string folder = std::string(corpora) + "/standards";
  const std::set<std::string> schemas = FindSchemas(folder);
  if (schemas.empty()) GTEST_SKIP() << "QZXML_CORPORA names no folder with standards";
  ReadOptions options;
  options.catalogs.push_back(folder + "/catalog.xml");
  for (const std::string& schema : schemas) {
    const auto set = ReadSchemas({schema}, options);
    EXPECT_EQ("", GetErrors(*set)) << schema;
    EXPECT_FALSE(set->GetAllTypes().empty()) << schema;
  }
}
