#pragma once

#include <cstddef>

#include "qzxml/binding/Member.h"
#include "qzxml/platform/Export.h"
#include "qzxml/runtime/SmartPtr.h"

namespace QzXmlLib16 {

class CXmlElement;

// The factory of a class, as its traits and the members with it name it. A null name leaves the
// tag that the class begins with.
template <typename Object>
CSmartPtr<CXmlObjectBase> NewObject(int, const char* elementName) {
  Object* const object = new Object;
  if (elementName != nullptr) object->TakeElementName(elementName);
  return CSmartPtr<CXmlObjectBase>(object);
}

// A new object for documents that begin with that element; the namespace is named where it is not
// that of the object's type.
template <typename Object>
CSmartPtr<Object> NewElement(const char* elementName, const char* namespaceUri = nullptr) {
  const CSmartPtr<Object> object(new Object);
  object->TakeElementName(elementName);
  object->BeRoot(namespaceUri);
  return object;
}

// A class that xsi:type may name.
struct CNamedType {
  const char* namespaceUri;
  const char* name;  // of the type in the schema
  ClassFactory newObject;
};

// What an AbstractClassFactory of generated code consists of: makes an object of the class that the
// element's xsi:type names, or of the declared class where it has none. Null without an element,
// for a type that is not in the list, and for a declared type that is abstract (null).
QZXML_API CObjectHandle NewObjectByType(CXmlElement* element, ClassFactory declared,
                                        const CNamedType* types, std::size_t count);
template <std::size_t count>
CObjectHandle NewObjectByType(CXmlElement* element, ClassFactory declared,
                              const CNamedType (&types)[count]) {
  return NewObjectByType(element, declared, types, count);
}

// A global element, as the root of a document.
struct CNamedElement {
  const char* namespaceUri;
  const char* name;
  ClassFactory newObject;
  AbstractClassFactory newObjectByType;  // null where no other type may stand there
};

// Makes the object for the root of a document; null for a name that is not in the list, and where
// its class has to be told by xsi:type and is not.
QZXML_API CObjectHandle NewRootObject(CXmlElement* element, const CNamedElement* elements,
                                      std::size_t count);
template <std::size_t count>
CObjectHandle NewRootObject(CXmlElement* element, const CNamedElement (&elements)[count]) {
  return NewRootObject(element, elements, count);
}

}  // namespace QzXmlLib16
