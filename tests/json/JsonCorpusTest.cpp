// The JSONTestSuite: each document gives what the tables beside it say, which were worked out from
// the rules of the reader, not of RFC 8259. The small documents stand beside the tests; the suite
// of the folder that QZXML_CORPORA names is used too.
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>

#include "qzxml/QzXml.h"
#include "tests/support/QzTest.h"

using namespace QzXmlLib16;

namespace {

struct Row {
  std::string file;
  std::string reader;            // "ok" or "fail", comments allowed
  std::string readerNoComments;  // likewise
  std::string message;           // of the reader, up to a zero byte, odd bytes as "\xhh"
  std::string toXml;             // "ok" or "fail"; "ASSERT" fails too
  std::string toXmlRoot;         // with a root element
  std::string xml;               // what Expat says to the XML text: "ok" or its message
  std::string xmlMessage;        // of the conversion, as message
};

std::vector<Row> ReadTable(const std::string& path) {
  std::vector<Row> rows;
  std::ifstream stream(path);
  std::string line;
  std::getline(stream, line);  // the heading
  while (std::getline(stream, line)) {
    std::vector<std::string> f;
    std::istringstream fields(line + "\t");
    for (std::string field; std::getline(fields, field, '\t');) f.push_back(field);
    f.resize(8);
    rows.push_back({f[0], f[1], f[2], f[3], f[4], f[5], f[6], f[7]});
  }
  return rows;
}

std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file) << path;
  return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

// A message in the words of the table: without its path.
std::string Words(const CQzException& e) {
  const std::string message = e.GetMessage();
  const std::string path = e.GetPath().empty() ? "" : "\nPath: " + e.GetPath();
  EXPECT_EQ(path, message.substr(message.size() - path.size()));
  std::string words;
  for (const char c : message.substr(0, message.size() - path.size())) {
    const auto code = static_cast<unsigned char>(c);
    char text[8];
    std::snprintf(text, sizeof text, code >= 0x20 && code < 0x7F ? "%c" : "\\x%02x", code);
    words += text;
  }
  return words;
}

struct Outcome {
  std::string verdict = "ok";
  std::string message;
};

template <typename Statement>
Outcome Run(Statement statement) {
  Outcome outcome;
  try {
    statement();
  } catch (const CQzException& e) {
    outcome = {"fail", Words(e)};
  }
  return outcome;
}

Outcome Read(const std::string& text, bool comments) {
  return Run([&] {
    CJsonTextReader reader(text);
    reader.SetAllowComments(comments);
    reader.Parse();
  });
}

Outcome ToXml(const std::string& path, const char* root, CBinaryData& xml) {
  return Run([&] {
    CSerializationContext context;
    context.GetJsonContext().SetRootElementName(root);
    xml = CXmlDocument(context).LoadJsonFile(path.c_str());
  });
}

std::string Load(const CBinaryData& xml) {
  const Outcome loaded = Run([&] { CXmlDocument().LoadXmlStream(xml.GetData(), xml.GetLength()); });
  return loaded.verdict == "ok" ? "ok" : loaded.message;
}

// A state that the table marks as one that asserts fails in every build, with a text.
void ExpectVerdict(const std::string& expected, const Outcome& outcome) {
  EXPECT_EQ(expected == "ASSERT" ? "fail" : expected, outcome.verdict) << outcome.message;
}

// The table was made where broken UTF-8 becomes U+FFFD on its way in. Here UTF-8 is the local
// encoding and stays as it is: these two fail at another byte of the same line.
const std::map<std::string, std::string> kBrokenUtf8 = {
    {"n_object_lone_continuation_byte_in_key_and_trailing_comma.json",
     "Expected quotation mark character '\"' before Name, found '}' at line 1, position 10."},
    {"n_structure_single_eacute.json",
     "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found '\\xe9' at line "
     "1, position 1."}};

void Check(const Row& row, const std::string& path) {
  SCOPED_TRACE(row.file);
  const std::string text = ReadFile(path);
  const Outcome reader = Read(text, true);
  EXPECT_EQ(row.reader, reader.verdict) << reader.message;
  EXPECT_EQ(row.message, reader.message);
  EXPECT_EQ(row.readerNoComments, Read(text, false).verdict);

  CBinaryData xml;
  const Outcome toXml = ToXml(path, "", xml);
  ExpectVerdict(row.toXml, toXml);
  if (row.toXml == "fail") {
    const auto broken = kBrokenUtf8.find(row.file);
    EXPECT_EQ(broken != kBrokenUtf8.end() ? broken->second : row.xmlMessage, toXml.message);
  } else if (row.toXml == "ok") {
    EXPECT_EQ(row.xml, Load(xml));
  } else {
    EXPECT_EQ("m_pContext != 0 (WriteText)", row.xmlMessage);
    EXPECT_EQ(0u, toXml.message.find("Failed to convert value '")) << toXml.message;
  }

  // Meant: in this row the table tells of an assertion on a carriage return, which is dropped.
  const bool carriageReturn = row.file == "y_string_allowed_escapes.json";
  ExpectVerdict(carriageReturn ? "ok" : row.toXmlRoot, ToXml(path, "r", xml));
}

void RunTable(const std::string& folder, const std::string& name, std::size_t atLeast) {
  const std::vector<Row> rows = ReadTable(folder + "/" + name + ".expected.tsv");
  ASSERT_GE(rows.size(), atLeast) << folder;
  for (const Row& row : rows) Check(row, folder + "/" + name + "/" + row.file);
}

TEST(JsonCorpus, TheDocumentsBesideTheTestsGiveWhatTheirTablesSay) {
  const std::string folder = QZXML_TEST_DIRECTORY "/corpora/json";
  RunTable(folder, "test_parsing", 170);
  RunTable(folder, "test_transform", 12);
}

TEST(JsonCorpus, TheWholeSuiteGivesWhatItsTablesSay) {
  const char* corpora = std::getenv("QZXML_CORPORA");
  if (corpora == nullptr) GTEST_SKIP() << "QZXML_CORPORA names no folder";
  const std::string folder = std::string(corpora) + "/json";
  RunTable(folder, "test_parsing", 170);
  RunTable(folder, "test_transform", 12);
}

}  // namespace
