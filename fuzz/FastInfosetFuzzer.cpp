// Any bytes as a Fast Infoset document: a tree, or an exception with one of the texts that the
// reader has. Behind a declaration, from a vocabulary without entries and with a callback that
// keeps everything, the same comes of it.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string>
#include <string_view>

#include "qzxml/QzXml.h"
#include "tests/support/TreeText.h"

using namespace QzXmlLib16;

namespace {

constexpr std::string_view kTexts[] = {
    "Failed to parse FastInfoset. ", "The document exceeds the depth limit of ",
    "The document grows past ",      "Invalid or empty XML document",
    "Unknown byte encoding.",        "Invalid value for "};

void CheckText(const std::string& text) {
  const bool isKnown = std::any_of(
      std::begin(kTexts), std::end(kTexts),
      [&text](std::string_view known) { return text.compare(0, known.size(), known) == 0; });
  if (isKnown) return;
  std::fprintf(stderr, "The reader has no such text: %s\n", text.c_str());
  std::abort();
}

bool KeepElement(CXmlElement*) { return false; }

// The tree, or the text of the failure.
std::string Load(const std::string& bytes, const CSerializationContext& context,
                 CXmlDocument::ElementCallback callback) {
  CXmlDocument document(callback, context);
  try {
    document.LoadXmlStream(reinterpret_cast<const unsigned char*>(bytes.data()),
                           static_cast<std::uint32_t>(bytes.size()));
  } catch (const CQzException& e) {
    CheckText(e.GetMessage());
    return "failure: " + e.GetMessage();
  }
  return qztest::TreeText(document.GetDocumentElement());
}

void CheckSame(const std::string& expected, const std::string& actual) {
  if (expected == actual) return;
  std::fprintf(stderr, "Expected:\n%s\nbut it is:\n%s\n", expected.c_str(), actual.c_str());
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (!CFastInfosetReader::IsFastInfoset(data, static_cast<std::uint32_t>(size))) return 0;
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  CSerializationContext context;
  context.SetMaxDepth(100);
  const std::string expected = Load(bytes, context, nullptr);
  CheckSame(expected, Load(bytes, context, &KeepElement));
  if (bytes[0] != '<') {
    CheckSame(expected, Load("<?xml version='1.0' encoding='finf'?>" + bytes, context, nullptr));
  }
  context.GetFIContext().SetUseGeneratedVocabulary(true);
  CheckSame(expected, Load(bytes, context, nullptr));
  return 0;
}
