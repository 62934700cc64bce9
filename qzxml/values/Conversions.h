#pragma once

#include <cstdint>
#include <string>

#include "qzxml/platform/Export.h"
#include "qzxml/values/BigInteger.h"
#include "qzxml/values/BinaryData.h"
#include "qzxml/values/DateTime.h"
#include "qzxml/values/DateTimeSpan.h"
#include "qzxml/values/Decimal.h"
#include "qzxml/values/WhitespaceUtils.h"

namespace QzXmlLib16 {

// Every lexical form of the library: one ToString and one FromString for each primitive kind of
// ItemType. Whatever reads or writes a primitive as text comes here.
//
// FromString applies the white space rule and then reads the whole text. What it can not read it
// refuses with CQzInvalidValueException, unless something else is said:
//   "The value [%s] can not be converted to a <kind>"   no number, or more than a number
//   "The value [%s] is to large to fit in a <kind>"     beyond either end of the range
// The text quoted is the one behind the rule. Numbers may stand behind leading white space and a
// sign of either kind. Results do not depend on the locale of the process.
// Pure functions; any thread may call them.
// Source: XML Schema 1.0 part 2, section 3.
class QZXML_API CConversions {
 public:
  using WhitespaceRule = CWhitespaceUtils::WhitespaceRule;

  // --- Binary data: failures are those of CBinaryData. ---
  static std::string hexBinaryToString(const CBinaryData& value);
  static CBinaryData hexBinaryFromString(const std::string& value, WhitespaceRule rule);
  static std::string base64BinaryToString(const CBinaryData& value);
  static CBinaryData base64BinaryFromString(const std::string& value, WhitespaceRule rule);

  // --- Integers. i1, i2, ui1 and ui2 are read as i4 or ui4, whose word a failure of that reading
  // names, and then tested; the text quoted by that test is the one ahead of the rule. ---
  static std::string i1ToString(char value);  // a signed number, also where char is unsigned
  static char i1FromString(const std::string& value, WhitespaceRule rule);
  static std::string i2ToString(short value);
  static short i2FromString(const std::string& value, WhitespaceRule rule);
  static std::string i4ToString(std::int32_t value);
  static std::int32_t i4FromString(const std::string& value, WhitespaceRule rule);
  static std::string i8ToString(std::int64_t value);
  static std::int64_t i8FromString(const std::string& value, WhitespaceRule rule);
  static std::string ui1ToString(unsigned char value);
  static unsigned char ui1FromString(const std::string& value, WhitespaceRule rule);
  static std::string ui2ToString(unsigned short value);
  static unsigned short ui2FromString(const std::string& value, WhitespaceRule rule);
  static std::string ui4ToString(std::uint32_t value);
  // Meant: a leading minus is taken and the value wraps, "-1" is 4294967295; callers rely on
  // strtoul here. So does ui8FromString.
  static std::uint32_t ui4FromString(const std::string& value, WhitespaceRule rule);
  static std::string ui8ToString(std::uint64_t value);
  static std::uint64_t ui8FromString(const std::string& value, WhitespaceRule rule);

  // --- Reals. "NaN", "INF", "-INF", and otherwise 7 or 16 significant digits as by "%.7g" and
  // "%.16g", with an exponent of at least three digits: "1e+020".
  //
  // A format that is not empty is a printf format that takes one double; literal text around the
  // conversion stands as it is. Its decimal point is "." in every locale, and exponents have three
  // digits here too (they count for the width). A text of any length comes back whole. Asserts
  // "format takes one double" on any other conversion, on "*" and on a second conversion, and then
  // writes as without a format.
  //
  // FromString reads decimal digits, one point and an exponent, and "NaN", "1.#QNAN", "-NAN",
  // "INF", "-INF" exactly as written here. There is no range: too large is infinity. ---
  static std::string r4ToString(float value);
  static std::string r4ToString(float value, const std::string& format);
  static float r4FromString(const std::string& value, WhitespaceRule rule);
  static std::string r8ToString(double value);
  static std::string r8ToString(double value, const std::string& format);
  static double r8FromString(const std::string& value, WhitespaceRule rule);

  // --- Numbers of any size. Failures are those of CDecimal::Parse, for integers too: "The string
  // representing a Decimal, contained an invalid char at position %d [%s].", with the text behind
  // the rule. Signs and blanks are taken wherever these classes take them, and nothing is zero. ---
  static std::string decimalToString(const CDecimal& value);
  // The format is read as a number of decimal places, for CDecimal::ToString(int); blanks ahead of
  // it and whatever stands behind it count for nothing, and without digits it is 0. An empty one
  // writes as without a format.
  static std::string decimalToString(const CDecimal& value, const std::string& format);
  static CDecimal decimalFromString(const std::string& value, WhitespaceRule rule);
  static std::string integerToString(const CBigInteger& value);
  static CBigInteger integerFromString(const std::string& value, WhitespaceRule rule);

  // --- Dates, times and durations: the forms and the failures of CDateTime and CDateTimeSpan.
  // Meant: the text's own form decides which kind of date it is, and no check follows:
  // yearMonthFromString("2004-05-06") is a dt_date. ---
  static std::string durationToString(const CDateTimeSpan& value);
  static CDateTimeSpan durationFromString(const std::string& value, WhitespaceRule rule);
  static std::string yearMonthToString(const CDateTime& value);
  static CDateTime yearMonthFromString(const std::string& value, WhitespaceRule rule);
  static std::string monthDayToString(const CDateTime& value);
  static CDateTime monthDayFromString(const std::string& value, WhitespaceRule rule);
  static std::string dateToString(const CDateTime& value);
  static CDateTime dateFromString(const std::string& value, WhitespaceRule rule);
  static std::string datetimeToString(const CDateTime& value);
  static CDateTime datetimeFromString(const std::string& value, WhitespaceRule rule);
  static std::string timeToString(const CDateTime& value);
  static CDateTime timeFromString(const std::string& value, WhitespaceRule rule);

  // --- Dates that are plain numbers: "1999", "--02", "---09". FromString reads any form of date
  // that has the field, and forgets the rest of it and its zone; a form that has not throws
  // CQzInvalidStateException "Failed to GetYear. Invalid Date Type: %s." (or "GetMonth", "GetDay").
  // Meant: a year below zero comes back as its 16 bits, -1 as 65535. ---
  static std::string yearToString(unsigned short value);
  static unsigned short yearFromString(const std::string& value, WhitespaceRule rule);
  static std::string monthToString(unsigned char value);
  static unsigned char monthFromString(const std::string& value, WhitespaceRule rule);
  static std::string dayToString(unsigned char value);
  static unsigned char dayFromString(const std::string& value, WhitespaceRule rule);

  // --- Text. ---
  static std::string charToString(char value);
  // Throws CQzInvalidValueException "The value [%s] can not be a char as it is either empty of
  // greater than 1 char long" unless one char is left behind the rule.
  static char charFromString(const std::string& value, WhitespaceRule rule);
  static std::string stringToString(const std::string& value);
  static std::string stringFromString(const std::string& value, WhitespaceRule rule);

  // "true" or "false"; reads these and "1" and "0", in any case of letters. Throws
  // CQzInvalidValueException "A Boolean Value read from an XML document was invalid [%s]. Valid
  // values are 'true', 'false', '1', or '0'" with the text ahead of the rule.
  static std::string booleanToString(bool value);
  static bool booleanFromString(const std::string& value, WhitespaceRule rule);
};

}  // namespace QzXmlLib16
