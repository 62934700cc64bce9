#include "qzxml/binding/SimpleTypeInfo.h"

#include <memory>
#include <string>

#include "qzxml/binding/DateForms.h"
#include "qzxml/platform/Assert.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/Messages.h"
#include "qzxml/values/QzVariant.h"

namespace QzXmlLib16 {

namespace {

CDateTime GetDateTime(const QzVariant& value) {
  switch (value.GetTypeAsEnum()) {
    case ItemType_yearMonth:
      return value.GetYearMonth();
    case ItemType_monthDay:
      return value.GetMonthDay();
    case ItemType_date:
      return value.GetDate();
    case ItemType_time:
      return value.GetTime();
    default:
      return value.GetDateTime();
  }
}

// The text of a value as XML Schema writes it. The library writes no time at all as "P".
std::string GetText(const QzVariant& value) {
  const std::string text = value.ToString(nullptr);
  const bool isNoTime = value.GetTypeAsEnum() == ItemType_duration && text.back() == 'P';
  return isNoTime ? "PT0S" : text;
}

// Conversions leave two things to whoever stores the value: a date of another form than that of its
// kind, and data whose base64 text was none.
void CheckForm(const char* memberName, const QzVariant& value) {
  const ItemType kind = value.GetTypeAsEnum();
  std::string text;
  if (detail::HoldsDateTime(kind)) {
    const CDateTime date = GetDateTime(value);
    if (date.GetType() == detail::DateFormOf(kind)) return;
    text = date.ToString();
  } else if (!value.GetBase64Binary().IsRefusedBase64()) {
    return;
  }
  throw CQzException(FormatString(Messages::kInvalidTextValue, memberName, text.c_str()));
}

// "-0" is the value 0, but the library's comparisons find it below; nothing for any other value.
QzVariant ZeroWithoutSign(const QzVariant& value) {
  QzVariant zero;
  const ItemType kind = value.GetTypeAsEnum();
  if (kind == ItemType_integer) {
    if (value.GetInteger().ToString() == "0") zero.SetInteger(CBigInteger(0));
  } else if (kind == ItemType_decimal) {
    const std::string text = value.ToString(nullptr);
    if (text == "0" || text == "-0") zero.SetDecimal(CDecimal(0));
  }
  return zero;
}

// The failure of the kind's own facet test.
[[noreturn]] void ThrowInvalidValue(const char* memberName, const QzVariant& value,
                                    const std::string& text) {
  const auto throwNumber = [memberName](std::int32_t number) {
    throw CQzException(FormatString(Messages::kInvalidNumberValue, memberName, number));
  };
  switch (value.GetTypeAsEnum()) {
    case ItemType_i1:
      throwNumber(static_cast<signed char>(value.GetI1()));
      break;
    case ItemType_i2:
      throwNumber(value.GetI2());
      break;
    case ItemType_i4:
      throwNumber(value.GetI4());
      break;
    case ItemType_ui1:
      throwNumber(value.GetUI1());
      break;
    case ItemType_ui2:
      throwNumber(value.GetUI2());
      break;
    case ItemType_ui4:
      throwNumber(static_cast<std::int32_t>(value.GetUI4()));
      break;
    case ItemType_year:
      throwNumber(value.GetYear());
      break;
    case ItemType_month:
      throwNumber(value.GetMonth());
      break;
    case ItemType_day:
      throwNumber(value.GetDay());
      break;
    case ItemType_r4:
      throw CQzException(FormatString(Messages::kInvalidRealValue, memberName,
                                      static_cast<double>(value.GetR4())));
    case ItemType_r8:
      throw CQzException(FormatString(Messages::kInvalidRealValue, memberName, value.GetR8()));
    default:
      break;
  }
  throw CQzException(FormatString(Messages::kInvalidTextValue, memberName, text.c_str()));
}

}  // namespace

const CPrimitiveRestrictions& CSimpleTypeInfo::GetRestrictions() const {
  const CPrimitiveRestrictions* found = m_restrictions.load(std::memory_order_acquire);
  if (found == nullptr) {
    auto made = std::make_unique<CPrimitiveRestrictions>(
        m_facets.m_pattern, m_facets.m_minLength, m_facets.m_maxLength, m_facets.m_minInclusive,
        m_facets.m_maxInclusive, m_facets.m_minExclusive, m_facets.m_maxExclusive,
        m_facets.m_length, m_facets.m_totalDigits, m_facets.m_fractionDigits);
    // Of two threads that come here at once the second takes what the first has stored.
    if (m_restrictions.compare_exchange_strong(found, made.get(), std::memory_order_acq_rel)) {
      found = made.release();
    }
  }
  return *found;
}

void CSimpleTypeInfo::CheckValue(const char* memberName, const QzVariant& value) const {
  if (!value.IsValid() || value.IsNil()) return;
  QZ_ASSERT(value.GetTypeAsEnum() == m_kind);
  if (IsEnumeration()) {
    m_enumToString(value.GetI4());
    return;
  }
  if (HasForm(m_kind)) CheckForm(memberName, value);
  if (m_hasFacets) {
    const QzVariant zero = ZeroWithoutSign(value);
    CheckPrimitiveRestriction(memberName, zero.IsValid() ? zero : value, m_kind, GetRestrictions());
  }
  if (m_rules != nullptr) CheckRules(memberName, value);
}

void CSimpleTypeInfo::CheckRules(const char* memberName, const QzVariant& value) const {
  if (m_kind == ItemType_string) return m_rules->Check(memberName, value.GetStringReference());
  const std::string text = GetText(value);
  if (!m_rules->Accepts(text)) ThrowInvalidValue(memberName, value, text);
}

bool CSimpleTypeInfo::Accepts(std::string_view text) const {
  const std::string whole(text);
  try {
    if (IsEnumeration()) {
      m_stringToEnum(whole.c_str());
      return true;
    }
    QzVariant value;
    value.FromString(whole, m_kind, m_whitespace);
    Check("", value);
    return true;
  } catch (const CQzException&) {
    return false;
  }
}

}  // namespace QzXmlLib16
