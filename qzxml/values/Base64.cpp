#include "qzxml/values/Base64.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <limits>

#include "qzxml/platform/Assert.h"
#include "qzxml/runtime/QzException.h"

// Three bytes are four characters. Both directions take such a group at a time, through tables that
// hold the result of half a group (encoding: 12 bits give two characters) or the share that each of
// the four characters has in the 24 bits (decoding). What does not begin or end on a group, and in
// decoding what is to be skipped, goes one character at a time through the same tables.

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

// Values of characters that are none of the alphabet's. Both are above all sums of 24 bits.
constexpr std::uint32_t kSkip = 0x40000000;
constexpr std::uint32_t kInvalid = 0x80000000;
constexpr std::uint32_t kNoValue = kSkip | kInvalid;

using DecodeTable = std::array<std::uint32_t, 256>;

// Meant: the table repeats itself at 128, since the top bit of a character counts for nothing.
constexpr DecodeTable MakeDecodeTable(int shift) {
  DecodeTable table{};
  for (std::size_t i = 0; i < table.size(); ++i) table[i] = kInvalid;
  for (const char c : {'=', ' ', '\t', '\r', '\n'}) {
    table[static_cast<std::size_t>(c)] = kSkip;
    table[static_cast<std::size_t>(c) + 128] = kSkip;
  }
  for (std::uint32_t value = 0; value < 64; ++value) {
    const auto c = static_cast<std::size_t>(kAlphabet[value]);
    table[c] = value << shift;
    table[c + 128] = value << shift;
  }
  return table;
}

constexpr std::array<CharacterPair, 4096> kEncode = MakeEncodeTable();
constexpr DecodeTable kDecode0 = MakeDecodeTable(18);
constexpr DecodeTable kDecode1 = MakeDecodeTable(12);
constexpr DecodeTable kDecode2 = MakeDecodeTable(6);
constexpr DecodeTable kDecode3 = MakeDecodeTable(0);

void PutGroup(char* out, std::uint32_t group) {
  std::memcpy(out, kEncode[group >> 12].characters, 2);
  std::memcpy(out + 2, kEncode[group & 0xFFF].characters, 2);
}

std::uint32_t GetGroup(const unsigned char* at) {
  return kDecode0[at[0]] | kDecode1[at[1]] | kDecode2[at[2]] | kDecode3[at[3]];
}

void PutBytes(std::uint32_t group, unsigned char* out) {
  out[0] = static_cast<unsigned char>(group >> 16);
  out[1] = static_cast<unsigned char>(group >> 8);
  out[2] = static_cast<unsigned char>(group);
}

// Moves at and out past the groups that stand whole, up to one with anything else in it.
void DecodeGroups(const unsigned char*& at, const unsigned char* end, unsigned char*& out) {
  for (; end - at >= 8; at += 8, out += 6) {
    const std::uint32_t first = GetGroup(at);
    const std::uint32_t second = GetGroup(at + 4);
    if (((first | second) & kNoValue) != 0) break;
    PutBytes(first, out);
    PutBytes(second, out + 3);
  }
  for (; end - at >= 4; at += 4, out += 3) {
    const std::uint32_t group = GetGroup(at);
    if ((group & kNoValue) != 0) return;
    PutBytes(group, out);
  }
}

}  // namespace

CBase64::~CBase64() = default;

void CBase64::Encode(std::string& out, const unsigned char* data, std::uint32_t length) {
  out.assign((std::size_t{length} + 2) / 3 * 4, '=');
  char* to = out.data();
  std::uint32_t i = 0;
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
  const auto* at = reinterpret_cast<const unsigned char*>(szDecoding);
  const unsigned char* const end = at + length;
  unsigned char* out = lpOutput;
  std::uint32_t bits = 0;  // the low bitsHeld of them are still to be written
  int bitsHeld = 0;
  bool isValid = true;
  while (at != end) {
    if (bitsHeld == 0) DecodeGroups(at, end, out);
    if (at == end) break;
    const std::uint32_t value = kDecode3[*at++];
    isValid = (value & kInvalid) == 0;
    if (!isValid) break;
    if ((value & kSkip) != 0) continue;
    bits = bits << 6 | value;
    bitsHeld += 6;
    if (bitsHeld < 8) continue;
    bitsHeld -= 8;
    *out++ = static_cast<unsigned char>(bits >> bitsHeld);
  }
  std::memset(out, 0, static_cast<std::size_t>(lpOutput + length + 1 - out));
  return isValid ? static_cast<int>(out - lpOutput) : 0;
}
