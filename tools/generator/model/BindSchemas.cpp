#include <algorithm>
#include <set>
#include <tuple>

#include "tools/generator/model/ClassBinder.h"
#include "tools/generator/model/MandatoryCycles.h"
#include "tools/generator/model/Model.h"

namespace qzxml::generator {

namespace {

// A C++ namespace that a program could not be compiled with.
void CheckNamespaces(Model& model) {
  for (const auto& where : model.namespaces) {
    std::string rest = where->cppName;
    bool isValid = true;
    while (isValid) {
      const std::size_t end = rest.find("::");
      isValid = IsIdentifier(rest.substr(0, end));
      if (end == std::string::npos) break;
      rest.erase(0, end + 2);
    }
    if (isValid) continue;
    Diagnostic error;
    error.message = "\"" + where->cppName + "\", the C++ namespace for \"" + where->uri +
                    "\", is no name of C++";
    model.diagnostics.push_back(error);
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
  CClassRegistry classes(*model, schemas, names);
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

  CClassBinder binder(*model, schemas, names, classes, simpleTypes);
  binder.FillAll();
  AddRoots(schemas, names, classes, binder);
  AddDerived(classes);
  BreakMandatoryCycles(*model, classes);

  auto& namespaces = model->namespaces;
  namespaces.erase(std::remove_if(namespaces.begin(), namespaces.end(), IsEmpty), namespaces.end());
  CheckNamespaces(*model);
  SimplifyDiagnostics(model->diagnostics);
  return model;
}

bool Model::HasErrors() const {
  return std::any_of(diagnostics.begin(), diagnostics.end(), [](const Diagnostic& diagnostic) {
    return diagnostic.severity == Severity_Error;
  });
}

std::string BoundClass::GetQualifiedName() const {
  return (outer != nullptr ? outer->GetQualifiedName() : where->cppName) + "::" + name;
}

}  // namespace qzxml::generator
