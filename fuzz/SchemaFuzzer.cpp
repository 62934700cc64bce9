// Any octets as a schema. It is refused with a message, or classes are made of it, in memory; the
// same schema gives the same files.
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "tools/generator/emit/Emit.h"
#include "tools/generator/model/Model.h"
#include "tools/generator/schema/SchemaSet.h"

using namespace qzxml::generator;

namespace {

void Require(bool holds, const std::string& what) {
  if (holds) return;
  std::fprintf(stderr, "%s\n", what.c_str());
  std::abort();
}

void RequireMessages(const std::vector<Diagnostic>& diagnostics) {
  for (const Diagnostic& diagnostic : diagnostics) {
    Require(!diagnostic.message.empty(), "a diagnostic without a message");
  }
}

// The sources, one behind the other with their names; "" for a schema that is refused.
std::string Generate(const std::string& file) {
  const std::unique_ptr<CSchemaSet> schemas = ReadSchemas({file});
  RequireMessages(schemas->GetDiagnostics());
  if (schemas->HasErrors()) return "";
  const std::unique_ptr<Model> model = BindSchemas(*schemas, {});
  RequireMessages(model->diagnostics);
  if (model->HasErrors()) return "";
  std::string text;
  for (const SourceFile& source : WriteSources(*model, {})) {
    text += source.path + '\n' + source.text + '\n';
  }
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // In a folder of its own, where the locations that it names lead nowhere.
  static const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
  static const std::filesystem::path folder =
      std::filesystem::temp_directory_path() / ("qzxml-schema-fuzzer-" + std::to_string(now));
  std::filesystem::create_directories(folder);
  const std::string file = (folder / "fuzz.xsd").string();
  {
    std::ofstream out(file, std::ios::binary);
    out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  }
  const std::string first = Generate(file);
  Require(first == Generate(file), "the same schema gives other files");
  std::filesystem::remove_all(folder);
  return 0;
}
