#include "qzxml/serialization/AttributeInfo.h"

#include "qzxml/collections/AttributeCol.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/ElementInfoValues.h"
#include "qzxml/serialization/Messages.h"
#include "qzxml/serialization/NamespaceRules.h"
#include "qzxml/serialization/TextOrEmpty.h"
#include "qzxml/serialization/XmlGeneratedClass.h"
#include "qzxml/xml/ShortText.h"
#include "qzxml/xml/XmlAttribute.h"
#include "qzxml/xml/XmlTextWriter.h"

namespace QzXmlLib16Data {

using namespace QzXmlLib16;
using detail::TextOrEmpty;

// --- What all attributes share

CAttributeInfo::CAttributeInfo(const char* attributeName, const char* attributeNamespace,
                               std::int32_t propertyIndex, bool optional, const char* defaultValue)
    : m_strAttributeName(TextOrEmpty(attributeName)),
      m_strAttributeNamespace(TextOrEmpty(attributeNamespace)),
      m_tag(m_strAttributeName),
      m_lPropertyIndex(propertyIndex),
      m_bOptional(optional),
      m_strDefaultValue(TextOrEmpty(defaultValue)) {}

CAttributeInfo::~CAttributeInfo() = default;

bool CAttributeInfo::HasName(const CXmlAttribute& attribute) const {
  return detail::AreEqual(attribute.GetLocalName(), m_strAttributeName);
}

bool CAttributeInfo::HasNamespace(const CXmlAttribute& attribute) const {
  return detail::AreEqual(attribute.GetNamespaceURI(), m_strAttributeNamespace);
}

bool CAttributeInfo::IsThisAttribute(const CSerializationContext& context,
                                     CXmlAttribute* attribute) {
  return attribute != nullptr && HasName(*attribute) &&
         (context.GetIgnoreNamespaces() || HasNamespace(*attribute));
}

void CAttributeInfo::ReadProperty(const CXmlGeneratedClass* object, QzVariant& value) const {
  try {
    object->AccessProperty(m_lPropertyIndex, true, value);
  } catch (const CQzException& e) {
    throw CQzValidationException(
        FormatString(Messages::kGetPropertyFailed, m_strAttributeName.c_str()), "", e);
  }
}

void CAttributeInfo::InvokePropertyGet(CXmlGeneratedClass* object, QzVariant& value) const {
  ReadProperty(object, value);
}

void CAttributeInfo::InvokePropertySet(CXmlGeneratedClass* object, QzVariant& value,
                                       const CXmlAttribute& attribute) const {
  try {
    object->AccessProperty(m_lPropertyIndex, false, value);
  } catch (const CQzException& e) {
    throw CQzValidationException(
        FormatString("Failed to set the property value [%s].", attribute.GetValue().c_str()),
        attribute.GetXPath(), e);
  }
}

void CAttributeInfo::ToXml_Int(const CXmlObjectBase* object, CXmlWriter* writer, bool root,
                               const char* namespaceUri, const CSerializationContext& context) {
  object->ToXml_Int(writer, root, namespaceUri, context, false);
}

std::string CAttributeInfo::GetTargetNamespace(const CXmlObjectBase* object) {
  return object->GetTargetNamespace();
}

void CAttributeInfo::TestNamespace(const std::string& namespaceUri, const std::string& restrictions,
                                   const std::string& targetNamespace) {
  CheckNamespaceAgainstRestrictions(namespaceUri, restrictions, targetNamespace);
}

bool CAttributeInfo::IsNamespaceValid(const std::string& namespaceUri,
                                      const std::string& restrictions,
                                      const std::string& targetNamespace) {
  return IsNamespaceInRestrictions(namespaceUri, restrictions, targetNamespace);
}

void CAttributeInfo::RequireFound(bool found) const {
  if (m_bOptional || found) return;
  throw CQzValidationException(
      FormatString("Failed to find the required Attribute [%s].", m_strAttributeName.c_str()), "");
}

bool CAttributeInfo::IsOmittedDefault(const CSerializationContext& context,
                                      const std::string& text) const {
  return m_bOptional && !m_strDefaultValue.empty() &&
         context.GetNoOptionalAttributeDefaultOutput() && text == m_strDefaultValue;
}

// --- Primitives

CAttributeInfoPrimitive::CAttributeInfoPrimitive(
    const char* attributeName, const char* attributeNamespace, int propertyIndex, bool optional,
    ItemType itemType, const char* formatOverride, CWhitespaceUtils::WhitespaceRule whitespaceRule,
    const CPrimitiveRestrictions& restrictions, const char* defaultValue)
    : CAttributeInfo(attributeName, attributeNamespace, propertyIndex, optional, defaultValue),
      m_restrictions(restrictions),
      m_itemType(itemType),
      m_strFormatOverride(TextOrEmpty(formatOverride)),
      m_whitespaceRule(whitespaceRule),
      m_bPassesItsKind(PassesEveryValue(itemType, restrictions)),
      m_bIsPlainValue(m_bPassesItsKind && m_strDefaultValue.empty() &&
                      m_strAttributeNamespace.empty()) {}

// Most values need no test and go to a plain writer.
void CAttributeInfoPrimitive::AttributeToXml(const CSerializationContext& context,
                                             const CXmlGeneratedClass* object,
                                             CXmlWriter* writer) const {
  QzVariant value;
  ReadProperty(object, value);
  if (m_bOptional && !value.IsValid()) return;
  const bool isPlain = m_bIsPlainValue && value.GetTypeAsEnum() == m_itemType && !value.IsNil();
  if (!isPlain || !PlainValueToXml(value, writer)) ValueToXml(context, value, writer);
}

// The short way.
inline bool CAttributeInfoPrimitive::PlainValueToXml(const QzVariant& value,
                                                     CXmlWriter* writer) const {
  if (CXmlTextWriter* const plain = writer->GetPlainTextWriter()) {
    return plain->PutValueAttribute(m_tag, value, m_strFormatOverride);
  }
  detail::CShortWays* const other = writer->GetShortWays();
  return other != nullptr && other->PutValueAttribute(m_tag, value, m_strFormatOverride);
}

// The general way.
[[gnu::noinline]] void CAttributeInfoPrimitive::ValueToXml(const CSerializationContext& context,
                                                           const QzVariant& value,
                                                           CXmlWriter* writer) const {
  const std::string& text = TextOf(value, m_strFormatOverride, writer->GetScratch().text);
  if (IsOmittedDefault(context, text)) return;
  writer->WriteAttribute(m_strAttributeName, m_strAttributeNamespace, text, TestValue(value));
}

bool CAttributeInfoPrimitive::AttributeFromXml(const CSerializationContext&,
                                               CXmlGeneratedClass* object,
                                               CXmlAttribute* attribute) {
  if (!HasName(*attribute) || !HasNamespace(*attribute)) return false;
  std::string scratch;
  QzVariant value;
  ReadValue(value, attribute->GetValueView(), m_itemType, m_whitespaceRule, scratch);
  InvokePropertySet(object, value, *attribute);
  return true;
}

void CAttributeInfoPrimitive::Validate(const CSerializationContext&, bool found) const {
  RequireFound(found);
}

void CAttributeInfoPrimitive::CheckRestriction(QzVariant value) const { CheckFacets(value); }

void CAttributeInfoPrimitive::CheckFacets(const QzVariant& value) const {
  if (m_bPassesItsKind && value.GetTypeAsEnum() == m_itemType) return;
  CheckPrimitiveRestriction(m_strAttributeName.c_str(), value, m_itemType, m_restrictions);
}

ItemType CAttributeInfoPrimitive::TestValue(const QzVariant& value) const {
  CheckFacets(value);
  return value.GetTypeAsEnum();
}

// --- Enumerations

CAttributeInfoEnum::CAttributeInfoEnum(const char* attributeName, const char* attributeNamespace,
                                       int propertyIndex, bool optional, EnumToString enumToString,
                                       StringToEnum stringToEnum, const char* defaultValue)
    : CAttributeInfo(attributeName, attributeNamespace, propertyIndex, optional, defaultValue),
      m_stringToEnum(stringToEnum),
      m_enumToString(enumToString) {}

void CAttributeInfoEnum::AttributeToXml(const CSerializationContext& context,
                                        const CXmlGeneratedClass* object,
                                        CXmlWriter* writer) const {
  QzVariant value;
  ReadProperty(object, value);
  std::string& scratch = writer->GetScratch().text;
  if (!value.IsValid()) {
    if (m_bOptional) return;
    TextOf(value, std::string(), scratch);  // fails: a required property is not set
  }
  const std::string& text = TextOf(m_enumToString(value.GetI4()), scratch);
  if (IsOmittedDefault(context, text)) return;
  writer->WriteAttribute(m_strAttributeName, m_strAttributeNamespace, text, ItemType_string);
}

bool CAttributeInfoEnum::AttributeFromXml(const CSerializationContext& context,
                                          CXmlGeneratedClass* object, CXmlAttribute* attribute) {
  if (!IsThisAttribute(context, attribute)) return false;
  QzVariant value;
  value.SetI4(m_stringToEnum(std::string(attribute->GetValueView()).c_str()));
  InvokePropertySet(object, value, *attribute);
  return true;
}

void CAttributeInfoEnum::Validate(const CSerializationContext&, bool found) const {
  RequireFound(found);
}

// --- Wildcards

CAttributeInfoAny::CAttributeInfoAny(const char* attributeName, const char* attributeNamespace,
                                     int propertyIndex, bool optional,
                                     const char* namespaceRestrictions, const char* targetNamespace,
                                     const char* defaultValue)
    : CAttributeInfo(attributeName, attributeNamespace, propertyIndex, optional, defaultValue),
      m_strNamespaceRestrictions(TextOrEmpty(namespaceRestrictions)),
      m_strTargetNamespace(TextOrEmpty(targetNamespace)) {}

void CAttributeInfoAny::AttributeToXml(const CSerializationContext& context,
                                       const CXmlGeneratedClass* object, CXmlWriter* writer) const {
  QzVariant value;
  ReadProperty(object, value);
  const CSmartPtr<CXmlCollectionBase> collection = value.GetXmlCollection();
  if (collection == nullptr) ThrowNoAttributeCol();
  ToXml_Int(collection->GetBase(), writer, false, GetTargetNamespace(object).c_str(), context);
}

bool CAttributeInfoAny::AttributeFromXml(const CSerializationContext&, CXmlGeneratedClass* object,
                                         CXmlAttribute* attribute) {
  const std::string& uri = attribute->GetNamespaceURI();
  if (!IsNamespaceValid(uri, m_strNamespaceRestrictions, m_strTargetNamespace)) return false;
  QzVariant value;
  InvokePropertyGet(object, value);
  const CSmartPtr<CXmlCollectionBase> collection = value.GetXmlCollection();
  CXmlCollectionBase* const held = collection;
  CAttributeCol* const attributes = dynamic_cast<CAttributeCol*>(held);
  if (attributes == nullptr) ThrowNoAttributeCol();
  attributes->AddFromDocument(*attribute);
  return true;
}

void CAttributeInfoAny::Validate(const CSerializationContext&, bool) const {}

void CAttributeInfoAny::ThrowNoAttributeCol() {
  throw CQzException(
      "Serialization Data Error : The collection should be a CAttributeCol, it was not!");
}

}  // namespace QzXmlLib16Data
