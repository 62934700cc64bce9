#pragma once

#include <string>
#include <string_view>

#include "qzxml/binding/XsdValue.h"
#include "qzxml/xml/XmlAttribute.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"
#include "qzxml/xml/XmlNamespaces.h"

namespace QzXmlLib16 {
namespace detail {

// What the xsi:type of an element names, with the white space around it taken away. The element has
// to outlive it.
// Source: XML Schema 1.0 part 1, second edition, sections 2.6.1 and 3.15.3; Namespaces in XML 1.0,
// third edition, section 6.
class CTypeOfElement {
 public:
  explicit CTypeOfElement(const CXmlElement& element) : m_element(element) {
    for (const CXmlAttribute* const attribute : element.GetAttributeRange()) {
      if (!attribute->IsNamespaceAttribute() || attribute->GetLocalName() != "type") continue;
      if (attribute->GetNamespaceURI() != kXmlSchemaInstanceNamespace) continue;
      Read(Trim(attribute->GetValueView()));
      return;
    }
  }

  // Whether there is an xsi:type at all.
  bool IsGiven() const { return m_isGiven; }

  // Without a prefix; all of a text that is no qualified name, which names nothing.
  const std::string& GetName() const { return m_name; }

  // Calls find with the namespaces that the type may be in, one after the other, until it answers
  // true; answers whether it did. Without a prefix that is the default namespace, and behind it the
  // one of the element.
  template <typename Find>
  bool FindNamespace(const Find& find) const {
    if (!m_isName) return false;
    const std::string& uri =
        m_element.GetDocument()->LookupNamespaceOfType(m_element, m_prefix.c_str());
    // Meant: a prefix that is not declared stands for the namespace of the element, as it does in
    // CClassfactoryBase.
    if (!m_prefix.empty()) return find(uri.empty() ? m_element.GetNamespaceURI() : uri);
    return find(uri) || (uri != m_element.GetNamespaceURI() && find(m_element.GetNamespaceURI()));
  }

  bool MayBe(std::string_view namespaceUri, std::string_view name) const {
    return name == m_name &&
           FindNamespace([&](const std::string& uri) { return uri == namespaceUri; });
  }

 private:
  static std::string_view Trim(std::string_view text) {
    constexpr char kWhitespace[] = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kWhitespace);
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(kWhitespace) - first + 1);
  }

  void Read(std::string_view type) {
    m_isGiven = true;
    m_isName = IsValueOf(XsdType_QName, type);
    const std::size_t colon = m_isName ? type.find(':') : type.npos;
    if (colon != type.npos) m_prefix = type.substr(0, colon);
    m_name = type.substr(colon + 1);
  }

  const CXmlElement& m_element;
  bool m_isGiven = false;
  bool m_isName = false;  // a qualified name
  std::string m_prefix;   // may be empty
  std::string m_name;
};

}  // namespace detail
}  // namespace QzXmlLib16
