// The W3C XML conformance suite: each document loads or fails as Expat says, with the line. A small
// part of the suite stands beside the tests; the whole is used where QZXML_CORPORA names a folder
// that has it.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include "qzxml/QzXml.h"
#include "tests/support/QzTest.h"

using namespace QzXmlLib16;

namespace {

struct Case {
  std::string id;
  std::string file;
  std::string verdict;  // "ok DEPTH ELEMENTS CHARACTERS" or "fail TEXT at line LINE"
};

std::vector<std::string> Fields(const std::string& line) {
  std::vector<std::string> fields;
  std::istringstream stream(line);
  for (std::string field; std::getline(stream, field, '\t');) fields.push_back(field);
  return fields;
}

std::vector<Case> ReadCases(const std::string& index) {
  std::vector<Case> cases;
  std::ifstream stream(index);
  std::string line;
  std::getline(stream, line);  // the heading
  while (std::getline(stream, line)) {
    const std::vector<std::string> fields = Fields(line);
    if (fields.size() == 9) cases.push_back({fields[0], fields[7], fields[8]});
  }
  return cases;
}

struct Shape {
  std::size_t depth = 0;
  std::size_t elements = 0;
};

Shape Measure(const CXmlElement* root) {
  Shape shape;
  std::size_t depth = 1;
  for (const CXmlElement* element = root; element != nullptr;) {
    ++shape.elements;
    shape.depth = std::max(shape.depth, depth);
    if (element->GetFirstElement() != nullptr) {
      element = element->GetFirstElement();
      ++depth;
      continue;
    }
    while (element != nullptr && element->GetNextSiblingElement() == nullptr) {
      element = element->GetParentElm();
      --depth;
    }
    if (element != nullptr) element = element->GetNextSiblingElement();
  }
  return shape;
}

// What the document gives, in the words of the index.
std::string Load(const Case& c, const std::string& folder) {
  std::ifstream file(folder + "/" + c.file, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  CXmlDocument document;
  try {
    document.LoadXmlStream(reinterpret_cast<const unsigned char*>(bytes.data()),
                           static_cast<std::uint32_t>(bytes.size()));
  } catch (const CQzException& e) {
    return "fail " + e.GetMessage();
  }
  const Shape shape = Measure(document.GetDocumentElement());
  return "ok " + std::to_string(shape.depth) + " " + std::to_string(shape.elements);
}

// The number of characters is left out: the tree drops carriage returns and joins texts.
std::string Expected(const Case& c) {
  return c.verdict.compare(0, 3, "ok ") == 0 ? c.verdict.substr(0, c.verdict.rfind(' '))
                                             : c.verdict;
}

void RunSuite(const std::string& index, const std::string& folder, std::size_t atLeast) {
  const std::vector<Case> cases = ReadCases(index);
  ASSERT_GE(cases.size(), atLeast) << index;
  for (const Case& c : cases) {
    ASSERT_TRUE(std::filesystem::exists(folder + "/" + c.file)) << c.file;
    EXPECT_EQ(Expected(c), Load(c, folder)) << c.id << " " << c.file;
  }
}

TEST(XmlConformance, ASampleOfTheSuiteLoadsOrFailsAsExpatSays) {
  const std::string folder = QZXML_TEST_DIRECTORY "/corpora/xmlconf";
  RunSuite(folder + "/cases.tsv", folder, 60);
}

TEST(XmlConformance, TheWholeSuiteLoadsOrFailsAsExpatSays) {
  const char* corpora = std::getenv("QZXML_CORPORA");
  if (corpora == nullptr) GTEST_SKIP() << "QZXML_CORPORA names no folder";
  RunSuite(std::string(corpora) + "/xmlconf/cases.tsv", QZXML_UNPACKED "/xmlconf", 1000);
}

}  // namespace
