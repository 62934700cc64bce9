#include "qzxml/xml/ScopedAliases.h"

#include "qzxml/xml/XmlDocumentNodes.h"

namespace QzXmlLib16::detail {

void CScopedAliases::Declare(const std::string& name, const std::string& uri) {
  Alias& alias = m_aliases[name];
  m_changes.push_back({&alias, alias.inForce});
  if (alias.inForce != nullptr && *alias.inForce == uri) return;
  alias.inForce = &*m_uris.insert(uri).first;
  if (alias.first == nullptr) alias.first = alias.inForce;
  if (alias.first != alias.inForce) m_isAmbiguous = true;
}

void CScopedAliases::EndDeclaration() {
  if (m_changes.empty()) return;
  m_changes.back().alias->inForce = m_changes.back().before;
  m_changes.pop_back();
}

void CScopedAliases::Note(const CXmlElement& element, std::string_view name) {
  const auto alias = m_aliases.find(name);
  m_noted[&element] = alias != m_aliases.end() ? alias->second.inForce : nullptr;
}

const std::string* CScopedAliases::Find(const CXmlElement& element, std::string_view name) const {
  if (!m_isAmbiguous) return nullptr;
  const auto noted = m_noted.find(&element);
  if (noted != m_noted.end()) return noted->second != nullptr ? noted->second : &NoText();
  const auto alias = m_aliases.find(name);
  return alias != m_aliases.end() ? alias->second.first : &NoText();
}

void CScopedAliases::Clear() {
  m_aliases.clear();
  m_changes.clear();
  m_uris.clear();
  m_noted.clear();
  m_isAmbiguous = false;
}

}  // namespace QzXmlLib16::detail
