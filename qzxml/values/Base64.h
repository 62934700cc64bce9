#pragma once

#include <cstdint>
#include <string>

#include "qzxml/platform/Export.h"

// The codec of base64 text. Source: RFC 4648, section 4.
class QZXML_API CBase64 {
 public:
  CBase64() = default;
  CBase64(const CBase64&) = default;
  CBase64& operator=(const CBase64&) = default;
  virtual ~CBase64();

  // Replaces `out` by the text of the bytes, in one line, filled up with '='.
  void Encode(std::string& out, const unsigned char* data, std::uint32_t length);

  // Writes the bytes of a text and answers how many they are; `out` must hold strlen(text) + 1
  // bytes, and what is not written becomes zero. Lenient: '=', blanks, tabs and line ends are
  // skipped wherever they stand, leftover bits are dropped, and the top bit of a character counts
  // for nothing. Any other character ends the work with the result 0, without an exception.
  // Asserts "szDecoding != 0" and "lpOutput != 0"; the result is 0 then.
  int Decode(const char* szDecoding, unsigned char* lpOutput);
};
