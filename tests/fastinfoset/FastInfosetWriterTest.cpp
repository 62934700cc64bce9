#include "qzxml/fastinfoset/FastInfosetWriter.h"
#include "qzxml/platform/DebugChannel.h"
#include "qzxml/runtime/Encoder.h"
#include "tests/fastinfoset/Written.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using Encoding = CFastInfosetContext::EncodedCharacterString;
using qztest::Digits;
using qztest::HexOf;
using qztest::Written;

constexpr char kHead[] = "E000000100";

// Of <a/> up to its content, without and with attributes.
constexpr char kElement[] = "E000000100 38F0 3C0061";
constexpr char kElementWithAttributes[] = "E000000100 78F0 3C0061";

void WriteRoot(CFastInfosetWriter& writer, const std::string& text, ItemType type) {
  writer.WriteStartElement("a", "");
  writer.WriteText(text, type, false);
  writer.WriteEndElement();
}

// What stands for the text in <a>text</a>.
std::string Chunk(CFastInfosetContext& context, const std::string& text,
                  ItemType type = ItemType_string) {
  const std::string octets =
      Written(context, [&](CFastInfosetWriter& w) { WriteRoot(w, text, type); });
  const std::size_t size = Digits(kElement).size();
  EXPECT_EQ(Digits(kElement), octets.substr(0, size));
  EXPECT_EQ("FF", octets.substr(octets.size() - 2));
  return octets.substr(size, octets.size() - size - 2);
}

// What stands for the value in <a k="value"/>.
std::string Value(CFastInfosetContext& context, const std::string& value,
                  ItemType type = ItemType_string) {
  const std::string octets = Written(context, [&](CFastInfosetWriter& w) {
    w.WriteStartElement("a", "");
    w.WriteAttribute("k", "", value, type);
    w.WriteEndElement();
  });
  const std::string head = Digits(std::string(kElementWithAttributes) + "78006B");
  EXPECT_EQ(head, octets.substr(0, head.size()));
  EXPECT_EQ("F0FF", octets.substr(octets.size() - 4));
  return octets.substr(head.size(), octets.size() - head.size() - 4);
}

// ---- The document ----

TEST(FastInfosetWriter, AnEmptyElementIsItsNameAndOneOctetForTwoEnds) {
  EXPECT_EQ(Digits("E0000001 00 38F0 3C 0061 FF"), Written([](CFastInfosetWriter& w) {
              w.WriteStartElement("a", "");
              w.WriteEndElement();
            }));
}

TEST(FastInfosetWriter, ADocumentWithoutAnElementIsHeadAndEnd) {
  EXPECT_EQ(Digits("E0000001 00 F0"), Written([](CFastInfosetWriter&) {}));
}

TEST(FastInfosetWriter, TheDeclarationStandsInFrontOfTheIdentification) {
  const struct {
    FInfoDecl declaration;
    int number;
    const char* text;
  } cases[] = {
      {FInfoDecl_None, 0, ""},
      {FInfoDecl_Encoding, 1, "<?xml encoding='finf'?>"},
      {FInfoDecl_EncodingStandaloneYes, 2, "<?xml encoding='finf' standalone='yes'?>"},
      {FInfoDecl_EncodingStandaloneNo, 3, "<?xml encoding='finf' standalone='no'?>"},
      {FInfoDecl_V10, 4, "<?xml version='1.0' encoding='finf'?>"},
      {FInfoDecl_V10StandaloneYes, 5, "<?xml version='1.0' encoding='finf' standalone='yes'?>"},
      {FInfoDecl_V10StandaloneNo, 6, "<?xml version='1.0' encoding='finf' standalone='no'?>"},
      {FInfoDecl_V11, 7, "<?xml version='1.1' encoding='finf'?>"},
      {FInfoDecl_V11StandaloneYes, 8, "<?xml version='1.1' encoding='finf' standalone='yes'?>"},
      {FInfoDecl_V11StandaloneNo, 9, "<?xml version='1.1' encoding='finf' standalone='no'?>"},
  };
  CFastInfosetContext context;
  const auto write = [](CFastInfosetWriter& w) { WriteRoot(w, "", ItemType_string); };
  for (const auto& c : cases) {
    EXPECT_EQ(c.number, static_cast<int>(c.declaration));
    EXPECT_EQ(HexOf(c.text) + Digits("E0000001 00 38F0 3C0061 FF"),
              Written(context, write, c.declaration));
  }
  for (const int i : {-1, 10}) {
    EXPECT_QZ_ASSERT("declaration >= 0 && declaration <= 9",
                     Written(context, write, static_cast<FInfoDecl>(i)));
#if !defined(QZXML_ASSERTIONS)
    EXPECT_EQ(Digits("E0000001 00 38F0 3C0061 FF"),
              Written(context, write, static_cast<FInfoDecl>(i)));
#endif
  }
}

TEST(FastInfosetWriter, AGeneratedVocabularyIsNamedInTheHeadAndUsed) {
  CFastInfosetContext context;
  context.SetUseGeneratedVocabulary(true);
  CFIVocabulary& vocabulary = *context.GetVocabulary();
  vocabulary.AddElement("", "", "z");
  vocabulary.AddElement("", "", "a");
  vocabulary.AddAttribute("", "", "k");
  vocabulary.AddAttributeValue("value longer than any limit");
  vocabulary.AddAttributeValue("v");
  vocabulary.AddElementValue("text");
  const auto write = [](CFastInfosetWriter& w) {
    w.WriteStartElement("a", "");
    w.WriteAttribute("k", "", "v", ItemType_string);
    w.WriteAttribute("a", "", "w", ItemType_string);
    w.WriteText("text", ItemType_string, false);
    w.WriteEndElement();
  };
  const std::string body = Digits("78F0 01 00 81 78 81 4077 F0 A0 FF");
  // "urn:qzxml:fast-infoset:vocabulary" has 33 octets.
  EXPECT_EQ(Digits("E0000001 20 1000 20") + HexOf("urn:qzxml:fast-infoset:vocabulary") + body,
            Written(context, write));
  context.SetExternalVocabularyURI("urn:\xC3\xA9");
  EXPECT_EQ(Digits("E0000001 20 1000 05 75726E3AC3A9") + body, Written(context, write));
  context.SetExternalVocabularyURI(std::string(65, 'u').c_str());
  EXPECT_EQ(Digits("E0000001 20 1000 4000") + HexOf(std::string(65, 'u')) + body,
            Written(context, write));
  // What the document adds stays in the document.
  EXPECT_EQ(2u, vocabulary.GetLocalNamesTable().m_table.size() - 1);
  EXPECT_EQ(2u, vocabulary.GetAttributeValuesTable().m_table.size());
  EXPECT_EQ(1u, vocabulary.GetAttributeNamesTable().m_table.size());
}

TEST(FastInfosetWriter, WithoutTheFlagTheVocabularyOfTheOptionsIsNotUsed) {
  CFastInfosetContext context;
  context.GetVocabulary()->AddElement("", "", "a");
  context.SetExternalVocabularyURI("urn:v");
  EXPECT_EQ("", Chunk(context, ""));
}

TEST(FastInfosetWriter, CommentsInstructionsAndSchemasNeverReachTheDocument) {
  EXPECT_EQ(Digits("E0000001 00 38F0 3C0061 9074 FF"), Written([](CFastInfosetWriter& w) {
              w.WriteComment("c");
              w.WriteProcessingInstruction("<?p d?>");
              w.WriteStartElement("a", "");
              w.WriteComment("c");
              w.WriteInlineSchema("<s/>");
              w.WriteProcessingInstruction("<?p d?>");
              w.WriteText("t", ItemType_string, false);
              w.WriteComment("c");
              w.WriteEndElement();
            }));
}

TEST(FastInfosetWriter, CommentsAndSchemasKeepAStartTagOpenForAttributes) {
  EXPECT_EQ(Digits("E0000001 00 78F0 3C0061 78006B 4076 F0 FF"), Written([](CFastInfosetWriter& w) {
              w.WriteStartElement("a", "");
              w.WriteComment("c");
              w.WriteInlineSchema("<s/>");
              w.WriteAttribute("k", "", "v", ItemType_string);
              w.WriteEndElement();
            }));
}

TEST(FastInfosetWriter, AnElementLeftOpenFailsAtTheEnd) {
  CFastInfosetContext context;
  for (const bool withText : {false, true}) {
    CBinaryStream stream;
    CFastInfosetWriter writer(&context, &stream);
    writer.WriteStartElement("a", "");
    if (withText) writer.WriteText("t", ItemType_string, false);
    EXPECT_QZ_THROW(CQzException, "An Element has not been closed.", writer.EndDocument());
    // What was written is in the stream.
    EXPECT_EQ(Digits(withText ? "38F0 3C0061 9074" : "38F0 3C0061"),
              stream.GetData().GetAsHexString());
  }
}

TEST(FastInfosetWriter, AnAbandonedWriterFreesItsElements) {
  CFastInfosetContext context;
  CBinaryStream stream;
  CFastInfosetWriter writer(&context, &stream);
  writer.WriteStartElement("a", "");
  writer.WriteStartElement("b", "urn:b");
  writer.WriteStartElement("c", "");
  EXPECT_EQ(0u, stream.GetData().GetLength());
}

TEST(FastInfosetWriter, CallsWithoutAnElementAssert) {
  CFastInfosetContext context;
  CBinaryStream stream;
  CFastInfosetWriter writer(&context, &stream);
  EXPECT_QZ_ASSERT("m_pContext != 0", writer.WriteText("t", ItemType_string, false));
  EXPECT_QZ_ASSERT("m_pContext != 0", writer.WriteEndElement());
  EXPECT_QZ_ASSERT("m_pContext != 0", writer.WriteAttribute("k", "", "v", ItemType_string));
  EXPECT_QZ_ASSERT("m_pContext != 0", writer.WriteXsiType("", "T", ItemType_string));
  EXPECT_QZ_ASSERT("m_pContext != 0", writer.WriteXsiNil());
#if !defined(QZXML_ASSERTIONS)
  constexpr char kBehind[] = "Attributes must be added before elements";
  writer.WriteText("t", ItemType_string, false);
  writer.WriteEndElement();
  EXPECT_QZ_THROW(CQzException, kBehind, writer.WriteAttribute("k", "", "v", ItemType_string));
  EXPECT_QZ_THROW(CQzException, kBehind, writer.WriteXsiType("", "T", ItemType_string));
  EXPECT_QZ_THROW(CQzException, kBehind, writer.WriteXsiNil());
  writer.WriteDocumentEnd();
  EXPECT_EQ("F0", stream.GetData().GetAsHexString());
#endif
}

// ---- Ends ----

// "(" begins the next of a, b, c, ...; ")" ends one; any other letter is a text.
std::string Shape(const std::string& shape) {
  return Written([&](CFastInfosetWriter& w) {
    char name = 'a';
    for (const char c : shape) {
      if (c == '(') {
        w.WriteStartElement(std::string(1, name++), "");
      } else if (c == ')') {
        w.WriteEndElement();
      } else {
        w.WriteText(std::string(1, c), ItemType_string, false);
      }
    }
  });
}

TEST(FastInfosetWriter, TwoEndsShareAnOctet) {
  const struct {
    const char* shape;
    const char* octets;
  } cases[] = {
      {"()", "3C0061 FF"},
      {"(())", "3C0061 3C0062 FF F0"},
      {"((()))", "3C0061 3C0062 3C0063 FF FF"},
      {"(()())", "3C0061 3C0062 F0 3C0063 FF F0"},
      {"((())())", "3C0061 3C0062 3C0063 FF 3C0064 FF F0"},
      {"(t)", "3C0061 9074 FF"},
      // The end that waits goes behind a text.
      {"(()t)", "3C0061 3C0062 9074 FF F0"},
      {"((())t)", "3C0061 3C0062 3C0063 FF 9074 FF"},
      {"(()t()u)", "3C0061 3C0062 9074 F0 3C0063 9075 FF F0"},
      {"(x(y)z())", "3C0061 9078 3C0062 9079 907A F0 3C0063 FF F0"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Digits(std::string(kHead) + "38F0" + c.octets), Shape(c.shape)) << c.shape;
  }
}

TEST(FastInfosetWriter, TheAttributesEndInFrontOfContentAndEnd) {
  const auto write = [](const std::string& text, bool child) {
    return Written([&](CFastInfosetWriter& w) {
      w.WriteStartElement("a", "");
      w.WriteAttribute("k", "", "v", ItemType_string);
      w.WriteText(text, ItemType_string, false);
      if (child) {
        w.WriteStartElement("b", "");
        w.WriteAttribute("k", "", "v", ItemType_string);
        w.WriteEndElement();
      }
      w.WriteEndElement();
    });
  };
  const std::string head = Digits(std::string(kElementWithAttributes) + "78006B 4076 F0");
  EXPECT_EQ(head + "FF", write("", false));
  EXPECT_EQ(head + Digits("9074 FF"), write("t", false));
  EXPECT_EQ(head + Digits("7C0062 00 80 F0 FF F0"), write("", true));
  EXPECT_EQ(head + Digits("9074 7C0062 00 80 F0 FF F0"), write("t", true));
}

// ---- Attribute values ----

TEST(FastInfosetWriter, AnEmptyAttributeValueIsOneOctetAndNeverInATable) {
  EXPECT_EQ(Digits(std::string(kElementWithAttributes) + "78006B FF 78006C FF 78006D 4076 F0 FF"),
            Written([](CFastInfosetWriter& w) {
              w.WriteStartElement("a", "");
              w.WriteAttribute("k", "", "", ItemType_string);
              w.WriteAttribute("l", "", "", ItemType_i4);
              w.WriteAttribute("m", "", "v", ItemType_string);
              w.WriteEndElement();
            }));
}

TEST(FastInfosetWriter, AValueBelowTheLimitIsAddedAndFoundAgain) {
  EXPECT_EQ(Digits(std::string(kElementWithAttributes) +
                   "78006B 443132333435 78006C 80 78006D 05313233343536 78006E 05313233343536"
                   "F0 FF"),
            Written([](CFastInfosetWriter& w) {
              w.WriteStartElement("a", "");
              w.WriteAttribute("k", "", "12345", ItemType_string);
              w.WriteAttribute("l", "", "12345", ItemType_string);
              w.WriteAttribute("m", "", "123456", ItemType_string);
              w.WriteAttribute("n", "", "123456", ItemType_string);
              w.WriteEndElement();
            }));
}

TEST(FastInfosetWriter, WithALimitOfZeroNoValueIsAddedOrLookedFor) {
  CFastInfosetContext context;
  context.SetAttributeMaxAddLength(0);
  context.SetElementMaxAddLength(0);
  context.SetUseGeneratedVocabulary(true);
  context.SetExternalVocabularyURI("u");
  context.GetVocabulary()->AddAttributeValue("v");
  context.GetVocabulary()->AddElementValue("t");
  EXPECT_EQ(Digits("E0000001 20 1000 0075 78F0 3C0061 78006B 0076 F0 8074 FF"),
            Written(context, [](CFastInfosetWriter& w) {
              w.WriteStartElement("a", "");
              w.WriteAttribute("k", "", "v", ItemType_string);
              w.WriteText("t", ItemType_string, false);
              w.WriteEndElement();
            }));
}

TEST(FastInfosetWriter, ALengthIsMeasuredInBytesAheadOfTheEncoding) {
  CFastInfosetContext context;
  EXPECT_EQ(Digits("44 C3A9C3A978"), Value(context, "\xC3\xA9\xC3\xA9x"));
  EXPECT_EQ(Digits("05 C3A9C3A9C3A9"), Value(context, "\xC3\xA9\xC3\xA9\xC3\xA9"));
  context.SetEncoding(ItemType_i2, Encoding(2, 3));
  EXPECT_EQ(Digits("70 21 3039"), Value(context, "12345", ItemType_i2));
  EXPECT_EQ(Digits("30 21 3039"), Value(context, "012345", ItemType_i2));
}

TEST(FastInfosetWriter, ALiteralValueHasTheLengthFormsOfTheFifthBit) {
  const struct {
    std::size_t size;
    const char* length;
  } cases[] = {{6, "05"},     {8, "07"},           {9, "0800"},
               {264, "08FF"}, {265, "0C00000000"}, {5000, "0C0000127F"}};
  CFastInfosetContext context;
  for (const auto& c : cases) {
    const std::string text(c.size, 'x');
    EXPECT_EQ(c.length + HexOf(text), Value(context, text)) << c.size;
  }
  context.SetAttributeMaxAddLength(0xFFFFFFFF);
  EXPECT_EQ("47" + HexOf("12345678"), Value(context, "12345678"));
  EXPECT_EQ("4800" + HexOf("123456789"), Value(context, "123456789"));
  const std::string text(265, 'x');
  EXPECT_EQ("4C00000000" + HexOf(text), Value(context, text));
}

// ---- Texts ----

TEST(FastInfosetWriter, ATextBelowTheLimitIsAddedAndFoundAgain) {
  EXPECT_EQ(Digits(std::string(kElement) + "92023132333435 A0 9171 72" +  // "qr"
                   "A1 8203313233343536 8203313233343536 FF"),
            Written([](CFastInfosetWriter& w) {
              w.WriteStartElement("a", "");
              w.WriteText("12345", ItemType_string, false);
              w.WriteText("12345", ItemType_i4, true);
              w.WriteText("qr", ItemType_string, true);
              w.WriteText("qr", ItemType_string, false);
              w.WriteText("", ItemType_string, false);
              w.WriteText("123456", ItemType_string, false);
              w.WriteText("123456", ItemType_string, false);
              w.WriteEndElement();
            }));
}

TEST(FastInfosetWriter, ALiteralTextHasTheLengthFormsOfTheSeventhBit) {
  const struct {
    std::size_t size;
    const char* length;
  } cases[] = {{1, "80"},     {2, "81"},           {3, "8200"},
               {258, "82FF"}, {259, "8300000000"}, {5000, "8300001285"}};
  CFastInfosetContext context;
  context.SetElementMaxAddLength(1);
  for (const auto& c : cases) {
    const std::string text(c.size, 'x');
    EXPECT_EQ(c.length + HexOf(text), Chunk(context, text)) << c.size;
  }
  context.SetElementMaxAddLength(1000);
  EXPECT_EQ("90" + HexOf("x"), Chunk(context, "x"));
  EXPECT_EQ("91" + HexOf("xx"), Chunk(context, "xx"));
  EXPECT_EQ("9200" + HexOf("xxx"), Chunk(context, "xxx"));
}

TEST(FastInfosetWriter, AttributeValuesAndTextsHaveTablesOfTheirOwn) {
  EXPECT_EQ(Digits(std::string(kElementWithAttributes) + "78006B 4076 F0 9076 A0 FF"),
            Written([](CFastInfosetWriter& w) {
              w.WriteStartElement("a", "");
              w.WriteAttribute("k", "", "v", ItemType_string);
              w.WriteText("v", ItemType_string, false);
              w.WriteText("v", ItemType_string, false);
              w.WriteEndElement();
            }));
}

TEST(FastInfosetWriter, ATextEndsAtItsFirstZeroByte) {
  CFastInfosetContext context;
  EXPECT_EQ(Digits("91 6162"), Chunk(context, std::string("ab\0c", 4)));
  EXPECT_EQ(Digits("41 6162"), Value(context, std::string("ab\0c", 4)));
  EXPECT_EQ("", Chunk(context, std::string("\0c", 2)));
  EXPECT_EQ("FF", Value(context, std::string("\0c", 2)));
}

TEST(FastInfosetWriter, LocalTextBecomesUtf8) {
  SetLocalCharEncoding(1252);
  CFastInfosetContext context;
  const std::string chunk = Chunk(context, "\xE9");
  const std::string value = Value(context, "\xE9");
  const std::string names =
      Written([](CFastInfosetWriter& w) { w.WriteStartElement("\xE9", ""), w.WriteEndElement(); });
  SetLocalCharEncoding(3);
  EXPECT_EQ(Digits("91 C3A9"), chunk);
  EXPECT_EQ(Digits("41 C3A9"), value);
  EXPECT_EQ(Digits("E0000001 00 38F0 3C 01C3A9 FF"), names);
}

// ---- Alphabets and algorithms ----

TEST(FastInfosetWriter, RestrictedAlphabetsAreWrittenByHalfOctets) {
  CFastInfosetContext context;
  context.SetEncoding(ItemType_decimal, Encoding(1, 1));
  context.SetEncoding(ItemType_date, Encoding(1, 2));
  EXPECT_EQ(Digits("98 01 A1C5"), Chunk(context, "-1.5", ItemType_decimal));
  EXPECT_EQ(Digits("98 01 1C5F"), Chunk(context, "1.5", ItemType_decimal));
  EXPECT_EQ(Digits("98 05 12B3"), Chunk(context, "12:3", ItemType_date));
  EXPECT_EQ(Digits("88 06 02 2004A02A29"), Chunk(context, "2004-02-29", ItemType_date));
  EXPECT_EQ(Digits("60 01 A1C5"), Value(context, "-1.5", ItemType_decimal));
  EXPECT_EQ(Digits("20 14 2004A02A29"), Value(context, "2004-02-29", ItemType_date));
}

TEST(FastInfosetWriter, TheTenAlgorithmsAreWritten) {
  const struct {
    std::uint32_t number;
    const char* text;
    const char* chunk;
    const char* value;
  } cases[] = {
      {1, "00FF", "9C 01 00FF", "70 01 00FF"},
      {2, "AP8=", "9C 05 00FF", "70 11 00FF"},
      {3, "-2", "9C 09 FFFE", "70 21 FFFE"},
      {4, "7", "9C 0E 01 00000007", "70 33 00000007"},
      {5, "7", "9C 12 05 0000000000000007", "70 47 0000000000000007"},
      {6, "true", "9C 14 38", "70 50 38"},
      {7, "0.5", "9C 1A 01 3F000000", "70 63 3F000000"},
      {8, "0.5", "9C 1E 05 3FE0000000000000", "70 77 3FE0000000000000"},
      {9, "000102030405060708090A0B0C0D0E0F", "8C 22 0D 000102030405060708090A0B0C0D0E0F",
       "30 88 07 000102030405060708090A0B0C0D0E0F"},
      {10, "<&>", "9C 26 00 3C263E", "70 92 3C263E"},
  };
  CFastInfosetContext context;
  for (const auto& c : cases) {
    context.SetEncoding(ItemType_string, Encoding(2, c.number));
    EXPECT_EQ(Digits(c.chunk), Chunk(context, c.text)) << c.number;
    EXPECT_EQ(Digits(c.value), Value(context, c.text)) << c.number;
  }
}

TEST(FastInfosetWriter, ATextThatIsNoBase64IsTheEmptyValue) {
  CFastInfosetContext context;
  context.SetEncoding(ItemType_base64Binary, Encoding(2, 2));
  EXPECT_QZ_ASSERT("m_dwLen > 0", Chunk(context, "!!!!", ItemType_base64Binary));
  EXPECT_QZ_ASSERT("m_dwLen > 0", Value(context, "!!!!", ItemType_base64Binary));
#if !defined(QZXML_ASSERTIONS)
  EXPECT_EQ("", Chunk(context, "!!!!", ItemType_base64Binary));
  EXPECT_EQ("FF", Value(context, "!!!!", ItemType_base64Binary));
#endif
}

TEST(FastInfosetWriter, ATableDoesNotAskForTheEncoding) {
  CFastInfosetContext context;
  context.SetSuggestedValues();
  EXPECT_EQ(Digits(std::string(kElement) + "9C 0E 01 00000007 A0 A0 FF"),
            Written(context, [](CFastInfosetWriter& w) {
              w.WriteStartElement("a", "");
              w.WriteText("7", ItemType_i4, false);
              w.WriteText("7", ItemType_string, false);
              w.WriteText("7", ItemType_r8, false);
              w.WriteEndElement();
            }));
}

// ---- Failures ----

TEST(FastInfosetWriter, EncodingsThatDoNotExistAreRefused) {
  const struct {
    Encoding encoding;
    const char* value;
    const char* chunk;
  } cases[] = {
      {Encoding(1, 0), "Failed to write FastInfoset. Invalid Restricted Alphabet value [0]",
       nullptr},
      {Encoding(1, 3), "Failed to write FastInfoset. Invalid Restricted Alphabet value [3]",
       nullptr},
      {Encoding(1, 0xFFFFFFFF),
       "Failed to write FastInfoset. Invalid Restricted Alphabet value [-1]", nullptr},
      {Encoding(2, 0), "Failed to write FastInfoset. Invalid Encoding Algorithm value [0]",
       nullptr},
      {Encoding(2, 11), "Failed to write FastInfoset. Invalid Encoding Algorithm value [11]",
       nullptr},
      {Encoding(3, 1),
       "Failed to write FastInfoset. Unknown encoding in EncodedCharacterStringBit5.",
       "Failed to write FastInfoset. Unknown encoding in EncodedCharacterStringBit7."},
  };
  for (const auto& c : cases) {
    CFastInfosetContext context;
    context.SetEncoding(ItemType_string, c.encoding);
    EXPECT_QZ_THROW(CQzException, c.value, Value(context, "1"));
    EXPECT_QZ_THROW(CQzException, c.chunk != nullptr ? c.chunk : c.value, Chunk(context, "1"));
  }
}

TEST(FastInfosetWriter, ValuesThatTheirEncodingDoesNotTakeAreRefused) {
  CFastInfosetContext context;
  context.SetSuggestedValues();
  constexpr char kCharacter[] =
      "Failed to write FastInfoset. Invalid character not found for Restricted Alphabet.";
  EXPECT_QZ_THROW(CQzException, kCharacter, Chunk(context, "1E5", ItemType_decimal));
  EXPECT_QZ_THROW(CQzException, kCharacter, Value(context, "2004-02-29+", ItemType_date));
  EXPECT_QZ_THROW(CQzInvalidValueException,
                  "The value [18446744073709551615] is to large to fit in a i8",
                  Chunk(context, "18446744073709551615", ItemType_ui8));
  EXPECT_EQ(Digits("8C 12 05 7FFFFFFFFFFFFFFF"),
            Chunk(context, "9223372036854775807", ItemType_ui8));
}

TEST(FastInfosetWriter, AttributesComeInFrontOfContent) {
  constexpr char kBehind[] = "Attributes must be added before elements";
  const std::vector<qztest::Calls> contents = {
      [](CFastInfosetWriter& w) { w.WriteText("t", ItemType_string, false); },
      [](CFastInfosetWriter& w) { w.WriteText("", ItemType_string, false); },
      [](CFastInfosetWriter& w) { w.WriteStartElement("b", ""), w.WriteEndElement(); },
      // Its head is written, and says that there are none.
      [](CFastInfosetWriter& w) { w.WriteProcessingInstruction("<?p d?>"); },
  };
  for (const qztest::Calls& content : contents) {
    Written([&](CFastInfosetWriter& w) {
      w.WriteStartElement("a", "");
      content(w);
      EXPECT_QZ_THROW(CQzException, kBehind, w.WriteAttribute("k", "", "v", ItemType_string));
      EXPECT_QZ_THROW(CQzException, kBehind, w.WriteXsiType("urn:x", "T", ItemType_string));
      EXPECT_QZ_THROW(CQzException, kBehind, w.WriteXsiNil());
      w.WriteEndElement();
    });
  }
}

// ---- The debug channel ----

std::string g_trace;

TEST(FastInfosetWriter, EachEventIsALineOfTheDebugChannel) {
  g_trace.clear();
  SetDebugChannel([](const char* text) { g_trace += text; });
  Written([](CFastInfosetWriter& w) {
    w.AddNamespaceMapping("p", "urn:p");
    w.WriteStartElement("a", "urn:p");
    w.WriteAttribute("k", "", "v", ItemType_string);
    w.WriteAttribute("l", "urn:p", "w", ItemType_string);
    w.WriteXsiType("urn:p", "T", ItemType_string);
    w.WriteStartElement("b", "");
    w.WriteText("t", ItemType_string, false);
    w.WriteEndElement();
    w.WriteText(std::string(40000, 'x'), ItemType_string, false);
    w.WriteEndElement();
  });
  SetDebugChannel(nullptr);
  EXPECT_EQ(
      "Root Elm: urn:p::a\nAdd Att: ::k\nAtt Val: v\nAdd Att: p urn:p::l\nAtt Val: w\n"
      "Add Att: p http://www.w3.org/2001/XMLSchema-instance::type\nAtt Val: p:T\n"
      "New Elm: ::b\nElm Val: t\nEnd Elm: ::b\nElm Val: " +
          std::string(32767 - 9, 'x') + "End Elm: urn:p::a\n",
      g_trace);
}

}  // namespace
}  // namespace QzXmlLib16
