#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qzxml::generator {

// Characters by their numbers, both ends included.
struct CodeRange {
  std::uint32_t first;
  std::uint32_t last;
};

inline constexpr std::uint32_t kLastCode = 0x10FFFF;

// A set of characters: ranges of numbers, and what PCRE2 knows by its properties ("\p{L}",
// "\P{Nd}"), whose characters are not listed here. A plain value.
class CCharacterSet {
 public:
  CCharacterSet() = default;

  void Add(std::uint32_t code) { AddRange(code, code); }
  void AddRange(std::uint32_t first, std::uint32_t last);
  // A general category by its name, "Lu"; the set has those characters, or all others.
  void AddCategory(std::string_view category, bool isOther);
  void Add(const CCharacterSet& other);

  // The set of all other characters. Allowed for sets without properties, and for one category
  // alone.
  CCharacterSet GetComplement() const;
  // These characters without those of the other one. Allowed for sets without properties.
  CCharacterSet Without(const CCharacterSet& other) const;

  bool HasProperties() const { return !m_properties.empty(); }
  bool HasLineFeed() const;

  // As one atom of PCRE2 for a character that is in the set, or for one that is not: "a", "[a-z]",
  // "\p{Nd}", "[^\p{P}\p{Z}]". Plain ASCII; no escape in it is one that the library translates.
  std::string ToAtom(bool isNegated) const;

 private:
  struct Property {
    std::string category;
    bool isOther;
  };

  std::vector<CodeRange> GetSorted() const;  // in order, with gaps between them

  std::vector<CodeRange> m_ranges;  // in no order
  std::vector<Property> m_properties;
};

// One character for PCRE2 outside and inside of brackets.
std::string WriteCharacter(std::uint32_t code);
std::string WriteClassCharacter(std::uint32_t code);

}  // namespace qzxml::generator
