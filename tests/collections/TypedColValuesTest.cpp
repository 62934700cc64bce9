#include <cmath>
#include <type_traits>
#include <vector>

#include "tests/collections/OpenContent.h"
#include "tests/collections/TypedColKinds.h"
#include "tests/support/MemberTrial.h"
#include "tests/support/QzTest.h"

// What is particular to single kinds of value: facets, formats, and the texts that are refused.
namespace qztest {
namespace {

using Change = void (*)(ColOptions& o);

ColOptions With(Change change) {
  ColOptions options;
  change(options);
  return options;
}

ColOptions Format(const char* format) {
  ColOptions options;
  options.format = format;
  return options;
}
ColOptions Rule(CWhitespaceUtils::WhitespaceRule rule) {
  ColOptions options;
  options.rule = rule;
  return options;
}

TEST(TypedColValues, AreKeptAsTheHeaderShows) {
  Ci4Col sizes("size", "urn:shop", 0, -1, nullptr, -1, -1, "1", "60", nullptr, nullptr, -1, -1, -1,
               CWhitespaceUtils::WhitespaceRule_Collapse, nullptr);
  sizes.Add(38);
  sizes.AddAt(0, 36);
  std::int32_t total = 0;
  for (const std::int32_t size : sizes) total += size;
  EXPECT_EQ(74, total);
  EXPECT_QZ_THROW(CQzException, "Invalid Value for size [61]", sizes.Add(61));
  EXPECT_EQ(2, sizes.GetCount());
}

// --- Facets

// A collection of some kind, with a value that goes in and one that does not.
class CFacetTrial {
 public:
  virtual ~CFacetTrial() = default;
  virtual bool HasFacets() const = 0;
  virtual void AddGood() = 0;
  virtual void AddBad() = 0;
  virtual void AddBadInFront() = 0;
  virtual bool BeginsWithGood() const = 0;
};

template <typename Kind>
class CFacetTrialOf final : public CFacetTrial {
 public:
  using Value = typename Kind::Value;
  CFacetTrialOf(const ColOptions& o, const Value& good, const Value& bad)
      : col(o), m_good(good), m_bad(bad) {}
  bool HasFacets() const override { return col.HasFacets(); }
  void AddGood() override { col.Add(m_good); }
  void AddBad() override { col.Add(m_bad); }
  void AddBadInFront() override { col.AddAt(0, m_bad); }
  bool BeginsWithGood() const override { return col.Item(0) == m_good; }

  CMade<typename Kind::Col> col;

 private:
  const Value& m_good;
  const Value& m_bad;
};

// A value that keeps a facet goes in, one that does not leaves the collection as it was and the
// listeners with the first event alone (with none, in a collection of dates).
void ExpectFacet(CFacetTrial& trial, CXmlCollectionBase& col, CColListener::TextOf textOf,
                 bool isDate, const char* text) {
  EXPECT_TRUE(trial.HasFacets());
  trial.AddGood();
  ASSERT_EQ(1, col.GetCount());
  CColListener listener(col, textOf);
  EXPECT_QZ_THROW(CQzException, text, trial.AddBad());
  EXPECT_QZ_THROW(CQzException, text, trial.AddBadInFront());
  EXPECT_EQ(isDate ? 0U : 2U, listener.log.size());
  for (const std::string& line : listener.log) EXPECT_EQ("add ", line.substr(0, 4));
  EXPECT_EQ(1, col.GetCount());
  EXPECT_TRUE(trial.BeginsWithGood());
}

template <typename Kind>
void ExpectFacet(Change facet, const typename Kind::Value& good, const typename Kind::Value& bad,
                 const char* text) {
  const testing::ScopedTrace trace(__FILE__, __LINE__, Kind::kName);
  CFacetTrialOf<Kind> trial(With(facet), good, bad);
  ExpectFacet(trial, trial.col, &TextOfValue<Kind>, Kind::kIsDate, text);
}

TEST(TypedColValues, KeepTheFacetsOfNumbers) {
  ExpectFacet<I1>([](ColOptions& o) { o.maxInclusive = "5"; }, 5, 6, "Invalid Value for v [6]");
  ExpectFacet<I2>([](ColOptions& o) { o.minExclusive = "10"; }, 11, 10, "Invalid Value for v [10]");
  ExpectFacet<I4>([](ColOptions& o) { o.minInclusive = " 10 "; }, 10, 9, "Invalid Value for v [9]");
  ExpectFacet<I4>([](ColOptions& o) { o.totalDigits = 2; }, 99, -10, "Invalid Value for v [-10]");
  ExpectFacet<I8>([](ColOptions& o) { o.maxExclusive = "5"; }, 4, 5, "Invalid Value for v [5].");
  ExpectFacet<Ui1>([](ColOptions& o) { o.minInclusive = "5"; }, 5, 4, "Invalid Value for v [4]");
  ExpectFacet<Ui2>([](ColOptions& o) { o.totalDigits = 4; }, 9999, 10000,
                   "Invalid Value for v [10000]");
  ExpectFacet<Ui4>([](ColOptions& o) { o.maxInclusive = "5"; }, 5, 6, "Invalid Value for v [6]");
  ExpectFacet<Ui8>([](ColOptions& o) { o.totalDigits = 3; }, 999, 18446744073709551615U,
                   "Invalid Value for v [18446744073709551615].");
  ExpectFacet<R4>([](ColOptions& o) { o.maxExclusive = "1.5"; }, 1.25F, 1.5F,
                  "Invalid Value for v [1.500000]");
  ExpectFacet<R8>([](ColOptions& o) { o.minInclusive = "0"; }, 0.0, -0.5,
                  "Invalid Value for v [-0.500000]");
}

TEST(TypedColValues, KeepTheFacetsOfTextAndOctets) {
  ExpectFacet<String>([](ColOptions& o) { o.minLength = 2; }, "ab", "a",
                      "Invalid Value for v [a].");
  ExpectFacet<String>([](ColOptions& o) { o.maxLength = 2; }, "ab", "abc",
                      "Invalid Value for v [abc].");
  ExpectFacet<String>([](ColOptions& o) { o.pattern = "[a-z]+\\d"; }, "ab7", "ab",
                      "Invalid Value for v [ab].");
  ExpectFacet<HexBinary>([](ColOptions& o) { o.length = 2; }, Octets({1, 2}), Octets({10}),
                         "Invalid Value for v [0A].");
  ExpectFacet<Base64Binary>([](ColOptions& o) { o.maxLength = 1; }, Octets({1}), Octets({0, 255}),
                            "Invalid Value for v [AP8=].");
}

TEST(TypedColValues, KeepTheFacetsOfNumbersOfAnySize) {
  ExpectFacet<Decimal>([](ColOptions& o) { o.fractionDigits = 1; }, CDecimal("1.50"),
                       CDecimal("1.25"), "Invalid Value for v [1.25].");
  ExpectFacet<Decimal>([](ColOptions& o) { o.maxInclusive = "1e3"; }, CDecimal("1000"),
                       CDecimal("1000.5"), "Invalid Value for v [1000.5].");
  ExpectFacet<Integer>([](ColOptions& o) { o.totalDigits = 3; }, CBigInteger("-99"),
                       CBigInteger("1234"), "Invalid Value for v [1234].");
}

TEST(TypedColValues, KeepTheFacetsOfDatesAndDurations) {
  ExpectFacet<Duration>([](ColOptions& o) { o.maxInclusive = "P1Y"; },
                        CDateTimeSpan(1, 0, 0, 0, 0, 0), CDateTimeSpan(2, 0, 0, 0, 0, 0),
                        "Invalid Value for v [P2Y].");
  ExpectFacet<Year>([](ColOptions& o) { o.minInclusive = "2000"; }, 2000, 1999,
                    "Invalid Value for v [1999]");
  ExpectFacet<Month>([](ColOptions& o) { o.maxInclusive = "--06"; }, 6, 7,
                     "Invalid Value for v [7]");
  ExpectFacet<Day>([](ColOptions& o) { o.minExclusive = "---09"; }, 10, 9,
                   "Invalid Value for v [9]");
  ExpectFacet<YearMonth>([](ColOptions& o) { o.maxExclusive = "2004-05"; }, YearMonthOf(2004, 4),
                         YearMonthOf(2004, 5), "Invalid Value for v [2004-05].");
  ExpectFacet<MonthDay>([](ColOptions& o) { o.minInclusive = "--05-06"; }, MonthDayOf(5, 6),
                        MonthDayOf(5, 5), "Invalid Value for v [--05-05].");
  ExpectFacet<Date>([](ColOptions& o) { o.maxInclusive = "2004-05-06"; }, CDateTime(2004, 5, 6),
                    CDateTime(2004, 5, 7), "Invalid Value for v [2004-05-07].");
  ExpectFacet<Datetime>([](ColOptions& o) { o.minExclusive = "2004-05-06T00:00:00"; },
                        CDateTime(2004, 5, 6, 0, 0, 1), CDateTime(2004, 5, 6, 0, 0, 0),
                        "Invalid Value for v [2004-05-06T00:00:00].");
  ExpectFacet<Time>([](ColOptions& o) { o.minInclusive = "08:00:00"; }, TimeOf(8, 0, 0),
                    TimeOf(7, 59, 59), "Invalid Value for v [07:59:59].");
}

TEST(TypedColValues, MeetNoFacetThatTheirKindHasNot) {
  CMade<Ci4Col> numbers(With([](ColOptions& o) {
    o.pattern = "x";
    o.minLength = 100;
    o.length = 100;
    o.fractionDigits = 0;
  }));
  numbers.Add(5);
  CMade<CbooleanCol> booleans(With([](ColOptions& o) {
    o.pattern = "x";
    o.maxLength = 0;
    o.minInclusive = "x";
    o.totalDigits = 0;
  }));
  booleans.Add(true);
  EXPECT_EQ(1, numbers.GetCount());
  EXPECT_EQ(1, booleans.GetCount());
}

TEST(TypedColValues, GiveTheFailureOfAFacetThatDoesNotParse) {
  CMade<Ci4Col> col(With([](ColOptions& o) { o.maxInclusive = "ten"; }));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [ten] can not be converted to a i4",
                  col.Add(5));
  EXPECT_EQ(0, col.GetCount());
}

TEST(TypedColValues, KnowWhetherAnyFacetIsThere) {
  EXPECT_FALSE(CMade<Ci4Col>().HasFacets());
  const Change facets[] = {
      [](ColOptions& o) { o.pattern = "a"; },      [](ColOptions& o) { o.minLength = 0; },
      [](ColOptions& o) { o.maxLength = 0; },      [](ColOptions& o) { o.minInclusive = "0"; },
      [](ColOptions& o) { o.maxInclusive = "0"; }, [](ColOptions& o) { o.minExclusive = "0"; },
      [](ColOptions& o) { o.maxExclusive = "0"; }, [](ColOptions& o) { o.length = 0; },
      [](ColOptions& o) { o.totalDigits = 0; },    [](ColOptions& o) { o.fractionDigits = 0; },
  };
  for (const Change facet : facets) EXPECT_TRUE(CMade<Ci4Col>(With(facet)).HasFacets());
}

// --- Formats

TEST(TypedColValues, WriteRealsByTheFormat) {
  CMade<Cr8Col> doubles(Format("%.2f"));
  doubles.Add(1.0);
  doubles.Add(-2.345);
  doubles.Add(HUGE_VAL);
  EXPECT_EQ("<owner><v>1.00</v><v>-2.35</v><v>INF</v></owner>", WriteInOwner(&doubles));
  CMade<Cr4Col> floats(Format("%08.3f"));
  floats.Add(0.5F);
  EXPECT_EQ("<owner><v>0000.500</v></owner>", WriteInOwner(&floats));
}

TEST(TypedColValues, WriteDecimalsWithThePlacesOfTheFormat) {
  const struct {
    const char* format;
    const char* text;
  } cases[] = {{nullptr, "1.25"}, {"", "1.25"},   {"1", "1.3"},
               {"2", "1.25"},     {"3", "1.250"}, {"x", "1."}};
  for (const auto& c : cases) {
    CMade<CdecimalCol> col(Format(c.format));
    col.Add(CDecimal("1.25"));
    EXPECT_EQ(std::string("<owner><v>") + c.text + "</v></owner>", WriteInOwner(&col)) << c.text;
  }
}

TEST(TypedColValues, IgnoreAFormatThatIsNotForThem) {
  CMade<Ci4Col> numbers(Format("%.2f"));
  numbers.Add(7);
  EXPECT_EQ("<owner><v>7</v></owner>", WriteInOwner(&numbers));
  CMade<CstringCol> texts(Format("%.2f"));
  texts.Add("7");
  EXPECT_EQ("<owner><v>7</v></owner>", WriteInOwner(&texts));
  CMade<CintegerCol> integers(Format("2"));
  integers.Add(CBigInteger("7"));
  EXPECT_EQ("<owner><v>7</v></owner>", WriteInOwner(&integers));
  CMade<CdateCol> dates(Format("G"));
  dates.Add(CDateTime(2004, 5, 6));
  EXPECT_EQ("<owner><v>2004-05-06</v></owner>", WriteInOwner(&dates));
}

// --- Types

TEST(TypedColValues, AreOfThePlainTypesOfTheirKinds) {
  EXPECT_TRUE((std::is_same_v<decltype(Ci1Col::iterator()), std::vector<char>::iterator>));
  EXPECT_TRUE(
      (std::is_same_v<decltype(CyearCol::iterator()), std::vector<unsigned short>::iterator>));
  EXPECT_TRUE((std::is_same_v<decltype(CbooleanCol::iterator()), std::vector<bool>::iterator>));
  CMade<Ci4Col> col;
  for (int i = 0; i < 4; ++i) col.Add(i);
  col.Remove(0);
  const std::int32_t* const values = &*col.begin();
  EXPECT_EQ(1, values[0]);
  EXPECT_EQ(3, values[2]);
}

TEST(TypedColValues, BooleansAreReachedThroughProxies) {
  CMade<CbooleanCol> col;
  for (const char* text : {"true", "FALSE", " 1 ", "0"}) col.AddFromString(text);
  EXPECT_EQ("<owner><v>true</v><v>false</v><v>true</v><v>false</v></owner>", WriteInOwner(&col));
  *col.begin() = false;
  for (auto value : col) value = !value;
  EXPECT_TRUE(col.Item(0));
  EXPECT_TRUE(col.Item(1));
  EXPECT_FALSE(col.Item(2));
}

TEST(TypedColValues, AYearBelowZeroIsReadAsItsSixteenBits) {
  CMade<CyearCol> col;
  col.AddFromString("-0001");
  EXPECT_EQ(65535, col.Item(0));
  EXPECT_EQ("<owner><v>65535</v></owner>", WriteInOwner(&col));
}

// --- Reading

TEST(TypedColValues, AreReadByTheRuleOfWhiteSpace) {
  const struct {
    CWhitespaceUtils::WhitespaceRule rule;
    const char* text;
  } cases[] = {{CWhitespaceUtils::WhitespaceRule_None, " a\r\n\tb  c "},
               {CWhitespaceUtils::WhitespaceRule_Preserve, " a\n\tb  c "},
               {CWhitespaceUtils::WhitespaceRule_Replace, " a  b  c "},
               {CWhitespaceUtils::WhitespaceRule_Collapse, "a b c"}};
  for (const auto& c : cases) {
    CMade<CstringCol> col(Rule(c.rule));
    col.AddFromString(" a\r\n\tb  c ");
    EXPECT_EQ(c.text, col.Item(0));
  }
  CMade<CstringCol> trimmed(Rule(CWhitespaceUtils::WhitespaceRule_Collapse));
  trimmed.AddFromString(" in the middle of blanks ");
  trimmed.AddFromString("behind blanks");
  trimmed.AddFromString("ahead of blanks  ");
  EXPECT_EQ("in the middle of blanks", trimmed.Item(0));
  EXPECT_EQ("behind blanks", trimmed.Item(1));
  EXPECT_EQ("ahead of blanks", trimmed.Item(2));
  CMade<Ci4Col> numbers(Rule(CWhitespaceUtils::WhitespaceRule_None));
  numbers.AddFromString(" 12");
  EXPECT_EQ(12, numbers.Item(0));
  EXPECT_QZ_THROW(CQzInvalidValueException, "The value [12 ] can not be converted to a i4",
                  numbers.AddFromString("12 "));
}

TEST(TypedColValues, KeepEveryOctetOfAText) {
  const std::string text("a\0b", 3);
  CMade<CstringCol> col(Rule(CWhitespaceUtils::WhitespaceRule_None));
  col.AddFromString(text);
  col.Add(text);
  col.AddFromString("");
  EXPECT_EQ(text, col.Item(0));
  EXPECT_EQ(text, col.Item(1));
  EXPECT_EQ("", col.Item(2));
}

TEST(TypedColValues, RefuseAnUnknownRuleOfWhiteSpace) {
  const ColOptions unknown = Rule(static_cast<CWhitespaceUtils::WhitespaceRule>(4));
  CMade<CstringCol> texts(unknown);
  CMade<Ci4Col> numbers(unknown);
  EXPECT_QZ_THROW(CQzException, "Unknown WhitespaceRule", texts.AddFromString("a"));
  EXPECT_QZ_THROW(CQzException, "Unknown WhitespaceRule", numbers.AddFromString("1"));
}

// Reads a good item and a bad one: the class of the failure and its text. The good one stays, and
// nobody hears of the bad one unless its text is a value.
std::string ReadBad(CXmlCollectionBase& col, CColListener::TextOf textOf, const std::string& good,
                    const char* bad) {
  const CLoaded document(
      ("<r><v>" + good + "</v><v>" + bad + "</v><v>" + good + "</v></r>").c_str());
  CColListener listener(col, textOf);
  const std::string outcome = Outcome([&] {
    CWalk::Read(&col, document.root(), document.root()->GetFirstElement());
    return std::string("read");
  });
  EXPECT_EQ(1, col.GetCount());
  EXPECT_EQ(3U, listener.log.size());
  return outcome;
}

template <typename Kind>
std::string ReadBad(const char* bad) {
  const testing::ScopedTrace trace(__FILE__, __LINE__, Kind::kName);
  CMade<typename Kind::Col> col;
  return ReadBad(col, &TextOfValue<Kind>, Kind::Samples()[0].text, bad);
}

TEST(TypedColValues, FailToReadWhatIsNoNumber) {
  const std::string invalid = "CQzInvalidValueException: ";
  EXPECT_EQ(invalid + "The value [128] is to large to fit in a i1", ReadBad<I1>("128"));
  EXPECT_EQ(invalid + "The value [] can not be converted to a i4", ReadBad<I2>(""));
  EXPECT_EQ(invalid + "The value [1 2] can not be converted to a i4", ReadBad<I4>(" 1 2 "));
  EXPECT_EQ(invalid + "The value [9223372036854775808] is to large to fit in a i8",
            ReadBad<I8>("9223372036854775808"));
  EXPECT_EQ(invalid + "The value [-1] is to large to fit in a ui1", ReadBad<Ui1>("-1"));
  EXPECT_EQ(invalid + "The value [65536] is to large to fit in a ui2", ReadBad<Ui2>("65536"));
  EXPECT_EQ(invalid + "The value [4294967296] is to large to fit in a ui4",
            ReadBad<Ui4>("4294967296"));
  EXPECT_EQ(invalid + "The value [x] can not be converted to a ui8", ReadBad<Ui8>("x"));
  EXPECT_EQ(invalid + "The value [+INF] can not be converted to a r4", ReadBad<R4>("+INF"));
  EXPECT_EQ(invalid + "The value [1,5] can not be converted to a r8", ReadBad<R8>("1,5"));
}

TEST(TypedColValues, FailToReadWhatIsNoTruthValueAndNoOctets) {
  EXPECT_EQ(
      "CQzInvalidValueException: A Boolean Value read from an XML document was invalid [2]. Valid "
      "values are 'true', 'false', '1', or '0'",
      ReadBad<Boolean>("2"));
  EXPECT_EQ("CQzException: Invalid length in hex string", ReadBad<HexBinary>("0"));
  EXPECT_EQ("CQzException: Invalid char in hex string [g]", ReadBad<HexBinary>("0g"));
}

TEST(TypedColValues, FailToReadWhatIsNoNumberOfAnySize) {
  EXPECT_EQ(
      "CQzInvalidValueException: The string representing a Decimal, contained an invalid char at "
      "position 1 [1x].",
      ReadBad<Decimal>("1x"));
  EXPECT_EQ(
      "CQzInvalidValueException: The string representing a Decimal, contained an invalid char at "
      "position 1 [1x].",
      ReadBad<Integer>("1x"));
}

TEST(TypedColValues, FailToReadWhatIsNoDateOrDuration) {
  const std::string invalid = "CQzInvalidValueException: ";
  EXPECT_EQ(invalid + "Invalid XSD Duration [1Y] expected [-]P[nY][nM][nD][T[nH][nM][nS.ff]]",
            ReadBad<Duration>("1Y"));
  EXPECT_EQ("CQzInvalidStateException: Failed to GetYear. Invalid Date Type: gMonth.",
            ReadBad<Year>("--05"));
  EXPECT_EQ("CQzInvalidStateException: Failed to GetMonth. Invalid Date Type: gDay.",
            ReadBad<Month>("---05"));
  EXPECT_EQ("CQzInvalidStateException: Failed to GetDay. Invalid Date Type: gYear.",
            ReadBad<Day>("2004"));
  EXPECT_EQ(invalid + "Invalid XSD Date [04-5] expected CCYY-MM-DD[Z|[+|-]hh:mm]",
            ReadBad<YearMonth>("04-5"));
  EXPECT_EQ(invalid + "Invalid XSD DateTime [2004-05-06].", ReadBad<Datetime>("2004-05-06"));
  EXPECT_EQ(invalid + "Invalid XSD Time [24:00:00] expected hh:mm:ss[.ff]",
            ReadBad<Time>("24:00:00"));
}

}  // namespace
}  // namespace qztest
