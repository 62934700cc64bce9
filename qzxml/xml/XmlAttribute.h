#pragma once

#include <string>
#include <string_view>

#include "qzxml/platform/Export.h"
#include "qzxml/runtime/MemoryLeakHelp.h"
#include "qzxml/xml/NodeText.h"
#include "qzxml/xml/XmlName.h"

namespace QzXmlLib16 {

class CXmlElement;

namespace detail {
class CReadName;
class CXmlNodes;
}  // namespace detail

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
  const std::string& GetNamespaceURI() const { return *m_pName->uri; }
  const std::string& GetValue() const {
    const std::string* const value = m_value.GetString();
    return value != nullptr ? *value : FetchValue();
  }
  // The same without making a string of it.
  std::string_view GetValueView() const { return m_value.View(); }

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
  friend class CXmlAttributeRange;
  friend class detail::CReadName;
  friend class detail::CXmlNodes;

  CXmlAttribute(const CXmlElement* parent, const detail::XmlName* name);
  ~CXmlAttribute() override;

  const std::string& FetchValue() const;

  const CXmlElement* m_pParent;    // not owned
  const detail::XmlName* m_pName;  // not owned; the document's
  mutable detail::CNodeText m_value;
  CXmlAttribute* m_pNext = nullptr;  // of the last one: the first. The document's
};

// The attributes of an element in document order, for a range-for that costs nothing beside:
//
//   for (const CXmlAttribute* attribute : element->GetAttributeRange()) ...
class CXmlAttributeRange {
 public:
  class Iterator {
   public:
    Iterator(CXmlAttribute* current, CXmlAttribute* last) : m_current(current), m_last(last) {}
    CXmlAttribute* operator*() const { return m_current; }
    Iterator& operator++() {
      m_current = m_current != m_last ? m_current->m_pNext : nullptr;
      return *this;
    }
    bool operator!=(const Iterator& other) const { return m_current != other.m_current; }

   private:
    CXmlAttribute* m_current;  // null behind the last
    CXmlAttribute* m_last;
  };

  // Null for no attributes.
  explicit CXmlAttributeRange(CXmlAttribute* last) : m_last(last) {}

  Iterator begin() const { return {m_last != nullptr ? m_last->m_pNext : nullptr, m_last}; }
  Iterator end() const { return {nullptr, m_last}; }
  bool empty() const { return m_last == nullptr; }

 private:
  CXmlAttribute* m_last;
};

}  // namespace QzXmlLib16
