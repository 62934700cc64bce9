#include <fstream>
#include <iterator>

#include "qzxml/fastinfoset/FastInfosetWriter.h"
#include "qzxml/fastinfoset/FastInfosetWriterNames.h"
#include "qzxml/runtime/Functions.h"
#include "qzxml/xml/XmlNamespaces.h"
#include "tests/fastinfoset/Written.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using qztest::Calls;
using qztest::Digits;
using qztest::HexOf;
using qztest::Written;

constexpr char kHead[] = "E000000100";

void Write(CFastInfosetWriter& w, const std::string& name, const std::string& uri = "") {
  w.WriteStartElement(name, uri);
  w.WriteEndElement();
}

// ---- Names that are known by their id ----

TEST(FastInfosetWriter, ANameWithoutAnIdIsNeverKnown) {
  detail::CFIKnownNames names;
  detail::CFIKnownOctets octets;
  octets.SetElement(1);
  for (const std::uint64_t state :
       {names.Marked(0), names.Marked(2), detail::CFIKnownNames::kNever}) {
    EXPECT_FALSE(names.ElementOf(0).Is(0, state));
    EXPECT_FALSE(names.AttributeOf(0).Is(0, state));
    names.KeepElement(0, state, octets);
    names.KeepAttribute(0, names.Marked(0), octets);
    EXPECT_FALSE(names.ElementOf(0).Is(0, state));
    EXPECT_FALSE(names.AttributeOf(0).Is(0, state));
  }
  names.KeepElement(7, detail::CFIKnownNames::kNever, octets);
  EXPECT_FALSE(names.ElementOf(7).Is(7, detail::CFIKnownNames::kNever));
  names.KeepElement(7, names.Marked(2), octets);
  EXPECT_TRUE(names.ElementOf(7).Is(7, names.Marked(2)));
  EXPECT_FALSE(names.ElementOf(7).Is(7, names.Marked(3)));
  EXPECT_FALSE(names.ElementOf(7).Is(0, names.Marked(2)));
}

// ---- Names in full and by index ----

TEST(FastInfosetWriter, ALiteralNameHasTheLengthFormsOfTheSecondBit) {
  const struct {
    std::size_t size;
    const char* length;
  } cases[] = {{1, "00"},     {64, "3F"},          {65, "4000"},
               {320, "40FF"}, {321, "6000000000"}, {600, "6000000117"}};
  for (const auto& c : cases) {
    const std::string name(c.size, 'n');
    EXPECT_EQ(kHead + Digits("38F0 3C") + c.length + HexOf(name) + "FF",
              Written([&](CFastInfosetWriter& w) { Write(w, name); }))
        << c.size;
  }
}

TEST(FastInfosetWriter, ALengthIsThatOfTheUtf8) {
  EXPECT_EQ(kHead + Digits("38F0 3C 02E282AC FF"),
            Written([](CFastInfosetWriter& w) { Write(w, "\xE2\x82\xAC"); }));
}

// Children n1, n2, ...; then once more the child of this number, whose octets are asked for.
std::string IndexOfElement(std::uint32_t number) {
  const std::string octets = Written([&](CFastInfosetWriter& w) {
    w.WriteStartElement("root", "");
    for (std::uint32_t i = 2; i <= number; ++i) Write(w, FormatString("n%u", i));
    w.WriteText("@@@@@@@", ItemType_string, false);
    w.WriteStartElement(FormatString("n%u", number), "");
    w.WriteEndElement();
    w.WriteEndElement();
  });
  // The end that waited, behind the text.
  const std::string mark = HexOf("@@@@@@@") + (number > 1 ? "F0" : "");
  const std::size_t at = octets.rfind(mark) + mark.size();
  return octets.substr(at, octets.size() - at - 4);  // FF F0 or FF FF
}

TEST(FastInfosetWriter, AnElementNameIsFoundAgainByItsIndex) {
  const struct {
    std::uint32_t number;
    const char* octets;
  } cases[] = {{2, "01"},     {32, "1F"},     {33, "2000"},    {288, "20FF"},
               {289, "2100"}, {2080, "27FF"}, {2081, "280000"}};
  for (const auto& c : cases) EXPECT_EQ(c.octets, IndexOfElement(c.number)) << c.number;
}

TEST(FastInfosetWriter, AnAttributeNameIsFoundAgainByItsIndex) {
  const struct {
    int number;
    const char* octets;
  } cases[] = {{1, "00"},     {64, "3F"},     {65, "4000"},
               {320, "40FF"}, {8256, "5FFF"}, {8257, "600000"}};
  for (const auto& c : cases) {
    const std::string octets = Written([&](CFastInfosetWriter& w) {
      w.WriteStartElement("a", "");
      for (int i = 1; i <= c.number; ++i) {
        w.WriteAttribute(FormatString("n%d", i), "", "", ItemType_string);
      }
      w.WriteAttribute(FormatString("n%d", c.number), "", "@@@@@@@", ItemType_string);
      w.WriteEndElement();
    });
    const std::string tail = c.octets + ("06" + HexOf("@@@@@@@")) + "F0FF";
    EXPECT_EQ(tail, octets.substr(octets.size() - tail.size())) << c.number;
    EXPECT_EQ("FF", octets.substr(octets.size() - tail.size() - 2, 2)) << c.number;
  }
}

TEST(FastInfosetWriter, ValuesAndTextsAreFoundAgainByTheirIndex) {
  const struct {
    int number;
    const char* value;
    const char* text;
  } cases[] = {{1, "80", "A0"},         {16, "8F", "AF"},     {17, "90", "B000"},
               {64, "BF", "B02F"},      {65, "C000", "B030"}, {1040, "C3CF", "B3FF"},
               {1041, "C3D0", "B40000"}};
  for (const auto& c : cases) {
    const std::string octets = Written([&](CFastInfosetWriter& w) {
      w.WriteStartElement("a", "");
      for (int i = 1; i <= c.number; ++i) {
        w.WriteAttribute("k", "", std::to_string(i), ItemType_string);
      }
      w.WriteAttribute("k", "", std::to_string(c.number), ItemType_string);
      for (int i = 1; i <= c.number; ++i) w.WriteText(std::to_string(i), ItemType_string, false);
      w.WriteText(std::to_string(c.number), ItemType_string, false);
      w.WriteEndElement();
    });
    const std::string last = std::string(c.text) + "FF";
    EXPECT_EQ(last, octets.substr(octets.size() - last.size())) << c.number;
    const std::string value = std::string("00") + c.value + "F09031" + (c.number > 1 ? "" : "A0FF");
    EXPECT_NE(std::string::npos, octets.find(value)) << c.number;
  }
}

TEST(FastInfosetWriter, TheSameLocalNameInTwoNamespacesIsTwoNames) {
  EXPECT_EQ(Digits(std::string(kHead) + "38 CF 0070 0475726E3A78 CF 0071 0475726E3A79 F0"
                                        "3F 81 81 0061 3F 82 82 80 F0 3C 80 F0 00 01 FF FF"),
            Written([](CFastInfosetWriter& w) {
              w.AddNamespaceMapping("p", "urn:x");
              w.AddNamespaceMapping("q", "urn:y");
              w.WriteStartElement("a", "urn:x");
              Write(w, "a", "urn:y");
              Write(w, "a", "");
              w.WriteStartElement("a", "urn:x");
              w.WriteStartElement("a", "urn:y");
              w.WriteEndElement();
              w.WriteEndElement();
              w.WriteEndElement();
            }).replace(0, 0, ""));
}

TEST(FastInfosetWriter, ElementsAndAttributesShareTheTablesOfTheirParts) {
  EXPECT_EQ(Digits(std::string(kHead) + "78F0 3C0061 78 80 4061 F0 FF"),
            Written([](CFastInfosetWriter& w) {
              w.WriteStartElement("a", "");
              w.WriteAttribute("a", "", "a", ItemType_string);
              w.WriteEndElement();
            }));
}

// ---- Namespaces of the root ----

TEST(FastInfosetWriter, TheRootDeclaresTheDefaultNamespaceAndThenTheMappingsByTheirUri) {
  EXPECT_EQ(
      Digits(std::string(kHead) + "38 CD 0375726E3A CF 007A 0475726E3A61 CF 0061 0475726E3A7A F0"
                                  "3D 81 0061 FF"),
      Written([](CFastInfosetWriter& w) {
        w.AddNamespaceMapping("a", "urn:z");
        w.AddNamespaceMapping("z", "urn:a");
        w.AddNamespaceMapping("never", std::string(kXmlNamespace) + "/more");
        w.SetDefaultNamespace("urn:");
        Write(w, "a", "urn:");
      }));
}

TEST(FastInfosetWriter, ADefaultNamespaceThatHasAPrefixTooIsNamedOnce) {
  EXPECT_EQ(Digits(std::string(kHead) + "38 CD 0475726E3A78 CF 0070 81 F0 3D 81 0061 FF"),
            Written([](CFastInfosetWriter& w) {
              w.AddNamespaceMapping("p", "urn:x");
              w.SetDefaultNamespace("urn:x");
              Write(w, "a", "urn:x");
            }));
}

TEST(FastInfosetWriter, AMappingOfNoPrefixIsADefaultNamespace) {
  EXPECT_EQ(Digits(std::string(kHead) + "38 CD 0475726E3A78 F0 3D 81 0061 FF"),
            Written([](CFastInfosetWriter& w) {
              w.AddNamespaceMapping("", "urn:x");
              Write(w, "a", "urn:x");
            }));
}

TEST(FastInfosetWriter, AMappingOfNoNamespaceIsItsPrefix) {
  EXPECT_EQ(Digits(std::string(kHead) + "38 CE 0070 F0 3C 0061 FF"),
            Written([](CFastInfosetWriter& w) {
              w.AddNamespaceMapping("p", "");
              Write(w, "a");
            }));
}

TEST(FastInfosetWriter, TheFirstOctetOfTheRootHasTheBitOfAttributesAndTheSecondHasNot) {
  EXPECT_EQ(Digits(std::string(kHead) + "78 CF 0070 0475726E3A78 F0 3F 81 81 0061 78006B 4076 F0"
                                        "7C 0062 00 80 F0 FF F0"),
            Written([](CFastInfosetWriter& w) {
              w.AddNamespaceMapping("p", "urn:x");
              w.WriteStartElement("a", "urn:x");
              w.WriteAttribute("k", "", "v", ItemType_string);
              w.WriteStartElement("b", "");
              w.WriteAttribute("k", "", "v", ItemType_string);
              w.WriteEndElement();
              w.WriteEndElement();
            }));
}

// ---- Unknown namespaces ----

TEST(FastInfosetWriter, AnUnknownNamespaceGetsAnAliasForItsElementAlone) {
  EXPECT_EQ(Digits(std::string(kHead) + "38F0 3C0061"
                                        "3F 014141 0475726E3A78 0062"  // AA, urn:x
                                        "3F 81 81 0063 F0"             // known inside
                                        "3F 014142 0475726E3A79 0064 FF"
                                        "3F 81 82 0065 FF F0"),  // AA anew, urn:y
            Written([](CFastInfosetWriter& w) {
              w.WriteStartElement("a", "");
              w.WriteStartElement("b", "urn:x");
              Write(w, "c", "urn:x");
              Write(w, "d", "urn:y");
              w.WriteEndElement();
              Write(w, "e", "urn:y");
              w.WriteEndElement();
            }));
}

TEST(FastInfosetWriter, AnAttributeInAnUnknownNamespaceGetsAnAlias) {
  EXPECT_EQ(Digits(std::string(kHead) +
                   "38F0 3C0061 7C0062 7B 014141 0475726E3A78 006B 4076 7B 81 81 006C 80 F0"
                   "3F 81 81 0063 FF FF"),
            Written([](CFastInfosetWriter& w) {
              w.WriteStartElement("a", "");
              w.WriteStartElement("b", "");
              w.WriteAttribute("k", "urn:x", "v", ItemType_string);
              w.WriteAttribute("l", "urn:x", "v", ItemType_string);
              Write(w, "c", "urn:x");
              w.WriteEndElement();
              w.WriteEndElement();
            }));
}

TEST(FastInfosetWriter, NamespacesSetInsideAnElementThatHasJustBegunAreItsOwn) {
  EXPECT_EQ(Digits(std::string(kHead) +
                   "38F0 3C0061 3C0062 3F 0070 0475726E3A78 0063 F0 3D 0475726E3A79 0064 FF"
                   "3F 014141 82 0065 FF F0"),
            Written([](CFastInfosetWriter& w) {
              w.WriteStartElement("a", "");
              w.WriteStartElement("b", "");
              w.AddNamespaceMapping("p", "urn:x");
              w.SetDefaultNamespace("urn:y");
              Write(w, "c", "urn:x");
              Write(w, "d", "urn:y");
              w.WriteEndElement();
              Write(w, "e", "urn:y");
              w.WriteEndElement();
            }));
}

// ---- The attributes type and nil ----

TEST(FastInfosetWriter, ATypeAttributeAssertsThatItsAliasIsNotEmpty) {
  Written([](CFastInfosetWriter& w) {
    w.AddNamespaceMapping("", "urn:x");
    w.WriteStartElement("a", "");
    EXPECT_QZ_ASSERT("!m_pContext->GetNamespaceMapValue(strElementNamespace).empty()",
                     w.WriteXsiType("urn:x", "T", ItemType_string));
    w.WriteEndElement();
  });
}

// ---- The documents of the corpus ----

std::string FileOctets(const std::string& name) {
  std::ifstream file(std::string(QZXML_TEST_DIRECTORY) + "/corpora/finf/octets/" + name + ".finf",
                     std::ios::binary);
  EXPECT_TRUE(file) << name;
  return HexOf(std::string(std::istreambuf_iterator<char>(file), {}));
}

void Start(CFastInfosetWriter& w, const char* uri = "") { w.WriteStartElement("a", uri); }

void Attribute(CFastInfosetWriter& w, const char* name, const char* value, const char* uri = "") {
  w.WriteAttribute(name, uri, value, ItemType_string);
}

void Text(CFastInfosetWriter& w, const char* text) { w.WriteText(text, ItemType_string, false); }

void MapXsi(CFastInfosetWriter& w) { w.AddNamespaceMapping("xsi", kXmlSchemaInstanceNamespace); }

const struct {
  const char* name;
  Calls calls;  // but for the end of the root
} kDocuments[] = {
    {"W01-empty-namespace-block", [](CFastInfosetWriter& w) { Start(w); }},
    {"W02-root-undeclared", [](CFastInfosetWriter& w) { Start(w, "urn:x"); }},
    {"W03-child-undeclared",
     [](CFastInfosetWriter& w) {
       w.AddNamespaceMapping("p", "urn:x");
       Start(w, "urn:x");
       Write(w, "b", "urn:y");
     }},
    {"W04-declared",
     [](CFastInfosetWriter& w) {
       w.AddNamespaceMapping("p", "urn:x");
       Start(w, "urn:x");
       Write(w, "b", "urn:x");
     }},
    {"W05-default",
     [](CFastInfosetWriter& w) {
       w.SetDefaultNamespace("urn:x");
       Start(w, "urn:x");
       Write(w, "b", "urn:x");
     }},
    {"W06-none-below-default",
     [](CFastInfosetWriter& w) {
       w.SetDefaultNamespace("urn:x");
       Start(w, "urn:x");
       Write(w, "b");
     }},
    {"W07-attr-in-default-ns",
     [](CFastInfosetWriter& w) {
       w.SetDefaultNamespace("urn:x");
       Start(w, "urn:x");
       Attribute(w, "k", "v", "urn:x");
     }},
    {"W08-nil-undeclared",
     [](CFastInfosetWriter& w) {
       Start(w);
       w.WriteXsiNil();
     }},
    {"W09-nil-declared",
     [](CFastInfosetWriter& w) {
       MapXsi(w);
       Start(w);
       w.WriteXsiNil();
     }},
    {"W10-type-known-alias",
     [](CFastInfosetWriter& w) {
       MapXsi(w);
       w.AddNamespaceMapping("t", "urn:x");
       Start(w);
       w.WriteXsiType("urn:x", "T", ItemType_string);
     }},
    {"W11-type-generated-alias",
     [](CFastInfosetWriter& w) {
       MapXsi(w);
       Start(w);
       w.WriteXsiType("urn:x", "T", ItemType_string);
     }},
    {"W12-type-no-namespace",
     [](CFastInfosetWriter& w) {
       MapXsi(w);
       Start(w);
       w.WriteXsiType("", "T", ItemType_string);
     }},
    {"W13-type-default-namespace",
     [](CFastInfosetWriter& w) {
       w.SetDefaultNamespace("urn:x");
       MapXsi(w);
       Start(w, "urn:x");
       w.WriteXsiType("urn:x", "T", ItemType_string);
     }},
    {"W14-mixed-odd",
     [](CFastInfosetWriter& w) {
       Start(w);
       Write(w, "b");
       Text(w, "t");
     }},
    {"W15-mixed-even",
     [](CFastInfosetWriter& w) {
       Start(w);
       w.WriteStartElement("b", "");
       Write(w, "c");
       w.WriteEndElement();
       Text(w, "t");
     }},
    {"W16-mixed-full",
     [](CFastInfosetWriter& w) {
       Start(w);
       Text(w, "x");
       w.WriteStartElement("b", "");
       Text(w, "y");
       w.WriteEndElement();
       Text(w, "z");
       Write(w, "c");
     }},
    {"W17-attr-empty-element",
     [](CFastInfosetWriter& w) {
       Start(w);
       Attribute(w, "k", "v");
     }},
    {"W18-attr-limit",
     [](CFastInfosetWriter& w) {
       Start(w);
       Attribute(w, "k", "");
       Attribute(w, "l", "12345");
       Attribute(w, "m", "12345");
       Attribute(w, "n", "123456");
       Attribute(w, "o", "123456");
     }},
    {"W19-xml-prefix",
     [](CFastInfosetWriter& w) {
       Start(w);
       Attribute(w, "lang", "en", kXmlNamespace);
     }},
};

TEST(FastInfosetWriter, WritesTheDocumentsOfTheCorpus) {
  for (const auto& document : kDocuments) {
    EXPECT_EQ(FileOctets(document.name), Written([&](CFastInfosetWriter& w) {
                document.calls(w);
                w.WriteEndElement();
              }))
        << document.name;
  }
}

// ---- Names that are known ----

// Each declaration makes a state of its own; behind so many of them, states are not told apart.
TEST(FastInfosetWriter, ANameIsKnownOnlyWhereTheNamespacesAreToldApart) {
  detail::CFIKnownNames names;
  const std::string uri = "urn:a";
  auto& known = names.ElementOf("name");
  const auto keepIn = [&](std::uint64_t state) {
    ASSERT_TRUE(known.SetName("name"));
    known.uri = names.StoreUri(uri);
    known.state = names.Marked(state);
  };
  const auto isKnownIn = [&](std::uint64_t state) {
    return known.Is("name", uri, names.Marked(state));
  };
  keepIn(5);
  EXPECT_TRUE(isKnownIn(5));
  EXPECT_FALSE(isKnownIn(6));
  EXPECT_FALSE(isKnownIn(2000000));
  keepIn(2000000);
  EXPECT_FALSE(isKnownIn(5));
  EXPECT_FALSE(isKnownIn(2000000));
  EXPECT_FALSE(isKnownIn(2000001));
}

}  // namespace
}  // namespace QzXmlLib16
