#include <algorithm>
#include <map>
#include <set>

#include "tools/generator/emit/Accessors.h"
#include "tools/generator/emit/ClassWriter.h"
#include "tools/generator/emit/Files.h"

namespace qzxml::generator {
namespace {

// What a header has to include and to declare for a class and its nested ones.
class CNeeds {
 public:
  CNeeds(const CNames& names, const BoundClass& outermost) : m_names(names), m_own(outermost) {
    Add(outermost);
  }

  const std::set<std::string>& GetStandard() const { return m_standard; }
  const std::set<std::string>& GetLocal() const { return m_local; }
  // By C++ namespace: "class CItem;", "enum Unit : int;".
  const std::map<std::string, std::set<std::string>>& GetDeclarations() const {
    return m_declarations;
  }

 private:
  void Add(const BoundClass& boundClass) {
    if (boundClass.base == nullptr) {
      m_local.insert("qzxml/binding/BoundClass.h");
    } else {
      AddHeaderOf(*boundClass.base);
    }
    for (const BoundClass* nested : boundClass.nested) Add(*nested);
    for (const BoundMember& member : boundClass.members) {
      if (member.simple != nullptr) AddSimple(boundClass, member);
      if (member.objectClass != nullptr) AddObject(*member.objectClass);
      AddLibrary(member);
    }
  }

  void AddSimple(const BoundClass& boundClass, const BoundMember& member) {
    const BoundSimpleType& type = *member.simple;
    if (type.enumeration != nullptr) {
      m_standard.insert("<cstdint>");
      m_declarations[type.enumeration->where->cppName].insert("enum " + type.enumeration->name +
                                                              " : int;");
    }
    if (GetAccess(boundClass, member) == Access::Collection) return;
    m_standard.insert("<optional>");
    if (type.enumeration != nullptr) return;
    if (type.cppType == "std::string") m_standard.insert("<string>");
    if (type.cppType.compare(0, 5, "std::") == 0 && type.cppType != "std::string") {
      m_standard.insert("<cstdint>");
    }
    if (!type.isPassedByValue) m_standard.insert("<utility>");
  }

  void AddObject(const BoundClass& objectClass) {
    if (objectClass.outer != nullptr) {
      AddHeaderOf(objectClass);
    } else if (&objectClass != &m_own) {
      m_declarations[objectClass.where->cppName].insert("class " + objectClass.name + ";");
    }
  }

  void AddHeaderOf(const BoundClass& boundClass) {
    const std::string header = m_names.ClassHeader(boundClass);
    if (header != m_names.ClassHeader(m_own)) m_local.insert(header);
  }

  void AddLibrary(const BoundMember& member) {
    const bool isCollection = member.IsCollection();
    switch (member.form) {
      case BoundForm::Attribute:
      case BoundForm::Text:
        return;
      case BoundForm::AnyAttribute:
        m_local.insert("qzxml/collections/AttributeCol.h");
        return;
      case BoundForm::Untyped:
        m_local.insert(isCollection ? "qzxml/collections/ElementCol.h"
                                    : "qzxml/collections/Element.h");
        return;
      case BoundForm::Value:
        if (isCollection) m_local.insert("qzxml/binding/ValueCol.h");
        return;
      case BoundForm::Object:
      case BoundForm::Group:
      case BoundForm::Wildcard:
        if (isCollection) m_local.insert("qzxml/binding/ObjectCol.h");
        return;
    }
  }

  const CNames& m_names;
  const BoundClass& m_own;
  std::set<std::string> m_standard;
  std::set<std::string> m_local;
  std::map<std::string, std::set<std::string>> m_declarations;
};

// What is visible in a class only where others derive from it.
bool IsBase(const BoundClass& boundClass) {
  return boundClass.isAbstract || !boundClass.derived.empty();
}

bool BecomesNillable(const BoundClass& boundClass) {
  if (!boundClass.isNillable) return false;
  for (const BoundClass* base = boundClass.base; base != nullptr; base = base->base) {
    if (base->isNillable) return false;
  }
  return true;
}

class CClassWriter {
 public:
  CClassWriter(CScope& scope, const BoundClass& boundClass, CCodeWriter& writer)
      : m_scope(scope), m_class(boundClass), m_writer(writer) {}

  void Write() {
    m_writer.Comment(m_class.documentation.empty() && m_class.isGroup ? Content()
                                                                      : m_class.documentation);
    WriteHead();
    m_scope.SetClass(&m_class);
    m_writer.Label("public:");
    m_writer.Indent();
    WriteNested();
    WriteSelected();
    WriteConstruction();
    WriteAccessorsOfAll();
    m_writer.Outdent();
    if (IsBase(m_class)) WriteProtected();
    WritePrivate();
    m_writer.Line("};");
    m_scope.SetClass(m_class.outer);
  }

 private:
  std::string BaseName() const {
    return m_class.base == nullptr ? m_scope.Library("CBoundClass") : m_scope.Class(*m_class.base);
  }

  // What a group that nobody has described consists of.
  std::string Content() const {
    constexpr std::size_t kMost = 8;
    std::string content;
    std::size_t count = 0;
    for (const BoundMember& member : m_class.members) {
      if (member.form < BoundForm::Value) continue;
      if (++count > kMost) return content + ", ...";
      content += (count == 1 ? "" : ", ") +
                 (member.form == BoundForm::Wildcard ? "any other" : member.xmlName);
    }
    return m_class.groupType == BoundGroupType::Choice && count > 1 ? "One of " + content + "."
                                                                    : content + ".";
  }

  void WriteHead() {
    const std::string head = "class " + m_class.name + " : public ";
    std::vector<std::string> bases = {BaseName()};
    if (BecomesNillable(m_class)) bases.push_back("public " + m_scope.Library("CNillableState"));
    std::string line = head + bases[0];
    if (bases.size() > 1) line += ", " + bases[1];
    if (m_writer.Fits(line + " {")) return m_writer.Line(line + " {");
    if (bases.size() == 1) {
      m_writer.Line("class " + m_class.name);
      m_writer.LineAt(4, ": public " + bases[0] + " {");
      return;
    }
    m_writer.Line(head + bases[0] + ",");
    m_writer.LineAt(head.size() - 7, bases[1] + " {");
  }

  void WriteNested() {
    for (const BoundClass* nested : m_class.nested) {
      CClassWriter(m_scope, *nested, m_writer).Write();
      m_writer.Gap();
    }
  }

  void WriteSelected() {
    if (m_class.groupType != BoundGroupType::Choice) return;
    std::vector<std::string> items = {"Selected_None = -1"};
    std::int32_t index = m_class.basePropertyCount;
    for (const BoundMember& member : m_class.members) {
      if (member.form >= BoundForm::Value) {
        items.push_back("Selected_" + member.name + " = " + std::to_string(index));
      }
      ++index;
    }
    m_hasSelected = items.size() > 1;
    if (m_hasSelected) m_writer.Enum("enum Selected : int", items);
    m_writer.Gap();
  }

  static std::string ByTypeComment(unsigned blocked) {
    const std::string made =
        "Makes the object for an element of this type: of the class that its "
        "xsi:type names, or of this one";
    switch (blocked) {
      case Derivation_None:
        return made + ".";
      case Derivation_Extension:
        return made + ". The schema blocks types that extend this one there.";
      case Derivation_Restriction:
        return made + ". The schema blocks types that restrict this one there.";
      default:
        return made + ". The schema blocks all types that derive from this one there.";
    }
  }

  void WriteConstruction() {
    if (!m_class.isAbstract) m_writer.Line(m_class.name + "();");
    m_writer.Line("~" + m_class.name + "() override;");
    for (const unsigned blocked : m_scope.GetNames().GetByType(m_class)) {
      m_writer.Gap();
      m_writer.Comment(ByTypeComment(blocked));
      m_writer.Declaration("static " + m_scope.Library("CObjectHandle") + " " +
                           CNames::ByType(blocked) + "(" + m_scope.Library("CXmlElement") +
                           "* element)");
    }
    m_writer.Gap();
    if (m_hasSelected) {
      m_writer.Comment("Which one is there.");
      m_writer.Function("Selected GetSelected() const",
                        {"return static_cast<Selected>(", {"GetSelectedMember()"}, ");", {}});
      m_writer.Gap();
    }
  }

  void WriteAccessorsOfAll() {
    for (const BoundMember& member : m_class.members) {
      WriteAccessors(m_scope, m_class, member, m_writer);
    }
  }

  void WriteProtected() {
    m_writer.Gap();
    m_writer.Label("protected:");
    m_writer.Indent();
    const std::string binding = m_scope.Library("CClassBinding");
    m_writer.Constructor("explicit " + m_class.name + "(" + binding + "& binding)",
                         BaseName() + "(binding)");
    m_writer.Gap();
    m_writer.Line("static " + binding + " s_binding;");
    m_writer.Outdent();
  }

  void WritePrivate() {
    if (IsBase(m_class) && m_class.members.empty()) return;
    m_writer.Gap();
    m_writer.Label("private:");
    m_writer.Indent();
    if (!m_class.members.empty()) {
      WriteProperties();
      m_writer.Gap();
      m_writer.Line("static const " + m_scope.Library("CMember") + " s_members[];");
    }
    if (!IsBase(m_class)) {
      m_writer.Line("static " + m_scope.Library("CClassBinding") + " s_binding;");
    }
    if (!m_class.members.empty()) m_writer.Line("");
    for (const BoundMember& member : m_class.members) {
      m_writer.Line(GetDataType(m_scope, member) + " " + member.variable + ";");
    }
    m_writer.Outdent();
  }

  void WriteProperties() {
    std::vector<std::string> items;
    for (const BoundMember& member : m_class.members) items.push_back("Property_" + member.name);
    if (m_class.basePropertyCount > 0) {
      items[0] += " = " + std::to_string(m_class.basePropertyCount);
    }
    m_writer.Enum("enum Property : int", items);
  }

  CScope& m_scope;
  const BoundClass& m_class;
  CCodeWriter& m_writer;
  bool m_hasSelected = false;
};

}  // namespace

std::string WriteClassHeader(const CNames& names, const BoundClass& boundClass,
                             const std::string& firstLine) {
  const CNeeds needs(names, boundClass);
  CCodeWriter writer;
  BeginHeader(firstLine, needs.GetStandard(), needs.GetLocal(), writer);

  const auto& declarations = needs.GetDeclarations();
  for (const auto& [cppName, lines] : declarations) {
    if (cppName == boundClass.where->cppName) continue;
    writer.Line("namespace " + cppName + " {");
    for (const std::string& line : lines) writer.Line(line);
    writer.Line("}  // namespace " + cppName);
    writer.Gap();
  }
  writer.Line("namespace " + boundClass.where->cppName + " {");
  writer.Line("");
  const auto own = declarations.find(boundClass.where->cppName);
  if (own != declarations.end()) {
    for (const std::string& line : own->second) writer.Line(line);
    writer.Gap();
  }
  CScope scope(names, *boundClass.where, CScope::Place::Header);
  CClassWriter(scope, boundClass, writer).Write();
  writer.Gap();
  writer.Line("}  // namespace " + boundClass.where->cppName);
  return writer.Take();
}

}  // namespace qzxml::generator
