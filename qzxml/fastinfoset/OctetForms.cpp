#include "qzxml/fastinfoset/OctetForms.h"

#include <cstddef>

#include "qzxml/runtime/QzException.h"

namespace QzXmlLib16::detail {
namespace {

// The lowest count octets of a number, highest first.
char* WriteOctets(char* out, std::uint32_t number, int count) {
  for (int shift = 8 * (count - 1); shift >= 0; shift -= 8) {
    out = WriteOctet(out, number >> shift & 0xFF);
  }
  return out;
}

// A number whose highest bits stand in the octet of the mark, and the others in count octets.
char* WriteMarked(char* out, unsigned mark, std::uint32_t number, int count) {
  return WriteOctets(WriteOctet(out, mark | number >> (8 * count)), number, count);
}

using Form = char* (*)(char* out, unsigned head, std::uint32_t number);

template <Form write>
void Put(std::string& out, unsigned head, std::uint32_t number) {
  char octets[kFormSize];
  out.append(octets, write(octets, head, number));
}

std::size_t PositionIn(const std::string& alphabet, char c) {
  const std::size_t position = alphabet.find(c);
  if (position == std::string::npos) {
    throw CQzException(
        "Failed to write FastInfoset. Invalid character not found for Restricted Alphabet.");
  }
  return position;
}

}  // namespace

char* WriteLongIndexOnSecondBit(char* out, unsigned head, std::uint32_t dwVal) {
  if (dwVal <= 8256) return WriteMarked(out, head | 0x40, dwVal - 65, 1);
  return WriteMarked(out, head | 0x60, dwVal - 8257, 2);
}

char* WriteLongIndexOnThirdBit(char* out, unsigned head, std::uint32_t dwVal) {
  if (dwVal <= 2080) return WriteMarked(out, head | 0x20, dwVal - 33, 1);
  if (dwVal <= 526368) return WriteMarked(out, head | 0x28, dwVal - 2081, 2);
  // Meant: 526368 where the standard has 526369; documents of this library always had it so.
  return WriteMarked(out, head | 0x30, dwVal - 526368, 3);
}

char* WriteLongIndexOnFourthBit(char* out, unsigned head, std::uint32_t dwVal) {
  if (dwVal <= 1040) return WriteMarked(out, head | 0x10, dwVal - 17, 1);
  if (dwVal <= 263184) return WriteMarked(out, head | 0x14, dwVal - 1041, 2);
  return WriteMarked(out, head | 0x18, dwVal - 263185, 3);
}

char* WriteLongestLength(char* out, unsigned head, std::uint32_t length, std::uint32_t second) {
  const unsigned mark = (second - 1) | (second - 1) >> 1;
  return WriteOctets(WriteOctet(out, head | mark), length - second - 256, 4);
}

void PutIndexOnSecondBit(std::string& out, unsigned head, std::uint32_t dwVal) {
  Put<&WriteIndexOnSecondBit>(out, head, dwVal);
}

void PutIndexOnThirdBit(std::string& out, unsigned head, std::uint32_t dwVal) {
  Put<&WriteIndexOnThirdBit>(out, head, dwVal);
}

void PutIndexOnFourthBit(std::string& out, unsigned head, std::uint32_t dwVal) {
  Put<&WriteIndexOnFourthBit>(out, head, dwVal);
}

void PutLengthOnSecondBit(std::string& out, unsigned head, std::uint32_t length) {
  Put<&WriteLengthOnSecondBit>(out, head, length);
}

void PutLengthOnFifthBit(std::string& out, unsigned head, std::uint32_t length) {
  Put<&WriteLengthOnFifthBit>(out, head, length);
}

void PutLengthOnSeventhBit(std::string& out, unsigned head, std::uint32_t length) {
  Put<&WriteLengthOnSeventhBit>(out, head, length);
}

void AppendRestrictedAlphabetString(const std::string& alphabet, const std::string& text,
                                    std::string& out) {
  if (alphabet.size() < 2 || alphabet.size() > 0x100000) {
    throw CQzException(
        "Failed to write FastInfoset. Invalid Restricted Alphabet. Alphabet must contain between 2 "
        "and 2^20 characters.");
  }
  int width = 2;
  while ((std::size_t{1} << width) <= alphabet.size()) ++width;
  if (width != 4 && width != 8) {
    throw CQzException(
        "Failed to write FastInfoset. Unsupported Feature in AppendRestrictedAlphabetString.");
  }
  out.reserve(out.size() + text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    auto octet = static_cast<std::uint32_t>(PositionIn(alphabet, text[i]));
    if (width == 4) {
      const bool isLast = ++i == text.size();
      octet =
          octet << 4 | (isLast ? 0x0F : static_cast<std::uint32_t>(PositionIn(alphabet, text[i])));
    }
    out += static_cast<char>(octet);
  }
}

}  // namespace QzXmlLib16::detail
