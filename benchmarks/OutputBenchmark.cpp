// What bytes, files, compression, JSON and Fast Infoset cost, each beside the least that the same
// work can cost: the text and a copy for bytes, a plain write of the same bytes for files, zlib
// alone on the same bytes for compression, the XML of the same objects for JSON and Fast Infoset.
#include <benchmark/benchmark.h>
#include <zlib.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <string>

#include "orders/orders.h"
#include "qzxml/QzXml.h"

namespace {

using namespace QzXmlLib16;

// --- The objects, and what they are written as

// The document of the given size, which the build has made in the folder of the benchmarks.
// Meant: without double quotes in its values, which JSON would not give back.
std::string Document(std::int64_t octets) {
  std::ifstream file(
      std::string(QZXML_BENCHMARK_DATA) + "/orders-" + std::to_string(octets) + ".xml",
      std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  ReplaceAll(text, "\"zinc\"", "'zinc'");
  ReplaceAll(text, "&quot;", "'");
  return text;
}

struct CWritten {
  explicit CWritten(std::int64_t octets) {
    context.SetIndentChars("  ");
    context.SetDefaultNamespaceURI("urn:example:orders");
    const std::string text = Document(octets);
    if (text.empty()) return;
    object.FromXml(text.c_str());
    bytes = object.ToXmlStream(true, true, XmlEncoding_UTF8, EOLType_LF, context);
    json = object.ToJson(true, EOLType_LF, context);
  }

  CSerializationContext context;
  orders::COrders object;
  CBinaryData bytes;
  std::string json;
};

// Null, and the benchmark ends with a word of why, where the document is not there.
const CWritten* Written(benchmark::State& state) {
  static std::map<std::int64_t, std::unique_ptr<CWritten>> all;
  std::unique_ptr<CWritten>& written = all[state.range(0)];
  if (written == nullptr) written = std::make_unique<CWritten>(state.range(0));
  if (written->bytes.GetLength() != 0) return written.get();
  state.SkipWithError("the document was not made: build the target qzxml_benchmark_data");
  return nullptr;
}

void SetRate(benchmark::State& state, std::size_t octets) {
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(octets));
}

// How large a document is, plain and as gzip.
void CountOctets(benchmark::State& state, CBinaryData bytes) {
  state.counters["octets"] = bytes.GetLength();
  CQzZip::Compress(bytes, CompressionType_GZip);
  state.counters["gzip"] = bytes.GetLength();
}

// --- Bytes

void Text(benchmark::State& state) {
  const CWritten* const written = Written(state);
  if (written == nullptr) return;
  for (auto _ : state) {
    const std::string text = written->object.ToXml(true, true, EOLType_LF, written->context);
    benchmark::DoNotOptimize(text.data());
  }
  SetRate(state, written->bytes.GetLength());
  CountOctets(state, written->bytes);
}

// In one line.
void TextUnformatted(benchmark::State& state) {
  const CWritten* const written = Written(state);
  if (written == nullptr) return;
  for (auto _ : state) {
    const std::string text = written->object.ToXml(true, false, EOLType_LF, written->context);
    benchmark::DoNotOptimize(text.data());
  }
  SetRate(state, written->bytes.GetLength());
  CountOctets(state, written->object.ToXmlStream(true, false, XmlEncoding_UTF8, EOLType_LF,
                                                 written->context));
}

void Stream(benchmark::State& state) {
  const CWritten* const written = Written(state);
  if (written == nullptr) return;
  for (auto _ : state) {
    const CBinaryData bytes =
        written->object.ToXmlStream(true, true, XmlEncoding_UTF8, EOLType_LF, written->context);
    benchmark::DoNotOptimize(bytes.GetData());
  }
  SetRate(state, written->bytes.GetLength());
}

void Copy(benchmark::State& state) {
  const CWritten* const written = Written(state);
  if (written == nullptr) return;
  const std::uint32_t length = written->bytes.GetLength();
  for (auto _ : state) {
    std::unique_ptr<unsigned char[]> copy(new unsigned char[length]);
    std::memcpy(copy.get(), written->bytes.GetData(), length);
    benchmark::DoNotOptimize(copy.get());
    benchmark::ClobberMemory();
  }
  SetRate(state, length);
}

// --- Files

// A file in the folder of the benchmarks, gone at the end.
class CScratchFile {
 public:
  CScratchFile() : m_path(std::string(QZXML_BENCHMARK_DATA) + "/written.xml") {}
  CScratchFile(const CScratchFile&) = delete;
  CScratchFile& operator=(const CScratchFile&) = delete;
  ~CScratchFile() { std::remove(m_path.c_str()); }
  const char* path() const { return m_path.c_str(); }

 private:
  std::string m_path;
};

void File(benchmark::State& state, bool inPieces) {
  const CWritten* const written = Written(state);
  if (written == nullptr) return;
  const CScratchFile file;
  AsyncToXmlFile(inPieces);
  for (auto _ : state) {
    written->object.ToXmlFile(file.path(), true, true, XmlEncoding_UTF8, EOLType_LF,
                              written->context);
  }
  AsyncToXmlFile(false);
  SetRate(state, written->bytes.GetLength());
}

void FileWhole(benchmark::State& state) { File(state, false); }
void FileInPieces(benchmark::State& state) { File(state, true); }

void FilePlain(benchmark::State& state) {
  const CWritten* const written = Written(state);
  if (written == nullptr) return;
  const CScratchFile file;
  for (auto _ : state) {
    std::FILE* const plain = std::fopen(file.path(), "wb");
    std::fwrite(written->bytes.GetData(), 1, written->bytes.GetLength(), plain);
    std::fclose(plain);
  }
  SetRate(state, written->bytes.GetLength());
}

// --- Compression

void GZip(benchmark::State& state) {
  const CWritten* const written = Written(state);
  if (written == nullptr) return;
  for (auto _ : state) {
    CBinaryData bytes = written->bytes;
    CQzZip::Compress(bytes, CompressionType_GZip);
    benchmark::DoNotOptimize(bytes.GetData());
  }
  SetRate(state, written->bytes.GetLength());
}

// The same level, frame and memory, into room for the same length.
void GZipByZLib(benchmark::State& state) {
  const CWritten* const written = Written(state);
  if (written == nullptr) return;
  const std::uint32_t length = written->bytes.GetLength();
  for (auto _ : state) {
    std::unique_ptr<unsigned char[]> packed(new unsigned char[length]);
    z_stream stream = {};
    deflateInit2(&stream, 1, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY);
    stream.next_in = const_cast<Bytef*>(written->bytes.GetData());
    stream.avail_in = length;
    stream.next_out = packed.get();
    stream.avail_out = length;
    if (deflate(&stream, Z_FINISH) != Z_STREAM_END) state.SkipWithError("zlib has no room");
    deflateEnd(&stream);
    benchmark::DoNotOptimize(packed.get());
  }
  SetRate(state, length);
}

CBinaryData Packed(const CWritten& written) {
  CBinaryData bytes = written.bytes;
  CQzZip::Compress(bytes, CompressionType_GZip);
  return bytes;
}

void Expand(benchmark::State& state) {
  const CWritten* const written = Written(state);
  if (written == nullptr) return;
  const CBinaryData packed = Packed(*written);
  for (auto _ : state) {
    CBinaryData bytes;
    CQzZip::Decompress(packed.GetData(), packed.GetLength(), bytes);
    benchmark::DoNotOptimize(bytes.GetData());
  }
  SetRate(state, written->bytes.GetLength());
}

// Into room for the whole, whose size the caller happens to know.
void ExpandByZLib(benchmark::State& state) {
  const CWritten* const written = Written(state);
  if (written == nullptr) return;
  const CBinaryData packed = Packed(*written);
  const std::uint32_t length = written->bytes.GetLength();
  for (auto _ : state) {
    std::unique_ptr<unsigned char[]> bytes(new unsigned char[length]);
    z_stream stream = {};
    inflateInit2(&stream, 15 + 32);
    stream.next_in = const_cast<Bytef*>(packed.GetData());
    stream.avail_in = packed.GetLength();
    stream.next_out = bytes.get();
    stream.avail_out = length;
    if (inflate(&stream, Z_FINISH) != Z_STREAM_END) state.SkipWithError("zlib has no room");
    inflateEnd(&stream);
    benchmark::DoNotOptimize(bytes.get());
  }
  SetRate(state, length);
}

// --- JSON

void Json(benchmark::State& state) {
  const CWritten* const written = Written(state);
  if (written == nullptr) return;
  for (auto _ : state) {
    const std::string text = written->object.ToJson(true, EOLType_LF, written->context);
    benchmark::DoNotOptimize(text.data());
  }
  SetRate(state, written->json.size());
  CountOctets(state, CBinaryData(written->json.c_str()));
}

void ReadJson(benchmark::State& state) {
  const CWritten* const written = Written(state);
  if (written == nullptr) return;
  for (auto _ : state) {
    orders::COrders object;
    object.FromJson(written->json.c_str());
    benchmark::DoNotOptimize(&object);
  }
  SetRate(state, written->json.size());
}

// The XML text that JSON is read through.
void JsonToXmlText(benchmark::State& state) {
  const CWritten* const written = Written(state);
  if (written == nullptr) return;
  for (auto _ : state) {
    CXmlDocument document;
    const CBinaryData xml = document.LoadJson(written->json.c_str());
    benchmark::DoNotOptimize(xml.GetData());
  }
  SetRate(state, written->json.size());
}

void ReadXml(benchmark::State& state) {
  const CWritten* const written = Written(state);
  if (written == nullptr) return;
  for (auto _ : state) {
    orders::COrders object;
    object.FromXmlStream(written->bytes);
    benchmark::DoNotOptimize(&object);
  }
  SetRate(state, written->bytes.GetLength());
}

// --- Fast Infoset

// What is written beside the names and texts of a document.
enum Form {
  Form_AsText,      // values as text
  Form_Suggested,   // the suggested values
  Form_Vocabulary,  // these, and the names from a vocabulary that writer and reader have
};

// The names of the classes, as a generator would give those of their schema.
void AddNames(const CXmlElement* element, CFIVocabulary& vocabulary) {
  vocabulary.AddElement("", element->GetNamespaceURI(), element->GetLocalName());
  for (const CXmlAttribute* attribute : element->GetAttributes()) {
    vocabulary.AddAttribute("", attribute->GetNamespaceURI(), attribute->GetLocalName());
  }
  for (const CXmlElement* child = element->GetFirstElement(); child != nullptr;
       child = child->GetNextSiblingElement()) {
    AddNames(child, vocabulary);
  }
}

struct CFastInfoset {
  CFastInfoset(const CWritten& written, Form form) : context(written.context) {
    CFastInfosetContext& options = context.GetFIContext();
    if (form != Form_AsText) options.SetSuggestedValues();
    if (form == Form_Vocabulary) {
      options.SetUseGeneratedVocabulary(true);
      options.SetExternalVocabularyURI("urn:example:orders");
      CXmlDocument document;
      document.LoadXmlStream(written.bytes.GetData(), written.bytes.GetLength());
      AddNames(document.GetDocumentElement(), *options.GetVocabulary());
    }
    bytes = written.object.ToFastInfosetStream(FInfoDecl_None, context);
  }

  CSerializationContext context;
  CBinaryData bytes;
};

void FastInfoset(benchmark::State& state, Form form) {
  const CWritten* const written = Written(state);
  if (written == nullptr) return;
  const CFastInfoset document(*written, form);
  for (auto _ : state) {
    const CBinaryData bytes = written->object.ToFastInfosetStream(FInfoDecl_None, document.context);
    benchmark::DoNotOptimize(bytes.GetData());
  }
  SetRate(state, written->bytes.GetLength());
  CountOctets(state, document.bytes);
}

void ReadFastInfoset(benchmark::State& state, Form form) {
  const CWritten* const written = Written(state);
  if (written == nullptr) return;
  const CFastInfoset document(*written, form);
  for (auto _ : state) {
    orders::COrders object;
    object.FromXmlStream(document.bytes, document.context);
    benchmark::DoNotOptimize(&object);
  }
  SetRate(state, written->bytes.GetLength());
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
  for (const std::int64_t octets : {10'000, 1'000'000, 10'000'000}) benchmark->Arg(octets);
  benchmark->Unit(benchmark::kMillisecond);
}

BENCHMARK(Text)->Apply(Sizes);
BENCHMARK(TextUnformatted)->Apply(Sizes);
BENCHMARK(Stream)->Apply(Sizes);
BENCHMARK(Copy)->Apply(Sizes);
BENCHMARK(FileWhole)->Apply(Sizes);
BENCHMARK(FileInPieces)->Apply(Sizes);
BENCHMARK(FilePlain)->Apply(Sizes);
BENCHMARK(GZip)->Apply(Sizes);
BENCHMARK(GZipByZLib)->Apply(Sizes);
BENCHMARK(Expand)->Apply(Sizes);
BENCHMARK(ExpandByZLib)->Apply(Sizes);
BENCHMARK(Json)->Apply(Sizes);
BENCHMARK(ReadJson)->Apply(Sizes);
BENCHMARK(JsonToXmlText)->Apply(Sizes);
BENCHMARK(ReadXml)->Apply(Sizes);
BENCHMARK_CAPTURE(FastInfoset, AsText, Form_AsText)->Apply(Sizes);
BENCHMARK_CAPTURE(FastInfoset, Suggested, Form_Suggested)->Apply(Sizes);
BENCHMARK_CAPTURE(FastInfoset, Vocabulary, Form_Vocabulary)->Apply(Sizes);
BENCHMARK_CAPTURE(ReadFastInfoset, AsText, Form_AsText)->Apply(Sizes);
BENCHMARK_CAPTURE(ReadFastInfoset, Suggested, Form_Suggested)->Apply(Sizes);
BENCHMARK_CAPTURE(ReadFastInfoset, Vocabulary, Form_Vocabulary)->Apply(Sizes);

}  // namespace

BENCHMARK_MAIN();
