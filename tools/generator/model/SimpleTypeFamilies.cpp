#include "tools/generator/model/SimpleTypeFamilies.h"

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <utility>
#include <vector>

namespace qzxml::generator {

namespace {

// A type, and the members of a union with theirs, each once. A member of a union stands for it also
// where a restriction of the union has facets: these hold the value as well.
class CStandIns {
 public:
  explicit CStandIns(const SimpleType& declared) { Add(declared); }

  // Whether the type is one of these or derived from one.
  bool Have(const SimpleType* type) const {
    while (type != nullptr && m_types.count(type) == 0) type = type->base;
    return type != nullptr;
  }

  // As the unions name them.
  const std::vector<const SimpleType*>& GetInOrder() const { return m_inOrder; }

 private:
  void Add(const SimpleType& type) {
    if (!m_types.insert(&type).second) return;
    m_inOrder.push_back(&type);
    if (type.variety != Variety_Union) return;
    for (const SimpleType* member : type.memberTypes) Add(*member);
  }

  std::set<const SimpleType*> m_types;
  std::vector<const SimpleType*> m_inOrder;
};

class CFamilyMaker {
 public:
  CFamilyMaker(Model& model, const CSchemaSet& schemas, CSimpleTypeBinder& simpleTypes)
      : m_model(model), m_schemas(schemas), m_simpleTypes(simpleTypes) {
    for (const Type* type : schemas.GetAllTypes()) {
      if (!type->IsSimple() || type->name.IsEmpty()) continue;
      if (schemas.FindType(type->name) == type) m_named.push_back(type->AsSimple());
    }
  }

  void Give(BoundMember& member, const SimpleType& declared) {
    if (member.isOwnTypeOnly) member.isOwnTypeOnly = HasDerived(declared);
    const bool hasOwnName = !declared.name.IsEmpty() && member.simple->where != nullptr;
    if (!member.isOwnTypeOnly || hasOwnName) member.family = Find(*member.simple, declared);
  }

 private:
  const BoundSimpleFamily* Find(const BoundSimpleType& bound, const SimpleType& declared) {
    const auto [found, isNew] = m_families.try_emplace({&bound, &declared}, nullptr);
    if (isNew) found->second = Make(bound, declared);
    return found->second;
  }

  const BoundSimpleFamily* Make(const BoundSimpleType& bound, const SimpleType& declared) {
    auto family = std::make_unique<BoundSimpleFamily>();
    family->declared = &bound;
    for (const SimpleType* type : m_named) {
      if (type == &declared) Add(*type, *family);
    }
    const CStandIns standIns(declared);
    AddBuiltIns(bound, declared, standIns, *family);
    for (const SimpleType* type : m_named) {
      if (type != &declared && standIns.Have(type)) Add(*type, *family);
    }
    if (family->names.empty()) return nullptr;
    family->where = bound.where != nullptr ? bound.where : family->names[0].type->where;
    const int number = ++m_counts[&bound];
    const std::string suffix = number > 1 ? std::to_string(number) : "";
    family->types = bound.constant + "_Types" + suffix;
    family->named = bound.constant + "_Named" + suffix;
    const auto where =
        std::find_if(m_model.namespaces.begin(), m_model.namespaces.end(),
                     [&family](const auto& some) { return some.get() == family->where; });
    (*where)->families.push_back(std::move(family));
    return (*where)->families.back().get();
  }

  void Add(const SimpleType& type, BoundSimpleFamily& family) {
    family.names.push_back({type.name, &m_simpleTypes.Bind(type)});
  }

  // A constant of the library stands for itself.
  void AddBuiltIns(const BoundSimpleType& bound, const SimpleType& declared,
                   const CStandIns& standIns, BoundSimpleFamily& family) {
    if (declared.builtIn != BuiltIn_None) {
      if (bound.where != nullptr) Add(declared, family);
      return;
    }
    for (const SimpleType* member : standIns.GetInOrder()) {
      if (member->builtIn != BuiltIn_None) Add(*member, family);
    }
  }

  bool HasDerived(const SimpleType& declared) const {
    const CStandIns standIns(declared);
    const auto isDerived = [&](const SimpleType* type) {
      return type != &declared && standIns.Have(type);
    };
    for (int i = BuiltIn_anySimpleType; i < BuiltIn_Count; ++i) {
      const SimpleType* const builtIn = m_schemas.GetBuiltIn(static_cast<BuiltIn>(i));
      if (builtIn != nullptr && isDerived(builtIn)) return true;
    }
    return std::any_of(m_named.begin(), m_named.end(), isDerived);
  }

  Model& m_model;
  const CSchemaSet& m_schemas;
  CSimpleTypeBinder& m_simpleTypes;
  std::vector<const SimpleType*> m_named;  // in the order of the schemas
  std::map<std::pair<const BoundSimpleType*, const SimpleType*>, const BoundSimpleFamily*>
      m_families;
  std::map<const BoundSimpleType*, int> m_counts;
};

// The simple type of an element whose value the member is; null for any other member.
const SimpleType* FindDeclared(const BoundClass& bound, const BoundMember& member) {
  if (member.IsProhibited()) return nullptr;
  if (member.form == BoundForm::Value && member.element != nullptr) {
    return member.element->type->AsSimple();
  }
  if (member.form != BoundForm::Text || bound.type == nullptr) return nullptr;
  return bound.type->AsSimple();
}

}  // namespace

void AddSimpleTypeFamilies(Model& model, const CSchemaSet& schemas,
                           CSimpleTypeBinder& simpleTypes) {
  CFamilyMaker maker(model, schemas, simpleTypes);
  const auto give = [&maker](const BoundClass& bound, BoundMember& member) {
    const SimpleType* const declared = FindDeclared(bound, member);
    if (declared != nullptr) maker.Give(member, *declared);
  };
  for (const auto& where : model.namespaces) {
    for (const auto& bound : where->classes) {
      for (BoundMember& member : bound->members) give(*bound, member);
      for (BoundRestriction& restricted : bound->restricted) give(*bound, restricted.member);
    }
  }
}

}  // namespace qzxml::generator
