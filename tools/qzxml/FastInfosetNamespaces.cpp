#include "tools/qzxml/FastInfosetNamespaces.h"

namespace qztool {
namespace {

constexpr char kXmlNamespace[] = "http://www.w3.org/XML/1998/namespace";

}  // namespace

CFastInfosetNamespaces::CFastInfosetNamespaces(const CContentDocument& document) {
  const CContentElement& root = *document.root;
  for (const CContentDeclaration& declaration : root.declarations) {
    if (declaration.prefix.empty()) defaultUri = declaration.uri;
  }
  if (root.name->prefix.empty() && !root.name->uri.empty()) defaultUri = root.name->uri;
  Visit(root);
  AddMissing(root);
}

void CFastInfosetNamespaces::Visit(const CContentElement& element) {
  for (const CContentDeclaration& declaration : element.declarations) {
    Take(element, declaration.prefix, declaration.uri);
  }
  Take(element, element.name->prefix, element.name->uri);
  for (const CContentAttribute& attribute : element.attributes) {
    Take(element, attribute.name->prefix, attribute.name->uri);
  }
  for (const CContentItem& item : element.items) {
    if (item.element != nullptr) Visit(*item.element);
  }
}

void CFastInfosetNamespaces::Take(const CContentElement& element, const std::string& prefix,
                                  const std::string& uri) {
  if (prefix.empty() || uri.empty() || uri == kXmlNamespace || prefix == "xml") return;
  const auto [known, isNew] = m_uris.emplace(prefix, uri);
  if (isNew) {
    prefixes.emplace(uri, prefix);
  } else if (known->second != uri) {
    const std::string message =
        "the prefix \"" + prefix + "\" is not kept where it stands for \"" + uri + "\"";
    if (losses.empty() || losses.back().element != &element || losses.back().message != message) {
      losses.push_back({&element, message});
    }
  }
}

// Prefixes for the namespaces that have none: default ones below the root, and those of attributes
// and elements whose prefix is another's.
void CFastInfosetNamespaces::AddMissing(const CContentElement& element) {
  const auto add = [this](const std::string& uri) {
    if (uri.empty() || uri == kXmlNamespace || prefixes.count(uri) != 0) return;
    std::string prefix;
    do {
      prefix = "ns" + std::to_string(++m_made);
    } while (m_uris.count(prefix) != 0);
    m_uris.emplace(prefix, uri);
    prefixes.emplace(uri, prefix);
  };
  if (element.name->uri != defaultUri) add(element.name->uri);
  for (const CContentAttribute& attribute : element.attributes) add(attribute.name->uri);
  for (const CContentItem& item : element.items) {
    if (item.element != nullptr) AddMissing(*item.element);
  }
}

}  // namespace qztool
