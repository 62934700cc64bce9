#include "qzxml/xml/XmlAttribute.h"

#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlDocumentNodes.h"

namespace QzXmlLib16 {

CInstanceClass detail::g_attributeClass("CXmlAttribute");

const std::string& CXmlAttribute::FetchValue() const {
  return m_pParent->GetNodes().FetchString(m_value);
}

std::string CXmlAttribute::GetXPath() const {
  std::string path = m_pParent->GetXPath();
  path += '/';
  if (!GetNamespaceURI().empty()) {
    const std::string& alias =
        m_pName->document->LookupAliasFromNamespace(GetNamespaceURI().c_str());
    // Meant: the alias stands before the "@", as those who read the paths of failures know it.
    if (!alias.empty()) path += alias + ":";
  }
  path += '@';
  path += GetLocalName();
  return path;
}

}  // namespace QzXmlLib16
