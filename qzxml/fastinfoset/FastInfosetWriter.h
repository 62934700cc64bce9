#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "qzxml/fastinfoset/FIVocabulary.h"
#include "qzxml/fastinfoset/FastInfosetBinaryData.h"
#include "qzxml/platform/Export.h"
#include "qzxml/runtime/XmlTypes.h"
#include "qzxml/xml/XmlWriter.h"

namespace QzXmlLib16 {

class CBinaryStream;
class CFastInfosetContext;

// Writes one document as Fast Infoset into a stream that it does not own, nor the options; both
// must outlive it. The stream has all octets behind WriteDocumentEnd, and before that as many as
// fill 4096.
//
//   CBinaryStream stream;
//   CFastInfosetWriter writer(&context.GetFIContext(), &stream);
//   writer.StartDocument();
//   writer.WriteHeader(FInfoDecl_None);
//   writer.WriteStartElement("order", "");
//   writer.WriteAttribute("id", "", "7", ItemType_string);
//   writer.WriteEndElement();
//   writer.WriteDocumentEnd();
//   writer.EndDocument();
//
//   E0 00 00 01 00                   version 1, no component but the root
//   78 F0                            an element with attributes; no namespace attributes
//   3C 04 6F 72 64 65 72             its name, in full: order
//   78 01 69 64                      an attribute, its name in full: id
//   40 37 F0                         its value, which goes into the table; end of the attributes
//   FF                               end of the element and of the document
//
// There are elements, attributes, the namespaces of the root and text; comments, inline schemas and
// processing instructions never reach the document.
//
// What is written is what readers of these documents know, also where X.891 has it otherwise:
// - Meant: only the root has namespace attributes, and it has the mark of them even when there are
//   none. A prefix made for a namespace that the root does not declare stands in names alone.
// - Meant: the end of an element takes half an octet, which waits for the next end; a text behind
//   it goes first, and so lands inside the element that has ended.
//
// Source: ITU-T Rec. X.891 | ISO/IEC 24824-1.
class QZXML_API CFastInfosetWriter : public CXmlWriter {
 public:
  // Named in documents that start from a generated vocabulary without a URI of its own.
  static constexpr char kDefaultVocabularyURI[] = "urn:qzxml:fast-infoset:vocabulary";

  // Starts from a copy of the vocabulary of the options with GetUseGeneratedVocabulary, else from a
  // new one.
  CFastInfosetWriter(CFastInfosetContext* context, CBinaryStream* stream);
  ~CFastInfosetWriter() override;

  // ---- The document ----

  // Before the first element: the declaration, the identification, and the URI of the vocabulary
  // where one is used. Asserts "declaration >= 0 && declaration <= 9"; any other number is none.
  void WriteHeader(FInfoDecl declaration);
  // Behind the root.
  void WriteDocumentEnd();

  void EndDocument() override;

  void SetDefaultNamespace(const std::string& uri) override;
  void AddNamespaceMapping(const std::string& alias, const std::string& uri) override;

  void WriteComment(const std::string& text) override;  // writes nothing
  // Writes nothing either, but an element that has just begun takes no attributes behind it.
  void WriteProcessingInstruction(const std::string& text) override;

  // ---- Elements ----

  void WriteInlineSchema(const std::string& text) override;  // writes nothing

  // An unknown namespace gets a generated alias.
  void WriteStartElement(const std::string& name, const std::string& uri) override;

  // Nothing for an empty text. Default values are written as any other. The text is written as the
  // options say for its kind, up to its first zero byte. Throws CQzException "Failed to write
  // FastInfoset. ..." for an encoding that does not exist and for a character that is not in the
  // alphabet, and what CFastInfosetBinaryData::SetAsEncodedString throws.
  void WriteText(const std::string& text, ItemType type, bool isDefault) override;

  void WriteEndElement() override;

  // An unknown namespace gets a generated alias, and so does the default one, which does not reach
  // attributes. Throws CQzException "Attributes must be added before elements" behind content and
  // behind a processing instruction; and as WriteText.
  void WriteAttribute(const std::string& name, const std::string& uri, const std::string& value,
                      ItemType type) override;

  // As WriteAttribute. Meant: for a type in a namespace other than the default one, the attribute
  // takes the alias of that namespace for its prefix; and where the alias is made here, the
  // attribute has the type's own name.
  void WriteXsiType(const std::string& typeUri, const std::string& typeName,
                    ItemType type) override;
  void WriteXsiNil() override;

 private:
  // The octets of a value, and what they are.
  struct CValue {
    std::string_view octets;
    std::uint32_t type;  // as in CFastInfosetContext::EncodedCharacterString
    std::uint32_t index;
  };

  void FlushPendingElement(bool hasAttributes);
  void CloseStartTag();
  void BeginAttribute();
  const std::string& GetAlias(CXmlWriterContext& context, const std::string& uri);

  void PutOctet(unsigned octet) { m_strPiece += static_cast<char>(octet); }
  void PutNamespaceAttributes(unsigned byCurrent);
  void PutElementName(unsigned byCurrent, const std::string& strPrefix,
                      const std::string& strNamespace, const std::string& strLocalName);
  void PutAttributeName(unsigned byCurrent, const std::string& strPrefix,
                        const std::string& strNamespace, const std::string& strLocalName);
  void PutLiteralName(unsigned mark, const std::string& strPrefix, const std::string& strNamespace,
                      const std::string& strLocalName);
  void PutIdentifier(const std::string& text, CFIVocabulary::CIndexMap& map);
  void PutName(const std::string& text);
  void PutAttributeValue(const std::string& value, ItemType type);
  void PutCharacterChunk(const std::string& strVal, ItemType type);
  CValue Encode(const std::string& text, ItemType type, const char* unknownEncoding);
  void FlushWhenDue();
  void Flush();

  CBinaryStream* m_pStream;              // not owned
  CFastInfosetContext* m_pOptions;       // not owned
  CXmlWriterContext* m_pPendingContext;  // an element of which nothing is written yet; owned
  bool m_bHalfTerminatorPending;         // the end of an element still has to be written
  const std::string m_strNone;           // no prefix
  std::unique_ptr<CFIVocabulary> m_pVocabulary;
  std::string m_strPiece;             // what is not in the stream yet
  std::string m_strKey;               // of a name in the vocabulary
  std::string m_strName;              // of the element whose start is written
  std::string m_strOctets;            // of a value in a restricted alphabet
  CFastInfosetBinaryData m_bdOctets;  // of a value under an algorithm
};

}  // namespace QzXmlLib16
