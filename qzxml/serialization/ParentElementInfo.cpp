#include "qzxml/serialization/ParentElementInfo.h"

namespace QzXmlLib16Data {

namespace {
const char* TextOf(const char* text) { return text != nullptr ? text : ""; }
}  // namespace

CParentElementInfo::CParentElementInfo(
    XmlElementGroupType elementGroupType, XmlElementType elementType, const char* elementName,
    const char* elementNamespace, bool fromXmlFailIfAttributeUnknown, bool hasBaseClasses,
    std::int32_t primitiveValuePropertyIndex, QzXmlLib16::ItemType primitiveDataType,
    const char* primitiveFormatOverride, bool outputPrimitiveClassAsTextProperty)
    : m_elementGroupType(elementGroupType),
      m_elementType(elementType),
      m_strElementName(TextOf(elementName)),
      m_strElementNamespace(TextOf(elementNamespace)),
      m_bFailIfAttributeUnknown(fromXmlFailIfAttributeUnknown),
      m_bHasBaseClasses(hasBaseClasses),
      m_lPrimitiveValuePropertyIndex(primitiveValuePropertyIndex),
      m_primitiveDataType(primitiveDataType),
      m_strPrimitiveFormatOverride(TextOf(primitiveFormatOverride)),
      m_bPrimitiveAsText(outputPrimitiveClassAsTextProperty) {}

CParentElementInfo::~CParentElementInfo() = default;

}  // namespace QzXmlLib16Data
