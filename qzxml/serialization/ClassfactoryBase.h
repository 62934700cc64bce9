#pragma once

#include <string>

#include "qzxml/platform/Export.h"

template <class T>
class CSmartPtr;

namespace QzXmlLib16 {

class CXmlElement;
class CXmlObjectBase;

// --- The functions that a generated class gives its metadata

// Makes an empty object of the class with that number, written under the given element name.
using ClassFactory = CSmartPtr<CXmlObjectBase> (*)(int classId, const char* elementName);

// Looks at an element and makes an empty object of the class that suits it; null when none does.
using AbstractClassFactory = CSmartPtr<CXmlObjectBase> (*)(CXmlElement* element);

// An enumerator's text, and the enumerator of a text.
using EnumToString = const char* (*)(int);
using StringToEnum = int (*)(const char*);

// The base of generated factories. It reads the xsi:type of an element for an AbstractClassFactory;
// null, which a wildcard at the end of the children gives, has none.
// Source: XML Schema 1.0 part 1, section 2.6.1.
class QZXML_API CClassfactoryBase {
 public:
  virtual ~CClassfactoryBase();

 protected:
  CClassfactoryBase() = default;
  CClassfactoryBase(const CClassfactoryBase&) = default;
  CClassfactoryBase& operator=(const CClassfactoryBase&) = default;

  // The local part of the element's xsi:type: what stands behind the first colon, or all of it
  // where there is none. Empty without that attribute.
  static std::string GetElementType(CXmlElement* element);

  // The namespace of that type: what the document binds to the prefix, or the element's own
  // namespace where there is no prefix or where nothing is bound to it.
  static std::string GetElementTypeNamespaceUri(CXmlElement* element);
};

}  // namespace QzXmlLib16
