#pragma once

#include <iosfwd>
#include <string>

#include "tools/qzxml/FastInfosetOctets.h"

namespace qztool {

// Puts rows on a stream, which must outlive them: offset and octets in hexadecimal digits, eight
// octets to a line, then on the first line meaning and value.
//
//   00000007  3c                       element without attributes, its name in full
//   00000008  04                       its local name, 5 octets
//   00000009  6f 72 64 65 72           its octets, entry 1 of its table: "order"
OctetRows ListOctets(std::ostream& out);

// A text in quotes for one line: printable, and cut at about 60 characters.
std::string Shorten(const std::string& text);

}  // namespace qztool
