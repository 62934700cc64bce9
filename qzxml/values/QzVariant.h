#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "qzxml/platform/Export.h"
#include "qzxml/runtime/SmartPtr.h"
#include "qzxml/values/BigInteger.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/values/DateTime.h"
#include "qzxml/values/DateTimeSpan.h"
#include "qzxml/values/Decimal.h"
#include "qzxml/values/ItemType.h"
#include "qzxml/values/WhitespaceUtils.h"

namespace QzXmlLib16 {

class CXmlCollectionBase;
class CXmlObjectBase;
struct QzVariant;

namespace detail {

// Appends what value.ToString(format) returns; format is empty for none. A caller that keeps out
// pays no allocation for numbers.
void AppendText(const QzVariant& value, std::string_view format, std::string& out);

// Writes the same into a buffer of kNumberSize (ConversionsDetail.h) and returns its end, if the
// value is a scalar and, with a format, no real; returns null for any other value.
char* WriteShortText(const QzVariant& value, std::string_view format, char* buffer);

}  // namespace detail

// One value of any primitive kind, or one counted object: what passes between the properties of a
// generated class and its metadata.
//
//   QzVariant value;
//   value.FromString(" 42 ", ItemType_i4, CWhitespaceUtils::WhitespaceRule_Collapse);
//   object.SetQuantity(value.GetI4());
//   value.SetR8(0.5);
//   text = value.ToString("%.2f");  // "0.50"
//
// It is invalid (kind 0, not nil), holds a value (kind 1 to 28, not nil), or is nil, where the kind
// tells what it is nil of. Text, binary data, dates and numbers of any size are owned (but see
// LendString), objects are held by one reference. A plain value: copy it freely; one thread at a
// time.
struct QZXML_API QzVariant {
 public:
  QzVariant() noexcept
      : m_isNil(false), m_isLent(false), m_isGiven(false), m_type(ItemType_None), m_value() {}
  QzVariant(const QzVariant& other);
  QzVariant(QzVariant&& other) noexcept;  // leaves the other invalid
  virtual ~QzVariant() {
    if (detail::HasPayload(m_type) && !m_isLent) ReleasePayload();
  }

  // Throws CQzException "Unknown Type" when the other's kind has no meaning; this one is then empty
  // but has the other's kind. Assigned to itself it stays as it is.
  const QzVariant& operator=(const QzVariant& other);
  const QzVariant& operator=(QzVariant&& other) noexcept;  // leaves the other invalid

  // --- State. ---
  // Makes it invalid. Meant: on kind 0 nothing happens, the nil flag included. A variant that was
  // made nil while invalid thus stays nil through setters, Clear and SetInvalid until it is
  // assigned to.
  void Clear();
  bool IsValid() const { return m_type != ItemType_None || m_isNil; }
  void SetInvalid() { Clear(); }
  bool IsNil() const { return m_isNil; }
  void SetNil();  // gives the payload up and keeps the kind

  // The name of the kind, "i4". Throws CQzException "Invalid Type %d" for 0, 27 and 28.
  std::string GetType() const;
  ItemType GetTypeAsEnum() const { return m_type; }

  // --- Text, by the rules of CConversions. ---
  // The format serves r4, r8 and decimal and may be null. The nil flag is not looked at: test IsNil
  // first. Throws CQzException "Invalid Type %d to convert to string" for a kind without a text.
  std::string ToString(const char* format) const;

  // Reads a value of the kind type. What the conversion throws leaves this variant as it was.
  // Throws CQzException "Invalid Type %d to convert to string" for a type without a text. Meant:
  // the number is that of the kind held, not that of the argument; it is the wording in use.
  void FromString(const std::string& value, ItemType type, CWhitespaceUtils::WhitespaceRule rule);

  // --- Objects. The pointer may be null; else the variant holds one reference. ---
  void SetXmlObject(CXmlObjectBase* value);
  CSmartPtr<CXmlObjectBase> GetXmlObject() const;  // of a collection too
  void SetXmlCollection(CXmlCollectionBase* value);
  CSmartPtr<CXmlCollectionBase> GetXmlCollection() const;

  // --- Values. A setter makes the variant hold its kind. A getter asserts "m_type == ItemType_i1"
  // with its own kind; what it returns otherwise has no meaning. ---
  void SetHexBinary(const CBinaryData& value);
  CBinaryData GetHexBinary() const;
  void SetBase64Binary(const CBinaryData& value);
  CBinaryData GetBase64Binary() const;
  void SetI1(char value);
  char GetI1() const;
  void SetI2(short value);
  short GetI2() const;
  void SetI4(std::int32_t value) { SetScalar(ItemType_i4, &Value::m_i4, value); }
  std::int32_t GetI4() const;
  void SetI8(std::int64_t value);
  std::int64_t GetI8() const;
  void SetUI1(unsigned char value);
  unsigned char GetUI1() const;
  void SetUI2(unsigned short value);
  unsigned short GetUI2() const;
  void SetUI4(std::uint32_t value);
  std::uint32_t GetUI4() const;
  void SetUI8(std::uint64_t value);
  std::uint64_t GetUI8() const;
  void SetR4(float value);
  float GetR4() const;
  void SetR8(double value) { SetScalar(ItemType_r8, &Value::m_r8, value); }
  double GetR8() const;
  void SetDuration(const CDateTimeSpan& value);
  CDateTimeSpan GetDuration() const;
  void SetYearMonth(const CDateTime& value);
  CDateTime GetYearMonth() const;
  void SetMonthDay(const CDateTime& value);
  CDateTime GetMonthDay() const;
  void SetYear(unsigned short value);
  unsigned short GetYear() const;
  void SetMonth(unsigned char value);
  unsigned char GetMonth() const;
  void SetDay(unsigned char value);
  unsigned char GetDay() const;
  void SetDate(const CDateTime& value);
  CDateTime GetDate() const;
  void SetDateTime(const CDateTime& value);
  CDateTime GetDateTime() const;
  void SetTime(const CDateTime& value);
  CDateTime GetTime() const;
  void SetChar(char value);
  char GetChar() const;
  void SetString(std::string value);
  std::string GetString() const;
  void SetBoolean(bool value);
  bool GetBoolean() const;
  void SetDecimal(const CDecimal& value);
  CDecimal GetDecimal() const;
  void SetInteger(const CBigInteger& value);
  CBigInteger GetInteger() const;

  // As GetString, GetDecimal and GetInteger, without the copy: valid until this variant changes.
  const std::string& GetStringReference() const {
    const bool hasText = m_type == ItemType_string && m_value.m_pString != nullptr;
    return hasText ? *m_value.m_pString : RefuseString();
  }
  const CDecimal& GetDecimalReference() const;
  const CBigInteger& GetIntegerReference() const;

  // As SetString, without the copy: the text stays the caller's and has to live, unchanged, for as
  // long as this variant holds it. A copy of the variant has a text of its own. For properties,
  // which outlive the variants that carry them.
  void LendString(const std::string& value) {
    if (m_type != ItemType_None) return LendStringInstead(value);
    m_type = ItemType_string;
    m_isLent = true;
    m_value.m_pString = const_cast<std::string*>(&value);  // never written through
  }
  // As GetString, and gives the text up where it is this variant's own: this one is invalid then.
  std::string TakeString();
  // As LendString, but TakeString, or a variant that this is moved to, may take the text itself.
  void GiveString(std::string& value);

  // The same for the other kinds whose values are objects. The kind of a CDateTime is one of those
  // that hold one: asserts "kind holds a CDateTime", and the variant is invalid otherwise.
  void LendDuration(const CDateTimeSpan& value);
  void LendDateTime(ItemType kind, const CDateTime& value);
  void LendDecimal(const CDecimal& value);
  CDecimal TakeDecimal();
  void LendInteger(const CBigInteger& value);
  CBigInteger TakeInteger();

 private:
  friend struct QzVariantTestAccess;
  friend void detail::AppendText(const QzVariant& value, std::string_view format, std::string& out);
  friend char* detail::WriteShortText(const QzVariant& value, std::string_view format,
                                      char* buffer);

  // One machine word. The member in use follows from the kind; zero is a null pointer of any kind.
  union Value {
    std::uint64_t m_ui8;
    std::int64_t m_i8;
    std::uint32_t m_ui4;
    std::int32_t m_i4;
    std::uint16_t m_ui2;  // years too
    std::int16_t m_i2;
    std::uint8_t m_ui1;  // months and days too
    std::int8_t m_i1;
    char m_char;
    std::uint8_t m_boolean;
    float m_r4;
    double m_r8;
    std::string* m_pString;
    CBinaryData* m_pBinaryData;
    CDateTime* m_pDateTime;
    CDateTimeSpan* m_pDateTimeSpan;
    CDecimal* m_pDecimal;
    CBigInteger* m_pBigInteger;
    CXmlObjectBase* m_pXmlObject;
    CXmlCollectionBase* m_pXmlCol;
  };

  void ReleasePayload();
  static const std::string& RefuseString();  // what GetStringReference does when there is none
  void LendStringInstead(const std::string& value);
  void CopyPayload(const QzVariant& other);
  void TakeOver(QzVariant& other) noexcept;
  template <typename T>
  void SetScalar(ItemType type, T Value::*member, T value) {
    if (detail::HasPayload(m_type)) ReleasePayload();
    if (m_type != ItemType_None) m_isNil = false;
    m_type = type;
    m_value.*member = value;
  }
  template <typename T>
  bool OwnsPayload(ItemType type, T* Value::*member) const;
  template <typename T>
  void SetOwned(ItemType type, T* Value::*member, T value);
  template <typename T>
  void ParseOwned(ItemType type, T* Value::*member, const std::string& value,
                  CWhitespaceUtils::WhitespaceRule rule);
  template <typename T>
  void LendPayload(ItemType type, T* Value::*member, const T& value);
  template <typename T>
  T TakePayload(T* Value::*member);
  template <typename T>
  void FreePayload(T* Value::*member);
  template <typename T>
  void CopyOwned(const QzVariant& other, T* Value::*member);
  const CBinaryData* FindBinaryData() const;
  const CDateTime* FindDateTime() const;
  char* WriteScalar(char* buffer, std::string_view format) const;
  void FromObjectString(const std::string& value, ItemType type,
                        CWhitespaceUtils::WhitespaceRule rule);
  void AppendOther(std::string_view format, std::string& out) const;

  bool m_isNil;
  bool m_isLent;   // what the pointer of the payload points to is somebody else's
  bool m_isGiven;  // so it is, and may be taken
  ItemType m_type;
  Value m_value;
};

}  // namespace QzXmlLib16
