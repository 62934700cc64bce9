#include "qzxml/serialization/ElementInfo.h"

#include <string_view>

#include "qzxml/collections/ElementCol.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/ElementInfoValues.h"
#include "qzxml/serialization/Messages.h"
#include "qzxml/serialization/TextOrEmpty.h"
#include "qzxml/serialization/XmlGeneratedClass.h"
#include "qzxml/xml/XmlAttribute.h"
#include "qzxml/xml/XmlTextWriter.h"

namespace QzXmlLib16Data {

using namespace QzXmlLib16;
using detail::TextOrEmpty;

// --- Making

CElementInfo::CElementInfo(const char* elementName, const char* elementNamespace,
                           std::int32_t propertyIndex)
    : m_strElementName(TextOrEmpty(elementName)),
      m_strElementNamespace(TextOrEmpty(elementNamespace)),
      m_tags(QzXmlLib16::detail::ElementTags::InOneNamespace(m_strElementName)),
      m_lPropertyIndex(propertyIndex),
      m_itemType(ItemType_None),
      m_whitespaceRule(CWhitespaceUtils::WhitespaceRule_None),
      m_bNillable(false),
      m_enumToString(nullptr),
      m_stringToEnum(nullptr),
      m_bHasPrimitiveRestrictions(false),
      m_bPassesItsKind(false),
      m_bIsPlainValue(false) {}

CElementInfo::CElementInfo(const char* elementName, const char* elementNamespace,
                           std::int32_t propertyIndex, bool nillable, EnumToString enumToString,
                           StringToEnum stringToEnum, const char* defaultValue)
    : CElementInfo(elementName, elementNamespace, propertyIndex) {
  m_bNillable = nillable;
  m_enumToString = enumToString;
  m_stringToEnum = stringToEnum;
  m_strDefaultValue = TextOrEmpty(defaultValue);
}

CElementInfo::CElementInfo(const char* elementName, const char* elementNamespace,
                           std::int32_t propertyIndex, bool nillable, ItemType itemType,
                           const char* formatOverride,
                           CWhitespaceUtils::WhitespaceRule whitespaceRule,
                           const CPrimitiveRestrictions& restrictions, const char* defaultValue)
    : CElementInfo(elementName, elementNamespace, propertyIndex) {
  m_bNillable = nillable;
  m_itemType = itemType;
  m_strFormatOverride = TextOrEmpty(formatOverride);
  m_whitespaceRule = whitespaceRule;
  m_restrictions = restrictions;
  m_strDefaultValue = TextOrEmpty(defaultValue);
  m_bHasPrimitiveRestrictions = true;
  m_bPassesItsKind = PassesEveryValue(itemType, restrictions);
  m_bIsPlainValue = m_bPassesItsKind && m_strDefaultValue.empty();
}

CElementInfo::~CElementInfo() = default;

// --- What the families override

bool CElementInfo::Validate(const CSerializationContext&, const CXmlGeneratedClass*, bool,
                            bool) const {
  throw CQzException("Not implemented, should never be called");
}

void CElementInfo::PseudoChildAttributeToXml(const CSerializationContext&,
                                             const CXmlGeneratedClass*, CXmlWriter*) const {}

// --- The element and the property

bool CElementInfo::IsThisElement(const CSerializationContext& context,
                                 const CXmlElement* element) const {
  return CElementInfoValues::IsAt(*this, context, element);
}

void CElementInfo::CheckRestriction(const QzVariant& value) const {
  if (!m_bHasPrimitiveRestrictions) {
    throw CQzException("Cannot CheckRestriction for type: " + value.GetType());
  }
  CheckPrimitiveRestriction(m_strElementName.c_str(), value, m_itemType, m_restrictions);
}

void CElementInfo::ReadProperty(const CXmlGeneratedClass* object, QzVariant& value) const {
  try {
    object->AccessProperty(m_lPropertyIndex, true, value);
  } catch (const CQzException& e) {
    throw CQzValidationException(
        FormatString(Messages::kGetPropertyFailed, m_strElementName.c_str()), "", e);
  }
}

void CElementInfo::InvokePropertyGet(CXmlGeneratedClass* object, QzVariant& value) const {
  ReadProperty(object, value);
}

void CElementInfo::InvokePropertySet(CXmlGeneratedClass* object, QzVariant& value,
                                     const CXmlElement& element) const {
  try {
    object->AccessProperty(m_lPropertyIndex, false, value);
  } catch (const CQzException& e) {
    throw CQzValidationException("Failed to set the property value.", element.GetXPath(), e);
  }
}

CXmlElement* CElementInfo::FromXml_Int(CXmlObjectBase* target, CXmlElement* parent,
                                       CXmlElement* current, const CSerializationContext& context,
                                       bool optionalChoice) {
  return target->FromXml_Int(parent, current, context, optionalChoice);
}

void CElementInfo::AttributesToXml_Int(const CXmlObjectBase* object, CXmlWriter* writer,
                                       const CSerializationContext& context) {
  object->AttributesToXml_Int(writer, context);
}

void CElementInfo::ToXml_Int(const CXmlObjectBase* object, CXmlWriter* writer,
                             const char* namespaceUri, const CSerializationContext& context,
                             bool optionalChoice) {
  object->ToXml_Int(writer, false, namespaceUri, context, optionalChoice);
}

CXmlElement* CElementInfo::FromXmlLockElementName_Int(CElementCol* collection,
                                                      const std::string& name,
                                                      const std::string& namespaceUri,
                                                      CXmlElement* parent, CXmlElement* cursor,
                                                      const CSerializationContext& context) {
  return collection->FromXmlLockElementName_Int(name, namespaceUri, parent, cursor, context);
}

std::string CElementInfo::GetAnyDefaultNamespace(const char* restrictions,
                                                 const char* parentNamespace,
                                                 const char* targetNamespace) {
  std::string_view token = TextOrEmpty(restrictions);
  if (token.size() > 2 && token.substr(0, 2) == "##") token = token.substr(0, token.find(' '));
  if (token == "##any") return TextOrEmpty(parentNamespace);
  if (token == "##other") {
    return *TextOrEmpty(parentNamespace) == '\0' ? "DefaultNamespace" : "";
  }
  if (token == "##targetNamespace") return TextOrEmpty(targetNamespace);
  return "";
}

// --- Writing

bool CElementInfo::ElementToXmlCol(const CSerializationContext& context,
                                   const CXmlGeneratedClass* object, CXmlWriter* writer) const {
  QzVariant value;
  ReadProperty(object, value);
  const CSmartPtr<CXmlCollectionBase> collection = value.GetXmlCollection();
  CElementInfoValues::RequireCollection(*this, collection);
  return CElementInfoValues::CollectionToXml(*this, context, collection, writer);
}

bool CElementInfo::ElementToXmlCls(const CSerializationContext& context,
                                   const CXmlGeneratedClass* object, CXmlWriter* writer,
                                   bool optionalChoice) const {
  QzVariant value;
  ReadProperty(object, value);
  const CSmartPtr<CXmlObjectBase> child = value.GetXmlObject();
  if (child == nullptr) return false;
  ToXml_Int(child, writer, m_strElementNamespace.c_str(), context, optionalChoice);
  return true;
}

// Most values need no test and go to a plain writer.
bool CElementInfo::ElementToXmlPrim(const CSerializationContext&, const CXmlGeneratedClass* object,
                                    CXmlWriter* writer) const {
  QzVariant value;
  ReadProperty(object, value);
  if (!value.IsValid()) return false;
  const bool isPlain = m_bIsPlainValue && value.GetTypeAsEnum() == m_itemType && !value.IsNil();
  return (isPlain && PlainValueToXml(value, writer)) || ValueToXml(value, writer);
}

// The short way.
inline bool CElementInfo::PlainValueToXml(const QzVariant& value, CXmlWriter* writer) const {
  const bool isText = m_itemType == ItemType_string;
  if (CXmlTextWriter* const plain = writer->GetPlainTextWriter()) {
    return isText
               ? plain->PutTextElement(m_tags, m_strElementNamespace, value.GetStringReference(),
                                       false)
               : plain->PutValueElement(m_tags, m_strElementNamespace, value, m_strFormatOverride);
  }
  detail::CShortWays* const other = writer->GetShortWays();
  if (other == nullptr) return false;
  return isText ? other->PutTextElement(m_tags, m_strElementNamespace, value.GetStringReference(),
                                        ItemType_string)
                : other->PutValueElement(m_tags, m_strElementNamespace, value, m_strFormatOverride);
}

// The general way for a value, which is not invalid.
[[gnu::noinline]] bool CElementInfo::ValueToXml(const QzVariant& value, CXmlWriter* writer) const {
  if (value.IsNil()) return CElementInfoValues::NilToXml(*this, writer);
  const std::string& text = TextOf(value, m_strFormatOverride, writer->GetScratch().text);
  const bool isDefault = CElementInfoValues::IsDefault(*this, text);
  // What has rules was held against them on its way in, and may come as a text of its own.
  const bool hasRules = m_pRules != nullptr;
  const ItemType kind = hasRules ? WrittenKind(value, m_itemType) : value.GetTypeAsEnum();
  // Meant: a default is written even if it breaks a facet.
  const bool passes = isDefault || hasRules || (m_bPassesItsKind && kind == m_itemType);
  if (!passes) CheckRestriction(value);
  writer->WriteTextElement(m_tags, m_strElementNamespace, text, kind, isDefault);
  return true;
}

bool CElementInfo::ElementToXmlEnum(const CSerializationContext&, const CXmlGeneratedClass* object,
                                    CXmlWriter* writer, EnumToString enumToString) const {
  QzVariant value;
  ReadProperty(object, value);
  if (value.IsNil()) return CElementInfoValues::NilToXml(*this, writer);
  if (!value.IsValid()) return false;
  const std::string& text = TextOf(enumToString(value.GetI4()), writer->GetScratch().text);
  writer->WriteTextElement(m_tags, m_strElementNamespace, text, ItemType_string,
                           CElementInfoValues::IsDefault(*this, text));
  return true;
}

// --- Reading

void CElementInfo::ElementFromXmlPrim(const CSerializationContext& context,
                                      CXmlGeneratedClass* object, CXmlElement** cursor) {
  CXmlElement& element = **cursor;
  const bool isNil =
      !element.GetAttributeRange().empty() && CElementInfoValues::IsNil(*this, context, element);
  if (m_pRules != nullptr) m_pRules->CheckElement(context, element, isNil);
  if (!isNil) {
    const std::string_view text = element.GetTextView();
    std::string scratch;
    QzVariant value;
    ReadValue(value, text.empty() ? m_strDefaultValue : text, m_itemType, m_whitespaceRule,
              scratch);
    InvokePropertySet(object, value, element);
  }
  *cursor = element.GetNextSiblingElement();
}

void CElementInfo::ElementFromXmlEnum(const CSerializationContext& context,
                                      CXmlGeneratedClass* object, CXmlElement** cursor) {
  CXmlElement& element = **cursor;
  const bool isNil =
      !element.GetAttributeRange().empty() && CElementInfoValues::IsNil(*this, context, element);
  if (m_pRules != nullptr) m_pRules->CheckElement(context, element, isNil);
  if (!isNil) {
    const std::string_view text = element.GetTextView();
    QzVariant value;
    value.SetI4(m_stringToEnum(std::string(text.empty() ? m_strDefaultValue : text).c_str()));
    InvokePropertySet(object, value, element);
  }
  *cursor = element.GetNextSiblingElement();
}

}  // namespace QzXmlLib16Data
