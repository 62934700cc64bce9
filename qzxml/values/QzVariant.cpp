#include "qzxml/values/QzVariant.h"

#include <memory>
#include <utility>

#include "qzxml/collections/XmlCollectionBase.h"
#include "qzxml/platform/Assert.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/XmlObjectBase.h"
#include "qzxml/values/Conversions.h"
#include "qzxml/values/ConversionsDetail.h"
#include "qzxml/values/Messages.h"

// The kind decides which member of the union is in use. Whatever sets a kind whose payload is a
// pointer has the new payload ready before the old one goes, so that neither a failed allocation
// nor a payload that lives by the old one alone leaves a pointer to nothing.
//
// Without assertions a getter of the wrong kind still touches no memory but the variant's own: a
// pointer is only followed when the kind says that there is one.
namespace QzXmlLib16 {
namespace {

// Null for a kind without a name.
const char* FindTypeName(ItemType type) {
  switch (type) {
    case ItemType_hexBinary:
      return "hexBinary";
    case ItemType_base64Binary:
      return "base64Binary";
    case ItemType_i1:
      return "i1";
    case ItemType_i2:
      return "i2";
    case ItemType_i4:
      return "i4";
    case ItemType_i8:
      return "i8";
    case ItemType_ui1:
      return "ui1";
    case ItemType_ui2:
      return "ui2";
    case ItemType_ui4:
      return "ui4";
    case ItemType_ui8:
      return "ui8";
    case ItemType_r4:
      return "r4";
    case ItemType_r8:
      return "r8";
    case ItemType_year:
      return "year";
    case ItemType_month:
      return "month";
    case ItemType_day:
      return "day";
    case ItemType_char:
      return "char";
    case ItemType_string:
      return "string";
    case ItemType_boolean:
      return "boolean";
    default:
      return nullptr;
  }
}

// Whether the kind's payload is a pointer that has to be given up.
constexpr bool HasPayload(ItemType type) {
  return type == ItemType_hexBinary || type == ItemType_base64Binary || type == ItemType_string ||
         type == ItemType_XmlObjectBase || type == ItemType_XmlCollection;
}

const std::string& EmptyText() {
  static const std::string& s_empty = *new std::string;  // never destroyed
  return s_empty;
}

}  // namespace

// --- Copying. ---

QzVariant::QzVariant(const QzVariant& other) : QzVariant() { *this = other; }

QzVariant::QzVariant(QzVariant&& other) noexcept : QzVariant() { TakeOver(other); }

QzVariant::~QzVariant() { Clear(); }

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

void QzVariant::TakeOver(QzVariant& other) noexcept {
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
      if (other.m_value.m_pBinaryData == nullptr) return;
      m_value.m_pBinaryData = new CBinaryData(*other.m_value.m_pBinaryData);
      return;
    case ItemType_string:
      if (other.m_value.m_pString == nullptr) return;
      m_value.m_pString = new std::string(*other.m_value.m_pString);
      return;
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
  if (HasPayload(m_type)) ReleasePayload();
  m_type = ItemType_None;
}

// Meant: a number is left as it lies, so that a variant made nil still knows it.
void QzVariant::ReleasePayload() {
  switch (m_type) {
    case ItemType_hexBinary:
    case ItemType_base64Binary:
      delete std::exchange(m_value.m_pBinaryData, nullptr);
      return;
    case ItemType_string:
      if (!m_isLent) delete m_value.m_pString;
      m_value.m_pString = nullptr;
      m_isLent = false;
      return;
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

template <typename T>
void QzVariant::SetScalar(ItemType type, T Value::*member, T value) {
  if (HasPayload(m_type)) ReleasePayload();
  if (m_type != ItemType_None) m_isNil = false;
  m_type = type;
  m_value.*member = value;
}

void QzVariant::SetInvalid() {
  Clear();
  m_type = ItemType_None;
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
      if (const CBinaryData* data = FindBinaryData()) out += data->GetAsHexString();
      return;
    case ItemType_base64Binary:
      if (const CBinaryData* data = FindBinaryData()) out += data->GetAsBase64();
      return;
    case ItemType_r4:
      return detail::AppendR4(m_value.m_r4, format, out);
    case ItemType_r8:
      return detail::AppendR8(m_value.m_r8, format, out);
    case ItemType_string:
      out += GetStringReference();
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

}  // namespace detail

std::string QzVariant::ToString(const char* format) const {
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
    case ItemType_hexBinary:
      return SetBinaryData(type, CConversions::hexBinaryFromString(value, rule));
    case ItemType_base64Binary:
      return SetBinaryData(type, CConversions::base64BinaryFromString(value, rule));
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
    case ItemType_char:
      return SetScalar(type, &Value::m_char, CConversions::charFromString(value, rule));
    case ItemType_string:
      return SetString(CConversions::stringFromString(value, rule));
    case ItemType_boolean:
      return SetBoolean(CConversions::booleanFromString(value, rule));
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

// --- Binary data and text. ---

void QzVariant::SetBinaryData(ItemType type, CBinaryData value) {
  std::unique_ptr<CBinaryData> data = std::make_unique<CBinaryData>(std::move(value));
  Clear();
  m_type = type;
  m_value.m_pBinaryData = data.release();
}

// Null when there is none: of another kind, or nil.
const CBinaryData* QzVariant::FindBinaryData() const {
  const bool hasData = m_type == ItemType_hexBinary || m_type == ItemType_base64Binary;
  return hasData ? m_value.m_pBinaryData : nullptr;
}

void QzVariant::SetHexBinary(const CBinaryData& value) { SetBinaryData(ItemType_hexBinary, value); }

CBinaryData QzVariant::GetHexBinary() const {
  QZ_ASSERT(m_type == ItemType_hexBinary);
  const CBinaryData* const data = FindBinaryData();
  return data == nullptr ? CBinaryData() : *data;
}

void QzVariant::SetBase64Binary(const CBinaryData& value) {
  SetBinaryData(ItemType_base64Binary, value);
}

CBinaryData QzVariant::GetBase64Binary() const {
  QZ_ASSERT(m_type == ItemType_base64Binary);
  const CBinaryData* const data = FindBinaryData();
  return data == nullptr ? CBinaryData() : *data;
}

void QzVariant::SetString(std::string value) {
  if (m_type == ItemType_string && m_value.m_pString != nullptr && !m_isLent) {
    *m_value.m_pString = std::move(value);
    m_isNil = false;
    return;
  }
  std::unique_ptr<std::string> text = std::make_unique<std::string>(std::move(value));
  Clear();
  m_type = ItemType_string;
  m_value.m_pString = text.release();
}

std::string QzVariant::GetString() const { return GetStringReference(); }

const std::string& QzVariant::GetStringReference() const {
  const bool hasText = m_type == ItemType_string && m_value.m_pString != nullptr;
  QZ_ASSERT_TEXT(hasText, "m_type == ItemType_string && m_pString != 0");
  return hasText ? *m_value.m_pString : EmptyText();
}

void QzVariant::LendString(const std::string& value) {
  if (m_type == ItemType_string && m_value.m_pString == &value) return;
  Clear();
  m_type = ItemType_string;
  m_isLent = true;
  m_value.m_pString = const_cast<std::string*>(&value);  // never written through
}

std::string QzVariant::TakeString() {
  if (m_type != ItemType_string || m_value.m_pString == nullptr || m_isLent) return GetString();
  std::string text = std::move(*m_value.m_pString);
  Clear();
  return text;
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

void QzVariant::SetI4(std::int32_t value) { SetScalar(ItemType_i4, &Value::m_i4, value); }

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

void QzVariant::SetR8(double value) { SetScalar(ItemType_r8, &Value::m_r8, value); }

double QzVariant::GetR8() const {
  QZ_ASSERT(m_type == ItemType_r8);
  return m_value.m_r8;
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
