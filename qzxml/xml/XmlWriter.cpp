#include "qzxml/xml/XmlWriter.h"

#include <atomic>
#include <string>
#include <utility>

#include "qzxml/platform/Assert.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/runtime/SpareStore.h"
#include "qzxml/xml/Messages.h"
#include "qzxml/xml/XmlNamespaces.h"
#include "qzxml/xml/XmlTextWriter.h"
#include "qzxml/xml/XmlWriterContext.h"

namespace QzXmlLib16 {
namespace detail {

std::uint64_t NextNameId() {
  static std::atomic<std::uint64_t> last{0};
  const std::uint64_t id = last.fetch_add(1, std::memory_order_relaxed) + 1;
  return id < kNameIds ? id : 0;
}

}  // namespace detail

// To make the context of a root and the first mapping costs a small document a good part of what it
// costs to write it.
struct CXmlWriter::CStart {
  CStart() : namespaces{{kXmlNamespace, "xml"}} {}
  CStart(const CStart&) = delete;
  CStart& operator=(const CStart&) = delete;
  ~CStart() { SetRoot(nullptr); }

  // A waiting context, in the place of the one that is there.
  void SetRoot(CXmlWriterContext* context) noexcept {
    if (root != nullptr) {
      root->EndWait();
      delete root;
    }
    root = context;
  }

  // What is made from now on counts in a new record of the instance monitor.
  void DropUnlistedRoot() {
    if (root != nullptr && !root->GetRecord()->IsListed()) SetRoot(nullptr);
  }

  // As it was, if that costs little. False when it is not worth keeping.
  bool Renew() noexcept {
    if (namespaces.size() != 1 || namespaces.begin()->first != kXmlNamespace ||
        namespaces.begin()->second != "xml" || namespaces.begin()->second.capacity() > kSmall) {
      return false;
    }
    return root == nullptr || root->RenewRoot();
  }

  using CStore = detail::CSpareStore<CStart, 8>;
  static CStore& Store() {
    static auto* const store = new CStore();
    return *store;
  }

  static constexpr std::size_t kSmall = 256;

  NamespaceMap namespaces;
  CXmlWriterContext* root = nullptr;  // owned
};

void CXmlWriter::CGiveStart::operator()(CStart* start) const noexcept {
  if (!start->Renew() || !CStart::Store().Give(start)) delete start;
}

CXmlWriter::CXmlWriter(const char* className) : CInstanceMonitor(className) { Begin(); }
CXmlWriter::CXmlWriter(CInstanceClass& instanceClass) : CInstanceMonitor(instanceClass) { Begin(); }

void CXmlWriter::Begin() {
  CStart* const spare = CStart::Store().Take();
  m_pStart.reset(spare != nullptr ? spare : new CStart());
  m_pStart->DropUnlistedRoot();
  m_pNamespaces = &m_pStart->namespaces;
  m_pIdle = std::exchange(m_pStart->root, nullptr);
}

CXmlWriter::~CXmlWriter() {
  delete m_pContext;
  while (m_pIdle != nullptr) {
    CXmlWriterContext* const context = m_pIdle;
    m_pIdle = std::exchange(context->m_pParent, nullptr);
    if (context->m_rootNamespaces != nullptr) {
      m_pStart->SetRoot(context);
    } else {
      context->EndWait();
      delete context;
    }
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
    (*m_pNamespaces)[uri] = alias;
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
    return new CXmlWriterContext(name, uri, m_strDefaultNamespace, *m_pNamespaces, nullptr);
  }
  CXmlWriterContext* const context = m_pIdle;
  CXmlWriterContext* const nextIdle = context->m_pParent;
  context->OpenRoot(name, uri, m_strDefaultNamespace, *m_pNamespaces, nullptr);
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
