#include <algorithm>
#include <set>
#include <tuple>

#include "tools/generator/model/ClassBinder.h"
#include "tools/generator/model/MandatoryCycles.h"
#include "tools/generator/model/Model.h"
#include "tools/generator/model/SimpleTypeFamilies.h"

namespace qzxml::generator {

namespace {

// What is wrong with a C++ namespace; "" where a program can be compiled with it. Functions of C
// are outside of all namespaces; the names that generated code begins its qualified names with may
// not be hidden by any.
std::string FindFault(std::string rest) {
  for (bool isFirst = true;; isFirst = false) {
    const std::size_t end = rest.find("::");
    const std::string part = rest.substr(0, end);
    if (!IsIdentifier(part)) return "is no name of C++";
    const bool isHiding = part == "std" || part == "QzXmlLib16";
    if ((isFirst && IsOwnedNamespace(part)) || isHiding) return "has a name that others own";
    if (end == std::string::npos) return "";
    rest.erase(0, end + 2);
  }
}

void CheckNamespaces(Model& model) {
  for (const auto& where : model.namespaces) {
    const std::string fault = FindFault(where->cppName);
    if (fault.empty()) continue;
    Diagnostic error;
    error.message =
        "\"" + where->cppName + "\", the C++ namespace for \"" + where->uri + "\", " + fault;
    model.diagnostics.push_back(error);
  }
}

// A URI that was mistyped.
void CheckMaps(const CSchemaSet& schemas, const ModelOptions& options, Model& model) {
  for (const auto& [uri, cppName] : options.cppNamespaces) {
    const auto& documents = schemas.GetDocuments();
    const bool isKnown = std::any_of(
        documents.begin(), documents.end(),
        [&uri = uri](const SchemaDocument* read) { return read->targetNamespace == uri; });
    if (isKnown) continue;
    Diagnostic warning;
    warning.severity = Severity_Warning;
    warning.message =
        "No schema has the target namespace \"" + uri + "\", which is mapped to " + cppName;
    model.diagnostics.push_back(warning);
  }
}

void AddRoots(const CSchemaSet& schemas, CModelNames& names, CClassRegistry& classes,
              CClassBinder& binder) {
  for (const SchemaDocument* document : schemas.GetDocuments()) {
    for (const ElementDecl* element : document->elements) {
      if (element->isAbstract) continue;
      BoundClass* bound = classes.FindRoot(*element);
      if (bound == nullptr) {
        bound = &classes.Get(*element->type->AsComplex());
        binder.CheckValue(*element);
        bound->isNillable = bound->isNillable || element->isNillable;
      }
      BoundRoot root;
      root.name = element->name.localName;
      root.namespaceUri = element->name.namespaceUri;
      root.objectClass = bound;
      root.isByType = CClassBinder::IsByType(*element);
      root.blocked = CClassBinder::GetBlocked(*element);
      root.documentation = element->documentation;
      names.GetNamespace(root.namespaceUri).roots.push_back(std::move(root));
    }
  }
}

// Derived classes of each base; nil of a base is also theirs.
void AddDerived(const CClassRegistry& classes) {
  for (const BoundClass* bound : classes.GetTypeClasses()) {
    for (const BoundClass* base = bound->base; base != nullptr; base = base->base) {
      classes.Change(*base).derived.push_back(bound);
    }
  }
  for (const BoundClass* bound : classes.GetTypeClasses()) {
    if (bound->base != nullptr && bound->base->isNillable) classes.Change(*bound).isNillable = true;
  }
}

void SimplifyDiagnostics(std::vector<Diagnostic>& diagnostics) {
  std::set<std::tuple<std::string, std::string, std::string>> seen;
  const auto isKnown = [&seen](const Diagnostic& entry) {
    return !seen.emplace(entry.file, entry.path, entry.message).second;
  };
  diagnostics.erase(std::remove_if(diagnostics.begin(), diagnostics.end(), isKnown),
                    diagnostics.end());
}

bool IsEmpty(const std::unique_ptr<BoundNamespace>& where) {
  return where->classes.empty() && where->enums.empty() && where->simpleTypes.empty() &&
         where->roots.empty();
}

}  // namespace

std::unique_ptr<Model> BindSchemas(const CSchemaSet& schemas, const ModelOptions& options) {
  auto model = std::make_unique<Model>();
  CModelNames names(*model, schemas, options);
  CClassRegistry classes(schemas, names);
  CSimpleTypeBinder simpleTypes(*model, names);

  classes.DeclareNamedTypes();
  // What was redefined has the name no more and comes last.
  for (const bool isCurrent : {true, false}) {
    for (const Type* type : schemas.GetAllTypes()) {
      if (!type->IsSimple() || type->name.IsEmpty()) continue;
      if ((schemas.FindType(type->name) == type) == isCurrent) simpleTypes.Bind(*type->AsSimple());
    }
  }
  classes.DeclareGroupNames();
  classes.DeclareRoots();
  classes.DeclareAnonymousTypes();

  CClassBinder binder(*model, schemas, classes, simpleTypes);
  binder.FillAll();
  AddRoots(schemas, names, classes, binder);
  AddDerived(classes);
  BreakMandatoryCycles(*model, classes);
  AddSimpleTypeFamilies(*model, schemas, simpleTypes);

  auto& namespaces = model->namespaces;
  namespaces.erase(std::remove_if(namespaces.begin(), namespaces.end(), IsEmpty), namespaces.end());
  CheckNamespaces(*model);
  CheckMaps(schemas, options, *model);
  SimplifyDiagnostics(model->diagnostics);
  return model;
}

bool Model::HasErrors() const {
  return std::any_of(diagnostics.begin(), diagnostics.end(), [](const Diagnostic& diagnostic) {
    return diagnostic.severity == Severity_Error;
  });
}

std::vector<const BoundClass*> BoundClass::GetDerived(unsigned blocked) const {
  if (blocked == Derivation_None) return derived;
  std::vector<const BoundClass*> allowed;
  for (const BoundClass* candidate : derived) {
    unsigned steps = Derivation_None;
    for (const BoundClass* at = candidate; at != this; at = at->base) {
      steps |= GetStep(*at->type->AsComplex());
    }
    if ((steps & blocked) == 0) allowed.push_back(candidate);
  }
  return allowed;
}

std::string BoundClass::GetQualifiedName() const {
  return (outer != nullptr ? outer->GetQualifiedName() : where->cppName) + "::" + name;
}

}  // namespace qzxml::generator
