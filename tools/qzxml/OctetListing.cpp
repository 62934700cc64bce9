#include "tools/qzxml/OctetListing.h"

#include <algorithm>
#include <ostream>

#include "qzxml/runtime/Functions.h"
#include "tools/qzxml/Console.h"

namespace qztool {
namespace {

using QzXmlLib16::FormatString;

constexpr std::size_t kOctetsInALine = 8;
constexpr std::size_t kLongestValue = 60;

std::string ToHex(std::string_view octets) {
  std::string text;
  for (const char c : octets) {
    if (!text.empty()) text += ' ';
    text += FormatString("%02x", static_cast<unsigned>(static_cast<unsigned char>(c)));
  }
  return text;
}

}  // namespace

OctetRows ListOctets(std::ostream& out) {
  return [&out](std::size_t offset, std::string_view octets, const std::string& meaning,
                const std::string& value) {
    for (std::size_t at = 0; at < octets.size(); at += kOctetsInALine) {
      const std::string hex = ToHex(octets.substr(at, kOctetsInALine));
      out << FormatString("%08zx  ", offset + at);
      if (at > 0) {
        out << hex << '\n';
      } else {
        out << FormatString("%-23s  ", hex.c_str()) << meaning
            << (value.empty() ? "" : ": " + Shorten(value)) << '\n';
      }
    }
  };
}

std::string Shorten(const std::string& text) {
  if (text.size() <= kLongestValue) return '"' + Printable(text) + '"';
  std::size_t end = kLongestValue;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
  return '"' + Printable(text.substr(0, end)) + "\" and " + std::to_string(text.size() - end) +
         " octets more";
}

}  // namespace qztool
