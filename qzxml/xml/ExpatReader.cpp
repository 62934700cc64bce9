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
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlDocumentNodes.h"

// How the input reaches Expat, and how text reaches the tree.
//
// Expat copies what it is given before it parses it, so it gets slices that stay in the cache. A
// token that does not end within a slice is scanned again from its start with the next one;
// therefore the next slice is at least as long as what is pending, and a token of any size is
// scanned twice at most. Where the next piece of input is shorter than that, it is held back.
//
// Expat delivers the text of an element in pieces, broken at line ends, references and slices. They
// are gathered in one buffer for all open elements, used as a stack, and an element gets its text
// at its end, in one allocation of the exact size. Long texts move to their element in between.
//
// No exception may travel through Expat's frames: the handlers keep it, stop the parser, and Parse
// throws it on.

namespace QzXmlLib16 {
namespace {

static_assert(sizeof(XML_Char) == 1, "Expat is to deliver UTF-8");

constexpr char kNamespaceSeparator = '|';
constexpr std::size_t kSlice = 32 * 1024;
constexpr std::size_t kMaxSlice = 512 * 1024 * 1024;
constexpr std::size_t kLongText = 64 * 1024;

CInstanceClass g_readerClass("CExpatReader");

}  // namespace

// What Expat calls. It goes on calling for a moment behind a failure; that is not heard.
struct CExpatReader::Handlers {
  template <class Call>
  static void Guard(void* userData, Call call) {
    auto* const pThis = static_cast<CExpatReader*>(userData);
    if (pThis->m_failure != nullptr) return;
    try {
      call(pThis);
    } catch (...) {
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

  static void XMLCALL StartNamespace(void* userData, const XML_Char* prefix, const XML_Char* uri) {
    Guard(userData, [=](CExpatReader* pThis) {
      const auto toLocal = [](std::string_view text) {
        return Utf8ToLocal(text.data(), static_cast<std::uint32_t>(text.size()));
      };
      pThis->m_doc.SetNamespaceMapping(toLocal(detail::ViewOf(prefix)),
                                       toLocal(detail::ViewOf(uri)));
    });
  }

  // Declarations stay in the document's map beyond their scope.
  static void XMLCALL EndNamespace(void*, const XML_Char*) {}

  static void XMLCALL CharacterData(void* userData, const XML_Char* bytes, int length) {
    Guard(userData, [=](CExpatReader* pThis) {
      AssertElementIsOpen(pThis);
      pThis->CharacterData(bytes, static_cast<std::size_t>(length));
    });
  }

  static void XMLCALL StartCdata(void* userData) {
    Guard(userData, [](CExpatReader* pThis) {
      AssertElementIsOpen(pThis);
      pThis->AppendText("<![CDATA[");
    });
  }

  static void XMLCALL EndCdata(void* userData) {
    Guard(userData, [](CExpatReader* pThis) {
      AssertElementIsOpen(pThis);
      pThis->AppendText("]]>");
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
  XML_SetUserData(m_parser, this);
  XML_SetElementHandler(m_parser, &Handlers::StartElement, &Handlers::EndElement);
  XML_SetNamespaceDeclHandler(m_parser, &Handlers::StartNamespace, &Handlers::EndNamespace);
  XML_SetCharacterDataHandler(m_parser, &Handlers::CharacterData);
  if (!m_doc.m_pContext->GetStripCDATA()) {
    XML_SetCdataSectionHandler(m_parser, &Handlers::StartCdata, &Handlers::EndCdata);
  }
}

// --- Input

void CExpatReader::Parse(bool isLast) {
  QZ_ASSERT(m_parser != 0);
  if (m_parser == nullptr) return;
  std::string_view input(reinterpret_cast<const char*>(m_doc.m_pInput), m_doc.m_dwInputLength);
  m_inputOctets += input.size();
  m_nodes.SetInputOctets(m_inputOctets);
  std::string held;
  if (!isLast && m_heldBack.size() + input.size() < m_pending) {
    m_heldBack += input;
    return;
  }
  if (!m_heldBack.empty()) {
    held = std::move(m_heldBack += input);
    m_heldBack.clear();
    input = held;
  }
  do {
    const std::uint64_t wanted = std::clamp<std::uint64_t>(m_pending, kSlice, kMaxSlice);
    const std::size_t length = std::min<std::uint64_t>(input.size(), wanted);
    Feed(input.data(), length, isLast && length == input.size());
    input.remove_prefix(length);
  } while (!input.empty());
  if (isLast) FreeParser();
}

void CExpatReader::Feed(const char* bytes, std::size_t length, bool isLast) {
  m_fedOctets += length;
  if (XML_Parse(m_parser, bytes, static_cast<int>(length), isLast) != XML_STATUS_OK) Fail();
  const XML_Index done = XML_GetCurrentByteIndex(m_parser);
  m_pending = done < 0 ? m_pending + length : m_fedOctets - static_cast<std::uint64_t>(done);
}

// Puts what was gathered into the tree and throws.
void CExpatReader::Fail() {
  std::string message;
  if (m_failure == nullptr) {
    message = FormatString("%s at line %d", XML_ErrorString(XML_GetErrorCode(m_parser)),
                           static_cast<int>(XML_GetCurrentLineNumber(m_parser)));
  }
  FreeParser();
  for (; !m_textBegin.empty(); m_textBegin.pop_back()) FlushText();
  if (m_failure != nullptr) std::rethrow_exception(std::exchange(m_failure, nullptr));
  throw CQzException(std::move(message));
}

// --- Elements

void CExpatReader::StartElement(const char* name, const char** attributes) {
  // Whoever looks at the tree from the callback is to find the text of the open elements there.
  if (m_doc.m_pElementCallback != nullptr) FlushText();
  CXmlElement* const element = m_doc.OpenElement(m_nodes.GetNames().FindJoined(name));
  m_textBegin.push_back(m_text.size());
  // A document can write few octets and get many nodes only through its document type: by an
  // element of an entity, and by a default attribute. Then a node counts with its own size.
  const bool isFromEntity = XML_GetCurrentByteCount(m_parser) == 0;
  if (isFromEntity) m_nodes.CountOctets(sizeof(CXmlElement));
  if (*attributes != nullptr) AddAttributes(element, attributes, isFromEntity);
}

void CExpatReader::AddAttributes(CXmlElement* element, const char** attributes, bool isFromEntity) {
  std::size_t count = 0;
  while (attributes[count * 2] != nullptr) ++count;
  m_nodes.ReserveAttributes(element, count);
  const std::size_t written =
      isFromEntity ? 0 : static_cast<std::size_t>(XML_GetSpecifiedAttributeCount(m_parser)) / 2;
  for (std::size_t i = 0; i < count; ++i) {
    const detail::XmlName* const name = m_nodes.GetNames().FindJoined(attributes[i * 2]);
    const char* const value = attributes[i * 2 + 1];
    const std::size_t length = std::strlen(value);
    const std::size_t nodeOctets = i < written ? 0 : sizeof(CXmlAttribute);
    m_nodes.CountOctets(name->localName.size() + length + nodeOctets);
    if (m_isLocalUtf8) {
      m_nodes.AddAttribute(element, name, value, length);
    } else {
      const std::string local = Utf8ToLocal(value, static_cast<std::uint32_t>(length));
      m_nodes.AddAttribute(element, name, local.data(), local.size());
    }
  }
}

void CExpatReader::EndElement() {
  FlushText();
  m_textBegin.pop_back();
  m_doc.EndElement();
}

// --- Text

void CExpatReader::CharacterData(const char* utf8, std::size_t length) {
  if (length == 0) return;
  if (m_isLocalUtf8) {
    AppendText(std::string_view(utf8, length));
  } else {
    const std::string local = Utf8ToLocal(utf8, static_cast<std::uint32_t>(length), m_wideScratch,
                                          sizeof m_wideScratch / sizeof *m_wideScratch,
                                          m_byteScratch, sizeof m_byteScratch);
    AppendText(local.c_str());
  }
}

// Appends without carriage returns, which come from character references only.
void CExpatReader::AppendText(std::string_view text) {
  if (m_textBegin.empty()) return;
  m_nodes.CountOctets(text.size());
  for (;;) {
    const std::size_t end = text.find('\r');
    AppendRun(text.substr(0, end));
    if (end == std::string_view::npos) return;
    text.remove_prefix(end + 1);
  }
}

void CExpatReader::AppendRun(std::string_view text) {
  m_text.append(text);
  if (m_text.size() - m_textBegin.back() >= kLongText) FlushText();
}

// Gives the innermost open element what was gathered of its text.
void CExpatReader::FlushText() {
  if (m_textBegin.empty() || m_text.size() == m_textBegin.back()) return;
  CXmlElement* const element = m_doc.m_pElementStack[m_textBegin.size() - 1];
  const std::string_view text = std::string_view(m_text).substr(m_textBegin.back());
  if (element->m_strText.empty()) {
    element->m_strText = std::string(text);
  } else {
    element->AppendCountedText(text);
  }
  m_text.resize(m_textBegin.back());
}

}  // namespace QzXmlLib16
