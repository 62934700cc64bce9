#include <gtest/gtest.h>

#include <string>

#include "tests/tools/schema/SchemaTrial.h"

// The rules that look at whole content models: one particle for each element, one type for each
// name, and what a restriction may write.

using namespace qzxml::generator;
using qztest::SchemaTrial;

namespace {

// Elements are written by their names, "a?", "b*", "c+" and "d{2,3}"; names of one letter have the
// type xs:int. "[##any]" is a wildcard; "(a, b)" a sequence, "(a | b)" a choice, "(a & b)" xs:all.
class CModelWriter {
 public:
  explicit CModelWriter(const std::string& text) : m_text(text) {}

  std::string Write() {
    const std::string inner = m_text[m_at] == '(' ? WriteGroup() : WriteLeaf();
    return inner;
  }

 private:
  void SkipBlanks() {
    while (m_at < m_text.size() && m_text[m_at] == ' ') ++m_at;
  }

  std::string TakeOccurrence() {
    if (m_at == m_text.size()) return {};
    switch (m_text[m_at]) {
      case '?':
        ++m_at;
        return " minOccurs='0'";
      case '*':
        ++m_at;
        return " minOccurs='0' maxOccurs='unbounded'";
      case '+':
        ++m_at;
        return " maxOccurs='unbounded'";
      case '{':
        break;
      default:
        return {};
    }
    const std::size_t comma = m_text.find(',', m_at);
    const std::size_t end = m_text.find('}', m_at);
    const std::string least = m_text.substr(m_at + 1, comma - m_at - 1);
    const std::string most = m_text.substr(comma + 1, end - comma - 1);
    m_at = end + 1;
    return " minOccurs='" + least + "' maxOccurs='" + (most == "*" ? "unbounded" : most) + "'";
  }

  std::string WriteLeaf() {
    if (m_text[m_at] == '[') {
      const std::size_t end = m_text.find(']', m_at);
      const std::string uri = m_text.substr(m_at + 1, end - m_at - 1);
      m_at = end + 1;
      return "<xs:any namespace='" + uri + "'" + TakeOccurrence() + "/>";
    }
    const std::size_t end = std::min(m_text.find_first_of("?*+{ ,|&)", m_at), m_text.size());
    const std::string name = m_text.substr(m_at, end - m_at);
    m_at = end;
    if (name.size() > 1) return "<xs:element ref='" + name + "'" + TakeOccurrence() + "/>";
    return "<xs:element name='" + name + "' type='xs:int'" + TakeOccurrence() + "/>";
  }

  std::string WriteGroup() {
    ++m_at;
    std::string inner;
    std::string kind = "sequence";
    for (SkipBlanks(); m_text[m_at] != ')'; SkipBlanks()) {
      if (m_text[m_at] == ',' || m_text[m_at] == '|' || m_text[m_at] == '&') {
        if (m_text[m_at] == '|') kind = "choice";
        if (m_text[m_at] == '&') kind = "all";
        ++m_at;
        continue;
      }
      inner += Write();
    }
    ++m_at;
    const std::string occurrence = TakeOccurrence();
    return "<xs:" + kind + occurrence + ">" + inner + "</xs:" + kind + ">";
  }

  const std::string m_text;
  std::size_t m_at = 0;
};

std::string Model(const std::string& text) {
  return text.empty() ? std::string() : CModelWriter(text).Write();
}

// Two that may stand for the head, and one that stands alone.
const char* const kGlobals =
    "<xs:element name='head' type='xs:decimal'/>"
    "<xs:element name='one' type='xs:int' substitutionGroup='head'/>"
    "<xs:element name='two' type='xs:short' substitutionGroup='head'/>"
    "<xs:element name='other' type='xs:int'/>";

std::string FindFault(const std::string& body) {
  SchemaTrial trial;
  trial.ReadBody(body + kGlobals);
  return trial.GetErrors();
}

std::string FindAmbiguity(const std::string& model) {
  return FindFault("<xs:complexType name='T'>" + Model(model) + "</xs:complexType>");
}

std::string FindRestrictionFault(const std::string& base, const std::string& restriction) {
  std::string text =
      FindFault("<xs:complexType name='B'>" + Model(base) +
                "</xs:complexType><xs:complexType name='T'><xs:complexContent>"
                "<xs:restriction base='B'>" +
                Model(restriction) + "</xs:restriction></xs:complexContent></xs:complexType>");
  const std::string prefix =
      "t.xsd: /xs:schema/xs:complexType[@name='T']: The content does not restrict that of the "
      "base: ";
  const std::string suffix = " (derivation-ok-restriction.5.4.2).";
  if (text.compare(0, prefix.size(), prefix) == 0) {
    text = text.substr(prefix.size(), text.size() - prefix.size() - suffix.size());
  }
  return text;
}

}  // namespace

TEST(ContentModel, HasOneParticleForEachElement) {
  const char* const models[] = {
      "(a?, b)",
      "(a{2,2}, a)",  // what repeats a fixed number of times says itself when it ends
      "((a, b?){2,2}, a)", "((a | b)*, c)",  "(a{0,2}, b)",     "((a, b)+, c)",
      "(a, (b, a)*)",      "((a?){0,2}, b)", "(a?, [##other])", "([urn:x]*, [urn:y])",
      "(one?, two?)",      "(other?, head)", "(a & b? & c)",    "(((a | b), c) | (d, a))",
  };
  for (const char* const model : models) EXPECT_EQ("", FindAmbiguity(model)) << model;
}

TEST(ContentModel, IsRefusedWhereTwoParticlesMayTakeOneElement) {
  const struct {
    const char* model;
    const char* first;
    const char* second;
  } cases[] = {
      {"(a?, a)", "'{urn:t}a'", "'{urn:t}a'"},
      {"(a{0,2}, a)", "'{urn:t}a'", "'{urn:t}a'"},
      {"(a{2,3}, a)", "'{urn:t}a'", "'{urn:t}a'"},
      {"((a, b) | (a, c))", "'{urn:t}a'", "'{urn:t}a'"},
      {"((a, b?)+, b)", "'{urn:t}b'", "'{urn:t}b'"},
      {"((a?, b?)*, b)", "'{urn:t}b'", "'{urn:t}b'"},
      {"((b, a?){2,2}, a)", "'{urn:t}a'", "'{urn:t}a'"},
      {"(a?, [##any])", "'{urn:t}a'", "a wildcard"},
      {"([##any]?, a)", "a wildcard", "'{urn:t}a'"},
      {"([##any]*, [##other])", "a wildcard", "a wildcard"},
      {"(head?, one)", "'{urn:t}head'", "'{urn:t}one'"},
      {"(two?, head)", "'{urn:t}two'", "'{urn:t}head'"},
      {"(other?, other)", "'{urn:t}other'", "'{urn:t}other'"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(std::string("t.xsd: /xs:schema/xs:complexType[@name='T']: The content model is "
                          "ambiguous: ") +
                  c.first + " and " + c.second + " may take the same element (cos-nonambig).",
              FindAmbiguity(c.model))
        << c.model;
  }
}

TEST(ContentModel, HasOneTypeForElementsOfOneName) {
  const std::string body =
      "<xs:complexType name='T'><xs:sequence><xs:element name='a' type='xs:int'/><xs:sequence>"
      "<xs:element name='b'/><xs:element name='a' type='xs:short'/></xs:sequence></xs:sequence>"
      "</xs:complexType>";
  EXPECT_EQ(
      "t.xsd: /xs:schema/xs:complexType[@name='T']: The elements '{urn:t}a' have different "
      "types in one content model (cos-element-consistent).",
      FindFault(body));
  EXPECT_EQ("", FindAmbiguity("(a, (b, a))"));
}

TEST(ContentModel, IsCheckedWithThatOfTheBase) {
  const std::string text =
      FindFault("<xs:complexType name='B'>" + Model("(a, b?)") +
                "</xs:complexType><xs:complexType name='T'><xs:complexContent>"
                "<xs:extension base='B'>" +
                Model("(b)") + "</xs:extension></xs:complexContent></xs:complexType>");
  EXPECT_EQ(
      "t.xsd: /xs:schema/xs:complexType[@name='T']: The content model is ambiguous: "
      "'{urn:t}b' and '{urn:t}b' may take the same element (cos-nonambig).",
      text);
}

TEST(ContentModel, RestrictsByTheRulesOfPart1Section3_9_6) {
  const struct {
    const char* base;
    const char* restriction;
  } cases[] = {
      {"(a, b?)", "(a)"},
      {"(a, b?)", "(a, b)"},
      {"(a*, b)", "(a{2,3}, b)"},
      {"(a?, b?)", ""},
      {"(a, (b, c))", "(a, b, c)"},  // a sequence in a sequence is pointless
      {"(a | b | c)", "(a | c)"},
      {"(a | b)", "(a)"},
      {"(a | b){0,5}", "(a, b, a)"},  // as many as the choice may repeat
      {"(a & b? & c)", "(c, a)"},     // all in any order
      {"(a & b?)", "(a)"},
      {"([##any]*)", "(a, b{2,2})"},
      {"([##any]{0,2})", "(other)"},
      {"([##any]*)", "([##other]?)"},
      {"(head)", "(head)"},
      {"(head*)", "((one | two)?)"},
      {"(head)", "(two)"},
      {"(a, [##other]*)", "(a)"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ("", FindRestrictionFault(c.base, c.restriction)) << c.base << " " << c.restriction;
  }
}

TEST(ContentModel, IsNoRestrictionWhereItTakesMore) {
  const struct {
    const char* base;
    const char* restriction;
    const char* fault;
  } cases[] = {
      {"(a, b)", "(a)", "the element '{urn:t}b' of the base is missing"},
      {"(a)", "(b)", "the element '{urn:t}b' stands where the base has the element '{urn:t}a'"},
      {"(a, b?)", "(a, b, c)", "the element '{urn:t}c' has no place in the base"},
      {"(a?)", "(a*)",
       "the element '{urn:t}a' may be there more or less often than the element '{urn:t}a' in the "
       "base"},
      {"(a, b)", "(a | b)", "a choice stands where the base has a sequence"},
      {"(a | b)", "([##any])", "the wildcard '##any' stands where the base has a choice"},
      {"(a | b)", "(a, b)",
       "a sequence has more or less members than the choice in the base may "
       "repeat"},
      {"([##other]*)", "(a)",
       "the element '{urn:t}a' is not of the wildcard '##other' in the base"},
      {"([##other])", "([##any])",
       "the wildcard '##any' lets more pass than the wildcard '##other' in the base"},
      {"([##any]?)", "(a, b)",
       "a sequence may be there more or less often than the wildcard '##any' in the base"},
      {"(a & b)", "(a)", "the element '{urn:t}b' of the base is missing"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.fault, FindRestrictionFault(c.base, c.restriction))
        << c.base << " " << c.restriction;
  }
}

TEST(ContentModel, RestrictsElementsByTheirTypesAndValues) {
  const struct {
    const char* base;
    const char* own;
    const char* fault;
  } cases[] = {
      {"type='xs:int'", "type='xs:short'", ""},
      {"type='xs:int'", "type='xs:string'",
       "the element '{urn:t}a' has a type that does not restrict that in the base"},
      {"type='xs:int'", "type='xs:int' nillable='true'",
       "the element '{urn:t}a' is nillable, and not in the base"},
      {"type='xs:int' nillable='true'", "type='xs:int'", ""},
      {"type='xs:int' fixed='5'", "type='xs:int' fixed='05'", ""},
      {"type='xs:int' fixed='5'", "type='xs:int' fixed='6'",
       "the element '{urn:t}a' has a fixed value in the base"},
      {"type='xs:int' block='extension'", "type='xs:int'",
       "the element '{urn:t}a' blocks less than in the base"},
      {"type='E'", "type='X'",
       "the element '{urn:t}a' has a type that does not restrict that in the base"},
  };
  for (const auto& c : cases) {
    const auto model = [](const std::string& attributes) {
      return "<xs:sequence><xs:element name='a' " + attributes + "/></xs:sequence>";
    };
    const std::string text = FindFault(
        "<xs:complexType name='E'/><xs:complexType name='X'><xs:complexContent>"
        "<xs:extension base='E'/></xs:complexContent></xs:complexType>"
        "<xs:complexType name='B'>" +
        model(c.base) +
        "</xs:complexType><xs:complexType name='T'><xs:complexContent><xs:restriction base='B'>" +
        model(c.own) + "</xs:restriction></xs:complexContent></xs:complexType>");
    const std::string expected =
        "t.xsd: /xs:schema/xs:complexType[@name='T']: The content does not restrict that of the "
        "base: " +
        std::string(c.fault) + " (derivation-ok-restriction.5.4.2).";
    EXPECT_EQ(*c.fault == '\0' ? "" : expected, text) << c.own;
  }
}

TEST(ContentModel, RestrictsTheKindOfContentAndAttributes) {
  const struct {
    const char* base;         // of a complex type
    const char* baseFlags;    // attributes of it
    const char* restriction;  // of xs:restriction
    const char* flags;        // attributes of xs:complexContent
    const char* message;
  } cases[] = {
      {"", "", "", "mixed='true'",
       "The content is mixed and that of the base is not (derivation-ok-restriction.5.4.1)."},
      {"<xs:sequence><xs:element name='a'/></xs:sequence>", "", "", "",
       "The content is empty and that of the base may not be (derivation-ok-restriction.5.3.2)."},
      {"", "", "<xs:sequence><xs:element name='a'/></xs:sequence>", "",
       "The content of the base is empty (derivation-ok-restriction.5)."},
      {"<xs:simpleContent><xs:extension base='xs:int'/></xs:simpleContent>", "", "", "",
       "The content of the base is simple (derivation-ok-restriction.5)."},
      {"<xs:attribute name='a' use='required'/>", "", "<xs:attribute name='a'/>", "",
       "The attribute 'a' is required by the base (derivation-ok-restriction.2.1.1)."},
      {"<xs:attribute name='a' type='xs:int'/>", "", "<xs:attribute name='a' type='xs:string'/>",
       "",
       "The attribute 'a' is not of a type that is derived from that in the base "
       "(derivation-ok-restriction.2.1.2)."},
      {"<xs:attribute name='a' fixed='1'/>", "", "<xs:attribute name='a'/>", "",
       "The attribute 'a' has in the base the fixed value [1] (derivation-ok-restriction.2.1.3)."},
      {"", "", "<xs:attribute name='a'/>", "",
       "The attribute 'a' is not in the base (derivation-ok-restriction.2.2)."},
      {"<xs:anyAttribute namespace='##local'/>", "", "<xs:attribute name='a'/>", "", nullptr},
      {"<xs:attribute name='a' use='required'/>", "", "<xs:attribute name='a' use='prohibited'/>",
       "", "The attribute 'a' is required by the base (derivation-ok-restriction.3)."},
      {"", "", "<xs:anyAttribute/>", "",
       "The base has no wildcard for attributes (derivation-ok-restriction.4.1)."},
      {"<xs:anyAttribute namespace='##other'/>", "", "<xs:anyAttribute/>", "",
       "The wildcard for attributes lets more pass than that of the base "
       "(derivation-ok-restriction.4.2)."},
      {"<xs:anyAttribute/>", "", "<xs:anyAttribute processContents='lax'/>", "",
       "The wildcard for attributes is weaker than that of the base "
       "(derivation-ok-restriction.4.3)."},
  };
  for (const auto& c : cases) {
    const std::string text =
        FindFault(std::string("<xs:complexType name='B' ") + c.baseFlags + ">" + c.base +
                  "</xs:complexType><xs:complexType name='T'><xs:complexContent " + c.flags +
                  "><xs:restriction base='B'>" + c.restriction +
                  "</xs:restriction></xs:complexContent></xs:complexType>");
    const std::string expected =
        c.message == nullptr
            ? ""
            : std::string("t.xsd: /xs:schema/xs:complexType[@name='T']: ") + c.message;
    EXPECT_EQ(expected, text) << c.restriction;
  }
}

TEST(ContentModel, EndsOnGroupsThatMultiply) {
  // Each group holds the one before twice: the last one 2^60 elements.
  std::string body =
      "<xs:group name='g0'><xs:sequence><xs:element name='a' type='xs:int'/>"
      "</xs:sequence></xs:group>";
  for (int i = 1; i <= 60; ++i) {
    const std::string former = "<xs:group ref='g" + std::to_string(i - 1) + "'/>";
    body += "<xs:group name='g" + std::to_string(i) + "'><xs:sequence>" + former + former +
            "</xs:sequence></xs:group>";
  }
  body +=
      "<xs:complexType name='B'><xs:group ref='g60'/></xs:complexType>"
      "<xs:complexType name='T'><xs:complexContent><xs:restriction base='B'>"
      "<xs:group ref='g60'/></xs:restriction></xs:complexContent></xs:complexType>"
      "<xs:complexType name='E'><xs:complexContent><xs:restriction base='B'/>"
      "</xs:complexContent></xs:complexType>";
  EXPECT_EQ(
      "t.xsd: /xs:schema/xs:complexType[@name='E']: The content is empty and that of the "
      "base may not be (derivation-ok-restriction.5.3.2).",
      FindFault(body));
}

TEST(ContentModel, EndsOnAttributeGroupsAndUnionsThatMultiply) {
  std::string attributes =
      "<xs:attributeGroup name='g0'><xs:attribute name='a'/>"
      "</xs:attributeGroup>";
  std::string unions = "<xs:simpleType name='u0'><xs:union memberTypes='xs:int'/></xs:simpleType>";
  for (int i = 1; i <= 40; ++i) {
    const std::string former = std::to_string(i - 1);
    const std::string own = std::to_string(i);
    attributes += "<xs:attributeGroup name='g" + own + "'><xs:attributeGroup ref='g" + former +
                  "'/><xs:attributeGroup ref='g" + former + "'/></xs:attributeGroup>";
    unions += "<xs:simpleType name='u" + own + "'><xs:union memberTypes='u" + former + " u" +
              former + "'/></xs:simpleType>";
  }
  const std::string text = FindFault(attributes);
  EXPECT_EQ(
      "t.xsd: /xs:schema/xs:attributeGroup[@name='g1']: The attribute 'a' is there twice "
      "(ct-props-correct.4).",
      text.substr(0, text.find('\n')));
  EXPECT_EQ(
      "t.xsd: /xs:schema/xs:simpleType[@name='u12']/xs:union: The union has more than 10000 "
      "member types, those of its members included.",
      FindFault(unions).substr(0, FindFault(unions).find('\n')));
}

TEST(ContentModel, EndsWhereTypesDeriveTooDeep) {
  std::string body;
  for (int i = 0; i < 3000; ++i) {
    body += "<xs:complexType name='t" + std::to_string(i) +
            "'><xs:complexContent><xs:extension base='t" + std::to_string(i + 1) +
            "'/></xs:complexContent></xs:complexType>";
  }
  const std::string text = FindFault(body + "<xs:complexType name='t3000'/>");
  EXPECT_EQ(
      "t.xsd: /xs:schema/xs:complexType[@name='t1000']: Components refer to one another too "
      "deep.",
      text.substr(0, text.find('\n')));
}

TEST(ContentModel, EndsOnChainsThatAreWrittenFromTheirBeginning) {
  // Each refers to the one before, which is finished then: nothing is in work, yet all is deep.
  std::string types = "<xs:complexType name='t0'/>";
  std::string groups = "<xs:group name='t0'><xs:sequence/></xs:group>";
  std::string unions = "<xs:simpleType name='t0'><xs:restriction base='xs:int'/></xs:simpleType>";
  std::string elements = "<xs:element name='t0' type='xs:int'/>";
  for (int i = 1; i < 1500; ++i) {
    const std::string former = std::to_string(i - 1);
    const std::string name = " name='t" + std::to_string(i) + "'";
    types += "<xs:complexType" + name + "><xs:complexContent><xs:extension base='t" + former +
             "'/></xs:complexContent></xs:complexType>";
    groups +=
        "<xs:group" + name + "><xs:choice><xs:group ref='t" + former + "'/></xs:choice></xs:group>";
    unions +=
        "<xs:simpleType" + name + "><xs:union memberTypes='t" + former + "'/></xs:simpleType>";
    elements += "<xs:element substitutionGroup='t" + former + "'" + name + "/>";
  }
  const struct {
    const std::string& body;
    const char* expected;
  } cases[] = {
      {types,
       "t.xsd: /xs:schema/xs:complexType[@name='t1000']: Components refer to one another too "
       "deep."},
      {groups,
       "t.xsd: /xs:schema/xs:group[@name='t1000']/xs:choice: Components refer to one another too "
       "deep."},
      {unions,
       "t.xsd: /xs:schema/xs:simpleType[@name='t1000']: Components refer to one another too deep."},
      {elements,
       "t.xsd: /xs:schema/xs:element[@name='t101']: Elements may stand for one another too deep."},
  };
  for (const auto& c : cases) {
    const std::string text = FindFault(c.body);
    EXPECT_EQ(c.expected, text.substr(0, text.find('\n')));
  }
}
