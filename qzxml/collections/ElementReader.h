#pragma once

#include "qzxml/collections/Element.h"
#include "qzxml/collections/SharedText.h"
#include "qzxml/runtime/SmartPtr.h"

namespace QzXmlLib16 {

class CXmlElement;

namespace detail {

// Makes elements of open content from those of a document, each with everything below it, in a loop
// over the tree. Two ways lead here, which leave the elements with different settings for what a
// caller adds to them later on.
class CElementReader {
 public:
  // As CElement::FromXml_Int fills an element: it and its collections know its namespace and the
  // target namespace.
  static CElementReader ForReading(CSharedText targetNamespace);
  // As CElement::CopyXmlElement fills one: made by its name alone, so that its collections know no
  // namespace; an attribute "xmlns" sets its default namespace.
  static CElementReader ForCopying();

  // The element with its attributes and everything below it. It has the restriction "##any".
  CSmartPtr<CElement> Read(const CXmlElement* source);

 private:
  CElementReader(CSharedText targetNamespace, bool copying);

  CSmartPtr<CElement> ReadOne(const CXmlElement* source);

  CSharedText m_targetNamespace;
  CSharedText m_namespace;  // of the element before: most likely that of the next one
  bool m_copying;
};

}  // namespace detail
}  // namespace QzXmlLib16
