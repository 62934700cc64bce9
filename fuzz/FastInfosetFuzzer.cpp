// Any bytes as a Fast Infoset document: a tree, or an exception with one of the texts that the
// reader has. Behind a declaration, from a vocabulary without entries and with a callback that
// keeps everything, the same comes of it. Open content that takes the tree over and writes it as
// Fast Infoset gives the same tree again.
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

// The root of a document, not the first element in it.
class CRoot : public CElement {
 public:
  CRoot() : CElement("none") {}
  void Read(const CXmlDocument& document, const CSerializationContext& context) {
    CXmlElement* const root = document.GetDocumentElement();
    FromXml_Int(root, root, context, false);
  }
};

// Whether writing keeps the tree: the text of mixed content goes into the last child, and an empty
// name, which begins with a zero byte in a document, is none.
bool IsKept(const CXmlElement* element) {
  if (element->GetLocalName().empty()) return false;
  for (const CXmlAttribute* attribute : element->GetAttributes()) {
    if (attribute->GetLocalName().empty()) return false;
  }
  const CXmlElement* child = element->GetFirstElement();
  if (child != nullptr && !element->GetText().empty()) return false;
  for (; child != nullptr; child = child->GetNextSiblingElement()) {
    if (!IsKept(child)) return false;
  }
  return true;
}

// The tree by way of an object and Fast Infoset again, or as it was where writing does not keep it.
std::string Rewritten(const std::string& bytes, const CSerializationContext& context) {
  CXmlDocument document(context);
  document.LoadXmlStream(reinterpret_cast<const unsigned char*>(bytes.data()),
                         static_cast<std::uint32_t>(bytes.size()));
  if (!IsKept(document.GetDocumentElement()))
    return qztest::TreeText(document.GetDocumentElement());
  CRoot element;
  element.Read(document, context);
  const CBinaryData written = element.ToFastInfosetStream(FInfoDecl_None, context);
  return Load(std::string(reinterpret_cast<const char*>(written.GetData()), written.GetLength()),
              context, nullptr);
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
  if (expected.compare(0, 9, "failure: ") != 0) {
    CheckSame(expected, Rewritten(bytes, context));
  }
  context.GetFIContext().SetUseGeneratedVocabulary(true);
  CheckSame(expected, Load(bytes, context, nullptr));
  return 0;
}
