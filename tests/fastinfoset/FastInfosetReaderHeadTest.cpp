// Heads of documents: each component is stepped over as it stands in X.891, annex C.2, and leaves
// no trace.
#include <vector>

#include "tests/fastinfoset/FIDocument.h"
#include "tests/support/LiveCounts.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using qztest::LoadOctets;
using qztest::Octets;
using qztest::ShapeOf;
using qztest::Times;

class FastInfosetReaderHead : public qztest::NothingLeftBehind {};

// Identification, these octets, and <a/> by a literal name.
std::string Document(const std::string& head) {
  return Octets("E0 00 00 01") + head + Octets("3C 00 61 FF");
}

void ExpectRead(const std::vector<const char*>& heads) {
  for (const char* head : heads) {
    SCOPED_TRACE(head);
    EXPECT_EQ("a", ShapeOf(Document(Octets(head))));
  }
}

void ExpectFailure(const char* text, const std::string& octets) {
  CXmlDocument document;
  EXPECT_QZ_THROW(CQzException, text, LoadOctets(document, octets));
}

TEST_F(FastInfosetReaderHead, EachComponentIsSteppedOver) {
  ExpectRead({
      "00",
      "40 00 00 75 00 64",  // additional data: one pair
      "20 00 00",           // an empty initial vocabulary
      "20 10 00 00 75",     // the URI of an external one
      "10 F0",              // no notation
      "10 C0 00 6E C2 00 6E 00 73 C1 80 81 C3 00 6E 00 73 BF F0",
      "08 F0",  // no unparsed entity
      "08 D0 00 65 00 73 00 6E D1 80 81 00 70 82 F0",
      "04 04 55 54 46 2D 38",  // character encoding scheme
      "02 01",                 // standalone
      "02 F0",
      "01 02 31 2E 30",  // version
      "01 FF",
      "01 80",
      // All of them, in their order.
      "7F 00 00 75 00 64 10 00 00 75 C0 00 6E F0 D0 00 65 00 73 00 6E F0 00 38 00 00 31",
      // The bit in front of them is padding.
      "80",
      // Any octet ends notations and entities.
      "10 00",
      "08 C0",
  });
  EXPECT_EQ("a", ShapeOf(Document(Octets("40 00 40 00") + Times(65, "u") + Octets("00 64"))));
}

TEST_F(FastInfosetReaderHead, EachTableOfTheInitialVocabularyIsSteppedOver) {
  ExpectRead({
      "20 08 00 00 01 61 62",  // restricted alphabets
      "20 04 00 00 00 75",     // encoding algorithms
      "20 02 00 00 00 70",     // prefixes
      "20 01 00 00 00 75",     // namespace names
      "20 00 80 00 00 6C",     // local names
      "20 00 40 00 00 6E",     // other names
      "20 00 20 00 00 75",     // other URIs
      "20 00 10 00 00 76",     // attribute values
      "20 00 10 00 10 76",     // a form without content is not looked at
      "20 00 10 00 30 91 31 32",
      "20 00 08 00 01 76 77",                    // chunks
      "20 00 04 00 07 6F 6F 6F 6F 6F 6F 6F 6F",  // other strings
      "20 00 02 00 00 00",                       // names of elements
      "20 00 02 00 03 80 00 C0 05",
      "20 00 01 00 01 00 00",  // names of attributes
      // The three bits in front are padding; all the rest at once.
      "20 FF FF 00 75 00 00 61 00 00 61 00 00 61 00 00 61 00 00 61 00 00 61 00 00 61"
      " 00 00 61 00 00 61 00 00 61 00 00 00 00 00 00",
  });
}

TEST_F(FastInfosetReaderHead, NothingOfTheInitialVocabularyEntersTheTables) {
  constexpr char kText[] =
      "Failed to parse FastInfoset. The index 1 is outside a table of 0 entries.";
  ExpectFailure(kText, Octets("E0 00 00 01 20 00 80 00 00 61 3C 80 FF"));
  ExpectFailure(kText, Octets("E0 00 00 01 20 00 82 00 00 61 00 00 00 00 FF"));
  ExpectFailure(kText, Octets("E0 00 00 01 20 00 10 00 00 76 7C 00 61 78 00 6B 80 FF FF"));
  ExpectFailure(kText, Octets("E0 00 00 01 20 00 08 00 00 76 3C 00 61 A0 FF"));
  ExpectFailure("Failed to parse FastInfoset. The index 33 is outside a table of 2 entries.",
                Octets("E0 00 00 01 20 08 00 00 01 61 62 3C 00 61 88 80 14 FF"));
}

// The tables above would say it; documents that look like this are read only because their octets
// agree.
TEST_F(FastInfosetReaderHead, ALengthIsReadBeforeEachItemOfASequence) {
  // Two items, with a length before each; the last length that was read counts.
  ExpectRead({
      "20 00 80 01 00 61 01 00 62",
      "20 00 80 02 00 61 02 00 62 02 00 63",
      "20 00 80 7F 00 61 00 00 62",
      "20 00 80 80 00 00 00 61 01 00 62",
      "40 01 00 75 00 64 00 00 75 00 64",
  });
  // 128 and 129 items, the least of the long form.
  for (const std::size_t items : {std::size_t{128}, std::size_t{129}}) {
    const std::string length = Octets(items == 128 ? "7F" : "80 00 00");
    EXPECT_EQ("a", ShapeOf(Document(Octets("20 00 80") + Times(items, length + Octets("00 6C")))));
  }
  // As the standard has it: one length, two items; the second item's length is taken for a length,
  // and its octet for one that begins a string.
  ExpectFailure(
      "Failed to parse FastInfoset. Invalid NonEmptyOctetString type  on the second bit of an "
      "octet.",
      Octets("E0 00 00 01 20 00 80 01 00 61 00 62 3C 81 FF"));
}

TEST_F(FastInfosetReaderHead, WhatReachesPastTheEndFails) {
  for (const char* head :
       {"40 00", "40 00 00 75", "20", "20 10", "20 10 00", "20 00 80 00", "20 00 80 80 00", "10",
        "10 C0", "08 D0 00 65", "04 60 00 00", "02", "01 0C 00 00", "20 00 01 00 03 80 80"}) {
    SCOPED_TRACE(head);
    ExpectFailure("Failed to parse FastInfoset. Unexpected End of File.",
                  Octets("E0 00 00 01") + Octets(head));
  }
}

TEST_F(FastInfosetReaderHead, BitsWithoutAMeaningFail) {
  ExpectFailure(
      "Failed to parse FastInfoset. Invalid Encoding of integers 0 To 2^20 type  on the second bit "
      "of an octet.",
      Octets("E0 00 00 01 01 F0 00"));
  ExpectFailure(
      "Failed to parse FastInfoset. Invalid Encoding of integers 1 To 2^20 type  on the second bit "
      "of an octet.",
      Octets("E0 00 00 01 20 00 01 00 00 70 00"));
  ExpectFailure(
      "Failed to parse FastInfoset. Invalid NonEmptyOctetString type  on the fifth bit of an "
      "octet.",
      Octets("E0 00 00 01 01 0F 00"));
}

}  // namespace
}  // namespace QzXmlLib16
