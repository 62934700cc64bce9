// Documents that nobody here wrote, and such as were made octet by octet: each gives the tree of
// the XML beside it, or what its table says.
//
// What the reader does not understand, and why:
//   octets/R05, R07, R08  they use names or alphabets of their own initial vocabulary, which is
//                         stepped over
//   octets/R06            two items in one table of the head, where a length is looked for before
//                         each
//   octets/R13            an encoding algorithm of the application
//   peer/*.ext.finf       they start from an external vocabulary that only their writer has
//   x3db/HelloWorld.x3db  the same
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "qzxml/runtime/QzException.h"
#include "tests/fastinfoset/FIDocument.h"
#include "tests/support/Documents.h"
#include "tests/support/QzTest.h"
#include "tests/support/TreeText.h"

namespace QzXmlLib16 {
namespace {

using qztest::LoadOctets;
using qztest::ReadWholeFile;

using Rows = std::vector<std::vector<std::string>>;

// The rows of a table behind its heading.
Rows ReadTable(const std::string& path, std::size_t columns) {
  Rows rows;
  std::istringstream stream(ReadWholeFile(path));
  std::string line;
  std::getline(stream, line);
  while (std::getline(stream, line)) {
    std::vector<std::string> row;
    std::istringstream fields(line + "\t");
    for (std::string field; std::getline(fields, field, '\t');) row.push_back(field);
    row.resize(columns);
    rows.push_back(row);
  }
  return rows;
}

std::string Braced(const std::string& uri, const std::string& localName) {
  return "{" + uri + "}" + localName;
}

// An element as the tables write it: <{uri}name {uri}attribute='value'>text, children, </>.
std::string TableForm(const CXmlElement* element) {
  std::string form = "<" + Braced(element->GetNamespaceURI(), element->GetLocalName());
  for (const CXmlAttribute* attribute : element->GetAttributes()) {
    form += " " + Braced(attribute->GetNamespaceURI(), attribute->GetLocalName()) + "='" +
            attribute->GetValue() + "'";
  }
  form += ">" + element->GetText();
  for (const CXmlElement* child = element->GetFirstElement(); child != nullptr;
       child = child->GetNextSiblingElement()) {
    form += TableForm(child);
  }
  return form + "</>";
}

std::string TreeOfFile(const std::string& path) {
  CXmlDocument document;
  document.Load(path.c_str());
  return TableForm(document.GetDocumentElement());
}

// Markers of CDATA sections are of XML text alone.
std::string ShapeOfFile(const std::string& path) {
  CSerializationContext context;
  context.SetStripCDATA(true);
  CXmlDocument document(context);
  document.Load(path.c_str());
  return qztest::Shape(document);
}

std::string TreeTextOfFile(const std::string& path) {
  CXmlDocument document;
  document.Load(path.c_str());
  return qztest::TreeText(document.GetDocumentElement());
}

void CheckOctets(const std::string& folder, const std::string& table) {
  const Rows rows = ReadTable(table, 3);
  EXPECT_EQ(32u, rows.size());
  for (const std::vector<std::string>& row : rows) {
    SCOPED_TRACE(row[0]);
    const std::string path = folder + "/" + row[0] + ".finf";
    if (row[2].empty()) {
      EXPECT_EQ(row[1], TreeOfFile(path));
    } else {
      EXPECT_QZ_THROW(CQzException, row[2], TreeOfFile(path));
    }
  }
}

// One line for each element, two blanks for its depth: "{uri}name text='...'".
void CheckTyped(const std::string& folder, const std::string& expected) {
  CXmlDocument document;
  document.Load((folder + "/typed.finf").c_str());
  const CXmlElement* const root = document.GetDocumentElement();
  ASSERT_NE(nullptr, root);
  std::string lines = "{}typed text='" + root->GetText() + "'\n";
  for (const CXmlElement* child = root->GetFirstElement(); child != nullptr;
       child = child->GetNextSiblingElement()) {
    lines += "  " + Braced(child->GetNamespaceURI(), child->GetLocalName()) + " text='" +
             child->GetText() + "'\n";
  }
  EXPECT_EQ(ReadWholeFile(expected), lines);
}

constexpr char kOutsideTable[] = "Failed to parse FastInfoset. The index ";

std::string FailureOf(const std::string& path) {
  try {
    TreeOfFile(path);
  } catch (const CQzException& e) {
    return e.GetMessage();
  }
  return "(nothing)";
}

// file, its source, and "same" or why it fails; a list of another implementation's documents has
// more columns between.
void CheckPeer(const std::string& folder, std::size_t verdictColumn, std::size_t atLeast) {
  const Rows rows = ReadTable(folder + "/index.tsv", verdictColumn + 1);
  EXPECT_LE(atLeast, rows.size());
  for (const std::vector<std::string>& row : rows) {
    SCOPED_TRACE(row[0]);
    if (row[verdictColumn] == "same") {
      EXPECT_EQ(ShapeOfFile(folder + "/" + row[1]), ShapeOfFile(folder + "/" + row[0]));
    } else {
      EXPECT_EQ(0u, FailureOf(folder + "/" + row[0]).find(kOutsideTable));
    }
  }
}

// Its white space between elements was left out.
void CheckUbl(const std::string& folder) {
  EXPECT_EQ(TreeTextOfFile(folder + "/UBL-example.xml"),
            TreeTextOfFile(folder + "/UBL-example.finf"));
}

void CheckX3d(const std::string& folder) {
  EXPECT_EQ(0u, FailureOf(folder + "/HelloWorld.x3db").find(kOutsideTable));
}

TEST(FastInfosetReaderCorpus, TheDocumentsBesideTheTestsGiveTheirTrees) {
  const std::string folder = QZXML_TEST_DIRECTORY "/corpora/finf";
  CheckOctets(folder + "/octets", folder + "/octets/expected.tsv");
  CheckTyped(folder + "/typed", folder + "/typed/typed.expected.txt");
  CheckPeer(folder + "/peer", 2, 30);
  CheckUbl(folder + "/x891-annex");
  CheckX3d(folder + "/x3db");
}

TEST(FastInfosetReaderCorpus, TheWholeCorpusGivesItsTrees) {
  const char* corpora = std::getenv("QZXML_CORPORA");
  if (corpora == nullptr) GTEST_SKIP() << "QZXML_CORPORA names no folder";
  const std::string folder = std::string(corpora) + "/finf";
  CheckOctets(folder + "/octets", QZXML_TEST_DIRECTORY "/corpora/finf/octets/expected.tsv");
  CheckTyped(folder + "/typed", QZXML_TEST_DIRECTORY "/corpora/finf/typed/typed.expected.txt");
  CheckPeer(folder + "/peer", 4, 60);
  CheckUbl(folder + "/x891-annex");
  CheckX3d(folder + "/x3db");
}

}  // namespace
}  // namespace QzXmlLib16
