#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "qzxml/platform/Export.h"

namespace QzXmlLib16 {

class CXmlElement;

namespace detail {

// What aliases stand for at the elements that ask: those with an xsi:type. A document has one table
// of its aliases, in which the last declaration counts. Where an alias has stood for more than one
// namespace, that is not enough: then each such element is noted with what was in force at it, and
// all that came before had the first one.
class QZXML_API CScopedAliases {
 public:
  // As the parser meets them: a declaration, ahead of its element, and the end of the last one.
  void Declare(const std::string& alias, const std::string& uri);
  void EndDeclaration();

  // Whether an alias has stood for more than one namespace.
  bool IsAmbiguous() const { return m_isAmbiguous; }

  // Keeps what the alias of its xsi:type stands for at an element that has just begun.
  void Note(const CXmlElement& element, std::string_view alias);

  // The URI of the alias at an element, empty for none; null where the table of the document tells.
  const std::string* Find(const CXmlElement& element, std::string_view alias) const;

  void Clear();

 private:
  struct Alias {
    const std::string* first = nullptr;
    const std::string* inForce = nullptr;
  };
  struct Change {
    Alias* alias;
    const std::string* before;
  };

  std::map<std::string, Alias, std::less<>> m_aliases;
  std::vector<Change> m_changes;  // of the open elements
  std::set<std::string> m_uris;
  std::unordered_map<const CXmlElement*, const std::string*> m_noted;
  bool m_isAmbiguous = false;
};

}  // namespace detail
}  // namespace QzXmlLib16
