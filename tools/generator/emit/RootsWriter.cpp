#include "tools/generator/emit/RootsWriter.h"

#include <cctype>
#include <iterator>
#include <set>
#include <vector>

#include "tools/generator/emit/Files.h"

namespace qzxml::generator {
namespace {

// Where several target namespaces share a C++ namespace, their constants have numbers; the
// functions get the same ones.
std::string Number(const BoundNamespace& where) {
  const std::size_t end = where.constant.find_last_not_of("0123456789") + 1;
  return where.constant.substr(end);
}

struct Maker {
  std::string name;  // "NewPurchaseOrder"
  const BoundRoot* root;
};

// "New" and the element's name without what C++ does not take, each part beginning with a capital.
std::string MakerName(const std::string& element) {
  std::string name = "New";
  bool isStart = true;
  for (const char c : element) {
    const bool isPlain = std::isalnum(static_cast<unsigned char>(c)) != 0;
    if (isPlain) {
      name += isStart ? static_cast<char>(std::toupper(static_cast<unsigned char>(c))) : c;
    }
    isStart = !isPlain;
  }
  return name;
}

// Functions of the library that the definitions call.
constexpr const char* kLibraryFunctions[] = {"NewAttributeCol", "NewElement",    "NewElementCol",
                                             "NewEnumCol",      "NewObject",     "NewObjectByType",
                                             "NewObjectCol",    "NewRoot",       "NewRootObject",
                                             "NewValueCol",     "NewWildcardCol"};

std::vector<Maker> MakersOf(const CNames& names, const BoundNamespace& where) {
  std::set<std::string> taken(std::begin(kLibraryFunctions), std::end(kLibraryFunctions));
  taken.insert("New");
  std::vector<Maker> makers;
  for (const BoundRoot& root : where.roots) {
    if (root.objectClass->isAbstract) continue;
    const std::string plain = MakerName(root.name) + Number(where);
    std::string name = plain;
    for (int number = 1; names.IsDeclared(where, name) || taken.count(name) != 0; ++number) {
      name = plain + "Element" + (number > 1 ? std::to_string(number) : "");
    }
    taken.insert(name);
    makers.push_back({name, &root});
  }
  return makers;
}

}  // namespace

std::string WriteRootsHeader(const CNames& names, const BoundNamespace& where,
                             const std::string& firstLine) {
  CCodeWriter writer;
  CScope scope(names, where, CScope::Place::Header);
  // Classes of other namespaces are included: this namespace is the only one of the header.
  std::set<std::string> includes = {"qzxml/binding/ObjectFactory.h"};
  std::set<std::string> declarations;
  const std::vector<Maker> makers = MakersOf(names, where);
  for (const Maker& maker : makers) {
    const BoundClass& objectClass = *maker.root->objectClass;
    if (objectClass.where == &where && objectClass.outer == nullptr) {
      declarations.insert("class " + objectClass.name + ";");
    } else {
      includes.insert(names.ClassHeader(objectClass));
    }
  }
  BeginHeader(firstLine, {}, includes, writer);
  writer.Line("namespace " + where.cppName + " {");
  writer.Line("");
  for (const std::string& line : declarations) writer.Line(line);
  writer.Gap();
  writer.Comment(
      "Makes the object for the root of a document; null for an element that the schema does not "
      "declare, and for one whose abstract type its xsi:type does not fill in.");
  writer.Declaration(scope.Library("CObjectHandle") + " NewRoot" + Number(where) + "(" +
                     scope.Library("CXmlElement") + "* element)");
  writer.Gap();
  if (!makers.empty()) writer.Comment("Each makes an empty object for an element of that name.");
  for (const Maker& maker : makers) {
    if (!maker.root->documentation.empty()) {
      writer.Gap();
      writer.Comment(maker.root->documentation);
    }
    writer.Declaration(scope.SmartPtr(scope.Class(*maker.root->objectClass)) + " " + maker.name +
                       "()");
  }
  writer.Gap();
  writer.Line("}  // namespace " + where.cppName);
  return writer.Take();
}

void WriteRootsSource(CScope& scope, const BoundNamespace& where, CCodeWriter& writer) {
  scope.Include(CNames::Header(where, kRootsStem));
  writer.Line("// --- Roots");
  writer.Gap();
  writer.Line(scope.Library("CObjectHandle") + " NewRoot" + Number(where) + "(" +
              scope.Library("CXmlElement") + "* element) {");
  writer.Indent();
  writer.Line("static constexpr " + scope.Library("CNamedElement") + " kElements[] = {");
  writer.Indent(2);
  for (const BoundRoot& root : where.roots) {
    const std::string name = scope.Class(*root.objectClass);
    writer.Call(
        {"{",
         {scope.Uri(root.namespaceUri), Literal(root.name),
          root.objectClass->isAbstract ? "nullptr"
                                       : "&" + scope.Library("NewObject") + "<" + name + ">",
          root.isByType ? "&" + name + "::" + CNames::ByType(root.blocked) : "nullptr"},
         "},",
         {}});
  }
  writer.Outdent(2);
  writer.Line("};");
  writer.Line("return " + scope.Library("NewRootObject") + "(element, kElements);");
  writer.Outdent();
  writer.Line("}");
  for (const Maker& maker : MakersOf(scope.GetNames(), where)) {
    const std::string name = scope.Class(*maker.root->objectClass);
    writer.Gap();
    std::vector<std::string> arguments = {Literal(maker.root->name)};
    if (maker.root->namespaceUri != maker.root->objectClass->where->uri) {
      arguments.push_back(Literal(maker.root->namespaceUri));
    }
    writer.Function(
        scope.SmartPtr(name) + " " + maker.name + "()",
        {"return " + scope.Library("NewElement") + "<" + name + ">(", arguments, ");", {}});
  }
}

}  // namespace qzxml::generator
