#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "qzxml/platform/Export.h"
#include "qzxml/runtime/MemoryLeakHelp.h"
#include "qzxml/runtime/XmlTypes.h"
#include "qzxml/xml/ScopedAliases.h"

namespace QzXmlLib16 {

class CBinaryData;
class CExpatReader;
class CFastInfosetReader;
class CSerializationContext;
class CXmlElement;

namespace detail {
class CItemWatch;
class CXmlNodes;
struct XmlName;
}  // namespace detail

// How CXmlDocument::Load reads a file from now on: whole and then parsed, or, with true, in chunks
// of 131072 bytes that are parsed while the system reads the next one. False at start; for the
// whole process, to be set before work starts.
QZXML_API void AsyncFromXmlFile(bool async);

// A document as a light tree of CXmlElement and CXmlAttribute; every input format ends here.
//
//   CXmlDocument document;
//   document.Load("order.xml");
//   const CXmlElement* order = document.GetDocumentElement();
//   std::string id = order->GetAttribute("id", "");
//   for (CXmlElement* e = order->GetFirstElement(); e != nullptr; e = e->GetNextSiblingElement())
//     std::cout << e->GetLocalName() << " = " << e->GetText() << '\n';
//
// It is no general DOM: an element has one text, comments and processing instructions are not kept,
// and prefixes are kept in one map for the whole document.
//
// The document owns its tree, which goes with Cleanup, with the next load and with the document.
// A load that fails throws CQzException and leaves what was built so far; the next load clears it.
// One thread at a time.
class QZXML_API CXmlDocument : public CInstanceMonitor {
 public:
  // Called with each element as it ends, its content complete. True takes the element out of the
  // tree and frees it, so that a long document can be used up element by element without the tree
  // growing. What it answers for the document element is not regarded: that one stays.
  // An exception that it throws ends the load and passes on. It may build on in the tree; what it
  // opens there ends with it, and what is open around the element stays open.
  using ElementCallback = bool (*)(CXmlElement* element);

  // Without a context, CSerializationContext::GetDefaultContext() is taken. The context is not
  // owned and must outlive the document.
  CXmlDocument();
  explicit CXmlDocument(const CSerializationContext& context);
  explicit CXmlDocument(const CSerializationContext&& context) = delete;
  explicit CXmlDocument(ElementCallback callback);
  CXmlDocument(ElementCallback callback, const CSerializationContext& context);
  CXmlDocument(ElementCallback callback, const CSerializationContext&& context) = delete;
  CXmlDocument(const CXmlDocument&) = delete;
  CXmlDocument& operator=(const CXmlDocument&) = delete;
  ~CXmlDocument() override;

  // Frees the tree and empties the map of namespaces. Every load begins with it. Neither this nor a
  // load is allowed from the element callback.
  virtual void Cleanup();

  // The root, or null when nothing is loaded.
  CXmlElement* GetDocumentElement() const { return m_pDocElement; }

  // --- Namespaces: one map from alias to URI for the whole document. The alias "" is the default
  // namespace; of two declarations of one alias the later counts.

  // The URI of an alias, or an empty text.
  const std::string& LookupNamespaceFromAlias(const char* alias) const;
  // What the alias in the xsi:type of an element of this document stands for: as above, but where
  // an alias is declared more than once in a text, what was in force at the element.
  const std::string& LookupNamespaceOfType(const CXmlElement& element, const char* alias) const;
  // The first alias in their order whose URI is the given one, or an empty text.
  const std::string& LookupAliasFromNamespace(const char* uri) const;

  // --- Loading. Each throws CQzException; with the text of Expat and the line, "%s at line %d",
  // for what is not well-formed. Bytes and texts are read where they stand, so they must not be of
  // this document's own tree, which goes first. "The document exceeds the depth limit of %d
  // elements" and "The document grows past %d times its size" for the bounds of the context.

  // Throws "Failed to open the file [%s] Error [0x%08x]", "Failed to get the size of the file [%s]
  // Error [0x%08x]" and "Failed to read the contents of the file [%s] Error [0x%08x]" with the
  // path and the system's error number; in chunks (see AsyncFromXmlFile) "Failed to read the
  // contents of the file. Error [0x%08x]" instead of the last.
  void Load(const char* path);
  // Throws "XML Stream is empty!" for no bytes.
  void LoadXmlStream(const unsigned char* data, std::uint32_t length);
  // The bytes are UTF-8, or what their declaration says. Throws "XML String is empty!".
  void LoadXml(const char* text);
  // UTF-16. An empty text fails with Expat's own text.
  void LoadXml(const char16_t* text);
  void LoadXml(const wchar_t* text);

  // --- JSON. Each empties this document, puts nothing in it, and gives the JSON text as XML text
  // in UTF-8. Throws what JsonToXml throws, for a file what Load throws.

  // The bytes are UTF-8, with or without its byte-order mark, or a gzip or zlib stream of them; a
  // zero byte ends them. An empty file is a text without a value; for no bytes the other throws
  // "JSON Stream is empty!".
  CBinaryData LoadJsonFile(const char* path);
  CBinaryData LoadJsonStream(const unsigned char* data, std::uint32_t length);
  // The text is in the local encoding, neither compressed nor with a byte-order mark. Null is taken
  // as the empty text, here and below. Throws "JSON String is empty!" and "A JSON text of 4 GiB or
  // more is not supported.".
  CBinaryData LoadJson(const char* text);
  // Meant: the reader gets the two bytes of each unit, low byte first, as if they were text; so it
  // meets a zero byte behind each ASCII character, and fails there. Callers know it so.
  CBinaryData LoadJson(const char16_t* text);
  CBinaryData LoadJson(const wchar_t* text);

  // --- For readers, which build the tree from the root on. While a load runs the bounds of the
  // context are watched here.

  // Makes this document empty and takes the schema type of its context anew.
  void Init();
  // The root, which is open then; another one that was there goes. A null text is taken as empty,
  // here and below. From the element callback it throws CQzInvalidStateException "A document can
  // not be loaded from its element callback."
  CXmlElement* AddDocElement(const char* uri, const char* localName);
  // A new last child of the innermost open element, which is open then.
  // Throws CQzException "The document has no open element." when there is none.
  CXmlElement* AddChildElement(const char* uri, const char* localName);
  // Closes the innermost open element, and offers it to the callback. Nothing when none is open, or
  // none but those around the element that the callback has just now.
  void EndElement();
  static void AddElementAttribute(CXmlElement* element, const std::string& localName,
                                  const std::string& value, const std::string& uri);
  // Appends up to the length or to the first zero byte, whichever comes first, without the bytes
  // 13; a line feed behind one stays.
  static void AppendTextExcludingCR(CXmlElement* element, const char* text);
  static void AppendTextExcludingCR(CXmlElement* element, const char* text, std::uint32_t length);

 private:
  friend class CExpatReader;
  friend class CFastInfosetReader;
  friend class CXmlElement;
  friend class detail::CItemWatch;
  class CLoadScope;
  class COffer;

  void Parse();      // input of any form
  void ParseText();  // input of XML text
  void InitForJson();
  void CheckJsonLength(std::uint64_t length);
  CBinaryData ParseJsonText(const std::string& text) const;
  void LoadWholeFile(CLoadScope& scope, const char* path);
  void LoadFileInChunks(CLoadScope& scope, const char* path);
  CXmlElement* OpenElement(const detail::XmlName* name);
  CXmlElement* OpenWatchedElement(const detail::XmlName* name);
  CXmlElement* PutElement(const detail::XmlName* name);
  void CloseElement();
  void CloseWatchedElement(CXmlElement* element);
  void OfferElement(CXmlElement* element);
  bool Forget(const CXmlElement* element);
  void SetNamespaceMapping(std::string alias, std::string uri);

  // The tree: its memory and names, its root, and its open elements, innermost last.
  const std::unique_ptr<detail::CXmlNodes> m_pNodes;
  CXmlElement* m_pDocElement = nullptr;
  std::vector<CXmlElement*> m_pElementStack;
  std::vector<CXmlElement*> m_elderSiblings;  // of the open elements; only for the callback
  std::size_t m_heldOpen = 0;                 // outermost open elements, while the callback runs
  bool m_bInCallback = false;
  std::map<std::string, std::string, std::less<>> m_namespaces;         // alias to URI
  mutable std::map<std::string_view, const std::string*> m_aliasOfUri;  // of many, when asked for
  detail::CScopedAliases m_scopedAliases;
  // What is being read. Not owned; null while no load runs.
  const unsigned char* m_pInput = nullptr;
  std::uint32_t m_dwInputLength = 0;
  bool m_bLoading = false;
  detail::CItemWatch* m_pItemWatch = nullptr;  // not owned; null where there is a callback
  // What the callback or the other one watches: elements that open in so many, or in a tree of so
  // many octets, and those that end in fewer. At first all.
  struct {
    std::size_t openDepth = 0;
    std::size_t openOctets = 0;
    std::size_t closeDepth = static_cast<std::size_t>(-1);
  } m_watch;
  bool m_bWatched = false;  // false: none
  SchemaType m_schemaType = SchemaType_Default;
  const ElementCallback m_pElementCallback;
  const CSerializationContext* const m_pContext;  // not owned
};

}  // namespace QzXmlLib16
