#include "qzxml/fastinfoset/FastInfosetContext.h"

#include "qzxml/platform/Assert.h"
#include "qzxml/serialization/TextOrEmpty.h"

namespace QzXmlLib16 {
namespace {

struct SuggestedValue {
  ItemType itemType;
  std::uint32_t type;
  std::uint32_t index;
};

constexpr SuggestedValue kSuggestedValues[] = {
    {ItemType_hexBinary, 2, 1},                          // HEXADECIMAL
    {ItemType_base64Binary, 2, 2}, {ItemType_i1, 2, 3},  // SHORT
    {ItemType_i2, 2, 3},           {ItemType_ui1, 2, 3},
    {ItemType_i4, 2, 4},                                 // INT
    {ItemType_ui2, 2, 4},          {ItemType_i8, 2, 5},  // LONG
    {ItemType_ui4, 2, 5},          {ItemType_ui8, 2, 5},
    {ItemType_r4, 2, 7},                                        // FLOAT
    {ItemType_r8, 2, 8},                                        // DOUBLE
    {ItemType_duration, 0, 0},     {ItemType_yearMonth, 1, 2},  // the alphabet of dates and times
    {ItemType_monthDay, 1, 2},     {ItemType_year, 1, 2},
    {ItemType_month, 1, 2},        {ItemType_day, 1, 2},
    {ItemType_date, 1, 2},         {ItemType_datetime, 1, 2},
    {ItemType_time, 1, 2},         {ItemType_boolean, 2, 6},
    {ItemType_decimal, 1, 1},  // the alphabet of numbers
    {ItemType_integer, 1, 1},
};

}  // namespace

CFastInfosetContext::CFastInfosetContext() = default;
CFastInfosetContext::CFastInfosetContext(const CFastInfosetContext& other) = default;
CFastInfosetContext& CFastInfosetContext::operator=(const CFastInfosetContext& other) = default;
CFastInfosetContext::~CFastInfosetContext() = default;

CFastInfosetContext::EncodedCharacterString CFastInfosetContext::GetEncoding(
    ItemType itemType) const {
  QZ_ASSERT(itemType >= 0 && itemType < 29);
  if (itemType < 0 || itemType >= kItemTypes) return EncodedCharacterString();
  return m_encodings[static_cast<std::size_t>(itemType)];
}

void CFastInfosetContext::SetEncoding(ItemType itemType, const EncodedCharacterString& encoding) {
  QZ_ASSERT(itemType >= 0 && itemType < 29);
  if (itemType < 0 || itemType >= kItemTypes) return;
  m_encodings[static_cast<std::size_t>(itemType)] = encoding;
}

void CFastInfosetContext::SetSuggestedValues() {
  for (const SuggestedValue& value : kSuggestedValues) {
    SetEncoding(value.itemType, EncodedCharacterString(value.type, value.index));
  }
}

void CFastInfosetContext::SetExternalVocabularyURI(const char* uri) {
  m_strExternalVocabularyURI = detail::TextOrEmpty(uri);
}

}  // namespace QzXmlLib16
