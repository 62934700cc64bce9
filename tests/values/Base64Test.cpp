#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "qzxml/values/Base64.h"
#include "tests/support/HugeText.h"
#include "tests/support/QzTest.h"

namespace {

using namespace std::string_literals;

std::string Encode(const std::string& bytes) {
  std::string text = "replaced";
  CBase64().Encode(text, reinterpret_cast<const unsigned char*>(bytes.data()),
                   static_cast<std::uint32_t>(bytes.size()));
  return text;
}

// The bytes decoded; what lies behind them in the output must be zero.
std::string Decode(const std::string& text) {
  std::vector<unsigned char> out(text.size() + 1, 0xAA);
  const int length = CBase64().Decode(text.c_str(), out.data());
  for (std::size_t i = static_cast<std::size_t>(length); i < out.size() && length > 0; ++i) {
    EXPECT_EQ(0, out[i]) << text << " at " << i;
  }
  return std::string(reinterpret_cast<const char*>(out.data()), static_cast<std::size_t>(length));
}

// Straight from the definition: a text of bits, cut into sixes.
std::string EncodeBitByBit(const std::string& bytes) {
  static const char kAlphabet[] =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string bits;
  for (const char c : bytes) {
    for (int bit = 7; bit >= 0; --bit)
      bits += (static_cast<unsigned char>(c) >> bit & 1) ? '1' : '0';
  }
  while (bits.size() % 6 != 0) bits += '0';
  std::string text;
  for (std::size_t i = 0; i < bits.size(); i += 6) {
    text += kAlphabet[std::stoul(bits.substr(i, 6), nullptr, 2)];
  }
  while (text.size() % 4 != 0) text += '=';
  return text;
}

// RFC 4648, section 10.
TEST(Base64, ReadsAndWritesTheExamplesOfRfc4648) {
  const std::pair<const char*, const char*> cases[] = {
      {"", ""},
      {"f", "Zg=="},
      {"fo", "Zm8="},
      {"foo", "Zm9v"},
      {"foob", "Zm9vYg=="},
      {"fooba", "Zm9vYmE="},
      {"foobar", "Zm9vYmFy"},
  };
  for (const auto& [bytes, text] : cases) {
    EXPECT_EQ(text, Encode(bytes));
    EXPECT_EQ(bytes, Decode(text));
  }
}

TEST(Base64, EveryLengthAndEveryByteMakeTheRoundTrip) {
  std::string bytes;
  std::uint32_t random = 12345;
  for (int i = 0; i < 400; ++i) {
    EXPECT_EQ(EncodeBitByBit(bytes), Encode(bytes));
    EXPECT_EQ(bytes, Decode(Encode(bytes)));
    random = random * 1664525U + 1013904223U;
    bytes += static_cast<char>(i < 256 ? i : static_cast<int>(random >> 24));
  }
}

TEST(Base64, WritesOneLineAtAnyLength) {
  const std::string text = Encode(std::string(100000, '\xFF'));
  EXPECT_EQ(133336U, text.size());
  EXPECT_EQ(std::string::npos, text.find_first_of("\r\n "));
  EXPECT_EQ("//8=", Encode("\xFF\xFF"));
}

TEST(Base64, SkipsFillersAndWhiteSpaceWhereverTheyStand) {
  const std::string plain = "TWFuIGlzIGRpc3Rpbmd1aXNoZWQ";
  const std::string bytes = "Man is distinguished";
  EXPECT_EQ(bytes, Decode(plain));
  for (const char skipped : {'=', ' ', '\t', '\r', '\n'}) {
    for (std::size_t at = 0; at <= plain.size(); ++at) {
      std::string text = plain;
      text.insert(at, 1, skipped);
      EXPECT_EQ(bytes, Decode(text)) << at;
    }
    std::string spread;
    for (const char c : plain) spread += std::string(1, c) + skipped;
    EXPECT_EQ(bytes, Decode(spread));
  }
  EXPECT_EQ("Man", Decode("TW Fu\n"));
  EXPECT_EQ("MM", Decode("TQ==TQ=="s.substr(0, 4) + "T" + "Q").substr(0, 1) + "M");
}

TEST(Base64, AFillerInTheMiddleDoesNotEndAGroup) {
  // "TQ" gives 12 bits: 8 for 'M' and 4 zeros, which begin the next byte.
  EXPECT_EQ("M\x04\xD0"s, Decode("TQ==TQ=="));
}

TEST(Base64, DropsLeftoverBits) {
  EXPECT_EQ("", Decode("T"));
  EXPECT_EQ("M", Decode("TQ"));
  EXPECT_EQ("Ma", Decode("TWE"));
  EXPECT_EQ("Man", Decode("TWFuT"));
  EXPECT_EQ("M", Decode("TR"));  // the bits behind the last byte need not be zero
}

TEST(Base64, AnyOtherCharacterGivesNothing) {
  const std::string allowed =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/= \t\r\n";
  for (int c = 1; c < 128; ++c) {
    const bool isAllowed = allowed.find(static_cast<char>(c)) != std::string::npos;
    for (std::size_t at = 0; at <= 8; ++at) {
      std::string text = "TWFuTWFu";
      text.insert(at, 1, static_cast<char>(c));
      EXPECT_EQ(isAllowed, !Decode(text).empty()) << c << " " << at;
    }
  }
}

TEST(Base64, TheTopBitOfACharacterCountsForNothing) {
  EXPECT_EQ("Man", Decode("\xD4\xD7\xC6\xF5"));
  EXPECT_EQ("Man", Decode("TW\xA0"
                          "Fu"));  // a blank with the top bit is skipped
  EXPECT_EQ("", Decode("TW\xAA"
                       "Fu"));  // '*' with the top bit is refused
}

TEST(Base64, WhatWasDecodedBeforeABadCharacterStaysInTheOutput) {
  unsigned char out[16];
  std::memset(out, 0xAA, sizeof out);
  EXPECT_EQ(0, CBase64().Decode("TWFuTW*", out));
  EXPECT_EQ("ManM\0\0\0\0"s, std::string(reinterpret_cast<char*>(out), 8));
  EXPECT_EQ(0xAA, out[8]);
}

TEST(Base64, ZeroesStrlenPlusOneBytesAndNoMore) {
  unsigned char out[16];
  std::memset(out, 0xAA, sizeof out);
  EXPECT_EQ(3, CBase64().Decode("TWFu", out));
  EXPECT_EQ("Man\0\0"s, std::string(reinterpret_cast<char*>(out), 5));
  EXPECT_EQ(0xAA, out[5]);
}

TEST(Base64, NullAndEmptyTextGiveNothing) {
  unsigned char out[4] = {1, 2, 3, 4};
  EXPECT_QZ_ASSERT("szDecoding != 0", CBase64().Decode(nullptr, out));
  EXPECT_QZ_ASSERT("lpOutput != 0", CBase64().Decode("TWFu", nullptr));
  const qztest::AssertionRecorder goesOn;
  EXPECT_EQ(0, CBase64().Decode(nullptr, out));
  EXPECT_EQ(0, CBase64().Decode("TWFu", nullptr));
  EXPECT_EQ(0, CBase64().Decode("", out));
  EXPECT_EQ(1, out[0]);
}

TEST(Base64, RefusesTextWhoseBytesAnIntCanNotCount) {
  const qztest::HugeText text('A', std::size_t{2863311532});
  unsigned char out = 7;
  EXPECT_QZ_THROW(QzXmlLib16::CQzException, "Base64 text can not hold more than 2147483647 bytes",
                  CBase64().Decode(text.c_str(), &out));
  EXPECT_EQ(7, out);
}

}  // namespace
