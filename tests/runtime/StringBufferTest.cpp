#include <gtest/gtest.h>

#include <string>

#include "qzxml/runtime/QzException.h"
#include "qzxml/runtime/StringBuffer.h"
#include "tests/support/LiveCounts.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using StringBuffer = qztest::NothingLeftBehind;

// Text in which each place can be told from its neighbours.
std::string MakeText(std::size_t length) {
  std::string text;
  while (text.size() < length) text += std::to_string(text.size()) + ",";
  text.resize(length);
  return text;
}

TEST_F(StringBuffer, WithoutDataIsAnEmptyStringAndNotNull) {
  CStringBuffer buffer;
  ASSERT_NE(nullptr, buffer.GetBuffer());
  EXPECT_STREQ("", buffer.GetBuffer());
  EXPECT_EQ(0U, buffer.GetLength());
}

TEST_F(StringBuffer, AppendsTextsStringsAndCharacters) {
  CStringBuffer buffer;
  buffer.Append("one");
  buffer.Append(' ');
  buffer.Append(std::string("two"));
  buffer.Append("!?", 1);
  EXPECT_STREQ("one two!", buffer.GetBuffer());
  EXPECT_EQ(8U, buffer.GetLength());
  buffer.Append("more");
  EXPECT_STREQ("one two!more", buffer.GetBuffer());
}

TEST_F(StringBuffer, AppendingNothingChangesNothingAndOpensNoBlock) {
  CStringBuffer buffer;
  const char* const empty = buffer.GetBuffer();
  buffer.Append("");
  buffer.Append(std::string());
  EXPECT_EQ(empty, buffer.GetBuffer());
  EXPECT_EQ(0U, buffer.GetLength());
}

TEST_F(StringBuffer, FillsTheFirstBlockToTheLastByteWithoutCopying) {
  CStringBuffer buffer;
  buffer.Append('x');
  const char* const first = buffer.GetBuffer();
  const std::string text = "x" + MakeText(4094);
  buffer.Append(text.substr(1));
  EXPECT_EQ(first, buffer.GetBuffer());
  EXPECT_EQ(text, first);
  EXPECT_EQ(4095U, buffer.GetLength());
}

TEST_F(StringBuffer, OneByteMoreOpensABlockAndGetBufferJoinsThem) {
  CStringBuffer buffer;
  const std::string text = MakeText(4095);
  buffer.Append(text);
  const char* const first = buffer.GetBuffer();
  buffer.Append('+');
  const char* const joined = buffer.GetBuffer();
  EXPECT_NE(first, joined);
  EXPECT_EQ(text + "+", joined);
  EXPECT_EQ(joined, buffer.GetBuffer());
  EXPECT_EQ(4096U, buffer.GetLength());
}

TEST_F(StringBuffer, AppendingAfterJoiningOpensABlock) {
  CStringBuffer buffer;
  const std::string text = MakeText(5000);
  buffer.Append(text);
  const char* const joined = buffer.GetBuffer();
  buffer.Append("tail");
  EXPECT_EQ(text, std::string(joined, 5000));
  const char* const again = buffer.GetBuffer();
  EXPECT_EQ(text + "tail", again);
}

TEST_F(StringBuffer, ResetAfterJoiningKeepsTheJoinedBlockUntilItIsFull) {
  CStringBuffer buffer;
  buffer.Append(MakeText(10000));
  const char* const joined = buffer.GetBuffer();
  buffer.Reset();
  EXPECT_EQ(0U, buffer.GetLength());
  EXPECT_STREQ("", buffer.GetBuffer());
  EXPECT_EQ(joined, buffer.GetBuffer());

  const std::string text = MakeText(10000);
  buffer.Append(text.substr(0, 9999));
  EXPECT_EQ(joined, buffer.GetBuffer());
  buffer.Append(text.back());
  EXPECT_EQ(joined, buffer.GetBuffer());
  EXPECT_EQ(text, joined);
  buffer.Append('!');
  EXPECT_NE(joined, buffer.GetBuffer());
  EXPECT_EQ(text + "!", buffer.GetBuffer());
}

TEST_F(StringBuffer, ResetOfSeveralBlocksAndClearForgetThemAll) {
  CStringBuffer buffer(8);
  buffer.Append("0123456789");
  buffer.Reset();
  EXPECT_EQ(0U, buffer.GetLength());
  EXPECT_STREQ("", buffer.GetBuffer());
  buffer.Append("abc");
  buffer.Clear();
  EXPECT_STREQ("", buffer.GetBuffer());
  buffer.Append("def");
  EXPECT_STREQ("def", buffer.GetBuffer());
}

TEST_F(StringBuffer, NothingOfAnOldTextShowsAfterReset) {
  CStringBuffer buffer;
  buffer.Append("something long");
  buffer.Reset();
  buffer.Append("short");
  EXPECT_STREQ("short", buffer.GetBuffer());
}

TEST_F(StringBuffer, SetReplacesTheText) {
  CStringBuffer buffer(4);
  buffer.Append("first text");
  buffer.Set("second");
  EXPECT_STREQ("second", buffer.GetBuffer());
  EXPECT_EQ(6U, buffer.GetLength());
}

TEST_F(StringBuffer, TakesAPieceOfItsOwnText) {
  CStringBuffer buffer(4);
  buffer.Append("0123456789");
  buffer.Append(buffer.GetBuffer() + 7);
  EXPECT_STREQ("0123456789789", buffer.GetBuffer());
  buffer.Set(buffer.GetBuffer() + 3);
  EXPECT_STREQ("3456789789", buffer.GetBuffer());
  EXPECT_EQ(10U, buffer.GetLength());
}

TEST_F(StringBuffer, EveryBlockSizeAndEveryPieceGiveTheSameText) {
  const std::string text = MakeText(64);
  for (std::uint32_t blockSize = 0; blockSize < 70; ++blockSize) {
    for (std::size_t piece = 1; piece <= 64; piece *= 2) {
      CStringBuffer buffer(blockSize);
      for (std::size_t at = 0; at < text.size(); at += piece) buffer.Append(text.substr(at, piece));
      std::string appended;
      buffer.AppendTo(appended);
      EXPECT_EQ(text, appended) << blockSize << " " << piece;
      EXPECT_EQ(text, buffer.GetBuffer()) << blockSize << " " << piece;
      for (const char c : text) buffer.Append(c);
      EXPECT_EQ(text + text, buffer.GetBuffer()) << blockSize << " " << piece;
    }
  }
}

TEST_F(StringBuffer, TheSizesAroundABlockGiveTheSameText) {
  for (const std::size_t size : {4094U, 4095U, 4096U, 8189U, 8190U, 8191U}) {
    const std::string text = MakeText(size);
    CStringBuffer buffer;
    buffer.Append(text);
    EXPECT_EQ(text, buffer.GetBuffer()) << size;
    EXPECT_EQ(size, buffer.GetLength());
  }
}

TEST_F(StringBuffer, ZeroBytesOfAStringAreKept) {
  CStringBuffer buffer;
  buffer.Append(std::string("a\0b", 3));
  EXPECT_EQ(3U, buffer.GetLength());
  EXPECT_EQ(std::string("a\0b", 3), std::string(buffer.GetBuffer(), 3));
}

TEST_F(StringBuffer, ReserveGivesRoomInTheLastBlockOnly) {
  CStringBuffer buffer(8);
  char* const place = buffer.Reserve(7);
  ASSERT_NE(nullptr, place);
  std::memcpy(place, "abcdef", 6);
  buffer.Commit(6);
  EXPECT_EQ(6U, buffer.GetLength());
  EXPECT_EQ(nullptr, buffer.Reserve(2));
  EXPECT_EQ(place + 6, buffer.Reserve(1));
  buffer.Append("gh");
  EXPECT_EQ(nullptr, buffer.Reserve(8));
  EXPECT_STREQ("abcdefgh", buffer.GetBuffer());
}

TEST_F(StringBuffer, ReserveOpensABlockWhereTheLastIsFull) {
  CStringBuffer buffer(4);
  buffer.Append("abc");
  char* const place = buffer.Reserve(3);
  ASSERT_NE(nullptr, place);
  place[0] = 'd';
  buffer.Commit(1);
  EXPECT_STREQ("abcd", buffer.GetBuffer());
  ASSERT_NE(nullptr, buffer.Reserve(3));
  EXPECT_STREQ("abcd", buffer.GetBuffer());
}

TEST_F(StringBuffer, AppendToAddsToWhatIsThere) {
  CStringBuffer buffer(4);
  std::string out = "before:";
  buffer.AppendTo(out);
  EXPECT_EQ("before:", out);
  buffer.Append("0123456789");
  buffer.AppendTo(out);
  EXPECT_EQ("before:0123456789", out);
  EXPECT_EQ(10U, buffer.GetLength());
}

// It is copied in pieces of 2048 bytes.
TEST_F(StringBuffer, AppendToCopiesBlocksOfAnySize) {
  for (const std::uint32_t blockSize : {3000U, 4096U, 65536U, 100000U}) {
    for (const std::size_t size : {1U, 2047U, 2048U, 2049U, 4095U, 4096U, 4097U, 70001U, 200000U}) {
      const std::string text = MakeText(size);
      CStringBuffer buffer(blockSize);
      buffer.Append(text);
      std::string out = "before:";
      buffer.AppendTo(out);
      EXPECT_EQ("before:" + text, out) << blockSize << ' ' << size;
    }
  }
}

TEST_F(StringBuffer, RefusesMoreThan32BitsCountAndKeepsWhatItHas) {
  // Lengths that the compiler does not see through: the text is refused before it is looked at.
  for (const volatile std::size_t length : {std::size_t{0x100000000}, std::size_t{0xFFFFFFFF}}) {
    CStringBuffer buffer;
    buffer.Append('x');
    EXPECT_QZ_THROW(CQzException, "The text buffer can not hold more than 4294967295 bytes",
                    buffer.Append("", length));
    EXPECT_STREQ("x", buffer.GetBuffer());
  }
}

}  // namespace
}  // namespace QzXmlLib16
