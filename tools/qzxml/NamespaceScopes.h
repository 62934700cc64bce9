#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "tools/qzxml/Content.h"

namespace qztool {

// The names of an element as they are to be written.
struct CWrittenNames {
  std::string element;
  std::vector<std::string> attributes;            // one for each of the element's
  std::vector<CContentDeclaration> declarations;  // those that it has to carry
};

// Which prefixes stand for which namespaces while a document is written. A document from XML has
// all its declarations and keeps them as they are. One from Fast Infoset may use a prefix without
// declaring it, or one prefix for two namespaces: what is missing is declared at the element that
// needs it, with a prefix of its own ("ns1") where the other is taken.
class CNamespaceScopes {
 public:
  CNamespaceScopes();

  // At the start of an element, in document order, and at its end.
  CWrittenNames Enter(const CContentElement& element);
  void Leave();

 private:
  std::string Bind(CWrittenNames& names, const CContentName& name, bool isAttribute);
  void Declare(CWrittenNames& names, const std::string& prefix, const std::string& uri);
  std::string FindPrefix(const std::string& uri);
  std::string MakePrefix();
  const std::string& GetUri(const std::string& prefix) const;

  std::map<std::string, std::vector<std::string>> m_scope;     // of each prefix, innermost last
  std::map<std::string, std::vector<std::string>> m_prefixes;  // that a namespace has or had
  std::vector<std::vector<std::string>> m_declared;            // by each open element
  std::set<std::string> m_taken;  // declared or used by the element that begins
  unsigned m_made = 0;
};

}  // namespace qztool
