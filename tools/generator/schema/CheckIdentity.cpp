#include <string_view>

#include "tools/generator/schema/SchemaBuilder.h"

// Identity constraints. They are not bound, but what is wrong with them is told.
// Source: XML Schema 1.0 part 1, section 3.11.

namespace qzxml::generator {

namespace {

// The part of XPath that selectors and fields may use, read token by token:
//
//   Selector ::= Path ( '|' Path )*
//   Path     ::= ('.//')? Step ( '/' Step )*          in a field the last step may be @NameTest
//   Step     ::= '.' | ('child' '::')? NameTest
//   NameTest ::= QName | '*' | NCName ':' '*'
class CPathReader {
 public:
  CPathReader(const std::string& text, bool isField, const NamespaceBindings& scope)
      : m_left(text), m_isField(isField), m_scope(scope) {}

  bool IsValid() {
    do {
      if (!ReadPath()) return false;
    } while (Take("|"));
    SkipBlanks();
    return m_left.empty();
  }

  // The prefix without declaration that was met; empty for none.
  const std::string& GetUnknownPrefix() const { return m_unknownPrefix; }

 private:
  void SkipBlanks() {
    const std::size_t begin = m_left.find_first_not_of(" \t\n\r");
    m_left.remove_prefix(begin == std::string_view::npos ? m_left.size() : begin);
  }

  bool Take(std::string_view token) {
    SkipBlanks();
    if (m_left.substr(0, token.size()) != token) return false;
    m_left.remove_prefix(token.size());
    return true;
  }

  bool ReadPath() {
    if (TakeDescendants() && !ReadAnyStep()) return false;
    if (!m_readStep && !ReadAnyStep()) return false;
    while (!m_isAttribute && Take("/")) {
      if (!ReadAnyStep()) return false;
    }
    m_isAttribute = false;
    m_readStep = false;
    return true;
  }

  // "." "//" with blanks between them, at the beginning alone.
  bool TakeDescendants() {
    const std::string_view before = m_left;
    if (Take(".") && Take("//")) return true;
    m_left = before;
    return false;
  }

  bool ReadAnyStep() {
    m_readStep = true;
    if (m_isField && (Take("@") || TakeAxis("attribute"))) {
      m_isAttribute = true;
      return ReadNameTest();
    }
    if (Take(".")) return true;
    TakeAxis("child");
    return ReadNameTest();
  }

  bool TakeAxis(std::string_view name) {
    const std::string_view before = m_left;
    if (Take(name) && Take("::")) return true;
    m_left = before;
    return false;
  }

  bool ReadNameTest() {
    if (Take("*")) return true;
    const std::string first = TakeName();
    if (first.empty()) return false;
    if (m_left.substr(0, 1) != ":" || m_left.substr(0, 2) == "::") return true;
    m_left.remove_prefix(1);
    if (m_scope.count(first) == 0) m_unknownPrefix = first;
    if (m_left.substr(0, 1) == "*") {
      m_left.remove_prefix(1);
      return true;
    }
    return !m_left.empty() && !TakeName().empty();
  }

  // An NCName, which goes up to the next character that can not be of one.
  std::string TakeName() {
    SkipBlanks();
    const std::size_t end = m_left.find_first_of(" \t\n\r/|.@:*[]()='\"!<>$,;");
    std::string name(m_left.substr(0, FindNameEnd(end)));
    if (!IsValueOf(BuiltIn_NCName, name)) return {};
    m_left.remove_prefix(name.size());
    return name;
  }

  // A dot is part of a name, unless it stands first.
  std::size_t FindNameEnd(std::size_t end) const {
    while (end != std::string_view::npos && end > 0 && m_left[end] == '.') {
      end = m_left.find_first_of(" \t\n\r/|.@:*[]()='\"!<>$,;", end + 1);
    }
    return end;
  }

  std::string_view m_left;
  const bool m_isField;
  const NamespaceBindings& m_scope;
  std::string m_unknownPrefix;
  bool m_isAttribute = false;
  bool m_readStep = false;
};

void CheckPath(BuildState& state, const SchemaNode& node, bool isField) {
  const std::string text = node.Get("xpath");
  CPathReader reader(text, isField, *node.scope);
  const char* const rule = isField ? "c-fields-xpaths" : "c-selector-xpath";
  if (!reader.IsValid()) {
    state.Error(node, "The path [" + text + "] is not of the part of XPath that is allowed here (" +
                          rule + ").");
  } else if (!reader.GetUnknownPrefix().empty()) {
    state.Error(node, "The prefix '" + reader.GetUnknownPrefix() + "' of the path [" + text +
                          "] is not declared (" + rule + ").");
  }
}

void CheckKeyref(BuildState& state, const SchemaNode& node, IdentityConstraint& keyref) {
  const auto* const refer = static_cast<const IdentityConstraint*>(
      ResolveName(state, node, *node.Find("refer"), SymbolSpace_Identity));
  keyref.refer = refer;
  if (refer == nullptr) return;
  if (refer->identityKind == IdentityKind_Keyref) {
    state.Error(node, "A keyref refers to a key or a unique (c-props-correct.1).");
  } else if (refer->fields.size() != keyref.fields.size()) {
    state.Error(node,
                "A keyref has as many fields as the constraint that it refers to "
                "(c-props-correct.2).");
  }
}

}  // namespace

void CheckIdentityConstraints(BuildState& state) {
  for (const Made<IdentityConstraint>& made : state.identityConstraints) {
    for (const auto& child : made.node->children) {
      if (child->Is("selector")) CheckPath(state, *child, false);
      if (child->Is("field")) CheckPath(state, *child, true);
    }
    if (made.component->identityKind == IdentityKind_Keyref) {
      CheckKeyref(state, *made.node, *made.component);
    }
    state.diagnostics.Warning(*made.node, "Identity constraints are not bound: '" +
                                              made.component->name.ToString() +
                                              "' is not checked by what is generated.");
  }
}

}  // namespace qzxml::generator
