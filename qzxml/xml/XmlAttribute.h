#pragma once

#include <string>

#include "qzxml/platform/Export.h"
#include "qzxml/runtime/MemoryLeakHelp.h"
#include "qzxml/xml/XmlName.h"

namespace QzXmlLib16 {

class CXmlElement;

namespace detail {
class CXmlNodes;
}

// An attribute of a CXmlElement: a name, a namespace and a value in the local encoding.
// It belongs to its element and lives as long; it never changes.
// One thread at a time, together with its document.
class QZXML_API CXmlAttribute final : public CInstanceMonitor {
 public:
  CXmlAttribute(const CXmlAttribute&) = delete;
  CXmlAttribute& operator=(const CXmlAttribute&) = delete;

  // Without prefix.
  const std::string& GetLocalName() const { return m_pName->localName; }
  // Empty for an attribute without namespace.
  const std::string& GetNamespaceURI() const { return m_pName->uri; }
  const std::string& GetValue() const { return m_strValue; }

  // The path of the element, "/", and the attribute's step: "@" and the local name; with an alias
  // for the namespace, the alias and ":" before the "@".
  std::string GetXPath() const;

  // Whether it only serves the schema machinery: "xmlns", "type", "schemaLocation" or
  // "noNamespaceSchemaLocation" in the namespace of the schema instance or of xmlns.
  bool IsNamespaceAttribute() const { return m_pName->isNamespaceAttribute; }
  // Whether it is "nil" in one of these two namespaces.
  bool IsNilAttribute() const { return m_pName->isNilAttribute; }

 private:
  friend class CXmlElement;
  friend class detail::CXmlNodes;

  CXmlAttribute(const CXmlElement* parent, const detail::XmlName* name, const char* value,
                std::size_t length);
  ~CXmlAttribute() override;

  const CXmlElement* m_pParent;    // not owned
  const detail::XmlName* m_pName;  // not owned; the document's
  std::string m_strValue;
};

}  // namespace QzXmlLib16
