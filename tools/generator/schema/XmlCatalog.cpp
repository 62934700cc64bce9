#include "tools/generator/schema/XmlCatalog.h"

#include <cctype>
#include <filesystem>
#include <memory>
#include <system_error>

#include "qzxml/runtime/QzException.h"
#include "qzxml/xml/XmlNamespaces.h"
#include "tools/generator/schema/Diagnostics.h"
#include "tools/generator/schema/SchemaFile.h"
#include "tools/generator/schema/SchemaTree.h"

namespace qzxml::generator {

namespace {

constexpr char kCatalogNamespace[] = "urn:oasis:names:tc:entity:xmlns:xml:catalog";

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

std::string Unescape(const std::string& text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && i + 2 < text.size()) {
      const int high = HexDigit(text[i + 1]);
      const int low = HexDigit(text[i + 2]);
      if (high >= 0 && low >= 0 && high + low > 0) {
        result += static_cast<char>(high * 16 + low);
        i += 2;
        continue;
      }
    }
    result += text[i];
  }
  return result;
}

// The scheme with its colon, or an empty text. One letter is the drive of a path.
std::string GetScheme(const std::string& location) {
  const std::size_t colon = location.find(':');
  if (colon == std::string::npos || colon < 2) return {};
  for (std::size_t i = 0; i < colon; ++i) {
    const auto c = static_cast<unsigned char>(location[i]);
    const bool isLetter = std::isalpha(c) != 0;
    const bool isOther = std::isdigit(c) != 0 || c == '+' || c == '.' || c == '-';
    if (!isLetter && (i == 0 || !isOther)) return {};
  }
  return location.substr(0, colon + 1);
}

bool BeginsWith(const std::string& text, const std::string& prefix) {
  return text.compare(0, prefix.size(), prefix) == 0;
}

bool EndsWith(const std::string& text, const std::string& suffix) {
  return text.size() >= suffix.size() &&
         text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

}  // namespace

bool IsRemote(const std::string& location) {
  const std::string scheme = GetScheme(location);
  return !scheme.empty() && scheme != "file:";
}

std::string ResolveLocation(const std::string& base, const std::string& location) {
  if (IsRemote(location)) return location;
  std::string path = location.substr(0, location.find('#'));
  if (GetScheme(path) == "file:") {
    path.erase(0, 5);
    if (BeginsWith(path, "//")) path.erase(0, std::min(path.find('/', 2), path.size()));
  }
  path = Unescape(path);
  if (path.empty()) return base;
  const std::filesystem::path relative(path);
  if (relative.is_absolute()) return path;
  return (std::filesystem::path(base).parent_path() / relative).lexically_normal().string();
}

bool IsFile(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(path, error) && !std::filesystem::is_directory(path, error);
}

std::string GetCanonicalPath(const std::string& path) {
  std::error_code error;
  const std::filesystem::path canonical = std::filesystem::weakly_canonical(path, error);
  return error ? path : canonical.string();
}

void CXmlCatalog::Load(const std::string& file, CDiagnostics& diagnostics) {
  if (!m_seen.insert(GetCanonicalPath(file)).second) return;
  SchemaDocument document;
  document.file = file;
  SchemaSource source;
  source.document = &document;
  if (!LoadSchemaFile(file, source, diagnostics)) return;
  m_files.push_back(file);
  const QName& name = source.root->name;
  if (name.localName != "catalog" || name.namespaceUri != kCatalogNamespace) {
    diagnostics.Error(
        file, "The file is no XML catalog: its document element is '" + name.ToString() + "'.");
    return;
  }
  AddEntries(*source.root, file, diagnostics);
}

void CXmlCatalog::AddEntries(const SchemaNode& parent, const std::string& outerBase,
                             CDiagnostics& diagnostics) {
  std::string base = outerBase;
  for (const SchemaNode::Attribute& attribute : parent.attributes) {
    if (attribute.name == QName{QzXmlLib16::kXmlNamespace, "base"}) {
      base = ResolveLocation(outerBase, attribute.value);
    }
  }
  for (const auto& child : parent.children) {
    if (child->name.namespaceUri != kCatalogNamespace) continue;
    if (child->name.localName == "group") {
      AddEntries(*child, base, diagnostics);
    } else {
      AddEntry(*child, base, diagnostics);
    }
  }
}

void CXmlCatalog::AddEntry(const SchemaNode& node, const std::string& base,
                           CDiagnostics& diagnostics) {
  struct Kind {
    const char* element;
    const char* key;
    const char* target;
    std::vector<Entry> CXmlCatalog::*list;
  };
  static const Kind kinds[] = {
      {"uri", "name", "uri", &CXmlCatalog::m_names},
      {"system", "systemId", "uri", &CXmlCatalog::m_names},
      {"rewriteURI", "uriStartString", "rewritePrefix", &CXmlCatalog::m_prefixes},
      {"rewriteSystem", "systemIdStartString", "rewritePrefix", &CXmlCatalog::m_prefixes},
      {"uriSuffix", "uriSuffix", "uri", &CXmlCatalog::m_suffixes},
      {"systemSuffix", "systemIdSuffix", "uri", &CXmlCatalog::m_suffixes},
  };
  if (node.name.localName == "nextCatalog") {
    Load(ResolveLocation(base, node.Get("catalog")), diagnostics);
    return;
  }
  for (const Kind& kind : kinds) {
    if (node.name.localName != kind.element) continue;
    const std::string key = node.Get(kind.key);
    if (key.empty() || node.Find(kind.target) == nullptr) {
      diagnostics.Error(node, std::string("The entry needs the attributes '") + kind.key +
                                  "' and '" + kind.target + "'.");
      return;
    }
    (this->*kind.list).push_back({key, ResolveLocation(base, node.Get(kind.target))});
  }
}

std::string CXmlCatalog::Find(const std::string& uri) const {
  for (const Entry& entry : m_names) {
    if (entry.key == uri) return entry.target;
  }
  const Entry* longest = nullptr;
  for (const Entry& entry : m_prefixes) {
    if (BeginsWith(uri, entry.key) && (!longest || entry.key.size() > longest->key.size())) {
      longest = &entry;
    }
  }
  if (longest != nullptr) {
    std::string target = longest->target;
    const std::string rest = uri.substr(longest->key.size());
    if (EndsWith(longest->key, "/") && !EndsWith(target, "/")) target += '/';
    return target + rest;
  }
  for (const Entry& entry : m_suffixes) {
    if (EndsWith(uri, entry.key) && (!longest || entry.key.size() > longest->key.size())) {
      longest = &entry;
    }
  }
  return longest != nullptr ? longest->target : std::string();
}

}  // namespace qzxml::generator
