#include "qzxml/fastinfoset/OctetForms.h"

#include <cstddef>

#include "qzxml/platform/Assert.h"
#include "qzxml/runtime/QzException.h"

namespace QzXmlLib16::detail {
namespace {

void PutOctet(std::string& out, std::uint32_t octet) { out += static_cast<char>(octet); }

// The lowest count octets of a number, highest first.
void PutOctets(std::string& out, std::uint32_t number, int count) {
  for (int shift = 8 * (count - 1); shift >= 0; shift -= 8) PutOctet(out, number >> shift & 0xFF);
}

// A number whose highest bits stand in the octet of the mark, and the others in count octets.
void PutMarked(std::string& out, unsigned mark, std::uint32_t number, int count) {
  PutOctet(out, mark | number >> (8 * count));
  PutOctets(out, number, count);
}

// The three forms of a length: the least lengths of the second and the third, and their marks.
void PutLength(std::string& out, unsigned head, std::uint32_t length, std::uint32_t second,
               unsigned secondMark, unsigned thirdMark) {
  QZ_ASSERT(length > 0);
  const std::uint32_t third = second + 256;
  if (length < second) {
    PutOctet(out, head | (length - 1));
  } else if (length < third) {
    PutOctet(out, head | secondMark);
    PutOctet(out, length - second);
  } else {
    PutOctet(out, head | thirdMark);
    PutOctets(out, length - third, 4);
  }
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

void PutIndexOnSecondBit(std::string& out, unsigned head, std::uint32_t dwVal) {
  QZ_ASSERT(dwVal > 0);
  if (dwVal <= 64) {
    PutOctet(out, head | (dwVal - 1));
  } else if (dwVal <= 8256) {
    PutMarked(out, head | 0x40, dwVal - 65, 1);
  } else {
    PutMarked(out, head | 0x60, dwVal - 8257, 2);
  }
}

void PutIndexOnThirdBit(std::string& out, unsigned head, std::uint32_t dwVal) {
  QZ_ASSERT(dwVal > 0);
  if (dwVal <= 32) {
    PutOctet(out, head | (dwVal - 1));
  } else if (dwVal <= 2080) {
    PutMarked(out, head | 0x20, dwVal - 33, 1);
  } else if (dwVal <= 526368) {
    PutMarked(out, head | 0x28, dwVal - 2081, 2);
  } else {
    // Meant: 526368 where the standard has 526369; documents of this library always had it so.
    PutMarked(out, head | 0x30, dwVal - 526368, 3);
  }
}

void PutIndexOnFourthBit(std::string& out, unsigned head, std::uint32_t dwVal) {
  QZ_ASSERT(dwVal > 0);
  if (dwVal <= 16) {
    PutOctet(out, head | (dwVal - 1));
  } else if (dwVal <= 1040) {
    PutMarked(out, head | 0x10, dwVal - 17, 1);
  } else if (dwVal <= 263184) {
    PutMarked(out, head | 0x14, dwVal - 1041, 2);
  } else {
    PutMarked(out, head | 0x18, dwVal - 263185, 3);
  }
}

void PutLengthOnSecondBit(std::string& out, unsigned head, std::uint32_t length) {
  PutLength(out, head, length, 65, 0x40, 0x60);
}

void PutLengthOnFifthBit(std::string& out, unsigned head, std::uint32_t length) {
  PutLength(out, head, length, 9, 0x08, 0x0C);
}

void PutLengthOnSeventhBit(std::string& out, unsigned head, std::uint32_t length) {
  PutLength(out, head, length, 3, 0x02, 0x03);
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
    PutOctet(out, octet);
  }
}

}  // namespace QzXmlLib16::detail
