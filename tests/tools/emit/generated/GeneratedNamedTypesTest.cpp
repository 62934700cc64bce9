#include "qzxml/QzXml.h"
#include "strict/strict.h"
#include "tests/support/QzTest.h"

// What an xsi:type may name in an element of simple type of strict.xsd, and what its text has to be
// then. Whether a type stands for another is worked out by hand from XML Schema 1.0 part 1, section
// 3.14.6, Type Derivation OK (Simple), and section 3.3.4, Element Locally Valid (Element), 4 and 5.
// A union that is a member of a union stands for it, as its own members do.

using namespace QzXmlLib16;
using namespace strict;

namespace {

constexpr char kHead[] =
    "<named xmlns='urn:example:strict' xmlns:s='urn:example:strict'"
    " xmlns:xs='http://www.w3.org/2001/XMLSchema'"
    " xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'>";

// The document with one element in it, which has the name, the xsi:type and the text.
std::string Document(const std::string& name, const std::string& type, const std::string& text,
                     const std::string& attributes = "") {
  return kHead + ("<" + name + " xsi:type='" + type + "'" + attributes + ">") + text + "</" + name +
         "></named>";
}

std::string Innermost(const CQzException& failure) {
  const CQzException* inner = &failure;
  while (inner->GetInnerException() != nullptr) inner = inner->GetInnerException();
  const std::string message = inner->GetMessage();
  return message.substr(0, message.find("\nPath: "));
}

// "" for a document that is taken, else the innermost failure without its path.
std::string Refusal(const std::string& document) {
  try {
    NewNamed()->FromXml(document.c_str());
    return "";
  } catch (const CQzException& e) {
    return Innermost(e);
  }
}

const char* const kTaken = "";
const char* const kNoType = "-";  // "The type [...] that xsi:type names cannot stand ..."

struct Case {
  const char* element;
  const char* type;
  const char* text;
  const char* verdict;
};

std::string VerdictOf(const Case& c) {
  if (c.verdict != kNoType) return c.verdict;
  const std::string type = c.type;
  return "The type [" + type.substr(type.find(':') + 1) +
         "] that xsi:type names cannot stand in the element [" + c.element + "].";
}

template <std::size_t count>
void Expect(const Case (&cases)[count]) {
  for (const Case& c : cases) {
    EXPECT_EQ(VerdictOf(c), Refusal(Document(c.element, c.type, c.text)))
        << c.element << " " << c.type << " " << c.text;
  }
}

}  // namespace

TEST(GeneratedNamedTypes, ARestrictionStandsForItsBaseAndHoldsTheValue) {
  const Case cases[] = {
      {"level", "s:Level", "100", kTaken},
      {"level", "s:Level", "500", "Invalid Value for level [500]"},
      {"level", "s:LowLevel", "10", kTaken},
      {"level", "s:LowLevel", " 7 ", kTaken},
      {"level", "s:LowLevel", "50", "Invalid Value for level [50]."},
      {"level", "s:LowLevel", "1.0", "Invalid Value for level [1.0]."},
      {"level", "Level", "50", kTaken},
      {"level", "LowLevel", "50", "Invalid Value for level [50]."},
      {"level", " s:LowLevel\n", "5", kTaken},
      {"level", "xs:int", "50", kNoType},
      {"level", "xs:byte", "5", kNoType},
      {"level", "xs:Level", "5", kNoType},
      {"level", "s:Nothing", "5", kNoType},
      {"level", "s:Word", "5", kNoType},
      {"level", "s:Either", "5", kNoType},
      {"level", "s:Levels", "5", kNoType},
      {"level", "s:Base", "5", kNoType},
      {"unit", "s:Unit", "m", kTaken},
      {"unit", "s:Mass", "kg", kTaken},
      {"unit", "s:Mass", "m", "Invalid Value for unit [m]."},
      {"unit", "s:SameUnit", "m", kTaken},
      {"unit", "s:Few", "kg", kNoType},
      {"same", "s:SameUnit", "m", kTaken},
      {"same", "s:Unit", "m", kNoType},
      {"same", "s:Mass", "kg", kNoType},
      {"list", "s:Levels", "1 2 3", kTaken},
      {"list", "s:TwoLevels", "1 2", kTaken},
      {"list", "s:TwoLevels", "1 2 3", "Invalid Value for list [1 2 3]."},
      {"list", "s:Level", "1", kNoType},
  };
  Expect(cases);
}

TEST(GeneratedNamedTypes, TypesOfTheSchemaStandForBuiltInOnes) {
  const Case cases[] = {
      {"word", "s:Word", "abcde", kTaken},
      {"word", "s:Word", "abcdef", "Invalid Value for word [abcdef]."},
      {"word", "s:Unit", "kg", kTaken},
      {"word", "s:Mass", "m", "Invalid Value for word [m]."},
      {"word", "s:Level", "5", kNoType},
      {"word", "s:Either", "kg", kNoType},
      {"word", "xs:token", "a", kTaken},
      {"word", "xs:NCName", "a b", "Invalid Value for word [a b]."},
      {"word", "xs:int", "5", kNoType},
      {"free", "xs:anySimpleType", " x ", kTaken},
      {"free", "s:Level", "100", kTaken},
      {"free", "s:Level", "500", "Invalid Value for free [500]."},
      {"free", "s:Either", "2004-02-29", kTaken},
      {"free", "s:Either", "x", "Invalid Value for free [x]."},
      {"free", "s:TwoLevels", "1 2", kTaken},
      {"free", "s:TwoLevels", "1 x", "Invalid Value for free [1 x]."},
      {"free", "s:Mass", "kg", kTaken},
      {"free", "s:Base", "kg", kNoType},
      // Types whose kinds take more texts than XML Schema has for them.
      {"free", "xs:boolean", "true", kTaken},
      {"free", "xs:boolean", "TRUE", "Invalid Value for free [TRUE]."},
      {"free", "xs:int", "", "Invalid Value for free []."},
      {"free", "xs:decimal", "1e3", "Invalid Value for free [1e3]."},
  };
  Expect(cases);
}

TEST(GeneratedNamedTypes, AMemberStandsForItsUnionAndBothHoldTheValue) {
  const Case cases[] = {
      {"either", "s:Either", "kg", kTaken},
      {"either", "s:Level", "5", kTaken},
      {"either", "s:Level", "kg", "Invalid Value for either [kg]."},
      {"either", "s:LowLevel", "50", "Invalid Value for either [50]."},
      {"either", "s:Unit", "m", kTaken},
      {"either", "s:Mass", "m", "Invalid Value for either [m]."},
      {"either", "xs:date", "2004-02-29", kTaken},
      {"either", "xs:date", "5", "Invalid Value for either [5]."},
      {"either", "xs:int", "5", kNoType},
      {"either", "xs:string", "kg", kNoType},
      {"either", "s:Few", "kg", kTaken},
      {"either", "s:Few", "m", "Invalid Value for either [m]."},
      {"either", "s:Word", "kg", kNoType},
      {"few", "s:Few", "5", kTaken},
      {"few", "s:Level", "5", kTaken},
      {"few", "s:Level", "6", "Invalid Value for few [6]."},
      {"few", "s:Either", "5", kNoType},
      {"nested", "s:Nested", "true", kTaken},
      {"nested", "xs:boolean", "true", kTaken},
      {"nested", "xs:boolean", "5", "Invalid Value for nested [5]."},
      {"nested", "s:Few", "kg", kTaken},
      {"nested", "s:Mass", "kg", kTaken},
      {"nested", "s:Either", "kg", kNoType},
      // A type without a name has none to be named by; its members have.
      {"local", "s:Level", "5", kNoType},
      {"local", "s:LowLevel", "5", kNoType},
      {"localEither", "s:Level", "5", kTaken},
      {"localEither", "s:LowLevel", "50", "Invalid Value for localEither [50]."},
      {"localEither", "xs:int", "500", kTaken},
      {"localEither", "xs:byte", "500", "Invalid Value for localEither [500]."},
      {"localEither", "xs:long", "5", kNoType},
      {"localEither", "s:Unit", "kg", kNoType},
  };
  Expect(cases);
}

TEST(GeneratedNamedTypes, ABlockedRestrictionLeavesTheTypeItself) {
  const Case cases[] = {
      {"levelOwn", "s:Level", "50", kTaken}, {"levelOwn", "s:LowLevel", "5", kNoType},
      {"wordOwn", "xs:string", "a", kTaken}, {"wordOwn", "xs:token", "a", kNoType},
      {"wordOwn", "s:Word", "a", kNoType},   {"nestedOwn", "s:Nested", "kg", kTaken},
      {"nestedOwn", "s:Few", "kg", kNoType}, {"nestedOwn", "xs:boolean", "true", kNoType},
      {"nilOwn", "s:Level", "50", kTaken},   {"nilOwn", "s:LowLevel", "5", kNoType},
  };
  Expect(cases);
}

TEST(GeneratedNamedTypes, CollectionsNillableElementsAndRootsMindTheTypeToo) {
  const Case cases[] = {
      {"levels", "s:LowLevel", "10", kTaken},
      {"levels", "s:LowLevel", "50", "Invalid Value for levels [50]."},
      {"levels", "s:Word", "5", kNoType},
      {"units", "s:Mass", "kg", kTaken},
      {"units", "s:Mass", "m", "Invalid Value for units [m]."},
      {"units", "s:Level", "kg", kNoType},
      {"nilLevel", "s:LowLevel", "10", kTaken},
      {"nilLevel", "s:LowLevel", "50", "Invalid Value for nilLevel [50]."},
      {"nilLevel", "s:Word", "5", kNoType},
  };
  Expect(cases);
  EXPECT_EQ("", Refusal(Document("nilLevel", "s:LowLevel", "", " xsi:nil='true'")));
  EXPECT_EQ("The type [Word] that xsi:type names cannot stand in the element [nilLevel].",
            Refusal(Document("nilLevel", "s:Word", "", " xsi:nil='true'")));

  const auto read = [](CBoundClass& root, const std::string& name, const char* type,
                       const char* text) -> std::string {
    try {
      root.FromXml(("<" + name + std::string(kHead).substr(6, sizeof kHead - 8) + " xsi:type='" +
                    type + "'>" + text + "</" + name + ">")
                       .c_str());
      return "";
    } catch (const CQzException& e) {
      return Innermost(e);
    }
  };
  const CSmartPtr<CTop> top = NewTop();
  EXPECT_EQ("", read(*top, "top", "s:LowLevel", "5"));
  EXPECT_EQ(5, top->GetValue());
  EXPECT_EQ("", read(*top, "top", "s:Level", "50"));
  EXPECT_EQ("Invalid Value for top [50].", read(*top, "top", "s:LowLevel", "50"));
  EXPECT_EQ("The type [Word] that xsi:type names cannot stand in the element [top].",
            read(*top, "top", "s:Word", "5"));
  const CSmartPtr<CTopOwn> topOwn = NewTopOwn();
  EXPECT_EQ("", read(*topOwn, "topOwn", "s:Level", "50"));
  EXPECT_EQ("The type [LowLevel] that xsi:type names cannot stand in the element [topOwn].",
            read(*topOwn, "topOwn", "s:LowLevel", "5"));
}

TEST(GeneratedNamedTypes, AnEmptyElementHasItsDefaultHeldAgainstTheType) {
  const Case cases[] = {
      {"preset", "s:Level", "", kTaken},
      {"preset", "s:LowLevel", "5", kTaken},
      {"preset", "s:LowLevel", "", "Invalid Value for preset [50]."},
  };
  Expect(cases);
  const CSmartPtr<CNamed> named = NewNamed();
  named->FromXml(Document("preset", "s:Level", "").c_str());
  EXPECT_EQ(50, named->GetPreset());
}

TEST(GeneratedNamedTypes, TheValueIsKeptAndTheTypeIsNot) {
  const CSmartPtr<CNamed> named = NewNamed();
  named->FromXml(Document("level", "s:LowLevel", "5").c_str());
  EXPECT_EQ(5, named->GetLevel());
  EXPECT_EQ("<AA:named xmlns:AA=\"urn:example:strict\"><AA:level>5</AA:level></AA:named>",
            named->ToXml(false, false, EOLType_LF));
}

TEST(GeneratedNamedTypes, FastInfosetAndJsonAreReadAlike) {
  const struct {
    const char* type;
    const char* text;
    const char* verdict;
  } cases[] = {
      {"LowLevel", "5", ""},
      {"LowLevel", "50", "Invalid Value for level [50]."},
      {"Word", "5", "The type [Word] that xsi:type names cannot stand in the element [level]."},
  };
  for (const auto& c : cases) {
    CElement open("named", "urn:example:strict");
    open.FromXml(Document("level", c.type, c.text).c_str());
    const auto refusal = [](auto read) -> std::string {
      const CSmartPtr<CNamed> named = NewNamed();
      try {
        read(*named);
        EXPECT_EQ(5, named->GetLevel());
        return "";
      } catch (const CQzException& e) {
        return Innermost(e);
      }
    };
    EXPECT_EQ(c.verdict,
              refusal([&open](CNamed& named) { named.FromXmlStream(open.ToFastInfosetStream()); }));
    const std::string json =
        std::string(
            "{\"named\": {\"@xmlns\": \"urn:example:strict\", \"@xmlns:xsi\": "
            "\"http://www.w3.org/2001/XMLSchema-instance\", \"level\": {\"@xsi:type\": \"") +
        c.type + "\", \"#text\": \"" + c.text + "\"}}}";
    EXPECT_EQ(c.verdict, refusal([&json](CNamed& named) { named.FromJson(json.c_str()); }));
  }
}
