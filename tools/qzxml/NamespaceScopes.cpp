#include "tools/qzxml/NamespaceScopes.h"

#include <algorithm>

namespace qztool {
namespace {

constexpr char kXmlNamespace[] = "http://www.w3.org/XML/1998/namespace";

}  // namespace

CNamespaceScopes::CNamespaceScopes() { m_scope["xml"].push_back(kXmlNamespace); }

const std::string& CNamespaceScopes::GetUri(const std::string& prefix) const {
  static const std::string none;
  const auto found = m_scope.find(prefix);
  return found == m_scope.end() || found->second.empty() ? none : found->second.back();
}

// A prefix, not the empty one, that stands for the namespace here; "" for none.
std::string CNamespaceScopes::FindPrefix(const std::string& uri) {
  std::vector<std::string>& prefixes = m_prefixes[uri];
  while (!prefixes.empty() && GetUri(prefixes.back()) != uri) prefixes.pop_back();
  return prefixes.empty() ? "" : prefixes.back();
}

std::string CNamespaceScopes::MakePrefix() {
  std::string prefix;
  do {
    prefix = "ns" + std::to_string(++m_made);
  } while (!GetUri(prefix).empty() || m_taken.count(prefix) != 0);
  return prefix;
}

void CNamespaceScopes::Declare(CWrittenNames& names, const std::string& prefix,
                               const std::string& uri) {
  names.declarations.push_back({prefix, uri});
  m_scope[prefix].push_back(uri);
  if (!prefix.empty()) m_prefixes[uri].push_back(prefix);
  m_declared.back().push_back(prefix);
  m_taken.insert(prefix);
}

std::string CNamespaceScopes::Bind(CWrittenNames& names, const CContentName& name,
                                   bool isAttribute) {
  std::string prefix = name.prefix;
  if (name.uri == kXmlNamespace) {
    prefix = "xml";
  } else if (name.uri.empty()) {
    prefix.clear();
    if (isAttribute) return prefix;
    if (!GetUri("").empty()) {
      // A default namespace that the element itself declares would take it in.
      const auto isDefault = [](const CContentDeclaration& d) { return d.prefix.empty(); };
      auto& own = names.declarations;
      own.erase(std::remove_if(own.begin(), own.end(), isDefault), own.end());
      Declare(names, "", "");
    }
  } else if (prefix.empty() ? isAttribute || GetUri("") != name.uri : GetUri(prefix) != name.uri) {
    const auto isTaken = [this](const std::string& p) { return m_taken.count(p) != 0; };
    if ((prefix.empty() && isAttribute) || isTaken(prefix)) prefix = FindPrefix(name.uri);
    if (prefix.empty() && (isAttribute || isTaken(prefix))) prefix = MakePrefix();
    if (GetUri(prefix) != name.uri) Declare(names, prefix, name.uri);
  }
  m_taken.insert(prefix);
  return prefix;
}

CWrittenNames CNamespaceScopes::Enter(const CContentElement& element) {
  CWrittenNames names;
  m_taken = {"xml", "xmlns"};
  m_declared.emplace_back();
  for (const CContentDeclaration& declaration : element.declarations) {
    if (declaration.prefix != "xml") Declare(names, declaration.prefix, declaration.uri);
  }
  const auto join = [](const std::string& prefix, const std::string& localName) {
    return prefix.empty() ? localName : prefix + ':' + localName;
  };
  names.element = join(Bind(names, *element.name, false), element.name->localName);
  for (const CContentAttribute& attribute : element.attributes) {
    names.attributes.push_back(join(Bind(names, *attribute.name, true), attribute.name->localName));
  }
  return names;
}

void CNamespaceScopes::Leave() {
  for (const std::string& prefix : m_declared.back()) m_scope[prefix].pop_back();
  m_declared.pop_back();
}

}  // namespace qztool
