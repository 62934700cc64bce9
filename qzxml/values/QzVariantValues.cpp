#include <utility>

#include "qzxml/platform/Assert.h"
#include "qzxml/values/QzVariant.h"
#include "qzxml/values/QzVariantPayload.h"

// The setters and getters of the values.
//
// Without assertions a getter of the wrong kind still touches no memory but the variant's own: a
// pointer is only followed when the kind says that there is one.
namespace QzXmlLib16 {
namespace {

template <typename T>
const T& EmptyValue() {
  static const T& s_empty = *new T;  // never destroyed
  return s_empty;
}

// The value itself, or an empty one.
template <typename T>
const T& ValueOf(const T* value) {
  return value == nullptr ? EmptyValue<T>() : *value;
}

}  // namespace

// --- Binary data and text. ---

// Null when there is none: of another kind, or nil.
const CBinaryData* QzVariant::FindBinaryData() const {
  const bool hasData = m_type == ItemType_hexBinary || m_type == ItemType_base64Binary;
  return hasData ? m_value.m_pBinaryData : nullptr;
}

void QzVariant::SetHexBinary(const CBinaryData& value) {
  SetOwned(ItemType_hexBinary, &Value::m_pBinaryData, value);
}

CBinaryData QzVariant::GetHexBinary() const {
  QZ_ASSERT(m_type == ItemType_hexBinary);
  return ValueOf(FindBinaryData());
}

void QzVariant::SetBase64Binary(const CBinaryData& value) {
  SetOwned(ItemType_base64Binary, &Value::m_pBinaryData, value);
}

CBinaryData QzVariant::GetBase64Binary() const {
  QZ_ASSERT(m_type == ItemType_base64Binary);
  return ValueOf(FindBinaryData());
}

void QzVariant::SetString(std::string value) {
  SetOwned(ItemType_string, &Value::m_pString, std::move(value));
}

std::string QzVariant::GetString() const { return GetStringReference(); }

const std::string& QzVariant::RefuseString() {
  QZ_ASSERT_TEXT(false, "m_type == ItemType_string && m_pString != 0");
  return ValueOf(static_cast<const std::string*>(nullptr));
}

void QzVariant::GiveString(std::string& value) {
  LendString(value);
  m_isGiven = true;
}

void QzVariant::LendStringInstead(const std::string& value) {
  m_isGiven = false;
  LendPayload(ItemType_string, &Value::m_pString, value);
}

std::string QzVariant::TakeString() {
  const bool hasText = m_type == ItemType_string && m_value.m_pString != nullptr;
  return hasText ? TakePayload(&Value::m_pString) : GetString();
}

// --- Numbers of any size. ---

void QzVariant::SetDecimal(const CDecimal& value) {
  SetOwned(ItemType_decimal, &Value::m_pDecimal, value);
}

CDecimal QzVariant::GetDecimal() const { return GetDecimalReference(); }

const CDecimal& QzVariant::GetDecimalReference() const {
  const bool hasNumber = m_type == ItemType_decimal && m_value.m_pDecimal != nullptr;
  QZ_ASSERT_TEXT(hasNumber, "m_type == ItemType_decimal && m_pDecimal != 0");
  return ValueOf(hasNumber ? m_value.m_pDecimal : nullptr);
}

void QzVariant::LendDecimal(const CDecimal& value) {
  LendPayload(ItemType_decimal, &Value::m_pDecimal, value);
}

CDecimal QzVariant::TakeDecimal() {
  const bool hasNumber = m_type == ItemType_decimal && m_value.m_pDecimal != nullptr;
  return hasNumber ? TakePayload(&Value::m_pDecimal) : GetDecimal();
}

void QzVariant::SetInteger(const CBigInteger& value) {
  SetOwned(ItemType_integer, &Value::m_pBigInteger, value);
}

CBigInteger QzVariant::GetInteger() const { return GetIntegerReference(); }

const CBigInteger& QzVariant::GetIntegerReference() const {
  const bool hasNumber = m_type == ItemType_integer && m_value.m_pBigInteger != nullptr;
  QZ_ASSERT_TEXT(hasNumber, "m_type == ItemType_integer && m_pBigInteger != 0");
  return ValueOf(hasNumber ? m_value.m_pBigInteger : nullptr);
}

void QzVariant::LendInteger(const CBigInteger& value) {
  LendPayload(ItemType_integer, &Value::m_pBigInteger, value);
}

CBigInteger QzVariant::TakeInteger() {
  const bool hasNumber = m_type == ItemType_integer && m_value.m_pBigInteger != nullptr;
  return hasNumber ? TakePayload(&Value::m_pBigInteger) : GetInteger();
}

// --- Dates, times and durations. ---

// Null when there is none: of another kind, or nil.
const CDateTime* QzVariant::FindDateTime() const {
  return detail::HoldsDateTime(m_type) ? m_value.m_pDateTime : nullptr;
}

void QzVariant::LendDateTime(ItemType kind, const CDateTime& value) {
  const bool holdsDateTime = detail::HoldsDateTime(kind);
  QZ_ASSERT_TEXT(holdsDateTime, "kind holds a CDateTime");
  if (holdsDateTime) {
    LendPayload(kind, &Value::m_pDateTime, value);
  } else {
    SetInvalid();
  }
}

void QzVariant::SetDuration(const CDateTimeSpan& value) {
  SetOwned(ItemType_duration, &Value::m_pDateTimeSpan, value);
}

CDateTimeSpan QzVariant::GetDuration() const {
  QZ_ASSERT(m_type == ItemType_duration);
  return ValueOf(m_type == ItemType_duration ? m_value.m_pDateTimeSpan : nullptr);
}

void QzVariant::LendDuration(const CDateTimeSpan& value) {
  LendPayload(ItemType_duration, &Value::m_pDateTimeSpan, value);
}

void QzVariant::SetYearMonth(const CDateTime& value) {
  SetOwned(ItemType_yearMonth, &Value::m_pDateTime, value);
}

CDateTime QzVariant::GetYearMonth() const {
  QZ_ASSERT(m_type == ItemType_yearMonth);
  return ValueOf(FindDateTime());
}

void QzVariant::SetMonthDay(const CDateTime& value) {
  SetOwned(ItemType_monthDay, &Value::m_pDateTime, value);
}

CDateTime QzVariant::GetMonthDay() const {
  QZ_ASSERT(m_type == ItemType_monthDay);
  return ValueOf(FindDateTime());
}

void QzVariant::SetYear(unsigned short value) { SetScalar(ItemType_year, &Value::m_ui2, value); }

unsigned short QzVariant::GetYear() const {
  QZ_ASSERT(m_type == ItemType_year);
  return m_value.m_ui2;
}

void QzVariant::SetMonth(unsigned char value) { SetScalar(ItemType_month, &Value::m_ui1, value); }

unsigned char QzVariant::GetMonth() const {
  QZ_ASSERT(m_type == ItemType_month);
  return m_value.m_ui1;
}

void QzVariant::SetDay(unsigned char value) { SetScalar(ItemType_day, &Value::m_ui1, value); }

unsigned char QzVariant::GetDay() const {
  QZ_ASSERT(m_type == ItemType_day);
  return m_value.m_ui1;
}

void QzVariant::SetDate(const CDateTime& value) {
  SetOwned(ItemType_date, &Value::m_pDateTime, value);
}

CDateTime QzVariant::GetDate() const {
  QZ_ASSERT(m_type == ItemType_date);
  return ValueOf(FindDateTime());
}

void QzVariant::SetDateTime(const CDateTime& value) {
  SetOwned(ItemType_datetime, &Value::m_pDateTime, value);
}

CDateTime QzVariant::GetDateTime() const {
  QZ_ASSERT(m_type == ItemType_datetime);
  return ValueOf(FindDateTime());
}

void QzVariant::SetTime(const CDateTime& value) {
  SetOwned(ItemType_time, &Value::m_pDateTime, value);
}

CDateTime QzVariant::GetTime() const {
  QZ_ASSERT(m_type == ItemType_time);
  return ValueOf(FindDateTime());
}

// --- Numbers. ---

void QzVariant::SetI1(char value) {
  SetScalar(ItemType_i1, &Value::m_i1, static_cast<std::int8_t>(value));
}

char QzVariant::GetI1() const {
  QZ_ASSERT(m_type == ItemType_i1);
  return static_cast<char>(m_value.m_i1);
}

void QzVariant::SetI2(short value) { SetScalar(ItemType_i2, &Value::m_i2, value); }

short QzVariant::GetI2() const {
  QZ_ASSERT(m_type == ItemType_i2);
  return m_value.m_i2;
}

std::int32_t QzVariant::GetI4() const {
  QZ_ASSERT(m_type == ItemType_i4);
  return m_value.m_i4;
}

void QzVariant::SetI8(std::int64_t value) { SetScalar(ItemType_i8, &Value::m_i8, value); }

std::int64_t QzVariant::GetI8() const {
  QZ_ASSERT(m_type == ItemType_i8);
  return m_value.m_i8;
}

void QzVariant::SetUI1(unsigned char value) { SetScalar(ItemType_ui1, &Value::m_ui1, value); }

unsigned char QzVariant::GetUI1() const {
  QZ_ASSERT(m_type == ItemType_ui1);
  return m_value.m_ui1;
}

void QzVariant::SetUI2(unsigned short value) { SetScalar(ItemType_ui2, &Value::m_ui2, value); }

unsigned short QzVariant::GetUI2() const {
  QZ_ASSERT(m_type == ItemType_ui2);
  return m_value.m_ui2;
}

void QzVariant::SetUI4(std::uint32_t value) { SetScalar(ItemType_ui4, &Value::m_ui4, value); }

std::uint32_t QzVariant::GetUI4() const {
  QZ_ASSERT(m_type == ItemType_ui4);
  return m_value.m_ui4;
}

void QzVariant::SetUI8(std::uint64_t value) { SetScalar(ItemType_ui8, &Value::m_ui8, value); }

std::uint64_t QzVariant::GetUI8() const {
  QZ_ASSERT(m_type == ItemType_ui8);
  return m_value.m_ui8;
}

void QzVariant::SetR4(float value) { SetScalar(ItemType_r4, &Value::m_r4, value); }

float QzVariant::GetR4() const {
  QZ_ASSERT(m_type == ItemType_r4);
  return m_value.m_r4;
}

double QzVariant::GetR8() const {
  QZ_ASSERT(m_type == ItemType_r8);
  return m_value.m_r8;
}

void QzVariant::SetChar(char value) { SetScalar(ItemType_char, &Value::m_char, value); }

char QzVariant::GetChar() const {
  QZ_ASSERT(m_type == ItemType_char);
  return m_value.m_char;
}

void QzVariant::SetBoolean(bool value) {
  SetScalar(ItemType_boolean, &Value::m_boolean, static_cast<std::uint8_t>(value));
}

bool QzVariant::GetBoolean() const {
  QZ_ASSERT(m_type == ItemType_boolean);
  return m_value.m_boolean != 0;
}

}  // namespace QzXmlLib16
