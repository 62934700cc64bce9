#include <cstdlib>
#include <cstring>

#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/values/DateTime.h"
#include "qzxml/values/DateTimeDetail.h"

// The lexical forms. They are told apart by their length without the zone, which is 1 or 6 chars,
// and then read digit by digit in place; no memory is taken but for the text of a failure.
namespace QzXmlLib16 {

namespace {

using detail::IsDigit;
using detail::WritePadded;

// ---- Reading. Each moves the place behind what it has taken; the length of the text is known to
// do for it. ----

template <int kDigits>
bool ReadNumber(const char*& at, unsigned& number) {
  number = 0;
  bool areDigits = true;
  for (int i = 0; i < kDigits; ++i) {
    areDigits &= IsDigit(at[i]);
    number = number * 10 + static_cast<unsigned>(at[i] - '0');
  }
  at += kDigits;
  return areDigits;
}

bool ReadChar(const char*& at, char c) {
  if (*at != c) return false;
  ++at;
  return true;
}

struct DateForm {
  CDateTime::DTType type = CDateTime::dt_yearZero;
  unsigned year = 0;
  unsigned month = 0;
  unsigned day = 0;
};

// CCYY, CCYY-MM and CCYY-MM-DD, of that many chars.
bool ReadYearForm(const char*& at, std::ptrdiff_t length, DateForm& form) {
  if (length != 4 && length != 7 && length != 10) return false;
  form.type = CDateTime::dt_gYear;
  if (!ReadNumber<4>(at, form.year)) return false;
  if (length == 4) return true;
  form.type = CDateTime::dt_gYearMonth;
  if (!ReadChar(at, '-') || !ReadNumber<2>(at, form.month)) return false;
  if (length == 7) return true;
  form.type = CDateTime::dt_date;
  return ReadChar(at, '-') && ReadNumber<2>(at, form.day);
}

// --MM, ---DD, --MM-- and --MM-DD, of that many chars.
bool ReadDashForm(const char*& at, std::ptrdiff_t length, DateForm& form) {
  at += 2;
  if (length == 5) {
    form.type = CDateTime::dt_gDay;
    return ReadChar(at, '-') && ReadNumber<2>(at, form.day);
  }
  if (length != 4 && length != 6 && length != 7) return false;
  form.type = CDateTime::dt_gMonth;
  if (!ReadNumber<2>(at, form.month)) return false;
  if (length == 6) {
    // Meant: "--MM--" as the standard first had it, and whatever else stands in place of the
    // dashes.
    at += 2;
  } else if (length == 7) {
    form.type = CDateTime::dt_gMonthDay;
    return ReadChar(at, '-') && ReadNumber<2>(at, form.day);
  }
  return true;
}

// ---- Writing ----

char* WriteDate(char* at, unsigned fields, int year, unsigned month, unsigned day) {
  if ((fields & detail::kHasYear) != 0) {
    if (year < 0) *at++ = '-';
    at = WritePadded(at, static_cast<unsigned>(std::abs(year)), 4);
  } else {
    *at++ = '-';
  }
  if ((fields & (detail::kHasMonth | detail::kHasDay)) == 0) return at;
  *at++ = '-';
  if ((fields & detail::kHasMonth) != 0) at = WritePadded(at, month, 2);
  if ((fields & detail::kHasDay) == 0) return at;
  *at++ = '-';
  return WritePadded(at, day, 2);
}

char* WriteZone(char* at, int hour, unsigned minute) {
  *at++ = hour < 0 ? '-' : '+';
  at = WritePadded(at, static_cast<unsigned>(std::abs(hour)), 2);
  *at++ = ':';
  return WritePadded(at, minute, 2);
}

}  // namespace

// ---- Parsing ----

void CDateTime::ParseXSDDateTime(const char* text) {
  if (text == nullptr) throw CQzInvalidValueException("Invalid DateTime (Null String)");
  const std::string_view whole(text);
  const std::size_t separator = whole.find('T');
  if (separator == std::string_view::npos) {
    throw CQzInvalidValueException(FormatString("Invalid XSD DateTime [%s].", text));
  }
  Clear();
  SetXSDDate(whole.substr(0, separator));
  if (m_type != dt_date) {
    throw CQzInvalidValueException(
        FormatString("Invalid XSD DateTime [%s] expected CCYY-MM-DDThh:mm:ss[.ff]", text));
  }
  SetXSDTime(whole.substr(separator + 1));
  m_type = dt_dateTime;
  Validate();
}

void CDateTime::ParseXSDDate(const char* text) {
  Clear();
  if (text == nullptr) throw CQzInvalidValueException("Invalid Date (Null String)");
  if (SetPlainDate(text)) return;
  SetXSDDate(text);
  Validate();
}

void CDateTime::ParseXSDTime(const char* text) {
  Clear();
  if (text == nullptr) throw CQzInvalidValueException("Invalid Time (Null String)");
  SetXSDTime(text);
  Validate();
}

// CCYY-MM-DD of a day that every month has, as most dates are but three in a month.
bool CDateTime::SetPlainDate(std::string_view text) {
  if (text.size() != 10) return false;
  const char* at = text.data();
  unsigned year = 0;
  unsigned month = 0;
  unsigned day = 0;
  const bool matches = ReadNumber<4>(at, year) && ReadChar(at, '-') && ReadNumber<2>(at, month) &&
                       ReadChar(at, '-') && ReadNumber<2>(at, day);
  if (!matches || year == 0 || month - 1 > 11 || day - 1 > 27) return false;
  m_type = dt_date;
  m_year = static_cast<std::int16_t>(year);
  m_month = static_cast<std::uint8_t>(month);
  m_day = static_cast<std::uint8_t>(day);
  return true;
}

void CDateTime::SetXSDDate(std::string_view text) {
  if (SetPlainDate(text)) return;
  if (text.empty()) throw CQzInvalidValueException("Invalid Date (Empty String)");
  if (text.find('T') != std::string_view::npos) {
    throw CQzInvalidValueException("Invalid Date ('T' not allowed)");
  }
  const bool isUTC = text.back() == 'Z';
  const bool hasOffset = text.find(':') != std::string_view::npos;
  if (isUTC && hasOffset) throw CQzInvalidValueException("Invalid Date (Bad Zone value)");

  std::ptrdiff_t length = static_cast<std::ptrdiff_t>(text.size());
  if (isUTC) length -= 1;
  if (hasOffset) length -= 6;
  const char* at = text.data();
  const bool isDashForm = text.substr(0, 2) == "--";
  const bool isNegative = !isDashForm && *at == '-';
  if (isNegative) {
    ++at;
    --length;
  }
  DateForm form;
  if (!(isDashForm ? ReadDashForm(at, length, form) : ReadYearForm(at, length, form))) {
    throw CQzInvalidValueException(FormatString(
        "Invalid XSD Date [%s] expected CCYY-MM-DD[Z|[+|-]hh:mm]", std::string(text).c_str()));
  }
  m_type = form.type;
  const int year = static_cast<int>(form.year);
  m_year = static_cast<std::int16_t>(isNegative ? -year : year);
  m_month = static_cast<std::uint8_t>(form.month);
  m_day = static_cast<std::uint8_t>(form.day);
  if (isUTC || hasOffset) SetZone(text.substr(static_cast<std::size_t>(at - text.data())));
}

void CDateTime::SetXSDTime(std::string_view text) {
  if (text.empty()) throw CQzInvalidValueException("Invalid XSD Time (Empty String)");
  const char* at = text.data();
  unsigned hour = 0;
  unsigned minute = 0;
  unsigned second = 0;
  const bool matches = text.size() >= 8 && ReadNumber<2>(at, hour) && ReadChar(at, ':') &&
                       ReadNumber<2>(at, minute) && ReadChar(at, ':') && ReadNumber<2>(at, second);
  if (!matches || hour > 23 || minute > 59 || second > 59) {
    throw CQzInvalidValueException(
        FormatString("Invalid XSD Time [%s] expected hh:mm:ss[.ff]", std::string(text).c_str()));
  }
  m_hour = static_cast<std::uint8_t>(hour);
  m_minute = static_cast<std::uint8_t>(minute);
  m_second = static_cast<std::uint8_t>(second);
  std::size_t index = 8;
  if (index < text.size() && text[index] == '.') index = SetFraction(text);
  if (index < text.size()) SetZone(text.substr(index));
  m_type = dt_time;
}

// Of "hh:mm:ss." the digits behind the point; the result is the place behind them.
std::size_t CDateTime::SetFraction(std::string_view text) {
  constexpr std::size_t kFirst = 9;
  std::uint16_t* const groups[] = {&m_milliSecond, &m_microSecond, &m_nanoSecond};
  std::size_t index = kFirst;
  for (; index < text.size() && IsDigit(text[index]); ++index) {
    const std::size_t digit = index - kFirst;
    if (digit == 9) {
      throw CQzInvalidValueException(
          FormatString("Invalid XSD Time [%s] Fraction part too long", std::string(text).c_str()));
    }
    const unsigned value = static_cast<unsigned>(text[index] - '0') * detail::PlaceInGroup(digit);
    *groups[digit / 3] = static_cast<std::uint16_t>(*groups[digit / 3] + value);
  }
  return index;
}

void CDateTime::SetZone(std::string_view text) {
  if (text.empty()) return;
  if (text[0] == 'Z') {
    SetUTC();
    return;
  }
  // Meant: what begins with no sign is left alone; documents have had trailing words there.
  if (text[0] != '+' && text[0] != '-') return;
  const char* at = text.data() + 1;
  unsigned hour = 0;
  unsigned minute = 0;
  const bool matches =
      text.size() == 6 && ReadNumber<2>(at, hour) && ReadChar(at, ':') && ReadNumber<2>(at, minute);
  if (!matches) {
    throw CQzInvalidValueException(
        FormatString("Invalid XSD Time Zone [%s].", std::string(text).c_str()));
  }
  if (hour == 24) hour = 0;
  // Meant: the sign is that of the hour, so -00:30 becomes +00:30; stored values went that way.
  const int signedHour = text[0] == '-' ? -static_cast<int>(hour) : static_cast<int>(hour);
  SetTimeZone(static_cast<short>(signedHour), static_cast<unsigned char>(minute));
}

// ---- Writing ----

std::string CDateTime::ToString() const { return ToString("s"); }

std::string CDateTime::ToString(const char* format) const {
  char text[detail::kDateTimeSize];
  const char* const end = detail::WriteDateTime(*this, text);
  if (end == nullptr) return "Error: Date Not Set";
  if (format == nullptr || *format == '\0' || std::strcmp(format, "G") == 0) return std::string();
  if (std::strcmp(format, "s") != 0) return std::string("Unknown Format: ") + format;
  return std::string(text, static_cast<std::size_t>(end - text));
}

char* detail::WriteDateTime(const CDateTime& value, char* out) {
  // Has the rights of this function.
  struct Fields {
    static char* WriteTime(const CDateTime& value, char* out) {
      out = WritePadded(out, value.m_hour, 2);
      *out++ = ':';
      out = WritePadded(out, value.m_minute, 2);
      *out++ = ':';
      out = WritePadded(out, value.m_second, 2);
      return WriteFraction(out, value.m_milliSecond, value.m_microSecond, value.m_nanoSecond);
    }

    [[gnu::noinline]] static char* WriteAny(const CDateTime& value, char* out) {
      const CDateTime::DTType type = value.m_type;
      const bool isZero =
          (value.m_year | value.m_month | value.m_day | value.m_hour | value.m_minute |
           value.m_second | value.m_milliSecond | value.m_microSecond | value.m_nanoSecond) == 0;
      if (type == CDateTime::dt_yearZero || (type != CDateTime::dt_time && isZero)) return nullptr;
      const unsigned fields = FieldsOf(type);
      constexpr unsigned kDate = kHasYear | kHasMonth | kHasDay;
      if ((fields & kDate) != 0) {
        out = WriteDate(out, fields, value.m_year, value.m_month, value.m_day);
      }
      if (type == CDateTime::dt_dateTime) *out++ = 'T';
      if ((fields & kHasTime) != 0) out = WriteTime(value, out);
      if (value.m_hasTimeZone) return WriteZone(out, value.m_zoneHour, value.m_zoneMinute);
      if (value.m_isUTC) *out++ = 'Z';
      return out;
    }
  };

  // Most are a whole date, alone or with a time.
  const CDateTime::DTType type = value.m_type;
  const bool isPlain = (type == CDateTime::dt_date || type == CDateTime::dt_dateTime) &&
                       value.m_year > 0 && value.m_year <= kMaxYear && value.m_month < 100 &&
                       value.m_day < 100 && !value.m_hasTimeZone;
  if (!isPlain) return Fields::WriteAny(value, out);
  const auto year = static_cast<unsigned>(value.m_year);
  out = WriteTwoDigits(WriteTwoDigits(out, year / 100), year % 100);
  *out++ = '-';
  out = WriteTwoDigits(out, value.m_month);
  *out++ = '-';
  out = WriteTwoDigits(out, value.m_day);
  if (type == CDateTime::dt_dateTime) {
    *out++ = 'T';
    out = Fields::WriteTime(value, out);
  }
  if (value.m_isUTC) *out++ = 'Z';
  return out;
}

}  // namespace QzXmlLib16
