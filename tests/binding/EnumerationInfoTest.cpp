#include <thread>

#include "qzxml/binding/EnumerationInfo.h"
#include "tests/support/QzTest.h"

using namespace QzXmlLib16;

namespace {

const char* const kFixTexts[] = {"none", "2d", "3d", "dgps", "pps"};
const CEnumerationInfo kFix(kFixTexts, CWhitespaceUtils::WhitespaceRule_Collapse);

// In no order, with one text twice.
const char* const kCurrencyTexts[] = {"EUR", "CHF", "USD", "GBP", "JPY", "SEK", "NOK", "DKK",
                                      "PLN", "CZK", "HUF", "AUD", "CAD", "NZD", "INR", "BRL",
                                      "ZAR", "KRW", "MXN", "SGD", "HKD", "CHF"};
const CEnumerationInfo kCurrency(kCurrencyTexts, CWhitespaceUtils::WhitespaceRule_None);

}  // namespace

TEST(EnumerationInfo, TellsTextAndNumberBothWays) {
  ASSERT_EQ(5u, kFix.GetCount());
  for (int i = 0; i < 5; ++i) {
    EXPECT_STREQ(kFixTexts[i], kFix.ToText(i));
    EXPECT_EQ(i, kFix.FromText(kFixTexts[i]));
  }
}

TEST(EnumerationInfo, ReadsBehindItsWhiteSpaceRule) {
  EXPECT_EQ(3, kFix.FromText(" \t dgps\n"));
  EXPECT_QZ_THROW(
      CQzInvalidValueException,
      "The value [ EUR] is not one of EUR, CHF, USD, GBP, JPY, SEK, NOK, DKK, PLN, CZK, "
      "HUF, AUD, CAD, NZD, INR, BRL, ZAR, KRW, MXN, SGD, ...",
      kCurrency.FromText(" EUR"));
}

TEST(EnumerationInfo, RefusesAnyOtherText) {
  for (const char* text : {"2D", "4d", "non", "nonee", "none 2d"}) {
    EXPECT_QZ_THROW(CQzInvalidValueException,
                    "The value [" + std::string(text) + "] is not one of none, 2d, 3d, dgps, pps",
                    kFix.FromText(text));
  }
  for (const char* text : {static_cast<const char*>(nullptr), "", "  "}) {
    EXPECT_QZ_THROW(CQzInvalidValueException, "The value [] is not one of none, 2d, 3d, dgps, pps",
                    kFix.FromText(text));
  }
}

TEST(EnumerationInfo, RefusesANumberThatIsNoEnumerators) {
  for (const int value : {-1, 5, 2147483647, -2147483647 - 1}) {
    EXPECT_QZ_THROW(
        CQzInvalidValueException,
        "The value [" + std::to_string(value) + "] is not one of none, 2d, 3d, dgps, pps",
        kFix.ToText(value));
  }
}

TEST(EnumerationInfo, FindsEachOfManyTextsAndTheFirstOfEqualOnes) {
  for (int i = 0; i < 21; ++i) EXPECT_EQ(i, kCurrency.FromText(kCurrencyTexts[i]));
  EXPECT_EQ(1, kCurrency.FromText(kCurrency.ToText(21)));
  for (const char* text : {"AAA", "ZZZ", "EU", "EURO", ""}) {
    EXPECT_THROW(kCurrency.FromText(text), CQzInvalidValueException) << text;
  }
}

TEST(EnumerationInfo, ManyThreadsMayBeTheFirstToLookUp) {
  static const CEnumerationInfo s_shared(kCurrencyTexts, CWhitespaceUtils::WhitespaceRule_None);
  std::vector<std::thread> threads;
  std::vector<int> found(4, -1);
  for (std::size_t i = 0; i < found.size(); ++i) {
    threads.emplace_back([&found, i] { found[i] = s_shared.FromText("SGD"); });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(std::vector<int>(4, 19), found);
}
