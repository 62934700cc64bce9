// qzxml convert between files: formats by option and by name, layout, gzip, what is written when.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "qzxml/runtime/QzZip.h"
#include "qzxml/values/BinaryData.h"
#include "tests/tools/qzxml/ToolRun.h"

namespace {

using qztest::ConvertText;
using qztest::FromHex;
using qztest::RunTool;
using qztest::TemporaryFolder;
using qztest::ToHex;
using qztest::ToolResult;

constexpr char kXml[] = "<a k=\"v\">hi</a>";
// By clause C of X.891: the head; the root with attributes and no namespaces; its name; the
// attribute's name and value; the end of the attributes; a chunk; two ends.
constexpr char kFastInfoset[] = "E000000100 78F0 3C0061 78006B 4076 F0 916869 FF";

std::string Expand(const std::string& octets) {
  QzXmlLib16::CBinaryData expanded;
  const bool isCompressed =
      QzXmlLib16::CQzZip::Decompress(reinterpret_cast<const unsigned char*>(octets.data()),
                                     static_cast<std::uint32_t>(octets.size()), expanded);
  EXPECT_TRUE(isCompressed);
  return std::string(reinterpret_cast<const char*>(expanded.GetData()), expanded.GetLength());
}

TEST(Convert, WritesTheFormatThatIsAskedFor) {
  const std::string fastInfoset = FromHex(kFastInfoset);
  const std::string json = "{\n  \"a\": {\n    \"@k\": \"v\",\n    \"#text\": \"hi\"\n  }\n}\n";
  const std::string xml = std::string("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") + kXml + "\n";
  for (const std::string& input : {std::string(kXml), fastInfoset, json}) {
    EXPECT_EQ(xml, ConvertText(input, {"--to", "xml"}));
    EXPECT_EQ(ToHex(fastInfoset), ToHex(ConvertText(input, {"--to", "fastinfoset"})));
    EXPECT_EQ(json, ConvertText(input, {"--to", "json"}));
  }
}

TEST(Convert, TakesTheFormatFromTheNameOfTheOutput) {
  const TemporaryFolder folder;
  const std::string in = folder.Write("in", kXml);
  const struct {
    const char* name;
    const char* beginning;
  } cases[] = {{"a.json", "{\n"},  {"a.fi", "\xE0"},          {"a.finf", "\xE0"},
               {"a.xml", "<?xml"}, {"a.gpx", "<?xml"},        {"json", "<?xml"},
               {".json", "{\n"},   {"a.json.gz", "\x1F\x8B"}, {"a.gz", "\x1F\x8B"}};
  for (const auto& c : cases) {
    const ToolResult result = RunTool({"convert", in, folder.Path(c.name)});
    EXPECT_EQ(0, result.code) << c.name << result.err;
    EXPECT_EQ("", result.out);
    EXPECT_EQ(0U, folder.Read(c.name).rfind(c.beginning, 0)) << c.name;
  }
  EXPECT_EQ('{', Expand(folder.Read("a.json.gz"))[0]);
  EXPECT_EQ('<', Expand(folder.Read("a.gz"))[0]);
}

TEST(Convert, AnOptionCountsMoreThanTheName) {
  const TemporaryFolder folder;
  EXPECT_EQ(0, RunTool({"convert", "-", folder.Path("a.json"), "--to", "xml"}, kXml).code);
  EXPECT_EQ('<', folder.Read("a.json")[0]);
}

TEST(Convert, CompressesDocumentsOfAnySize) {
  EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a/>\n",
            Expand(ConvertText("<a/>", {"--gzip"})));
  const std::string text(300000, 'x');
  EXPECT_EQ(
      "{\"a\":\"" + text + "\"}\n",
      Expand(ConvertText("<a>" + text + "</a>", {"--gzip", "--to", "json", "--indent", "0"})));
}

TEST(Convert, ReadsWhatIsCompressed) {
  const std::string compressed = ConvertText("<a/>", {"--gzip"});
  EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a/>\n", ConvertText(compressed, {}));
  // The same by zlib: python3 -c 'import zlib; print(zlib.compress(b"<a/>").hex())'
  EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a/>\n",
            ConvertText(FromHex("789cb349d4b7030002b3010b"), {}));
}

// ---- XML to XML ----

TEST(Convert, KeepsAllOfXml) {
  const std::string body =
      "<!DOCTYPE o:r [<!ENTITY e \"x&#38;y\">\n<!ATTLIST o:r d CDATA \"def\"><!-- in -->]>\n"
      "<!-- head & -->\n"
      "<?style a=\"<\"?>\n"
      "<o:r xmlns:o=\"urn:o\" xmlns=\"urn:d\" o:k=\"a&#x9;b&#xA;c&#xD;d &lt;&gt;&amp;&quot;'\">\n"
      "\t<p>one <b>two</b> three<!-- c --> four <?pi?></p>\n\n"
      "  <e/><f xmlns=\"\" xmlns:o=\"urn:p\" o:q=\"o:v\"> </f>"
      "<c><![CDATA[<x>&]]>y]]&gt;</c><r>a&#xD;&#xD;\nb</r>"
      "<s xml:space=\"preserve\"> <t/> </s>\xC3\xA9\xF0\x9F\x98\x80\n"
      "</o:r>\n"
      "<!-- tail -->\n"
      "<?end?>\n";
  const std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + body;
  EXPECT_EQ(xml, ConvertText(xml, {"--strict"}));
}

TEST(Convert, KeepsACDataSectionWithoutText) {
  for (const std::string document : {"<r><![CDATA[]]></r>", "<r><a/><![CDATA[]]><b/></r>",
                                     "<r>x<![CDATA[]]><![CDATA[y]]></r>"}) {
    EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + document + '\n',
              ConvertText(document, {}));
  }
  EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<r><![CDATA[]]></r>\n",
            ConvertText("<r><![CDATA[]]></r>", {"--indent", "2"}));
  const ToolResult result =
      RunTool({"convert", "-", "-", "--to", "json", "--indent", "0"}, "<r><a/><![CDATA[]]></r>");
  EXPECT_EQ("{\"r\":{\"a\":\"\"}}\n", result.out);
  EXPECT_EQ("-: /r: a CDATA section is kept as plain text\n", result.err);
}

TEST(Convert, WritesReferencesToInternalEntitiesAsTheirText) {
  EXPECT_EQ(
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<!DOCTYPE r [<!ENTITY e \"<i>x</i>\">]>\n"
      "<r><i>x</i></r>\n",
      ConvertText("<!DOCTYPE r [<!ENTITY e \"<i>x</i>\">]><r>&e;</r>", {"--strict"}));
}

TEST(Convert, ATextThatLooksLikeACDataSectionStaysAText) {
  EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a>&lt;![CDATA[&amp;]]&gt;</a>\n",
            ConvertText("<a>&lt;![CDATA[&amp;]]&gt;</a>", {}));
}

TEST(Convert, LaysOutElementsButNoText) {
  const std::string xml =
      "<r><a>  1</a>\n<!-- c --><b><c/><d> </d>\n\n</b><p>x <i><j/></i>\n</p>"
      "<s xml:space='preserve'><t/> </s><?pi?></r>";
  EXPECT_EQ(
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<r>\n"
      "   <a>  1</a>\n"
      "   <!-- c -->\n"
      "   <b>\n"
      "      <c/>\n"
      "      <d> </d>\n"
      "   </b>\n"
      "   <p>x <i><j/></i>\n"
      "</p>\n"
      "   <s xml:space=\"preserve\"><t/> </s>\n"
      "   <?pi?>\n"
      "</r>\n",
      ConvertText(xml, {"--indent", "3"}));
  EXPECT_EQ(
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<r><a>  1</a><!-- c --><b><c/><d> </d></b><p>x <i><j/></i>\n"
      "</p><s xml:space=\"preserve\"><t/> </s><?pi?></r>\n",
      ConvertText(xml, {"--indent", "0"}));
}

TEST(Convert, IndentsByTwoWhatIsNoXmlBefore) {
  EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<r>\n  <a>1</a>\n  <a>2</a>\n</r>\n",
            ConvertText("{\"r\":{\"a\":[\"1\",\"2\"]}}", {}));
}

TEST(Convert, IndentsJson) {
  const std::string xml = "<r><a>1</a></r>";
  EXPECT_EQ("{\n    \"r\": {\n        \"a\": \"1\"\n    }\n}\n",
            ConvertText(xml, {"--to", "json", "--indent", "4"}));
  EXPECT_EQ("{\"r\":{\"a\":\"1\"}}\n", ConvertText(xml, {"--to", "json", "--indent", "0"}));
}

// ---- Namespaces in Fast Infoset ----

TEST(Convert, FastInfosetHasEveryNamespaceWithAPrefix) {
  const std::string xml =
      "<r xmlns=\"urn:d\"><p:a xmlns:p=\"urn:p\" p:k=\"1\"/><b xmlns=\"urn:e\"><c xmlns=\"\"/></b>"
      "<p:a xmlns:p=\"urn:q\"/></r>";
  const std::string fastInfoset = ConvertText(xml, {"--to", "fastinfoset"});
  EXPECT_EQ(
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<r xmlns=\"urn:d\" xmlns:ns1=\"urn:e\" xmlns:p=\"urn:p\" xmlns:ns2=\"urn:q\">\n"
      "  <p:a p:k=\"1\"/>\n"
      "  <ns1:b>\n"
      "    <c xmlns=\"\"/>\n"
      "  </ns1:b>\n"
      "  <ns2:a/>\n"
      "</r>\n",
      ConvertText(fastInfoset, {}));
}

// ---- Files ----

TEST(Convert, LeavesTheOldFileWhereItFails) {
  const TemporaryFolder folder;
  const std::string out = folder.Write("out.xml", "old");
  const std::string in = folder.Write("in.xml", "<a><b></a>");
  const ToolResult result = RunTool({"convert", in, out});
  EXPECT_EQ(1, result.code);
  EXPECT_EQ(in + ": /a/b: mismatched tag at line 1, column 9\n", result.err);
  EXPECT_EQ("old", folder.Read("out.xml"));
  EXPECT_EQ("in.xml out.xml", folder.List());
}

TEST(Convert, ReplacesAFileAndKeepsItsPermissions) {
  const TemporaryFolder folder;
  const std::string out = folder.Write("out.xml", "old");
  ASSERT_EQ(0, chmod(out.c_str(), 0640));
  EXPECT_EQ(0, RunTool({"convert", "-", out}, "<a/>").code);
  struct stat status = {};
  ASSERT_EQ(0, stat(out.c_str(), &status));
  EXPECT_EQ(0640U, status.st_mode & 0777U);
  EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a/>\n", folder.Read("out.xml"));
  EXPECT_EQ("out.xml", folder.List());
}

TEST(Convert, GivesANewFileThePermissionsOfTheProcess) {
  const TemporaryFolder folder;
  const mode_t before = umask(027);
  EXPECT_EQ(0, RunTool({"convert", "-", folder.Path("out.xml")}, "<a/>").code);
  umask(before);
  struct stat status = {};
  ASSERT_EQ(0, stat(folder.Path("out.xml").c_str(), &status));
  EXPECT_EQ(0640U, status.st_mode & 0777U);
}

TEST(Convert, WritesThroughALink) {
  const TemporaryFolder folder;
  const std::string target = folder.Write("target.xml", "old");
  std::filesystem::create_symlink(target, folder.Path("link.xml"));
  EXPECT_EQ(0, RunTool({"convert", "-", folder.Path("link.xml")}, "<a/>").code);
  EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link.xml")));
  EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a/>\n", folder.Read("target.xml"));
}

TEST(Convert, WritesWhatALinkLeadsToAlsoWhereThatIsNotThere) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder.Path("to"));
  std::filesystem::create_symlink("to/new.xml", folder.Path("link"));
  std::filesystem::create_symlink("circle", folder.Path("circle"));
  EXPECT_EQ(0, RunTool({"convert", "-", folder.Path("link")}, "<a/>").code);
  EXPECT_EQ(ConvertText("<a/>", {}), folder.Read("to/new.xml"));
  EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link")));
  const ToolResult result = RunTool({"convert", "-", folder.Path("circle")}, "<a/>");
  EXPECT_EQ(3, result.code);
  EXPECT_EQ(folder.Path("circle") + ": can not be written: Too many levels of symbolic links\n",
            result.err);
  EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("circle")));
}

TEST(Convert, WritesToADevice) {
  EXPECT_EQ(0, RunTool({"convert", "-", "/dev/null"}, "<a/>").code);
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST(Convert, AFileMayBeItsOwnOutput) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a.xml", "<r><a/></r>");
  EXPECT_EQ(0, RunTool({"convert", path, path, "--indent", "1"}).code);
  EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<r>\n <a/>\n</r>\n", folder.Read("a.xml"));
}

TEST(Convert, SaysWhichFileCanNotBeReadOrWritten) {
  const TemporaryFolder folder;
  const std::string missing = folder.Path("missing");
  ToolResult result = RunTool({"convert", missing, "-"});
  EXPECT_EQ(3, result.code);
  EXPECT_EQ(missing + ": can not be read: No such file or directory\n", result.err);
  result = RunTool({"convert", folder.Path(""), "-"});
  EXPECT_EQ(3, result.code);
  EXPECT_EQ(folder.Path("") + ": can not be read: Is a directory\n", result.err);
  result = RunTool({"convert", "-", missing + "/out.xml"}, "<a/>");
  EXPECT_EQ(3, result.code);
  EXPECT_EQ(missing + "/out.xml: can not be written: No such file or directory\n", result.err);
  result = RunTool({"convert", "-", folder.Path("")}, "<a/>");
  EXPECT_EQ(3, result.code);
  EXPECT_EQ(folder.Path("") + ": can not be written: Is a directory\n", result.err);
  result = RunTool({"convert", "-", "/dev/full"}, "<a/>");
  EXPECT_EQ(3, result.code);
  EXPECT_EQ("/dev/full: can not be written: No space left on device\n", result.err);
}

}  // namespace
