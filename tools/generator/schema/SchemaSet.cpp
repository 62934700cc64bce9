#include "tools/generator/schema/SchemaSet.h"

#include <algorithm>
#include <utility>

#include "tools/generator/schema/SchemaBuilder.h"

namespace qzxml::generator {

namespace {

template <typename Map>
auto FindIn(const Map& map, const QName& name) {
  const auto found = map.find(name);
  return found != map.end() ? found->second : nullptr;
}

// The first prefix that the schema binds to the namespace.
std::string FindPrefix(const SchemaNode& root, const std::string& uri) {
  for (const auto& [prefix, bound] : *root.scope) {
    if (bound == uri && !prefix.empty()) return prefix;
  }
  return {};
}

}  // namespace

CSchemaSet::CSchemaSet() : m_pStorage(std::make_unique<SchemaStorage>()) {}
CSchemaSet::~CSchemaSet() = default;

const Type* CSchemaSet::FindType(const QName& name) const { return FindIn(m_types, name); }
const ElementDecl* CSchemaSet::FindElement(const QName& name) const {
  return FindIn(m_elements, name);
}
const AttributeDecl* CSchemaSet::FindAttribute(const QName& name) const {
  return FindIn(m_attributes, name);
}
const GroupDefinition* CSchemaSet::FindGroup(const QName& name) const {
  return FindIn(m_groups, name);
}
const AttributeGroup* CSchemaSet::FindAttributeGroup(const QName& name) const {
  return FindIn(m_attributeGroups, name);
}
const Notation* CSchemaSet::FindNotation(const QName& name) const {
  return FindIn(m_notations, name);
}

const SimpleType* CSchemaSet::GetBuiltIn(BuiltIn type) const { return m_pStorage->builtIns[type]; }

bool CSchemaSet::HasErrors() const {
  return std::any_of(m_diagnostics.begin(), m_diagnostics.end(),
                     [](const Diagnostic& d) { return d.severity == Severity_Error; });
}

// Reads and builds a set.
class CSchemaBuilder {
 public:
  explicit CSchemaBuilder(CSchemaSet& set) : m_set(set) {}

  void Build(const std::vector<std::string>& files, const ReadOptions& options) {
    SchemaStorage& storage = *m_set.m_pStorage;
    CSchemaLoader loader(storage.documents, storage.sources, m_diagnostics);
    loader.Load(files, options);
    m_set.m_files = loader.GetFiles();
    BuildState state(storage, m_diagnostics);
    MakeComponents(state, loader);
    m_set.m_pAnyType = storage.anyType;
    // Of schemas without the form of schemas nothing more is told: it would mostly follow from
    // that.
    if (!m_diagnostics.HasErrors()) {
      Resolve(state);
      CopyNames(state);
      CopyDocuments(loader);
    }
    m_set.m_diagnostics = m_diagnostics.GetAll();
  }

 private:
  void Resolve(BuildState& state) {
    ResolveSimpleTypes(state);
    ResolveAttributes(state);
    ResolveAttributeGroups(state);
    ResolveContent(state);
    ResolveComplexTypes(state);
    ResolveSubstitutions(state);
    CheckElements(state);
    CheckRedefinedGroups(state);
    CheckContentModels(state);
    CheckDerivations(state);
    CheckIdentityConstraints(state);
  }

  template <typename T>
  static void Copy(const std::map<QName, Component*>& from, std::map<QName, const T*>& to) {
    for (const auto& [name, component] : from) to[name] = static_cast<const T*>(component);
  }

  void CopyNames(BuildState& state) {
    Copy(state.names[SymbolSpace_Type], m_set.m_types);
    Copy(state.names[SymbolSpace_Element], m_set.m_elements);
    Copy(state.names[SymbolSpace_Attribute], m_set.m_attributes);
    Copy(state.names[SymbolSpace_Group], m_set.m_groups);
    Copy(state.names[SymbolSpace_AttributeGroup], m_set.m_attributeGroups);
    Copy(state.names[SymbolSpace_Notation], m_set.m_notations);
    m_set.m_allTypes = std::move(state.allTypes);
  }

  void CopyDocuments(const CSchemaLoader& loader) {
    std::map<std::string, std::string> prefixes;
    for (const SchemaSource* const source : loader.GetSources()) {
      const std::string& uri = source->document->targetNamespace;
      m_set.m_documents.push_back(source->document);
      const auto [entry, isNew] = prefixes.emplace(uri, std::string());
      if (isNew) m_set.m_targetNamespaces.push_back({uri, {}});
      if (entry->second.empty()) entry->second = FindPrefix(*source->root, uri);
    }
    for (TargetNamespace& target : m_set.m_targetNamespaces) {
      target.prefix = prefixes[target.uri];
      if (target.uri.empty()) continue;
      for (const SchemaSource* const source : loader.GetSources()) {
        if (target.prefix.empty()) target.prefix = FindPrefix(*source->root, target.uri);
      }
    }
  }

  CSchemaSet& m_set;
  CDiagnostics m_diagnostics;
};

std::unique_ptr<CSchemaSet> ReadSchemas(const std::vector<std::string>& files,
                                        const ReadOptions& options) {
  auto set = std::make_unique<CSchemaSet>();
  CSchemaBuilder(*set).Build(files, options);
  return set;
}

}  // namespace qzxml::generator
