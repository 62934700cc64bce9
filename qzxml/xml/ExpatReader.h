#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <vector>

#include "qzxml/platform/Export.h"
#include "qzxml/runtime/MemoryLeakHelp.h"

struct XML_ParserStruct;

namespace QzXmlLib16 {

class CXmlDocument;

// Drives Expat over the input of a document and builds its tree from what Expat delivers.
// For one parse: make it, Init, Parse once for each piece of the input, the last with true.
// One thread at a time. Source: XML 1.0, Namespaces in XML 1.0.
class QZXML_API CExpatReader : public CInstanceMonitor {
 public:
  // Does not own the document, which must outlive it.
  explicit CExpatReader(CXmlDocument& document);
  CExpatReader(const CExpatReader&) = delete;
  CExpatReader& operator=(const CExpatReader&) = delete;
  ~CExpatReader() override;

  // Makes the parser: with namespaces, unless the schema type of the document says otherwise.
  // Throws std::bad_alloc when there is no memory for it.
  void Init();

  // Feeds the document's input to the parser. Throws CQzException with Expat's text and the line,
  // "%s at line %d", and what a handler met; the tree then holds what was built so far, and no
  // further call is allowed.
  void Parse(bool isLast);

 private:
  struct Handlers;

  XML_ParserStruct* m_parser = nullptr;
  CXmlDocument& m_doc;
  std::exception_ptr m_failure;          // of a handler, on its way around Expat
  std::string m_text;                    // text of the open elements, innermost last
  std::vector<std::size_t> m_textBegin;  // where each one's text begins in m_text
  std::uint64_t m_pending = 0;           // bytes that Expat keeps for the next piece
  std::uint64_t m_inputOctets = 0;       // bytes fed so far
};

}  // namespace QzXmlLib16
