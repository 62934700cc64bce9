#include "qzxml/fastinfoset/FastInfosetReaderOctets.h"

#include "qzxml/runtime/QzException.h"

// Low bits behind the mark of a form, up to the end of its octet, are padding and have to be 0.

namespace QzXmlLib16::detail {

void CFIOctets::ThrowEnd() {
  throw CQzException("Failed to parse FastInfoset. Unexpected End of File.");
}

std::uint32_t CFIOctets::ReadNumber(std::uint32_t count) {
  const unsigned char* const octets = Read(count);
  std::uint32_t number = 0;
  for (std::uint32_t i = 0; i < count; ++i) number = number << 8 | octets[i];
  return number;
}

// --- Indexes

std::uint32_t CFIOctets::ReadLongIndexOnBit2(std::uint32_t first) {
  if ((first & 0x60) == 0x40) return ((first & 0x1F) << 8 | ReadOctet()) + 65;
  if ((first & 0x70) == 0x60) return ((first & 0x0F) << 16 | ReadNumber(2)) + 8257;
  throw CQzException(
      "Failed to parse FastInfoset. Invalid Encoding of integers 1 To 2^20 type  on the second bit "
      "of an octet.");
}

std::uint32_t CFIOctets::ReadIndexOrZeroOnBit2(std::uint32_t first) {
  if ((first & 0x7F) == 0x7F) return 0;
  try {
    return ReadIndexOnBit2(first);
  } catch (const CQzException&) {
    throw CQzException(
        "Failed to parse FastInfoset. Invalid Encoding of integers 0 To 2^20 type  on the second "
        "bit of an octet.");
  }
}

// Meant: the last form takes all 24 bits, so that what a writer made of an index that it did not
// cut to 20 bits comes back.
std::uint32_t CFIOctets::ReadLongIndexOnBit3(std::uint32_t first) {
  if ((first & 0x38) == 0x20) return ((first & 0x07) << 8 | ReadOctet()) + 33;
  if ((first & 0x38) == 0x28) return ((first & 0x07) << 16 | ReadNumber(2)) + 2081;
  if ((first & 0x3F) == 0x30) return ReadNumber(3) + 526369;
  throw CQzException(
      "Failed to parse FastInfoset. Invalid Encoding of integers 1 To 2^20 type  on the third bit "
      "of an octet.");
}

std::uint32_t CFIOctets::ReadLongIndexOnBit4(std::uint32_t first) {
  if ((first & 0x1C) == 0x10) return ((first & 0x03) << 8 | ReadOctet()) + 17;
  if ((first & 0x1C) == 0x14) return ((first & 0x03) << 16 | ReadNumber(2)) + 1041;
  if ((first & 0x1F) == 0x18) return (ReadNumber(3) & 0xFFFFF) + 263185;
  throw CQzException(
      "Failed to parse FastInfoset. Invalid Encoding of integers 1 To 2^20 type  on the fourth bit "
      "of an octet.");
}

// --- Strings

std::string_view CFIOctets::ReadStringOnBit2(std::uint32_t first) {
  if ((first & 0x40) == 0) return ReadOctets((first & 0x3F) + 1);
  if ((first & 0x7F) == 0x40) return ReadOctets(std::uint64_t{ReadOctet()} + 65);
  if ((first & 0x7F) == 0x60) return ReadOctets(std::uint64_t{ReadNumber(4)} + 321);
  throw CQzException(
      "Failed to parse FastInfoset. Invalid NonEmptyOctetString type  on the second bit of an "
      "octet.");
}

std::string_view CFIOctets::ReadStringOnBit5(std::uint32_t first) {
  if ((first & 0x08) == 0) return ReadOctets((first & 0x07) + 1);
  if ((first & 0x0F) == 0x08) return ReadOctets(std::uint64_t{ReadOctet()} + 9);
  if ((first & 0x0F) == 0x0C) return ReadOctets(std::uint64_t{ReadNumber(4)} + 265);
  throw CQzException(
      "Failed to parse FastInfoset. Invalid NonEmptyOctetString type  on the fifth bit of an "
      "octet.");
}

// Both bits have a meaning however they are set.
std::string_view CFIOctets::ReadStringOnBit7(std::uint32_t first) {
  if ((first & 0x02) == 0) return ReadOctets((first & 0x01) + 1);
  if ((first & 0x01) == 0) return ReadOctets(std::uint64_t{ReadOctet()} + 3);
  return ReadOctets(std::uint64_t{ReadNumber(4)} + 259);
}

FIEncodedString CFIOctets::ReadOtherOnBit3(std::uint32_t first) {
  const auto form = static_cast<FIEncodedString::Form>(first >> 4 & 0x03);
  if (form < FIEncodedString::Form_Alphabet) return {form, 0, ReadStringOnBit5(first)};
  const std::uint32_t second = ReadOctet();
  return {form, ((first & 0x0F) << 4 | second >> 4) + 1, ReadStringOnBit5(second)};
}

FIEncodedString CFIOctets::ReadOtherOnBit5(std::uint32_t first) {
  const auto form = static_cast<FIEncodedString::Form>(first >> 2 & 0x03);
  if (form < FIEncodedString::Form_Alphabet) return {form, 0, ReadStringOnBit7(first)};
  const std::uint32_t second = ReadOctet();
  return {form, ((first & 0x03) << 6 | second >> 2) + 1, ReadStringOnBit7(second)};
}

// --- Steps

void CFIOctets::StepOverIdentifying() {
  const std::uint32_t first = ReadOctet();
  if ((first & 0x80) != 0) {
    ReadIndexOnBit2(first);
  } else {
    ReadStringOnBit2(first);
  }
}

void CFIOctets::StepOverNonIdentifying() {
  const std::uint32_t first = ReadOctet();
  if ((first & 0x80) != 0) {
    ReadIndexOrZeroOnBit2(first);
  } else {
    ReadEncodedOnBit3(first);
  }
}

}  // namespace QzXmlLib16::detail
