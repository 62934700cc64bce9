#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "qzxml/platform/Export.h"
#include "qzxml/runtime/MemoryLeakHelp.h"
#include "qzxml/values/ItemType.h"
#include "qzxml/xml/ShortWays.h"
#include "qzxml/xml/WrittenName.h"

namespace QzXmlLib16 {

class CXmlTextWriter;

// The sink of every serialization: objects call it in document order and do not know whether XML
// text, Fast Infoset or JSON comes of it. Calls come in this order: StartDocument;
// SetDefaultNamespace and AddNamespaceMapping; comments and processing instructions;
// WriteStartElement of the root; its attributes and WriteInlineSchema; content; WriteEndElement;
// EndDocument. Whatever was written stays written when a call fails; a writer can be abandoned in
// any state. A writer serves one document and belongs to one thread. Not copied.
class QZXML_API CXmlWriter : public CInstanceMonitor {
 public:
  class CXmlWriterContext;                                  // one open element; XmlWriterContext.h
  class CDocumentValues;                                    // below
  using NamespaceMap = std::map<std::string, std::string>;  // URI to alias

  ~CXmlWriter() override;  // frees the elements left open
  CXmlWriter(const CXmlWriter&) = delete;
  CXmlWriter& operator=(const CXmlWriter&) = delete;

  // ---- The document ----

  // Called once, straight after construction. Does nothing here.
  virtual void StartDocument();

  // Called once, when the document is complete. Throws CQzException "An Element has not been
  // closed." while an element is open.
  virtual void EndDocument();

  // ---- Namespaces ----

  // Before the first element: the namespace that the root declares as the default one. In an
  // element: the default namespace from here to the end of that element. No declaration is written
  // for the latter (meant: it only says which prefixes are left out below).
  virtual void SetDefaultNamespace(const std::string& uri);

  // Before the first element: a prefix that the root declares. In an element: a prefix that is
  // known from here to the end of that element, where the caller writes the declaration.
  virtual void AddNamespaceMapping(const std::string& alias, const std::string& uri);

  // ---- In front of the root ----

  // A comment at this place, if the format has comments.
  virtual void WriteComment(const std::string& text) = 0;

  // The whole instruction with its marks.
  virtual void WriteProcessingInstruction(const std::string& text) = 0;

  // ---- Elements ----

  // On the root, after its attributes, while its start tag is open.
  virtual void WriteInlineSchema(const std::string& text) = 0;

  // Opens an element below the innermost one. An empty uri is no namespace.
  virtual void WriteStartElement(const std::string& name, const std::string& uri) = 0;

  // Character data of the innermost element. The type tells the encoded formats what the text is;
  // a text that is the schema's default can be left out. Asserts "m_pContext != 0".
  virtual void WriteText(const std::string& text, ItemType type, bool isDefault) = 0;

  // Closes the innermost element. Asserts "m_pContext != 0".
  virtual void WriteEndElement() = 0;

  // An attribute of the innermost element; only before its content. Asserts "m_pContext != 0".
  virtual void WriteAttribute(const std::string& name, const std::string& uri,
                              const std::string& value, ItemType type) = 0;

  // The attribute type of the XML Schema instance namespace, naming the type typeName of typeUri;
  // as WriteAttribute.
  virtual void WriteXsiType(const std::string& typeUri, const std::string& typeName,
                            ItemType type) = 0;

  // The attribute nil of the XML Schema instance namespace with the value "true".
  virtual void WriteXsiNil() = 0;

  // ---- For all writers ----

  // An element with nothing but a text: WriteStartElement, WriteText and WriteEndElement in one
  // call, which writers with short ways serve in one go.
  void WriteTextElement(const detail::ElementTags& name, const std::string& uri,
                        const std::string& text, ItemType type, bool isDefault);

  // This writer, if it is the text writer itself and no class derived from it, and its document has
  // begun; null for any other. Whoever asks may use the short ways that it offers.
  CXmlTextWriter* GetPlainTextWriter() const { return m_pPlainTextWriter; }

  // The short ways of any other writer that has some, under the same condition; or null.
  detail::CShortWays* GetShortWays() const { return m_pShortWays; }

  // 1 in front of the items of a collection, 3 behind them: kept in the innermost element for
  // formats that mark collections. Does nothing while no element is open.
  void SetCollectionState(std::uint32_t state);

  // Where those who call the writer put together what they hand to it, so that a document needs no
  // new string for each value. The content is nobody's behind the call that takes it.
  struct Scratch {
    std::string text;
    std::string namespaceUri;
  };
  Scratch& GetScratch() { return m_scratch; }

 protected:
  // The class name is for the instance monitor. Maps "xml" to the XML namespace.
  explicit CXmlWriter(const char* className);
  explicit CXmlWriter(::CInstanceClass& instanceClass);

  void SetPlainTextWriter(CXmlTextWriter* writer) { m_pPlainTextWriter = writer; }
  void SetShortWays(detail::CShortWays* shortWays) { m_pShortWays = shortWays; }

  // ---- The stack of open elements ----

  // A context for an element below m_pContext or, when that is null, for a root with the default
  // namespace and the prefixes of this writer. It is handed out detached from m_pContext's place:
  // the caller makes it m_pContext or gives it back with CloseContext. (Both are defined in
  // XmlWriterContext.h.)
  inline CXmlWriterContext* OpenContext(const std::string& name, const std::string& uri);

  // Ends a context that OpenContext gave, the innermost one: what it declared is forgotten, and its
  // memory serves a later element. Answers its parent.
  inline CXmlWriterContext* CloseContext(CXmlWriterContext* context);

  // Asserts "m_pContext != 0", then throws CQzException "Attributes must be added before elements"
  // unless a start tag is open.
  inline void RequireOpenStartTag() const;

  // Whether the XML namespace name begins the uri (meant: a longer uri counts as well), which is
  // never declared.
  static bool IsXmlNamespace(const std::string& uri);

  const std::string& GetRootDefaultNamespace() const { return m_strDefaultNamespace; }
  const NamespaceMap& GetRootNamespaceMap() const { return *m_pNamespaces; }

  // Whether values come from a document just now: a carriage return is then no caller's mistake.
  bool AreDocumentValues() const { return m_bDocumentValues; }

 private:
  // What a writer begins with, which some keep for the next one; XmlWriter.cpp.
  struct CStart;
  struct CGiveStart {
    void operator()(CStart* start) const noexcept;
  };
  void Begin();

  CXmlWriterContext* OpenRootOrNew(const std::string& name, const std::string& uri);
  [[noreturn]] static void ThrowAttributeAfterContent();

  std::string m_strDefaultNamespace;  // for the root; empty for none

 protected:
  CXmlWriterContext* m_pContext =
      nullptr;  // the innermost open element, which owns its parents; null for none

 private:
  std::unique_ptr<CStart, CGiveStart> m_pStart;
  NamespaceMap* m_pNamespaces = nullptr;  // for the root; of the start
  CXmlWriterContext* m_pIdle = nullptr;   // ended contexts, chained by their parents, for reuse
  bool m_bDocumentValues = false;
  CXmlTextWriter* m_pPlainTextWriter = nullptr;  // this, or null
  detail::CShortWays* m_pShortWays = nullptr;    // of this, or null
  Scratch m_scratch;
};

// While one lives, the values handed to the writer are those that a document brought, not a caller:
// a carriage return among them is dropped in silence, as it is everywhere, instead of asserting
// "false". Open content writes its attributes and texts under one.
class CXmlWriter::CDocumentValues {
 public:
  explicit CDocumentValues(CXmlWriter* writer)
      : m_pWriter(writer), m_bBefore(writer->m_bDocumentValues) {
    writer->m_bDocumentValues = true;
  }
  ~CDocumentValues() { m_pWriter->m_bDocumentValues = m_bBefore; }
  CDocumentValues(const CDocumentValues&) = delete;
  CDocumentValues& operator=(const CDocumentValues&) = delete;

 private:
  CXmlWriter* m_pWriter;  // not owned
  bool m_bBefore;
};

}  // namespace QzXmlLib16
