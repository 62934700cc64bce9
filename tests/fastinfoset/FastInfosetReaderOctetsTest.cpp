// The numbers and strings of the format at each of their limits, by documents made octet by octet
// from the layouts of X.891, annex C.
#include <vector>

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

class FastInfosetReaderOctets : public qztest::NothingLeftBehind {};

struct IndexCase {
  std::size_t index;
  const char* hex;
};

std::string OutsideTable(std::size_t index, std::size_t entries) {
  return "Failed to parse FastInfoset. The index " + std::to_string(index) +
         " is outside a table of " + std::to_string(entries) + " entries.";
}

// The value of the last attribute, or of the last child's text.
std::string LastValue(const std::string& octets) {
  CXmlDocument document;
  LoadOctets(document, octets);
  return document.GetDocumentElement()->GetAttributes().back()->GetValue();
}

// <a> with as many attributes k as there are entries, all of value v but the last of value X, and
// one more by its index.
std::string ValuesDocument(std::size_t entries, const std::string& index) {
  const std::string add = Octets("00 40 76");
  std::string body = Octets("7C 00 61 78 00 6B");
  body += entries == 1 ? Octets("40 58")
                       : Octets("40 76") + Times(entries - 2, add) + Octets("00 40 58");
  return Finf(body + Octets("00") + index + Octets("FF FF"));
}

TEST_F(FastInfosetReaderOctets, IndexesOnTheSecondBitAreReadAtEachLimit) {
  const IndexCase cases[] = {
      {1, "80"},      {2, "81"},       {64, "BF"},         {65, "C0 00"},      {66, "C0 01"},
      {321, "C1 00"}, {8256, "DF FF"}, {8257, "E0 00 00"}, {8258, "E0 00 01"}, {73793, "E1 00 00"}};
  for (const IndexCase& c : cases) {
    SCOPED_TRACE(c.hex);
    EXPECT_EQ("X", LastValue(ValuesDocument(c.index, Octets(c.hex))));
    if (c.index == 1) continue;
    CXmlDocument document;
    EXPECT_QZ_THROW(CQzException, OutsideTable(c.index, c.index - 1),
                    LoadOctets(document, ValuesDocument(c.index - 1, Octets(c.hex))));
  }
}

// <a> with as many children as there are entries, each by a literal name; the last is b.
std::string NamesDocument(std::size_t entries, const std::string& index) {
  const std::string child = Octets("3C 80 F0");  // the root's local name
  std::string body = Octets("3C 00 61") + Times(entries - 2, child) + Octets("3C 00 62 F0");
  return Finf(body + index + Octets("FF FF"));
}

std::string LastChildName(const std::string& octets) {
  CXmlDocument document;
  LoadOctets(document, octets);
  const CXmlElement* child = document.GetDocumentElement()->GetFirstElement();
  while (child->GetNextSiblingElement() != nullptr) child = child->GetNextSiblingElement();
  return child->GetLocalName();
}

TEST_F(FastInfosetReaderOctets, IndexesOnTheThirdBitAreReadAtEachLimit) {
  const IndexCase cases[] = {{2, "01"},          {32, "1F"},         {33, "20 00"},
                             {288, "20 FF"},     {2080, "27 FF"},    {2081, "28 00 00"},
                             {2082, "28 00 01"}, {67617, "29 00 00"}};
  for (const IndexCase& c : cases) {
    SCOPED_TRACE(c.hex);
    EXPECT_EQ("b", LastChildName(NamesDocument(c.index, Octets(c.hex))));
    if (c.index == 2) continue;
    CXmlDocument document;
    EXPECT_QZ_THROW(CQzException, OutsideTable(c.index, c.index - 1),
                    LoadOctets(document, NamesDocument(c.index - 1, Octets(c.hex))));
  }
  EXPECT_EQ("a", LastChildName(NamesDocument(2, Octets("00"))));
}

TEST_F(FastInfosetReaderOctets, IndexesOnTheThirdBitAreReadAtTheLimitOfTheirLongestForm) {
  EXPECT_EQ("b", LastChildName(NamesDocument(526368, Octets("2F FF FF"))));
  EXPECT_EQ("b", LastChildName(NamesDocument(526369, Octets("30 00 00 00"))));
}

TEST_F(FastInfosetReaderOctets, TheLongestFormOnTheThirdBitTakesAll24Bits) {
  CXmlDocument document;
  EXPECT_QZ_THROW(CQzException, OutsideTable(526369 + 0x100000, 1),
                  LoadOctets(document, FinfOf("3C 00 61 30 10 00 00 FF FF")));
  EXPECT_QZ_THROW(CQzException, OutsideTable(526369 + 0xFFFFFF, 1),
                  LoadOctets(document, FinfOf("3C 00 61 30 FF FF FF FF FF")));
}

// <a> with as many chunks as there are entries, all v but the last X, and <b> with one by its
// index.
std::string ChunksDocument(std::size_t entries, const std::string& index) {
  return Finf(Octets("3C 00 61") + Times(entries - 1, Octets("90 76")) + Octets("90 58 3C 00 62") +
              index + Octets("FF F0"));
}

TEST_F(FastInfosetReaderOctets, IndexesOnTheFourthBitAreReadAtEachLimit) {
  const IndexCase cases[] = {{1, "A0"},
                             {2, "A1"},
                             {16, "AF"},
                             {17, "B0 00"},
                             {272, "B0 FF"},
                             {1040, "B3 FF"},
                             {1041, "B4 00 00"},
                             {66577, "B5 00 00"},
                             {263184, "B7 FF FF"},
                             {263185, "B8 00 00 00"},
                             {263186, "B8 00 00 01"}};
  for (const IndexCase& c : cases) {
    SCOPED_TRACE(c.hex);
    CXmlDocument document;
    LoadOctets(document, ChunksDocument(c.index, Octets(c.hex)));
    EXPECT_EQ("X", document.GetDocumentElement()->GetFirstElement()->GetText());
    if (c.index == 1) continue;
    EXPECT_QZ_THROW(CQzException, OutsideTable(c.index, c.index - 1),
                    LoadOctets(document, ChunksDocument(c.index - 1, Octets(c.hex))));
  }
}

TEST_F(FastInfosetReaderOctets, TheLongestFormOnTheFourthBitTakes20Bits) {
  CXmlDocument document;
  EXPECT_QZ_THROW(CQzException, OutsideTable(263185 + 0xFFFFF, 1),
                  LoadOctets(document, ChunksDocument(1, Octets("B8 FF FF FF"))));
}

struct LengthCase {
  std::size_t length;
  const char* hex;
};

TEST_F(FastInfosetReaderOctets, LengthsOnTheSecondBitAreReadAtEachLimit) {
  const LengthCase cases[] = {{1, "00"},
                              {2, "01"},
                              {64, "3F"},
                              {65, "40 00"},
                              {320, "40 FF"},
                              {321, "60 00 00 00 00"},
                              {66000, "60 00 01 00 8F"}};
  for (const LengthCase& c : cases) {
    SCOPED_TRACE(c.hex);
    const std::string name(c.length, 'n');
    EXPECT_EQ(name, ShapeOf(Finf(Octets("3C") + Octets(c.hex) + name + Octets("FF"))));
  }
}

TEST_F(FastInfosetReaderOctets, LengthsOnTheFifthBitAreReadAtEachLimit) {
  const LengthCase cases[] = {{1, "00"},
                              {2, "01"},
                              {8, "07"},
                              {9, "08 00"},
                              {264, "08 FF"},
                              {265, "0C 00 00 00 00"},
                              {66000, "0C 00 01 00 C7"}};
  for (const LengthCase& c : cases) {
    SCOPED_TRACE(c.hex);
    const std::string value(c.length, 'v');
    EXPECT_EQ(value, LastValue(Finf(Octets("7C 00 61 78 00 6B") + Octets(c.hex) + value +
                                    Octets("FF FF"))));
  }
}

TEST_F(FastInfosetReaderOctets, LengthsOnTheSeventhBitAreReadAtEachLimit) {
  const LengthCase cases[] = {{1, "80"},
                              {2, "81"},
                              {3, "82 00"},
                              {4, "82 01"},
                              {258, "82 FF"},
                              {259, "83 00 00 00 00"},
                              {66000, "83 00 01 00 CD"}};
  for (const LengthCase& c : cases) {
    SCOPED_TRACE(c.hex);
    const std::string text(c.length, 't');
    EXPECT_EQ("a \"" + text + "\"",
              ShapeOf(Finf(Octets("3C 00 61") + Octets(c.hex) + text + Octets("FF"))));
  }
}

struct FailureCase {
  const char* hex;  // behind identification and head
  const char* text;
};

constexpr char kEndOfFile[] = "Failed to parse FastInfoset. Unexpected End of File.";
constexpr char kLength2[] =
    "Failed to parse FastInfoset. Invalid NonEmptyOctetString type  on the second bit of an octet.";
constexpr char kLength5[] =
    "Failed to parse FastInfoset. Invalid NonEmptyOctetString type  on the fifth bit of an octet.";
constexpr char kIndex2[] =
    "Failed to parse FastInfoset. Invalid Encoding of integers 1 To 2^20 type  on the second bit "
    "of an octet.";
constexpr char kIndexOrZero2[] =
    "Failed to parse FastInfoset. Invalid Encoding of integers 0 To 2^20 type  on the second bit "
    "of an octet.";
constexpr char kIndex3[] =
    "Failed to parse FastInfoset. Invalid Encoding of integers 1 To 2^20 type  on the third bit of "
    "an octet.";
constexpr char kIndex4[] =
    "Failed to parse FastInfoset. Invalid Encoding of integers 1 To 2^20 type  on the fourth bit "
    "of an octet.";

void ExpectFailures(const std::vector<FailureCase>& cases) {
  for (const FailureCase& c : cases) {
    SCOPED_TRACE(c.hex);
    CXmlDocument document;
    EXPECT_QZ_THROW(CQzException, c.text, LoadOctets(document, FinfOf(c.hex)));
  }
}

TEST_F(FastInfosetReaderOctets, BitsWithoutAMeaningHaveTheTextOfTheirKind) {
  ExpectFailures({
      // The length of a local name.
      {"3C 41 61 61", kLength2},
      {"3C 5F 61 61", kLength2},
      {"3C 61 61 61", kLength2},
      {"3C 7F 61 61", kLength2},
      // The length of an attribute value.
      {"7C 00 61 78 00 6B 09 76", kLength5},
      {"7C 00 61 78 00 6B 0A 76", kLength5},
      {"7C 00 61 78 00 6B 0B 76", kLength5},
      {"7C 00 61 78 00 6B 0D 76", kLength5},
      {"7C 00 61 78 00 6B 0E 76", kLength5},
      {"7C 00 61 78 00 6B 0F 76", kLength5},
      // The index of a local name, and of the name of an attribute.
      {"3C F0 00 00 00", kIndex2},
      {"3C FF 00 00 00", kIndex2},
      {"7C 00 61 70 00 00 00", kIndex2},
      {"7C 00 61 77 00 00 00", kIndex2},
      // The index of a value.
      {"7C 00 61 78 00 6B F0 00 00 00", kIndexOrZero2},
      {"7C 00 61 78 00 6B FE 00 00 00", kIndexOrZero2},
      // The index of the name of an element; 39 marks no declarations of namespaces.
      {"31 00 00 00", kIndex3},
      {"37 00 00 00", kIndex3},
      {"39 00 00 00", kIndex3},
      {"38 F0 38 00 00 00", kIndex3},
      // The index of a chunk.
      {"3C 00 61 B9 00 00 00", kIndex4},
      {"3C 00 61 BC 00 00 00", kIndex4},
      {"3C 00 61 BF 00 00 00", kIndex4},
  });
}

TEST_F(FastInfosetReaderOctets, WhatReachesPastTheEndFails) {
  ExpectFailures({
      {"3C", kEndOfFile},
      {"3C 00", kEndOfFile},
      {"3C 01 61", kEndOfFile},
      {"3C 40", kEndOfFile},
      {"3C 40 00 61", kEndOfFile},
      {"3C 60 00 00 00", kEndOfFile},
      {"3C 60 FF FF FF FF 61", kEndOfFile},
      {"3C C0", kEndOfFile},
      {"3C E0 00", kEndOfFile},
      {"20", kEndOfFile},
      {"28 00", kEndOfFile},
      {"30 00 00", kEndOfFile},
      {"3C 00 61", kEndOfFile},
      {"3C 00 61 80", kEndOfFile},
      {"3C 00 61 82", kEndOfFile},
      {"3C 00 61 83 FF FF FF FF 74 FF", kEndOfFile},
      {"3C 00 61 83 7F FF FF FF 74 FF", kEndOfFile},
      {"3C 00 61 B0", kEndOfFile},
      {"3C 00 61 B4 00", kEndOfFile},
      {"3C 00 61 B8 00 00", kEndOfFile},
      {"3C 00 61 88", kEndOfFile},
      {"7C 00 61 78 00 6B", kEndOfFile},
      {"7C 00 61 78 00 6B 08", kEndOfFile},
      {"7C 00 61 78 00 6B 0C FF FF FF FF 76", kEndOfFile},
      {"7C 00 61 78 00 6B 20", kEndOfFile},
      // Meant: within the index of a value this is a failure of the index.
      {"7C 00 61 78 00 6B C0", kIndexOrZero2},
      {"7C 00 61 78 00 6B E0 00", kIndexOrZero2},
  });
}

}  // namespace
}  // namespace QzXmlLib16
