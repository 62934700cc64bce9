// Any text as a pattern of XML Schema: up to the first zero byte the pattern, behind it a value.
// The pattern is refused with a place in it, or its translation is plain ASCII that PCRE2 takes,
// and joined with itself it matches what it matches alone.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "qzxml/serialization/PrimitiveRestrictions.h"
#include "tools/generator/regex/XsdPattern.h"

using namespace qzxml::generator;

namespace {

void Require(bool holds, const std::string& pattern, const std::string& what) {
  if (holds) return;
  std::fprintf(stderr, "%s: %s\n", pattern.c_str(), what.c_str());
  std::abort();
}

// What PCRE2 may refuse: counts that are too large when they are written out.
bool IsTooLarge(const std::string& refusal) {
  return refusal.find("too large") != std::string::npos ||
         refusal.find("too long") != std::string::npos ||
         refusal.find("too complicated") != std::string::npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  const std::string pattern = input.substr(0, input.find('\0'));
  const std::string value = input.substr(std::min(pattern.size() + 1, input.size()));
  std::string translated;
  try {
    translated = TranslateXsdPattern(pattern);
  } catch (const CPatternError& e) {
    Require(e.GetOffset() <= pattern.size(), pattern, "the offset is behind the end");
    return 0;
  }
  const auto isPlain = [](char c) { return c >= ' ' && c <= '~'; };
  Require(std::all_of(translated.begin(), translated.end(), isPlain), pattern, translated);
  const auto refusal = FindRefusal(translated);
  if (refusal.has_value()) {
    Require(IsTooLarge(*refusal), pattern, *refusal);
    return 0;
  }
  // What takes too many steps does not match, and takes more of them when it is joined.
  if (value.size() > 16 || translated.size() > 256) return 0;
  const bool matches = QzXmlLib16::MatchesRegularExpression(translated, value);
  const std::string joined = JoinAlternatives({translated, translated});
  Require(QzXmlLib16::MatchesRegularExpression(joined, value) == matches, pattern, joined);
  return 0;
}
