#pragma once

#include <cstdint>
#include <memory>

#include "qzxml/fastinfoset/FIVocabulary.h"
#include "qzxml/platform/Export.h"
#include "qzxml/runtime/MemoryLeakHelp.h"

namespace QzXmlLib16 {

class CFastInfosetContext;
class CXmlDocument;

// Reads a Fast Infoset document and builds the tree of a CXmlDocument from it. CXmlDocument makes
// one for bytes that are Fast Infoset; to read a document, load it.
//
//   CXmlDocument document;
//   document.Load("order.finf");   // XML or Fast Infoset, plain or compressed: the bytes decide
//
// Elements, attributes, declarations of namespaces and text reach the tree. All else that the
// format has is stepped over: comments, processing instructions, document type declarations,
// references to entities, and whatever the head of the document brings. So a document's own initial
// vocabulary is not used; what a document starts from is the vocabulary of the context.
// Meant: where the head lists more than one item, the reader looks for a length before each of
// them, not before the first alone; documents with such heads fail or are misread, and those who
// exchange documents know it.
//
// One reader for one document, on one thread.
// Source: ITU-T Rec. X.891 | ISO/IEC 24824-1.
class QZXML_API CFastInfosetReader : public CInstanceMonitor {
 public:
  // Neither is owned, both must outlive the reader. The vocabulary is a copy of the context's when
  // that says so (CFastInfosetContext::GetUseGeneratedVocabulary), and a new one otherwise.
  CFastInfosetReader(CFastInfosetContext* context, CXmlDocument* document);
  CFastInfosetReader(const CFastInfosetReader&) = delete;
  CFastInfosetReader& operator=(const CFastInfosetReader&) = delete;
  ~CFastInfosetReader() override;

  // Whether bytes begin as a Fast Infoset document does, with at least one octet behind that: with
  // E0 00 00 01, or with it behind one of the nine declarations that name the encoding "finf".
  static bool IsFastInfoset(const unsigned char* data, std::uint32_t length);

  // Reads the input of the document. False, with nothing changed, when it is not Fast Infoset.
  // Throws CQzException "Failed to parse FastInfoset. ..." for octets that break the format, the
  // failures of the document's bounds, those of CFastInfosetBinaryData::GetAsString, and what the
  // document's element callback throws. The tree then holds what was built so far.
  bool Parse();

  // Frees the vocabulary. Done before an exception leaves Parse; the next Parse begins anew.
  void Cleanup();

  // Prints the tables of names to standard output: "Elements", and for each entry a line with the
  // index of its namespace and one with that of its local name; "Attributes", and the same.
  // Nothing behind Cleanup.
  void Dump() const;

 private:
  class CRun;

  const CFastInfosetContext* const m_pContext;
  CXmlDocument* const m_pDocument;
  std::unique_ptr<CFIVocabulary> m_pVocabulary;  // null behind Cleanup
};

}  // namespace QzXmlLib16
