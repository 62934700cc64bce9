#pragma once

#include <cstdint>
#include <string>

#include "qzxml/platform/Export.h"
#include "qzxml/values/BinaryData.h"

namespace QzXmlLib16 {

// The octets of a value under one of the encoding algorithms that Fast Infoset has built in, and
// the way between them and the lexical form of the value.
//
//    1  HEXADECIMAL   the octets
//    2  BASE64        the octets
//    3  SHORT         2 octets, signed
//    4  INT           4 octets, signed
//    5  LONG          8 octets, signed
//    6  BOOLEAN       a bit each, behind 4 bits with the number of spare ones in the last octet
//    7  FLOAT         4 octets, IEEE 754
//    8  DOUBLE        8 octets, IEEE 754
//    9  UUID         16 octets
//   10  CDATA         the text as UTF-8
//
// Numbers have their high octet first. A plain value, as CBinaryData is.
// Source: ITU-T Rec. X.891 | ISO/IEC 24824-1, clause 10.
class QZXML_API CFastInfosetBinaryData : public CBinaryData {
 public:
  CFastInfosetBinaryData();
  CFastInfosetBinaryData(const CBinaryData& other);
  // As those of CBinaryData.
  CFastInfosetBinaryData(unsigned char* data, std::uint32_t length, bool takeOwnership);
  explicit CFastInfosetBinaryData(const char* text);
  ~CFastInfosetBinaryData() override;

  // Replaces the octets by those of one value; null is taken as the empty text. A UUID is taken
  // without dashes (meant: dashes are no hexadecimal digits here). Throws CQzException "Unknown
  // byte encoding." for another number, and what the conversion of the kind throws; the octets are
  // gone then.
  void SetAsEncodedString(std::uint32_t number, const char* text);

  // The text of one or more values, with a blank between them; "" for no octets, whatever the
  // number. Meant: booleans have a blank where one octet follows another and none between the bits
  // of one. Throws CQzException "Unknown byte encoding." for another number and for CDATA, whose
  // octets are the text; "Invalid value for SHORT byte encoding." and the like for octets that are
  // no whole number of values.
  std::string GetAsString(std::uint32_t number) const;
};

}  // namespace QzXmlLib16
