#include "qzxml/values/WhitespaceUtils.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "qzxml/runtime/QzException.h"

// A rule is two steps: a scan that tells whether, and from where, the value is not yet what the
// rule makes of it, and a rewrite into a buffer that only runs then. Most values of most documents
// need no rewrite.
//
// Meant: a rewritten value ends at its first zero byte, and one that needed no rewrite does not.
// The results have always been handed over as zero-terminated text, and Collapse counts as a
// rewrite for every value.
namespace QzXmlLib16 {
namespace {

bool IsBlank(char c) { return CWhitespaceUtils::IsWhiteSpace(c); }

// Adds one char for a CR, or for a CR with the LF behind it, and returns the last place consumed.
std::size_t AppendForCarriageReturn(std::string_view value, std::size_t at, char c,
                                    std::string& out) {
  out.push_back(c);
  const bool lineFeedBehind = at + 1 < value.size() && value[at + 1] == '\n';
  return lineFeedBehind ? at + 1 : at;
}

// What a zero-terminated copy of the text would hold.
std::string_view CutAtZero(std::string_view text) { return text.substr(0, text.find('\0')); }

// From here on values have to be rewritten; first is the first place that changes.
std::string_view RewritePreserved(std::string_view value, std::size_t first, std::string& scratch) {
  scratch.assign(value.substr(0, first));
  scratch.reserve(value.size());
  for (std::size_t i = first; i < value.size(); ++i) {
    if (value[i] == '\r') {
      i = AppendForCarriageReturn(value, i, '\n', scratch);
    } else {
      scratch.push_back(value[i]);
    }
  }
  return CutAtZero(scratch);
}

std::string_view RewriteReplaced(std::string_view value, std::size_t first, std::string& scratch) {
  scratch.assign(value.substr(0, first));
  scratch.reserve(value.size());
  for (std::size_t i = first; i < value.size(); ++i) {
    if (value[i] == '\r') {
      // Meant: CR LF gives one space, where XML alone would give two.
      i = AppendForCarriageReturn(value, i, ' ', scratch);
    } else {
      scratch.push_back(IsBlank(value[i]) ? ' ' : value[i]);
    }
  }
  return CutAtZero(scratch);
}

std::string_view RewriteCollapsed(std::string_view value, std::string& scratch) {
  scratch.clear();
  scratch.reserve(value.size());
  bool inGap = true;
  for (const char c : value) {
    if (!IsBlank(c)) {
      scratch.push_back(c);
      inGap = false;
    } else if (!inGap) {
      scratch.push_back(' ');
      inGap = true;
    }
  }
  if (!scratch.empty() && scratch.back() == ' ') scratch.pop_back();
  return CutAtZero(scratch);
}

std::string_view PreserveView(std::string_view value, std::string& scratch) {
  const std::size_t first = value.find('\r');
  return first == std::string_view::npos ? value : RewritePreserved(value, first, scratch);
}

std::string_view ReplaceView(std::string_view value, std::string& scratch) {
  const auto first = std::find_if(value.begin(), value.end(),
                                  [](char c) { return c == '\t' || c == '\n' || c == '\r'; });
  if (first == value.end()) return value;
  return RewriteReplaced(value, static_cast<std::size_t>(first - value.begin()), scratch);
}

// Whether a text without white space at its ends has single spaces inside, and no zero byte. Blocks
// are looked at without a branch, which lets the compiler take many chars at a time.
bool IsCollapsedInside(std::string_view text) {
  constexpr std::size_t kBlock = 256;
  for (std::size_t begin = 0; begin + 1 < text.size(); begin += kBlock) {
    const std::size_t end = std::min(begin + kBlock, text.size() - 1);
    unsigned char isOpen = 0;
    for (std::size_t i = begin; i < end; ++i) {
      const char c = text[i];
      const bool isDouble = (c == ' ') & (text[i + 1] == ' ');
      const bool isOther = (c == '\t') | (c == '\n') | (c == '\r') | (c == '\0');
      isOpen = static_cast<unsigned char>(isOpen | (isDouble | isOther));
    }
    if (isOpen != 0) return false;
  }
  return text.empty() || text.back() != '\0';
}

std::string_view CollapseView(std::string_view value, std::string& scratch) {
  if (!detail::HoldsBlank(value)) return value;
  std::string_view inside = value;
  while (!inside.empty() && IsBlank(inside.front())) inside.remove_prefix(1);
  while (!inside.empty() && IsBlank(inside.back())) inside.remove_suffix(1);
  return IsCollapsedInside(inside) ? inside : RewriteCollapsed(value, scratch);
}

// The result of a rule as a string of its own, which the scratch already is as a rule.
std::string Take(std::string_view result, std::string&& scratch) {
  if (result.data() != scratch.data()) return std::string(result);
  scratch.resize(result.size());
  return std::move(scratch);
}

}  // namespace

namespace detail {

std::string_view ApplyRule(CWhitespaceUtils::WhitespaceRule rule, std::string_view value,
                           std::string& scratch) {
  switch (rule) {
    case CWhitespaceUtils::WhitespaceRule_None:
      return value;
    case CWhitespaceUtils::WhitespaceRule_Preserve:
      return PreserveView(value, scratch);
    case CWhitespaceUtils::WhitespaceRule_Replace:
      return ReplaceView(value, scratch);
    case CWhitespaceUtils::WhitespaceRule_Collapse:
      return CollapseView(value, scratch);
  }
  throw CQzException("Unknown WhitespaceRule");
}

}  // namespace detail

std::string CWhitespaceUtils::ApplyRule(WhitespaceRule rule, const std::string& value) {
  std::string scratch;
  const std::string_view result = detail::ApplyRule(rule, value, scratch);
  return Take(result, std::move(scratch));
}

std::string CWhitespaceUtils::Preserve(const std::string& value) {
  return ApplyRule(WhitespaceRule_Preserve, value);
}

std::string CWhitespaceUtils::Preserve(const char* text, int length) {
  if (text == nullptr || length <= 0) return std::string();
  std::string scratch;
  const std::string_view value(text, static_cast<std::size_t>(length));
  return std::string(CutAtZero(PreserveView(value, scratch)));
}

std::string CWhitespaceUtils::Replace(const std::string& value) {
  return ApplyRule(WhitespaceRule_Replace, value);
}

std::string CWhitespaceUtils::Collapse(const std::string& value) {
  return ApplyRule(WhitespaceRule_Collapse, value);
}

bool CWhitespaceUtils::IsWhiteSpace(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

}  // namespace QzXmlLib16
