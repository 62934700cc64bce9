#pragma once

#include <algorithm>
#include <string>

#include "qzxml/runtime/TextStream.h"
#include "qzxml/xml/XmlAttribute.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"
#include "qzxml/xml/XmlTextWriter.h"

namespace qztest {

// Calls what is given for an element and for each one below it, in document order.
template <typename Visit>
void ForEachElement(const QzXmlLib16::CXmlElement* element, const Visit& visit) {
  visit(*element);
  for (const QzXmlLib16::CXmlElement* child = element->GetFirstElement(); child != nullptr;
       child = child->GetNextSiblingElement()) {
    ForEachElement(child, visit);
  }
}

// A text writer drops carriage returns, and asserts that no caller hands it one in an attribute.
inline std::string WithoutReturns(std::string text) {
  text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
  return text;
}

inline void WriteWithoutMixedText(QzXmlLib16::CXmlWriter& writer,
                                  const QzXmlLib16::CXmlElement* element) {
  using namespace QzXmlLib16;
  writer.WriteStartElement(element->GetLocalName(), element->GetNamespaceURI());
  for (const CXmlAttribute* attribute : element->GetAttributes()) {
    writer.WriteAttribute(attribute->GetLocalName(), attribute->GetNamespaceURI(),
                          WithoutReturns(attribute->GetValue()), ItemType_string);
  }
  const CXmlElement* child = element->GetFirstElement();
  if (child == nullptr) writer.WriteText(element->GetText(), ItemType_string, false);
  for (; child != nullptr; child = child->GetNextSiblingElement()) {
    WriteWithoutMixedText(writer, child);
  }
  writer.WriteEndElement();
}

// The document as text without what stands between its elements, which open content keeps as text.
inline std::string WithoutMixedText(const QzXmlLib16::CXmlDocument& document) {
  QzXmlLib16::CTextStream stream;
  QzXmlLib16::CXmlTextWriter writer(&stream);
  writer.StartDocument();
  writer.SetFormatted(false);
  WriteWithoutMixedText(writer, document.GetDocumentElement());
  writer.EndDocument();
  return stream.TakeText();
}

}  // namespace qztest
