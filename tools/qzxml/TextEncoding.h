#pragma once

#include <string>

// In which encoding a text is, and the text in UTF-8.
// Source: XML 1.0, appendix F; the rest is what the C library converts.
namespace qztool {

struct CTextEncoding {
  std::string name;      // in capitals: "UTF-8", "UTF-16LE", or as the declaration has it
  std::string declared;  // in the declaration of XML; "" for none
  bool hasByteOrderMark = false;
};

// Replaces the octets of XML or JSON by the same text in UTF-8, without a byte-order mark. Throws
// CDocumentFailure where they are no text in their encoding, "the encoding \"%s\" is not known",
// and "the document is in %s, but declares \"%s\"". UTF-8 itself is not looked through.
CTextEncoding TurnIntoUtf8(std::string& octets);

}  // namespace qztool
