// Every small expression against every small text: expressions are made as trees, written as
// patterns, and matched by a few lines that know nothing of PCRE2.
#include <functional>
#include <memory>
#include <set>

#include "qzxml/serialization/PrimitiveRestrictions.h"
#include "tests/support/QzTest.h"
#include "tools/generator/regex/XsdPattern.h"

using namespace qzxml::generator;

namespace {

using Places = std::set<std::size_t>;  // where a match may have come to in a text

struct Node {
  std::string text;     // as a pattern
  bool isAtom = false;  // may be repeated as it stands
  std::function<Places(const std::string&, const Places&)> advance;
};

Node Leaf(const std::string& text, const std::string& members) {
  return {text, true, [members](const std::string& value, const Places& from) {
            Places to;
            for (const std::size_t place : from) {
              const bool isMember =
                  place < value.size() && members.find(value[place]) != std::string::npos;
              if (isMember) to.insert(place + 1);
            }
            return to;
          }};
}

Node Nothing() {
  return {"", false, [](const std::string&, const Places& from) { return from; }};
}

Node Concatenate(const Node& a, const Node& b) {
  return {a.text + b.text, false, [a, b](const std::string& value, const Places& from) {
            return b.advance(value, a.advance(value, from));
          }};
}

Node Choose(const Node& a, const Node& b) {
  return {"(" + a.text + "|" + b.text + ")", true,
          [a, b](const std::string& value, const Places& from) {
            Places to = a.advance(value, from);
            to.merge(b.advance(value, from));
            return to;
          }};
}

// Texts here are too short for more times to tell more.
Node Repeat(const Node& a, const std::string& quantifier, int least, int most) {
  const std::string atom = a.isAtom ? a.text : "(" + a.text + ")";
  return {atom + quantifier, false, [a, least, most](const std::string& value, const Places& from) {
            Places here = from;
            Places to = least == 0 ? from : Places();
            for (int count = 1; count <= most; ++count) {
              here = a.advance(value, here);
              if (count >= least) to.insert(here.begin(), here.end());
            }
            return to;
          }};
}

std::vector<Node> Repetitions(const Node& a) {
  constexpr int kMany = 5;
  return {Repeat(a, "?", 0, 1),   Repeat(a, "*", 0, kMany), Repeat(a, "+", 1, kMany),
          Repeat(a, "{2}", 2, 2), Repeat(a, "{1,2}", 1, 2), Repeat(a, "{2,}", 2, kMany)};
}

// Each with what it takes of the characters that the texts are made of.
std::vector<Node> Leaves() {
  return {Leaf("a", "a"),           Leaf("\\-", "-"),
          Leaf(".", "a-1"),         Leaf("\\s", "\n"),
          Leaf("[^\\n1]", "a-"),    Leaf("[a\\s]", "a\n"),
          Leaf("\\D", "a\n-"),      Leaf("[\\w-[\\d]]", "a"),
          Leaf("[^a-[\\n]]", "-1"), Leaf("[\\s\\S-[a-z-[\\i-[b]]]]", "a\n-1"),
          Leaf("\\C", "\n")};
}

std::vector<std::string> Texts() {
  std::vector<std::string> texts = {""};
  for (std::size_t i = 0; texts[i].size() < 3; ++i) {
    for (const char c : {'a', '\n', '-', '1'}) texts.push_back(texts[i] + c);
  }
  return texts;
}

void ExpectSame(const Node& node) {
  static const std::vector<std::string> s_texts = Texts();
  const std::string pattern = TranslateXsdPattern(node.text);
  for (const std::string& text : s_texts) {
    const bool expected = node.advance(text, {0}).count(text.size()) != 0;
    EXPECT_EQ(expected, QzXmlLib16::MatchesRegularExpression(pattern, text))
        << node.text << " as " << pattern << ": " << text;
  }
}

}  // namespace

TEST(XsdPatternOracle, AgreesOnEveryAtomWithEveryQuantifier) {
  for (const Node& leaf : Leaves()) {
    ExpectSame(leaf);
    for (const Node& repeated : Repetitions(leaf)) {
      ExpectSame(repeated);
      for (const Node& nested : Repetitions(repeated)) ExpectSame(nested);
    }
  }
}

TEST(XsdPatternOracle, AgreesOnEveryPairOfAtoms) {
  std::vector<Node> pieces = Leaves();
  pieces.push_back(Nothing());
  for (const Node& leaf : Leaves()) {
    pieces.push_back(Repeat(leaf, "?", 0, 1));
    pieces.push_back(Repeat(leaf, "*", 0, 5));
  }
  for (const Node& a : pieces) {
    for (const Node& b : pieces) {
      ExpectSame(Concatenate(a, b));
      ExpectSame(Choose(a, b));
    }
  }
}

TEST(XsdPatternOracle, AgreesOnRepeatedChoicesOfSequences) {
  const std::vector<Node> leaves = Leaves();
  for (std::size_t i = 0; i < leaves.size(); ++i) {
    const Node& next = leaves[(i + 3) % leaves.size()];
    for (const Node& b : leaves) {
      for (const Node& choice : Repetitions(Choose(Concatenate(leaves[i], next), b))) {
        ExpectSame(choice);
        ExpectSame(Concatenate(choice, leaves[i]));
      }
    }
  }
}

TEST(XsdPatternOracle, AgreesOnJoinedPatterns) {
  const std::vector<Node> leaves = Leaves();
  for (const Node& a : leaves) {
    for (const Node& b : leaves) {
      const Node first = Choose(a, Concatenate(a, b));
      const Node second = Concatenate(a, Repeat(b, "*", 0, 5));
      const std::vector<std::string> both = {TranslateXsdPattern(first.text),
                                             TranslateXsdPattern(second.text)};
      for (const std::string& text : Texts()) {
        const bool isFirst = first.advance(text, {0}).count(text.size()) != 0;
        const bool isSecond = second.advance(text, {0}).count(text.size()) != 0;
        const auto matches = [&](const std::string& pattern) {
          return QzXmlLib16::MatchesRegularExpression(pattern, text);
        };
        EXPECT_EQ(isFirst || isSecond, matches(JoinAlternatives(both))) << JoinAlternatives(both);
        EXPECT_EQ(isFirst && isSecond, matches(JoinSteps(both))) << JoinSteps(both);
        EXPECT_EQ(isSecond && text.size() == 2, matches(RequireLength(both[1], 2, 2))) << both[1];
      }
    }
  }
}
