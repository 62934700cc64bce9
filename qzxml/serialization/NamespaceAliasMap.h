#pragma once

#include <map>
#include <string>

#include "qzxml/platform/Export.h"

namespace QzXmlLib16 {

// The prefixes that a caller wants in his documents. Each namespace here is declared under its
// alias on the root element, in ascending byte order of the URIs.
//
//   CSerializationContext context;
//   context.GetNamespaceAliases().Add("o", "urn:orders");   // <o:order xmlns:o="urn:orders">
//
// A namespace has one alias; an alias may stand for several namespaces, nothing checks for that.
// A plain value: copy it freely. Threads may share a map that nobody changes, as long as they ask
// GetAliasFromNamespace only for what is there.
class QZXML_API CNamespaceAliasMap {
 public:
  CNamespaceAliasMap();  // no entries
  CNamespaceAliasMap(const CNamespaceAliasMap&);
  CNamespaceAliasMap& operator=(const CNamespaceAliasMap&);
  virtual ~CNamespaceAliasMap();

  // Enters the alias of a namespace, or replaces it.
  void Add(const char* alias, const char* namespaceUri);
  // An absent namespace changes nothing.
  void RemoveNamespace(const char* namespaceUri);

  // The URI of the first entry, in order of the URIs, that has the alias. Costs a walk.
  // Throws CQzException "Namespace alias [%s] not found" when there is none.
  std::string GetNamespaceFromAlias(const char* alias) const;

  // The alias of a namespace. Meant: an absent namespace is entered with an empty alias, which is
  // returned; a caller who minds asks DoesNamespaceExist first.
  std::string GetAliasFromNamespace(const char* namespaceUri) const;

  bool DoesNamespaceExist(const char* namespaceUri) const;
  bool DoesAliasExist(const char* alias) const;  // costs a walk

  int GetNamespaceCount() const;
  // The URI at a position in the order of the URIs, 0 to GetNamespaceCount() - 1. Any other index
  // is asserted, and answered by an empty text.
  std::string GetNamespaceAt(int index) const;

 private:
  using Map = std::map<std::string, std::string, std::less<>>;

  Map::const_iterator FindAlias(const char* alias) const;

  mutable Map m_aliases;  // alias by URI; a question for an absent URI enters it
};

}  // namespace QzXmlLib16
