#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "qzxml/runtime/TextStream.h"
#include "tests/support/LiveCounts.h"

namespace QzXmlLib16 {
namespace {

using TextStream = qztest::NothingLeftBehind;

TEST_F(TextStream, HoldsWhatIsPut) {
  CTextStream stream;
  stream.Put('<');
  stream.Put("name");
  stream.Put(std::string("/>"));
  stream.Put("\n...", 1);
  EXPECT_EQ(8U, stream.GetLength());
  EXPECT_STREQ("<name/>\n", stream.GetBuffer());
}

TEST_F(TextStream, EncodingIsFixedByTheConstructor) {
  EXPECT_EQ(XmlEncoding_Default, CTextStream().GetEncoding());
  EXPECT_EQ(XmlEncoding_UTF16, CTextStream(XmlEncoding_UTF16).GetEncoding());
}

TEST_F(TextStream, StartForgetsTheTextAndEndAndFlushKeepIt) {
  CTextStream stream(XmlEncoding_UTF8);
  stream.Put("old");
  stream.Start();
  EXPECT_EQ(0U, stream.GetLength());
  stream.Put("new");
  stream.Flush();
  stream.End();
  EXPECT_STREQ("new", stream.GetBuffer());
}

TEST_F(TextStream, TakesWritingInPlace) {
  CTextStream stream;
  char* const place = stream.Reserve(5);
  ASSERT_NE(nullptr, place);
  std::memcpy(place, "abc", 3);
  stream.Commit(3);
  EXPECT_STREQ("abc", stream.GetBuffer());
  EXPECT_EQ(nullptr, stream.Reserve(4096));
}

TEST_F(TextStream, TakeTextEmptiesTheStream) {
  CTextStream stream;
  std::string text;
  for (int i = 0; i < 3000; ++i) text += std::to_string(i);
  stream.Put(text);
  std::string twice;
  stream.AppendTo(twice);
  EXPECT_EQ(text, twice);
  EXPECT_EQ(text, stream.TakeText());
  EXPECT_EQ(0U, stream.GetLength());
  EXPECT_EQ("", stream.TakeText());
  stream.Put("again");
  EXPECT_EQ("again", stream.TakeText());
}

TEST(TextStreamOfItsOwnClass, CountsUnderItsOwnName) {
  static CInstanceClass s_class("CQuickStream");
  struct NamedStream : CTextStream {
    NamedStream() : CTextStream("CNamedStream", XmlEncoding_UTF8) {}
  };
  struct QuickStream : CTextStream {
    QuickStream() : CTextStream(s_class, XmlEncoding_UTF16) {}
  };
  auto before = qztest::LiveCounts();
  const NamedStream named;
  const QuickStream quick;
  auto after = qztest::LiveCounts();
  EXPECT_EQ(1, after["CNamedStream"]);
  EXPECT_EQ(1, after["CQuickStream"]);
  EXPECT_EQ(before["CTextStream"], after["CTextStream"]);
  EXPECT_EQ(XmlEncoding_UTF16, quick.GetEncoding());
}

}  // namespace
}  // namespace QzXmlLib16
