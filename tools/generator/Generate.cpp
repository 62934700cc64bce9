#include "tools/generator/Generate.h"

#include <filesystem>

#include "tools/generator/model/Model.h"
#include "tools/generator/schema/SchemaSet.h"

namespace qzxml::generator {
namespace {

// As the rules of make take it.
std::string Escape(const std::string& path) {
  std::string escaped;
  for (const char c : path) {
    if (c == ' ' || c == '#' || c == '\\') escaped += '\\';
    if (c == '$') escaped += '$';
    escaped += c;
  }
  return escaped;
}

EmitOptions MakeEmitOptions(const GenerateOptions& options) {
  EmitOptions emit;
  for (const std::string& schema : options.schemas) {
    emit.schemaNames.push_back(std::filesystem::path(schema).filename().generic_string());
  }
  emit.parts = options.parts;
  if (!options.partStem.empty()) emit.partStem = options.partStem;
  return emit;
}

void Append(const std::vector<Diagnostic>& diagnostics, GenerateResult& result) {
  for (const Diagnostic& diagnostic : diagnostics) {
    result.diagnostics.push_back(diagnostic);
    if (diagnostic.severity == Severity_Error) result.hasErrors = true;
  }
}

void WriteFiles(const GenerateOptions& options, const std::vector<SourceFile>& files,
                GenerateResult& result) {
  if (options.isDry) return;
  result.changes = UpdateFolder(options.output, files);
  if (options.depfile.empty()) return;
  const std::filesystem::path manifest = std::filesystem::path(options.output) / kManifestName;
  WriteTextFile(options.depfile, WriteDepfile(manifest.generic_string(), result.inputs));
}

}  // namespace

std::string WriteDepfile(const std::string& target, const std::vector<std::string>& files) {
  std::string text = Escape(target) + ":";
  for (const std::string& file : files) text += " \\\n  " + Escape(file);
  return text + "\n";
}

GenerateResult Generate(const GenerateOptions& options) {
  GenerateResult result;
  ReadOptions readOptions;
  readOptions.catalogs = options.catalogs;
  readOptions.progress = options.progress;
  const std::unique_ptr<CSchemaSet> schemas = ReadSchemas(options.schemas, readOptions);
  Append(schemas->GetDiagnostics(), result);
  if (result.hasErrors || schemas->HasErrors()) {
    result.hasErrors = true;
    return result;
  }
  if (options.progress) options.progress("binding the types");
  ModelOptions modelOptions;
  modelOptions.cppNamespace = options.cppNamespace;
  modelOptions.cppNamespaces = options.cppNamespaces;
  const std::unique_ptr<Model> model = BindSchemas(*schemas, modelOptions);
  Append(model->diagnostics, result);
  if (result.hasErrors) return result;

  if (options.progress) options.progress("writing the sources");
  const std::vector<SourceFile> files = WriteSources(*model, MakeEmitOptions(options));
  result.inputs = schemas->GetFiles();
  for (const SourceFile& file : files) result.outputs.push_back(file.path);
  WriteFiles(options, files, result);
  return result;
}

}  // namespace qzxml::generator
