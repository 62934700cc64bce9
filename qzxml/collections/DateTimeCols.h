#pragma once

#include <cstdint>
#include <string>

#include "qzxml/collections/TypedCollection.h"
#include "qzxml/platform/Export.h"
#include "qzxml/values/DateTime.h"
#include "qzxml/values/DateTimeSpan.h"
#include "qzxml/values/ItemType.h"
#include "qzxml/values/WhitespaceUtils.h"

// The collections of durations, dates and times. See TypedCollection.h for what they do, and
// CConversions for the texts that they read and write.
namespace QzXmlLib16 {

class QZXML_API CdurationCol : public CTypedCollection<ItemType_duration, CDateTimeSpan> {
 public:
  using CTypedCollection::CTypedCollection;
};

// --- Dates that are plain numbers

class QZXML_API CyearCol : public CTypedCollection<ItemType_year, unsigned short> {
 public:
  using CTypedCollection::CTypedCollection;
};

class QZXML_API CmonthCol : public CTypedCollection<ItemType_month, unsigned char> {
 public:
  using CTypedCollection::CTypedCollection;
};

class QZXML_API CdayCol : public CTypedCollection<ItemType_day, unsigned char> {
 public:
  using CTypedCollection::CTypedCollection;
};

// --- Dates and times that are a CDateTime. Code that knows only the base can fill and read any of
// them.

// The values of one type of CDateTime.
class QZXML_API CdatetimeBaseCol : public CValueCollection<CDateTime> {
 public:
  // As the collections below, with the kind in front.
  CdatetimeBaseCol(ItemType type, const char* elementName, const char* namespaceUri, int minOccurs,
                   int maxOccurs, const char* pattern, std::int32_t minLength,
                   std::int32_t maxLength, const char* minInclusive, const char* maxInclusive,
                   const char* minExclusive, const char* maxExclusive, std::int32_t length,
                   std::int32_t totalDigits, std::int32_t fractionDigits,
                   CWhitespaceUtils::WhitespaceRule whitespaceRule, const char* format);
  ~CdatetimeBaseCol() override;

  // Appends the value by AddAt.
  virtual void Add(const CDateTime& value);

  // Inserts the value in front of the item at index, which may be the count. Throws
  // CQzInvalidParamException "Dates added to this collection must be of type dt_date" for a value
  // of another type than that of the class, then what the check of the facets throws (see
  // CheckPrimitiveRestriction) with the element name, and only then tells of the addition and
  // throws CQzInvalidParamException "Index out of range". Meant: the other way round than in the
  // other collections. The collection is as it was in each case.
  virtual void AddAt(int index, const CDateTime& value) = 0;

  // A copy. Throws CQzInvalidParamException "Index %d is out of range, use 0 - %d" (meant: the
  // upper figure is the count).
  virtual CDateTime Item(int index) const;

 protected:
  // The text that ToXml_Int writes.
  virtual std::string ItemToString(const CDateTime& value) const = 0;

  // The addition behind the tests of the value.
  void BaseAddAt(int index, const CDateTime& value);

  // Checks the number of items, then writes each as an element of its own. Meant: a writer is told
  // ItemType_datetime for all five classes; what the encoded formats make of it is in use.
  void ToXml_Int(CXmlWriter* writer, bool root, const char* namespaceUri,
                 const CSerializationContext& context, bool optionalChoice) const override;
};

// The five classes, each for one kind and one type of CDateTime.
template <ItemType kType>
class QZXML_API CDateCollection : public CdatetimeBaseCol, private CInstanceMonitor {
 public:
  // As CTypedCollection; the format is ignored.
  CDateCollection(const char* elementName, const char* namespaceUri, int minOccurs, int maxOccurs,
                  const char* pattern, std::int32_t minLength, std::int32_t maxLength,
                  const char* minInclusive, const char* maxInclusive, const char* minExclusive,
                  const char* maxExclusive, std::int32_t length, std::int32_t totalDigits,
                  std::int32_t fractionDigits, CWhitespaceUtils::WhitespaceRule whitespaceRule,
                  const char* format);
  ~CDateCollection() override;

  void AddAt(int index, const CDateTime& value) override;

 protected:
  // Throws what the FromString of CConversions throws for the kind, and what Add throws. The text
  // decides the type of a date, so that one of another form fails in AddAt.
  void AddFromString(std::string text) override;
  std::string ItemToString(const CDateTime& value) const override;
};

class QZXML_API CyearMonthCol : public CDateCollection<ItemType_yearMonth> {  // dt_gYearMonth
 public:
  using CDateCollection::CDateCollection;
};

class QZXML_API CmonthDayCol : public CDateCollection<ItemType_monthDay> {  // dt_gMonthDay
 public:
  using CDateCollection::CDateCollection;
};

class QZXML_API CdateCol : public CDateCollection<ItemType_date> {  // dt_date
 public:
  using CDateCollection::CDateCollection;
};

class QZXML_API CdatetimeCol : public CDateCollection<ItemType_datetime> {  // dt_dateTime
 public:
  using CDateCollection::CDateCollection;
};

class QZXML_API CtimeCol : public CDateCollection<ItemType_time> {  // dt_time
 public:
  using CDateCollection::CDateCollection;
};

}  // namespace QzXmlLib16
