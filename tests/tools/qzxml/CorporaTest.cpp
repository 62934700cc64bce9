// There and back: documents that nobody here wrote become Fast Infoset and JSON and XML again, with
// the elements, attributes and texts that CXmlDocument finds in them. The documents are those
// beside the tests and, where QZXML_CORPORA names a folder, those of its folder standards.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "qzxml/runtime/QzException.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/xml/XmlDocument.h"
#include "tests/support/Documents.h"
#include "tests/support/QzTest.h"
#include "tests/support/TreeText.h"
#include "tests/tools/qzxml/ToolRun.h"

namespace {

using qztest::ReadWholeFile;
using qztest::RunTool;
using qztest::ToolResult;

// The tree of octets of any format but JSON, or the failure of reading them.
std::string TreeOf(const std::string& octets) {
  try {
    QzXmlLib16::CXmlDocument document;
    document.LoadXmlStream(reinterpret_cast<const unsigned char*>(octets.data()),
                           static_cast<std::uint32_t>(octets.size()));
    return qztest::TreeText(document.GetDocumentElement());
  } catch (const QzXmlLib16::CQzException& e) {
    return "failed: " + e.GetMessage();
  }
}

std::string Convert(const std::string& octets, const char* to) {
  const ToolResult result = RunTool({"convert", "-", "-", "--to", to}, octets);
  EXPECT_EQ(0, result.code) << result.err;
  return result.out;
}

// What the library makes of JSON.
std::string XmlOf(const std::string& json) {
  try {
    QzXmlLib16::CXmlDocument document;
    const QzXmlLib16::CBinaryData xml =
        document.LoadJsonStream(reinterpret_cast<const unsigned char*>(json.data()),
                                static_cast<std::uint32_t>(json.size()));
    return std::string(reinterpret_cast<const char*>(xml.GetData()), xml.GetLength());
  } catch (const QzXmlLib16::CQzException& e) {
    return "failed: " + e.GetMessage();
  }
}

bool HasReferenceToWhiteSpace(const std::string& xml) {
  for (const char* reference : {"&#9;", "&#13;", "&#x9;", "&#xD;", "&#xd;"}) {
    if (xml.find(reference) != std::string::npos) return true;
  }
  return false;
}

void GoThereAndBack(const std::string& xml, const std::string& name) {
  const std::string tree = TreeOf(xml);
  ASSERT_NE(0U, tree.rfind("failed", 0)) << name << tree;
  EXPECT_EQ(tree, TreeOf(Convert(xml, "xml"))) << name;
  const std::string fastInfoset = Convert(xml, "fastinfoset");
  EXPECT_EQ(tree, TreeOf(fastInfoset)) << name;
  EXPECT_EQ(tree, TreeOf(Convert(fastInfoset, "xml"))) << name;
  const std::string json = Convert(xml, "json");
  EXPECT_EQ(tree, TreeOf(Convert(json, "xml"))) << name;
  // On its way from JSON the library drops carriage returns, and writes tabs of attributes bare.
  if (!HasReferenceToWhiteSpace(xml)) {
    EXPECT_EQ(tree, TreeOf(XmlOf(json))) << name;
  }
  EXPECT_EQ(json, Convert(json, "json")) << name;
}

std::vector<std::filesystem::path> FilesBelow(const std::string& folder) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  return files;
}

TEST(Corpora, OfTheTestsGoThereAndBack) {
  unsigned count = 0;
  for (const auto& path : FilesBelow(std::string(QZXML_TEST_DIRECTORY) + "/corpora/finf")) {
    if (path.extension() != ".xml") continue;
    GoThereAndBack(ReadWholeFile(path.string()), path.string());
    ++count;
  }
  EXPECT_EQ(12U, count);
}

TEST(Corpora, OfStandardsGoThereAndBack) {
  const char* corpora = std::getenv("QZXML_CORPORA");
  if (corpora == nullptr) GTEST_SKIP() << "QZXML_CORPORA names no folder";
  const std::string folder = std::string(corpora) + "/standards";
  if (!std::filesystem::is_directory(folder)) GTEST_SKIP() << "there is no " << folder;
  unsigned count = 0;
  for (const auto& path : FilesBelow(folder)) {
    const std::string text = ReadWholeFile(path.string());
    if (TreeOf(text).rfind("failed", 0) == 0) continue;  // no XML, or not well-formed
    GoThereAndBack(text, path.string());
    ++count;
  }
  EXPECT_LT(100U, count);
}

// What the library's reader understands is the same document here. Three have more than it sees:
// a list of booleans, a UUID, and white space at the ends of texts among elements.
TEST(Corpora, OfFastInfosetAreWhatTheLibraryReads) {
  unsigned count = 0;
  for (const auto& path : FilesBelow(std::string(QZXML_TEST_DIRECTORY) + "/corpora/finf")) {
    const std::string name = path.filename().string();
    if (path.extension() != ".finf" || name == "R11-boolean-list.finf" || name == "R12-uuid.finf" ||
        name == "typed.finf") {
      continue;
    }
    const std::string octets = ReadWholeFile(path.string());
    const std::string tree = TreeOf(octets);
    const ToolResult result = RunTool({"convert", "-", "-"}, octets);
    if (tree.rfind("failed", 0) == 0) continue;
    ++count;
    EXPECT_EQ(0, result.code) << name << result.err;
    EXPECT_EQ(tree, TreeOf(result.out)) << name;
  }
  EXPECT_LT(60U, count);
}

// Vocabularies and alphabets of a document's own, which the library's reader steps over.
TEST(Corpora, OfFastInfosetWithTablesOfTheirOwnAreRead) {
  const struct {
    const char* name;
    const char* xml;
  } cases[] = {
      {"R05-initial-vocab-one", "<a/>"},
      {"R06-initial-vocab-two", "<b/>"},
      {"R07-initial-vocab-surrogate", "<a/>"},
      {"R08-initial-alphabet", "<a>abba</a>"},
      {"R11-boolean-list", "<a>true false true</a>"},
      {"R12-uuid", "<a>f81d4fae-7dec-11d0-a765-00a0c91e6bf6</a>"},
  };
  for (const auto& c : cases) {
    const std::string path =
        std::string(QZXML_TEST_DIRECTORY) + "/corpora/finf/octets/" + c.name + ".finf";
    const ToolResult result = RunTool({"convert", path, "-"});
    EXPECT_EQ(0, result.code) << c.name << result.err;
    EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + std::string(c.xml) + "\n",
              result.out);
  }
}

// The verdicts of the suite's table: y is JSON, n is none. What is a text of JSON but has no one
// root is read by giving one.
TEST(Corpora, OfJsonAreJudgedAsTheirNamesSay) {
  unsigned count = 0;
  for (const auto& path :
       FilesBelow(std::string(QZXML_TEST_DIRECTORY) + "/corpora/json/test_parsing")) {
    const std::string name = path.filename().string();
    const int code = RunTool({"inspect", path.string()}).code;
    // Line ends, tabs and other control characters may stand in strings, comments between values.
    const bool isLenient =
        name == "n_string_unescaped_ctrl_char.json" || name == "n_string_unescaped_newline.json" ||
        name == "n_string_unescaped_tab.json" || name == "n_object_trailing_comment.json";
    // Octets that are no UTF-8 show when a document is made of them.
    const bool isSeenLater = name.find("invalid-utf-8") != std::string::npos ||
                             name.find("invalid_utf8") != std::string::npos ||
                             name.find("lone_continuation") != std::string::npos ||
                             name.find("invalid-negative") != std::string::npos;
    const bool isJson = name[0] == 'y' || isLenient;
    const bool isNone = name[0] == 'n' && !isLenient && !isSeenLater;
    if (isJson || isNone) {
      EXPECT_EQ(isJson ? 0 : 1, code) << name;
    }
    ++count;
  }
  EXPECT_LT(150U, count);
}

}  // namespace
