// Any text as a date, a time, a dateTime or a duration: the first octet chooses, the rest is the
// text. What is read is written, and reading that gives the same fields again; it equals itself,
// has a zone in UTC, and takes any span.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "qzxml/QzXml.h"

using namespace QzXmlLib16;

namespace {

[[noreturn]] void Fail(const char* what, const std::string& text, const std::string& other) {
  std::fprintf(stderr, "%s: %s and %s\n", what, text.c_str(), other.c_str());
  std::abort();
}

using Parser = void (CDateTime::*)(const char*);
constexpr Parser kParsers[] = {&CDateTime::ParseXSDDate, &CDateTime::ParseXSDTime,
                               &CDateTime::ParseXSDDateTime};

// What a failed reading leaves behind can be used like anything else.
template <typename Value, typename Parse>
bool IsRead(Value& value, Parse parse, const std::string& text) {
  try {
    (value.*parse)(text.c_str());
    return true;
  } catch (const CQzInvalidValueException&) {
    return false;
  }
}

void TryDate(Parser parse, const std::string& text) {
  CDateTime value;
  const bool isRead = IsRead(value, parse, text);
  const std::string written = value.ToString();
  const CDateTime normalized = value.GetNormalized();
  if (value.CompareTo(value) != CDateTime::dtc_equal) Fail("does not equal itself", text, written);
  if (value.CompareTo(normalized) != CDateTime::dtc_equal) {
    Fail("is another one in UTC", written, normalized.ToString());
  }
  if (value.GetType() == CDateTime::dt_dateTime || value.GetType() == CDateTime::dt_date) {
    value.GetDayOfWeek();
  }
  CDateTimeSpan span;
  const std::size_t duration = text.find('P');
  if (duration != std::string::npos) {
    IsRead(span, &CDateTimeSpan::ParseXSDDuration, text.substr(duration));
  }
  (value + span - span).ToString();

  if (!isRead) return;
  CDateTime again;
  if (!IsRead(again, parse, written)) Fail("was written, and refused", text, written);
  if (again.ToString() != written || again.GetType() != value.GetType() || again != value) {
    Fail("became", written, again.ToString());
  }
}

bool IsSame(const CDateTimeSpan& a, const CDateTimeSpan& b) {
  return a.IsNegative() == b.IsNegative() && a.GetYears() == b.GetYears() &&
         a.GetMonths() == b.GetMonths() && a.GetDays() == b.GetDays() &&
         a.GetHours() == b.GetHours() && a.GetMinutes() == b.GetMinutes() &&
         a.GetSeconds() == b.GetSeconds() && a.GetMilliSeconds() == b.GetMilliSeconds() &&
         a.GetMicroSeconds() == b.GetMicroSeconds() && a.GetNanoSeconds() == b.GetNanoSeconds();
}

void TryDuration(const std::string& text) {
  CDateTimeSpan span;
  const bool isRead = IsRead(span, &CDateTimeSpan::ParseXSDDuration, text);
  if (span.CompareTo(span) != CDateTime::dtc_equal) Fail("does not equal itself", text, text);
  (CDateTime(2004, 2, 29, 12, 34, 56) + span).ToString();
  const std::string written = span.ToString();
  // No time at all is written without any, and a second fraction in a text adds to the first.
  if (!isRead || written == "P" || written == "-P") return;
  if (span.GetMilliSeconds() > 999 || span.GetMicroSeconds() > 999) return;
  CDateTimeSpan again;
  if (!IsRead(again, &CDateTimeSpan::ParseXSDDuration, written)) {
    Fail("was written, and refused", text, written);
  }
  if (!IsSame(span, again)) Fail("became", written, again.ToString());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 1) return 0;
  const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
  const unsigned choice = data[0] % 4;
  if (choice < 3) {
    TryDate(kParsers[choice], text);
  } else {
    TryDuration(text);
  }
  return 0;
}
