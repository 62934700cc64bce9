// The forms of strings, in values of attributes and in text; octets and texts by hand.
#include "qzxml/fastinfoset/FastInfosetReaderStrings.h"
#include "qzxml/runtime/Encoder.h"
#include "tests/fastinfoset/FIDocument.h"
#include "tests/support/LiveCounts.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using qztest::Finf;
using qztest::FinfOf;
using qztest::LoadOctets;
using qztest::Octets;
using qztest::ShapeOf;
using qztest::Times;

class FastInfosetReaderStrings : public qztest::NothingLeftBehind {};

std::string TextOf(const std::string& chunk) {
  CXmlDocument document;
  LoadOctets(document, Finf(Octets("3C 00 61") + chunk + Octets("FF")));
  return document.GetDocumentElement()->GetText();
}

std::string ValueOf(const std::string& value) {
  CXmlDocument document;
  LoadOctets(document, Finf(Octets("7C 00 61 78 00 6B") + value + Octets("FF FF")));
  return document.GetDocumentElement()->GetAttribute("k", "");
}

struct FormCase {
  const char* chunk;
  const char* value;
  const char* text;
};

TEST_F(FastInfosetReaderStrings, EachFormIsReadInTextAndInValues) {
  const FormCase cases[] = {
      // UTF-8: "e" with an acute accent.
      {"81 C3 A9", "01 C3 A9", "\xC3\xA9"},
      // UTF-16BE: "A", the accented letter, the euro sign, U+1D11E.
      {"86 07 00 41 00 E9 20 AC D8 34 DD 1E", "18 01 00 41 00 E9 20 AC D8 34 DD 1E",
       "A\xC3\xA9\xE2\x82\xAC\xF0\x9D\x84\x9E"},
      {"85 00 41", "11 00 41", "A"},
      // Alphabet 1, "0123456789-+.e ": even and odd counts.
      {"88 01 A1 2F", "20 01 A1 2F", "-12"},
      {"88 01 1C 5D", "20 01 1C 5D", "1.5e"},
      {"88 00 3F", "20 00 3F", "3"},
      {"88 00 3E", "20 00 3E", "3 "},
      // A filler ends the text.
      {"88 01 3F 45", "20 01 3F 45", "3"},
      // Alphabet 2, "0123456789-:TZ ": 2004-02-29T12:00:00Z.
      {"88 06 07 20 04 A0 2A 29 C1 2B 00 B0 0D", "20 18 01 20 04 A0 2A 29 C1 2B 00 B0 0D",
       "2004-02-29T12:00:00Z"},
      // Algorithms 1 to 9.
      {"8C 01 0F A0", "30 01 0F A0", "0FA0"},
      {"8C 06 02 00 01 02 FB FF", "30 14 00 01 02 FB FF", "AAEC+/8="},
      {"8C 09 FF FF", "30 21 FF FF", "-1"},
      {"8C 0A 01 00 01 00 02", "30 23 00 01 00 02", "1 2"},
      {"8C 0E 01 80 00 00 00", "30 33 80 00 00 00", "-2147483648"},
      {"8C 12 05 7F FF FF FF FF FF FF FF", "30 47 7F FF FF FF FF FF FF FF", "9223372036854775807"},
      {"8C 14 38", "30 50 38", "true"},
      {"8C 14 1A", "30 50 1A", "truefalsetrue"},
      {"8C 1A 01 3F C0 00 00", "30 63 3F C0 00 00", "1.5"},
      {"8C 1E 05 BF F8 00 00 00 00 00 00", "30 77 BF F8 00 00 00 00 00 00", "-1.5"},
      {"8C 22 0D F8 1D 4F AE 7D EC 11 D0 A7 65 00 A0 C9 1E 6B F6",
       "30 88 07 F8 1D 4F AE 7D EC 11 D0 A7 65 00 A0 C9 1E 6B F6",
       "F81D4FAE7DEC11D0A76500A0C91E6BF6"},
      // Algorithm 10 is the text.
      {"8C 26 02 61 3C 62 26 63", "30 94 61 3C 62 26 63", "a<b&c"},
  };
  for (const FormCase& c : cases) {
    SCOPED_TRACE(c.chunk);
    EXPECT_EQ(c.text, TextOf(Octets(c.chunk)));
    EXPECT_EQ(c.text, ValueOf(Octets(c.value)));
  }
}

TEST_F(FastInfosetReaderStrings, AnyFormEntersTheTables) {
  EXPECT_EQ("-1-1", TextOf(Octets("9C 09 FF FF A0")));
  EXPECT_EQ("a k='-1' l='-1'", ShapeOf(FinfOf("7C 00 61 78 00 6B 70 21 FF FF 78 00 6C 80 FF FF")));
}

TEST_F(FastInfosetReaderStrings, FailuresOfFormsHaveTheirTexts) {
  struct Case {
    const char* chunk;
    const char* text;
  };
  const Case cases[] = {
      {"8C 28 61", "Unknown byte encoding."},  // algorithm 11
      {"8C 80 41", "Unknown byte encoding."},  // algorithm 33
      {"8F FC 12", "Unknown byte encoding."},  // algorithm 256
      {"8C 0A 00 00 01 02", "Invalid value for SHORT byte encoding."},
      {"8C 0C 01", "Invalid value for INT byte encoding."},
      {"8C 10 01", "Invalid value for LONG byte encoding."},
      {"8C 18 01", "Invalid value for FLOAT byte encoding."},
      {"8C 1C 01", "Invalid value for DOUBLE byte encoding."},
      {"8C 20 01", "Invalid value for UUID byte encoding."},
      {"84 41", "Failed to parse FastInfoset. A text in UTF-16BE has an odd number of octets."},
      {"88 00 F0", "Failed to parse FastInfoset. The index 16 is outside a table of 15 entries."},
      {"88 08 12", "Failed to parse FastInfoset. The index 3 is outside a table of 2 entries."},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.chunk);
    EXPECT_QZ_THROW(CQzException, c.text, TextOf(Octets(c.chunk)));
  }
  // Algorithms 11, 33 and 256 in values.
  for (const char* value : {"30 A0 61", "32 00 61", "3F F0 61"}) {
    SCOPED_TRACE(value);
    EXPECT_QZ_THROW(CQzException, "Unknown byte encoding.", ValueOf(Octets(value)));
  }
}

TEST_F(FastInfosetReaderStrings, AZeroUnitEndsATextOfUtf16) {
  EXPECT_EQ("A", TextOf(Octets("86 01 00 41 00 00")));
}

// --- Alphabets of any size, which only a vocabulary of one's own could have

std::string Alphabet(std::size_t size) {
  std::string alphabet;
  for (std::size_t i = 0; i < size; ++i) alphabet += static_cast<char>('0' + i % 75);
  return alphabet;
}

TEST_F(FastInfosetReaderStrings, AlphabetsTakeTheBitsThatTheirSizeNeeds) {
  struct Case {
    std::size_t size;
    const char* octets;
    const char* text;
  };
  const Case cases[] = {
      // Two bits, also for two characters: 00 01 01 00.
      {2, "14", "0110"},
      {3, "18", "0120"},
      // 11 ends the text.
      {3, "1B 00", "012"},
      {3, "C0", ""},
      // Three bits: 000 001 010 011 100 101 110 111; the last ends it.
      {7, "05 39 77", "0123456"},
      {4, "05 3F", "0123"},
      // 101 111: ends within an octet.
      {6, "BF FF", "5"},
      // Four bits for 8 to 15.
      {8, "07 7F 12", "077"},
      {15, "0E E1", "0>>1"},
      // Five bits for 16 to 31: 00000 00001 11110 and one bit over.
      {31, "00 7C", "01N"},
      {16, "00 5F F0", "01?"},
      // Eight bits for 128 to 255, where nothing ends it.
      {128, "00 01 7F", "01d"},
      // Nine bits for 256: 000000000 000000001 and six bits over.
      {256, "00 00 40", "01"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.octets);
    EXPECT_EQ(c.text, detail::DecodeRestrictedAlphabet(Alphabet(c.size), Octets(c.octets)));
  }
}

TEST_F(FastInfosetReaderStrings, AnAlphabetHas2To2Power20Characters) {
  constexpr char kText[] =
      "Failed to parse FastInfoset. Invalid Encoding of Restricted Alphabet. Alphabet must contain "
      "between 2 and 2^20 characters.";
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{0x100001}}) {
    EXPECT_QZ_THROW(CQzException, kText,
                    detail::DecodeRestrictedAlphabet(Alphabet(size), Octets("00")));
  }
  // 21 bits: place 2^20 - 1, which is 75 * 13981 = 1048575 and so a 0 again.
  EXPECT_EQ("0", detail::DecodeRestrictedAlphabet(Alphabet(0x100000), Octets("7F FF F8")));
}

TEST_F(FastInfosetReaderStrings, APlaceOutsideTheAlphabetFails) {
  struct Case {
    std::size_t size;
    const char* octets;
    int index;
  };
  const Case cases[] = {{2, "80", 3},   {4, "80", 5},   {8, "80", 9},     {8, "08", 9},
                        {15, "FF", 16}, {16, "84", 17}, {128, "80", 129}, {255, "FF", 256}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.octets);
    EXPECT_QZ_THROW(CQzException,
                    "Failed to parse FastInfoset. The index " + std::to_string(c.index) +
                        " is outside a table of " + std::to_string(c.size) + " entries.",
                    detail::DecodeRestrictedAlphabet(Alphabet(c.size), Octets(c.octets)));
  }
}

// --- Local encodings

class InLatin1 {
 public:
  InLatin1() { SetLocalCharEncoding(28591); }
  ~InLatin1() { SetLocalCharEncoding(3); }
};

TEST_F(FastInfosetReaderStrings, AllTextIsTurnedIntoTheLocalEncoding) {
  const InLatin1 latin;
  EXPECT_EQ("\xE9", TextOf(Octets("81 C3 A9")));
  EXPECT_EQ("\xE9", TextOf(Octets("85 00 E9")));
  EXPECT_EQ("\xE9", ValueOf(Octets("01 C3 A9")));
  EXPECT_EQ("\xE9", ValueOf(Octets("30 91 C3 A9")));
  EXPECT_EQ("{\xE9}\xE9 \xE9='\xE9'[{\xE9}\xE9]",
            ShapeOf(FinfOf("7D 01 C3 A9 01 C3 A9 78 80 41 C3 A9 F0 00 FF F0")));
  // Longer than the buffer for conversions.
  const std::string text = Times(700, "\xC3\xA9");
  EXPECT_EQ(Times(700, "\xE9"), TextOf(Octets("83 00 00 04 75") + text));
}

}  // namespace
}  // namespace QzXmlLib16
