#include "qzxml/xml/XmlWriterScopes.h"

#include <utility>

namespace QzXmlLib16::detail {
namespace {

constexpr std::uint32_t kLetters = 26;
constexpr std::size_t kManyMappings = 8;  // to look through for an alias

// "AA" to "ZZ" for the first 676, "AAA" to "ZZZ" for those behind them, and so on.
std::string AliasAt(std::uint32_t index) {
  std::size_t length = 2;
  std::uint64_t count = kLetters * kLetters;
  std::uint64_t rest = index;
  while (rest >= count) {
    rest -= count;
    count *= kLetters;
    ++length;
  }
  std::string alias(length, 'A');
  for (std::size_t i = length; i > 0; --i) {
    alias[i - 1] = static_cast<char>('A' + rest % kLetters);
    rest /= kLetters;
  }
  return alias;
}

}  // namespace

XmlWriterScopes::XmlWriterScopes()
    : m_pLast(nullptr), m_state(1), m_lastState(1), m_bAliasesCounted(false), m_nextAlias(0) {}

void XmlWriterScopes::Reset(const Map& declared) {
  if (m_map != declared) m_map = declared;
  m_changes.clear();
  m_pLast = nullptr;
  m_aliases.clear();
  m_bAliasesCounted = false;
  m_nextAlias = 0;
  SetChanged();
}

bool XmlWriterScopes::Renew() {
  m_state = m_lastState = 1;
  m_changes.clear();
  m_spare.clear();
  const bool isSmall = m_map.size() <= kSmall && m_changes.capacity() <= kSmall &&
                       m_spare.capacity() <= kSmall && m_aliases.empty();
  if (!isSmall) return false;
  for (const auto& [uri, alias] : m_map) {
    if (uri.capacity() > kSmallText || alias.capacity() > kSmallText) return false;
  }
  return true;
}

void XmlWriterScopes::PutBack(const Mark& mark) {
  while (m_changes.size() > mark.changes) {
    Change& change = m_changes.back();
    Use(change.entry->second, -1);
    if (change.isNew) {
      if (m_pLast == &*change.entry) m_pLast = nullptr;
      m_spare.push_back(m_map.extract(change.entry));
    } else {
      Use(change.alias, 1);
      change.entry->second = std::move(change.alias);
    }
    m_changes.pop_back();
  }
  m_state = mark.state;
  m_nextAlias = mark.nextAlias;
}

const std::string* XmlWriterScopes::Search(const std::string& uri) const {
  const Map::const_iterator entry = m_map.find(uri);
  if (entry == m_map.end()) return nullptr;
  m_pLast = &*entry;
  return &entry->second;
}

const std::string& XmlWriterScopes::Value(const std::string& uri) {
  const std::string* alias = Find(uri);
  return alias != nullptr ? *alias : Add(uri, std::string());
}

const std::string& XmlWriterScopes::Add(const std::string& uri, const std::string& alias) {
  Map::iterator entry = m_map.find(uri);
  if (entry == m_map.end()) {
    entry = Enter(uri);
    m_changes.push_back({entry, true, std::string()});
  } else {
    m_changes.push_back({entry, false, entry->second});
    Use(entry->second, -1);
    m_nextAlias = 0;  // the alias that went may be an early one
  }
  entry->second = alias;
  Use(alias, 1);
  SetChanged();
  return entry->second;
}

std::string XmlWriterScopes::GenerateAlias() {
  if (!m_bAliasesCounted && m_map.size() >= kManyMappings) {
    m_bAliasesCounted = true;
    for (const Map::value_type& entry : m_map) Use(entry.second, 1);
  }
  for (;; ++m_nextAlias) {
    std::string alias = AliasAt(m_nextAlias);
    if (!IsUsed(alias)) return alias;
  }
}

bool XmlWriterScopes::IsUsed(const std::string& alias) const {
  if (m_bAliasesCounted) {
    const auto uses = m_aliases.find(alias);
    return uses != m_aliases.end() && uses->second != 0;
  }
  for (const Map::value_type& entry : m_map) {
    if (entry.second == alias) return true;
  }
  return false;
}

// A new entry with an empty alias, in the memory of an earlier one where there is one.
XmlWriterScopes::Map::iterator XmlWriterScopes::Enter(const std::string& uri) {
  if (m_spare.empty()) return m_map.emplace(uri, std::string()).first;
  Map::node_type node = std::move(m_spare.back());
  m_spare.pop_back();
  node.key() = uri;
  node.mapped().clear();
  return m_map.insert(std::move(node)).position;
}

void XmlWriterScopes::Use(const std::string& alias, std::int32_t count) {
  if (m_bAliasesCounted) m_aliases[alias] += count;
}

}  // namespace QzXmlLib16::detail
