#include "qzxml/fastinfoset/FastInfosetReaderOctets.h"
#include "qzxml/runtime/QzException.h"

// What a document may have beside its elements. None of it reaches the tree, and a table that it
// names is not looked at: its indexes have to be well-formed, no more.

namespace QzXmlLib16::detail {
namespace {

// The number of the items of a sequence. C.21: 0 and 7 bits, or 1000 and 20 bits.
std::uint32_t ReadSequenceLength(CFIOctets& octets) {
  const std::uint32_t first = octets.ReadOctet();
  if ((first & 0x80) == 0) return first + 1;
  return ((first & 0x0F) << 16 | octets.ReadNumber(2)) + 129;
}

// Meant: a length stands before each item and counts anew; see CFastInfosetReader.
template <class StepOverItem>
void StepOverSequence(CFIOctets& octets, StepOverItem stepOverItem) {
  std::uint32_t length = 0;
  std::uint32_t done = 0;
  do {
    length = ReadSequenceLength(octets);
    stepOverItem(octets);
  } while (++done < length);
}

void StepOverOneString(CFIOctets& octets) { octets.StepOverString(); }

void StepOverAdditionalData(CFIOctets& octets) {
  octets.StepOverString();  // the URI that tells what it is
  octets.StepOverString();
}

void StepOverEncoded(CFIOctets& octets) { octets.ReadEncodedOnBit3(octets.ReadOctet()); }

// The index of a prefix, of a namespace name and of a local name, where the first two may miss.
void StepOverSurrogate(CFIOctets& octets) {
  const std::uint32_t first = octets.ReadOctet();
  if ((first & 0x02) != 0) octets.ReadIndexOnBit2(octets.ReadOctet());
  if ((first & 0x01) != 0) octets.ReadIndexOnBit2(octets.ReadOctet());
  octets.ReadIndexOnBit2(octets.ReadOctet());
}

void StepOverInitialVocabulary(CFIOctets& octets) {
  struct Table {
    std::uint32_t bit;  // of both octets
    void (*stepOverItem)(CFIOctets& octets);
  };
  constexpr Table kTables[] = {
      {0x0800, &StepOverOneString},  // restricted alphabets
      {0x0400, &StepOverOneString},  // encoding algorithms
      {0x0200, &StepOverOneString},  // prefixes
      {0x0100, &StepOverOneString},  // namespace names
      {0x0080, &StepOverOneString},  // local names
      {0x0040, &StepOverOneString},  // other names
      {0x0020, &StepOverOneString},  // other URIs
      {0x0010, &StepOverEncoded},    // attribute values
      {0x0008, &StepOverEncoded},    // content character chunks
      {0x0004, &StepOverEncoded},    // other strings
      {0x0002, &StepOverSurrogate},  // element names
      {0x0001, &StepOverSurrogate},  // attribute names
  };
  const std::uint32_t present = octets.ReadNumber(2);
  if ((present & 0x1000) != 0) octets.StepOverString();  // the URI of an external vocabulary
  for (const Table& table : kTables) {
    if ((present & table.bit) != 0) StepOverSequence(octets, table.stepOverItem);
  }
}

// A system identifier and a public identifier, as the bits 7 and 8 of an item tell.
void StepOverIdentifiers(CFIOctets& octets, std::uint32_t first) {
  if ((first & 0x02) != 0) octets.StepOverIdentifying();
  if ((first & 0x01) != 0) octets.StepOverIdentifying();
}

// The octet that ends the list goes with it.
void StepOverNotations(CFIOctets& octets) {
  for (std::uint32_t first = octets.ReadOctet(); (first & 0xFC) == 0xC0;
       first = octets.ReadOctet()) {
    octets.StepOverIdentifying();
    StepOverIdentifiers(octets, first);
  }
}

void StepOverUnparsedEntities(CFIOctets& octets) {
  for (std::uint32_t first = octets.ReadOctet(); (first & 0xFE) == 0xD0;
       first = octets.ReadOctet()) {
    octets.StepOverIdentifying();  // its name
    octets.StepOverIdentifying();  // the system identifier
    if ((first & 0x01) != 0) octets.StepOverIdentifying();
    octets.StepOverIdentifying();  // the name of its notation
  }
}

}  // namespace

void StepOverProcessingInstruction(CFIOctets& octets) {
  octets.StepOverIdentifying();
  octets.StepOverNonIdentifying();
}

void StepOverComment(CFIOctets& octets) { octets.StepOverNonIdentifying(); }

void StepOverReference(CFIOctets& octets, std::uint32_t first) {
  octets.StepOverIdentifying();
  StepOverIdentifiers(octets, first);
}

bool StepOverDoctype(CFIOctets& octets, std::uint32_t first) {
  StepOverIdentifiers(octets, first);
  for (;;) {
    const std::uint32_t child = octets.ReadOctet();
    if (child == 0xF0) return false;
    if (child == 0xFF) return true;
    if (child != 0xE1) {
      throw CQzException(
          "Failed to parse FastInfoset. Invalid Encoding of document type declaration.");
    }
    StepOverProcessingInstruction(octets);
  }
}

void StepOverHead(CFIOctets& octets) {
  const std::uint32_t present = octets.ReadOctet();
  if ((present & 0x40) != 0) StepOverSequence(octets, &StepOverAdditionalData);
  if ((present & 0x20) != 0) StepOverInitialVocabulary(octets);
  if ((present & 0x10) != 0) StepOverNotations(octets);
  if ((present & 0x08) != 0) StepOverUnparsedEntities(octets);
  if ((present & 0x04) != 0) octets.StepOverString();          // the character encoding scheme
  if ((present & 0x02) != 0) octets.ReadOctet();               // standalone
  if ((present & 0x01) != 0) octets.StepOverNonIdentifying();  // the version
}

}  // namespace QzXmlLib16::detail
