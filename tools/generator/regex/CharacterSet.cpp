#include "tools/generator/regex/CharacterSet.h"

#include <algorithm>
#include <cstdio>

namespace qzxml::generator {

namespace {

constexpr std::uint32_t kLineFeed = 0x0A;

std::string WriteEscaped(std::uint32_t code, std::string_view special) {
  switch (code) {
    case '\t':
      return "\\t";
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    default:
      break;
  }
  if (code < 0x20 || code >= 0x7F) {
    char text[16];
    std::snprintf(text, sizeof text, "\\x{%X}", static_cast<unsigned>(code));
    return text;
  }
  const char character = static_cast<char>(code);
  std::string text;
  if (special.find(character) != std::string_view::npos) text += '\\';
  return text += character;
}

std::string WriteRange(const CodeRange& range) {
  std::string text = WriteClassCharacter(range.first);
  if (range.last > range.first + 1) text += '-';
  if (range.last > range.first) text += WriteClassCharacter(range.last);
  return text;
}

bool HasLineFeedCategory(std::string_view category) { return category == "C" || category == "Cc"; }

}  // namespace

std::string WriteCharacter(std::uint32_t code) { return WriteEscaped(code, "\\^$.[]|()?*+{}"); }

std::string WriteClassCharacter(std::uint32_t code) { return WriteEscaped(code, "\\[]^-"); }

// PCRE2 takes no surrogate at the end of a range; they are no characters anyhow.
void CCharacterSet::AddRange(std::uint32_t first, std::uint32_t last) {
  const auto isSurrogate = [](std::uint32_t code) { return code >= 0xD800 && code <= 0xDFFF; };
  if (isSurrogate(first)) first = 0xE000;
  if (isSurrogate(last)) last = 0xD7FF;
  if (first <= last) m_ranges.push_back({first, last});
}

void CCharacterSet::AddCategory(std::string_view category, bool isOther) {
  const auto isSame = [&](const Property& property) {
    return property.category == category && property.isOther == isOther;
  };
  if (std::any_of(m_properties.begin(), m_properties.end(), isSame)) return;
  m_properties.push_back({std::string(category), isOther});
}

void CCharacterSet::Add(const CCharacterSet& other) {
  m_ranges.insert(m_ranges.end(), other.m_ranges.begin(), other.m_ranges.end());
  for (const Property& property : other.m_properties) {
    AddCategory(property.category, property.isOther);
  }
}

std::vector<CodeRange> CCharacterSet::GetSorted() const {
  std::vector<CodeRange> ranges = m_ranges;
  std::sort(ranges.begin(), ranges.end(),
            [](const CodeRange& a, const CodeRange& b) { return a.first < b.first; });
  std::vector<CodeRange> merged;
  for (const CodeRange& range : ranges) {
    if (!merged.empty() && range.first <= merged.back().last + 1) {
      merged.back().last = std::max(merged.back().last, range.last);
    } else {
      merged.push_back(range);
    }
  }
  return merged;
}

CCharacterSet CCharacterSet::GetComplement() const {
  CCharacterSet others;
  if (!m_properties.empty()) {
    others.AddCategory(m_properties[0].category, !m_properties[0].isOther);
    return others;
  }
  std::uint32_t next = 0;
  for (const CodeRange& range : GetSorted()) {
    if (range.first > next) others.AddRange(next, range.first - 1);
    next = range.last + 1;
  }
  if (next <= kLastCode) others.AddRange(next, kLastCode);
  return others;
}

// What is in neither the complement nor the other one.
CCharacterSet CCharacterSet::Without(const CCharacterSet& other) const {
  CCharacterSet rest = GetComplement();
  rest.Add(other);
  return rest.GetComplement();
}

bool CCharacterSet::HasLineFeed() const {
  const auto isInRange = [](const CodeRange& range) {
    return range.first <= kLineFeed && kLineFeed <= range.last;
  };
  const auto isInProperty = [](const Property& property) {
    return HasLineFeedCategory(property.category) != property.isOther;
  };
  return std::any_of(m_ranges.begin(), m_ranges.end(), isInRange) ||
         std::any_of(m_properties.begin(), m_properties.end(), isInProperty);
}

std::string CCharacterSet::ToAtom(bool isNegated) const {
  const std::vector<CodeRange> ranges = GetSorted();
  const bool hasOneRange = ranges.size() == 1 && m_properties.empty();
  if (hasOneRange && !isNegated && ranges[0].first == ranges[0].last) {
    return WriteCharacter(ranges[0].first);
  }
  if (ranges.empty() && m_properties.empty()) {  // brackets can not be empty
    return isNegated ? "[\\x{0}-\\x{10FFFF}]" : "[^\\x{0}-\\x{10FFFF}]";
  }
  if (ranges.empty() && m_properties.size() == 1) {
    const Property& property = m_properties[0];
    return (property.isOther != isNegated ? "\\P{" : "\\p{") + property.category + "}";
  }
  std::string text = isNegated ? "[^" : "[";
  for (const CodeRange& range : ranges) text += WriteRange(range);
  for (const Property& property : m_properties) {
    text += (property.isOther ? "\\P{" : "\\p{") + property.category + "}";
  }
  return text + "]";
}

}  // namespace qzxml::generator
