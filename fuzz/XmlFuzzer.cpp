// Any bytes as an XML document. Either the document fails with an exception of the library's
// family, or open content takes it over and writes it, and reading that gives the same tree.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "qzxml/QzXml.h"
#include "tests/support/TreeText.h"

using namespace QzXmlLib16;

namespace {

// Writing keeps neither an attribute's carriage returns nor the difference of its tabs and blanks.
std::string Kept(const CXmlElement&, const std::string& attribute, const std::string& value) {
  std::string kept;
  for (const char c : value) {
    if (c != '\r') kept += c == '\t' && !attribute.empty() ? ' ' : c;
  }
  return kept;
}

bool IsPlain(const std::string& uri) {
  return uri.find_first_of("&<\"\r\n\t") == std::string::npos;
}

// Whether writing keeps the tree: namespace names go out unescaped, and a text that begins as a
// CDATA section goes out as it stands.
bool IsKept(const CXmlElement* element) {
  if (!IsPlain(element->GetNamespaceURI())) return false;
  if (element->GetText().compare(0, 9, "<![CDATA[") == 0) return false;
  for (const CXmlAttribute* attribute : element->GetAttributes()) {
    if (!IsPlain(attribute->GetNamespaceURI())) return false;
  }
  for (const CXmlElement* child = element->GetFirstElement(); child != nullptr;
       child = child->GetNextSiblingElement()) {
    if (!IsKept(child)) return false;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  CSerializationContext context;
  context.SetMaxDepth(100);
  try {
    CXmlDocument document(context);
    document.LoadXmlStream(data, static_cast<std::uint32_t>(size));
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    if (bytes.find('\0') != std::string::npos) return 0;  // UTF-16; open content takes text
    CElement element("none");
    element.FromXml(bytes.c_str());
    const std::string text = element.ToXml(true, false);
    if (!IsKept(document.GetDocumentElement())) return 0;
    CXmlDocument written(context);
    written.LoadXml(text.c_str());
    if (qztest::TreeText(document.GetDocumentElement(), &Kept) !=
        qztest::TreeText(written.GetDocumentElement(), &Kept)) {
      std::fprintf(stderr, "The document was not kept:\n%s\n", text.c_str());
      std::abort();
    }
  } catch (const CQzException&) {
  }
  return 0;
}
