#include "qzxml/serialization/ElementInfoSeq.h"
#include "qzxml/xml/XmlDocument.h"
#include "qzxml/xml/XmlElement.h"
#include "qzxml/xml/XmlNamespaces.h"
#include "tests/support/MemberTrial.h"
#include "tests/support/QzTest.h"

// Primitives of a sequence: where the mandatory and the optional one look for their element, and
// what both make of its text and its attributes.

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;
using namespace qztest;

namespace {

using Mnd = CElementInfoSeqPrimMnd;
using Opt = CElementInfoSeqPrimOpt;
using Rule = CWhitespaceUtils;

const std::string kMissing =
    "CQzValidationException: Failed to find the required child element [a].\nPath: /r";
const std::string kUnexpected = "CQzValidationException: Unexpected Attribute found.\nPath: /r/a/";
const std::string kInvalidNil =
    "CQzValidationException: Invalid use of 'nil' attribute in non-nillable element.\nPath: /r/a";

std::string UnexpectedNil(const std::string& value) {
  return "CQzValidationException: Unexpected Value [" + value +
         "] for 'nil' Attribute found.\nPath: /r/a/xsi:@nil";
}

using Make = CElementInfo* (*)(const PrimOptions& options);
template <typename Member>
CElementInfo* A(const PrimOptions& options) {
  return Prim<Member>("a", 0, options);
}

// The mandatory and the optional member, which treat a value alike.
struct Occurrence {
  const char* name;
  Make make;
} const kBoth[] = {{"mandatory", &A<Mnd>}, {"optional", &A<Opt>}};

PrimOptions OfType(ItemType type) {
  PrimOptions options;
  options.type = type;
  return options;
}

PrimOptions Nillable(bool nillable) {
  PrimOptions options;
  options.nillable = nillable;
  return options;
}

PrimOptions DefaultTo(const char* text, ItemType type = ItemType_string) {
  PrimOptions options = OfType(type);
  options.defaultValue = text;
  return options;
}

CPrimitiveRestrictions MinInclusive(const char* text) {
  return CPrimitiveRestrictions(nullptr, -1, -1, text, nullptr, nullptr, nullptr, -1, -1, -1);
}

CSerializationContext NoNamespaces() {
  return With([](CSerializationContext& c) { c.SetSchemaType(SchemaType_NoNamespaces); });
}

}  // namespace

// --- Where the element is looked for

TEST(ElementInfoSeqPrimMnd, MustStandAtTheCursorInARealParent) {
  CTrial(A<Mnd>({}), Unset::Value)
      .Expect({{"<a>1</a><b/>", kReal, kNoFlag, "true, at b, 1"},
               {"<a>1</a>", kReal, kNoFlag, "true, at end, 1"},
               {"<a>1</a><a>2</a>", kReal, kNoFlag, "true, at a[2], 1"},
               {"", kReal, kNoFlag, kMissing},
               {"<b/>", kReal, kNoFlag, kMissing},
               {"<b/><a>1</a>", kReal, kNoFlag, kMissing},
               {"<o:a>1</o:a>", kReal, kNoFlag, kMissing},
               {"<A>1</A>", kReal, kNoFlag, kMissing}});
}

TEST(ElementInfoSeqPrimMnd, LeavesTheDecisionToTheWalkInAPseudoParent) {
  CTrial(A<Mnd>({}), Unset::Value)
      .Expect({{"<a>1</a><b/>", kPseudo, kNoFlag, "true, at b, 1"},
               {"<a>1</a><a>2</a>", kPseudo, kNoFlag, "true, at a[2], 1"},
               {"", kPseudo, kNoFlag, "false, at end, (unset)"},
               {"<b/>", kPseudo, kNoFlag, "false, at b, (unset)"},
               {"<b/><a>1</a>", kPseudo, kNoFlag, "false, at b, (unset)"},
               {"<o:a>1</o:a>", kPseudo, kNoFlag, "false, at o:a, (unset)"}});
}

TEST(ElementInfoSeqPrimMnd, EveryTypeOfParentButZeroIsAPseudoParent) {
  CTrial trial(A<Mnd>({}), Unset::Value);
  EXPECT_EQ("false, at b, (unset)", trial.Take("<b/>", static_cast<XmlElementType>(2)));
}

TEST(ElementInfoSeqPrimMnd, PassesUnknownElementsToReachItsOwn) {
  CTrial(A<Mnd>({}), Unset::Value)
      .Expect({{"<b/><c/><a>1</a><d/>", kReal, kUnknownElements, "true, at d, 1"},
               {"<a>1</a><b/>", kReal, kUnknownElements, "true, at b, 1"},
               {"<b/><c/>", kReal, kUnknownElements, kMissing},
               {"", kReal, kUnknownElements, kMissing},
               {"<b/><c/><a>1</a><d/>", kPseudo, kUnknownElements, "true, at d, 1"},
               {"<b/><c/>", kPseudo, kUnknownElements, "false, at end, (unset)"},
               {"", kPseudo, kUnknownElements, "false, at end, (unset)"}});
}

TEST(ElementInfoSeqPrimMnd, MayBeMissingWhereTheContextSaysSoInARealParentAlone) {
  CTrial(A<Mnd>({}), Unset::Value)
      .Expect({{"", kReal, kMissingMandatory, "true, at end, (unset)"},
               {"<b/>", kReal, kMissingMandatory, "true, at b, (unset)"},
               {"<b/><a>1</a>", kReal, kMissingMandatory, "true, at b, (unset)"},
               {"<a>1</a>", kReal, kMissingMandatory, "true, at end, 1"},
               {"<b/>", kPseudo, kMissingMandatory, "false, at b, (unset)"},
               {"", kPseudo, kMissingMandatory, "false, at end, (unset)"}});
}

TEST(ElementInfoSeqPrimMnd, OtherFlagsDoNotMakeItOptional) {
  for (const Flag flag : {kUnknownAttributes, kMissingChoice, kCollectionCounts, kNamespaces}) {
    CTrial(A<Mnd>({}), Unset::Value)
        .Expect({{"<b/>", kReal, flag, kMissing}, {"", kReal, flag, kMissing}});
  }
}

TEST(ElementInfoSeqPrimOpt, MayBeMissingInEitherParent) {
  for (const XmlElementType parent : {kReal, kPseudo}) {
    CTrial(A<Opt>({}), Unset::Value)
        .Expect({{"<a>1</a><b/>", parent, kNoFlag, "true, at b, 1"},
                 {"<a>1</a><a>2</a>", parent, kNoFlag, "true, at a[2], 1"},
                 {"", parent, kNoFlag, "true, at end, (unset)"},
                 {"<b/>", parent, kNoFlag, "true, at b, (unset)"},
                 {"<b/><a>1</a>", parent, kNoFlag, "true, at b, (unset)"},
                 {"<o:a>1</o:a>", parent, kNoFlag, "true, at o:a, (unset)"},
                 {"<b/><a>1</a>", parent, kUnknownElements, "true, at b, (unset)"},
                 {"<b/><a>1</a>", parent, kMissingMandatory, "true, at b, (unset)"}});
  }
}

TEST(ElementInfoSeqPrim, MatchesByNameAndNamespaceUnlessNamespacesAreIgnored) {
  PrimOptions inO;
  inO.uri = "urn:o";
  for (const XmlElementType parent : {kReal, kPseudo}) {
    CTrial(A<Mnd>({}), Unset::Value)
        .Expect({{"<o:a>1</o:a>", parent, kNamespaces, "true, at end, 1"},
                 {"<a xmlns='urn:x'>1</a>", parent, kNamespaces, "true, at end, 1"}});
    CTrial(A<Opt>(inO), Unset::Value)
        .Expect({{"<o:a>1</o:a>", parent, kNoFlag, "true, at end, 1"},
                 {"<a>1</a>", parent, kNoFlag, "true, at a, (unset)"},
                 {"<a>1</a>", parent, kNamespaces, "true, at end, 1"}});
  }
}

TEST(ElementInfoSeqPrim, WithoutNamespacesAPrefixBelongsToTheName) {
  PrimOptions inO;
  inO.uri = "urn:o";
  CTrial trial(A<Opt>(inO), Unset::Value);
  EXPECT_EQ("true, at end, 1", trial.Take("<a>1</a>", kReal, NoNamespaces()));
  EXPECT_EQ("true, at o:a, (unset)", trial.Take("<o:a>1</o:a>", kReal, NoNamespaces()));
}

// --- Its text

TEST(ElementInfoSeqPrim, ReadsTheTextByTypeAndWhitespaceRule) {
  const struct {
    ItemType type;
    Rule::WhitespaceRule rule;
    const char* text;
    const char* outcome;
  } cases[] = {
      {ItemType_string, Rule::WhitespaceRule_None, " x \t y\n", "true, at end,  x \t y\n"},
      {ItemType_string, Rule::WhitespaceRule_Preserve, " x \t y\n", "true, at end,  x \t y\n"},
      {ItemType_string, Rule::WhitespaceRule_Replace, " x \t y\n", "true, at end,  x   y "},
      {ItemType_string, Rule::WhitespaceRule_Collapse, " x \t y\n", "true, at end, x y"},
      {ItemType_i4, Rule::WhitespaceRule_Collapse, " 12 ", "true, at end, 12"},
      {ItemType_i4, Rule::WhitespaceRule_None, " 12", "true, at end, 12"},
      {ItemType_i4, Rule::WhitespaceRule_None, "12 ",
       "CQzInvalidValueException: The value [12 ] can not be converted to a i4"},
      {ItemType_i1, Rule::WhitespaceRule_None, "-128", "true, at end, -128"},
      {ItemType_i2, Rule::WhitespaceRule_None, "-32768", "true, at end, -32768"},
      {ItemType_i8, Rule::WhitespaceRule_None, "-9000000000", "true, at end, -9000000000"},
      {ItemType_ui1, Rule::WhitespaceRule_None, "255", "true, at end, 255"},
      {ItemType_ui1, Rule::WhitespaceRule_None, "256",
       "CQzInvalidValueException: The value [256] is to large to fit in a ui1"},
      {ItemType_ui2, Rule::WhitespaceRule_None, "65535", "true, at end, 65535"},
      {ItemType_ui4, Rule::WhitespaceRule_None, "4294967295", "true, at end, 4294967295"},
      {ItemType_ui8, Rule::WhitespaceRule_None, "18446744073709551615",
       "true, at end, 18446744073709551615"},
      {ItemType_r4, Rule::WhitespaceRule_None, "2.5", "true, at end, 2.5"},
      {ItemType_r8, Rule::WhitespaceRule_None, "-INF", "true, at end, -INF"},
      {ItemType_boolean, Rule::WhitespaceRule_Collapse, " TRUE ", "true, at end, true"},
      {ItemType_char, Rule::WhitespaceRule_None, "x", "true, at end, x"},
      {ItemType_hexBinary, Rule::WhitespaceRule_None, "0fa0", "true, at end, 0FA0"},
      {ItemType_base64Binary, Rule::WhitespaceRule_None, "TWFu", "true, at end, TWFu"},
  };
  for (const Occurrence& member : kBoth) {
    for (const auto& c : cases) {
      PrimOptions options = OfType(c.type);
      options.rule = c.rule;
      CTrial trial(member.make(options), Unset::Value);
      EXPECT_EQ(c.outcome, trial.Take("<a>" + std::string(c.text) + "</a>"))
          << member.name << " " << c.type << " " << c.text;
      EXPECT_EQ(c.outcome, trial.Take("<a>" + std::string(c.text) + "</a>", kPseudo));
    }
  }
}

TEST(ElementInfoSeqPrim, EmptyTextTakesTheDefaultWhereThereIsOne) {
  const struct {
    ItemType type;
    const char* defaultValue;
    Rule::WhitespaceRule rule;
    const char* element;
    const char* outcome;
  } cases[] = {
      {ItemType_string, "d", Rule::WhitespaceRule_None, "<a/>", "true, at end, d"},
      {ItemType_string, "d", Rule::WhitespaceRule_None, "<a></a>", "true, at end, d"},
      {ItemType_string, "d", Rule::WhitespaceRule_None, "<a>1</a>", "true, at end, 1"},
      {ItemType_string, " d ", Rule::WhitespaceRule_Collapse, "<a/>", "true, at end, d"},
      // The text is looked at before the rule: blanks are no empty text.
      {ItemType_string, "d", Rule::WhitespaceRule_Collapse, "<a> </a>", "true, at end, "},
      {ItemType_i4, "7", Rule::WhitespaceRule_None, "<a/>", "true, at end, 7"},
      {ItemType_i4, "x", Rule::WhitespaceRule_None, "<a/>",
       "CQzInvalidValueException: The value [x] can not be converted to a i4"},
      {ItemType_string, "", Rule::WhitespaceRule_None, "<a/>", "true, at end, "},
      {ItemType_string, nullptr, Rule::WhitespaceRule_None, "<a/>", "true, at end, "},
      {ItemType_i4, nullptr, Rule::WhitespaceRule_None, "<a/>",
       "CQzInvalidValueException: The value [] can not be converted to a i4"},
  };
  for (const Occurrence& member : kBoth) {
    for (const auto& c : cases) {
      PrimOptions options = DefaultTo(c.defaultValue, c.type);
      options.rule = c.rule;
      CTrial trial(member.make(options), Unset::Value);
      EXPECT_EQ(c.outcome, trial.Take(c.element)) << member.name << " " << c.element;
    }
  }
}

TEST(ElementInfoSeqPrim, MissingElementDoesNotTakeTheDefault) {
  CTrial(A<Opt>(DefaultTo("d")), Unset::Value)
      .Expect({{"<b/>", kReal, kNoFlag, "true, at b, (unset)"}});
  CTrial(A<Mnd>(DefaultTo("d")), Unset::Value)
      .Expect({{"<b/>", kReal, kNoFlag, kMissing},
               {"<b/>", kReal, kMissingMandatory, "true, at b, (unset)"}});
}

TEST(ElementInfoSeqPrim, FacetsAreNotCheckedOnReading) {
  PrimOptions options = OfType(ItemType_i4);
  options.restrictions = MinInclusive("10");
  for (const Occurrence& member : kBoth) {
    CTrial(member.make(options), Unset::Value)
        .Expect({{"<a>9</a>", kReal, kNoFlag, "true, at end, 9"}});
  }
}

TEST(ElementInfoSeqPrim, ElementsInsideTheElementAreDroppedInSilence) {
  for (const Occurrence& member : kBoth) {
    CTrial(member.make({}), Unset::Value)
        .Expect({{"<a>1<b>2</b>3</a><c/>", kReal, kNoFlag, "true, at c, 13"}});
  }
}

TEST(ElementInfoSeqPrim, PropertyThatRefusesTheValueFailsWithThePathOfTheElement) {
  for (const Occurrence& member : kBoth) {
    CTrial trial(member.make({}), Unset::Value);
    trial.failsToTake = "No room.";
    EXPECT_QZ_THROW_FULL(CQzValidationException,
                         "Failed to set the property value.\nPath: /r/a[1]\nNo room.", "/r/a[1]",
                         trial.TakeOrThrow("<a>1</a><a>2</a>"));
  }
}

// --- Its attributes

TEST(ElementInfoSeqPrim, NilIsReadByTheNillableFlag) {
  const std::string asItWas = "true, at end, (unset)";
  const std::string read = "true, at end, 5";
  const struct {
    const char* nil;
    std::string nillable;
    std::string other;
  } cases[] = {
      {"true", asItWas, kInvalidNil},
      {"1", asItWas, kInvalidNil},
      {"TRUE", asItWas, kInvalidNil},
      {"True", asItWas, kInvalidNil},
      {"false", read, read},
      {"0", read, read},
      {"FALSE", read, read},
      {"False", read, read},
      {"yes", UnexpectedNil("yes"), kInvalidNil},
      {"", UnexpectedNil(""), kInvalidNil},
      {"2", UnexpectedNil("2"), kInvalidNil},
      {" true", UnexpectedNil(" true"), kInvalidNil},
      {"no", UnexpectedNil("no"), kInvalidNil},
  };
  for (const Occurrence& member : kBoth) {
    for (const auto& c : cases) {
      const std::string element = "<a xsi:nil='" + std::string(c.nil) + "'>5</a>";
      for (const XmlElementType parent : {kReal, kPseudo}) {
        EXPECT_EQ(c.nillable,
                  CTrial(member.make(Nillable(true)), Unset::Value).Take(element, parent))
            << member.name << " " << element;
        EXPECT_EQ(c.other, CTrial(member.make(Nillable(false)), Unset::Value).Take(element, parent))
            << member.name << " " << element;
      }
    }
  }
}

TEST(ElementInfoSeqPrim, NilElementsTextIsNotConverted) {
  PrimOptions options = OfType(ItemType_i4);
  options.nillable = true;
  options.defaultValue = "also no number";
  for (const Occurrence& member : kBoth) {
    CTrial(member.make(options), Unset::Value)
        .Expect({{"<a xsi:nil='true'>no number</a><b/>", kReal, kNoFlag, "true, at b, (unset)"},
                 {"<a xsi:nil='true'/><b/>", kReal, kNoFlag, "true, at b, (unset)"}});
  }
}

TEST(ElementInfoSeqPrim, NilDoesNotReachTheProperty) {
  const auto initial = [] {
    QzVariant value;
    value.SetString("initial");
    return value;
  };
  CTables tables;
  tables.Add(A<Mnd>(Nillable(true)), initial);
  CSmartPtr<CTableObject> object(new CTableObject(tables));
  object->Set(0, "before");
  object->FromXml(("<r xmlns:xsi='" + std::string(kXsi) + "'><a xsi:nil='1'/></r>").c_str());
  EXPECT_EQ("<r><a>initial</a></r>", Text(*object));
}

TEST(ElementInfoSeqPrim, AttributesOtherThanNilNeedTheFlag) {
  const struct {
    const char* attribute;
    const char* path;
  } cases[] = {
      {"x='1'", "@x"},
      {"o:x='1'", "o:@x"},
      {"nil='true'", "@nil"},
      {"o:nil='true'", "o:@nil"},
      {"xml:lang='en'", "@lang"},
      {"xsi:type='o:t'", "xsi:@type"},
      {"xsi:schemaLocation='urn:o o.xsd'", "xsi:@schemaLocation"},
      {"xsi:noNamespaceSchemaLocation='o.xsd'", "xsi:@noNamespaceSchemaLocation"},
  };
  for (const Occurrence& member : kBoth) {
    for (const auto& c : cases) {
      const std::string element = "<a " + std::string(c.attribute) + ">1</a>";
      CTrial(member.make(Nillable(true)), Unset::Value)
          .Expect({{element.c_str(), kReal, kNoFlag, kUnexpected + c.path},
                   {element.c_str(), kPseudo, kNoFlag, kUnexpected + c.path},
                   {element.c_str(), kReal, kUnknownElements, kUnexpected + c.path},
                   {element.c_str(), kReal, kUnknownAttributes, "true, at end, 1"},
                   {element.c_str(), kPseudo, kUnknownAttributes, "true, at end, 1"}});
    }
  }
}

TEST(ElementInfoSeqPrim, AttributesAreLookedAtInTheOrderOfTheDocument) {
  for (const Occurrence& member : kBoth) {
    CTrial(member.make({}), Unset::Value)
        .Expect({{"<a x='1' xsi:nil='1'/>", kReal, kNoFlag, kUnexpected + "@x"},
                 {"<a xsi:nil='1' x='1'/>", kReal, kNoFlag, kInvalidNil},
                 {"<a x='1' xsi:nil='1'/>", kReal, kUnknownAttributes, kInvalidNil},
                 {"<a xsi:nil='0' x='1'>5</a>", kReal, kUnknownAttributes, "true, at end, 5"}});
    CTrial(member.make(Nillable(true)), Unset::Value)
        .Expect({{"<a xsi:nil='1' x='1'/>", kReal, kNoFlag, kUnexpected + "@x"},
                 {"<a xsi:nil='1' x='1'/>", kReal, kUnknownAttributes, "true, at end, (unset)"},
                 {"<a xsi:nil='?' x='1'/>", kReal, kUnknownAttributes, UnexpectedNil("?")}});
  }
}

TEST(ElementInfoSeqPrim, NamespaceDeclarationThatIsNotInTheTreeIsNoAttribute) {
  for (const Occurrence& member : kBoth) {
    CTrial(member.make({}), Unset::Value)
        .Expect({{"<a xmlns:p='urn:p'>1</a>", kReal, kNoFlag, "true, at end, 1"}});
  }
}

TEST(ElementInfoSeqPrim, NamespaceDeclarationIsAnAttributeOfADocumentWithoutNamespaces) {
  CSerializationContext lenient = NoNamespaces();
  lenient.SetIgnoreUnknownAttributes(true);
  for (const Occurrence& member : kBoth) {
    CTrial trial(member.make(Nillable(true)), Unset::Value);
    EXPECT_EQ(kUnexpected + "@xmlns:p",
              trial.Take("<a xmlns:p='urn:p'>1</a>", kReal, NoNamespaces()));
    EXPECT_EQ(kUnexpected + "@xmlns", trial.Take("<a xmlns='urn:p'>1</a>", kReal, NoNamespaces()));
    EXPECT_EQ(kUnexpected + "@xsi:nil", trial.Take("<a xsi:nil='1'>1</a>", kReal, NoNamespaces()));
    EXPECT_EQ("true, at end, 1",
              trial.Take("<a xmlns='urn:p' xmlns:p='urn:p' xsi:nil='1'>1</a>", kReal, lenient));
  }
}

TEST(ElementInfoSeqPrim, NamespaceDeclarationInTheTreeNeedsTheFlag) {
  CXmlDocument document;
  CXmlElement* const root = document.AddDocElement("", "r");
  CXmlElement* cursor = document.AddChildElement("", "a");
  CXmlDocument::AddElementAttribute(cursor, "xmlns", "urn:p", kXmlnsNamespace);
  CTrial trial(A<Opt>({}), Unset::Value);
  EXPECT_QZ_THROW_FULL(
      CQzValidationException, "Unexpected Attribute found.\nPath: /r/a/@xmlns", "/r/a/@xmlns",
      trial.member().ElementFromXml({}, &trial.object(), root, &cursor, "", kReal));
  EXPECT_TRUE(trial.member().ElementFromXml(Flagged(kUnknownAttributes), &trial.object(), root,
                                            &cursor, "", kReal));
  EXPECT_EQ(nullptr, cursor);
}

// --- Its failures, as a document reports them

TEST(ElementInfoSeqPrim, FailuresOfReadingReachTheCallerWithPathAndChain) {
  const struct {
    const char* children;
    const char* text;
    const char* path;
    bool wrapped;  // a failure without a path gets that of the object
  } cases[] = {
      {"<b/>", "Failed to find the required child element [a].\nPath: /r", "/r", false},
      {"<a x='1'>1</a>", "Unexpected Attribute found.\nPath: /r/a/@x", "/r/a/@x", false},
      {"<a xsi:nil='1'/>", "Invalid use of 'nil' attribute in non-nillable element.\nPath: /r/a",
       "/r/a", false},
      {"<a>one</a>",
       "Failed to process the element.\nPath: /r\nThe value [one] can not be converted to a i4",
       "/r", true},
      {"<a>1</a><n xsi:nil='yes'/>",
       "Unexpected Value [yes] for 'nil' Attribute found.\nPath: /r/n/xsi:@nil", "/r/n/xsi:@nil",
       false},
  };
  PrimOptions nillable = OfType(ItemType_i4);
  nillable.nillable = true;
  CTables tables;
  tables.Add(A<Mnd>(OfType(ItemType_i4)), Unset::Value);
  tables.Add(Prim<Opt>("n", 1, nillable), Unset::Value);
  CSmartPtr<CTableObject> object(new CTableObject(tables));
  for (const auto& c : cases) {
    const std::string document = "<r xmlns:xsi='" + std::string(kXsi) + "'>" + c.children + "</r>";
    if (c.wrapped) {
      EXPECT_QZ_THROW_FULL(CQzValidationException, c.text, c.path,
                           object->FromXml(document.c_str()));
    } else {
      EXPECT_QZ_THROW_FULL(CQzException, c.text, c.path, object->FromXml(document.c_str()));
    }
  }
}
