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
  if (!type.IsGiven()) {
    return declared == nullptr ? CObjectHandle() : declared(0, elementName);
  }
  ClassFactory named = nullptr;
  type.FindNamespace([&](const std::string& uri) {
    for (std::size_t i = 0; i < count && named == nullptr; ++i) {
      if (type.GetName() == types[i].name && uri == types[i].namespaceUri) {
        named = types[i].newObject;
      }
    }
    return named != nullptr;
  });
  return named == nullptr ? CObjectHandle() : named(0, elementName);
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
