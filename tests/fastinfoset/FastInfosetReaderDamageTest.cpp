// Documents that are cut, damaged or made to harm: each gives a tree or an exception of the reader,
// at a cost that its size justifies, and leaves nothing behind.
#include <cstdint>
#include <string>

#include "qzxml/runtime/QzException.h"
#include "tests/fastinfoset/FIDocument.h"
#include "tests/support/LiveCounts.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using qztest::Finf;
using qztest::FinfOf;
using qztest::LoadOctets;
using qztest::Octets;
using qztest::ShapeOf;
using qztest::Times;

class FastInfosetReaderDamage : public qztest::NothingLeftBehind {};

std::string BigEndian(std::uint32_t number) {
  std::string octets;
  for (int shift = 24; shift >= 0; shift -= 8) octets += static_cast<char>(number >> shift & 0xFF);
  return octets;
}

// Everything that a document can have, in some 130 octets.
std::string Everything() {
  return Octets(
      "E0 00 00 01 7F 00 00 75 00 64 10 00 00 75 C0 00 6E F0 D0 00 65 00 73 00 6E F0 00 38 00 00 31"
      "E2 00 63 E1 00 74 00 64 C7 00 73 00 70 E1 80 FF F0"
      "78 CF 00 70 00 75 CD 00 76 F0 3F 81 81 00 61 7B 81 81 00 6B 41 76 77 78 00 6C 80 F0"
      "91 78 79 A0 3C 00 62 82 01 31 32 33 34 F0 40 00 FF 00 30 91 7A 7A F0"
      "8C 09 FF FF 88 01 A1 2F 86 01 00 41 20 AC C8 00 65 E2 FF F0 8C 14 1A FF");
}

constexpr char kEverything[] =
    "{u}a {u}k='vw' l='vw' \"xyxytruefalsetrue\"[b \"1234\"][{u}a {u}k='' {u}k='zz' "
    "\"-1-12A\xE2\x82\xAC\"]";

// A document of 2 KB: names, values, chunks, numbers and long strings again and again.
std::string Document2K() {
  std::string body = Octets("78 CF 00 70 00 75 F0 3F 81 81 00 61 7B 81 81 00 6B 41 76 77 F0");
  for (char i = 0; body.size() < 2000; ++i) {
    const std::string letter(1, static_cast<char>('b' + i % 20));
    body += Octets("7C 00") + letter + Octets("78 00") + letter + Octets("40") + letter;
    body += Octets("00 80 FF 82 09 74 68 65 20 74 65 78 74 20 31 32 34");  // the text 124
    body += Octets("40 00 08 03 76 61 6C 75 65 20 6F 66 20 31 32 33 F0 8C 0A 01 00 01 00 02 91") +
            letter + letter + Octets("A0 F0 E2 00 63 88 01 A1 2F");
  }
  return Finf(body + Octets("FF"));
}

// What a load of any octets may end with; true for a tree.
bool LoadsOrFails(const std::string& octets) {
  CXmlDocument document;
  try {
    LoadOctets(document, octets);
  } catch (const CQzException& e) {
    EXPECT_FALSE(e.GetMessage().empty());
    return false;
  }
  EXPECT_NE(nullptr, document.GetDocumentElement());
  return true;
}

TEST_F(FastInfosetReaderDamage, TheDocumentsAreReadAsTheyAre) {
  EXPECT_EQ(kEverything, ShapeOf(Everything()));
  EXPECT_TRUE(LoadsOrFails(Document2K()));
}

TEST_F(FastInfosetReaderDamage, ADocumentThatIsCutAnywhereFails) {
  for (const std::string& octets : {Everything(), Document2K()}) {
    for (std::size_t length = 5; length < octets.size(); ++length) {
      CXmlDocument document;
      // The copy ends where its memory does, so that a read past the end is seen.
      const std::string cut(octets, 0, length);
      try {
        LoadOctets(document, std::string(cut.begin(), cut.end()));
        ADD_FAILURE() << length;
      } catch (const CQzException& e) {
        const std::string text = e.GetMessage();
        EXPECT_TRUE(text == "Failed to parse FastInfoset. Unexpected End of File." ||
                    text ==
                        "Failed to parse FastInfoset. Invalid Encoding of integers 0 To 2^20 "
                        "type  on the second bit of an octet.")
            << length << ": " << text;
      }
    }
  }
}

// The octets in front tell what it is, so those behind are changed.
TEST_F(FastInfosetReaderDamage, ADocumentWithAnyOctetChangedGivesATreeOrFails) {
  std::string octets = Everything();
  for (std::size_t i = 4; i < octets.size(); ++i) {
    const char kept = octets[i];
    for (int change = 1; change < 256; ++change) {
      octets[i] = static_cast<char>(kept ^ change);
      LoadsOrFails(octets);
    }
    octets[i] = kept;
  }
}

// Each octet of 2 KB is made every other; a build with assertions, which takes its time for each
// document, tries five.
#if defined(QZXML_ASSERTIONS)
constexpr int kStep = 51;
#else
constexpr int kStep = 1;
#endif

TEST_F(FastInfosetReaderDamage, ALongDocumentWithAnyOctetChangedGivesATreeOrFails) {
  std::string octets = Document2K();
  int trees = 0;
  for (std::size_t i = 4; i < octets.size(); ++i) {
    const char kept = octets[i];
    for (int change = 1; change < 256; change += kStep) {
      octets[i] = static_cast<char>(kept ^ change);
      trees += LoadsOrFails(octets) ? 1 : 0;
    }
    octets[i] = kept;
  }
  EXPECT_LT(0, trees);
}

// --- Documents made to harm

constexpr char kTooDeep[] = "The document exceeds the depth limit of 1024 elements";
constexpr char kTooLarge[] = "The document grows past 100 times its size";
constexpr char kEndOfFile[] = "Failed to parse FastInfoset. Unexpected End of File.";

TEST_F(FastInfosetReaderDamage, DepthMeetsItsLimit) {
  CXmlDocument document;
  EXPECT_QZ_THROW(CQzException, kTooDeep,
                  LoadOctets(document, FinfOf("3C 00 61") + Times(100000, Octets("00"))));
  const auto nested = [](std::size_t depth) {
    return FinfOf("3C 00 61") + Times(depth - 1, Octets("00")) + Times(depth, Octets("F0")) +
           Octets("F0");
  };
  LoadOctets(document, nested(1024));
  EXPECT_QZ_THROW(CQzException, kTooDeep, LoadOctets(document, nested(1025)));
}

TEST_F(FastInfosetReaderDamage, DepthWithoutALimitCostsNoStack) {
  CSerializationContext context;
  context.SetMaxDepth(0);
  CXmlDocument document(context);
  LoadOctets(document, FinfOf("3C 00 61") + Times(399999, Octets("00")) +
                           Times(200000, Octets("FF")) + Octets("F0"));
  EXPECT_EQ("a", document.GetDocumentElement()->GetFirstElement()->GetLocalName());
  EXPECT_QZ_THROW(CQzException, kEndOfFile,
                  LoadOctets(document, FinfOf("3C 00 61") + Times(1000000, Octets("00"))));
}

TEST_F(FastInfosetReaderDamage, ChunksByTheirIndexMeetTheBoundOfGrowth) {
  CXmlDocument document;
  const std::string chunk = Octets("93") + BigEndian(200000 - 259) + Times(200000, "x");
  EXPECT_QZ_THROW(CQzException, kTooLarge,
                  LoadOctets(document, FinfOf("3C 00 61") + chunk + Times(200000, Octets("A0")) +
                                           Octets("FF")));
  // 8 MiB are no danger.
  LoadOctets(document, FinfOf("3C 00 61") + chunk + Times(40, Octets("A0")) + Octets("FF"));
  EXPECT_EQ(41u * 200000, document.GetDocumentElement()->GetText().size());
}

TEST_F(FastInfosetReaderDamage, ValuesByTheirIndexMeetTheBoundOfGrowth) {
  CXmlDocument document;
  const std::string value = Octets("78 00 6B 4C") + BigEndian(200000 - 265) + Times(200000, "x");
  EXPECT_QZ_THROW(CQzException, kTooLarge,
                  LoadOctets(document, FinfOf("7C 00 61") + value + Times(100000, Octets("00 80")) +
                                           Octets("FF FF")));
}

TEST_F(FastInfosetReaderDamage, NamesByTheirIndexMeetTheBoundOfGrowth) {
  CXmlDocument document;
  const std::string name = Octets("60") + BigEndian(100000 - 321) + Times(100000, "n");
  EXPECT_QZ_THROW(
      CQzException, kTooLarge,
      LoadOctets(document, FinfOf("3C") + name + Times(100000, Octets("00 F0")) + Octets("FF")));
  // A long namespace of ever new names, and declared again and again.
  EXPECT_QZ_THROW(CQzException, kTooLarge,
                  LoadOctets(document, FinfOf("3D") + name + Octets("00 61") +
                                           Times(100000, Octets("3D 81 80 F0")) + Octets("FF")));
  EXPECT_QZ_THROW(CQzException, kTooLarge,
                  LoadOctets(document, FinfOf("38 CD") + name + Times(100000, Octets("CD 81")) +
                                           Octets("F0 3C 00 61 FF")));
}

TEST_F(FastInfosetReaderDamage, TheBoundOfGrowthCanBeTakenAway) {
  CSerializationContext context;
  context.SetMaxAmplification(0);
  CXmlDocument document(context);
  const std::string chunk = Octets("93") + BigEndian(10000 - 259) + Times(10000, "x");
  LoadOctets(document, FinfOf("3C 00 61") + chunk + Times(1999, Octets("A0")) + Octets("FF"));
  EXPECT_EQ(20000000u, document.GetDocumentElement()->GetText().size());
}

TEST_F(FastInfosetReaderDamage, LengthsThatWrapOrReachPastTheEndAllocateNothing) {
  for (const char* hex : {"3C 00 61 83 FF FF FF FF 41 41 FF", "3C 00 61 83 7F FF FF FF 41 41 FF",
                          "3C 60 FF FF FF FF 41", "7C 00 61 78 00 6B 0C FF FF FF FF 41",
                          "3C 00 61 87 FF FF FF FF 41 41", "3C 00 61 8C 07 FF FF FF FF 41"}) {
    SCOPED_TRACE(hex);
    CXmlDocument document;
    EXPECT_QZ_THROW(CQzException, kEndOfFile, LoadOctets(document, FinfOf(hex)));
  }
}

}  // namespace
}  // namespace QzXmlLib16
