#include <charconv>
#include <limits>
#include <system_error>

#include "qzxml/values/Conversions.h"
#include "qzxml/values/ConversionsDetail.h"

// The kinds whose values are objects, which know their own lexical forms: numbers of any size,
// dates, times and durations; and the dates that are plain numbers, which are read as dates.
namespace QzXmlLib16 {
namespace {

using Rule = CWhitespaceUtils::WhitespaceRule;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Reads as atoi does. A number beyond an int's range is the end of the range.
int ParsePlaces(std::string_view format) {
  const char* const end = format.data() + format.size();
  const char* at = detail::SkipLeadingSpace(format.data(), end);
  const bool negative = at != end && *at == '-';
  if (at != end && *at == '+') ++at;
  if (at == end || !(IsDigit(*at) || negative)) return 0;
  int places = 0;
  if (std::from_chars(at, end, places).ec == std::errc::result_out_of_range) {
    places = negative ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
  }
  return places;
}

// The type is where the value starts; the text's own form replaces it.
CDateTime DateFromString(const std::string& value, Rule rule, CDateTime::DTType type,
                         void (CDateTime::*parse)(const char*)) {
  std::string scratch;
  CDateTime date(type);
  (date.*parse)(detail::RuledText(value, rule, scratch));
  return date;
}

}  // namespace

// --- Numbers of any size. ---

std::string CConversions::decimalToString(const CDecimal& value) { return value.ToString(); }

std::string CConversions::decimalToString(const CDecimal& value, const std::string& format) {
  return format.empty() ? value.ToString() : value.ToString(ParsePlaces(format));
}

CDecimal CConversions::decimalFromString(const std::string& value, WhitespaceRule rule) {
  std::string scratch;
  return CDecimal(detail::RuledText(value, rule, scratch));
}

std::string CConversions::integerToString(const CBigInteger& value) { return value.ToString(); }

CBigInteger CConversions::integerFromString(const std::string& value, WhitespaceRule rule) {
  std::string scratch;
  return CBigInteger(detail::RuledText(value, rule, scratch));
}

// --- Dates, times and durations. ---

std::string CConversions::durationToString(const CDateTimeSpan& value) { return value.ToString(); }

CDateTimeSpan CConversions::durationFromString(const std::string& value, WhitespaceRule rule) {
  std::string scratch;
  CDateTimeSpan span;
  span.ParseXSDDuration(detail::RuledText(value, rule, scratch));
  return span;
}

std::string CConversions::yearMonthToString(const CDateTime& value) { return value.ToString("s"); }

CDateTime CConversions::yearMonthFromString(const std::string& value, WhitespaceRule rule) {
  return DateFromString(value, rule, CDateTime::dt_gYearMonth, &CDateTime::ParseXSDDate);
}

std::string CConversions::monthDayToString(const CDateTime& value) { return value.ToString("s"); }

CDateTime CConversions::monthDayFromString(const std::string& value, WhitespaceRule rule) {
  return DateFromString(value, rule, CDateTime::dt_gMonthDay, &CDateTime::ParseXSDDate);
}

std::string CConversions::dateToString(const CDateTime& value) { return value.ToString("s"); }

CDateTime CConversions::dateFromString(const std::string& value, WhitespaceRule rule) {
  return DateFromString(value, rule, CDateTime::dt_date, &CDateTime::ParseXSDDate);
}

std::string CConversions::datetimeToString(const CDateTime& value) { return value.ToString("s"); }

CDateTime CConversions::datetimeFromString(const std::string& value, WhitespaceRule rule) {
  return DateFromString(value, rule, CDateTime::dt_dateTime, &CDateTime::ParseXSDDateTime);
}

std::string CConversions::timeToString(const CDateTime& value) { return value.ToString("s"); }

CDateTime CConversions::timeFromString(const std::string& value, WhitespaceRule rule) {
  return DateFromString(value, rule, CDateTime::dt_time, &CDateTime::ParseXSDTime);
}

// --- Dates that are plain numbers. ---

std::string CConversions::yearToString(unsigned short value) {
  char buffer[detail::kNumberSize];
  return std::string(buffer, detail::WriteYear(buffer, value));
}

unsigned short CConversions::yearFromString(const std::string& value, WhitespaceRule rule) {
  // Meant: a year below zero keeps its bits.
  return static_cast<unsigned short>(
      DateFromString(value, rule, CDateTime::dt_gYear, &CDateTime::ParseXSDDate).GetYear());
}

std::string CConversions::monthToString(unsigned char value) {
  char buffer[detail::kNumberSize];
  return std::string(buffer, detail::WriteMonth(buffer, value));
}

unsigned char CConversions::monthFromString(const std::string& value, WhitespaceRule rule) {
  return DateFromString(value, rule, CDateTime::dt_gMonth, &CDateTime::ParseXSDDate).GetMonth();
}

std::string CConversions::dayToString(unsigned char value) {
  char buffer[detail::kNumberSize];
  return std::string(buffer, detail::WriteDay(buffer, value));
}

unsigned char CConversions::dayFromString(const std::string& value, WhitespaceRule rule) {
  return DateFromString(value, rule, CDateTime::dt_gDay, &CDateTime::ParseXSDDate).GetDay();
}

}  // namespace QzXmlLib16
