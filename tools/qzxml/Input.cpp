#include "tools/qzxml/Input.h"

#include <string_view>
#include <utility>

#include "qzxml/fastinfoset/DocumentMarks.h"
#include "qzxml/runtime/QzZip.h"
#include "tools/qzxml/Failure.h"
#include "tools/qzxml/Gzip.h"
#include "tools/qzxml/System.h"

namespace qztool {
namespace {

// All but the version.
constexpr std::string_view kIdentification("\xE0\x00\x00", 3);

bool IsAt(const std::string& octets, std::size_t at, std::string_view mark) {
  return octets.size() >= at && octets.compare(at, mark.size(), mark) == 0;
}

bool IsFastInfoset(const std::string& octets) {
  if (IsAt(octets, 0, kIdentification)) return true;
  for (const std::string_view declaration : QzXmlLib16::detail::kFIDeclarations) {
    if (IsAt(octets, 0, declaration) && IsAt(octets, declaration.size(), kIdentification)) {
      return true;
    }
  }
  return false;
}

// By the first word that is no white space.
bool IsJson(const std::string& text, std::size_t at) {
  for (const std::string_view beginning : {"{", "[", "\"", "true", "false", "null", "//", "/*"}) {
    if (IsAt(text, at, beginning)) return true;
  }
  return text[at] == '-' || (text[at] >= '0' && text[at] <= '9');
}

void Recognise(CInput& input) {
  if (input.octets.empty()) throw CDocumentFailure("", "the document is empty");
  if (!input.compression.empty() && IsAt(input.octets, 0, "\x1F\x8B")) {
    throw CDocumentFailure("", "the document is compressed twice");
  }
  if (IsFastInfoset(input.octets)) {
    input.format = DocumentFormat::FastInfoset;
    return;
  }
  input.encoding = TurnIntoUtf8(input.octets);
  const std::size_t first = input.octets.find_first_not_of(" \t\r\n");
  if (first == std::string::npos) throw CDocumentFailure("", "the document is empty");
  if (input.octets[first] == '<') {
    input.format = DocumentFormat::Xml;
  } else if (IsJson(input.octets, first)) {
    input.format = DocumentFormat::Json;
  } else {
    throw CDocumentFailure("", "this is neither XML, Fast Infoset nor JSON");
  }
}

}  // namespace

const char* GetFormatName(DocumentFormat format) {
  switch (format) {
    case DocumentFormat::Xml:
      return "XML";
    case DocumentFormat::FastInfoset:
      return "Fast Infoset";
    case DocumentFormat::Json:
      return "JSON";
  }
  return "";
}

CInput ReadDocument(const std::string& name, CConsole& console, CProgress& progress) {
  CInput input;
  input.name = name;
  progress.Begin("reading " + name);
  input.octets = ReadInput(name, console.in);
  input.size = input.octets.size();
  try {
    input.compression =
        Expand(input.octets, QzXmlLib16::CQzZip::GetMaxDecompressedSize(), progress);
    input.expandedSize = input.octets.size();
    Recognise(input);
  } catch (const CDocumentFailure& e) {
    throw CFailure(ExitCode_Document, name + ": " + e.what());
  }
  return input;
}

}  // namespace qztool
