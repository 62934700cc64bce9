#include "qzxml/serialization/ClassfactoryBase.h"

#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"
#include "qzxml/xml/XmlNamespaces.h"

namespace QzXmlLib16 {
namespace {

// The value of the element's xsi:type; empty when there is none.
const std::string& XsiType(const CXmlElement& element) {
  // Never destroyed: static objects that go late may still read.
  static const std::string& s_type = *new std::string("type");
  static const std::string& s_uri = *new std::string(kXmlSchemaInstanceNamespace);
  return element.GetAttribute(s_type, s_uri);
}

}  // namespace

CClassfactoryBase::~CClassfactoryBase() = default;

std::string CClassfactoryBase::GetElementType(CXmlElement* element) {
  if (element == nullptr) return std::string();
  const std::string& type = XsiType(*element);
  const std::string::size_type colon = type.find(':');
  return colon == std::string::npos ? type : type.substr(colon + 1);
}

std::string CClassfactoryBase::GetElementTypeNamespaceUri(CXmlElement* element) {
  if (element == nullptr) return std::string();
  const std::string& type = XsiType(*element);
  const std::string::size_type colon = type.find(':');
  if (colon == std::string::npos) return element->GetNamespaceURI();
  const std::string& uri =
      element->GetDocument()->LookupNamespaceFromAlias(type.substr(0, colon).c_str());
  return uri.empty() ? element->GetNamespaceURI() : uri;
}

}  // namespace QzXmlLib16
