#include <utility>

#include "qzxml/collections/SharedText.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace detail {
namespace {

TEST(SharedText, HoldsAText) {
  EXPECT_EQ("", CSharedText().str());
  EXPECT_TRUE(CSharedText().empty());
  EXPECT_TRUE(CSharedText("").empty());
  EXPECT_EQ("urn:a", CSharedText("urn:a").str());
  EXPECT_FALSE(CSharedText("urn:a").empty());
  EXPECT_EQ(std::string("a\0b", 3), CSharedText(std::string_view("a\0b", 3)).str());
}

TEST(SharedText, KnowsTheWildcard) {
  EXPECT_EQ("##any", CSharedText::Any().str());
  EXPECT_TRUE(CSharedText::Any().IsAny());
  EXPECT_TRUE(CSharedText("##any").IsAny());
  EXPECT_TRUE(CSharedText::Like(CSharedText("urn:a"), "##any").IsAny());
  EXPECT_FALSE(CSharedText().IsAny());
  EXPECT_FALSE(CSharedText("##other").IsAny());
}

TEST(SharedText, SharesItsTextWithItsCopies) {
  const CSharedText text("urn:a");
  const CSharedText copy = text;
  EXPECT_EQ(&text.str(), &copy.str());
  CSharedText assigned("urn:b");
  assigned = text;
  EXPECT_EQ(&text.str(), &assigned.str());
  CSharedText& self = assigned;
  assigned = self;
  EXPECT_EQ("urn:a", assigned.str());
  const CSharedText moved = std::move(assigned);
  EXPECT_EQ(&text.str(), &moved.str());
}

TEST(SharedText, IsSharedWhereItIsLikely) {
  const CSharedText text("urn:a");
  EXPECT_EQ(&text.str(), &CSharedText::Like(text, "urn:a").str());
  EXPECT_EQ("urn:b", CSharedText::Like(text, "urn:b").str());
  EXPECT_TRUE(CSharedText::Like(text, "").empty());
  EXPECT_TRUE(CSharedText::Like(CSharedText(), "").empty());
}

}  // namespace
}  // namespace detail
}  // namespace QzXmlLib16
