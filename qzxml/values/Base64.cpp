#include "qzxml/values/Base64.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <limits>

#include "qzxml/platform/Assert.h"
#include "qzxml/runtime/QzException.h"

// Three bytes are four characters. Both directions take two such groups at a time, through tables
// of halves of groups: encoding, 12 bits give two characters; decoding, two characters give 12
// bits. What does not begin or end on a group, and in decoding what is to be skipped, goes one
// character at a time.

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

struct CharacterPair {
  char characters[2];
};

constexpr std::array<CharacterPair, 4096> MakeEncodeTable() {
  std::array<CharacterPair, 4096> table{};
  for (std::size_t i = 0; i < table.size(); ++i) {
    table[i].characters[0] = kAlphabet[i >> 6];
    table[i].characters[1] = kAlphabet[i & 0x3F];
  }
  return table;
}

// Marks of characters that are none of the alphabet's, above the 6 bits of a value.
constexpr std::uint8_t kSkip = 0x40;
constexpr std::uint8_t kInvalid = 0x80;

using DecodeTable = std::array<std::uint8_t, 256>;

// Meant: the table repeats itself at 128, since the top bit of a character counts for nothing.
constexpr DecodeTable MakeDecodeTable() {
  DecodeTable table{};
  for (std::size_t i = 0; i < table.size(); ++i) table[i] = kInvalid;
  for (const char c : {'=', ' ', '\t', '\r', '\n'}) {
    table[static_cast<std::size_t>(c)] = kSkip;
    table[static_cast<std::size_t>(c) + 128] = kSkip;
  }
  for (std::uint8_t value = 0; value < 64; ++value) {
    const auto c = static_cast<std::size_t>(kAlphabet[value]);
    table[c] = value;
    table[c + 128] = value;
  }
  return table;
}

// The 12 bits of two characters, the first of them in the low byte of the index. The text of one
// value touches some 12 KB of it.
constexpr std::uint16_t kNoPair = 0x8000;

using PairTable = std::array<std::uint16_t, 65536>;

// By pointers: clang counts each call of operator[] against what it evaluates while compiling.
constexpr PairTable MakePairTable(const DecodeTable& values) {
  PairTable table{};
  const std::uint8_t* const value = values.data();
  std::uint16_t* pair = table.data();
  for (std::size_t second = 0; second < 256; ++second) {
    for (std::size_t first = 0; first < 256; ++first) {
      const bool isPair = value[first] < 64 && value[second] < 64;
      *pair++ = static_cast<std::uint16_t>(isPair ? value[first] << 6 | value[second] : kNoPair);
    }
  }
  return table;
}

constexpr std::array<CharacterPair, 4096> kEncode = MakeEncodeTable();
constexpr DecodeTable kDecode = MakeDecodeTable();
constexpr PairTable kDecodePair = MakePairTable(kDecode);

void PutGroup(char* out, std::uint32_t group) {
  std::memcpy(out, kEncode[group >> 12].characters, 2);
  std::memcpy(out + 2, kEncode[group & 0xFFF].characters, 2);
}

// Eight bytes as a number, the first of them on top.
std::uint64_t LoadBytes(const unsigned char* at) {
  return std::uint64_t{at[0]} << 56 | std::uint64_t{at[1]} << 48 | std::uint64_t{at[2]} << 40 |
         std::uint64_t{at[3]} << 32 | std::uint64_t{at[4]} << 24 | std::uint64_t{at[5]} << 16 |
         std::uint64_t{at[6]} << 8 | at[7];
}

std::uint64_t GetPair(const unsigned char* at) {
  return kDecodePair[static_cast<std::size_t>(at[0] | at[1] << 8)];
}

// Writes the upper six bytes and two behind them that say nothing, in one store where the compiler
// can be told so.
void PutBytes(std::uint64_t bits, unsigned char* out) {
#if defined(__GNUC__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
  bits = __builtin_bswap64(bits);
  std::memcpy(out, &bits, sizeof bits);
#else
  for (int i = 0; i < 8; ++i) out[i] = static_cast<unsigned char>(bits >> (56 - 8 * i));
#endif
}

// Moves at and out past the characters that stand in whole eights, up to one with anything else
// among them. There is room: as many bytes as characters, and one.
void DecodeEights(const unsigned char*& at, const unsigned char* end, unsigned char*& out) {
  const unsigned char* from = at;  // variables of its own, which no store of a byte can change
  unsigned char* to = out;
  for (; end - from >= 8; from += 8, to += 6) {
    const std::uint64_t pairs[] = {GetPair(from), GetPair(from + 2), GetPair(from + 4),
                                   GetPair(from + 6)};
    if (((pairs[0] | pairs[1] | pairs[2] | pairs[3]) & kNoPair) != 0) break;
    PutBytes(pairs[0] << 52 | pairs[1] << 40 | pairs[2] << 28 | pairs[3] << 16, to);
  }
  at = from;
  out = to;
}

// Answers the end of what was decoded, at the first character that is not of the alphabet or at the
// end of the text.
unsigned char* DecodeText(const char* text, std::size_t length, unsigned char* out, bool& isValid) {
  const auto* at = reinterpret_cast<const unsigned char*>(text);
  const unsigned char* const end = at + length;
  std::uint32_t bits = 0;  // the low bitsHeld of them are still to be written
  int bitsHeld = 0;
  while (at != end) {
    if (bitsHeld == 0) DecodeEights(at, end, out);
    if (at == end) break;
    const std::uint32_t value = kDecode[*at++];
    isValid = (value & kInvalid) == 0;
    if (!isValid) break;
    if ((value & kSkip) != 0) continue;
    bits = bits << 6 | value;
    bitsHeld += 6;
    if (bitsHeld < 8) continue;
    bitsHeld -= 8;
    *out++ = static_cast<unsigned char>(bits >> bitsHeld);
  }
  return out;
}

}  // namespace

CBase64::~CBase64() = default;

void CBase64::Encode(std::string& out, const unsigned char* data, std::uint32_t length) {
  out.assign((std::size_t{length} + 2) / 3 * 4, '=');
  char* to = out.data();
  std::uint32_t i = 0;
  for (; length - i >= 8; i += 6, to += 8) {
    const std::uint64_t bits = LoadBytes(data + i);
    PutGroup(to, static_cast<std::uint32_t>(bits >> 40));
    PutGroup(to + 4, static_cast<std::uint32_t>(bits >> 16) & 0xFFFFFF);
  }
  for (; length - i >= 3; i += 3, to += 4) {
    PutGroup(to, std::uint32_t{data[i]} << 16 | std::uint32_t{data[i + 1]} << 8 | data[i + 2]);
  }
  const std::uint32_t rest = length - i;
  if (rest == 0) return;
  char group[4];
  const std::uint32_t second = rest == 2 ? data[i + 1] : 0;
  PutGroup(group, std::uint32_t{data[i]} << 16 | second << 8);
  std::memcpy(to, group, rest + 1);
}

int CBase64::Decode(const char* szDecoding, unsigned char* lpOutput) {
  QZ_ASSERT_TEXT(szDecoding != nullptr, "szDecoding != 0");
  QZ_ASSERT_TEXT(lpOutput != nullptr, "lpOutput != 0");
  if (szDecoding == nullptr || lpOutput == nullptr || *szDecoding == '\0') return 0;

  const std::size_t length = std::strlen(szDecoding);
  if (length / 4 * 3 > static_cast<std::size_t>(std::numeric_limits<int>::max()) - 3) {
    throw QzXmlLib16::CQzException("Base64 text can not hold more than 2147483647 bytes");
  }
  bool isValid = true;
  unsigned char* const end = DecodeText(szDecoding, length, lpOutput, isValid);
  std::memset(end, 0, static_cast<std::size_t>(lpOutput + length + 1 - end));
  return isValid ? static_cast<int>(end - lpOutput) : 0;
}
