#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "qzxml/fastinfoset/FIVocabulary.h"
#include "qzxml/fastinfoset/FastInfosetBinaryData.h"
#include "qzxml/platform/Export.h"
#include "qzxml/runtime/XmlTypes.h"
#include "qzxml/xml/ShortWays.h"
#include "qzxml/xml/XmlWriter.h"

namespace QzXmlLib16 {

class CBinaryStream;
class CFastInfosetContext;

namespace detail {
class FastInfosetRunHost;
struct CFIAttributeForm;
struct CFIChunkForm;
struct CFIKnownOctets;
struct CFIWritingTables;

// Puts the tables of a writer aside for the next one.
struct CFIGiveTables {
  void operator()(CFIWritingTables* tables) const noexcept;
};
}  // namespace detail

// Writes one document as Fast Infoset into a stream that it does not own, nor the options; both
// must outlive it. The stream has all octets behind WriteDocumentEnd, and none before.
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
class QZXML_API CFastInfosetWriter : public CXmlWriter, private detail::CShortWays {
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

  class CTableEntry;  // FastInfosetWriterEntry.h

  // ---- Short ways, in FastInfosetWriterShort.cpp ----

  bool PutTextElement(const detail::ElementTags& name, const std::string& uri,
                      const std::string& text, ItemType type) override;
  bool PutValueElement(const detail::ElementTags& name, const std::string& uri,
                       const QzVariant& value, const std::string& format) override;
  bool PutValueAttribute(const detail::AttributeTag& name, const QzVariant& value,
                         const std::string& format) override;

  template <typename PutContent>
  bool PutElement(const detail::ElementTags& name, const std::string& uri, std::size_t room,
                  PutContent put);
  template <typename PutContent>
  bool PutAttribute(const detail::AttributeTag& name, std::size_t room, PutContent put);
  template <typename PutContent>
  bool PutOtherElement(const detail::ElementTags& name, const std::string& uri, std::size_t room,
                       PutContent& put);
  template <typename PutContent>
  bool PutOtherAttribute(const detail::AttributeTag& name, std::size_t room, PutContent& put);
  template <typename PutContent>
  std::string_view PutAside(std::size_t nameRoom, std::size_t room, PutContent& put);
  char* TakeAside(std::string_view content);
  char* BeginElement(std::size_t room);
  void EndElement(const char* end);
  void KeepElement(const detail::ElementTags& name, const detail::CFIKnownOctets& octets);
  template <typename Form>
  char* PutShortText(char* out, std::string_view text, ItemType type);
  template <typename Form, typename Number>
  char* PutNumber(char* out, const Number& number);
  template <typename Form>
  CFIVocabulary::CIndexMap& GetTable() const;

  // ---- The long way ----

  void FlushPendingElement(bool hasAttributes);
  void CloseStartTag();
  void BeginAttribute();
  const std::string& GetAlias(CXmlWriterContext& context, const std::string& uri);

  void PutNamespaceAttributes(unsigned byCurrent);
  void PutPendingName(unsigned byCurrent, CXmlWriterContext& context);
  std::uint32_t PutElementName(unsigned byCurrent, const std::string& strPrefix,
                               const std::string& strNamespace, const std::string& strLocalName);
  std::uint32_t PutAttributeName(unsigned byCurrent, const std::string& strPrefix,
                                 const std::string& strNamespace, const std::string& strLocalName);
  void PutLiteralName(unsigned mark, const std::string& strPrefix, const std::string& strNamespace,
                      const std::string& strLocalName);
  void PutIdentifier(const std::string& text, CFIVocabulary::CIndexMap& map);
  void PutName(const std::string& text);
  void PutUtf8(std::string_view octets);
  template <typename Form>
  bool PutValue(const std::string& value, ItemType type, const char* unknownEncoding);
  void PutAttributeValue(const std::string& value, ItemType type);
  void PutCharacterChunk(const std::string& strVal, ItemType type);
  CValue Encode(const std::string& text, ItemType type, const char* unknownEncoding);

  // ---- What is not in the stream yet ----

  // With less than that left, a piece is full enough for another one to begin.
  static constexpr std::size_t kLeastRoom = 4096;

  // A place with room for so many octets; EndPiece counts those in front of another place.
  char* BeginPiece(std::size_t size) {
    if (size > m_pieceRoom - m_pieceSize) GrowPiece(size);
    return m_pPiece + m_pieceSize;
  }
  void EndPiece(const char* end) { m_pieceSize = static_cast<std::size_t>(end - m_pPiece); }
  void PutOctet(unsigned octet) {
    *BeginPiece(1) = static_cast<char>(octet);
    ++m_pieceSize;
  }
  void PutOctets(std::string_view octets);
  void GrowPiece(std::size_t size);
  void NextPieceWhenDue() {
    if (m_pieceRoom - m_pieceSize < kLeastRoom) NextPiece();
  }
  void NextPiece();
  void PutPieces();

  CBinaryStream* m_pStream;              // not owned
  CFastInfosetContext* m_pOptions;       // not owned
  CXmlWriterContext* m_pPendingContext;  // an element of which nothing is written yet; owned
  bool m_bHalfTerminatorPending;         // the end of an element still has to be written
  bool m_bHasRoot;
  const std::string m_strNone;  // no prefix
  std::unique_ptr<detail::CFIWritingTables, detail::CFIGiveTables> m_pTables;
  std::unique_ptr<detail::FastInfosetRunHost> m_pRunHost;  // null until the document has begun
  char* m_pPiece;                                          // the last one of the tables
  std::size_t m_pieceRoom;
  std::size_t m_pieceSize;
  std::string m_strName;              // of the element whose start is written
  std::string m_strOctets;            // of a value in a restricted alphabet
  CFastInfosetBinaryData m_bdOctets;  // of a value under an algorithm
};

}  // namespace QzXmlLib16
