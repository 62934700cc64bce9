#include "tools/generator/model/ClassRegistry.h"

#include <memory>

namespace qzxml::generator {

namespace {

const Component* GetSharedKey(const ContentNode& group) {
  if (group.head != nullptr) return group.head;
  return group.definition;
}

}  // namespace

CClassRegistry::CClassRegistry(const CSchemaSet& schemas, CModelNames& names)
    : m_schemas(schemas), m_names(names) {
  for (const SchemaDocument* document : schemas.GetDocuments()) {
    for (const ElementDecl* element : document->elements) {
      if (!element->isAbstract) m_elementNames.emplace(element->type, element->name.localName);
    }
  }
}

// A type that was redefined keeps its name, and can be found by it no more.
bool CClassRegistry::IsReplaced(const Type& type) const {
  return !type.name.IsEmpty() && m_schemas.FindType(type.name) != &type;
}

std::vector<std::string> CClassRegistry::GetStems(const Type& type) const {
  std::vector<std::string> stems = m_names.GetStems(type);
  if (IsReplaced(type)) stems = {stems[0] + "Original"};
  return stems;
}

BoundClass& CClassRegistry::Add(BoundNamespace& where, const std::string& name) {
  where.classes.push_back(std::make_unique<BoundClass>());
  BoundClass& made = *where.classes.back();
  made.where = &where;
  made.name = name;
  m_classes.push_back(&made);
  m_changeable[&made] = &made;
  return made;
}

BoundClass& CClassRegistry::Create(const ComplexType& type) {
  BoundClass*& created = m_types[&type];
  if (created != nullptr) return *created;
  const BoundClass* base = nullptr;
  if (type.base != nullptr && !type.base->IsSimple() && !type.base->AsComplex()->IsAnyType()) {
    base = &Create(*type.base->AsComplex());
  }
  std::string& name = m_typeNames[&type];
  BoundNamespace& where = m_names.GetNamespace(type.name.namespaceUri);
  if (name.empty()) name = m_names.TakeClass(where, GetStems(type));
  m_names.SetStem(type, name.substr(1));

  BoundClass& made = Add(where, name);
  created = &made;
  m_typeClasses.push_back(&made);
  made.fileStem = m_names.TakeFileStem(where, name);
  made.documentation = type.documentation;
  made.type = &type;
  made.isAbstract = type.isAbstract;
  made.isMixed = type.content == ContentKind_Mixed;
  made.base = base;
  made.isDerived = base != nullptr || !type.derivedTypes.empty();
  if (!IsReplaced(type)) made.typeName = type.name.localName;
  const auto element = m_elementNames.find(&type);
  if (element != m_elementNames.end()) {
    made.elementName = element->second;
  } else if (!type.name.IsEmpty()) {
    made.elementName = type.name.localName;
  } else if (type.context != nullptr) {
    made.elementName = type.context->name.localName;
  }
  if (made.documentation.empty() && type.name.IsEmpty() && type.context != nullptr) {
    made.documentation = type.context->documentation;
  }
  return made;
}

void CClassRegistry::DeclareNamedTypes() {
  // Names first: that a base is made ahead of its turn gives it no other.
  for (const bool replaced : {false, true}) {
    for (const Type* type : m_schemas.GetAllTypes()) {
      if (type->IsSimple() || type->name.IsEmpty() || IsReplaced(*type) != replaced) continue;
      const BoundNamespace& where = m_names.GetNamespace(type->name.namespaceUri);
      m_typeNames[type] = m_names.TakeClass(where, GetStems(*type));
      m_names.SetStem(*type, m_typeNames[type].substr(1));
    }
  }
}

void CClassRegistry::DeclareGroupNames() {
  for (const SchemaDocument* document : m_schemas.GetDocuments()) {
    for (const GroupDefinition* group : document->groups) {
      const std::string stem = ToUpperCamel(group->name.localName);
      const std::string name =
          m_names.TakeClass(m_names.GetNamespace(group->name.namespaceUri), {stem, stem + "Group"});
      m_sharedNames[group] = name;
      m_names.SetStem(*group, name.substr(1));
    }
    for (const ElementDecl* element : document->elements) {
      if (element->substitutes.empty() && !element->isAbstract) continue;
      m_sharedNames[element] =
          m_names.TakeClass(m_names.GetNamespace(element->name.namespaceUri),
                            {ToUpperCamel(element->name.localName) + "Choice"});
    }
  }
}

void CClassRegistry::DeclareRoots() {
  for (const SchemaDocument* document : m_schemas.GetDocuments()) {
    for (const ElementDecl* element : document->elements) {
      const ComplexType* const complexType = element->type->AsComplex();
      const std::string stem = ToUpperCamel(element->name.localName);
      BoundNamespace& where = m_names.GetNamespace(element->name.namespaceUri);
      if (complexType != nullptr && !complexType->IsAnyType()) {
        // A type of its own is called like it, ahead of all types further in.
        if (complexType->name.IsEmpty() && complexType->context == element &&
            m_typeNames[complexType].empty()) {
          m_typeNames[complexType] = m_names.TakeClass(where, {stem, stem + "Element"});
          m_names.SetStem(*complexType, m_typeNames[complexType].substr(1));
        }
        continue;
      }
      if (element->isAbstract) continue;
      const std::string name = m_names.TakeClass(where, {stem, stem + "Element"});
      BoundClass& made = Add(where, name);
      made.fileStem = m_names.TakeFileStem(where, name);
      made.documentation = element->documentation;
      made.type = element->type;
      made.elementName = element->name.localName;
      made.isMixed = complexType != nullptr;
      made.isNillable = element->isNillable;
      m_roots[element] = &made;
    }
  }
}

void CClassRegistry::DeclareAnonymousTypes() {
  for (const Type* type : m_schemas.GetAllTypes()) {
    if (!type->IsSimple()) Create(*type->AsComplex());
  }
}

BoundClass* CClassRegistry::FindRoot(const ElementDecl& element) const {
  const auto found = m_roots.find(&element);
  return found == m_roots.end() ? nullptr : found->second;
}

BoundClass* CClassRegistry::FindShared(const ContentNode& group) const {
  const auto found = m_shared.find(GetSharedKey(group));
  return found == m_shared.end() ? nullptr : found->second;
}

BoundClass& CClassRegistry::AddShared(const ContentNode& group) {
  const Component& key = *GetSharedKey(group);
  BoundNamespace& where = m_names.GetNamespace(key.name.namespaceUri);
  std::string& name = m_sharedNames[&key];
  // A group that was redefined is in no list any more.
  if (name.empty())
    name = m_names.TakeClass(where, {ToUpperCamel(key.name.localName) + "Original"});
  BoundClass& made = Add(where, name);
  m_shared[&key] = &made;
  made.fileStem = m_names.TakeFileStem(where, name);
  made.documentation = key.documentation;
  made.elementName = key.name.localName;
  made.isGroup = true;
  return made;
}

BoundClass& CClassRegistry::AddNested(BoundClass& outer, const std::string& stem) {
  auto names = m_nestedNames.find(&outer);
  if (names == m_nestedNames.end()) {
    CNameScope scope;
    for (const BoundClass* base = &outer; base != nullptr; base = base->base) {
      scope.Take(base->name);
      for (const BoundClass* nested : base->nested) scope.Take(nested->name);
    }
    names = m_nestedNames.emplace(&outer, std::move(scope)).first;
  }
  std::string name = "C" + stem;
  for (int number = 2; !m_names.IsFree(*outer.where, name) || !names->second.Take(name); ++number) {
    name = WithNumber("C" + stem, number);
  }
  BoundClass& made = Add(m_names.GetNamespace(outer.where->uri), name);
  made.outer = &outer;
  made.fileStem = outer.fileStem;
  made.elementName = ToLowerCamel(stem);
  made.isGroup = true;
  return made;
}

std::pair<BoundClass*, bool> CClassRegistry::GetNillable(const SimpleType& type,
                                                         const std::string& userUri,
                                                         bool isOwnTypeOnly) {
  const bool isBuiltIn = type.builtIn != BuiltIn_None;
  const std::string& uri = isBuiltIn ? userUri : type.name.namespaceUri;
  BoundClass*& known = m_nillables[{&type, isBuiltIn ? uri : std::string(), isOwnTypeOnly}];
  if (known != nullptr) return {known, false};
  BoundNamespace& where = m_names.GetNamespace(uri);
  std::vector<std::string> stems = m_names.GetStems(type);
  for (std::string& stem : stems) stem.insert(0, "Nillable");
  const std::string name = m_names.TakeClass(where, stems);
  BoundClass& made = Add(where, name);
  made.fileStem = m_names.TakeFileStem(where, name);
  made.documentation = type.documentation;
  made.type = &type;
  made.elementName = type.name.IsEmpty() ? ToLowerCamel(stems[0]) : type.name.localName;
  made.isNillable = true;
  known = &made;
  return {known, true};
}

}  // namespace qzxml::generator
