#include "qzxml/collections/DateTimeCols.h"

#include "qzxml/collections/TypedCollectionDetail.h"
#include "qzxml/values/Conversions.h"

namespace QzXmlLib16 {

// --- Durations, and dates that are plain numbers

namespace detail {

template <>
constexpr CCollectionKind kKind<ItemType_duration>{
    "CdurationCol", &CConversions::durationFromString, &CheckDuration,
    &ConvertedText<CDateTimeSpan, &CConversions::durationToString>};
template <>
constexpr CCollectionKind kKind<ItemType_year>{"CyearCol", &CConversions::yearFromString,
                                               &CheckYear,
                                               &WrittenText<unsigned short, &WriteYear>};
template <>
constexpr CCollectionKind kKind<ItemType_month>{"CmonthCol", &CConversions::monthFromString,
                                                &CheckMonth,
                                                &WrittenText<unsigned char, &WriteMonth>};
template <>
constexpr CCollectionKind kKind<ItemType_day>{"CdayCol", &CConversions::dayFromString, &CheckDay,
                                              &WrittenText<unsigned char, &WriteDay>};

}  // namespace detail

template class CTypedCollection<ItemType_duration, CDateTimeSpan>;
template class CTypedCollection<ItemType_year, unsigned short>;
template class CTypedCollection<ItemType_month, unsigned char>;
template class CTypedCollection<ItemType_day, unsigned char>;

// --- The base of dates and times

CdatetimeBaseCol::CdatetimeBaseCol(
    ItemType type, const char* elementName, const char* namespaceUri, int minOccurs, int maxOccurs,
    const char* pattern, std::int32_t minLength, std::int32_t maxLength, const char* minInclusive,
    const char* maxInclusive, const char* minExclusive, const char* maxExclusive,
    std::int32_t length, std::int32_t totalDigits, std::int32_t fractionDigits,
    CWhitespaceUtils::WhitespaceRule whitespaceRule, const char* format)
    : CValueCollection(type, elementName, namespaceUri, minOccurs, maxOccurs, pattern, minLength,
                       maxLength, minInclusive, maxInclusive, minExclusive, maxExclusive, length,
                       totalDigits, fractionDigits, whitespaceRule, format) {}

CdatetimeBaseCol::~CdatetimeBaseCol() = default;

void CdatetimeBaseCol::Add(const CDateTime& value) { AddAt(GetCount(), value); }

CDateTime CdatetimeBaseCol::Item(int index) const { return ValueAt(index); }

void CdatetimeBaseCol::BaseAddAt(int index, const CDateTime& value) {
  // A copy, since the value may be one of this collection, or go while a listener is called.
  CDateTime added = value;
  FireOnCollectionAdd(&added);
  RequirePlace(index);
  Insert(index, added);
}

void CdatetimeBaseCol::ToXml_Int(CXmlWriter* writer, bool, const char*,
                                 const CSerializationContext& context, bool) const {
  ValidateCount(context);
  for (const CDateTime& value : *this) {
    // The element is open already when a derived class makes its text, or fails to.
    writer->WriteStartElement(ElementName(), Namespace().str());
    writer->WriteText(ItemToString(value), ItemType_datetime, false);
    writer->WriteEndElement();
  }
}

// --- The five classes

namespace detail {
namespace {

struct CDateKind {
  const char* className;  // for the instance monitor
  CDateTime::DTType type;
  const char* wrongType;
  CDateTime (*fromString)(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
  std::string (*toString)(const CDateTime& value);
  void (*check)(const char* name, const CDateTime& value, const Restrictions& restrictions);
};

template <ItemType kType>
constexpr CDateKind kDateKind{};

template <>
constexpr CDateKind kDateKind<ItemType_yearMonth>{
    "CyearMonthCol",
    CDateTime::dt_gYearMonth,
    "Dates added to this collection must be of type dt_gYearMonth",
    &CConversions::yearMonthFromString,
    &CConversions::yearMonthToString,
    &CheckYearMonth};
template <>
constexpr CDateKind kDateKind<ItemType_monthDay>{
    "CmonthDayCol",
    CDateTime::dt_gMonthDay,
    "Dates added to this collection must be of type dt_gMonthDay",
    &CConversions::monthDayFromString,
    &CConversions::monthDayToString,
    &CheckMonthDay};
template <>
constexpr CDateKind kDateKind<ItemType_date>{
    "CdateCol",
    CDateTime::dt_date,
    "Dates added to this collection must be of type dt_date",
    &CConversions::dateFromString,
    &CConversions::dateToString,
    &CheckDate};
template <>
constexpr CDateKind kDateKind<ItemType_datetime>{
    "CdatetimeCol",
    CDateTime::dt_dateTime,
    "Dates added to this collection must be of type dt_dateTime",
    &CConversions::datetimeFromString,
    &CConversions::datetimeToString,
    &CheckDateTime};
template <>
constexpr CDateKind kDateKind<ItemType_time>{
    "CtimeCol",
    CDateTime::dt_time,
    "Dates added to this collection must be of type dt_time",
    &CConversions::timeFromString,
    &CConversions::timeToString,
    &CheckTime};

template <ItemType kType>
CInstanceClass dateCollectionClass(kDateKind<kType>.className);

}  // namespace
}  // namespace detail

template <ItemType kType>
CDateCollection<kType>::CDateCollection(
    const char* elementName, const char* namespaceUri, int minOccurs, int maxOccurs,
    const char* pattern, std::int32_t minLength, std::int32_t maxLength, const char* minInclusive,
    const char* maxInclusive, const char* minExclusive, const char* maxExclusive,
    std::int32_t length, std::int32_t totalDigits, std::int32_t fractionDigits,
    CWhitespaceUtils::WhitespaceRule whitespaceRule, const char* format)
    : CdatetimeBaseCol(kType, elementName, namespaceUri, minOccurs, maxOccurs, pattern, minLength,
                       maxLength, minInclusive, maxInclusive, minExclusive, maxExclusive, length,
                       totalDigits, fractionDigits, whitespaceRule, format),
      CInstanceMonitor(detail::dateCollectionClass<kType>) {}

template <ItemType kType>
CDateCollection<kType>::~CDateCollection() = default;

template <ItemType kType>
void CDateCollection<kType>::AddAt(int index, const CDateTime& value) {
  constexpr const detail::CDateKind& kind = detail::kDateKind<kType>;
  if (value.GetType() != kind.type) throw CQzInvalidParamException(kind.wrongType);
  if (HasFacets()) kind.check(ElementName().c_str(), value, GetRestrictions());
  BaseAddAt(index, value);
}

template <ItemType kType>
void CDateCollection<kType>::AddFromString(std::string text) {
  Add(detail::kDateKind<kType>.fromString(text, GetWhitespaceRule()));
}

template <ItemType kType>
std::string CDateCollection<kType>::ItemToString(const CDateTime& value) const {
  return detail::kDateKind<kType>.toString(value);
}

template class CDateCollection<ItemType_yearMonth>;
template class CDateCollection<ItemType_monthDay>;
template class CDateCollection<ItemType_date>;
template class CDateCollection<ItemType_datetime>;
template class CDateCollection<ItemType_time>;

}  // namespace QzXmlLib16
