#include "qzxml/binding/ObjectFactory.h"

#include "qzxml/binding/BoundClass.h"
#include "qzxml/binding/TypeOfElement.h"
#include "qzxml/serialization/XmlObjectBase.h"
#include "qzxml/xml/XmlElement.h"

namespace QzXmlLib16 {

CObjectHandle NewObjectByType(CXmlElement* element, ClassFactory declared, const CNamedType* types,
                              std::size_t count) {
  if (element == nullptr) return CObjectHandle();
  const detail::CTypeOfElement type(*element);
  const char* const elementName = element->GetLocalName().c_str();
  if (type.name.empty()) {
    return declared == nullptr ? CObjectHandle() : declared(0, elementName);
  }
  for (std::size_t i = 0; i < count; ++i) {
    if (type.IsNamed(types[i].namespaceUri, types[i].name)) {
      return types[i].newObject(0, elementName);
    }
  }
  return CObjectHandle();
}

CObjectHandle NewRootObject(CXmlElement* element, const CNamedElement* elements,
                            std::size_t count) {
  if (element == nullptr) return CObjectHandle();
  for (std::size_t i = 0; i < count; ++i) {
    if (element->GetLocalName() != elements[i].name ||
        element->GetNamespaceURI() != elements[i].namespaceUri) {
      continue;
    }
    const CObjectHandle root = elements[i].newObjectByType == nullptr
                                   ? elements[i].newObject(0, elements[i].name)
                                   : elements[i].newObjectByType(element);
    if (root != nullptr) dynamic_cast<CBoundClass&>(*root).BeRoot(elements[i].namespaceUri);
    return root;
  }
  return CObjectHandle();
}

}  // namespace QzXmlLib16
