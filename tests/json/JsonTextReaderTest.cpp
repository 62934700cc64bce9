#include <type_traits>

#include "qzxml/json/JsonTextReader.h"
#include "qzxml/runtime/MemoryLeakHelp.h"
#include "tests/json/Events.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using qztest::CEvents;
using qztest::Reading;

static_assert(!std::is_constructible_v<CJsonTextReader, std::string&&>);
static_assert(!std::is_constructible_v<CJsonTextReader, const char*>);
static_assert(!std::is_copy_constructible_v<CJsonTextReader>);

const Reading kPlain;
const Reading kWithComments{true, ""};

std::string Repeat(const std::string& text, std::size_t count) {
  std::string all;
  for (std::size_t i = 0; i < count; ++i) all += text;
  return all;
}

struct EventCase {
  std::string text;
  std::string events;
};

struct FailureCase {
  std::string text;
  std::string message;
  std::string path = "$";
};

void ExpectEvents(const std::vector<EventCase>& cases, const Reading& reading) {
  for (const EventCase& c : cases) EXPECT_EQ(c.events, reading(c.text)) << c.text;
}

void ExpectFailures(const std::vector<FailureCase>& cases, const Reading& reading) {
  for (const FailureCase& c : cases) {
    EXPECT_QZ_THROW_FULL(CQzValidationException, c.message + "\nPath: " + c.path, c.path.c_str(),
                         reading(c.text))
        << c.text;
  }
}

// --- Values

TEST(JsonTextReader, GivesAnEventForEachNameValueAndContainer) {
  ExpectEvents(
      {
          {"{}", "( { } )"},
          {"[]", "( [ ] )"},
          {"\"a\"", "( \"a\" )"},
          {"\"\"", "( \"\" )"},
          {"7", "( #7 )"},
          {"true", "( true )"},
          {"false", "( false )"},
          {"null", "( null )"},
          {"{\"a\":1}", "( { a: #1 } )"},
          {"{\"\":1}", "( { : #1 } )"},
          {"{\"a\":1,\"b\":\"x\",\"a\":2}", "( { a: #1 b: \"x\" a: #2 } )"},
          {"[1,\"x\",true,false,null,{},[]]", "( [ #1 \"x\" true false null { } [ ] ] )"},
          {"{\"a\":{\"b\":[{\"c\":null},[[]]]}}", "( { a: { b: [ { c: null } [ [ ] ] ] } } )"},
      },
      kPlain);
}

TEST(JsonTextReader, SkipsWhiteSpaceBetweenTokens) {
  ExpectEvents(
      {
          {" \t\r\n{ \t\r\n\"a\"\t: \r\n1 ,\n\n\"b\" :[ 2\t, 3 ] \r}\n",
           "( { a: #1 b: [ #2 #3 ] } )"},
          {" [ ] ", "( [ ] )"},
          {"\n\n\ntrue\n\n", "( true )"},
          {"[-1 ,0\t,0.5\r,1e5 ]", "( [ #-1 #0 #0.5 #1e5 ] )"},
      },
      kPlain);
}

TEST(JsonTextReader, ATextWithoutAValueGivesNoEvent) {
  ExpectEvents({{"", "( )"}, {" \t\r\n ", "( )"}}, kPlain);
  ExpectEvents({{"", "( )"}, {"// a", "( )"}, {"/**/ //\n/* a", "( )"}}, kWithComments);
}

TEST(JsonTextReader, DoesNotLookBehindTheFirstValue) {
  ExpectEvents(
      {
          {"{} garbage", "( { } )"},
          {"[]]", "( [ ] )"},
          {"1]", "( #1 )"},
          {"01", "( #0 )"},
          {"1.5.5", "( #1.5 )"},
          {"nullnull", "( null )"},
          {"\"a\"\"b", "( \"a\" )"},
          {"{}/*", "( { } )"},
      },
      kPlain);
}

TEST(JsonTextReader, TheExamplesOfRfc8259Section13) {
  EXPECT_EQ(
      "( { Image: { Width: #800 Height: #600 Title: \"View from 15th Floor\" Thumbnail: { Url: "
      "\"http://www.example.com/image/481989943\" Height: #125 Width: #100 } Animated: false IDs: "
      "[ #116 #943 #234 #38793 ] } } )",
      kPlain(R"(
      {
        "Image": {
            "Width":  800,
            "Height": 600,
            "Title":  "View from 15th Floor",
            "Thumbnail": {
                "Url":    "http://www.example.com/image/481989943",
                "Height": 125,
                "Width":  100
            },
            "Animated" : false,
            "IDs": [116, 943, 234, 38793]
          }
      })"));
  EXPECT_EQ(
      "( [ { precision: \"zip\" Latitude: #37.7668 Longitude: #-122.3959 Address: \"\" City: \"SAN "
      "FRANCISCO\" State: \"CA\" Zip: \"94107\" Country: \"US\" } ] )",
      kPlain(R"([
        {
           "precision": "zip",
           "Latitude":  37.7668,
           "Longitude": -122.3959,
           "Address":   "",
           "City":      "SAN FRANCISCO",
           "State":     "CA",
           "Zip":       "94107",
           "Country":   "US"
        }
      ])"));
  EXPECT_EQ("( \"Hello world!\" )", kPlain("\"Hello world!\""));
  EXPECT_EQ("( #42 )", kPlain("42"));
  EXPECT_EQ("( true )", kPlain("true"));
}

// --- Depth

TEST(JsonTextReader, ValuesNestAHundredDeep) {
  const std::string hundred = Repeat("[", 100) + Repeat("]", 100);
  EXPECT_EQ("(" + Repeat(" [", 100) + Repeat(" ]", 100) + " )", kPlain(hundred));
  const std::string objects = Repeat("{\"a\":", 99) + "{}" + Repeat("}", 99);
  EXPECT_EQ("( {" + Repeat(" a: {", 99) + Repeat(" }", 100) + " )", kPlain(objects));
}

TEST(JsonTextReader, NoValueOfAnyKindIsDeeper) {
  for (const char* value : {"1", "\"a\"", "null", "true", "[]", "{}", "?"}) {
    ExpectFailures(
        {{Repeat("[", 100) + value, "JSON exceeded depth limit at line 1, position 101."}}, kPlain);
  }
  ExpectFailures(
      {{Repeat("[", 101) + Repeat("]", 101), "JSON exceeded depth limit at line 1, position 101."},
       {Repeat("\n[", 100000), "JSON exceeded depth limit at line 102, position 1."}},
      kPlain);
}

TEST(JsonTextReader, ObjectsCountInTheDepthAsArraysDo) {
  ExpectFailures({{Repeat("{\"a\":", 100) + "1",
                   "JSON exceeded depth limit at line 1, position 501.", "$" + Repeat(".a", 100)}},
                 kPlain);
}

TEST(JsonTextReader, TheRootElementDoesNotCountInTheDepth) {
  const std::string hundred = Repeat("[", 100) + Repeat("]", 100);
  EXPECT_NO_THROW((Reading{false, "r"}(hundred)));
}

// --- Texts

TEST(JsonTextReader, ResolvesTheEscapes) {
  ExpectEvents({{R"("\"\\\/")", "( \"\"\\/\" )"},
                {R"("\b\f\n\r\t")", "( \"\b\f\n\r\t\" )"},
                {R"({"\"\n":1})", "( { \"\n: #1 } )"},
                {R"("a\tb\\c")", "( \"a\tb\\c\" )"}},
               kPlain);
}

// One byte: the high hexadecimal digit of the code of the first character.
TEST(JsonTextReader, OfACodeTakesTheHighDigitOfItsFirstCharacter) {
  ExpectEvents(
      {
          {R"("\u0041")", "( \"3\" )"},         // '0' is 0x30
          {R"("\u9999")", "( \"3\" )"},         // '9' is 0x39
          {R"("\uA000\uF000")", "( \"44\" )"},  // 0x41, 0x46
          {R"("\ua000\uf000")", "( \"66\" )"},  // 0x61, 0x66
          {R"("\uD834\uDD1E")", "( \"44\" )"},  // a pair of surrogates is two codes
          {R"("x\u0041y")", "( \"x3y\" )"},
          {R"("\uzyxw")", "( \"7\" )"},      // 0x7A; no digits are asked for
          {"\"\\u\"\"\"\"\"", "( \"2\" )"},  // 0x22; a mark among the four ends nothing
          {"\"\\u\n\n\n\n\"", "( \"0\" )"},  // 0x0A
          {"\"\\u\xC3\xA9xy\"", "( \"C\" )"},
          {"\"\\u\xFF\xFF\xFF\xFF\"", "( \"F\" )"},
      },
      kPlain);
}

TEST(JsonTextReader, TakesAllOtherBytesOfATextAsTheyAre) {
  std::string all;
  for (int c = 0; c < 256; ++c) {
    if (c != '"' && c != '\\' && c != '\n') all += static_cast<char>(c);
  }
  EXPECT_EQ("( \"" + all + "\" )", kPlain("\"" + all + "\""));
  EXPECT_EQ("( { " + all + ": #1 } )", kPlain("{\"" + all + "\":1}"));
}

TEST(JsonTextReader, ALineFeedInATextIsDroppedAndCounted) {
  ExpectEvents({{"\"a\nb\"", "( \"ab\" )"},
                {"\"\n\na\n\"", "( \"a\" )"},
                {"\"a\r\nb\tc\"", "( \"a\rb\tc\" )"},
                {"{\"a\nb\":1}", "( { ab: #1 } )"},
                {"\"\\\nn\"", "( \"\n\" )"}},
               kPlain);
  ExpectFailures({{"[\"a\nb\n\" ?",
                   "Expected Array separator character ',', found '?' at line 3, position 3."}},
                 kPlain);
}

TEST(JsonTextReader, TheLineFeedsOfACodeAreNotCounted) {
  ExpectFailures({{"[\"\\u\n\n\n\n\" ?",
                   "Expected Array separator character ',', found '?' at line 1, position 11."}},
                 kPlain);
}

// --- Numbers

TEST(JsonTextReader, ANumberKeepsItsText) {
  for (const char* number :
       {"0", "-0", "7", "10", "-123", "0.0", "-0.50", "12.345", "1e5", "1E5", "1e+5", "1e-5", "0e0",
        "-1.50E+007", "1e999999", "123456789012345678901234567890123456789.0"}) {
    EXPECT_EQ("( #" + std::string(number) + " )", kPlain(number));
    EXPECT_EQ("( [ #" + std::string(number) + " ] )", kPlain("[" + std::string(number) + "]"));
    EXPECT_EQ("( { a: #" + std::string(number) + " } )",
              kPlain("{\"a\":" + std::string(number) + " }"));
  }
}

TEST(JsonTextReader, ALineFeedJoinsTheDigitsOfANumber) {
  ExpectEvents({{"1\n2", "( #12 )"},
                {"-\n1\n.\n5\ne\n+\n7\n8", "( #-1.5e+78 )"},
                {"[1\n,2\n]", "( [ #1 #2 ] )"},
                {"[1\r\n]", "( [ #1 ] )"}},
               kPlain);
  ExpectFailures({{"[0\n1]",
                   "Expected Array separator character ',', found '1' at line 2, position "
                   "1."}},
                 kPlain);
}

TEST(JsonTextReader, ALeadingZeroIsANumberOfItsOwn) {
  ExpectFailures(
      {{"[01]", "Expected Array separator character ',', found '1' at line 1, position 3."},
       {"[-012]", "Expected Array separator character ',', found '1' at line 1, position 4."}},
      kPlain);
}

// --- Failures

TEST(JsonTextReader, FailsWhereNoValueBegins) {
  const auto other = [](const char* found, int position) {
    return "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found '" +
           std::string(found) + "' at line 1, position " + std::to_string(position) + ".";
  };
  ExpectFailures({{"x",
                   "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found "
                   "'x' at line 1, position 1."},
                  {"TRUE", other("T", 1)},
                  {"Null", other("N", 1)},
                  {"+1", other("+", 1)},
                  {".5", other(".", 1)},
                  {"'a'", other("'", 1)},
                  {"  ]", other("]", 3)},
                  {"}", other("}", 1)},
                  {"[1,]", other("]", 4)},
                  {"[,1]", other(",", 2)},
                  {"[1,,2]", other(",", 4)},
                  {"{\"a\":}", other("}", 6), "$.a"},
                  {"{\"a\":,", other(",", 6), "$.a"},
                  {"\xEF\xBB\xBF{}", other("\xEF", 1)},
                  {"/ 1", other("/", 1)},
                  {"\v1", other("\v", 1)}},
                 kPlain);
}

// A formatted text ends at its first zero byte.
TEST(JsonTextReader, TellsNoMoreBehindAZeroByte) {
  ExpectFailures(
      {{std::string("\0", 1),
        "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found '"}},
      kPlain);
}

TEST(JsonTextReader, FailsInAnArray) {
  const std::string end =
      "Unexpected End of File. Expected Array terminator character ']' at line 1, position ";
  ExpectFailures(
      {{"[",
        "Unexpected End of File. Expected Array terminator character ']' at line 1, position 1."},
       {"[ ", end + "2."},
       {"[1", end + "2."},
       {"[1 ", end + "3."},
       {"[1,", end + "3."},
       {"[[]", end + "3."},
       {"[\"a\"", end + "4."},
       {"[null", end + "5."},
       {"[1,\n2\n,\n",
        "Unexpected End of File. Expected Array terminator character ']' at line 4, position 0."},
       {"[1 2]", "Expected Array separator character ',', found '2' at line 1, position 4."},
       {"[1}", "Expected Array separator character ',', found '}' at line 1, position 3."},
       {"[1:2]", "Expected Array separator character ',', found ':' at line 1, position 3."},
       {"[{} {}]", "Expected Array separator character ',', found '{' at line 1, position 5."},
       {"{\"a\":[1;", "Expected Array separator character ',', found ';' at line 1, position 8.",
        "$"}},
      kPlain);
}

TEST(JsonTextReader, FailsInAnObject) {
  const std::string quote = "Expected quotation mark character '\"' before Name, found '";
  const std::string end =
      "Unexpected End of File. Expected Object terminator character '}' at line 1, position ";
  ExpectFailures(
      {{"{",
        "Unexpected End of File. Expected Object terminator character '}}' at line 1, position 1."},
       {"{ ",
        "Unexpected End of File. Expected Object terminator character '}}' at line 1, position 2."},
       {"{a:1}",
        "Expected quotation mark character '\"' before Name, found 'a' at line 1, position 2."},
       {"{,", quote + ",' at line 1, position 2."},
       {"{1", quote + "1' at line 1, position 2."},
       {"{\"a\":1,}", quote + "}' at line 1, position 8.", "$.a"},
       {"{\"a\":1,,", quote + ",' at line 1, position 8.", "$.a"},
       {"{\"a\"",
        "Unexpected End of File. Expected Object Name/Value separator character ':' at line 1, "
        "position 4.",
        "$.a"},
       {"{\"a\"1",
        "Expected Object Name/Value separator character ':', found '1' at line 1, position 5.",
        "$.a"},
       {"{\"a\"}",
        "Expected Object Name/Value separator character ':', found '}' at line 1, position 5.",
        "$.a"},
       {"{\"a\":", "Unexpected End of File. Expected Object Value at line 1, position 5.", "$.a"},
       {"{\"a\":\n ", "Unexpected End of File. Expected Object Value at line 2, position 1.",
        "$.a"},
       {"{\"a\":1",
        "Unexpected End of File. Expected Object terminator character '}' at line 1, position 6.",
        "$.a"},
       {"{\"a\":1,", end + "7.", "$.a"},
       {"{\"a\":{}", end + "7."},
       {"{\"a\":1 2", "Expected Object separator character ',', found '2' at line 1, position 8.",
        "$.a"},
       {"{\"a\":1]", "Expected Object separator character ',', found ']' at line 1, position 7.",
        "$.a"},
       {"{\"a\":\"b\"\"",
        "Expected Object separator character ',', found '\"' at line 1, position 9.", "$.a"}},
      kPlain);
}

TEST(JsonTextReader, FailsInAWord) {
  ExpectFailures(
      {{"n", "Unexpected End of File. Expected value 'NULL' at line 1, position 1."},
       {"nul", "Unexpected End of File. Expected value 'NULL' at line 1, position 3."},
       {"nulL", "Expected 'NULL' at line 1, position 4."},
       {"nNULL", "Expected 'NULL' at line 1, position 4."},
       {"t", "Unexpected End of File. Expected value 'true' at line 1, position 1."},
       {"tru", "Unexpected End of File. Expected value 'true' at line 1, position 3."},
       {"tRUE", "Expected 'true' at line 1, position 4."},
       {"tr\nue", "Expected 'true' at line 1, position 4."},
       {"f", "Unexpected End of File. Expected value 'false' at line 1, position 1."},
       {"fals", "Unexpected End of File. Expected value 'false' at line 1, position 4."},
       {"falsy", "Expected 'false' at line 1, position 5."},
       {"[truex", "Expected Array separator character ',', found 'x' at line 1, position 6."}},
      kPlain);
}

TEST(JsonTextReader, FailsInANumber) {
  ExpectFailures(
      {{"-", "Unexpected End of File. Expected a number at line 1, position 1."},
       {"1e+", "Unexpected End of File. Expected a number at line 1, position 3."},
       {"1e-", "Unexpected End of File. Expected a number at line 1, position 3."},
       {"-a", "Expected a digit '0' to '9', found 'a' at line 1, position 2."},
       {"--1", "Expected a digit '0' to '9', found '-' at line 1, position 2."},
       {"- 1", "Expected a digit '0' to '9', found ' ' at line 1, position 2."},
       {"1.e5", "Expected a digit '0' to '9', found 'e' at line 1, position 3."},
       {"[1.]", "Expected a digit '0' to '9', found ']' at line 1, position 4."},
       {"1.", "Unexpected End of File. Expected a digit '0' to '9' at line 1, position 2."},
       {"1e", "Unexpected End of File. Expected '+', '-' or a number at line 1, position 2."},
       {"1E", "Unexpected End of File. Expected '+', '-' or a number at line 1, position 2."},
       // Meant: the same words, although the file has not ended.
       {"1ex", "Unexpected End of File. Expected a digit '0' to '9' at line 1, position 3."},
       {"[1e+]", "Unexpected End of File. Expected a digit '0' to '9' at line 1, position 5."},
       {"1e--1", "Unexpected End of File. Expected a digit '0' to '9' at line 1, position 4."}},
      kPlain);
}

TEST(JsonTextReader, FailsInAText) {
  ExpectFailures(
      {{"\"", "Unexpected End of File. Expected string value at line 1, position 1."},
       {"\"abc", "Unexpected End of File. Expected string value at line 1, position 4."},
       {"\"a\n", "Unexpected End of File. Expected string value at line 2, position 0."},
       {"\"\\", "Unexpected End of File. Expected string value at line 1, position 2."},
       {"\"\\\"", "Unexpected End of File. Expected string value at line 1, position 3."},
       {"\"\\u",
        "Unexpected End of File. Expected 4 hexadecimal digits'\\uxxxx' at line 1, position 3."},
       {"\"\\u004",
        "Unexpected End of File. Expected 4 hexadecimal digits'\\uxxxx' at line 1, position 6."},
       {"\"\\u004\"", "Unexpected End of File. Expected string value at line 1, position 7."},
       {"\"\\x41\"", "Invalid Escape Character 'x' at line 1, position 3."},
       {"\"\\U0041\"", "Invalid Escape Character 'U' at line 1, position 3."},
       {"\"\\'\"", "Invalid Escape Character ''' at line 1, position 3."},
       {"{\"a\\0\"", "Invalid Escape Character '0' at line 1, position 5."}},
      kPlain);
}

TEST(JsonTextReader, CountsLinesFromOneAndTheBytesOfALineFromOne) {
  ExpectFailures({{"?",
                   "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', "
                   "found '?' at line 1, position 1."},
                  {"\n?",
                   "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', "
                   "found '?' at line 2, position 1."},
                  {"\r\t ?",
                   "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', "
                   "found '?' at line 1, position 4."},
                  {"\r\n\r\n\t?",
                   "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found "
                   "'?' at line 3, position 2."},
                  {"[\n1,\n\xC3\xA9",
                   "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found "
                   "'\xC3' at line 3, position 1."}},
                 kPlain);
}

// --- Comments

TEST(JsonTextReader, SkipsCommentsWhereTheyAreAllowed) {
  ExpectEvents(
      {
          {"/* a */1", "( #1 )"},
          {"// a\n1", "( #1 )"},
          {"/**/[/***/1 /**/ ,/* * / */2 /*\n\n*/]// x", "( [ #1 #2 ] )"},
          {"{//\n\"a\"//\n://\n1 //\n,//\n\"b\"/**/:/**/2 /**/}/**/", "( { a: #1 b: #2 } )"},
          {"[1, // x\n //\n /*//*/ 2]", "( [ #1 #2 ] )"},
          {"[true// x\n,null/* x */]", "( [ true null ] )"},
          {"/*/ 7 */8", "( #8 )"},
          {"/***/8", "( #8 )"},
          {"/* **\n/ */8", "( #8 )"},
          {"/*\"*/\"/*a*/\"", "( \"/*a*/\" )"},
          {"\"//a\"", "( \"//a\" )"},
      },
      kWithComments);
}

TEST(JsonTextReader, ACommentAtTheEndNeedNotEnd) {
  ExpectEvents({{"1 // x", "( #1 )"},
                {"{} // x", "( { } )"},
                {"[] //", "( [ ] )"},
                {"[] /* x", "( [ ] )"},
                {"[] /*", "( [ ] )"},
                {"[] /* *", "( [ ] )"},
                {"[] /", "( [ ] )"}},
               kWithComments);
}

TEST(JsonTextReader, AnUnendedCommentIsTheEndOfTheFile) {
  ExpectFailures({{"[1 /* x ]",
                   "Unexpected End of File. Expected Array terminator character ']' at line 1, "
                   "position 8."},
                  {"[1 // x ]",
                   "Unexpected End of File. Expected Array terminator character ']' at line 1, "
                   "position 4."},
                  {"[ /*\n",
                   "Unexpected End of File. Expected Array terminator character ']' at line 2, "
                   "position 0."},
                  {"{/*",
                   "Unexpected End of File. Expected Object terminator character '}}' at line 1, "
                   "position 2."},
                  {"{\"a\"//",
                   "Unexpected End of File. Expected Object Name/Value separator character ':' at "
                   "line 1, position 5.",
                   "$.a"}},
                 kWithComments);
}

TEST(JsonTextReader, CountsLinesAndBytesBehindComments) {
  ExpectFailures(
      {// The "*" that begins a comment counts in no column.
       {"[/* x */?",
        "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found "
        "'?' at line 1, position 8."},
       {"[// x\n?",
        "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found "
        "'?' at line 2, position 1."},
       {"[/*\n\n*/?",
        "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found "
        "'?' at line 3, position 3."}},
      kWithComments);
}

TEST(JsonTextReader, ASlashThatBeginsNoCommentFails) {
  ExpectFailures({{"/ /1",
                   "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', "
                   "found '/' at line 1, position 1."},
                  {"[1 /]",
                   "Expected Array separator character ',', found '/' at line 1, position "
                   "4."},
                  {"[1 /",
                   "Expected Array separator character ',', found '/' at line 1, position "
                   "4."},
                  {"/",
                   "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found "
                   "'/' at line 1, position 1."}},
                 kWithComments);
}

TEST(JsonTextReader, ACommentStraightBehindANumberIsNone) {
  ExpectFailures({{"[1/**/]",
                   "Expected Array separator character ',', found '/' at line 1, position "
                   "3."},
                  {"[1.5//\n]",
                   "Expected Array separator character ',', found '/' at line 1, "
                   "position 5."},
                  {"[1\n/**/]",
                   "Expected Array separator character ',', found '/' at line 2, "
                   "position 1."}},
                 kWithComments);
  EXPECT_EQ("( [ #1 ] )", kWithComments("[1 /**/]"));
}

TEST(JsonTextReader, CommentsAreNotAllowedInANewReader) {
  ExpectFailures({{"// x\n1",
                   "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or "
                   "'null', found '/' at line 1, position 1."},
                  {"[1 /**/]",
                   "Expected Array separator character ',', found '/' at line 1, "
                   "position 4."}},
                 kPlain);
}

TEST(JsonTextReader, AMillionCommentsTakeNoStack) {
  EXPECT_EQ("( #1 )", kWithComments(Repeat("/**/", 1000000) + "1"));
  EXPECT_EQ("( #1 )", kWithComments(Repeat("//\n", 1000000) + "1"));
  EXPECT_EQ("( [ #1 ] )", kWithComments("[1 " + Repeat("/*x*/ //\n", 1000000) + "]"));
}

// --- The root element

TEST(JsonTextReader, TheRootElementGoesAroundTheText) {
  const Reading reading{true, "r"};
  ExpectEvents({{"1", "( { r: #1 } )"},
                {"[1,2]", "( { r: [ #1 #2 ] } )"},
                {"{\"a\":1} garbage", "( { r: { a: #1 } } )"},
                {"", "( { r: } )"},
                {"// x", "( { r: } )"}},
               reading);
  ExpectFailures({{"?",
                   "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found "
                   "'?' at line 1, position 1.",
                   "$.r"}},
                 reading);
}

TEST(JsonTextReader, NoRootElementIsAddedForNull) {
  std::string events;
  const std::string text = "1";
  CJsonTextReader reader(text);
  reader.SetHandler(new CEvents(events));
  reader.SetRootElementName("r");
  reader.SetRootElementName(nullptr);
  reader.Parse();
  EXPECT_EQ(" ( #1 )", events);
}

// --- Damage

// Each beginning of a good text fails in a way of its own, and none reads behind its end.
TEST(JsonTextReader, ATextCutAnywhereFailsOrIsWhole) {
  const std::string text =
      "\n{\"a\\n\": [1, -2.5e+7, {\"b\\u0041\": true, \"\": false}, [null, [], {}]], // x\n"
      " /* y */ \"c\": \"d\\\\\" }";
  EXPECT_NO_THROW(kWithComments(text));
  for (std::size_t size = 0; size < text.size(); ++size) {
    const std::string cut = text.substr(0, size);
    if (cut.find('{') == std::string::npos) {
      EXPECT_EQ("( )", kWithComments(cut));
      continue;
    }
    try {
      kWithComments(cut);
      ADD_FAILURE() << "passes at " << size;
    } catch (const CQzValidationException& e) {
      const bool slash = cut.back() == '/';  // as long as no more of a comment is there
      EXPECT_TRUE(slash || e.GetMessage().compare(0, 24, "Unexpected End of File. ") == 0)
          << cut << "\n"
          << e.GetMessage();
    }
  }
}

TEST(JsonTextReader, ATextWithEachByteReplacedFailsOrIsRead) {
  const std::string text = "{\"a\": [1, -2.5e+7, {\"b\\u0041\": true}], \"c\": null /* y */ }";
  int failed = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    for (const char c : {'\0', '\n', '"', '\\', '/', '*', '{', ']', ',', '0', 'e', '\xFF'}) {
      std::string damaged = text;
      damaged[i] = c;
      try {
        kWithComments(damaged);
      } catch (const CQzValidationException& e) {
        EXPECT_EQ("$", e.GetPath().substr(0, 1));
        ++failed;
      }
    }
  }
  EXPECT_GT(failed, 100);
}

// --- Handlers

TEST(JsonTextReader, WithoutAHandlerTheTextIsChecked) {
  const std::string good = "{\"a\":[1]}";
  EXPECT_NO_THROW(CJsonTextReader(good).Parse());
  const std::string bad = "{\"a\":[1";
  CJsonTextReader reader(bad);
  EXPECT_QZ_THROW(CQzValidationException,
                  "Unexpected End of File. Expected Array terminator character ']' at line 1, "
                  "position 7.\nPath: $",
                  reader.Parse());
}

TEST(JsonTextReader, ParsingBeginsAtTheBeginning) {
  std::string events;
  const std::string text = "\n[1,\n?";
  CJsonTextReader reader(text);
  reader.SetHandler(new CEvents(events));
  for (int i = 0; i < 2; ++i) {
    EXPECT_QZ_THROW(CQzValidationException,
                    "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found "
                    "'?' at line 3, position 1.\nPath: $",
                    reader.Parse());
  }
  EXPECT_EQ(" ( [ #1 ( [ #1", events);
  const std::string ended = "[";
  CJsonTextReader another(ended);
  for (int i = 0; i < 2; ++i) {
    EXPECT_QZ_THROW(CQzValidationException,
                    "Unexpected End of File. Expected Array terminator character ']' at line 1, "
                    "position 1.\nPath: $",
                    another.Parse());
  }
}

TEST(JsonTextReader, GivesTheEventsUpToAFailure) {
  std::string events;
  const std::string text = "{\"a\":[1,{\"b\":\"x\"},tr]";
  CJsonTextReader reader(text);
  reader.SetHandler(new CEvents(events));
  EXPECT_THROW(reader.Parse(), CQzValidationException);
  EXPECT_EQ(" ( { a: [ #1 { b: \"x\" }", events);
}

struct Stop {};

class CStopping : public CEvents {
 public:
  explicit CStopping(std::string& events) : CEvents(events) {}
  void Number(const std::string&) override { throw Stop(); }
};

TEST(JsonTextReader, WhatAHandlerThrowsPassesOn) {
  std::string events;
  const std::string text = "{\"a\":[{\"b\":1},2]}";
  CJsonTextReader reader(text);
  reader.SetHandler(new CStopping(events));
  EXPECT_THROW(reader.Parse(), Stop);
  EXPECT_EQ(" ( { a: [ { b:", events);
  EXPECT_EQ(std::string("$.b.a[\0]", 8), reader.GetErrorPathProvider()->GetErrorPath());
}

TEST(JsonTextReader, CountsUnderItsName) {
  const std::string text = "1";
  const CJsonTextReader reader(text);
  EXPECT_NE(std::string::npos, CInstanceMonitor::DumpState().find("--> CJsonTextReader = 1/"));
}

}  // namespace
}  // namespace QzXmlLib16
