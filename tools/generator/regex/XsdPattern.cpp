#include "tools/generator/regex/XsdPattern.h"

#include <algorithm>

#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/PrimitiveRestrictions.h"
#include "tools/generator/regex/PatternParser.h"

// The library puts a pattern between "^(" and ")$" and asks whether what matched is the whole
// value. But '$' also matches in front of a line feed at the end, and PCRE2 then is content with
// the first alternative that ends there. So a pattern that can match a line feed ends with "\z".
namespace qzxml::generator {

namespace {

constexpr char kAnyCharacter[] = "[\\x{0}-\\x{10FFFF}]";

std::string Group(const std::string& pattern) { return "(?:" + pattern + ")"; }

// Without taking any of the value.
std::string LookAhead(const std::string& pattern) { return "(?=" + Group(pattern) + "\\z)"; }

// Whether it ends with "\\z", which is not the letter behind an escaped backslash.
bool RequiresEnd(const std::string& pattern) {
  if (pattern.size() < 2 || pattern.back() != 'z') return false;
  const std::size_t ahead = pattern.find_last_not_of('\\', pattern.size() - 2);
  return (pattern.size() - 2 - ahead) % 2 == 1;
}

// How many octets follow the first of a character, or none for an octet that begins none.
std::optional<int> CountFollowing(unsigned char octet) {
  if (octet < 0x80) return 0;
  if (octet >= 0xC2 && octet < 0xE0) return 1;
  if (octet >= 0xE0 && octet < 0xF0) return 2;
  if (octet >= 0xF0 && octet < 0xF5) return 3;
  return std::nullopt;
}

std::vector<std::uint32_t> Decode(std::string_view text) {
  std::vector<std::uint32_t> codes;
  const auto fail = [&] { throw CPatternError("The pattern is not in UTF-8", codes.size()); };
  for (std::size_t at = 0; at < text.size();) {
    const auto lead = static_cast<unsigned char>(text[at++]);
    const std::optional<int> following = CountFollowing(lead);
    if (!following.has_value()) fail();
    std::uint32_t code = *following == 0 ? lead : lead & (0x3Fu >> *following);
    for (int i = 0; i < *following; ++i, ++at) {
      if (at == text.size() || (text[at] & 0xC0) != 0x80) fail();
      code = code << 6 | (static_cast<unsigned char>(text[at]) & 0x3F);
    }
    const bool isSurrogate = code >= 0xD800 && code < 0xE000;
    const bool isOverlong =
        (*following == 2 && code < 0x800) || (*following == 3 && code < 0x10000);
    if (isSurrogate || isOverlong || code > kLastCode) fail();
    codes.push_back(code);
  }
  return codes;
}

}  // namespace

std::string TranslateXsdPattern(std::string_view pattern) {
  const std::vector<std::uint32_t> codes = Decode(pattern);
  CPatternParser parser(codes);
  const std::string text = parser.Parse();
  if (text.empty()) return Group("");
  return parser.HasLineFeed() ? Group(text) + "\\z" : text;
}

std::string JoinAlternatives(const std::vector<std::string>& patterns) {
  std::string text;
  for (const std::string& pattern : patterns) {
    if (!text.empty()) text += '|';
    text += pattern;
  }
  // A shorter alternative is not to be content with the end ahead of a line feed.
  const bool requiresEnd = std::any_of(patterns.begin(), patterns.end(), RequiresEnd);
  return requiresEnd && patterns.size() > 1 ? Group(text) + "\\z" : text;
}

std::string JoinSteps(const std::vector<std::string>& patterns) {
  if (patterns.size() < 2) return patterns.empty() ? std::string() : patterns[0];
  std::string text;
  for (std::size_t i = 0; i + 1 < patterns.size(); ++i) text += LookAhead(patterns[i]);
  return text + Group(patterns.back());
}

// The look ahead gives nothing back: taken to its most, it is at the end or the value is too long.
std::string RequireLength(const std::string& pattern, std::optional<std::uint32_t> least,
                          std::optional<std::uint32_t> most) {
  if (!least.has_value() && !most.has_value()) return pattern;
  Quantity quantity;
  quantity.least = least.value_or(0);
  quantity.most = most.has_value() ? *most : Quantity::kUnbounded;
  if (quantity.most < quantity.least) return "(?!)";
  const std::string characters = Repeat(kAnyCharacter, quantity);
  const std::string rest = pattern.empty() ? std::string(kAnyCharacter) + "*\\z" : Group(pattern);
  return "(?=(?>" + characters + ")\\z)" + rest;
}

std::optional<std::string> FindRefusal(const std::string& pattern) {
  try {
    QzXmlLib16::MatchesRegularExpression(pattern, "");
  } catch (const QzXmlLib16::CQzException& e) {
    // "Invalid Regular Expression: %s Error: '%s'"; the value is empty.
    const std::string message = e.GetMessage();
    const std::size_t reason = message.find('\'');
    return message.substr(reason + 1, message.size() - reason - 2);
  }
  return std::nullopt;
}

}  // namespace qzxml::generator
