#pragma once

#include <string>

namespace QzXmlLib16 {

class CXmlDocument;

namespace detail {

// A name of a document, stored once and shared by all its elements and attributes of that name.
struct XmlName {
  const CXmlDocument* document;  // not owned; the name lives as long as the document's content
  std::string localName;         // without prefix
  std::string uri;               // empty for no namespace
  bool isNamespaceAttribute;     // as CXmlAttribute::IsNamespaceAttribute answers
  bool isNilAttribute;           // as CXmlAttribute::IsNilAttribute answers
};

}  // namespace detail
}  // namespace QzXmlLib16
