#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "qzxml/fastinfoset/SmallAlphabets.h"

namespace QzXmlLib16::detail {
namespace {

// The characters of the alphabet of dates and their positions, as hexadecimal digits.
constexpr char kCharacters[] = "0123456789-:TZ ";
constexpr char kPositions[] = "0123456789ABCDE";

// The octets in hexadecimal digits, an F at the end of an odd number; none for a text with a
// character that is not in the alphabet.
std::string Expected(const std::string& text) {
  std::string digits;
  for (const char c : text) {
    const std::size_t position = std::string(kCharacters).find(c);
    if (position == std::string::npos) return "none";
    digits += kPositions[position];
  }
  return digits.size() % 2 == 0 ? digits : digits + 'F';
}

std::string Written(const std::string& text) {
  std::string out(text.size() / 2 + 1, '?');
  const char* const end = SmallAlphabet::Get(2).Write(out.data(), text);
  if (end == nullptr) return "none";
  std::string digits;
  for (const char* at = out.data(); at != end; ++at) {
    const auto octet = static_cast<unsigned char>(*at);
    digits += "0123456789ABCDEF"[octet >> 4];
    digits += "0123456789ABCDEF"[octet & 0xF];
  }
  return digits;
}

constexpr const char* kTexts[] = {
    "2024-02-29",
    "1999-12-31Z",
    "2024-02-29T23:59:58",
    "2024-02-29T23:59:58Z",
    "2024-02-29T23:59:58-05:30",
    "-2024-02-29T00:00:00",
    "12024-02-29T00:00:00",
    "12:34:56",
    "2024-07",
    "--07-14",
    "2024",
    "00:00:00-14:00",
    "20240229 235958  ",
    "2024-02-2 T23:59:58",
    "",
};

TEST(SmallAlphabets, AreWrittenTwoCharactersToAnOctet) {
  EXPECT_EQ("2024A02A29", Written("2024-02-29"));
  EXPECT_EQ("2024A02A29C23B59B58F", Written("2024-02-29T23:59:58"));
  EXPECT_EQ("2024A07F", Written("2024-07"));
}

// Each text, each beginning of it, and both with each byte changed to each other one.
TEST(SmallAlphabets, AreWrittenWhateverTheFormOfTheTextIs) {
  for (const std::string whole : kTexts) {
    for (std::size_t size = 0; size <= whole.size(); ++size) {
      std::string text = whole.substr(0, size);
      ASSERT_EQ(Expected(text), Written(text)) << text;
      for (char& c : text) {
        const char before = c;
        for (int byte = 0; byte < 256; ++byte) {
          c = static_cast<char>(byte);
          ASSERT_EQ(Expected(text), Written(text)) << text << ' ' << byte;
        }
        c = before;
      }
    }
  }
}

}  // namespace
}  // namespace QzXmlLib16::detail
