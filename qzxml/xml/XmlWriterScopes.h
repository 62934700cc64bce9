#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

namespace QzXmlLib16::detail {

// The namespaces in force at the innermost open element of one document. Scopes nest as elements
// do, so there is one map, changed in place, and a list of what a scope has to put back at its end:
// the cost of a scope is that of its own changes, however much is declared outside of it.
class XmlWriterScopes {
 public:
  using Map = std::map<std::string, std::string>;  // URI to alias

  // What was in force at a moment.
  struct Mark {
    std::size_t changes;
    std::uint64_t state;
    std::uint32_t nextAlias;
  };

  XmlWriterScopes();
  XmlWriterScopes(const XmlWriterScopes&) = delete;
  XmlWriterScopes& operator=(const XmlWriterScopes&) = delete;

  // Begins again with these.
  void Reset(const Map& declared);
  // Makes it as good as new for another document, before Reset. False where too much memory would
  // be kept for that.
  bool Renew();

  const Map& InForce() const { return m_map; }

  // A number that stands for what is in force, the default namespaces included: it changes with
  // each change, and comes back when a scope ends.
  std::uint64_t GetState() const { return m_state; }
  void SetChanged() { m_state = ++m_lastState; }

  // Begin and end of a scope.
  Mark GetMark() const { return {m_changes.size(), m_state, m_nextAlias}; }
  void PutBack(const Mark& mark);

  // The alias of a URI, or null. Lives as long as the mapping.
  const std::string* Find(const std::string& uri) const {
    if (m_pLast != nullptr && m_pLast->first == uri) return &m_pLast->second;
    return Search(uri);
  }

  // The alias of a URI, entered empty when there is none.
  const std::string& Value(const std::string& uri);

  const std::string& Add(const std::string& uri, const std::string& alias);

  // The first of "AA", "AB" to "ZZ", then "AAA" and on, that is not in use.
  std::string GenerateAlias();

 private:
  static constexpr std::size_t kSmall = 4;
  static constexpr std::size_t kSmallText = 256;

  struct Change {
    Map::iterator entry;
    bool isNew;
    std::string alias;  // the one before, of an entry that is not new
  };

  const std::string* Search(const std::string& uri) const;
  Map::iterator Enter(const std::string& uri);
  bool IsUsed(const std::string& alias) const;
  void Use(const std::string& alias, std::int32_t count);

  Map m_map;
  std::vector<Change> m_changes;
  std::vector<Map::node_type> m_spare;     // entries of ended scopes, for reuse
  mutable const Map::value_type* m_pLast;  // the mapping found last
  std::uint64_t m_state;
  std::uint64_t m_lastState;
  bool m_bAliasesCounted;  // m_aliases is made when an alias is generated beside many mappings
  std::unordered_map<std::string, std::int32_t> m_aliases;  // how many mappings use an alias
  std::uint32_t m_nextAlias;                                // every alias before this one is in use
};

}  // namespace QzXmlLib16::detail
