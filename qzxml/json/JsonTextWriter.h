#pragma once

#include <cstdint>
#include <string>

#include "qzxml/json/JsonContext.h"
#include "qzxml/platform/Export.h"
#include "qzxml/runtime/XmlTypes.h"
#include "qzxml/xml/XmlWriter.h"

namespace QzXmlLib16 {

class CTextStream;

// Writes one document as JSON into a stream that it does not own and that must outlive it. A
// document is one object with one member, the root element. Elements are members named after them,
// the items of a collection of objects an array, attributes members with a mark in front:
//
//   <order id="7"><note>late</note></order>        {"order": {"@id": "7","note": "late"}}
//
// How much of XML is kept beside that, JsonRoundTrip says. Processing instructions, inline schemas
// and nil marks never reach JSON. The stream is flushed when the document or an element begins or a
// comment ends with 4096 bytes or more in it.
//
// What is written is what callers of this mapping have always got, also where it is no JSON:
// - Meant: a string's quotes and backslashes stand bare, and a line feed is a line end.
// - Meant: an element with neither attributes, children nor text is its key alone.
// - Meant: the items of a collection of simple values repeat their key, and a closing bracket
//   stands behind them though none opened.
//
// Source: the texts are UTF-8 or local text as the stream takes them; RFC 8259 for the rest.
class QZXML_API CJsonTextWriter : public CXmlWriter {
 public:
  explicit CJsonTextWriter(CTextStream* stream);
  ~CJsonTextWriter() override;

  // ---- Options, before the first element ----

  // Indents and line ends; true by default. The setter asserts "m_pContext == 0".
  bool GetFormatted() const { return m_bFormatted; }
  void SetFormatted(bool formatted);

  // The line end; EOLType_LF by default. Throws CQzException "Invalid EOL type." for any other
  // value than the two of EOLType, and keeps the old one.
  EOLType GetEOLType() const { return m_eolType; }
  void SetEOLType(EOLType type);

  // How much of XML is kept; JsonRoundTrip_Full by default.
  JsonRoundTrip GetRoundtrip() const { return m_roundTrip; }
  void SetRoundtrip(JsonRoundTrip roundTrip) { m_roundTrip = roundTrip; }

  // What is written once for each level; a tab by default. Takes any text, null as the empty one.
  const std::string& GetIndentChars() const { return m_strIndentChars; }
  void SetIndentChars(const char* chars);

  // ---- The document ----

  void StartDocument() override;  // starts the stream
  void EndDocument() override;    // ends the stream, then looks for elements left open

  // The object around the root: the first call behind StartDocument and the options, the last one
  // before EndDocument. The first asserts "m_pContext == 0".
  void WriteDocumentStart();
  void WriteDocumentEnd();

  // "/* the text */" and a line end, formatted or not.
  void WriteComment(const std::string& text) override;
  void WriteProcessingInstruction(const std::string& text) override;  // writes nothing

  // ---- Elements ----

  void WriteInlineSchema(const std::string& text) override;  // writes nothing

  // The key, unless the element is a further item of an array. With JsonRoundTrip_Full the root
  // declares the namespaces of the writer as members; an unknown namespace of the root gets a
  // generated alias, one of any other element throws CQzException "Unknown Namespace: %s." (meant:
  // with the element's name). Then the element does not count as begun.
  void WriteStartElement(const std::string& name, const std::string& uri) override;

  // Numbers, booleans and decimals as they stand, any other kind in quotes. A carriage return is
  // dropped and asserts "false", but see CDocumentValues.
  void WriteText(const std::string& text, ItemType type, bool isDefault) override;
  void WriteEndElement() override;

  // Throws CQzException "Unknown Namespace: %s." with the attribute's name.
  void WriteAttribute(const std::string& name, const std::string& uri, const std::string& value,
                      ItemType type) override;

  // The attribute type of the XML Schema instance namespace with JsonRoundTrip_Full; else nothing.
  // Throws CQzException "Unknown Namespace: %s." with typeName.
  void WriteXsiType(const std::string& typeUri, const std::string& typeName,
                    ItemType type) override;
  void WriteXsiNil() override;  // writes nothing

 private:
  class CNewElement;

  void PutEol();
  void PutIndent(std::uint32_t depth);
  void PutMemberSeparator(CXmlWriterContext& context);
  void PutKey(const char* mark, const std::string* alias, const std::string& name);
  void PutValue(const std::string& value, ItemType type);
  void PutStringContent(const std::string& text);
  void PutEscape(char c);
  void PutQualifiedKey(CXmlWriterContext& context, const std::string& name, const std::string& uri);
  void PutDeclaration(CXmlWriterContext& context, const std::string* alias, const std::string& uri);
  void PutRootDeclarations(CXmlWriterContext& context);
  const std::string& GetAlias(const std::string& uri, const std::string& name) const;
  void RaiseDepths(CXmlWriterContext* context);
  void LowerDepths(CXmlWriterContext* context);
  void FlushWhenDue();

  std::string m_strIndentChars;
  std::string m_strEol;

 protected:
  EOLType m_eolType;  // checked once more where a text is written

 private:
  JsonRoundTrip m_roundTrip;
  bool m_bFormatted;
  CTextStream* m_pStream;  // not owned
  // From the moment an element's key is written, or left out, until something behind it makes the
  // element an object: a plain value may still follow.
  bool m_bNamePending;
};

}  // namespace QzXmlLib16
