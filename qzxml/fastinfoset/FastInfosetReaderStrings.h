#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "qzxml/fastinfoset/FastInfosetReaderOctets.h"
#include "qzxml/platform/Export.h"
#include "qzxml/values/ConversionsDetail.h"
#include "qzxml/xml/ShortText.h"

namespace QzXmlLib16::detail {

// The characters that octets name by their places in an alphabet, from 0. A place has as many bits
// as the number of characters takes, but 2 at the least. A place with all bits set ends the text
// where it is the last of its octet (width 4), or anywhere (a width that does not divide 8).
// Throws CQzException "Failed to parse FastInfoset. Invalid Encoding of Restricted Alphabet.
// Alphabet must contain between 2 and 2^20 characters.", and "Failed to parse FastInfoset. The
// index %u is outside a table of %u entries." for a place that the alphabet does not have.
// Source: ITU-T Rec. X.891 | ISO/IEC 24824-1, clause 8.2 and 10.2.
QZXML_API std::string DecodeRestrictedAlphabet(const std::string& alphabet,
                                               std::string_view octets);

// Turns the strings of a document into local text. Each result is valid until the next one, or a
// part of the input where that is local text already.
class CFIStrings {
 public:
  // Not owned: the alphabet of index n at n - 1.
  explicit CFIStrings(const std::vector<std::string>& alphabets);
  CFIStrings(const CFIStrings&) = delete;
  CFIStrings& operator=(const CFIStrings&) = delete;

  // UTF-8 up to its first zero byte.
  std::string_view FromUtf8(std::string_view octets) {
    return m_isLocalUtf8 && !MayHoldControl(octets) ? octets : FromAnyUtf8(octets);
  }

  // Whether the octets are the text, which is so for most, and none of them is a carriage return.
  bool IsLocalText(const FIEncodedString& string) const {
    return string.form == FIEncodedString::Form_Utf8 && m_isLocalUtf8 &&
           !MayHoldControl(string.octets);
  }

  // Any form. Throws as DecodeRestrictedAlphabet; "Failed to parse FastInfoset. The index %u is
  // outside a table of %u entries." for an alphabet that is not there; "Failed to parse
  // FastInfoset. A text in UTF-16BE has an odd number of octets."; and what
  // CFastInfosetBinaryData::GetAsString throws.
  std::string_view Decode(const FIEncodedString& string);

 private:
  std::string_view FromAnyUtf8(std::string_view octets);
  std::string_view FromUtf16(std::string_view octets);
  std::string_view FromAlphabet(const FIEncodedString& string);
  std::string_view FromAlgorithm(const FIEncodedString& string);

  const std::vector<std::string>& m_alphabets;
  const bool m_isLocalUtf8;
  std::string m_strValue;  // the last result that is neither a part of the input nor a number
  char m_number[kNumberSize];

  // For conversions, where the local encoding is not UTF-8.
  char16_t m_wideScratch[256];
  char m_byteScratch[512];
};

}  // namespace QzXmlLib16::detail
