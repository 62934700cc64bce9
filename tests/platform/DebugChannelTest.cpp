#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "qzxml/platform/DebugChannel.h"

namespace QzXmlLib16 {
namespace {

std::vector<std::string> g_pieces;

class DebugChannelTest : public ::testing::Test {
 protected:
  DebugChannelTest() {
    g_pieces.clear();
    SetDebugChannel([](const char* text) { g_pieces.emplace_back(text); });
  }
  ~DebugChannelTest() override { SetDebugChannel(nullptr); }
};

TEST_F(DebugChannelTest, SendsInPiecesOf128Bytes) {
  const std::string text = std::string(128, 'a') + std::string(128, 'b') + "c";
  detail::SendToDebugChannel(text.data(), text.size());
  EXPECT_EQ((std::vector<std::string>{std::string(128, 'a'), std::string(128, 'b'), "c"}),
            g_pieces);
}

TEST_F(DebugChannelTest, SendsNoEmptyPiece) {
  detail::SendToDebugChannel("", 0);
  EXPECT_TRUE(g_pieces.empty());
  const std::string text(256, 'x');
  detail::SendToDebugChannel(text.data(), text.size());
  EXPECT_EQ(2U, g_pieces.size());
}

TEST_F(DebugChannelTest, IsClosedByNull) {
  EXPECT_NE(nullptr, detail::GetDebugChannel());
  SetDebugChannel(nullptr);
  EXPECT_EQ(nullptr, detail::GetDebugChannel());
  detail::SendToDebugChannel("lost", 4);
  EXPECT_TRUE(g_pieces.empty());
}

}  // namespace
}  // namespace QzXmlLib16
