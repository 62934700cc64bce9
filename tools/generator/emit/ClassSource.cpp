#include <algorithm>

#include "tools/generator/emit/Accessors.h"
#include "tools/generator/emit/ClassWriter.h"

namespace qzxml::generator {
namespace {

std::string Occurs(const CScope& scope, const BoundMember& member) {
  const std::string min = std::to_string(member.minOccurs);
  const std::string max = std::to_string(member.maxOccurs);
  if (member.IsProhibited()) return scope.Library("Optional");
  if (member.minOccurs == 1 && member.maxOccurs == 1) return scope.Library("Once");
  if (member.minOccurs == 0 && member.maxOccurs == 1) return scope.Library("Optional");
  if (member.maxOccurs >= 0) return scope.Library("Repeated") + "(" + min + ", " + max + ")";
  return scope.Library("Repeated") + "(" + (member.minOccurs > 0 ? min : "") + ")";
}

// The calls that make the CMember of one member.
class CMemberText {
 public:
  // property: "&CItem::m_price". declared is the member whose C++ type the property has: of a
  // restriction, that of the base class.
  CMemberText(CScope& scope, const BoundMember& member, const BoundMember& declared,
              std::string property)
      : m_scope(scope), m_member(member), m_declared(declared), m_property(std::move(property)) {}

  // The call, its tail ended by end.
  CallText Make(const std::string& end) const {
    CallText call;
    call.head = m_scope.Library(Function()) + "(";
    call.arguments = Arguments();
    call.tail = ")" + end;
    call.links = Links();
    return call;
  }

 private:
  std::string Function() const {
    switch (m_member.form) {
      case BoundForm::Attribute:
        return m_member.IsMandatory() ? "RequiredAttribute" : "OptionalAttribute";
      case BoundForm::AnyAttribute:
        return "AnyAttribute";
      case BoundForm::Text:
        return "Text";
      case BoundForm::Value:
        return "ValueElement";
      case BoundForm::Object:
        return "ObjectElement";
      case BoundForm::Group:
        return "Group";
      case BoundForm::Untyped:
        return "UntypedElement";
      case BoundForm::Wildcard:
        return "AnyElement";
    }
    return "";
  }

  std::vector<std::string> Arguments() const {
    switch (m_member.form) {
      case BoundForm::Attribute:
        return {Name(), Uri(), m_property, m_scope.Constant(*m_member.simple)};
      case BoundForm::AnyAttribute:
        return {Uri(), Literal(m_member.wildcard), m_property};
      case BoundForm::Text:
        return {m_property, Simple()};
      case BoundForm::Value:
        return WithCollection({Name(), Uri(), Occurs(), m_property, Simple()});
      case BoundForm::Object:
        return WithCollection({Name(), Uri(), Occurs(), m_property, NewObject()});
      case BoundForm::Group:
        return WithCollection({Name(), Occurs(), m_property, NewObject()});
      case BoundForm::Untyped:
        return {Name(), Uri(), Occurs(), m_property};
      case BoundForm::Wildcard:
        return {Uri(), Literal(m_member.wildcard), Occurs(), m_property};
    }
    return {};
  }

  std::vector<std::string> Links() const {
    std::vector<std::string> links;
    if (m_member.isByType && m_member.objectClass != nullptr) {
      links.push_back(".ByType(&" + m_scope.Class(*m_member.objectClass) +
                      "::" + CNames::ByType(m_member.blocked) + ")");
    }
    if (m_member.defaultValue) {
      links.push_back((m_member.isFixed ? ".WithFixed(" : ".WithDefault(") +
                      Literal(*m_member.defaultValue) + ")");
    }
    // An element of any type is a collection where more than one may stand.
    if (m_member.form == BoundForm::Untyped && m_declared.IsCollection() &&
        m_member.maxOccurs == 1) {
      links.push_back(".InCollection()");
    }
    if (m_member.IsProhibited()) links.push_back(".Prohibited()");
    if (m_member.isOwnTypeOnly) links.push_back(".OwnTypeOnly()");
    if (m_member.isNillable) links.push_back(".Nillable()");
    if (m_member.requiresContent) links.push_back(".RequiresContent()");
    return links;
  }

  std::string Name() const { return Literal(m_member.xmlName); }
  std::string Uri() const { return m_scope.Uri(m_member.xmlNamespace); }
  std::string Occurs() const { return generator::Occurs(m_scope, m_member); }

  std::string Simple() const {
    return m_member.family != nullptr ? m_scope.Family(*m_member.family)
                                      : m_scope.Constant(*m_member.simple);
  }

  std::string NewObject() const {
    const BoundClass& objectClass = *m_member.objectClass;
    if (objectClass.isAbstract) return "nullptr";
    return "&" + m_scope.Library("NewObject") + "<" + m_scope.Class(objectClass) + ">";
  }

  std::vector<std::string> WithCollection(std::vector<std::string> arguments) const {
    if (!m_declared.IsCollection()) return arguments;
    const bool isValue = m_declared.form == BoundForm::Value;
    m_scope.Include(isValue ? "qzxml/binding/ValueCol.h" : "qzxml/binding/ObjectCol.h");
    const std::string factory = !isValue             ? "NewObjectCol"
                                : IsEnum(m_declared) ? "NewEnumCol"
                                                     : "NewValueCol";
    // The argument is that of the collection.
    const std::string collection = m_scope.Collection(m_declared);
    arguments.push_back("&" + m_scope.Library(factory) + collection.substr(collection.find('<')));
    return arguments;
  }

  CScope& m_scope;
  const BoundMember& m_member;
  const BoundMember& m_declared;
  std::string m_property;
};

class CDefinitionWriter {
 public:
  CDefinitionWriter(CScope& scope, const BoundClass& boundClass, CCodeWriter& writer)
      : m_scope(scope),
        m_class(boundClass),
        m_writer(writer),
        m_name((scope.SetClass(nullptr), scope.Class(boundClass))) {
    m_scope.SetClass(&boundClass);
  }

  void Write() {
    m_writer.Line("// --- " + m_name);
    m_writer.Gap();
    WriteMembers();
    WriteRestricted();
    WriteBinding();
    WriteConstruction();
    for (const unsigned blocked : m_scope.GetNames().GetByType(m_class)) WriteByType(blocked);
    for (const BoundMember& member : m_class.members) {
      WriteAccessorDefinitions(m_scope, m_class, member, m_writer);
    }
    for (const BoundClass* nested : m_class.nested) {
      m_writer.Gap();
      CDefinitionWriter(m_scope, *nested, m_writer).Write();
    }
    m_scope.SetClass(nullptr);
  }

 private:
  void WriteMembers() {
    if (m_class.members.empty()) return;
    m_writer.Line("const " + m_scope.Library("CMember") + " " + m_name + "::s_members[] = {");
    m_writer.Indent(2);
    for (const BoundMember& member : m_class.members) {
      const std::string property = "&" + m_name + "::" + member.variable;
      m_writer.Call(CMemberText(m_scope, member, member, property).Make(","));
    }
    m_writer.Outdent(2);
    m_writer.Line("};");
    m_writer.Gap();
  }

  // Unlike the members these have no place in the class, as nothing of it is named.
  void WriteRestricted() {
    if (m_class.restricted.empty()) return;
    m_writer.Line("static const " + m_scope.Library("CRestrictedMember") + " " + Restricted() +
                  "[] = {");
    m_writer.Indent(2);
    for (const BoundRestriction& restricted : m_class.restricted) {
      CallText call = CMemberText(m_scope, restricted.member, *restricted.declared,
                                  m_scope.Library("CProperty") + "()")
                          .Make("},");
      call.head = "{" + std::to_string(restricted.propertyIndex) + ", " + call.head;
      call.linkIndent = 8;
      m_writer.Call(call);
    }
    m_writer.Outdent(2);
    m_writer.Line("};");
    m_writer.Gap();
  }

  // "kItem_Restricted", of a nested class "kOrder_Items_Restricted".
  std::string Restricted() const {
    std::string name = m_class.name.substr(1);
    for (const BoundClass* outer = m_class.outer; outer != nullptr; outer = outer->outer) {
      name = outer->name.substr(1) + "_" + name;
    }
    return "k" + name + "_Restricted";
  }

  void WriteBinding() {
    m_writer.Line(m_scope.Library("CClassBinding") + " " + m_name + "::s_binding{");
    m_writer.Indent(2);
    const std::string newObject =
        m_class.isAbstract ? "nullptr" : "&" + m_scope.Library("NewObject") + "<" + m_name + ">";
    m_writer.Call({m_scope.Library("CClassTraits") + "{",
                   {Literal(m_class.typeName), m_scope.Uri(m_class.where->uri),
                    Literal(m_class.elementName), newObject},
                   "},",
                   Traits()});
    m_writer.Line((m_class.members.empty() ? m_scope.Library("CMemberList") + "()" : "s_members") +
                  ",");
    if (m_class.base != nullptr) {
      m_writer.Line("&" + m_scope.Class(*m_class.base) + "::s_binding,");
      m_writer.Line(std::to_string(m_class.basePropertyCount) + ",");
      if (!m_class.restricted.empty()) m_writer.Line(Restricted() + ",");
    }
    m_writer.Outdent(2);
    m_writer.Line("};");
    m_writer.Gap();
  }

  std::vector<std::string> Traits() const {
    std::vector<std::string> traits;
    if (m_class.groupType == BoundGroupType::Choice) traits.push_back(".AsChoice()");
    if (m_class.groupType == BoundGroupType::All) traits.push_back(".AsAll()");
    if (m_class.isGroup) traits.push_back(".AsGroup()");
    if (m_class.isDerived) traits.push_back(".Derived()");
    if (m_class.requiresContent) traits.push_back(".RequiresContent()");
    if (m_class.isMixed) traits.push_back(".Mixed()");
    if (m_class.isNillable) traits.push_back(".Nillable()");
    return traits;
  }

  void WriteConstruction() {
    const std::string base =
        m_class.base == nullptr ? m_scope.Library("CBoundClass") : m_scope.Class(*m_class.base);
    if (!m_class.isAbstract) {
      m_writer.Constructor(m_name + "::" + m_class.name + "()", base + "(s_binding)");
    }
    m_writer.Defaulted(m_name + "::~" + m_class.name + "()");
  }

  void WriteByType(unsigned blocked) {
    m_writer.Gap();
    std::vector<const BoundClass*> types = m_class.GetDerived(blocked);
    types.insert(types.begin(), &m_class);
    types.erase(std::remove_if(types.begin(), types.end(),
                               [](const BoundClass* type) {
                                 return type->isAbstract || type->typeName.empty();
                               }),
                types.end());
    m_writer.Begin(m_scope.Library("CObjectHandle") + " " + m_name +
                   "::" + CNames::ByType(blocked) + "(" + m_scope.Library("CXmlElement") + "*" +
                   (types.empty() ? "" : " element") + ")");
    m_writer.Indent();
    if (types.empty()) {
      m_writer.Line("return " + m_scope.Library("CObjectHandle") + "();");
    } else {
      WriteTypeTable(types);
    }
    m_writer.Outdent();
    m_writer.Line("}");
  }

  void WriteTypeTable(const std::vector<const BoundClass*>& types) {
    const std::string newObject = "&" + m_scope.Library("NewObject") + "<";
    m_writer.Line("static constexpr " + m_scope.Library("CNamedType") + " kTypes[] = {");
    m_writer.Indent(2);
    for (const BoundClass* type : types) {
      m_writer.Call({"{",
                     {m_scope.Uri(type->where->uri), Literal(type->typeName),
                      newObject + m_scope.Class(*type) + ">"},
                     "},",
                     {}});
    }
    m_writer.Outdent(2);
    m_writer.Line("};");
    m_writer.Call({"return " + m_scope.Library("NewObjectByType") + "(",
                   {"element", m_class.isAbstract ? "nullptr" : newObject + m_name + ">", "kTypes"},
                   ");",
                   {}});
  }

  CScope& m_scope;
  const BoundClass& m_class;
  CCodeWriter& m_writer;
  const std::string m_name;
};

}  // namespace

void WriteClassSource(CScope& scope, const BoundClass& boundClass, CCodeWriter& writer) {
  scope.Include("qzxml/binding/ObjectFactory.h");
  CDefinitionWriter(scope, boundClass, writer).Write();
}

}  // namespace qzxml::generator
