#include <algorithm>

#include "qzxml/binding/XsdValue.h"

// A date is read into fields and then, for comparison, made an instant of a calendar that goes on
// without a year 0 being special; fields that a kind lacks are those of a year that has all days.
// With a zone, the instant is the one in UTC.
//
// A duration is what it makes of the four dates that XML Schema names: it is less than another one
// where it makes an earlier instant of each.
// Source: XML Schema 1.0 part 2, second edition, sections 3.2.6 to 3.2.14.
namespace QzXmlLib16 {
namespace detail {

namespace {

constexpr std::int64_t kSecondsOfDay = 86400;
constexpr std::int64_t kPartsOfSecond = 1000000000000000000;  // 10 to the kPartDigits
constexpr std::size_t kPartDigits = 18;
constexpr std::size_t kMostDigits = 15;  // of a number that is computed with
constexpr int kLeapYear = 1972;          // in place of a year that is not given
constexpr std::int64_t kWindow = 14 * 3600;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

struct Instant {
  std::int64_t days = 0;
  std::int64_t seconds = 0;  // of the day
  std::int64_t parts = 0;    // of the second
};

// Brings seconds and parts, which may be negative, into a day and a second.
Instant Normalize(std::int64_t days, std::int64_t seconds, std::int64_t parts) {
  if (parts < 0) {
    parts += kPartsOfSecond;
    --seconds;
  }
  std::int64_t whole = seconds / kSecondsOfDay;
  if (seconds % kSecondsOfDay < 0) --whole;
  return {days + whole, seconds - whole * kSecondsOfDay, parts};
}

ValueOrder Compare(const Instant& a, const Instant& b) {
  const auto order = [](std::int64_t left, std::int64_t right) {
    if (left == right) return ValueOrder::kEqual;
    return left < right ? ValueOrder::kLess : ValueOrder::kGreater;
  };
  if (a.days != b.days) return order(a.days, b.days);
  return a.seconds != b.seconds ? order(a.seconds, b.seconds) : order(a.parts, b.parts);
}

bool IsLeapYear(std::int64_t year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

int GetDaysOfMonth(std::int64_t year, std::int64_t month) {
  constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && IsLeapYear(year) ? 29 : kDays[month - 1];
}

// The number of a day, counted from the first of March of year 0, in periods of 400 years.
std::int64_t CountDays(std::int64_t year, std::int64_t month, std::int64_t day) {
  if (month <= 2) --year;
  std::int64_t period = year / 400;
  if (year % 400 < 0) --period;
  const std::int64_t inPeriod = year - period * 400;
  const std::int64_t dayOfYear = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
  return period * 146097 + inPeriod * 365 + inPeriod / 4 - inPeriod / 100 + dayOfYear;
}

// Reads a text from its beginning; what it has read is gone from rest. After a failure every
// further reading fails too.
class CTextReader {
 public:
  explicit CTextReader(std::string_view text) : m_rest(text) {}

  bool IsGood() const { return m_isGood; }
  bool IsAtEnd() const { return m_rest.empty(); }
  char Peek() const { return m_rest.empty() ? '\0' : m_rest[0]; }
  void Fail() { m_isGood = false; }

  bool Take(char c) {
    if (Peek() != c || m_rest.empty()) return false;
    m_rest.remove_prefix(1);
    return true;
  }
  void Expect(char c) {
    if (!Take(c)) Fail();
  }
  std::string_view TakeDigits() {
    const auto end = std::find_if_not(m_rest.begin(), m_rest.end(), IsDigit);
    const std::string_view digits =
        m_rest.substr(0, static_cast<std::size_t>(end - m_rest.begin()));
    m_rest.remove_prefix(digits.size());
    return digits;
  }
  // Two digits within the ends.
  int ExpectNumber(int least, int most) {
    if (m_rest.size() < 2 || !IsDigit(m_rest[0]) || !IsDigit(m_rest[1])) Fail();
    if (!m_isGood) return least;
    const int number = (m_rest[0] - '0') * 10 + (m_rest[1] - '0');
    m_rest.remove_prefix(2);
    if (number < least || number > most) Fail();
    return number;
  }

 private:
  std::string_view m_rest;
  bool m_isGood = true;
};

// False when there are more digits than are computed with; the number is then of no use.
bool ToNumber(std::string_view digits, std::int64_t& number) {
  digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
  if (digits.size() > kMostDigits) return false;
  number = 0;
  for (const char digit : digits) number = number * 10 + (digit - '0');
  return true;
}

std::int64_t ToParts(std::string_view fraction) {
  std::int64_t parts = 0;
  for (std::size_t i = 0; i < kPartDigits; ++i) {
    parts = parts * 10 + (i < fraction.size() ? fraction[i] - '0' : 0);
  }
  return parts;
}

// --- Dates. ---

struct DateFields {
  std::int64_t year = kLeapYear;
  int month = 1;
  int day = 1;
  int hour = 0;
  int minute = 0;
  int second = 0;
  std::int64_t parts = 0;
  bool hasZone = false;
  int zone = 0;              // in minutes
  bool isComputable = true;  // the year is not too large
};

void ReadYear(CTextReader& reader, DateFields& fields) {
  const bool isNegative = reader.Take('-');
  const std::string_view digits = reader.TakeDigits();
  const bool isLong = digits.size() > 4;
  const bool isZero = digits.find_first_not_of('0') == std::string_view::npos;
  if (digits.size() < 4 || (isLong && digits[0] == '0') || isZero) return reader.Fail();
  fields.isComputable = ToNumber(digits, fields.year);
  if (!fields.isComputable) {  // the days of its months follow from the last four digits
    ToNumber(digits.substr(digits.size() - 4), fields.year);
    fields.year += 10000;
  }
  if (isNegative) fields.year = -fields.year;
}

void ReadTime(CTextReader& reader, DateFields& fields) {
  fields.hour = reader.ExpectNumber(0, 24);
  reader.Expect(':');
  fields.minute = reader.ExpectNumber(0, 59);
  reader.Expect(':');
  fields.second = reader.ExpectNumber(0, 59);
  if (reader.Take('.')) {
    const std::string_view fraction = reader.TakeDigits();
    if (fraction.empty()) reader.Fail();
    fields.parts = ToParts(fraction);
    const bool isZero = fraction.find_first_not_of('0') == std::string_view::npos;
    if (fields.hour == 24 && !isZero) reader.Fail();
  }
  if (fields.hour == 24 && (fields.minute != 0 || fields.second != 0)) reader.Fail();
}

void ReadZone(CTextReader& reader, DateFields& fields) {
  if (reader.IsAtEnd()) return;
  fields.hasZone = true;
  if (reader.Take('Z')) return;
  const bool isNegative = reader.Take('-');
  if (!isNegative) reader.Expect('+');
  fields.zone = reader.ExpectNumber(0, 14) * 60;
  reader.Expect(':');
  fields.zone += reader.ExpectNumber(0, 59);
  if (fields.zone > 14 * 60) reader.Fail();
  if (isNegative) fields.zone = -fields.zone;
}

bool ReadDate(XsdType primitive, std::string_view text, DateFields& fields) {
  CTextReader reader(text);
  const bool hasYear = primitive == XsdType_dateTime || primitive == XsdType_date ||
                       primitive == XsdType_gYearMonth || primitive == XsdType_gYear;
  const bool hasMonth = hasYear ? primitive != XsdType_gYear
                                : primitive == XsdType_gMonthDay || primitive == XsdType_gMonth;
  const bool hasDay = primitive == XsdType_dateTime || primitive == XsdType_date ||
                      primitive == XsdType_gMonthDay || primitive == XsdType_gDay;
  const bool hasTime = primitive == XsdType_dateTime || primitive == XsdType_time;
  if (hasYear) {
    ReadYear(reader, fields);
  } else if (primitive != XsdType_time) {
    reader.Expect('-');
  }
  if (hasMonth || primitive == XsdType_gDay) reader.Expect('-');
  if (hasMonth) fields.month = reader.ExpectNumber(1, 12);
  if (hasDay) {
    reader.Expect('-');
    fields.day =
        reader.ExpectNumber(1, reader.IsGood() ? GetDaysOfMonth(fields.year, fields.month) : 31);
  }
  if (primitive == XsdType_dateTime) reader.Expect('T');
  if (hasTime) ReadTime(reader, fields);
  ReadZone(reader, fields);
  return reader.IsGood() && reader.IsAtEnd();
}

Instant ToInstant(const DateFields& fields) {
  const std::int64_t seconds =
      (fields.hour * 60 + fields.minute - fields.zone) * std::int64_t{60} + fields.second;
  return Normalize(CountDays(fields.year, fields.month, fields.day), seconds, fields.parts);
}

Instant Shift(const Instant& instant, std::int64_t seconds) {
  return Normalize(instant.days, instant.seconds + seconds, instant.parts);
}

// --- Durations. ---

struct DurationFields {
  bool isNegative = false;
  std::int64_t months = 0;
  std::int64_t days = 0;
  std::int64_t seconds = 0;
  std::int64_t parts = 0;
  bool isComputable = true;
};

// Reads digits and the letter behind them, if these come; the letters have an order.
class CDurationReader {
 public:
  CDurationReader(std::string_view text, DurationFields& fields)
      : m_reader(text), m_fields(fields) {}

  bool Read() {
    m_fields.isNegative = m_reader.Take('-');
    m_reader.Expect('P');
    m_digits = m_reader.TakeDigits();
    Add('Y', 12, m_fields.months);
    Add('M', 1, m_fields.months);
    Add('D', 1, m_fields.days);
    if (m_reader.Take('T')) ReadTime();
    return m_reader.IsGood() && m_reader.IsAtEnd() && m_digits.empty() && m_count > 0;
  }

 private:
  void ReadTime() {
    const int ahead = m_count;
    if (!m_digits.empty()) m_reader.Fail();
    m_digits = m_reader.TakeDigits();
    Add('H', 3600, m_fields.seconds);
    Add('M', 60, m_fields.seconds);
    std::string_view fraction;
    if (!m_digits.empty() && m_reader.Take('.')) {
      fraction = m_reader.TakeDigits();
      if (fraction.empty() || m_reader.Peek() != 'S') m_reader.Fail();
      m_fields.parts = ToParts(fraction);
    }
    Add('S', 1, m_fields.seconds);
    if (m_count == ahead) m_reader.Fail();
  }

  void Add(char letter, std::int64_t factor, std::int64_t& sum) {
    if (m_digits.empty() || !m_reader.Take(letter)) return;
    std::int64_t number = 0;
    if (ToNumber(m_digits, number)) {
      sum += number * factor;
    } else {
      m_fields.isComputable = false;
    }
    ++m_count;
    m_digits = m_reader.TakeDigits();
  }

  CTextReader m_reader;
  DurationFields& m_fields;
  std::string_view m_digits;  // whose letter is to come
  int m_count = 0;
};

bool ReadDuration(std::string_view text, DurationFields& fields) {
  return CDurationReader(text, fields).Read();
}

// The first of a month, the duration later.
Instant AddTo(int year, int month, const DurationFields& span) {
  const std::int64_t sign = span.isNegative ? -1 : 1;
  const std::int64_t months = year * std::int64_t{12} + month - 1 + sign * span.months;
  std::int64_t years = months / 12;
  if (months % 12 < 0) --years;
  return Normalize(CountDays(years, months - years * 12 + 1, 1) + sign * span.days,
                   sign * span.seconds, sign * span.parts);
}

}  // namespace

bool IsDateValue(XsdType primitive, std::string_view text) {
  DateFields fields;
  return ReadDate(primitive, text, fields);
}

ValueOrder CompareDates(XsdType primitive, std::string_view a, std::string_view b) {
  DateFields left;
  DateFields right;
  if (!ReadDate(primitive, a, left) || !ReadDate(primitive, b, right)) {
    return ValueOrder::kIndeterminate;
  }
  if (!left.isComputable || !right.isComputable) {
    return a == b ? ValueOrder::kEqual : ValueOrder::kIndeterminate;
  }
  const Instant leftInstant = ToInstant(left);
  const Instant rightInstant = ToInstant(right);
  if (left.hasZone == right.hasZone) return Compare(leftInstant, rightInstant);
  // One of them may be anywhere in the zones of the world.
  const ValueOrder earliest = Compare(Shift(leftInstant, -kWindow), rightInstant);
  const ValueOrder latest = Compare(Shift(leftInstant, kWindow), rightInstant);
  if (latest == ValueOrder::kLess) return ValueOrder::kLess;
  return earliest == ValueOrder::kGreater ? ValueOrder::kGreater : ValueOrder::kIndeterminate;
}

bool IsDurationValue(std::string_view text) {
  DurationFields fields;
  return ReadDuration(text, fields);
}

ValueOrder CompareDurations(std::string_view a, std::string_view b) {
  DurationFields left;
  DurationFields right;
  if (!ReadDuration(a, left) || !ReadDuration(b, right)) return ValueOrder::kIndeterminate;
  if (!left.isComputable || !right.isComputable) {
    return a == b ? ValueOrder::kEqual : ValueOrder::kIndeterminate;
  }
  constexpr int kReferences[][2] = {{1696, 9}, {1697, 2}, {1903, 3}, {1903, 7}};
  ValueOrder order = ValueOrder::kIndeterminate;
  for (const auto& [year, month] : kReferences) {
    const ValueOrder here = Compare(AddTo(year, month, left), AddTo(year, month, right));
    if (year == kReferences[0][0]) order = here;
    if (here != order) return ValueOrder::kIndeterminate;
  }
  return order;
}

}  // namespace detail
}  // namespace QzXmlLib16
