#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

// The pattern facets of a schema as texts for PCRE2.
//
//   TranslateXsdPattern("\\i\\c*-[a-z-[aeiou]]+")   of one <xs:pattern>
//   JoinSteps({JoinAlternatives({a, b}), c})         of two steps of restriction, the first with
//   two
//
// What comes out is plain ASCII and means the same behind MatchesRegularExpression, which the
// classes of a schema call, whatever that still replaces in it; and it means the whole value, also
// where a value ends with a line feed.
// Pure functions; any thread may call them.
// Source: XML Schema 1.0 part 2, second edition, appendix F.
namespace qzxml::generator {

// A pattern that is no regular expression of XML Schema.
class CPatternError : public std::runtime_error {
 public:
  CPatternError(const std::string& message, std::size_t offset)
      : std::runtime_error(message), m_offset(offset) {}

  // Where in the pattern, counted in characters from 0; its length where something is missing at
  // the end.
  std::size_t GetOffset() const { return m_offset; }

 private:
  std::size_t m_offset;
};

// The pattern is in UTF-8, as it stands in the schema when references are resolved. '.' is all but
// line ends, '^' and '$' are themselves, "\d" and "\w" are those of Unicode, "\i" and "\c" those of
// XML names, a class may be taken from a class to any depth.
// The result is never empty. Throws CPatternError with the reason, in words for the author of the
// schema.
std::string TranslateXsdPattern(std::string_view pattern);

// Of patterns that TranslateXsdPattern gave: what matches one of them (the patterns of one step of
// restriction), and what matches each of them (those of successive steps). Without any pattern the
// text is empty, which stands for no pattern in all that takes one.
std::string JoinAlternatives(const std::vector<std::string>& patterns);
std::string JoinSteps(const std::vector<std::string>& patterns);

// What matches the pattern, or everything for an empty text, and has at least and at most so many
// characters. Without either number it is the pattern.
std::string RequireLength(const std::string& pattern, std::optional<std::uint32_t> least,
                          std::optional<std::uint32_t> most);

// Why PCRE2 does not take the pattern of any of the functions above, such as one that is too large
// when its counts are written out; nothing where it takes it.
std::optional<std::string> FindRefusal(const std::string& pattern);

}  // namespace qzxml::generator
