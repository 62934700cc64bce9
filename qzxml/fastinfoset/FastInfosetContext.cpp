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

// The numbers of the algorithms and of the alphabets.
constexpr std::uint32_t kHexadecimal = 1;
constexpr std::uint32_t kBase64 = 2;
constexpr std::uint32_t kShort = 3;
constexpr std::uint32_t kInt = 4;
constexpr std::uint32_t kLong = 5;
constexpr std::uint32_t kBoolean = 6;
constexpr std::uint32_t kFloat = 7;
constexpr std::uint32_t kDouble = 8;
constexpr std::uint32_t kNumeric = 1;
constexpr std::uint32_t kDateAndTime = 2;

constexpr SuggestedValue kSuggestedValues[] = {
    {ItemType_hexBinary, 2, kHexadecimal},
    {ItemType_base64Binary, 2, kBase64},
    {ItemType_i1, 2, kShort},
    {ItemType_i2, 2, kShort},
    {ItemType_ui1, 2, kShort},
    {ItemType_i4, 2, kInt},
    {ItemType_ui2, 2, kInt},
    {ItemType_i8, 2, kLong},
    {ItemType_ui4, 2, kLong},
    {ItemType_ui8, 2, kLong},
    {ItemType_r4, 2, kFloat},
    {ItemType_r8, 2, kDouble},
    {ItemType_duration, 0, 0},
    {ItemType_yearMonth, 1, kDateAndTime},
    {ItemType_monthDay, 1, kDateAndTime},
    {ItemType_year, 1, kDateAndTime},
    {ItemType_month, 1, kDateAndTime},
    {ItemType_day, 1, kDateAndTime},
    {ItemType_date, 1, kDateAndTime},
    {ItemType_datetime, 1, kDateAndTime},
    {ItemType_time, 1, kDateAndTime},
    {ItemType_boolean, 2, kBoolean},
    {ItemType_decimal, 1, kNumeric},
    {ItemType_integer, 1, kNumeric},
};

}  // namespace

CFastInfosetContext::CFastInfosetContext() = default;
CFastInfosetContext::CFastInfosetContext(const CFastInfosetContext& other) = default;
CFastInfosetContext& CFastInfosetContext::operator=(const CFastInfosetContext& other) = default;
CFastInfosetContext::~CFastInfosetContext() = default;

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
