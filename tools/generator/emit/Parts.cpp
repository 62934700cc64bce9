#include "tools/generator/emit/Parts.h"

#include <algorithm>

#include "tools/generator/emit/ClassWriter.h"
#include "tools/generator/emit/Files.h"
#include "tools/generator/emit/RootsWriter.h"
#include "tools/generator/emit/SimpleTypeWriter.h"

namespace qzxml::generator {
namespace {

template <typename Write>
SourcePiece MakePiece(const CNames& names, const BoundNamespace& where, const std::string& name,
                      Write write) {
  CScope scope(names, where, CScope::Place::Source);
  CCodeWriter writer;
  write(scope, writer);
  SourcePiece piece;
  piece.where = &where;
  piece.name = name;
  piece.includes = scope.GetIncludes();
  piece.lines = writer.GetLineCount() + 1;  // and an empty one
  piece.text = writer.Take();
  return piece;
}

// FNV-1a, the same everywhere.
std::uint32_t Hash(const std::string& text) {
  std::uint32_t hash = 2166136261u;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
  return hash;
}

using Pieces = std::vector<const SourcePiece*>;

std::string WriteSource(const Pieces& pieces, const std::string& firstLine) {
  std::set<std::string> includes;
  for (const SourcePiece* piece : pieces) {
    includes.insert(piece->includes.begin(), piece->includes.end());
  }
  CCodeWriter writer;
  writer.Line(firstLine);
  writer.Gap();
  WriteIncludes({}, includes, writer);
  const BoundNamespace* where = nullptr;
  const auto end = [&] {
    if (where == nullptr) return;
    writer.Gap();
    writer.Line("}  // namespace " + where->cppName);
    writer.Gap();
  };
  for (const SourcePiece* piece : pieces) {
    if (piece->where != where) {
      end();
      where = piece->where;
      writer.Line("namespace " + where->cppName + " {");
      writer.Line("");
      writer.Line("using namespace QzXmlLib16;");
    }
    writer.Gap();
    writer.Append(piece->text);
  }
  end();
  std::string text = writer.Take();
  while (text.size() > 1 && text[text.size() - 2] == '\n') text.pop_back();
  return text;
}

// Where a source of so many lines ends by itself.
bool IsCut(const SourcePiece& last, std::int32_t lines) {
  return lines >= kPartLines / 3 && Hash(last.name) % 4 == 0;
}

std::vector<SourceFile> BundleByNamespace(const std::vector<SourcePiece>& pieces,
                                          const std::string& firstLine) {
  std::vector<SourceFile> files;
  Pieces part;
  std::int32_t lines = 0;
  std::int32_t number = 0;
  const auto end = [&] {
    if (part.empty()) return;
    const std::string& stem = part[0]->where->fileStem;
    files.push_back({stem + "/" + stem + "_" + std::to_string(++number) + ".cpp",
                     WriteSource(part, firstLine)});
    part.clear();
    lines = 0;
  };
  for (const SourcePiece& piece : pieces) {
    const bool isOther = !part.empty() && part[0]->where != piece.where;
    if (isOther || lines + piece.lines > kPartLines) end();
    if (isOther) number = 0;
    part.push_back(&piece);
    lines += piece.lines;
    if (IsCut(piece, lines)) end();
  }
  end();
  return files;
}

std::vector<SourceFile> BundleByNumber(const std::vector<SourcePiece>& pieces,
                                       const EmitOptions& options, const std::string& firstLine) {
  std::int64_t total = 0;
  for (const SourcePiece& piece : pieces) total += piece.lines;
  std::vector<SourceFile> files;
  std::size_t at = 0;
  std::int64_t done = 0;
  for (std::int32_t number = 1; number <= options.parts; ++number) {
    Pieces part;
    for (; at < pieces.size() && done < total * number / options.parts; ++at) {
      part.push_back(&pieces[at]);
      done += pieces[at].lines;
    }
    files.push_back(
        {options.partStem + "_" + std::to_string(number) + ".cpp", WriteSource(part, firstLine)});
  }
  return files;
}

}  // namespace

std::vector<SourcePiece> MakePieces(const CNames& names, const BoundNamespace& where) {
  std::vector<SourcePiece> pieces;
  for (const auto& boundEnum : where.enums) {
    pieces.push_back(MakePiece(names, where, boundEnum->name, [&](CScope& scope, auto& writer) {
      WriteEnumSource(scope, *boundEnum, writer);
    }));
  }
  for (const auto& type : where.simpleTypes) {
    pieces.push_back(MakePiece(names, where, type->constant, [&](CScope& scope, auto& writer) {
      WriteSimpleTypeSource(scope, *type, writer);
    }));
  }
  for (const auto& family : where.families) {
    pieces.push_back(MakePiece(names, where, family->named, [&](CScope& scope, auto& writer) {
      WriteFamilySource(scope, *family, writer);
    }));
  }
  for (const auto& boundClass : where.classes) {
    if (boundClass->outer != nullptr) continue;
    pieces.push_back(MakePiece(names, where, boundClass->name, [&](CScope& scope, auto& writer) {
      WriteClassSource(scope, *boundClass, writer);
    }));
  }
  if (!where.roots.empty()) {
    pieces.push_back(MakePiece(names, where, "NewRoot", [&](CScope& scope, auto& writer) {
      WriteRootsSource(scope, where, writer);
    }));
  }
  return pieces;
}

std::vector<SourceFile> BundlePieces(const std::vector<SourcePiece>& pieces,
                                     const EmitOptions& options, const std::string& firstLine) {
  return options.parts == 0 ? BundleByNamespace(pieces, firstLine)
                            : BundleByNumber(pieces, options, firstLine);
}

}  // namespace qzxml::generator
