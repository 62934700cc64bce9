#include "qzxml/serialization/ParentElementInfo.h"

#include "qzxml/serialization/TextOrEmpty.h"

namespace QzXmlLib16Data {

using QzXmlLib16::detail::TextOrEmpty;

CParentElementInfo::CParentElementInfo(
    XmlElementGroupType elementGroupType, XmlElementType elementType, const char* elementName,
    const char* elementNamespace, bool fromXmlFailIfAttributeUnknown, bool hasBaseClasses,
    std::int32_t primitiveValuePropertyIndex, QzXmlLib16::ItemType primitiveDataType,
    const char* primitiveFormatOverride, bool outputPrimitiveClassAsTextProperty)
    : m_elementGroupType(elementGroupType),
      m_elementType(elementType),
      m_strElementName(TextOrEmpty(elementName)),
      m_strElementNamespace(TextOrEmpty(elementNamespace)),
      m_bFailIfAttributeUnknown(fromXmlFailIfAttributeUnknown),
      m_bHasBaseClasses(hasBaseClasses),
      m_lPrimitiveValuePropertyIndex(primitiveValuePropertyIndex),
      m_primitiveDataType(primitiveDataType),
      m_strPrimitiveFormatOverride(TextOrEmpty(primitiveFormatOverride)),
      m_bPrimitiveAsText(outputPrimitiveClassAsTextProperty) {}

CParentElementInfo::~CParentElementInfo() = default;

}  // namespace QzXmlLib16Data
