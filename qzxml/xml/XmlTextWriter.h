#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "qzxml/platform/Export.h"
#include "qzxml/runtime/XmlTypes.h"
#include "qzxml/xml/XmlWriter.h"

namespace QzXmlLib16 {

class CTextStream;
struct QzVariant;

namespace detail {
class XmlTextRun;
}  // namespace detail

// Writes one document as XML text into a stream that it does not own and that must outlive it. All
// escaping, indenting and declaring of namespaces is decided here. The stream is flushed when a
// call ends with 4096 bytes or more in it. A failure of the stream goes through as it is.
//
//   CTextStream stream;
//   CXmlTextWriter writer(&stream);
//   writer.StartDocument();
//   writer.WriteStartElement("order", "");
//   writer.WriteAttribute("id", "", "7", ItemType_string);
//   writer.WriteEndElement();
//   writer.EndDocument();                      // stream: <order id="7"/> and a line end
//
// Source: Extensible Markup Language (XML) 1.0; Namespaces in XML 1.0.
class QZXML_API CXmlTextWriter : public CXmlWriter {
 public:
  explicit CXmlTextWriter(CTextStream* stream);
  ~CXmlTextWriter() override;

  // ---- Options, before the first element ----

  // Indents and line ends between elements; true by default. The setter asserts "m_pContext == 0".
  bool GetFormatted() const { return m_bFormatted; }
  void SetFormatted(bool formatted);

  // The line end; EOLType_LF by default. Throws CQzException "Invalid EOL type." for any other
  // value than the two of EOLType, and keeps the old one.
  EOLType GetEOLType() const { return m_eolType; }
  void SetEOLType(EOLType type);

  // What is written once for each level; a tab by default. Takes any text, null as the empty one.
  const std::string& GetIndentChars() const { return m_strIndentChars; }
  void SetIndentChars(const char* chars);
  void SetIndentChars(const std::string& chars);

  // Whether WriteText writes a text that is the schema's default; false by default.
  bool GetWriteDefaultValues() const { return m_bWriteDefaultValues; }
  void SetWriteDefaultValues(bool write) { m_bWriteDefaultValues = write; }

  // ---- The document ----

  void StartDocument() override;  // starts the stream
  void EndDocument() override;    // ends the stream, then looks for elements left open

  // ---- In front of the root; each ends its line, formatted or not ----

  // The XML declaration, with the encoding for XmlEncoding_UTF8 and XmlEncoding_UTF16. Asserts
  // "m_pContext == 0" behind it.
  void WriteXmlDeclaration();

  // The text as it stands, for a document type declaration. Throws CQzException "Headed directives
  // must appear before an Element has been added." while an element is open.
  void WriteDirective(const std::string& text);

  // The text is escaped as element text. Does not close an open start tag, so it belongs before the
  // root.
  void WriteComment(const std::string& text) override;

  // The text as it stands and two line ends.
  void WriteProcessingInstruction(const std::string& text) override;

  // ---- Elements ----

  // A blank, a line end, the text as it stands, a line end: it lands inside the start tag, so it
  // has to be attributes.
  void WriteInlineSchema(const std::string& text) override;

  // Writes the start tag but for its end, and the declarations: the root's are those of the writer,
  // in ascending order of the URI; an unknown namespace gets a generated alias, declared in place.
  // A URI is not escaped in a declaration. Where the stream fails, the element counts as not begun.
  void WriteStartElement(const std::string& name, const std::string& uri) override;

  // Writes nothing for an empty text, nor for a default one that is not to be written, so that the
  // element can still end as an empty one. A text that begins with "<![CDATA[" is written as it
  // stands; any other is escaped, up to its first zero byte. A carriage return is dropped and
  // asserts "false", but see CDocumentValues.
  void WriteText(const std::string& text, ItemType type, bool isDefault) override;

  // Where the stream fails, the element stays open.
  void WriteEndElement() override;

  // A prefixed name even for the default namespace, which does not reach attributes; an unknown
  // namespace is declared in place. The value is escaped as WriteText escapes, and a line feed and
  // a quote as well. Throws CQzException "Attributes must be added before elements" behind content.
  void WriteAttribute(const std::string& name, const std::string& uri, const std::string& value,
                      ItemType type) override;

  // Throws as WriteAttribute.
  void WriteXsiType(const std::string& typeUri, const std::string& typeName,
                    ItemType type) override;
  void WriteXsiNil() override;

  // ---- Short ways ----
  // Each does in one go what the calls of CXmlWriter do, or answers false and has changed nothing:
  // in any but the ordinary case. For GetPlainTextWriter.

  // WriteStartElement, WriteText and WriteEndElement of an element with nothing but a text.
  bool PutTextElement(const detail::ElementTags& name, const std::string& uri,
                      std::string_view text, bool isDefault);
  // WriteAttribute of an attribute in no namespace.
  bool PutPlainAttribute(const detail::AttributeTag& name, std::string_view value);
  // The same for the text of a value, which is not nil.
  bool PutValueElement(const detail::ElementTags& name, const std::string& uri,
                       const QzVariant& value, const std::string& format);
  bool PutValueAttribute(const detail::AttributeTag& name, const QzVariant& value,
                         const std::string& format);

  // ---- For stored markup ----

  // Counts a child of the innermost element and ends its start tag.
  void CloseOpenStartTag();

  // The text as it stands and, when formatted, a line end.
  void WriteRawLine(const std::string& text);

 private:
  friend class detail::XmlTextRun;

  class NewElement;

  // The prefix of a name with an id in the namespaces in force; the place is by the id.
  struct KnownPrefix {
    std::uint64_t id = 0;
    std::uint64_t state = 0;
    const std::string* prefix = nullptr;
  };

  char* BeginPiece(std::size_t size);
  void EndPiece(const char* begin, const char* end);
  template <std::size_t size>
  void PutLiteral(const char (&literal)[size]);
  template <bool inAttribute>
  void PutEscaped(const std::string& value);
  void PutEscape(char c, bool inAttribute);
  std::string_view GetTextEol() const;
  void FlushWhenDue();
  char* ReserveInPlace(std::size_t size);
  std::size_t GetIndentSize(std::uint32_t depth) const;
  char* PutIndent(char* out, std::size_t size) const;
  char* PutTagEol(char* out) const;
  void PrepareFormat();
  void PutEndTag();
  void PutDeclaration(const std::string* alias, const std::string& uri);
  void PutRootDeclarations();
  template <bool inAttribute>
  char* PutShortText(char* out, const char* text, std::size_t size) const;
  static char* PutTag(char* out, const detail::SteppedText& tag, std::size_t mark,
                      const std::string* prefix);
  template <typename PutContent>
  bool PutElement(const detail::ElementTags& name, const std::string& uri, std::size_t room,
                  PutContent put);
  template <typename PutContent>
  bool PutAttribute(const detail::AttributeTag& name, std::size_t room, PutContent put);
  bool FindElementPrefix(const detail::ElementTags& name, const std::string& uri,
                         const std::string*& prefix);
  bool SearchElementPrefix(const detail::ElementTags& name, const std::string& uri,
                           const std::string*& prefix);
  const std::string* GetAttributeAlias(const std::string& uri, const char* behind);

  bool m_bWriteDefaultValues;
  std::string m_strIndentChars;
  std::string m_strEol;

 protected:
  EOLType m_eolType;  // checked once more where a text is written

 private:
  bool m_bFormatted;
  char m_tagEol[2];           // m_strEol
  bool m_bStreamFlushes;      // false for a plain CTextStream
  CTextStream* m_pStream;     // not owned
  std::size_t m_tagEolSize;   // 0 when not formatted
  std::size_t m_indentUnit;   // size of the indent characters; 0 when not formatted
  std::size_t m_indentsSize;  // of m_indents
  const char* m_pIndents;     // the indent characters many times over; not less than a short indent
  char m_indents[128];        // where they stand unless they are too long
  std::array<KnownPrefix, 64> m_knownPrefixes;
  std::string m_strPiece;  // where a tag is put together that does not fit the stream's block
  std::string m_strQName;  // the value of a type attribute
};

}  // namespace QzXmlLib16
