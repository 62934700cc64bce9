#include "qzxml/collections/NumberCols.h"

#include "qzxml/collections/TypedCollectionDetail.h"
#include "qzxml/values/Conversions.h"

namespace QzXmlLib16 {
namespace detail {
namespace {

// By its number, also where char is unsigned.
char* WriteI1(char* buffer, char value) {
  return WriteInteger(buffer, static_cast<signed char>(value));
}

const std::string& R4Text(const float& value, const std::string& format, std::string& scratch) {
  scratch.clear();
  AppendR4(value, format, scratch);
  return scratch;
}

const std::string& R8Text(const double& value, const std::string& format, std::string& scratch) {
  scratch.clear();
  AppendR8(value, format, scratch);
  return scratch;
}

const std::string& DecimalText(const CDecimal& value, const std::string& format,
                               std::string& scratch) {
  return scratch = CConversions::decimalToString(value, format);
}

template <typename Integer>
constexpr auto kIntegerText = &WrittenText<Integer, &WriteInteger<Integer>>;

}  // namespace

template <>
constexpr CCollectionKind kKind<ItemType_i1>{"Ci1Col", &CConversions::i1FromString, &CheckI1,
                                             &WrittenText<char, &WriteI1>};
template <>
constexpr CCollectionKind kKind<ItemType_i2>{"Ci2Col", &CConversions::i2FromString, &CheckI2,
                                             kIntegerText<short>};
template <>
constexpr CCollectionKind kKind<ItemType_i4>{"Ci4Col", &CConversions::i4FromString, &CheckI4,
                                             kIntegerText<std::int32_t>};
template <>
constexpr CCollectionKind kKind<ItemType_i8>{"Ci8Col", &CConversions::i8FromString, &CheckI8,
                                             kIntegerText<std::int64_t>};
template <>
constexpr CCollectionKind kKind<ItemType_ui1>{"Cui1Col", &CConversions::ui1FromString, &CheckUI1,
                                              kIntegerText<unsigned char>};
template <>
constexpr CCollectionKind kKind<ItemType_ui2>{"Cui2Col", &CConversions::ui2FromString, &CheckUI2,
                                              kIntegerText<unsigned short>};
template <>
constexpr CCollectionKind kKind<ItemType_ui4>{"Cui4Col", &CConversions::ui4FromString, &CheckUI4,
                                              kIntegerText<std::uint32_t>};
template <>
constexpr CCollectionKind kKind<ItemType_ui8>{"Cui8Col", &CConversions::ui8FromString, &CheckUI8,
                                              kIntegerText<std::uint64_t>};
template <>
constexpr CCollectionKind kKind<ItemType_r4>{"Cr4Col", &CConversions::r4FromString, &CheckR4,
                                             &R4Text};
template <>
constexpr CCollectionKind kKind<ItemType_r8>{"Cr8Col", &CConversions::r8FromString, &CheckR8,
                                             &R8Text};
template <>
constexpr CCollectionKind kKind<ItemType_decimal>{"CdecimalCol", &CConversions::decimalFromString,
                                                  &CheckDecimal, &DecimalText};
template <>
constexpr CCollectionKind kKind<ItemType_integer>{
    "CintegerCol", &CConversions::integerFromString, &CheckInteger,
    &ConvertedText<CBigInteger, &CConversions::integerToString>};

}  // namespace detail

template class CTypedCollection<ItemType_i1, char>;
template class CTypedCollection<ItemType_i2, short>;
template class CTypedCollection<ItemType_i4, std::int32_t>;
template class CTypedCollection<ItemType_i8, std::int64_t>;
template class CTypedCollection<ItemType_ui1, unsigned char>;
template class CTypedCollection<ItemType_ui2, unsigned short>;
template class CTypedCollection<ItemType_ui4, std::uint32_t>;
template class CTypedCollection<ItemType_ui8, std::uint64_t>;
template class CTypedCollection<ItemType_r4, float>;
template class CTypedCollection<ItemType_r8, double>;
template class CTypedCollection<ItemType_decimal, CDecimal>;
template class CTypedCollection<ItemType_integer, CBigInteger>;

}  // namespace QzXmlLib16
