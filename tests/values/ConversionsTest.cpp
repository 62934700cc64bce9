#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>

#include "qzxml/values/Conversions.h"
#include "tests/support/QzTest.h"
#include "tests/values/NumberTexts.h"

using QzXmlLib16::CBinaryData;
using QzXmlLib16::CConversions;
using QzXmlLib16::CQzException;
using QzXmlLib16::CQzInvalidValueException;
using QzXmlLib16::CWhitespaceUtils;

namespace {

constexpr auto kNone = CWhitespaceUtils::WhitespaceRule_None;
constexpr auto kPreserve = CWhitespaceUtils::WhitespaceRule_Preserve;
constexpr auto kReplace = CWhitespaceUtils::WhitespaceRule_Replace;
constexpr auto kCollapse = CWhitespaceUtils::WhitespaceRule_Collapse;
constexpr auto kUnknown = static_cast<CWhitespaceUtils::WhitespaceRule>(4);

std::string NotConvertible(const std::string& text, const std::string& kind) {
  return "The value [" + text + "] can not be converted to a " + kind;
}

std::string TooLarge(const std::string& text, const std::string& kind) {
  return "The value [" + text + "] is to large to fit in a " + kind;
}

// What a reading gave: the value's text, or the failure's.
template <typename Read>
std::string Outcome(Read read) {
  try {
    return std::to_string(read());
  } catch (const CQzInvalidValueException& e) {
    return e.GetMessage();
  }
}

// --- An integer parser that is obviously right: blanks, one sign, digits, the range last. ---

struct IntegerKind {
  const char* name;
  bool isSigned;
  int bits;
  std::string most;        // above zero
  std::string mostBehind;  // behind a minus
};

const IntegerKind kI4 = {"i4", true, 32, "2147483647", "2147483648"};
const IntegerKind kI8 = {"i8", true, 64, "9223372036854775807", "9223372036854775808"};
const IntegerKind kUI4 = {"ui4", false, 32, "4294967295", "4294967295"};
const IntegerKind kUI8 = {"ui8", false, 64, "18446744073709551615", "18446744073709551615"};

// Digits without leading zeros; of two texts of one length the greater is the greater number.
std::string StripZeros(const std::string& digits) {
  const std::size_t first = digits.find_first_not_of('0');
  return first == std::string::npos ? "0" : digits.substr(first);
}

bool IsGreater(const std::string& left, const std::string& right) {
  return left.size() != right.size() ? left.size() > right.size() : left > right;
}

std::string Wrap(const std::string& magnitude, int bits) {
  const std::uint64_t value = 0 - std::stoull(magnitude);
  return std::to_string(bits == 32 ? value & 0xFFFFFFFFu : value);
}

std::string ExpectedInteger(const std::string& text, const IntegerKind& kind) {
  const std::size_t sign = std::min(text.find_first_not_of(' '), text.size());
  const bool hasSign = sign < text.size() && (text[sign] == '-' || text[sign] == '+');
  const bool negative = hasSign && text[sign] == '-';
  const std::size_t first = hasSign ? sign + 1 : sign;
  const std::size_t end = std::min(text.find_first_not_of("0123456789", first), text.size());
  if (end == first) return NotConvertible(text, kind.name);
  const std::string magnitude = StripZeros(text.substr(first, end - first));
  if (IsGreater(magnitude, negative ? kind.mostBehind : kind.most))
    return TooLarge(text, kind.name);
  if (end != text.size()) return NotConvertible(text, kind.name);
  if (!negative || magnitude == "0") return magnitude;
  return kind.isSigned ? "-" + magnitude : Wrap(magnitude, kind.bits);
}

void ExpectIntegers(const std::string& text) {
  ASSERT_EQ(ExpectedInteger(text, kI4),
            Outcome([&] { return CConversions::i4FromString(text, kNone); }));
  ASSERT_EQ(ExpectedInteger(text, kI8),
            Outcome([&] { return CConversions::i8FromString(text, kNone); }));
  ASSERT_EQ(ExpectedInteger(text, kUI4),
            Outcome([&] { return CConversions::ui4FromString(text, kNone); }));
  ASSERT_EQ(ExpectedInteger(text, kUI8),
            Outcome([&] { return CConversions::ui8FromString(text, kNone); }));
}

}  // namespace

// --- Integers ---

TEST(Conversions, IntegersReadEveryShortText) {
  for (const std::string& text : qztest::GetShortNumberTexts()) ExpectIntegers(text);
}

TEST(Conversions, IntegersReadTextsAroundTheirEnds) {
  const char* const ends[] = {"127",
                              "255",
                              "32767",
                              "65535",
                              "2147483647",
                              "2147483648",
                              "4294967295",
                              "9223372036854775807",
                              "9223372036854775808",
                              "18446744073709551615",
                              "99999999999999999999999"};
  for (const char* const end : ends) {
    std::string text = end;
    for (const char* const sign : {"", "-", "+", "  -", "-00"}) {
      for (int step = 0; step < 3; ++step) {
        text.back() = static_cast<char>('5' + step);
        ExpectIntegers(sign + text);
        ExpectIntegers(sign + text + "x");
      }
      ExpectIntegers(sign + std::string(end));
      for (const char last : {'6', '7', '8', '9'}) {
        ExpectIntegers(sign + std::string(end, std::string(end).size() - 1) + last);
      }
    }
  }
}

TEST(Conversions, IntegersSkipWhatStrtolSkips) {
  EXPECT_EQ(12, CConversions::i4FromString(" 12", kNone));
  EXPECT_EQ(-12, CConversions::i4FromString("\t\n\v\f\r -12", kNone));
  EXPECT_EQ(12u, CConversions::ui4FromString(" +12", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException, NotConvertible("12 ", "i4"),
                  CConversions::i4FromString("12 ", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  NotConvertible("\xC2\xA0"
                                 "12",
                                 "i4"),
                  CConversions::i4FromString("\xC2\xA0"
                                             "12",
                                             kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException, NotConvertible("- 12", "i8"),
                  CConversions::i8FromString("- 12", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException, NotConvertible("0x10", "ui8"),
                  CConversions::ui8FromString("0x10", kNone));
}

TEST(Conversions, NoDigitsAreNoInteger) {
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [] can not be converted to a i4",
                  CConversions::i4FromString("", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [] can not be converted to a i4",
                  CConversions::i4FromString("   ", kCollapse));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [   ] can not be converted to a i4",
                  CConversions::i4FromString("   ", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [] can not be converted to a i8",
                  CConversions::i8FromString("", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [] can not be converted to a ui4",
                  CConversions::ui4FromString("", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [] can not be converted to a ui8",
                  CConversions::ui8FromString("", kNone));
}

TEST(Conversions, AnIntegerOutOfRangeIsToLargeAtEitherEnd) {
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [2147483648] is to large to fit in a i4",
                  CConversions::i4FromString("2147483648", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [-2147483649] is to large to fit in a i4",
                  CConversions::i4FromString("-2147483649", kNone));
  EXPECT_EQ(std::numeric_limits<std::int32_t>::min(),
            CConversions::i4FromString("-2147483648", kNone));
  EXPECT_EQ(std::numeric_limits<std::int64_t>::min(),
            CConversions::i8FromString("-9223372036854775808", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "The value [9223372036854775808] is to large to fit in a i8",
                  CConversions::i8FromString("9223372036854775808", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [4294967296] is to large to fit in a ui4",
                  CConversions::ui4FromString("4294967296", kNone));
  EXPECT_EQ(18446744073709551615u, CConversions::ui8FromString("18446744073709551615", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "The value [18446744073709551616] is to large to fit in a ui8",
                  CConversions::ui8FromString("18446744073709551616", kNone));
}

TEST(Conversions, OutOfRangeIsToldAheadOfWhatStandsBehindTheNumber) {
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [99999999999x] is to large to fit in a i4",
                  CConversions::i4FromString("99999999999x", kNone));
}

TEST(Conversions, AMinusWrapsAnUnsignedInteger) {
  EXPECT_EQ(4294967295u, CConversions::ui4FromString("-1", kNone));
  EXPECT_EQ(1u, CConversions::ui4FromString("-4294967295", kNone));
  EXPECT_EQ(0u, CConversions::ui4FromString("-0", kNone));
  EXPECT_EQ(18446744073709551615u, CConversions::ui8FromString("-1", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [-1] is to large to fit in a ui1",
                  CConversions::ui1FromString("-1", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [-1] is to large to fit in a ui2",
                  CConversions::ui2FromString("-1", kNone));
  EXPECT_EQ(5, CConversions::ui1FromString("-4294967291", kNone));
}

TEST(Conversions, SmallIntegersTestTheirRangeBehindTheWiderParse) {
  EXPECT_EQ(127, static_cast<signed char>(CConversions::i1FromString("127", kNone)));
  EXPECT_EQ(-128, static_cast<signed char>(CConversions::i1FromString("-128", kNone)));
  EXPECT_EQ(32767, CConversions::i2FromString("32767", kNone));
  EXPECT_EQ(-32768, CConversions::i2FromString("-32768", kNone));
  EXPECT_EQ(255, CConversions::ui1FromString("255", kNone));
  EXPECT_EQ(65535, CConversions::ui2FromString("65535", kNone));

  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [128] is to large to fit in a i1",
                  CConversions::i1FromString("128", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [-129] is to large to fit in a i1",
                  CConversions::i1FromString("-129", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [32768] is to large to fit in a i2",
                  CConversions::i2FromString("32768", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [-32769] is to large to fit in a i2",
                  CConversions::i2FromString("-32769", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [256] is to large to fit in a ui1",
                  CConversions::ui1FromString("256", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [65536] is to large to fit in a ui2",
                  CConversions::ui2FromString("65536", kNone));
}

TEST(Conversions, SmallIntegersQuoteTheTextAheadOfTheRule) {
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [ 128 ] is to large to fit in a i1",
                  CConversions::i1FromString(" 128 ", kCollapse));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [ 256\n] is to large to fit in a ui1",
                  CConversions::ui1FromString(" 256\n", kCollapse));
}

TEST(Conversions, TheWiderParseOfASmallIntegerKeepsItsWordAndTheTextBehindTheRule) {
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [1 2] can not be converted to a i4",
                  CConversions::i1FromString(" 1  2 ", kCollapse));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [x] can not be converted to a i4",
                  CConversions::i2FromString("x", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [x] can not be converted to a ui4",
                  CConversions::ui1FromString("x", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [9999999999] is to large to fit in a ui4",
                  CConversions::ui2FromString(" 9999999999 ", kCollapse));
}

TEST(Conversions, ANumberQuotesTheTextBehindTheRule) {
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [1 x] can not be converted to a i4",
                  CConversions::i4FromString("\t1 \n x ", kCollapse));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [ 1  ] can not be converted to a i4",
                  CConversions::i4FromString("\t1 \n", kReplace));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [1\n] can not be converted to a i4",
                  CConversions::i4FromString("1\r\n", kPreserve));
}

TEST(Conversions, IntegersWriteTheirEnds) {
  EXPECT_EQ("-128", CConversions::i1ToString(static_cast<char>(-128)));
  EXPECT_EQ("127", CConversions::i1ToString(static_cast<char>(127)));
  EXPECT_EQ("-32768", CConversions::i2ToString(-32768));
  EXPECT_EQ("32767", CConversions::i2ToString(32767));
  EXPECT_EQ("-2147483648", CConversions::i4ToString(std::numeric_limits<std::int32_t>::min()));
  EXPECT_EQ("2147483647", CConversions::i4ToString(2147483647));
  EXPECT_EQ("-9223372036854775808",
            CConversions::i8ToString(std::numeric_limits<std::int64_t>::min()));
  EXPECT_EQ("9223372036854775807", CConversions::i8ToString(9223372036854775807));
  EXPECT_EQ("0", CConversions::ui1ToString(0));
  EXPECT_EQ("255", CConversions::ui1ToString(255));
  EXPECT_EQ("65535", CConversions::ui2ToString(65535));
  EXPECT_EQ("4294967295", CConversions::ui4ToString(4294967295u));
  EXPECT_EQ("18446744073709551615", CConversions::ui8ToString(18446744073709551615u));
}

TEST(Conversions, IntegersTakeThePlatformsOwnTypes) {
  const long wide = -1234567890123;
  const unsigned long unsignedWide = 12345678901234567890u;
  const long long longest = -1;
  EXPECT_EQ("-1234567890123", CConversions::i8ToString(wide));
  EXPECT_EQ("12345678901234567890", CConversions::ui8ToString(unsignedWide));
  EXPECT_EQ("-1", CConversions::i8ToString(longest));
}

TEST(Conversions, SmallIntegersAreTheirOwnTexts) {
  for (int i = -128; i <= 127; ++i) {
    const std::string text = CConversions::i1ToString(static_cast<char>(i));
    EXPECT_EQ(std::to_string(i), text);
    EXPECT_EQ(i, static_cast<signed char>(CConversions::i1FromString(text, kNone)));
  }
  for (int i = -32768; i <= 32767; i += 37) {
    EXPECT_EQ(i,
              CConversions::i2FromString(CConversions::i2ToString(static_cast<short>(i)), kNone));
  }
  for (unsigned i = 0; i <= 65535; i += 37) {
    const std::string text = CConversions::ui2ToString(static_cast<unsigned short>(i));
    EXPECT_EQ(i, CConversions::ui2FromString(text, kNone));
  }
}

// --- Dates that are plain numbers ---

TEST(Conversions, YearsMonthsAndDaysAreWrittenAsTheirLexicalForms) {
  EXPECT_EQ("0", CConversions::yearToString(0));
  EXPECT_EQ("1999", CConversions::yearToString(1999));
  EXPECT_EQ("65535", CConversions::yearToString(65535));
  EXPECT_EQ("--00", CConversions::monthToString(0));
  EXPECT_EQ("--09", CConversions::monthToString(9));
  EXPECT_EQ("--12", CConversions::monthToString(12));
  EXPECT_EQ("--255", CConversions::monthToString(255));
  EXPECT_EQ("---01", CConversions::dayToString(1));
  EXPECT_EQ("---31", CConversions::dayToString(31));
  EXPECT_EQ("---100", CConversions::dayToString(100));
}

// --- Booleans ---

TEST(Conversions, BooleansReadFourWordsInAnyCase) {
  for (const char* const text : {"true", "1", "TRUE", "True", "tRuE"}) {
    EXPECT_TRUE(CConversions::booleanFromString(text, kNone)) << text;
  }
  for (const char* const text : {"false", "0", "FALSE", "False", "fAlSe"}) {
    EXPECT_FALSE(CConversions::booleanFromString(text, kNone)) << text;
  }
  EXPECT_TRUE(CConversions::booleanFromString("\n true\t", kCollapse));
}

TEST(Conversions, BooleansQuoteTheTextAheadOfTheRule) {
  const std::string begin = "A Boolean Value read from an XML document was invalid [";
  const std::string end = "]. Valid values are 'true', 'false', '1', or '0'";
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "A Boolean Value read from an XML document was invalid [2]. Valid values are "
                  "'true', 'false', '1', or '0'",
                  CConversions::booleanFromString("2", kNone));
  for (const char* const text : {"", " ", "yes", "tru", "truee", "00", "10", "TRU\xC9", "-1"}) {
    EXPECT_QZ_THROW(CQzInvalidValueException, begin + text + end,
                    CConversions::booleanFromString(text, kNone));
  }
  EXPECT_QZ_THROW(CQzInvalidValueException, begin + " true" + end,
                  CConversions::booleanFromString(" true", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException, begin + " \t2\n" + end,
                  CConversions::booleanFromString(" \t2\n", kCollapse));
}

TEST(Conversions, BooleansAreWrittenAsWords) {
  EXPECT_EQ("true", CConversions::booleanToString(true));
  EXPECT_EQ("false", CConversions::booleanToString(false));
}

// --- Chars and strings ---

TEST(Conversions, ACharIsATextOfLengthOne) {
  EXPECT_EQ('a', CConversions::charFromString("a", kNone));
  EXPECT_EQ('a', CConversions::charFromString(" a ", kCollapse));
  EXPECT_EQ(' ', CConversions::charFromString(" ", kNone));
  EXPECT_EQ(' ', CConversions::charFromString("\r\n", kReplace));
  EXPECT_EQ("a", CConversions::charToString('a'));
  EXPECT_EQ(std::string(1, '\0'), CConversions::charToString('\0'));
  EXPECT_EQ('\0', CConversions::charFromString(std::string(1, '\0'), kNone));
}

TEST(Conversions, ACharQuotesTheTextBehindTheRule) {
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "The value [ab] can not be a char as it is either empty of greater than 1 char "
                  "long",
                  CConversions::charFromString("ab", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "The value [] can not be a char as it is either empty of greater than 1 char "
                  "long",
                  CConversions::charFromString("", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "The value [a b] can not be a char as it is either empty of greater than 1 char "
                  "long",
                  CConversions::charFromString(" a  b ", kCollapse));
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "The value [\xC3\xA4] can not be a char as it is either empty of greater than 1 "
                  "char long",
                  CConversions::charFromString("\xC3\xA4", kNone));
}

TEST(Conversions, AStringIsTheTextBehindTheRule) {
  EXPECT_EQ(" a\r\nb ", CConversions::stringFromString(" a\r\nb ", kNone));
  EXPECT_EQ(" a\nb ", CConversions::stringFromString(" a\r\nb ", kPreserve));
  EXPECT_EQ(" a b ", CConversions::stringFromString(" a\r\nb ", kReplace));
  EXPECT_EQ("a b", CConversions::stringFromString(" a\r\nb ", kCollapse));
  const std::string withZero("a\0b", 3);
  EXPECT_EQ(withZero, CConversions::stringFromString(withZero, kNone));
  EXPECT_EQ(withZero, CConversions::stringToString(withZero));
}

// --- Binary data ---

TEST(Conversions, BinaryDataIsWrittenInBothForms) {
  const unsigned char bytes[] = {0x0F, 0xA0, 0x4D};
  const CBinaryData data(bytes, sizeof bytes);
  EXPECT_EQ("0FA04D", CConversions::hexBinaryToString(data));
  EXPECT_EQ("D6BN", CConversions::base64BinaryToString(data));
  EXPECT_EQ("", CConversions::hexBinaryToString(CBinaryData()));
  EXPECT_EQ("", CConversions::base64BinaryToString(CBinaryData()));
}

TEST(Conversions, BinaryDataIsReadBehindTheRule) {
  EXPECT_EQ(CBinaryData("Man"), CConversions::hexBinaryFromString("4D616e", kNone));
  EXPECT_EQ(CBinaryData("Man"), CConversions::hexBinaryFromString("\n 4D616e ", kCollapse));
  EXPECT_EQ(CBinaryData("Man"), CConversions::hexBinaryFromString("4D616e ", kCollapse));
  EXPECT_EQ(CBinaryData(), CConversions::hexBinaryFromString("  ", kCollapse));
  EXPECT_EQ(CBinaryData("Man"), CConversions::base64BinaryFromString("TWFu", kNone));
  EXPECT_EQ(CBinaryData("Man"), CConversions::base64BinaryFromString(" TW\r\nFu\n", kPreserve));
  EXPECT_EQ(CBinaryData("Man"), CConversions::base64BinaryFromString(" TW\r\n \tFu\n", kCollapse));
  EXPECT_EQ(CBinaryData(), CConversions::base64BinaryFromString("", kCollapse));
}

TEST(Conversions, ABase64TextOfWhiteSpaceAloneIsEmptyBehindCollapse) {
  for (const std::string text : {" ", "\r\n\t ", "    "}) {
    const CBinaryData data = CConversions::base64BinaryFromString(text, kCollapse);
    EXPECT_EQ(CBinaryData(), data) << text;
    EXPECT_EQ("", CConversions::base64BinaryToString(data)) << text;
  }
  EXPECT_EQ(CBinaryData(),
            CConversions::base64BinaryFromString(std::string(" \0TWFu", 6), kCollapse));
}

TEST(Conversions, BinaryDataPassesItsOwnFailuresOn) {
  EXPECT_QZ_THROW(CQzException, "Invalid length in hex string",
                  CConversions::hexBinaryFromString("ABC", kNone));
  EXPECT_QZ_THROW(CQzException, "Invalid char in hex string [ ]",
                  CConversions::hexBinaryFromString(" 4D616e ", kNone));
  EXPECT_QZ_THROW(CQzException, "Invalid char in hex string [G]",
                  CConversions::hexBinaryFromString("0G", kNone));
}

// --- All kinds ---

TEST(Conversions, EveryKindRefusesAnUnknownRule) {
  const std::function<void()> readings[] = {
      [] { CConversions::hexBinaryFromString("00", kUnknown); },
      [] { CConversions::base64BinaryFromString("TWFu", kUnknown); },
      [] { CConversions::i1FromString("1", kUnknown); },
      [] { CConversions::i2FromString("1", kUnknown); },
      [] { CConversions::i4FromString("1", kUnknown); },
      [] { CConversions::i8FromString("1", kUnknown); },
      [] { CConversions::ui1FromString("1", kUnknown); },
      [] { CConversions::ui2FromString("1", kUnknown); },
      [] { CConversions::ui4FromString("1", kUnknown); },
      [] { CConversions::ui8FromString("1", kUnknown); },
      [] { CConversions::r4FromString("1", kUnknown); },
      [] { CConversions::r8FromString("1", kUnknown); },
      [] { CConversions::charFromString("1", kUnknown); },
      [] { CConversions::stringFromString("1", kUnknown); },
      [] { CConversions::booleanFromString("1", kUnknown); },
  };
  for (const auto& reading : readings) {
    EXPECT_QZ_THROW(CQzException, "Unknown WhitespaceRule", reading());
  }
}
