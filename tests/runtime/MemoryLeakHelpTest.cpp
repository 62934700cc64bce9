#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "qzxml/collections/Element.h"
#include "qzxml/platform/DebugChannel.h"
#include "qzxml/runtime/MemoryLeakHelp.h"
#include "qzxml/runtime/TextStream.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/xml/XmlDocument.h"
#include "tests/support/LiveCounts.h"
#include "tests/support/QzTest.h"

namespace {

const std::string kHeading =
    "Instances of classes still in existence/Total Number of instances created\n";

struct Named : CInstanceMonitor {
  explicit Named(const char* name) : CInstanceMonitor(name) {}
};

CInstanceClass s_quickClass("CQuick");
struct Quick : CInstanceMonitor {
  Quick() : CInstanceMonitor(s_quickClass) {}
};

// The classes in the dump.
std::set<std::string> CountedNames() {
  std::set<std::string> names;
  std::istringstream dump(CInstanceMonitor::DumpState().substr(kHeading.size()));
  for (std::string line; std::getline(dump, line);)
    names.insert(line.substr(4, line.find('=') - 5));
  return names;
}

// Each test begins with an empty list, whatever ran before it in this process.
class MemoryLeakHelp : public ::testing::Test {
 protected:
  MemoryLeakHelp() { CInstanceMonitor::Cleanup(); }
  ~MemoryLeakHelp() override { CInstanceMonitor::Cleanup(); }
};

TEST_F(MemoryLeakHelp, DumpWithoutRecordsIsTheHeading) {
  EXPECT_EQ(kHeading, CInstanceMonitor::DumpState());
}

TEST_F(MemoryLeakHelp, FirstObjectMakesTheRecordAndTheArrowGoesWithTheLast) {
  std::optional<Named> document(std::in_place, "CXmlDocument");
  EXPECT_EQ(kHeading + "--> CXmlDocument = 1/1", CInstanceMonitor::DumpState());
  document.reset();
  EXPECT_EQ(kHeading + "    CXmlDocument = 0/1", CInstanceMonitor::DumpState());
}

TEST_F(MemoryLeakHelp, DocumentsOfTheLibraryAreCounted) {
  const std::string name = "CXmlDocument = ";
  {
    const QzXmlLib16::CXmlDocument document;
    EXPECT_NE(std::string::npos, CInstanceMonitor::DumpState().find("--> " + name + "1/1"));
  }
  EXPECT_NE(std::string::npos, CInstanceMonitor::DumpState().find("    " + name + "0/1"));
}

TEST_F(MemoryLeakHelp, EachClassOfTheLibraryCountsUnderItsOwnName) {
  const CSmartPtr<QzXmlLib16::CElement> element(new QzXmlLib16::CElement("e"));
  element->FromXml("<a k='v'><b/></a>");
  EXPECT_EQ("<a k=\"v\"><b/></a>", element->ToXml(false, false));

  const std::set<std::string> expected = {
      "CAttribute",   "CAttributeCol", "CElement",       "CElementCol",
      "CExpatReader", "CStringBuffer", "CTextStream",    "CXmlAttribute",
      "CXmlDocument", "CXmlElement",   "CXmlTextWriter", "CXmlWriterContext",
  };
  EXPECT_EQ(expected, CountedNames());
}

TEST_F(MemoryLeakHelp, ReadersAndWritersOfOtherFormatsCountUnderTheirOwnNames) {
  using namespace QzXmlLib16;
  const CSmartPtr<CElement> element(new CElement("e"));
  element->FromXml("<a k='v'><b/></a>");
  std::set<std::string> before = CountedNames();
  const auto newNames = [&before] {
    std::set<std::string> added;
    for (const std::string& name : CountedNames()) {
      if (before.insert(name).second) added.insert(name);
    }
    return added;
  };
  const CBinaryData octets = element->ToFastInfosetStream(FInfoDecl_None);
  EXPECT_EQ(1U, newNames().count("CFastInfosetWriter"));
  element->FromXmlStream(octets.GetData(), octets.GetLength());
  EXPECT_EQ(1U, newNames().count("CFastInfosetReader"));
  const std::string json = element->ToJson();
  EXPECT_EQ(1U, newNames().count("CJsonTextWriter"));
  element->FromJson(json.c_str());
  EXPECT_EQ(1U, newNames().count("CJsonTextReader"));
}

TEST_F(MemoryLeakHelp, RecordsStandInTheOrderOfFirstAppearance) {
  const Named b("B");
  { const Named a("A"); }
  const Named c("C");
  const Named againB("B");
  EXPECT_EQ(kHeading + "--> B = 2/2\n    A = 0/1\n--> C = 1/1", CInstanceMonitor::DumpState());
}

TEST_F(MemoryLeakHelp, ClassesOfOneNameShareARecord) {
  const Named literal("CQuick");
  const Quick quick;
  const std::string sameText = std::string("CQui") + "ck";
  const Named other(sameText.c_str());
  EXPECT_EQ(kHeading + "--> CQuick = 3/3", CInstanceMonitor::DumpState());
}

TEST_F(MemoryLeakHelp, NamesAreComparedExactly) {
  const Named a("Name");
  const Named b("name");
  const Named c("Names");
  EXPECT_EQ(kHeading + "--> Name = 1/1\n--> name = 1/1\n--> Names = 1/1",
            CInstanceMonitor::DumpState());
}

TEST_F(MemoryLeakHelp, ACopyCountsOutButNotInAndTheLastDestructorAsserts) {
  const qztest::AssertionRecorder recorder;
  auto first = std::make_unique<Named>("CCopied");
  auto copy = std::make_unique<Named>(*first);
  EXPECT_EQ(kHeading + "--> CCopied = 1/1", CInstanceMonitor::DumpState());
  copy.reset();
  EXPECT_EQ(kHeading + "    CCopied = 0/1", CInstanceMonitor::DumpState());
  EXPECT_TRUE(recorder.conditions().empty());
  first.reset();
  EXPECT_EQ(kHeading + "    CCopied = -1/1", CInstanceMonitor::DumpState());
#if defined(QZXML_ASSERTIONS)
  EXPECT_EQ(std::vector<std::string>{"m_pct->lInstanceCount >= 0"}, recorder.conditions());
#endif
}

TEST_F(MemoryLeakHelp, TotalIsRightWhenTheLiveCountRanLow) {
  const qztest::AssertionRecorder recorder;
  {
    const Named first("CCopied");
    const Named copy(first);
    const Named another(first);
  }
  EXPECT_EQ(kHeading + "    CCopied = -2/1", CInstanceMonitor::DumpState());
  const Named a("CCopied");
  EXPECT_EQ(kHeading + "    CCopied = -1/2", CInstanceMonitor::DumpState());
}

TEST_F(MemoryLeakHelp, AssignmentMovesAnObjectToTheOtherRecord) {
  const qztest::AssertionRecorder recorder;
  {
    Named a("A");
    const Named b("B");
    a = b;
    EXPECT_EQ(kHeading + "--> A = 1/1\n--> B = 1/1", CInstanceMonitor::DumpState());
  }
  EXPECT_EQ(kHeading + "--> A = 1/1\n    B = -1/1", CInstanceMonitor::DumpState());
}

TEST_F(MemoryLeakHelp, ObjectsOutliveCleanup) {
  auto named = std::make_unique<Named>("A");
  auto quick = std::make_unique<Quick>();
  CInstanceMonitor::Cleanup();
  EXPECT_EQ(kHeading, CInstanceMonitor::DumpState());
  const Quick newQuick;
  const Named newNamed("A");
  EXPECT_EQ(kHeading + "--> CQuick = 1/1\n--> A = 1/1", CInstanceMonitor::DumpState());
  named.reset();
  quick.reset();
  EXPECT_EQ(kHeading + "--> CQuick = 1/1\n--> A = 1/1", CInstanceMonitor::DumpState());
}

struct Pooled : CInstanceMonitor {
  Pooled() : CInstanceMonitor("CPooled") {}
  using CInstanceMonitor::BeginLife;
  using CInstanceMonitor::BeginWait;
  using CInstanceMonitor::EndWait;
};

TEST_F(MemoryLeakHelp, AnObjectInAPoolIsNotAlive) {
  {
    Pooled pooled;
    EXPECT_EQ(kHeading + "--> CPooled = 1/1", CInstanceMonitor::DumpState());
    pooled.BeginWait();
    EXPECT_EQ(kHeading + "    CPooled = 0/1", CInstanceMonitor::DumpState());
    pooled.BeginLife();
    EXPECT_EQ(kHeading + "--> CPooled = 1/2", CInstanceMonitor::DumpState());
    pooled.BeginWait();
    pooled.EndWait();
  }
  EXPECT_EQ(kHeading + "    CPooled = 0/2", CInstanceMonitor::DumpState());
}

TEST_F(MemoryLeakHelp, CountsExactlyBetweenThreads) {
  constexpr int kEach = 5000;
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([] {
      for (int i = 0; i < kEach; ++i) {
        const Quick quick;
        const Named named(i % 2 == 0 ? "CQuick" : "CSlow");
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  const std::string dump = CInstanceMonitor::DumpState();
  EXPECT_NE(std::string::npos, dump.find("    CQuick = 0/30000")) << dump;
  EXPECT_NE(std::string::npos, dump.find("    CSlow = 0/10000")) << dump;
}

TEST_F(MemoryLeakHelp, StreamsAndTheirBuffersAreCounted) {
  const QzXmlLib16::CTextStream stream;
  EXPECT_EQ(kHeading + "--> CTextStream = 1/1\n--> CStringBuffer = 1/1",
            CInstanceMonitor::DumpState());
  EXPECT_EQ((std::map<std::string, std::int32_t>{{"CTextStream", 1}, {"CStringBuffer", 1}}),
            qztest::LiveCounts());
}

std::string g_sent;

TEST_F(MemoryLeakHelp, LoadingAndUnloadingSendTheirTexts) {
  g_sent.clear();
  QzXmlLib16::SetDebugChannel([](const char* text) { g_sent += text; });
  QzXmlLib16::detail::StartInstanceTracking();
  EXPECT_EQ("Starting to track Class instances\n", g_sent);

  g_sent.clear();
  const Named a("A");
  { const Named b("B"); }
  QzXmlLib16::detail::StopInstanceTracking();
  QzXmlLib16::SetDebugChannel(nullptr);
  EXPECT_EQ("Dumping Class instances\n" + kHeading + "--> A = 1/1\n    B = 0/1\n", g_sent);
  EXPECT_EQ(kHeading, CInstanceMonitor::DumpState());
}

using MemoryLeakHelpDeathTest = MemoryLeakHelp;

TEST_F(MemoryLeakHelpDeathTest, EndOfTheProcessDumpsWhatIsStillThere) {
  EXPECT_EXIT(
      {
        CInstanceMonitor::Cleanup();
        static const Named* const s_keptAlive = new Named("CLeaked");
        static_cast<void>(s_keptAlive);
        QzXmlLib16::SetDebugChannel([](const char* text) { std::fputs(text, stderr); });
        std::exit(0);
      },
      ::testing::ExitedWithCode(0),
      "^Dumping Class instances\n"
      "Instances of classes still in existence/Total Number of instances created\n"
      "--> CLeaked = 1/1\n$");
}

}  // namespace
