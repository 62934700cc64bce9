// The program as a process: its streams, its exit codes, signals, and what it is installed with.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include "tests/support/Documents.h"
#include "tests/tools/qzxml/ToolRun.h"

namespace {

using qztest::ReadWholeFile;
using qztest::TemporaryFolder;

// What the shell says of a command in which $Q is the program; its output is in the files out and
// err of the folder.
int Shell(const TemporaryFolder& folder, const std::string& command) {
  const std::string line =
      "cd '" + folder.Path("") + "' && Q='" QZXML_PROGRAM "' && { " + command + "; } >out 2>err";
  const int status = std::system(line.c_str());
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(Program, WorksOnStandardStreams) {
  const TemporaryFolder folder;
  EXPECT_EQ(0, Shell(folder, "echo '<r><a>1</a></r>' | $Q convert - - --to json --indent 0"));
  EXPECT_EQ("{\"r\":{\"a\":\"1\"}}\n", folder.Read("out"));
  EXPECT_EQ("", folder.Read("err"));
  EXPECT_EQ(0, Shell(folder,
                     "echo '<r>x</r>' | $Q convert - - --to fastinfoset --gzip |"
                     " $Q convert - a.xml && $Q convert a.xml - && ls"));
  EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<r>x</r>\na.xml\nerr\nout\n",
            folder.Read("out"));
}

TEST(Program, EndsWithTheCodesThatItsManualTells) {
  const TemporaryFolder folder;
  EXPECT_EQ(0, Shell(folder, "$Q --version"));
  EXPECT_EQ("qzxml 16.0.0\n", folder.Read("out"));
  EXPECT_EQ(1, Shell(folder, "echo '<r' | $Q convert - -"));
  EXPECT_EQ("-: unclosed token at line 1, column 1\n", folder.Read("err"));
  EXPECT_EQ(2, Shell(folder, "$Q convert"));
  EXPECT_EQ("qzxml convert: IN is required\nTry 'qzxml convert --help'.\n", folder.Read("err"));
  EXPECT_EQ(3, Shell(folder, "$Q inspect missing"));
  EXPECT_EQ("missing: can not be read: No such file or directory\n", folder.Read("err"));
  EXPECT_EQ(3, Shell(folder, "echo '<r/>' | $Q convert - - >/dev/full"));
  EXPECT_EQ("-: can not be written: No space left on device\n", folder.Read("err"));
  EXPECT_EQ(4, Shell(folder, "echo '<r><!----></r>' | $Q convert - a.json --strict"));
  EXPECT_EQ(
      "-: /r: a comment is not kept\n"
      "a.json: not written, as JSON would not keep all of -\n",
      folder.Read("err"));
  EXPECT_EQ("err out", folder.List());
}

TEST(Program, SaysWhichOfItsStreamsFails) {
  const TemporaryFolder folder;
  folder.Write("a.xml", "<r/>");
  for (const char* arguments : {"--help", "--version", "convert --help", "inspect a.xml",
                                "convert a.xml -", "convert a.xml /dev/fd/1"}) {
    EXPECT_EQ(3, Shell(folder, std::string("$Q ") + arguments + " >/dev/full")) << arguments;
    const std::string told = folder.Read("err");
    const std::string tail = ": can not be written: No space left on device\n";
    EXPECT_EQ(tail, told.substr(told.find(": "))) << arguments;
  }
  EXPECT_EQ(3, Shell(folder, "$Q inspect - <."));
  EXPECT_EQ("-: can not be read: Is a directory\n", folder.Read("err"));
  // Where nobody reads any more: an end by the signal, or, where that is ignored, a failure.
  EXPECT_EQ(3, Shell(folder,
                     "(trap '' PIPE; $Q convert a.xml -; echo $? >&2) | true; "
                     "exit $(tail -n 1 err)"));
  EXPECT_EQ("-: can not be written: Broken pipe\n3\n", folder.Read("err"));
}

TEST(Program, GoesOnWhereADescriptorStands) {
  const TemporaryFolder folder;
  folder.Write("a.xml", "<r/>");
  EXPECT_EQ(0, Shell(folder,
                     "echo a; $Q convert a.xml /dev/stdout; $Q convert a.xml /dev/fd/1;"
                     " echo b; $Q convert a.xml /dev/stderr"));
  const std::string document = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<r/>\n";
  EXPECT_EQ("a\n" + document + document + "b\n", folder.Read("out"));
  EXPECT_EQ(document, folder.Read("err"));
}

TEST(Program, SaysWhatItCanNotWriteAndLeavesNothing) {
  const TemporaryFolder folder;
  folder.Write("a.xml", "<r>" + std::string(100000, 'x') + "</r>");
  // Files may have no more than 8 blocks of 512 octets, and the signal for that is ignored.
  EXPECT_EQ(3, Shell(folder, "(trap '' XFSZ; ulimit -f 8; $Q convert a.xml b.xml)"));
  EXPECT_EQ("b.xml: can not be written: File too large\n", folder.Read("err"));
  EXPECT_EQ("a.xml err out", folder.List());
}

TEST(Program, LeavesNothingWhenItIsInterrupted) {
  const TemporaryFolder folder;
  ASSERT_EQ(0, mkfifo(folder.Path("in").c_str(), 0600));
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    execl(QZXML_PROGRAM, "qzxml", "convert", folder.Path("in").c_str(),
          folder.Path("out.xml").c_str(), static_cast<char*>(nullptr));
    _exit(127);
  }
  // The program waits for the end of its input, which does not come.
  const int descriptor = open(folder.Path("in").c_str(), O_WRONLY);
  ASSERT_GE(descriptor, 0);
  ASSERT_EQ(4, write(descriptor, "<a/>", 4));
  kill(child, SIGTERM);
  int status = 0;
  ASSERT_EQ(child, waitpid(child, &status, 0));
  close(descriptor);
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM);
  EXPECT_EQ("in", folder.List());
}

TEST(Program, ItsManualTellsEveryOptionAndCode) {
  const std::string manual = ReadWholeFile(QZXML_TOOL_SOURCES "/qzxml.1");
  for (const char* word :
       {"\\-\\-to",           "\\-\\-gzip",   "\\-\\-indent",  "\\-\\-round\\-trip", "\\-\\-root",
        "\\-\\-strict",       "\\-\\-octets", "\\-\\-help",    "\\-\\-version",      "\\-\\-output",
        "\\-\\-namespace",    "\\-\\-map",    "\\-\\-catalog", "\\-\\-depfile",      "\\-\\-parts",
        "\\-\\-part\\-name",  "\\-\\-list",   "convert",       "generate",           "inspect",
        ".SH \"EXIT STATUS\""}) {
    EXPECT_NE(std::string::npos, manual.find(word)) << word;
  }
  for (const char code : {'0', '1', '2', '3', '4'}) {
    EXPECT_NE(std::string::npos, manual.find(std::string("\n.B ") + code + '\n')) << code;
  }
}

// What stands behind the first word of such a line is set without blanks in between.
TEST(Program, ItsManualHasNoWordsThatRunTogether) {
  std::istringstream manual(ReadWholeFile(QZXML_TOOL_SOURCES "/qzxml.1"));
  for (std::string line; std::getline(manual, line);) {
    if (line.rfind(".BR ", 0) != 0 && line.rfind(".IR ", 0) != 0) continue;
    EXPECT_LE(std::count(line.begin(), line.end(), ' '), 2) << line;
  }
}

// The words that bash offers behind a beginning of a command line, which ends with a word to be
// completed.
std::string Complete(const std::string& words) {
  const TemporaryFolder folder;
  folder.Write("complete.sh", "source '" QZXML_TOOL_SOURCES
                              "/qzxml.bash'\n"
                              "COMP_WORDS=(" +
                                  words +
                                  ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_qzxml\n"
                                  "echo \"${COMPREPLY[*]}\"\n");
  EXPECT_EQ(0, Shell(folder, "bash complete.sh"));
  return folder.Read("out");
}

TEST(Program, IsCompletedByBash) {
  EXPECT_EQ("convert generate inspect --help --version\n", Complete("qzxml ''"));
  EXPECT_EQ("inspect\n", Complete("qzxml in"));
  EXPECT_EQ("--to --gzip --indent --round-trip --root --strict --help\n",
            Complete("qzxml convert -"));
  EXPECT_EQ("xml fastinfoset json\n", Complete("qzxml convert --to ''"));
  EXPECT_EQ("marked\n", Complete("qzxml convert a.xml --round-trip m"));
  EXPECT_EQ("--output --namespace --map --catalog --depfile --parts --part-name --list --help\n",
            Complete("qzxml generate --"));
  EXPECT_EQ("\n", Complete("qzxml generate --map x"));
  EXPECT_EQ("--octets --help\n", Complete("qzxml inspect --"));
  EXPECT_EQ("complete.sh\n", Complete("qzxml convert comp"));
  // The shell takes "=" for a word of its own.
  EXPECT_EQ("json\n", Complete("qzxml convert --to = j"));
  EXPECT_EQ("none marked full\n", Complete("qzxml convert a.xml --round-trip ="));
  EXPECT_EQ("complete.sh\n", Complete("qzxml generate --catalog = comp"));
  EXPECT_EQ("\n", Complete("qzxml generate --output comp"));
  EXPECT_EQ("complete.sh\n", Complete("qzxml generate comp"));
}

}  // namespace
