#include "qzxml/serialization/PlainPattern.h"

#include <algorithm>
#include <cstddef>

namespace QzXmlLib16::detail {
namespace {

constexpr std::uint32_t kUnbounded = 0xFFFFFFFF;
constexpr std::uint32_t kMostTimes = 65535;  // that PCRE2 takes

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool IsPunctuation(char c) { return c > ' ' && c < 0x7F && !IsDigit(c) && !IsLetter(c); }

// Whether a character stands for itself outside of sets.
bool IsLiteral(char c) {
  constexpr std::string_view kSpecial = "\\^$.[]|()?*+{}";
  return c == ' ' || IsDigit(c) || IsLetter(c) ||
         (IsPunctuation(c) && kSpecial.find(c) == std::string_view::npos);
}

// Whether it does so inside.
bool IsLiteralInSet(char c) {
  return c == ' ' || IsDigit(c) || IsLetter(c) ||
         (IsPunctuation(c) && c != '\\' && c != '[' && c != ']' && c != '^' && c != '-');
}

}  // namespace

// Reads a pattern; each function is false where there is something else.
class CPlainPattern::CParser {
 public:
  explicit CParser(std::string_view text) : m_text(text) {}

  bool Parse(std::vector<Row>& rows) {
    rows.emplace_back();
    while (!m_text.empty()) {
      if (Take('|')) {
        rows.emplace_back();
        continue;
      }
      Step step;
      if (!ParseSet(step.set) || !ParseTimes(step)) return false;
      rows.back().push_back(step);
    }
    return true;
  }

 private:
  bool Take(char c) {
    if (m_text.empty() || m_text.front() != c) return false;
    m_text.remove_prefix(1);
    return true;
  }

  static void AddRange(Set& set, char first, char last) {
    for (int c = first; c <= last; ++c) set.Add(static_cast<unsigned char>(c));
  }

  // Behind a backslash.
  bool ParseEscape(Set& set) {
    if (m_text.empty()) return false;
    const char c = m_text.front();
    m_text.remove_prefix(1);
    if (c == 'd') {
      AddRange(set, '0', '9');
      return true;
    }
    if (!IsPunctuation(c)) return false;
    set.Add(static_cast<unsigned char>(c));
    return true;
  }

  bool ParseSet(Set& set) {
    if (Take('\\')) return ParseEscape(set);
    if (Take('[')) return ParseSetInBrackets(set);
    const char c = m_text.front();
    if (!IsLiteral(c)) return false;
    m_text.remove_prefix(1);
    set.Add(static_cast<unsigned char>(c));
    return true;
  }

  // A hyphen stands for itself as the first and as the last one only.
  bool ParseSetInBrackets(Set& set) {
    if (Take('-')) set.Add('-');
    for (bool isEmpty = set.bits[0] == 0;; isEmpty = false) {
      if (Take(']')) return !isEmpty;
      if (m_text.substr(0, 2) == "-]") {
        set.Add('-');
        m_text.remove_prefix(1);
      } else if (!ParseInBrackets(set)) {
        return false;
      }
    }
  }

  // One character, an escape, or a range of letters or digits of one kind.
  bool ParseInBrackets(Set& set) {
    if (Take('\\')) return ParseEscape(set) && m_text.substr(0, 1) != "-";
    if (m_text.empty() || !IsLiteralInSet(m_text.front())) return false;
    const char first = m_text.front();
    m_text.remove_prefix(1);
    if (m_text.size() < 2 || m_text[0] != '-' || m_text[1] == ']') {
      set.Add(static_cast<unsigned char>(first));
      return true;
    }
    const char last = m_text[1];
    m_text.remove_prefix(2);
    const bool areDigits = IsDigit(first) && IsDigit(last);
    const bool areLetters = IsLetter(first) && IsLetter(last) && (first >= 'a') == (last >= 'a');
    if (!(areDigits || areLetters) || first > last || m_text.substr(0, 1) == "-") return false;
    AddRange(set, first, last);
    return true;
  }

  bool ParseNumber(std::uint32_t& number) {
    if (m_text.empty() || !IsDigit(m_text.front())) return false;
    number = 0;
    for (; !m_text.empty() && IsDigit(m_text.front()); m_text.remove_prefix(1)) {
      number = number * 10 + static_cast<std::uint32_t>(m_text.front() - '0');
      if (number > kMostTimes) return false;
    }
    return true;
  }

  bool ParseTimes(Step& step) {
    if (Take('?')) {
      step.least = 0;
    } else if (Take('*')) {
      step.least = 0;
      step.most = kUnbounded;
    } else if (Take('+')) {
      step.most = kUnbounded;
    } else if (Take('{')) {
      if (!ParseNumber(step.least)) return false;
      step.most = step.least;
      if (Take(',')) {
        step.most = kUnbounded;
        if (m_text.substr(0, 1) != "}" && !ParseNumber(step.most)) return false;
      }
      if (!Take('}') || step.least > step.most) return false;
    } else {
      return true;
    }
    // What follows would say how the times are tried.
    return m_text.empty() || std::string_view("?*+{").find(m_text.front()) == m_text.npos;
  }

  std::string_view m_text;
};

std::optional<CPlainPattern> CPlainPattern::Parse(const std::string& pattern) {
  CPlainPattern plain;
  const bool isPlain = CParser(pattern).Parse(plain.m_rows) &&
                       std::all_of(plain.m_rows.begin(), plain.m_rows.end(),
                                   [](const Row& row) { return IsPlain(row); });
  return isPlain ? std::optional<CPlainPattern>(std::move(plain)) : std::nullopt;
}

// Whether each step of variable length may take all it can.
bool CPlainPattern::IsPlain(const Row& row) {
  for (std::size_t i = 0; i < row.size(); ++i) {
    if (row[i].least == row[i].most) continue;
    for (std::size_t j = i + 1; j < row.size(); ++j) {
      if (row[i].set.Meets(row[j].set)) return false;
      if (row[j].least > 0) break;
    }
  }
  return true;
}

bool CPlainPattern::Matches(std::string_view value) const {
  return std::any_of(m_rows.begin(), m_rows.end(),
                     [value](const Row& row) { return Matches(row, value); });
}

bool CPlainPattern::Matches(const Row& row, std::string_view value) {
  const char* at = value.data();
  const char* const end = at + value.size();
  for (const Step& step : row) {
    const auto left = static_cast<std::size_t>(end - at);
    if (left < step.least) return false;
    const char* const last = at + std::min<std::size_t>(left, step.most);
    const char* const least = at + step.least;
    while (at != last && step.set.Has(static_cast<unsigned char>(*at))) ++at;
    if (at < least) return false;
  }
  return at == end;
}

}  // namespace QzXmlLib16::detail
