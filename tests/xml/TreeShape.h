#pragma once

#include <string>
#include <vector>

#include "qzxml/xml/XmlAttribute.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"

// What the tests of the document tree compare trees by.
namespace qztest {

inline std::string Name(const std::string& uri, const std::string& localName) {
  return uri.empty() ? localName : "{" + uri + "}" + localName;
}

// An element with all that is below it, exactly: its name, its attributes and its text, and each
// child in brackets; "{urn:o}a x='1' {urn:o}y='2' \"text\"[b][c]".
inline std::string Shape(const QzXmlLib16::CXmlElement* element) {
  if (element == nullptr) return "(none)";
  std::string shape = Name(element->GetNamespaceURI(), element->GetLocalName());
  for (const QzXmlLib16::CXmlAttribute* attribute : element->GetAttributes()) {
    shape += ' ' + Name(attribute->GetNamespaceURI(), attribute->GetLocalName()) + "='" +
             attribute->GetValue() + '\'';
  }
  if (!element->GetText().empty()) shape += " \"" + element->GetText() + '"';
  for (const QzXmlLib16::CXmlElement* child = element->GetFirstElement(); child != nullptr;
       child = child->GetNextSiblingElement()) {
    shape += '[' + Shape(child) + ']';
  }
  return shape;
}

inline std::string Shape(const QzXmlLib16::CXmlDocument& document) {
  return Shape(document.GetDocumentElement());
}

// The element and all below it, in document order.
inline std::vector<const QzXmlLib16::CXmlElement*> AllElements(
    const QzXmlLib16::CXmlElement* element) {
  std::vector<const QzXmlLib16::CXmlElement*> all;
  if (element == nullptr) return all;
  all.push_back(element);
  for (const QzXmlLib16::CXmlElement* child = element->GetFirstElement(); child != nullptr;
       child = child->GetNextSiblingElement()) {
    for (const QzXmlLib16::CXmlElement* below : AllElements(child)) all.push_back(below);
  }
  return all;
}

}  // namespace qztest
