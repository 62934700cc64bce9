#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "qzxml/fastinfoset/FIWritingTables.h"
#include "qzxml/fastinfoset/FastInfosetWriter.h"
#include "qzxml/runtime/Functions.h"
#include "tests/fastinfoset/Written.h"

// What one document leaves behind is not to be seen in another.

namespace QzXmlLib16 {
namespace {

using qztest::Digits;
using qztest::Written;

// The document of the header of the writer, with a namespace and a value that is said twice.
void WriteOrder(CFastInfosetWriter& w) {
  w.WriteStartElement("order", "");
  w.WriteAttribute("id", "", "7", ItemType_string);
  w.WriteStartElement("a", "u");
  w.WriteText("x", ItemType_string, false);
  w.WriteEndElement();
  w.WriteStartElement("a", "u");
  w.WriteText("x", ItemType_string, false);
  w.WriteEndElement();
  w.WriteEndElement();
}

// Worked out by hand from the layouts of X.891: the second element "a" has the index 2, the text
// "x" the index 1. The prefix AA is made for "u".
std::string OctetsOfOrder() {
  return Digits(
      "E0 00 00 01 00"
      "78 F0 3C 04 6F 72 64 65 72"        // order, in full
      "78 01 69 64 40 37 F0"              // id="7"
      "3F 01 41 41 00 75 00 61 90 78 F0"  // AA, u, a in full; x; its end
      "01 A0 FF F0");
}

void WriteMuch(CFastInfosetWriter& w, int elements) {
  w.WriteStartElement("much", "urn:much");
  for (int i = 0; i < elements; ++i) {
    w.WriteStartElement(FormatString("name%d", i), "urn:much");
    w.WriteText(std::to_string(i), ItemType_string, false);
    w.WriteEndElement();
  }
  w.WriteEndElement();
}

TEST(FIWritingTables, EveryDocumentBeginsWithEmptyOnes) {
  const std::string octets = Written(WriteOrder);
  for (const int elements : {0, 1, 10, 1000, 3, 40000, 2}) {
    Written([&](CFastInfosetWriter& w) { WriteMuch(w, elements); });
    EXPECT_EQ(octets, Written(WriteOrder)) << elements;
  }
}

TEST(FIWritingTables, AVocabularyIsThatOfItsOwnDocument) {
  const std::string octets = Written(WriteOrder);
  CFastInfosetContext options;
  options.SetUseGeneratedVocabulary(true);
  options.SetExternalVocabularyURI("v");
  options.GetVocabulary()->AddElement("", "", "order");
  options.GetVocabulary()->AddElementValue("x");
  options.GetVocabulary()->AddAttributeValue("7");
  const std::string byVocabulary = Written(options, WriteOrder);
  EXPECT_NE(octets, byVocabulary);
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(octets, Written(WriteOrder));
    EXPECT_EQ(byVocabulary, Written(options, WriteOrder));
  }
}

TEST(FIWritingTables, ADocumentThatFailsLeavesNothing) {
  const std::string octets = Written(WriteOrder);
  const auto fail = [](CFastInfosetWriter& w) {
    w.WriteStartElement("order", "");
    w.WriteStartElement("failing", "urn:failing");
    w.WriteText("text", ItemType_string, false);
    throw std::runtime_error("no more");
  };
  EXPECT_THROW(Written(fail), std::runtime_error);
  EXPECT_EQ(octets, Written(WriteOrder));
}

TEST(FIWritingTables, WritersAtTheSameTimeHaveTheirOwn) {
  const std::string octets = Written(WriteOrder);
  constexpr std::size_t kWriters = 20;  // more than wait for the next document
  CFastInfosetContext options;
  std::vector<std::unique_ptr<CBinaryStream>> streams;
  std::vector<std::unique_ptr<CFastInfosetWriter>> writers;
  for (std::size_t i = 0; i < kWriters; ++i) {
    streams.push_back(std::make_unique<CBinaryStream>());
    writers.push_back(std::make_unique<CFastInfosetWriter>(&options, streams.back().get()));
    writers.back()->StartDocument();
    writers.back()->WriteHeader(FInfoDecl_None);
    writers.back()->WriteStartElement(FormatString("root%d", static_cast<int>(i)), "");
  }
  EXPECT_EQ(octets, Written(WriteOrder));
  for (std::size_t i = 0; i < kWriters; ++i) {
    writers[i]->WriteEndElement();
    writers[i]->WriteDocumentEnd();
    writers[i]->EndDocument();
    const std::string name = qztest::HexOf(FormatString("root%d", static_cast<int>(i)));
    EXPECT_EQ(Digits("E0 00 00 01 00 38 F0 3C") + (i < 10 ? "04" : "05") + name + "FF",
              streams[i]->GetData().GetAsHexString());
  }
  writers.clear();
  EXPECT_EQ(octets, Written(WriteOrder));
}

TEST(FIWritingTables, ThreadsTakeAndGiveThem) {
  const std::string octets = Written(WriteOrder);
  std::vector<std::thread> threads;
  std::vector<int> same(4);
  for (std::size_t i = 0; i < same.size(); ++i) {
    threads.emplace_back([&same, &octets, i] {
      for (int round = 0; round < 100; ++round) {
        Written([&](CFastInfosetWriter& w) { WriteMuch(w, round * static_cast<int>(i)); });
        if (Written(WriteOrder) == octets) ++same[i];
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(std::vector<int>(4, 100), same);
}

TEST(FIWritingTables, TheOctetsAreThoseOfTheLayouts) {
  EXPECT_EQ(OctetsOfOrder(), Written(WriteOrder));
}

}  // namespace
}  // namespace QzXmlLib16
