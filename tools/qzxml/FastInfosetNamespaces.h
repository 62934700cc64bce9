#pragma once

#include <map>
#include <string>
#include <vector>

#include "tools/qzxml/Content.h"

namespace qztool {

// The namespaces of a document as its Fast Infoset has them, where the root alone declares: the
// default namespace is that of the root, and every other one has one prefix, the first that the
// document gives it and that no other namespace has before.
struct CFastInfosetNamespaces {
  explicit CFastInfosetNamespaces(const CContentDocument& document);

  std::string defaultUri;                       // "" for none
  std::map<std::string, std::string> prefixes;  // by URI
  // Where a prefix stands for another namespace than elsewhere, so that values which name it would
  // mean something else.
  std::vector<CContentLoss> losses;

 private:
  void Visit(const CContentElement& element);
  void Take(const CContentElement& element, const std::string& prefix, const std::string& uri);
  void AddMissing(const CContentElement& element);

  std::map<std::string, std::string> m_uris;  // by prefix
  unsigned m_made = 0;
};

}  // namespace qztool
