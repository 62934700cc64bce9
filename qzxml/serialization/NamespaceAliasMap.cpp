#include "qzxml/serialization/NamespaceAliasMap.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "qzxml/platform/Assert.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/TextOrEmpty.h"

namespace QzXmlLib16 {

using detail::TextOrEmpty;

CNamespaceAliasMap::CNamespaceAliasMap() = default;
CNamespaceAliasMap::CNamespaceAliasMap(const CNamespaceAliasMap&) = default;
CNamespaceAliasMap& CNamespaceAliasMap::operator=(const CNamespaceAliasMap&) = default;
CNamespaceAliasMap::~CNamespaceAliasMap() = default;

void CNamespaceAliasMap::Add(const char* alias, const char* namespaceUri) {
  m_aliases.insert_or_assign(TextOrEmpty(namespaceUri), TextOrEmpty(alias));
}

void CNamespaceAliasMap::RemoveNamespace(const char* namespaceUri) {
  m_aliases.erase(TextOrEmpty(namespaceUri));
}

CNamespaceAliasMap::Map::const_iterator CNamespaceAliasMap::FindAlias(const char* alias) const {
  const std::string_view wanted = TextOrEmpty(alias);
  return std::find_if(m_aliases.begin(), m_aliases.end(),
                      [wanted](const Map::value_type& entry) { return entry.second == wanted; });
}

std::string CNamespaceAliasMap::GetNamespaceFromAlias(const char* alias) const {
  const Map::const_iterator found = FindAlias(alias);
  if (found == m_aliases.end()) {
    throw CQzException(FormatString("Namespace alias [%s] not found", TextOrEmpty(alias)));
  }
  return found->first;
}

std::string CNamespaceAliasMap::GetAliasFromNamespace(const char* namespaceUri) const {
  // Looks first, so that threads which ask for what is there do not write.
  const Map::const_iterator found = m_aliases.find(TextOrEmpty(namespaceUri));
  if (found != m_aliases.end()) return found->second;
  m_aliases.emplace(TextOrEmpty(namespaceUri), std::string());
  return std::string();
}

bool CNamespaceAliasMap::DoesNamespaceExist(const char* namespaceUri) const {
  return m_aliases.find(TextOrEmpty(namespaceUri)) != m_aliases.end();
}

bool CNamespaceAliasMap::DoesAliasExist(const char* alias) const {
  return FindAlias(alias) != m_aliases.end();
}

int CNamespaceAliasMap::GetNamespaceCount() const { return static_cast<int>(m_aliases.size()); }

std::string CNamespaceAliasMap::GetNamespaceAt(int index) const {
  const bool within = index >= 0 && index < GetNamespaceCount();
  QZ_ASSERT_TEXT(within, "index >= 0 && index < GetNamespaceCount()");
  if (!within) return std::string();
  return std::next(m_aliases.begin(), index)->first;
}

}  // namespace QzXmlLib16
