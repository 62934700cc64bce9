#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "qzxml/platform/Export.h"

namespace QzXmlLib16 {

// What happens to the white space of a text before it is read as a value: the whiteSpace facet.
// Static functions without state; any thread may call them.
// Source: XML Schema 1.0 part 2, section 4.3.6.
class QZXML_API CWhitespaceUtils {
 public:
  // The numbers are part of the interface: generated code passes them.
  enum WhitespaceRule : int {
    WhitespaceRule_None = 0,      // the value as it stands
    WhitespaceRule_Preserve = 1,  // Preserve
    WhitespaceRule_Replace = 2,   // Replace
    WhitespaceRule_Collapse = 3,  // Collapse
  };

  // Throws CQzException "Unknown WhitespaceRule" for any other number.
  static std::string ApplyRule(WhitespaceRule rule, const std::string& value);

  // Every CR LF and every other CR becomes one LF. A value without a CR comes back whole; any other
  // ends at its first zero byte, and the second form always does.
  static std::string Preserve(const std::string& value);
  static std::string Preserve(const char* text, int length);

  // Every tab, LF, CR and CR LF becomes one space. A value without any comes back whole; any other
  // ends at its first zero byte.
  static std::string Replace(const std::string& value);

  // No white space at the ends, one space for each run inside. The result ends at a zero byte.
  static std::string Collapse(const std::string& value);

  // Space, tab, CR and LF, nothing else.
  static bool IsWhiteSpace(char c);
};

namespace detail {

// Whether one of the bytes is a space or below it, as all white space and the zero byte are. Eight
// bytes are looked at at a time; the last ones may overlap those before.
inline bool HoldsBlank(std::string_view text) {
  const char* const bytes = text.data();
  const std::size_t size = text.size();
  constexpr std::uint64_t kEach = 0x0101010101010101;
  const auto find = [bytes](std::size_t at) {
    std::uint64_t word;
    std::memcpy(&word, bytes + at, sizeof word);
    return (word - kEach * 0x21) & ~word;  // the high bit of the lowest such byte, at least
  };
  if (size >= 8) {
    std::uint64_t found = find(size - 8);
    for (std::size_t at = 0; at + 8 < size; at += 8) found |= find(at);
    return (found & kEach * 0x80) != 0;
  }
  for (std::size_t i = 0; i < size; ++i) {
    if (static_cast<unsigned char>(bytes[i]) <= ' ') return true;
  }
  return false;
}

// As CWhitespaceUtils::ApplyRule, but copies only what changes: the result lies in value, or in
// scratch where the rule had to rewrite it. It is not zero-terminated.
std::string_view ApplyRule(CWhitespaceUtils::WhitespaceRule rule, std::string_view value,
                           std::string& scratch);

}  // namespace detail

}  // namespace QzXmlLib16
