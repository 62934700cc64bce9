#pragma once

#include <cstddef>
#include <cstdint>

#include "qzxml/fastinfoset/FastInfosetContext.h"
#include "qzxml/fastinfoset/OctetForms.h"

// The two places of a value in a document, which differ in the bit at which it begins.
namespace QzXmlLib16::detail {

// The kinds of an encoding.
inline constexpr std::uint32_t kFIText = 0;
inline constexpr std::uint32_t kFIRestrictedAlphabet = 1;
inline constexpr std::uint32_t kFIAlgorithm = 2;

// The most octets in front of those of a value: one for the index, and its length.
inline constexpr std::size_t kFIValueHead = 1 + kFormSize;

// An attribute's value, from the second bit on.
struct CFIAttributeForm {
  static constexpr unsigned kLiteral = 0x00;
  static constexpr unsigned kAdded = 0x40;
  static constexpr unsigned kAlphabet = 0x20;
  static constexpr unsigned kAlgorithm = 0x30;
  static constexpr unsigned kUpperBits = 4;  // of the number of an alphabet or algorithm

  static std::uint32_t GetMaxAddLength(const CFastInfosetContext& options) {
    return options.GetAttributeMaxAddLength();
  }
  static char* WriteIndex(char* out, std::uint32_t index) {
    return WriteIndexOnSecondBit(out, 0x80, index);
  }
  static char* WriteLength(char* out, unsigned head, std::uint32_t length) {
    return WriteLengthOnFifthBit(out, head, length);
  }
};

// A text of an element, from the third bit on.
struct CFIChunkForm {
  static constexpr unsigned kLiteral = 0x80;
  static constexpr unsigned kAdded = 0x90;
  static constexpr unsigned kAlphabet = 0x08;
  static constexpr unsigned kAlgorithm = 0x0C;
  static constexpr unsigned kUpperBits = 6;

  static std::uint32_t GetMaxAddLength(const CFastInfosetContext& options) {
    return options.GetElementMaxAddLength();
  }
  static char* WriteIndex(char* out, std::uint32_t index) {
    return WriteIndexOnFourthBit(out, 0xA0, index);
  }
  static char* WriteLength(char* out, unsigned head, std::uint32_t length) {
    return WriteLengthOnSeventhBit(out, head, length);
  }
};

// What stands in front of the octets of a value that is written in full: whether it goes into the
// table, the kind of its encoding with the number, and its length.
template <typename Form>
char* WriteValueHead(char* out, bool add, std::uint32_t type, std::uint32_t index,
                     std::uint32_t length) {
  unsigned head = add ? Form::kAdded : Form::kLiteral;
  if (type != kFIText) {
    head |= type == kFIRestrictedAlphabet ? Form::kAlphabet : Form::kAlgorithm;
    out = WriteOctet(out, head | (index - 1) >> Form::kUpperBits);
    head = (index - 1) << (8 - Form::kUpperBits) & 0xFF;
  }
  return Form::WriteLength(out, head, length);
}

}  // namespace QzXmlLib16::detail
