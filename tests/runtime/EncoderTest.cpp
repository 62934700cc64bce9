#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "qzxml/runtime/Encoder.h"
#include "qzxml/runtime/QzException.h"
#include "qzxml/values/BinaryData.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using namespace std::string_literals;

constexpr std::uint32_t kWestern = 1252;    // one byte a character
constexpr std::uint32_t kJapanese = 932;    // one or two bytes
constexpr std::uint32_t kShifting = 50220;  // ISO-2022-JP, with escape sequences
constexpr std::uint32_t kUnknown = 4711;

// Settings are put back behind each test.
class Encoder : public ::testing::Test {
 protected:
  ~Encoder() override {
    ASCIIOnly(false);
    SetLocalCharEncoding(3);
  }
};

std::string Text(const CBinaryData& data) {
  return data.GetLength() == 0
             ? std::string()
             : std::string(reinterpret_cast<const char*>(data.GetData()), data.GetLength());
}

std::string ToLocal(const std::string& utf8) {
  return Utf8ToLocal(utf8.data(), static_cast<std::uint32_t>(utf8.size()));
}

std::string ToLocal(const std::u16string& text) {
  return Utf16ToLocal(text.data(), static_cast<std::uint32_t>(text.size()));
}

// ---- UTF-16 to UTF-8 ----

TEST_F(Encoder, Utf16ToUtf8TakesAsManyBytesAsTheCodePointNeeds) {
  const struct {
    const char16_t* text;
    std::string utf8;
  } cases[] = {
      {u"", ""},
      {u"plain text", "plain text"},
      {u"\u007F", "\x7F"},
      {u"\u0080", "\xC2\x80"},
      {u"\u07FF", "\xDF\xBF"},
      {u"\u0800", "\xE0\xA0\x80"},
      {u"\uD7FF", "\xED\x9F\xBF"},
      {u"\uE000", "\xEE\x80\x80"},
      {u"\uFFFF", "\xEF\xBF\xBF"},
      {u"\U00010000", "\xF0\x90\x80\x80"},
      {u"\U0010FFFF", "\xF4\x8F\xBF\xBF"},
      {u"a\u00E9\u20AC\U0001F600z", "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.utf8, Text(Utf16ToUtf8(c.text)));
}

TEST_F(Encoder, Utf16ToUtf8StopsAtABrokenSurrogate) {
  const struct {
    std::u16string text;
    std::string utf8;
  } cases[] = {
      {{u'a', u'b', 0xD83D}, "ab"},           // a high one at the end
      {{u'a', 0xD83D, u'b'}, "a"},            // a high one before anything else
      {{u'a', 0xD83D, 0xD83D, 0xDE00}, "a"},  // a high one before a pair
      {{u'a', 0xDE00, u'b'}, "a"},            // a low one alone
      {{0xD83D, 0xDE00, 0xDE00}, "\xF0\x9F\x98\x80"},
      {{0xE9, 0xDBFF}, "\xC3\xA9"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.utf8, Text(Utf16ToUtf8(c.text.c_str())));
}

TEST_F(Encoder, Utf16ToUtf8AssertsWhenABrokenSurrogateLeavesNothing) {
  const std::u16string broken = {0xD83D, u'a'};
  EXPECT_QZ_ASSERT("dwActualLen != 0", Utf16ToUtf8(broken.c_str()));
  const qztest::AssertionRecorder goesOn;
  EXPECT_EQ(0U, Utf16ToUtf8(broken.c_str()).GetLength());
}

// ---- UTF-8 as the local encoding ----

TEST_F(Encoder, WithUtf8AsLocalEncodingTextIsCopied) {
  for (const std::uint32_t codePage : {0U, 3U, 65001U}) {
    SetLocalCharEncoding(codePage);
    for (const std::string& text : {""s, "ascii"s, "a\xC3\xA9\xE2\x82\xAC"s, "broken \xC3 \xFF"s}) {
      EXPECT_EQ(text, ToLocal(text));
      EXPECT_EQ(text, Text(LocalToUtf8(text.c_str())));
    }
    EXPECT_TRUE(detail::IsLocalUtf8());
  }
}

TEST_F(Encoder, Utf8ToLocalEndsAtTheFirstZeroByteUnlessAllTextIsAscii) {
  const std::string text = "ab\0cd"s;
  EXPECT_EQ("ab", ToLocal(text));
  EXPECT_EQ("", ToLocal("\0x"s));
  SetLocalCharEncoding(kWestern);
  EXPECT_EQ("ab", ToLocal(text));
  ASCIIOnly(true);
  EXPECT_EQ(text, ToLocal(text));
  SetLocalCharEncoding(0);
  EXPECT_EQ(text, ToLocal(text));
}

TEST_F(Encoder, LocalToUtf16IsLittleEndianWithoutMarkAndTerminator) {
  EXPECT_EQ("a\0\xE9\0\xAC\x20\x3D\xD8\x00\xDE"s,
            Text(LocalToUtf16("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80")));
  EXPECT_EQ(0U, LocalToUtf16("").GetLength());
}

// The examples of the Unicode standard 15.0, tables 3-8 to 3-11, and the ends of the ranges.
TEST_F(Encoder, LocalToUtf16PutsTheReplacementCharacterForEachBrokenPart) {
  const struct {
    const char* utf8;
    std::u16string units;
  } cases[] = {
      {"\xC0\xAF\xE0\x80\xBF\xF0\x81\x82\x41",
       u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA"},
      {"\xED\xA0\x80\xED\xBF\xBF\xED\xAF\x41",
       u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA"},
      {"\xF4\x91\x92\x93\xFF\x41\x80\xBF\x42", u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA\uFFFD\uFFFDB"},
      {"\xE1\x80\xE2\xF0\x91\x92\xF1\xBF\x41", u"\uFFFD\uFFFD\uFFFD\uFFFDA"},
      {"\xF4\x8F\xBF\xBF", u"\U0010FFFF"},
      {"\xF0\x90\x80\x80", u"\U00010000"},
      {"\xE0\xA0\x80\xEF\xBF\xBF", u"\u0800\uFFFF"},
      {"\xC2\x80\xDF\xBF", u"\u0080\u07FF"},
      {"a\xC3", u"a\uFFFD"},
  };
  for (const auto& c : cases) {
    const std::string bytes = Text(LocalToUtf16(c.utf8));
    std::u16string units;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
      units += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                     static_cast<unsigned char>(bytes[i + 1]) << 8);
    }
    EXPECT_TRUE(c.units == units) << c.utf8;
  }
}

TEST_F(Encoder, Utf16ToLocalTakesTheLengthAndReplacesBrokenSurrogates) {
  EXPECT_EQ("", Utf16ToLocal(u"abc", 0));
  EXPECT_EQ("ab", Utf16ToLocal(u"abc", 2));
  EXPECT_EQ("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", ToLocal(u"a\u00E9\u20AC\U0001F600"s));
  EXPECT_EQ(
      "a\xEF\xBF\xBD"
      "b",
      ToLocal(std::u16string{u'a', 0xD83D, u'b'}));
  EXPECT_EQ("\xEF\xBF\xBD\xEF\xBF\xBD", ToLocal(std::u16string{0xDE00, 0xD83D}));
}

// ---- Other local encodings ----

TEST_F(Encoder, OtherCodePagesAreConverted) {
  const struct {
    std::uint32_t codePage;
    std::string local;
    std::u16string wide;
    std::string utf8;
  } cases[] = {
      {kWestern, "caf\xE9 \x80", u"caf\u00E9 \u20AC", "caf\xC3\xA9 \xE2\x82\xAC"},
      {28592, "\xB1", u"\u0105", "\xC4\x85"},
      {28605, "\xA4", u"\u20AC", "\xE2\x82\xAC"},
      {20866, "\xC1", u"\u0430", "\xD0\xB0"},
      {kJapanese, "a\x93\xFA", u"a\u65E5", "a\xE6\x97\xA5"},
      {kShifting, "a\x1B$BF|\x1B(B", u"a\u65E5", "a\xE6\x97\xA5"},
      {936, "\xD6\xD0", u"\u4E2D", "\xE4\xB8\xAD"},
      {54936, "\x94\x39\xFC\x36", u"\U0001F600", "\xF0\x9F\x98\x80"},
  };
  for (const auto& c : cases) {
    SetLocalCharEncoding(c.codePage);
    EXPECT_FALSE(detail::IsLocalUtf8());
    EXPECT_EQ(c.local, ToLocal(c.utf8)) << c.codePage;
    EXPECT_EQ(c.local, ToLocal(c.wide)) << c.codePage;
    EXPECT_EQ(c.utf8, Text(LocalToUtf8(c.local.c_str()))) << c.codePage;
    std::string bytes;
    for (const char16_t unit : c.wide) {
      bytes += static_cast<char>(unit & 0xFF);
      bytes += static_cast<char>(unit >> 8);
    }
    EXPECT_EQ(bytes, Text(LocalToUtf16(c.local.c_str()))) << c.codePage;
  }
}

TEST_F(Encoder, WhatACodePageCanNotExpressIsAQuestionMark) {
  SetLocalCharEncoding(kWestern);
  EXPECT_EQ("a?b", ToLocal("a\xE6\x97\xA5"
                           "b"));
  EXPECT_EQ("a?b", ToLocal("a\xF0\x9F\x98\x80"
                           "b"));
  EXPECT_EQ("a?b", ToLocal(std::u16string{u'a', 0xD83D, u'b'}));
  EXPECT_EQ("?", ToLocal(u"\U0001F600"s));
  EXPECT_EQ("a?", ToLocal("a\xC3"));
}

TEST_F(Encoder, WhatACodePageHasNoCharacterForIsTheReplacementCharacter) {
  SetLocalCharEncoding(kJapanese);
  EXPECT_EQ("a\xEF\xBF\xBD", Text(LocalToUtf8("a\x93")));
  EXPECT_EQ(
      "a\0\xFD\xFF"
      "b\0"s,
      Text(LocalToUtf16("a\xFF"
                        "b")));
}

TEST_F(Encoder, LongTextsAreWhole) {
  std::string utf8;
  std::string western;
  for (int i = 0; i < 5000; ++i) {
    utf8 += "x\xC3\xA9\xE6\x97\xA5";
    western += "x\xE9?";
  }
  SetLocalCharEncoding(kWestern);
  EXPECT_EQ(western, ToLocal(utf8));
  std::string back;
  for (int i = 0; i < 5000; ++i) back += "x\xC3\xA9?";
  EXPECT_EQ(back, Text(LocalToUtf8(western.c_str())));
}

TEST_F(Encoder, AnUnknownCodePageGivesEmptyResults) {
  SetLocalCharEncoding(kUnknown);
  EXPECT_EQ("", ToLocal("text"));
  EXPECT_EQ("", ToLocal(u"text"s));
  EXPECT_EQ(0U, LocalToUtf8("text").GetLength());
  EXPECT_EQ(0U, LocalToUtf16("text").GetLength());
}

TEST_F(Encoder, EncodingsWhoseTextHoldsZeroBytesAreRefused) {
  SetLocalCharEncoding(kWestern);
  EXPECT_QZ_THROW(CQzInvalidParamException, "The code page 1200 can not be the local encoding",
                  SetLocalCharEncoding(1200));
  for (const std::uint32_t codePage : {1201U, 12000U, 12001U}) {
    EXPECT_THROW(SetLocalCharEncoding(codePage), CQzInvalidParamException);
  }
  EXPECT_EQ("\xE9", ToLocal("\xC3\xA9"));  // the setting stayed
}

TEST_F(Encoder, ScratchAreasOfAnySizeGiveTheSameText) {
  const std::string utf8 = "na\xC3\xAFve caf\xC3\xA9";
  const auto length = static_cast<std::uint32_t>(utf8.size());
  for (const std::uint32_t codePage : {3U, kWestern}) {
    SetLocalCharEncoding(codePage);
    const std::string expected = ToLocal(utf8);
    for (std::uint32_t capacity = 0; capacity <= length + 2; ++capacity) {
      std::vector<char16_t> wide(capacity);
      std::vector<char> bytes(capacity);
      EXPECT_EQ(expected, Utf8ToLocal(utf8.data(), length, wide.data(), capacity, nullptr, 0));
      EXPECT_EQ(expected, Utf8ToLocal(utf8.data(), length, nullptr, 0, bytes.data(), capacity));
      EXPECT_EQ(expected,
                Utf8ToLocal(utf8.data(), length, wide.data(), capacity, bytes.data(), capacity));
    }
  }
}

// ---- ASCII only ----

TEST_F(Encoder, WithAsciiOnlyTwoConversionsCopyAndUtf16IsConverted) {
  SetLocalCharEncoding(kWestern);
  ASCIIOnly(true);
  EXPECT_TRUE(detail::IsLocalUtf8());
  EXPECT_EQ("caf\xE9", Text(LocalToUtf8("caf\xE9")));
  EXPECT_EQ("caf\xC3\xA9", ToLocal("caf\xC3\xA9"));
  EXPECT_EQ("\xAC\x20"s, Text(LocalToUtf16("\x80")));
  ASCIIOnly(false);
  EXPECT_FALSE(detail::IsLocalUtf8());
  EXPECT_EQ("caf\xC3\xA9", Text(LocalToUtf8("caf\xE9")));
}

// ---- Helpers ----

TEST_F(Encoder, WideTextBecomesUtf16) {
  EXPECT_TRUE(u"" == WideToUtf16(L""));
  EXPECT_TRUE(u"a\u00E9\uFFFF\U00010000\U0010FFFF" ==
              WideToUtf16(L"a\u00E9\uFFFF\U00010000\U0010FFFF"));
  const wchar_t beyond[] = {static_cast<wchar_t>(0x110000), L'b', 0};
  EXPECT_TRUE(u"\uFFFDb" == WideToUtf16(beyond));
}

TEST_F(Encoder, IsAsciiLooksAtEveryByte) {
  for (std::size_t length = 0; length <= 40; ++length) {
    std::string text(length, '\x7F');
    EXPECT_TRUE(detail::IsAscii(text.data(), length)) << length;
    for (std::size_t at = 0; at < length; ++at) {
      text[at] = '\x80';
      EXPECT_FALSE(detail::IsAscii(text.data(), length)) << length << " " << at;
      text[at] = '\x7F';
    }
  }
}

}  // namespace
}  // namespace QzXmlLib16
