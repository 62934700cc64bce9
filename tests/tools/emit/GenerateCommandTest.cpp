#include "tests/support/QzTest.h"
#include "tests/tools/qzxml/ToolRun.h"
#include "tools/generator/Generate.h"
#include "tools/qzxml/Commands.h"

using qztest::TemporaryFolder;
using qztest::ToolResult;

namespace {

constexpr char kSchema[] =
    "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\" targetNamespace=\"urn:a\">"
    "<xs:element name=\"a\"><xs:complexType><xs:attribute name=\"n\" type=\"xs:int\"/>"
    "</xs:complexType></xs:element></xs:schema>";

ToolResult Generate(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "generate");
  return qztest::RunTool(arguments, "", &qztool::AddGenerateCommand);
}

}  // namespace

TEST(GenerateCommand, WritesTheClassesAndSaysNothing) {
  const TemporaryFolder folder;
  const std::string schema = folder.Write("a.xsd", kSchema);
  const std::string output = folder.Path("gen");
  const ToolResult result = Generate(
      {schema, "--output", output, "--namespace", "x::y", "--depfile", folder.Path("a b.d")});
  EXPECT_EQ(0, result.code) << result.err;
  EXPECT_EQ("", result.out + result.err);
  EXPECT_EQ(folder.Read("gen/qzxml-files.txt"),
            Generate({schema, "-o", output, "-n", "x::y", "--list"}).out);
  EXPECT_NE(std::string::npos, folder.Read("gen/x_y/x_y.h").find("#include \"x_y/"));
  EXPECT_EQ(output + "/qzxml-files.txt: \\\n  " + schema + "\n", folder.Read("a b.d"));
}

TEST(GenerateCommand, TellsWhatItIsAbout) {
  const TemporaryFolder folder;
  const std::string included = folder.Write("b.xsd", kSchema);
  qzxml::generator::GenerateOptions options;
  options.schemas = {folder.Write(
      "a.xsd",
      "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\" targetNamespace=\"urn:a\">"
      "<xs:include schemaLocation=\"b.xsd\"/></xs:schema>")};
  options.output = folder.Path("gen");
  std::vector<std::string> told;
  options.progress = [&told](const std::string& work) { told.push_back(work); };
  EXPECT_FALSE(qzxml::generator::Generate(options).hasErrors);
  EXPECT_EQ((std::vector<std::string>{"reading " + options.schemas[0], "reading " + included,
                                      "binding the types", "writing the sources"}),
            told);
}

TEST(GenerateCommand, ListsWithoutWriting) {
  const TemporaryFolder folder;
  const std::string schema = folder.Write("a.xsd", kSchema);
  const ToolResult result =
      Generate({schema, "-o", folder.Path("gen"), "-n", "x", "--list", "--parts", "2"});
  EXPECT_EQ(0, result.code) << result.err;
  EXPECT_NE(std::string::npos, result.out.find("generated_1.cpp\ngenerated_2.cpp\nx/"));
  EXPECT_EQ("a.xsd", folder.List());
}

TEST(GenerateCommand, RefusesAWrongCommandLine) {
  const struct {
    std::vector<std::string> arguments;
    const char* message;
  } cases[] = {
      {{"a.xsd", "-o", ""}, "--output: no folder is named"},
      {{"a.xsd", "--output="}, "--output: 1 required FOLDER missing"},
      {{"a.xsd", "-o", "g", "-n", "7up"}, "--namespace: '7up' is no C++ namespace"},
      {{"a.xsd", "-o", "g", "-n", "a::"}, "--namespace: 'a::' is no C++ namespace"},
      {{"a.xsd", "-o", "g", "--map", "urn:a"}, "--map: 'urn:a' is not URI=NAMESPACE"},
      {{"a.xsd", "-o", "g", "--map", "a=b=c.d"}, "--map: 'c.d' is no C++ namespace"},
      {{"a.xsd", "-o", "g", "--part-name", "a/b"},
       "--part-name: 'a/b' is no name of letters and digits"},
  };
  for (const auto& c : cases) {
    const ToolResult result = Generate(c.arguments);
    EXPECT_EQ(2, result.code);
    EXPECT_EQ(std::string("qzxml generate: ") + c.message + "\nTry 'qzxml generate --help'.\n",
              result.err);
  }
  EXPECT_EQ(2, Generate({"a.xsd"}).code);
  EXPECT_EQ(2, Generate({"-o", "g"}).code);
}

TEST(GenerateCommand, TellsWhatIsWrongWithASchemaAndWritesNothing) {
  const TemporaryFolder folder;
  const std::string missing = folder.Path("missing.xsd");
  ToolResult result = Generate({missing, "-o", folder.Path("gen")});
  EXPECT_EQ(3, result.code);
  EXPECT_EQ(missing + ": There is no such file.\n" + missing + ": nothing was generated\n",
            result.err);
  const std::string wrong = folder.Write("a.xsd",
                                         "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\">"
                                         "<xs:element name=\"a\" type=\"xs:strong\"/></xs:schema>");
  result = Generate({wrong, "-o", folder.Path("gen")});
  EXPECT_EQ(1, result.code);
  EXPECT_EQ(wrong +
                ": /xs:schema/xs:element[@name='a']: There is no type "
                "'{http://www.w3.org/2001/XMLSchema}strong' (src-resolve).\n" +
                wrong + ": nothing was generated\n",
            result.err);
  EXPECT_EQ("a.xsd", folder.List());
}

TEST(GenerateCommand, AFileThatCanNotBeReadEndsWithACodeOfItsOwn) {
  const TemporaryFolder folder;
  const std::string good = folder.Write("a.xsd", kSchema);
  const std::string missing = folder.Path("missing.xml");
  const std::string naming = folder.Write(
      "b.xsd",
      "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\">"
      "<xs:redefine schemaLocation=\"missing.xml\"><xs:simpleType name=\"a\"><xs:restriction "
      "base=\"a\"/></xs:simpleType></xs:redefine></xs:schema>");
  const struct {
    std::vector<std::string> arguments;
    int code;
    const char* said;
  } cases[] = {
      {{missing}, 3, "missing.xml: There is no such file."},
      {{good, missing}, 3, "missing.xml: There is no such file."},
      {{good, "--catalog", missing}, 3, "missing.xml: There is no such file."},
      {{folder.Path("")}, 3, ": There is no such file."},
      {{naming}, 1, "(src-redefine.1)."},
  };
  for (const auto& c : cases) {
    std::vector<std::string> arguments = c.arguments;
    arguments.insert(arguments.end(), {"-o", folder.Path("gen"), "-n", "x"});
    const ToolResult result = Generate(arguments);
    EXPECT_EQ(c.code, result.code) << result.err;
    EXPECT_NE(std::string::npos, result.err.find(c.said)) << result.err;
  }
}

TEST(GenerateCommand, TellsAFolderThatCanNotBeWritten) {
  const TemporaryFolder folder;
  const std::string schema = folder.Write("a.xsd", kSchema);
  const std::string output = schema + "/gen";  // within a file
  const ToolResult result = Generate({schema, "-o", output, "-n", "x"});
  EXPECT_EQ(3, result.code);
  EXPECT_EQ(output + "/x: can not be made: Not a directory\n", result.err);
}
