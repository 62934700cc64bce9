#include <cstdint>
#include <utility>

#include "qzxml/fastinfoset/OctetForms.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16::detail {
namespace {

using Put = void (*)(std::string&, unsigned, std::uint32_t);

std::string Hex(const std::string& octets) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (const char c : octets) {
    text += kDigits[static_cast<unsigned char>(c) >> 4];
    text += kDigits[static_cast<unsigned char>(c) & 0x0F];
  }
  return text;
}

struct Row {
  std::uint32_t value;
  const char* octets;
};

void ExpectRows(Put put, unsigned head, const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    std::string out = "#";
    put(out, head, row.value);
    EXPECT_EQ(std::string("23") + row.octets, Hex(out)) << row.value;
  }
}

TEST(OctetForms, AnIndexOnTheSecondBitHasThreeForms) {
  ExpectRows(PutIndexOnSecondBit, 0x00,
             {{1, "00"},
              {2, "01"},
              {64, "3F"},
              {65, "4000"},
              {66, "4001"},
              {320, "40FF"},
              {321, "4100"},
              {8256, "5FFF"},
              {8257, "600000"},
              {8258, "600001"},
              {73792, "60FFFF"},
              {73793, "610000"},
              {0x100000, "6FDFBF"}});
  ExpectRows(PutIndexOnSecondBit, 0x80,
             {{1, "80"}, {64, "BF"}, {65, "C000"}, {8256, "DFFF"}, {8257, "E00000"}});
}

TEST(OctetForms, AnIndexOnTheThirdBitHasFourForms) {
  ExpectRows(PutIndexOnThirdBit, 0x00,
             {{1, "00"},
              {32, "1F"},
              {33, "2000"},
              {288, "20FF"},
              {289, "2100"},
              {2080, "27FF"},
              {2081, "280000"},
              {67616, "28FFFF"},
              {67617, "290000"},
              {526368, "2FFFFF"},
              // One more than the standard has it.
              {526369, "30000001"},
              {526370, "30000002"},
              {0x100000, "3007F7E0"}});
  ExpectRows(PutIndexOnThirdBit, 0x40,
             {{1, "40"}, {32, "5F"}, {33, "6000"}, {2081, "680000"}, {526369, "70000001"}});
}

TEST(OctetForms, AnIndexOnTheFourthBitHasFourForms) {
  ExpectRows(PutIndexOnFourthBit, 0xA0,
             {{1, "A0"},
              {16, "AF"},
              {17, "B000"},
              {272, "B0FF"},
              {273, "B100"},
              {1040, "B3FF"},
              {1041, "B40000"},
              {66576, "B4FFFF"},
              {66577, "B50000"},
              {263184, "B7FFFF"},
              {263185, "B8000000"},
              {263186, "B8000001"},
              {0x100000, "B80BFBEF"}});
}

TEST(OctetForms, ALengthHasThreeForms) {
  ExpectRows(PutLengthOnSecondBit, 0x00,
             {{1, "00"},
              {64, "3F"},
              {65, "4000"},
              {320, "40FF"},
              {321, "6000000000"},
              {322, "6000000001"},
              {65856, "600000FFFF"},
              {0xFFFFFFFF, "60FFFFFEBE"}});
  ExpectRows(PutLengthOnFifthBit, 0x00,
             {{1, "00"},
              {8, "07"},
              {9, "0800"},
              {264, "08FF"},
              {265, "0C00000000"},
              {266, "0C00000001"},
              {0xFFFFFFFF, "0CFFFFFEF6"}});
  ExpectRows(PutLengthOnFifthBit, 0x40, {{1, "40"}, {8, "47"}, {9, "4800"}, {265, "4C00000000"}});
  ExpectRows(PutLengthOnSeventhBit, 0x90,
             {{1, "90"},
              {2, "91"},
              {3, "9200"},
              {258, "92FF"},
              {259, "9300000000"},
              {260, "9300000001"},
              {0xFFFFFFFF, "93FFFFFEFC"}});
}

TEST(OctetForms, ZeroIsNoIndexAndNoLength) {
  std::string out;
  for (const Put put : {PutIndexOnSecondBit, PutIndexOnThirdBit, PutIndexOnFourthBit}) {
    EXPECT_QZ_ASSERT("dwVal > 0", put(out, 0, 0));
  }
  for (const Put put : {PutLengthOnSecondBit, PutLengthOnFifthBit, PutLengthOnSeventhBit}) {
    EXPECT_QZ_ASSERT("length > 0", put(out, 0, 0));
  }
}

std::string Restricted(const std::string& alphabet, const std::string& text) {
  std::string out;
  AppendRestrictedAlphabetString(alphabet, text, out);
  return Hex(out);
}

// The first count of all characters, from the one with the number 0.
std::string Alphabet(std::size_t count) {
  std::string alphabet;
  for (std::size_t i = 0; i < count; ++i) alphabet += static_cast<char>(i);
  return alphabet;
}

TEST(OctetForms, CharactersOfASmallAlphabetStandTwoInAnOctet) {
  const std::string numbers = "0123456789-+.e ";
  EXPECT_EQ("", Restricted(numbers, ""));
  EXPECT_EQ("0F", Restricted(numbers, "0"));
  EXPECT_EQ("12", Restricted(numbers, "12"));
  EXPECT_EQ("A1C5", Restricted(numbers, "-1.5"));
  EXPECT_EQ("9BDE3F", Restricted(numbers, "9+e 3"));
  EXPECT_EQ("01234567", Restricted("01234567", "01234567"));
  EXPECT_EQ("7F", Restricted("01234567", "7"));
}

TEST(OctetForms, CharactersOfALargeAlphabetStandInAnOctetEach) {
  for (const std::size_t count : {128u, 255u}) {
    const std::string alphabet = Alphabet(count);
    EXPECT_EQ("417F", Restricted(alphabet, "A\x7F"));
    EXPECT_EQ("41", Restricted(alphabet, "A"));
  }
}

TEST(OctetForms, AnAlphabetHas2To2To20Characters) {
  constexpr char kSize[] =
      "Failed to write FastInfoset. Invalid Restricted Alphabet. Alphabet must contain between 2 "
      "and 2^20 characters.";
  EXPECT_QZ_THROW(CQzException, kSize, Restricted("", "a"));
  EXPECT_QZ_THROW(CQzException, kSize, Restricted("a", "a"));
  EXPECT_QZ_THROW(CQzException, kSize, Restricted(std::string(0x100001, 'a'), "a"));
}

TEST(OctetForms, OnlyWidthsOfFourAndEightBitsAreWritten) {
  constexpr char kWidth[] =
      "Failed to write FastInfoset. Unsupported Feature in AppendRestrictedAlphabetString.";
  // 2 to 3 characters: 2 bits; to 7: 3; to 31: 5; to 63: 6; to 127: 7; 256: 9; 2^20: 21.
  for (const std::size_t count : {2u, 3u, 4u, 7u, 16u, 31u, 32u, 63u, 64u, 127u, 256u}) {
    EXPECT_QZ_THROW(CQzException, kWidth, Restricted(Alphabet(count), "\x01"));
  }
  EXPECT_QZ_THROW(CQzException, kWidth, Restricted(std::string(0x100000, 'a'), "a"));
}

TEST(OctetForms, ACharacterThatIsNotInTheAlphabetIsRefused) {
  for (const char* text : {"x", "1x", "12x", "E", "1,5"}) {
    EXPECT_QZ_THROW(
        CQzException,
        "Failed to write FastInfoset. Invalid character not found for Restricted Alphabet.",
        Restricted("0123456789-+.e ", text));
  }
}

}  // namespace
}  // namespace QzXmlLib16::detail
