#pragma once

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace qzxml::generator {

class CDiagnostics;
struct SchemaNode;

// An OASIS XML catalog: what stands where on this machine. Of the entries those that map whole
// names and beginnings of names are known: uri, system, rewriteURI, rewriteSystem, uriSuffix,
// systemSuffix, within group and with xml:base, and nextCatalog.
// Source: OASIS XML Catalogs 1.1.
class CXmlCatalog {
 public:
  // Reads one more catalog, to be asked behind those before. What is wrong with it is an error.
  void Load(const std::string& file, CDiagnostics& diagnostics);

  // The file that a location or a namespace is mapped to; empty when it is not.
  std::string Find(const std::string& uri) const;

  // The catalogs that were read, as opened.
  const std::vector<std::string>& GetFiles() const { return m_files; }

 private:
  struct Entry {
    std::string key;
    std::string target;
  };

  void AddEntries(const SchemaNode& parent, const std::string& base, CDiagnostics& diagnostics);
  void AddEntry(const SchemaNode& node, const std::string& base, CDiagnostics& diagnostics);

  std::vector<Entry> m_names;
  std::vector<Entry> m_prefixes;
  std::vector<Entry> m_suffixes;
  std::vector<std::string> m_files;
  std::set<std::string> m_seen;
};

// ---- Locations ----

// Whether it begins with a scheme other than that of files.
bool IsRemote(const std::string& location);
// The file that a location means that stands in the file base: a "file:" one as it is, a relative
// one from the folder of base; escapes of octets are resolved and a fragment is left out.
std::string ResolveLocation(const std::string& base, const std::string& location);
bool IsFile(const std::string& path);
// The one spelling of a path that stands for its file.
std::string GetCanonicalPath(const std::string& path);

}  // namespace qzxml::generator
