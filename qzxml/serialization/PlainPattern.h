#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace QzXmlLib16::detail {

// A pattern as most schemas have them: sets of ASCII characters one behind the other, each so many
// times, and alternatives of such rows: "[A-Z]{3}-[0-9]{1,5}|none". A value is then matched in one
// pass without a step back, as the place at which a set ends never depends on what follows.
class CPlainPattern {
 public:
  // Nothing for a pattern with anything else in it: groups, other escapes than those of digits and
  // of punctuation, sets that exclude or subtract, and a set of variable length whose characters
  // what follows could take too.
  static std::optional<CPlainPattern> Parse(const std::string& pattern);

  // Whether the whole value matches.
  bool Matches(std::string_view value) const;

 private:
  class CParser;

  // The ASCII characters that may stand at a place.
  struct Set {
    std::uint64_t bits[2] = {0, 0};

    bool Has(unsigned char c) const { return c < 0x80 && (bits[c >> 6] >> (c & 63) & 1U) != 0; }
    void Add(unsigned char c) { bits[c >> 6] |= std::uint64_t{1} << (c & 63); }
    bool Meets(const Set& other) const {
      return ((bits[0] & other.bits[0]) | (bits[1] & other.bits[1])) != 0;
    }
  };
  struct Step {
    Set set;
    std::uint32_t least = 1;
    std::uint32_t most = 1;
  };
  using Row = std::vector<Step>;

  static bool IsPlain(const Row& row);
  static bool Matches(const Row& row, std::string_view value);

  std::vector<Row> m_rows;
};

}  // namespace QzXmlLib16::detail
