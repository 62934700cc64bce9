#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tools/generator/model/Identifiers.h"
#include "tools/generator/model/Model.h"

namespace qzxml::generator {

// The C++ namespaces of a model and the names in them. Who comes first gets the better name, so the
// caller asks in an order that a schema keeps when it grows: named types, named groups, global
// elements, and only then what has no name of its own.
class CModelNames {
 public:
  // Makes the namespaces of all target namespaces. Both outlive the object.
  CModelNames(Model& model, const CSchemaSet& schemas, const ModelOptions& options);

  // Of a target namespace of the set.
  BoundNamespace& GetNamespace(const std::string& uri);

  // The stem of a component, the first choice in front: its own name, or for an anonymous type that
  // of the element or attribute around it, then with that of the type around that.
  std::vector<std::string> GetStems(const Component& component) const;

  // Each takes a free name of the namespace. A class is "C" and a stem, a constant "k" and a stem,
  // an enumeration the stem itself; the constant is taken together with it.
  std::string TakeClass(const BoundNamespace& where, const std::vector<std::string>& stems);
  std::string TakeConstant(const BoundNamespace& where, const std::vector<std::string>& stems);
  std::string TakeEnumeration(const BoundNamespace& where, const std::vector<std::string>& stems);
  std::string TakeEnumerator(const BoundNamespace& where, const std::vector<std::string>& names);
  std::string TakeFileStem(const BoundNamespace& where, const std::string& className);
  // Whether a class nested in another may have the name.
  bool IsFree(const BoundNamespace& where, const std::string& name) const;

  // What the names of inner components begin with from now on.
  void SetStem(const Component& component, const std::string& stem) { m_stems[&component] = stem; }

 private:
  CNameScope& GetScope(const BoundNamespace& where) const;
  void MakeNamespace(const TargetNamespace& target, const std::string& firstFile,
                     const ModelOptions& options, const std::string& givenUri);

  Model& m_model;
  std::map<std::string, BoundNamespace*> m_namespaces;  // by URI
  CNameScope m_folders{CNameScope::Case_Insensitive};
  std::map<std::string, std::unique_ptr<CNameScope>> m_scopes;  // by C++ namespace
  std::map<const BoundNamespace*, CNameScope> m_files;
  std::map<const Component*, std::string> m_stems;
};

// The C++ namespace for a target namespace that nobody gave one: after its prefix, unless that
// tells nothing (tns, ns1), else after the last telling part of its URI ("http://a.org/orders/v2"
// is orders), else after the file.
std::string DeriveNamespaceName(const std::string& uri, const std::string& prefix,
                                const std::string& file);

}  // namespace qzxml::generator
