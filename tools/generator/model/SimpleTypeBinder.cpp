#include "tools/generator/model/SimpleTypeBinder.h"

#include <memory>

#include "tools/generator/model/SimpleTypeKind.h"

namespace qzxml::generator {

namespace {

std::unique_ptr<BoundSimpleType> MakeBound(const SimpleType& type) {
  auto bound = std::make_unique<BoundSimpleType>();
  bound->type = &type;
  bound->documentation = type.documentation;
  DecideKind(type, *bound);
  return bound;
}

bool AreSameTexts(const std::vector<const Enumeration*>& a,
                  const std::vector<BoundEnum::Enumerator>& b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (a[i]->text != b[i].text) return false;
  }
  return true;
}

}  // namespace

BoundSimpleType& CSimpleTypeBinder::Add(const SimpleType& type, const BoundNamespace& where,
                                        const std::string& constant) {
  auto bound = MakeBound(type);
  bound->where = &where;
  bound->constant = constant;
  auto& list = m_names.GetNamespace(where.uri).simpleTypes;
  list.push_back(std::move(bound));
  return *list.back();
}

const BoundSimpleType& CSimpleTypeBinder::Bind(const SimpleType& type) {
  const auto found = m_bound.find(&type);
  if (found != m_bound.end()) return *found->second;
  const BoundSimpleType* bound = nullptr;
  if (type.builtIn != BuiltIn_None) {
    bound = &BindBuiltIn(type);
  } else {
    bound = BindEnumeration(type);
  }
  if (bound == nullptr) {
    const BoundNamespace& where = m_names.GetNamespace(type.name.namespaceUri);
    const std::string constant = m_names.TakeConstant(where, m_names.GetStems(type));
    bound = &Add(type, where, constant);
  }
  m_bound[&type] = bound;
  return *bound;
}

const BoundSimpleType& CSimpleTypeBinder::BindBuiltIn(const SimpleType& type) {
  auto bound = MakeBound(type);
  bound->constant = "kXsd" + ToUpperCamel(GetBuiltInName(type.builtIn));
  bound->documentation.clear();
  m_model.builtIns.push_back(std::move(bound));
  return *m_model.builtIns.back();
}

const BoundSimpleType* CSimpleTypeBinder::BindEnumeration(const SimpleType& type) {
  const std::vector<const Enumeration*> texts = GetEnumeratedTexts(type);
  if (texts.empty()) return nullptr;
  const std::string whitespace = GetWhitespaceRule(type);
  if (type.facets.enumerations.empty() && type.base != nullptr) {
    const BoundSimpleType& base = Bind(*type.base);
    if (base.enumeration != nullptr && base.whitespace == whitespace &&
        AreSameTexts(texts, base.enumeration->enumerators)) {
      return &base;
    }
  }
  BoundNamespace& where = m_names.GetNamespace(type.name.namespaceUri);
  auto made = std::make_unique<BoundEnum>();
  made->where = &where;
  made->name = m_names.TakeEnumeration(where, m_names.GetStems(type));
  made->documentation = type.documentation;
  made->type = &type;
  made->whitespace = whitespace;
  for (const Enumeration* text : texts) {
    const std::string front = made->name + "_";
    made->enumerators.push_back(
        {m_names.TakeEnumerator(where, {front + ToEnumeratorPart(text->text),
                                        front + ToSpeltEnumeratorPart(text->text)}),
         text->text, text->documentation});
  }
  BoundSimpleType& bound = Add(type, where, "k" + made->name);
  bound.enumeration = made.get();
  bound.kind = "ItemType_i4";
  bound.cppType = made->name;
  bound.isPassedByValue = true;
  bound.facets.clear();
  bound.needsRules = false;
  where.enums.push_back(std::move(made));
  return &bound;
}

const BoundSimpleType* CSimpleTypeBinder::Narrow(const BoundSimpleType& base,
                                                 const SimpleType& type,
                                                 const BoundNamespace& user) {
  if (base.type == &type) return &base;
  if (base.enumeration != nullptr) {
    const BoundSimpleType& own = Bind(type);
    return own.enumeration == base.enumeration ? &own : nullptr;
  }
  // An enumeration cannot stand in the property of a text, but its rules can.
  if (GetEnumeratedTexts(type).empty()) {
    const BoundSimpleType& own = Bind(type);
    if (own.kind == base.kind) return &own;
  }
  const BoundSimpleType*& narrowed = m_narrowed[{base.kind, &type}];
  if (narrowed != nullptr) return narrowed;
  const BoundNamespace& where =
      type.builtIn != BuiltIn_None ? user : m_names.GetNamespace(type.name.namespaceUri);
  std::vector<std::string> stems = m_names.GetStems(type);
  for (std::string& stem : stems) stem += "As" + ToUpperCamel(base.kind.substr(9));
  BoundSimpleType& made = Add(type, where, m_names.TakeConstant(where, stems));
  made.kind = base.kind;
  made.cppType = base.cppType;
  made.isPassedByValue = base.isPassedByValue;
  made.facets.clear();
  made.needsRules = true;
  narrowed = &made;
  return narrowed;
}

}  // namespace qzxml::generator
