#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qzxml::generator {

// Columns of a line of generated code.
inline constexpr std::size_t kColumns = 100;

// A text as a literal of C++, with the quotes. Plain ASCII: other octets are written as octal
// escapes, so that no compiler's character set matters; two question marks never stand together.
std::string Literal(std::string_view text);

// A call, "head(arguments)tail": head ends with the parenthesis, tail begins with the other one.
// Links such as ".Nillable()" stand between the parenthesis and the rest of the tail. Without
// arguments and links, head and tail are just a text.
struct CallText {
  std::string head;
  std::vector<std::string> arguments;
  std::string tail;
  std::vector<std::string> links;
  std::size_t linkIndent = 4;  // of links on lines of their own; more where the call is in braces
  bool isDeclaration = false;  // of a variable: arguments stand below the parenthesis if they can
};

// Builds a source line by line, in the layout of the house: blocks of two columns, calls broken as
// clang-format breaks them.
class CCodeWriter {
 public:
  const std::string& GetText() const { return m_text; }
  std::int32_t GetLineCount() const { return m_lines; }
  std::string Take() { return std::move(m_text); }

  // --- Lines

  // The line with the present indentation, or nothing but the line end for an empty one.
  void Line(std::string_view line);
  // An empty line, unless the text is empty or one stands there already or a block has just begun.
  void Gap();
  // A line that stands so many columns further in.
  void LineAt(std::size_t columns, std::string_view line);
  // " public:" and its like, half a block in.
  void Label(std::string_view label);
  // Whole lines that another writer made.
  void Append(std::string_view lines);

  void Indent(std::int32_t blocks = 1) { m_indent += 2 * static_cast<std::size_t>(blocks); }
  void Outdent(std::int32_t blocks = 1) { m_indent -= 2 * static_cast<std::size_t>(blocks); }

  // --- Forms that may need more than a line

  // A comment of any length: "// " before each line, paragraphs kept, words filled anew. A line
  // that ends with a backslash gets a dot, so that it does not swallow the next one. Nothing for an
  // empty text.
  void Comment(std::string_view text);

  // On one line, or broken: arguments below the parenthesis, or behind it where that takes fewer
  // lines; each link on a line of its own where one line does not take all.
  void Call(const CallText& call);

  // "signature { body }" on one line, or on three and more.
  void Function(const std::string& signature, const CallText& body);

  // The same for a constructor that does nothing but construct: "signature : initializer {}".
  void Constructor(const std::string& signature, const std::string& initializer);

  // "signature = default;" of a destructor, broken before its own name.
  void Defaulted(const std::string& signature);

  // "signature;" or "signature {", broken if need be.
  void Declaration(const std::string& signature);
  void Begin(const std::string& signature);

  // "head{a, b};" on one line, or a line for each. Items are literals; one that is too long for a
  // line is split.
  void Literals(const std::string& head, const std::vector<std::string>& items);

  // "head { a, b };" on one line, or a line for each.
  void Enum(const std::string& head, const std::vector<std::string>& items);

  bool Fits(std::string_view line) const { return m_indent + line.size() <= kColumns; }

 private:
  void Paragraph(std::string_view text);
  void Signature(const std::string& signature, const std::string& end);

  std::string m_text;
  std::int32_t m_lines = 0;
  std::size_t m_indent = 0;
  bool m_isFresh = true;  // nothing to keep a distance from
};

}  // namespace qzxml::generator
