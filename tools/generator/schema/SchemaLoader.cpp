#include "tools/generator/schema/SchemaLoader.h"

#include <algorithm>

#include "qzxml/xml/XmlElement.h"
#include "qzxml/xml/XmlNamespaces.h"
#include "tools/generator/schema/Diagnostics.h"
#include "tools/generator/schema/SchemaFile.h"
#include "tools/generator/schema/SchemaSyntax.h"
#include "tools/generator/schema/XmlNamespaceSchema.h"

namespace qzxml::generator {

namespace {

// Schemas that include one another this deep are no schemas that anybody wrote.
constexpr int kMaxDepth = 500;

std::string Quote(const std::string& namespaceUri) {
  return namespaceUri.empty() ? "no namespace" : "the namespace '" + namespaceUri + "'";
}

bool HasComponents(const SchemaNode& redefine) {
  return std::any_of(redefine.children.begin(), redefine.children.end(),
                     [](const auto& child) { return !child->Is("annotation"); });
}

bool Contains(const std::vector<std::string>& list, const std::string& text) {
  return std::find(list.begin(), list.end(), text) != list.end();
}

}  // namespace

CSchemaLoader::CSchemaLoader(std::deque<SchemaDocument>& documents,
                             std::deque<SchemaSource>& sources, CDiagnostics& diagnostics)
    : m_documents(documents), m_sources(sources), m_diagnostics(diagnostics) {}

void CSchemaLoader::Load(const std::vector<std::string>& files, const ReadOptions& options) {
  m_progress = options.progress;
  for (const std::string& catalog : options.catalogs) m_catalog.Load(catalog, m_diagnostics);
  m_files = m_catalog.GetFiles();
  for (const std::string& file : files) {
    SchemaSource* const source = LoadFile(file, Role_Given, {}, nullptr);
    if (source != nullptr) source->document->isGiven = true;
  }
  AddXmlNamespace();
}

// ---- One file ----

SchemaSource* CSchemaLoader::LoadFile(const std::string& file, Role role, const std::string& wanted,
                                      const SchemaNode* from) {
  const std::string canonical = GetCanonicalPath(file);
  const auto own = m_loaded.find({canonical, wanted});
  if (role != Role_Given && own != m_loaded.end()) return own->second;

  m_documents.emplace_back();
  m_sources.emplace_back();
  SchemaDocument& document = m_documents.back();
  SchemaSource& source = m_sources.back();
  document.file = file;
  source.document = &document;
  const bool isNew = !Contains(m_files, file);
  if (isNew) m_files.push_back(file);
  if (m_progress) m_progress("reading " + file);
  if (!LoadSchemaFile(file, source, m_diagnostics)) {
    m_loaded[{canonical, wanted}] = nullptr;
    return nullptr;
  }
  document.root = source.root->element;
  document.targetNamespace = source.root->Get("targetNamespace");
  if (!CheckRoot(source, role, wanted, from)) {
    if (role != Role_Given) m_loaded[{canonical, wanted}] = nullptr;
    return nullptr;
  }
  const bool isIncluded = role == Role_Include || role == Role_Redefine;
  if (isIncluded && document.targetNamespace.empty() && !wanted.empty()) {
    document.targetNamespace = wanted;
    source.isChameleon = true;
  }
  const auto entry = m_loaded.emplace(std::pair(canonical, document.targetNamespace), &source);
  if (!entry.second) return entry.first->second;
  source.isSound = CheckSyntax(*source.root, m_diagnostics);
  if (++m_depth > kMaxDepth) {
    m_diagnostics.Error(file, "Schemas include one another too deep.");
  } else if (source.isSound) {
    LoadReferences(source);
  }
  --m_depth;
  if (source.isSound) m_ordered.push_back(&source);
  return &source;
}

bool CSchemaLoader::CheckRoot(const SchemaSource& source, Role role, const std::string& wanted,
                              const SchemaNode* from) {
  const std::string& file = source.document->file;
  if (!source.root->Is("schema")) {
    m_diagnostics.Error(file, "The file is no XML Schema: its document element is '" +
                                  source.root->name.ToString() + "'.");
    return false;
  }
  const std::string& target = source.document->targetNamespace;
  if (role == Role_Given || target == wanted) return true;
  if (role == Role_Import) {
    m_diagnostics.Error(*from, "The schema '" + file + "' has " + Quote(target) + " and not " +
                                   Quote(wanted) + ", which is imported (src-import.3).");
    return false;
  }
  if (target.empty()) return true;
  m_diagnostics.Error(*from, "The schema '" + file + "' has " + Quote(target) + " and not " +
                                 Quote(wanted) + ", that of the schema that takes it in (" +
                                 (role == Role_Include ? "src-include.2)." : "src-redefine.3)."));
  return false;
}

// ---- What it refers to ----

void CSchemaLoader::LoadReferences(SchemaSource& source) {
  for (const auto& child : source.root->children) {
    if (child->Is("import")) {
      LoadImport(source, *child);
    } else if (child->Is("include") || child->Is("redefine")) {
      LoadInclude(source, *child);
    }
  }
}

std::string CSchemaLoader::Locate(const SchemaSource& source, const SchemaNode& node,
                                  const std::string& namespaceUri) const {
  const std::string* const location = node.Find("schemaLocation");
  if (location != nullptr) {
    const std::string written = Trim(*location);
    std::string mapped = m_catalog.Find(written);
    if (!mapped.empty()) return mapped;
    if (!IsRemote(written)) {
      std::string file = ResolveLocation(source.document->file, written);
      mapped = m_catalog.Find(file);
      if (!mapped.empty()) return mapped;
      if (IsFile(file)) return file;
    }
  }
  return namespaceUri.empty() ? std::string() : m_catalog.Find(namespaceUri);
}

void CSchemaLoader::LoadInclude(SchemaSource& source, const SchemaNode& node) {
  const bool isRedefine = node.Is("redefine");
  const std::string file = Locate(source, node, {});
  if (file.empty()) {
    const std::string message =
        "There is no file for the location '" + node.Get("schemaLocation") + "'";
    if (isRedefine && HasComponents(node)) {
      m_diagnostics.Error(node, message + " (src-redefine.1).");
    } else {
      m_diagnostics.Warning(node, message + "; nothing is taken from there.");
    }
    return;
  }
  SchemaSource* const included = LoadFile(file, isRedefine ? Role_Redefine : Role_Include,
                                          source.document->targetNamespace, &node);
  if (included == nullptr) return;
  source.included.push_back(included);
  if (isRedefine) m_redefinitions.push_back({&node, included});
}

void CSchemaLoader::LoadImport(SchemaSource& source, const SchemaNode& node) {
  const std::string* const attribute = node.Find("namespace");
  const std::string namespaceUri = attribute != nullptr ? Trim(*attribute) : std::string();
  const std::string& ownNamespace = source.document->targetNamespace;
  if (attribute != nullptr && namespaceUri == ownNamespace) {
    m_diagnostics.Error(node, "A schema does not import its own namespace (src-import.1.1).");
    return;
  }
  if (attribute == nullptr && ownNamespace.empty()) {
    m_diagnostics.Error(node,
                        "Only a schema that has a target namespace imports components that have "
                        "none (src-import.1.2).");
    return;
  }
  source.imported.push_back(namespaceUri);
  const std::string file = Locate(source, node, namespaceUri);
  if (!file.empty()) LoadFile(file, Role_Import, namespaceUri, &node);
}

// The attributes of the XML namespace are there also when nobody has a schema for them.
void CSchemaLoader::AddXmlNamespace() {
  const std::string uri = QzXmlLib16::kXmlNamespace;
  bool isWanted = false;
  for (const SchemaSource& source : m_sources) {
    if (source.document->targetNamespace == uri) return;
    isWanted = isWanted || Contains(source.imported, uri);
  }
  if (!isWanted) return;
  m_documents.emplace_back();
  m_sources.emplace_back();
  SchemaSource& source = m_sources.back();
  source.document = &m_documents.back();
  source.document->targetNamespace = uri;
  LoadSchemaText(kXmlNamespaceSchema, source, m_diagnostics);
  source.document->root = source.root->element;
  m_ordered.insert(m_ordered.begin(), &source);
}

}  // namespace qzxml::generator
