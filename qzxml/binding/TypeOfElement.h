#pragma once

#include <string>
#include <string_view>

#include "qzxml/serialization/ClassfactoryBase.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"
#include "qzxml/xml/XmlNamespaces.h"

namespace QzXmlLib16 {
namespace detail {

// What the xsi:type of an element names.
class CTypeOfElement : private CClassfactoryBase {
 public:
  explicit CTypeOfElement(const CXmlElement& element)
      : name(GetElementType(const_cast<CXmlElement*>(&element))),
        namespaceUri(GetElementTypeNamespaceUri(const_cast<CXmlElement*>(&element))),
        m_isPlain(!name.empty() && GetXsiType(element).find(':') == std::string::npos),
        m_document(*element.GetDocument()) {}

  // Without a prefix the type may be in the namespace of the element or in the default namespace;
  // the library knows it as one of the element's.
  bool IsNamed(std::string_view itsNamespaceUri, std::string_view itsName) const {
    if (itsName != name) return false;
    return itsNamespaceUri == namespaceUri ||
           (m_isPlain && itsNamespaceUri == m_document.LookupNamespaceFromAlias(""));
  }

  const std::string name;  // empty without xsi:type
  const std::string namespaceUri;

 private:
  static const std::string& GetXsiType(const CXmlElement& element) {
    return element.GetAttribute("type", kXmlSchemaInstanceNamespace);
  }

  bool m_isPlain;  // without a prefix
  const CXmlDocument& m_document;
};

}  // namespace detail
}  // namespace QzXmlLib16
