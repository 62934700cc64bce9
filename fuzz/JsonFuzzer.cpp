// Any bytes as JSON: in each mode, with and without comments and a root element. What the reader
// takes is written anew from its events, and reading that gives the same events; reading an object
// fails with an exception of the library's family, or not at all, and leaves the context as it was.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "qzxml/QzXml.h"

using namespace QzXmlLib16;

namespace {

// Writes the events as JSON, in the one way in which the reader takes every byte back.
class CRewriter : public IJsonReaderHandler {
 public:
  explicit CRewriter(std::string& json) : m_json(json) {}

  void StartDocument() override {}
  void EndDocument() override {}
  void Name(const std::string& name) override {
    Separate();
    Quote(name);
    m_json += ':';
  }
  void String(const std::string& value) override {
    Separate();
    Quote(value);
  }
  void Number(const std::string& value) override { Put(value); }
  void Bool(bool value) override { Put(value ? "true" : "false"); }
  void Null() override { Put("null"); }
  void StartObject() override { Put("{"); }
  void EndObject() override { m_json += '}'; }
  void StartArray() override { Put("["); }
  void EndArray() override { m_json += ']'; }

 private:
  void Separate() {
    if (!m_json.empty() && std::strchr("{[:,", m_json.back()) == nullptr) m_json += ',';
  }
  void Put(const std::string& text) {
    Separate();
    m_json += text;
  }
  void Quote(const std::string& text) {
    m_json += '"';
    for (const char c : text) {
      if (c == '"' || c == '\\') m_json += '\\';
      m_json += c == '\n' ? "\\n" : std::string(1, c);
    }
    m_json += '"';
  }

  std::string& m_json;
};

std::string Rewrite(const std::string& text, bool comments) {
  std::string json;
  CJsonTextReader reader(text);
  reader.SetHandler(new CRewriter(json));
  reader.SetAllowComments(comments);
  reader.Parse();
  return json;
}

void CheckReader(const std::string& text, bool comments) {
  try {
    const std::string json = Rewrite(text, comments);
    if (Rewrite(json, false) != json) {
      std::fprintf(stderr, "The text was not kept:\n%s\n", json.c_str());
      std::abort();
    }
  } catch (const CQzValidationException& e) {
    if (e.GetPath().compare(0, 1, "$") != 0) std::abort();
  }
}

void CheckObject(const std::uint8_t* data, std::size_t size, JsonRoundTrip mode, const char* root) {
  CSerializationContext context;
  context.SetMaxDepth(100);
  context.GetJsonContext().SetSupportRoundtrip(mode);
  context.GetJsonContext().SetRootElementName(root);
  try {
    CElement element("none");
    element.FromJsonStream(data, static_cast<std::uint32_t>(size), context);
  } catch (const CQzException&) {
  }
  if (context.GetIgnoreNamespaces()) std::abort();
}

// One assertion is reached by documents, and is required there: of what a writer refuses.
void OnAssertion(const char* condition, const char* file, int line) {
  if (std::strstr(file, "JsonReaderToXmlHandler.cpp") != nullptr) return;
  std::fprintf(stderr, "%s:%d: %s\n", file, line, condition);
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  SetAssertionHandler(&OnAssertion);
  const std::string text(reinterpret_cast<const char*>(data), size);
  CheckReader(text, false);
  CheckReader(text, true);
  for (const JsonRoundTrip mode : {JsonRoundTrip_None, JsonRoundTrip_Marked, JsonRoundTrip_Full}) {
    CheckObject(data, size, mode, "");
    CheckObject(data, size, mode, "r");
  }
  return 0;
}
