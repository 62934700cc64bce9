#pragma once

#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "tools/generator/model/Content.h"
#include "tools/generator/model/ModelNames.h"

namespace qzxml::generator {

// The classes of a model: which there are, how they are called, where they stand. Their members are
// filled by CClassBinder.
class CClassRegistry {
 public:
  // All outlive the object.
  CClassRegistry(const CSchemaSet& schemas, CModelNames& names);

  // --- In this order: classes of all complex types with a name, names for named groups and
  // substitution groups, classes of global elements that need one, classes of the other types.
  void DeclareNamedTypes();
  void DeclareGroupNames();
  void DeclareRoots();
  void DeclareAnonymousTypes();

  // Not of anyType.
  BoundClass& Get(const ComplexType& type) { return *m_types.at(&type); }
  // The class that a global element of simple type or of anyType has as a root; null for others.
  BoundClass* FindRoot(const ElementDecl& element) const;
  // The class of a named group or a substitution group; null at the first call for it, whereupon
  // AddShared makes it.
  BoundClass* FindShared(const ContentNode& group) const;
  BoundClass& AddShared(const ContentNode& group);
  // A class for a group that is to be nested in outer, which the caller adds it to. "CKeyAndValue"
  // for the stem.
  BoundClass& AddNested(BoundClass& outer, const std::string& stem);
  // The class for nillable elements of a simple type that are not there exactly once; second is
  // true when it was made by the call. Those whose xsi:type may name a derived type have another.
  std::pair<BoundClass*, bool> GetNillable(const SimpleType& type, const std::string& userUri,
                                           bool isOwnTypeOnly);

  // The classes of complex types, bases in front.
  const std::vector<BoundClass*>& GetTypeClasses() const { return m_typeClasses; }
  // All classes.
  const std::vector<BoundClass*>& GetClasses() const { return m_classes; }

  // A bound class as what may be changed.
  BoundClass& Change(const BoundClass& bound) const { return *m_changeable.at(&bound); }

 private:
  BoundClass& Add(BoundNamespace& where, const std::string& name);
  BoundClass& Create(const ComplexType& type);
  bool IsReplaced(const Type& type) const;
  std::vector<std::string> GetStems(const Type& type) const;

  const CSchemaSet& m_schemas;
  CModelNames& m_names;
  std::map<const Type*, std::string> m_typeNames;
  std::map<const Type*, std::string> m_elementNames;  // of the first global element of a type
  std::map<const Component*, std::string> m_sharedNames;
  std::map<const Type*, BoundClass*> m_types;
  std::map<const ElementDecl*, BoundClass*> m_roots;
  std::map<const Component*, BoundClass*> m_shared;
  std::map<std::tuple<const SimpleType*, std::string, bool>, BoundClass*> m_nillables;
  std::map<const BoundClass*, CNameScope> m_nestedNames;
  std::vector<BoundClass*> m_typeClasses;
  std::vector<BoundClass*> m_classes;
  std::map<const BoundClass*, BoundClass*> m_changeable;
};

}  // namespace qzxml::generator
