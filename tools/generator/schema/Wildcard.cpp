#include "tools/generator/schema/Wildcard.h"

#include <algorithm>

namespace qzxml::generator {

namespace {

using Names = std::vector<std::string>;

bool Contains(const Names& names, const std::string& name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

bool IsSubset(const Names& inner, const Names& outer) {
  return std::all_of(inner.begin(), inner.end(),
                     [&](const std::string& name) { return Contains(outer, name); });
}

bool AreSame(const NamespaceConstraint& a, const NamespaceConstraint& b) {
  return a.kind == b.kind && IsSubset(a.namespaces, b.namespaces) &&
         IsSubset(b.namespaces, a.namespaces);
}

// The names of a list that are neither of the other's.
Names Without(const Names& names, const std::string& a, const std::string& b) {
  Names rest;
  for (const std::string& name : names) {
    if (name != a && name != b) rest.push_back(name);
  }
  return rest;
}

// A negation and a list: section 3.10.6, union, clause 5.
std::optional<NamespaceConstraint> UniteNotWithList(const NamespaceConstraint& negation,
                                                    const Names& list) {
  const std::string& name = negation.namespaces[0];
  const bool hasName = Contains(list, name);
  const bool hasAbsent = Contains(list, "");
  NamespaceConstraint any;
  NamespaceConstraint notAbsent{NamespaceConstraint::Kind_Not, {""}};
  if (name.empty()) {  // clause 6: not absent
    return hasAbsent ? any : notAbsent;
  }
  if (hasName && hasAbsent) return any;
  if (hasName) return notAbsent;
  if (hasAbsent) return std::nullopt;
  return negation;
}

}  // namespace

bool NamespaceConstraint::Allows(const std::string& uri) const {
  switch (kind) {
    case Kind_Any:
      return true;
    case Kind_Not:
      return !uri.empty() && uri != namespaces[0];
    case Kind_List:
      break;
  }
  return Contains(namespaces, uri);
}

bool NamespaceConstraint::IsSubsetOf(const NamespaceConstraint& other) const {
  if (other.kind == Kind_Any) return true;
  if (kind == Kind_Any) return false;
  if (kind == Kind_Not)
    return other.kind == Kind_Not && (AreSame(*this, other) || other.namespaces[0].empty());
  return std::all_of(namespaces.begin(), namespaces.end(),
                     [&](const std::string& name) { return other.Allows(name); });
}

std::optional<NamespaceConstraint> NamespaceConstraint::Unite(const NamespaceConstraint& a,
                                                              const NamespaceConstraint& b) {
  if (AreSame(a, b)) return a;
  if (a.kind == Kind_Any || b.kind == Kind_Any) return NamespaceConstraint{};
  if (a.kind == Kind_List && b.kind == Kind_List) {
    NamespaceConstraint both = a;
    for (const std::string& name : b.namespaces) {
      if (!Contains(both.namespaces, name)) both.namespaces.push_back(name);
    }
    return both;
  }
  if (a.kind == Kind_Not && b.kind == Kind_Not) return NamespaceConstraint{Kind_Not, {""}};
  return a.kind == Kind_Not ? UniteNotWithList(a, b.namespaces) : UniteNotWithList(b, a.namespaces);
}

std::optional<NamespaceConstraint> NamespaceConstraint::Intersect(const NamespaceConstraint& a,
                                                                  const NamespaceConstraint& b) {
  if (AreSame(a, b) || b.kind == Kind_Any) return a;
  if (a.kind == Kind_Any) return b;
  if (a.kind == Kind_List && b.kind == Kind_List) {
    NamespaceConstraint both{Kind_List, {}};
    for (const std::string& name : a.namespaces) {
      if (Contains(b.namespaces, name)) both.namespaces.push_back(name);
    }
    return both;
  }
  if (a.kind == Kind_Not && b.kind == Kind_Not) {
    if (a.namespaces[0].empty()) return b;
    if (b.namespaces[0].empty()) return a;
    return std::nullopt;
  }
  const NamespaceConstraint& negation = a.kind == Kind_Not ? a : b;
  const NamespaceConstraint& list = a.kind == Kind_Not ? b : a;
  return NamespaceConstraint{Kind_List, Without(list.namespaces, negation.namespaces[0], "")};
}

std::string NamespaceConstraint::ToText(const std::string& targetNamespace) const {
  if (kind == Kind_Any) return "##any";
  if (kind == Kind_Not) return "##other";
  std::string text;
  for (const std::string& name : namespaces) {
    if (!text.empty()) text += ' ';
    if (name.empty()) {
      text += "##local";
    } else {
      text += name == targetNamespace ? "##targetNamespace" : name;
    }
  }
  return text;
}

}  // namespace qzxml::generator
