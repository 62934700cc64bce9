#include "tests/support/QzTest.h"
#include "tools/generator/emit/CodeWriter.h"

using namespace qzxml::generator;

namespace {

struct TextCase {
  const char* text;
  const char* written;
};

std::string Repeat(const std::string& text, std::size_t count) {
  std::string repeated;
  for (std::size_t i = 0; i < count; ++i) repeated += text;
  return repeated;
}

std::string CommentOf(const std::string& text) {
  CCodeWriter writer;
  writer.Comment(text);
  return writer.Take();
}

std::string CallOf(const CallText& call) {
  CCodeWriter writer;
  writer.Call(call);
  return writer.Take();
}

std::string FunctionOf(const std::string& signature, const CallText& body) {
  CCodeWriter writer;
  writer.Function(signature, body);
  return writer.Take();
}

}  // namespace

TEST(CodeWriter, LiteralsHoldAnyTextInPlainAscii) {
  const TextCase cases[] = {
      {"", "\"\""},
      {"kg", "\"kg\""},
      {"say \"no\"", R"("say \"no\"")"},
      {"C:\\temp", R"("C:\\temp")"},
      {"a\nb\tc\rd", R"("a\nb\tc\015d")"},
      {"\x01\x7F", R"("\001\177")"},
      {"Stra\xC3\x9F"
       "e1",
       R"("Stra\303\237e1")"},
      {"what?\?=", R"("what?\?=")"},  // no trigraph
      {"?\?\?/", R"("?\?\?/")"},
      {"%s */ //", R"("%s */ //")"},
  };
  for (const TextCase& c : cases) EXPECT_EQ(c.written, Literal(c.text)) << c.text;
}

TEST(CodeWriter, CommentsKeepParagraphsAndFillLines) {
  EXPECT_EQ("", CommentOf(""));
  EXPECT_EQ("", CommentOf(" \n\n \t"));
  EXPECT_EQ("// One line.\n", CommentOf("  One\n     line. "));
  EXPECT_EQ("// One.\n//\n// Two.\n", CommentOf("One.\n\n\n\nTwo.\n"));
  const std::string words = Repeat("abcd ", 20);
  EXPECT_EQ("//" + Repeat(" abcd", 19) + "\n// abcd\n", CommentOf(words));
}

TEST(CodeWriter, CommentsCountColumnsAsTheyAreSeen) {
  // 19 words of 4 characters beside "//" are 97 columns; each e with an accent is two octets.
  const std::string words = Repeat("\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9 ", 20);
  const std::string line = Repeat(" \xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9", 19);
  EXPECT_EQ("//" + line + "\n// \xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\n", CommentOf(words));
  // Ideographs take two columns: 9 words of 5 of them are 101.
  const std::string wide = Repeat("\xE6\x97\xA5", 5);
  EXPECT_EQ("//" + Repeat(" " + wide, 8) + "\n// " + wide + "\n", CommentOf(Repeat(wide + " ", 9)));
}

TEST(CodeWriter, CommentsLeaveAWordLongerThanALineWhole) {
  const std::string url = "http://example.org/" + Repeat("x", 100);
  EXPECT_EQ("// see\n// " + url + "\n// there\n", CommentOf("see " + url + " there"));
}

TEST(CodeWriter, CommentsSwallowNoLineBehindThem) {
  const TextCase cases[] = {
      {"a path C:\\", "// a path C:\\.\n"},  {"\\", "// \\.\n"},
      {"what?\?/", "// what?\?/.\n"},        {"ends */ here", "// ends */ here\n"},
      {"and /* there", "// and /* there\n"},
  };
  for (const TextCase& c : cases) EXPECT_EQ(c.written, CommentOf(c.text));
}

TEST(CodeWriter, CommentsHaveNoCharactersThatCannotBeSeen) {
  // A change of direction, a zero width space, a control character, a byte order mark.
  EXPECT_EQ("// ab cd\n", CommentOf("a\xE2\x80\xAE"
                                    "b c\xE2\x80\x8B\x07"
                                    "d\xEF\xBB\xBF"));
}

TEST(CodeWriter, CallsAreBrokenBelowTheParenthesis) {
  EXPECT_EQ("f(a, b);\n", CallOf({"f(", {"a", "b"}, ");", {}}));
  const std::string name = Repeat("n", 40);
  const std::string argument = Repeat("a", 30);
  EXPECT_EQ(name + "(" + argument + ",\n" + Repeat(" ", 41) + argument + ");\n",
            CallOf({name + "(", {argument, argument}, ");", {}}));
  // Exactly 100 columns.
  EXPECT_EQ(name + "(" + Repeat("a", 57) + ");\n",
            CallOf({name + "(", {Repeat("a", 57)}, ");", {}}));
}

TEST(CodeWriter, CallsAreBrokenBehindTheParenthesisWhereThatSavesALineOrNothingElseFits) {
  const std::string name = Repeat("n", 60);
  EXPECT_EQ(name + "(\n    " + Repeat("a", 50) + ");\n",
            CallOf({name + "(", {Repeat("a", 50)}, ");", {}}));
  const std::string part = Repeat("a", 28);
  EXPECT_EQ(name + "(\n    " + part + ", " + part + ", " + part + ");\n",
            CallOf({name + "(", {part, part, part}, ");", {}}));
}

TEST(CodeWriter, LinksStandOnLinesOfTheirOwnWhereOneLineDoesNotTakeAll) {
  EXPECT_EQ("f(a).B(),\n", CallOf({"f(", {"a"}, "),", {".B()"}}));
  const std::string argument = Repeat("a", 90);
  EXPECT_EQ("f(" + argument + ")\n    .Nillable()\n    .C(),\n",
            CallOf({"f(", {argument}, "),", {".Nillable()", ".C()"}}));
}

TEST(CodeWriter, FunctionsStandOnOneLineOrThree) {
  EXPECT_EQ("int F() { return 1; }\n", FunctionOf("int F()", {"return 1;", {}, {}, {}}));
  const std::string name = Repeat("n", 60);
  EXPECT_EQ(
      "void " + name + "(int value) {\n  Set(" + Repeat("a", 30) + ", value);\n}\n",
      FunctionOf("void " + name + "(int value)", {"Set(", {Repeat("a", 30), "value"}, ");", {}}));
}

TEST(CodeWriter, SignaturesAreBrokenBeforeConstBehindTheParenthesisOrBehindTheResult) {
  const CallText body = {"return m;", {}, {}, {}};
  const std::string at98 = "int " + Repeat("n", 90) + "()";
  EXPECT_EQ(at98 + "\n    const {\n  return m;\n}\n", FunctionOf(at98 + " const", body));
  const std::string at90 = "void " + Repeat("n", 84) + "(";
  EXPECT_EQ(at90 + "\n    int value) {\n  return m;\n}\n", FunctionOf(at90 + "int value)", body));
  const std::string result = Repeat("t", 60);
  const std::string name = Repeat("n", 60);
  EXPECT_EQ(result + "\n" + name + "() const {\n  return m;\n}\n",
            FunctionOf(result + " " + name + "() const", body));
}

TEST(CodeWriter, LiteralsTakeALineEachAndOneThatIsTooLongSeveral) {
  CCodeWriter writer;
  writer.Literals("a[] = ", {Literal("x"), Literal("y")});
  EXPECT_EQ("a[] = {\"x\", \"y\"};\n", writer.Take());
  // 93 characters stand between two quotes behind four blanks, before a comma.
  CCodeWriter longer;
  longer.Literals("a[] = ", {Literal(Repeat("x", 93)), Literal(Repeat("y", 94))});
  EXPECT_EQ("a[] = {\n    \"" + Repeat("x", 93) + "\",\n    \"" + Repeat("y", 93) +
                "\"\n    \"y\",\n};\n",
            longer.Take());
}

TEST(CodeWriter, LiteralsAreNotCutWithinAnEscape) {
  const TextCase cases[] = {{"\\", "\\\\"}, {"\x01", "\\001"}, {"\n", "\\n"}, {"?\?", "?\\?"}};
  for (const TextCase& c : cases) {
    for (std::size_t lead = 85; lead < 95; ++lead) {
      const std::string literal = Literal(Repeat("x", lead) + Repeat(c.text, 100));
      CCodeWriter writer;
      writer.Literals("a[] = ", {literal});
      std::string joined;
      std::string line;
      for (const char ch : writer.Take()) {
        if (ch != '\n') {
          line += ch;
          continue;
        }
        EXPECT_LE(line.size(), 100u);
        if (line.compare(0, 5, "    \"") == 0) {
          const std::string piece = line.substr(5, line.rfind('"') - 5);
          EXPECT_FALSE(piece.empty());
          std::size_t slashes = 0;
          while (slashes < piece.size() && piece[piece.size() - 1 - slashes] == '\\') ++slashes;
          EXPECT_EQ(0u, slashes % 2) << piece;
          joined += piece;
        }
        line.clear();
      }
      EXPECT_EQ(literal, '"' + joined + '"') << c.text;
    }
  }
}

TEST(CodeWriter, EnumerationsTakeALineEachWhereOneDoesNotHoldThem) {
  CCodeWriter writer;
  writer.Enum("enum E : int", {"E_a", "E_b"});
  EXPECT_EQ("enum E : int { E_a, E_b };\n", writer.Take());
  CCodeWriter longer;
  const std::string name = Repeat("n", 50);
  longer.Enum("enum E : int", {name, name});
  EXPECT_EQ("enum E : int {\n  " + name + ",\n  " + name + "\n};\n", longer.Take());
}

TEST(CodeWriter, AConstructorThatNoLineHoldsStandsThereOnce) {
  const std::string name = "C" + Repeat("x", 60);
  CCodeWriter writer;
  writer.Constructor(name + "::" + name + "()", "CBoundClass(s_binding)");
  EXPECT_EQ(name + "::" + name + "()\n    : CBoundClass(s_binding) {}\n", writer.Take());
}
