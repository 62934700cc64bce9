#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "qzxml/fastinfoset/FITextIndexes.h"
#include "qzxml/fastinfoset/FITextIndexesFind.h"

namespace QzXmlLib16::detail {
namespace {

using Oracle = std::map<std::string, std::uint32_t>;

// Texts of every length that is kept in its own way, which differ in one byte at a time; a zero
// byte is one as any other.
std::vector<std::string> SimilarTexts() {
  std::vector<std::string> texts;
  for (std::size_t size = 0; size <= 40; ++size) {
    texts.emplace_back(size, 'a');
    for (std::size_t at = 0; at < size; ++at) {
      for (const char c : {'b', '\0', '\xFF'}) {
        texts.emplace_back(size, 'a');
        texts.back()[at] = c;
      }
    }
  }
  return texts;
}

void ExpectSame(const Oracle& oracle, const CFITextIndexes& indexes) {
  ASSERT_EQ(oracle.size(), indexes.GetCount());
  auto all = indexes.GetAll();
  std::sort(all.begin(), all.end());
  EXPECT_EQ((std::vector<std::pair<std::string, std::uint32_t>>(oracle.begin(), oracle.end())),
            all);
  for (const auto& [text, index] : oracle) EXPECT_EQ(index, indexes.Find(text)) << text;
}

TEST(FITextIndexes, ATextThatIsNotThereHasNoIndex) {
  CFITextIndexes indexes;
  EXPECT_EQ(0u, indexes.Find(""));
  EXPECT_EQ(0u, indexes.Find("a"));
  EXPECT_EQ(0u, indexes.Find("longer than a word"));
  indexes.Set("a", 1);
  EXPECT_EQ(0u, indexes.Find(""));
  EXPECT_EQ(0u, indexes.Find("b"));
  EXPECT_EQ(0u, indexes.Find(std::string("a\0", 2)));
}

TEST(FITextIndexes, EachOfManySimilarTextsHasItsOwnIndex) {
  Oracle oracle;
  CFITextIndexes indexes;
  for (const std::string& text : SimilarTexts()) {
    const auto index = static_cast<std::uint32_t>(oracle.size() + 1);
    EXPECT_EQ(0u, indexes.Find(text)) << text;
    indexes.Add(text, CFITextIndexes::KeyOf(text), index);
    oracle.emplace(text, index);
  }
  ExpectSame(oracle, indexes);
}

TEST(FITextIndexes, AnIndexTakesThePlaceOfTheOneBefore) {
  Oracle oracle;
  CFITextIndexes indexes;
  std::uint32_t index = 0;
  for (int round = 0; round < 2; ++round) {
    for (const char* text : {"", "a", "seven c", "eight ch", "far more than a word"}) {
      oracle[text] = ++index;
      indexes.Set(text, index);
    }
  }
  ExpectSame(oracle, indexes);
}

TEST(FITextIndexes, ACopyIsDeep) {
  CFITextIndexes indexes;
  indexes.Set("a", 1);
  indexes.Set("longer than a word", 2);
  CFITextIndexes copy(indexes);
  indexes.Set("a", 3);
  indexes.Set("another long text", 4);
  ExpectSame({{"a", 1}, {"longer than a word", 2}}, copy);
  copy = indexes;
  ExpectSame({{"a", 3}, {"longer than a word", 2}, {"another long text", 4}}, copy);
}

TEST(FITextIndexes, ATextGoesWhereItWasLookedFor) {
  Oracle oracle;
  CFITextIndexes indexes;
  for (const std::string& text : SimilarTexts()) {
    const std::uint64_t key = CFITextIndexes::KeyOf(text);
    const auto index = static_cast<std::uint32_t>(oracle.size() + 1);
    const CFITextIndexes::Place place = indexes.Look(text, key);
    ASSERT_EQ(0u, place.index) << text;
    indexes.AddAt(place, text, key, index);
    EXPECT_EQ(index, indexes.Look(text, key).index) << text;
    oracle[text] = index;
  }
  ExpectSame(oracle, indexes);
}

TEST(FITextIndexes, TheTextThatWasAddedLastCanBeTakenAway) {
  Oracle oracle;
  CFITextIndexes indexes;
  for (const std::string& text : SimilarTexts()) {
    const auto index = static_cast<std::uint32_t>(oracle.size() + 1);
    const std::string last = text + "!";
    const std::uint64_t key = CFITextIndexes::KeyOf(last);
    indexes.Add(last, key, index);
    indexes.RemoveLast(last, key);
    EXPECT_EQ(0u, indexes.Find(last)) << last;
    indexes.Add(text, CFITextIndexes::KeyOf(text), index);
    oracle[text] = index;
  }
  ExpectSame(oracle, indexes);
}

TEST(FITextIndexes, NothingIsThereBehindClear) {
  CFITextIndexes indexes;
  const std::vector<std::string> texts = SimilarTexts();
  for (int round = 0; round < 3; ++round) {
    Oracle oracle;
    for (const std::string& text : texts) {
      ASSERT_EQ(0u, indexes.Find(text)) << round << text;
      const auto index = static_cast<std::uint32_t>(oracle.size() + 1);
      indexes.Set(text, index);
      oracle[text] = index;
    }
    ExpectSame(oracle, indexes);
    indexes.Clear();
    ExpectSame({}, indexes);
  }
}

// The numbers that are stored come to their end, and begin again.
TEST(FITextIndexes, ItMayBeClearedAnyNumberOfTimes) {
  CFITextIndexes indexes;
  for (int round = 0; round < 1000; ++round) {
    const std::string own = "round " + std::to_string(round);
    ASSERT_EQ(0u, indexes.Find("a")) << round;
    indexes.Set("a", 1);
    indexes.Set(own, CFITextIndexes::kMostIndex);
    CFITextIndexes copy(indexes);
    ExpectSame({{"a", 1}, {own, CFITextIndexes::kMostIndex}}, copy);
    ASSERT_FALSE(HasFailure()) << round;
    indexes.Clear();
  }
}

// Whatever is kept: the next texts are few, or many.
TEST(FITextIndexes, ManyTextsMayComeBehindFewAndFewBehindMany) {
  CFITextIndexes indexes;
  for (const int count : {3, 50000, 3, 500, 50000, 100, 1, 20000}) {
    Oracle oracle;
    for (int i = 0; i < count; ++i) {
      const std::string text = (i % 2 == 0 ? "" : "a longer text ") + std::to_string(i);
      const auto index = static_cast<std::uint32_t>(i + 1);
      indexes.Add(text, CFITextIndexes::KeyOf(text), index);
      oracle[text] = index;
    }
    ExpectSame(oracle, indexes);
    indexes.Clear();
  }
}

// Documents of a kind have the same texts, or some of them, in one order or another.
TEST(FITextIndexes, NothingHasAnIndexBehindForgetAndATextThatComesAgainGetsANewOne) {
  CFITextIndexes indexes;
  std::vector<std::string> texts = SimilarTexts();
  std::mt19937 random(7);
  for (int round = 0; round < 600; ++round) {
    const std::size_t count = round % 100 == 99 ? texts.size() : random() % 40;
    if (round % 3 == 0) std::shuffle(texts.begin(), texts.end(), random);
    Oracle oracle;
    for (std::size_t i = 0; i < count; ++i) {
      const std::string& text = texts[i];
      const std::uint64_t key = CFITextIndexes::KeyOf(text);
      const CFITextIndexes::Place place = indexes.Look(text, key);
      ASSERT_EQ(0u, place.index) << round << text;
      const auto index = static_cast<std::uint32_t>(i + 1);
      indexes.AddAt(place, text, key, index);
      oracle[text] = index;
      if (random() % 8 != 0) continue;
      indexes.RemoveLast(text, key);
      ASSERT_EQ(0u, indexes.Find(text)) << round << text;
      indexes.Add(text, key, index);
    }
    ExpectSame(oracle, indexes);
    ExpectSame(oracle, CFITextIndexes(indexes));
    ASSERT_FALSE(HasFailure()) << round;
    if (random() % 16 == 0) {
      indexes.Clear();
    } else {
      indexes.Forget();
    }
    ExpectSame({}, indexes);
  }
}

// Others are looked for before the text goes, which may make the table grow around it.
TEST(FITextIndexes, TheTextThatWasAddedLastGoesAloneFromATableThatGrew) {
  for (int round = 0; round < 2000; ++round) {
    CFITextIndexes indexes;
    const std::string number = std::to_string(round);
    const auto text = [&number](std::size_t i) {
      return (i % 2 == 0 ? "" : "a longer text ") + number + "." + std::to_string(i);
    };
    const std::size_t before = static_cast<std::size_t>(round % 33);
    for (std::size_t i = 0; i < before; ++i) {
      indexes.Add(text(i), CFITextIndexes::KeyOf(text(i)), static_cast<std::uint32_t>(i + 1));
    }
    if (round % 2 == 0) indexes.Forget();
    Oracle oracle;
    for (std::size_t i = before; i-- > 0;) {
      const std::uint64_t key = CFITextIndexes::KeyOf(text(i));
      if (indexes.Find(text(i), key) != 0) indexes.RemoveLast(text(i), key);
    }
    // As many as fill the first places, of which the last one is to go again.
    constexpr std::size_t kTexts = 32;
    for (std::size_t i = 0; i < kTexts; ++i) {
      const auto index = static_cast<std::uint32_t>(i + 1);
      indexes.Add(text(i), CFITextIndexes::KeyOf(text(i)), index);
      if (i + 1 < kTexts) oracle[text(i)] = index;
    }
    const std::string other = "another text " + number;
    const std::string last = text(kTexts - 1);
    ASSERT_EQ(0u, indexes.Look(other, CFITextIndexes::KeyOf(other)).index);
    indexes.RemoveLast(last, CFITextIndexes::KeyOf(last));
    ASSERT_EQ(0u, indexes.Find(last)) << round;
    for (std::size_t i = 0; i < 4; ++i) {
      const std::string more = "one more long text " + number + "." + std::to_string(i);
      const auto index = static_cast<std::uint32_t>(kTexts + i);
      indexes.Add(more, CFITextIndexes::KeyOf(more), index);
      oracle[more] = index;
    }
    ExpectSame(oracle, indexes);
    ASSERT_FALSE(HasFailure()) << round;
  }
}

// Each time other texts: those of before do not pile up.
TEST(FITextIndexes, TextsThatDoNotComeAgainAreDropped) {
  CFITextIndexes indexes;
  for (int round = 0; round < 20000; ++round) {
    for (std::uint32_t i = 0; i < 3; ++i) {
      const std::string text = "name " + std::to_string(round) + "." + std::to_string(i);
      indexes.Add(text, CFITextIndexes::KeyOf(text), i + 1);
    }
    ASSERT_EQ(3u, indexes.GetCount());
    ASSERT_EQ(3u, indexes.GetAll().size());
    ASSERT_GT(std::size_t{256} * 1024, indexes.GetMemory()) << round;
    indexes.Forget();
  }
}

TEST(FITextIndexes, ATextHasOneKeyHoweverItIsMade) {
  for (const std::string& text : SimilarTexts()) {
    const std::string roomy = text + "behind it";
    const std::string_view inRoom(roomy.data(), text.size());
    if (!text.empty()) {
      EXPECT_EQ(CFITextIndexes::KeyOf(text), CFITextIndexes::KeyOfRoomy(inRoom)) << text;
    }
  }
}

}  // namespace
}  // namespace QzXmlLib16::detail
