#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

#include "tests/support/QzTest.h"
#include "tools/generator/emit/OutputFolder.h"

using namespace qzxml::generator;
namespace fs = std::filesystem;

namespace {

constexpr char kFirst[] = "// Made by qzxml generate from a.xsd.\n";

// A folder that is not there yet, in one that is this test's alone and is gone again behind it: the
// tests of a program run beside each other.
class OutputFolder : public ::testing::Test {
 protected:
  OutputFolder() : m_folder(NewFolder() / "out") {}
  ~OutputFolder() override { fs::remove_all(m_folder.parent_path()); }

  static fs::path NewFolder() {
    std::string path = ::testing::TempDir() + "qzxml-output-XXXXXX";
    if (mkdtemp(path.data()) == nullptr) throw std::runtime_error("no folder: " + path);
    return path;
  }

  OutputChanges Update(const std::vector<SourceFile>& files) {
    return UpdateFolder(m_folder.string(), files);
  }
  std::string Read(const std::string& path) const {
    std::ifstream stream(m_folder / path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
  }
  void Write(const std::string& path, const std::string& text) {
    fs::create_directories((m_folder / path).parent_path());
    std::ofstream(m_folder / path, std::ios::binary) << text;
  }
  bool Exists(const std::string& path) const { return fs::exists(m_folder / path); }

  const fs::path m_folder;
};

}  // namespace

TEST_F(OutputFolder, HoldsTheFilesAndTheirList) {
  const OutputChanges changes = Update({{"a/A.h", "x\n"}, {"a/a_1.cpp", "y\n"}});
  EXPECT_EQ(2u, changes.written);
  EXPECT_EQ("x\n", Read("a/A.h"));
  EXPECT_EQ("y\n", Read("a/a_1.cpp"));
  EXPECT_EQ("a/A.h\na/a_1.cpp\n", Read(kManifestName));
  EXPECT_FALSE(Exists("a/A.h.new"));
}

TEST_F(OutputFolder, LeavesAFileAloneThatHoldsItsTextAlready) {
  Update({{"A.h", "x\n"}, {"B.h", "y\n"}});
  const auto old = fs::file_time_type::clock::now() - std::chrono::hours(1);
  fs::last_write_time(m_folder / "A.h", old);
  fs::last_write_time(m_folder / "B.h", old);
  const auto before = fs::last_write_time(m_folder / "A.h");
  const OutputChanges changes = Update({{"A.h", "x\n"}, {"B.h", "z\n"}});
  EXPECT_EQ(1u, changes.written);
  EXPECT_EQ(1u, changes.unchanged);
  EXPECT_EQ(before, fs::last_write_time(m_folder / "A.h"));
  EXPECT_NE(before, fs::last_write_time(m_folder / "B.h"));
  EXPECT_EQ("z\n", Read("B.h"));
}

TEST_F(OutputFolder, RemovesWhatTheFormerRunMadeAndThisOneDoesNot) {
  Update({{"gone/A.h", kFirst}, {"stays/B.h", kFirst}, {"stays/C.h", kFirst}});
  const OutputChanges changes = Update({{"stays/C.h", kFirst}});
  EXPECT_EQ(2u, changes.removed);
  EXPECT_FALSE(Exists("gone"));
  EXPECT_FALSE(Exists("stays/B.h"));
  EXPECT_TRUE(Exists("stays/C.h"));
}

TEST_F(OutputFolder, RemovesNothingThatIsNotItsOwn) {
  Write("qzxml-files.txt", "mine.h\n../outside.h\n/etc/hostname\n\nsub/../../outside.h\nfolder\n");
  Write("mine.h", "// written by hand\n");
  Write("other.h", kFirst);  // not in the list
  Write("folder/x", kFirst);
  Write("../outside.h", kFirst);
  const OutputChanges changes = Update({});
  EXPECT_EQ(0u, changes.removed);
  EXPECT_TRUE(Exists("mine.h"));
  EXPECT_TRUE(Exists("other.h"));
  EXPECT_TRUE(Exists("folder/x"));
  EXPECT_TRUE(Exists("../outside.h"));
}

TEST_F(OutputFolder, TellsWhatCanNotBeWritten) {
  Write("A.h/x", "");  // a folder stands there
  const std::string path = (m_folder / "A.h").generic_string();
  try {
    Update({{"A.h", "x"}});
    FAIL();
  } catch (const COutputError& e) {
    EXPECT_EQ(path + ": can not be written: Is a directory", e.what());
  }
  EXPECT_FALSE(Exists("A.h.new"));
  Write("B", "");
  try {
    Update({{"B/C.h", "x"}});
    FAIL();
  } catch (const COutputError& e) {
    EXPECT_EQ((m_folder / "B").generic_string() + ": can not be made: Not a directory", e.what());
  }
}
