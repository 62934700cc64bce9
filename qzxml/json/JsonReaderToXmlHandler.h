#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "qzxml/json/JsonContext.h"
#include "qzxml/json/JsonReaderHandler.h"
#include "qzxml/platform/Export.h"
#include "qzxml/serialization/SerializationContext.h"

namespace QzXmlLib16 {

class CBinaryData;
class CXmlWriter;

// Turns the events of a JSON text into elements, attributes and texts of an XML writer. It knows no
// schema: each member becomes an element of its name, prefix and all, each value a text.
//
//   {"r": {"@id": 7, "#text": "v"}}       <r id="7">v</r>
//   {"r": {"a": {"b": 1}, "c": null}}     <r><a><b>1</b></a><c/></r>
//   {"r": {"a": [{"b": 1}, {"b": 2}]}}    <r><a><b>1</b></a><a><b>2</b></a></r>
//
// With JsonRoundTrip_None "@id" and "#text" are names of elements like others.
//
// An element ends with its value, an object ends the innermost element, and that is all that is
// known of elements. What follows from it is behaviour that callers have met:
// - a member behind "#text" lands in the element around the object;
// - an object whose last member is an attribute leaves its element open, an empty array likewise;
// - of an array of plain values the first gets an element, the second becomes a text of the element
//   around it and ends that.
//
// Serves one document, on one thread.
class QZXML_API CJsonReaderToXmlHandler : public IJsonReaderHandler {
 public:
  // Neither pointer is owned; both must outlive the handler. Of a CXmlTextWriter the declaration is
  // written too.
  CJsonReaderToXmlHandler(CXmlWriter* writer, JsonRoundTrip roundTrip,
                          IErrorPathProvider* errorPathProvider);
  ~CJsonReaderToXmlHandler() override;

  void StartDocument() override;
  void EndDocument() override;

  // Throws CQzValidationException "JSON item has an empty Name." with the path, and
  // CQzInvalidStateException "Failed to convert name '%s' to Element name in XML." where the writer
  // refuses the name, which asserts "false" as well.
  void Name(const std::string& name) override;

  // Throw CQzInvalidStateException "Failed to convert value '%s' to Attribute string value in XML."
  // or "Failed to convert value '%s' to Element string value in XML." while no element is open, and
  // where the writer refuses the value, which asserts "false" as well. A carriage return is
  // dropped.
  void String(const std::string& value) override;
  void Number(const std::string& value) override;
  void Bool(bool value) override;

  // Ends an element that has no text; an attribute is not written.
  void Null() override;

  void StartObject() override;
  void EndObject() override;

  // Throws CQzValidationException "JSON Array has no Name." with the path.
  void StartArray() override;

  // Asserts "m_arrayStack.size() > 0".
  void EndArray() override;

 private:
  void StartElementFor(const std::string& name);
  void WriteCurrentValue(const std::string& value);
  void WriteToWriter(const std::string& value);
  void EndItem();
  [[noreturn]] void ThrowWithPath(const char* text) const;
  [[noreturn]] void ThrowValue(const std::string& value) const;

  CXmlWriter* m_pWriter;                     // not owned
  JsonRoundTrip m_roundTrip;                 // whether "#text" and "@" mean something
  IErrorPathProvider* m_pErrorPathProvider;  // not owned
  std::size_t m_openElements = 0;            // that this handler opened and has not closed
  std::vector<std::string> m_arrayStack;     // the names of the open arrays
  std::string m_strCurrentName;              // of the item whose value is awaited; empty for none
  bool m_bInAttribute = false;               // that item is an attribute
  bool m_bTextSeen = false;  // a "#text" member has closed the element of its object
};

// A JSON text as XML text in UTF-8, by the options of JSON in the context. The text is in the local
// encoding.
// Throws what CJsonTextReader and CJsonReaderToXmlHandler throw; CQzException "An Element has not
// been closed." where the text left one open; CQzException "The document grows past %d times its
// size" for CSerializationContext::GetMaxAmplification, above 8 MiB.
QZXML_API CBinaryData
JsonToXml(const std::string& jsonText,
          const CSerializationContext& context = CSerializationContext::GetDefaultContext());

}  // namespace QzXmlLib16
