#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "qzxml/platform/Assert.h"
#include "qzxml/platform/Export.h"

// The forms in which a Fast Infoset document says a number, a length or a text. An item may begin
// inside an octet: the bits in front of it, head, belong to what it is a part of. Each function
// writes the octets, the first one with head in it, to a place with room for kFormSize, and answers
// the place behind them; those below append them to a text.
//
//   PutIndexOnSecondBit(out, 0x80, 65)     1 10 00000  00000000     the entry 65 of a table
//
// Source: ITU-T Rec. X.891 | ISO/IEC 24824-1, clauses C.22 to C.27.
namespace QzXmlLib16::detail {

inline constexpr std::size_t kFormSize = 5;

inline char* WriteOctet(char* out, std::uint32_t octet) {
  *out = static_cast<char>(octet);
  return out + 1;
}

// The forms of more than an octet.
QZXML_API char* WriteLongIndexOnSecondBit(char* out, unsigned head, std::uint32_t dwVal);
QZXML_API char* WriteLongIndexOnThirdBit(char* out, unsigned head, std::uint32_t dwVal);
QZXML_API char* WriteLongIndexOnFourthBit(char* out, unsigned head, std::uint32_t dwVal);
QZXML_API char* WriteLongestLength(char* out, unsigned head, std::uint32_t length,
                                   std::uint32_t second);

// The second and the third form of a length; second is the least length of the second one, and one
// more than a power of two, which is where the marks stand.
inline char* WriteLongLength(char* out, unsigned head, std::uint32_t length, std::uint32_t second) {
  if (length >= second + 256) return WriteLongestLength(out, head, length, second);
  return WriteOctet(WriteOctet(out, head | (second - 1)), length - second);
}

// ---- An integer from 1 to 2^20; each asserts "dwVal > 0" ----

//   0iiiiii                       1 to 64
//   10iiiii iiiiiiii              65 to 8256
//   1100iiii and two octets       from 8257
inline char* WriteIndexOnSecondBit(char* out, unsigned head, std::uint32_t dwVal) {
  QZ_ASSERT(dwVal > 0);
  if (dwVal > 64) return WriteLongIndexOnSecondBit(out, head, dwVal);
  return WriteOctet(out, head | (dwVal - 1));
}

//   0iiiii                        1 to 32
//   100iii iiiiiiii               33 to 2080
//   101iii and two octets         2081 to 526368
//   110000 0000iiii, two octets   from 526369; meant: less 526368, one too few, as documents of
//                                 this library always had it
inline char* WriteIndexOnThirdBit(char* out, unsigned head, std::uint32_t dwVal) {
  QZ_ASSERT(dwVal > 0);
  if (dwVal > 32) return WriteLongIndexOnThirdBit(out, head, dwVal);
  return WriteOctet(out, head | (dwVal - 1));
}

//   0iiii                         1 to 16
//   100ii iiiiiiii                17 to 1040
//   101ii and two octets          1041 to 263184
//   11000 0000iiii, two octets    from 263185
inline char* WriteIndexOnFourthBit(char* out, unsigned head, std::uint32_t dwVal) {
  QZ_ASSERT(dwVal > 0);
  if (dwVal > 16) return WriteLongIndexOnFourthBit(out, head, dwVal);
  return WriteOctet(out, head | (dwVal - 1));
}

// ---- The length of octets that follow, at least 1; each asserts "length > 0" ----

//   0nnnnnn                       1 to 64
//   1000000 nnnnnnnn              65 to 320
//   1100000 and four octets       from 321
inline char* WriteLengthOnSecondBit(char* out, unsigned head, std::uint32_t length) {
  QZ_ASSERT(length > 0);
  if (length > 64) return WriteLongLength(out, head, length, 65);
  return WriteOctet(out, head | (length - 1));
}

//   0nnn                          1 to 8
//   1000 nnnnnnnn                 9 to 264
//   1100 and four octets          from 265
inline char* WriteLengthOnFifthBit(char* out, unsigned head, std::uint32_t length) {
  QZ_ASSERT(length > 0);
  if (length > 8) return WriteLongLength(out, head, length, 9);
  return WriteOctet(out, head | (length - 1));
}

//   0n                            1 and 2
//   10 nnnnnnnn                   3 to 258
//   11 and four octets            from 259
inline char* WriteLengthOnSeventhBit(char* out, unsigned head, std::uint32_t length) {
  QZ_ASSERT(length > 0);
  if (length > 2) return WriteLongLength(out, head, length, 3);
  return WriteOctet(out, head | (length - 1));
}

// ---- The same, appended ----

QZXML_API void PutIndexOnSecondBit(std::string& out, unsigned head, std::uint32_t dwVal);
QZXML_API void PutIndexOnThirdBit(std::string& out, unsigned head, std::uint32_t dwVal);
QZXML_API void PutIndexOnFourthBit(std::string& out, unsigned head, std::uint32_t dwVal);
QZXML_API void PutLengthOnSecondBit(std::string& out, unsigned head, std::uint32_t length);
QZXML_API void PutLengthOnFifthBit(std::string& out, unsigned head, std::uint32_t length);
QZXML_API void PutLengthOnSeventhBit(std::string& out, unsigned head, std::uint32_t length);

// ---- Characters of a restricted alphabet ----

// Each character as its position in the alphabet, in as many bits as take the number of characters:
// four, two to an octet, high ones first and 1111 at the end of an odd number, or eight. Throws
// CQzException "Failed to write FastInfoset. Invalid Restricted Alphabet. Alphabet must contain
// between 2 and 2^20 characters."; "Failed to write FastInfoset. Unsupported Feature in
// AppendRestrictedAlphabetString." for any other number of bits; "Failed to write FastInfoset.
// Invalid character not found for Restricted Alphabet.".
QZXML_API void AppendRestrictedAlphabetString(const std::string& alphabet, const std::string& text,
                                              std::string& out);

}  // namespace QzXmlLib16::detail
