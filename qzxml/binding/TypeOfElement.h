#pragma once

#include <string>
#include <string_view>

#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"
#include "qzxml/xml/XmlNamespaces.h"

namespace QzXmlLib16 {
namespace detail {

// What the xsi:type of an element names, with the white space around it taken away.
class CTypeOfElement {
 public:
  explicit CTypeOfElement(const CXmlElement& element)
      : CTypeOfElement(element, Trim(element.GetAttribute("type", kXmlSchemaInstanceNamespace))) {}

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
  CTypeOfElement(const CXmlElement& element, std::string_view type)
      : name(type.substr(type.find(':') + 1)),
        namespaceUri(NamespaceOf(element, type)),
        m_isPlain(!type.empty() && type.find(':') == type.npos),
        m_document(*element.GetDocument()) {}

  static std::string_view Trim(std::string_view text) {
    constexpr char kWhitespace[] = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kWhitespace);
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(kWhitespace) - first + 1);
  }

  // Meant: a prefix that is not declared stands for the namespace of the element, as it does in
  // CClassfactoryBase.
  static std::string NamespaceOf(const CXmlElement& element, std::string_view type) {
    const std::size_t colon = type.find(':');
    if (colon == type.npos) return element.GetNamespaceURI();
    const std::string prefix(type.substr(0, colon));
    const std::string& uri = element.GetDocument()->LookupNamespaceFromAlias(prefix.c_str());
    return uri.empty() ? element.GetNamespaceURI() : uri;
  }

  bool m_isPlain;  // without a prefix
  const CXmlDocument& m_document;
};

}  // namespace detail
}  // namespace QzXmlLib16
