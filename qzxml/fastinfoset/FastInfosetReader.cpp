#include "qzxml/fastinfoset/FastInfosetReader.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "qzxml/fastinfoset/DocumentMarks.h"
#include "qzxml/fastinfoset/FastInfosetContext.h"
#include "qzxml/fastinfoset/FastInfosetReaderOctets.h"
#include "qzxml/fastinfoset/FastInfosetReaderStrings.h"
#include "qzxml/fastinfoset/Trace.h"
#include "qzxml/platform/DebugChannel.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/xml/ShortText.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlDocumentNodes.h"

// How octets become a tree.
//
// An item is told by its first octet: below 80 an element, 80 to BF text, E1 and E2 what is stepped
// over, F0 the end of what is open. FF is two ends in one octet: those of an element and of the one
// around it, or of the root and of the document. Ends are looked at as whole octets, since the four
// bits behind a single end are always 0.
//
// Elements are open on the document's own stack, so depth costs no stack of this thread.
//
// A name of a table leads to the document's own record of the name (XmlName) by a list beside the
// table, so that an element of a known name costs no string and no search. Text in UTF-8 goes from
// the input into the tree where the local encoding is UTF-8, too.
//
// What an index stands for is longer than the index. So each name, value and text counts against
// the growth bound of the load when it enters the tree.

namespace QzXmlLib16 {
namespace {

constexpr std::uint32_t kEnd = 0xF0;
constexpr std::uint32_t kTwoEnds = 0xFF;
constexpr std::uint32_t kProcessingInstruction = 0xE1;
constexpr std::uint32_t kComment = 0xE2;

constexpr std::size_t kFewEntries = 32;

CInstanceClass g_readerClass("CFastInfosetReader");

std::unique_ptr<CFIVocabulary> MakeVocabulary(const CFastInfosetContext& context) {
  if (!context.GetUseGeneratedVocabulary()) return std::make_unique<CFIVocabulary>();
  return std::make_unique<CFIVocabulary>(*context.GetVocabulary());
}

bool IsIdentification(std::string_view octets) {
  constexpr std::size_t kLength = sizeof detail::kFIIdentification;
  return octets.size() > kLength &&
         std::memcmp(octets.data(), detail::kFIIdentification, kLength) == 0;
}

// Where the head of the document begins, behind its identification; 0 when it is not Fast Infoset.
std::size_t FindHead(std::string_view octets) {
  std::size_t declaration = 0;
  if (!IsIdentification(octets)) {
    const auto* const found =
        std::find_if(std::begin(detail::kFIDeclarations), std::end(detail::kFIDeclarations),
                     [=](std::string_view text) { return octets.substr(0, text.size()) == text; });
    if (found == std::end(detail::kFIDeclarations)) return 0;
    declaration = found->size();
    if (!IsIdentification(octets.substr(declaration))) return 0;
  }
  return declaration + sizeof detail::kFIIdentification;
}

std::string_view ViewOctets(const unsigned char* data, std::uint32_t length) {
  return std::string_view(reinterpret_cast<const char*>(data), length);
}

}  // namespace

// What one Parse works with.
class CFastInfosetReader::CRun {
 public:
  CRun(CXmlDocument& document, CFIVocabulary& vocabulary, detail::CFIOctets octets)
      : m_document(document),
        m_nodes(*document.m_pNodes),
        m_vocabulary(vocabulary),
        m_octets(octets),
        m_strings(vocabulary.m_restrictedAlphabets),
        m_elements{vocabulary.m_elementNames, {}},
        m_attributes{vocabulary.m_attributeNames, {}} {}

  void ReadDocument();

 private:
  // A table of names, and the document's record of each that was asked for; null for the others.
  struct CNames {
    CFIVocabulary::CFIQNameTable& table;
    std::vector<const detail::XmlName*> records;
  };

  bool ReadRoot(std::uint32_t first);
  void ReadContent(std::uint32_t first);
  void StartElement(std::uint32_t first);
  void EndElement();
  void ReadText(std::uint32_t first);
  void AppendText(std::string_view text);
  void AppendWholeText(std::string_view text);

  bool ReadAttributes(CXmlElement* element);
  void ReadAttribute(CXmlElement* element, std::uint32_t first);
  std::string_view ReadAttributeValue();
  void ReadNamespaceAttributes();

  const detail::XmlName* ReadElementName(std::uint32_t first);
  const detail::XmlName* ReadLiteralName(CNames& names, std::uint32_t first);
  const detail::XmlName* FindName(CNames& names, std::uint32_t index);
  const detail::XmlName* ResolveName(const CFIVocabulary::CQNameParts& parts);
  std::uint32_t ReadIdentifying(CFIVocabulary::CFIStringTable& table);
  static void AddEntry(CFIVocabulary::CFIStringTable& table, std::string_view text);
  static const std::string& Entry(const CFIVocabulary::CFIStringTable& table, std::uint32_t index);

  CXmlDocument& m_document;
  detail::CXmlNodes& m_nodes;  // of m_document
  CFIVocabulary& m_vocabulary;
  detail::CFIOctets m_octets;
  detail::CFIStrings m_strings;
  CNames m_elements;
  CNames m_attributes;
  std::string m_strText;  // without its carriage returns
};

// --- The document

CFastInfosetReader::CFastInfosetReader(CFastInfosetContext* context, CXmlDocument* document)
    : CInstanceMonitor(g_readerClass),
      m_pContext(context),
      m_pDocument(document),
      m_pVocabulary(MakeVocabulary(*context)) {}

CFastInfosetReader::~CFastInfosetReader() { CFastInfosetReader::Cleanup(); }

void CFastInfosetReader::Cleanup() { m_pVocabulary = nullptr; }

bool CFastInfosetReader::IsFastInfoset(const unsigned char* data, std::uint32_t length) {
  return FindHead(ViewOctets(data, length)) != 0;
}

bool CFastInfosetReader::Parse() {
  const unsigned char* const input = m_pDocument->m_pInput;
  const std::uint32_t length = m_pDocument->m_dwInputLength;
  const std::size_t head = FindHead(ViewOctets(input, length));
  if (head == 0) return false;
  if (m_pVocabulary == nullptr) m_pVocabulary = MakeVocabulary(*m_pContext);
  m_pDocument->m_pNodes->SetInputOctets(length);
  try {
    CRun(*m_pDocument, *m_pVocabulary, detail::CFIOctets(input + head, length - head))
        .ReadDocument();
  } catch (...) {
    Cleanup();
    throw;
  }
  return true;
}

void CFastInfosetReader::Dump() const {
  if (m_pVocabulary == nullptr) return;
  const auto dump = [](const char* title, const CFIVocabulary::CFIQNameTable& table) {
    std::printf("%s\n", title);
    for (const CFIVocabulary::CQNameParts& parts : table) {
      std::printf("%d\n", static_cast<int>(parts.m_dwNamespaceIndex));
      std::printf("%d\n", static_cast<int>(parts.m_dwLocalNameIndex));
    }
  };
  dump("Elements", m_pVocabulary->m_elementNames);
  dump("Attributes", m_pVocabulary->m_attributeNames);
}

// An octet between the items that begins none is passed.
void CFastInfosetReader::CRun::ReadDocument() {
  detail::StepOverHead(m_octets);
  for (bool ended = false; !ended;) {
    const std::uint32_t first = m_octets.ReadOctet();
    if (first < 0x80) {
      ended = ReadRoot(first);
    } else if (first == kEnd || first == kTwoEnds) {
      ended = true;
    } else if (first == kProcessingInstruction) {
      detail::StepOverProcessingInstruction(m_octets);
    } else if (first == kComment) {
      detail::StepOverComment(m_octets);
    } else if ((first & 0xFC) == 0xC4) {
      ended = detail::StepOverDoctype(m_octets, first);
    }
  }
}

// True when the octet that ends the root ends the document too.
bool CFastInfosetReader::CRun::ReadRoot(std::uint32_t first) {
  if (m_document.m_pDocElement != nullptr) {
    throw CQzException("Failed to parse FastInfoset. There is more than one root element.");
  }
  StartElement(first);
  while (!m_document.m_pElementStack.empty()) {
    first = m_octets.ReadOctet();
    if (first < 0x80) {
      StartElement(first);
    } else if (first < 0xC0) {
      ReadText(first);
    } else if (first == kEnd) {
      EndElement();
    } else if (first == kTwoEnds) {
      EndElement();
      if (m_document.m_pElementStack.empty()) return true;
      EndElement();
    } else {
      ReadContent(first);
    }
  }
  return false;
}

// What else an element may hold.
void CFastInfosetReader::CRun::ReadContent(std::uint32_t first) {
  if (first == kProcessingInstruction) {
    detail::StepOverProcessingInstruction(m_octets);
  } else if (first == kComment) {
    detail::StepOverComment(m_octets);
  } else if ((first & 0xFC) == 0xC8) {
    detail::StepOverReference(m_octets, first);
  } else {
    throw CQzException("Failed to parse FastInfoset. Invalid Encoding of Element type.");
  }
}

// --- Elements

// Meant: the first octet tells whether there are attributes, also where declarations of namespaces
// stand between it and the octet that tells the name; so writers may leave the bit out there.
void CFastInfosetReader::CRun::StartElement(std::uint32_t first) {
  const bool hasAttributes = (first & 0x40) != 0;
  if ((first & 0x3F) == 0x38) {
    ReadNamespaceAttributes();
    first = m_octets.ReadOctet();
  }
  const detail::XmlName* const name = ReadElementName(first);
  if (detail::GetDebugChannel() != nullptr) {
    const bool isRoot = m_document.m_pDocElement == nullptr;
    detail::TraceCut(FormatString(isRoot ? "New Root Elm: %s::%s\n" : "New Elm: %s::%s\n",
                                  name->uri->c_str(), name->localName.c_str()));
  }
  CXmlElement* const element = m_document.OpenElement(name);
  if (hasAttributes && ReadAttributes(element)) EndElement();
}

void CFastInfosetReader::CRun::EndElement() {
  if (detail::GetDebugChannel() != nullptr) {
    const CXmlElement* const element = m_document.m_pElementStack.back();
    detail::TraceCut(FormatString("End Elm: %s::%s\n", element->GetNamespaceURI().c_str(),
                                  element->GetLocalName().c_str()));
  }
  m_document.CloseElement();
}

void CFastInfosetReader::CRun::ReadText(std::uint32_t first) {
  CFIVocabulary::CFIStringTable& chunks = m_vocabulary.m_characterChunks;
  if ((first & 0x20) != 0) return AppendText(Entry(chunks, m_octets.ReadIndexOnBit4(first)));
  const detail::FIEncodedString string = m_octets.ReadEncodedOnBit5(first);
  const bool isWhole = m_strings.IsLocalText(string);
  const std::string_view text = isWhole ? string.octets : m_strings.Decode(string);
  if ((first & 0x10) != 0) AddEntry(chunks, text);
  if (isWhole) {
    AppendWholeText(text);
  } else {
    AppendText(text);
  }
}

void CFastInfosetReader::CRun::AppendText(std::string_view text) {
  if (detail::MayHoldControl(text) && text.find('\r') != std::string_view::npos) {
    m_strText.clear();
    std::copy_if(text.begin(), text.end(), std::back_inserter(m_strText),
                 [](char c) { return c != '\r'; });
    text = m_strText;
  }
  if (!text.empty()) AppendWholeText(text);
}

// The same for a text that is not empty and has no carriage return.
inline void CFastInfosetReader::CRun::AppendWholeText(std::string_view text) {
  m_nodes.CountOctets(text.size());
  CXmlElement* const element = m_document.m_pElementStack.back();
  if (element->m_text.IsNone()) {
    m_nodes.SetText(element, text);
  } else {
    element->AppendCountedText(text);
  }
}

// --- Attributes

// True when the octet that ends them ends their element too.
bool CFastInfosetReader::CRun::ReadAttributes(CXmlElement* element) {
  for (;;) {
    const std::uint32_t first = m_octets.ReadOctet();
    if (first >= 0x80) return first == kTwoEnds;
    ReadAttribute(element, first);
  }
}

void CFastInfosetReader::CRun::ReadAttribute(CXmlElement* element, std::uint32_t first) {
  const detail::XmlName* const name = (first & 0x78) == 0x78
                                          ? ReadLiteralName(m_attributes, first)
                                          : FindName(m_attributes, m_octets.ReadIndexOnBit2(first));
  const std::string_view value = ReadAttributeValue();
  m_nodes.CountOctets(name->octets + value.size());
  m_nodes.AddAttribute(element, name, value);
}

std::string_view CFastInfosetReader::CRun::ReadAttributeValue() {
  CFIVocabulary::CFIStringTable& values = m_vocabulary.m_attributeValues;
  const std::uint32_t first = m_octets.ReadOctet();
  if ((first & 0x80) != 0) {
    const std::uint32_t index = m_octets.ReadIndexOrZeroOnBit2(first);
    return index != 0 ? std::string_view(Entry(values, index)) : std::string_view();
  }
  const detail::FIEncodedString string = m_octets.ReadEncodedOnBit3(first);
  const std::string_view value =
      m_strings.IsLocalText(string) ? string.octets : m_strings.Decode(string);
  if ((first & 0x40) != 0) AddEntry(values, value);
  return value;
}

// The octet that ends the list goes with it.
void CFastInfosetReader::CRun::ReadNamespaceAttributes() {
  for (std::uint32_t first = m_octets.ReadOctet(); (first & 0xFC) == 0xCC;
       first = m_octets.ReadOctet()) {
    std::string prefix;
    std::string uri;
    if ((first & 0x02) != 0) {
      prefix = Entry(m_vocabulary.m_prefixNames, ReadIdentifying(m_vocabulary.m_prefixNames));
    }
    if ((first & 0x01) != 0) {
      uri = Entry(m_vocabulary.m_namespaceNames, ReadIdentifying(m_vocabulary.m_namespaceNames));
    }
    m_nodes.CountOctets(prefix.size() + uri.size());
    m_document.SetNamespaceMapping(std::move(prefix), std::move(uri));
  }
}

// --- Names

const detail::XmlName* CFastInfosetReader::CRun::ReadElementName(std::uint32_t first) {
  if ((first & 0x3C) == 0x3C) return ReadLiteralName(m_elements, first);
  return FindName(m_elements, m_octets.ReadIndexOnBit3(first));
}

const detail::XmlName* CFastInfosetReader::CRun::ReadLiteralName(CNames& names,
                                                                 std::uint32_t first) {
  const bool hasPrefix = (first & 0x02) != 0;
  const bool hasNamespace = (first & 0x01) != 0;
  if (hasPrefix && !hasNamespace) {
    throw CQzException("Failed to parse FastInfoset. Invalid QName type Prefix without Namespace.");
  }
  const std::uint32_t prefix = hasPrefix ? ReadIdentifying(m_vocabulary.m_prefixNames) : 0;
  const std::uint32_t uri = hasNamespace ? ReadIdentifying(m_vocabulary.m_namespaceNames) : 0;
  const CFIVocabulary::CQNameParts parts(prefix, uri, ReadIdentifying(m_vocabulary.m_localNames));
  const detail::XmlName* const name = ResolveName(parts);
  CFIVocabulary::AddQNameToVector(parts, names.table);
  const std::size_t size = names.table.m_table.size();
  names.records.reserve(kFewEntries);
  names.records.resize(size);
  if (size < CFIVocabulary::kMaxEntries) names.records.back() = name;
  return name;
}

const detail::XmlName* CFastInfosetReader::CRun::FindName(CNames& names, std::uint32_t index) {
  std::vector<const detail::XmlName*>& records = names.records;
  if (index <= records.size() && records[index - 1] != nullptr) return records[index - 1];
  const detail::XmlName* const name = ResolveName(names.table.GetEntry(index));
  if (index > records.size()) records.resize(names.table.m_table.size());
  return records[index - 1] = name;
}

const detail::XmlName* CFastInfosetReader::CRun::ResolveName(
    const CFIVocabulary::CQNameParts& parts) {
  const std::string_view uri =
      parts.m_dwNamespaceIndex != 0
          ? std::string_view(Entry(m_vocabulary.m_namespaceNames, parts.m_dwNamespaceIndex))
          : std::string_view();
  return m_nodes.GetNames().Find(uri, Entry(m_vocabulary.m_localNames, parts.m_dwLocalNameIndex));
}

// The index of a text that is there by its index, or in full and gets the next one.
// Meant: the table of a document grows past the limit that its writer has to keep.
std::uint32_t CFastInfosetReader::CRun::ReadIdentifying(CFIVocabulary::CFIStringTable& table) {
  const std::uint32_t first = m_octets.ReadOctet();
  if ((first & 0x80) != 0) {
    const std::uint32_t index = m_octets.ReadIndexOnBit2(first);
    Entry(table, index);
    return index;
  }
  AddEntry(table, m_strings.FromUtf8(m_octets.ReadStringOnBit2(first)));
  return static_cast<std::uint32_t>(table.m_table.size());
}

// Puts a text behind the others of its table. One that begins gets room for what most documents
// need.
inline void CFastInfosetReader::CRun::AddEntry(CFIVocabulary::CFIStringTable& table,
                                               std::string_view text) {
  if (table.m_table.capacity() < kFewEntries) table.m_table.reserve(kFewEntries);
  table.m_table.emplace_back(text);
}

inline const std::string& CFastInfosetReader::CRun::Entry(
    const CFIVocabulary::CFIStringTable& table, std::uint32_t index) {
  return index <= table.m_table.size() ? table.m_table[index - 1] : table.GetEntry(index);
}

}  // namespace QzXmlLib16
