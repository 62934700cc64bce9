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
std::string CNamespaceScopes::FindPrefix(const std::string& uri) const {
  for (const auto& [prefix, uris] : m_scope) {
    if (!prefix.empty() && !uris.empty() && uris.back() == uri) return prefix;
  }
  return "";
}

std::string CNamespaceScopes::MakePrefix() const {
  for (unsigned number = 1;; ++number) {
    std::string prefix = "ns" + std::to_string(number);
    if (GetUri(prefix).empty()) return prefix;
  }
}

// Whether the element itself declares or uses the prefix already.
bool CNamespaceScopes::IsTaken(const CWrittenNames& names, const std::string& prefix) const {
  const auto isIt = [&](const CContentDeclaration& d) { return d.prefix == prefix; };
  return prefix == "xml" || prefix == "xmlns" ||
         std::any_of(names.declarations.begin(), names.declarations.end(), isIt) ||
         std::find(m_used.begin(), m_used.end(), prefix) != m_used.end();
}

void CNamespaceScopes::Declare(CWrittenNames& names, const std::string& prefix,
                               const std::string& uri) {
  names.declarations.push_back({prefix, uri});
  m_scope[prefix].push_back(uri);
  m_declared.back().push_back(prefix);
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
    if ((prefix.empty() && isAttribute) || IsTaken(names, prefix)) prefix = FindPrefix(name.uri);
    if (prefix.empty() && (isAttribute || IsTaken(names, prefix))) prefix = MakePrefix();
    if (GetUri(prefix) != name.uri) Declare(names, prefix, name.uri);
  }
  m_used.push_back(prefix);
  return prefix;
}

CWrittenNames CNamespaceScopes::Enter(const CContentElement& element) {
  CWrittenNames names;
  m_used.clear();
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
