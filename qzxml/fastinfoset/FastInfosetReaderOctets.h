#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace QzXmlLib16::detail {

// A string of a document as it stands there.
struct FIEncodedString {
  // By its two bits.
  enum Form { Form_Utf8 = 0, Form_Utf16 = 1, Form_Alphabet = 2, Form_Algorithm = 3 };

  Form form;
  std::uint32_t index;      // of the alphabet or the algorithm, 1 to 256; else 0
  std::string_view octets;  // never empty; a part of the input
};

// A cursor over the octets of a Fast Infoset document, and the numbers and strings that the format
// is made of. Most of them begin within an octet, which tells other things by its bits in front;
// they are named by the bit, 1 to 8, at which they begin, and take the octet that was read already.
// A length is compared with what is left before anything is made of it.
//
// All throw CQzException "Failed to parse FastInfoset. ...": "Unexpected End of File." for octets
// that are not there, and the text of the kind for bits that have no meaning.
// Source: ITU-T Rec. X.891 | ISO/IEC 24824-1, annex C.
class CFIOctets {
 public:
  CFIOctets(const unsigned char* data, std::size_t length) : m_next(data), m_end(data + length) {}

  const unsigned char* Read(std::uint64_t count) {
    if (count > static_cast<std::uint64_t>(m_end - m_next)) ThrowEnd();
    const unsigned char* const read = m_next;
    m_next += count;
    return read;
  }
  std::uint32_t ReadOctet() { return *Read(1); }
  // Unsigned, the high octet first; up to four octets.
  std::uint32_t ReadNumber(std::uint32_t count);

  // --- Indexes, from 1

  // C.25: 0 and 6 bits, 10 and 13 bits, 110 and 20 bits.
  std::uint32_t ReadIndexOnBit2(std::uint32_t first) {
    return (first & 0x40) == 0 ? (first & 0x3F) + 1 : ReadLongIndexOnBit2(first);
  }
  // C.26: the same, and 1111111 for 0. Every failure has the text of this kind.
  std::uint32_t ReadIndexOrZeroOnBit2(std::uint32_t first);
  // C.27: 0 and 5 bits, 100 and 11 bits, 101 and 19 bits, 110000 and 24 bits.
  std::uint32_t ReadIndexOnBit3(std::uint32_t first) {
    return (first & 0x20) == 0 ? (first & 0x1F) + 1 : ReadLongIndexOnBit3(first);
  }
  // C.28: 0 and 4 bits, 100 and 10 bits, 101 and 18 bits, 11000 and 20 bits of 24.
  std::uint32_t ReadIndexOnBit4(std::uint32_t first) {
    return (first & 0x10) == 0 ? (first & 0x0F) + 1 : ReadLongIndexOnBit4(first);
  }

  // --- Strings

  // C.22: an octet string, its length 0 and 6 bits, 1000000 and 8 bits, 1100000 and 32 bits.
  std::string_view ReadStringOnBit2(std::uint32_t first);
  // C.19 and C.20: two bits for the form, the index where there is one, and the octets behind their
  // length, which begins two bits on: C.23 and C.24.
  FIEncodedString ReadEncodedOnBit3(std::uint32_t first) {
    if ((first & 0x38) != 0) return ReadOtherOnBit3(first);
    return {FIEncodedString::Form_Utf8, 0, ReadOctets((first & 0x07) + 1)};
  }
  FIEncodedString ReadEncodedOnBit5(std::uint32_t first) {
    if ((first & 0x0F) != 0x02) return ReadOtherOnBit5(first);
    const std::uint32_t second = ReadOctet();
    return {FIEncodedString::Form_Utf8, 0, ReadOctets(std::uint64_t{second} + 3)};
  }

  // --- Steps over what is not used

  void StepOverString() { ReadStringOnBit2(ReadOctet()); }
  // C.13: an octet string or an index.
  void StepOverIdentifying();
  // C.14: an encoded string or an index, which may be 0.
  void StepOverNonIdentifying();

 private:
  [[noreturn]] static void ThrowEnd();
  std::uint32_t ReadLongIndexOnBit2(std::uint32_t first);
  std::uint32_t ReadLongIndexOnBit3(std::uint32_t first);
  std::uint32_t ReadLongIndexOnBit4(std::uint32_t first);
  std::string_view ReadOctets(std::uint64_t count) {
    return std::string_view(reinterpret_cast<const char*>(Read(count)),
                            static_cast<std::size_t>(count));
  }
  std::string_view ReadStringOnBit5(std::uint32_t first);
  std::string_view ReadStringOnBit7(std::uint32_t first);
  FIEncodedString ReadOtherOnBit3(std::uint32_t first);
  FIEncodedString ReadOtherOnBit5(std::uint32_t first);

  const unsigned char* m_next;
  const unsigned char* const m_end;
};

// The items outside of elements that are stepped over, each with its first octet read.
void StepOverProcessingInstruction(CFIOctets& octets);
void StepOverComment(CFIOctets& octets);
// The reference of an entity that was not expanded.
void StepOverReference(CFIOctets& octets, std::uint32_t first);
// True when the octet that ends it ends the document too. Throws CQzException "Failed to parse
// FastInfoset. Invalid Encoding of document type declaration." for what it can not hold.
bool StepOverDoctype(CFIOctets& octets, std::uint32_t first);

// All between the identification and the items of the document.
void StepOverHead(CFIOctets& octets);

}  // namespace QzXmlLib16::detail
