#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "qzxml/platform/Export.h"
#include "qzxml/values/ItemType.h"

namespace QzXmlLib16 {

class CBigInteger;
class CBinaryData;
class CDateTime;
class CDateTimeSpan;
class CDecimal;
struct QzVariant;

namespace detail {
class CPattern;
struct PatternHandle;
}  // namespace detail

// The facets of one XSD simple type. Those whose form depends on the kind of value are kept as they
// stand in the schema and read at each check.
// A plain value; threads may share one that nobody changes.
// Source: XML Schema 1.0 part 2, section 4.3.
class QZXML_API CPrimitiveRestrictions {
 public:
  CPrimitiveRestrictions();  // no facet
  // An empty or null text and a negative number mean that the facet is absent.
  CPrimitiveRestrictions(const char* pattern, std::int32_t minLength, std::int32_t maxLength,
                         const char* minInclusive, const char* maxInclusive,
                         const char* minExclusive, const char* maxExclusive, std::int32_t length,
                         std::int32_t totalDigits, std::int32_t fractionDigits);
  CPrimitiveRestrictions(const CPrimitiveRestrictions& other);
  CPrimitiveRestrictions& operator=(const CPrimitiveRestrictions& other);
  virtual ~CPrimitiveRestrictions();

  const std::string& GetPattern() const { return m_pattern; }
  std::int32_t GetMinLength() const { return m_minLength; }
  std::int32_t GetMaxLength() const { return m_maxLength; }
  const std::string& GetMinInclusive() const { return m_minInclusive; }
  const std::string& GetMaxInclusive() const { return m_maxInclusive; }
  const std::string& GetMinExclusive() const { return m_minExclusive; }
  const std::string& GetMaxExclusive() const { return m_maxExclusive; }
  std::int32_t GetLength() const { return m_length; }
  std::int32_t GetTotalDigits() const { return m_totalDigits; }
  std::int32_t GetFractionDigits() const { return m_fractionDigits; }
  // Whether any facet is there: without one, no value of any kind is refused.
  bool HasFacets() const;

  // Whether the value, in the local encoding, matches the pattern; true when there is none. The
  // pattern is compiled at the first call. Fails as MatchesRegularExpression does.
  bool MatchesPattern(const std::string& value) const;

 private:
  const detail::CPattern& FindCompiled() const;

  std::string m_pattern;
  std::int32_t m_minLength;
  std::int32_t m_maxLength;
  std::string m_minInclusive;
  std::string m_maxInclusive;
  std::string m_minExclusive;
  std::string m_maxExclusive;
  std::int32_t m_length;
  std::int32_t m_totalDigits;
  std::int32_t m_fractionDigits;

  mutable std::atomic<const detail::PatternHandle*> m_compiled;  // owned; null until first use
};

// Checks a value of the kind type against its facets, and returns when it keeps them all. Facets
// are read and tested one after the other: the bounds (minInclusive, maxInclusive, minExclusive,
// maxExclusive), totalDigits and fractionDigits of a number, the bounds of a date or a duration, or
// minLength, maxLength, length and pattern of a text. Where a date or a duration is neither below
// nor above a bound, nor the same, it keeps that bound.
// Throws CQzException "Invalid Value for %s [%s]." (or without the full stop, for numbers up to 32
// bits and reals) with the name of the member and the value; the conversion's own exception when a
// facet does not parse; CQzInvalidValueException "Unknown type [%s]." for a kind without a check.
QZXML_API void CheckPrimitiveRestriction(const char* name, const QzVariant& value, ItemType type,
                                         const CPrimitiveRestrictions& restrictions);

// Whether the whole value, in the local encoding, matches the XSD pattern, in UTF-8. The pattern is
// translated for PCRE2 and bounded: what takes too many steps does not match.
// Throws CQzException "Invalid Regular Expression: %s Error: '%s'" with the value under test.
QZXML_API bool MatchesRegularExpression(const std::string& pattern, const std::string& value);

namespace detail {

// The checks of the single kinds, for those who have a plain value; they fail as
// CheckPrimitiveRestriction does.
using Restrictions = CPrimitiveRestrictions;
void CheckHexBinary(const char* name, const CBinaryData& value, const Restrictions& restrictions);
void CheckBase64Binary(const char* name, const CBinaryData& value,
                       const Restrictions& restrictions);
void CheckI1(const char* name, char value, const Restrictions& restrictions);
void CheckI2(const char* name, short value, const Restrictions& restrictions);
void CheckI4(const char* name, std::int32_t value, const Restrictions& restrictions);
void CheckI8(const char* name, std::int64_t value, const Restrictions& restrictions);
void CheckUI1(const char* name, unsigned char value, const Restrictions& restrictions);
void CheckUI2(const char* name, unsigned short value, const Restrictions& restrictions);
void CheckUI4(const char* name, std::uint32_t value, const Restrictions& restrictions);
void CheckUI8(const char* name, std::uint64_t value, const Restrictions& restrictions);
void CheckR4(const char* name, float value, const Restrictions& restrictions);
void CheckR8(const char* name, double value, const Restrictions& restrictions);
void CheckDuration(const char* name, const CDateTimeSpan& value, const Restrictions& restrictions);
void CheckYearMonth(const char* name, const CDateTime& value, const Restrictions& restrictions);
void CheckMonthDay(const char* name, const CDateTime& value, const Restrictions& restrictions);
void CheckYear(const char* name, unsigned short value, const Restrictions& restrictions);
void CheckMonth(const char* name, unsigned char value, const Restrictions& restrictions);
void CheckDay(const char* name, unsigned char value, const Restrictions& restrictions);
void CheckDate(const char* name, const CDateTime& value, const Restrictions& restrictions);
void CheckDateTime(const char* name, const CDateTime& value, const Restrictions& restrictions);
void CheckTime(const char* name, const CDateTime& value, const Restrictions& restrictions);
void CheckString(const char* name, const std::string& value, const Restrictions& restrictions);
void CheckBoolean(const char* name, bool value, const Restrictions& restrictions);  // passes always
void CheckDecimal(const char* name, const CDecimal& value, const Restrictions& restrictions);
void CheckInteger(const char* name, const CBigInteger& value, const Restrictions& restrictions);

}  // namespace detail

}  // namespace QzXmlLib16
