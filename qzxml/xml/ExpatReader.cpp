#include "qzxml/xml/ExpatReader.h"

#include <expat.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "qzxml/platform/Assert.h"
#include "qzxml/runtime/Encoder.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/SerializationContext.h"
#include "qzxml/xml/ShortText.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlDocumentNodes.h"
#include "qzxml/xml/XmlNamespaces.h"

// How the input reaches Expat, and how text reaches the tree.
//
// Expat counts the lines of all that it is given, unless it is the last piece. So it gets what
// there is at once, in slices below 1 GiB. A token that does not end within a piece is scanned
// again from its start with the next one. To have a token of any size scanned but twice, a piece
// that is shorter than what is pending is held back until more of it is there.
//
// Expat delivers the text of an element in pieces, broken at line ends and references. They are
// gathered in one buffer for all open elements, used as a stack, and an element gets its text at
// its end, in one piece. Long texts move to their element in between.
//
// No exception may travel through Expat's frames: the handlers keep it and stop the parser, and
// Parse throws it on.

namespace QzXmlLib16 {
namespace {

static_assert(sizeof(XML_Char) == 1, "Expat is to deliver UTF-8");

constexpr char kNamespaceSeparator = '|';
constexpr std::size_t kSlice = 512 * 1024 * 1024;
constexpr std::size_t kFirstText = 1024;
constexpr std::size_t kLongText = 64 * 1024;

CInstanceClass g_readerClass("CExpatReader");

}  // namespace

// What Expat calls. It goes on calling for a moment behind a failure; that is not heard.
struct CExpatReader::Handlers {
  template <class Call>
  static void Guard(void* userData, Call call) {
    auto* const pThis = static_cast<CExpatReader*>(userData);
    if (pThis->m_isStopped) return;
    try {
      call(pThis);
    } catch (...) {
      pThis->m_isStopped = true;
      pThis->m_failure = std::current_exception();
      XML_StopParser(pThis->m_parser, XML_FALSE);
    }
  }

  static void XMLCALL StartElement(void* userData, const XML_Char* name,
                                   const XML_Char** attributes) {
    Guard(userData, [=](CExpatReader* pThis) { pThis->StartElement(name, attributes); });
  }

  static void XMLCALL EndElement(void* userData, const XML_Char*) {
    Guard(userData, [](CExpatReader* pThis) { pThis->EndElement(); });
  }

  static void XMLCALL StartDoctype(void* userData, const XML_Char*, const XML_Char*,
                                   const XML_Char*, int) {
    static_cast<CExpatReader*>(userData)->m_hasDoctype = true;
  }

  static void XMLCALL StartNamespace(void* userData, const XML_Char* prefix, const XML_Char* uri) {
    Guard(userData, [=](CExpatReader* pThis) {
      const auto toLocal = [pThis](std::string_view text) {
        pThis->m_nodes.CountOctets(text.size());
        return Utf8ToLocal(text.data(), static_cast<std::uint32_t>(text.size()));
      };
      std::string alias = toLocal(detail::ViewOf(prefix));
      std::string localUri = toLocal(detail::ViewOf(uri));
      pThis->m_doc.m_scopedAliases.Declare(alias, localUri);
      pThis->m_doc.SetNamespaceMapping(std::move(alias), std::move(localUri));
    });
  }

  // Declarations stay in the document's map beyond their scope.
  static void XMLCALL EndNamespace(void* userData, const XML_Char*) {
    static_cast<CExpatReader*>(userData)->m_doc.m_scopedAliases.EndDeclaration();
  }

  static void XMLCALL CharacterData(void* userData, const XML_Char* bytes, int length) {
    Guard(userData, [=](CExpatReader* pThis) {
      AssertElementIsOpen(pThis);
      pThis->CharacterData(bytes, static_cast<std::size_t>(length));
    });
  }

  static void XMLCALL StartCdata(void* userData) {
    Guard(userData, [](CExpatReader* pThis) {
      AssertElementIsOpen(pThis);
      pThis->Gather("<![CDATA[");
    });
  }

  static void XMLCALL EndCdata(void* userData) {
    Guard(userData, [](CExpatReader* pThis) {
      AssertElementIsOpen(pThis);
      pThis->Gather("]]>");
    });
  }

  static void AssertElementIsOpen([[maybe_unused]] CExpatReader* pThis) {
    QZ_ASSERT(pThis != 0);
    QZ_ASSERT(pThis->m_doc.m_pElementStack.size() > 0);
    QZ_ASSERT(pThis->m_doc.m_pElementStack.back() != 0);
  }
};

CExpatReader::CExpatReader(CXmlDocument& document)
    : CInstanceMonitor(g_readerClass),
      m_doc(document),
      m_nodes(*document.m_pNodes),
      m_isLocalUtf8(detail::IsLocalUtf8()) {}

CExpatReader::~CExpatReader() { FreeParser(); }

void CExpatReader::FreeParser() {
  if (m_parser != nullptr) XML_ParserFree(std::exchange(m_parser, nullptr));
}

void CExpatReader::Init() {
  FreeParser();
  m_parser = m_doc.m_schemaType == SchemaType_NoNamespaces
                 ? XML_ParserCreate(nullptr)
                 : XML_ParserCreateNS(nullptr, kNamespaceSeparator);
  if (m_parser == nullptr) throw std::bad_alloc();
  m_text.resize(kFirstText);
  XML_SetUserData(m_parser, this);
  XML_SetElementHandler(m_parser, &Handlers::StartElement, &Handlers::EndElement);
  XML_SetNamespaceDeclHandler(m_parser, &Handlers::StartNamespace, &Handlers::EndNamespace);
  XML_SetCharacterDataHandler(m_parser, &Handlers::CharacterData);
  XML_SetStartDoctypeDeclHandler(m_parser, &Handlers::StartDoctype);
  if (!m_doc.m_pContext->GetStripCDATA()) {
    XML_SetCdataSectionHandler(m_parser, &Handlers::StartCdata, &Handlers::EndCdata);
  }
}

// --- Input

void CExpatReader::Parse(bool isLast) {
  QZ_ASSERT(m_parser != 0);
  if (m_parser == nullptr) return;
  std::string_view input(reinterpret_cast<const char*>(m_doc.m_pInput), m_doc.m_dwInputLength);
  m_inputOctets += detail::CInputOrigin::Measure(m_doc.m_pInput, input.size());
  m_nodes.SetInputOctets(m_inputOctets);
  const bool waits = !isLast && m_heldBack.size() + input.size() < m_pending;
  if (waits || !m_heldBack.empty()) input = m_heldBack += input;
  if (waits) return;
  do {
    const std::string_view slice = input.substr(0, kSlice);
    input.remove_prefix(slice.size());
    Feed(slice, isLast && input.empty());
  } while (!input.empty());
  m_heldBack.clear();
  if (isLast) FreeParser();
}

void CExpatReader::Feed(std::string_view piece, bool isLast) {
  m_fedOctets += piece.size();
  const XML_Status status =
      XML_Parse(m_parser, piece.data(), static_cast<int>(piece.size()), isLast ? 1 : 0);
  if (status != XML_STATUS_OK) Fail();
  // Behind an unfinished token this is where it begins; below zero when that is not known yet.
  const XML_Index done = XML_GetCurrentByteIndex(m_parser);
  m_pending = done < 0 ? m_pending + piece.size() : m_fedOctets - static_cast<std::uint64_t>(done);
}

// Puts what was gathered into the tree and throws. No bound may put another failure in the place of
// the one that was met.
void CExpatReader::Fail() {
  std::string message;
  if (m_failure == nullptr) {
    message = FormatString("%s at line %d", XML_ErrorString(XML_GetErrorCode(m_parser)),
                           static_cast<int>(XML_GetCurrentLineNumber(m_parser)));
  }
  FreeParser();
  m_nodes.ClearBounds();
  for (; !m_textBegin.empty(); m_textBegin.pop_back()) FlushText();
  if (m_failure != nullptr) std::rethrow_exception(std::exchange(m_failure, nullptr));
  throw CQzException(std::move(message));
}

// --- Elements

void CExpatReader::StartElement(const char* name, const char** attributes) {
  // Whoever looks at the tree from the callback is to find the text of the open elements there.
  if (m_doc.m_pElementCallback != nullptr) FlushText();
  CXmlElement* const element = m_doc.OpenElement(m_nodes.GetNames().FindJoined(name));
  m_textBegin.push_back(m_textSize);
  const bool isFromEntity = m_hasDoctype && IsBehindSameReference();
  if (isFromEntity) m_nodes.CountOctets(sizeof(CXmlElement));
  if (*attributes == nullptr) return;
  AddAttributes(element, attributes, isFromEntity);
  if (m_doc.m_scopedAliases.IsAmbiguous()) NoteTypeAlias(*element);
}

// Nobody can tell later what the alias stood for here.
void CExpatReader::NoteTypeAlias(const CXmlElement& element) {
  constexpr char kSpaces[] = " \t\r\n";
  for (const CXmlAttribute* const attribute : element.GetAttributeRange()) {
    if (attribute->GetLocalName() != "type") continue;
    if (attribute->GetNamespaceURI() != kXmlSchemaInstanceNamespace) continue;
    std::string_view type = attribute->GetValueView();
    type.remove_prefix(std::min(type.size(), type.find_first_not_of(kSpaces)));
    const std::size_t colon = type.find(':');
    m_doc.m_scopedAliases.Note(element, type.substr(0, colon != type.npos ? colon : 0));
    return;
  }
}

// A document can write few octets and get many nodes only through its document type: by default
// attributes, and by the elements of an entity, which all stand where its reference stands. Such a
// node counts with its own size.
bool CExpatReader::IsBehindSameReference() {
  const std::int64_t index = XML_GetCurrentByteIndex(m_parser);
  return std::exchange(m_lastElementIndex, index) == index;
}

void CExpatReader::AddAttributes(CXmlElement* element, const char** attributes, bool isFromEntity) {
  std::size_t count = 0;
  while (attributes[count * 2] != nullptr) ++count;
  std::size_t written = count;
  if (isFromEntity) {
    written = 0;
  } else if (m_hasDoctype) {
    written = static_cast<std::size_t>(XML_GetSpecifiedAttributeCount(m_parser)) / 2;
  }
  for (std::size_t i = 0; i < count; ++i) {
    const detail::XmlName* const name = m_nodes.GetNames().FindJoined(attributes[i * 2]);
    const std::string_view value(attributes[i * 2 + 1]);
    m_nodes.CountOctets(name->octets + value.size() + (i < written ? 0 : sizeof(CXmlAttribute)));
    if (m_isLocalUtf8) {
      m_nodes.AddAttribute(element, name, value);
    } else {
      m_nodes.AddAttribute(element, name,
                           Utf8ToLocal(value.data(), static_cast<std::uint32_t>(value.size())));
    }
  }
}

void CExpatReader::EndElement() {
  if (m_textSize != m_textBegin.back()) FlushText();
  const bool isOpen = m_textBegin.size() <= m_doc.m_pElementStack.size();
  m_textBegin.pop_back();
  if (isOpen) m_doc.CloseElement();
}

// --- Text

void CExpatReader::CharacterData(const char* utf8, std::size_t length) {
  if (!m_isLocalUtf8) {
    GatherConverted(utf8, length);
  } else if (m_hasDoctype) {
    GatherExcludingCR(std::string_view(utf8, length));  // an entity's text may hold some anywhere
  } else if (length != 1 || *utf8 != '\r') {
    // A carriage return comes from a character reference only, and that is a piece of its own.
    Gather(std::string_view(utf8, length));
  }
}

void CExpatReader::GatherConverted(const char* utf8, std::size_t length) {
  const std::string local = Utf8ToLocal(utf8, static_cast<std::uint32_t>(length), m_wideScratch,
                                        sizeof m_wideScratch / sizeof *m_wideScratch, m_byteScratch,
                                        sizeof m_byteScratch);
  GatherExcludingCR(local.c_str());
}

void CExpatReader::GatherExcludingCR(std::string_view left) {
  while (!left.empty()) {
    const std::string_view run = left.substr(0, left.find('\r'));
    Gather(run);
    left.remove_prefix(std::min(left.size(), run.size() + 1));
  }
}

inline void CExpatReader::Gather(std::string_view text) {
  if (m_text.size() - m_textSize < text.size()) MakeRoom(text.size());
  detail::CopyShort(m_text.data() + m_textSize, text.data(), text.size());
  m_textSize += text.size();
}

// The buffer holds the text of all open elements, but only the beginning of long ones.
void CExpatReader::MakeRoom(std::size_t length) {
  if (!m_textBegin.empty() && m_textSize - m_textBegin.back() >= kLongText) FlushText();
  if (m_text.size() - m_textSize < length) {
    m_text.resize(std::max(m_textSize + length, m_text.size() * 2));
  }
}

// Gives the innermost open element what was gathered of its text. Who empties the document between
// two pieces of its input has taken the element away.
void CExpatReader::FlushText() {
  if (m_textBegin.empty() || m_textSize == m_textBegin.back()) return;
  const std::size_t begin = m_textBegin.back();
  const std::string_view text(m_text.data() + begin, m_textSize - begin);
  m_textSize = begin;
  if (m_textBegin.size() > m_doc.m_pElementStack.size()) return;
  m_nodes.CountOctets(text.size());
  CXmlElement* const element = m_doc.m_pElementStack[m_textBegin.size() - 1];
  if (element->m_text.IsNone()) {
    m_nodes.SetText(element, text);
  } else {
    element->AppendCountedText(text);
  }
}

}  // namespace QzXmlLib16
