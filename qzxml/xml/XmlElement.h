#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "qzxml/platform/Export.h"
#include "qzxml/runtime/MemoryLeakHelp.h"
#include "qzxml/xml/NodeAttributes.h"
#include "qzxml/xml/NodeText.h"
#include "qzxml/xml/XmlAttribute.h"
#include "qzxml/xml/XmlName.h"

namespace QzXmlLib16 {

class CExpatReader;
class CFastInfosetReader;
class CXmlDocument;

namespace detail {
class CItemWatch;
class CReadName;
class CTakenElements;
class CXmlNodes;
}  // namespace detail

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
  // Gives an element that was taken out of its tree back to its document, unless it went with the
  // document's content before.
  struct QZXML_API Deleter {
    void operator()(CXmlElement* element) const;
    std::shared_ptr<detail::CTakenElements> taken;
  };
  // An element outside the tree, which ends with its document's content all the same.
  using Owner = std::unique_ptr<CXmlElement, Deleter>;

  CXmlElement(const CXmlElement&) = delete;
  CXmlElement& operator=(const CXmlElement&) = delete;

  const CXmlDocument* GetDocument() const { return m_pName->document; }
  // Null for the document element.
  const CXmlElement* GetParentElm() const { return m_pParent; }
  // The first child, or null.
  CXmlElement* GetFirstElement() const {
    return m_pLastChild != nullptr ? m_pLastChild->m_pNextSibling : nullptr;
  }
  // The next child of the same parent, or null.
  CXmlElement* GetNextSiblingElement() const {
    return m_pParent != nullptr && m_pParent->m_pLastChild != this ? m_pNextSibling : nullptr;
  }

  // Without prefix.
  const std::string& GetLocalName() const { return m_pName->localName; }
  // Empty for no namespace.
  const std::string& GetNamespaceURI() const { return *m_pName->uri; }
  const std::string& GetText() const {
    const std::string* const text = m_text.GetString();
    return text != nullptr ? *text : FetchText();
  }
  // The same without making a string of it.
  std::string_view GetTextView() const { return m_text.View(); }
  // In document order.
  const std::vector<CXmlAttribute*>& GetAttributes() const {
    const detail::CNodeAttributes::List* const list = m_attributes.GetList();
    return list != nullptr ? list->all : FetchAttributes();
  }
  // The same without making a vector of them.
  CXmlAttributeRange GetAttributeRange() const {
    return CXmlAttributeRange(m_attributes.GetLast());
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
  // Takes the last child out of the tree; null when there is none, and for one that is open while
  // the element callback runs. Linear in the children.
  Owner RemoveLastChildElement();
  void AddAttribute(const std::string& localName, const std::string& value, const std::string& uri);
  void SetElementName(const char* localName);
  void SetNamespace(const char* uri);

 private:
  friend class CExpatReader;
  friend class CFastInfosetReader;
  friend class CXmlAttribute;
  friend class CXmlDocument;
  friend class detail::CItemWatch;
  friend class detail::CReadName;
  friend class detail::CXmlNodes;

  CXmlElement(const CXmlElement* parent, const detail::XmlName* name);
  ~CXmlElement() override;

  detail::CXmlNodes& GetNodes() const;
  const std::string& FetchText() const;
  const std::vector<CXmlAttribute*>& FetchAttributes() const;
  CXmlElement* UnlinkLastChild(CXmlElement* before);
  void AppendText(std::string_view text);
  void AppendCountedText(std::string_view text);  // counted against the growth already
  std::string GetQName() const;
  bool HasSameQName(const CXmlElement& other) const;
  std::string GetNameWithPredicate() const;

  // All that a node is made of belongs to the document. Children and attributes are rings: the
  // last one's next is the first.
  const detail::XmlName* m_pName;  // never null
  const CXmlElement* m_pParent;
  CXmlElement* m_pNextSibling = nullptr;
  CXmlElement* m_pLastChild = nullptr;
  mutable detail::CNodeAttributes m_attributes;
  mutable detail::CNodeText m_text;
};

}  // namespace QzXmlLib16
