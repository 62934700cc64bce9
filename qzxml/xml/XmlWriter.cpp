#include "qzxml/xml/XmlWriter.h"

#include <atomic>
#include <string>

#include "qzxml/platform/Assert.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/xml/Messages.h"
#include "qzxml/xml/XmlNamespaces.h"
#include "qzxml/xml/XmlTextWriter.h"
#include "qzxml/xml/XmlWriterContext.h"

namespace QzXmlLib16 {
namespace detail {

std::uint64_t NextNameId() {
  static std::atomic<std::uint64_t> last{0};
  return last.fetch_add(1, std::memory_order_relaxed) + 1;
}

}  // namespace detail

CXmlWriter::CXmlWriter(const char* className)
    : CInstanceMonitor(className),
      m_pContext(nullptr),
      m_pIdle(nullptr),
      m_bDocumentValues(false),
      m_pPlainTextWriter(nullptr),
      m_pShortWays(nullptr) {
  CXmlWriter::AddNamespaceMapping("xml", kXmlNamespace);
}

CXmlWriter::~CXmlWriter() {
  delete m_pContext;
  while (m_pIdle != nullptr) {
    CXmlWriterContext* const next = m_pIdle->m_pParent;
    m_pIdle->m_pParent = nullptr;
    m_pIdle->EndWait();
    delete m_pIdle;
    m_pIdle = next;
  }
}

void CXmlWriter::StartDocument() {}

void CXmlWriter::EndDocument() {
  if (m_pContext != nullptr) throw CQzException(Messages::kElementNotClosed);
}

void CXmlWriter::SetDefaultNamespace(const std::string& uri) {
  if (m_pContext != nullptr) {
    m_pContext->SetDefaultNamespace(uri);
  } else {
    m_strDefaultNamespace = uri;
  }
}

void CXmlWriter::AddNamespaceMapping(const std::string& alias, const std::string& uri) {
  if (m_pContext != nullptr) {
    m_pContext->AddNamespaceMapValue(uri, alias);
  } else {
    m_namespaces[uri] = alias;
  }
}

void CXmlWriter::WriteTextElement(const detail::ElementTags& name, const std::string& uri,
                                  const std::string& text, ItemType type, bool isDefault) {
  CXmlTextWriter* const plain = GetPlainTextWriter();
  if (plain != nullptr && plain->PutTextElement(name, uri, text, isDefault)) return;
  if (m_pShortWays != nullptr && m_pShortWays->PutTextElement(name, uri, text, type)) return;
  WriteStartElement(name.GetName(), uri);
  WriteText(text, type, isDefault);
  WriteEndElement();
}

void CXmlWriter::SetCollectionState(std::uint32_t state) {
  if (m_pContext != nullptr) m_pContext->SetCollectionState(state);
}

// OpenContext where it is not a nested element in the memory of an ended one.
CXmlWriter::CXmlWriterContext* CXmlWriter::OpenRootOrNew(const std::string& name,
                                                         const std::string& uri) {
  if (m_pContext != nullptr) return new CXmlWriterContext(name, uri, m_pContext);
  if (m_pIdle == nullptr) {
    return new CXmlWriterContext(name, uri, m_strDefaultNamespace, m_namespaces, nullptr);
  }
  CXmlWriterContext* const context = m_pIdle;
  CXmlWriterContext* const nextIdle = context->m_pParent;
  context->OpenRoot(name, uri, m_strDefaultNamespace, m_namespaces, nullptr);
  m_pIdle = nextIdle;
  context->BeginLife();
  return context;
}

void CXmlWriter::ThrowAttributeAfterContent() {
  throw CQzException(Messages::kAttributeAfterContent);
}

bool CXmlWriter::IsXmlNamespace(const std::string& uri) {
  constexpr std::size_t length = sizeof(kXmlNamespace) - 1;
  return uri.compare(0, length, kXmlNamespace) == 0;
}

}  // namespace QzXmlLib16
