#include "qzxml/values/QzVariant.h"

#include <utility>

#include "qzxml/collections/XmlCollectionBase.h"
#include "qzxml/platform/Assert.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/XmlObjectBase.h"
#include "qzxml/values/Conversions.h"
#include "qzxml/values/ConversionsDetail.h"
#include "qzxml/values/Messages.h"
#include "qzxml/values/QzVariantPayload.h"

// State, copying, text and objects; the setters and getters of the values are in
// QzVariantValues.cpp.
namespace QzXmlLib16 {
namespace {

constexpr const char* kTypeNames[] = {
    nullptr,     "hexBinary", "base64Binary", "i1",      "i2",      "i4",      "i8",
    "ui1",       "ui2",       "ui4",          "ui8",     "r4",      "r8",      "duration",
    "yearMonth", "monthDay",  "year",         "month",   "day",     "date",    "datetime",
    "time",      "char",      "string",       "boolean", "decimal", "integer",
};
static_assert(sizeof kTypeNames / sizeof *kTypeNames == ItemType_integer + 1, "one for each kind");

// Null for a kind without a name.
const char* FindTypeName(ItemType type) {
  return type < ItemType_None || type > ItemType_integer ? nullptr : kTypeNames[type];
}

// Appends a text that is as good as its own memory, which a text without any takes over.
void AppendWhole(std::string&& text, std::string& out) {
  if (out.empty() && text.size() > out.capacity()) {
    out = std::move(text);
  } else {
    out += text;
  }
}

}  // namespace

// --- Copying. ---

QzVariant::QzVariant(const QzVariant& other) : QzVariant() { *this = other; }

QzVariant::QzVariant(QzVariant&& other) noexcept : QzVariant() { TakeOver(other); }

const QzVariant& QzVariant::operator=(const QzVariant& other) {
  if (this == &other) return *this;
  const QzVariant former(std::move(*this));  // goes last: it may be what keeps the other alive
  m_type = other.m_type;
  m_isNil = other.m_isNil;
  if (!m_isNil) CopyPayload(other);
  return *this;
}

const QzVariant& QzVariant::operator=(QzVariant&& other) noexcept {
  if (this == &other) return *this;
  const QzVariant former(std::move(*this));  // as above
  TakeOver(other);
  return *this;
}

// A text that was only given may not live for as long as this one.
void QzVariant::TakeOver(QzVariant& other) noexcept {
  if (other.m_isGiven) other.SetString(other.TakeString());
  m_isNil = std::exchange(other.m_isNil, false);
  m_isLent = std::exchange(other.m_isLent, false);
  m_type = std::exchange(other.m_type, ItemType_None);
  m_value = std::exchange(other.m_value, Value());
}

// The kind is copied already, and the payload is zero.
void QzVariant::CopyPayload(const QzVariant& other) {
  switch (m_type) {
    case ItemType_None:
      return;
    case ItemType_hexBinary:
    case ItemType_base64Binary:
      return CopyOwned(other, &Value::m_pBinaryData);
    case ItemType_duration:
      return CopyOwned(other, &Value::m_pDateTimeSpan);
    case ItemType_yearMonth:
    case ItemType_monthDay:
    case ItemType_date:
    case ItemType_datetime:
    case ItemType_time:
      return CopyOwned(other, &Value::m_pDateTime);
    case ItemType_string:
      return CopyOwned(other, &Value::m_pString);
    case ItemType_decimal:
      return CopyOwned(other, &Value::m_pDecimal);
    case ItemType_integer:
      return CopyOwned(other, &Value::m_pBigInteger);
    case ItemType_XmlObjectBase:
      m_value = other.m_value;
      if (m_value.m_pXmlObject != nullptr) m_value.m_pXmlObject->AddRef();
      return;
    case ItemType_XmlCollection:
      m_value = other.m_value;
      if (m_value.m_pXmlCol != nullptr) m_value.m_pXmlCol->AddRef();
      return;
    default:
      if (FindTypeName(m_type) == nullptr) throw CQzException("Unknown Type");
      m_value = other.m_value;
  }
}

// --- State. ---

void QzVariant::Clear() {
  if (m_type == ItemType_None) return;
  m_isNil = false;
  if (detail::HasPayload(m_type)) ReleasePayload();
  m_type = ItemType_None;
}

// Meant: a number is left as it lies, so that a variant made nil still knows it.
void QzVariant::ReleasePayload() {
  switch (m_type) {
    case ItemType_hexBinary:
    case ItemType_base64Binary:
      return FreePayload(&Value::m_pBinaryData);
    case ItemType_duration:
      return FreePayload(&Value::m_pDateTimeSpan);
    case ItemType_yearMonth:
    case ItemType_monthDay:
    case ItemType_date:
    case ItemType_datetime:
    case ItemType_time:
      return FreePayload(&Value::m_pDateTime);
    case ItemType_string:
      return FreePayload(&Value::m_pString);
    case ItemType_decimal:
      return FreePayload(&Value::m_pDecimal);
    case ItemType_integer:
      return FreePayload(&Value::m_pBigInteger);
    case ItemType_XmlObjectBase:
      if (CXmlObjectBase* object = std::exchange(m_value.m_pXmlObject, nullptr)) object->Release();
      return;
    case ItemType_XmlCollection:
      if (CXmlObjectBase* object = std::exchange(m_value.m_pXmlCol, nullptr)) object->Release();
      return;
    default:
      return;
  }
}

void QzVariant::SetNil() {
  const ItemType type = m_type;
  Clear();
  m_type = type;
  m_isNil = true;
}

std::string QzVariant::GetType() const {
  const char* const name = FindTypeName(m_type);
  if (name == nullptr) throw CQzException(FormatString("Invalid Type %d", m_type));
  return name;
}

// --- Text. ---

// Null unless the value is a scalar, and not a real with a format.
char* QzVariant::WriteScalar(char* buffer, std::string_view format) const {
  switch (m_type) {
    case ItemType_i1:
      return detail::WriteInteger(buffer, m_value.m_i1);
    case ItemType_i2:
      return detail::WriteInteger(buffer, m_value.m_i2);
    case ItemType_i4:
      return detail::WriteInteger(buffer, m_value.m_i4);
    case ItemType_i8:
      return detail::WriteInteger(buffer, m_value.m_i8);
    case ItemType_ui1:
      return detail::WriteInteger(buffer, m_value.m_ui1);
    case ItemType_ui2:
      return detail::WriteInteger(buffer, m_value.m_ui2);
    case ItemType_ui4:
      return detail::WriteInteger(buffer, m_value.m_ui4);
    case ItemType_ui8:
      return detail::WriteInteger(buffer, m_value.m_ui8);
    case ItemType_r4:
      return format.empty() ? detail::WriteR4(buffer, m_value.m_r4) : nullptr;
    case ItemType_r8:
      return format.empty() ? detail::WriteR8(buffer, m_value.m_r8) : nullptr;
    case ItemType_year:
      return detail::WriteYear(buffer, m_value.m_ui2);
    case ItemType_month:
      return detail::WriteMonth(buffer, m_value.m_ui1);
    case ItemType_day:
      return detail::WriteDay(buffer, m_value.m_ui1);
    case ItemType_char:
      *buffer = m_value.m_char;
      return buffer + 1;
    case ItemType_boolean:
      return detail::WriteText(buffer, m_value.m_boolean != 0 ? "true" : "false");
    default:
      return nullptr;
  }
}

// The kinds that WriteScalar leaves.
void QzVariant::AppendOther(std::string_view format, std::string& out) const {
  switch (m_type) {
    case ItemType_hexBinary:
      if (const CBinaryData* data = FindBinaryData()) AppendWhole(data->GetAsHexString(), out);
      return;
    case ItemType_base64Binary:
      if (const CBinaryData* data = FindBinaryData()) AppendWhole(data->GetAsBase64(), out);
      return;
    case ItemType_r4:
      return detail::AppendR4(m_value.m_r4, format, out);
    case ItemType_r8:
      return detail::AppendR8(m_value.m_r8, format, out);
    case ItemType_duration:
      if (m_value.m_pDateTimeSpan != nullptr) out += m_value.m_pDateTimeSpan->ToString();
      return;
    case ItemType_yearMonth:
    case ItemType_monthDay:
    case ItemType_date:
    case ItemType_datetime:
    case ItemType_time:
      if (m_value.m_pDateTime != nullptr) out += m_value.m_pDateTime->ToString();
      return;
    case ItemType_string:
      out += GetStringReference();
      return;
    case ItemType_decimal:
      out += CConversions::decimalToString(GetDecimalReference(), std::string(format));
      return;
    case ItemType_integer:
      out += GetIntegerReference().ToString();
      return;
    default:
      throw CQzException(FormatString(Messages::kInvalidTypeToConvert, m_type));
  }
}

namespace detail {

void AppendText(const QzVariant& value, std::string_view format, std::string& out) {
  char buffer[kNumberSize];
  const char* const end = value.WriteScalar(buffer, format);
  if (end == nullptr) return value.AppendOther(format, out);
  out.append(buffer, static_cast<std::size_t>(end - buffer));
}

char* WriteShortText(const QzVariant& value, std::string_view format, char* buffer) {
  return value.WriteScalar(buffer, format);
}

}  // namespace detail

std::string QzVariant::ToString(const char* format) const {
  if (m_type == ItemType_i4) return detail::IntegerToString(m_value.m_i4);
  const std::string_view view = format == nullptr ? std::string_view() : format;
  char buffer[detail::kNumberSize];
  if (char* const end = WriteScalar(buffer, view)) return std::string(buffer, end);
  std::string text;
  AppendOther(view, text);
  return text;
}

void QzVariant::FromString(const std::string& value, ItemType type,
                           CWhitespaceUtils::WhitespaceRule rule) {
  switch (type) {
    case ItemType_i1:
      return SetI1(CConversions::i1FromString(value, rule));
    case ItemType_i2:
      return SetScalar(type, &Value::m_i2, CConversions::i2FromString(value, rule));
    case ItemType_i4:
      return SetScalar(type, &Value::m_i4, CConversions::i4FromString(value, rule));
    case ItemType_i8:
      return SetScalar(type, &Value::m_i8, CConversions::i8FromString(value, rule));
    case ItemType_ui1:
      return SetScalar(type, &Value::m_ui1, CConversions::ui1FromString(value, rule));
    case ItemType_ui2:
      return SetScalar(type, &Value::m_ui2, CConversions::ui2FromString(value, rule));
    case ItemType_ui4:
      return SetScalar(type, &Value::m_ui4, CConversions::ui4FromString(value, rule));
    case ItemType_ui8:
      return SetScalar(type, &Value::m_ui8, CConversions::ui8FromString(value, rule));
    case ItemType_r4:
      return SetScalar(type, &Value::m_r4, CConversions::r4FromString(value, rule));
    case ItemType_r8:
      return SetScalar(type, &Value::m_r8, CConversions::r8FromString(value, rule));
    case ItemType_year:
      return SetScalar(type, &Value::m_ui2, CConversions::yearFromString(value, rule));
    case ItemType_month:
      return SetScalar(type, &Value::m_ui1, CConversions::monthFromString(value, rule));
    case ItemType_day:
      return SetScalar(type, &Value::m_ui1, CConversions::dayFromString(value, rule));
    case ItemType_char:
      return SetScalar(type, &Value::m_char, CConversions::charFromString(value, rule));
    case ItemType_boolean:
      return SetBoolean(CConversions::booleanFromString(value, rule));
    default:
      return FromObjectString(value, type, rule);
  }
}

// As by CConversions. A number that is there already takes the digits into its own memory; a text
// that does not parse leaves it as it was.
template <typename T>
void QzVariant::ParseOwned(ItemType type, T* Value::*member, const std::string& value,
                           CWhitespaceUtils::WhitespaceRule rule) {
  std::string scratch;
  const char* const text = detail::RuledText(value, rule, scratch);
  if (!OwnsPayload(type, member)) return SetOwned(type, member, T(text));
  (m_value.*member)->Parse(text);
  m_isNil = false;
}

// The kinds that FromString leaves: apart, so that a number does not pay for their objects.
[[gnu::noinline]] void QzVariant::FromObjectString(const std::string& value, ItemType type,
                                                   CWhitespaceUtils::WhitespaceRule rule) {
  switch (type) {
    case ItemType_hexBinary:
      return SetOwned(type, &Value::m_pBinaryData, CConversions::hexBinaryFromString(value, rule));
    case ItemType_base64Binary:
      return SetOwned(type, &Value::m_pBinaryData,
                      CConversions::base64BinaryFromString(value, rule));
    case ItemType_duration:
      return SetOwned(type, &Value::m_pDateTimeSpan, CConversions::durationFromString(value, rule));
    case ItemType_yearMonth:
      return SetOwned(type, &Value::m_pDateTime, CConversions::yearMonthFromString(value, rule));
    case ItemType_monthDay:
      return SetOwned(type, &Value::m_pDateTime, CConversions::monthDayFromString(value, rule));
    case ItemType_date:
      return SetOwned(type, &Value::m_pDateTime, CConversions::dateFromString(value, rule));
    case ItemType_datetime:
      return SetOwned(type, &Value::m_pDateTime, CConversions::datetimeFromString(value, rule));
    case ItemType_time:
      return SetOwned(type, &Value::m_pDateTime, CConversions::timeFromString(value, rule));
    case ItemType_string:
      return SetString(CConversions::stringFromString(value, rule));
    case ItemType_decimal:
      return ParseOwned(type, &Value::m_pDecimal, value, rule);
    case ItemType_integer:
      return ParseOwned(type, &Value::m_pBigInteger, value, rule);
    default:
      throw CQzException(FormatString(Messages::kInvalidTypeToConvert, m_type));
  }
}

// --- Objects. ---

void QzVariant::SetXmlObject(CXmlObjectBase* value) {
  if (value != nullptr) value->AddRef();
  Clear();
  m_type = ItemType_XmlObjectBase;
  m_value.m_pXmlObject = value;
}

CSmartPtr<CXmlObjectBase> QzVariant::GetXmlObject() const {
  if (m_type == ItemType_XmlCollection) return CSmartPtr<CXmlObjectBase>(m_value.m_pXmlCol);
  QZ_ASSERT(m_type == ItemType_XmlObjectBase);
  const bool hasObject = m_type == ItemType_XmlObjectBase;
  return CSmartPtr<CXmlObjectBase>(hasObject ? m_value.m_pXmlObject : nullptr);
}

void QzVariant::SetXmlCollection(CXmlCollectionBase* value) {
  if (value != nullptr) value->AddRef();
  Clear();
  m_type = ItemType_XmlCollection;
  m_value.m_pXmlCol = value;
}

CSmartPtr<CXmlCollectionBase> QzVariant::GetXmlCollection() const {
  const bool hasCollection = m_type == ItemType_XmlCollection;
  QZ_ASSERT_TEXT(hasCollection && m_value.m_pXmlCol != nullptr,
                 "m_type == ItemType_XmlCollection && m_pXmlCol != 0");
  return CSmartPtr<CXmlCollectionBase>(hasCollection ? m_value.m_pXmlCol : nullptr);
}

}  // namespace QzXmlLib16
