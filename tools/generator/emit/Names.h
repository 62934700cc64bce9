#pragma once

#include <map>
#include <set>
#include <string>

#include "tools/generator/model/Model.h"

namespace qzxml::generator {

// Which files the parts of a model go to, and which names its C++ namespaces declare.
class CNames {
 public:
  explicit CNames(const Model& model);

  // --- Files, relative to the output folder. The headers of a namespace itself have fixed names; a
  // class whose header would be the same one, also for a file system that knows no case, gets
  // another.
  static std::string NamespaceHeader(const BoundNamespace& where);  // "orders/orders.h"
  static std::string Header(const BoundNamespace& where, const char* stem);
  std::string ClassHeader(const BoundClass& boundClass) const;  // that of the outermost class

  // Whether a name that is written in the namespace would be found in it or in one around it.
  bool IsDeclared(const BoundNamespace& where, const std::string& name) const;

  // The namespace whose schema has that target namespace; null for none.
  const BoundNamespace* FindNamespace(const std::string& uri) const;

  // Whether an element may be of a class that its xsi:type tells, so that the class needs
  // NewByType, or more of them: the sets of blocked derivations for which there is one.
  const std::set<unsigned>& GetByType(const BoundClass& boundClass) const;
  // "NewByType", "NewByTypeNotExtended".
  static std::string ByType(unsigned blocked);

 private:
  void DeclareNamespace(const BoundNamespace& where);
  void NameHeaders(const BoundNamespace& where);

  std::map<std::string, std::set<std::string>> m_declared;  // by C++ namespace
  std::map<const BoundClass*, std::string> m_classHeaders;
  std::map<std::string, const BoundNamespace*> m_namespaces;  // by URI
  std::map<const BoundClass*, std::set<unsigned>> m_byType;
};

// How things are written at one place of the generated code, and which headers that takes.
class CScope {
 public:
  // In a header the library's names are qualified, in a source they are visible.
  enum class Place { Header, Source };
  CScope(const CNames& names, const BoundNamespace& where, Place place)
      : m_names(names), m_where(where), m_place(place) {}

  // Inside which class, for names that its own would hide; null for none.
  void SetClass(const BoundClass* inside) { m_inside = inside; }
  const BoundNamespace& GetNamespace() const { return m_where; }
  const CNames& GetNames() const { return m_names; }

  std::string Library(const std::string& name) const;  // "QzXmlLib16::CDecimal"
  std::string SmartPtr(const std::string& argument) const;
  std::string Class(const BoundClass& boundClass) const;
  std::string Enum(const BoundEnum& boundEnum) const;
  std::string Value(const BoundSimpleType& type) const;       // the C++ type
  std::string Constant(const BoundSimpleType& type) const;    // of CSimpleTypeInfo
  std::string Family(const BoundSimpleFamily& family) const;  // of CSimpleTypeFamily
  std::string Uri(const std::string& uri) const;              // a constant or a literal
  std::string Collection(const BoundMember& member) const;    // "QzXmlLib16::CObjectCol<CItem>"

  // --- What the text needs. Filled by the functions above in a source, by the writer in a header.
  void Include(const std::string& header) const { m_includes.insert(header); }
  const std::set<std::string>& GetIncludes() const { return m_includes; }

 private:
  bool IsHidden(const std::string& name) const;
  std::string Qualified(const BoundNamespace& where, const std::string& name) const;
  bool IsWithin(const BoundClass* outer) const;

  const CNames& m_names;
  const BoundNamespace& m_where;
  Place m_place;
  const BoundClass* m_inside = nullptr;
  mutable std::set<std::string> m_includes;
};

inline constexpr char kEnumerationsStem[] = "Enumerations";
inline constexpr char kSimpleTypesStem[] = "SimpleTypes";
inline constexpr char kNamespaceStem[] = "Namespace";
inline constexpr char kRootsStem[] = "Roots";

}  // namespace qzxml::generator
