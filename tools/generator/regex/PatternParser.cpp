#include "tools/generator/regex/PatternParser.h"

#include <algorithm>
#include <string_view>

#include "qzxml/binding/NameCharacters.h"
#include "tools/generator/regex/UnicodeNames.h"
#include "tools/generator/regex/XsdPattern.h"

// The productions are those of XML Schema 1.0 part 2, second edition, appendix F:
//
//   regExp ::= branch ( '|' branch )*           branch ::= ( atom quantifier? )*
//   atom ::= Char | escape | '.' | '[' ... ']' | '(' regExp ')'
//   '[' '^'? ( range | escape )+ ( '-' '[' ... ']' )? ']'
//
// A class becomes a set of characters; where a class is taken from it, the difference of the two
// sets, or, when one of them has properties whose characters only PCRE2 knows, a look ahead in
// front of the set.
namespace qzxml::generator {

namespace {

using namespace std::string_literals;

// PCRE2 takes 250 levels of parentheses, and a class that is taken away needs two.
constexpr int kMostLevels = 100;

constexpr std::uint64_t kMostRepeats = 65535;  // in one quantifier of PCRE2
constexpr std::uint64_t kMostCount = kMostRepeats * kMostRepeats;

std::string Show(std::uint32_t code) {
  std::string text;
  if (code < 0x80) {
    text = static_cast<char>(code);
  } else if (code < 0x800) {
    text = {static_cast<char>(0xC0 | code >> 6), static_cast<char>(0x80 | (code & 0x3F))};
  } else if (code < 0x10000) {
    text = {static_cast<char>(0xE0 | code >> 12), static_cast<char>(0x80 | (code >> 6 & 0x3F)),
            static_cast<char>(0x80 | (code & 0x3F))};
  } else {
    text = {static_cast<char>(0xF0 | code >> 18), static_cast<char>(0x80 | (code >> 12 & 0x3F)),
            static_cast<char>(0x80 | (code >> 6 & 0x3F)), static_cast<char>(0x80 | (code & 0x3F))};
  }
  return text;
}

CCharacterSet GetSpaces() {
  CCharacterSet set;
  for (const char space : {'\t', '\n', '\r', ' '}) set.Add(static_cast<unsigned char>(space));
  return set;
}

template <std::size_t Count>
void AddRanges(CCharacterSet& set, const QzXmlLib16::detail::CodeRange (&ranges)[Count]) {
  for (const auto& range : ranges) set.AddRange(range.first, range.last);
}

CCharacterSet GetNameStarts() {
  CCharacterSet set;
  AddRanges(set, QzXmlLib16::detail::kNameStarts);
  return set;
}

CCharacterSet GetNameCharacters() {
  CCharacterSet set = GetNameStarts();
  AddRanges(set, QzXmlLib16::detail::kNameContinuations);
  return set;
}

CCharacterSet GetCategories(std::string_view categories) {
  CCharacterSet set;
  for (const char& category : categories) set.AddCategory(std::string_view(&category, 1), false);
  return set;
}

bool IsQuantifier(std::uint32_t code) {
  return code == '?' || code == '*' || code == '+' || code == '{';
}

std::string Count(std::uint64_t least, std::uint64_t most) {
  if (least == 0 && most == 1) return "?";
  std::string text = "{" + std::to_string(least);
  if (most != least) text += "," + std::to_string(most);
  return text + "}";
}

}  // namespace

// More than PCRE2 counts is counted in parts: first what must be there, then what may.
std::string Repeat(const std::string& atom, const Quantity& quantity) {
  if (quantity.least == 1 && quantity.most == 1) return atom;
  const bool isUnbounded = quantity.most == Quantity::kUnbounded;
  if (quantity.least == 0 && isUnbounded) return atom + "*";
  if (quantity.least == 1 && isUnbounded) return atom + "+";
  if (quantity.least <= kMostRepeats && isUnbounded) {
    return atom + "{" + std::to_string(quantity.least) + ",}";
  }
  if (quantity.most <= kMostRepeats) return atom + Count(quantity.least, quantity.most);

  std::string text;
  const auto add = [&](std::uint64_t least, std::uint64_t most, std::uint64_t times) {
    if (times > 0) text += "(?:" + atom + Count(least, most) + ")" + Count(times, times);
  };
  add(kMostRepeats, kMostRepeats, quantity.least / kMostRepeats);
  const std::uint64_t least = quantity.least % kMostRepeats;
  if (least > 0) text += atom + Count(least, least);
  if (isUnbounded) return text + atom + "*";
  const std::uint64_t further = quantity.most - quantity.least;
  add(0, kMostRepeats, further / kMostRepeats);
  if (further % kMostRepeats > 0) text += atom + Count(0, further % kMostRepeats);
  return text;
}

// --- Expressions.

std::string CPatternParser::Parse() {
  std::string text = ParseRegExp();
  if (!IsAtEnd()) Fail("')' closes no group", m_position);
  return text;
}

std::string CPatternParser::ParseRegExp() {
  std::string text = ParseBranch();
  while (Take('|')) text += "|" + ParseBranch();
  return text;
}

std::string CPatternParser::ParseBranch() {
  std::string text;
  while (!IsAtEnd() && Peek() != '|' && Peek() != ')') {
    const std::string atom = ParseAtom();
    text += IsQuantifier(Peek()) ? Repeat(atom, ParseQuantity()) : atom;
  }
  return text;
}

std::string CPatternParser::ParseAtom() {
  const std::size_t start = m_position;
  const std::uint32_t code = m_pattern[m_position++];
  CCharacterSet set;
  switch (code) {
    case '(':
      return ParseGroup();
    case '[': {
      const ClassExpression expression = ParseClassExpression();
      m_hasLineFeed = m_hasLineFeed || HasLineFeed(expression);
      return ToAtom(expression);
    }
    case '.':
      set.Add('\n');
      set.Add('\r');
      return WriteSet(set, true);
    case '\\': {
      std::uint32_t character = 0;
      bool isNegated = false;
      if (ParseSingleEscape(character)) {
        set.Add(character);
      } else if (!ParseMultiEscape(set, isNegated)) {
        ParseCategoryEscape(set, isNegated);
      }
      return WriteSet(set, isNegated);
    }
    case '?':
    case '*':
    case '+':
    case '{':
      Fail("'" + Show(code) + "' has nothing in front of it that it could repeat", start);
    case '}':
    case ']':
      Fail("'" + Show(code) + "' has to be written '\\" + Show(code) + "' to stand for itself",
           start);
    default:
      set.Add(code);
      return WriteSet(set, false);
  }
}

std::string CPatternParser::WriteSet(const CCharacterSet& set, bool isNegated) {
  m_hasLineFeed = m_hasLineFeed || set.HasLineFeed() != isNegated;
  return set.ToAtom(isNegated);
}

std::string CPatternParser::ParseGroup() {
  const std::size_t start = m_position - 1;
  if (++m_depth > kMostLevels) Fail("Groups stand in each other more than 100 deep", start);
  std::string text = "(?:" + ParseRegExp() + ")";
  if (!Take(')')) Fail("'(' is not closed", start);
  --m_depth;
  return text;
}

Quantity CPatternParser::ParseQuantity() {
  if (Take('?')) return {0, 1};
  if (Take('*')) return {0, Quantity::kUnbounded};
  if (Take('+')) return {1, Quantity::kUnbounded};
  const std::size_t start = m_position++;
  Quantity quantity;
  quantity.least = quantity.most = ParseNumber();
  if (Take(',')) quantity.most = Peek() == '}' ? Quantity::kUnbounded : ParseNumber();
  if (!Take('}')) Fail("'{' has to be followed by {n}, {n,} or {n,m}", start);
  if (quantity.most < quantity.least) Fail("The second number is below the first", start);
  return quantity;
}

std::uint64_t CPatternParser::ParseNumber() {
  const std::size_t start = m_position;
  std::uint64_t number = 0;
  for (; Peek() >= '0' && Peek() <= '9'; ++m_position) {
    number = std::min(number * 10 + (Peek() - '0'), kMostCount + 1);
  }
  if (m_position == start) Fail("A number is missing", start);
  if (number > kMostCount) Fail("The number is too large", start);
  return number;
}

// --- Classes.

CPatternParser::ClassExpression CPatternParser::ParseClassExpression() {
  const std::size_t start = m_position - 1;
  if (++m_depth > kMostLevels) Fail("Classes stand in each other more than 100 deep", start);
  ClassExpression expression;
  expression.isNegated = Take('^');
  ParseClassGroup(expression.set);
  if (Peek() == '-' && Peek(1) == '[') {
    m_position += 2;
    Subtract(expression, ParseClassExpression());
    if (!IsAtEnd() && Peek() != ']') {
      Fail("Only ']' can stand behind a class that is taken away", m_position);
    }
  }
  if (!Take(']')) Fail("'[' is not closed", start);
  --m_depth;
  return expression;
}

void CPatternParser::ParseClassGroup(CCharacterSet& set) {
  const std::size_t start = m_position;
  if (Peek() == '-' && Peek(1) != '[') {  // a dash in front stands for itself
    set.Add('-');
    ++m_position;
  }
  while (!IsAtEnd() && Peek() != ']' && !(Peek() == '-' && Peek(1) == '[')) ParseClassItem(set);
  if (m_position == start && !IsAtEnd()) Fail("A class can not be empty", start);
}

void CPatternParser::ParseClassItem(CCharacterSet& set) {
  const std::size_t start = m_position;
  const std::uint32_t code = m_pattern[m_position++];
  std::uint32_t first = code;
  if (code == '[') Fail("'[' has to be written '\\[' to stand for itself", start);
  if (code == '-') {
    // At the end, and behind "^" or in front of a class that is taken away.
    if (!IsAtEnd() && Peek() != ']' && !(Peek() == '-' && Peek(1) == '[')) {
      Fail("'-' stands for itself only at the beginning and the end of a class, or as '\\-'",
           start);
    }
    set.Add('-');
    return;
  }
  if (code == '\\' && !ParseSingleEscape(first)) return AddEscape(set);
  const bool isRange =
      Peek() == '-' && Peek(1) != ']' && Peek(1) != '[' && !(Peek(1) == '-' && Peek(2) == '[');
  if (!isRange || m_position + 1 >= m_pattern.size()) return set.Add(first);
  ++m_position;
  const std::uint32_t last = ParseRangeEnd();
  if (last < first) Fail("The range's end is below its beginning", start);
  set.AddRange(first, last);
}

std::uint32_t CPatternParser::ParseRangeEnd() {
  const std::size_t start = m_position;
  std::uint32_t code = m_pattern[m_position++];
  if (code == '-') Fail("'-' has to be written '\\-' to end a range", start);
  if (code == '\\' && !ParseSingleEscape(code)) {
    Fail("A range can not end with an escape for several characters", start);
  }
  return code;
}

void CPatternParser::Subtract(ClassExpression& base, const ClassExpression& taken) const {
  const auto isPlain = [](const ClassExpression& e) {
    return e.rest.empty() && !e.set.HasProperties();
  };
  if (isPlain(base) && isPlain(taken)) {
    const CCharacterSet from = base.isNegated ? base.set.GetComplement() : base.set;
    base.set = from.Without(taken.isNegated ? taken.set.GetComplement() : taken.set);
    base.isNegated = false;
  } else {
    base.rest = ToAtom(taken);
    base.restHasLineFeed = HasLineFeed(taken);
  }
}

std::string CPatternParser::ToAtom(const ClassExpression& expression) {
  const std::string set = expression.set.ToAtom(expression.isNegated);
  return expression.rest.empty() ? set : "(?:(?!" + expression.rest + ")" + set + ")";
}

bool CPatternParser::HasLineFeed(const ClassExpression& expression) {
  return expression.set.HasLineFeed() != expression.isNegated && !expression.restHasLineFeed;
}

// --- Escapes.

bool CPatternParser::ParseSingleEscape(std::uint32_t& code) {
  constexpr std::string_view kThemselves = "\\|.-^?*+{}()[]";
  const std::uint32_t escaped = Peek();
  if (escaped == 'n' || escaped == 'r' || escaped == 't') {
    code = escaped == 'n' ? '\n' : escaped == 'r' ? '\r' : '\t';
  } else if (escaped != 0 && escaped < 0x80 &&
             kThemselves.find(static_cast<char>(escaped)) != std::string_view::npos) {
    code = escaped;
  } else {
    return false;
  }
  ++m_position;
  return true;
}

bool CPatternParser::ParseMultiEscape(CCharacterSet& set, bool& isNegated) {
  const std::uint32_t escaped = Peek();
  isNegated = escaped >= 'A' && escaped <= 'Z';
  switch (isNegated ? escaped - 'A' + 'a' : escaped) {
    case 's':
      set = GetSpaces();
      break;
    case 'i':
      set = GetNameStarts();
      break;
    case 'c':
      set = GetNameCharacters();
      break;
    case 'd':
      set.AddCategory("Nd", false);
      break;
    case 'w':  // defined by what it is not
      set = GetCategories("PZC");
      isNegated = !isNegated;
      break;
    default:
      return false;
  }
  ++m_position;
  return true;
}

void CPatternParser::ParseCategoryEscape(CCharacterSet& set, bool& isNegated) {
  const std::size_t start = m_position - 1;
  if (IsAtEnd()) Fail("'\\' has nothing behind it that it could escape", start);
  const std::uint32_t letter = m_pattern[m_position++];
  if (letter != 'p' && letter != 'P') {
    Fail("'\\" + Show(letter) + "' is no escape of a regular expression of XML Schema", start);
  }
  std::string name;
  if (!Take('{')) Fail("'\\" + Show(letter) + "' has to be followed by a name in braces", start);
  while (!IsAtEnd() && Peek() != '}') name += Show(m_pattern[m_position++]);
  if (!Take('}')) Fail("'\\" + Show(letter) + "{' is not closed", start);
  isNegated = letter == 'P';
  if (IsCategory(name)) return set.AddCategory(name, false);
  const bool isBlock = name.compare(0, 2, "Is") == 0;
  const auto block = isBlock ? FindBlock(std::string_view(name).substr(2)) : std::nullopt;
  if (!block.has_value()) {
    Fail(
        (isBlock ? "There is no block of characters '"s : "There is no category of characters '"s) +
            name + "'",
        start);
  }
  set = *block;
}

// Into a class, which needs the characters themselves where an escape says which it is not.
void CPatternParser::AddEscape(CCharacterSet& set) {
  const std::uint32_t letter = Peek();
  CCharacterSet escaped;
  bool isNegated = false;
  if (!ParseMultiEscape(escaped, isNegated)) ParseCategoryEscape(escaped, isNegated);
  if (letter == 'w') return set.Add(GetCategories("LMNS"));
  if (!isNegated || letter == 'W') return set.Add(escaped);
  set.Add(escaped.GetComplement());
}

// --- Characters.

std::uint32_t CPatternParser::Peek(std::size_t ahead) const {
  return m_position + ahead < m_pattern.size() ? m_pattern[m_position + ahead] : 0;
}

bool CPatternParser::Take(std::uint32_t code) {
  if (IsAtEnd() || Peek() != code) return false;
  ++m_position;
  return true;
}

void CPatternParser::Fail(const std::string& message, std::size_t offset) const {
  throw CPatternError(message, offset);
}

}  // namespace qzxml::generator
