#include "tools/generator/emit/Emit.h"

#include <algorithm>
#include <set>

#include "tools/generator/emit/ClassWriter.h"
#include "tools/generator/emit/Files.h"
#include "tools/generator/emit/Names.h"
#include "tools/generator/emit/Parts.h"
#include "tools/generator/emit/RootsWriter.h"
#include "tools/generator/emit/SimpleTypeWriter.h"

namespace qzxml::generator {
namespace {

std::string FirstLine(const EmitOptions& options) {
  std::string line = kFirstWords;
  for (std::size_t i = 0; i < options.schemaNames.size(); ++i) {
    const std::string name = (i == 0 ? " from " : ", ") + options.schemaNames[i];
    if (line.size() + name.size() > kColumns - 10) {
      line += ", ...";
      break;
    }
    line += name;
  }
  for (char& c : line) {
    if (static_cast<unsigned char>(c) < 0x20) c = '_';
  }
  return line + ".";
}

// A header with lines in the namespace.
template <typename WriteLines>
std::string WriteHeader(const BoundNamespace& where, const std::string& firstLine,
                        const std::set<std::string>& includes, WriteLines writeLines) {
  CCodeWriter writer;
  BeginHeader(firstLine, {}, includes, writer);
  writer.Line("namespace " + where.cppName + " {");
  writer.Line("");
  writeLines(writer);
  writer.Gap();
  writer.Line("}  // namespace " + where.cppName);
  return writer.Take();
}

std::string WriteNamespaceHeader(const BoundNamespace& where, const std::string& firstLine) {
  return WriteHeader(where, firstLine, {}, [&](CCodeWriter& writer) {
    writer.Comment("The namespace of the schema.");
    const std::string head = "inline constexpr char " + where.constant + "[] =";
    const std::string literal = Literal(where.uri) + ";";
    if (writer.Fits(head + " " + literal)) return writer.Line(head + " " + literal);
    writer.Line(head);
    writer.LineAt(4, literal);
  });
}

std::string WriteEnumerationsHeader(const BoundNamespace& where, const std::string& firstLine) {
  return WriteHeader(where, firstLine, {}, [&](CCodeWriter& writer) {
    writer.Comment(
        "Of each enumeration, the text of an enumerator and the enumerator of a text. Both throw "
        "CQzInvalidValueException \"The value [%s] is not one of %s\" for what is none of them.");
    for (const auto& boundEnum : where.enums) {
      writer.Gap();
      WriteEnumDeclaration(*boundEnum, writer);
    }
  });
}

std::string WriteSimpleTypesHeader(const CNames& names, const BoundNamespace& where,
                                   const std::string& firstLine) {
  std::set<std::string> includes = {"qzxml/binding/SimpleTypeInfo.h"};
  const bool needsBuiltIns =
      std::any_of(where.families.begin(), where.families.end(),
                  [](const auto& family) { return family->declared->where == nullptr; });
  if (needsBuiltIns) includes.insert("qzxml/binding/BuiltInTypes.h");
  return WriteHeader(where, firstLine, includes, [&](CCodeWriter& writer) {
    for (const auto& type : where.simpleTypes) {
      if (!type->documentation.empty()) {
        writer.Gap();
        writer.Comment(type->documentation);
      }
      writer.Line("extern const QzXmlLib16::CSimpleTypeInfo " + type->constant + ";");
    }
    if (where.families.empty()) return;
    writer.Gap();
    writer.Comment("The types of elements, and those that an xsi:type may name there.");
    const CScope scope(names, where, CScope::Place::Header);
    for (const auto& family : where.families) WriteFamilyDeclaration(scope, *family, writer);
  });
}

// The library's collections come with the classes that have some; what all may throw is added.
std::string WriteWholeHeader(const std::set<std::string>& headers, const std::string& firstLine) {
  CCodeWriter writer;
  writer.Line(firstLine);
  writer.Line("#pragma once");
  writer.Gap();
  std::set<std::string> all = headers;
  all.insert("qzxml/runtime/QzException.h");
  for (const std::string& header : all) writer.Line("#include \"" + header + "\"");
  return writer.Take();
}

void WriteHeaders(const CNames& names, const BoundNamespace& where, const std::string& firstLine,
                  std::vector<SourceFile>& files) {
  std::set<std::string> headers;
  const auto add = [&](const std::string& path, std::string text) {
    headers.insert(path);
    files.push_back({path, std::move(text)});
  };
  add(CNames::Header(where, kNamespaceStem), WriteNamespaceHeader(where, firstLine));
  if (!where.enums.empty()) {
    add(CNames::Header(where, kEnumerationsStem), WriteEnumerationsHeader(where, firstLine));
  }
  if (!where.simpleTypes.empty()) {
    add(CNames::Header(where, kSimpleTypesStem), WriteSimpleTypesHeader(names, where, firstLine));
  }
  for (const auto& boundClass : where.classes) {
    if (boundClass->outer != nullptr) continue;
    add(names.ClassHeader(*boundClass), WriteClassHeader(names, *boundClass, firstLine));
  }
  if (!where.roots.empty()) {
    add(CNames::Header(where, kRootsStem), WriteRootsHeader(names, where, firstLine));
  }
  files.push_back({CNames::NamespaceHeader(where), WriteWholeHeader(headers, firstLine)});
}

}  // namespace

std::vector<SourceFile> WriteSources(const Model& model, const EmitOptions& options) {
  const CNames names(model);
  const std::string firstLine = FirstLine(options);
  std::vector<SourceFile> files;
  std::vector<SourcePiece> pieces;
  for (const auto& where : model.namespaces) {
    WriteHeaders(names, *where, firstLine, files);
    for (SourcePiece& piece : MakePieces(names, *where)) pieces.push_back(std::move(piece));
  }
  for (SourceFile& file : BundlePieces(pieces, options, firstLine))
    files.push_back(std::move(file));
  std::sort(files.begin(), files.end(),
            [](const SourceFile& a, const SourceFile& b) { return a.path < b.path; });
  return files;
}

}  // namespace qzxml::generator
