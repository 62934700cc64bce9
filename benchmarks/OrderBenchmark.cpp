// Reading and writing an order document of several sizes, each beside the least that the same work
// can cost: Expat with empty handlers for reading, a copy of the output for writing, and another
// library's writer of the same document.
#include <benchmark/benchmark.h>
#include <expat.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <pugixml.hpp>
#include <string>

#include "orders/orders.h"
#include "qzxml/QzXml.h"

namespace {

using QzXmlLib16::CSerializationContext;
using QzXmlLib16::CXmlDocument;

constexpr const char* kIndent = "  ";

// The document of the given size, which the build has made in the folder of the benchmarks.
const std::string& Document(std::int64_t octets) {
  static std::map<std::int64_t, std::string> documents;
  std::string& text = documents[octets];
  if (text.empty()) {
    std::ifstream file(
        std::string(QZXML_BENCHMARK_DATA) + "/orders-" + std::to_string(octets) + ".xml",
        std::ios::binary);
    text.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }
  return text;
}

// True when the document is there; otherwise the benchmark ends with a word of why.
bool IsThere(benchmark::State& state) {
  if (!Document(state.range(0)).empty()) return true;
  state.SkipWithError("the document was not made: build the target qzxml_benchmark_data");
  return false;
}

void SetRate(benchmark::State& state, std::size_t octets) {
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(octets));
}

CSerializationContext WritingContext() {
  CSerializationContext context;
  context.SetIndentChars(kIndent);
  context.SetDefaultNamespaceURI("urn:example:orders");
  return context;
}

void OnStart(void*, const char*, const char**) {}
void OnEnd(void*, const char*) {}
void OnText(void*, const char*, int) {}
void OnNamespace(void*, const char*, const char*) {}

void ExpatAlone(benchmark::State& state) {
  if (!IsThere(state)) return;
  const std::string& text = Document(state.range(0));
  for (auto _ : state) {
    XML_Parser parser = XML_ParserCreateNS(nullptr, '|');
    XML_SetElementHandler(parser, &OnStart, &OnEnd);
    XML_SetCharacterDataHandler(parser, &OnText);
    XML_SetStartNamespaceDeclHandler(parser, &OnNamespace);
    benchmark::DoNotOptimize(XML_Parse(parser, text.data(), static_cast<int>(text.size()), 1));
    XML_ParserFree(parser);
  }
  SetRate(state, text.size());
}

void DocumentLoad(benchmark::State& state) {
  if (!IsThere(state)) return;
  const std::string& text = Document(state.range(0));
  for (auto _ : state) {
    CXmlDocument document;
    document.LoadXmlStream(reinterpret_cast<const unsigned char*>(text.data()),
                           static_cast<std::uint32_t>(text.size()));
    benchmark::DoNotOptimize(document.GetDocumentElement());
  }
  SetRate(state, text.size());
}

void ReadIntoObjects(benchmark::State& state) {
  if (!IsThere(state)) return;
  const std::string& text = Document(state.range(0));
  for (auto _ : state) {
    orders::COrders object;
    object.FromXmlStream(reinterpret_cast<const unsigned char*>(text.data()),
                         static_cast<std::uint32_t>(text.size()));
    benchmark::DoNotOptimize(&object);
  }
  SetRate(state, text.size());
}

void WriteObjects(benchmark::State& state) {
  if (!IsThere(state)) return;
  orders::COrders object;
  object.FromXml(Document(state.range(0)).c_str());
  const CSerializationContext context = WritingContext();
  std::size_t octets = 0;
  for (auto _ : state) {
    const std::string text = object.ToXml(true, true, QzXmlLib16::EOLType_LF, context);
    octets = text.size();
    benchmark::DoNotOptimize(text.data());
  }
  SetRate(state, octets);
}

class StringWriter : public pugi::xml_writer {
 public:
  void write(const void* data, std::size_t size) override {
    text.append(static_cast<const char*>(data), size);
  }
  std::string text;
};

void PugixmlSave(benchmark::State& state) {
  if (!IsThere(state)) return;
  const std::string& text = Document(state.range(0));
  pugi::xml_document document;
  document.load_buffer(text.data(), text.size());
  std::size_t octets = 0;
  for (auto _ : state) {
    StringWriter writer;
    document.save(writer, kIndent);
    octets = writer.text.size();
    benchmark::DoNotOptimize(writer.text.data());
  }
  SetRate(state, octets);
}

void CopyOfOutput(benchmark::State& state) {
  if (!IsThere(state)) return;
  const std::string& text = Document(state.range(0));
  for (auto _ : state) {
    std::unique_ptr<char[]> copy(new char[text.size()]);
    std::memcpy(copy.get(), text.data(), text.size());
    benchmark::DoNotOptimize(copy.get());
    benchmark::ClobberMemory();
  }
  SetRate(state, text.size());
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
  for (const std::int64_t octets : {10'000, 1'000'000, 10'000'000, 100'000'000}) {
    benchmark->Arg(octets);
  }
  benchmark->Unit(benchmark::kMillisecond);
}

BENCHMARK(ExpatAlone)->Apply(Sizes);
BENCHMARK(DocumentLoad)->Apply(Sizes);
BENCHMARK(ReadIntoObjects)->Apply(Sizes);
BENCHMARK(WriteObjects)->Apply(Sizes);
BENCHMARK(PugixmlSave)->Apply(Sizes);
BENCHMARK(CopyOfOutput)->Apply(Sizes);

}  // namespace

BENCHMARK_MAIN();
