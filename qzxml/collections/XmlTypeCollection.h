#pragma once

#include <cstdint>
#include <string>

#include "qzxml/collections/XmlCollectionBase.h"
#include "qzxml/platform/Export.h"
#include "qzxml/serialization/PrimitiveRestrictions.h"
#include "qzxml/values/ItemType.h"
#include "qzxml/values/WhitespaceUtils.h"

namespace QzXmlLib16 {

// What the collections of values of a primitive type share: the type with its facets, and reading.
// The values themselves lie in the concrete classes.
class QZXML_API CXmlTypeCollection : public CXmlCollectionBase {
 public:
  ~CXmlTypeCollection() override;

 protected:
  // The facets are those of CPrimitiveRestrictions, in its order. Null is taken as the empty text.
  CXmlTypeCollection(ItemType type, const char* elementName, const char* namespaceUri,
                     int minOccurs, int maxOccurs, const char* pattern, std::int32_t minLength,
                     std::int32_t maxLength, const char* minInclusive, const char* maxInclusive,
                     const char* minExclusive, const char* maxExclusive, std::int32_t length,
                     std::int32_t totalDigits, std::int32_t fractionDigits,
                     CWhitespaceUtils::WhitespaceRule whitespaceRule, const char* format);

  // Takes the run of siblings from cursor on that have the name and the namespace of the items, and
  // adds the text of each. Gives the first one that is something else, or null. The number of items
  // is not checked here.
  CXmlElement* FromXml_Int(CXmlElement* parent, CXmlElement* cursor,
                           const CSerializationContext& context, bool optionalChoice) override;

  // Converts one text and adds the value. Throws what the conversion and the facets throw.
  virtual void AddFromString(std::string text) = 0;

  const CPrimitiveRestrictions& GetRestrictions() const { return m_restrictions; }
  // False where every value passes; known at once, for those who add a million values.
  bool HasFacets() const { return m_bHasFacets; }
  ItemType GetItemType() const { return m_itemType; }
  // How floating and decimal values are written; "" for their own form.
  const std::string& GetFormat() const { return m_strFormat; }
  // What happens to the white space of a text that is read.
  CWhitespaceUtils::WhitespaceRule GetWhitespaceRule() const { return m_whitespaceRule; }

 private:
  CPrimitiveRestrictions m_restrictions;
  bool m_bHasFacets;
  ItemType m_itemType;
  std::string m_strFormat;
  CWhitespaceUtils::WhitespaceRule m_whitespaceRule;
};

}  // namespace QzXmlLib16
