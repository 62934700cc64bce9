#include "tools/generator/schema/SchemaSyntax.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "qzxml/xml/XmlElement.h"
#include "qzxml/xml/XmlNamespaces.h"
#include "tools/generator/schema/Diagnostics.h"
#include "tools/generator/schema/SchemaSyntaxTable.h"
#include "tools/generator/schema/SchemaTree.h"
#include "tools/generator/schema/ValueCheck.h"

namespace qzxml::generator {

namespace {

// ---- The table, taken apart once ----

struct AttributeRule {
  std::string kind;
  bool isRequired = false;
};

struct Form;

struct Position {
  std::map<std::string, const Form*, std::less<>> elements;
  bool isOptional = false;
  bool isRepeated = false;
};

struct Form {
  std::map<std::string, AttributeRule, std::less<>> attributes;
  std::vector<Position> positions;
  bool takesAnything = false;
};

std::vector<std::string> SplitAt(std::string_view text, char separator) {
  std::vector<std::string> parts;
  while (true) {
    const std::size_t end = text.find(separator);
    parts.push_back(Trim(text.substr(0, end)));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

class CForms {
 public:
  CForms() {
    for (const SyntaxForm& row : kSyntaxForms) Fill(m_forms[row.name], row);
  }

  const Form& Get(const std::string& name) const { return m_forms.at(name); }

 private:
  void Fill(Form& form, const SyntaxForm& row) {
    form.takesAnything = std::string_view(row.content) == "any";
    for (const std::string& word : SplitWords(row.attributes)) {
      const std::size_t colon = word.find(':');
      const bool isRequired = word.back() == '!';
      const std::size_t length = word.size() - colon - 1 - (isRequired ? 1 : 0);
      form.attributes[word.substr(0, colon)] = {word.substr(colon + 1, length), isRequired};
    }
    if (form.takesAnything) return;
    form.attributes["id"] = {"ID", false};
    for (std::string& text : SplitAt(row.content, ';'))
      form.positions.push_back(MakePosition(text));
  }

  Position MakePosition(std::string& text) {
    Position position;
    const char last = text.back();
    position.isOptional = last == '?' || last == '*';
    position.isRepeated = last == '*' || last == '+';
    if (position.isOptional || position.isRepeated) text.pop_back();
    for (const std::string& alternative : SplitAt(text, '|')) {
      const std::size_t equals = alternative.find('=');
      const std::string element = alternative.substr(0, equals);
      position.elements[element] =
          &m_forms[equals == std::string::npos ? element : alternative.substr(equals + 1)];
    }
    return position;
  }

  std::map<std::string, Form> m_forms;  // whose places do not change
};

const CForms& GetForms() {
  static const CForms forms;
  return forms;
}

// ---- What attributes hold ----

bool IsOneOf(const std::string& text, std::initializer_list<const char*> words) {
  return std::any_of(words.begin(), words.end(), [&](const char* word) { return text == word; });
}

bool IsDerivationSet(const std::string& text, std::initializer_list<const char*> words) {
  if (text == "#all") return true;
  for (const std::string& word : SplitWords(text)) {
    if (!IsOneOf(word, words)) return false;
  }
  return true;
}

bool IsWildcardNamespace(const std::string& text) {
  if (IsOneOf(text, {"##any", "##other"})) return true;
  for (const std::string& word : SplitWords(text)) {
    if (IsOneOf(word, {"##targetNamespace", "##local"})) continue;
    if (word.compare(0, 2, "##") == 0 || !IsValueOf(BuiltIn_anyURI, word)) return false;
  }
  return true;
}

bool AreQNames(const std::string& text) {
  const std::vector<std::string> words = SplitWords(text);
  return std::all_of(words.begin(), words.end(),
                     [](const std::string& word) { return IsValueOf(BuiltIn_QName, word); });
}

struct ValueKind {
  const char* name;
  bool (*takes)(const std::string& trimmed);
  const char* expected;  // for the message
};

const ValueKind kKinds[] = {
    {"text", [](const std::string&) { return true; }, ""},
    {"ID", [](const std::string& s) { return IsValueOf(BuiltIn_NCName, s); },
     "a name without colon"},
    {"NCName", [](const std::string& s) { return IsValueOf(BuiltIn_NCName, s); },
     "a name without colon"},
    {"QName", [](const std::string& s) { return IsValueOf(BuiltIn_QName, s); },
     "a name with or without prefix"},
    {"QNames", [](const std::string& s) { return AreQNames(s); }, "names with or without prefix"},
    {"uri", [](const std::string& s) { return IsValueOf(BuiltIn_anyURI, s); }, "a URI"},
    {"name", [](const std::string& s) { return !s.empty() && IsValueOf(BuiltIn_anyURI, s); },
     "the name of a namespace, which is not empty"},
    {"boolean",
     [](const std::string& s) {
       return IsOneOf(s, {"true", "false", "1", "0"});
     },
     "true, false, 1 or 0"},
    {"count", [](const std::string& s) { return IsValueOf(BuiltIn_nonNegativeInteger, s); },
     "a whole number that is not negative"},
    {"positive", [](const std::string& s) { return IsValueOf(BuiltIn_positiveInteger, s); },
     "a whole number above 0"},
    {"max",
     [](const std::string& s) {
       return s == "unbounded" || IsValueOf(BuiltIn_nonNegativeInteger, s);
     },
     "a whole number that is not negative, or unbounded"},
    {"zeroOrOne",
     [](const std::string& s) {
       return IsOneOf(s, {"0", "1"});
     },
     "0 or 1, for xs:all (cos-all-limited.2)"},
    {"one", [](const std::string& s) { return s == "1"; }, "1, for xs:all (cos-all-limited.1)"},
    {"form",
     [](const std::string& s) {
       return IsOneOf(s, {"qualified", "unqualified"});
     },
     "qualified or unqualified"},
    {"use",
     [](const std::string& s) {
       return IsOneOf(s, {"optional", "required", "prohibited"});
     },
     "optional, required or prohibited"},
    {"process",
     [](const std::string& s) {
       return IsOneOf(s, {"strict", "lax", "skip"});
     },
     "strict, lax or skip"},
    {"wildcard", [](const std::string& s) { return IsWildcardNamespace(s); },
     "##any, ##other, or a list of URIs, ##targetNamespace and ##local"},
    {"whiteSpace",
     [](const std::string& s) {
       return IsOneOf(s, {"preserve", "replace", "collapse"});
     },
     "preserve, replace or collapse"},
    {"derivations",
     [](const std::string& s) {
       return IsDerivationSet(s, {"extension", "restriction"});
     },
     "#all, or a list of extension and restriction"},
    {"elementBlock",
     [](const std::string& s) {
       return IsDerivationSet(s, {"extension", "restriction", "substitution"});
     },
     "#all, or a list of extension, restriction and substitution"},
    {"typeFinal",
     [](const std::string& s) {
       return IsDerivationSet(s, {"extension", "restriction", "list", "union"});
     },
     "#all, or a list of extension, restriction, list and union"},
    {"simpleFinal",
     [](const std::string& s) {
       return IsDerivationSet(s, {"restriction", "list", "union"});
     },
     "#all, or a list of restriction, list and union"},
};

const ValueKind& GetKind(const std::string& name) {
  return *std::find_if(std::begin(kKinds), std::end(kKinds),
                       [&](const ValueKind& kind) { return name == kind.name; });
}

// ---- The walk ----

class CSyntaxCheck {
 public:
  explicit CSyntaxCheck(CDiagnostics& diagnostics) : m_diagnostics(diagnostics) {}

  bool IsSound() const { return m_isSound; }

  void Check(const SchemaNode& node, const Form& form) {
    CheckAttributes(node, form);
    if (form.takesAnything) return;
    if (!Trim(node.text).empty()) {
      m_diagnostics.Error(node,
                          "There is text, which stands only in xs:documentation and "
                          "xs:appinfo.");
    }
    CheckContent(node, form);
  }

 private:
  void CheckAttributes(const SchemaNode& node, const Form& form) {
    for (const SchemaNode::Attribute& attribute : node.attributes) {
      CheckAttribute(node, form, attribute);
    }
    for (const auto& [name, rule] : form.attributes) {
      if (rule.isRequired && node.Find(name) == nullptr) {
        m_isSound = false;
        m_diagnostics.Error(node, "The attribute '" + name + "' is missing.");
      }
    }
  }

  void CheckAttribute(const SchemaNode& node, const Form& form,
                      const SchemaNode::Attribute& attribute) {
    const QName& name = attribute.name;
    if (!name.namespaceUri.empty()) {
      if (name.namespaceUri == kSchemaNamespace) {
        m_diagnostics.Error(node, "The attribute '" + name.localName +
                                      "' stands without the namespace of XML Schema.");
      } else if (name == QName{QzXmlLib16::kXmlNamespace, "lang"} &&
                 !IsValueOf(BuiltIn_language, attribute.value) && !attribute.value.empty()) {
        m_diagnostics.Error(node, "The value [" + attribute.value +
                                      "] of the attribute 'xml:lang' is not a language.");
      }
      return;
    }
    const auto rule = form.attributes.find(name.localName);
    if (rule == form.attributes.end()) {
      m_isSound = false;
      m_diagnostics.Error(node, "The attribute '" + name.localName + "' is not allowed here.");
      return;
    }
    const std::string value = Trim(attribute.value);
    const ValueKind& kind = GetKind(rule->second.kind);
    if (!kind.takes(value)) {
      m_isSound = false;
      m_diagnostics.Error(node, "The value [" + attribute.value + "] of the attribute '" +
                                    name.localName + "' is not " + kind.expected + ".");
    } else if (rule->second.kind == "ID" && !m_ids.insert(value).second) {
      m_diagnostics.Error(node, "The id '" + value + "' is there more than once.");
    }
  }

  void CheckContent(const SchemaNode& node, const Form& form) {
    std::size_t at = 0;     // the position of the form
    std::size_t count = 0;  // elements at it so far
    bool hasContentModel = false;
    for (const auto& child : node.children) {
      const Form* childForm = nullptr;
      if (child->name.namespaceUri == kSchemaNamespace) {
        childForm = Place(*child, form, at, count);
      }
      if (childForm == nullptr || (hasContentModel && !child->Is("annotation"))) {
        m_isSound = false;
        m_diagnostics.Error(
            *child, "The element '" + child->element->GetLocalName() + "' is not allowed here.");
        continue;
      }
      hasContentModel =
          hasContentModel || child->Is("simpleContent") || child->Is("complexContent");
      Check(*child, *childForm);
    }
    CheckEnd(node, form, at, count);
  }

  // The form of the child at this or a later position, which is where the next one begins; null for
  // one that has no place.
  static const Form* Place(const SchemaNode& child, const Form& form, std::size_t& at,
                           std::size_t& count) {
    std::size_t there = count;
    for (std::size_t i = at; i < form.positions.size(); ++i, there = 0) {
      const Position& position = form.positions[i];
      const auto found = position.elements.find(child.name.localName);
      if (found != position.elements.end() && (there == 0 || position.isRepeated)) {
        at = i;
        count = there + 1;
        return found->second;
      }
      if (there == 0 && !position.isOptional) return nullptr;
    }
    return nullptr;
  }

  void CheckEnd(const SchemaNode& node, const Form& form, std::size_t at, std::size_t count) {
    for (std::size_t i = at; i < form.positions.size(); ++i, count = 0) {
      const Position& position = form.positions[i];
      if (count > 0 || position.isOptional) continue;
      std::string expected;
      for (const auto& element : position.elements) {
        expected += (expected.empty() ? "'" : " or '") + element.first + "'";
      }
      m_isSound = false;
      m_diagnostics.Error(node, "The element " + expected + " is missing.");
      return;
    }
  }

  CDiagnostics& m_diagnostics;
  std::set<std::string> m_ids;
  bool m_isSound = true;
};

}  // namespace

bool CheckSyntax(const SchemaNode& schema, CDiagnostics& diagnostics) {
  CSyntaxCheck check(diagnostics);
  check.Check(schema, GetForms().Get("schema"));
  return check.IsSound();
}

}  // namespace qzxml::generator
