#include "tools/generator/emit/CodeWriter.h"

#include <algorithm>

namespace qzxml::generator {
namespace {

// The text in one line.
std::string Join(const std::vector<std::string>& items) {
  std::string joined;
  for (const std::string& item : items) {
    if (!joined.empty()) joined += ", ";
    joined += item;
  }
  return joined;
}

// Lays the items out behind start, as many on a line as it takes: lines beginning in that column,
// and the first one in column begin. The last line has to take the tail.
struct Layout {
  std::vector<std::string> lines;  // without indentation
  bool fits = true;
};
Layout Fill(const std::vector<std::string>& items, std::size_t column, const std::string& tail) {
  Layout layout;
  std::string line;
  for (std::size_t i = 0; i < items.size(); ++i) {
    const bool isLast = i + 1 == items.size();
    const std::string item = items[i] + (isLast ? tail : ",");
    if (!line.empty() && column + line.size() + 1 + item.size() > kColumns) {
      layout.lines.push_back(line);
      line.clear();
    }
    if (!line.empty()) line += ' ';
    line += item;
    if (column + line.size() > kColumns) layout.fits = false;
  }
  layout.lines.push_back(line);
  return layout;
}

// A code point of valid UTF-8 at the offset, which moves on.
char32_t NextCodePoint(std::string_view text, std::size_t& at) {
  const auto octet = [&](std::size_t i) {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u;
  };
  const unsigned first = octet(at);
  const std::size_t length = first < 0xC0 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  char32_t point = length == 1 ? first : first & (0xFFu >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) point = point << 6 | (octet(at + i) & 0x3F);
  at = std::min(at + length, text.size());
  return point;
}

// Columns that a text takes: two for the wide characters of East Asia.
std::size_t Width(std::string_view text) {
  std::size_t width = 0;
  for (std::size_t at = 0; at < text.size();) {
    const char32_t point = NextCodePoint(text, at);
    const bool isWide =
        (point >= 0x1100 && point <= 0x115F) || (point >= 0x2E80 && point <= 0xA4CF) ||
        (point >= 0xAC00 && point <= 0xD7A3) || (point >= 0xF900 && point <= 0xFAFF) ||
        (point >= 0xFE30 && point <= 0xFE6F) || (point >= 0xFF00 && point <= 0xFF60) ||
        point >= 0x1F300;
    width += isWide ? 2 : 1;
  }
  return width;
}

// Characters that change the direction of text would let a comment look like code.
bool IsUnseen(char32_t point) {
  return point < 0x20 || point == 0x7F || (point >= 0x80 && point < 0xA0) || point == 0x61C ||
         (point >= 0x200B && point <= 0x200F) || (point >= 0x2028 && point <= 0x202E) ||
         (point >= 0x2060 && point <= 0x2069) || point == 0xFEFF;
}

// The words of a text, without what cannot be seen.
std::vector<std::string> Words(std::string_view text) {
  std::vector<std::string> words;
  std::string word;
  const auto end = [&] {
    if (!word.empty()) words.push_back(word);
    word.clear();
  };
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t from = at;
    const char32_t point = NextCodePoint(text, at);
    if (point == ' ' || point == '\t' || point == '\r' || point == '\n') {
      end();
    } else if (!IsUnseen(point)) {
      word += text.substr(from, at - from);
    }
  }
  end();
  return words;
}

// The last place of a literal up to limit that is not within an escape.
std::size_t FindCut(const std::string& literal, std::size_t limit) {
  std::size_t at = 1;
  while (true) {
    std::size_t length = 1;
    if (literal[at] == '\\') length = literal[at + 1] >= '0' && literal[at + 1] <= '7' ? 4 : 2;
    if (at + length > limit) return at;
    at += length;
  }
}

}  // namespace

std::string Literal(std::string_view text) {
  std::string literal = "\"";
  for (std::size_t i = 0; i < text.size(); ++i) {
    const unsigned char octet = static_cast<unsigned char>(text[i]);
    if (octet == '"' || octet == '\\' || (octet == '?' && i > 0 && text[i - 1] == '?')) {
      literal += '\\';
      literal += text[i];
    } else if (octet == '\n') {
      literal += "\\n";
    } else if (octet == '\t') {
      literal += "\\t";
    } else if (octet < 0x20 || octet >= 0x7F) {
      literal += '\\';
      literal += static_cast<char>('0' + (octet >> 6));
      literal += static_cast<char>('0' + (octet >> 3 & 7));
      literal += static_cast<char>('0' + (octet & 7));
    } else {
      literal += text[i];
    }
  }
  return literal + '"';
}

// --- Lines

void CCodeWriter::Line(std::string_view line) {
  if (!line.empty()) m_text.append(m_indent, ' ');
  m_text += line;
  m_text += '\n';
  ++m_lines;
  m_isFresh = !line.empty() && (line.back() == '{' || line.back() == ':') && line[0] != '/';
}

void CCodeWriter::Gap() {
  if (m_text.empty() || m_isFresh) return;
  if (m_text.size() >= 2 && m_text[m_text.size() - 2] == '\n') return;
  Line("");
}

void CCodeWriter::LineAt(std::size_t columns, std::string_view line) {
  m_indent += columns;
  Line(line);
  m_indent -= columns;
}

void CCodeWriter::Label(std::string_view label) { LineAt(1, label); }

void CCodeWriter::Append(std::string_view lines) {
  m_text += lines;
  m_lines += static_cast<std::int32_t>(std::count(lines.begin(), lines.end(), '\n'));
  m_isFresh = false;
}

// --- Comments

void CCodeWriter::Comment(std::string_view text) {
  bool isFirst = true;
  while (!text.empty()) {
    const std::size_t end = text.find("\n\n");
    const std::string_view paragraph = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 2);
    if (Words(paragraph).empty()) continue;
    if (!isFirst) Line("//");
    isFirst = false;
    Paragraph(paragraph);
  }
}

void CCodeWriter::Paragraph(std::string_view text) {
  std::string line = "//";
  const auto end = [&] {
    // A backslash, also one written as a trigraph, would continue the comment.
    if (line.back() == '\\' || (line.size() > 2 && line.compare(line.size() - 3, 3, "?\?/") == 0)) {
      line += '.';
    }
    Line(line);
    m_isFresh = false;
    line = "//";
  };
  for (const std::string& word : Words(text)) {
    // One column stays free for that dot.
    if (line != "//" && m_indent + Width(line) + 1 + Width(word) > kColumns - 1) end();
    line += ' ';
    line += word;
  }
  end();
}

// --- Calls

void CCodeWriter::Call(const CallText& call) {
  std::string links;
  for (const std::string& link : call.links) links += link;
  const std::string close = call.links.empty() ? call.tail : call.tail.substr(0, 1);
  const std::string rest = call.links.empty() ? std::string() : call.tail.substr(1);

  const std::string whole = call.head + Join(call.arguments) + close;
  if (Fits(whole + links + rest)) return Line(whole + links + rest);

  if (call.arguments.empty() || (!call.links.empty() && Fits(whole))) {
    Line(whole);
  } else {
    const Layout below = Fill(call.arguments, m_indent + call.head.size(), close);
    const Layout behind = Fill(call.arguments, m_indent + 4, close);
    const bool isShorter = below.lines.size() > behind.lines.size() + 1;
    if (!below.fits || (isShorter && !call.isDeclaration)) {
      Line(call.head);
      m_indent += 4;
      for (const std::string& line : behind.lines) Line(line);
      m_indent -= 4;
    } else {
      Line(call.head + below.lines[0]);
      m_indent += call.head.size();
      for (std::size_t i = 1; i < below.lines.size(); ++i) Line(below.lines[i]);
      m_indent -= call.head.size();
    }
  }
  for (std::size_t i = 0; i < call.links.size(); ++i) {
    const bool isLast = i + 1 == call.links.size();
    LineAt(call.linkIndent, isLast ? call.links[i] + rest : call.links[i]);
  }
}

// --- Functions

void CCodeWriter::Function(const std::string& signature, const CallText& body) {
  std::string links;
  for (const std::string& link : body.links) links += link;
  const std::string line =
      signature + " { " + body.head + Join(body.arguments) + body.tail + links + " }";
  if (Fits(line)) return Line(line);
  Signature(signature, " {");
  Indent();
  Call(body);
  Outdent();
  Line("}");
}

void CCodeWriter::Declaration(const std::string& signature) { Signature(signature, ";"); }
void CCodeWriter::Begin(const std::string& signature) { Signature(signature, " {"); }

void CCodeWriter::Defaulted(const std::string& signature) {
  if (Fits(signature + " = default;")) return Line(signature + " = default;");
  const std::size_t name = signature.rfind('~');
  Line(signature.substr(0, name));
  LineAt(4, signature.substr(name) + " = default;");
}

// Broken before a closing "const", or behind the parenthesis, or behind the result.
void CCodeWriter::Signature(const std::string& signature, const std::string& end) {
  if (Fits(signature + end)) return Line(signature + end);
  constexpr char kConst[] = " const";
  const std::size_t open = signature.find('(');
  const bool takesNothing = signature.compare(open, 2, "()") == 0;
  if (!takesNothing && Fits(signature.substr(0, open + 1))) {
    Line(signature.substr(0, open + 1));
    LineAt(4, signature.substr(open + 1) + end);
  } else if (takesNothing && Fits(signature.substr(0, open + 2)) &&
             signature.compare(open + 2, std::string::npos, kConst) == 0) {
    Line(signature.substr(0, open + 2));
    LineAt(4, "const" + end);
  } else {
    // A constructor has no type in front that could stand on a line of its own.
    const std::size_t blank = signature.rfind(' ', open);
    const std::size_t name = blank == std::string::npos ? 0 : blank + 1;
    if (name > 0) Line(signature.substr(0, blank));
    Line(signature.substr(name) + end);
  }
  m_isFresh = end == " {";
}

void CCodeWriter::Constructor(const std::string& signature, const std::string& initializer) {
  const std::string line = signature + " : " + initializer + " {}";
  if (Fits(line)) return Line(line);
  Signature(signature, "");
  LineAt(4, ": " + initializer + " {}");
}

void CCodeWriter::Literals(const std::string& head, const std::vector<std::string>& items) {
  const std::string line = head + "{" + Join(items) + "};";
  if (Fits(line)) return Line(line);
  Line(head + "{");
  m_indent += 4;
  for (const std::string& item : items) {
    std::string rest = item + ",";
    while (!Fits(rest)) {
      const std::size_t cut = FindCut(rest, std::min(kColumns - m_indent - 1, rest.size() - 3));
      Line(rest.substr(0, cut) + "\"");
      rest = "\"" + rest.substr(cut);
    }
    Line(rest);
  }
  m_indent -= 4;
  Line("};");
}

void CCodeWriter::Enum(const std::string& head, const std::vector<std::string>& items) {
  std::string line = head + " { " + Join(items) + " };";
  if (Fits(line)) return Line(line);
  Line(head + " {");
  Indent();
  for (std::size_t i = 0; i < items.size(); ++i) {
    Line(i + 1 < items.size() ? items[i] + "," : items[i]);
  }
  Outdent();
  Line("};");
}

}  // namespace qzxml::generator
