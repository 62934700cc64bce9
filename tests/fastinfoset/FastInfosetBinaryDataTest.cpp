#include "qzxml/fastinfoset/FastInfosetBinaryData.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

std::string Encode(std::uint32_t number, const char* text) {
  CFastInfosetBinaryData data("former");
  data.SetAsEncodedString(number, text);
  return data.GetAsHexString();
}

std::string Decode(std::uint32_t number, const char* hex) {
  CFastInfosetBinaryData data;
  data.SetAsHexString(hex);
  return data.GetAsString(number);
}

TEST(FastInfosetBinaryData, EncodesOneValue) {
  const struct {
    std::uint32_t number;
    const char* text;
    const char* octets;
  } cases[] = {
      {1, "00ffA5", "00FFA5"},
      {2, "AP+l", "00FFA5"},
      {3, "0", "0000"},
      {3, "-1", "FFFF"},
      {3, "32767", "7FFF"},
      {3, "-32768", "8000"},
      {3, " 258 ", "0102"},
      {4, "16909060", "01020304"},
      {4, "-2147483648", "80000000"},
      {4, "+07", "00000007"},
      {5, "72623859790382856", "0102030405060708"},
      {5, "-1", "FFFFFFFFFFFFFFFF"},
      {6, "true", "38"},
      {6, "1", "38"},
      {6, "false", "30"},
      {6, "0", "30"},
      {7, "1", "3F800000"},
      {7, "-0.5", "BF000000"},
      {7, "INF", "7F800000"},
      {8, "1", "3FF0000000000000"},
      {8, "1.0", "3FF0000000000000"},
      {8, "-2.5", "C004000000000000"},
      {9, "f81d4fae7dec11d0a76500a0c91e6bf6", "F81D4FAE7DEC11D0A76500A0C91E6BF6"},
      {10, "<a>\xC3\xA9</a>", "3C613EC3A93C2F613E"},
      {10, "", ""},
      {1, nullptr, ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.octets, Encode(c.number, c.text)) << c.number << " " << (c.text ? c.text : "null");
  }
}

TEST(FastInfosetBinaryData, DecodesValuesWithBlanksBetween) {
  const struct {
    std::uint32_t number;
    const char* octets;
    const char* text;
  } cases[] = {
      {1, "00ffa5", "00FFA5"},
      {2, "00FFA5", "AP+l"},
      {3, "FFFF", "-1"},
      {3, "7FFF8000", "32767 -32768"},
      {4, "0102030480000000", "16909060 -2147483648"},
      {5, "0102030405060708FFFFFFFFFFFFFFFF", "72623859790382856 -1"},
      {7, "3F800000BF000000", "1 -0.5"},
      {8, "3FF0000000000000C004000000000000", "1 -2.5"},
      {9, "F81D4FAE7DEC11D0A76500A0C91E6BF6", "F81D4FAE7DEC11D0A76500A0C91E6BF6"},
      {9, "000102030405060708090A0B0C0D0E0FF81D4FAE7DEC11D0A76500A0C91E6BF6",
       "000102030405060708090A0B0C0D0E0F F81D4FAE7DEC11D0A76500A0C91E6BF6"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.text, Decode(c.number, c.octets)) << c.octets;
}

TEST(FastInfosetBinaryData, BooleansStandSideBySideWithinAnOctet) {
  const struct {
    const char* octets;
    const char* text;
  } cases[] = {
      {"38", "true"},
      {"30", "false"},
      {"28", "truefalse"},
      {"1A", "truefalsetrue"},
      {"05", "falsetruefalsetrue"},
      {"7580", "falsetruefalsetrue true"},
      {"00C1", "falsefalsefalsefalse truetruefalsefalsefalsefalsefalsetrue"},
      {"6FFF40", "truetruetruetrue truetruetruetruetruetruetruetrue falsetrue"},
      // More spare bits than there are: no value is left.
      {"4F", ""},
      {"FF", ""},
      {"F8FF", "truefalsefalsefalse "},
  };
  for (const auto& c : cases) EXPECT_EQ(c.text, Decode(6, c.octets)) << c.octets;
}

TEST(FastInfosetBinaryData, OctetsThatAreNoWholeNumberOfValuesAreRefused) {
  const struct {
    std::uint32_t number;
    std::uint32_t size;
    const char* message;
  } cases[] = {
      {3, 2, "Invalid value for SHORT byte encoding."},
      {4, 4, "Invalid value for INT byte encoding."},
      {5, 8, "Invalid value for LONG byte encoding."},
      {7, 4, "Invalid value for FLOAT byte encoding."},
      {8, 8, "Invalid value for DOUBLE byte encoding."},
      {9, 16, "Invalid value for UUID byte encoding."},
  };
  for (const auto& c : cases) {
    for (std::uint32_t length = 1; length < 2 * c.size + 2; ++length) {
      const std::vector<unsigned char> octets(length);
      const CFastInfosetBinaryData data(CBinaryData(octets.data(), length));
      if (length % c.size == 0) {
        EXPECT_NE("", data.GetAsString(c.number));
      } else {
        EXPECT_QZ_THROW(CQzException, c.message, data.GetAsString(c.number));
      }
    }
  }
}

TEST(FastInfosetBinaryData, OtherNumbersAreUnknownUnlessThereIsNothing) {
  for (const std::uint32_t number : {0u, 11u, 33u, 256u, 0xFFFFFFFFu}) {
    CFastInfosetBinaryData data("octets");
    EXPECT_QZ_THROW(CQzException, "Unknown byte encoding.", data.GetAsString(number));
    EXPECT_QZ_THROW(CQzException, "Unknown byte encoding.", data.SetAsEncodedString(number, "1"));
    EXPECT_EQ(0u, data.GetLength());
    EXPECT_EQ("", data.GetAsString(number));
  }
  EXPECT_QZ_THROW(CQzException, "Unknown byte encoding.",
                  CFastInfosetBinaryData("text").GetAsString(10));
  EXPECT_EQ("", CFastInfosetBinaryData().GetAsString(10));
}

TEST(FastInfosetBinaryData, ATextThatIsNoValueOfTheKindFailsInItsConversion) {
  const struct {
    std::uint32_t number;
    const char* text;
    const char* message;
  } cases[] = {
      {1, "abc", "Invalid length in hex string"},
      {1, "xy", "Invalid char in hex string [x]"},
      {9, "f81d4fae-7dec-11d0-a765-00a0c91e6bf6", "Invalid char in hex string [-]"},
  };
  for (const auto& c : cases) {
    CFastInfosetBinaryData data("former");
    EXPECT_QZ_THROW(CQzException, c.message, data.SetAsEncodedString(c.number, c.text));
    EXPECT_EQ(0u, data.GetLength());
  }
  const struct {
    std::uint32_t number;
    const char* text;
    const char* message;
  } values[] = {
      {3, "70000", "The value [70000] is to large to fit in a i2"},
      {4, "4294967296", "The value [4294967296] is to large to fit in a i4"},
      {5, "18446744073709551615", "The value [18446744073709551615] is to large to fit in a i8"},
      {6, "yes",
       "A Boolean Value read from an XML document was invalid [yes]. Valid values are 'true', "
       "'false', '1', or '0'"},
      {7, "x", "The value [x] can not be converted to a r4"},
      {8, "x", "The value [x] can not be converted to a r8"},
  };
  for (const auto& c : values) {
    CFastInfosetBinaryData data("former");
    EXPECT_QZ_THROW(CQzInvalidValueException, c.message, data.SetAsEncodedString(c.number, c.text));
    EXPECT_EQ(0u, data.GetLength());
  }
}

TEST(FastInfosetBinaryData, IsMadeAsBinaryDataIs) {
  EXPECT_EQ(0u, CFastInfosetBinaryData().GetLength());
  EXPECT_EQ("6162", CFastInfosetBinaryData("ab").GetAsHexString());
  EXPECT_EQ("6162", CFastInfosetBinaryData(CBinaryData("ab")).GetAsHexString());
  unsigned char octets[] = {0x61, 0x62};
  EXPECT_EQ("6162", CFastInfosetBinaryData(octets, 2, false).GetAsHexString());
  EXPECT_EQ("61", CFastInfosetBinaryData(new unsigned char[1]{0x61}, 1, true).GetAsHexString());
}

}  // namespace
}  // namespace QzXmlLib16
