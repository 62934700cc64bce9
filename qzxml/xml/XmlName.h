#pragma once

#include <cstddef>
#include <string>

namespace QzXmlLib16 {

class CXmlDocument;

namespace detail {

struct StoredText;

// A name of a document, stored once and shared by all its elements and attributes of that name.
struct XmlName {
  const CXmlDocument* document;  // not owned; the name lives as long as the document's content
  const std::string* uri;        // never null, empty for no namespace; shared by names
  std::string localName;         // without prefix
  std::size_t octets;            // what a node of this name counts against the growth
  bool isNamespaceAttribute;     // as CXmlAttribute::IsNamespaceAttribute answers
  bool isNilAttribute;           // as CXmlAttribute::IsNilAttribute answers
  // The text stored last for a parent element of this name, or null.
  mutable const StoredText* lastText;
  // The member of a class that was last found to have this name, or null; see CReadPlan.
  mutable const void* lastMember = nullptr;
};

}  // namespace detail
}  // namespace QzXmlLib16
