#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "qzxml/xml/KeptTags.h"

using QzXmlLib16::detail::CKeptTags;
using QzXmlLib16::detail::ElementTags;

namespace {

TEST(KeptTags, AreTheSameForANameInANamespace) {
  const CKeptTags first("Weight", "urn:a");
  const CKeptTags again("Weight", "urn:a");
  const CKeptTags elsewhere("Weight", "urn:b");
  const CKeptTags other("Height", "urn:a");
  const ElementTags& tags = first;
  EXPECT_EQ(&tags, &static_cast<const ElementTags&>(again));
  EXPECT_EQ("Weight", tags.GetName());
  EXPECT_EQ("<Weight>", tags.GetStart().View());
  EXPECT_EQ("</Weight>", tags.GetEnd().View());
  EXPECT_NE(0U, tags.GetId());
  EXPECT_NE(tags.GetId(), static_cast<const ElementTags&>(elsewhere).GetId());
  EXPECT_NE(tags.GetId(), static_cast<const ElementTags&>(other).GetId());
}

// A name and a namespace are not taken for another pair that is put together of the same bytes.
TEST(KeptTags, TellNameFromNamespace) {
  const CKeptTags one("ab", "c");
  const CKeptTags two("a", "bc");
  EXPECT_EQ("ab", static_cast<const ElementTags&>(one).GetName());
  EXPECT_EQ("a", static_cast<const ElementTags&>(two).GetName());
  const CKeptTags none("", "");
  EXPECT_EQ("<>", static_cast<const ElementTags&>(none).GetStart().View());
}

TEST(KeptTags, AreTheSameInEveryThread) {
  const CKeptTags here("InEveryThread", "urn:a");
  const ElementTags& expected = here;
  std::vector<std::thread> threads;
  std::vector<const ElementTags*> found(4, nullptr);
  for (std::size_t i = 0; i < found.size(); ++i) {
    threads.emplace_back([&found, i] {
      for (int round = 0; round < 200; ++round) {
        const CKeptTags other("Thread" + std::to_string(round % 40), "urn:a");
        const CKeptTags tags("InEveryThread", "urn:a");
        found[i] = &static_cast<const ElementTags&>(tags);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const ElementTags* const tags : found) EXPECT_EQ(&expected, tags);
}

// Whoever makes names without an end gets them, but nothing is kept of them. The last one here: it
// leaves no room.
TEST(KeptTags, AreNotKeptBehindTheFirst) {
  bool isFull = false;
  for (std::size_t i = 0; i < CKeptTags::kMost + 100; ++i) {
    const std::string name = "Many" + std::to_string(i);
    const CKeptTags kept(name, "urn:many");
    const ElementTags& tags = kept;
    ASSERT_EQ(name, tags.GetName());
    ASSERT_EQ("<" + name + ">", tags.GetStart().View());
    isFull = isFull || tags.GetId() == 0;
    ASSERT_EQ(isFull, tags.GetId() == 0);
  }
  EXPECT_TRUE(isFull);
}

}  // namespace
