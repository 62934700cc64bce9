#include "qzxml/serialization/ClassfactoryBase.h"

#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"
#include "qzxml/xml/XmlNamespaces.h"

namespace QzXmlLib16 {
namespace {

// The value of the element's xsi:type; empty when there is none.
const std::string& XsiType(const CXmlElement& element) {
  static const std::string kType = "type";
  static const std::string kUri = kXmlSchemaInstanceNamespace;
  return element.GetAttribute(kType, kUri);
}

}  // namespace

CClassfactoryBase::~CClassfactoryBase() = default;

std::string CClassfactoryBase::GetElementType(CXmlElement* element) {
  const std::string& type = XsiType(*element);
  const std::string::size_type colon = type.find(':');
  return colon == std::string::npos ? type : type.substr(colon + 1);
}

std::string CClassfactoryBase::GetElementTypeNamespaceUri(CXmlElement* element) {
  const std::string& type = XsiType(*element);
  const std::string::size_type colon = type.find(':');
  if (colon == std::string::npos || element->GetDocument() == nullptr) {
    return element->GetNamespaceURI();
  }
  const std::string& uri =
      element->GetDocument()->LookupNamespaceFromAlias(type.substr(0, colon).c_str());
  return uri.empty() ? element->GetNamespaceURI() : uri;
}

}  // namespace QzXmlLib16
