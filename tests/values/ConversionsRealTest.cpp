#include <clocale>
#include <cmath>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

#include "qzxml/values/Conversions.h"
#include "qzxml/values/OrdinaryFraction.h"
#include "tests/support/CLocale.h"
#include "tests/support/CommaLocale.h"
#include "tests/support/QzTest.h"
#include "tests/values/NumberTexts.h"

using QzXmlLib16::CConversions;
using QzXmlLib16::CQzInvalidValueException;
using QzXmlLib16::CWhitespaceUtils;
using QzXmlLib16::detail::WriteExactR8;
using QzXmlLib16::detail::WriteShortFraction;

namespace {

constexpr auto kNone = CWhitespaceUtils::WhitespaceRule_None;
constexpr auto kReplace = CWhitespaceUtils::WhitespaceRule_Replace;
constexpr auto kCollapse = CWhitespaceUtils::WhitespaceRule_Collapse;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
const double kNaN = std::numeric_limits<double>::quiet_NaN();

std::uint64_t GetBits(double value) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

double FromBits(std::uint64_t bits) {
  double value = 0;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

// Doubles of all sizes, the same at every run.
class Random {
 public:
  double NextDouble() {
    for (;;) {
      const double value = FromBits(Next());
      if (std::isfinite(value)) return value;
    }
  }
  std::uint64_t Next() {
    m_state = m_state * 6364136223846793005u + 1442695040888963407u;
    return m_state ^ (m_state >> 29);
  }

 private:
  std::uint64_t m_state = 20240229;
};

// What the C library reads in the "C" locale.
double Strtod(const std::string& text) {
  const qztest::CLocale locale;
  return std::strtod(text.c_str(), nullptr);
}

float Strtof(const std::string& text) {
  const qztest::CLocale locale;
  return std::strtof(text.c_str(), nullptr);
}

// What printf writes in the "C" locale, with a third digit in a two-digit exponent.
std::string Printed(const char* format, ...) {
  const qztest::CLocale locale;
  char buffer[512];
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(buffer, sizeof buffer, format, arguments);
  va_end(arguments);
  std::string text = buffer;
  const std::size_t mark = text.size() < 4 ? 0 : text.size() - 4;
  const bool isShort = text.substr(mark, 2).find_first_of("+-") == 1 &&
                       text.substr(mark, 1).find_first_of("eE") == 0;
  if (isShort) text.insert(mark + 2, "0");
  return text;
}

// Whether the text is a number: blanks, a sign, digits with a point among them, an exponent.
bool IsReal(const std::string& text) {
  std::size_t at = 0;
  const auto takeDigits = [&] {
    const std::size_t first = at;
    while (at < text.size() && text[at] >= '0' && text[at] <= '9') ++at;
    return at - first;
  };
  while (at < text.size() && text[at] == ' ') ++at;
  if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
  std::size_t digits = takeDigits();
  if (at < text.size() && text[at] == '.') {
    ++at;
    digits += takeDigits();
  }
  if (digits == 0) return false;
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    ++at;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
    if (takeDigits() == 0) return false;
  }
  return at == text.size();
}

void ExpectReal(const std::string& text) {
  const std::string r8Failure = "The value [" + text + "] can not be converted to a r8";
  const std::string r4Failure = "The value [" + text + "] can not be converted to a r4";
  if (!IsReal(text)) {
    ASSERT_TRUE(
        (qztest::Throws<CQzInvalidValueException>(text.c_str(), r8Failure, false, nullptr, [&] {
          CConversions::r8FromString(text, kNone);
        })));
    ASSERT_TRUE(
        (qztest::Throws<CQzInvalidValueException>(text.c_str(), r4Failure, false, nullptr, [&] {
          CConversions::r4FromString(text, kNone);
        })));
    return;
  }
  const double expected = Strtod(text);
  ASSERT_EQ(GetBits(expected), GetBits(CConversions::r8FromString(text, kNone))) << text;
  ASSERT_EQ(static_cast<float>(expected), CConversions::r4FromString(text, kNone)) << text;
}

struct FormatCase {
  const char* format;
  double value;
  const char* text;
};

// A third digit in the exponent, and a width that counts it.
const FormatCase kFormats[] = {
    {"%.2f", 3.14159, "3.14"},
    {"%.2f", -0.005, "-0.01"},
    {"%.0f", 2.5, "2"},
    {"%f", 1.5, "1.500000"},
    {"%lf", 1.5, "1.500000"},
    {"%F", 1.5, "1.500000"},
    {"%8.3f|", 3.14159, "   3.142|"},
    {"%-8.3f|", 3.14159, "3.142   |"},
    {"%08.3f", -3.14159, "-003.142"},
    {"%-08.3f|", 3.14159, "3.142   |"},
    {"%+.1f", 2.0, "+2.0"},
    {"% .1f", 2.0, " 2.0"},
    {"%+ .1f", 2.0, "+2.0"},
    {"%#.0f", 2.0, "2."},
    {"%'.1f", 1234567.25, "1234567.2"},
    {"%g", 100000.0, "100000"},
    {"%g", 1e6, "1e+006"},
    {"%G", 1e20, "1E+020"},
    {"%g", 1e-5, "1e-005"},
    {"%g", 1e100, "1e+100"},
    {"%.3g", 123456.0, "1.23e+005"},
    {"%#.3g", 1.0, "1.00"},
    {"%e", 1.5, "1.500000e+000"},
    {"%.0e", 1e-300, "1e-300"},
    {"%.3E", -12345.678, "-1.235E+004"},
    {"%12.2e|", 1.5, "   1.50e+000|"},
    {"%-12.2e|", 1.5, "1.50e+000   |"},
    {"%012.2e", -1.5, "-001.50e+000"},
    {"%+012.2e", 1.5, "+001.50e+000"},
    {"%9.2e|", 1.5, "1.50e+000|"},
    {"%a", 1.0, "0x1p+0"},
    {"%A", 1.0, "0X1P+0"},
    {"%010a", -1.0, "-0x0001p+0"},
    {"%.f", 2.75, "3"},
    {"%.1f %%", 12.5, "12.5 %"},
    {"about %.1f", 12.5, "about 12.5"},
    {"<%%%.1f%%>", 12.5, "<%12.5%>"},
    {"nothing", 12.5, "nothing"},
    {"100%%", 12.5, "100%"},
};

}  // namespace

// --- Writing ---

TEST(ConversionsReal, WritesSixteenAndSevenDigitsAsPrintfDoes) {
  const double values[] = {0.0,
                           -0.0,
                           1.0,
                           -1.0,
                           0.1,
                           0.5,
                           1.0 / 3,
                           9.95,
                           123456789.0,
                           1e15,
                           1e16,
                           1e17,
                           123456.7,
                           1234567.0,
                           12345678.0,
                           9999999.5,
                           0.0001,
                           0.00001,
                           9007199254740993.0,
                           1.7976931348623157e308,
                           2.2250738585072014e-308,
                           4.9e-324,
                           -4.9e-324,
                           99999999999999995.0};
  for (const double value : values) {
    EXPECT_EQ(Printed("%.16g", value), CConversions::r8ToString(value));
    const float narrow = static_cast<float>(value);
    if (!std::isfinite(narrow)) continue;
    EXPECT_EQ(Printed("%.7g", static_cast<double>(narrow)), CConversions::r4ToString(narrow));
  }
}

TEST(ConversionsReal, WritesEveryPowerOfTenAsPrintfDoes) {
  for (int exponent = -323; exponent <= 308; ++exponent) {
    const double value = Strtod("1.2345678901234567e" + std::to_string(exponent));
    const double power = Strtod("1e" + std::to_string(exponent));
    ASSERT_EQ(Printed("%.16g", value), CConversions::r8ToString(value));
    ASSERT_EQ(Printed("%.16g", power), CConversions::r8ToString(power));
    if (exponent < -44 || exponent > 37) continue;
    const float narrow = static_cast<float>(value);
    ASSERT_EQ(Printed("%.7g", static_cast<double>(narrow)), CConversions::r4ToString(narrow));
  }
}

TEST(ConversionsReal, WritesAnyDoubleAsPrintfDoes) {
  Random random;
  for (int i = 0; i < 20000; ++i) {
    const double value = random.NextDouble();
    ASSERT_EQ(Printed("%.16g", value), CConversions::r8ToString(value));
    const float narrow = static_cast<float>(std::fmod(value, 1e6));
    ASSERT_EQ(Printed("%.7g", static_cast<double>(narrow)), CConversions::r4ToString(narrow));
  }
}

// Prices and the like; halves in the last place that is shown, which are rounded to even; and the
// neighbours of the powers of ten, where rounding adds a digit.
TEST(ConversionsReal, WritesOrdinaryFractionsAsPrintfDoes) {
  Random random;
  const auto expectAsPrintf = [](double value) {
    ASSERT_EQ(Printed("%.16g", value), CConversions::r8ToString(value));
    const float narrow = static_cast<float>(value);
    ASSERT_EQ(Printed("%.7g", static_cast<double>(narrow)), CConversions::r4ToString(narrow));
  };
  for (int i = 0; i < 20000; ++i) {
    const double sign = i % 2 == 0 ? 1 : -1;
    const auto bits = [&random](int count) {
      return static_cast<double>(random.Next() >> (64 - count));
    };
    expectAsPrintf(sign * bits(27) / std::pow(10, i % 12));
    expectAsPrintf(sign * std::ldexp(bits(25), -(i % 40)));
    expectAsPrintf(sign * std::ldexp(bits(53), -(i % 70)));
  }
  for (int exponent = -6; exponent <= 17; ++exponent) {
    const double power = std::pow(10, exponent);
    for (const double value : {power, std::nextafter(power, 0), std::nextafter(power, 1e300)}) {
      expectAsPrintf(value);
    }
    const auto narrow = static_cast<float>(power);
    expectAsPrintf(static_cast<double>(std::nextafter(narrow, 0.0F)));
    expectAsPrintf(static_cast<double>(std::nextafter(narrow, 1e30F)));
  }
}

// The short way for a few places: numbers of a few places, up to three steps beside them, and any
// of their size. What is read back is the number, whenever it is written that way.
TEST(ConversionsReal, WritesFewPlacesAsPrintfDoes) {
  Random random;
  int shortOnes = 0;
  const auto expectAsPrintf = [&shortOnes](double value) {
    const std::string expected = Printed("%.16g", value);
    char text[64];
    const char* const end = WriteShortFraction(text, value);
    if (end != nullptr) {
      ++shortOnes;
      ASSERT_EQ(expected, std::string(text, static_cast<std::size_t>(end - text)));
      ASSERT_EQ(value, Strtod(expected)) << expected;
    }
    ASSERT_EQ(expected, CConversions::r8ToString(value));
  };
  const auto expectAround = [&](double value) {
    expectAsPrintf(value);
    double below = value;
    double above = value;
    for (int step = 0; step < 3; ++step) {
      expectAsPrintf(below = std::nextafter(below, 0));
      expectAsPrintf(above = std::nextafter(above, 1e9));
    }
  };
  for (int i = 0; i < 40000; ++i) {
    const auto any = static_cast<double>(random.Next() % 10000000);
    expectAround(any / 1000);
    expectAround(any / 1e4);
    expectAsPrintf(std::ldexp(static_cast<double>(random.Next() >> 11), -40 - i % 24));
    expectAsPrintf(std::ldexp(static_cast<double>(random.Next() >> 51), -(i % 14)));
  }
  for (int i = 1; i <= 10100; ++i) expectAround(i / 1000.0);
  for (int i = 1; i <= 10100; ++i) expectAround(i);
  for (int exponent = -14; exponent <= 16; ++exponent) expectAround(std::ldexp(1.0, exponent));
  EXPECT_GT(shortOnes, 40000);
  for (const double value : {0.0, -0.0, -1.5, 1e300, -1e300, 5e-324, kNaN, kInfinity, -kInfinity}) {
    char text[64];
    EXPECT_EQ(nullptr, WriteShortFraction(text, value)) << value;
  }
}

// A text that is said to be exact is, and most are said to be where they are.
TEST(ConversionsReal, TellsTextsThatReadBack) {
  Random random;
  int told = 0;
  int exact = 0;
  for (int i = 0; i < 40000; ++i) {
    const auto few = static_cast<double>(random.Next() % 10000000) / std::pow(10, i % 8);
    for (const double value : {few, -few, random.NextDouble()}) {
      char text[64];
      const char* const end = WriteExactR8(text, value);
      const std::string expected = Printed("%.16g", value);
      if (Strtod(expected) == value) ++exact;
      if (end == nullptr) continue;
      ++told;
      ASSERT_EQ(expected, std::string(text, static_cast<std::size_t>(end - text)));
      ASSERT_EQ(value, Strtod(expected)) << expected;
    }
  }
  EXPECT_GT(told, exact / 2);
  for (const double value : {0.0, -0.0, 17.0, -17.0, 0.25}) {
    char text[64];
    EXPECT_NE(nullptr, WriteExactR8(text, value)) << value;
  }
  for (const double value : {kNaN, kInfinity, -kInfinity}) {
    char text[64];
    EXPECT_EQ(nullptr, WriteExactR8(text, value)) << value;
  }
}

TEST(ConversionsReal, WritesWholeNumbersAsPrintfDoes) {
  for (const double power : {1e5, 1e6, 1e7, 1e8, 1e14, 1e15, 1e16, 1e17, 9007199254740992.0}) {
    for (int step = -3; step <= 3; ++step) {
      for (const double sign : {1.0, -1.0}) {
        const double value = sign * (power + step);
        ASSERT_EQ(Printed("%.16g", value), CConversions::r8ToString(value));
        const float narrow = static_cast<float>(value);
        ASSERT_EQ(Printed("%.7g", static_cast<double>(narrow)), CConversions::r4ToString(narrow));
      }
    }
  }
}

TEST(ConversionsReal, WritesExponentsWithThreeDigits) {
  EXPECT_EQ("1e+020", CConversions::r8ToString(1e20));
  EXPECT_EQ("1e-005", CConversions::r8ToString(1e-5));
  EXPECT_EQ("-1.5e+020", CConversions::r8ToString(-1.5e20));
  EXPECT_EQ("1e+100", CConversions::r8ToString(1e100));
  EXPECT_EQ("1e-300", CConversions::r8ToString(1e-300));
  EXPECT_EQ("1e+020", CConversions::r4ToString(1e20f));
  EXPECT_EQ("1e+007", CConversions::r4ToString(1e7f));
  EXPECT_EQ("1000000", CConversions::r4ToString(1e6f));
  EXPECT_EQ("-0", CConversions::r8ToString(-0.0));
}

TEST(ConversionsReal, WritesWhatIsNoNumberAsWords) {
  for (const char* const format : {"", "%.2f", "%e"}) {
    EXPECT_EQ("NaN", CConversions::r8ToString(kNaN, format));
    EXPECT_EQ("NaN", CConversions::r8ToString(-kNaN, format));
    EXPECT_EQ("INF", CConversions::r8ToString(kInfinity, format));
    EXPECT_EQ("-INF", CConversions::r8ToString(-kInfinity, format));
    EXPECT_EQ("NaN", CConversions::r4ToString(std::numeric_limits<float>::quiet_NaN(), format));
    EXPECT_EQ("INF", CConversions::r4ToString(std::numeric_limits<float>::infinity(), format));
    EXPECT_EQ("-INF", CConversions::r4ToString(-std::numeric_limits<float>::infinity(), format));
  }
}

TEST(ConversionsReal, HonoursAPrintfFormat) {
  for (const FormatCase& c : kFormats) {
    EXPECT_EQ(c.text, CConversions::r8ToString(c.value, c.format)) << c.format;
  }
  EXPECT_EQ("0.10", CConversions::r4ToString(0.1f, "%.2f"));
  EXPECT_EQ("0.10000000149011612", CConversions::r4ToString(0.1f, "%.17g"));
}

TEST(ConversionsReal, FormatsAnyDoubleAsPrintfDoes) {
  Random random;
  for (const char* const format :
       {"%f", "%.3f", "%10.1f", "%030.5f", "%-12.2f", "%+.1f", "%e", "%.12E", "%#.0e", "%g", "%G",
        "%+.4g", "% g", "%#g", "%#.12G", "%.17g", "%a", "%.3a", "%A"}) {
    for (int i = 0; i < 300; ++i) {
      const double any = random.NextDouble();
      const double value = i % 2 == 0 ? any : std::fmod(any, 1e5);
      ASSERT_EQ(Printed(format, value), CConversions::r8ToString(value, format)) << format;
    }
  }
}

TEST(ConversionsReal, AFormatMayGiveATextOfAnyLength) {
  const std::string digits = Printed("%f", 1e300);
  EXPECT_EQ(308u, digits.size());
  EXPECT_EQ(digits, CConversions::r8ToString(1e300, "%f"));
  EXPECT_EQ(Printed("%f", static_cast<double>(3e38f)), CConversions::r4ToString(3e38f, "%f"));
  EXPECT_EQ("0." + std::string(500, '0'), CConversions::r8ToString(0.0, "%.500f"));
  EXPECT_EQ(std::string(999, ' ') + "1", CConversions::r8ToString(1.0, "%1000.0f"));
  EXPECT_EQ(std::string(64, '1') + "2", CConversions::r8ToString(2.0, std::string(64, '1') + "%g"));
}

TEST(ConversionsReal, AFormatThatTakesNoSingleDoubleIsRefused) {
  for (const char* const format :
       {"%", "%d", "%s", "%n", "%c", "%Lf", "%hf", "%llf", "%*f", "%.*f", "%f%f", "%f %d", "%5",
        "%.2", "%l", "%12345678f", "%.12345678f", "%q", "%%%"}) {
    EXPECT_QZ_ASSERT("format takes one double", CConversions::r8ToString(1.5, format));
    EXPECT_QZ_ASSERT("format takes one double", CConversions::r4ToString(1.5f, format));
    qztest::AssertionRecorder recorder;
    EXPECT_EQ("1.5", CConversions::r8ToString(1.5, format)) << format;
    EXPECT_EQ("1.5", CConversions::r4ToString(1.5f, format)) << format;
  }
}

// --- Reading ---

TEST(ConversionsReal, ReadsEveryShortText) {
  for (const std::string& text : qztest::GetShortNumberTexts()) ExpectReal(text);
}

TEST(ConversionsReal, ReadsNumbersOfAllSizes) {
  const std::string zeros(400, '0');
  const std::string texts[] = {"1e308",
                               "1.7976931348623157e308",
                               "1.7976931348623158e308",
                               "1.7976931348623159e308",
                               "1e309",
                               "-1e309",
                               "1e400",
                               "1e+400",
                               "1E400",
                               "1e-323",
                               "4.9e-324",
                               "2.5e-324",
                               "2.4e-324",
                               "-2.4e-324",
                               "1e-400",
                               "-1e-400",
                               "0e400",
                               "0e-400",
                               "-0e999999",
                               "1e99999999999999999999",
                               "1e-99999999999999999999",
                               "-1e+99999999999999999999",
                               "0e99999999999999999999",
                               "0." + zeros + "1",
                               "0." + zeros + "1e401",
                               "0." + zeros + "1e800",
                               "1" + zeros,
                               "1" + zeros + "e-400",
                               "1" + zeros + "e-800",
                               "00" + zeros + ".5",
                               zeros + "1" + zeros,
                               "." + zeros + "1e-1",
                               "1" + zeros + "." + zeros,
                               "0.000e-999",
                               "9007199254740993",
                               "2.2250738585072011e-308",
                               "123456789012345678901234567890"};
  for (const std::string& text : texts) {
    ExpectReal(text);
    ExpectReal("+" + text);
    ExpectReal("-" + text.substr(text[0] == '-' ? 1 : 0));
    ExpectReal(text + "x");
  }
}

TEST(ConversionsReal, HasNoRange) {
  EXPECT_EQ(kInfinity, CConversions::r8FromString("1e400", kNone));
  EXPECT_EQ(-kInfinity, CConversions::r8FromString("-1e400", kNone));
  EXPECT_EQ(GetBits(0.0), GetBits(CConversions::r8FromString("1e-400", kNone)));
  EXPECT_EQ(GetBits(-0.0), GetBits(CConversions::r8FromString("-1e-400", kNone)));
  EXPECT_TRUE(std::isinf(CConversions::r4FromString("1e39", kNone)));
  EXPECT_EQ(0.0f, CConversions::r4FromString("1e-60", kNone));
}

TEST(ConversionsReal, AnR4IsReadAsADoubleAndNarrowed) {
  // Halfway between two floats and a little more: rounding twice loses the little.
  const std::string text = "1.00000005960464477540";
  EXPECT_EQ(static_cast<float>(Strtod(text)), CConversions::r4FromString(text, kNone));
  EXPECT_EQ(1.0f, CConversions::r4FromString(text, kNone));
  EXPECT_NE(1.0f, Strtof(text));
}

TEST(ConversionsReal, ReadsTheWordsExactlyAsTheyAreWritten) {
  for (const char* const text : {"NaN", "1.#QNAN", "-NAN"}) {
    EXPECT_TRUE(std::isnan(CConversions::r8FromString(text, kNone))) << text;
    EXPECT_TRUE(std::isnan(CConversions::r4FromString(text, kNone))) << text;
    EXPECT_FALSE(std::signbit(CConversions::r8FromString(text, kNone))) << text;
  }
  EXPECT_EQ("NaN", CConversions::r8ToString(CConversions::r8FromString("1.#QNAN", kNone)));
  EXPECT_EQ(kInfinity, CConversions::r8FromString("INF", kNone));
  EXPECT_EQ(-kInfinity, CConversions::r8FromString("-INF", kNone));
  EXPECT_EQ(kInfinity, CConversions::r8FromString("\n INF ", kCollapse));

  for (const char* const text :
       {"+INF",  "inf",    "-inf",     "Inf",      "INFINITY", "Infinity", "infinity", "nan",
        "NAN",   "+NaN",   "-NaN",     "nan(1)",   "NaN(1)",   "NaN ",     " NaN",     " INF",
        "INFx",  "1.#INF", "-1.#QNAN", "1.#QNAN0", "1.#",      "0x10",     "0x1p3",    "-0x1",
        "0X1.8", "1p3",    "1d5",      "1,5",      "1.5.5",    "1e5.5",    "--1",      "+-1",
        "-+1",   "1e++5",  "1 ",       "1 2",      ".",        "-.",       "e5",       ".e5",
        "",      "-",      "+"}) {
    ASSERT_TRUE((qztest::Throws<CQzInvalidValueException>(
        text, std::string("The value [") + text + "] can not be converted to a r8", false, nullptr,
        [&] { CConversions::r8FromString(text, kNone); })));
    ASSERT_TRUE((qztest::Throws<CQzInvalidValueException>(
        text, std::string("The value [") + text + "] can not be converted to a r4", false, nullptr,
        [&] { CConversions::r4FromString(text, kNone); })));
  }
}

TEST(ConversionsReal, SkipsBlanksAheadAndTakesAPlus) {
  EXPECT_EQ(1.5, CConversions::r8FromString(" \t\n\v\f\r1.5", kNone));
  EXPECT_EQ(1.5, CConversions::r8FromString("+1.5", kNone));
  EXPECT_EQ(1.5f, CConversions::r4FromString(" +1.5", kNone));
  EXPECT_EQ(-1.5, CConversions::r8FromString(" -1.5", kNone));
}

TEST(ConversionsReal, QuotesTheTextBehindTheRule) {
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [1.5 x] can not be converted to a r8",
                  CConversions::r8FromString(" 1.5\tx ", kCollapse));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [1.5  ] can not be converted to a r4",
                  CConversions::r4FromString("1.5\t\n", kReplace));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [] can not be converted to a r8",
                  CConversions::r8FromString("  ", kCollapse));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [1] can not be converted to a r8",
                  CConversions::r8FromString(std::string("1\0", 2), kNone));
}

TEST(ConversionsReal, ReadsBackWhatSeventeenDigitsSay) {
  Random random;
  for (int i = 0; i < 20000; ++i) {
    const double value = random.NextDouble();
    const std::string text = CConversions::r8ToString(value, "%.17g");
    ASSERT_EQ(GetBits(value), GetBits(CConversions::r8FromString(text, kNone))) << text;
  }
}

TEST(ConversionsReal, ReadsDigitsWithAPointAnywhereAmongThem) {
  Random random;
  for (int i = 0; i < 20000; ++i) {
    // As many digits as the case, and around the mantissas that a double holds.
    const std::uint64_t number = i % 4 == 0 ? 9007199254740992u - 20 + static_cast<unsigned>(i % 40)
                                            : GetBits(random.NextDouble()) >> (i % 60);
    std::string text = std::to_string(number);
    text.insert(static_cast<std::size_t>(i) % (text.size() + 1), ".");
    ExpectReal(text);
    ExpectReal("-" + text);
    ExpectReal(std::string(static_cast<std::size_t>(i % 5), '0') + text);
  }
  for (const char* const text :
       {"-0", "-0.0", "-", "-.", "1-", "1.2.3", "1.2-", "0.000000000000001", "9007199254740993",
        "0.9007199254740993", "900719925474099.3"}) {
    ExpectReal(text);
  }
}

// --- Locale ---

TEST(ConversionsReal, DoesNotCareForTheLocaleOfTheProcess) {
  const qztest::CommaLocale locale;
  if (!locale.Works()) GTEST_SKIP() << "localedef ended with " << locale.GetStatus();
  char printed[16];
  std::snprintf(printed, sizeof printed, "%.1f", 1.5);
  ASSERT_STREQ("1,5", printed);

  EXPECT_EQ("1.5", CConversions::r8ToString(1.5));
  EXPECT_EQ("1.5", CConversions::r4ToString(1.5f));
  EXPECT_EQ(1.5, CConversions::r8FromString("1.5", kNone));
  EXPECT_EQ(kInfinity, CConversions::r8FromString("1.5e999", kNone));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [1,5] can not be converted to a r8",
                  CConversions::r8FromString("1,5", kNone));
  for (const FormatCase& c : kFormats) {
    EXPECT_EQ(c.text, CConversions::r8ToString(c.value, c.format)) << c.format;
  }
}
