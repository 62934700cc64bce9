#include "qzxml/collections/ElementReader.h"

#include <utility>
#include <vector>

#include "qzxml/xml/XmlAttribute.h"
#include "qzxml/xml/XmlElement.h"

namespace QzXmlLib16 {
namespace detail {

CElementReader::CElementReader(CSharedText targetNamespace, bool copying)
    : m_targetNamespace(std::move(targetNamespace)), m_copying(copying) {}

CElementReader CElementReader::ForReading(CSharedText targetNamespace) {
  return CElementReader(std::move(targetNamespace), false);
}

CElementReader CElementReader::ForCopying() { return CElementReader(CSharedText(), true); }

CSmartPtr<CElement> CElementReader::Read(const CXmlElement* source) {
  const CSmartPtr<CElement> top = ReadOne(source);
  std::vector<CElement*> above;  // those for the parents of `at`, from top on
  CElement* element = top;       // the one for `at`
  const CXmlElement* at = source;
  for (;;) {
    const CXmlElement* next = at->GetFirstElement();
    if (next != nullptr) {
      above.push_back(element);
    } else {
      while (at != source && (next = at->GetNextSiblingElement()) == nullptr) {
        at = at->GetParentElm();
        above.pop_back();
      }
      if (next == nullptr) return top;
    }
    const CSmartPtr<CElement> child = ReadOne(next);
    above.back()->m_children->AppendItem(child);
    element = child;
    at = next;
  }
}

// Nobody listens to collections that were made here, so the order of the steps is our own.
CSmartPtr<CElement> CElementReader::ReadOne(const CXmlElement* source) {
  m_namespace = CSharedText::Like(m_namespace, source->GetNamespaceURI());
  const CSmartPtr<CElement> element(
      new CElement(m_copying ? CSharedText() : m_namespace, CSharedText::Any(), m_targetNamespace));
  element->m_strName = source->GetLocalName();
  element->m_strText = source->GetTextView();
  element->m_strNamespace = m_namespace;
  for (const CXmlAttribute* attribute : source->GetAttributeRange()) {
    element->m_attributes->AppendRead(*attribute);
    if (m_copying && attribute->GetLocalName() == "xmlns") {
      element->m_strDefaultNamespace = CSharedText(attribute->GetValue());
    }
  }
  return element;
}

}  // namespace detail
}  // namespace QzXmlLib16
