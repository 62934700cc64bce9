#include "qzxml/collections/XmlTypeCollection.h"

#include <utility>

#include "qzxml/serialization/NamespaceRules.h"
#include "qzxml/serialization/TextOrEmpty.h"
#include "qzxml/xml/XmlElement.h"

namespace QzXmlLib16 {

CXmlTypeCollection::CXmlTypeCollection(
    ItemType type, const char* elementName, const char* namespaceUri, int minOccurs, int maxOccurs,
    const char* pattern, std::int32_t minLength, std::int32_t maxLength, const char* minInclusive,
    const char* maxInclusive, const char* minExclusive, const char* maxExclusive,
    std::int32_t length, std::int32_t totalDigits, std::int32_t fractionDigits,
    CWhitespaceUtils::WhitespaceRule whitespaceRule, const char* format)
    : CXmlCollectionBase(elementName, namespaceUri, minOccurs, maxOccurs),
      m_restrictions(pattern, minLength, maxLength, minInclusive, maxInclusive, minExclusive,
                     maxExclusive, length, totalDigits, fractionDigits),
      m_bHasFacets(m_restrictions.HasFacets()),
      m_itemType(type),
      m_strFormat(detail::TextOrEmpty(format)),
      m_whitespaceRule(whitespaceRule) {}

CXmlTypeCollection::~CXmlTypeCollection() = default;

CXmlElement* CXmlTypeCollection::FromXml_Int(CXmlElement*, CXmlElement* cursor,
                                             const CSerializationContext& context, bool) {
  while (cursor != nullptr &&
         detail::ElementHasName(context, cursor, ElementName(), Namespace().str())) {
    AddFromString(std::string(cursor->GetTextView()));
    cursor = cursor->GetNextSiblingElement();
  }
  return cursor;
}

}  // namespace QzXmlLib16
