#include "qzxml/collections/TextCols.h"

#include <string_view>

#include "qzxml/collections/TypedCollectionDetail.h"
#include "qzxml/values/Conversions.h"

namespace QzXmlLib16 {
namespace detail {
namespace {

// CConversions::stringFromString, but takes the text itself where the rule changes nothing in it.
std::string TakeText(std::string& text, CWhitespaceUtils::WhitespaceRule rule) {
  std::string scratch;
  const std::string_view ruled = ApplyRule(rule, text, scratch);
  return ruled.size() == text.size() && ruled.data() == text.data() ? std::move(text)
                                                                    : std::string(ruled);
}

const std::string& SameText(const std::string& value, const std::string&, std::string&) {
  return value;
}

std::string BooleanText(const bool& value) { return CConversions::booleanToString(value); }

}  // namespace

template <>
constexpr CCollectionKind kKind<ItemType_string>{"CstringCol", &TakeText, &CheckString, &SameText};
template <>
constexpr CCollectionKind kKind<ItemType_boolean>{"CbooleanCol", &CConversions::booleanFromString,
                                                  &CheckBoolean,
                                                  &ConvertedText<bool, &BooleanText>};
template <>
constexpr CCollectionKind kKind<ItemType_hexBinary>{
    "ChexBinaryCol", &CConversions::hexBinaryFromString, &CheckHexBinary,
    &ConvertedText<CBinaryData, &CConversions::hexBinaryToString>};
template <>
constexpr CCollectionKind kKind<ItemType_base64Binary>{
    "Cbase64BinaryCol", &CConversions::base64BinaryFromString, &CheckBase64Binary,
    &ConvertedText<CBinaryData, &CConversions::base64BinaryToString>};

}  // namespace detail

template class CTypedCollection<ItemType_string, std::string>;
template class CTypedCollection<ItemType_boolean, bool>;
template class CTypedCollection<ItemType_hexBinary, CBinaryData>;
template class CTypedCollection<ItemType_base64Binary, CBinaryData>;

}  // namespace QzXmlLib16
