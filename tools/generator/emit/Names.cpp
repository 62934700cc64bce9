#include "tools/generator/emit/Names.h"

#include <algorithm>
#include <cctype>

#include "tools/generator/emit/CodeWriter.h"

namespace qzxml::generator {
namespace {

std::string Lower(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

const BoundClass& Outermost(const BoundClass& boundClass) {
  const BoundClass* outermost = &boundClass;
  while (outermost->outer != nullptr) outermost = outermost->outer;
  return *outermost;
}

// Types of C++ itself and of its library need no qualification.
bool IsOfTheLanguage(const std::string& type) {
  return type.compare(0, 5, "std::") == 0 || type == "bool" || type == "char" || type == "float" ||
         type == "double";
}

}  // namespace

// --- CNames

CNames::CNames(const Model& model) {
  const auto noteByType = [this](const auto& user) {
    if (user.isByType && user.objectClass != nullptr) {
      m_byType[user.objectClass].insert(user.blocked);
    }
  };
  for (const auto& where : model.namespaces) {
    m_namespaces.emplace(where->uri, where.get());
    DeclareNamespace(*where);
    NameHeaders(*where);
    for (const auto& boundClass : where->classes) {
      for (const BoundMember& member : boundClass->members) noteByType(member);
      for (const BoundRestriction& restricted : boundClass->restricted) {
        noteByType(restricted.member);
      }
    }
    for (const BoundRoot& root : where->roots) noteByType(root);
  }
}

const std::set<unsigned>& CNames::GetByType(const BoundClass& boundClass) const {
  static const std::set<unsigned> kNone;
  const auto found = m_byType.find(&boundClass);
  return found == m_byType.end() ? kNone : found->second;
}

std::string CNames::ByType(unsigned blocked) {
  switch (blocked) {
    case Derivation_None:
      return "NewByType";
    case Derivation_Extension:
      return "NewByTypeNotExtended";
    case Derivation_Restriction:
      return "NewByTypeNotRestricted";
    default:
      return "NewByTypeNotDerived";
  }
}

void CNames::DeclareNamespace(const BoundNamespace& where) {
  std::set<std::string>& declared = m_declared[where.cppName];
  declared.insert(where.constant);
  declared.insert("NewRoot");
  for (const auto& boundEnum : where.enums) {
    declared.insert(boundEnum->name);
    for (const BoundEnum::Enumerator& enumerator : boundEnum->enumerators) {
      declared.insert(enumerator.name);
    }
  }
  for (const auto& type : where.simpleTypes) declared.insert(type->constant);
  for (const auto& boundClass : where.classes) {
    if (boundClass->outer == nullptr) declared.insert(boundClass->name);
  }
  // The namespace itself is a name of the one around it.
  std::string path = where.cppName;
  for (std::size_t colons = path.rfind("::"); colons != path.npos; colons = path.rfind("::")) {
    m_declared[path.substr(0, colons)].insert(path.substr(colons + 2));
    path.resize(colons);
  }
}

void CNames::NameHeaders(const BoundNamespace& where) {
  std::set<std::string> taken = {Lower(where.fileStem), Lower(kEnumerationsStem),
                                 Lower(kSimpleTypesStem), Lower(kNamespaceStem), Lower(kRootsStem)};
  for (const auto& boundClass : where.classes) {
    if (boundClass->outer != nullptr) continue;
    std::string stem = boundClass->fileStem;
    while (!taken.insert(Lower(stem)).second) stem += "Class";
    m_classHeaders[boundClass.get()] = where.fileStem + "/" + stem + ".h";
  }
}

std::string CNames::NamespaceHeader(const BoundNamespace& where) {
  return where.fileStem + "/" + where.fileStem + ".h";
}

std::string CNames::Header(const BoundNamespace& where, const char* stem) {
  return where.fileStem + "/" + stem + ".h";
}

std::string CNames::ClassHeader(const BoundClass& boundClass) const {
  return m_classHeaders.at(&Outermost(boundClass));
}

bool CNames::IsDeclared(const BoundNamespace& where, const std::string& name) const {
  std::string path = where.cppName;
  while (true) {
    const auto declared = m_declared.find(path);
    if (declared != m_declared.end() && declared->second.count(name) != 0) return true;
    const std::size_t colons = path.rfind("::");
    if (colons == path.npos) return false;
    path.resize(colons);
  }
}

const BoundNamespace* CNames::FindNamespace(const std::string& uri) const {
  const auto found = m_namespaces.find(uri);
  return found == m_namespaces.end() ? nullptr : found->second;
}

// --- CScope

// A class hides by its nested classes and enumerations, those of the classes around it, and those
// of their bases.
bool CScope::IsHidden(const std::string& name) const {
  if (m_inside == nullptr) return false;
  if (name == "Property" || name == "Selected") return true;
  for (const BoundClass* outer = m_inside; outer != nullptr; outer = outer->outer) {
    for (const BoundClass* base = outer; base != nullptr; base = base->base) {
      if (std::any_of(base->nested.begin(), base->nested.end(),
                      [&](const BoundClass* nested) { return nested->name == name; })) {
        return true;
      }
    }
  }
  return false;
}

bool CScope::IsWithin(const BoundClass* outer) const {
  for (const BoundClass* inside = m_inside; inside != nullptr; inside = inside->outer) {
    if (inside == outer) return true;
  }
  return false;
}

std::string CScope::Qualified(const BoundNamespace& where, const std::string& name) const {
  if (where.cppName == m_where.cppName && !IsHidden(name)) return name;
  return "::" + where.cppName + "::" + name;
}

std::string CScope::Library(const std::string& name) const {
  if (m_place == Place::Source && !m_names.IsDeclared(m_where, name) && !IsHidden(name)) {
    return name;
  }
  return "QzXmlLib16::" + name;
}

std::string CScope::SmartPtr(const std::string& argument) const {
  const bool isClear = !m_names.IsDeclared(m_where, "CSmartPtr") && !IsHidden("CSmartPtr");
  return (isClear ? "CSmartPtr<" : "::CSmartPtr<") + argument + ">";
}

std::string CScope::Class(const BoundClass& boundClass) const {
  if (m_place == Place::Source) Include(m_names.ClassHeader(boundClass));
  if (boundClass.outer == nullptr) return Qualified(*boundClass.where, boundClass.name);
  // In a header a class is named from within by its own name; a definition begins outside.
  if (m_place == Place::Header && IsWithin(boundClass.outer)) return boundClass.name;
  return Class(*boundClass.outer) + "::" + boundClass.name;
}

std::string CScope::Enum(const BoundEnum& boundEnum) const {
  return Qualified(*boundEnum.where, boundEnum.name);
}

std::string CScope::Value(const BoundSimpleType& type) const {
  if (type.enumeration != nullptr) return Enum(*type.enumeration);
  return IsOfTheLanguage(type.cppType) ? type.cppType : Library(type.cppType);
}

std::string CScope::Constant(const BoundSimpleType& type) const {
  if (type.where == nullptr) {
    Include("qzxml/binding/BuiltInTypes.h");
    return Library(type.constant);
  }
  Include(CNames::Header(*type.where, kSimpleTypesStem));
  return Qualified(*type.where, type.constant);
}

std::string CScope::Family(const BoundSimpleFamily& family) const {
  Include(CNames::Header(*family.where, kSimpleTypesStem));
  return Qualified(*family.where, family.types);
}

std::string CScope::Uri(const std::string& uri) const {
  const BoundNamespace* const where = m_names.FindNamespace(uri);
  if (uri.empty() || where == nullptr) return Literal(uri);
  Include(CNames::Header(*where, kNamespaceStem));
  return Qualified(*where, where->constant);
}

std::string CScope::Collection(const BoundMember& member) const {
  switch (member.form) {
    case BoundForm::AnyAttribute:
      return Library("CAttributeCol");
    case BoundForm::Wildcard:
      return Library("CWildcardCol");
    case BoundForm::Untyped:
      return Library("CElementCol");
    case BoundForm::Object:
    case BoundForm::Group:
      return Library("CObjectCol") + "<" + Class(*member.objectClass) + ">";
    case BoundForm::Value:
    case BoundForm::Attribute:
    case BoundForm::Text:
      break;
  }
  if (member.simple->enumeration != nullptr) {
    return Library("CEnumCol") + "<" + Enum(*member.simple->enumeration) + ">";
  }
  return Library("CValueCol") + "<" + Library(member.simple->kind) + ">";
}

}  // namespace qzxml::generator
