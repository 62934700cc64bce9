#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "qzxml/platform/Assert.h"
#include "qzxml/platform/Export.h"
#include "qzxml/xml/ShortText.h"
#include "qzxml/xml/XmlWriter.h"
#include "qzxml/xml/XmlWriterScopes.h"

namespace QzXmlLib16 {

// One open element: its names, how far it is written, and the namespaces in force in it. A context
// owns its parent, so that deleting the innermost one frees the whole chain, in a loop.
//
// Namespaces are scoped by elements. A nested element sees those of its parent until it changes
// them; a change is seen from there inwards and forgotten when the element ends. Only the innermost
// context of a chain is asked and changed.
class QZXML_API CXmlWriter::CXmlWriterContext : public CInstanceMonitor {
 public:
  // The root of a document, with the namespaces that are in force from its start.
  CXmlWriterContext(const std::string& name, const std::string& uri,
                    const std::string& defaultNamespace, const NamespaceMap& namespaces,
                    CXmlWriterContext* parent);
  // An element inside parent, which must not be null.
  CXmlWriterContext(const std::string& name, const std::string& uri, CXmlWriterContext* parent);
  ~CXmlWriterContext() override;
  CXmlWriterContext(const CXmlWriterContext&) = delete;
  CXmlWriterContext& operator=(const CXmlWriterContext&) = delete;

  // ---- The element ----

  std::string_view GetName() const { return m_name.View(); }
  const std::string& GetNamespace() const { return *m_pNamespace; }  // as given, empty for none
  CXmlWriterContext* GetParent() const { return m_pParent; }         // null for the root

  // Ends what this element declared and lets go of the parent, which the caller then owns.
  CXmlWriterContext* DetachParent() {
    if (m_pScope == this) EndScope();
    CXmlWriterContext* const parent = m_pParent;
    m_pParent = nullptr;
    return parent;
  }

  std::uint32_t GetDepth() const { return m_dwDepth; }  // 0 for the root at first
  void SetDepth(std::uint32_t depth) { m_dwDepth = depth; }
  std::uint32_t GetChildCount() const { return m_dwChildCount; }
  void AddChild() { ++m_dwChildCount; }
  bool IsStartTagOpen() const { return m_bStartTagOpen; }  // true at first
  void SetStartTagOpen(bool open) { m_bStartTagOpen = open; }
  bool HasAttributes() const { return m_bHasAttributes; }
  void SetHasAttributes(bool has) { m_bHasAttributes = has; }
  std::uint32_t GetCollectionState() const { return m_dwCollectionState; }
  void SetCollectionState(std::uint32_t state) { m_dwCollectionState = state; }

  // Counts the contexts of elements that were written in one go and needed none.
  void CountElement() { CountPassing(); }
  void CountElements(std::uint32_t count) { CountPassing(count); }

  // ---- The namespaces in force ----

  const std::string& GetDefaultNamespace() const { return m_pScope->m_strDefaultNamespace; }
  void SetDefaultNamespace(const std::string& uri);
  const NamespaceMap& GetNamespaceMap() const;
  void AddNamespaceMapValue(const std::string& uri, const std::string& alias);

  // The alias of a URI. An unknown one is entered with an empty alias, in the scope that is in
  // force (meant: callers test with FindAlias first).
  const std::string& GetNamespaceMapValue(const std::string& uri);

  // The alias of a URI, or null for an unknown one. Lives as long as the mapping.
  const std::string* FindAlias(const std::string& uri) const;

  // The first of "AA", "AB" to "ZZ", then "AAA" and on, that no mapping in force uses.
  std::string GenerateAlias() const;

  // A number that stands for the namespaces in force, among the elements of one root: it changes
  // with them, is that of before when a scope ends, and is never 0.
  std::uint64_t GetNamespaceState() const { return m_pNamespaces->GetState(); }

  // The prefix that the element's own name takes here: null when it has no namespace or that is the
  // default one, else its alias. False when the namespace is unknown, and prefix is unchanged then.
  bool FindPrefix(const std::string*& prefix) {
    if (m_prefixState != m_pNamespaces->GetState() && !ResolvePrefix()) return false;
    prefix = m_pPrefix;
    return true;
  }

 private:
  friend class CXmlWriter;

  // Makes a waiting root as good as new for another document. False where too much memory would be
  // kept for that.
  bool RenewRoot() {
    return m_rootNamespaces->Renew() && m_strNamespace.capacity() <= kSmallText &&
           m_name.GetCapacity() <= kSmallText && m_strDefaultNamespace.capacity() <= kSmallText;
  }

  void OpenRoot(const std::string& name, const std::string& uri,
                const std::string& defaultNamespace, const NamespaceMap& namespaces,
                CXmlWriterContext* parent);
  void OpenNested(const std::string& name, const std::string& uri, CXmlWriterContext* parent);
  void Open(const std::string& name, CXmlWriterContext* parent);
  void SetOwnNamespace(const std::string& uri);
  void BeginScope();
  void EndScope();
  bool ResolvePrefix();

  static constexpr std::size_t kSmallText = 256;

  std::uint32_t m_dwChildCount;
  bool m_bStartTagOpen;
  std::uint32_t m_dwDepth;
  std::string m_strNamespace;       // unless it is the parent's
  const std::string* m_pNamespace;  // m_strNamespace, or that of an outer element
  const std::string* m_pPrefix;     // what FindPrefix found
  std::uint64_t m_prefixState;      // with these namespaces in force; 0 for never
  detail::ShortText m_name;
  CXmlWriterContext* m_pParent;            // owned
  bool m_bHasAttributes;                   // for Fast Infoset
  std::uint32_t m_dwCollectionState;       // for JSON
  std::string m_strDefaultNamespace;       // of a context with a scope of its own
  CXmlWriterContext* m_pScope;             // the nearest context with a scope of its own
  detail::XmlWriterScopes* m_pNamespaces;  // of the whole chain, owned by its root
  detail::XmlWriterScopes::Mark m_outer;   // what was in force outside the own scope
  std::unique_ptr<detail::XmlWriterScopes> m_rootNamespaces;
};

// ---- On the path of each element ----

inline void CXmlWriter::CXmlWriterContext::OpenNested(const std::string& name,
                                                      const std::string& uri,
                                                      CXmlWriterContext* parent) {
  m_pNamespaces = parent->m_pNamespaces;
  m_pScope = parent->m_pScope;
  const std::string& outer = *parent->m_pNamespace;
  if (detail::AreEqual(uri, outer)) {
    m_pNamespace = &outer;
    m_pPrefix = parent->m_pPrefix;
    m_prefixState = parent->m_prefixState;
  } else {
    SetOwnNamespace(uri);
  }
  Open(name, parent);
}

// What is the same for every element. The parent comes last: until then the context stands where it
// stood, whatever fails.
inline void CXmlWriter::CXmlWriterContext::Open(const std::string& name,
                                                CXmlWriterContext* parent) {
  m_name.Assign(name.data(), name.size());
  m_dwChildCount = 0;
  m_bStartTagOpen = true;
  m_bHasAttributes = false;
  m_dwDepth = parent != nullptr ? parent->m_dwDepth + 1 : 0;
  m_dwCollectionState = 0;
  m_pParent = parent;
}

inline CXmlWriter::CXmlWriterContext* CXmlWriter::OpenContext(const std::string& name,
                                                              const std::string& uri) {
  CXmlWriterContext* const context = m_pIdle;
  if (context == nullptr || m_pContext == nullptr) return OpenRootOrNew(name, uri);
  CXmlWriterContext* const nextIdle = context->m_pParent;
  context->OpenNested(name, uri, m_pContext);
  m_pIdle = nextIdle;
  context->BeginLife();
  return context;
}

inline CXmlWriter::CXmlWriterContext* CXmlWriter::CloseContext(CXmlWriterContext* context) {
  CXmlWriterContext* const parent = context->DetachParent();
  context->BeginWait();
  context->m_pParent = m_pIdle;
  m_pIdle = context;
  return parent;
}

inline void CXmlWriter::RequireOpenStartTag() const {
  QZ_ASSERT_TEXT(m_pContext != nullptr, "m_pContext != 0");
  if (m_pContext == nullptr || !m_pContext->IsStartTagOpen()) ThrowAttributeAfterContent();
}

}  // namespace QzXmlLib16
