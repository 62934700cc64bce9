#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "tools/generator/regex/CharacterSet.h"

namespace qzxml::generator {

// How often a piece stands.
struct Quantity {
  static constexpr std::uint64_t kUnbounded = std::numeric_limits<std::uint64_t>::max();

  std::uint64_t least = 1;
  std::uint64_t most = 1;
};

// Reads one regular expression of XML Schema and writes it for PCRE2 as it goes: a descent along
// the grammar, one function for each production.
class CPatternParser {
 public:
  explicit CPatternParser(const std::vector<std::uint32_t>& pattern) : m_pattern(pattern) {}

  // The whole pattern. Throws CPatternError.
  std::string Parse();
  // Whether a text that matches can hold a line feed; known behind Parse.
  bool HasLineFeed() const { return m_hasLineFeed; }

 private:
  std::string ParseRegExp();
  std::string ParseBranch();
  std::string ParseAtom();
  std::string ParseGroup();
  Quantity ParseQuantity();
  std::uint64_t ParseNumber();

  // A class with what is taken from it: an atom that matches one character.
  struct ClassExpression {
    CCharacterSet set;  // all of it, when there is nothing in rest
    bool isNegated = false;
    std::string rest;  // an atom for what is taken from the set
    bool restHasLineFeed = false;
  };
  ClassExpression ParseClassExpression();
  void ParseClassGroup(CCharacterSet& set);
  void ParseClassItem(CCharacterSet& set);
  std::uint32_t ParseRangeEnd();
  void Subtract(ClassExpression& base, const ClassExpression& taken) const;
  static std::string ToAtom(const ClassExpression& expression);
  static bool HasLineFeed(const ClassExpression& expression);

  // Behind a backslash.
  bool ParseSingleEscape(std::uint32_t& code);
  bool ParseMultiEscape(CCharacterSet& set, bool& isNegated);
  void ParseCategoryEscape(CCharacterSet& set, bool& isNegated);
  void AddEscape(CCharacterSet& set);

  std::string WriteSet(const CCharacterSet& set, bool isNegated);

  bool IsAtEnd() const { return m_position == m_pattern.size(); }
  std::uint32_t Peek(std::size_t ahead = 0) const;  // 0 behind the end
  bool Take(std::uint32_t code);                    // skips the character if it is that one
  [[noreturn]] void Fail(const std::string& message, std::size_t offset) const;

  const std::vector<std::uint32_t>& m_pattern;  // not owned
  std::size_t m_position = 0;
  int m_depth = 0;
  bool m_hasLineFeed = false;
};

// The atom that often, as PCRE2 can count it.
std::string Repeat(const std::string& atom, const Quantity& quantity);

}  // namespace qzxml::generator
