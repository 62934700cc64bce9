#include "qzxml/serialization/PrimitiveRestrictions.h"

#include <cstddef>
#include <memory>
#include <utility>

#include "qzxml/runtime/Encoder.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/serialization/Messages.h"
#include "qzxml/serialization/Pattern.h"
#include "qzxml/values/BigInteger.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/values/Conversions.h"
#include "qzxml/values/DateTime.h"
#include "qzxml/values/DateTimeSpan.h"
#include "qzxml/values/Decimal.h"
#include "qzxml/values/QzVariant.h"

// A check is a chain of facets, each read and tested before the next is read, so that a bound that
// does not parse is only met by a value that keeps the bounds ahead of it.
namespace QzXmlLib16 {

// --- The facets. ---

namespace {

std::string TextOf(const char* facet) { return facet == nullptr ? std::string() : facet; }

const detail::PatternHandle* CopyHandle(const std::atomic<const detail::PatternHandle*>& handle) {
  const detail::PatternHandle* const found = handle.load(std::memory_order_acquire);
  return found == nullptr ? nullptr : new detail::PatternHandle(*found);
}

}  // namespace

CPrimitiveRestrictions::CPrimitiveRestrictions()
    : CPrimitiveRestrictions(nullptr, -1, -1, nullptr, nullptr, nullptr, nullptr, -1, -1, -1) {}

CPrimitiveRestrictions::CPrimitiveRestrictions(const char* pattern, std::int32_t minLength,
                                               std::int32_t maxLength, const char* minInclusive,
                                               const char* maxInclusive, const char* minExclusive,
                                               const char* maxExclusive, std::int32_t length,
                                               std::int32_t totalDigits,
                                               std::int32_t fractionDigits)
    : m_pattern(TextOf(pattern)),
      m_minLength(minLength),
      m_maxLength(maxLength),
      m_minInclusive(TextOf(minInclusive)),
      m_maxInclusive(TextOf(maxInclusive)),
      m_minExclusive(TextOf(minExclusive)),
      m_maxExclusive(TextOf(maxExclusive)),
      m_length(length),
      m_totalDigits(totalDigits),
      m_fractionDigits(fractionDigits),
      m_compiled(nullptr) {}

CPrimitiveRestrictions::CPrimitiveRestrictions(const CPrimitiveRestrictions& other)
    : m_pattern(other.m_pattern),
      m_minLength(other.m_minLength),
      m_maxLength(other.m_maxLength),
      m_minInclusive(other.m_minInclusive),
      m_maxInclusive(other.m_maxInclusive),
      m_minExclusive(other.m_minExclusive),
      m_maxExclusive(other.m_maxExclusive),
      m_length(other.m_length),
      m_totalDigits(other.m_totalDigits),
      m_fractionDigits(other.m_fractionDigits),
      m_compiled(CopyHandle(other.m_compiled)) {}

CPrimitiveRestrictions& CPrimitiveRestrictions::operator=(const CPrimitiveRestrictions& other) {
  if (this == &other) return *this;
  delete m_compiled.exchange(nullptr, std::memory_order_acq_rel);
  m_pattern = other.m_pattern;
  m_minLength = other.m_minLength;
  m_maxLength = other.m_maxLength;
  m_minInclusive = other.m_minInclusive;
  m_maxInclusive = other.m_maxInclusive;
  m_minExclusive = other.m_minExclusive;
  m_maxExclusive = other.m_maxExclusive;
  m_length = other.m_length;
  m_totalDigits = other.m_totalDigits;
  m_fractionDigits = other.m_fractionDigits;
  m_compiled.store(CopyHandle(other.m_compiled), std::memory_order_release);
  return *this;
}

CPrimitiveRestrictions::~CPrimitiveRestrictions() {
  delete m_compiled.load(std::memory_order_acquire);
}

bool CPrimitiveRestrictions::HasFacets() const {
  return !m_pattern.empty() || m_minLength >= 0 || m_maxLength >= 0 || !m_minInclusive.empty() ||
         !m_maxInclusive.empty() || !m_minExclusive.empty() || !m_maxExclusive.empty() ||
         m_length >= 0 || m_totalDigits >= 0 || m_fractionDigits >= 0;
}

const detail::CPattern& CPrimitiveRestrictions::FindCompiled() const {
  const detail::PatternHandle* found = m_compiled.load(std::memory_order_acquire);
  if (found == nullptr) {
    auto handle = std::make_unique<detail::PatternHandle>();
    handle->pattern = detail::FindPattern(m_pattern);
    // Of two threads that come here at once the second takes what the first has stored.
    if (m_compiled.compare_exchange_strong(found, handle.get(), std::memory_order_acq_rel)) {
      found = handle.release();
    }
  }
  return *found->pattern;
}

bool CPrimitiveRestrictions::MatchesPattern(const std::string& value) const {
  if (m_pattern.empty()) return true;
  if (detail::IsLocalUtf8()) return FindCompiled().Matches(value);
  const CBinaryData pattern = LocalToUtf8(m_pattern.c_str());
  std::string text;
  text.assign(pattern.GetData(), pattern.GetData() + pattern.GetLength());
  return MatchesRegularExpression(text, value);
}

bool MatchesRegularExpression(const std::string& pattern, const std::string& value) {
  return detail::FindPattern(pattern)->Matches(value);
}

namespace {

// --- Single facets. Each answers whether the value keeps it. ---

using Rule = CWhitespaceUtils::WhitespaceRule;

template <typename T>
using Parse = T (*)(const std::string&, Rule);

template <typename T, typename Compare>
bool KeepsBound(const T& value, const std::string& facet, Parse<T> parse, Compare compare) {
  return facet.empty() || compare(value, parse(facet, CWhitespaceUtils::WhitespaceRule_Collapse));
}

// Written as what must hold, so that a NaN fails every bound that is present.
template <typename T>
bool KeepsBounds(const T& value, const CPrimitiveRestrictions& facets, Parse<T> parse) {
  const auto isNotBelow = [](const T& a, const T& b) { return a >= b; };
  const auto isNotAbove = [](const T& a, const T& b) { return a <= b; };
  const auto isAbove = [](const T& a, const T& b) { return a > b; };
  const auto isBelow = [](const T& a, const T& b) { return a < b; };
  return KeepsBound(value, facets.GetMinInclusive(), parse, isNotBelow) &&
         KeepsBound(value, facets.GetMaxInclusive(), parse, isNotAbove) &&
         KeepsBound(value, facets.GetMinExclusive(), parse, isAbove) &&
         KeepsBound(value, facets.GetMaxExclusive(), parse, isBelow);
}

// The bounds of dates and durations. Meant: what can not be compared keeps every bound.
template <typename T>
bool KeepsPartialBounds(const T& value, const CPrimitiveRestrictions& facets, Parse<T> parse) {
  const auto isNotBelow = [](const T& a, const T& b) {
    return a.CompareTo(b) != CDateTime::dtc_less;
  };
  const auto isNotAbove = [](const T& a, const T& b) {
    return a.CompareTo(b) != CDateTime::dtc_greater;
  };
  const auto isAbove = [](const T& a, const T& b) {
    const CDateTime::DTCompareResult result = a.CompareTo(b);
    return result == CDateTime::dtc_greater || result == CDateTime::dtc_indeterminate;
  };
  const auto isBelow = [](const T& a, const T& b) {
    const CDateTime::DTCompareResult result = a.CompareTo(b);
    return result == CDateTime::dtc_less || result == CDateTime::dtc_indeterminate;
  };
  return KeepsBound(value, facets.GetMinInclusive(), parse, isNotBelow) &&
         KeepsBound(value, facets.GetMaxInclusive(), parse, isNotAbove) &&
         KeepsBound(value, facets.GetMinExclusive(), parse, isAbove) &&
         KeepsBound(value, facets.GetMaxExclusive(), parse, isBelow);
}

// Meant: the minus sign of a number counts as one of its digits.
bool KeepsTotalDigits(const std::string& number, const CPrimitiveRestrictions& facets) {
  return number.size() <= static_cast<std::size_t>(facets.GetTotalDigits());
}

template <typename T>
bool KeepsNumberFacets(T value, const CPrimitiveRestrictions& facets, Parse<T> parse,
                       std::string (*toString)(T)) {
  return KeepsBounds(value, facets, parse) &&
         (facets.GetTotalDigits() < 0 || KeepsTotalDigits(toString(value), facets));
}

// Meant: a fraction counts with the zeros behind the point, and a part that is zero counts nothing.
bool KeepsDecimalDigits(const CDecimal& value, const CPrimitiveRestrictions& facets) {
  const std::int32_t most = facets.GetTotalDigits();
  const std::int32_t mostBehindPoint = facets.GetFractionDigits();
  if (most < 0 && mostBehindPoint < 0) return true;
  const CBigInteger zero;
  const CBigInteger whole = value.GetIntegerPart().GetAbs();
  const bool hasFraction = value.GetFractionPart() != zero;
  const auto behindPoint = static_cast<std::size_t>(hasFraction ? value.GetFractionDivider() : 0);
  const std::size_t aheadOfPoint = whole == zero ? 0 : whole.ToString().size();
  return (most < 0 || aheadOfPoint + behindPoint <= static_cast<std::size_t>(most)) &&
         (mostBehindPoint < 0 || behindPoint <= static_cast<std::size_t>(mostBehindPoint));
}

bool KeepsLengths(std::size_t length, const CPrimitiveRestrictions& facets) {
  const std::int32_t least = facets.GetMinLength();
  const std::int32_t most = facets.GetMaxLength();
  const std::int32_t exact = facets.GetLength();
  return (least < 0 || length >= static_cast<std::size_t>(least)) &&
         (most < 0 || length <= static_cast<std::size_t>(most)) &&
         (exact < 0 || length == static_cast<std::size_t>(exact));
}

bool KeepsPattern(const char* name, const std::string& value,
                  const CPrimitiveRestrictions& facets) {
  try {
    return facets.MatchesPattern(value);
  } catch (const CQzException& e) {
    throw CQzException(FormatString("%s\nInvalid Value for %s [%s].", e.GetMessage().c_str(), name,
                                    value.c_str()));
  }
}

// --- Failures. ---

[[noreturn]] void ThrowInvalidText(const char* name, const std::string& value) {
  throw CQzException(FormatString(Messages::kInvalidTextValue, name, value.c_str()));
}

// Numbers up to 32 bits. Meant: unsigned ones too are shown with their sign, 4294967295 as -1.
template <typename T>
void CheckSmallNumber(const char* name, T value, const CPrimitiveRestrictions& facets,
                      Parse<T> parse, std::string (*toString)(T), std::int32_t shown) {
  if (KeepsNumberFacets(value, facets, parse, toString)) return;
  throw CQzException(FormatString(Messages::kInvalidNumberValue, name, shown));
}

template <typename T>
void CheckLargeNumber(const char* name, T value, const CPrimitiveRestrictions& facets,
                      Parse<T> parse, std::string (*toString)(T)) {
  if (KeepsNumberFacets(value, facets, parse, toString)) return;
  ThrowInvalidText(name, toString(value));
}

// Dates that are plain numbers.
template <typename T>
void CheckDateNumber(const char* name, T value, const CPrimitiveRestrictions& facets,
                     Parse<T> parse) {
  if (KeepsBounds(value, facets, parse)) return;
  throw CQzException(
      FormatString(Messages::kInvalidNumberValue, name, static_cast<std::int32_t>(value)));
}

// Dates and durations.
template <typename T>
void CheckPartiallyOrdered(const char* name, const T& value, const CPrimitiveRestrictions& facets,
                           Parse<T> parse) {
  if (!KeepsPartialBounds(value, facets, parse)) ThrowInvalidText(name, value.ToString());
}

template <typename T>
void CheckReal(const char* name, T value, const CPrimitiveRestrictions& facets, Parse<T> parse) {
  if (KeepsBounds(value, facets, parse)) return;
  throw CQzException(FormatString(Messages::kInvalidRealValue, name, static_cast<double>(value)));
}

}  // namespace

// --- The checks of the kinds. ---

namespace detail {

void CheckHexBinary(const char* name, const CBinaryData& value, const Restrictions& restrictions) {
  if (!KeepsLengths(value.GetLength(), restrictions)) {
    ThrowInvalidText(name, value.GetAsHexString());
  }
}

void CheckBase64Binary(const char* name, const CBinaryData& value,
                       const Restrictions& restrictions) {
  if (!KeepsLengths(value.GetLength(), restrictions)) ThrowInvalidText(name, value.GetAsBase64());
}

void CheckI1(const char* name, char value, const Restrictions& restrictions) {
  // By its number: the bounds of i1 are signed also where char is not.
  const auto parse = [](const std::string& text, Rule rule) {
    return static_cast<signed char>(CConversions::i1FromString(text, rule));
  };
  const auto toString = [](signed char number) {
    return CConversions::i1ToString(static_cast<char>(number));
  };
  const signed char number = static_cast<signed char>(value);
  CheckSmallNumber<signed char>(name, number, restrictions, parse, toString, number);
}

void CheckI2(const char* name, short value, const Restrictions& restrictions) {
  CheckSmallNumber(name, value, restrictions, &CConversions::i2FromString,
                   &CConversions::i2ToString, value);
}

void CheckI4(const char* name, std::int32_t value, const Restrictions& restrictions) {
  CheckSmallNumber(name, value, restrictions, &CConversions::i4FromString,
                   &CConversions::i4ToString, value);
}

void CheckI8(const char* name, std::int64_t value, const Restrictions& restrictions) {
  CheckLargeNumber(name, value, restrictions, &CConversions::i8FromString,
                   &CConversions::i8ToString);
}

void CheckUI1(const char* name, unsigned char value, const Restrictions& restrictions) {
  CheckSmallNumber(name, value, restrictions, &CConversions::ui1FromString,
                   &CConversions::ui1ToString, value);
}

void CheckUI2(const char* name, unsigned short value, const Restrictions& restrictions) {
  CheckSmallNumber(name, value, restrictions, &CConversions::ui2FromString,
                   &CConversions::ui2ToString, value);
}

void CheckUI4(const char* name, std::uint32_t value, const Restrictions& restrictions) {
  CheckSmallNumber(name, value, restrictions, &CConversions::ui4FromString,
                   &CConversions::ui4ToString, static_cast<std::int32_t>(value));
}

void CheckUI8(const char* name, std::uint64_t value, const Restrictions& restrictions) {
  CheckLargeNumber(name, value, restrictions, &CConversions::ui8FromString,
                   &CConversions::ui8ToString);
}

void CheckR4(const char* name, float value, const Restrictions& restrictions) {
  CheckReal(name, value, restrictions, &CConversions::r4FromString);
}

void CheckR8(const char* name, double value, const Restrictions& restrictions) {
  CheckReal(name, value, restrictions, &CConversions::r8FromString);
}

void CheckDuration(const char* name, const CDateTimeSpan& value, const Restrictions& restrictions) {
  CheckPartiallyOrdered(name, value, restrictions, &CConversions::durationFromString);
}

void CheckYearMonth(const char* name, const CDateTime& value, const Restrictions& restrictions) {
  CheckPartiallyOrdered(name, value, restrictions, &CConversions::yearMonthFromString);
}

void CheckMonthDay(const char* name, const CDateTime& value, const Restrictions& restrictions) {
  CheckPartiallyOrdered(name, value, restrictions, &CConversions::monthDayFromString);
}

void CheckYear(const char* name, unsigned short value, const Restrictions& restrictions) {
  CheckDateNumber(name, value, restrictions, &CConversions::yearFromString);
}

void CheckMonth(const char* name, unsigned char value, const Restrictions& restrictions) {
  CheckDateNumber(name, value, restrictions, &CConversions::monthFromString);
}

void CheckDay(const char* name, unsigned char value, const Restrictions& restrictions) {
  CheckDateNumber(name, value, restrictions, &CConversions::dayFromString);
}

void CheckDate(const char* name, const CDateTime& value, const Restrictions& restrictions) {
  CheckPartiallyOrdered(name, value, restrictions, &CConversions::dateFromString);
}

void CheckDateTime(const char* name, const CDateTime& value, const Restrictions& restrictions) {
  CheckPartiallyOrdered(name, value, restrictions, &CConversions::datetimeFromString);
}

void CheckTime(const char* name, const CDateTime& value, const Restrictions& restrictions) {
  CheckPartiallyOrdered(name, value, restrictions, &CConversions::timeFromString);
}

void CheckString(const char* name, const std::string& value, const Restrictions& restrictions) {
  if (!KeepsLengths(value.size(), restrictions) || !KeepsPattern(name, value, restrictions)) {
    ThrowInvalidText(name, value);
  }
}

void CheckBoolean(const char*, bool, const Restrictions&) {}

void CheckDecimal(const char* name, const CDecimal& value, const Restrictions& restrictions) {
  if (!KeepsBounds(value, restrictions, &CConversions::decimalFromString) ||
      !KeepsDecimalDigits(value, restrictions)) {
    ThrowInvalidText(name, value.ToString());
  }
}

void CheckInteger(const char* name, const CBigInteger& value, const Restrictions& restrictions) {
  if (!KeepsBounds(value, restrictions, &CConversions::integerFromString) ||
      (restrictions.GetTotalDigits() >= 0 && !KeepsTotalDigits(value.ToString(), restrictions))) {
    ThrowInvalidText(name, value.ToString());
  }
}

}  // namespace detail

void CheckPrimitiveRestriction(const char* name, const QzVariant& value, ItemType type,
                               const CPrimitiveRestrictions& restrictions) {
  switch (type) {
    case ItemType_hexBinary:
      return detail::CheckHexBinary(name, value.GetHexBinary(), restrictions);
    case ItemType_base64Binary:
      return detail::CheckBase64Binary(name, value.GetBase64Binary(), restrictions);
    case ItemType_i1:
      return detail::CheckI1(name, value.GetI1(), restrictions);
    case ItemType_i2:
      return detail::CheckI2(name, value.GetI2(), restrictions);
    case ItemType_i4:
      return detail::CheckI4(name, value.GetI4(), restrictions);
    case ItemType_i8:
      return detail::CheckI8(name, value.GetI8(), restrictions);
    case ItemType_ui1:
      return detail::CheckUI1(name, value.GetUI1(), restrictions);
    case ItemType_ui2:
      return detail::CheckUI2(name, value.GetUI2(), restrictions);
    case ItemType_ui4:
      return detail::CheckUI4(name, value.GetUI4(), restrictions);
    case ItemType_ui8:
      return detail::CheckUI8(name, value.GetUI8(), restrictions);
    case ItemType_r4:
      return detail::CheckR4(name, value.GetR4(), restrictions);
    case ItemType_r8:
      return detail::CheckR8(name, value.GetR8(), restrictions);
    case ItemType_duration:
      return detail::CheckDuration(name, value.GetDuration(), restrictions);
    case ItemType_yearMonth:
      return detail::CheckYearMonth(name, value.GetYearMonth(), restrictions);
    case ItemType_monthDay:
      return detail::CheckMonthDay(name, value.GetMonthDay(), restrictions);
    case ItemType_year:
      return detail::CheckYear(name, value.GetYear(), restrictions);
    case ItemType_month:
      return detail::CheckMonth(name, value.GetMonth(), restrictions);
    case ItemType_day:
      return detail::CheckDay(name, value.GetDay(), restrictions);
    case ItemType_date:
      return detail::CheckDate(name, value.GetDate(), restrictions);
    case ItemType_datetime:
      return detail::CheckDateTime(name, value.GetDateTime(), restrictions);
    case ItemType_time:
      return detail::CheckTime(name, value.GetTime(), restrictions);
    case ItemType_string:
      return detail::CheckString(name, value.GetStringReference(), restrictions);
    case ItemType_boolean:
      return;
    case ItemType_decimal:
      return detail::CheckDecimal(name, value.GetDecimalReference(), restrictions);
    case ItemType_integer:
      return detail::CheckInteger(name, value.GetIntegerReference(), restrictions);
    default:
      throw CQzInvalidValueException(FormatString("Unknown type [%s].", value.GetType().c_str()));
  }
}

}  // namespace QzXmlLib16
