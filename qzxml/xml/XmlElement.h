#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "qzxml/platform/Export.h"
#include "qzxml/runtime/MemoryLeakHelp.h"
#include "qzxml/xml/XmlName.h"

namespace QzXmlLib16 {

class CExpatReader;
class CXmlAttribute;
class CXmlDocument;

namespace detail {
class CXmlNodes;
}

// An element of a CXmlDocument: a name, a namespace, attributes, child elements and one text.
//
//   for (CXmlElement* e = parent->GetFirstElement(); e != nullptr; e = e->GetNextSiblingElement())
//     std::cout << e->GetLocalName() << " = " << e->GetText() << '\n';
//
// The one text is all character data of the element in the order of its arrival, white space
// between the children included; where it stood among them is not kept. A CDATA section stays
// visible in it by its markers, unless the reader strips them.
//
// Elements are made by their document, live in its memory and go with it; so a pointer to one ends
// with CXmlDocument::Cleanup, and with the element callback that prunes it.
// One thread at a time, together with its document.
class QZXML_API CXmlElement final : public CInstanceMonitor {
 public:
  // Gives an element that was taken out of its tree back to its document.
  struct QZXML_API Deleter {
    void operator()(CXmlElement* element) const;
  };
  // An element outside the tree. It must not outlive its document's content.
  using Owner = std::unique_ptr<CXmlElement, Deleter>;

  CXmlElement(const CXmlElement&) = delete;
  CXmlElement& operator=(const CXmlElement&) = delete;

  const CXmlDocument* GetDocument() const { return m_pName->document; }
  // Null for the document element.
  const CXmlElement* GetParentElm() const { return m_pParent; }
  // The first child, or null.
  CXmlElement* GetFirstElement() const { return m_pFirstChild; }
  // The next child of the same parent, or null.
  CXmlElement* GetNextSiblingElement() const { return m_pNextSibling; }

  // Without prefix.
  const std::string& GetLocalName() const { return m_pName->localName; }
  // Empty for no namespace.
  const std::string& GetNamespaceURI() const { return m_pName->uri; }
  const std::string& GetText() const { return m_strText; }
  // In document order.
  const std::vector<CXmlAttribute*>& GetAttributes() const {
    return m_pAttributes != nullptr ? *m_pAttributes : NoAttributes();
  }
  // The value of the first attribute with that name and namespace; an empty text when there is
  // none, so that absent and empty look the same. Walk GetAttributes to tell them apart.
  const std::string& GetAttribute(const std::string& localName, const std::string& uri) const;

  // "/" and a step for each element from the root to this one: its qualified name, and its number
  // among its siblings of that name in brackets where there is more than one.
  std::string GetXPath() const;

  // --- For readers

  // Appends to the text as it is; to drop carriage returns see
  // CXmlDocument::AppendTextExcludingCR. A text that does not fit doubles its capacity.
  void AppendText(const char* text);
  void AppendText(const char* text, int length);
  // A new last child without name.
  CXmlElement* CreateNewChildElement();
  // Takes the last child out of the tree; null when there is none. Linear in the children.
  Owner RemoveLastChildElement();
  void AddAttribute(const std::string& localName, const std::string& value, const std::string& uri);
  void SetElementName(const char* localName);
  void SetNamespace(const char* uri);

 private:
  friend class CExpatReader;
  friend class CXmlAttribute;
  friend class CXmlDocument;
  friend class detail::CXmlNodes;

  using Attributes = std::vector<CXmlAttribute*>;

  CXmlElement(const CXmlElement* parent, const detail::XmlName* name);
  ~CXmlElement() override;

  static const Attributes& NoAttributes();
  Owner RemoveLastChildElement(CXmlElement* startOfSearch);
  void AppendText(std::string_view text);
  void AppendCountedText(std::string_view text);  // counted against the growth already
  detail::CXmlNodes& GetNodes() const;
  std::string GetQName() const;
  bool HasSameQName(const CXmlElement& other) const;
  std::string GetNameWithPredicate() const;

  const CXmlElement* m_pParent;           // not owned
  CXmlElement* m_pNextSibling = nullptr;  // the nodes of a tree belong to the document
  CXmlElement* m_pFirstChild = nullptr;
  CXmlElement* m_pLastChild = nullptr;
  Attributes* m_pAttributes = nullptr;  // null for none; the document's
  std::string m_strText;
  const detail::XmlName* m_pName;  // never null; the document's
};

}  // namespace QzXmlLib16
