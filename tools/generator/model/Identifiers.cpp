#include "tools/generator/model/Identifiers.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iterator>

namespace qzxml::generator {

namespace {

constexpr std::size_t kLongestEnumerator = 64;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsUpper(char c) { return c >= 'A' && c <= 'Z'; }
bool IsLower(char c) { return c >= 'a' && c <= 'z'; }
bool IsAlnum(char c) { return IsDigit(c) || IsUpper(c) || IsLower(c); }
char Lower(char c) { return IsUpper(c) ? static_cast<char>(c - 'A' + 'a') : c; }
char Upper(char c) { return IsLower(c) ? static_cast<char>(c - 'a' + 'A') : c; }

bool EndsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

// Latin letters without their marks: U+00C0 to U+017F, a blank between two, '-' for none.
constexpr char kLatin[] =
    "A A A A Ae A Ae C E E E E I I I I D N O O O O Oe - Oe U U U Ue Y Th ss "
    "a a a a ae a ae c e e e e i i i i d n o o o o oe - oe u u u ue y th y "
    "A a A a A a C c C c C c C c D d D d E e E e E e E e E e G g G g G g G g H h H h "
    "I i I i I i I i I i Ij ij J j K k k L l L l L l L l L l N n N n N n n N n "
    "O o O o O o Oe oe R r R r R r S s S s S s S s T t T t T t "
    "U u U u U u U u U u U u W w Y y Y Z z Z z Z z s ";

std::string FindLatin(std::uint32_t point) {
  const char* entry = kLatin;
  for (std::uint32_t at = 0xC0; at < point; ++at) entry = std::strchr(entry, ' ') + 1;
  std::string letter(entry, std::strchr(entry, ' '));
  return letter == "-" ? std::string() : letter;
}

// Scripts whose letters are the same in every normal form and that C++17 takes in names.
constexpr std::uint32_t kKept[][2] = {
    {0x391, 0x3A1},   {0x3A3, 0x3A9},   {0x3B1, 0x3C9},   {0x400, 0x45F},   {0x490, 0x52F},
    {0x531, 0x556},   {0x561, 0x587},   {0x5D0, 0x5EA},   {0x620, 0x64A},   {0x905, 0x928},
    {0xE01, 0xE2E},   {0x10D0, 0x10F0}, {0x3041, 0x3096}, {0x30A1, 0x30FA}, {0x30FC, 0x30FC},
    {0x4E00, 0x9FA5}, {0xAC00, 0xD7A3}};

bool IsKept(std::uint32_t point) {
  for (const auto& range : kKept) {
    if (point >= range[0] && point <= range[1]) return true;
  }
  return false;
}

struct Character {
  std::uint32_t point = 0;
  std::string_view octets;
};

// The next character of UTF-8; an octet that is none counts as one by itself.
Character Next(std::string_view text, std::size_t at) {
  const auto first = static_cast<unsigned char>(text[at]);
  const std::size_t length = first < 0xC0 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  if (length == 1 || at + length > text.size()) return {first, text.substr(at, 1)};
  std::uint32_t point = first & (0xFFu >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    point = point << 6 | (static_cast<unsigned char>(text[at + i]) & 0x3Fu);
  }
  return {point, text.substr(at, length)};
}

bool IsCombining(std::uint32_t point) { return point >= 0x300 && point <= 0x36F; }

// The letters and digits that stand for a character in a name; none for what ends a word.
std::string Spell(const Character& character) {
  const std::uint32_t point = character.point;
  if (point < 0x80) {
    const char c = static_cast<char>(point);
    return IsAlnum(c) ? std::string(1, c) : std::string();
  }
  if (point < 0xC0 || (point >= 0x2000 && point <= 0x206F)) return {};
  if (point < 0x180) return FindLatin(point);
  if (IsKept(point)) return std::string(character.octets);
  char number[16];
  std::snprintf(number, sizeof number, "U%04X", static_cast<unsigned>(point));
  return number;
}

const char* FindSignName(std::uint32_t point) {
  switch (point) {
    case '+':
      return "Plus";
    case '-':
      return "Minus";
    case '*':
      return "Star";
    case '/':
      return "Slash";
    case '\\':
      return "Backslash";
    case '%':
      return "Percent";
    case '<':
      return "Less";
    case '>':
      return "Greater";
    case '=':
      return "Equal";
    case '&':
      return "And";
    case '|':
      return "Bar";
    case '!':
      return "Not";
    case '?':
      return "Question";
    case '#':
      return "Number";
    case '@':
      return "At";
    case '$':
      return "Dollar";
    case '^':
      return "Caret";
    case '~':
      return "Tilde";
    case '.':
      return "Dot";
    case ',':
      return "Comma";
    case ':':
      return "Colon";
    case ';':
      return "Semicolon";
    case '\'':
      return "Apostrophe";
    case '"':
      return "Quote";
    case '`':
      return "Grave";
    case '(':
      return "Open";
    case ')':
      return "Close";
    case '[':
      return "OpenBracket";
    case ']':
      return "CloseBracket";
    case '{':
      return "OpenBrace";
    case '}':
      return "CloseBrace";
    case '_':
      return "Line";
    case ' ':
      return "Blank";
    default:
      return "Sign";
  }
}

// Cut in front of a character, without a line at its end.
std::string Shorten(std::string text) {
  if (text.size() > kLongestEnumerator) {
    std::size_t length = kLongestEnumerator;
    while ((static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) --length;
    text.resize(length);
  }
  while (!text.empty() && text.back() == '_') text.pop_back();
  return text;
}

constexpr const char* kKeywords[] = {"alignas",       "alignof",     "and",
                                     "and_eq",        "asm",         "auto",
                                     "bitand",        "bitor",       "bool",
                                     "break",         "case",        "catch",
                                     "char",          "char16_t",    "char32_t",
                                     "char8_t",       "class",       "co_await",
                                     "co_return",     "co_yield",    "compl",
                                     "concept",       "const",       "const_cast",
                                     "consteval",     "constexpr",   "constinit",
                                     "continue",      "decltype",    "default",
                                     "delete",        "do",          "double",
                                     "dynamic_cast",  "else",        "enum",
                                     "explicit",      "export",      "extern",
                                     "false",         "float",       "for",
                                     "friend",        "goto",        "if",
                                     "inline",        "int",         "long",
                                     "mutable",       "namespace",   "new",
                                     "noexcept",      "not",         "not_eq",
                                     "nullptr",       "operator",    "or",
                                     "or_eq",         "private",     "protected",
                                     "public",        "register",    "reinterpret_cast",
                                     "requires",      "return",      "short",
                                     "signed",        "sizeof",      "static",
                                     "static_assert", "static_cast", "struct",
                                     "switch",        "template",    "this",
                                     "thread_local",  "throw",       "true",
                                     "try",           "typedef",     "typeid",
                                     "typename",      "union",       "unsigned",
                                     "using",         "virtual",     "void",
                                     "volatile",      "wchar_t",     "while",
                                     "xor",           "xor_eq"};

// Names that are no keywords and yet not free: the library's, the system's, macros of compilers,
// and what the headers of C and POSIX declare outside of any namespace, as far as it is a word.
constexpr const char* kOwnedNamespaces[] = {
    "std",      "posix",       "linux",   "unix",       "i386",
    "errno",    "assert",      "stdin",   "stdout",     "stderr",
    "major",    "minor",       "main",    "qzxmllib16", "qzxmllib16data",
    "detail",   "abort",       "abs",     "accept",     "access",
    "acct",     "acos",        "alarm",   "asin",       "atan",
    "basename", "bind",        "cbrt",    "ceil",       "clock",
    "clone",    "close",       "connect", "cos",        "cosh",
    "crypt",    "ctime",       "daemon",  "daylight",   "difftime",
    "div",      "dup",         "environ", "erf",        "exit",
    "exp",      "fabs",        "fdim",    "floor",      "fmax",
    "fmin",     "fmod",        "fork",    "free",       "gamma",
    "getopt",   "hypot",       "index",   "j0",         "j1",
    "jn",       "kill",        "lconv",   "link",       "listen",
    "log",      "logb",        "nan",     "nice",       "optarg",
    "pause",    "pipe",        "pow",     "printf",     "profil",
    "rand",     "random",      "read",    "recv",       "remainder",
    "remove",   "rename",      "revoke",  "rewind",     "rint",
    "round",    "scanf",       "select",  "send",       "shutdown",
    "signal",   "significand", "sin",     "sinh",       "sleep",
    "socket",   "sqrt",        "stat",    "sync",       "syscall",
    "system",   "tan",         "tanh",    "time",       "timespec",
    "timeval",  "timezone",    "tm",      "trunc",      "truncate",
    "unlink",   "wait",        "write",   "y0",         "y1",
    "yn"};

template <typename List>
bool Contains(const List& list, std::string_view word) {
  return std::any_of(std::begin(list), std::end(list),
                     [word](const char* entry) { return word == entry; });
}

}  // namespace

std::string ToUpperCamel(std::string_view name) {
  std::string result;
  bool isFirst = true;
  for (std::size_t at = 0; at < name.size();) {
    const Character character = Next(name, at);
    at += character.octets.size();
    if (IsCombining(character.point)) continue;
    std::string letters = Spell(character);
    if (letters.empty()) {
      isFirst = true;
      continue;
    }
    if (isFirst) {
      if (!result.empty() && IsDigit(result.back()) && IsDigit(letters[0])) result += '_';
      letters[0] = Upper(letters[0]);
      isFirst = false;
    }
    result += letters;
  }
  return result.empty() ? "X" : result;
}

std::string ToLowerCamel(std::string_view upperCamel) {
  std::string result(upperCamel);
  std::size_t count = 0;
  while (count < result.size() && IsUpper(result[count])) ++count;
  // The last capital of several begins the next word: "URLPath".
  if (count > 1 && count < result.size() && IsLower(result[count])) --count;
  for (std::size_t i = 0; i < count; ++i) result[i] = Lower(result[i]);
  return result;
}

std::string ToPlural(const std::string& upperCamel) {
  const std::string& name = upperCamel;
  const auto cut = [&name](std::size_t count) { return name.substr(0, name.size() - count); };
  if (!IsLower(name.back()) && !IsUpper(name.back())) return name + "List";
  if (EndsWith(name, "Child") || name == "child") return name + "ren";
  for (const char* whole : {"Data", "data", "Info", "Information"}) {
    if (EndsWith(name, whole)) return name;
  }
  if (EndsWith(name, "is")) return cut(2) + "es";
  for (const char* sibilant : {"ss", "us", "x", "z", "ch", "sh"}) {
    if (EndsWith(name, sibilant)) return name + "es";
  }
  if (name.back() == 's') return name;
  if (name.size() > 1 && name.back() == 'y' &&
      std::strchr("aeiou", name[name.size() - 2]) == nullptr) {
    return cut(1) + "ies";
  }
  return name + "s";
}

std::string ToEnumeratorPart(std::string_view text) {
  if (text.empty()) return "Empty";
  std::string result;
  bool hasLetters = false;
  for (std::size_t at = 0; at < text.size();) {
    const Character character = Next(text, at);
    at += character.octets.size();
    if (IsCombining(character.point)) continue;
    const std::string letters = Spell(character);
    hasLetters = hasLetters || !letters.empty();
    const bool isSign = character.point == '-' || character.point == '+';
    if (!letters.empty()) {
      result += letters;
    } else if (isSign && result.empty() && at < text.size() && IsDigit(text[at])) {
      result += FindSignName(character.point);
    } else if (!result.empty() && result.back() != '_') {
      result += '_';
    }
  }
  return hasLetters ? Shorten(result) : ToSpeltEnumeratorPart(text);
}

std::string ToSpeltEnumeratorPart(std::string_view text) {
  std::string result;
  for (std::size_t at = 0; at < text.size();) {
    const Character character = Next(text, at);
    at += character.octets.size();
    if (IsCombining(character.point)) continue;
    const std::string letters = Spell(character);
    result += letters.empty() ? FindSignName(character.point) : letters;
  }
  return Shorten(result.empty() ? "Empty" : result);
}

std::string ToNamespaceName(std::string_view name) {
  std::string result;
  for (std::size_t at = 0; at < name.size();) {
    const Character character = Next(name, at);
    at += character.octets.size();
    const std::string letters = Spell(character);
    if (!letters.empty()) {
      result += letters;
    } else if (!result.empty() && result.back() != '_') {
      result += '_';
    }
  }
  while (!result.empty() && result.back() == '_') result.pop_back();
  std::transform(result.begin(), result.end(), result.begin(), Lower);
  if (result.empty()) result = "schema";
  if (IsDigit(result[0])) result.insert(0, "n");
  if (Contains(kKeywords, result) || Contains(kOwnedNamespaces, result)) result += "_ns";
  return result;
}

std::string ToFileStem(std::string_view identifier) {
  std::string result;
  for (std::size_t at = 0; at < identifier.size();) {
    const Character character = Next(identifier, at);
    at += character.octets.size();
    if (character.point < 0x80) {
      const char c = static_cast<char>(character.point);
      result += IsAlnum(c) ? c : '_';
      continue;
    }
    char number[16];
    std::snprintf(number, sizeof number, "U%04X", static_cast<unsigned>(character.point));
    result += number;
  }
  return result;
}

bool IsIdentifier(std::string_view text) {
  if (text.empty() || IsDigit(text[0]) || text[0] == '_') return false;
  if (text.find("__") != std::string_view::npos || Contains(kKeywords, text)) return false;
  for (std::size_t at = 0; at < text.size();) {
    const Character character = Next(text, at);
    at += character.octets.size();
    if (character.point == '_' || IsKept(character.point)) continue;
    if (character.point >= 0x80 || !IsAlnum(static_cast<char>(character.point))) return false;
  }
  return true;
}

bool IsOwnedNamespace(std::string_view text) {
  return Contains(kOwnedNamespaces, text) || text == "QzXmlLib16" || text == "QzXmlLib16Data";
}

std::string WithNumber(const std::string& name, int number) {
  return name + (IsDigit(name.back()) ? "_" : "") + std::to_string(number);
}

std::string CNameScope::Fold(const std::string& name) const {
  if (m_letters == Case_Sensitive) return name;
  std::string folded = name;
  std::transform(folded.begin(), folded.end(), folded.begin(), Lower);
  return folded;
}

bool CNameScope::IsFree(const std::string& name) const { return m_names.count(Fold(name)) == 0; }

bool CNameScope::Take(const std::string& name) { return m_names.insert(Fold(name)).second; }

std::string CNameScope::TakeFirst(const std::vector<std::string>& candidates) {
  for (const std::string& candidate : candidates) {
    if (Take(candidate)) return candidate;
  }
  for (int number = 2;; ++number) {
    std::string numbered = WithNumber(candidates.back(), number);
    if (Take(numbered)) return numbered;
  }
}

}  // namespace qzxml::generator
