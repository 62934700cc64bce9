#include "qzxml/collections/Attribute.h"

#include <optional>
#include <utility>

#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/TextOrEmpty.h"
#include "qzxml/xml/XmlWriter.h"

namespace QzXmlLib16 {

using detail::TextOrEmpty;

namespace {

CInstanceClass s_class("CAttribute");

}  // namespace

CAttribute::CAttribute(const char* name, const char* value, const char* namespaceUri)
    : CInstanceMonitor(s_class),
      m_strName(TextOrEmpty(name)),
      m_strValue(TextOrEmpty(value)),
      m_strNamespace(TextOrEmpty(namespaceUri)) {}

CAttribute::CAttribute(std::string name, std::string value, detail::CSharedText namespaceUri,
                       bool fromDocument)
    : CInstanceMonitor(s_class),
      m_strName(std::move(name)),
      m_strValue(std::move(value)),
      m_strNamespace(std::move(namespaceUri)),
      m_bFromDocument(fromDocument) {}

CAttribute::~CAttribute() = default;

CSmartPtr<CAttribute> CAttribute::Clone() const {
  return CSmartPtr<CAttribute>(
      new CAttribute(m_strName, m_strValue, m_strNamespace, m_bFromDocument));
}

void CAttribute::SetName(const char* name) {
  FireOnChangeName();
  m_strName = TextOrEmpty(name);
}

void CAttribute::SetValue(const char* value) {
  m_strValue = TextOrEmpty(value);
  m_bFromDocument = false;
}

std::string CAttribute::GetNamespace() const { return m_strNamespace.str(); }

void CAttribute::SetNamespace(const char* namespaceUri) {
  FireOnChangeNamespace();
  m_strNamespace = detail::CSharedText(TextOrEmpty(namespaceUri));
}

CXmlObjectBase* CAttribute::GetBase() { return this; }

std::string CAttribute::GetTargetNamespace() const { return m_strNamespace.str(); }

void CAttribute::FireOnChangeName() {}

void CAttribute::FireOnChangeNamespace() {}

void CAttribute::ToXml_Int(CXmlWriter* writer, bool, const char*, const CSerializationContext&,
                           bool) const {
  std::optional<CXmlWriter::CDocumentValues> values;
  if (m_bFromDocument) values.emplace(writer);
  writer->WriteAttribute(m_strName, m_strNamespace.str(), m_strValue, ItemType_string);
}

CXmlElement* CAttribute::FromXml_Int(CXmlElement*, CXmlElement*, const CSerializationContext&,
                                     bool) {
  throw CQzException("This should be done by the collection");
}

}  // namespace QzXmlLib16
