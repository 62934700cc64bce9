#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "qzxml/platform/Export.h"
#include "qzxml/runtime/MemoryLeakHelp.h"

struct XML_ParserStruct;

namespace QzXmlLib16 {

class CXmlDocument;
class CXmlElement;

namespace detail {
class CXmlNodes;
}

// Drives Expat over the input of a document and builds its tree from what Expat delivers.
// CXmlDocument makes one for each parse: Init, then Parse for each piece of the input, the last
// with true. It stands for the parser alone; to read a document, load it.
// One thread at a time. Source: XML 1.0, Namespaces in XML 1.0.
class QZXML_API CExpatReader : public CInstanceMonitor {
 public:
  // Does not own the document, which must outlive it.
  explicit CExpatReader(CXmlDocument& document);
  CExpatReader(const CExpatReader&) = delete;
  CExpatReader& operator=(const CExpatReader&) = delete;
  ~CExpatReader() override;

  // Makes the parser: with namespaces, unless the document's schema type is
  // SchemaType_NoNamespaces. Once, before the first Parse.
  void Init();

  // Feeds the document's input to the parser. Throws CQzException "%s at line %d" with Expat's text
  // for what is not well-formed, the failures of the document's bounds, and what its element
  // callback throws. The tree then holds what was built so far.
  // Asserts "m_parser != 0": neither before Init nor behind the last piece or a failure.
  void Parse(bool isLast);

 private:
  struct Handlers;

  void Feed(std::string_view piece, bool isLast);
  void Fail();
  void FreeParser();

  void StartElement(const char* name, const char** attributes);
  void NoteTypeAlias(const CXmlElement& element);
  void EndElement();
  bool IsBehindSameReference();
  void CharacterData(const char* utf8, std::size_t length);
  void AddAttributes(CXmlElement* element, const char** attributes, bool isFromEntity);
  void GatherConverted(const char* utf8, std::size_t length);
  void GatherExcludingCR(std::string_view left);
  void Gather(std::string_view text);
  void MakeRoom(std::size_t length);
  void FlushText();

  CXmlDocument& m_doc;
  detail::CXmlNodes& m_nodes;  // of m_doc
  const bool m_isLocalUtf8;
  XML_ParserStruct* m_parser = nullptr;
  bool m_isStopped = false;
  std::exception_ptr m_failure;  // of a handler, on its way around Expat

  // Text of the open elements that is not in the tree yet, innermost last, and where each one's
  // begins. An element's text stands in one piece here, since that of its children is taken off
  // before more of its own arrives.
  std::string m_text;  // of that size; only its beginning is in use
  std::size_t m_textSize = 0;
  std::vector<std::size_t> m_textBegin;

  std::string m_heldBack;  // input that waits for more, see Parse
  bool m_hasDoctype = false;
  std::int64_t m_lastElementIndex = -1;  // where in the input the last element began
  std::uint64_t m_inputOctets = 0;       // that were given to Parse
  std::uint64_t m_fedOctets = 0;         // that were given to Expat
  std::uint64_t m_pending = 0;           // of these, what Expat keeps as an unfinished token

  // For conversions, where the local encoding is not UTF-8.
  char16_t m_wideScratch[256];
  char m_byteScratch[512];
};

}  // namespace QzXmlLib16
